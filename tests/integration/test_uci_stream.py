"""Ten thousand positions of random games, one after the other through one process: each is answered with a legal move,
and `stop` is heard wherever it comes."""

import os
import random

from engine import UCI_PROGRAM
from rules import Position, coordinate

POSITIONS = int(os.environ.get("VORKA_STREAM", "10000"))
SEED = 20


def test_every_position_of_random_games_is_answered(start):
    engine = start(program=UCI_PROGRAM)
    process = engine.process
    chance = random.Random(SEED)
    seen = 0
    while seen < POSITIONS:
        position = Position.from_fen()
        moves = []
        engine.send("ucinewgame")
        while seen < POSITIONS and len(moves) < 200:
            legal = position.legal_moves()
            line = "position startpos moves " + " ".join(moves)
            if chance.random() < 0.3:
                line = "position fen " + position.fen()
            if chance.random() < 0.1:
                engine.send(line, chance.choice(("go infinite", "go ponder wtime 100 btime 100")), "isready", "stop")
            else:
                engine.send(line, chance.choice(("go nodes 150", "go depth 1", "go movetime 1", "go wtime 20 btime 20",
                                                 "go nodes 60 wtime 1000 btime 1000")))
            told, found = engine.hear(r"^bestmove (\S+)")
            engine.forget()
            assert "info string" not in told, f"seed {SEED}, {position.fen()}: {told}"
            seen += 1
            if not legal:
                assert found[1] == "0000", position.fen()
                break
            assert found[1] in [coordinate(move) for move in legal], f"seed {SEED}: {found[1]} in {position.fen()}"
            move = chance.choice(legal)
            moves.append(coordinate(move))
            position = position.make(move)
    assert process.poll() is None
