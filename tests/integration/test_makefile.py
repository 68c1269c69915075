"""The Makefile, as frameworks that test engines use it: `make EXE=name`, and then `name bench`.

It compiles the whole of vorka-uci, outside the checkout: about two minutes of one processor.
"""

import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest
from engine import UCI_PROGRAM

ROOT = Path(__file__).resolve().parents[2]
PATIENCE = 800.0

pytestmark = [pytest.mark.skipif(not shutil.which("make"), reason="there is no make"),
              pytest.mark.skipif(os.environ.get("VORKA_SANITIZED") == "1", reason="it would build the same program again")]


def nodes_of(program):
    """Of a short bench, as a framework reads them: "22520 nodes 511818 nps"."""
    last = subprocess.run([program, "bench", "2"], capture_output=True, text=True, check=True).stdout.splitlines()[-1]
    return re.fullmatch(r"(\d+) nodes \d+ nps", last)[1]


def test_make_builds_a_program_that_tells_the_bench(tmp_path):
    """Under the name that is asked for, with the nodes of the build under test; nothing else comes into the checkout."""
    before = sorted(os.listdir(ROOT))
    program = tmp_path / "engine"
    made = subprocess.run(["make", f"EXE={program}", f"BUILD={tmp_path / 'build'}", "JOBS=1"], cwd=ROOT, capture_output=True, text=True,
                          timeout=PATIENCE)
    assert made.returncode == 0, (made.stdout + made.stderr)[-4000:]
    assert nodes_of(program) == nodes_of(UCI_PROGRAM)
    assert sorted(os.listdir(ROOT)) == before
