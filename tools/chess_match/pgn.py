"""Games in PGN, written and read, with what the players told in comments: {+0.23/9 0.4s} is a score in pawns for the
mover, the depth, and the time. tools/selfplay writes the same without the time."""

import re
from typing import NamedTuple, Optional

from . import scores
from .referee import rules

LONGEST_LINE = 79
COMMENT = re.compile(r"\s*([+-]?(?:M\d+|\d+\.\d+))(?:/(\d+))?(?:\s+(\d+(?:\.\d+)?)s?)?\s*(?:,.*)?", re.S)


def comment_on(move):
    """"" for a move of the opening."""
    words = []
    if move.score is not None:
        words.append(scores.text_of(move.score) + (f"/{move.depth}" if move.depth is not None else ""))
    if move.seconds is not None:
        words.append(f"{move.seconds:.3f}s")
    return "{" + " ".join(words) + "}" if words else ""


def pgn_of(tags, moves, result, fen=None):
    """A game; `tags` are pairs, the result and the position are added to them."""
    pairs = [*tags, ("SetUp", "1"), ("FEN", fen)] if fen else tags
    head = "".join(f'[{name} "{escaped(value)}"]\n' for name, value in pairs)
    return f"{head}\n{movetext(moves, result, fen or rules.START)}\n\n"


def escaped(value):
    return str(value).replace("\\", "\\\\").replace('"', '\\"')


def movetext(moves, result, fen):
    side, number = fen.split()[1], fen.split()[5:6]
    ply = 2 * (int(number[0]) - 1 if number else 0) + (side == "b")
    words = []
    for i, move in enumerate(moves):
        if ply % 2 == 0:
            words.append(f"{ply // 2 + 1}.")
        elif i == 0:
            words.append(f"{ply // 2 + 1}...")
        words += [move.san, *filter(None, [comment_on(move)])]
        ply += 1
    return in_lines(" ".join([*words, result]).split(" "))


def in_lines(words):
    lines = [""]
    for word in words:
        if lines[-1] and len(lines[-1]) + 1 + len(word) > LONGEST_LINE:
            lines.append("")
        lines[-1] += (" " if lines[-1] else "") + word
    return "\n".join(lines)


# --- Reading ---

class ReadMove(NamedTuple):
    san: str
    score: Optional[int] = None  # centipawns for the mover
    depth: Optional[int] = None


class ReadGame(NamedTuple):
    tags: dict
    moves: list
    result: str


TOKEN = re.compile(r"\{(?P<comment>[^}]*)\}|(?P<number>\d+\.+)|\$\d+|(?P<result>1-0|0-1|1/2-1/2|\*)(?=\s|$)|"
                   r"(?P<word>[^\s{}()]+)")


def read_games(text):
    """The games of a PGN text, with scores where the comment of a move begins with one. Variations are skipped."""
    games = []
    for part in re.split(r"(?m)^(?=\[Event )", text):
        if part.strip():
            games.append(read_game(part))
    return games


def read_game(text):
    tags = {name: re.sub(r"\\(.)", r"\1", value)
            for name, value in re.findall(r'^\[(\w+) "((?:[^"\\]|\\.)*)"\]\s*$', text, re.M)}
    body = re.sub(r"(?m)^\[\w+ \".*\"\]\s*$", "", text)
    moves, result = [], tags.get("Result", "*")
    for token in TOKEN.finditer(without_variations(body)):
        if token["comment"] is not None:
            found = COMMENT.fullmatch(token["comment"])
            if found and moves:
                moves[-1] = moves[-1]._replace(score=scores.score_of(found[1]), depth=found[2] and int(found[2]))
        elif token["word"]:
            moves.append(ReadMove(token["word"]))
        elif token["result"]:
            result = token["result"]
    return ReadGame(tags, moves, result)


def without_variations(body):
    """The text without what stands in round brackets outside of comments."""
    kept, level = [], 0
    for piece in re.split(r"(\{[^}]*\}|[()])", body):
        level += (piece == "(") - (piece == ")")
        if level == 0 and piece not in ("(", ")"):
            kept.append(piece)
    return "".join(kept)
