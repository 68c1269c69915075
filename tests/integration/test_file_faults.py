"""Files on a machine that fails: each call about a file fails once, is interrupted by a kill, or finds the disk full
(tests/faults). Whatever happens, a file has its old text or all of the new one; which of them, the program says.

A write is tried at its first call, its second, and so on, until a run has fewer. How many there were is printed.
"""

import os
import re
import subprocess
import xml.dom.minidom
from pathlib import Path
from typing import NamedTuple

import pytest
from engine import PROGRAM, UCI_PROGRAM

FAULT_LIBRARY = os.environ.get("VORKA_FAULT_LIBRARY", "")
BENCH = os.environ.get("VORKA_BENCH", "")
SELFPLAY = os.environ.get("VORKA_SELFPLAY", "")
TUNE = os.environ.get("VORKA_TUNE", "")
TABLE_BUILDER = os.environ.get("VORKA_TABLE_BUILDER", "")
BUILDER = os.environ.get("VORKA_BITBASE_BUILDER", "")
OPENINGS = str(Path(__file__).resolve().parents[1] / "data" / "openings.epd")
# With VORKA_FAULT_ALL=1 a log fails at every call; otherwise at the first ones, and then here and there.
ALL = os.environ.get("VORKA_FAULT_ALL") == "1"

pytestmark = pytest.mark.skipif(not FAULT_LIBRARY, reason="VORKA_FAULT_LIBRARY names no library")

OLD = "the text that stood here before\n" * 20
KILLED = -9
LEFTOVER = re.compile(r"\.vorka-\w{6}$")


class Writer(NamedTuple):
    """A program that writes kept/NAME."""
    command: list
    lines: list
    name: str
    complaint: str  # what stands in its output if it could not
    failed_status: int = 0  # that it ends with then


def prompt(line, name, *before):
    return Writer([PROGRAM], [*before, f"{line} kept/{name}"], name, f"): {line} kept/{name}\n")


WRITERS = {
    "write_fen": prompt("write_fen", "position", "force", "e4"),
    "write_pgn": prompt("write_pgn", "game.pgn", "force", "e4", "e5", "Nf3"),
    "write_settings": prompt("write_settings", "settings"),
    "bench --save": Writer([BENCH, "--depth", "1", "--quiet", "--save", "kept/run"], [], "run", "can't write kept/run", 1),
}


class Trial(NamedTuple):
    status: int
    output: str
    fault: str  # the call that was faulty; "" if none was
    folder: object

    def text(self, name):
        path = self.folder / name
        return path.read_text("latin-1") if path.exists() else None

    def leftovers(self):
        return [path.name for path in self.folder.iterdir() if LEFTOVER.search(path.name)]


def run(folder, command, lines, files="kept", patience=120, **faults):
    """Runs a program in a folder, with faults about its files below `kept`."""
    (folder / "kept").mkdir(exist_ok=True)
    environment = {f"VORKA_FAULT_{name}": str(value) for name, value in faults.items()}
    done = subprocess.run(command, cwd=folder, input="".join(line + "\n" for line in lines).encode(), capture_output=True,
                          timeout=patience, env={**os.environ, "LD_PRELOAD": FAULT_LIBRARY, "VORKA_FAULT_FILES": files, **environment})
    fault = re.search(r"^fault: (.*)$", done.stderr.decode("latin-1"), re.M)
    return Trial(done.returncode, (done.stdout + done.stderr).decode("latin-1"), fault[1] if fault else "", folder / "kept")


@pytest.fixture
def fresh(tmp_path):
    """A new folder each time."""
    numbers = iter(range(1 << 30))

    def folder():
        path = tmp_path / f"run{next(numbers)}"
        path.mkdir()
        return path
    return folder


def with_old_file(folder, writer):
    (folder / "kept").mkdir()
    (folder / "kept" / writer.name).write_text(OLD)
    return folder


def new_text(fresh, writer):
    return run(fresh(), writer.command, writer.lines).text(writer.name)


def comparable(text):
    """Without the times of the bench, which are other ones in each run."""
    return text and re.sub(r"(?m)^(\d+) \d+ (\d+) \d+ ", r"\1 \2 ", text)


