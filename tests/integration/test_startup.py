"""From the first byte to the first prompt: greeting, options, log file, and the ways to end."""

import ctypes
import fcntl
import os
import re
import resource
import select
import shutil
import signal
import subprocess
import termios
import threading
from pathlib import Path

import engine as engine_module
import pytest

GREETINGS = ["Hallo", "Guten Tag", "Welcome", "Vorka welcomes you", "Vorka ist bereit", "Ave und beim Jupiter"]
GREETING = "(?:" + "|".join(GREETINGS) + ")!\n"
PROMPT = " \rWhite 1> "

LOG_HEAD = """\
Bitboard algorithms
- popcount:         Table lookup PopCount
- popcount_sparse:  Table lookup PopCount
- find_lowest_bit:  FindLowestBitViaFindHighestBit
- find_highest_bit: Table lookup (not inlined)
- find_next_bit:    FindHighestBit

"""


# Files are found only where somebody has built them.
BITBASES = (r"Loading bitbases \(executables directory='([^']+)'\):\n"
            r"- two pawns bitbases (?:found|not found \('\1/kp_kp\.vbb'\))\n(?:  the checksum of .*\n)?"
            r"- rammed pawn bitbases (?:found|not found \('\1/kpp_kp_ram\.vbb'\)\.)\n(?:  the checksum of .*\n)?"
            r"- generic bitbases disabled\n")


def test_greets_and_prompts(start):
    output = start().finish()
    assert re.fullmatch(GREETING + PROMPT, output), output


def test_end_of_input_is_quit(start):
    engine = start()
    engine.finish(status=0)
    assert engine.errors == ""


def test_log_begins_with_its_date_and_the_bit_algorithms(start):
    engine = start()
    engine.send("ping 1")
    engine.finish()
    assert re.fullmatch(
        r"Vorka logfile created at: \w{3} \w{3} [ \d]\d \d\d:\d\d:\d\d \d{4}\n" + re.escape(LOG_HEAD) + BITBASES + GREETING
        + "White 1> Vorka received input: ping 1\npong 1\nWhite 1> ", engine.log), engine.log


@pytest.mark.parametrize("existing, expected", [
    ([], "logfile.000"),
    (["logfile.000"], "logfile.001"),
    (["logfile.000", "logfile.002"], "logfile.001"),
    ([f"logfile.{i:03}" for i in range(1000)], "logfile.1000"),
])
def test_takes_the_first_free_log_name(start, tmp_path, existing, expected):
    folder = tmp_path / "logs"
    folder.mkdir()
    for name in existing:
        (folder / name).touch()
    start(folder=folder).finish()
    assert {path.name for path in folder.iterdir()} == {*existing, expected}


def test_goes_on_without_a_log_where_none_can_be_written(start, tmp_path):
    # Not even root can create a file in a folder that is gone.
    folder = tmp_path / "gone"
    folder.mkdir()
    engine = start(folder=folder, preexec_fn=lambda: os.rmdir(folder))
    engine.ask_text("ping 1", "pong 1\n")
    engine.send("sd 1")
    engine.ask("e4", "Vorka played: ")
    engine.finish()
    assert engine.errors == ""


def test_shares_no_log_with_others_in_the_same_folder(start, tmp_path):
    folder = tmp_path / "shared"
    folder.mkdir()
    engines = [start(folder=folder) for _ in range(12)]
    for number, engine in enumerate(engines):
        engine.ask_text(f"ping {number}", f"pong {number}\n")
    for engine in engines:
        engine.finish()
    logs = sorted(folder.iterdir())
    assert [path.name for path in logs] == [f"logfile.{i:03}" for i in range(12)]
    pinged = [re.findall(r"received input: ping (\d+)", path.read_text()) for path in logs]
    assert sorted(pinged) == sorted([str(number)] for number in range(12))


def test_special_files_in_the_place_of_the_log_are_passed_over(start, tmp_path):
    folder = tmp_path / "logs"
    folder.mkdir()
    os.mkfifo(folder / "logfile.000")
    (folder / "logfile.001").symlink_to("elsewhere")
    (folder / "logfile.002").mkdir()
    start(folder=folder).finish()
    assert (folder / "logfile.003").is_file()
    assert not (folder / "elsewhere").exists()


def test_last_log_is_a_regular_file_or_none(start, tmp_path):
    folder = tmp_path / "logs"
    folder.mkdir()
    (folder / "one").touch()
    for number in range(100000):
        os.link(folder / "one", folder / f"logfile.{number:03}") if number < 60000 else \
            os.symlink("nowhere", folder / f"logfile.{number:03}")
    start(folder=folder).finish()
    assert (folder / "logfile.max").read_text().startswith("Vorka logfile created at: ")
    (folder / "logfile.max").unlink()
    (folder / "logfile.max").symlink_to("elsewhere")
    start(folder=folder).finish()
    (folder / "logfile.max").unlink()
    os.mkfifo(folder / "logfile.max")
    start(folder=folder).finish()
    assert not (folder / "elsewhere").exists() and (folder / "one").read_bytes() == b""


