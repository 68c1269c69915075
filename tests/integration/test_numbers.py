"""The numbers that tools and scripts take on their command lines: read strictly, and refused with the option's name."""

import os
import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
NO_NUMBERS = ["abc", "", "1x", "x=yes", "1e9", "1.5.", " 1", "1 ", "+1", "1_000", "0x10", "-1", "99999999999999999999",
              "\u0661", "nan", "inf"]

SCRIPTS = {
    "tools/match": (["engine"], ["--games", "--concurrency", "--depth", "--draw-after"]),
    "tools/play_endings": (["engine", "--random", "KQK"],
                           ["--positions", "--seed", "--time", "--depth", "--parallel"]),
    "scripts/fuzz": ([], ["--jobs", "--seed"]),
    "scripts/mutate": ([], ["--seed", "--jobs"]),
    "scripts/soak": ([], ["--concurrency", "--draw-after", "--seed"]),
    "benchmarks/startup": (["engine"], ["--starts"]),
    "benchmarks/flame_graph": (["engine"], ["--depth"]),
    "benchmarks/peers": ([], ["--runs", "--seconds", "--positions", "--hash", "--bench-depth", "--callgrind-depth",
                              "--perft-largest", "--evaluation-seconds", "--starts"]),
    "scripts/sensitivity": (["variants"], ["--games", "--nodes", "--depth", "--patience", "--seed", "--concurrency"]),
    "scripts/screening": (["changes"], ["--games", "--nodes", "--seed", "--concurrency"]),
}
# Programs, and the status that they end with when they are asked for nonsense.
PROGRAMS = {
    "VORKA_BENCH": (1, ["--depth", "--time", "--hash"]),
    "VORKA_BEST_MOVE": (1, ["--depth", "--time"]),
    "VORKA_SELFPLAY": (1, ["--games", "--opening-plies", "--seed", "--concurrency", "--nodes", "--depth", "--hash"]),
    "VORKA_TUNE": (1, ["--seed", "--concurrency", "--nodes", "--depth", "--hash"]),
}


def run(*words):
    return subprocess.run([str(word) for word in words], cwd=ROOT, capture_output=True, text=True, timeout=60,
                          stdin=subprocess.DEVNULL)


@pytest.mark.parametrize("script, option", [(script, option) for script, (_, options) in SCRIPTS.items()
                                            for option in options])
def test_scripts_refuse_what_is_no_number(script, option):
    # All in one process: a start of the interpreter takes longer than the question.
    asked = f"""
import importlib.machinery, importlib.util, io, contextlib, sys
loader = importlib.machinery.SourceFileLoader("script", {str(ROOT / script)!r})
module = importlib.util.module_from_spec(importlib.util.spec_from_loader("script", loader))
loader.exec_module(module)
for text in {NO_NUMBERS!r}:
    said = io.StringIO()
    sys.argv = ["script", *{SCRIPTS[script][0]!r}, "{option}=" + text]
    try:
        with contextlib.redirect_stderr(said):
            module.main(sys.argv[1:]) if module.main.__code__.co_argcount else module.main()
        status = 0
    except SystemExit as end:
        status = end.code
    assert status == 2 and "{option}" in said.getvalue() and "takes" in said.getvalue(), (text, status, said.getvalue())
"""
    result = run(sys.executable, "-B", "-c", asked)
    assert result.returncode == 0, result.stderr


@pytest.mark.parametrize("variable, option", [(variable, option) for variable, (_, options) in PROGRAMS.items()
                                              for option in options])
def test_programs_refuse_what_is_no_number(variable, option):
    for text in NO_NUMBERS:
        result = run(os.environ[variable], f"{option}={text}")
        assert result.returncode == PROGRAMS[variable][0], (text, result)
        assert option in result.stderr and result.stdout == "", (text, result)


def test_shell_scripts_refuse_what_is_no_number():
    for text in NO_NUMBERS:
        result = run("scripts/test", "-j", text)
        assert (result.returncode, result.stdout) == (2, "") and "-j takes" in result.stderr, (text, result)
        if text:
            result = run("benchmarks/techniques", "/bin/false", text)
            assert (result.returncode, result.stdout) == (2, "") and "DEPTH" in result.stderr, (text, result)


@pytest.mark.parametrize("script", [".ci/run", "scripts/test", "scripts/check", "scripts/play"])
def test_help_starts_nothing(script):
    for word in ("--help", "-h"):
        result = run(script, word)
        assert result.returncode == 0 and result.stdout.startswith("usage: "), result
    if script == "scripts/play":  # whose other words are those of the engine
        return
    result = run(script, "--nonsense")
    assert result.returncode == 2 and "--nonsense" in result.stderr and "===" not in result.stdout, result
