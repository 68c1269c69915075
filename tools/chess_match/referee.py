"""The rules of chess, which the tests use as well: slow, obvious, and apart from the engine's own code."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts" / "lib"))

import rules  # noqa: E402, F401
