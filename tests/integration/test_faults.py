"""The program on a machine that fails: what a library loaded before all others (tests/faults) does to it."""

import os
import time

import pytest
from engine import UCI_PROGRAM

# With VORKA_FAULT_ALL=1 every request for memory is refused in turn, which takes an hour; otherwise a part of them.
ALL = os.environ.get("VORKA_FAULT_ALL") == "1"
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


# --- Memory ---

NO_MEMORY = "Error (out of memory): the program has to end\n"
SESSION = ["sd 3", "e4", "post", "hash trans 1M", "force", "undo", "setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", "go", "hint",
           "force", "write_fen position", "write_pgn game", "read_pgn game", "write_settings settings",
           "read_settings settings", "help hash", "edit", "#", "Ke1", "c", "Ke8", ".", "tb", "generate", "quit"]
UCI_SESSION = ["uci", "isready", "position startpos moves e2e4", "go depth 3", "isready", "setoption name Hash value 2",
               "position startpos", "go nodes 2000", "quit"]


def requests_of(start_with, lines, program):
    """About how many requests for memory a session makes: the first number that no run reaches, within a tenth."""
    lowest, highest = 1, 1 << 20
    while highest - lowest > lowest // 10 + 1:
        middle = (lowest + highest) // 2
        if run(start_with, lines, program, middle) is None:
            highest = middle
        else:
            lowest = middle
    return highest


def run(start_with, lines, program, wish):
    """Runs a session; the words that it ended with for want of memory, or None if it ended as ever."""
    engine = start_with(program=program, MALLOC=wish)
    for line in lines:
        try:
            engine.send(line)
        except BrokenPipeError:
            break
    try:
        engine.finish(status=0)
        return None
    except AssertionError:
        assert engine.process.returncode == 1, engine.describe()
    assert engine.output.endswith(NO_MEMORY), engine.describe()
    return engine.output


@pytest.mark.parametrize("lines, program", [(SESSION, None), (UCI_SESSION, UCI_PROGRAM)], ids=["console", "uci"])
def test_no_memory_ends_the_program_in_order(start_with, capsys, lines, program):
    end = requests_of(start_with, lines, program)
    assert end > 100
    tried, failed = 0, 0
    for number in sorted({*range(1, 40), *range(40, end, 1 if ALL else max(end // 120, 1))}):
        for wish in (f"{number}", f"{number}+"):
            tried += 1
            failed += run(start_with, lines, program, wish) is not None
    assert failed > 50
    with capsys.disabled():
        print(f"\nrefused requests for memory: {tried} of about {2 * end}, {failed} ended the program", end="", flush=True)


def test_table_that_is_too_large_is_refused_as_ever(start_with):
    engine = start_with()
    engine.send("force")
    engine.ask_text("hash trans 1000000G", "Error (")
    engine.ask_text("ping 1", "pong 1\n")
