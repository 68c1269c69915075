"""Time controls as the user writes them, and the clocks that keep them. All times are seconds.

    10+0.1       10 seconds for the game, and 0.1 more for each move
    40/8         8 seconds for each 40 moves; 40/1:00+0.5 with minutes, and with an increment
    st=1         one second for each move
"""

import re
from typing import NamedTuple

from .errors import Trouble

NUMBER = r"\d+(?:\.\d+)?"
MOST_SECONDS = 1e6


class TimeControl(NamedTuple):
    text: str
    base: float
    increment: float = 0.0
    moves: int = 0  # until the base is added again; 0: never
    is_fixed: bool = False  # the base is for each move, and what is saved of it is lost


def control_of(text):
    """Trouble for what is no time control."""
    found = re.fullmatch(rf"st=({NUMBER})", text)
    if found:
        control = TimeControl(text, float(found[1]), moves=1, is_fixed=True)
    else:
        found = re.fullmatch(rf"(?:(\d+)/)?(?:(\d+):)?({NUMBER})(?:\+({NUMBER}))?", text)
        if not found or found[1] and int(found[1]) == 0:
            raise Trouble(f'"{text}" is no time control, such as 10+0.1, 40/8, 40/1:00+0.5, or st=1')
        base = 60.0 * int(found[2] or 0) + float(found[3])
        control = TimeControl(text, base, float(found[4] or 0), int(found[1] or 0))
    if not 0.001 <= control.base <= MOST_SECONDS or control.increment > MOST_SECONDS:
        raise Trouble(f'the time control "{text}" has too little time, or too much')
    return control


def controls_of(text):
    """Several with commas between them."""
    return [control_of(part.strip()) for part in text.split(",")]


class Limits(NamedTuple):
    """What bounds each search, apart from a clock; 0 stands for no bound."""
    depth: int = 0
    nodes: int = 0


class Clock:
    """The clock of one player. `margin` is what the machine is granted before the flag falls; a clock without a time
    control runs for ever. Moves of the opening, which the player has `made` without thinking, are moves of the time
    control as well: so XBoard counts them, and programs that keep their own clock."""

    def __init__(self, control, margin, made=0):
        self.control = control
        self.margin = margin
        self.left = control.base if control else float("inf")
        self.least = self.left
        self.made = made

    def allowance(self):
        """How long the player may think before its flag falls."""
        return max(self.left, 0.0) + self.margin

    def moves_to_go(self):
        """Moves until there is more time; 0 if never."""
        moves = self.control.moves
        return moves - self.made % moves if moves else 0

    def spend(self, seconds):
        """Time that went by, whether there was a move after it or not."""
        self.left -= seconds
        self.least = min(self.least, self.left)

    def take(self, seconds):
        """A move took so long. Whether the flag stayed up."""
        if not self.control:
            return True
        self.spend(seconds)
        stays = self.left > -self.margin
        self.made += 1
        self.left += self.control.increment
        if self.control.is_fixed:
            self.left = self.control.base
        elif self.control.moves and self.made % self.control.moves == 0:
            self.left += self.control.base
        return stays
