"""tools/match, with small programs (fake_engine.py) that play at once and misbehave when they are told to."""

import json
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import time

import pytest
import rules

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from chess_match import openings, pgn, scores  # noqa: E402
from chess_match.adjudication import Adjudicator, Agreement  # noqa: E402
from chess_match.controls import Clock, control_of, controls_of  # noqa: E402
from chess_match.errors import Trouble  # noqa: E402
from chess_match.game import PlayedMove  # noqa: E402
from chess_match.setup import setup_of  # noqa: E402
from chess_match.standing import Standing  # noqa: E402

MATCH = ROOT / "tools/match"
FAKE = pathlib.Path(__file__).with_name("fake_engine.py")
UCI = f"{sys.executable} {FAKE} uci protocol=uci name=A"
XBOARD = f"{sys.executable} {FAKE} xboard protocol=xboard name=B"
SELFPLAY = os.environ.get("VORKA_SELFPLAY")


def match(engine, *opponents, check=None, games=2, options=("--depth", 1), **settings):
    words = [word for opponent in opponents for word in ("--opponent", opponent)]
    command = [sys.executable, MATCH, engine, *words, "--games", games, *options]
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=100, **settings)
    assert check is None or run.returncode == check, run.stdout + run.stderr
    return run


def short(*more):
    return ("--depth", 1, "--draw-after", 6, *more)


# --- What a match is ---

@pytest.mark.parametrize("first, second", [(UCI, XBOARD), (XBOARD, UCI)])
def test_protocols_play_each_other(first, second, tmp_path):
    run = match(first, second, check=0, options=short("--pgn", tmp_path / "games.pgn"))
    assert run.stdout.splitlines()[-1] == "games 2: +0 =2 -0, pairs 0 0 1 0 0, Elo +0.0 +- ?, normalized +0.0 +- ?, superiority 50.0 %"
    games = rules.read_pgn((tmp_path / "games.pgn").read_text())
    names = {"A" if first == UCI else "B": 1, "B" if first == UCI else "A": 2}
    assert [names[game.tags["White"]] for game in sorted(games, key=lambda game: game.tags["Round"])] == [1, 2]
    for game in games:
        assert len(game.moves) == 12 and game.tags["Termination"] == "Called a draw after 6 moves"
        position = rules.Position.from_fen()
        for text in game.moves:
            position = position.make(position.find(text))


def test_game_ends_by_the_rules(tmp_path):
    (tmp_path / "mate.epd").write_text("7k/R7/P5K1/8/8/8/8/8 w - -\n")
    run = match(UCI, XBOARD, check=0, options=("--depth", 1, "--openings", tmp_path / "mate.epd", "--pgn", tmp_path / "games.pgn"))
    for game in rules.read_pgn((tmp_path / "games.pgn").read_text()):
        assert game.tags["FEN"] == "7k/R7/P5K1/8/8/8/8/8 w - - 0 1"
        assert (game.moves, game.result, game.tags["Termination"]) == (["Ra8#"], "1-0", "White mates")
    assert "games 2: +1 =0 -1, pairs 0 0 1 0 0, " in run.stdout and "trouble" not in run.stdout


@pytest.mark.parametrize("words, reason", [
    ("die at=2", "ended by itself"),
    ("illegal at=2", "made the illegal move a1h8"),
    ("claim=1-0 at=2", "claimed 1-0, which the board doesn't bear out"),
    ("claim=1/2-1/2 at=3", "claimed 1/2-1/2, which the board doesn't bear out"),
    ("refuse=a7a5", "refused the move a7a5"),
])
def test_who_breaks_the_rules_loses(words, reason, tmp_path):
    """The engine that is tested: status 1. An opponent: the match went well."""
    bad = f"{sys.executable} {FAKE} xboard {words} protocol=xboard name=Bad"
    for first, second, status in ((bad, UCI, 1), (UCI, bad, 0)):
        run = match(first, second, options=short("--pgn", tmp_path / "games.pgn"))
        found = re.findall(r"trouble: round 1\.\d: Bad (.*)", run.stdout)
        assert reason in found, run.stdout + run.stderr
        assert run.returncode == status, run.stdout + run.stderr
        lost = [game for game in rules.read_pgn((tmp_path / "games.pgn").read_text()) if reason in game.tags["Termination"]]
        for game in lost:
            assert game.tags["White" if game.result == "0-1" else "Black"] == "Bad"
    if "die" in words:
        assert "out of coffee" in run.stdout, "the last that it said"


