"""Starts PyChess and, when it has found the engines of its list, a game between the two. Run by scripts/screenshots.

Writes the number of each half move to pychess.log in the home folder, and "trouble" if the game ends.
"""

import os
import runpy

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import GLib
from pychess.compat import create_task
from pychess.perspectives import perspective_manager
from pychess.Players.engineNest import discoverer
from pychess.Utils.const import ARTIFICIAL, BLACK, NORMALCHESS, WHITE
from pychess.Utils.GameModel import GameModel
from pychess.Utils.TimeModel import TimeModel
from pychess.Variants import variants
from pychess.widgets import mainwindow

SECONDS, INCREMENT = 60, 0
SIZE = 960, 640  # of the window: the whole screen
FULL_STRENGTH = 20


def log(text):
    with open(os.path.expanduser("~/pychess.log"), "a") as file:
        file.write(text + "\n")


def player(name, colour):
    engine = discoverer.getEngineByName(name)
    arguments = (engine, colour, FULL_STRENGTH, variants[NORMALCHESS], SECONDS, INCREMENT)
    return ARTIFICIAL, discoverer.initPlayerEngine, arguments, discoverer.getName(engine)


def begin():
    mainwindow().move(0, 0)
    mainwindow().resize(*SIZE)
    game = GameModel(TimeModel(SECONDS, INCREMENT))
    game.connect("game_changed", lambda model, ply: log(f"ply {ply}"))
    game.connect("game_ended", lambda model, reason: log(f"trouble: the game has ended: {reason}"))
    games = perspective_manager.get_perspective("games")
    create_task(games.generalStart(game, player("vorka-uci", WHITE), player("vorka-xboard", BLACK)))


discoverer.connect("all_engines_discovered", lambda _: GLib.timeout_add(1000, begin) and None)
runpy.run_path("/usr/games/pychess", run_name="__main__")
