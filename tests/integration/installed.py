"""What a machine has to have for a test."""

import os
import shutil

import pytest

# Debian puts programs that play into a folder of their own, where not every PATH leads.
PATH = os.environ["PATH"] + ":/usr/games"


def needs(program):
    """The mark of a test that is skipped, with the name of the program, where it is not installed."""
    return pytest.mark.skipif(not shutil.which(program, path=PATH), reason=f"{program} is not installed")
