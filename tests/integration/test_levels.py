"""The launcher of a package: which program it starts, and what it hands on to it. The programs are scripts that say
their name, the input and the arguments; only the last tests want those of a package, in the folder VORKA_PACKAGE:

    cmake --preset package && cmake --build --preset package --target vorka bench
    VORKA_PACKAGE=build/package python3 -m pytest tests/integration/test_levels.py
"""

import os
import re
import shutil
import subprocess
from pathlib import Path

import engine
import pytest

LEVELS = ["x86-64", "x86-64-v2", "x86-64-v3"]
LAUNCHER = os.environ.get("VORKA_LAUNCHER", "")
PACKAGE = os.environ.get("VORKA_PACKAGE", "")

with_launcher = pytest.mark.skipif(not LAUNCHER, reason="VORKA_LAUNCHER names no launcher")
with_package = pytest.mark.skipif(not PACKAGE, reason="VORKA_PACKAGE names no folder of a package")

# What a program does instead of playing: it says which one it is, and how it was started.
PROGRAM = """\
#!/bin/sh
echo "$0"
cat
for word; do echo "<$word>"; done
exit 7
"""


class Installed:
    """A launcher in a folder of its own, with made-up programs."""

    def __init__(self, folder, name="vorka"):
        self.folder = folder
        self.launcher = folder / "games" / name
        self.library = folder / "lib" / "vorka"
        self.launcher.parent.mkdir()
        shutil.copy(LAUNCHER, self.launcher)

    def add(self, *levels, beside=False, text=PROGRAM, mode=0o755):
        """Programs for these levels, in the library or beside the launcher."""
        for level in levels:
            program = self.place(level, beside)
            program.parent.mkdir(parents=True, exist_ok=True)
            program.write_text(text)
            program.chmod(mode)
        return self

    def place(self, level, beside=False):
        return (self.launcher.parent if beside else self.library) / f"{self.launcher.name}-{level}"

    def nothing_at(self, level):
        return f"vorka: found nothing to start at {self.place(level, beside=True)} or {self.place(level)}\n"

    def run(self, *arguments, level=None, said="", emulator=(), command=None):
        environment = {name: value for name, value in os.environ.items() if name != "VORKA_LEVEL"}
        if level is not None:
            environment["VORKA_LEVEL"] = level
        return subprocess.run([*emulator, command or self.launcher, *arguments], input=said, env=environment,
                              capture_output=True, text=True, timeout=engine.PATIENCE)


@pytest.fixture
def installed(tmp_path):
    return Installed(tmp_path)


def levels_here(installed):
    """The levels of this machine: those that the launcher doesn't refuse."""
    refused = installed.run(level="x86-64-v3").stderr
    found = re.search("it has (.*)", refused)
    return found[1].split(", ") if found else LEVELS


def need(installed, level):
    if level not in levels_here(installed):
        pytest.skip(f"this machine has no {level}")


def started(result):
    """The program that a made-up program says it is."""
    assert result.returncode == 7, result
    return Path(result.stdout.splitlines()[0])


@with_launcher
def test_starts_the_best_level_of_this_machine(installed):
    installed.add(*LEVELS)
    result = installed.run()
    assert started(result) == installed.place(levels_here(installed)[-1])
    assert result.stderr == ""


# The kinds of processors that the emulator plays: the last of each level, and some that lack one feature of the next.
PROCESSORS = [
    ("qemu64", "x86-64"), ("Conroe", "x86-64"), ("Nehalem,-cx16", "x86-64"), ("Nehalem,-popcnt", "x86-64"),
    ("Nehalem", "x86-64-v2"), ("SandyBridge", "x86-64-v2"), ("Haswell,-bmi2", "x86-64-v2"),
    ("Haswell,-movbe", "x86-64-v2"), ("Haswell,-abm", "x86-64-v2"), ("Haswell,-xsave", "x86-64-v2"),
    ("Haswell", "x86-64-v3"), ("EPYC", "x86-64-v3"),
]


@with_launcher
@pytest.mark.skipif(shutil.which("qemu-x86_64") is None, reason="there is no qemu-x86_64 (Debian: qemu-user)")
@pytest.mark.skipif(os.environ.get("VORKA_SANITIZED") == "1", reason="the sanitizers don't run in the emulator")
@pytest.mark.parametrize("processor, level", PROCESSORS)
def test_knows_the_level_of_other_processors(installed, processor, level):
    installed.add(*LEVELS)
    assert started(installed.run(emulator=["qemu-x86_64", "-cpu", processor])) == installed.place(level)


@with_launcher
@pytest.mark.parametrize("level", LEVELS)
def test_starts_the_level_that_is_wished(installed, level):
    need(installed, level)
    assert started(installed.add(*LEVELS).run(level=level)) == installed.place(level)


@with_launcher
def test_takes_an_empty_wish_for_none(installed):
    assert started(installed.add(*LEVELS).run(level="")) == installed.place(levels_here(installed)[-1])


