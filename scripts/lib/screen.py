"""A screen that nobody sees, for programs with windows."""

import contextlib
import os
import subprocess


@contextlib.contextmanager
def screen(size="1024x768"):
    """A virtual display; gives its name."""
    reader, writer = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{size}x24", "-nolisten", "tcp"],
                              pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL)
    os.close(writer)
    try:
        with os.fdopen(reader) as answer:
            number = answer.readline().strip()
        assert number, "Xvfb did not start"
        yield ":" + number
    finally:
        server.terminate()
        server.wait()
