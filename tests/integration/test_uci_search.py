"""vorka-uci searches: every word of `go`, what it hears and tells meanwhile, and positions that interfaces send."""

import random
import re

import pytest
import rules
from uci_dialogue import BESTMOVE, MATED, MATE_IN_TWO, STALEMATE, START, number, ready, search

SEARCHES = ["Classic", "Tournament"]


# --- go ---

@pytest.mark.parametrize("words", ["depth 3", "nodes 5000", "movetime 50", "wtime 1000 btime 1000",
                                   "wtime 1000 btime 1000 winc 10 binc 10", "wtime 1000 btime 1000 movestogo 5",
                                   "wtime 1 btime 1", "wtime -5 btime 3", "mate 1 depth 2", "depth 2 unknown 5 words",
                                   "wtime x depth 2", "btime 1000", "wtime 1000.5 btime 1000.5", "mate 1",
                                   "mate 2", "nodes 99999999999999999999999 depth 3", "searchmoves e2e4 d2d4 depth 3"])
def test_each_way_to_limit_a_search_ends_with_a_move(uci, words):
    position = START
    _, best = search(uci, "position startpos", "go " + words)
    move = position.find(best[1])
    if best[2]:
        position.make(move).find(best[2])


# Their first iteration takes a minute and more, or half a second with the tournament search.
MANY_QUEENS = ["qqqqkqqq/qqqqqqqq/8/8/8/8/QQQQQQQQ/QQQQKQQQ w - - 0 1",
               "q2k2q1/2nqn2b/1n1P1n1b/2rnr2Q/1NQ1QN1Q/3Q3B/2RQR2B/Q2K2Q1 w - - 0 1"]


@pytest.mark.parametrize("fen", MANY_QUEENS)
@pytest.mark.parametrize("kind", SEARCHES)
def test_limits_of_time_hold_in_the_first_iteration_too(uci, kind, fen):
    position = rules.Position.from_fen(fen)
    uci.send(f"setoption name Search value {kind}")
    for lines in (1, 8):
        uci.send(f"setoption name MultiPV value {lines}")
        for limit in ("movetime 20", "wtime 100", "wtime 200"):
            told, best = search(uci, "ucinewgame", f"position fen {fen}", f"go {limit}")
            position.find(best[1])
            assert number(told[-1], "time") < 2000, f"{limit}, {lines} lines"


def test_nodes_are_exact(uci):
    lines, _ = search(uci, "go nodes 12345")
    assert number(lines[-1], "nodes") == 12345


def test_depth_is_the_last_iteration(uci):
    lines, _ = search(uci, "go depth 4")
    assert max(number(line, "depth") for line in lines if " depth " in line) == 4


def test_a_mate_is_found_and_ends_the_search(uci):
    lines, best = search(uci, f"position fen {MATE_IN_TWO}", "go mate 2")
    assert " score mate 2 " in lines[-2]
    lines, best = search(uci, "position fen 7r/8/8/8/8/1k6/8/K7 w - - 0 1", "go depth 3")
    assert " score mate -1 " in lines[-2] and best[1] == "a1b1"


def test_a_mate_ends_no_search_that_is_not_after_one(uci):
    lines, best = search(uci, "position fen 6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", "go depth 6")
    assert best[1] == "a1a8" and any(line.startswith("info depth 6 ") for line in lines)


def test_search_moves_are_the_only_ones(uci):
    for move in ("a2a3", "h2h4", "b1c3"):
        assert search(uci, "position startpos", f"go depth 3 searchmoves {move}")[1][1] == move
    assert search(uci, "go depth 3 searchmoves a2a3 h2h3")[1][1] in ("a2a3", "h2h3")
    assert search(uci, "go depth 3 searchmoves e7e5")[1][1], "what can't be played binds nobody"


@pytest.mark.parametrize("fen, score", [(STALEMATE, "cp 0"), (MATED, "mate 0")])
def test_the_end_of_a_game_has_no_move(uci, fen, score):
    lines, best = search(uci, f"position fen {fen}", "go depth 5")
    assert lines == [f"info depth 0 score {score}"] and best[1] == "0000"
    uci.send("go infinite")
    uci.expect("^info depth 0")
    assert "bestmove" not in ready(uci)
    uci.send("stop")
    uci.expect("^bestmove 0000\n")


def test_a_draw_by_rule_is_searched_all_the_same(uci):
    shuffle = " ".join(["g1f3 g8f6 f3g1 f6g8"] * 3)
    assert search(uci, f"position startpos moves {shuffle}", "go depth 3")[1][1] != "0000"
    assert search(uci, "position fen 4k3/8/8/8/8/8/8/4K2N w - - 0 1", "go depth 3")[1][1] != "0000"
    assert search(uci, "position fen 4k3/8/8/8/8/8/8/4K2R w - - 100 80", "go depth 3")[1][1] != "0000"


