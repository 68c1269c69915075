"""Fast games of vorka-uci against itself on the clock of a referee: no flag falls.

VORKA_FAST_GAMES says how many games are played (4 if it says nothing), VORKA_FAST_CONTROL their base and increment in
seconds ("1+0.01").
"""

import os
import random
import subprocess
import time

import pytest
from engine import UCI_PROGRAM
from rules import Position, coordinate

GAMES = int(os.environ.get("VORKA_FAST_GAMES", "4"))
BASE, INCREMENT = (float(part) for part in os.environ.get("VORKA_FAST_CONTROL", "1+0.01").split("+"))
LONGEST_GAME = 300  # half moves
SANITIZED = os.environ.get("VORKA_SANITIZED") == "1"


class Player:
    def __init__(self, folder):
        self.process = subprocess.Popen([UCI_PROGRAM], cwd=folder, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        text=True, bufsize=1)
        self.ask("isready", "readyok")

    def ask(self, line, answer):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        for said in self.process.stdout:
            if said.startswith(answer):
                return said.split()
        raise AssertionError("the program has ended")

    def close(self):
        self.process.stdin.write("quit\n")
        self.process.stdin.close()
        assert self.process.wait(10) == 0


def play(players, seed):
    """One game from a few random moves. What is left on both clocks, the half moves, and whose flag fell, if one did."""
    chance = random.Random(seed)
    position = Position.from_fen()
    keys, moves = [], []
    clocks = [BASE, BASE]
    for player in players:
        player.process.stdin.write("ucinewgame\n")
        player.ask("isready", "readyok")
    while len(moves) < LONGEST_GAME:
        if position.result(keys):
            break
        if len(moves) < 6:
            move = chance.choice(position.legal_moves())
        else:
            side = len(moves) % 2
            white, black = (max(int(1000 * clock), 1) for clock in clocks)
            start = time.monotonic()
            players[side].process.stdin.write(f"position startpos moves {' '.join(moves)}\n")
            answer = players[side].ask(f"go wtime {white} btime {black} winc {int(1000 * INCREMENT)} "
                                       f"binc {int(1000 * INCREMENT)}", "bestmove")
            clocks[side] -= time.monotonic() - start
            if clocks[side] < 0:
                return clocks, len(moves), side
            clocks[side] += INCREMENT
            move = position.find(answer[1])
        keys.append(position.key())
        position = position.make(move)
        moves.append(coordinate(move))
    return clocks, len(moves), None


@pytest.mark.skipif(SANITIZED, reason="the sanitizers need more time than there is")
def test_no_flag_falls(tmp_path):
    players = [Player(tmp_path), Player(tmp_path)]
    fallen = []
    for seed in range(GAMES):
        clocks, length, side = play(players, seed)
        print(f"game {seed}: {length} half moves, left {clocks[0]:.3f} and {clocks[1]:.3f}", flush=True)
        if side is not None:
            fallen.append(f"game {seed}, half move {length}: {1000 * -clocks[side]:.0f} ms too late")
    for player in players:
        player.close()
    assert not fallen
