"""Starts the real program in a folder of its own and talks to it, over pipes or with a terminal as its standard input.

Nothing here sleeps: a test waits for what it expects, and what doesn't come fails with all that was seen.
"""

import os
import pty
import re
import subprocess
import threading
from pathlib import Path

# Generous, for a sanitizer build on a busy machine. It is reached only by a failing test.
PATIENCE = float(os.environ.get("VORKA_PATIENCE", "120"))

PROGRAM = os.environ.get("VORKA_ENGINE", "")
UCI_PROGRAM = os.environ.get("VORKA_UCI", "")


class Unexpected(AssertionError):
    """The program said something else, or nothing."""


class Engine:
    """One run of the program. `folder` is its working directory, where its log file goes.

    `terminal` gives it a pseudo terminal as standard input; what it prints always comes over a pipe, so that the
    terminal's echo stays out of it. `stdout` may name another file descriptor, for tests that break the output.
    `environment` is added to that of the tests.
    """

    def __init__(self, folder, *options, program=None, terminal=False, stdout=subprocess.PIPE, preexec_fn=None,
                 close_fds=True, environment=None):
        program = program or PROGRAM
        assert program, "VORKA_ENGINE and VORKA_UCI have to name the programs under test; ctest sets them"
        self.folder = Path(folder)
        self.terminal = None
        stdin = subprocess.PIPE
        if terminal:
            self.terminal, stdin = pty.openpty()
        self.process = subprocess.Popen([program, *options], cwd=self.folder, stdin=stdin, stdout=stdout,
                                        stderr=subprocess.PIPE, preexec_fn=preexec_fn, close_fds=close_fds,
                                        env={**os.environ, **(environment or {})})
        if terminal:
            self.terminal_of_child = stdin  # kept open: the settings of the terminal are read from it
        self._changed = threading.Condition()
        self._streams = {"stdout": bytearray(), "stderr": bytearray()}
        self._open = 0
        self._cursor = 0
        self._pings = 0
        self._readers = []
        for stream_name in ("stdout", "stderr"):
            stream = getattr(self.process, stream_name)
            if stream is not None:
                self._open += 1
                reader = threading.Thread(target=self._read, args=(stream_name, stream), daemon=True)
                reader.start()
                self._readers.append(reader)

    def _read(self, stream_name, stream):
        while chunk := os.read(stream.fileno(), 65536):
            with self._changed:
                self._streams[stream_name] += chunk
                self._changed.notify_all()
        with self._changed:
            self._open -= 1
            self._changed.notify_all()

    # --- Saying ---

    def send(self, *lines):
        for line in lines:
            self.send_bytes(line.encode("latin-1") + b"\n")

    def send_bytes(self, data):
        """Sends bytes as they are, to the pipe or as if typed at the terminal."""
        if self.terminal is not None:
            os.write(self.terminal, data)
        else:
            self.process.stdin.write(data)
            self.process.stdin.flush()

    def end_input(self):
        if self.terminal is None:
            self.process.stdin.close()

    # --- Hearing ---

    @property
    def output(self):
        """Everything on standard output up to now."""
        with self._changed:
            return self._streams["stdout"].decode("latin-1")

    @property
    def errors(self):
        with self._changed:
            return self._streams["stderr"].decode("latin-1")

    def expect(self, pattern, timeout=PATIENCE):
        """Waits until `pattern` matches in what came since the last match, and returns the match."""
        wanted = re.compile(pattern, re.M)
        found = None

        def ready():
            nonlocal found
            found = wanted.search(self._streams["stdout"].decode("latin-1"), self._cursor)
            return found or self._open == 0

        with self._changed:
            self._changed.wait_for(ready, timeout)
            if found:
                self._cursor = found.end()
                return found
        raise Unexpected(f"waited for {pattern!r} and saw instead:\n{self.describe()}")

    def hear(self, pattern, timeout=PATIENCE):
        """Waits as `expect` does, and returns what came since the last match as well: the text before this one, and it."""
        start = self._cursor
        match = self.expect(pattern, timeout)
        return match.string[start:match.start()], match

    def forget(self):
        """Drops all output up to the last match: every wait reads what is kept."""
        with self._changed:
            del self._streams["stdout"][:self._cursor]
            self._cursor = 0

    def expect_text(self, text, timeout=PATIENCE):
        return self.expect(re.escape(text), timeout)

    def ask(self, line, pattern):
        self.send(line)
        return self.expect(pattern)

    def ask_text(self, line, text):
        self.send(line)
        return self.expect_text(text)

    def ping(self):
        """Returns what came since the last match, when the program has dealt with all that was sent before."""
        self._pings += 1
        self.send(f"ping {900000 + self._pings}")
        return self.hear(f"pong {900000 + self._pings}\n")[0]

    def position(self):
        """The position on the board as `display` prints it: the first four fields of its FEN."""
        self.ping()
        self.send("display")
        shown, end = self.hear(r"castle possibilities: (\w+)\nside on move: (\w+); en-passant square: (\w+)\n")
        castling, side, en_passant = ("-" if word == "none" else word for word in end.groups())
        ranks = []
        for cells in re.findall(r"^  [1-8] \|(.*)\|$", shown, re.M):
            men = [cell.strip() for cell in cells.split("|")]
            text = "".join(" " if not man else man[1] if man[0] == "*" else man.lower() for man in men)
            ranks.append(re.sub(" +", lambda run: str(len(run[0])), text))
        return f"{'/'.join(ranks)} {side[0]} {castling} {en_passant}"

    @property
    def log_file(self):
        return self.folder / "logfile.000"

    @property
    def log(self):
        """The log file as it stands. After `ping` or `finish` it holds all that was logged before."""
        return self.log_file.read_bytes().decode("latin-1")

    # --- Ending ---

    def finish(self, status=0):
        """Ends the input, waits for the end of the program, and returns its output."""
        if self.process.stdin is not None and not self.process.stdin.closed:
            try:
                self.process.stdin.close()
            except BrokenPipeError:
                pass
        self.wait(status)
        return self.output

    def wait(self, status=0):
        try:
            self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise Unexpected(f"the program did not end:\n{self.describe()}") from None
        for reader in self._readers:
            reader.join(PATIENCE)
        if self.process.returncode != status:
            raise Unexpected(f"exit status {self.process.returncode} instead of {status}:\n{self.describe()}")

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def describe(self):
        log = self.log_file.read_bytes()[-4000:].decode("latin-1") if self.log_file.is_file() else "(none)"
        return (f"--- standard output\n{self.output[-4000:]}\n--- standard error\n{self.errors[-8000:]}\n"
                f"--- end of the log\n{log}\n---")
