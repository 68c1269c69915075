"""scripts/calibrate: the engine at limited strength against itself, where one move is left and the game is drawn."""

import os
import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
UCI = os.environ["VORKA_UCI"]
ONE_MOVE_TO_A_DRAW = "8/8/8/8/8/8/1q6/K6k w - -\n"


def calibrate(folder, *options, status=0, levels=(1000, 1200)):
    (folder / "opening.epd").write_text(ONE_MOVE_TO_A_DRAW)
    command = [sys.executable, ROOT / "scripts/calibrate", "--levels", *levels, "--games", 2, "--openings", folder / "opening.epd",
               "--engine", f"'{UCI}'", "--reference", f"'{UCI}' {{limit}} option.Hash=1", "--state", folder / "state",
               "--output", folder / "table.md", *options]
    run = subprocess.run([str(word) for word in command], capture_output=True, text=True, check=False)
    assert run.returncode == status, run.stdout + run.stderr
    return run


def test_each_level_plays_the_reference_and_is_kept(tmp_path):
    said = calibrate(tmp_path, "--ahead", 200).stdout.splitlines()
    assert [line for line in said if "of 2: UCI_Elo" in line] == ["1 of 2: UCI_Elo 1000", "2 of 2: UCI_Elo 1200"]
    assert sum(" 1/2-1/2, " in line for line in said) == 4
    assert (tmp_path / "table.md").read_text().splitlines() == [
        f"2 games a level, at depth 12 at most, the reference `'{UCI}' {{limit}} option.Hash=1` with 200 more. An error is half the "
        "width of the 95 % interval.", "",
        "| UCI_Elo | reference | Elo between them | error | so it plays like |", "|---|---|---|---|---|",
        "| 1000 | 1200 | +0.0 | ? | 1200 |", "| 1200 | 1400 | +0.0 | ? | 1400 |"]
    again = calibrate(tmp_path, "--ahead", 200).stdout
    assert " 1/2-1/2, " not in again


@pytest.mark.parametrize("words", ["{limit}", "option.UCI_LimitStrength=true option.UCI_Elo={elo}"])
def test_reference_is_told_its_limit(tmp_path, words):
    fake, log = pathlib.Path(__file__).with_name("fake_engine.py"), tmp_path / "said.txt"
    calibrate(tmp_path, "--reference", f"'{sys.executable}' '{fake}' uci 'log={log}' {words}", "--ahead", 150, levels=(1400,))
    told = log.read_text().splitlines()
    assert "setoption name UCI_LimitStrength value true" in told and "setoption name UCI_Elo value 1550" in told
    assert "| 1400 | 1550 | +0.0 | ? | 1550 |" in (tmp_path / "table.md").read_text()


@pytest.mark.parametrize("options, complaint", [
    (["--games", "3"], "takes an even number, not 3"),
    (["--depth", "0"], 'takes a number from 1 to 99, not "0"'),
    (["--reference", "no-such-program {limit}"], "no-such-program"),
    (["--levels", "0"], 'takes a number from 1 to 4000, not "0"'),
])
def test_what_cannot_be_played_is_told(tmp_path, options, complaint):
    run = calibrate(tmp_path, *options, status=2 if options[1] == "0" else 1, levels=(1000,))
    assert complaint in run.stderr and "Traceback" not in run.stderr
    assert not (tmp_path / "table.md").exists()
