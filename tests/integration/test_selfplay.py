"""Matches of the engine with itself: the program, what it keeps, and the table of variants."""

import os
import pathlib
import re
import signal
import subprocess
import sys
import time
import xml.dom.minidom

import pytest

SELFPLAY = os.environ["VORKA_SELFPLAY"]
ROOT = pathlib.Path(__file__).resolve().parents[2]
OPENINGS = ROOT / "tests/data/openings.epd"
BUILD = pathlib.Path(SELFPLAY).parents[2]


def selfplay(*options, check=True):
    command = [SELFPLAY, *[str(option) for option in options]]
    return subprocess.run(command, capture_output=True, text=True, check=check)


def quick(*options, nodes=100, games=12):
    return selfplay("--openings", OPENINGS, "--nodes", nodes, "--games", games, *options)


def last_line(run):
    return run.stdout.splitlines()[-1]


def test_results_come_with_their_errors():
    line = last_line(quick("--second", "name=other enable_search_extensions=false"))
    number = r"[+-][\d.]+ \+- [\d.]+"
    assert re.fullmatch(rf"games 12: \+\d+ =\d+ -\d+, pairs( \d+){{5}}, Elo {number}, normalized {number}, "
                        r"superiority [\d.]+ %", line)


def test_help_names_all_words_of_a_player():
    source = (ROOT / "tools/player_setup/player_setup.cpp").read_text()
    words = re.findall(r'key == "(\w+)"', source)
    assert len(words) > 5
    told = selfplay("--help").stdout
    assert [word for word in words if not re.search(rf" {word}=", told)] == []


def test_concurrency_changes_nothing(tmp_path):
    for concurrency in (1, 3):
        quick("--second", "contempt=30", "--pgn", tmp_path / f"{concurrency}.pgn", "--concurrency", concurrency)
    alone = (tmp_path / "1.pgn").read_text()
    assert alone == (tmp_path / "3.pgn").read_text()
    assert alone.count("[Event ") == 12
    assert re.search(r"1\. \S+ \{[+-]\d+\.\d\d/\d+\}", alone)


def test_the_tournament_search_plays_against_the_classic_one(tmp_path):
    second = "name=T search=tournament null_move=0"
    for run in ("once", "again"):
        quick("--first", "name=C", "--second", second, "--pgn", tmp_path / run, nodes=300)
    text = (tmp_path / "once").read_text()
    assert text == (tmp_path / "again").read_text()
    assert re.findall(r'White "(.)"', text) == ["C", "T"] * 6
    quick("--first", "name=C", "--second", "name=T", "--pgn", tmp_path / "same", nodes=300)
    assert (tmp_path / "same").read_text() != text, "it plays other moves"


def test_colours_are_turned(tmp_path):
    quick("--first", "name=A", "--second", "name=B", "--pgn", tmp_path / "games.pgn")
    text = (tmp_path / "games.pgn").read_text()
    assert re.findall(r'White "(.)"', text) == ["A", "B"] * 6
    fens = re.findall(r'FEN "(.*)"', text)
    assert fens[::2] == fens[1::2] and len(set(fens)) == 6


def test_killed_match_goes_on_to_the_same_games(tmp_path):
    options = ["--second", "personality=Rux", "--concurrency", 2]
    whole = last_line(quick(*options, "--pgn", tmp_path / "whole.pgn", nodes=3000))
    state = tmp_path / "state"
    kept = ["--state", state, "--pgn", tmp_path / "kept.pgn"]
    for games in (2, 5):
        match = subprocess.Popen([SELFPLAY, *map(str, ["--openings", OPENINGS, "--nodes", 3000, "--games", 12, *options, *kept])],
                                 stdout=subprocess.DEVNULL)
        while match.poll() is None and not (state.exists() and state.read_text().count("\n") >= 8 + games):
            time.sleep(0.01)
        match.kill()
        match.wait()
    run = quick(*options, *kept, nodes=3000)
    assert re.match(r"went on after \d+ games\n", run.stdout)
    assert last_line(run) == whole
    assert (tmp_path / "kept.pgn").read_text() == (tmp_path / "whole.pgn").read_text()


