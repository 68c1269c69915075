"""The settings that games have found, settings/tuned.txt: who reads them, and that nothing else stands in the file."""

import os
import shutil
import subprocess
from pathlib import Path

import pytest
from engine import PATIENCE, PROGRAM
from uci_dialogue import number, ready, search

ROOT = Path(__file__).resolve().parents[2]
TUNED = ROOT / "settings/tuned.txt"
PARAMETERS = ROOT / "settings/parameters.txt"
BASE = {"min_ply_for_null_move": "1"}  # what the run began with besides


def values_of(text):
    return dict(line.split("=", 1) for line in text.splitlines())


def bounds():
    rows = [line.split() for line in PARAMETERS.read_text().splitlines() if line.strip() and not line.startswith("#")]
    return {name: (int(least), int(most)) for name, _, least, most, *_ in rows}


def test_only_what_was_tuned_differs_from_the_defaults(console):
    console.send("force", "write_settings defaults.txt")
    console.ping()
    defaults, tuned = values_of((console.folder / "defaults.txt").read_text()), values_of(TUNED.read_text())
    assert list(tuned) == list(defaults)
    changed = {name: value for name, value in tuned.items() if value != defaults[name]}
    assert {name: changed.pop(name) for name in BASE} == BASE
    limits = bounds()
    for name, value in changed.items():
        least, most = limits[name]
        assert least <= int(value) <= most, name


@pytest.fixture
def checkout(tmp_path):
    """One that is built already: cmake finds nothing to do."""
    folder = tmp_path / "a checkout"
    for part in ("scripts", "settings"):
        shutil.copytree(ROOT / part, folder / part)
    build = folder / "build/play"
    build.mkdir(parents=True)
    (build / "vorka").symlink_to(Path(PROGRAM).resolve())
    for bitbase in ("kp_kp.vbb", "kpp_kp_ram.vbb"):
        (build / bitbase).touch()
    (folder / "bin").mkdir()
    (folder / "bin/cmake").symlink_to(shutil.which("true"))
    return folder


@pytest.mark.parametrize("options, is_tuned", [(["--tuned"], True), ([], False)])
def test_play_starts_the_console_with_them_if_asked(checkout, options, is_tuned):
    played = subprocess.run([checkout / "scripts/play", *options], input="force\nwrite_settings read.txt\nquit\n",
                            env={**os.environ, "PATH": f"{checkout / 'bin'}:{os.environ['PATH']}"},
                            capture_output=True, text=True, timeout=PATIENCE, check=False)
    assert played.returncode == 0, played.stderr
    assert ((checkout / "play/read.txt").read_text() == TUNED.read_text()) == is_tuned


def test_an_interface_names_them(uci):
    def nodes():
        told, _ = search(uci, "ucinewgame", "go depth 5")
        return number(told[-1], "nodes")

    uci.send("setoption name Search value Classic")
    before = nodes()
    uci.send("setoption name Settings File value tuned")
    assert ready(uci) == ""
    assert nodes() != before
