"""Programs that speak UCI."""

import re

from . import scores
from .child import Ended, Silent
from .errors import Forfeit, Trouble
from .player import Player

OPTION = re.compile(r"option name (.+?) type (\w+)(.*)")
SCORE = re.compile(r"\bscore (cp|mate) (-?\d+)( lowerbound| upperbound)?")
LEAST_TIME = 1  # milliseconds; a clock at 0 means no clock to some


class UciPlayer(Player):
    told = ""  # the position that it ponders on

    def start(self):
        """The handshake. Trouble if there is none, or an option that it doesn't take."""
        if self.setup.init:
            raise Trouble(f"{self.setup.text}: UCI has no commands of its own; option.NAME=VALUE sets options")
        self.send("uci")
        self.options = {}  # what it has, by small letters
        try:
            for _, line in self.lines(self.patience):
                if line.startswith("id name ") and not self.name:
                    self.name = line[len("id name "):].strip()
                if found := OPTION.match(line):
                    self.options[found[1].lower()] = found
                if line == "uciok":
                    break
        except Silent:
            raise Trouble(f"{self.setup.text} gave no uciok within {self.patience:g} s:\n{self.child.talk()}") from None
        except Ended:
            raise Trouble(f"{self.setup.text} ended when it was started:\n{self.child.talk()}") from None
        self.name = self.name or self.setup.command[0].rpartition("/")[2]
        for name, value in self.setup.options:
            self.set_option(name, value)

    def set_option(self, name, value):
        found = self.options.get(name.lower())
        if not found:
            known = ", ".join(sorted(option[1] for option in self.options.values())) or "none"
            raise Trouble(f'{self.name} has no option "{name}"; it has {known}')
        bounds = {bound: int(number) for bound, number in re.findall(r"\b(min|max) (-?\d+)", found[3])}
        if found[2] == "spin" and not (re.fullmatch(r"-?\d+", value) and
                                       bounds.get("min", int(value)) <= int(value) <= bounds.get("max", int(value))):
            limits = f" from {bounds['min']} to {bounds['max']}" if len(bounds) == 2 else ""
            raise Trouble(f'{self.name}: option "{found[1]}" takes a number{limits}, not "{value}"')
        if found[2] == "check" and value not in ("true", "false"):
            raise Trouble(f'{self.name}: option "{found[1]}" takes true or false, not "{value}"')
        if found[2] == "combo":
            choices = [choice.strip() for choice in re.split(r"\bvar\s", found[3])[1:]]
            chosen = next((choice for choice in choices if choice.lower() == value.lower()), None)
            if chosen is None:
                raise Trouble(f'{self.name}: option "{found[1]}" takes one of {", ".join(choices)}, not "{value}"')
            value = chosen
        self.send(f"setoption name {found[1]}" + (f" value {value}" if found[2] != "button" else ""))

    def new_game(self, terms):
        self.terms = terms
        self.start_position = f"position fen {terms.fen}" if terms.fen else "position startpos"
        if terms.ponders and "ponder" in self.options:
            self.set_option("Ponder", "true")
        self.send("ucinewgame")
        self.ask("isready", "readyok")

    def position(self, moves):
        return self.start_position + (" moves " + " ".join(moves) if moves else "")

    def go(self, clocks, white_moves):
        """The words after go; `clocks` are the player's own and its opponent's."""
        words, limits, control = [], self.terms.limits, self.terms.control
        if control and control.is_fixed:
            words.append(f"movetime {milliseconds(control.base)}")
        elif control:
            white, black = clocks if white_moves else clocks[::-1]
            words.append(f"wtime {milliseconds(white.left)} btime {milliseconds(black.left)}")
            if control.increment:
                words.append("winc {0} binc {0}".format(milliseconds(control.increment)))
            if control.moves:
                words.append(f"movestogo {clocks[0].moves_to_go()}")
        words += [f"depth {limits.depth}"] if limits.depth else []
        words += [f"nodes {limits.nodes}"] if limits.nodes else []
        return " ".join(words)

    def white_is_on_move(self, moves):
        begins = self.terms.fen is None or self.terms.fen.split()[1] == "w"
        return begins == (len(moves) % 2 == 0)

    def answer(self, moves, clocks, seconds):
        pondered, self.told = self.told, ""
        if pondered and pondered == self.position(moves):
            self.send("ponderhit")
        else:
            if pondered:
                self.send("stop")
                self.move_within(self.patience)
            self.send(self.position(moves), "go " + self.go(clocks, self.white_is_on_move(moves)))
        return self.move_within(seconds)

    def move_within(self, seconds):
        self.score = self.depth = None
        for moment, line in self.lines(seconds):
            if line.startswith("info "):
                self.hear(line)
            elif line.startswith("bestmove"):
                words = line.split() + ["", "", ""]
                if not words[1]:
                    raise Forfeit("gave an empty bestmove")
                return self.answer_of(moment, words[1], words[3] if words[2] == "ponder" else "")

    def hear(self, line):
        score = SCORE.search(line)
        if not score or re.search(r"\bmultipv (?!1\b)", line) or score[3] and self.score is not None:
            return
        self.score = scores.mate_in(int(score[2])) if score[1] == "mate" else int(score[2])
        if depth := re.search(r"\bdepth (\d+)", line):
            self.depth = int(depth[1])

    def wait_for_opponent(self, moves, prediction, clocks):
        if not self.terms.ponders:
            return
        expected = [*moves, prediction]
        self.told = self.position(expected)
        self.send(self.told, "go ponder " + self.go(clocks, self.white_is_on_move(expected)))

    def close(self):
        if self.told:
            self.send("stop")
        super().close()


def milliseconds(seconds):
    return max(int(1000 * seconds), LEAST_TIME)
