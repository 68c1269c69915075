"""scripts/soak: a handful of disturbed games, and that it sees what is wrong with an engine."""

import collections
import importlib.machinery
import importlib.util
import os
import pathlib
import re
import shlex
import subprocess
import sys

import pytest
from engine import PROGRAM

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / "scripts" / "lib"), str(ROOT / "tools")]
import soak_games  # noqa: E402

BUILD = pathlib.Path(PROGRAM or "build/vorka").resolve().parent
# No test measures time: a clock here is only what the engine plays by.
PATIENT = ["--time", "1+0.02", "--margin", "60", "--draw-after", "12"]


def soak(tmp_path, *words, build=BUILD):
    return subprocess.run([ROOT / "scripts/soak", *words, "--build", str(build), "--state", str(tmp_path / "state"), *PATIENT],
                          capture_output=True, text=True, timeout=800)


def figures(result):
    """games, and faults by kind."""
    games = int(re.search(r"^games (\d+) of", result.stdout, re.M)[1])
    kinds = "time loss|illegal move|crash|hang|other"
    return games, {kind: int(number) for kind, number in re.findall(rf"\b({kinds}): (\d+)", result.stdout.splitlines()[-1])}


# Watched code is slow, and a game of it takes as long as two.
AGAINST_ITSELF = 1 if os.environ["VORKA_SANITIZED"] == "1" else 2


@pytest.mark.parametrize("opponent, games", [("itself", AGAINST_ITSELF), ("fairymax", 1), ("gnuchess", 1)])
def test_disturbed_games(tmp_path, opponent, games):
    result = soak(tmp_path, str(games), "--opponent", opponent)
    if "LEFT OUT: " + opponent in result.stdout:
        pytest.skip(f"there is no {opponent}")
    assert result.returncode == 0, result.stdout + result.stderr
    assert figures(result) == (games, dict.fromkeys(("time loss", "illegal move", "crash", "hang", "other"), 0))
    # The same command knows that all of them were played.
    again = soak(tmp_path, str(games), "--opponent", opponent)
    assert f"went on after {games} games" in again.stdout and figures(again) == figures(result)


@pytest.mark.parametrize("number_of_opponents", range(1, 7))
@pytest.mark.parametrize("number_of_controls", range(1, 7))
def test_everybody_meets_everybody_at_every_time_control(number_of_opponents, number_of_controls):
    """Evenly: also where the numbers have divisors in common, and long before the end."""
    sizes = {"tested": 2, "opponents": number_of_opponents, "controls": number_of_controls}
    every = 2 * number_of_opponents * number_of_controls
    games = [soak_games.meeting(number, *map(range, sizes.values())) for number in range(2 * every)]
    assert set(collections.Counter(games).values()) == {2} and len({*games[:every]}) == every
    for at, size in enumerate(sizes.values()):
        begun = collections.Counter(game[at] for game in games[:2 * size])
        assert len(begun) == size and set(begun.values()) == {2}


FAULTS = {
    "illegal move": "print('bestmove a1a1', flush=True)",
    "crash": "sys.exit(1)",
    "other": "print('bestmove', flush=True)",
}


@pytest.mark.parametrize("kind", FAULTS)
def test_fault_of_the_engine_is_counted(tmp_path, kind):
    engine = tmp_path / "vorka-uci"
    engine.write_text(f"#!{sys.executable} -u\nimport sys\nfor line in sys.stdin:\n    word = (line.split() or [''])[0]\n"
                      "    if word == 'uci': print('uciok')\n    if word == 'isready': print('readyok')\n"
                      f"    if word == 'go': {FAULTS[kind]}\n    if word == 'quit': sys.exit(0)\n")
    engine.chmod(0o755)
    (tmp_path / "vorka").write_text(engine.read_text())
    (tmp_path / "vorka").chmod(0o755)
    opponent = f"{sys.executable} {shlex.quote(str(pathlib.Path(__file__).with_name('fake_engine.py')))}"
    result = soak(tmp_path, "2", "--opponent", f"{opponent} uci protocol=uci", build=tmp_path)
    told = result.stdout + result.stderr
    assert result.returncode == 1, told
    assert "(" + kind + ")" in result.stdout and figures(result)[1][kind] >= 1, told
    assert list((tmp_path / "state").glob("game*.txt"))


def script():
    loader = importlib.machinery.SourceFileLoader("soak", str(ROOT / "scripts/soak"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("soak", loader))
    loader.exec_module(module)
    return module


def test_games_that_were_played_are_never_at_stake(tmp_path):
    """What can't be written anew, as on a full disk, stays; a line that was cut off goes."""
    of_file = script().Results
    identity = {"seed": 1}
    games = tmp_path / "games.jsonl"
    kept = '{"seed": 1}\n{"number": 0, "plies": 8}\n{"number": 3, "plies": 5}\n'
    games.write_text(kept + '{"number": 1, "pl')
    games.with_name("games.jsonl.new").mkdir()
    with pytest.raises(OSError):
        of_file(tmp_path, identity)
    assert games.read_text().startswith(kept)
    games.with_name("games.jsonl.new").rmdir()
    assert list(of_file(tmp_path, identity).games) == [0, 3]
    assert games.read_text() == kept


def test_missing_opponent_is_told(tmp_path):
    result = soak(tmp_path, "2", "--opponent", "no-such-engine protocol=uci")
    assert result.returncode == 2
    assert "LEFT OUT: no-such-engine" in result.stdout and "no opponent" in result.stderr
    assert os.listdir(tmp_path) == []
