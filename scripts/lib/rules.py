"""A slow and obvious referee: the rules of chess, apart from the engine's own code.

Squares are 0 (a1) to 63 (h8), men are FEN letters, a move is (from, to, promotion letter in lower case or "").
"""

import re
from typing import NamedTuple

START = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1"

STRAIGHT = ((1, 0), (-1, 0), (0, 1), (0, -1))
DIAGONAL = ((1, 1), (1, -1), (-1, 1), (-1, -1))
LEAPS = ((1, 2), (2, 1), (2, -1), (1, -2), (-1, -2), (-2, -1), (-2, 1), (-1, 2))
REACH = {"n": (LEAPS, 1), "k": (STRAIGHT + DIAGONAL, 1), "b": (DIAGONAL, 7), "r": (STRAIGHT, 7),
         "q": (STRAIGHT + DIAGONAL, 7)}

# A right goes when anything leaves or enters one of these squares.
RIGHTS_OF = {0: "Q", 4: "KQ", 7: "K", 56: "q", 60: "kq", 63: "k"}


def name(square):
    return "abcdefgh"[square & 7] + str((square >> 3) + 1)


def square_of(text):
    return "abcdefgh".index(text[0]) + 8 * (int(text[1]) - 1)


def coordinate(move):
    return name(move[0]) + name(move[1]) + move[2]


