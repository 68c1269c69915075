"""The UCI protocol, spoken over pipes: every word of it, and positions that interfaces send."""

import os
import random
import re
import signal
import subprocess
from pathlib import Path

import pytest
import rules
from engine import UCI_PROGRAM

ROOT = Path(__file__).resolve().parents[2]
MATE_IN_TWO = "7k/8/8/8/8/8/R7/1R4K1 w - - 0 1"
STALEMATE = "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1"
MATED = "7k/6Q1/6K1/8/8/8/8/8 b - - 0 1"
START = rules.Position.from_fen(rules.START)
BESTMOVE = r"^bestmove (\w+)(?: ponder (\w+))?\n"


def search(engine, *lines):
    """Sends the lines, the last one a `go` that ends by itself, and returns the info lines and the match of bestmove."""
    engine.send(*lines)
    told, match = engine.hear(BESTMOVE)
    return [line for line in told.splitlines() if line.startswith("info ")], match


def ready(engine):
    """Returns what came since the last match, when all that was sent before is dealt with."""
    engine.send("isready")
    return engine.hear("^readyok\n")[0]


def number(line, word):
    return int(re.search(rf" {word} (-?\d+)", line)[1])


# --- The handshake ---

def test_it_says_who_it_is_and_what_can_be_set(start):
    engine = start(program=UCI_PROGRAM)
    said = ready(engine)
    assert said == "", "nothing before it is asked"
    engine.send("uci")
    lines = engine.hear("^uciok\n")[0].splitlines()
    assert re.fullmatch(r"id name Vorka v\S+", lines[0])
    assert lines[1] == "id author the Vorka developers"
    assert all(line.startswith("option name ") for line in lines[2:])


def test_unknown_words_are_skipped(uci):
    uci.send("", "hello", "xboard", "protover 2", "\t  ", "joho isready")
    uci.expect("^readyok\n")
    assert ready(uci) == ""


def test_the_end_of_the_input_ends_it(uci):
    uci.finish()


def test_the_end_of_the_input_ends_it_inside_a_search(uci):
    uci.send("go infinite")
    uci.expect("^info depth 2 ")
    assert "bestmove" not in uci.finish()


def test_a_search_with_an_end_is_answered_after_the_end_of_the_input(uci):
    uci.send("position startpos", "go depth 5", "position fen " + MATED, "go depth 1")
    told = uci.finish()
    assert re.findall(r"^bestmove (\w+)", told, re.M)[1:] == ["0000"]
    assert " depth 5 " in told


def test_an_infinite_search_that_waits_at_the_end_of_the_input_ends(uci):
    uci.send("go depth 5", "go infinite")
    assert len(re.findall("^bestmove", uci.finish(), re.M)) == 1


def test_quit_ends_it_inside_a_search_with_an_end(uci):
    uci.send("go depth 40", "quit")
    uci.wait()
    assert "bestmove" not in uci.output


@pytest.mark.parametrize("before", [[], ["go infinite"], ["go movetime 1000000"], ["go ponder movetime 1000"]])
def test_hanging_up_ends_it_in_order(uci, before):
    uci.send(*before)
    uci.ask_text("isready", "readyok\n")
    uci.process.send_signal(signal.SIGHUP)
    uci.wait(status=0)


def test_a_line_that_is_too_long_is_skipped(uci):
    skipped = f"info string skipped a line longer than 1048576 bytes: {'x' * 60}\n"
    uci.ask_text("x" * ((1 << 20) + 1), skipped)
    uci.send("go infinite")
    uci.ask_text("x" * (3 << 20), skipped)
    uci.ask_text("isready", "readyok\n")
    uci.ask("stop", r"bestmove \w+")


def test_quit_ends_it(uci):
    uci.send("quit")
    uci.wait()


def test_quit_ends_it_inside_a_search(uci):
    uci.send("position startpos", "go infinite")
    uci.expect("^info depth 3 ")
    uci.send("quit")
    uci.wait()


def test_it_writes_no_file_unless_it_is_asked_to(uci):
    search(uci, "go depth 2")
    uci.finish()
    assert list(uci.folder.iterdir()) == []


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
    uci.send("position startpos", "go infinite", f"position fen {MATE_IN_TWO}", "setoption name Hash value 1", "go depth 4")
    uci.expect("^info depth 4 ")
    assert "bestmove" not in ready(uci)
    uci.ask("stop", BESTMOVE)
    uci.expect(" score mate 2 ")
    uci.expect(BESTMOVE)


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


