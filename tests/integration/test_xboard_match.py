"""XBoard itself, on a screen that nobody sees, plays the engine against fairymax, and every saved game is replayed."""

import os
import re
import subprocess

import pytest
import rules
from engine import PROGRAM, UCI_PROGRAM
from installed import PATH, needs
from screen import screen

pytestmark = [needs("Xvfb"), needs("xboard"), needs("fairymax")]

GAMES = 2  # one with each colour
PATIENCE = 420.0

TROUBLE = re.compile("false|illegal|forfeit|flag|exit|died|disconnect|error|abort", re.I)
ON_TIME = re.compile("(White|Black) wins on time")


def play_match(folder, first, second, *options):
    """Lets XBoard play; returns the saved games and its debug file, which holds all that went over the pipes."""
    games, debug, messages = folder / "games.pgn", folder / "debug", folder / "messages"
    with screen() as display, messages.open("wb") as output:
        environment = dict(os.environ, DISPLAY=display, HOME=str(folder), PATH=PATH)
        match = subprocess.Popen(
            ["xboard", "-fcp", first, "-fd", str(folder), "-scp", second, "-sd", str(folder),
             "-matchGames", str(GAMES), "-saveGameFile", str(games), "-autoCallFlag", "true",
             # What the user has set stays out of the match, as far as it matters, and as it is: HOME does not lead XBoard
             # away from his settings.
             "-adjudicateLossThreshold", "0", "-saveSettingsOnExit", "false",
             "-popupExitMessage", "false", "-soundProgram", "", "-debug", "-nameOfDebugFile", str(debug), *options],
            cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)
        try:
            match.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            match.kill()
            match.wait()
            pytest.fail(f"the match did not end:\n{debug.read_text('latin-1')[-6000:]}")
    assert match.returncode == 0, messages.read_text("latin-1")
    return rules.read_pgn(games.read_text("latin-1")), debug.read_text("latin-1")


def check_game(game, conversation):
    """Every move is legal, and the result is one that the board or the engines bear out."""
    position, keys = rules.Position.from_fen(), []
    for text in game.moves:
        keys.append(position.key())
        position = position.make(position.find(text))
    assert game.result == game.tags["Result"]
    assert game.result in ("1-0", "0-1", "1/2-1/2"), conversation[-4000:]
    assert not TROUBLE.search(game.comment), f"{game.comment}\n{conversation[-4000:]}"
    ended = position.result(keys)
    on_time = ON_TIME.search(game.comment)
    if on_time:
        # The other engine may be careless with so little time; ours may not.
        assert game.tags[on_time[1]] == "Vorka", conversation[-4000:]
    elif ended:
        assert game.result == ended[0], f"{game.comment} in {position.fen()}"
    else:
        # XBoard itself ends a game for which both engines announce the same mate.
        assert re.search("resign|agree|draw|repetition|rule|adjudication", game.comment, re.I), f"{game.comment} in {position.fen()}"
    return position, ended


def test_matches_against_fairymax(tmp_path):
    # Ten seconds, and a third more for every move. XBoard leaves it to the engines to see the mate.
    games, conversation = play_match(tmp_path, PROGRAM, "fairymax", "-timeControl", "0:05", "-timeIncrement", "0.2",
                                     "-checkMates", "false")
    assert len(games) == GAMES
    assert sorted(game.tags["White"] == "Vorka" for game in games) == [False, True]
    for game in games:
        _, ended = check_game(game, conversation)
        assert len(game.moves) >= 10
        if ended and "claim" not in game.comment and "adjudication" not in game.comment:
            # XBoard did not step in, as it does for bare kings: the engine saw the end by itself, and said so.
            assert f"<first : {ended[0]} {{{ended[1]}}}" in conversation

    sent = re.findall(r"^\d+ <first : (.*)$", conversation, re.M)
    assert 'feature myname="Vorka"' in sent and "feature done=1" in sent
    assert not [line for line in sent if line.startswith(("Error", "Illegal move"))]
    # Two games are one run of the program, with one log.
    assert [path.name for path in tmp_path.glob("logfile.*")] == ["logfile.000"]


@needs("polyglot")
def test_vorka_uci_through_an_adapter(tmp_path):
    """Debian's polyglot stands between: it speaks XBoard's protocol on one side and UCI on the other."""
    games, conversation = play_match(tmp_path, f"polyglot -noini -ec {UCI_PROGRAM}", "fairymax", "-timeControl", "0:08",
                                     "-timeIncrement", "0.2")
    assert len(games) == GAMES
    assert {side for game in games for side in ("White", "Black") if game.tags[side].startswith("Vorka")} == {"White", "Black"}
    for game in games:
        check_game(game, conversation)