def test_interrupt_keeps_what_was_played(tmp_path):
    match = subprocess.Popen([SELFPLAY, "--openings", OPENINGS, "--nodes", "3000", "--games", "200", "--state", tmp_path / "state"],
                             stdout=subprocess.PIPE, text=True)
    while not (tmp_path / "state").exists() or (tmp_path / "state").read_text().count("\n") < 12:
        time.sleep(0.01)
    match.send_signal(signal.SIGINT)
    said = match.communicate(timeout=60)[0]
    assert match.returncode == 0 and said.startswith("games ")


def test_games_are_added_to_those_that_stand_there(tmp_path):
    pgn = tmp_path / "games.pgn"
    quick("--pgn", pgn, games=2)
    first = pgn.read_text()
    quick("--pgn", pgn, "--second", "contempt=30", "--state", tmp_path / "state", games=2)
    both = pgn.read_text()
    assert both.startswith(first) and both.count("[Event ") == 4
    quick("--pgn", pgn, "--second", "contempt=30", "--state", tmp_path / "state", games=4)
    assert pgn.read_text().startswith(both) and pgn.read_text().count("[Event ") == 6, "what the state has stands there once"


def test_what_cannot_be_written_is_told_before_the_games(tmp_path):
    os.mkfifo(tmp_path / "pipe")
    for option in ("--state", "--pgn"):
        run = subprocess.run([SELFPLAY, "--openings", OPENINGS, "--nodes", "100", option, tmp_path / "pipe"], capture_output=True,
                             text=True, timeout=20)
        assert run.returncode == 1 and run.stdout == "" and f"{tmp_path / 'pipe'}: no regular file" in run.stderr
    run = selfplay("--openings", OPENINGS, "--nodes", 100, "--games", 2, "--report", tmp_path / "none/report.svg", check=False)
    assert (run.returncode, run.stdout) == (1, "")
    assert run.stderr == f"selfplay: can't write {tmp_path}/none/report.svg\n"


def test_results_that_nobody_can_be_told_are_a_failure():
    with open("/dev/full", "w", encoding="utf-8") as full:
        for options in (["--openings", OPENINGS, "--nodes", "10", "--games", "2"], ["--help"]):
            run = subprocess.run([SELFPLAY, *options], stdout=full, stderr=subprocess.PIPE, text=True, check=False)
            assert (run.returncode, run.stderr) == (1, "selfplay: can't write to standard output\n")


def test_of_two_bounds_the_first_ends_a_search(tmp_path):
    selfplay("--openings", OPENINGS, "--nodes", 1000000, "--depth", 1, "--games", 2, "--pgn", tmp_path / "games.pgn")
    assert set(re.findall(r"\{\S+/(\d+)\}", (tmp_path / "games.pgn").read_text())) == {"1"}


def test_sequential_test_ends_the_match(tmp_path):
    options = ["--first", "nodes=1000", "--second", "nodes=50", "--sprt", "0", "200", "--state", tmp_path / "state", "--pgn",
               tmp_path / "games.pgn"]
    run = quick(*options, games=380)
    assert run.stdout.splitlines()[-1] == "decided: the lead is not 0, it is 200 Elo"
    games = int(re.search(r"games (\d+):", run.stdout.splitlines()[-2])[1])
    assert games < 380
    assert (tmp_path / "games.pgn").read_text().count("[Event ") == games
    again = quick(*options, games=380)
    assert again.stdout.splitlines()[-2:] == run.stdout.splitlines()[-2:]


def test_report_is_a_picture(tmp_path):
    quick("--first", "name=<A>&B", "--report", tmp_path / "report.svg")
    words = [text.firstChild.data for text in xml.dom.minidom.parse(str(tmp_path / "report.svg")).getElementsByTagName("text")]
    assert "<A>&B against defaults" in words and "12 games" in words
    assert any(word.startswith("Elo ") for word in words)