@pytest.mark.parametrize("fen", LINES)
def test_each_line_that_it_shows_can_be_played_and_ends_with_the_game(uci, fen):
    """Twice, the second time on tables that are full of what the first search has left in them."""
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


def test_the_move_that_is_played_was_the_last_one_shown(uci):
    """Wherever the search ends: also while a better move is being confirmed."""
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
    lines, _ = search(uci, "position fen 4k3/8/4K3/4P3/8/8/8/8 w - - 0 1", "go depth 4")
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


# --- Options ---

def test_values_out_of_bounds_are_refused(uci):
    uci.send("setoption name Hash value 0")
    uci.expect_text("info string refused value of Hash: 0\n")
    uci.send("setoption name Nonsense value 3")
    uci.expect_text("info string there is no option Nonsense\n")


def test_hash_can_change_between_searches(uci):
    for size in (1, 64, 2, 32):
        uci.send(f"setoption name Hash value {size}")
        search(uci, "go depth 4")
    uci.send("setoption name Clear Hash")
    assert ready(uci) == ""


def test_a_log_file_takes_both_sides(uci):
    uci.send("setoption name Log File value my log.txt")
    search(uci, "go depth 2")
    uci.send("setoption name Log File value <empty>")
    ready(uci)
    log = (uci.folder / "my log.txt").read_text()
    assert "Vorka received input: go depth 2\n" in log and "sent: bestmove " in log
    uci.send("setoption name Log File value /no/such/folder/log")
    uci.expect_text("info string could not open /no/such/folder/log\n")


def options(engine):
    """Type, default, least, most and choices of each option, by its name."""
    engine.send("uci")
    told = {}
    for line in engine.hear("^uciok\n")[0].splitlines():
        if found := re.fullmatch(r"option name (.+) type (\w+)(?: default (.*?))?(?: min (\S+) max (\S+))?((?: var \w+)*)", line):
            told[found[1]] = (found[2], found[3], found[4], found[5], found[6].split(" var ")[1:])
    return told


def test_every_option_takes_its_limits_and_nothing_beyond(uci):
    offered = options(uci)
    assert set(offered) == {
        "Hash", "Clear Hash", "Ponder", "MultiPV", "Contempt", "Personality", "Style", "Settings File", "OwnBook", "Book File",
        "UCI_LimitStrength", "UCI_Elo", "UCI_AnalyseMode", "UCI_Opponent", "Move Overhead", "Bitbase Path", "Syzygy Path",
        "Log File"}
    for name, (kind, default, least, most, choices) in offered.items():
        if kind == "spin":
            good, bad = [least, default] + ([most] if name != "Hash" else []), [int(least) - 1, int(most) + 1, "x", ""]
        elif kind == "check":
            good, bad = ["true", "false", default], ["yes", "", "1"]
        elif kind == "combo":
            good, bad = [*choices, default], ["Nobody", ""]
            assert default in choices
        else:
            good, bad = ["<empty>"], []
        for value in good:
            uci.send(f"setoption name {name} value {value}")
            assert ready(uci) == "", f"{name}: {value}"
        for value in bad:
            uci.send(f"setoption name {name} value {value}")
            assert "info string refused value of " + name in ready(uci), f"{name}: {value}"
    search(uci, "go depth 3")
    assert len(offered["Personality"][4]) == 18


def test_several_lines_are_told_best_first(uci):
    uci.send("setoption name MultiPV value 3")
    lines, best = search(uci, "position startpos", "go depth 4")
    last = {}
    for line in lines:
        if " score " in line and "bound" not in line and number(line, "depth") == 4:
            last[number(line, "multipv")] = (number(line, "score cp"), line.split(" pv ")[1].split()[0])
    assert sorted(last) == [1, 2, 3]
    assert last[1][0] >= last[2][0] >= last[3][0]
    assert len({move for _, move in last.values()}) == 3 and best[1] == last[1][1]
    lines, _ = search(uci, f"position fen {MATE_IN_TWO}", "go depth 3 searchmoves a2a7 b1b2")
    assert {number(line, "multipv") for line in lines if " multipv " in line} == {1, 2}


