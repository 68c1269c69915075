"""Games that are disturbed all the time, for scripts/soak: what is done to the players, and what is wrong.

The game itself is that of tools/chess_match: its referee judges each move, its clocks run. Around the moves the tested
players are asked for hints, analyses and draws, told to move at once, and made to take moves back.
"""

import math
import random
import tempfile
import threading
import time
from typing import NamedTuple

from chess_match.adjudication import Adjudicator
from chess_match.child import Child, Ended, Silent
from chess_match.errors import Forfeit, Trouble
from chess_match.game import COLOUR, Conduct, Ending
from chess_match.player import Terms
from chess_match.referee import rules
from chess_match.uci import UciPlayer
from chess_match.xboard import XboardPlayer, time_lines

PATIENCE = 30.0  # seconds for an answer that should come at once
POKES = 0.15  # share of the moves in whose search something is said
DISTURBANCES = 0.15  # share of the moves after which something is asked


class Tested:
    """What the engine's two programs have in common here."""
    is_tested = True

    def prepare(self, chance, count, least):
        """`chance` is a random.Random, `count` takes words of what was done. `least` is the time, in seconds, that a
        search has at the least: what is said during it comes within."""
        self.chance, self.count, self.least = chance, count, least

    def answer(self, moves, clocks, seconds):
        if self.chance.random() >= POKES:
            return super().answer(moves, clocks, seconds)
        word = self.chance.choice(self.POKES)
        timer = threading.Timer(self.chance.uniform(0, self.least), self.send, [word])
        timer.start()
        try:
            answer = super().answer(moves, clocks, seconds)
        finally:
            timer.cancel()
            timer.join()  # before anything else is said
        self.count(f"{word} while it thinks")
        return answer


class TestedXboard(Tested, XboardPlayer):
    POKES = ("?", "hint", "draw", ".", "hard", "easy", "post", "?")

    def new_game(self, terms):
        self.terms = terms
        super().new_game(terms)

    def heard(self, *lines):
        """What is said until the answer to a ping."""
        self.pings += 1
        self.send(*lines, f"ping {self.pings}")
        said = []
        for _, line in self.lines(PATIENCE):
            if line == f"pong {self.pings}":
                return said
            said.append(line)
        return said

    def disturb(self, conduct):
        """Something that a user may do when it has moved. The ending, if the game ends by it."""
        return self.chance.choice((self.hint, self.draw, self.analyze, self.remove, self.undo, self.change))(conduct)

    def hint(self, conduct):
        self.count("hint")
        for line in self.heard("hint"):
            if line.startswith("Hint: "):
                try:
                    conduct.position.find(line.split()[1])
                except ValueError:
                    raise Forfeit(f"gave the illegal hint {line.split()[1]}") from None
                self.count("hint answered")

    def draw(self, conduct):
        self.count("draw")
        if any(line.startswith("offer draw") for line in self.heard("draw")):
            self.count("draw agreed")
            return Ending("1/2-1/2", "Draw agreed")

    def analyze(self, conduct):
        self.count("analyze")
        self.send("analyze")
        time.sleep(self.chance.uniform(0, 0.2))
        self.send(".")
        self.heard("exit", "force")
        self.thinks = False

    def remove(self, conduct):
        if len(conduct.moves) - conduct.of_opening >= 2:
            self.count("remove")
            self.heard("remove")
            self.known = len(conduct.moves) - 2
            conduct.take_back(2, self)

    def begin_clocks(self):
        self.heard(*time_lines(self.name, self.terms))

    def undo(self, conduct):
        number = self.chance.randint(1, 3)
        if len(conduct.moves) - conduct.of_opening >= number:
            self.count("undo")
            self.take_back(number)
            self.known = len(conduct.moves) - number
            conduct.take_back(number, self)

    def take_back(self, number):
        self.heard("force", *["undo"] * number)
        self.thinks = False
        self.known -= number

    def change(self, conduct):
        """What changes nothing that matters."""
        line = self.chance.choice(("hard", "easy", "post", "?", ".", "computer", "name x", "rating 2000 2100", "no such command"))
        self.count("other words")
        self.heard(line)

    def ended(self, ending):
        self.heard(f"result {ending.result} {{{ending.reason}}}", "force")


