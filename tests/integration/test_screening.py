"""scripts/screening: a few games of the engine with itself, and the design by itself."""

import importlib.machinery
import importlib.util
import os
import pathlib
import re
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ["VORKA_SELFPLAY"]).parents[2]
BLIND = "blind: nodes=1\n"
CHANGES = BLIND + "# comment\nno null moves: min_ply_for_null_move=64000\ncontempt: contempt=10\n"


def module():
    """The script, which has no ending."""
    sys.dont_write_bytecode = True
    loader = importlib.machinery.SourceFileLoader("screening", str(ROOT / "scripts/screening"))
    loaded = importlib.util.module_from_spec(importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(loaded)
    return loaded


def screening(folder, changes, *options, check=True):
    (folder / "changes.txt").write_text(changes)
    command = [sys.executable, ROOT / "scripts/screening", folder / "changes.txt", "--build", BUILD, "--state", folder / "state",
               "--output", folder / "table.md", "--games", "8", "--nodes", "300", "--resign", "1:300", "--draw", "1:4:50", *options]
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, check=check)


@pytest.mark.parametrize("count", [1, 2, 3, 5, 7, 11, 15, 16, 19, 23])
def test_each_change_meets_each_other_one_as_often_as_it_is_beside_it(count):
    design = module().design_of(count)
    assert all(len(row) == count for row in design)
    for one in range(count):
        assert sum(row[one] for row in design) == 0
        for other in range(one):
            assert sum(row[one] * row[other] for row in design) == 0


def test_leads_come_back_to_their_changes():
    """Matches that end as the sum of their changes say, and what two of them are worth together."""
    loaded = module()
    worths = [30.0, -12.0, 0.0, 5.0, 7.5]
    design = loaded.design_of(len(worths))

    def strength(row, sign):
        return sum(worth for worth, own in zip(worths, row) if own == sign) + (20.0 if row[0] == row[1] == sign else 0.0)

    leads = [loaded.strength_of([0, 0, 1, 0, 0]).elo._replace(value=strength(row, 1) - strength(row, -1), error=8.0) for row in design]
    found = [loaded.worth(leads, [row[column] for row in design]) for column in range(len(worths))]
    # Beside the other one in half of the matches: what both are worth together is shared.
    assert [lead for lead, _ in found] == pytest.approx([40.0, -2.0, 0.0, 5.0, 7.5])
    assert [error for _, error in found] == pytest.approx([8.0 / len(design) ** 0.5] * len(worths))


def test_changes_become_a_table_and_are_played_once(tmp_path):
    said = screening(tmp_path, CHANGES).stdout.splitlines()
    assert len(said) == 4 and re.fullmatch(r"4 of 4: [+-]\d+\.\d; about 0 minutes more", said[-1])
    kept = {path: path.stat().st_mtime_ns for path in (tmp_path / "state").glob("*.games")}
    assert len(kept) == 4
    table = (tmp_path / "table.md").read_text()
    assert table.startswith("4 matches of 8 games at 300 nodes a move with --resign 1:300 --draw 1:4:50, changes of the defaults "
                            "against each other. An error is half the width of the 95 % interval.\n\n| what is changed | Elo | error |\n")
    worth = dict(re.findall(r"(?m)^\| ([a-z ]+) \| ([+-]\d+\.\d) \| (?:\?|\d+\.\d) \|$", table))
    assert list(worth) == ["blind", "no null moves", "contempt"]
    assert float(worth["blind"]) < -50 and float(worth["blind"]) < min(float(worth[name]) for name in list(worth)[1:])
    assert screening(tmp_path, CHANGES).stdout == "\n".join(said) + "\n"
    assert {path: path.stat().st_mtime_ns for path in (tmp_path / "state").glob("*.games")} == kept
    assert (tmp_path / "table.md").read_text() == table


def test_changes_may_have_a_base_of_their_own(tmp_path):
    screening(tmp_path, "none: check_extension=0\n", "--base", "search=tournament", "--games", "2")
    assert ", changes of `search=tournament` against each other." in (tmp_path / "table.md").read_text()


@pytest.mark.parametrize("changes, options, complaint", [
    ("", [], "no variants"),
    ("a: b=1\na: c=1\n", [], 'line 2: "a" is there already'),
    ("a: b=1\nc: d=2 b=2\n", [], '"a" and "c" both change b'),
    ("".join(f"a{i}: b{i}=1\n" for i in range(24)), [], "no more than 23 changes at once"),
    (BLIND + "bad: speed=1\n", [], 'bad: selfplay: no such setting: "speed"'),
    (BLIND, ["--games", "3"], "selfplay: --games takes an even number"),
])
def test_bad_changes_are_told(tmp_path, changes, options, complaint):
    run = screening(tmp_path, changes, *options, check=False)
    assert run.returncode == 1 and run.stderr == f"scripts/screening: {complaint}\n", run.stderr
    assert not list((tmp_path / "state").glob("*.games"))