@with_launcher
def test_prefers_the_program_beside_it(installed):
    installed.add(*LEVELS).add(*LEVELS, beside=True)
    assert started(installed.run(level="x86-64")) == installed.place("x86-64", beside=True)


@with_launcher
def test_starts_programs_of_its_own_name(tmp_path):
    installed = Installed(tmp_path, "vorka-uci").add(*LEVELS)
    assert started(installed.run(level="x86-64")).name == "vorka-uci-x86-64"


@with_launcher
def test_is_found_through_a_link_of_any_name(installed):
    link = installed.add(*LEVELS).folder / "chess"
    link.symlink_to(installed.launcher)
    assert started(installed.run(level="x86-64", command=link)) == installed.place("x86-64")


@with_launcher
def test_hands_on_arguments_and_input(installed):
    result = installed.add(*LEVELS).run("--sd", "4", "", "two words", "*", level="x86-64", said="e4\nquit")
    assert result.stdout == f"{installed.place('x86-64')}\ne4\nquit<--sd>\n<4>\n<>\n<two words>\n<*>\n"


@with_launcher
def test_tells_the_engine_its_own_folder(installed):
    # The bitbases lie there. A shell that found the launcher in PATH would not name a folder.
    installed.library.mkdir(parents=True)
    shutil.copy(engine.PROGRAM, installed.place("x86-64"))
    subprocess.run(["vorka"], executable=installed.launcher, cwd=installed.folder, stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, env={**os.environ, "VORKA_LEVEL": "x86-64"}, check=True)
    assert f"(executables directory='{installed.library}'):\n" in (installed.folder / "logfile.000").read_text()


@with_launcher
@pytest.mark.parametrize("wish", ["x86-64-v4", "v2", "arm64", " "])
def test_refuses_an_unknown_level(installed, wish):
    result = installed.add(*LEVELS).run(level=wish)
    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == (f"vorka: VORKA_LEVEL names no level: {wish}; the levels are x86-64, x86-64-v2, "
                             "x86-64-v3\n")


@with_launcher
@pytest.mark.skipif(shutil.which("qemu-x86_64") is None, reason="there is no qemu-x86_64 (Debian: qemu-user)")
@pytest.mark.skipif(os.environ.get("VORKA_SANITIZED") == "1", reason="the sanitizers don't run in the emulator")
def test_refuses_a_level_above_the_processor(installed):
    result = installed.add(*LEVELS).run(level="x86-64-v3", emulator=["qemu-x86_64", "-cpu", "Nehalem"])
    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == "vorka: VORKA_LEVEL is above this processor: x86-64-v3; it has x86-64, x86-64-v2\n"


@with_launcher
def test_falls_back_to_the_level_below(installed):
    need(installed, "x86-64-v3")
    result = installed.add("x86-64").run()
    assert started(result) == installed.place("x86-64")
    assert result.stderr == installed.nothing_at("x86-64-v3") + installed.nothing_at("x86-64-v2")


@with_launcher
def test_never_rises_above_the_wish(installed):
    result = installed.add("x86-64-v2", "x86-64-v3").run(level="x86-64")
    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == installed.nothing_at("x86-64")


@with_launcher
def test_tells_what_keeps_a_program_from_starting(installed):
    need(installed, "x86-64-v2")
    installed.add("x86-64").add("x86-64-v2", text="not a program", mode=0o755)
    result = installed.run(level="x86-64-v2")
    assert started(result) == installed.place("x86-64")
    assert result.stderr == (f"vorka: can't start {installed.place('x86-64-v2')}: Exec format error\n"
                             + installed.nothing_at("x86-64-v2"))


# --- The programs of a package ---

@pytest.fixture(params=LEVELS)
def level(request, monkeypatch):
    """Each level that this machine has, as the wish of all programs that the test starts."""
    monkeypatch.setenv("VORKA_LEVEL", request.param)
    probe = subprocess.run([Path(PACKAGE, "tools", "bench"), "--help"], capture_output=True, text=True)
    if "is above this processor" in probe.stderr:
        pytest.skip(f"this machine has no {request.param}")
    assert probe.returncode == 0, probe
    return request.param


@with_package
def test_engine_of_each_level_plays_from_its_own_folder(start, monkeypatch, level):
    folder = Path(PACKAGE).resolve()
    monkeypatch.setattr(engine, "PROGRAM", str(folder / "vorka"))
    running = start("--sd", "3")
    running.ask("e4", "Vorka played: ")
    assert Path(f"/proc/{running.process.pid}/exe").readlink() == folder / f"vorka-{level}"
    assert f"(executables directory='{folder}'):\n" in running.log


@with_package
def test_each_level_searches_the_same_nodes(level):
    totals = Path(__file__).parents[1] / "data" / "bench_total.txt"
    wanted = dict(line.split() for line in totals.read_text().splitlines() if not line.startswith("#"))["4"]
    said = subprocess.run([Path(PACKAGE, "tools", "bench"), "--depth", "4", "--quiet"], capture_output=True, text=True,
                          check=True)
    assert said.stdout.splitlines()[-1] == f"Bench: {wanted}"
