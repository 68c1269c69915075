"""Ends games that both players agree about, by the rules of tools/selfplay."""

from typing import NamedTuple


class Agreement(NamedTuple):
    """Each kind is off while its moves are 0. Scores are centipawns."""
    resign_moves: int = 0
    resign_score: int = 1000
    draw_from_move: int = 40
    draw_moves: int = 0
    draw_score: int = 10


class Adjudicator:
    """Follows one game."""

    def __init__(self, agreement):
        self.rules = agreement
        self.white_wins = self.black_wins = self.draw = 0  # half moves in a row whose score says so

    def take(self, white_moved, score, move_number):
        """The score that the mover gave to its move, None if it told none, and the number of that move. The result if
        the game is to end after it."""
        rules = self.rules
        for_white = None if score is None else score if white_moved else -score
        said = for_white is not None
        self.white_wins = self.white_wins + 1 if said and for_white >= rules.resign_score else 0
        self.black_wins = self.black_wins + 1 if said and for_white <= -rules.resign_score else 0
        is_drawish = said and move_number >= rules.draw_from_move and abs(score) <= rules.draw_score
        self.draw = self.draw + 1 if is_drawish else 0
        # A run holds the moves of both sides.
        if rules.resign_moves and self.white_wins >= 2 * rules.resign_moves:
            return "1-0"
        if rules.resign_moves and self.black_wins >= 2 * rules.resign_moves:
            return "0-1"
        if rules.draw_moves and self.draw >= 2 * rules.draw_moves:
            return "1/2-1/2"
        return None
