"""The charts of docs/diagrams: those of scripts/pictures, without drawing them anew."""

import importlib.machinery
import importlib.util
import re
from pathlib import Path

import pytest
from engine import PROGRAM

ROOT = Path(__file__).resolve().parents[2]


def script():
    loader = importlib.machinery.SourceFileLoader("pictures", str(ROOT / "scripts/pictures"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("pictures", loader))
    loader.exec_module(module)
    return module


pictures = script()


def words_of(chart):
    return re.findall(r"<text[^>]*>([^<]*)</text>", (ROOT / f"docs/diagrams/{chart}.svg").read_text())


@pytest.fixture
def settings(tmp_path):
    """The log of the engine that is asked stays with the test."""
    (tmp_path / "vorka").symlink_to(Path(PROGRAM).resolve())
    return pictures.settings(tmp_path)


def test_extensions_are_those_of_the_settings(settings):
    drawn = words_of("extensions")
    for name, setting, _ in pictures.CAUSES:
        assert name in drawn
        assert f"{settings[f'full_{setting}']}, {settings[f'limited_{setting}']}" in drawn


def test_growth_knows_every_technique():
    names = [name for name, changes in pictures.techniques() if changes]
    assert len(names) > 10 and {*names} <= {*words_of("growth")}


def test_bisection_shows_questions_and_what_they_found():
    drawn = words_of("bisection")
    found = [word for word in drawn if re.fullmatch(r"[a-h][1-8][a-h][1-8]: -?\d+", word)]
    assert len(found) > 1 and "yes, at least so much" in drawn


def test_blend_names_personalities_that_there_are():
    manual = (ROOT / "docs/manual.md").read_text()
    names = [match[1] for match in (re.fullmatch(r"(\w+) \([+-]?\d+\)", word) for word in words_of("blend")) if match]
    assert len(names) == 3 and all(re.search(rf"\b{name}\b", manual) for name in names)