class TestedUci(Tested, UciPlayer):
    POKES = ("stop", "isready", "stop", "debug off", "no such command")

    def disturb(self, conduct):
        return self.chance.choice((self.analyze, self.ready, self.change, self.undo))(conduct)

    def stop_pondering(self):
        if self.told:
            self.told = ""
            self.send("stop")
            self.move_within(PATIENCE)

    def analyze(self, conduct):
        self.count("analyze")
        self.stop_pondering()
        self.send(self.position([move.move for move in conduct.moves]), "go infinite")
        time.sleep(self.chance.uniform(0, 0.2))
        self.send("isready", "stop")
        answer = self.move_within(PATIENCE)
        if not conduct.is_legal(answer.move):
            raise Forfeit(f"gave the illegal move {answer.move} in an analysis")
        self.ask("isready", "readyok")

    def ready(self, conduct):
        self.count("isready")
        self.ask("isready", "readyok")

    def change(self, conduct):
        self.count("setoption")
        self.stop_pondering()
        self.send(self.chance.choice(("setoption name Clear Hash", "setoption name Hash value 4", "ucinewgame",
                                      "setoption name Contempt value 20", "setoption name Contempt value 0")))
        self.ask("isready", "readyok")

    def undo(self, conduct):
        number = self.chance.randint(1, 4)
        if len(conduct.moves) - conduct.of_opening >= number:
            self.count("undo")
            conduct.take_back(number, self)
            self.take_back(number)

    def take_back(self, number):
        self.stop_pondering()

    def begin_clocks(self):
        """It is told the time with each move."""

    def ended(self, ending):
        self.stop_pondering()
        self.ask("isready", "readyok")


class OtherXboard(XboardPlayer):
    is_tested = False

    def take_back(self, number):
        """Programs differ in what they think of `undo`: the game is told anew."""
        self.new_game(self.terms)

    def begin_clocks(self):
        """They began with the game."""

    def new_game(self, terms):
        self.terms = terms
        super().new_game(terms)


class OtherUci(UciPlayer):
    is_tested = False

    def take_back(self, number):
        if self.told:
            self.told = ""
            self.send("stop")
            self.move_within(PATIENCE)

    def begin_clocks(self):
        """It is told the time with each move."""


CLASSES = {(True, "xboard"): TestedXboard, (True, "uci"): TestedUci, (False, "xboard"): OtherXboard, (False, "uci"): OtherUci}


class DisturbedGame(Conduct):
    def __init__(self, players, opening, game_rules, chance):
        super().__init__(players, opening, game_rules)
        self.chance = chance
        self.start = rules.Position.from_fen(opening.fen or rules.START)
        self.of_opening = len(self.moves)
        self.played = 0  # moves by tested players, those that were taken back included
        self.ending_of_disturbance = None

    def next_move(self):
        white = self.position.white_to_move
        mover = self.players[white]
        ending = super().next_move()
        if not mover.is_tested or ending and ending.forfeited is not None:
            return ending
        self.played += 1
        if ending or self.chance.random() >= DISTURBANCES:
            return ending
        try:
            return mover.disturb(self)
        except Forfeit as forfeit:
            return Ending("0-1" if white else "1-0", f"{COLOUR[white]} {forfeit}", white)
        except Silent:
            return Ending("0-1" if white else "1-0", f"{COLOUR[white]} gave no answer", white)
        except Ended:
            return Ending("0-1" if white else "1-0", f"{COLOUR[white]} ended by itself", white)

    def take_back(self, number, by):
        """`by` has taken the moves back itself, the other player is told here."""
        for _ in range(number):
            self.moves.pop()
            self.keys.pop()
        self.position = self.start
        for move in self.moves:
            self.position = self.position.make(self.position.find(move.move))
        # Programs that keep their own clocks differ in what they make of this, so that all clocks begin anew.
        self.clocks = {colour: self.rules.clock(0) for colour in (True, False)}
        self.adjudicator = Adjudicator(self.rules.agreement)
        for player in self.players.values():
            if player is not by:
                player.take_back(number)
            player.begin_clocks()


class Fixture(NamedTuple):
    """One game: all that it is made of but the players' speed."""
    number: int
    white: str  # names of players
    black: str
    opening: object
    control: object
    ponders: bool
    seed: str


