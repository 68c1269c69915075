"""The program with tables of distances to mate that the builder has computed."""

import os
import pty
import re
import shutil
import subprocess
import time
from pathlib import Path

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


# KPKP needs tables of four men that take minutes.
TABLES = os.environ.get("VORKA_TABLES", "")


@pytest.mark.skipif(not (Path(TABLES) / "KPKP.vdm").is_file(), reason="VORKA_TABLES names no folder with KPKP")
def test_bitbases_of_two_pawns_come_from_tables(start, tmp_path):
    program = shutil.copy(engine_module.PROGRAM, tmp_path / "vorka")
    engine = start("--tb", "nalimov", "32M", TABLES, program=str(program))
    engine.send("generate two_pawns")
    engine.expect("king\\+pawn vs king\\+pawn bitbases data file... done ")
    engine.send("verify two_pawns")
    engine.expect("Verifying bitbase 'two_pawns'...passed ")
    computed = Path(os.environ["VORKA_BITBASES"]) / "kp_kp.vbb"
    if computed.is_file():
        assert (tmp_path / "kp_kp.vbb").read_bytes() == computed.read_bytes()


def test_a_lost_game_is_resigned_at_once(start, tables):
    for options in ((), ("--tb", "nalimov", "1M", str(tables))):
        engine = start(*options)
        engine.send("xboard", "force", "setboard 8/8/8/3k4/8/8/8/KQ6 b - - 0 1", "sd 3", "go")
        engine.expect("move K")
        engine.send("ping 1")
        text, _ = engine.hear("pong 1")
        assert ("resign" in text) == bool(options)


@pytest.mark.skipif(os.environ.get("VORKA_SANITIZED") == "1", reason="the sanitizers take memory of their own")
@pytest.mark.parametrize("material, threads", [("KPK", 1), ("KPK", 8), ("KNNK", 2)])
def test_the_builder_takes_no_more_memory_than_it_lists(computed, tmp_path, material, threads):
    folder = shutil.copytree(computed, tmp_path / "tables")
    (folder / f"{material}.vdm").unlink(missing_ok=True)
    words = ["--threads", str(threads), material]
    listed = int(re.search(rf"(?m)^{material} .* (\d+) MiB", build(folder, "--list", *words).stdout)[1])
    assert build(folder, "--memory", f"{listed - 2}M", *words).returncode == 1
    # By a shell, since a program begins with the memory that its parent has shown as its own.
    run = subprocess.run(["sh", "-c", '"$0" "$@"; exit $?', TABLE_BUILDER, "--output", str(folder),
                          "--memory", f"{listed}M", *words], capture_output=True, text=True)
    assert run.returncode == 0, run.stderr
    assert listed // 2 <= int(re.search(r"done, (\d+) MiB at most", run.stdout)[1]) < listed


def test_the_builder_ends_its_line_on_a_terminal(tmp_path, computed):
    """KBNK takes some seconds, so that a line is written over and over."""
    reader, writer = pty.openpty()
    folder = shutil.copytree(computed, tmp_path / "tables")
    builder = subprocess.Popen([TABLE_BUILDER, "--output", str(folder), "--threads", "1", "KBNK"], stdout=writer)
    os.close(writer)
    said = b""
    while True:
        try:
            part = os.read(reader, 4096)
        except OSError:
            break
        if not part:
            break
        said += part
    os.close(reader)
    assert builder.wait() == 0
    assert b"\r\x1b[K" in said
    assert re.search(rb"\n *\d+\.\d s  done, ", said), said


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