def test_resignation_is_no_trouble():
    run = match(f"{XBOARD} resign at=3", UCI, check=0, options=short())
    assert run.stdout.splitlines()[-1].startswith("games 2: +0 =0 -2, pairs 1 0 0 0 0, Elo -")
    assert "White resigns" in run.stdout and "Black resigns" in run.stdout and "trouble" not in run.stdout


@pytest.mark.parametrize("player", [UCI, XBOARD])
def test_flag_falls(player):
    # It answers too late by itself, or never: nobody waits longer than its clock allows.
    for words in ("late=1.6 at=2", "hang at=2"):
        run = match(player.replace(" protocol", f" {words} protocol"), UCI, check=1,
                    options=("--time", "1+0.01", "--margin", "0.3", "--draw-after", 6))
        assert run.stdout.count(" lost on time, ") == 2, run.stdout
        assert re.search(r"least time left: [AB] -?\d\.\d{3} s, ", run.stdout)


def test_silence_without_a_clock_is_not_waited_for():
    run = match(f"{UCI} hang at=2", XBOARD, check=1, options=("--depth", 1, "--patience", 1, "--draw-after", 6))
    assert "gave no move within 1 s" in run.stdout


def test_agreement_ends_games(tmp_path):
    lost, won = (player.replace(" protocol", f" score={score} protocol") for player, score in ((UCI, -900), (XBOARD, 850)))
    run = match(lost, won, check=0, options=("--depth", 1, "--resign", "3:800", "--pgn", tmp_path / "games.pgn"))
    assert "+0 =0 -2" in run.stdout and "Both agree that" in run.stdout
    for game in pgn.read_games((tmp_path / "games.pgn").read_text()):
        assert len([move for move in game.moves if move.score is not None]) in (6, 7)
    drawn = match(UCI, XBOARD, check=0, options=("--depth", 1, "--draw", "5:2:10"))
    assert drawn.stdout.count("Both agree on a draw, 6 moves") == 2, drawn.stdout


def test_opponents_take_turns_and_have_names(tmp_path):
    other = XBOARD.replace("name=B", "name=C")
    run = match(UCI, XBOARD, other, XBOARD, check=0, games=4, options=short("--concurrency", 1, "--pgn", tmp_path / "games.pgn"))
    games = rules.read_pgn((tmp_path / "games.pgn").read_text())
    assert [game.tags["White"] + game.tags["Black"] for game in games] == ["AB", "BA", "AC", "CA", "AB 2", "B 2A"] * 2
    assert games[0].moves[:4] == games[2].moves[:4] != games[6].moves[:4], "all opponents get the same openings"
    ends = run.stdout.splitlines()[-4:]
    assert [line.split(":")[0] for line in ends] == ["against B", "against C", "against B 2", "in all"]
    assert ends[3] == "in all: games 12: +0 =12 -0, 50.0 %"


# --- What players are told ---

def told(player, log, *options):
    match(player.replace(" protocol", f" log={log} protocol"), UCI.replace("name=A", "name=Other"), check=0,
          options=("--draw-after", 5, "--concurrency", 1, *options))
    return log.read_text()


def test_dialogue_of_uci(tmp_path):
    text = told(UCI + " option.hash=32 'option.Book File=my book' 'option.Clear Hash='", tmp_path / "log", "--time", "3/2+0.1")
    assert text.startswith("uci\nsetoption name Hash value 32\nsetoption name Book File value my book\n"
                           "setoption name Clear Hash\nucinewgame\nisready\nquit\n"), "before the match it is tried"
    assert re.search(r"position startpos moves e2e4 e7e5 g1f3 b8c6\n"
                     r"go wtime 2000 btime 2000 winc 100 binc 100 movestogo 1\n"
                     r"position startpos moves e2e4 e7e5 g1f3 b8c6 \S+ \S+\n"
                     r"go wtime (3\d\d\d|40\d\d|4100) btime \d+ winc 100 binc 100 movestogo 3\n", text), text


