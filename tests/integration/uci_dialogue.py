"""What the tests of vorka-uci have in common."""

import re

import rules

MATE_IN_TWO = "7k/8/8/8/8/8/R7/1R4K1 w - - 0 1"
STALEMATE = "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1"
MATED = "7k/6Q1/6K1/8/8/8/8/8 b - - 0 1"
START = rules.Position.from_fen(rules.START)
BESTMOVE = r"^bestmove (\w+)(?: ponder (\w+))?\n"


def search(engine, *lines):
    """Sends the lines, the last one a `go` that ends by itself, and returns the info lines and the match of bestmove."""
    engine.send(*lines)
    told, match = engine.hear(BESTMOVE)
    return [line for line in told.splitlines() if line.startswith("info ")], match


def ready(engine):
    """Returns what came since the last match, when all that was sent before is dealt with."""
    engine.send("isready")
    return engine.hear("^readyok\n")[0]


def number(line, word):
    return int(re.search(rf" {word} (-?\d+)", line)[1])
