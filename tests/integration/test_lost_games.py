"""tools/lost_games on games that were made up, and on those that tools/selfplay writes."""

import os
import pathlib
import subprocess
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from chess_match import losses, pgn  # noqa: E402

KNIGHTS = ("Nf3", "Nf6", "Ng1", "Ng8")


def game(scores, colour="White", fen=None, result=None, other=9.99):
    """Knights go out and back; the player of this colour gave these scores, in pawns, its opponent the other one."""
    moves = []
    for i, score in enumerate(scores):
        said = [f"{{{score:+.2f}/5}}" if score is not None else "", f"{{{other:+.2f}/5}}"]
        for san, comment in zip(KNIGHTS[2 * (i % 2):], said if colour == "White" else said[::-1]):
            moves.append(f"{san} {comment}")
    tags = [("Event", "x"), ("Round", "3.1"), ("White", "A" if colour == "White" else "B"),
            ("Black", "B" if colour == "White" else "A"), *([("SetUp", "1"), ("FEN", fen)] if fen else [])]
    head = "".join(f'[{name} "{value}"]\n' for name, value in tags)
    return f"{head}\n{' '.join(moves)} {result or ('0-1' if colour == 'White' else '1-0')}\n\n"


def loss_of(text, **criteria):
    tally = losses.losses_of(pgn.read_games(text), "A", losses.Criteria(**criteria))
    assert (tally.games, tally.lost) == (1, 1)
    return tally.losses[0]


ENDING = "r5k1/7n/8/8/8/8/8/R5K1 w - - 0 1"


@pytest.mark.parametrize("scores, phase, move, before, after, fall, is_sudden, fall_move", [
    ([0.2, 0.1, -0.9, -4], "opening", 2, 10, -90, 310, True, 4),
    ([0.2, -0.5, -0.8, -1.4, -2.0, -9], "opening", 2, -50, -80, 700, True, 6),
    ([0.2, -0.5, -0.8, -1.4, -2.0, -2.7, -3.0, -9], "opening", 2, -50, -80, 70, False, 6),
    ([0.2, -0.9, -0.4, -1.2, -3.0], "opening", 3, -40, -120, 180, True, 5),
    ([0.1] * 13 + [-0.6, -1.3], "middle game", 13, 10, -60, 70, False, 14),
    ([0.1] * 12 + [-0.7], "opening", 12, 10, -70, 80, True, 13),
    ([0.1, None, -0.69], "opening", 1, 10, -69, 79, False, 3),
    ([0.3, -50], "opening", 1, 30, -1000, 1030, True, 2),
])
@pytest.mark.parametrize("colour", ["White", "Black"])
def test_where_a_game_turned(scores, phase, move, before, after, fall, is_sudden, fall_move, colour):
    loss = loss_of(game(scores, colour))
    assert loss == (1, "3.1", "B", phase, move, loss.san, before, after, fall, is_sudden, fall_move, "?")
    assert loss.san in KNIGHTS[0 if colour == "White" else 1::2]


def test_games_that_did_not_turn():
    assert loss_of(game([-0.6, -0.9])).phase == "from its first score on"
    assert loss_of(game([0.1, -0.9, -0.2])).phase == "never"
    tally = losses.losses_of(pgn.read_games(game([None, None])), "A", losses.Criteria())
    assert tally == ([], 1, 1, 1)


def test_phase_is_told_by_the_material():
    position = losses.rules.Position.from_fen
    criteria = losses.Criteria()
    assert losses.phase_of(position("r2qk3/8/8/8/8/8/8/3QK3 w - - 0 1"), 5, criteria) == "ending", "23"
    assert losses.phase_of(position("r2qk3/8/8/8/8/8/8/3QKB2 w - - 0 1"), 5, criteria) == "ending", "26"
    assert losses.phase_of(position("r2qk3/8/8/8/8/8/8/R2QK3 w - - 0 1"), 5, criteria) == "opening", "28"
    assert losses.phase_of(position("r2qk3/8/8/8/8/8/8/R2QK3 w - - 0 1"), 13, criteria) == "middle game"
    assert losses.phase_of(position("rnb1k3/8/8/8/8/8/8/RNB1K1B1 w - - 0 1"), 30, criteria) == "ending", "25"


