"""The settings that games have found, settings/tuned.txt: who reads them, and that nothing else stands in the file."""

from pathlib import Path

from uci_dialogue import number, ready, search

ROOT = Path(__file__).resolve().parents[2]
TUNED = ROOT / "settings/tuned.txt"
PARAMETERS = ROOT / "settings/parameters.txt"
BASE = {"min_ply_for_null_move": "1"}  # what the run began with besides


def values_of(text):
    return dict(line.split("=", 1) for line in text.splitlines())


def bounds():
    rows = [line.split() for line in PARAMETERS.read_text().splitlines() if line.strip() and not line.startswith("#")]
    return {name: (int(least), int(most)) for name, _, least, most, *_ in rows}


def test_only_what_was_tuned_differs_from_the_defaults(console):
    console.send("force", "write_settings defaults.txt")
    console.ping()
    defaults, tuned = values_of((console.folder / "defaults.txt").read_text()), values_of(TUNED.read_text())
    assert list(tuned) == list(defaults)
    changed = {name: value for name, value in tuned.items() if value != defaults[name]}
    assert {name: changed.pop(name) for name in BASE} == BASE
    limits = bounds()
    for name, value in changed.items():
        least, most = limits[name]
        assert least <= int(value) <= most, name


def test_the_console_starts_with_them(start):
    """As scripts/play --tuned does."""
    assert f"--read_settings ../{TUNED.relative_to(ROOT)})" in (ROOT / "scripts/play").read_text()
    engine = start("--read_settings", str(TUNED))
    engine.send("force", "write_settings read.txt")
    engine.ping()
    assert (engine.folder / "read.txt").read_text() == TUNED.read_text()


def test_an_interface_names_them(uci):
    def nodes():
        told, _ = search(uci, "ucinewgame", "go depth 5")
        return number(told[-1], "nodes")

    uci.send("setoption name Search value Classic")
    before = nodes()
    uci.send("setoption name Settings File value tuned")
    assert ready(uci) == ""
    assert nodes() != before
