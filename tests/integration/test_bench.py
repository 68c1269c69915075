"""The same search visits the same nodes, in one process and in the next."""

import os
import re
import subprocess

BENCH = os.environ["VORKA_BENCH"]


def nodes(*options):
    out = subprocess.run([BENCH, "--depth", "4", *options], capture_output=True, text=True, check=True).stdout
    return [int(line) for line in re.findall(r"^ *(\d+) nodes", out, re.MULTILINE)], int(re.search(r"^Bench: (\d+)$", out, re.MULTILINE)[1])


def test_two_runs_visit_the_same_nodes():
    each, total = nodes()
    assert len(each) >= 16
    assert sum(each) == total
    assert nodes() == (each, total)


def test_a_setting_changes_them():
    assert nodes("--set", "enable_search_extensions=false") != nodes()


def test_bad_words_are_refused():
    for options in (["--set", "foo=1"], ["--set", "root_distance_multiplier=0"], ["--depth", "0"], ["--nonsense"], ["x"]):
        run = subprocess.run([BENCH, *options], capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == "" and run.stderr
    assert "usage:" in subprocess.run([BENCH, "--help"], capture_output=True, text=True, check=True).stdout