def test_contempt_is_what_a_draw_is_worse(uci):
    """King against king and knight is a draw, whatever is played."""
    position = "position fen 4k3/8/8/8/8/8/8/4K2N w - - 0 1"
    for contempt, score in ((0, 0), (40, -40), (-25, 25)):
        uci.send(f"setoption name Contempt value {contempt}")
        assert number(search(uci, position, "go depth 2")[0][-2], "score cp") == score
    uci.send("setoption name UCI_AnalyseMode value true")
    assert number(search(uci, position, "go depth 2")[0][-2], "score cp") == 0


def test_style_and_personality_change_the_score(uci):
    position = "position fen r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10"

    def told(*changes):
        lines, _ = search(uci, *[f"setoption name {change}" for change in changes], "ucinewgame", position, "go nodes 20000")
        return [re.sub(r" (nps|time) \d+", "", line) for line in lines if " pv " in line and "bound" not in line]

    usual = told()
    reckless = told("Personality value Rux")
    assert reckless != usual
    assert told("Personality value Default", "Style value 1000") == reckless, "that is what the name stands for"
    assert told("Personality value Sedrimo") == reckless, "a style counts before a name"
    assert told("Style value 0") not in (usual, reckless)
    assert told("Personality value Default") == usual


def test_settings_are_read_and_put_back(uci):
    lines, _ = search(uci, "ucinewgame", "position startpos", "go depth 4")
    usual = number(lines[-1], "nodes")
    (uci.folder / "deep.txt").write_text("root_distance_multiplier=128\n")
    uci.send("setoption name Settings File value deep.txt")
    ready(uci)
    lines, _ = search(uci, "ucinewgame", "position startpos", "go depth 4")
    assert number(lines[-1], "nodes") != usual
    uci.send("setoption name Settings File value <empty>")
    lines, _ = search(uci, "ucinewgame", "position startpos", "go depth 4")
    assert number(lines[-1], "nodes") == usual
    (uci.folder / "bad.txt").write_text("no settings\n")
    for bad in ("bad.txt", "none.txt", "."):
        uci.send(f"setoption name Settings File value {bad}")
        uci.expect("^info string no settings were read, the last ones stay: ")
    lines, _ = search(uci, "ucinewgame", "position startpos", "go depth 4")
    assert number(lines[-1], "nodes") == usual


def book_entry(key, move, weight):
    start, to = rules.square_of(move[:2]), rules.square_of(move[2:4])
    return key.to_bytes(8, "big") + (start << 6 | to).to_bytes(2, "big") + weight.to_bytes(2, "big") + bytes(4)


def test_a_book_answers_by_weight(uci):
    """The keys are of the start, and of the position after e2e4."""
    (uci.folder / "small.bin").write_bytes(
        book_entry(0x463B96181691FC9C, "a2a4", 3) + book_entry(0x463B96181691FC9C, "h2h4", 1)
        + book_entry(0x463B96181691FC9C, "g2g4", 0) + book_entry(0x823C9B50FD114196, "a7a5", 1))
    uci.send("setoption name Book File value small.bin")
    assert search(uci, "position startpos", "go depth 2")[1][1] not in ("a2a4", "h2h4")
    uci.send("setoption name OwnBook value true")
    played = [search(uci, "position startpos", "go wtime 1000 btime 1000") for _ in range(60)]
    assert all(lines == [] for lines, _ in played)
    counts = [[best[1] for _, best in played].count(move) for move in ("a2a4", "h2h4")]
    assert sum(counts) == 60 and 28 <= counts[0] <= 58
    assert search(uci, "position startpos moves e2e4", "go movetime 100")[1][1] == "a7a5"
    for words in ("depth 2 searchmoves e2e4", "mate 1 depth 2"):
        assert search(uci, "position startpos", "go " + words)[1][1] not in ("a2a4", "h2h4")
    uci.send("setoption name UCI_AnalyseMode value true")
    assert search(uci, "position startpos", "go depth 2")[0] != []
    uci.send("setoption name UCI_AnalyseMode value false", "setoption name Book File value none.bin")
    uci.expect("^info string could not open as a book in Polyglot's format: none.bin\n")
    assert search(uci, "position startpos", "go depth 2")[0] != []


