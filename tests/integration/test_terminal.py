"""Standard input is a terminal: raw mode, and lines that arrive byte by byte."""

import fcntl
import os
import pty
import re
import select
import shutil
import struct
import subprocess
import termios
import time
from pathlib import Path

import pytest
from engine import PATIENCE, PROGRAM

ROOT = Path(__file__).resolve().parents[2]
RAW_NOTE = "Stdin has been set to raw mode (OS: Unix compatible). (not sent to xboard)\n"


def canonical(engine):
    """Whether the terminal still hands over whole lines only."""
    return bool(termios.tcgetattr(engine.terminal_of_child)[3] & termios.ICANON)


def test_console_leaves_the_terminal_as_it_is(start):
    engine = start(terminal=True)
    engine.ping()
    assert canonical(engine)
    assert RAW_NOTE not in engine.log


def test_xboard_switches_to_raw_mode_once(start):
    engine = start(terminal=True)
    engine.send("xboard", "protover 2", "xboard")
    engine.ping()
    assert not canonical(engine)
    assert engine.log.count(RAW_NOTE) == 1
    assert RAW_NOTE not in engine.output


def test_console_does_not_bring_the_old_mode_back(start):
    engine = start(terminal=True)
    engine.send("xboard", "console")
    engine.ping()
    assert not canonical(engine)


def test_bytes_one_by_one_make_a_line(start):
    engine = start(terminal=True)
    engine.send("xboard")
    engine.ping()
    for byte in b"ping 7\n":
        engine.send_bytes(bytes([byte]))
    engine.expect_text("pong 7\n")


def test_bytes_one_by_one_during_a_search(start):
    engine = start(terminal=True)
    engine.send("xboard", "protover 2", "post", "analyze")
    engine.expect(r"^\d+ -?\d+ \d+ \d+ ")
    for part in (b"pi", b"ng", b" 8", b"\npin", b"g 9\n"):
        engine.send_bytes(part)
    engine.expect_text("pong 8\n")
    engine.expect_text("pong 9\n")
    engine.send("exit")
    engine.ping()


def test_two_lines_in_one_write_during_a_search(start):
    # The second line already lies in the stream's buffer when the terminal has nothing more to say.
    engine = start(terminal=True)
    engine.send("xboard", "protover 2", "post", "analyze")
    engine.expect(r"^\d+ -?\d+ \d+ \d+ ")
    engine.send_bytes(b"ping 8\nping 9\nexit\nping 10\n")
    for number in (8, 9, 10):
        engine.expect_text(f"pong {number}\n")


def test_a_game_typed_at_a_terminal(start):
    engine = start(terminal=True)
    engine.send("sd 1", "easy")
    engine.ask("e4", "Vorka played: ")
    engine.expect("\rWhite 2> ")
    engine.ask("d4", "Vorka played: ")
    engine.expect("\rWhite 3> ")
    engine.send_bytes(b"\x04")  # end of input, as a person types it
    engine.wait(status=0)


# --- How scripts/play starts the console ---

class Typist:
    """Somebody at a terminal of his own, and all that stands there."""

    def __init__(self, folder, path):
        self.terminal, inside = pty.openpty()
        fcntl.ioctl(inside, termios.TIOCSWINSZ, struct.pack("HHHH", 24, 100, 0, 0))
        start = f". '{ROOT}/scripts/lib/console.sh'; start_in_console '{Path(PROGRAM).resolve()}'"
        self.process = subprocess.Popen(["bash", "-c", start], cwd=folder, stdin=inside, stdout=inside, stderr=inside,
                                        env={**os.environ, "TERM": "xterm", "PATH": path}, start_new_session=True)
        os.close(inside)
        self.seen = ""

    def type(self, text):
        os.write(self.terminal, text.encode())

    def wait_for(self, pattern):
        """What comes after the match is looked at next."""
        end = time.monotonic() + PATIENCE
        while not (found := re.search(pattern, self.seen)):
            assert time.monotonic() < end, f"waited for {pattern!r} and saw {self.seen!r}"
            if select.select([self.terminal], [], [], 0.2)[0]:
                self.seen += os.read(self.terminal, 65536).decode("latin-1")
        self.seen = self.seen[found.end():]

    def leave(self):
        self.type("quit\r")
        assert self.process.wait(PATIENCE) == 0
        os.close(self.terminal)


@pytest.mark.skipif(not shutil.which("rlwrap"), reason="there is no rlwrap")
def test_arrow_keys_bring_back_what_was_typed(tmp_path):
    typist = Typist(tmp_path, os.environ["PATH"])
    typist.wait_for("White 1> ")
    typist.type("force\r")
    typist.wait_for("White 1> $")
    typist.type("personality\r")
    typist.wait_for(r"Personality: Default \(0\)")
    typist.wait_for("White 1> $")
    typist.type("\x1b[A\r")
    typist.wait_for(r"Personality: Default \(0\)")
    typist.leave()
    assert (tmp_path / ".history").read_text().splitlines() == ["force", "personality", "quit"]


def test_console_starts_without_rlwrap(tmp_path):
    for program in ("bash", "stty", "cut"):
        (tmp_path / program).symlink_to(shutil.which(program))
    typist = Typist(tmp_path, str(tmp_path))
    typist.wait_for("White 1> ")
    typist.type("personality\r")
    typist.wait_for(r"Personality: Default \(0\)")
    typist.leave()
    assert not (tmp_path / ".history").exists()
