"""The parts of tools/match by themselves, and its statistics beside those of tools/selfplay."""

import os
import pathlib
import random
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from chess_match import child, openings, pgn, scores  # noqa: E402
from chess_match.adjudication import Adjudicator, Agreement  # noqa: E402
from chess_match.controls import Clock, control_of, controls_of  # noqa: E402
from chess_match.errors import Trouble  # noqa: E402
from chess_match.game import PlayedMove  # noqa: E402
from chess_match.player import Terms  # noqa: E402
from chess_match.setup import setup_of  # noqa: E402
from chess_match.standing import Standing  # noqa: E402
from chess_match.statistics import Sprt  # noqa: E402
from chess_match.uci import UciPlayer  # noqa: E402

SELFPLAY = os.environ.get("VORKA_SELFPLAY")


# --- Time ---

@pytest.mark.parametrize("text, base, increment, moves, is_fixed", [
    ("10+0.1", 10, 0.1, 0, False), ("40/8", 8, 0, 40, False), ("40/1:00+0.5", 60, 0.5, 40, False), ("st=1", 1, 0, 1, True),
    ("2:30", 150, 0, 0, False), ("0.25+0.01", 0.25, 0.01, 0, False),
])
def test_time_controls(text, base, increment, moves, is_fixed):
    assert control_of(text) == (text, base, increment, moves, is_fixed)


@pytest.mark.parametrize("text", ["", "x", "10+", "+1", "40/", "/5", "0/5", "st=", "st=0", "1e3", "-5", "10+0.1+2", "9999999", "5 "])
def test_no_time_controls(text):
    with pytest.raises(Trouble, match="time"):
        control_of(text)
    assert len(controls_of("5+1, 40/9")) == 2


def test_clocks():
    clock = Clock(control_of("2/10+1"), 0.5)
    assert clock.allowance() == 10.5 and clock.moves_to_go() == 2
    assert clock.take(4) and clock.left == 7 and clock.moves_to_go() == 1
    assert clock.take(7.4) and clock.left == pytest.approx(10.6) and clock.least == pytest.approx(-0.4), "within the margin"
    assert not clock.take(11.2)
    fixed = Clock(control_of("st=1"), 0)
    assert fixed.take(0.3) and fixed.left == 1 and not fixed.take(1.1)
    assert Clock(None, 0).take(1e9)


def test_moves_of_the_opening_are_moves_of_the_time_control():
    """XBoard counts them, and so do programs that keep their own clock."""
    clock = Clock(control_of("4/10"), 0, made=2)
    assert clock.moves_to_go() == 2 and clock.take(5) and clock.take(1) and clock.left == 14 and clock.moves_to_go() == 4


def test_missing_package_is_named(tmp_path, monkeypatch):
    monkeypatch.setattr(child, "PATH", str(tmp_path))
    with pytest.raises(Trouble, match="^there is no program toga2; it is in Debian's package toga2$"):
        child.find_program("toga2")
    with pytest.raises(Trouble, match="^there is no program nonsense$"):
        child.find_program("nonsense")
    (tmp_path / "toga2").write_text("#!/bin/sh\n")
    (tmp_path / "toga2").chmod(0o755)
    assert child.find_program("toga2") == str(tmp_path / "toga2")


def test_players_are_described():
    setup = setup_of("toga2 -x option.Hash=64 \"option.Book File=a b\" name='My Toga' protocol=uci folder=here")
    assert setup.command == ["toga2", "-x"] and setup.options == (("Hash", "64"), ("Book File", "a b"))
    assert (setup.name, setup.protocol, setup.folder) == ("My Toga", "uci", "here")
    assert setup_of('gnuchess --xboard init="memory 64" init=random').init == ("memory 64", "random")


def test_clocks_are_told_by_colour():
    player = UciPlayer(setup_of("x"), None, 1)
    player.terms = Terms(control=control_of("5+1"))
    own, other = Clock(control_of("5+1"), 0), Clock(control_of("5+1"), 0)
    own.spend(2)
    assert player.go([own, other], white_moves=True) == "wtime 3000 btime 5000 winc 1000 binc 1000"
    assert player.go([own, other], white_moves=False) == "wtime 5000 btime 3000 winc 1000 binc 1000"
    for fen, moves, white_moves in ((None, [], True), (None, ["e2e4"], False), ("8/8/8/8/8/8/8/8 b - - 0 1", [], False)):
        player.terms = Terms(fen)
        assert player.white_is_on_move(moves) == white_moves


