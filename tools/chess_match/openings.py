"""Where games begin: positions of an EPD or FEN file, moves of PGN games, or the ones built in."""

import random
import re
from typing import NamedTuple, Optional

from .errors import Trouble
from .pgn import read_games
from .referee import rules

BUILT_IN = (
    "e2e4 e7e5 g1f3 b8c6", "d2d4 d7d5 c2c4 e7e6", "e2e4 c7c5 g1f3 d7d6", "d2d4 g8f6 c2c4 g7g6",
    "e2e4 e7e6 d2d4 d7d5", "c2c4 e7e5 b1c3 g8f6", "e2e4 c7c6 d2d4 d7d5", "g1f3 d7d5 g2g3 g8f6",
    "d2d4 g8f6 g1f3 e7e6", "e2e4 g8f6 e4e5 f6d5",
)
FIELDS = re.compile(r"([1-8pnbrqkPNBRQK]+/){7}[1-8pnbrqkPNBRQK]+ [wb] (-|[KQkq]+) (-|[a-h][36])")


class Opening(NamedTuple):
    fen: Optional[str]  # None: the usual start
    moves: tuple = ()
    place: str = ""  # where it stands, for a complaint


def openings_of(path, plies):
    """The openings of a file, of PGN games at most so many half moves. Trouble if it can't be read or a line is no
    position; what is wrong with a position itself, `checked` finds."""
    if path.exists() and not path.is_file():
        raise Trouble(f"can't open {path}: no regular file")
    try:
        text = path.read_text(encoding="utf-8-sig", errors="replace")
    except OSError as error:
        raise Trouble(f"can't open {path}: {error.strerror}") from None
    openings = games_of(path, text, plies) if text.lstrip().startswith("[") else lines_of(path, text)
    if not openings:
        raise Trouble(f"{path}: no openings")
    return openings


def lines_of(path, text):
    openings = []
    for number, line in enumerate(text.splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        # The first four fields are the position; an EPD line goes on with operations, a FEN with two clocks.
        fields = " ".join(line.split()[:4])
        if not FIELDS.fullmatch(fields):
            raise Trouble(f"{path}: line {number}: no position")
        openings.append(Opening(fields + " 0 1", place=f"{path}: line {number}"))
    return openings


def games_of(path, text, plies):
    return [Opening(game.tags.get("FEN"), tuple(move.san.rstrip("!?") for move in game.moves[:plies]), f"{path}: game {number}")
            for number, game in enumerate(read_games(text), 1)]


def checked(opening):
    """The opening with its moves in coordinates, and the position after them. Trouble if there is no such position, or
    the game is over in it."""
    moves = []
    try:
        position = rules.Position.from_fen(opening.fen or rules.START)
        if len(position.men) != 64 or any(position.men.count(king) != 1 for king in "Kk") or \
                any(man in ("P", "p") for man in position.men[:8] + position.men[56:]) or \
                position.in_check(not position.white_to_move):
            raise Trouble(f"{opening.place}: no position")
        for text in opening.moves:
            move = position.find(text)
            moves.append(rules.coordinate(move))
            position = position.make(move)
    except (ValueError, IndexError) as error:
        raise Trouble(f"{opening.place}: {error}") from None
    if position.result():
        raise Trouble(f"{opening.place}: the game is over")
    return opening._replace(moves=tuple(moves)), position


def ordered(openings, seed):
    """The openings in the order of the seed; 0: as they stand."""
    order = list(openings)
    if seed:
        random.Random(seed).shuffle(order)
    return order


def picked(order, pairs):
    """So many openings, checked; again from the first one if there are too few."""
    known = [checked(opening)[0] for opening in order[:pairs]]
    return [known[pair % len(known)] for pair in range(pairs)]


def built_in():
    return [Opening(None, tuple(moves.split()), f"built-in opening {number}") for number, moves in enumerate(BUILT_IN, 1)]
