"""scripts/mutate: which breaks it makes of a line, and that it takes reasons as they are written."""

import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "lib"))
import mutants  # noqa: E402

LINES = [
    ("    if (a < b) return 3;",
     ["    if (a <= b) return 3;", "    if (a < b) return 4;", "    if (a < b) return 2;", "    if (!(a < b)) return 3;"]),
    ("    return a + 1;", ["    return a - 1;", "    return a + 2;", "    return a + 0;"]),
    ("    if (x && !y) {", ["    if (x || !y) {", "    if (!(x && !y)) {"]),
    ("    game.Stop(\"a + b\");", ["    ;"]),
    ("    ++count;", ["    --count;", "    ;"]),
    ("    count += step;", ["    count -= step;", "    ;"]),
    ("    return true;", ["    return false;"]),
    ("    for (int i = 0; i < n; ++i) {", ["    for (int i = 0; i <= n; ++i) {", "    for (int i = 0; i < n; --i) {",
                                           "    for (int i = 1; i < n; ++i) {"]),
    ("    // a < b", []),
    ("    CHECKED_ASSERT(a < b);", []),
    ("    constexpr int most = 3;", []),
    ("    using A = B<3>;", []),
    ("    Say(' ');  // 1 + 1", ["    ;"]),
]


@pytest.mark.parametrize("line, broken", LINES, ids=[line.strip() for line, _ in LINES])
def test_breaks_of_a_line(line, broken):
    assert sorted(mutants.mutants_of_line(line)) == sorted(broken)


def test_tables_are_left_alone():
    text = "int f() {\n    // clang-format off\n    return 1;\n    // clang-format on\n    return 2;\n}\n"
    assert {mutant.line for mutant in mutants.mutants_of_file("a.cpp", text)} == {5}


def test_break_is_put_into_its_line():
    mutant = mutants.Mutant("a.cpp", 2, "    b;", "    c;")
    assert mutants.with_mutant("a\n    b;\nd\n", mutant) == "a\n    c;\nd\n"
    with pytest.raises(ValueError):
        mutants.with_mutant("a\n    x;\nd\n", mutant)


def test_reasons_are_those_of_breaks_that_there_are():
    """A reason for a line that is gone, or another one now, says nothing."""
    reasons = mutants.read_reasons((ROOT / "tests/data/surviving_mutants.txt").read_text())
    assert all(len(reason) > 20 for reason in reasons.values())
    for key in reasons:
        path = key.split(" | ")[0]
        assert key in {mutant.key() for mutant in mutants.mutants_of_file(path, (ROOT / path).read_text())}, key


def test_reasons_are_read():
    text = "# a comment\n\nsrc/a.cpp\nx < y\nx <= y\nthey are never equal\n\n"
    assert mutants.read_reasons(text) == {"src/a.cpp | x < y | x <= y": "they are never equal"}
    with pytest.raises(ValueError):
        mutants.read_reasons("src/a.cpp\nx < y\n")


def test_script_lists_what_it_would_break():
    listed = subprocess.run([ROOT / "scripts/mutate", "7", "--list", "--only", "src/uci"], capture_output=True, text=True, timeout=60)
    again = subprocess.run([ROOT / "scripts/mutate", "7", "--list", "--only", "src/uci"], capture_output=True, text=True, timeout=60)
    assert listed.returncode == 0 and listed.stdout == again.stdout
    assert sum(line.startswith("src/uci/") for line in listed.stdout.splitlines()) == 7
    nothing = subprocess.run([ROOT / "scripts/mutate", "7", "--only", "no/such"], capture_output=True, text=True, timeout=60)
    assert nothing.returncode == 2 and "nothing to break" in nothing.stderr