def test_log_as_long_as_a_file_may_be_stops_nothing(start):
    engine = start(preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (2000, 2000)))
    for number in range(50):
        engine.ask_text(f"ping {number}", f"pong {number}\n")
    engine.ask_text("force", "> ")
    engine.ask_text("write_fen x", "> ")
    engine.finish()
    assert len(engine.log) == 2000


@pytest.mark.parametrize("way", ["path", "link", "own folder"])
def test_finds_its_own_folder_however_it_was_started(tmp_path, way):
    home, other = tmp_path / "home", tmp_path / "other"
    home.mkdir()
    other.mkdir()
    shutil.copy(engine_module.PROGRAM, home / "vorka")
    (other / "link").symlink_to(Path("..", "home", "vorka"))
    words, folder = {"path": (["vorka"], other), "link": (["./link"], other), "own folder": (["vorka"], home)}[way]
    program = other / "link" if way == "link" else home / "vorka"
    subprocess.run(words, executable=program, cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=True)
    wanted = "." if way == "own folder" else str(home)
    assert f"Loading bitbases (executables directory='{wanted}'):\n" in (folder / "logfile.000").read_text()


def test_version_option(start):
    engine = start("--version")
    engine.wait(status=0)
    assert re.fullmatch(
        GREETING + r"Vorka v2\.0\.1 \(\w{3} [ \d]\d \d{4}, \d\d:\d\d:\d\d\)\n"
        r"build: Vorka with variable search extensions\n"
        r"\n"
        r"inline assembler:       disabled\n"
        r"move generator cache:   disabled\n"
        r"tablebase support:      enabled\n"
        r"architecture:           i386 compatible\n"
        r"platform:               \S.*\n\n", engine.output), engine.output
    assert "Executing startup command: version (not sent to xboard)\n" in engine.log


@pytest.mark.parametrize("options, stop_word", [
    (["-unknownword"], "unknownword"),
    (["--unknownword"], "unknownword"),
    (["unknownword"], "unknownword"),
    (["-"], "-"),
    (["--"], "--"),
    (["---quit"], "-quit"),
    (["--display"], "display"),
    (["--st", "abc"], "Error (integer argument expected): st abc"),
    (["--st"], "Error (wrong number of arguments): st"),
    (["--st", "-5"], "Error (wrong number of arguments): st"),
    (["--st=-5"], "Error (argument out of bounds): st -5"),
    (["--st="], "st="),
    (["--contempt", "-5"], "Error (wrong number of arguments): contempt"),
    (["--contempt=x"], "Error (integer argument expected): contempt x"),
    (["--hash=trans", "64X"], "Error (could not parse new size): hash trans 64X"),
    (["--tb", "syzygy", "8M", "nowhere"], "Error (could not parse type): tb syzygy 8M nowhere"),
    (["--read_pgn", "nowhere"], "Error (could not open file): read_pgn nowhere"),
    (["--personality", "Nobody"], "Error (could not parse personality): personality Nobody"),
    (["--setboard", "nonsense"], "Error (input inconsistent with FEN standard): setboard nonsense"),
])
def test_bad_options_end_with_status_one(start, options, stop_word):
    engine = start(*options)
    engine.wait(status=1)
    assert engine.output.endswith(f'\nError while parsing startup commands (stopped at "{stop_word}")\n'), engine.output
    assert re.match(GREETING, engine.output)


def test_help_lists_the_startup_commands_and_ends(start):
    engine = start("--help")
    engine.wait(status=0)
    assert re.match(GREETING, engine.output)
    keywords = re.findall(r"^([a-z_]+)\.* ", engine.output.split("\ncommand ", 1)[1], re.MULTILINE)
    assert sorted(keywords) == sorted([
        "xboard", "protover", "easy", "eval", "contempt", "hash", "help", "id", "level", "modify_settings",
        "personality", "probe", "quit", "sd", "setboard", "st", "tb", "tc", "version", "read_fen", "read_pgn",
        "read_settings", "generate", "verify"])


def test_a_failing_tablebase_option_is_reported_and_the_program_goes_on(start):
    engine = start("--tb", "nalimov", "8M", "nowhere", "--version")
    engine.wait(status=0)
    assert "Warning: Startup command failed!\n" in engine.output
    assert "Reason: Could not open tablebases. Is the path correct?" in engine.output
    assert "tablebase support:" in engine.output


def test_commands_before_a_bad_option_have_taken_effect(start):
    engine = start("--id", "Club", "--xboard", "--protover=2", "--nonsense")
    engine.wait(status=1)
    assert 'feature myname="Vorka Club"\n' in engine.output
    assert engine.output.endswith('telluser Error while parsing startup commands (stopped at "nonsense")\n')


def test_options_are_commands(start):
    engine = start("--sd", "1", "-level", "40", "0:30", "0", "--easy", "", "--id=##Foo Bar", "--eval")
    engine.expect(r"\A" + GREETING + r"eval: -?\d+\n")
    engine.ping()
    for line in ("sd 1", "level 40 0:30 0", "easy", "id ##Foo Bar", "eval"):
        assert f"Executing startup command: {line} (not sent to xboard)\n" in engine.log
    engine.ask("e4", "Vorka played: .*\n")
    engine.ping()
    assert "max_depth=1\n" in engine.log