def test_games_against_the_clock(tmp_path):
    selfplay("--openings", OPENINGS, "--time", "0.3+0.01", "--games", 2, "--pgn", tmp_path / "games.pgn")
    assert '[TimeControl "0.3+0.01"]' in (tmp_path / "games.pgn").read_text()


@pytest.mark.parametrize("options, complaint", [
    (["--nodes", "10"], "--openings is missing"),
    (["--openings", OPENINGS], "one of --nodes, --depth and --time is missing"),
    (["--openings", "/nowhere", "--nodes", "10"], "can't open /nowhere"),
    (["--openings", OPENINGS, "--nodes", "10x"], '--nodes takes a number from 1 to 1000000000000, not "10x"'),
    (["--openings", OPENINGS, "--nodes", "10", "--games", "3"], "--games takes an even number"),
    (["--openings", OPENINGS, "--nodes", "10", "--games", "1000000"],
     r"only \d+ openings for 500000 pairs: without a clock the same games would come again"),
    (["--sprt", "5", "0"], "--sprt takes two leads, the smaller one first"),
    (["--sprt", "5"], '--sprt takes a number from -1000 to 1000, not ""'),
    (["--first", "speed=1"], 'no such setting: "speed"'),
    (["--resign", "3"], '--resign takes 2 numbers with colons between them, not "3"'),
])
def test_bad_words_are_refused(options, complaint):
    run = selfplay(*options, check=False)
    assert run.returncode == 1 and run.stdout == ""
    assert re.fullmatch("selfplay: " + (complaint if "\\" in complaint else re.escape(complaint)) + "\n", run.stderr), run.stderr


def test_usage():
    assert "usage: selfplay" in selfplay("--help").stdout
    for options in (["x"], ["--nonsense"]):
        run = selfplay(*options, check=False)
        assert run.returncode == 1 and "usage:" in run.stderr


def test_openings_of_the_tree_are_those_that_are_made():
    """The first ones, which take a moment; the head says how the rest was made."""
    made = subprocess.run([BUILD / "tools/selfplay/make_openings", "--count", "2"], capture_output=True, text=True, check=True).stdout
    assert made.splitlines()[2:] == OPENINGS.read_text().splitlines()[2:4]
    count = int(re.search(r"--count (\d+)", OPENINGS.read_text())[1])
    assert len(OPENINGS.read_text().splitlines()) == count + 2


# --- The table of variants ---

def sensitivity(folder, variants, *options, check=True):
    (folder / "variants.txt").write_text(variants)
    command = [sys.executable, ROOT / "scripts/sensitivity", folder / "variants.txt", "--build", BUILD, "--state",
               folder / "state", "--output", folder / "table.md", "--games", "4", "--nodes", "100", "--depth", "1", *options]
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=check)


def test_variants_become_a_table_and_are_played_once(tmp_path):
    first = "# comment\n[Null move]\nearly: min_ply_for_null_move=1 min_null_move_search_reduction=192\n"
    second = "[Order]\nmore for captures: capture_move_sorting_bonus=0,8,10,10,12,20\n"
    sensitivity(tmp_path, first)
    kept = {path: path.stat().st_mtime_ns for path in (tmp_path / "state").glob("*.games")}
    assert len(kept) == 1
    said = sensitivity(tmp_path, first + second).stdout
    assert re.search(r"(?m)^2 of 2: Order: more for captures: Elo \S+ \+- \S+, nodes [\d.]+; about 0 minutes more$", said)
    assert [path.stat().st_mtime_ns for path in kept] == list(kept.values())
    table = (tmp_path / "table.md").read_text()
    assert re.search(r"(?m)^\| \*\*Null move\*\* \|.*\n\| early \| \S+ \| \S+ \| [\d.]+ % \| [\d.]+ \|$", table)
    assert "| more for captures |" in table