# --- Inside a search ---

def test_a_search_without_an_end_ends_with_stop(uci):
    for words in ("infinite", "", "ponder", "ponder wtime 100 btime 100"):
        uci.send("position startpos", "go " + words)
        uci.expect("^info depth 4 ")
        assert "bestmove" not in ready(uci)
        uci.send("stop")
        uci.expect(BESTMOVE)
        assert ready(uci) == "", "one answer only"


def test_a_finished_infinite_search_waits_for_stop(uci):
    uci.send(f"position fen {MATE_IN_TWO}", "go infinite")
    uci.expect("^info depth 80 ")
    assert "bestmove" not in ready(uci)
    uci.ask("stop", BESTMOVE)


def test_a_mate_that_is_found_ends_no_infinite_search(uci):
    for words in ("mate 2 infinite", "mate 2 ponder"):
        uci.send(f"position fen {MATE_IN_TWO}", "go " + words)
        uci.expect("^info depth 5 .* mate 2 ")
        assert "bestmove" not in ready(uci)
        uci.ask("stop", BESTMOVE)


def test_ponderhit_puts_the_search_on_the_clock(uci):
    uci.send("position startpos moves e2e4", "go ponder wtime 2000 btime 2000")
    uci.expect("^info depth 4 ")
    assert "bestmove" not in ready(uci)
    uci.ask("ponderhit", BESTMOVE)


def test_ponderhit_is_for_the_search_that_waits(uci):
    uci.send("position startpos", "go nodes 300000", "position startpos moves e2e4", "go ponder wtime 2000 btime 2000",
             "ponderhit")
    START.find(uci.hear(BESTMOVE)[1][1])
    START.make(START.find("e2e4")).find(uci.hear(BESTMOVE)[1][1])


def test_ponderhit_after_the_last_iteration_answers(uci):
    uci.send(f"position fen {MATE_IN_TWO}", "go ponder wtime 2000 btime 2000")
    uci.expect("^info depth 80 ")
    uci.ask("ponderhit", BESTMOVE)


def test_words_that_have_no_search_to_act_on_do_nothing(uci):
    uci.send("stop", "ponderhit", "stop")
    assert ready(uci) == ""
    uci.send("go infinite")
    uci.send("ponderhit")
    assert "bestmove" not in ready(uci)
    uci.ask("stop", BESTMOVE)


def test_what_cannot_be_done_inside_a_search_waits_for_its_end(uci):
    uci.send("position startpos", "go nodes 1000000", f"position fen {MATE_IN_TWO}", "setoption name Hash value 1", "go depth 12")
    uci.expect("^info depth 4 ")
    assert "bestmove" not in ready(uci)
    assert " score mate " not in uci.hear(BESTMOVE)[0]
    uci.expect(" score mate 2 ")
    uci.expect(BESTMOVE)


def test_stop_ends_the_searches_that_wait_too(uci):
    uci.send("go infinite", "position startpos moves e2e4", "go infinite", "go movetime 1000000", "stop", "isready", "go depth 2")
    moves = [uci.expect(BESTMOVE)[1] for _ in range(4)]
    START.find(moves[0])
    for move in moves[1:]:
        START.make(START.find("e2e4")).find(move)
    assert ready(uci) == "", "one move for each search"


def test_stop_at_random_moments_is_answered_with_one_legal_move(uci):
    chance = random.Random(7)
    position = START
    for _ in range(60):
        uci.send(f"position fen {position.fen()}", chance.choice(["go infinite", "go ponder wtime 500 btime 500"]))
        if chance.random() < 0.8:
            uci.expect(f"^info depth {chance.randint(1, 5)} ")
        match = uci.ask("stop", BESTMOVE)
        move = position.find(match[1])
        position = position.make(move)
        if position.result():
            position = START
    assert ready(uci) == ""


# --- What it tells ---

def moves_of(line):
    return line.split(" pv ")[1].split()


def agrees(best, shown):
    """Whether a best move begins the last line whose score is known, or the very last one, of a better move whose score
    is not known yet. The move to ponder on follows it there, unless the line has no other."""
    known = [line for line in shown if "bound" not in line]
    lines = [moves_of(line) for line in (*known[-1:], shown[-1])]
    return any(line[0] == best[1] and (len(line) == 1 or line[1] == best[2]) for line in lines)


LAST_PLY = 80  # no search goes further

# What an interface may ask about: quiet and sharp, promotions, a draw by checks without end, a rook ending whose kings
# go to and fro, a forced mate, and an ending that is known.
LINES = [rules.START, "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
         "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",
         "6k1/5ppp/8/8/8/1r6/2q5/K3Q3 w - - 0 1", "8/8/4k3/3r4/8/4K3/4R3/8 w - - 90 80", MATE_IN_TWO,
         "4k3/8/4K3/4P3/8/8/8/8 w - - 0 1"]