def every_call(fresh, writer, wish, prepare):
    """The trials at each call, until there is none any more."""
    for number in range(1, 200):
        trial = run(prepare(fresh(), writer), writer.command, writer.lines, CALL=f"{number}:{wish}")
        if not trial.fault:
            return
        yield trial
    pytest.fail("there is no end of calls")


def no_file(folder, _):
    return folder


PREPARED = {"old file": with_old_file, "no file": no_file}


def tell(capsys, text):
    with capsys.disabled():
        print(f"\n{text}", end="", flush=True)


@pytest.mark.parametrize("name", WRITERS)
@pytest.mark.parametrize("prepared", PREPARED)
@pytest.mark.parametrize("error", ["EIO", "ENOSPC", "EACCES"])
def test_each_call_fails(fresh, capsys, name, prepared, error):
    writer = WRITERS[name]
    new = new_text(fresh, writer)
    assert new
    old = OLD if prepared == "old file" else None
    tried, refused = 0, 0
    for trial in every_call(fresh, writer, error, PREPARED[prepared]):
        tried += 1
        complained = writer.complaint in trial.output
        assert trial.status == (writer.failed_status if complained else 0), f"{trial.fault}: {trial.output}"
        text = trial.text(writer.name)
        wanted = old if complained else new
        assert comparable(text) == comparable(wanted), f"{trial.fault}: {trial.output}"
        assert not trial.leftovers() or trial.fault.startswith("unlink"), trial.fault
        refused += complained
    assert tried >= 10 and refused >= 5
    tell(capsys, f"{name}, {prepared}, {error}: {tried} calls, {refused} refused")


@pytest.mark.parametrize("name", WRITERS)
@pytest.mark.parametrize("wish", ["kill", "torn"])
def test_killed_at_each_call(fresh, capsys, name, wish):
    writer = WRITERS[name]
    new = new_text(fresh, writer)
    tried, left = 0, 0
    for trial in every_call(fresh, writer, wish, with_old_file):
        tried += 1
        assert trial.status == KILLED, trial.output
        assert comparable(trial.text(writer.name)) in (OLD, comparable(new)), trial.fault
        left += bool(trial.leftovers())
        # The next one writes the file, and clears up.
        again = run(trial.folder.parent, writer.command, writer.lines)
        assert again.status == 0 and comparable(again.text(writer.name)) == comparable(new), trial.fault
        assert not again.leftovers(), trial.fault
    assert tried >= 10 and left >= 1
    tell(capsys, f"{name}, {wish}: {tried} calls, {left} left something to clear up")


@pytest.mark.parametrize("name", WRITERS)
def test_writes_that_take_only_a_part_are_gone_on_with(fresh, name):
    writer = WRITERS[name]
    new = new_text(fresh, writer)
    seen = set()
    for trial in every_call(fresh, writer, "short", with_old_file):
        assert trial.status == 0 and comparable(trial.text(writer.name)) == comparable(new), trial.fault
        seen.add(trial.fault.split(",")[0])
    assert "write" in seen
    trial = run(with_old_file(fresh(), writer), writer.command, writer.lines, CALL="1+:short")
    assert trial.status == 0 and comparable(trial.text(writer.name)) == comparable(new)


@pytest.mark.parametrize("name", WRITERS)
def test_interrupted_writes_are_repeated(fresh, name):
    """A call that a signal interrupts is no failure: the write is, as the only one here that may wait for long."""
    writer = WRITERS[name]
    new = new_text(fresh, writer)
    for trial in every_call(fresh, writer, "EINTR", with_old_file):
        if trial.fault.startswith("write"):
            assert trial.status == 0 and comparable(trial.text(writer.name)) == comparable(new), trial.output


