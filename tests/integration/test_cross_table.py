"""scripts/cross_table: a few games of the engine with itself, and the ratings by themselves."""

import math
import os
import pathlib
import random
import re
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from chess_match.ratings import ratings_of, solve, variance_of  # noqa: E402
from chess_match.statistics import score_of_elo, strength_of  # noqa: E402

BUILD = pathlib.Path(os.environ["VORKA_SELFPLAY"]).parents[2]
PLAYERS = "# comment\nplain:\nweak: nodes=1\n\nRux: personality=Rux\n"


def cross_table(folder, players, *options, check=True):
    (folder / "players.txt").write_text(players)
    command = [sys.executable, ROOT / "scripts/cross_table", folder / "players.txt", "--build", BUILD, "--state", folder / "state",
               "--output", folder / "table.md", "--games", "4", "--nodes", "300", *options]
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=check)


def test_players_become_a_table_and_play_once(tmp_path):
    said = cross_table(tmp_path, "\n".join(PLAYERS.splitlines()[:3])).stdout
    assert re.fullmatch(r"1 of 1: plain \S+ : \S+ weak; about 0 minutes more\n", said)
    kept = {path: path.stat().st_mtime_ns for path in (tmp_path / "state").glob("*.games")}
    assert len(kept) == 1
    said = cross_table(tmp_path, PLAYERS).stdout
    assert len(said.splitlines()) == 3 and "Rux" in said
    assert [path.stat().st_mtime_ns for path in kept] == list(kept.values())
    assert len(list((tmp_path / "state").glob("*.games"))) == 3
    table = (tmp_path / "table.md").read_text().splitlines()
    assert table[0].startswith("4 games for each two at 300 nodes a move; 3 of 3 matches.")
    assert table[2] == "| | player | Elo | error | score | games | 1 | 2 | 3 |"
    rows = [[cell.strip() for cell in line.strip("|").split("|")] for line in table[4:]]
    assert [row[0] for row in rows] == ["1", "2", "3"] and rows[2][1] == "weak"
    assert [int(row[2]) for row in rows] == sorted((int(row[2]) for row in rows), reverse=True)
    assert all(row[5] == "8" and row[5 + place] == "" for place, row in enumerate(rows, 1))
    points = [[float(cell) if cell else 0.0 for cell in row[6:]] for row in rows]
    for i in range(3):
        assert float(rows[i][4].rstrip(" %")) == pytest.approx(100 * sum(points[i]) / 8, abs=0.05)
        for j in range(i):
            assert points[i][j] + points[j][i] == 4


def test_some_of_the_players_play(tmp_path):
    said = cross_table(tmp_path, PLAYERS, "--only", "Rux", "weak").stdout
    assert re.match(r"1 of 1: weak \S+ : \S+ Rux; ", said)


@pytest.mark.parametrize("players, options, complaint", [
    ("", [], "there have to be two players at least"),
    ("a:\n", [], "there have to be two players at least"),
    ("a\n", [], "line 1: not NAME: WORD=VALUE .., the name without blanks"),
    ("a:\n\nb c: d=1\n", [], "line 3: not NAME: WORD=VALUE .., the name without blanks"),
    ("a:\na:\n", [], 'line 2: "a" is there already'),
    ("a:\nb:\n", ["--only", "c"], 'no player "c"; there are a, b'),
    ("a:\nb: speed=1\n", [], 'b: selfplay: no such setting: "speed"'),
    ("a:\nb:\n", ["--games", "3"], "selfplay: --games takes an even number"),
])
def test_bad_players_are_told(tmp_path, players, options, complaint):
    run = cross_table(tmp_path, players, *options, check=False)
    assert run.returncode == 1 and run.stderr == f"scripts/cross_table: {complaint}\n", run.stderr
    assert not list((tmp_path / "state").glob("*.games"))


