"""Matches by tools/selfplay, for scripts that play many of them: scripts/sensitivity and scripts/cross_table.

`arguments` are those of such a script: build, openings, nodes, games, concurrency (None: selfplay's own), state (a folder).
"""

import hashlib
import os
import re
import subprocess

# The line of results (docs/tuning.md).
RESULT = re.compile(r"^games (?P<games>\d+): \+\d+ =\d+ -\d+, pairs (?P<pairs>[\d ]+), Elo (?P<elo>\S+) \+- (?P<error>\S+), "
                    r".*superiority (?P<superiority>[\d.]+) %")


class Trouble(Exception):
    """What is wrong, in words for the user."""


def run(command, patience=None):
    """What a program prints. Trouble with what it complains of."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=patience)
    if done.returncode != 0:
        raise Trouble(done.stderr.strip() or f"{command[0]} ended with {done.returncode}")
    return done.stdout


def play_match(arguments, players, seed, identity):
    """The result of a whole match, as RESULT finds it. `players`: the options that name them. `identity`: what the match
    is, so that one that is changed has another state file, and starts anew."""
    state = arguments.state / (hashlib.sha256(identity.encode()).hexdigest()[:16] + ".games")
    command = [arguments.build / "tools/selfplay/selfplay", *players, "--openings", arguments.openings, "--nodes",
               arguments.nodes, "--games", arguments.games, "--seed", seed, "--state", state, "--show-every",
               arguments.games]
    if arguments.concurrency:
        command += ["--concurrency", arguments.concurrency]
    results = [found for line in run(command).splitlines() if (found := RESULT.match(line))]
    if not results or int(results[-1]["games"]) != arguments.games:
        raise Trouble("the match was stopped")
    return results[-1]


def write_whole(path, text):
    """The file has its old text or all of the new one."""
    new = path.with_name(path.name + ".new")
    new.write_text(text)
    os.replace(new, path)
