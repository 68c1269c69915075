"""vorka-uci with Syzygy tablebases."""

import os
from pathlib import Path

import pytest
from uci_dialogue import BESTMOVE, number, ready, search

# A folder of tables with up to four men, by default one that lies beside the checkout; nothing stands in for them.
BESIDE_CHECKOUT = Path(__file__).resolve().parents[3] / "shared" / "tables" / "syzygy"
SYZYGY = os.environ.get("VORKA_SYZYGY", str(BESIDE_CHECKOUT) if BESIDE_CHECKOUT.is_dir() else "")
with_syzygy = pytest.mark.skipif(not SYZYGY, reason="VORKA_SYZYGY names no folder of Syzygy tablebases")
ROOK_ENDING = "position fen 4k3/8/8/8/8/8/8/4K2R w - - 0 1"


@pytest.fixture
def syzygy(uci):
    """vorka-uci with tables in use."""
    uci.send(f"setoption name Syzygy Path value {SYZYGY}")
    if "made without Fathom" in ready(uci):
        pytest.skip("this build can't read Syzygy tablebases")
    return uci


def last_score(lines):
    return [line for line in lines if " score " in line][-1]


@with_syzygy
def test_syzygy_tables_can_be_put_out_of_use_and_into_it_again(syzygy):
    search(syzygy, ROOK_ENDING, "go depth 3")
    syzygy.send("setoption name Syzygy Path value <empty>")
    search(syzygy, ROOK_ENDING, "go depth 3")
    syzygy.send(f"setoption name Syzygy Path value {SYZYGY}")
    syzygy.expect("^info string tablebases found, with men up to 4$")
    search(syzygy, ROOK_ENDING, "go depth 3")
    syzygy.send(f"setoption name Syzygy Path value {syzygy.folder}")
    syzygy.expect("^info string no tablebases were found in ")
    syzygy.send("setoption name Syzygy Path value <empty>")
    search(syzygy, ROOK_ENDING, "go depth 3")


@with_syzygy
def test_the_same_syzygy_tables_again_are_no_trouble(syzygy):
    for _ in range(2):
        search(syzygy, ROOK_ENDING, "go depth 3")
        syzygy.send(f"setoption name Syzygy Path value {SYZYGY}")
        syzygy.expect("^info string tablebases found")
    syzygy.finish()
    assert syzygy.errors == ""


@with_syzygy
def test_another_folder_of_syzygy_tables_is_taken_into_use_without_a_word(syzygy):
    """The first one has tables for three men, the second for four."""
    few = syzygy.folder / "three men"
    few.mkdir()
    for table in Path(SYZYGY).glob("K?vK.*"):
        (few / table.name).symlink_to(table.resolve())
    search(syzygy, ROOK_ENDING, "go depth 3")
    for folder, men in ((few, 3), (SYZYGY, 4), (few, 3)):
        syzygy.send(f"setoption name Syzygy Path value {folder}")
        syzygy.expect(f"^info string tablebases found, with men up to {men}$")
        lines, best = search(syzygy, "ucinewgame", ROOK_ENDING, "go depth 2")
        assert best[1] == "h1h7" and 9000 < number(lines[0], "score cp") < 9800
    syzygy.finish()
    assert syzygy.errors == ""


@with_syzygy
def test_syzygy_tables_tell_the_score_of_the_root(syzygy):
    lines, best = search(syzygy, ROOK_ENDING, "go depth 2")
    assert best[1] == "h1h7" and 9000 < number(lines[0], "score cp") < 9800
    assert number(lines[0], "tbhits") > 10, "each root move was looked up"
    lines, _ = search(syzygy, "position fen 8/8/8/4n3/4k3/8/8/K2R4 w - - 0 1", "go depth 2")
    assert number(lines[0], "score cp") == 0


@with_syzygy
@pytest.mark.parametrize("fen, move", [("8/R7/2K5/8/n7/8/7R/4k3 w - - 0 1", "a7a4"),
                                       ("4k3/7n/8/7R/8/8/8/R6K w - - 0 1", "h5h7")])
def test_a_mate_is_found_after_a_capture_that_the_syzygy_tables_know(syzygy, fen, move):
    """A win by the tables is a lower bound: the mate in two begins with the capture into them."""
    for line in ("go depth 6", "go mate 2"):
        lines, best = search(syzygy, "ucinewgame", f"position fen {fen}", line)
        assert best[1] == move and "score mate 2 " in last_score(lines), line


@with_syzygy
def test_a_win_by_syzygy_tables_counts_where_no_mate_is_near(syzygy):
    """The capture wins the game, and no mate is near."""
    lines, best = search(syzygy, "position fen 8/8/8/4k3/8/8/2q5/1BN4K w - - 0 1", "go depth 4")
    assert best[1] == "b1c2" and 9000 < number(last_score(lines), "score cp") < 9800


@with_syzygy
def test_who_analyses_with_syzygy_tables_sees_every_move(syzygy):
    def moves_in_work(*lines):
        shown = [line for line in search(syzygy, ROOK_ENDING, *lines)[0] if " pv " in line]
        return {line.split(" pv ")[1].split()[0] for line in shown if number(line, "depth") == 2}

    assert moves_in_work("go depth 2") == {"h1h7"}
    syzygy.send("setoption name MultiPV value 8")
    assert len(moves_in_work("go depth 2")) >= 8
    syzygy.send("setoption name MultiPV value 1", ROOK_ENDING, "go infinite")
    syzygy.expect("^info depth 2 ")
    syzygy.ask("stop", BESTMOVE)


@with_syzygy
def test_limited_strength_has_no_help_from_tables(syzygy):
    """They would leave it one move alone."""
    assert {search(syzygy, "ucinewgame", ROOK_ENDING, "go depth 1")[1][1] for _ in range(5)} == {"h1h7"}
    syzygy.send("setoption name UCI_LimitStrength value true", "setoption name UCI_Elo value 1000")
    assert {search(syzygy, "ucinewgame", ROOK_ENDING, "go depth 1")[1][1] for _ in range(20)} != {"h1h7"}