def test_dialogue_of_uci_with_other_limits(tmp_path):
    assert "\ngo movetime 1500\n" in told(UCI, tmp_path / "st", "--time", "st=1.5")
    text = told(UCI, tmp_path / "nodes", "--nodes", "500", "--depth", "7")
    assert "\ngo depth 7 nodes 500\n" in text
    (tmp_path / "epd").write_text("4k3/8/8/8/8/8/4P3/4K3 b - - bm Kd7;\n")
    assert "\nposition fen 4k3/8/8/8/8/8/4P3/4K3 b - - 0 1 moves e8d7\ngo wtime" in told(
        UCI, tmp_path / "fen", "--time", "1+1", "--openings", tmp_path / "epd")


def test_pondering_of_uci(tmp_path):
    """The prediction is right, or legal and wrong; the illegal ones of the other colour are passed over."""
    text = told(UCI.replace(" protocol", " ponder=a7a5 protocol"), tmp_path / "right", "--ponder", "--time", "5+1")
    assert re.search(r"b8c6 a2a3 a7a5\ngo ponder wtime \d+ btime \d+ winc 1000 binc 1000\nponderhit\nposition", text), text
    text = told(UCI.replace(" protocol", " ponder=h7h5 protocol"), tmp_path / "wrong", "--ponder", "--depth", "1")
    assert re.search(r"a2a3 h7h5\ngo ponder depth 1\nstop\nposition .* a2a3 a7a5\ngo depth 1\n", text), text


def test_dialogue_of_xboard(tmp_path):
    text = told(XBOARD + ' init="memory 64"', tmp_path / "log", "--time", "40/1:05+0.5")
    assert re.search("^xboard\nprotover 2\naccepted done\naccepted myname\naccepted ping\naccepted setboard\naccepted usermove\n"
                     "rejected san\naccepted sigint\naccepted time\naccepted done\nmemory 64\nnew\nlevel 40 1:05 0.5\npost\neasy\n"
                     "computer\nforce\nping 1\n", text), text
    assert re.search(r"\nusermove e2e4\nusermove e7e5\nusermove g1f3\nusermove b8c6\ntime 6500\notim 6500\ngo\ntime \d+\n"
                     r"otim \d+\nusermove \S+\n", text), text
    assert "\nst 2\n" in told(XBOARD, tmp_path / "st", "--time", "st=2")
    assert "\nsd 6\n" in told(XBOARD, tmp_path / "sd", "--depth", "6")


def test_first_version_of_xboard():
    run = match(XBOARD.replace("xboard protocol=xboard", "xboard1 protocol=xboard1"), UCI, check=0, options=short())
    assert "+0 =2 -0" in run.stdout


def test_protocols_are_found_out(tmp_path):
    run = match(f"{sys.executable} {FAKE} uci", f"{sys.executable} {FAKE} xboard", check=0, options=short())
    assert "Fake of UCI - Fake of XBoard 1/2-1/2" in run.stdout


def test_controls_take_turns(tmp_path):
    match(UCI, XBOARD, check=0, games=4, options=("--time", "5+1, st=2", "--draw-after", 4, "--pgn", tmp_path / "games.pgn"))
    games = sorted(rules.read_pgn((tmp_path / "games.pgn").read_text()), key=lambda game: game.tags["Round"])
    assert [game.tags["TimeControl"] for game in games] == ["5+1", "5+1", "st=2", "st=2"]


# --- What can't be played ---

