"""The help screens on terminals of several sizes, byte for byte, with a page stop wherever the page is full."""

import fcntl
import os
import pathlib
import pty
import select
import struct
import subprocess
import termios
import time

import pytest
from engine import PROGRAM

GOLDEN = pathlib.Path(__file__).resolve().parent.parent / "golden" / "help"
PATIENCE = float(os.environ.get("VORKA_PATIENCE", "120"))
CONSOLE_PROMPT = " \rWhite 1> "
STOP = "press enter to continue..."


class Terminal:
    """The program with a terminal of a given size at both ends, which echoes and changes nothing."""

    def __init__(self, folder, rows, columns):
        self.master, slave = pty.openpty()
        fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
        mode = termios.tcgetattr(slave)
        mode[1] &= ~termios.OPOST
        mode[3] &= ~termios.ECHO
        termios.tcsetattr(slave, termios.TCSANOW, mode)
        self.process = subprocess.Popen([PROGRAM], cwd=folder, stdin=slave, stdout=slave, stderr=subprocess.DEVNULL)
        os.close(slave)
        self.output = ""

    def expect(self, *texts):
        """Reads until one of the texts ends the output; gives which."""
        end = time.monotonic() + PATIENCE
        while not self.output.endswith(texts):
            ready = select.select([self.master], [], [], max(0, end - time.monotonic()))[0]
            assert ready, f"waited for {texts}:\n{self.output[-2000:]}"
            self.output += os.read(self.master, 4096).decode()
        return next(text for text in texts if self.output.endswith(text))

    def send(self, line):
        os.write(self.master, line.encode() + b"\n")

    def close(self):
        self.process.kill()
        self.process.wait()
        os.close(self.master)


@pytest.fixture
def terminal(tmp_path):
    opened = []

    def open_terminal(rows, columns):
        opened.append(Terminal(tmp_path, rows, columns))
        return opened[-1]

    yield open_terminal
    for each in opened:
        each.close()


def screen(terminal, command, prompt):
    """What the command writes; enter is pressed at every stop, and marked there."""
    terminal.output = ""
    terminal.send(command)
    while terminal.expect(STOP, prompt) == STOP:
        terminal.output += "<enter>\n"
        terminal.send("")
    return terminal.output[:-len(prompt)]


def compare(name, text):
    path = GOLDEN / name
    if os.environ.get("UPDATE_GOLDEN"):
        path.parent.mkdir(exist_ok=True)
        path.write_text(text)
    assert text == path.read_text()


@pytest.mark.parametrize("columns, rows", [(80, 24), (40, 10), (20, 100), (200, 30), (132, 3), (5, 1000)])
def test_screens(terminal, columns, rows):
    driven = terminal(rows, columns)
    driven.expect("> ")
    compare(f"full_{columns}x{rows}.txt", screen(driven, "help", CONSOLE_PROMPT))
    driven.send("force")
    driven.expect("> ")
    driven.output = ""
    driven.send("edit")
    driven.expect("edit mode> ")
    compare(f"edit_{columns}x{rows}.txt", screen(driven, "help", "edit mode> "))


def test_a_page_is_never_longer_than_the_terminal(terminal):
    driven = terminal(24, 80)
    driven.expect("> ")
    pages = screen(driven, "help", CONSOLE_PROMPT).split(STOP + "<enter>\n")
    assert len(pages) > 3
    for page in pages:
        assert page.count("\n") <= 24


def test_end_of_input_at_a_page_stop_ends_the_program(terminal):
    driven = terminal(10, 80)
    driven.expect("> ")
    driven.send("help")
    driven.expect(STOP)
    os.write(driven.master, b"\x04")  # the stop goes on as with an empty line, and so does every later one
    end = time.monotonic() + PATIENCE
    while driven.process.poll() is None and time.monotonic() < end:
        if select.select([driven.master], [], [], 0.01)[0]:
            try:
                driven.output += os.read(driven.master, 4096).decode()
            except OSError:
                break
        if driven.output.endswith((STOP, CONSOLE_PROMPT)):
            driven.output += "<end>"
            os.write(driven.master, b"\x04")
    assert driven.process.wait(PATIENCE) == 0


def test_piped_input_loses_no_line(start):
    engine = start()
    engine.send("help", "ping 7")
    engine.expect_text("unsupported (will be ignored for compatibility reasons)\n")
    engine.expect_text("pong 7\n")
    assert STOP not in engine.output