@pytest.mark.parametrize("name", WRITERS)
@pytest.mark.parametrize("prepared", PREPARED)
def test_full_disk(fresh, name, prepared):
    writer = WRITERS[name]
    new = new_text(fresh, writer)
    size = len(new)
    for room in (0, 1, size // 2, size * 9 // 10):
        trial = run(PREPARED[prepared](fresh(), writer), writer.command, writer.lines, DISK=room)
        assert trial.fault == "full disk"
        assert writer.complaint in trial.output and trial.status == writer.failed_status, trial.output
        assert trial.text(writer.name) == (OLD if prepared == "old file" else None)
        assert not trial.leftovers()
    trial = run(PREPARED[prepared](fresh(), writer), writer.command, writer.lines, DISK=size + 100)
    assert not trial.fault and comparable(trial.text(writer.name)) == comparable(new)


# --- Logs ---

LOGGED = ["force", "e4", "sd 2", "go", "display", "ping 1", "undo", "ping 2", "quit"]
UCI_LOGGED = ["uci", "setoption name Log File value kept/log", "isready", "position startpos", "go depth 2", "isready",
              "setoption name Log File value kept/second", "isready"]  # the end of the input waits for the move
LOGS = {"vorka": ([PROGRAM], LOGGED, "logfile", ["pong 1\n", "pong 2\n"]),
        "vorka-uci": ([UCI_PROGRAM], UCI_LOGGED, "kept", ["readyok\n", "bestmove "])}


@pytest.mark.parametrize("name", LOGS)
@pytest.mark.parametrize("wish", ["{}:EIO", "{}:ENOSPC", "{}+:ENOSPC", "{}+:EIO"])
def test_log_that_fails_stops_nothing(fresh, capsys, name, wish):
    command, lines, files, answers = LOGS[name]
    tried = 0
    for number in [*range(1, 30), *range(30, 2000, 1 if ALL else 80)]:
        trial = run(fresh(), command, lines, files, CALL=wish.format(number))
        if not trial.fault:
            break
        tried += 1
        assert trial.status == 0, f"{trial.fault}: {trial.output}"
        for answer in answers:
            assert answer in trial.output, trial.fault
    assert tried >= 10
    tell(capsys, f"log of {name}, {wish.format('n')}: {tried} calls")


@pytest.mark.parametrize("name", LOGS)
def test_log_on_a_full_disk_stops_nothing(fresh, name):
    command, lines, files, answers = LOGS[name]
    for room in (0, 1, 10, 100, 400):
        trial = run(fresh(), command, lines, files, DISK=room)
        assert trial.fault == "full disk" and trial.status == 0, trial.output
        assert all(answer in trial.output for answer in answers)


@pytest.mark.parametrize("name", LOGS)
@pytest.mark.parametrize("wish", ["kill", "torn"])
def test_log_of_a_killed_run_is_in_nobodys_way(fresh, name, wish):
    command, lines, files, answers = LOGS[name]
    for number in [1, 2, 3, 4, 5, 8, 13, 21, 34]:
        trial = run(fresh(), command, lines, files, CALL=f"{number}:{wish}")
        if trial.fault:
            assert trial.status == KILLED
            again = run(trial.folder.parent, command, lines)
            assert again.status == 0 and all(answer in again.output for answer in answers)


# --- The games of selfplay: a file that grows by a game at a time ---

def selfplay(folder, **faults):
    command = [SELFPLAY, "--openings", OPENINGS, "--games", "4", "--nodes", "100", "--concurrency", "1", "--state", "kept/state",
               "--pgn", "kept/games.pgn"]
    return run(folder, command, [], **faults)


def result_of(trial):
    lines = [line for line in trial.output.splitlines() if line.startswith("games 4:")]
    return lines[-1] if lines else None


@pytest.mark.parametrize("wish", ["kill", "torn", "EIO", "ENOSPC"])
def test_games_of_selfplay_go_on_after_each_call(fresh, capsys, wish):
    whole = result_of(selfplay(fresh()))
    assert whole
    tried = 0
    for number in range(1, 300):
        trial = selfplay(fresh(), CALL=f"{number}:{wish}")
        if not trial.fault:
            break
        tried += 1
        if wish in ("kill", "torn"):
            assert trial.status == KILLED
        else:
            # It goes on, or says why not.
            assert trial.status == 0 and result_of(trial) == whole or trial.status == 1 and "kept/" in trial.output, \
                f"{trial.fault}: {trial.status} {trial.output}"
        again = selfplay(trial.folder.parent)
        assert again.status == 0 and result_of(again) == whole, f"{trial.fault}: {again.output}"
    assert tried >= 5
    tell(capsys, f"selfplay, {wish}: {tried} calls")


# --- A run of tune: three files that are replaced after each batch ---

TUNED = ("state", "tuned.txt", "plot.svg")


def tune(folder, **faults):
    (folder / "parameters").write_text("futility_pruning_margin 300 0 600 40 0.02\n")
    (folder / "openings").write_text("".join(Path(OPENINGS).read_text().splitlines(keepends=True)[:8]))
    command = [TUNE, "parameters", "--openings", "openings", "--nodes", "1", "--pairs", "4", "--batch", "2", "--concurrency", "1",
               "--state", "kept/state", "--output", "kept/tuned.txt", "--plot", "kept/plot.svg"]
    return run(folder, command, [], **faults)


def texts_of_tuning(trial):
    return {name: trial.text(name) for name in TUNED}


def check_parts_of_tuning(trial, whole):
    """Each file is missing, or stands as it stood after some batch of the undisturbed run."""
    kept = texts_of_tuning(trial)
    if (state := kept["state"]) is not None:
        way = [line for line in state.splitlines(keepends=True) if not line.startswith("at ")]
        whole_way = [line for line in whole["state"].splitlines(keepends=True) if not line.startswith("at ")]
        assert way == whole_way[:len(way)] and len(whole_way) - len(way) in (0, 1, 2) and "\nat " in state, trial.fault
    if (tuned := kept["tuned.txt"]) is not None:
        assert re.sub(r"\d+", "", tuned) == re.sub(r"\d+", "", whole["tuned.txt"]), trial.fault
    if (plot := kept["plot.svg"]) is not None:
        assert xml.dom.minidom.parseString(plot), trial.fault


def go_on_tuning(trial, whole):
    again = tune(trial.folder.parent)
    assert again.status == 0 and texts_of_tuning(again) == whole, f"{trial.fault}: {again.output}"
    assert sorted(path.name for path in again.folder.iterdir()) == sorted(TUNED), trial.fault


@pytest.mark.parametrize("wish", ["kill", "torn", "EIO", "ENOSPC"])
def test_run_of_tune_goes_on_after_each_call(fresh, capsys, wish):
    whole = texts_of_tuning(tune(fresh()))
    assert all(whole.values())
    tried = 0
    # The first three files have all calls that there are; later ones are looked into here and there.
    for number in [*range(1, 60), *range(60, 2000, 1 if ALL else 13)]:
        trial = tune(fresh(), CALL=f"{number}:{wish}")
        if not trial.fault:
            break
        tried += 1
        if wish in ("kill", "torn"):
            assert trial.status == KILLED
        else:
            assert trial.status == 0 and texts_of_tuning(trial) == whole or trial.status == 1 and "kept/" in trial.output, \
                f"{trial.fault}: {trial.status} {trial.output}"
        check_parts_of_tuning(trial, whole)
        go_on_tuning(trial, whole)
    assert tried >= 60
    tell(capsys, f"tune, {wish}: {tried} calls")


def test_run_of_tune_on_a_full_disk(fresh):
    whole = texts_of_tuning(tune(fresh()))
    sizes = [len(text) for text in whole.values()]
    for room in (0, 1, sizes[0] // 2, sizes[0] + sizes[1] // 2, sum(sizes) - 100, sum(sizes) + sizes[0] // 2):
        trial = tune(fresh(), DISK=room)
        assert trial.fault == "full disk" and trial.status == 1 and "tune: can't write kept/" in trial.output, trial.output
        check_parts_of_tuning(trial, whole)
        go_on_tuning(trial, whole)


# --- The builder of tables ---

TABLE = "KQK.vdm"


def build_table(folder, **faults):
    return run(folder, [TABLE_BUILDER, "--output", "kept", "--threads", "1", "--quiet", "KQK"], [], **faults)


def with_damaged_table(folder, whole):
    (folder / "kept").mkdir()
    (folder / "kept" / TABLE).write_text(whole[:len(whole) // 2], "latin-1")
    return folder


@pytest.fixture(scope="module")
def whole_table(tmp_path_factory):
    trial = build_table(tmp_path_factory.mktemp("table"))
    if "can't pack" in trial.output:
        pytest.skip("this build was made without zstd")
    return trial.text(TABLE)


TABLES_BEFORE = {"no table": no_file, "damaged table": with_damaged_table}


def check_table(trial, before, whole):
    """It is as before or as it has to be; the next run makes it so, and clears up."""
    old = whole[:len(whole) // 2] if before == "damaged table" else None
    assert trial.text(TABLE) in ((whole,) if trial.status == 0 else (whole, old)), f"{trial.fault}: {trial.output}"
    again = build_table(trial.folder.parent)
    assert again.status == 0 and again.text(TABLE) == whole, f"{trial.fault}: {again.output}"


@pytest.mark.parametrize("before", TABLES_BEFORE)
@pytest.mark.parametrize("wish", ["kill", "torn", "EIO", "ENOSPC"])
def test_table_builder_at_each_call(fresh, capsys, whole_table, before, wish):
    tried, left = 0, 0
    for number in range(1, 200):
        trial = build_table(TABLES_BEFORE[before](fresh(), whole_table), CALL=f"{number}:{wish}")
        if not trial.fault:
            break
        tried += 1
        if wish in ("kill", "torn"):
            assert trial.status == KILLED
        else:
            assert trial.status == 0 or trial.status == 1 and "table_builder: can't " in trial.output, f"{trial.fault}: {trial.output}"
        left += bool(trial.leftovers())
        check_table(trial, before, whole_table)
        assert not trial.leftovers() or trial.text(TABLE) == whole_table, trial.fault
    assert tried >= 10
    tell(capsys, f"table_builder, {before}, {wish}: {tried} calls, {left} left something to clear up")


@pytest.mark.parametrize("before", TABLES_BEFORE)
def test_table_builder_on_a_full_disk(fresh, whole_table, before):
    for room in (0, 1, len(whole_table) // 2, len(whole_table) - 1):
        trial = build_table(TABLES_BEFORE[before](fresh(), whole_table), DISK=room)
        assert trial.fault == "full disk" and trial.status == 1 and f"can't write kept/{TABLE}" in trial.output, trial.output
        assert not trial.leftovers()
        check_table(trial, before, whole_table)


# --- The builder of bitbases ---

def is_usable(folder):
    """Whether the engine takes the file into use; one that isn't there does no harm."""
    done = subprocess.run([UCI_PROGRAM], input=f"setoption name Bitbase Path value {folder}\nquit\n".encode(), cwd=folder,
                          capture_output=True, timeout=60)
    return b"does not fit" not in done.stdout


@pytest.mark.skipif(not BUILDER, reason="VORKA_BITBASE_BUILDER names no program")
def test_builder_at_each_call(fresh, capsys):
    """It works for a minute before it writes: the trials begin there, each in a process of its own."""
    folder = fresh()
    trial = run(folder, [BUILDER, "--only", "kp_kp", "--quiet", "--output", "kept"], [], patience=1800,
                TRIALS="none EIO ENOSPC kill torn short")
    assert trial.status == 0, trial.output
    trials = {path.name.split("-", 1)[1]: path for path in folder.glob("trial-*")}
    whole = {path.name: path.read_bytes() for path in (trials.pop("none-1") / "kept").iterdir()}
    assert sorted(whole) == ["kp_kp.vbb", "kp_kp.vbb.sha256"]
    tried, refused = 0, 0
    for name, path in trials.items():
        output = (path / "output").read_text()
        status = int(output.split()[-1])
        if "fault: " not in output:
            assert status == 0
            continue
        tried += 1
        wish = name.partition("-")[0]
        assert status == KILLED if wish in ("kill", "torn") else status == 0 or status == 1 and "can't write" in output, (name, output)
        refused += status == 1
        left = {file.name: file.read_bytes() for file in (path / "kept").iterdir() if not LEFTOVER.search(file.name)}
        assert left.items() <= whole.items(), (name, output)
        assert status != 0 or left == whole, (name, output)
        assert wish != "short" or status == 0, (name, output)
        assert is_usable(path / "kept"), (name, output)
    assert tried >= 50 and refused >= 10
    tell(capsys, f"bitbase_builder: {tried} calls, {refused} refused")