def test_variants_may_be_played_until_both_agree(tmp_path):
    """Each set of rules has games of its own."""
    variant = "other: enable_ettc=true\n"
    sensitivity(tmp_path, variant)
    sensitivity(tmp_path, variant, "--resign", "1:1", "--draw", "1:1:0")
    heads = [path.read_text() for path in (tmp_path / "state").glob("*.games")]
    assert sorted(re.findall(r"(?m)^resign .*", "".join(heads))) == ["resign 0 1000 draw 40 0 10", "resign 1 1 draw 1 1 0"]
    assert " nodes a move with --resign 1:1 --draw 1:1:0; " in (tmp_path / "table.md").read_text()


def test_variants_of_another_base_are_played_until_a_lead_is_ruled_out(tmp_path):
    variant = "[Check]\nnone: check_extension=0\n"
    options = ("--base", "search=tournament", "--games", "400", "--sprt", "-1000", "-900")
    said = sensitivity(tmp_path, variant, *options).stdout
    assert said.startswith("1 of 1: Check: none: Elo ")
    table = (tmp_path / "table.md").read_text()
    assert table.startswith("Games against `search=tournament` until a lead of -1000 or one of -900 Elo is ruled out at a risk of 5 %, no "
                            "more than 400 each, at 100 nodes a move; nodes of the bench to depth 1 beside the ")
    assert "\n| what is changed | games | Elo | error | superiority | ruled out | nodes |\n|---|---|---|---|---|---|---|\n" in table
    games, lead = re.search(r"(?m)^\| none \| (\d+) \| .* \| (\S+) \| [\d.]+ \|$", table).groups()
    assert int(games) < 400 and lead == "-1000"
    sensitivity(tmp_path, variant, *options)
    assert (tmp_path / "table.md").read_text() == table


def test_leads_that_no_match_has_ruled_out_are_told(tmp_path):
    sensitivity(tmp_path, "none: check_extension=0\n", "--base", "search=tournament", "--games", "2", "--sprt", "-5", "0")
    assert re.search(r"(?m)^\| none \| 2 \| .* \| neither \| ", (tmp_path / "table.md").read_text())


def test_variants_need_a_place_for_their_table(tmp_path):
    run = sensitivity(tmp_path, "good: enable_ettc=true\n", "--output", tmp_path / "none/table.md", check=False)
    assert run.stderr == f"scripts/sensitivity: can't write {tmp_path}/none/table.md: No such file or directory\n"
    assert not list((tmp_path / "state").glob("*"))


@pytest.mark.parametrize("variants, complaint", [
    ("", "no variants"),
    ("a: b\n", 'line 1: not SETTING=VALUE: "b"'),
    ("\na b=1\n", "line 2: not NAME: SETTING=VALUE .."),
    ("a: b=1\na: c=1\n", 'line 2: "a" is there already'),
])
def test_bad_variants_are_told(tmp_path, variants, complaint):
    run = sensitivity(tmp_path, variants, check=False)
    assert run.returncode == 1 and run.stderr == f"scripts/sensitivity: {complaint}\n"


def test_variant_without_such_a_setting_is_told_before_the_games(tmp_path):
    run = sensitivity(tmp_path, "good: enable_ettc=true\nbad: speed=1\n", check=False)
    assert run.returncode == 1 and 'no such setting: "speed"' in run.stderr
    assert not list((tmp_path / "state").glob("*.games"))


@pytest.mark.parametrize("name, base", [("variants", ""), ("techniques", "search=tournament")])
def test_variants_of_the_tree_can_be_read(name, base):
    """Every setting and value is known to the engine."""
    for line in (ROOT / f"settings/{name}.txt").read_text().splitlines():
        if line and line[0] not in "#[":
            run = selfplay("--first", f"{base} {line.partition(':')[2].strip()}", check=False)
            assert run.stderr == "selfplay: --openings is missing\n", line
