"""Tuning by games: the program, its workers, and what it keeps."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import time
import xml.dom.minidom

import pytest

TUNE = os.environ["VORKA_TUNE"]
ENGINE = os.environ["VORKA_ENGINE"]
OPENINGS = pathlib.Path(__file__).resolve().parents[1] / "data/openings.epd"
PARAMETERS = """# name start min max c_end r_end
futility_pruning_margin 300 0 600 40 0.02
capture_move_sorting_bonus[2] 5 0 60 4 0.02
"""


def command_in(folder, *options, parameters=PARAMETERS, pairs=12):
    (folder / "parameters").write_text(parameters)
    words = [TUNE, folder / "parameters", "--openings", OPENINGS, "--nodes", 100, "--pairs", pairs, "--batch", 4, "--state",
             folder / "state", "--output", folder / "tuned.txt", *options]
    return [str(word) for word in words]


def tune(folder, *options, check=True, **more):
    return subprocess.run(command_in(folder, *options, **more), capture_output=True, text=True, check=check)


def folder_at(path):
    path.mkdir()
    return path


def test_progress_state_plot_and_settings(tmp_path):
    said = tune(tmp_path, "--plot", tmp_path / "plot.svg").stdout
    assert re.fullmatch(r"(\d+ of 12 pairs, [\d.]+ games a minute, about \d+\.\d hours more\n){3}", said)
    state = (tmp_path / "state").read_text()
    assert re.search(r"(?m)^at 12 [\d.]+ [\d.]+$", state) and len(re.findall(r"(?m)^way ", state)) == 4
    words = [text.firstChild.data for text in xml.dom.minidom.parse(str(tmp_path / "plot.svg")).getElementsByTagName("text")]
    assert "12 of 12 pairs" in words and "futility_pruning_margin" in words


def test_engine_reads_the_settings_and_only_those_listed_have_changed(tmp_path):
    tune(tmp_path)
    commands = f"force\nwrite_settings {tmp_path}/defaults.txt\nread_settings {tmp_path}/tuned.txt\nwrite_settings {tmp_path}/back.txt\nquit\n"
    subprocess.run([ENGINE], input=commands, capture_output=True, text=True, cwd=tmp_path, check=True)
    tuned = (tmp_path / "tuned.txt").read_text()
    assert (tmp_path / "back.txt").read_text() == tuned
    changed = [old.partition("=")[0] for old, new in zip((tmp_path / "defaults.txt").read_text().splitlines(), tuned.splitlines())
               if old != new]
    assert changed and set(changed) <= {"futility_pruning_margin", "capture_move_sorting_bonus"}


TOURNAMENT = "null_move_margin 200 60 600 25 0.02\n"


def test_settings_of_the_tournament_search_are_tuned_with_it_alone(tmp_path):
    complaint = tune(tmp_path, parameters=TOURNAMENT, check=False)
    assert complaint.returncode == 1
    assert "null_move_margin is of the other search: --base search=tournament is missing\n" in complaint.stderr
    complaint = tune(tmp_path, "--base", "search=tournament", check=False)
    assert "futility_pruning_margin is of the other search: leave search=tournament out\n" in complaint.stderr
    tune(tmp_path, "--base", "search=tournament check_extension=32", parameters=TOURNAMENT)
    tuned = dict(line.split(" = ") for line in (tmp_path / "tuned.txt").read_text().splitlines())
    assert 60 <= int(tuned["null_move_margin"]) <= 600 and tuned["check_extension"] == "32" and len(tuned) > 50


def test_killed_run_goes_on_to_the_same_end(tmp_path):
    whole = folder_at(tmp_path / "whole")
    tune(whole, pairs=32)
    cut = folder_at(tmp_path / "cut")
    run = subprocess.Popen(command_in(cut, "--concurrency", "1", pairs=32), stdout=subprocess.DEVNULL)
    while run.poll() is None and not ((cut / "state").exists() and "\nway 8 " in (cut / "state").read_text()):
        time.sleep(0.005)
    run.kill()
    run.wait()
    assert re.match(r"went on after \d+ pairs\n", tune(cut, pairs=32).stdout)
    assert (cut / "state").read_text() == (whole / "state").read_text()
    assert (cut / "tuned.txt").read_text() == (whole / "tuned.txt").read_text()


def test_state_has_one_run_at_a_time(tmp_path):
    """The second one says so, and leaves all as it is."""
    command = command_in(tmp_path, "--play-with", "sleep 60")
    run = subprocess.Popen(command, stdout=subprocess.DEVNULL, start_new_session=True)
    try:
        while not (tmp_path / "tuned.txt").exists():
            assert run.poll() is None
            time.sleep(0.005)
        begun = (tmp_path / "state").read_text()
        second = tune(tmp_path, check=False)
        assert second.returncode == 1 and second.stdout == ""
        assert second.stderr == f"tune: {tmp_path}/state: another run is using it\n"
        assert (tmp_path / "state").read_text() == begun
    finally:
        os.killpg(run.pid, signal.SIGTERM)
        run.wait()
    tune(tmp_path)
    assert sorted(os.listdir(tmp_path)) == ["parameters", "state", "tuned.txt"]


def test_full_standard_output_ends_the_run_which_goes_on_later(tmp_path):
    with open("/dev/full", "w", encoding="utf-8") as full:
        ended = subprocess.run(command_in(tmp_path), stdout=full, stderr=subprocess.PIPE, text=True, check=False)
    assert (ended.returncode, ended.stderr) == (1, "tune: can't write to standard output\n")
    assert "went on after 4 pairs" in tune(tmp_path).stdout
    whole = folder_at(tmp_path / "whole")
    tune(whole)
    assert (whole / "tuned.txt").read_text() == (tmp_path / "tuned.txt").read_text()


def worker_shares(folder):
    """A command that deals its lines out to two workers, as a dealer of jobs would."""
    script = folder / "deal"
    script.write_text(f'#!/bin/sh\ncat > "$0.jobs"\nfor half in 0 1; do\n  awk "NR % 2 == $half" "$0.jobs" | '
                      f'"{TUNE}" --worker --concurrency 1 &\ndone\nwait\n')
    script.chmod(0o755)
    return str(script)


def test_workers_elsewhere_change_nothing(tmp_path):
    here = folder_at(tmp_path / "here")
    tune(here)
    there = folder_at(tmp_path / "there")
    tune(there, "--play-with", worker_shares(tmp_path))
    assert (there / "state").read_text() == (here / "state").read_text()


@pytest.mark.skipif(shutil.which("parallel") is None, reason="GNU parallel is not installed")
def test_parallel_deals_the_pairs_out(tmp_path):
    here = folder_at(tmp_path / "here")
    tune(here)
    there = folder_at(tmp_path / "there")
    tune(there, "--play-with", f"parallel --will-cite --pipe -N1 -j2 '{TUNE}' --worker --concurrency 1")
    assert (there / "state").read_text() == (here / "state").read_text()


def test_lost_results_are_asked_for_again_and_then_given_up(tmp_path):
    once = tmp_path / "once"
    once.write_text(f'#!/bin/sh\nif [ -e "$0.done" ]; then exec "{TUNE}" --worker; fi\ntouch "$0.done"\nhead -n 1 | "{TUNE}" --worker\n')
    once.chmod(0o755)
    assert tune(folder_at(tmp_path / "a"), "--play-with", once).returncode == 0
    run = tune(folder_at(tmp_path / "b"), "--play-with", "cat > /dev/null", check=False)
    assert run.returncode == 1 and run.stderr == "tune: no result of pair 0 from: cat > /dev/null\n"
    run = tune(folder_at(tmp_path / "c"), "--play-with", "echo hello", check=False)
    assert run.returncode == 1 and run.stderr == 'tune: no result of a pair: "hello"\n'


def test_state_of_another_run_is_refused(tmp_path):
    tune(tmp_path)
    run = tune(tmp_path, pairs=16, check=False)
    assert run.returncode == 1
    assert run.stderr == (f'tune: {tmp_path}/state: line 4: it belongs to another run: "pairs 12 batch 4 seed 1" there, '
                          '"pairs 16 batch 4 seed 1" here\n')


@pytest.mark.parametrize("parameters, complaint", [
    ("", "no parameters"),
    ("futility_pruning_margin 300 0 600 40\n", "line 1: not NAME START MIN MAX C_END R_END: 5 words"),
    ("\n# x\nspeed 1 0 2 1 0.1\n", 'line 3: no such setting: "speed"'),
])
def test_bad_parameters_are_told(tmp_path, parameters, complaint):
    run = tune(tmp_path, parameters=parameters, check=False)
    assert run.returncode == 1 and run.stdout == "" and run.stderr == f"tune: {tmp_path}/parameters: {complaint}\n"


def test_parameters_of_the_tree_can_be_read(tmp_path):
    parameters = pathlib.Path(__file__).resolve().parents[2] / "settings/parameters.txt"
    assert tune(tmp_path, parameters=parameters.read_text(), pairs=1).returncode == 0


def test_bad_words_are_refused():
    for options, complaint in (([], "one of --nodes, --depth and --time is missing"),
                               (["--nodes", "10"], "--openings is missing"),
                               (["--nodes", "10", "--openings", "x"], "--state is missing"),
                               (["--pairs", "0"], '--pairs takes a number from 1 to 1000000000, not "0"')):
        run = subprocess.run([TUNE, "parameters", *options], capture_output=True, text=True)
        assert run.returncode == 1 and run.stderr == f"tune: {complaint}\n"
    told = subprocess.run([TUNE, "--help"], capture_output=True, text=True, check=True).stdout
    assert "usage: tune" in told and all(f" {word}=" in told for word in ("settings", "search", "tournament"))
