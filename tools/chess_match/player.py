"""A program that plays one game. What both protocols share; xboard.py and uci.py have the rest.

    player.start()                                    # it says who it is
    player.new_game(terms)                            # it has got everything but the clock
    answer = player.think(moves, clocks, seconds)     # again and again, when it is on move
    player.close()

Whoever waits in vain gets a Forfeit, in which the player has lost the game; Trouble where no game can be played at all.
"""

import re
import time
from typing import NamedTuple, Optional

from .child import Child, Ended, Silent
from .controls import Limits, TimeControl
from .errors import Forfeit, Trouble

# Seconds after which a program is greeted once more: GNU Chess may overlook what it is told at its start until it is told
# something else.
NUDGE = 2.0
COORDINATES = re.compile(r"[a-h][1-8][a-h][1-8][qrbn]?", re.I)


class Terms(NamedTuple):
    """What a player is told before a game."""
    fen: Optional[str] = None  # None: the usual start
    control: Optional[TimeControl] = None  # None: no clock
    limits: Limits = Limits()
    ponders: bool = False


class Answer(NamedTuple):
    """A move, a resignation, or the claim of a result."""
    moment: float  # when it came, in the time of time.monotonic
    move: str = ""
    score: Optional[int] = None  # centipawns for the player; scores.py
    depth: Optional[int] = None
    prediction: str = ""  # the opponent's move, to ponder on
    resigns: bool = False
    claim: str = ""


class Player:
    def __init__(self, setup, child, patience):
        self.setup = setup
        self.child = child
        self.patience = patience  # seconds for an answer that should come at once
        self.name = setup.name
        self.score = self.depth = None  # what it last told about its search

    def send(self, *lines):
        self.child.send(*lines)

    def lines(self, seconds):
        """(time, line) for so long. Silent and Ended go through."""
        deadline = time.monotonic() + seconds
        while True:
            yield self.child.next_line(deadline)

    def ask(self, line, answer):
        """Waits for a line that begins with the answer. Forfeit if there is none."""
        self.send(line)
        try:
            for _, said in self.lines(self.patience):
                if said.startswith(answer):
                    return
        except Silent:
            raise Forfeit(f"gave no {answer} after {line}") from None
        except Ended:
            raise Forfeit("ended by itself") from None

    def think(self, moves, clocks, seconds):
        """The answer of the player on move. `moves` are all since the start of the game, in coordinates; `clocks` its own
        and its opponent's. Forfeit if it doesn't answer within so many seconds, or in no proper way."""
        self.score = self.depth = None
        timed = clocks[0].control is not None
        try:
            return self.answer(moves, clocks, seconds)
        except Silent:
            raise Forfeit("lost on time" if timed else f"gave no move within {seconds:g} s") from None
        except Ended:
            raise Forfeit("ended by itself") from None

    def answer_of(self, moment, move, prediction=""):
        return Answer(moment, tidied(move), self.score, self.depth, tidied(prediction))

    def wait_for_opponent(self, moves, prediction, clocks):
        """The opponent is on move. A player that ponders may do so, on the move that it predicted: a legal one."""

    def close(self):
        self.child.close()


def tidied(move):
    """A move in the form of the referee: small letters in coordinates, O in castling."""
    if COORDINATES.fullmatch(move):
        return move.lower()
    return move.replace("0", "O") if re.fullmatch("0-0(-0)?[+#]?", move) else move


def protocol_of(setup, folder, stop, patience):
    """The protocol that a program answers to; it is started for that, and ended. Trouble if it is none."""
    child = Child(setup.command, folder, stop)
    program = " ".join(setup.command)
    end = time.monotonic() + patience
    try:
        while time.monotonic() < end:
            child.send("uci", "xboard", "protover 2")
            try:
                return answered_protocol(child, min(time.monotonic() + NUDGE, end))
            except Silent:
                pass
        raise Trouble(f"{program} answers neither to UCI nor to XBoard within {patience:g} s; an old program of XBoard's "
                      "needs protocol=xboard1")
    except Ended:
        raise Trouble(f"{program} ended when it was started:\n{child.talk()}") from None
    finally:
        child.close()


def answered_protocol(child, deadline):
    while True:
        _, line = child.next_line(deadline)
        if line == "uciok":
            return "uci"
        if line.startswith("feature "):
            return "xboard"