def test_limited_strength_searches_few_nodes(uci):
    uci.send("setoption name UCI_LimitStrength value true", "setoption name UCI_Elo value 1000")
    position = START
    for _ in range(30):
        lines, best = search(uci, f"position fen {position.fen()}", "go wtime 60000 btime 60000")
        assert number(lines[-1], "nodes") <= 60
        assert {number(line, "multipv") for line in lines if " multipv " in line} <= {1}
        position = position.make(position.find(best[1]))
        if position.result():
            break
    uci.send("go infinite")
    uci.expect("^info depth 4 ")
    uci.ask("stop", BESTMOVE)
    uci.send("setoption name UCI_LimitStrength value false")
    assert number(search(uci, "position startpos", "go depth 4")[0][-1], "nodes") > 1000


@pytest.mark.parametrize("word", ["ponderhit", "stop"])
def test_limited_strength_stays_limited_on_the_opponents_time(uci, word):
    uci.send("setoption name UCI_LimitStrength value true", "setoption name UCI_Elo value 1000")
    for _ in range(5):
        uci.send("ucinewgame", "position startpos", "go ponder wtime 60000 btime 60000")
        assert "bestmove" not in ready(uci)
        lines, best = search(uci, word)
        assert number(lines[-1], "nodes") <= 60
        START.find(best[1])


def test_the_opponent_is_noted(uci):
    uci.send("setoption name Log File value log", "setoption name UCI_Opponent value GM 2800 human Gary Kasparov")
    ready(uci)
    assert "opponent: GM 2800 human Gary Kasparov" in (uci.folder / "log").read_text()


def test_tables_that_are_not_there_are_missed(uci):
    uci.send("setoption name Syzygy Path value /no/such/folder")
    uci.expect("^info string (no tablebases were found in /no/such/folder|this build can't read Syzygy tablebases.*)\n")
    uci.send("setoption name Bitbase Path value /no/such/folder")
    uci.expect("^info string .*/no/such/folder/kp_kp.vbb")
    search(uci, "position fen 4k3/8/4K3/4P3/8/8/8/8 w - - 0 1", "go depth 4")


# --- The command line ---

def told_by(*words):
    return subprocess.run([UCI_PROGRAM, *words], capture_output=True, text=True, stdin=subprocess.DEVNULL)


def test_bench_tells_the_signature():
    """The total of the depth on record, in the forms that frameworks look for."""
    totals = dict(line.split() for line in (ROOT / "tests/data/bench_total.txt").read_text().splitlines()
                  if not line.startswith("#"))
    told = told_by("bench", "4")
    assert told.returncode == 0 and told.stderr == ""
    assert re.fullmatch(rf"Total time \(ms\) : \d+\nNodes searched  : {totals['4']}\nNodes/second    : \d+\n"
                        rf"{totals['4']} nodes \d+ nps\n", told.stdout)


def test_other_words_are_refused():
    for words in (["bench", "0"], ["bench", "x"], ["bench", "3", "4"], ["bench", "-1"], ["nonsense"], ["--bench"]):
        told = told_by(*words)
        assert told.returncode == 1 and told.stdout == "" and "usage: vorka-uci" in told.stderr, words
    assert "usage: vorka-uci" in told_by("--help").stdout


# --- Syzygy tablebases ---

# A folder of tables with up to four men; nothing stands in for them.
SYZYGY = os.environ.get("VORKA_SYZYGY", "")
with_syzygy = pytest.mark.skipif(not SYZYGY, reason="VORKA_SYZYGY names no folder of Syzygy tablebases")
ROOK_ENDING = "position fen 4k3/8/8/8/8/8/8/4K2R w - - 0 1"


@pytest.fixture
def syzygy(uci):
    """vorka-uci with tables in use."""
    uci.send(f"setoption name Syzygy Path value {SYZYGY}")
    if "made without Fathom" in ready(uci):
        pytest.skip("this build can't read Syzygy tablebases")
    return uci


