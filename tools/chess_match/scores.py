"""Scores: centipawns for the player who tells them. A mate is a number as well, near MATE: the nearer, the sooner."""

import re

MATE = 100000
LONGEST_MATE = 1000  # moves
TEXT = re.compile(r"([+-]?)(?:M(\d+)|(\d+\.\d+))")


def mate_in(moves):
    """The score of a mate in so many moves, which are negative for the one who is mated; 0 is mated already."""
    return MATE - moves if moves > 0 else -MATE - moves


def is_mate(score):
    return abs(score) >= MATE - LONGEST_MATE


def text_of(score):
    """Pawns with a sign, or the moves to a mate: +0.23, -M4."""
    if is_mate(score):
        return f"{'+' if score > 0 else '-'}M{MATE - abs(score)}"
    return f"{score / 100:+.2f}"


def score_of(text):
    """The other way; None for what is no score."""
    found = TEXT.fullmatch(text)
    if not found:
        return None
    sign = -1 if found[1] == "-" else 1
    return sign * (MATE - int(found[2])) if found[2] else sign * round(100 * float(found[3]))
