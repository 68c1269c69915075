"""Sessions that were wrong once (tests/fuzz/sessions), and some new ones: scripts/fuzz plays thousands."""

import pathlib
import random
import sys

import pytest
from engine import PROGRAM, UCI_PROGRAM

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "lib"))
import fuzz_sessions  # noqa: E402

PROGRAMS = {"vorka": PROGRAM, "vorka-uci": UCI_PROGRAM}
KEPT = sorted((ROOT / "tests/fuzz/sessions").iterdir())


def assert_in_order(kind, lines):
    found = fuzz_sessions.try_session(kind, PROGRAMS[kind.program], lines)
    assert found is None, f"{found.fault}\n{found.told}\n--- session\n{fuzz_sessions.text_of(lines)}"


@pytest.mark.parametrize("path", KEPT, ids=[path.name for path in KEPT])
def test_session_that_was_wrong_once(path):
    lines = fuzz_sessions.lines_of(path.read_text(encoding="latin-1"))
    assert_in_order(fuzz_sessions.KINDS[path.suffix[1:]], lines)


@pytest.mark.parametrize("name", fuzz_sessions.KINDS)
def test_random_sessions(name):
    for seed in range(10):
        kind = fuzz_sessions.KINDS[name]
        assert_in_order(kind, fuzz_sessions.random_session(kind, random.Random(f"{name} {seed}")))
