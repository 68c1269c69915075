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


def test_a_search_chosen_while_one_runs_is_the_next_one(uci):
    classic = nodes_after(uci, "setoption name Search value Classic")
    nodes_after(uci, "setoption name Search value Tournament")
    for go in ("go infinite", "go ponder wtime 60000 btime 60000"):
        uci.send("ucinewgame", SHARP, go, "setoption name Search value Classic", "isready")
        uci.expect("readyok")
        uci.send("stop")
        uci.expect(BESTMOVE)
        assert nodes_after(uci) == classic
        uci.send("setoption name Search value Tournament")


def test_clear_hash_makes_a_search_forget_what_it_knows_of_moves(uci):
    uci.send("setoption name Search value Tournament")
    told, _ = search(uci, "ucinewgame", SHARP, "go depth 8")
    for _ in range(2):
        again, _ = search(uci, "setoption name Clear Hash", SHARP, "go depth 8")
        assert number(again[-1], "nodes") == number(told[-1], "nodes")


def test_the_only_move_takes_no_time_of_a_game(uci):
    forced = "position fen r3k2r/8/8/8/8/2n5/1q6/K7 w - - 0 1"
    told, best = search(uci, "setoption name Search value Tournament", forced, "go wtime 600000 btime 600000")
    assert best[1] == "a1b2" and max(number(line, "depth") for line in told if " depth " in line) == 6
    told, _ = search(uci, forced, "go depth 9")
    assert max(number(line, "depth") for line in told if " depth " in line) == 9


def test_mates_and_weak_play_are_left_to_the_classic_search(uci):
    """They have the same nodes whatever search is chosen."""
    nodes = []
    for kind in ("Classic", "Tournament"):
        uci.send(f"setoption name Search value {kind}")
        told, _ = search(uci, "ucinewgame", f"position fen {MATE_IN_TWO}", "go mate 2")
        nodes.append(number(told[-1], "nodes"))
    assert nodes[0] == nodes[1]


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
