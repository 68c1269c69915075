"""vorka-xboard, the start for interfaces: nothing but the protocol, and a position may be set before anything else."""

import os
from pathlib import Path

import pytest
from engine import PROGRAM

XBOARD_PROGRAM = str(Path(PROGRAM).parent / "vorka-xboard")
PAWN_ENDING = "8/8/8/4k3/8/8/4P3/4K3 w - - 0 1"


@pytest.fixture
def engine(start):
    return start(program=XBOARD_PROGRAM)


def test_no_prompt_stands_before_the_features(engine):
    engine.send("xboard", "protover 2")
    engine.expect_text("feature done=1\n")
    said = engine.output.splitlines()
    assert all(line.startswith("feature ") for line in said[1:]), said
    assert ">" not in engine.output


def test_a_set_position_is_analysed_until_it_is_stopped(engine):
    """As Scid sends it: no `force` before `setboard`."""
    engine.send("xboard", "protover 2")
    engine.expect_text("feature done=1\n")
    engine.send(f"setboard {PAWN_ENDING}", "post", "analyze")
    engine.expect(r"^8 -?\d+ \d+ \d+ ")
    assert "Error" not in engine.output and "move " not in engine.ping()
    assert engine.position().startswith("8/8/8/4k3/8/8/4P3/4K3 w")
    engine.send("exit")
    assert "move " not in engine.ping()


def test_a_game_begins_with_new(engine):
    engine.send("xboard", "protover 2", "new", "sd 2", "usermove e2e4")
    engine.expect(r"^move \S+\n")


def test_it_finds_the_engine_through_a_link_and_passes_options_on(start, tmp_path):
    link = tmp_path / "a link"
    os.symlink(XBOARD_PROGRAM, link)
    engine = start("--id", "Club", program=str(link))
    engine.send("xboard", "protover 2")
    engine.expect_text('feature myname="Vorka Club"\n')
