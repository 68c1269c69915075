"""A match against one opponent, or several in turn: who plays whom, several games at a time, and what is told of them."""

import hashlib
import pathlib
import tempfile
import threading
import time
from typing import NamedTuple, Optional

from .child import Child, find_program
from .controls import TimeControl
from .errors import Forfeit, Stopped, Trouble
from .game import COLOUR, GameRules, play
from .openings import Opening
from .pgn import pgn_of
from .pgn_file import PgnFile
from .player import Terms, protocol_of
from .standing import Standing, half_points_of_first, wins_draws_losses
from .state_file import StateFile
from .statistics import Sprt
from .uci import UciPlayer
from .xboard import XboardPlayer


class Plan(NamedTuple):
    players: list  # of Setup: the engine that is tested, and its opponents
    openings: list  # one for each pair of games with an opponent
    controls: list  # time controls: pairs of games take turns; [None]: no clock
    rules: GameRules
    ponders: bool = False  # the engine that is tested
    concurrency: int = 1
    test: Optional[Sprt] = None  # ends the games with an opponent


class Fixture(NamedTuple):
    """Games come in pairs, opponents take turns by pairs, and all of them get the same openings."""
    number: int
    opponent: int  # among the players
    game: int  # with this opponent: its standing counts by these numbers
    opening: Opening
    control: Optional[TimeControl]

    def engine_is_white(self):
        return self.number % 2 == 0


