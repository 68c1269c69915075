"""Fast games against fairymax with all three kinds of time control: no flag falls, no move is illegal, nothing dies."""

import pathlib
import subprocess
import sys

from engine import PROGRAM

GAMES = 6  # two of each kind; scripts/soak plays more of them
MATCH = pathlib.Path(__file__).resolve().parent.parent.parent / "tools" / "match"


def test_fast_games_without_a_time_loss():
    match = subprocess.run([sys.executable, str(MATCH), PROGRAM, "--games", str(GAMES), "--draw-after", "8"],
                           capture_output=True, text=True, timeout=800)
    assert match.returncode == 0, match.stdout + match.stderr


def test_fast_games_with_pondering():
    match = subprocess.run([sys.executable, str(MATCH), PROGRAM, "--games", "2", "--draw-after", "8", "--ponder"],
                           capture_output=True, text=True, timeout=400)
    assert match.returncode == 0, match.stdout + match.stderr
