"""What a release build does against faults of memory, read from the programs themselves."""

import json
import os
import pathlib
import shutil
import subprocess

import pytest
from engine import PROGRAM, UCI_PROGRAM

COMMANDS = os.environ.get("VORKA_COMMANDS", "")

pytestmark = [pytest.mark.skipif(not COMMANDS, reason="VORKA_COMMANDS names no list of compiler calls"),
              pytest.mark.skipif(shutil.which("readelf") is None, reason="there is no readelf (Debian: binutils)")]


def readelf(option, program):
    return subprocess.run(["readelf", option, "--wide", program], capture_output=True, text=True, check=True).stdout


@pytest.mark.parametrize("program", [PROGRAM, UCI_PROGRAM, os.environ.get("VORKA_BENCH", "")])
def test_tables_of_the_loader_cannot_be_written(program):
    assert "GNU_RELRO" in readelf("--program-headers", program)
    dynamic = readelf("--dynamic", program)
    assert "BIND_NOW" in dynamic or "Flags: NOW" in dynamic


@pytest.mark.parametrize("program", [PROGRAM, UCI_PROGRAM])
def test_frames_are_guarded(program):
    assert "__stack_chk_fail" in readelf("--dyn-syms", program)


def test_all_of_the_engine_is_compiled_so():
    # The compiler proves most copies sound, and no symbol tells then that it looked.
    calls = [entry for entry in json.loads(pathlib.Path(COMMANDS).read_text())
             if "/src/" in entry["file"] and "single_pawn_generator" not in entry.get("output", entry["command"])]
    assert len(calls) > 50
    for call in calls:
        words = call["command"].split()
        assert {"-D_FORTIFY_SOURCE=2", "-fstack-protector-strong"} <= set(words), call["file"]
        assert any(word in ("-O2", "-O3") for word in words), call["file"]
