"""The program on a machine that fails: what a library loaded before all others (tests/faults) does to it."""

import os
import time

import pytest

FAULT_LIBRARY = os.environ.get("VORKA_FAULT_LIBRARY", "")

pytestmark = pytest.mark.skipif(not FAULT_LIBRARY, reason="VORKA_FAULT_LIBRARY names no library")


@pytest.fixture
def start_with(start):
    """Starts the program under faults, such as CLOCK="300:-3600"."""
    def start_under(*options, program=None, **faults):
        environment = {f"VORKA_FAULT_{name}": str(value) for name, value in faults.items()}
        return start(*options, program=program, environment={"LD_PRELOAD": FAULT_LIBRARY, **environment})
    return start_under


# --- The clock ---

# A position with many moves and no quick end of the search.
MANY_MOVES = "r1bq1rk1/pp2bppp/2n1pn2/2pp4/3P1B2/2PBPN2/PP1N1PPP/R2QK2R w KQ - 0 8"


@pytest.mark.parametrize("shift", [-3600, 3600])
def test_clock_that_is_set_during_a_search_changes_nothing(start_with, shift):
    # No test measures how fast this machine is; but the time of a search has to end, and not before it began.
    engine = start_with(CLOCK=f"400:{shift}")
    engine.send("force", f"setboard {MANY_MOVES}", "st 2")
    engine.ping()
    begun = time.monotonic()
    engine.send("go")
    engine.expect("Vorka played: ", timeout=30)
    assert time.monotonic() - begun > 1


def test_dates_are_those_of_the_calendar(start_with):
    engine = start_with(CLOCK=f"0:{40 * 366 * 24 * 3600}")
    engine.finish()
    year = int(engine.log.splitlines()[0].split()[-1])
    assert year >= time.localtime().tm_year + 39