def test_setboard_option_comes_after_a_forced_force(start):
    engine = start("--setboard", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1")
    engine.expect(" \rWhite 2> ")
    assert engine.position() == "4k3/8/8/8/8/8/4P3/4K3 w - -"
    engine.send("e4")
    assert "Vorka played" not in engine.ping()


def test_a_bare_word_is_an_option_with_a_warning(start):
    engine = start("xboard")
    engine.send("protover 2")
    engine.expect_text("feature done=1\n")
    engine.finish()
    assert engine.errors == "Warning: Expecting '-' before option \"xboard\"! Continuing...\n"


def test_quit_option_ends_with_status_zero(start):
    start("--quit").wait(status=0)


def test_first_feature_follows_the_open_prompt(start):
    engine = start()
    engine.send("xboard", "protover 2")
    engine.expect_text(" \rWhite 1> feature analyze=1\n")


def test_greeting_names_no_opponent_that_has_the_default_name(start):
    engine = start()
    engine.send("name Anna")
    engine.ask("console", r"(?:" + "|".join(GREETINGS) + "), Anna!\n")


# --- Standard output that is not there ---

def test_full_output_device_does_no_harm(start):
    with open("/dev/full", "wb") as full:
        engine = start(stdout=full)
    engine.send("display", "sd 1", "e4", "nonsense")
    engine.finish()
    assert "Illegal move: nonsense\n" in engine.log


def test_output_closed_from_the_start(start):
    engine = start(stdout=None, preexec_fn=lambda: os.close(1))
    engine.send("display", "nonsense")
    engine.finish()
    # Once: the log file must not take the place of the output that is missing.
    assert engine.log.count("Illegal move: nonsense\n") == 1
    assert engine.log.startswith("Vorka logfile created at: ")


@pytest.mark.parametrize("before", [[], ["xboard", "protover 2"]])
def test_reader_that_goes_away_ends_the_program(start, before):
    reader, writer = os.pipe()
    engine = start(stdout=writer)
    os.close(writer)
    engine.send(*before)
    os.close(reader)
    try:
        engine.send("display", "post", "analyze")
        engine.process.stdin.close()
    except BrokenPipeError:
        pass
    engine.process.wait(60)
    assert engine.process.returncode in (0, -signal.SIGPIPE), engine.describe()


def test_signals_end_the_console_and_leave_xboard_alone(start):
    engine = start()
    engine.ping()
    engine.process.send_signal(signal.SIGINT)
    engine.wait(status=-signal.SIGINT)

    engine = start()
    engine.send("xboard")
    engine.ping()
    for number in (signal.SIGINT, signal.SIGTERM):
        engine.process.send_signal(number)
    engine.ping()
    engine.send("console")  # the signals stay ignored
    engine.ping()
    engine.process.send_signal(signal.SIGINT)
    engine.ping()


@pytest.mark.parametrize("before", [[], ["xboard", "protover 2"], ["xboard", "analyze"], ["analyze"]])
def test_hanging_up_ends_the_program_in_order(start, before):
    engine = start()
    engine.send("force", "e4", "write_fen position", *before)
    engine.ping()
    engine.process.send_signal(signal.SIGHUP)
    engine.wait(status=0)
    assert (engine.folder / "position").read_text().startswith("rnbqkbnr/pppppppp/8/8/4P3/")


def test_hanging_up_is_nothing_under_nohup(start):
    engine = start(preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
    engine.ping()
    engine.process.send_signal(signal.SIGHUP)
    engine.ping()


def test_output_that_is_not_ready_is_waited_for(start):
    reader, writer = os.pipe()
    os.set_blocking(writer, False)
    engine = start(stdout=writer)
    os.close(writer)
    feeder = threading.Thread(target=engine.send, args=["xboard", *(f"nonsense{n}-" + "x" * 90 for n in range(5000)),
                                                        "quit"])
    feeder.start()
    # Nobody reads before the pipe is full, so that the program has to wait.
    room = ctypes.c_int()
    while not select.select([reader], [], [], 1)[0] or room.value < 60000:
        fcntl.ioctl(reader, termios.FIONREAD, room)
    said = bytearray()
    while chunk := os.read(reader, 65536):
        said += chunk
    os.close(reader)
    feeder.join()
    engine.wait(status=0)
    assert said.decode().count("Illegal move: nonsense") == 5000


def test_output_is_the_same_with_input_from_a_file(start, tmp_path):
    script = tmp_path / "script"
    script.write_text("force\ne4\ne5\nping 3\n")
    engine = start()
    engine.send(*script.read_text().splitlines())
    by_pipe = engine.finish()
    folder = tmp_path / "file"
    folder.mkdir()
    with script.open("rb") as lines:
        from_file = subprocess.run([engine.process.args[0]], stdin=lines, cwd=folder, capture_output=True, check=True)
    cut = by_pipe.index("\n")  # after the greeting, which changes
    text = from_file.stdout.decode("latin-1")
    assert text[text.index("\n"):] == by_pipe[cut:]