@pytest.mark.parametrize("kind", SEARCHES)
@pytest.mark.parametrize("fen", LINES)
def test_each_line_that_it_shows_can_be_played_and_ends_with_the_game(uci, fen, kind):
    """Twice, the second time on tables that are full of what the first search has left in them."""
    uci.send(f"setoption name Search value {kind}")
    for _ in range(2):
        lines, best = search(uci, f"position fen {fen}", "go movetime 500")
        shown = [line for line in lines if " pv " in line]
        assert shown and agrees(best, shown)
        for line in shown:
            position, keys = rules.Position.from_fen(fen), []
            for text in moves_of(line):
                # The engine tells positions apart by an en passant square that nobody can use, too.
                key = (position.key(), position.en_passant)
                assert key not in keys, f"goes on after a repetition: {line}"
                assert not keys or position.result() is None, f"goes on after the end: {line}"
                keys.append(key)
                position = position.make(position.find(text))
            assert len(keys) <= LAST_PLY


@pytest.mark.parametrize("kind", SEARCHES)
def test_the_move_that_is_played_was_the_last_one_shown(uci, kind):
    """Wherever the search ends: also while a better move is being confirmed."""
    uci.send(f"setoption name Search value {kind}")
    for nodes in range(300, 40000, 997):
        lines, best = search(uci, "ucinewgame", "position startpos moves e2e4 e7e5 g1f3 b8c6", f"go nodes {nodes}")
        assert agrees(best, [line for line in lines if " pv " in line]), nodes


def test_lines_have_all_their_words(uci):
    lines, _ = search(uci, "position startpos", "go movetime 600")
    for line in lines:
        if " score " in line:
            assert re.fullmatch(r"info depth \d+ seldepth \d+ multipv 1 score cp -?\d+( lowerbound| upperbound)? nodes \d+ "
                                r"nps \d+ hashfull \d+ tbhits \d+ time \d+ pv( [a-h][1-8][a-h][1-8][nbrq]?)+", line)
            assert number(line, "seldepth") >= number(line, "depth")
        else:
            assert re.fullmatch(r"info nodes \d+ nps \d+ hashfull \d+ tbhits \d+ time \d+", line)
    assert any(" lowerbound " in line for line in lines) and any(" upperbound " in line for line in lines)
    assert number(lines[-1], "hashfull") > 0


def test_the_move_in_work_is_told_after_three_seconds(uci):
    uci.send("position startpos", "go infinite")
    found = uci.expect(r"^info depth \d+ currmove ([a-h][1-8][a-h][1-8]) currmovenumber (\d+)\n")
    START.find(found[1])
    assert 1 <= int(found[2]) <= 20
    before = found.string[:found.start()]
    assert int(re.findall(r" time (\d+)", before)[-1]) > 1000
    uci.ask("stop", BESTMOVE)


def test_endings_that_are_known_are_counted_and_told_as_won(uci):
    lines, _ = search(uci, "position fen 4k3/8/4K3/4P3/8/8/8/8 w - - 0 1", "go depth 6")
    assert number(lines[-1], "tbhits") > 0
    assert 8000 < number(lines[-2], "score cp") < 10000


def test_debug_tells_what_the_log_says(uci):
    uci.send("debug on", "isready")
    uci.expect_text("info string Vorka received input: isready\nreadyok\n")
    uci.send("debug off")
    ready(uci)
    assert ready(uci) == ""


# --- Positions ---

def test_a_position_that_is_none_has_no_move(uci):
    uci.send(f"position fen {MATE_IN_TWO}", "position fen nonsense")
    uci.expect("^info string there is no such position")
    lines, best = search(uci, "go depth 2")
    assert lines == [] and best[1] == "0000"
    uci.send("go infinite")
    assert ready(uci) == ""
    assert uci.ask("stop", BESTMOVE)[1] == "0000"
    assert " score mate 2 " in search(uci, f"position fen {MATE_IN_TWO}", "go mate 2")[0][-2]


def test_moves_end_before_one_that_cannot_be_played(uci):
    uci.send("position startpos moves e2e4 e2e4 e7e5")
    assert uci.expect("^info string this move can't be played, nor those after it: (.*)\n")[1] == "e2e4"
    _, best = search(uci, "go depth 2")
    START.make(START.find("e2e4")).find(best[1])


def test_the_same_search_after_a_new_game(uci):
    def told():
        lines, best = search(uci, "ucinewgame", "position startpos", "go depth 5")
        return [re.sub(r" (?:nps|time) \d+", "", line) for line in lines if "bound" not in line], best[0]
    assert told() == told()
