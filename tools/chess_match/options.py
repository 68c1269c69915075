"""The command line of tools/match."""

import argparse
import os
import pathlib
import re
import signal
import sys
import threading

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts" / "lib"))
from option_numbers import seconds, whole  # noqa: E402

from . import openings  # noqa: E402
from .adjudication import Agreement
from .controls import Limits, controls_of
from .errors import Stopped, Trouble
from .game import GameRules
from .setup import setup_of
from .statistics import Sprt
from .tournament import Bookkeeper, Plan, Playing, description_of, introduced

USUAL_TIMES = "30/15,6+0.3,st=1"
MOST = 10 ** 12


def even_number(text):
    number = whole(2, MOST)(text)
    if number % 2:
        raise argparse.ArgumentTypeError(f"takes an even number, not {number}: openings are played with both colours")
    return number


def numbers(count):
    def read(text):
        if not re.fullmatch(r"\d{1,7}" + r":\d{1,7}" * (count - 1), text):
            raise argparse.ArgumentTypeError(f'takes {count} numbers with colons between them, not "{text}"')
        return [int(number) for number in text.split(":")]
    return read


def lead(text):
    if not re.fullmatch(r"-?\d{1,4}(\.\d{1,9})?", text) or abs(float(text)) > 1000:
        raise argparse.ArgumentTypeError(f'takes a number from -1000 to 1000, not "{text}"')
    return float(text)


def troubled(read):
    """The reader of an option whose Trouble is told with the name of the option."""
    def checked(text):
        try:
            return read(text)
        except Trouble as trouble:
            raise argparse.ArgumentTypeError(str(trouble)) from None
    return checked


def parser_of(description):
    parser = argparse.ArgumentParser(prog="tools/match", description=description,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("engine", type=troubled(setup_of), help="the player that is tested")
    parser.add_argument("--opponent", type=troubled(setup_of), action="append", metavar="PLAYER",
                        help="another player; again for several (fairymax)")
    parser.add_argument("--games", type=even_number, default=20, metavar="N", help="against each opponent, an even number (20)")
    parser.add_argument("--time", type=troubled(controls_of), metavar="CONTROL",
                        help=f"time controls with commas between them; pairs of games take turns ({USUAL_TIMES}; none with "
                             "--depth or --nodes)")
    parser.add_argument("--depth", type=whole(1, 100), default=0, metavar="N", help="search so many iterations")
    parser.add_argument("--nodes", type=whole(1, MOST), default=0, metavar="N", help="search so many nodes; UCI only")
    parser.add_argument("--margin", type=seconds(may_be_0=True), metavar="SECONDS",
                        help="what the machine is granted before a flag falls (0.15; 0.4 with st=)")
    parser.add_argument("--patience", type=seconds(), default=60.0, metavar="SECONDS",
                        help="for an answer without a clock (60)")
    parser.add_argument("--openings", type=pathlib.Path, metavar="FILE", help="EPD, FEN or PGN (ten short openings)")
    parser.add_argument("--opening-plies", type=whole(0, 1000), metavar="N",
                        help="of PGN games at most so many half moves")
    parser.add_argument("--seed", type=whole(0, MOST), default=0, metavar="N",
                        help="take the openings in the order of this number (0: as they stand)")
    parser.add_argument("--concurrency", type=whole(1, 1024), default=os.cpu_count() or 1, metavar="N",
                        help="games at a time (one for each processor)")
    parser.add_argument("--resign", type=numbers(2), metavar="MOVES:CENTIPAWNS",
                        help="a game is lost when both have thought so for so many moves")
    parser.add_argument("--draw", type=numbers(3), metavar="FROM:MOVES:CENTIPAWNS",
                        help="from this move on a game is drawn after so many moves near 0")
    parser.add_argument("--draw-after", type=whole(1, 10000), default=0, metavar="MOVES",
                        help="call each game a draw that lasts so long")
    parser.add_argument("--sprt", type=lead, nargs=2, metavar=("ELO0", "ELO1"),
                        help="end the games with an opponent as soon as one of the two leads can be ruled out, each at a risk of "
                             "5 %%; --games may end them before")
    parser.add_argument("--ponder", action="store_true", help="the engine thinks on its opponent's time")
    parser.add_argument("--state", type=pathlib.Path, metavar="FILE",
                        help="keep the games here; the same command goes on after it was stopped or killed")
    parser.add_argument("--pgn", type=pathlib.Path, metavar="FILE",
                        help="the games with scores, depths and times, added to what stands there")
    return parser


def rules_of(arguments):
    agreement = Agreement()
    if arguments.resign:
        agreement = agreement._replace(resign_moves=arguments.resign[0], resign_score=arguments.resign[1])
    if arguments.draw:
        start, moves, score = arguments.draw
        agreement = agreement._replace(draw_from_move=start, draw_moves=moves, draw_score=score)
    return GameRules(limits=Limits(arguments.depth, arguments.nodes), margin=arguments.margin, patience=arguments.patience,
                     agreement=agreement, draw_after=arguments.draw_after)


def plan_of(arguments):
    """The plan, and all openings in their order."""
    if arguments.time is None:
        arguments.time = [None] if arguments.depth or arguments.nodes else controls_of(USUAL_TIMES)
    order = openings.openings_of(arguments.openings, arguments.opening_plies) if arguments.openings else openings.built_in()
    order = openings.ordered(order, arguments.seed)
    if arguments.time == [None] and arguments.games // 2 > len(order):
        raise Trouble(f"only {len(order)} openings for {arguments.games // 2} pairs: without a clock the same games would come "
                      "again")
    players = [arguments.engine, *(arguments.opponent or [setup_of("fairymax")])]
    if arguments.sprt and arguments.sprt[0] >= arguments.sprt[1]:
        raise Trouble("--sprt takes two leads, the smaller one first")
    plan = Plan(players, openings.picked(order, arguments.games // 2), arguments.time, rules_of(arguments), arguments.ponder,
                arguments.concurrency, Sprt(*arguments.sprt) if arguments.sprt else None)
    return plan, order


def say(line):
    print(line, flush=True)


def run(arguments):
    """The exit status: 0, or 1 if the engine that was tested forfeited a game."""
    stop = threading.Event()
    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: stop.set())
    plan, order = plan_of(arguments)
    plan = introduced(plan, stop)
    bookkeeper = Bookkeeper(plan, description_of(plan, order), arguments.state, arguments.pgn, say)
    try:
        Playing(plan, bookkeeper.wants, bookkeeper.take, stop).run()
    finally:
        kept_to_the_rules = bookkeeper.finish()
    return 0 if kept_to_the_rules else 1


def main(description):
    arguments = parser_of(description).parse_args()
    try:
        return run(arguments)
    except (Trouble, OSError) as trouble:  # such as a full disk
        print(f"tools/match: {trouble}", file=sys.stderr)
        return 2
    except Stopped:
        return 130
