"""The games of a match, kept as they end, so that a match that was cut off at any moment goes on where it was.

A text file: a line with what the match is, and a line for each game, in the order in which they ended, both in JSON. A
last line without its end was cut off, and that game is played again.
"""

import fcntl
import json

from .errors import Trouble
from .game import Ending, PlayedGame, PlayedMove


class StateFile:
    def __init__(self, path, plan):
        """Opens the file, or makes it; `plan` is all on which the games depend. Trouble if it belongs to another match,
        holds what is no game, is in use, or can't be read or written."""
        self.path = path
        if path.exists() and not path.is_file():
            raise Trouble(f"{path}: no regular file")
        try:
            self.file = open(path, "a+b")
            fcntl.flock(self.file, fcntl.LOCK_EX | fcntl.LOCK_NB)
            self.file.seek(0)
            text = self.file.read()
        except BlockingIOError:
            raise Trouble(f"{path}: another match is using it") from None
        except OSError as error:
            raise Trouble(f"{path}: {error.strerror}") from None
        whole = text[:text.rfind(b"\n") + 1]
        lines = whole.splitlines()
        self.games = {}
        if not lines:
            if text and not json.dumps(plan).encode().startswith(text):
                raise Trouble(f"{path}: line 1: no match")
            self.file.truncate(0)
            self.write(plan)
            return
        for number, line in enumerate(lines, 1):
            try:
                data = json.loads(line)
                if number == 1:
                    self.compare(data, plan)
                else:
                    self.games[data["number"]] = game_of(data)
            except (ValueError, KeyError, TypeError, AttributeError):
                raise Trouble(f"{path}: line {number}: {'no match' if number == 1 else 'no game'}") from None
        self.file.truncate(len(whole))  # only now: what is no match is left as it is

    def compare(self, kept, plan):
        for key, value in plan.items():
            if kept.get(key) != value:
                raise Trouble(f"{self.path}: it belongs to another match: {key} is {kept.get(key)} there, {value} here")

    def add(self, number, game):
        least = [None if time == float("inf") else time for time in (game.least_time[True], game.least_time[False])]
        self.write({"number": number, "ending": game.ending, "least": least, "moves": game.moves})

    def write(self, data):
        try:
            self.file.write(json.dumps(data).encode() + b"\n")
            self.file.flush()
        except OSError as error:
            raise Trouble(f"{self.path}: {error.strerror}") from None


def game_of(data):
    white, black = (float("inf") if time is None else float(time) for time in data["least"])
    return PlayedGame(Ending(*data["ending"]), [PlayedMove(*move) for move in data["moves"]], {True: white, False: black})