def test_moves_are_numbered_from_the_position():
    assert losses.move_number("8/8/8/8/8/8/8/8 b - - 0 7", 0) == 7
    assert losses.move_number("8/8/8/8/8/8/8/8 b - - 0 7", 1) == 8
    assert losses.move_number(losses.rules.START, 2) == 2


def run(*words):
    return subprocess.run([sys.executable, ROOT / "tools/lost_games", *map(str, words)], capture_output=True, text=True)


def test_table_and_examples(tmp_path):
    text = (game([0.2, 0.1, -0.9, -4]) + game([0.1] * 13 + [-0.6, -1.2, -1.3], "Black") + game([-0.7]) + game([0.0])
            + game([None]) + game([0.0], result="1-0") + game([0.1] * 13 + [-0.8, -1.9]))
    (tmp_path / "games.pgn").write_text(text)
    done = run(tmp_path / "games.pgn", "--player", "A")
    assert done.stdout == """A lost 6 of 7 games. A game turned at its last score of -0.50 or more; a fall is sudden from 0.80 on in one move.

| phase | games | mean fall | sudden | slow |
|---|---|---|---|---|
| opening | 1 | 3.10 | 1 | 0 |
| middle game | 2 | 0.90 | 1 | 1 |
| ending | 0 | | | |
| all that turned | 3 | 1.63 | 2 | 1 |
| below -0.50 from the first score on | 1 | | | |
| never below -0.50 | 1 | | | |
| without scores | 1 | | | |

- opening, sudden: game 1 (round 3.1, against B), at move 2 Ng1 +0.10, then -0.90; largest fall 3.10, at move 4
- middle game, sudden: game 7 (round 3.1, against B), at move 13 Nf3 +0.10, then -0.80; largest fall 1.10, at move 15
- middle game, slow: game 2 (round 3.1, against B), at move 13 Nf6 +0.10, then -0.60; largest fall 0.70, at move 14
- never: game 4 (round 3.1, against B), ?
""", done.stdout + done.stderr
    strict = run(tmp_path / "games.pgn", "--player", "A", "--limit", "-2", "--hopeless", "-5", "--examples", "0")
    assert "| opening | 1 | 3.10 | 1 | 0 |" in strict.stdout and strict.stdout.count("\n- ") == 0


@pytest.mark.parametrize("words, complaint", [
    (["/nowhere", "--player", "A"], "No such file"),
    (["GAMES", "--player", "X"], '"X" is none of the players: A, B'),
    (["GAMES", "--player", ""], '"" is more than one of the players: A, B'),
    (["GAMES", "--player", "A", "--limit", "x"], 'takes pawns, as -0.5, not "x"'),
    (["GAMES", "--player", "A", "--limit", "-4"], "--hopeless has to be below --limit"),
    (["BAD", "--player", "A"], "game 2: e5 is no legal move"),
    (["EMPTY", "--player", "A"], "EMPTY: no games in PGN"),
    (["BINARY", "--player", "A"], "BINARY: no games in PGN"),
    (["GAMES"], "--player"),
])
def test_bad_words_are_refused(tmp_path, words, complaint):
    (tmp_path / "GAMES").write_text(game([0.2, -0.9]))
    (tmp_path / "EMPTY").write_text("")
    (tmp_path / "BINARY").write_bytes(b"\x7fELF\x80\xff\0[Event 1]\n[x]\n")
    (tmp_path / "BAD").write_text(game([0.2, -0.9]) + game([0.1, 0.2, 0.3, -0.9]).replace("Ng8", "e5").replace("Ng1", "e5"))
    done = run(*[tmp_path / word if word.isupper() and len(word) > 1 else word for word in words])
    assert done.returncode != 0 and done.stdout == "" and complaint in done.stderr, done.stderr


def test_games_of_selfplay_are_read(tmp_path):
    subprocess.run([os.environ["VORKA_SELFPLAY"], "--openings", ROOT / "tests/data/openings.epd", "--first", "nodes=1 name=weak",
                    "--nodes", "2000", "--games", "4", "--pgn", tmp_path / "games.pgn"], check=True, capture_output=True)
    games = losses.read_file(tmp_path / "games.pgn")
    assert len(games) == 4 and all(move.score is not None for game in games for move in game.moves)
    done = run(tmp_path / "games.pgn", "--player", "weak")
    assert "weak lost 4 of 4 games." in done.stdout and "| all that turned | " in done.stdout, done.stdout
