"""The trace adds up, and ends at the score that the engine gives."""

import os
import re
import subprocess

import pytest

TRACE = os.environ["VORKA_EVAL_TRACE"]
ENGINE = os.environ["VORKA_ENGINE"]

OPENING = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1"
MIDDLE_GAME = "r1bq1rk1/pp3ppp/2n1pn2/2b5/2BP4/2N2N2/PP3PPP/R1BQ1RK1 b - - 0 1"
ENDING = "4kb1r/4p3/8/8/8/8/4P3/4KB1R w - - 0 1"


def trace(*words):
    return subprocess.run([TRACE, *words], capture_output=True, text=True, check=True).stdout


def rows(text):
    """Name of each row and its pairs: of White, of Black (None where only the sum is told), and the sum."""
    found = []
    for line in text.splitlines():
        cells = line.split("|")
        if len(cells) < 6 or not re.search(r"\d", cells[3]):
            continue
        found.append((cells[0].rstrip(), [tuple(map(int, cell.split())) or None for cell in cells[1:4]]))
    return found


def rules(text):
    """By name of the term: the rules below it, as (name, side, (positional, reckless), squares)."""
    found = {}
    term = None
    for line in text.splitlines():
        rule = re.match(r"    (\w+) +(White|Black) +(-?\d+) +(-?\d+)(?:  ((?:[a-h][1-8] ?)+|\d+ squares))?(?:(?:; |  )[a-z ]+ .*)?$", line)
        if rule:
            name, side, positional, reckless, squares = rule.groups()
            found[term].append((name, side, (int(positional), int(reckless)), (squares or "").split()))
        elif "|" in line:
            term = line.split("|")[0].rstrip()
            found[term] = []
    return found


def number(text, name):
    return int(re.search(rf"^{name} +(-?\d+)", text, re.MULTILINE)[1])


def eval_of(fen, tmp_path):
    text = subprocess.run([ENGINE], input=f"force\nsetboard {fen}\neval\nquit\n", capture_output=True, text=True, cwd=tmp_path,
                          check=True).stdout
    return int(re.search(r"eval: (-?\d+)", text)[1])


@pytest.mark.parametrize("fen", [OPENING, MIDDLE_GAME])
def test_terms_add_up_to_the_score(fen, tmp_path):
    text = trace(fen)
    table = rows(text)
    names = [name for name, _ in table]
    assert names[0] == "passed pawns" and names[-1] == "sum"
    assert ("activity" in names) == (fen == MIDDLE_GAME)
    for name, (of_white, of_black, total) in table:
        if of_white is not None:
            assert total == (of_white[0] - of_black[0], of_white[1] - of_black[1]), name
    for wanted, part in (("sum", [row for name, row in table[:-1] if not name.startswith(" ")]),
                         ("pawns alone", [row for name, row in table if name.startswith(" ")])):
        total = dict(table)[wanted][2]
        assert total == (sum(row[2][0] for row in part), sum(row[2][1] for row in part)), wanted

    positional, reckless = dict(table)["sum"][2]
    weight = min(max(number(text, "blend weight"), 0), 16)
    blended = number(text, "blended")
    assert blended == int(((16 - weight) * positional + weight * reckless) / 16)
    side = 1 if " w " in fen else -1
    assert number(text, "score") == number(text, "material") + side * blended == eval_of(fen, tmp_path)


def difference(told):
    """White minus Black."""
    return tuple(sum(pair[half] * (1 if side == "White" else -1) for _, side, pair, _ in told) for half in (0, 1))


@pytest.mark.parametrize("fen", [OPENING, MIDDLE_GAME, ENDING])
def test_rules_add_up_to_their_terms(fen):
    text = trace(fen)
    told = rules(text)
    assert sum(map(len, told.values())) > 10
    for name, (_, _, total) in rows(text)[:-1]:
        if name != "pawns alone":
            assert difference(told[name]) == total, name


def test_rules_name_their_squares():
    text = trace("r2q1rk1/pR3ppp/2n1pn2/8/3P4/2NBPN2/P4PPP/3Q1RK1 w - - 0 1")
    assert ("rook_on_seventh", "White", (28, 50), ["b7"]) in rules(text)["rooks"]


def test_personality_moves_the_blend():
    text = trace("--personality", "1000", MIDDLE_GAME)
    assert number(text, "blended") == dict(rows(text))["sum"][2][1]


def steps(text):
    """The steps of an ending to its score, as (name, what it does, the number or the share, the score after it)."""
    found = []
    for line in text.splitlines():
        step = re.match(r"    ([\w ]+?) +(?:White|Black)? +(?:(adds|takes|scales to|limits to|sets to) ([\d/-]+) +)?(-?\d+)(  |$)",
                        line)
        if step and not re.match(r"    \w+ +(White|Black) +-?\d+ +-?\d+", line):
            found.append((step[1], step[2], step[3], int(step[4])))
    return found


@pytest.mark.parametrize("fen, kind", [
    (ENDING, "position type 2: balanced ending"),
    ("2b1k3/p7/8/8/8/8/PPPP4/2B1K3 b - - 0 1", "position type 8: opposite bishops"),
    ("1r4k1/6pp/8/8/8/1P6/6PP/1R4K1 w - - 0 1", "position type 3: rook ending"),
    ("8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1", "position type 3: rook ending"),
    ("6k1/5p2/8/8/3q4/8/8/1Q4K1 w - - 0 1", "position type 4: queen ending"),
    ("4k3/8/8/P6P/8/8/8/4K3 b - - 0 1", "position type 15: pawn ending"),
    ("7k/8/8/8/8/8/P7/2B1K3 b - - 0 1", "position type 17: unbalanced ending"),
    ("7k/8/5K2/8/8/8/8/1N6 b - - 0 1", "position type 16: pawnless"),
])
def test_endings_go_step_by_step_to_their_score(fen, kind, tmp_path):
    text = trace(fen)
    assert text.startswith(kind + "\n")
    score = 0
    if rows(text):
        positional, reckless = dict(rows(text))["sum"][2]
        assert positional == reckless
        score = positional if " w " in fen else -positional
    told = steps(text)
    assert told
    for name, effect, amount, after in told:
        if effect in ("adds", "takes"):
            score += int(amount) if effect == "adds" else -int(amount)
        elif effect == "scales to":
            part, whole = map(int, amount.split("/"))
            score = int(part * score / whole)
        elif effect:
            score = int(amount)
        assert after == score, name
    assert number(text, "score") == score == eval_of(fen, tmp_path)


def test_bad_words_are_refused():
    for options in ([], ["nonsense"], ["--personality", "1001", OPENING], ["--personality", "x", OPENING], ["--what"]):
        run = subprocess.run([TRACE, *options], capture_output=True, text=True)
        assert run.returncode == 1 and run.stdout == "" and run.stderr
    assert "usage:" in trace("--help")
