"""The referee of these tests has to be right itself."""

import pathlib

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


@pytest.mark.parametrize("fen, moves", [
    (rules.START, 3), ("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", 2),
    ("r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1", 2),
    ("8/8/8/8/3k4/2N5/8/K1N1N1r1 w - - 0 1", 2),
])
def test_moves_are_found_by_both_notations(fen, moves):
    """Each legal move by its own two names, and no name stands for two of them."""
    positions = [rules.Position.from_fen(fen)]
    for _ in range(moves):
        position = positions[-1]
        legal = position.legal_moves()
        names = [name for move in legal for name in (position.san(move), rules.coordinate(move))]
        assert len(set(names)) == len(names)
        for move in legal:
            assert position.find(position.san(move)) == position.find(rules.coordinate(move)) == move
        positions.append(position.make(legal[len(legal) // 2]))


@pytest.mark.parametrize("fen, text", [
    ("4k3/8/8/8/4r3/8/4N3/4K3 w - - 0 1", "e2c3"), ("4k3/8/8/8/4r3/8/4N3/4K3 w - - 0 1", "Nc3"),
    ("4k3/8/8/8/8/8/8/R3K2r w Q - 0 1", "O-O-O"), (rules.START, "e5"), (rules.START, "nonsense"), (rules.START, ""),
])
def test_what_is_no_move_is_not_found(fen, text):
    with pytest.raises(ValueError):
        rules.Position.from_fen(fen).find(text)


def test_en_passant_counts_for_repetitions_where_it_can_be_taken():
    """White takes on d6 with the pawn on e5, unless that pawn is pinned to its king."""
    for placement, differs in (("4k3/8/8/3pP3/8/8/8/4K3", True), ("4k3/8/8/3p1P2/8/8/8/4K3", False),
                               ("8/8/8/r2pP2K/8/8/8/4k3", False)):
        with_square, without = (rules.Position.from_fen(f"{placement} w - {square} 0 1") for square in ("d6", "-"))
        assert (with_square.key() != without.key()) == differs


def test_pgn_with_comments_and_marks():
    game, = rules.read_pgn('[Event "x"]\n[Result "0-1"]\n\n1. f3 {+0.1/3 0.2} e5 2. g4 $4 Qh4#\n{Black mates} 0-1\n')
    assert game == ({"Event": "x", "Result": "0-1"}, ["f3", "e5", "g4", "Qh4#"], "0-1", "Black mates")


def test_no_tool_stands_on_the_tests():
    """They share the referee, which lies with what scripts and tools have in common."""
    root = pathlib.Path(__file__).resolve().parents[2]
    found = [path for folder in ("tools", "scripts") for path in (root / folder).rglob("*") if path.is_file()]
    assert len(found) > 100
    for path in found:
        paths = [line for line in path.read_text("utf-8", "replace").splitlines() if "sys.path" in line]
        assert not any("tests" in line for line in paths), path