def test_openings_of_games_are_cut():
    opening = openings.Opening(None, ("e4", "e5", "Nf3"), "here")
    assert openings.checked(opening)[0].moves == ("e2e4", "e7e5", "g1f3")
    text = '[Event "x"]\n\n1. e4 e5 2. Nf3 *\n'
    assert [len(game.moves) for plies in (None, 2) for game in openings.games_of("x", text, plies)] == [3, 2]


@pytest.mark.parametrize("score, text", [(23, "+0.23"), (-150, "-1.50"), (0, "+0.00"), (scores.mate_in(3), "+M3"),
                                         (scores.mate_in(-2), "-M2"), (scores.mate_in(0), "-M0"), (32000, "+320.00")])
def test_scores_go_in_and_out(score, text):
    assert scores.text_of(score) == text and scores.score_of(text) == score


@pytest.mark.parametrize("rows, result", [
    ([(True, 800), (False, -800)] * 3 + [(True, 800), (False, -800)], "1-0"),
    ([(True, 800), (False, -799)] * 5, None),
    ([(True, 800), (False, -800)] * 3 + [(True, None), (False, -800)], None),
    ([(True, -900), (False, 900)] * 4, "0-1"),
    ([(True, 5), (False, -5)] * 8, "1/2-1/2"),
    ([(True, 5), (False, -6)] * 8, None),
    ([(True, 5), (False, None)] * 8, None),
])
def test_agreement(rows, result):
    adjudicator = Adjudicator(Agreement(resign_moves=4, resign_score=800, draw_from_move=40, draw_moves=8, draw_score=5))
    said = [adjudicator.take(white, score, 40 + i // 2) for i, (white, score) in enumerate(rows)]
    assert said[-1] == result and not any(said[:-1])
    assert all(not Adjudicator(Agreement()).take(white, score, 60) for white, score in rows)


def test_draws_are_agreed_from_a_move_on():
    for first, result in ((39, None), (40, "1/2-1/2")):
        adjudicator = Adjudicator(Agreement(draw_from_move=40, draw_moves=1, draw_score=0))
        adjudicator.take(True, 0, first)
        assert adjudicator.take(False, 0, 40) == result


def test_pgn_is_read_as_it_was_written():
    moves = [PlayedMove("e2e4", "e4"), PlayedMove("e7e5", "e5", 0.25, -13, 7), PlayedMove("g1f3", "Nf3", 1.0, scores.mate_in(4), 12),
             PlayedMove("b8c6", "Nc6", 0.5)]
    text = pgn.pgn_of([("Event", 'a "b" \\'), ("White", "A")], moves * 1, "1-0")
    assert text == ('[Event "a \\"b\\" \\\\"]\n[White "A"]\n\n'
                    "1. e4 e5 {-0.13/7 0.250s} 2. Nf3 {+M4/12 1.000s} Nc6 {0.500s} 1-0\n\n")
    game, = pgn.read_games(text)
    assert game.tags == {"Event": 'a "b" \\', "White": "A"} and game.result == "1-0"
    assert game.moves == [("e4", None, None), ("e5", -13, 7), ("Nf3", scores.mate_in(4), 12), ("Nc6", None, None)]
    black = pgn.movetext(moves[:2], "*", "4k3/8/8/8/8/8/8/4K3 b - - 0 12")
    assert black.startswith("12... e4 13. e5")


def test_other_programs_pgn_is_read():
    game, = pgn.read_games('[Event "x"]\n\n1. e4 {+0.31/12 0.40s} (1. d4 {+0.2/3 1s} d5 (1... Nf6)) e5! {a comment} $4 2.Nf3\n'
                           '{-M3/9 0.1s, White mates} Nc6 {book} 1/2-1/2\n')
    assert [(move.san, move.score) for move in game.moves] == [("e4", 31), ("e5!", None), ("Nf3", -scores.mate_in(3)), ("Nc6", None)]


# --- Openings ---

@pytest.mark.parametrize("text, count", [
    ('\ufeff[Event "x"]\n\n1. e4 e5 *\n', 1), ("\ufeff4k3/8/8/8/8/8/8/R3K3 w Q -\n", 1),
    ('[Event "x"]\n\n1. e4! (1. d4 {the (other)} d5) 1... e5 $1 *\n\n[Event "y"]\n\n*\n', 2),
])
def test_openings_are_read(tmp_path, text, count):
    (tmp_path / "openings").write_text(text, encoding="utf-8")
    read = openings.openings_of(tmp_path / "openings", None)
    assert len(read) == count
    if "e5" in text:
        assert openings.checked(read[0])[0].moves == ("e2e4", "e7e5")


# --- The statistics are those of selfplay ---

def counts_of(pairs):
    """Results of games that give these pairs, by the number of half points of the first player."""
    both = {0: ("0-1", "1-0"), 1: ("1/2-1/2", "1-0"), 2: ("1-0", "1-0"), 3: ("1-0", "1/2-1/2"), 4: ("1-0", "0-1")}
    return [result for half_points, count in enumerate(pairs) for _ in range(count) for result in both[half_points]]


@pytest.fixture(scope="module")
def head(tmp_path_factory):
    """The head of a state file of selfplay, for matches whose games a test invents."""
    path = tmp_path_factory.mktemp("selfplay") / "state"
    selfplay(path, 2)
    return path.read_text().split("\n\n")[0] + "\n\n"


def selfplay(path, games, *options):
    command = [SELFPLAY, "--openings", ROOT / "tests/data/openings.epd", "--nodes", "1", "--games", games, "--state", path,
               "--show-every", games, *options]
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=True).stdout


FIXED_COUNTS = [(0, 0, 1, 0, 0), (0, 0, 0, 0, 7), (5, 0, 0, 0, 0), (0, 3, 0, 0, 0), (1, 0, 0, 0, 1), (10, 80, 200, 120, 20),
                (0, 1, 400, 1, 0), (0, 0, 50, 1, 0), (300, 1, 0, 0, 0)]
DICE = random.Random(7)
DRAWN_COUNTS = [tuple(DICE.choice((0, DICE.randrange(4), DICE.randrange(80))) for _ in range(4)) + (1,) for _ in range(12)]


@pytest.mark.parametrize("counts", FIXED_COUNTS + DRAWN_COUNTS)
def test_line_of_results_is_that_of_selfplay(counts, head, tmp_path):
    results = counts_of(counts)
    lines = "".join(f"{number} {result} 0\n" for number, result in enumerate(results))
    (tmp_path / "state").write_text(head + lines)
    wanted = selfplay(tmp_path / "state", len(results)).splitlines()[-1]
    standing = Standing()
    for number, result in enumerate(results):
        standing.take(number, result)
    assert tuple(standing.pairs) == counts and standing.line() == wanted
    assert "+- 0.0" not in wanted


@pytest.mark.parametrize("leads", [(0, 5), (-2.5, 60), (-1000, 1000)])
@pytest.mark.parametrize("counts", FIXED_COUNTS + DRAWN_COUNTS)
def test_sequential_test_is_that_of_selfplay(counts, leads, head, tmp_path):
    """To the pair at which it is decided, and the words that tell of it."""
    results = counts_of(counts)
    lines = "".join(f"{number} {result} 0\n" for number, result in enumerate(results))
    (tmp_path / "state").write_text(head + lines)
    wanted = selfplay(tmp_path / "state", len(results), "--sprt", *leads).splitlines()[1:]
    standing = Standing(Sprt(*leads))
    for number, result in enumerate(results):
        if standing.verdict is None:
            standing.take(number, result)
    assert [standing.line(), *filter(None, [standing.decision()])] == wanted


def test_pairs_count_when_they_are_whole():
    standing = Standing()
    standing.take(1, "0-1")
    assert standing.line() == "games 0: +0 =0 -0; not in pairs yet: +1 =0 -0"
    standing.take(2, "1/2-1/2")
    standing.take(0, "1-0")
    assert standing.line() == ("games 2: +2 =0 -0, pairs 0 0 0 0 1, Elo +338.0 +- ?, normalized ?, superiority 100.0 %; "
                               "not in pairs yet: +0 =1 -0")
