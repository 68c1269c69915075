"""The referee of these tests has to be right itself."""

import pytest
import rules


def perft(position, depth):
    if depth == 0:
        return 1
    return sum(perft(position.make(move), depth - 1) for move in position.legal_moves())


@pytest.mark.parametrize("fen, depth, leaves", [
    (rules.START, 3, 8902),
    ("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", 2, 2039),
    ("8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", 3, 2812),
    ("r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1", 2, 264),
])
def test_published_counts(fen, depth, leaves):
    assert perft(rules.Position.from_fen(fen), depth) == leaves


def test_fen_goes_in_and_out():
    for fen in (rules.START, "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1"):
        assert rules.Position.from_fen(fen).fen() == fen


@pytest.mark.parametrize("fen, text, move", [
    ("4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1", "O-O-O", "e1c1"),
    ("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "exd6", "e5d6"),
    ("7k/4P3/8/8/8/8/8/K7 w - - 0 1", "e8=R+", "e7e8r"),
    ("4k3/8/8/8/8/5N2/8/1N2K3 w - - 0 1", "Nbd2", "b1d2"),
])
def test_notation(fen, text, move):
    position = rules.Position.from_fen(fen)
    assert rules.coordinate(position.find(text)) == move
    assert position.san(position.find(move)) == text


def test_pgn_with_comments_and_marks():
    game, = rules.read_pgn('[Event "x"]\n[Result "0-1"]\n\n1. f3 {+0.1/3 0.2} e5 2. g4 $4 Qh4#\n{Black mates} 0-1\n')
    assert game == ({"Event": "x", "Result": "0-1"}, ["f3", "e5", "g4", "Qh4#"], "0-1", "Black mates")