class Outcome(NamedTuple):
    ending: object
    plies: int  # of the game as it stood at its end
    tested: int  # moves by the engine
    counts: dict  # what was done to it
    fault: str  # "" if the engine did nothing wrong
    kind: str  # of the fault: KINDS
    story: str  # the moves and the last words


def meeting(number, tested, opponents, controls):
    """Who plays whom at which time control in a game. All come by turns, and the whole product of the three has come once
    before any of it comes again."""
    pairs = [(player, opponent) for opponent in opponents for player in tested]
    # Both turns alone come to the same after this many games: from there on the controls are one ahead.
    round_of_both = math.lcm(len(pairs), len(controls))
    return *pairs[number % len(pairs)], controls[(number + number // round_of_both) % len(controls)]


KINDS = ("time loss", "illegal move", "crash", "hang", "other")


def kind_of(reason):
    for words, kind in (("lost on time", "time loss"), ("illegal", "illegal move"), ("ended by itself", "crash"),
                        ("gave no", "hang"), ("does not end", "hang"), ("ends with", "crash"), ("standard error", "crash")):
        if words in reason:
            return kind
    return "other"


def play(fixture, setups, is_tested, rules_of_game, stop):
    """Plays a game between fresh processes. Trouble and Stopped go through."""
    chance = random.Random(fixture.seed)
    counts = {}
    terms = Terms(fixture.opening.fen, fixture.control, rules_of_game.limits, fixture.ponders)
    folders, players = [], {}
    try:
        for white, name in ((True, fixture.white), (False, fixture.black)):
            folders.append(tempfile.TemporaryDirectory(prefix="vorka-soak-"))
            setup = setups[name]
            child = Child(setup.command, setup.folder or folders[-1].name, stop)
            players[white] = CLASSES[is_tested[name], setup.protocol.rstrip("1")](setup, child, PATIENCE)
            if is_tested[name]:
                players[white].prepare(chance, lambda what: counts.update({what: counts.get(what, 0) + 1}), least_time(fixture))
            try:
                players[white].start()
                players[white].new_game(terms)
            except (Trouble, Forfeit) as trouble:
                if not is_tested[name]:
                    raise Trouble(f"{name}: {trouble}") from None
                fault = f"{COLOUR[white]} can't begin: {trouble}"
                return Outcome(Ending("0-1" if white else "1-0", fault), 0, 0, {}, fault, "other", fault)
        game = DisturbedGame(players, fixture.opening, rules_of_game._replace(control=fixture.control), chance)
        played = game.play()
        fault = fault_of(played.ending, players)
        names = {True: fixture.white, False: fixture.black}
        story = "" if not fault else "\n".join([
            fault, f"{fixture.white} - {fixture.black}, {fixture.control.text}, ponder {fixture.ponders}, seed {fixture.seed}",
            f"from {fixture.opening.fen}: " + " ".join(move.san for move in played.moves),
            *(f"--- {names[white]}\n{player.child.talk()}" for white, player in players.items())])
        return Outcome(played.ending, len(played.moves), game.played, counts, fault, kind_of(fault) if fault else "", story)
    finally:
        for player in players.values():
            player.close()
        for folder in folders:
            folder.cleanup()


def least_time(fixture):
    """About how long a move takes; seconds."""
    control = fixture.control
    return control.base / (control.moves or 40) / 2 + control.increment / 2


def fault_of(ending, players):
    """What a tested player did wrong in the game or at its end; "" for nothing."""
    if ending.forfeited is not None and players[ending.forfeited].is_tested:
        return ending.reason
    for white, player in players.items():
        if player.is_tested and (fault := fault_at_end(player, ending)):
            return f"{COLOUR[white]} {fault}"
    return ""


def fault_at_end(player, ending):
    """It still answers, and ends when it is told to: with status 0 and without a word on standard error."""
    try:
        player.ended(ending)
    except (Silent, Forfeit):
        return "gave no answer at the end"
    except Ended:
        return "ended by itself at the end"
    player.send("quit")
    process = player.child.process
    end = time.monotonic() + PATIENCE
    while process.poll() is None and time.monotonic() < end:
        time.sleep(0.01)
    if process.poll() is None:
        return "does not end"
    if process.returncode:
        return f"ends with status {process.returncode}"
    player.child.errors.seek(0)
    return "wrote to standard error" if player.child.errors.read().strip() else ""
