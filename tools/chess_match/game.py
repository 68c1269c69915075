"""One game between two players."""

import time
from typing import NamedTuple, Optional

from .adjudication import Adjudicator, Agreement
from .controls import Clock, Limits, TimeControl
from .errors import Forfeit
from .openings import Opening
from .referee import rules

# What an interface grants for its own work before a flag falls; seconds. A limit for each move has no reserve at all, and
# an engine looks at its clock some times a second, which a busy machine makes fewer.
MARGIN = 0.15
MARGIN_OF_FIXED = 0.4

LOSS = {True: "0-1", False: "1-0"}  # of White, of Black
COLOUR = {True: "White", False: "Black"}


class GameRules(NamedTuple):
    """What holds for both players of a game."""
    control: Optional[TimeControl] = None
    limits: Limits = Limits()
    margin: Optional[float] = None  # None: the usual one
    patience: float = 60.0  # seconds for a move while no clock runs
    agreement: Agreement = Agreement()
    draw_after: int = 0  # moves; 0: never

    def clock(self, made):
        """Of a player that has `made` so many moves in the opening."""
        usual = MARGIN_OF_FIXED if self.control and self.control.is_fixed else MARGIN
        return Clock(self.control, usual if self.margin is None else self.margin, made)


class PlayedMove(NamedTuple):
    move: str  # in coordinates
    san: str
    seconds: Optional[float] = None  # None: of the opening
    score: Optional[int] = None  # centipawns for the mover
    depth: Optional[int] = None


class Ending(NamedTuple):
    result: str
    reason: str
    forfeited: Optional[bool] = None  # the colour of a player that broke the rules of a match: True for White


class PlayedGame(NamedTuple):
    ending: Ending
    moves: list
    least_time: dict  # seconds that were left at the worst moment, by colour; infinite without a clock
    talk: str = ""  # the last lines to and from a player that has forfeited the game


def play(white, black, opening: Opening, game_rules: GameRules):
    """Plays to the end. Both players have got their terms."""
    return Conduct({True: white, False: black}, opening, game_rules).play()


class Conduct:
    """A game that is being played. A key of True is White's, of False Black's."""

    def __init__(self, players, opening, game_rules):
        self.players = players
        self.rules = game_rules
        self.adjudicator = Adjudicator(game_rules.agreement)
        self.position = rules.Position.from_fen(opening.fen or rules.START)
        self.keys = []  # of the positions before
        self.moves = []
        made = {True: 0, False: 0}
        for text in opening.moves:
            made[self.position.white_to_move] += 1
            self.make(self.position.find(text))
        self.clocks = {colour: game_rules.clock(made[colour]) for colour in (True, False)}

    def play(self):
        ending = self.ended_by_rule()
        while not ending:
            ending = self.next_move()
        talk = "" if ending.forfeited is None else self.players[ending.forfeited].child.talk()
        return PlayedGame(ending, self.moves, {colour: clock.least for colour, clock in self.clocks.items()}, talk)

    def ended_by_rule(self):
        over = self.position.result(self.keys)
        if over:
            return Ending(*over)
        if self.rules.draw_after and len(self.moves) >= 2 * self.rules.draw_after:
            return Ending("1/2-1/2", f"Called a draw after {self.rules.draw_after} moves")
        return None

    def next_move(self):
        """Asks the player on move. The ending, if the game ends by it."""
        white = self.position.white_to_move
        player, clock = self.players[white], self.clocks[white]
        start = time.monotonic()
        try:
            answer = self.answer_of(player, clock, self.clocks[not white])
            if not clock.take(answer.moment - start):
                raise Forfeit("lost on time")
            if answer.resigns or answer.claim == LOSS[white]:
                return Ending(LOSS[white], f"{COLOUR[white]} resigns")
            if answer.claim:
                raise Forfeit(f"claimed {answer.claim}, which the board doesn't bear out")
            try:
                move = self.position.find(answer.move)
            except ValueError:
                raise Forfeit(f"made the illegal move {answer.move}") from None
        except Forfeit as forfeit:
            return Ending(LOSS[white], f"{COLOUR[white]} {forfeit}", white)
        self.make(move, answer.moment - start, answer.score, answer.depth)
        ending = self.ended_by_rule() or self.agreed(white, answer.score)
        if not ending and self.is_legal(answer.prediction):
            player.wait_for_opponent([move.move for move in self.moves], answer.prediction, [clock, self.clocks[not white]])
        return ending

    def answer_of(self, player, clock, other_clock):
        start = time.monotonic()
        try:
            return player.think([move.move for move in self.moves], [clock, other_clock],
                                clock.allowance() if clock.control else self.rules.patience)
        except Forfeit:
            clock.spend(time.monotonic() - start)
            raise

    def make(self, move, seconds=None, score=None, depth=None):
        self.moves.append(PlayedMove(rules.coordinate(move), self.position.san(move), seconds, score, depth))
        self.keys.append(self.position.key())
        self.position = self.position.make(move)

    def is_legal(self, text):
        try:
            return bool(text and self.position.find(text))
        except ValueError:
            return False

    def agreed(self, white_moved, score):
        result = self.adjudicator.take(white_moved, score, (len(self.moves) + 1) // 2)
        if result is None:
            return None
        return Ending(result, "Both agree on a draw" if result == "1/2-1/2" else
                      f"Both agree that {COLOUR[result == '1-0']} wins")