def fixtures_of(plan):
    opponents = len(plan.players) - 1
    for number in range(2 * len(plan.openings) * opponents):
        pair, turn = divmod(number // 2, opponents)
        yield Fixture(number, 1 + turn, 2 * pair + number % 2, plan.openings[pair], plan.controls[pair % len(plan.controls)])


# --- Players ---

def player_of(setup, folder, stop, patience):
    kind = UciPlayer if setup.protocol == "uci" else XboardPlayer
    return kind(setup, Child(setup.command, folder, stop), patience)


class Seat:
    """A player in a folder of its own, for as long as a `with` lasts. The program is started anew for each game, so that
    a game knows nothing of the one before."""

    def __init__(self, setup, terms, stop, patience):
        self.setup, self.terms, self.stop, self.patience = setup, terms, stop, patience

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory()
        try:
            self.player = player_of(self.setup, self.setup.folder or self.folder.name, self.stop, self.patience)
        except BaseException:
            self.folder.cleanup()
            raise
        try:
            self.player.start()
            self.player.new_game(self.terms)
        except BaseException:
            self.__exit__()
            raise
        return self.player

    def __exit__(self, *_):
        self.player.close()
        self.folder.cleanup()


def met(setup, terms, stop, patience):
    """The setup with the protocol and the name that its program answers with. Trouble if it can't play by these terms,
    of which there are some."""
    find_program(setup.command[0])
    if not setup.protocol:
        with tempfile.TemporaryDirectory() as folder:
            setup = setup._replace(protocol=protocol_of(setup, setup.folder or folder, stop, patience))
    for each in terms:
        seat = Seat(setup, each, stop, patience)
        try:
            with seat as player:
                setup = setup._replace(name=player.name)
        except Forfeit as forfeit:
            raise Trouble(f"{setup.text} {forfeit}:\n{seat.player.child.talk()}") from None
    return setup


def introduced(plan, stop):
    """The plan with players that have been met, and have names of their own."""
    fen = next((opening.fen for opening in plan.openings if opening.fen), None)
    players = []
    for i, setup in enumerate(plan.players):
        terms = [Terms(fen, control, plan.rules.limits, plan.ponders and i == 0) for control in plan.controls]
        setup = met(setup, terms, stop, plan.rules.patience)
        names = [player.name for player in players]
        name = next(name for n in range(1, len(plan.players) + 1)
                    if (name := setup.name + (f" {n}" if n > 1 else "")) not in names)
        players.append(setup._replace(name=name))
    return plan._replace(players=players)


def description_of(plan, order):
    """All on which the games depend, for the state file. `order`: all openings in their order."""
    rules = plan.rules
    return {
        "match": 1,
        "players": [f"{setup.text} {fingerprint(pathlib.Path(find_program(setup.command[0])).read_bytes())}"
                    for setup in plan.players],
        "time": [control.text if control else "-" for control in plan.controls],
        "limits": list(rules.limits), "agreement": list(rules.agreement), "margin": rules.margin,
        "draw after": rules.draw_after, "ponder": plan.ponders,
        "openings": fingerprint("\n".join(f"{opening.fen} {' '.join(opening.moves)}" for opening in order).encode()),
    }


def fingerprint(data):
    return hashlib.sha256(data).hexdigest()[:16]


# --- Playing ---

class Playing:
    """All games, so many at a time. What is wrong in one ends them all, and so does a match that is over: `on_game` tells
    whether it is."""

    def __init__(self, plan, is_wanted, on_game, stop):
        self.plan = plan
        self.on_game = on_game
        self.stop = stop
        self.lock = threading.Lock()
        self.fixtures = (fixture for fixture in fixtures_of(plan) if is_wanted(fixture))
        self.trouble = None

    def run(self):
        threads = [threading.Thread(target=self.play_all) for _ in range(self.plan.concurrency)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if self.trouble:
            raise self.trouble

    def play_all(self):
        try:
            while fixture := self.next_fixture():
                game = self.play(fixture)
                with self.lock:
                    if self.on_game(fixture, game):
                        self.stop.set()
        except Stopped:
            pass
        except Exception as trouble:
            with self.lock:
                self.trouble = self.trouble or trouble
            self.stop.set()

    def next_fixture(self):
        with self.lock:
            return None if self.stop.is_set() else next(self.fixtures, None)

    def play(self, fixture):
        plan, setups = self.plan, (self.plan.players[0], self.plan.players[fixture.opponent])
        game_rules = plan.rules._replace(control=fixture.control)
        seats = [Seat(setup, Terms(fixture.opening.fen, fixture.control, game_rules.limits, plan.ponders and not i),
                      self.stop, game_rules.patience) for i, setup in enumerate(setups)]
        with seats[0] as engine, seats[1] as opponent:
            white, black = (engine, opponent) if fixture.engine_is_white() else (opponent, engine)
            return play(white, black, fixture.opening, game_rules)


# --- What is told ---

class Bookkeeper:
    """Counts games as they end, keeps them, and tells how it stands. `say` takes lines for the user."""

    def __init__(self, plan, description, state_path, pgn_path, say):
        self.plan = plan
        self.say = say
        self.fixtures = list(fixtures_of(plan))
        self.standings = {i: Standing(plan.test) for i in range(1, len(plan.players))}
        self.totals = {2: 0, 1: 0, 0: 0}
        self.least = [float("inf")] * len(plan.players)
        self.troubles = []  # (player, text)
        self.known = set()
        self.state = StateFile(state_path, description) if state_path else None
        known_games = []
        for number, game in (self.state.games if self.state else {}).items():
            if number < len(self.fixtures):
                self.known.add(number)
                self.count(self.fixtures[number], game)
                known_games.append(self.pgn_of(self.fixtures[number], game))
        self.pgn = PgnFile(pgn_path, "".join(known_games)) if pgn_path else None
        if self.known:
            say(f"went on after {len(self.known)} games")
        self.before = len(self.known)
        self.start = time.monotonic()

    def names(self, fixture):
        names = self.plan.players[0].name, self.plan.players[fixture.opponent].name
        return names if fixture.engine_is_white() else names[::-1]

    def take(self, fixture, game):
        """Whether the match is over: all tests are decided."""
        if self.state:
            self.state.add(fixture.number, game)
        self.known.add(fixture.number)
        self.count(fixture, game)
        if self.pgn:
            self.pgn.add(self.pgn_of(fixture, game))
        self.say(f"game {len(self.known)} of {len(self.fixtures)}: {' - '.join(self.names(fixture))} {game.ending.result}, "
                 f"{game.ending.reason}, {(len(game.moves) + 1) // 2} moves{self.estimate()}")
        if game.talk:
            self.say("\n".join("    " + line for line in game.talk.splitlines()))
        self.say(self.line(fixture.opponent))
        return all(standing.verdict is not None for standing in self.standings.values())

    def count(self, fixture, game):
        white = fixture.engine_is_white()
        self.standings[fixture.opponent].take(fixture.game, game.ending.result)
        self.totals[half_points_of_first(game.ending.result, white)] += 1
        for player, colour in ((0, white), (fixture.opponent, not white)):
            self.least[player] = min(self.least[player], game.least_time[colour])
        if (blamed := game.ending.forfeited) is not None:
            player = 0 if blamed == white else fixture.opponent
            self.troubles.append((player, f"round {round_of(fixture)}: {self.plan.players[player].name} "
                                          f"{game.ending.reason.removeprefix(COLOUR[blamed] + ' ')}"))

    def pgn_of(self, fixture, game):
        white, black = self.names(fixture)
        tags = [("Event", "Match"), ("Site", "?"), ("Date", "????.??.??"), ("Round", round_of(fixture)), ("White", white),
                ("Black", black), ("Result", game.ending.result),
                ("TimeControl", fixture.control.text if fixture.control else "-"), ("Termination", game.ending.reason)]
        return pgn_of(tags, game.moves, game.ending.result, fixture.opening.fen)

    def estimate(self):
        played, left = len(self.known) - self.before, len(self.fixtures) - len(self.known)
        minutes = (time.monotonic() - self.start) / played * left / 60
        return f"; about {minutes:.0f} minutes more" if minutes >= 1 else ""

    def line(self, opponent):
        return self.told_of(opponent, self.standings[opponent].line())

    def told_of(self, opponent, text):
        return f"against {self.plan.players[opponent].name}: {text}" if len(self.standings) > 1 else text

    def wants(self, fixture):
        return fixture.number not in self.known and self.standings[fixture.opponent].verdict is None

    def finish(self):
        """Tells the whole. Whether the engine that was tested kept to the rules."""
        if self.least[0] < float("inf"):
            self.say("least time left: " + ", ".join(f"{setup.name} {least:.3f} s" for setup, least in
                                                     zip(self.plan.players, self.least) if least < float("inf")))
        for _, text in self.troubles:
            self.say("trouble: " + text)
        for opponent in self.standings:
            self.say(self.line(opponent))
            if decision := self.standings[opponent].decision():
                self.say(self.told_of(opponent, decision))
        games = sum(self.totals.values())
        if len(self.standings) > 1 and games:
            share = (self.totals[2] + self.totals[1] / 2) / games
            self.say(f"in all: games {games}: {wins_draws_losses(self.totals)}, {100 * share:.1f} %")
        return not any(player == 0 for player, _ in self.troubles)


def round_of(fixture):
    return f"{fixture.number // 2 + 1}.{fixture.number % 2 + 1}"
