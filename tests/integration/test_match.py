"""tools/match, with small programs (fake_engine.py) that play at once and misbehave when they are told to."""

import json
import os
import pathlib
import re
import resource
import signal
import subprocess
import sys
import time

import pytest
import rules

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from chess_match import pgn  # noqa: E402

MATCH = ROOT / "tools/match"
FAKE = pathlib.Path(__file__).with_name("fake_engine.py")
UCI = f"{sys.executable} {FAKE} uci protocol=uci name=A"
XBOARD = f"{sys.executable} {FAKE} xboard protocol=xboard name=B"


def match(engine, *opponents, check=None, games=2, options=("--depth", 1)):
    words = [word for opponent in opponents for word in ("--opponent", opponent)]
    command = [sys.executable, MATCH, engine, *words, "--games", games, *options]
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=100)
    assert check is None or run.returncode == check, run.stdout + run.stderr
    return run


def short(*more):
    return ("--depth", 1, "--draw-after", 6, *more)


# --- What a match is ---

@pytest.mark.parametrize("first, second", [(UCI, XBOARD), (XBOARD, UCI)])
def test_protocols_play_each_other(first, second, tmp_path):
    run = match(first, second, check=0, options=short("--pgn", tmp_path / "games.pgn"))
    assert run.stdout.splitlines()[-1] == "games 2: +0 =2 -0, pairs 0 0 1 0 0, Elo +0.0 +- ?, normalized ?, superiority 50.0 %"
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
    run = match(f"{UCI} hang at=2", XBOARD, check=1, options=("--depth", 1, "--patience", 4, "--draw-after", 6))
    assert "gave no move within 4 s" in run.stdout


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


@pytest.mark.parametrize("protocol", ["", "protocol=xboard"])
def test_who_overlooks_the_greeting_is_greeted_again(protocol):
    run = match(f"{sys.executable} {FAKE} xboard deaf {protocol}", UCI, check=0, options=("--depth", 1, "--draw-after", 4))
    assert "Fake of XBoard" in run.stdout


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
    (["yes protocol=uci", "--patience", "1"], "gave no uciok within 1 s"),
    ([f"{UCI} option.Hsh=1"], 'A has no option "Hsh"; it has Book File, Clear Hash, Hash, OwnBook'),
    ([f"{UCI} option.Hash=65"], 'A: option "Hash" takes a number from 1 to 64, not "65"'),
    ([f"{UCI} option.OwnBook=yes"], 'A: option "OwnBook" takes true or false, not "yes"'),
    ([f"{UCI} 'option.Play Style=Wild'"],
     'A: option "Play Style" takes one of Solid, Very Sharp, Risky, not "Wild"\n$'),
    ([f"{UCI} folder=/nowhere/at/all"], "the folder /nowhere/at/all can't be used: No such file or directory"),
    ([f"{sys.executable} {FAKE} xboard option.Hash=1"], "XBoard has no options"),
    ([f"{sys.executable} {FAKE} uci init=x"], "UCI has no commands of its own"),
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
    ([UCI, "--depth", "1", "--games", "22"],
     "only 10 openings for 11 pairs: without a clock the same games would come again"),
    ([UCI, "--pgn", "/nowhere/x"], "can't write /nowhere/x: No such file"),
    ([UCI, "--pgn", "/dev/full"], "can't write /dev/full: no regular file"),
    ([UCI, "--sprt", "5", "0"], "--sprt takes two leads, the smaller one first"),
    ([UCI, "--sprt", "0", "1e3"], '--sprt: takes a number from -1000 to 1000, not "1e3"'),
    ([UCI, "--openings", "/dev/zero"], "can't open /dev/zero: no regular file"),
    ([UCI, "--state", "/dev/full"], "/dev/full: no regular file"),
    ([UCI, "--state", "/nowhere/x"], "/nowhere/x: No such file"),
])
def test_bad_words_are_refused(words, complaint):
    run = match(words[0], UCI, options=words[1:])
    assert run.returncode == 2 and run.stdout == "", run.stdout
    assert re.search(complaint, run.stderr) and "Traceback" not in run.stderr, run.stderr


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


# --- Results that are kept ---

