"""vorka-uci with the tournament search: it is chosen by an option, and so are its numbers."""

from uci_dialogue import BESTMOVE, MATE_IN_TWO, number, ready, search

SHARP = "position fen r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1"


def nodes_after(engine, *lines, position=SHARP, depth=6):
    """Nodes of a search in a new game after these lines, none of which is answered."""
    engine.send(*lines)
    assert ready(engine) == ""
    told, _ = search(engine, "ucinewgame", position, f"go depth {depth}")
    return number(told[-1], "nodes")


def test_the_search_can_be_chosen_and_chosen_back(uci):
    classic = nodes_after(uci, "setoption name Search value Classic")
    tournament = nodes_after(uci, "setoption name Search value Tournament")
    assert tournament != classic
    assert nodes_after(uci, "setoption name search value classic") == classic
    assert nodes_after(uci, "setoption name Search value Tournament") == tournament


def test_numbers_of_the_tournament_search_change_that_search_alone(uci):
    classic = nodes_after(uci, "setoption name Search value Classic")
    tournament = nodes_after(uci, "setoption name Search value Tournament")
    assert nodes_after(uci, "setoption name late_move_reduction value 0") != tournament
    assert nodes_after(uci, "setoption name Search value Classic") == classic
    assert nodes_after(uci, "setoption name Search value Tournament", "setoption name late_move_reduction value 1") == tournament


def test_the_tournament_search_tells_mates(uci):
    uci.send("setoption name Search value Tournament")
    told, _ = search(uci, "position fen " + MATE_IN_TWO, "go depth 14")
    assert " score mate 2 " in [line for line in told if " pv " in line][-1]


def test_several_lines_of_the_tournament_search_are_told_best_first(uci):
    uci.send("setoption name Search value Tournament", "setoption name MultiPV value 3")
    told, best = search(uci, SHARP, "go depth 7")
    known = [line for line in told if " depth 7 " in line and " pv " in line and "bound" not in line]
    last = [[line for line in known if number(line, "multipv") == place][-1] for place in (1, 2, 3)]
    assert last[0].split(" pv ")[1].split()[0] == best[1]
    scores = [number(line, "score cp") for line in last]
    assert scores == sorted(scores, reverse=True)
    assert len({line.split(" pv ")[1].split()[0] for line in last}) == 3


def test_a_tournament_file_is_read_and_put_back(uci):
    usual = nodes_after(uci, "setoption name Search value Tournament")
    (uci.folder / "good.txt").write_text("# fewer reductions\n\nlate_move_reduction = 0\nfutility = 0\n")
    changed = nodes_after(uci, "setoption name Tournament File value good.txt")
    assert changed != usual
    (uci.folder / "bad.txt").write_text("futility = 1\nlate_move_reduction = 2\n")
    (uci.folder / "old.txt").write_text("speed = 1\n")
    for bad, complaint in (
        ("bad.txt", r"line 2: late_move_reduction takes a number from 0 to 1"),
        ("old.txt", r"line 1: there is no setting speed"),
        ("none.txt", r"could not open none\.txt"),
        (".", r"could not open \."),
    ):
        uci.send(f"setoption name Tournament File value {bad}")
        uci.expect(f"^info string no settings were read, the last ones stay: {complaint}\n")
    assert nodes_after(uci) == changed, "a file that was refused has changed nothing"
    assert nodes_after(uci, "setoption name Tournament File value <empty>") == usual


def test_the_tournament_search_keeps_to_nodes_and_stops(uci):
    uci.send("setoption name Search value Tournament")
    for nodes in (1, 100, 12345):
        told, _ = search(uci, "ucinewgame", SHARP, f"go nodes {nodes}")
        assert number(told[-1], "nodes") == nodes
    uci.send("go infinite", "stop")
    uci.expect(BESTMOVE)
