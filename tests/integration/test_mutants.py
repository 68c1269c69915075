"""scripts/mutate: which breaks it makes of a line, which tests have to see them, and that it takes reasons as they are
written."""

import importlib.machinery
import importlib.util
import pathlib
import re
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


def script():
    loader = importlib.machinery.SourceFileLoader("mutate", str(ROOT / "scripts/mutate"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", loader))
    loader.exec_module(module)
    return module


mutate = script()
REGISTERED = re.findall(r"^ *vorka_dialogue\((\w+)", (ROOT / "tests/integration/CMakeLists.txt").read_text(), re.M)


def test_every_source_has_tests_that_see_its_breaks_or_is_left_alone_by_name():
    sources = [str(path.relative_to(ROOT)) for path in (ROOT / "src").rglob("*.cpp")]
    unknown = [path for path in sources if not mutate.area_of(path) and not path.startswith(mutate.NOT_BROKEN)]
    assert len(sources) > 100 and not unknown
    for name in (*mutate.NOT_BROKEN, *(area.sources for area in mutate.AREAS)):
        assert any(path.startswith(name + "/") for path in sources), name
    for name in mutate.LEFT_OUT:
        assert list((ROOT / "src").rglob("*" + name)), name


@pytest.mark.parametrize("area", mutate.AREAS, ids=lambda area: area.sources)
def test_tests_of_an_area_are_there(area):
    for folder in area.tests:
        assert list((ROOT / folder).rglob("*_test.cpp")), folder
    assert {*area.dialogues} <= {*REGISTERED}


def area(sources):
    return next(area for area in mutate.AREAS if area.sources == sources)


def test_breaks_of_uci_meet_all_its_dialogues():
    assert {*area("src/uci").dialogues} == {name for name in REGISTERED if name.startswith("test_uci")} - {"test_uci_clock"}


def test_breaks_of_the_search_meet_both_searches():
    """Each that has totals on record is run to a depth that is there."""
    rows = [line.split()[0] for line in (ROOT / "tests/data/bench_total.txt").read_text().splitlines() if line[0] != "#"]
    run = [f"{'tournament-' if 'search=tournament' in options else ''}{re.search('--depth ([0-9]+)', options)[1]}"
           for options in area("src/search").benches]
    assert {*run} <= {*rows} and {row.rpartition("-")[0] for row in run} == {row.rpartition("-")[0] for row in rows}
    assert {"test_search_dialogue", "test_uci_tournament"} <= {*area("src/search").dialogues}


def test_script_lists_what_it_would_break():
    listed = subprocess.run([ROOT / "scripts/mutate", "7", "--list", "--only", "src/uci"], capture_output=True, text=True, timeout=60)
    again = subprocess.run([ROOT / "scripts/mutate", "7", "--list", "--only", "src/uci"], capture_output=True, text=True, timeout=60)
    assert listed.returncode == 0 and listed.stdout == again.stdout
    assert sum(line.startswith("src/uci/") for line in listed.stdout.splitlines()) == 7
    nothing = subprocess.run([ROOT / "scripts/mutate", "7", "--only", "no/such"], capture_output=True, text=True, timeout=60)
    assert nothing.returncode == 2 and "nothing to break" in nothing.stderr
