"""The UCI protocol, spoken over pipes: how vorka-uci begins and ends, its command line, and what its document shows."""

import fcntl
import os
import re
import signal
import struct
import subprocess
import termios
import time
from pathlib import Path

import pytest
from engine import PATIENCE, UCI_PROGRAM
from uci_dialogue import MATED, number, ready, search

ROOT = Path(__file__).resolve().parents[2]


# --- The handshake ---

def test_it_says_who_it_is_and_what_can_be_set(start):
    engine = start(program=UCI_PROGRAM)
    said = ready(engine)
    assert said == "", "nothing before it is asked"
    engine.send("uci")
    lines = engine.hear("^uciok\n")[0].splitlines()
    assert re.fullmatch(r"id name Vorka v\S+", lines[0])
    assert lines[1] == "id author the Vorka developers"
    assert all(line.startswith("option name ") for line in lines[2:])


def test_unknown_words_are_skipped(uci):
    uci.send("", "hello", "xboard", "protover 2", "\t  ", "joho isready")
    uci.expect("^readyok\n")
    assert ready(uci) == ""


def test_the_end_of_the_input_ends_it(uci):
    uci.finish()


def test_the_end_of_the_input_ends_it_inside_a_search(uci):
    uci.send("go infinite")
    uci.expect("^info depth 2 ")
    assert "bestmove" not in uci.finish()


def test_a_search_with_an_end_is_answered_after_the_end_of_the_input(uci):
    uci.send("position startpos", "go depth 5", "position fen " + MATED, "go depth 1")
    told = uci.finish()
    assert re.findall(r"^bestmove (\w+)", told, re.M)[1:] == ["0000"]
    assert " depth 5 " in told


def test_an_infinite_search_that_waits_at_the_end_of_the_input_ends(uci):
    uci.send("go depth 5", "go infinite")
    assert len(re.findall("^bestmove", uci.finish(), re.M)) == 1


def test_quit_ends_it_inside_a_search_with_an_end(uci):
    uci.send("go depth 40", "quit")
    uci.wait()
    assert "bestmove" not in uci.output


@pytest.mark.parametrize("before", [[], ["go infinite"], ["go movetime 1000000"], ["go ponder movetime 1000"]])
def test_hanging_up_ends_it_in_order(uci, before):
    uci.send(*before)
    uci.ask_text("isready", "readyok\n")
    uci.process.send_signal(signal.SIGHUP)
    uci.wait(status=0)


def test_hanging_up_ends_it_though_nobody_reads_what_it_says(start):
    reader, writer = os.pipe()
    os.set_blocking(writer, False)
    with pytest.raises(BlockingIOError):
        while True:
            os.write(writer, b"x" * 4096)
    os.set_blocking(writer, True)
    uci = start(program=UCI_PROGRAM, stdout=writer)
    uci.send("uci")
    deadline = time.monotonic() + PATIENCE
    while waiting_bytes(uci.process.stdin):
        assert time.monotonic() < deadline
    uci.process.send_signal(signal.SIGHUP)
    uci.wait(status=0)
    os.close(reader)
    os.close(writer)


def waiting_bytes(pipe):
    """How many its reader has not taken yet."""
    return struct.unpack("i", fcntl.ioctl(pipe, termios.FIONREAD, bytes(4)))[0]


def test_a_line_that_is_too_long_is_skipped(uci):
    skipped = f"info string skipped a line longer than 1048576 bytes: {'x' * 60}\n"
    uci.ask_text("x" * ((1 << 20) + 1), skipped)
    uci.send("go infinite")
    uci.ask_text("x" * (3 << 20), skipped)
    uci.ask_text("isready", "readyok\n")
    uci.ask("stop", r"bestmove \w+")


def test_quit_ends_it(uci):
    uci.send("quit")
    uci.wait()


def test_quit_ends_it_inside_a_search(uci):
    uci.send("position startpos", "go infinite")
    uci.expect("^info depth 3 ")
    uci.send("quit")
    uci.wait()


def test_it_writes_no_file_unless_it_is_asked_to(uci):
    search(uci, "go depth 2")
    uci.finish()
    assert list(uci.folder.iterdir()) == []


# --- The command line ---

def told_by(*words):
    return subprocess.run([UCI_PROGRAM, *words], capture_output=True, text=True, stdin=subprocess.DEVNULL)


def test_bench_tells_the_signature():
    """The total of the depth on record, in the forms that frameworks look for."""
    totals = dict(line.split() for line in (ROOT / "tests/data/bench_total.txt").read_text().splitlines()
                  if not line.startswith("#"))
    told = told_by("bench", "4")
    assert told.returncode == 0 and told.stderr == ""
    assert re.fullmatch(rf"Total time \(ms\) : \d+\nNodes searched  : {totals['4']}\nNodes/second    : \d+\n"
                        rf"{totals['4']} nodes \d+ nps\n", told.stdout)


def test_figures_that_nobody_can_be_told_are_a_failure():
    with open("/dev/full", "w", encoding="utf-8") as full:
        for words in (["bench", "1"], ["--help"]):
            run = subprocess.run([UCI_PROGRAM, *words], stdout=full, stderr=subprocess.PIPE, text=True, check=False)
            assert (run.returncode, run.stderr) == (1, "vorka-uci: can't write to standard output\n")


def test_other_words_are_refused():
    for words in (["bench", "0"], ["bench", "x"], ["bench", "3", "4"], ["bench", "-1"], ["nonsense"], ["--bench"]):
        told = told_by(*words)
        assert told.returncode == 1 and told.stdout == "" and "usage: vorka-uci" in told.stderr, words
    assert "usage: vorka-uci" in told_by("--help").stdout


# --- What the document shows ---

def dialogues():
    text = (ROOT / "docs/uci.md").read_text()
    return re.findall(r"(?ms)^```uci\n(.*?)^```$", text)


@pytest.mark.parametrize("dialogue", dialogues())
def test_dialogue_of_the_document(start, dialogue):
    """Lines that begin with `> ` are sent, the others have to come, in this order; [..] stands for any, and a number for
    any number."""
    engine = start(program=UCI_PROGRAM)
    for line in dialogue.splitlines():
        if line.startswith("> "):
            engine.send(line[2:])
        elif line != "[..]":
            words = [r"-?\d+" if re.fullmatch(r"-?\d+", word) else re.escape(word) for word in line.split(" ")]
            engine.expect("^" + " ".join(words) + "$")
