"""What every dialogue test uses."""

import pathlib
import sys

import pytest
from engine import UCI_PROGRAM, Engine

# The referee and the screen are those of the tools and scripts.
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts" / "lib"))


@pytest.fixture
def start(tmp_path):
    """Starts the program, as often as a test likes. At the end of the test every run that is still open has to end in
    order, with status 0, when its input ends."""
    running = []

    def start_engine(*options, folder=None, **settings):
        if folder is None:
            folder = tmp_path / f"run{len(running)}"
            folder.mkdir()
        engine = Engine(folder, *options, **settings)
        running.append(engine)
        return engine

    yield start_engine
    try:
        for engine in running:
            if engine.process.returncode is None:
                if engine.terminal is not None:
                    engine.send("quit")
                engine.finish()
    finally:
        for engine in running:
            engine.kill()


@pytest.fixture
def console(start):
    return start()


@pytest.fixture
def xboard(start):
    """Protocol 2, after its features."""
    engine = start()
    engine.send("xboard", "protover 2")
    engine.expect_text("feature done=1\n")
    return engine


@pytest.fixture
def uci(start):
    """vorka-uci, after its handshake."""
    engine = start(program=UCI_PROGRAM)
    engine.ask_text("uci", "uciok\n")
    return engine


@pytest.fixture(params=["console", "xboard"])
def either(request):
    """Both protocols, one after the other."""
    return request.getfixturevalue(request.param)
