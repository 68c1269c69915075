"""Whole dialogues, compared byte for byte with tests/golden/dialogues: <name>.input is what is typed, <name>.stdout
and <name>.logfile are what the program prints and logs.

A line of the input that begins with ~ is not sent: it is a pattern to wait for. What no two runs share is replaced by a
word in angle brackets, and nothing else. UPDATE_GOLDEN=1 writes the files anew.
"""

import difflib
import os
import re
from pathlib import Path

import pytest

FOLDER = Path(__file__).parent.parent / "golden" / "dialogues"

NORMALISED = [
    # The greeting is drawn by lot; so is the one at the return to the console.
    (r"(?m)^(?P<before>.*?)(?:Hallo|Guten Tag|Welcome|Vorka welcomes you|Vorka ist bereit|Ave und beim Jupiter)(?=!$|, )",
     r"\g<before><greeting>"),
    (r"(?m)(?<=^Vorka logfile created at: ).*$", "<date>"),
    (r"time: \S+ sec \(\d+ knodes, \S+ knps\)\nhit ratio: trans=\S+, pawn=\S+, eval=\S+\n"
     r"ETTC tries=\d+, cutoffs=\d+, efficiency=\S+\n", "<statistics>\n"),
    # On the screen a depth line stays open until the thinking line overwrites it.
    (r"(?:Depth: \d+\.(?=[\r\n<]| \()(?: \(not sent to xboard\)\n)?|\r?Depth: \d+\. .*\n|!\? \S+\n|\d+ knodes searched\n"
     r"|New move found: \S+\n|#warning: Search instability found!\n)+", "<thinking>\n"),
    (r"(?m)(?:^\d+ -?\d+ \d+ \d+ .* $\n(?: \(not sent to xboard\)\n)?|^New pv-move candidate found: .*\n"
     r"|^Search instability found!.*\n)+", "<thinking>\n"),
    # Where the program lies, and which files lie beside it.
    (r"(?m)^(Loading bitbases \(executables directory=').*('\):)$", r"\1<directory>\2"),
    (r"(?m)^- (two pawns|rammed pawn) bitbases (?:found|not found \('.*'\)\.?)$", r"- \1 bitbases <found or not>"),
    (r"(?m)^(max_time_limit=|variable_time_limit=)\d+$", r"\1<milliseconds>"),
]


def normalised(text):
    for pattern, replacement in NORMALISED:
        text = re.sub(pattern, replacement, text)
    return text


def compare(path, text):
    if os.environ.get("UPDATE_GOLDEN") == "1":
        path.write_bytes(text.encode("latin-1"))
    wanted = path.read_bytes().decode("latin-1") if path.exists() else ""
    if text != wanted:
        pytest.fail("\n".join(difflib.unified_diff(
            [repr(line) for line in wanted.split("\n")], [repr(line) for line in text.split("\n")],
            str(path.name), "this run", lineterm="", n=2)), pytrace=False)


@pytest.mark.parametrize("name", sorted(path.stem for path in FOLDER.glob("*.input")))
def test_transcript(start, name):
    engine = start()
    for line in (FOLDER / f"{name}.input").read_text().splitlines():
        if line.startswith("~"):
            engine.expect(line[1:])
        else:
            engine.send(line)
    output = engine.finish()
    assert engine.errors == ""
    compare(FOLDER / f"{name}.stdout", normalised(output))
    compare(FOLDER / f"{name}.logfile", normalised(engine.log))
