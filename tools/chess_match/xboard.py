"""Programs that speak XBoard's protocol: version 2, or 1 for those of which the user says so."""

import re
import time

from . import scores
from .child import Ended, Silent
from .errors import Forfeit, Trouble
from .player import NUDGE, Answer, Player

# Seconds: what the protocol grants a program to say the next feature.
FEATURE_TIME = 2.0
FEATURE = re.compile(r'(\w+)=("[^"]*"|\S+)')
# Features that are on as long as the program doesn't say otherwise.
DEFAULTS = {"time": "1"}
# Moves are sent in coordinates, which is what a program has to take after this.
REJECTED = {"san"}
THINKING = re.compile(r"(\d+)\S? +([+-]?\d+) +\d+ +\d+")
MOVE = re.compile(r"(?:move|my move is ?:?) *(\S+)", re.I)
RESULT = re.compile(r"(1-0|0-1|1/2-1/2)(?:\s|$)")
MATE_SCORE = 100000  # and the moves to the mate


class XboardPlayer(Player):
    def start(self):
        """The handshake. Trouble if there is none."""
        self.features = dict(DEFAULTS)
        self.pings = 0
        self.send("xboard")
        if self.setup.options:
            raise Trouble(f"{self.setup.text}: XBoard has no options; init=COMMAND sends commands")
        if self.setup.protocol != "xboard1":
            self.shake_hands()
        self.name = self.name or self.features.get("myname") or self.setup.command[0].rpartition("/")[2]

    def shake_hands(self):
        self.send("protover 2")
        end = time.monotonic() + self.patience
        seconds, is_done, has_any = min(NUDGE, self.patience), False, False
        while not is_done:
            try:
                for _, line in self.lines(seconds):
                    if line.startswith("feature "):
                        seconds, is_done = self.take_features(line)
                        has_any = True
                        break
            except Silent:
                if has_any:
                    return  # one that never says that it is done
                if time.monotonic() >= end:
                    raise Trouble(f"{self.setup.text} told no features within {self.patience:g} s; one of the first "
                                  "version of the protocol needs protocol=xboard1") from None
                self.send("protover 2")
            except Ended:
                raise Trouble(f"{self.setup.text} ended when it was started:\n{self.child.talk()}") from None

    def take_features(self, line):
        """How long to wait for more, and whether these were the last."""
        is_done, seconds = False, FEATURE_TIME
        for name, value in FEATURE.findall(line[len("feature "):]):
            value = value.strip('"')
            if name in REJECTED:
                self.send(f"rejected {name}")
                continue
            self.features[name] = value
            self.send(f"accepted {name}")
            if name == "done":
                is_done = value == "1"
                seconds = self.patience
        return seconds, is_done

    def has(self, feature):
        return self.features.get(feature) == "1"

    def new_game(self, terms):
        if terms.fen and not self.has("setboard"):
            raise Trouble(f"{self.name} can't be given a position; openings have to be moves from the start")
        if terms.limits.nodes:
            raise Trouble(f"{self.name} speaks XBoard, which has no limit of nodes")
        self.known = 0  # moves
        self.thinks = False  # by itself, after each move that it gets
        self.send(*self.setup.init, "new", *time_lines(self.name, terms), "post", "hard" if terms.ponders else "easy",
                  "computer", "force", *([f"setboard {terms.fen}"] if terms.fen else []))
        self.wait_until_ready()

    def wait_until_ready(self):
        if self.has("ping"):
            self.pings += 1
            self.ask(f"ping {self.pings}", f"pong {self.pings}")

    def send_move(self, move):
        self.send(("usermove " if self.has("usermove") else "") + move)

    def answer(self, moves, clocks, seconds):
        unknown = moves[self.known:]
        if not self.thinks:
            for move in unknown:
                self.send_move(move)
        if self.has("time") and clocks[0].control:
            self.send(*(f"{word} {max(int(100 * clock.left), 1)}" for word, clock in zip(("time", "otim"), clocks)))
        if self.thinks:
            self.send_move(unknown[-1])
        else:
            self.send("go")
            self.thinks = True
        self.known = len(moves) + 1
        return self.hear(seconds, moves[-1] if moves else "")

    def hear(self, seconds, last_move):
        for moment, line in self.lines(seconds):
            if found := THINKING.match(line):
                self.depth, self.score = int(found[1]), score_of(int(found[2]))
            elif found := MOVE.match(line):
                return self.answer_of(moment, found[1])
            elif line.startswith("resign"):
                return Answer(moment, resigns=True)
            elif found := RESULT.match(line):
                return Answer(moment, claim=found[1])
            elif line.lower().startswith("illegal move") and last_move and line.endswith(last_move):
                raise Forfeit(f"refused the move {last_move}")
            elif line.lower().startswith("tellusererror illegal position"):
                raise Forfeit("refused the position")


def score_of(number):
    """Scores of mates as the protocol has them; what else a program may call a mate stays centipawns."""
    if abs(number) < MATE_SCORE:
        return number
    mate = scores.MATE - (abs(number) - MATE_SCORE)
    return mate if number > 0 else -mate


def time_lines(name, terms):
    """The time control and the depth in the words of the protocol. Trouble where it has none."""
    lines = [f"sd {terms.limits.depth}"] if terms.limits.depth else []
    control = terms.control
    if not control:
        return lines
    if control.base != int(control.base):
        raise Trouble(f"{name} speaks XBoard, which has whole seconds; {control.text} has others")
    if control.is_fixed:
        return [f"st {int(control.base)}", *lines]
    minutes, seconds = divmod(int(control.base), 60)
    return [f"level {control.moves} {minutes}:{seconds:02d} {control.increment:g}", *lines]
