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
    return [int(line) for line in re.findall(r"^ *(\d+) +\d+ +\d+ ", out, re.MULTILINE)], int(re.search(r"^Bench: (\d+)$", out, re.MULTILINE)[1])


def test_two_runs_visit_the_same_nodes():
    each, total = nodes()
    assert len(each) >= 16
    assert sum(each) == total
    assert nodes() == (each, total)


def test_the_total_is_the_one_on_record():
    """Depth 6 is the signature; with the sanitizers, where it would take minutes, depth 4 stands for it."""
    totals = dict(line.split() for line in TOTALS.read_text().splitlines() if not line.startswith("#"))
    depth = "4" if SANITIZED else "6"
    changed = "the tree has changed: say why, and put the new totals on record"
    assert nodes(depth=depth)[1] == int(totals[depth]), changed
    assert nodes("--set", "search=tournament", depth=depth)[1] == int(totals["tournament-" + depth]), changed


def test_a_setting_changes_them():
    assert nodes("--set", "enable_search_extensions=false") != nodes()
    assert nodes("--set", "capture_move_sorting_bonus=0,8,10,10,12,20") != nodes()


def test_the_tournament_search_has_a_total_of_its_own():
    classic, tournament = nodes("--set", "search=classic"), nodes("--set", "search=tournament")
    assert classic == nodes()
    assert tournament != classic
    assert nodes("--set", "search=tournament") == tournament
    assert nodes("--set", "search=tournament", "--set", "futility=0") != tournament


def test_settings_of_the_tournament_search_are_checked():
    for bad, told in (("search=other", "search is classic or tournament"),
                      ("futility=2", 'futility takes a number from 0 to 1, not "2"'),
                      ("futility", 'not key=value: "futility"'),
                      ("futile=1", 'no such setting: "futile"'),
                      ("contempt=20", 'no such setting: "contempt=20"'),
                      ("futility=0", "a setting of the tournament search without search=tournament changes nothing")):
        run = subprocess.run([BENCH, "--depth", "1", "--set", bad], capture_output=True, text=True)
        assert (run.returncode, run.stdout, run.stderr) == (1, "", f"bench: {told}\n")


def test_settings_come_from_files_too(tmp_path):
    (tmp_path / "tournament").write_text("futility=0\n")
    by_file = nodes("--set", "search=tournament", "--set", f"tournament={tmp_path / 'tournament'}")
    assert by_file == nodes("--set", "search=tournament", "--set", "futility=0")
    tuned = TOTALS.parents[2] / "settings/tuned.txt"
    assert nodes("--set", f"settings={tuned}") != nodes()


def test_other_tools_search_with_them_too(tmp_path):
    position = "r1bqkbnr/pppp1ppp/2n5/4p3/2B1P3/5Q2/PPPP1PPP/RNB1K1NR w KQkq -"
    (tmp_path / "mate.epd").write_text(f"{position} bm Qxf7#; id \"mate\";\n")
    settings = ["--set", "search=tournament", "--set", "futility=0"]
    solve, best_move = pathlib.Path(BENCH).with_name("solve_epd"), os.environ["VORKA_BEST_MOVE"]
    told = subprocess.run([solve, "--depth", "3", *settings, tmp_path / "mate.epd"], capture_output=True, text=True, check=True)
    assert "Solved: 1 of 1" in told.stdout
    told = subprocess.run([best_move, "--depth", "3", *settings], input=position + " 0 1\n", capture_output=True, text=True,
                          check=True)
    assert told.stdout == "f3f7\n"
    for words in ([solve, "--set", "futile=1", tmp_path / "mate.epd"], [best_move, "--set", "futile=1"]):
        run = subprocess.run(words, input="", capture_output=True, text=True)
        assert (run.returncode, run.stdout) == (1, "") and 'no such setting: "futile"' in run.stderr


def test_quiet_says_the_totals_alone():
    out = subprocess.run([BENCH, "--depth", "2", "--quiet"], capture_output=True, text=True, check=True).stdout
    assert re.fullmatch(r"Nodes: +\d+\nTime: +\d+ ms\nNodes/s: +\d+\nDepth: +2.00 on average\nBranching: [0-9.]+\nBench: \d+\n", out)


def test_a_run_is_set_beside_a_kept_one(tmp_path):
    kept = tmp_path / "kept"
    subprocess.run([BENCH, "--depth", "2", "--save", kept], capture_output=True, check=True)
    assert len(kept.read_text().splitlines()) > 16
    out = subprocess.run([BENCH, "--depth", "3", "--compare", kept], capture_output=True, text=True, check=True).stdout
    ratios = re.findall(r"^ *([0-9.]+) +[0-9.]+ +[0-9.]+  (\S+ [wb] .*|in all)$", out, re.MULTILINE)
    assert len(ratios) == len(kept.read_text().splitlines())
    assert all(float(nodes) > 1 for nodes, _ in ratios)
    assert out.splitlines()[-1].startswith("Bench: ")


def test_what_is_no_kept_run_is_refused_before_the_search(tmp_path):
    other = tmp_path / "other"
    other.write_text("Nodes: 5\n")
    for path in (other, tmp_path / "none"):
        run = subprocess.run([BENCH, "--compare", path], capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == "" and str(path) in run.stderr


def test_bad_words_are_refused():
    for options in (["--set", "foo=1"], ["--set", "root_distance_multiplier=0"], ["--set", "enable_ettc=yes"],
                    ["--set", "enable_ettc="], ["--set", "enable_ettc"], ["--set", "root_distance_multiplier=true"],
                    ["--set", "capture_move_sorting_bonus=0"], ["--set", "capture_move_sorting_bonus=0,1,2,3,4,5,6"],
                    ["--depth", "0"], ["--depth", "3x"], ["--depth", "-1"], ["--time", "abc"], ["--time", "0"],
                    ["--hash", "1M"], ["--nonsense"], ["x"]):
        run = subprocess.run([BENCH, *options], capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == "" and run.stderr, options
    assert "usage:" in subprocess.run([BENCH, "--help"], capture_output=True, text=True, check=True).stdout


def test_numbers_of_other_tools_are_read_strictly():
    tool = os.environ["VORKA_BEST_MOVE"]
    for options in (["--time", "abc"], ["--depth", "2x"], ["--time", "0"]):
        run = subprocess.run([tool, *options], input="", capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == "" and "takes a number" in run.stderr


def test_figures_that_nobody_can_be_told_are_a_failure():
    with open("/dev/full", "w", encoding="utf-8") as full:
        run = subprocess.run([BENCH, "--depth", "1", "--quiet"], stdout=full, stderr=subprocess.PIPE, text=True, check=False)
    assert (run.returncode, run.stderr) == (1, "bench: can't write to standard output\n")