@with_syzygy
def test_syzygy_tables_can_be_put_out_of_use_and_into_it_again(syzygy):
    search(syzygy, ROOK_ENDING, "go depth 3")
    syzygy.send("setoption name Syzygy Path value <empty>")
    search(syzygy, ROOK_ENDING, "go depth 3")
    syzygy.send(f"setoption name Syzygy Path value {SYZYGY}")
    syzygy.expect("^info string tablebases found, with men up to 4$")
    search(syzygy, ROOK_ENDING, "go depth 3")
    syzygy.send(f"setoption name Syzygy Path value {syzygy.folder}")
    syzygy.expect("^info string no tablebases were found in ")
    syzygy.send("setoption name Syzygy Path value <empty>")
    search(syzygy, ROOK_ENDING, "go depth 3")


@with_syzygy
def test_the_same_syzygy_tables_again_are_no_trouble(syzygy):
    for _ in range(2):
        search(syzygy, ROOK_ENDING, "go depth 3")
        syzygy.send(f"setoption name Syzygy Path value {SYZYGY}")
        syzygy.expect("^info string tablebases found")
    syzygy.finish()
    assert syzygy.errors == ""


@with_syzygy
def test_another_folder_of_syzygy_tables_is_taken_into_use_without_a_word(syzygy):
    """The first one has tables for three men, the second for four."""
    few = syzygy.folder / "three men"
    few.mkdir()
    for table in Path(SYZYGY).glob("K?vK.*"):
        (few / table.name).symlink_to(table.resolve())
    search(syzygy, ROOK_ENDING, "go depth 3")
    for folder, men in ((few, 3), (SYZYGY, 4), (few, 3)):
        syzygy.send(f"setoption name Syzygy Path value {folder}")
        syzygy.expect(f"^info string tablebases found, with men up to {men}$")
        lines, best = search(syzygy, "ucinewgame", ROOK_ENDING, "go depth 2")
        assert best[1] == "h1h7" and 9000 < number(lines[0], "score cp") < 9800
    syzygy.finish()
    assert syzygy.errors == ""


@with_syzygy
def test_syzygy_tables_tell_the_score_of_the_root(syzygy):
    lines, best = search(syzygy, ROOK_ENDING, "go depth 2")
    assert best[1] == "h1h7" and 9000 < number(lines[0], "score cp") < 9800
    assert number(lines[0], "tbhits") > 10, "each root move was looked up"
    lines, _ = search(syzygy, "position fen 8/8/8/4n3/4k3/8/8/K2R4 w - - 0 1", "go depth 2")
    assert number(lines[0], "score cp") == 0


@with_syzygy
def test_who_analyses_with_syzygy_tables_sees_every_move(syzygy):
    def moves_in_work(*lines):
        shown = [line for line in search(syzygy, ROOK_ENDING, *lines)[0] if " pv " in line]
        return {line.split(" pv ")[1].split()[0] for line in shown if number(line, "depth") == 2}

    assert moves_in_work("go depth 2") == {"h1h7"}
    syzygy.send("setoption name MultiPV value 8")
    assert len(moves_in_work("go depth 2")) >= 8
    syzygy.send("setoption name MultiPV value 1", ROOK_ENDING, "go infinite")
    syzygy.expect("^info depth 2 ")
    syzygy.ask("stop", BESTMOVE)


@with_syzygy
def test_limited_strength_has_no_help_from_tables(syzygy):
    """They would leave it one move alone."""
    assert {search(syzygy, "ucinewgame", ROOK_ENDING, "go depth 1")[1][1] for _ in range(5)} == {"h1h7"}
    syzygy.send("setoption name UCI_LimitStrength value true", "setoption name UCI_Elo value 1000")
    assert {search(syzygy, "ucinewgame", ROOK_ENDING, "go depth 1")[1][1] for _ in range(20)} != {"h1h7"}


# --- What the document shows ---

def dialogues():
    text = (ROOT / "docs/uci.md").read_text()
    return re.findall(r"(?ms)^```uci\n(.*?)^```$", text)


@pytest.mark.parametrize("dialogue", dialogues())
def test_dialogue_of_the_document(start, dialogue):
    """Lines that begin with `> ` are sent, the others have to come, in this order; [..] stands for any, and a number for
    any number."""
    engine = start(program=UCI_PROGRAM)
    for line in dialogue.splitlines():
        if line.startswith("> "):
            engine.send(line[2:])
        elif line != "[..]":
            words = [r"-?\d+" if re.fullmatch(r"-?\d+", word) else re.escape(word) for word in line.split(" ")]
            engine.expect("^" + " ".join(words) + "$")
