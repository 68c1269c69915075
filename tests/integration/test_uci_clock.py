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
        self.own_time = 0  # milliseconds of the last search, as the engine has measured them
        self.ask("isready", "readyok")

    def ask(self, line, answer):
        self.process.stdin.write(line + "\n")
        self.process.stdin.flush()
        for said in self.process.stdout:
            if said.startswith(answer):
                return said.split()
            if said.startswith("info nodes"):
                self.own_time = int(said.split()[-1])
        raise AssertionError("the program has ended")

    def close(self):
        self.process.stdin.write("quit\n")
        self.process.stdin.close()
        assert self.process.wait(10) == 0


def play(players, seed):
    """One game from a few random moves. What is left on both clocks, the half moves, and if a flag fell, each move of
    that side, the last one first: what was left, what it took, and in brackets what the engine measured."""
    chance = random.Random(seed)
    position = Position.from_fen()
    keys, moves, used = [], [], []
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
            spent = time.monotonic() - start
            used.append(f"{1000 * clocks[side]:.0f}: {1000 * spent:.0f} ({players[side].own_time})")
            clocks[side] -= spent
            if clocks[side] < 0:
                return clocks, len(moves), used[::-2]
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
        clocks, length, fall = play(players, seed)
        print(f"game {seed}: {length} half moves, left {clocks[0]:.3f} and {clocks[1]:.3f}", flush=True)
        if fall:
            fallen.append(f"game {seed}, half move {length}: " + ", ".join(fall))
            print(fallen[-1], flush=True)
    for player in players:
        player.close()
    assert not fallen
