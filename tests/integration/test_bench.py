"""The same search visits the same nodes, in one process and in the next."""

import os
import pathlib
import re
import subprocess

BENCH = os.environ["VORKA_BENCH"]
SANITIZED = os.environ.get("VORKA_SANITIZED") == "1"
TOTALS = pathlib.Path(__file__).resolve().parent.parent / "data" / "bench_total.txt"


def nodes(*options, depth="4"):
    out = subprocess.run([BENCH, "--depth", depth, *options], capture_output=True, text=True, check=True).stdout
    return [int(line) for line in re.findall(r"^ *(\d+) nodes", out, re.MULTILINE)], int(re.search(r"^Bench: (\d+)$", out, re.MULTILINE)[1])


def test_two_runs_visit_the_same_nodes():
    each, total = nodes()
    assert len(each) >= 16
    assert sum(each) == total
    assert nodes() == (each, total)


def test_the_total_is_the_one_on_record():
    """Depth 6 is the signature; with the sanitizers, where it would take minutes, depth 4 stands for it."""
    totals = dict(line.split() for line in TOTALS.read_text().splitlines() if not line.startswith("#"))
    depth = "4" if SANITIZED else "6"
    assert nodes(depth=depth)[1] == int(totals[depth]), "the tree has changed: say why, and put the new totals on record"


def test_a_setting_changes_them():
    assert nodes("--set", "enable_search_extensions=false") != nodes()


def test_bad_words_are_refused():
    for options in (["--set", "foo=1"], ["--set", "root_distance_multiplier=0"], ["--depth", "0"], ["--nonsense"], ["x"]):
        run = subprocess.run([BENCH, *options], capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == "" and run.stderr
    assert "usage:" in subprocess.run([BENCH, "--help"], capture_output=True, text=True, check=True).stdout