def test_stopped_match_tells_and_goes_on(tmp_path):
    """An interrupt is told what was played; after it, and after a kill, the same command plays the rest."""
    slow = UCI.replace(" protocol", " late=0.2 protocol")
    command = [sys.executable, MATCH, slow, "--opponent", XBOARD, "--games", 8, "--depth", 1, "--draw-after", 4, "--concurrency", 1,
               "--state", tmp_path / "state", "--pgn", tmp_path / "games.pgn"]

    def lines_kept():
        return (tmp_path / "state").read_text().count("\n") if (tmp_path / "state").exists() else 0

    for number, ending in enumerate((signal.SIGINT, signal.SIGTERM, signal.SIGKILL)):
        before = max(lines_kept(), 1)  # the first one says what the match is
        run = subprocess.Popen([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        while run.poll() is None and lines_kept() <= before:
            time.sleep(0.01)
        run.send_signal(ending)
        said, complaints = run.communicate(timeout=60)
        if ending != signal.SIGKILL:
            assert run.returncode == 0, complaints
            assert re.match(r"games \d: ", said.splitlines()[-1]), said
            assert (tmp_path / "games.pgn").read_text().count("[Event ") >= 1 + number
    kept = lines_kept() - 1
    (tmp_path / "state").open("a").write('{"number": 7, "end')
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True)
    assert run.stdout.startswith(f"went on after {kept} games\n"), run.stdout + run.stderr
    assert run.stdout.splitlines()[-1].startswith("games 8: +0 =8 -0, pairs 0 0 4 0 0, ")
    assert (tmp_path / "games.pgn").read_text().count("[Event ") == 8
    assert len(list(map(json.loads, (tmp_path / "state").read_text().splitlines()))) == 9, "what was cut off is gone"
    other = match(slow, XBOARD, games=8, options=("--depth", 2, "--draw-after", 4, "--state", tmp_path / "state"))
    assert other.returncode == 2 and "it belongs to another match: limits is [1, 0] there, [2, 0] here" in other.stderr


@pytest.mark.parametrize("text, complaint", [("nonsense\n", "line 1: no match"), ("{}\n", "it belongs to another match"),
                                             ("[]\n", "line 1: no match"), ("[]\nmore", "line 1: no match"),
                                             ("\x7fELF", "line 1: no match")])
def test_bad_state_is_told(tmp_path, text, complaint):
    (tmp_path / "state").write_text(text)
    run = match(UCI, XBOARD, options=short("--state", tmp_path / "state"))
    assert run.returncode == 2 and complaint in run.stderr
    assert (tmp_path / "state").read_text() == text


def test_games_are_added_to_those_that_stand_there(tmp_path):
    options = short("--pgn", tmp_path / "games.pgn")
    match(UCI, XBOARD, check=0, options=options)
    first = (tmp_path / "games.pgn").read_text()
    match(XBOARD, UCI, check=0, options=(*options, "--state", tmp_path / "state"))
    both = (tmp_path / "games.pgn").read_text()
    assert both.startswith(first) and both.count("[Event ") == 4
    (tmp_path / "games.pgn").write_text(both[:-40])
    match(XBOARD, UCI, check=0, games=4, options=(*options, "--state", tmp_path / "state"))
    text = (tmp_path / "games.pgn").read_text()
    assert text.startswith(both) and text.count("[Event ") == 6, "what the state has stands there once, and whole"


def test_full_disk_ends_the_match(tmp_path):
    """A file that may grow no more stands for it: what is written fails in the same way."""
    command = [sys.executable, MATCH, UCI, "--opponent", XBOARD, "--games", 2, *short("--pgn", tmp_path / "games.pgn")]
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=100,
                         preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (300, 300)))
    assert run.returncode == 2 and run.stderr == f"tools/match: can't write {tmp_path}/games.pgn: File too large\n"


def test_interrupt_before_the_first_moment_of_a_match(tmp_path):
    (tmp_path / "shlex.py").write_text("import os, signal\nos.kill(os.getpid(), signal.SIGINT)\n")
    run = subprocess.run([sys.executable, MATCH, UCI], capture_output=True, text=True, timeout=100,
                         env={**os.environ, "PYTHONPATH": str(tmp_path)})
    assert (run.returncode, run.stdout, run.stderr) == (-signal.SIGINT, "", "")


def test_no_margin(tmp_path):
    """A flag falls at once, if the player is granted nothing."""
    run = match(f"{UCI} late=0.15", UCI.replace("name=A", "name=B"), check=1, options=("--time", "0.1", "--margin", "0", "--draw-after", 6))
    assert "A lost on time" in run.stdout


# --- The sequential test ---

def test_sequential_test_ends_the_match(tmp_path):
    options = short("--concurrency", 1, "--state", tmp_path / "state", "--sprt", -300, -100, "--openings",
                    ROOT / "tests/data/openings.epd")
    run = match(UCI, XBOARD, check=0, games=2000, options=options)
    lines = run.stdout.splitlines()
    assert re.fullmatch(r"games \d+: .*, LLR [3-9]\.\d\d \(-2\.94 to 2\.94\) for -300 and -100 Elo", lines[-2]), lines[-2]
    assert lines[-1] == "decided: the lead is not -300, it is -100 Elo"
    assert 2 < int(lines[-2].split(":")[0].split()[1]) < 200
    again = match(UCI, XBOARD, check=0, games=2000, options=options)
    assert again.stdout.splitlines()[-2:] == lines[-2:] and "\ngame " not in again.stdout


def test_sequential_test_with_each_opponent(tmp_path):
    """Whoever is decided plays no more games; the match goes on with the others."""
    resigning = f"{sys.executable} {FAKE} xboard protocol=xboard name=C resign"
    run = match(UCI, resigning, XBOARD, check=0, games=400,
                options=short("--concurrency", 1, "--sprt", 0, 400, "--openings", ROOT / "tests/data/openings.epd"))
    assert "against C: decided: the lead is not 0, it is 400 Elo" in run.stdout
    assert "against B: decided: the lead is 0, it is not 400 Elo" in run.stdout
    games = {name: int(number) for name, number in re.findall(r"(?m)^against (\w): games (\d+): .*LLR", run.stdout)}
    assert 2 <= games["C"] < 400 and 2 <= games["B"] < 400


def test_state_of_the_match_is_json(tmp_path):
    """One line for each game, which other programs may read."""
    match(UCI, XBOARD, check=0, options=short("--state", tmp_path / "state"))
    plan, *games = map(json.loads, (tmp_path / "state").read_text().splitlines())
    assert plan["match"] == 1 and sorted(game["number"] for game in games) == [0, 1]
    assert all(len(game["moves"]) == 12 for game in games)
