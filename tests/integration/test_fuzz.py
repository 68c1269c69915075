"""scripts/fuzz and its parts: that they find what is wrong, and make it small. The programs here are made up."""

import pathlib
import random
import re
import subprocess
import sys
import time

import pytest
from engine import UCI_PROGRAM

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "lib"))
import fuzz_sessions  # noqa: E402
import fuzz_targets  # noqa: E402

FAST = 0.5  # seconds of patience with a program that hangs by intent


def program(tmp_path, body):
    path = tmp_path / "program"
    path.write_text(f"#!{sys.executable} -u\nimport sys\nfor line in sys.stdin:\n    line = line.strip()\n" +
                    "".join(f"    {part}\n" for part in body) + "    if line == 'ping 4711': print('pong 4711')\n")
    path.chmod(0o755)
    return path


KIND = fuzz_sessions.Kind("program", ["first"], ["ping 4711"], "pong 4711", ["a", "b"])
FAULTS = [
    ("none", ["pass"], None),
    ("a status", ["if line == 'bad': sys.exit(3)"], "ends with status 3"),
    ("a signal", ["if line == 'bad': __import__('os').kill(__import__('os').getpid(), 6)"], "ends with status -6"),
    ("no end", ["while line == 'bad': pass"], "does not end"),
    ("no answer", ["if line == 'bad': sys.exit(0)"], "gives no pong 4711"),
    ("words on standard error", ["if line == 'bad': sys.stderr.write('oh dear\\n')"], "oh dear"),
    ("a report of a sanitizer", ["if line == 'bad': sys.stderr.write('x.cpp:1:2: runtime error: division by zero\\n')"],
     "division by zero"),
]


@pytest.mark.parametrize("body, fault", [(body, fault) for _, body, fault in FAULTS], ids=[name for name, _, _ in FAULTS])
def test_fault_of_a_session_is_seen(tmp_path, body, fault):
    found = fuzz_sessions.try_session(KIND, program(tmp_path, body), ["good", "bad", "~ 1"],
                                      FAST if fault == "does not end" else 60)
    assert (found and found.fault) == fault


def test_session_that_quits_owes_no_answer(tmp_path):
    assert fuzz_sessions.try_session(KIND, program(tmp_path, ["if line == 'quit': sys.exit(0)"]), ["quit"]) is None


def test_session_is_made_small():
    tried = []

    def is_wrong(lines):
        tried.append(lines)
        return "a" in lines and "b" in lines and lines.index("a") < lines.index("b")

    lines = [f"line {i}" for i in range(40)]
    lines[7:7], lines[29:29] = ["a"], ["b"]
    assert fuzz_sessions.fewer_lines(lines, is_wrong, lambda: True) == ["a", "b"]
    assert len(tried) < 200
    assert fuzz_sessions.fewer_lines(lines, is_wrong, lambda: False) == lines


def test_sessions_set_every_option_that_uci_offers():
    told = subprocess.run([UCI_PROGRAM], input="uci\nquit\n", capture_output=True, text=True, check=True).stdout
    offered = {*re.findall(r"^option name (.+?) type ", told, re.M)}
    assert len(offered) > 80
    chance, said = random.Random(1), []
    for _ in range(1000):
        said += fuzz_sessions.random_session(fuzz_sessions.KINDS["uci"], chance)
    assert offered <= {found[1] for line in said if (found := re.match(r"setoption name (.+?)(?: value .*)?$", line))}
    # A number that is refused changes no search.
    assert len(fuzz_sessions.LIMITS) == 2 * len(fuzz_sessions.TOURNAMENT) > 120
    assert said.count("setoption name Search value Tournament") > 300


def test_session_is_written_and_read():
    for lines in ([], [""], ["a", "", "\xff\x01", "~ 5"]):
        assert fuzz_sessions.lines_of(fuzz_sessions.text_of(lines)) == lines


def test_targets_are_those_that_have_seeds():
    names = fuzz_targets.names_of_targets(ROOT)
    assert sorted(names) == sorted(path.name for path in (ROOT / "tests/fuzz/seeds").iterdir())


def script(*words):
    return subprocess.run([ROOT / "scripts/fuzz", *words], capture_output=True, text=True, timeout=120)


def test_script_refuses_what_it_does_not_know(tmp_path):
    for words in (["0"], ["x"], ["--only", "nobody"]):
        result = script(*words, "--no-build", "--state", str(tmp_path))
        assert result.returncode != 0 and result.stderr and not result.stdout


def test_script_keeps_a_session_that_fails_and_goes_on(tmp_path):
    """Every session of this program fails: kept once, made small, told in a line."""
    (tmp_path / "vorka").write_text("#!/bin/sh\ncat > /dev/null\nexit 7\n")
    (tmp_path / "vorka").chmod(0o755)
    begun = time.monotonic()
    result = script("4", "--only", "xboard", "--no-build", "--build", str(tmp_path), "--state", str(tmp_path / "state"))
    assert time.monotonic() - begun < 60
    assert result.returncode == 1, result.stderr
    assert "ends with status 7" in result.stdout and "1 findings" in result.stdout
    kept = list((tmp_path / "state/findings/sessions").glob("*.xboard"))
    assert len(kept) == 1 and kept[0].read_text() == ""