@pytest.mark.parametrize("words, complaint", [
    (["no-such-program"], "there is no program no-such-program"),
    (["./no/such"], "there is no program ./no/such"),
    ([str(ROOT / "README.md")], "README.md is no program that can be run"),
    ([f"{sys.executable} -c 'import sys; sys.exit(\"broken\")'"], "ended when it was started:(.|\n)*broken"),
    ([f"{sys.executable} {FAKE} mute", "--patience", "1"], "answers neither to UCI nor to XBoard within 1 s"),
    ([f"{sys.executable} {FAKE} mute protocol=uci", "--patience", "1"], "gave no uciok within 1 s"),
    ([f"{sys.executable} {FAKE} mute protocol=xboard", "--patience", "1"], "told no features within 1 s"),
    ([f"{UCI} option.Hsh=1"], 'A has no option "Hsh"; it has Book File, Clear Hash, Hash, OwnBook'),
    ([f"{UCI} option.Hash=65"], 'A: option "Hash" takes a number from 1 to 64, not "65"'),
    ([f"{UCI} option.OwnBook=yes"], 'A: option "OwnBook" takes true or false, not "yes"'),
    ([f"{sys.executable} {FAKE} xboard option.Hash=1"], "XBoard has no options"),
    ([f"{XBOARD} option.Hash=1"], "option. is for UCI, init for XBoard"),
    (["x protocol=ucj"], "protocol=ucj is none of uci, xboard, xboard1"),
    (["name=x"], '"name=x" names no program'),
    (["x 'y"], "no closing quotation"),
    (["x name="], "nothing after name="),
    ([XBOARD, "--time", "0.5+0.1"], "B speaks XBoard, which has whole seconds; 0.5\\+0.1 has others"),
    ([XBOARD, "--nodes", "100"], "B speaks XBoard, which has no limit of nodes"),
    ([UCI, "--time", "5m"], '--time: "5m" is no time control'),
    ([UCI, "--time", "0/5"], '--time: "0/5" is no time control'),
    ([UCI, "--time", "0"], "too little time"),
    ([UCI, "--games", "3"], "--games: takes an even number, not 3"),
    ([UCI, "--games", "x"], '--games: takes a number from 2 to \\d+, not "x"'),
    ([UCI, "--resign", "3"], '--resign: takes 2 numbers with colons between them, not "3"'),
    ([UCI, "--margin", "-1"], "--margin: "),
    ([UCI, "--openings", "/nowhere"], "can't open /nowhere: No such file"),
    ([UCI, "--pgn", "/nowhere/x"], "can't write /nowhere/x: No such file"),
    ([UCI, "--state", "/nowhere/x"], "/nowhere/x: No such file"),
])
def test_bad_words_are_refused(words, complaint):
    run = match(words[0], UCI, options=words[1:])
    assert run.returncode == 2 and run.stdout == "", run.stdout
    assert re.search(complaint, run.stderr) and "Traceback" not in run.stderr, run.stderr


def test_missing_package_is_named():
    run = match(UCI, "crafty", env={**os.environ, "PATH": "/nowhere"})
    assert run.stderr == "tools/match: there is no program crafty; it is in Debian's package crafty\n" or "crafty" in run.stdout


@pytest.mark.parametrize("text, complaint", [
    ("4k3/8/8/8/8/8/8/R3K3 w Q - hmvc 0;\nnonsense\n", "line 2: no position"),
    ("4k3/8/8/8/8/8/8/R3K4 w Q -\n", "line 1: no position"),
    ("# only\n\n", "no openings"),
    ("4k3/8/8/8/8/8/8/R3K3 w Q -\n\n4k3/8/8/8/8/8/8/4R1K1 w - -\n", "line 3: no position"),
    ("7k/5Q2/6K1/8/8/8/8/8 b - -\n", "line 1: the game is over"),
    ('[Event "x"]\n\n1. e4 e5 *\n\n[Event "y"]\n\n1. e4 e4 *\n', "game 2: e4 is no legal move in "),
    ('[Event "x"]\n\n1. f3 e5 2. g4 Qh4# 0-1\n', "game 1: the game is over"),
])
def test_bad_openings_are_told(tmp_path, text, complaint):
    (tmp_path / "openings").write_text(text)
    run = match(UCI, XBOARD, games=6, options=("--openings", tmp_path / "openings"))
    assert run.returncode == 2 and run.stderr.startswith(f"tools/match: {tmp_path / 'openings'}: {complaint}"), run.stderr


def test_openings_of_games_are_cut():
    opening = openings.Opening(None, ("e4", "e5", "Nf3"), "here")
    assert openings.checked(opening)[0].moves == ("e2e4", "e7e5", "g1f3")
    text = '[Event "x"]\n\n1. e4 e5 2. Nf3 *\n'
    assert [len(game.moves) for plies in (None, 2) for game in openings.games_of("x", text, plies)] == [3, 2]


