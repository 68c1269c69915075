"""The clients that people use, on a screen that nobody sees: XBoard by its engine file, and those of scripts/screenshots,
which takes no picture unless a client shows what it should. What is not installed is skipped."""

import os
import re
import subprocess
import sys
from pathlib import Path

import pytest
from engine import PROGRAM
from installed import PATH, needs
from screen import screen

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(PROGRAM).resolve().parent
PATIENCE = 300.0
README_LIMIT = 150 * 1024  # bytes of a picture


# --- The engine file of XBoard ---

def engine_file():
    """The command and the variants of an engine file, which XBoard looks for where packages put it."""
    spec, command, variants = (ROOT / "packaging/xboard/vorka.eng").read_text().splitlines()
    assert spec == "plugin spec 0.0"
    return command, variants.split(",")


def test_engine_file_names_a_program_of_the_build_and_plain_chess():
    command, variants = engine_file()
    assert os.access(BUILD / command, os.X_OK)
    assert variants == ["chess"]


@needs("xboard")
def test_xboard_starts_what_the_engine_file_names(tmp_path):
    """It finds the command in PATH, as it does after an installation. Here it plays one game of the engine with itself.
    XBoard keeps its settings where the user's are, whatever HOME says: nothing may be saved there."""
    command, _ = engine_file()
    games = tmp_path / "games.pgn"
    with screen() as display:
        environment = dict(os.environ, DISPLAY=display, HOME=str(tmp_path), PATH=f"{BUILD}:{PATH}")
        subprocess.run(["xboard", "-fcp", command, "-fd", str(tmp_path), "-scp", command, "-sd", str(tmp_path),
                        "-matchGames", "1", "-saveGameFile", str(games), "-searchDepth", "1", "-adjudicateLossThreshold",
                        "-500", "-saveSettingsOnExit", "false", "-popupExitMessage", "false", "-soundProgram", ""],
                       cwd=tmp_path, env=environment, stdin=subprocess.DEVNULL, capture_output=True, timeout=PATIENCE,
                       check=True)
    told = games.read_text("latin-1")
    assert '[White "Vorka"]' in told and '[Black "Vorka"]' in told and "1. " in told


# --- The pictures ---

@pytest.mark.parametrize("client", [pytest.param(name, marks=[needs(program) for program in programs]) for name, *programs in (
    ("xboard", "xboard", "xdotool"), ("pychess", "pychess"), ("scid", "scid"), ("console", "xterm"))])
@needs("import")
@pytest.mark.skipif(os.environ.get("VORKA_SANITIZED") == "1", reason="pictures are taken of the release build")
def test_a_client_can_be_pictured(tmp_path, client):
    told = subprocess.run([ROOT / "scripts/screenshots", client, "--build", BUILD, "--output", tmp_path],
                          env=dict(os.environ, PATH=PATH), capture_output=True, text=True, timeout=PATIENCE)
    assert told.returncode == 0, told.stderr
    assert told.stdout == f"{tmp_path / client}.png\n"
    assert 10_000 < (tmp_path / f"{client}.png").stat().st_size < README_LIMIT


def test_all_that_pictures_need_can_be_installed():
    """scripts/test --clients, which CI calls, installs what scripts/screenshots asks for, so that nothing is skipped."""
    packages = (ROOT / "scripts/lib/packages.sh").read_text()
    installed = re.search(r"^client_packages=\((.*)\)$", packages, re.M)[1].split()
    asked = re.search(r"^PACKAGES = \{(.*?)\}", (ROOT / "scripts/screenshots").read_text(), re.M | re.S)[1]
    assert {*re.findall(r'": "(.*?)"', asked)} <= {*installed}
    assert "scripts/test --clients " in (ROOT / ".ci/run").read_text()


def test_a_program_that_is_missing_is_named(tmp_path):
    told = subprocess.run([sys.executable, ROOT / "scripts/screenshots", "scid", "--build", BUILD],
                          env=dict(os.environ, PATH="/nonexistent"), capture_output=True, text=True)
    assert told.returncode == 1 and told.stderr.startswith("scripts/screenshots: scid: there is no Xvfb, ")
    assert "apt install xvfb" in told.stderr
    told = subprocess.run([ROOT / "scripts/screenshots", "nobody", "--build", BUILD], capture_output=True, text=True)
    assert told.returncode == 1 and "no such client" in told.stderr
    told = subprocess.run([ROOT / "scripts/screenshots", "scid", "--build", tmp_path], capture_output=True, text=True)
    assert told.returncode == 1 and "there is no" in told.stderr and "--build" in told.stderr


@pytest.mark.parametrize("picture", sorted((ROOT / "docs/pictures").glob("*.png")), ids=lambda path: path.stem)
def test_a_picture_of_the_documents_is_small(picture):
    assert picture.read_bytes().startswith(b"\x89PNG") and picture.stat().st_size < README_LIMIT
