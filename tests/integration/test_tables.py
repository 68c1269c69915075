"""The program with tables of distances to mate that the builder has computed."""

import os
import shutil
import subprocess
import time

import pytest

import engine as engine_module

TABLE_BUILDER = os.environ["VORKA_TABLE_BUILDER"]
THREE_MEN = ("KBK", "KNK", "KPK", "KQK", "KRK")


def build(folder, *words):
    return subprocess.run([TABLE_BUILDER, "--output", str(folder), *words], capture_output=True, text=True)


@pytest.fixture(scope="module")
def computed(tmp_path_factory):
    folder = tmp_path_factory.mktemp("tables")
    run = build(folder, "--men", "3")
    if "can't pack" in run.stderr:
        pytest.skip("this build was made without zstd")
    assert run.returncode == 0, run.stderr
    return folder


@pytest.fixture
def tables(computed, tmp_path):
    """A copy that a test may damage."""
    return shutil.copytree(computed, tmp_path / "tables")


def test_positions_are_looked_up(start, tables):
    engine = start("--tb", "nalimov", "1M", str(tables))
    engine.expect_text(f"Initializing Nalimov tablebases... '{tables}'\n")
    for fen, answer in (("8/8/8/8/8/1k6/8/K6Q w - - 0 1", "result=32758"),
                        ("k6q/8/1K6/8/8/8/8/8 b - - 0 1", "result=32758"),
                        ("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", "result=0"),
                        ("6k1/6Q1/6K1/8/8/8/8/8 b - - 0 1", "result=-32767"),
                        ("4k3/8/8/8/8/8/8/4K2R w K - 0 1", "not found"),
                        ("4k3/8/8/8/8/8/8/3QK2R w - - 0 1", "not found")):
        engine.send(f"probe {fen}")
        engine.expect_text(f"Probing tablebases: {answer}\n")


@pytest.mark.parametrize("size, reason", [("100", "Increase the cache size, because it is too small."),
                                          ("0", None), ("1G", None)])
def test_the_cache_may_have_any_size_that_holds_a_block(console, tables, size, reason):
    line = f"tb nalimov {size} {tables}"
    console.send("force", line, "probe 8/8/8/8/8/1k6/8/K6Q w - - 0 1")
    if reason:
        console.expect_text("Error! Could not initialize tablebases!\nIncrease the cache size.\n")
        console.expect_text(f"Could not initialize Nalimov tablebases.\nReason: {reason}")
    console.expect_text("Probing tablebases: " + ("disabled (not loaded)\n" if reason else "result=32758\n"))


def test_a_folder_without_tables_is_refused(console, tmp_path):
    console.send("force", f"tb nalimov 8M {tmp_path}", "probe 8/8/8/8/8/1k6/8/K6Q w - - 0 1")
    console.expect_text("Reason: Could not open tablebases. Is the path correct?")
    console.expect_text("Probing tablebases: disabled (not loaded)\n")


def test_damaged_tables_are_left_out_and_told(start, tables):
    for name, place in (("KQK", 50), ("KPK", -1)):
        with open(tables / f"{name}.vdm", "r+b") as file:
            file.seek(place, os.SEEK_SET if place >= 0 else os.SEEK_END)
            byte = file.read(1)[0]
            file.seek(-1, os.SEEK_CUR)
            file.write(bytes([byte ^ 1]))
    engine = start("--tb", "nalimov", "1M", str(tables))
    engine.expect_text(f"*** Unable to read {tables}/KQK.vdm - file broken\n")
    engine.send("probe 8/8/8/8/8/1k6/8/K6Q w - - 0 1")
    engine.expect_text("Probing tablebases: not found\n")
    engine.send("probe 8/8/8/8/8/1k6/8/K6R w - - 0 1")
    engine.expect("Probing tablebases: result=327..$")
    engine.send("verify single_pawn")
    engine.expect(rf"\*\*\* {tables}/KPK.vdm corrupted \d+ \d+ \d+$")
    engine.expect_text("Tablebase corruption detected")


def test_bitbases_are_verified_and_missing_tables_told(start, tables, tmp_path):
    program = shutil.copy(engine_module.PROGRAM, tmp_path / "vorka")
    engine = start("--tb", "nalimov", "1M", str(tables), program=str(program))
    engine.ask_text("verify single_pawn", "Verifying bitbase 'single_pawn'...passed (331352 positions)\n")
    engine.ask_text("generate two_pawns", "endgame king+pawn vs king+pawn not available")


def test_a_lost_game_is_resigned_at_once(start, tables):
    for options in ((), ("--tb", "nalimov", "1M", str(tables))):
        engine = start(*options)
        engine.send("xboard", "force", "setboard 8/8/8/3k4/8/8/8/KQ6 b - - 0 1", "sd 3", "go")
        engine.expect("move K")
        engine.send("ping 1")
        text, _ = engine.hear("pong 1")
        assert ("resign" in text) == bool(options)


def test_the_builder_goes_on_where_it_was_stopped(computed, tmp_path):
    builder = subprocess.Popen([TABLE_BUILDER, "--output", str(tmp_path), "--quiet"])
    limit = time.monotonic() + engine_module.PATIENCE
    while not (tmp_path / "KRK.vdm").exists():
        assert builder.poll() is None and time.monotonic() < limit
    builder.kill()
    builder.wait()
    there = {path.name for path in tmp_path.glob("*.vdm")}
    run = build(tmp_path, "--men", "3")
    assert run.returncode == 0, run.stderr
    begun = set(run.stdout.split())
    for name in THREE_MEN:
        assert (name in begun) == (f"{name}.vdm" not in there)
        assert (tmp_path / f"{name}.vdm").read_bytes() == (computed / f"{name}.vdm").read_bytes()