def test_what_cannot_be_read_or_written_is_told_before_the_games(tmp_path):
    def complaint(*options, players=b"a:\nb: nodes=1\n"):
        (tmp_path / "players.txt").write_bytes(players)
        command = [sys.executable, ROOT / "scripts/cross_table", tmp_path / "players.txt", "--build", BUILD, "--state",
                   tmp_path / "state", "--output", tmp_path / "table.md", "--games", "4", "--nodes", "300", *options]
        run = subprocess.run([str(word) for word in command], capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == ""
        return run.stderr.removeprefix("scripts/cross_table: ")

    assert complaint(players=b"\x7fELF\x80\xff\n") == f"{tmp_path}/players.txt: no text\n"
    assert complaint("--build", tmp_path).startswith(f"there is no program {tmp_path}/tools/selfplay/selfplay; --build names")
    assert complaint("--output", tmp_path / "none/table.md") == f"can't write {tmp_path}/none/table.md: No such file or directory\n"
    assert complaint("--output", tmp_path) == f"can't write {tmp_path}: it is a folder\n"
    assert complaint("--resign", "4") == 'selfplay: --resign takes 2 numbers with colons between them, not "4"\n'
    assert not list((tmp_path / "state").glob("*.games")) and not list(tmp_path.glob("*.new"))


def test_personalities_of_the_tree_are_those_of_the_manual():
    manual = re.search(r"(?s)The names are (.*?)\.\n", (ROOT / "docs/manual.md").read_text())[1]
    lines = [line for line in (ROOT / "settings/personalities.txt").read_text().splitlines() if line[0] != "#"]
    assert sorted(line.split(":")[0] for line in lines) == sorted(re.split(r",\s+|\s+and\s+", manual))
    assert all(re.fullmatch(r"(\w+): personality=\1", line) for line in lines)


def test_everybody_meets_everybody_once():
    script = {"__name__": "cross_table", "__file__": str(ROOT / "scripts/cross_table")}
    exec(compile((ROOT / "scripts/cross_table").read_text(), script["__file__"], "exec"), script)
    for count in (2, 3, 4, 7, 18):
        pairs = script["schedule"](count)
        assert sorted(pairs) == [(i, j) for i in range(count) for j in range(i + 1, count)]
        for start in range(0, len(pairs) - count // 2, count // 2):
            seen = [player for pair in pairs[start:start + count // 2] for player in pair]
            assert len(set(seen)) == len(seen), "nobody twice in a round"


# --- Ratings ---

def played(elo, pairs, dice):
    """Counts of pairs of games of players with these ratings, a third of the games drawn at most."""
    def half_points(lead):
        win = score_of_elo(lead)
        drawn = min(win, 1 - win) / 1.5
        chance = dice.random()
        return 2 if chance < win - drawn / 2 else 1 if chance < win + drawn / 2 else 0

    matches = {}
    for i in range(len(elo)):
        for j in range(i + 1, len(elo)):
            counts = [0] * 5
            for _ in range(pairs):
                counts[half_points(elo[i] - elo[j]) + half_points(elo[i] - elo[j])] += 1
            matches[i, j] = tuple(counts)
    return matches


def test_two_players_have_the_lead_of_their_match():
    counts = (100, 800, 2000, 1200, 200)
    first, second = ratings_of(2, {(0, 1): counts})
    strength = strength_of(counts)
    assert first.elo == -second.elo and first.elo - second.elo == pytest.approx(strength.elo.value, abs=0.02)
    assert 2 * first.error == pytest.approx(strength.elo.error, rel=0.01)


def test_ratings_are_those_that_were_played_with():
    """Errors are what they say: of many runs, the ratings lie within them in 95 %."""
    truth = [120.0, 40.0, 0.0, -60.0, -100.0]
    dice = random.Random(3)
    inside = total = 0
    for _ in range(60):
        for rating, elo in zip(ratings_of(5, played(truth, 100, dice)), truth):
            inside += abs(rating.elo - elo) <= rating.error
            total += 1
    assert 0.92 <= inside / total <= 0.98


def test_order_of_a_match_does_not_matter():
    matches = played([50.0, 0.0, -50.0], 30, random.Random(1))
    turned = {(j, i): counts[::-1] for (i, j), counts in matches.items()}
    for one, other in zip(ratings_of(3, matches), ratings_of(3, turned)):
        assert one.elo == pytest.approx(other.elo) and one.error == pytest.approx(other.error)


def test_all_won_and_nothing_played_have_ratings():
    ratings = ratings_of(4, {(0, 1): (0, 0, 0, 0, 50), (1, 2): (0, 0, 0, 0, 50)})
    assert all(math.isfinite(rating.elo) for rating in ratings)
    assert ratings[0].elo > ratings[1].elo > ratings[2].elo
    assert ratings_of(3, {}) == [(0.0, 0.0)] * 3
    assert sum(rating.elo for rating in ratings) == pytest.approx(0, abs=1e-6)


def test_linear_equations():
    assert solve([[0.0, 2.0], [3.0, 1.0]], [4.0, 5.0]) == pytest.approx([1.0, 2.0])
    assert variance_of((1, 0, 0, 0, 1)) == 2
