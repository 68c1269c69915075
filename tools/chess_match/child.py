"""A program as a child process that is talked to line by line."""

import collections
import os
import pathlib
import queue
import shutil
import subprocess
import tempfile
import threading
import time

from .errors import Stopped, Trouble

# Debian keeps its chess programs outside of the usual path.
PATH = os.environ.get("PATH", os.defpath) + ":/usr/games"
PACKAGES = {name: name for name in (
    "crafty", "ethereal-chess", "fairymax", "fruit", "glaurung", "gnuchess", "phalanx", "polyglot", "stockfish", "toga2")}
KEPT_LINES = 20
MOST_WAITING = 1000  # lines that nobody has heard yet; a program that says more is made to wait
MOST_ERRORS = 1000  # characters
# Seconds: how often a player that is waited for is left alone to see whether the match was stopped.
GLANCE = 0.2
FAREWELL = 1.0


class Silent(Exception):
    """Nothing came in time."""


class Ended(Exception):
    """The program has ended, or closed its output."""


def find_program(program):
    """The path of a program; one with a slash is looked for from the user's folder. Trouble if there is none."""
    found = shutil.which(str(pathlib.Path(program).resolve()) if "/" in program else program, path=PATH)
    if found:
        return found
    if "/" in program and pathlib.Path(program).exists():
        raise Trouble(f"{program} is no program that can be run")
    package = PACKAGES.get(program)
    raise Trouble(f"there is no program {program}" + (f"; it is in Debian's package {package}" if package else ""))


class Child:
    """Lines that it says wait in a queue with the time at which they came. `stop` is an event that ends every wait."""

    def __init__(self, words, folder, stop):
        self.stop = stop
        self.said = collections.deque(maxlen=KEPT_LINES)
        self.errors = tempfile.TemporaryFile("w+", errors="replace")
        try:
            # A session of its own: the interrupt of the terminal is for the match, which ends its players itself.
            self.process = subprocess.Popen([find_program(words[0]), *words[1:]], cwd=folder, stdin=subprocess.PIPE,
                                            stdout=subprocess.PIPE, stderr=self.errors, start_new_session=True,
                                            env=dict(os.environ, PATH=PATH), text=True, bufsize=1, errors="replace")
        except OSError as error:
            # The system names the folder if that was at fault.
            what = f"the folder {folder} can't be used" if error.filename == str(folder) else f"{words[0]} can't be started"
            raise Trouble(f"{what}: {error.strerror}") from None
        self.lines = queue.Queue(MOST_WAITING)
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        with self.process.stdout as output:
            for line in output:
                self.lines.put((time.monotonic(), line.strip()))
        self.lines.put((time.monotonic(), None))

    def send(self, *lines):
        """A program that has ended hears nothing; whoever waits for it finds out."""
        for line in lines:
            self.said.append("> " + line)
            try:
                self.process.stdin.write(line + "\n")
            except (OSError, ValueError):
                return

    def next_line(self, deadline):
        """(time, line) of the next line. Silent after the deadline, Ended, or Stopped."""
        while True:
            if self.stop.is_set():
                raise Stopped
            left = deadline - time.monotonic()
            try:
                moment, line = self.lines.get(timeout=min(max(left, 0.0), GLANCE))
            except queue.Empty:
                if left <= GLANCE and time.monotonic() >= deadline:
                    raise Silent from None
                continue
            if line is None:
                self.lines.put((moment, None))  # for whoever asks again
                raise Ended
            if moment >= deadline:  # a program that never stops talking has no more time than a silent one
                raise Silent
            self.said.append("< " + line)
            return moment, line

    def talk(self):
        """The last lines to and from it, and of its standard error."""
        self.errors.seek(0)
        return "\n".join([*self.said, *self.errors.read()[-MOST_ERRORS:].splitlines()])

    def close(self):
        """Asks it to end, and ends it if it doesn't."""
        self.send("quit")
        try:
            self.process.stdin.close()
        except OSError:
            pass
        try:
            self.process.wait(0.0 if self.stop.is_set() else FAREWELL)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