class Position(NamedTuple):
    men: tuple  # 64 letters, "" where the square is empty
    white_to_move: bool
    castling: str
    en_passant: int  # -1 where there is none
    halfmove_clock: int

    @staticmethod
    def from_fen(fen=START):
        placement, side, castling, en_passant, clock = fen.split()[:5]
        men = []
        for rank in reversed(placement.split("/")):
            for letter in rank:
                men += [""] * int(letter) if letter.isdigit() else [letter]
        return Position(tuple(men), side == "w", castling.replace("-", ""),
                        -1 if en_passant == "-" else square_of(en_passant), int(clock))

    def fen(self, move_number=1):
        ranks = []
        for rank in range(7, -1, -1):
            text = "".join(man or " " for man in self.men[8 * rank:8 * rank + 8])
            ranks.append(re.sub(" +", lambda run: str(len(run[0])), text))
        return " ".join(("/".join(ranks), "w" if self.white_to_move else "b", self.castling or "-",
                         "-" if self.en_passant < 0 else name(self.en_passant), str(self.halfmove_clock),
                         str(move_number)))

    def key(self):
        """What has to be the same for a repetition: an en passant square counts if a pawn may capture there."""
        may_capture = self.en_passant >= 0 and any(
            to == self.en_passant and self.men[start].lower() == "p" and self.is_legal((start, to, promotion))
            for start, to, promotion in self._pseudo_legal())
        return (*self[:3], self.en_passant if may_capture else -1)

    def _own(self, man, white):
        return bool(man) and man.isupper() == white

    def _targets(self, square, directions, steps):
        file, rank = square & 7, square >> 3
        for dx, dy in directions:
            for n in range(1, steps + 1):
                x, y = file + n * dx, rank + n * dy
                if not (0 <= x < 8 and 0 <= y < 8):
                    break
                yield 8 * y + x
                if self.men[8 * y + x]:
                    break

    def attacked(self, square, by_white):
        """Whether a man of that colour attacks the square."""
        for kind, (directions, steps) in REACH.items():
            wanted = kind.upper() if by_white else kind
            if any(self.men[s] == wanted for s in self._targets(square, directions, steps)):
                return True
        rank = (square >> 3) + (-1 if by_white else 1)
        return any(0 <= (square & 7) + dx < 8 and 0 <= rank < 8
                   and self.men[8 * rank + (square & 7) + dx] == ("P" if by_white else "p") for dx in (-1, 1))

    def in_check(self, white=None):
        white = self.white_to_move if white is None else white
        return self.attacked(self.men.index("K" if white else "k"), not white)

    def _pseudo_legal(self):
        white = self.white_to_move
        up = 8 if white else -8
        for square, man in enumerate(self.men):
            if not self._own(man, white):
                continue
            if man.lower() != "p":
                for to in self._targets(square, *REACH[man.lower()]):
                    if not self._own(self.men[to], white):
                        yield square, to, ""
                continue
            targets = []
            if not self.men[square + up]:
                targets.append(square + up)
                if square >> 3 == (1 if white else 6) and not self.men[square + 2 * up]:
                    targets.append(square + 2 * up)
            for dx in (-1, 1):
                to = square + up + dx
                if 0 <= (square & 7) + dx < 8 and (self._own(self.men[to], not white) or to == self.en_passant):
                    targets.append(to)
            for to in targets:
                for promotion in "qrbn" if to >> 3 in (0, 7) else ("",):
                    yield square, to, promotion
        home = 4 if white else 60
        for right, between, passed, to in (("K", (1, 2), 1, 2), ("Q", (-1, -2, -3), -1, -2)):
            if (right if white else right.lower()) in self.castling and not any(self.men[home + d] for d in between) \
                    and not any(self.attacked(home + d, not white) for d in (0, passed)):
                yield home, home + to, ""

    def make(self, move):
        start, to, promotion = move
        men = list(self.men)
        man = men[start]
        white = self.white_to_move
        pawn = man.lower() == "p"
        capture = bool(men[to])
        men[start] = ""
        men[to] = (promotion.upper() if white else promotion) or man
        if pawn and to == self.en_passant:
            men[to + (-8 if white else 8)] = ""
        if man.lower() == "k" and abs(to - start) == 2:
            rook, place = (start + 3, start + 1) if to > start else (start - 4, start - 1)
            men[place], men[rook] = men[rook], ""
        lost = RIGHTS_OF.get(start, "") + RIGHTS_OF.get(to, "")
        return Position(tuple(men), not white, "".join(right for right in self.castling if right not in lost),
                        (start + to) // 2 if pawn and abs(to - start) == 16 else -1,
                        0 if pawn or capture else self.halfmove_clock + 1)

    def is_legal(self, pseudo_legal_move):
        return not self.make(pseudo_legal_move).in_check(self.white_to_move)

    def legal_moves(self):
        return [move for move in self._pseudo_legal() if self.is_legal(move)]

    def has_legal_move(self):
        return any(self.is_legal(move) for move in self._pseudo_legal())

    def san(self, move):
        start, to, promotion = move
        man = self.men[start].lower()
        after = self.make(move)
        mark = ("#" if not after.has_legal_move() else "+") if after.in_check() else ""
        if man == "k" and abs(to - start) == 2:
            return ("O-O" if to > start else "O-O-O") + mark
        captures = bool(self.men[to]) or (man == "p" and to == self.en_passant)
        if man == "p":
            return ((name(start)[0] + "x" if captures else "") + name(to)
                    + ("=" + promotion.upper() if promotion else "") + mark)
        rivals = [rival[0] for rival in self._pseudo_legal() if rival[1] == to and rival[0] != start
                  and self.men[rival[0]] == self.men[start] and self.is_legal(rival)]
        origin = ""
        if rivals:
            if all(s & 7 != start & 7 for s in rivals):
                origin = name(start)[0]
            elif all(s >> 3 != start >> 3 for s in rivals):
                origin = name(start)[1]
            else:
                origin = name(start)
        return man.upper() + origin + ("x" if captures else "") + name(to) + mark

    def find(self, text):
        """The legal move that this standard or coordinate notation names. ValueError where there is none."""
        wanted = text.rstrip("+#")
        # Both notations name the square that a move goes to, but for castling.
        likely = [move for move in self._pseudo_legal() if name(move[1]) in wanted or wanted.startswith("O-O")]
        for notation in (coordinate, lambda move: self.san(move).rstrip("+#")):
            for move in likely:
                if notation(move) == wanted and self.is_legal(move):
                    return move
        raise ValueError(f"{text} is no legal move in {self.fen()}")

    def result(self, earlier=()):
        """(result, reason in the engine's words) if the game is over, else None. `earlier`: keys of earlier positions."""
        if not self.has_legal_move():
            if self.in_check():
                return ("0-1", "Black mates") if self.white_to_move else ("1-0", "White mates")
            return "1/2-1/2", "Stalemate"
        if self.halfmove_clock >= 100:
            return "1/2-1/2", "Fifthy move rule"
        others = [man.lower() for man in self.men if man and man.lower() != "k"]
        if not set(others) & set("pqr") and all(
                sum(1 for man in self.men if man and man in side) < 2 for side in ("NB", "nb")):
            return "1/2-1/2", "Insufficient material"
        if list(earlier).count(self.key()) >= 2:
            return "1/2-1/2", "Threefold repetition"
        return None


class Record(NamedTuple):
    tags: dict
    moves: list  # standard notation, as it stands
    result: str
    comment: str  # the last comment before the result


def read_pgn(text):
    """The games of a PGN file."""
    games = []
    for part in re.split(r"(?m)^(?=\[Event )", text):
        if not part.strip():
            continue
        tags = dict(re.findall(r'^\[(\w+) "(.*)"\]$', part, re.M))
        body = re.sub(r"(?m)^\[.*\]$", "", part)
        comments = re.findall(r"\{([^}]*)\}", body)
        words = re.sub(r"\{[^}]*\}|\d+\.+|\$\d+", " ", body).split()
        games.append(Record(tags, words[:-1], words[-1], comments[-1] if comments else ""))
    return games
