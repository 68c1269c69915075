"""Matches by tools/selfplay, for scripts that play many of them: scripts/sensitivity, scripts/screening and
scripts/cross_table. What keeps their results is also that of scripts/calibrate.

`arguments` are those of such a script: build, openings, nodes, games, concurrency (None: selfplay's own), state (a folder),
resign and draw (None: games are played out).
"""

import hashlib
import os
import pathlib
import re
import subprocess

from option_numbers import whole

ROOT = pathlib.Path(__file__).resolve().parents[2]
SELFPLAY = "tools/selfplay/selfplay"  # of a build

# The line of results (docs/tuning.md).
RESULT = re.compile(r"^games (?P<games>\d+): \+\d+ =\d+ -\d+, pairs (?P<pairs>[\d ]+), Elo (?P<elo>\S+) \+- (?P<error>\S+), "
                    r".*superiority (?P<superiority>[\d.]+) %")

# What follows it with --sprt.
RATIO = re.compile(r", LLR (\S+) \((\S+) to (\S+)\) for ")


class Trouble(Exception):
    """What is wrong, in words for the user."""


def add_match_options(parser, name, games, told):
    """The options that such scripts have in common. `name`: of the script, whose results are kept in the folder and written
    to the Markdown file of that name. `games` are played where nothing is said, `told` says by whom."""
    parser.add_argument("--games", type=whole(2), default=games, help=f"of {told}, an even number ({games})")
    parser.add_argument("--nodes", type=whole(1), default=20000, help="of each move (20000)")
    parser.add_argument("--seed", type=whole(), default=1, help="order of the openings (1)")
    parser.add_argument("--concurrency", type=whole(1, 1024), help="games at a time (one for each processor)")
    parser.add_argument("--openings", type=pathlib.Path, default=ROOT / "tests/data/openings.epd")
    add_rules(parser)
    parser.add_argument("--state", type=pathlib.Path, default=pathlib.Path(name), help=f"folder ({name})")
    parser.add_argument("--output", type=pathlib.Path, default=pathlib.Path(f"{name}.md"), help=f"({name}.md)")
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release", help="(build/release)")


def add_base(parser):
    parser.add_argument("--base", default="", metavar="WORDS", help="what both players have, as selfplay's --second takes it")


def add_rules(parser):
    """The options that end games early, in the words of selfplay, which also says what is wrong with them."""
    parser.add_argument("--resign", metavar="MOVES:CENTIPAWNS", help="a game is lost when both have thought so for so many moves")
    parser.add_argument("--draw", metavar="FROM:MOVES:CENTIPAWNS",
                        help="from this move on a game is drawn after so many moves near 0")


def rules_of(arguments):
    """The words of these options."""
    return [word for name in ("resign", "draw") if (value := getattr(arguments, name)) is not None
            for word in (f"--{name}", value)]


def told_rules(arguments):
    """For the line above a table."""
    words = rules_of(arguments)
    return f" with {' '.join(words)}" if words else ""


def read_text(path):
    """Trouble if it is no text."""
    try:
        return path.read_text(encoding="utf-8-sig")
    except UnicodeDecodeError:
        raise Trouble(f"{path}: no text") from None


def test_output(path):
    """What can't be written is told before the first game. What stands there stays."""
    if path.is_dir():
        raise Trouble(f"can't write {path}: it is a folder")
    try:
        new = new_of(path)
        new.touch()
        new.unlink()
    except OSError as error:
        raise Trouble(f"can't write {path}: {error.strerror}") from None


def test_programs(arguments, *programs):
    """They have to be there, in the build."""
    for program in programs:
        if not os.access(arguments.build / program, os.X_OK):
            raise Trouble(f"there is no program {arguments.build / program}; --build names a folder with a build "
                          "(cmake --preset release && cmake --build --preset release)")


def test_players(arguments, players):
    """What selfplay doesn't take is told before the first game: without openings it says that they are missing. `players`:
    what they are called in the complaint, and their words."""
    for told, words in players:
        done = subprocess.run([str(arguments.build / SELFPLAY), "--first", words], capture_output=True, text=True)
        if done.stderr.strip() != "selfplay: --openings is missing":
            raise Trouble(f"{told}: {done.stderr.strip()}")


def run(command, patience=None):
    """What a program prints. Trouble with what it complains of."""
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=patience)
    if done.returncode != 0:
        raise Trouble(done.stderr.strip() or f"{command[0]} ended with {done.returncode}")
    return done.stdout


def ruled_out(leads, result):
    """Which of two leads a match with --sprt has ruled out; None while it has ruled out neither."""
    ratio, least, most = (float(number) for number in RATIO.search(result.string).groups())
    if ratio >= most:
        return leads[0]
    return leads[1] if ratio <= least else None


def state_of(arguments, identity):
    """The file that keeps a match. `identity`: what the match is, so that one that is changed has another file, and starts
    anew."""
    return arguments.state / (hashlib.sha256(identity.encode()).hexdigest()[:16] + ".games")


def play_match(arguments, players, seed, identity, leads=None):
    """The result of a whole match, as RESULT finds it. `players`: the options that name them. `identity` is that of
    state_of, but for the rules. `leads`: two, one of which may end it."""
    rules = rules_of(arguments)
    state = state_of(arguments, "\n".join([identity, *rules]))
    command = [arguments.build / SELFPLAY, *players, *rules, "--openings", arguments.openings, "--nodes",
               arguments.nodes, "--games", arguments.games, "--seed", seed, "--state", state, "--show-every",
               arguments.games]
    if arguments.concurrency:
        command += ["--concurrency", arguments.concurrency]
    if leads:
        command += ["--sprt", *(f"{lead:g}" for lead in leads)]
    results = [found for line in run(command).splitlines() if (found := RESULT.match(line))]
    if not results or not is_over(arguments, leads, results[-1]):
        raise Trouble("the match was stopped")
    return results[-1]


def is_over(arguments, leads, result):
    return int(result["games"]) == arguments.games or (leads is not None and ruled_out(leads, result) is not None)


def write_whole(path, text):
    """The file has its old text or all of the new one."""
    new = new_of(path)
    new.write_text(text)
    os.replace(new, path)


def new_of(path):
    return path.with_name(path.name + ".new")


def time_left(seconds):
    minutes = seconds / 60
    return f"about {minutes / 60:.1f} hours more" if minutes >= 90 else f"about {minutes:.0f} minutes more"