# --- Results that are kept ---

def test_stopped_match_tells_and_goes_on(tmp_path):
    """An interrupt is told what was played; after it, and after a kill, the same command plays the rest."""
    slow = UCI.replace(" protocol", " late=0.2 protocol")
    command = [sys.executable, MATCH, slow, "--opponent", XBOARD, "--games", 8, "--depth", 1, "--draw-after", 4, "--concurrency", 1,
               "--state", tmp_path / "state", "--pgn", tmp_path / "games.pgn"]
    for number, ending in enumerate((signal.SIGINT, signal.SIGTERM, signal.SIGKILL)):
        run = subprocess.Popen([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        while run.poll() is None and not ((tmp_path / "state").exists()
                                          and (tmp_path / "state").read_text().count("\n") >= 2 + number):
            time.sleep(0.01)
        run.send_signal(ending)
        said, complaints = run.communicate(timeout=60)
        if ending != signal.SIGKILL:
            assert run.returncode == 0, complaints
            assert re.match(r"games \d: ", said.splitlines()[-1]), said
        assert (tmp_path / "games.pgn").read_text().count("[Event ") >= 1 + number
    kept = (tmp_path / "state").read_text().count("\n") - 1
    (tmp_path / "state").open("a").write('{"number": 7, "end')
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    assert run.stdout.startswith(f"went on after {kept} games\n"), run.stdout + run.stderr
    assert run.stdout.splitlines()[-1].startswith("games 8: +0 =8 -0, pairs 0 0 4 0 0, ")
    assert (tmp_path / "games.pgn").read_text().count("[Event ") == 8
    other = match(slow, XBOARD, games=8, options=("--depth", 2, "--draw-after", 4, "--state", tmp_path / "state"))
    assert other.returncode == 2 and "it belongs to another match: limits is [1, 0] there, [2, 0] here" in other.stderr


@pytest.mark.parametrize("text, complaint", [("nonsense\n", "line 1: no match"), ("{}\n", "it belongs to another match"),
                                             ("[]\n", "line 1: no match")])
def test_bad_state_is_told(tmp_path, text, complaint):
    (tmp_path / "state").write_text(text)
    run = match(UCI, XBOARD, options=short("--state", tmp_path / "state"))
    assert run.returncode == 2 and complaint in run.stderr
    assert (tmp_path / "state").read_text() == text


# --- The parts ---

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


def test_players_are_described():
    setup = setup_of("toga2 -x option.Hash=64 \"option.Book File=a b\" name='My Toga' protocol=uci folder=here")
    assert setup.command == ["toga2", "-x"] and setup.options == (("Hash", "64"), ("Book File", "a b"))
    assert (setup.name, setup.protocol, setup.folder) == ("My Toga", "uci", "here")
    assert setup_of('gnuchess --xboard init="memory 64" init=random').init == ("memory 64", "random")


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


def selfplay(path, games):
    command = [SELFPLAY, "--openings", ROOT / "tests/data/openings.epd", "--nodes", "1", "--games", games, "--state", path,
               "--show-every", games]
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


def test_pairs_count_when_they_are_whole():
    standing = Standing()
    standing.take(1, "0-1")
    assert standing.line() == "games 0: +0 =0 -0; not in pairs yet: +1 =0 -0"
    standing.take(2, "1/2-1/2")
    standing.take(0, "1-0")
    assert standing.line() == ("games 2: +2 =0 -0, pairs 0 0 0 0 1, Elo +338.0 +- ?, normalized +0.0 +- ?, superiority 100.0 %; "
                               "not in pairs yet: +0 =1 -0")


def test_state_of_the_match_is_json(tmp_path):
    """One line for each game, which other programs may read."""
    match(UCI, XBOARD, check=0, options=short("--state", tmp_path / "state"))
    plan, *games = map(json.loads, (tmp_path / "state").read_text().splitlines())
    assert plan["match"] == 1 and sorted(game["number"] for game in games) == [0, 1]
    assert all(len(game["moves"]) == 12 for game in games)
