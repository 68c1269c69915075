"""The program beside real bitbase files, which an earlier test has computed."""

import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import sys

import pytest

import engine as engine_module

BITBASES = pathlib.Path(os.environ["VORKA_BITBASES"])
BEST_MOVE = os.environ["VORKA_BEST_MOVE"]
ROOT = pathlib.Path(__file__).resolve().parent.parent.parent

CHECKSUMS = {
    "kp_kp.vbb": "d2bec14d422abdbce136a229efafcbca75bb919225798e4d2715e745ec69b8c6",
    "kpp_kp_ram.vbb": "e74871416f984a9a6bc7e9f7e4aecf2dfb947ae8a889dc5d24cf48849893c203",
}


@pytest.fixture
def beside(tmp_path, monkeypatch, start):
    """Starts a copy of the program that stands beside the named files."""
    def start_beside(*names):
        home = tmp_path / "home"
        home.mkdir()
        shutil.copy(engine_module.PROGRAM, home / "vorka")
        for name in names:
            shutil.copy(BITBASES / name, home)
            shutil.copy(BITBASES / f"{name}.sha256", home)
        monkeypatch.setattr(engine_module, "PROGRAM", str(home / "vorka"))
        return home
    return start_beside


@pytest.mark.parametrize("name", CHECKSUMS)
def test_files_are_always_the_same(name):
    assert hashlib.sha256((BITBASES / name).read_bytes()).hexdigest() == CHECKSUMS[name]


def test_checksums_are_those_of_sha256sum():
    run = subprocess.run(["sha256sum", "--check", "--strict", *(f"{name}.sha256" for name in CHECKSUMS)], cwd=BITBASES,
                         capture_output=True, text=True)
    assert run.returncode == 0, run.stdout + run.stderr


MISSING = "  the checksum of this file is missing: "
DOES_NOT_FIT = "  the checksum of this file does not fit, it is not used: "


def test_start_and_tb_say_what_is_wrong_with_a_checksum(start, beside):
    home = beside(*CHECKSUMS)
    with open(home / "kp_kp.vbb", "r+b") as file:
        file.write(b"x" * 0x120000)
    (home / "kpp_kp_ram.vbb.sha256").unlink()
    engine = start()
    engine.send("tb")
    engine.finish()
    assert (f"King+pawn vs king+pawn bitbases (not loaded)\n{DOES_NOT_FIT}kp_kp.vbb.sha256\n"
            f"King+pawn+pawn vs king+pawn with pawn ram bitbases (loaded)\n{MISSING}kpp_kp_ram.vbb.sha256\n"
            ) in engine.output
    assert (f"Warning: Failed to open two pawns bitbases.\n{DOES_NOT_FIT}kp_kp.vbb.sha256\n"
            f"- rammed pawn bitbases found\n{MISSING}kpp_kp_ram.vbb.sha256\n") in engine.log


def test_a_file_that_is_cut_during_a_search_does_no_harm(start, beside):
    home = beside(*CHECKSUMS)
    engine = start()
    engine.send("force", "setboard 4k3/1p6/8/8/8/8/P7/4K3 w - - 0 1", "analyze")
    engine.ping()
    for name in CHECKSUMS:
        os.truncate(home / name, 0)
    engine.send("probe 4k3/1p6/8/8/8/8/P7/4K3 w - - 0 1", "exit", "probe 7k/8/8/P7/8/8/7p/K7 b - - 0 1")
    engine.expect_text("Probing bitbases: result=32691")


@pytest.mark.parametrize("names", [[], ["kp_kp.vbb"], ["kpp_kp_ram.vbb"], list(CHECKSUMS)])
def test_files_are_found_and_shown(start, beside, names):
    home = beside(*names)
    engine = start()
    engine.send("tb")
    engine.finish()
    found = [name in names for name in CHECKSUMS]
    assert ("King+pawn vs king+pawn bitbases (" + ("loaded" if found[0] else "not loaded") + ")\n"
            "King+pawn+pawn vs king+pawn with pawn ram bitbases (" + ("loaded" if found[1] else "not loaded") + ")\n"
            ) in engine.output
    assert (f"Loading bitbases (executables directory='{home}'):\n"
            + ("- two pawns bitbases found\n" if found[0] else f"- two pawns bitbases not found ('{home}/kp_kp.vbb')\n")
            + ("- rammed pawn bitbases found\n" if found[1]
               else f"- rammed pawn bitbases not found ('{home}/kpp_kp_ram.vbb').\n")
            + "- generic bitbases disabled\n") in engine.log
    assert "Loading bitbases" not in engine.output


def test_a_short_file_is_left_alone(start, beside):
    home = beside(*CHECKSUMS)
    os.truncate(home / "kp_kp.vbb", 0x120000 - 1)
    engine = start()
    engine.send("tb")
    engine.finish()
    assert "King+pawn vs king+pawn bitbases (not loaded)\n" in engine.output
    assert "Warning: Failed to open two pawns bitbases.\n- rammed pawn bitbases found\n" in engine.log


@pytest.mark.parametrize("fen, result", [
    # A pawn that runs, seen from both sides, and a draw; a blocked pair with a free pawn, for both colours.
    ("7k/8/8/P7/8/8/7p/K7 b - - 0 1", 24 + 32667),
    ("k7/8/7P/8/p7/8/8/7K w - - 0 1", 20 + 32667),
    ("8/8/k7/4P3/3K4/7p/8/8 w - - 0 1", 0),
    ("4k3/8/8/3p4/3P4/8/1P6/4K3 w - - 0 1", 4 + 32667),
    ("4k3/1p6/8/3p4/3P4/8/8/4K3 b - - 0 1", 4 + 32667),
])
def test_probe_tells_what_the_files_know(start, beside, fen, result):
    beside(*CHECKSUMS)
    engine = start()
    engine.send("probe " + fen)
    engine.finish()
    assert f"\nProbing bitbases: result={result}\nProbing tablebases: disabled (not loaded)\n" in engine.output


def test_generate_keeps_files_and_verify_needs_tablebases(start, beside):
    beside(*CHECKSUMS)
    engine = start()
    engine.send("generate all", "verify two_pawns")
    engine.finish()
    assert ("Generating king+pawn vs king+pawn bitbases data file... skipped (file already exists)\n"
            "Generating rammed pawn bitbases data file... skipped (file already exists)\n"
            "Generation finished. Reloading bitbases.\n") in engine.output
    assert ("Verifying bitbase 'two_pawns'...aborted\n"
            "Error (tablebases not loaded): verify two_pawns\n") in engine.output


def test_endings_are_won_and_held_with_the_files_alone(tmp_path):
    lines = (ROOT / "tests" / "data" / "pawn_endings.epd").read_text().splitlines()
    few = tmp_path / "few.epd"
    few.write_text("\n".join(lines[20::10]) + "\n")

    def play(*options):
        return subprocess.run([sys.executable, ROOT / "tools" / "play_endings", BEST_MOVE, "--file", few, "--depth", "4",
                               *options], capture_output=True, text=True)

    assert play().returncode == 1, "without the files so shallow a search errs"
    run = play("--bitbases", BITBASES)
    assert run.returncode == 0, run.stdout + run.stderr
    assert re.search(r"^won: (\d+) of \1,", run.stdout, re.MULTILINE) and re.search(r"^held: (\d+) of \1,", run.stdout,
                                                                                    re.MULTILINE)
