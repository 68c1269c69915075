"""Plays a few moves at the console of the engine, in the terminal where it is started, and then leaves all as it stands.

    console_session.py PROGRAM

What it types goes through a terminal of its own, so that it is seen as what a person types. At the end it writes the file
console.log into the working folder.
"""

import os
import pty
import re
import select
import sys

TYPED = ["sd 6", "e4", "d4"]


def main():
    child, terminal = pty.fork()
    if child == 0:
        os.execv(sys.argv[1], sys.argv[1:2])
    waiting = ""  # what came since the last line was typed
    left = list(TYPED)
    while True:
        if not select.select([terminal], [], [], 1.0)[0]:
            continue
        said = os.read(terminal, 65536)
        os.write(1, said)
        waiting += said.decode("latin-1")
        if not re.search(r"White \d+> $", waiting):
            continue
        waiting = ""
        if left:
            os.write(terminal, left.pop(0).encode() + b"\n")
        else:
            with open("console.log", "w") as log:
                log.write("ready\n")


if __name__ == "__main__":
    main()
