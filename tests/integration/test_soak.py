"""scripts/soak: a handful of disturbed games, and that it sees what is wrong with an engine."""

import os
import pathlib
import re
import shlex
import subprocess
import sys

import pytest
from engine import PROGRAM

ROOT = pathlib.Path(__file__).resolve().parents[2]
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


def test_missing_opponent_is_told(tmp_path):
    result = soak(tmp_path, "2", "--opponent", "no-such-engine protocol=uci")
    assert result.returncode == 2
    assert "LEFT OUT: no-such-engine" in result.stdout and "no opponent" in result.stderr
    assert os.listdir(tmp_path) == []
