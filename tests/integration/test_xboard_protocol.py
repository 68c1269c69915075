"""What an XBoard interface sends and gets, in protocol 1 and 2."""

import re

import pytest
import rules

FEATURES = """\
feature analyze=1
feature colors=0
feature draw=1
feature ics=0
feature myname="Vorka"
feature name=1
feature pause=0
feature ping=1
feature playother=1
feature resume=0
feature reuse=1
feature san=1
feature setboard=1
feature sigint=0
feature sigterm=0
feature time=0
feature usermove=1
feature variants=normal
feature done=1
"""

SILENT = " (not sent to xboard)\n"


@pytest.fixture
def protocol_1(start):
    engine = start()
    engine.expect("> ")
    engine.send("xboard")
    assert engine.ping() == ""
    return engine


# --- Starting ---

def test_xboard_says_nothing(start):
    engine = start()
    engine.expect(" \rWhite 1> ")
    engine.send("xboard", "new", "force", "e4", "hard", "easy", "post", "random", "level 40 5 0")
    assert engine.ping() == ""


def test_features(protocol_1):
    protocol_1.send("protover 2")
    assert protocol_1.ping() == FEATURES


def test_protover_1_is_xboard(protocol_1):
    protocol_1.send("protover 1")
    assert protocol_1.ping() == ""
    assert 'Unexpected xboard protocol version. Executing command "xboard" instead' in protocol_1.log


def test_later_protocols_fall_back_to_2(protocol_1):
    protocol_1.send("protover 3")
    assert protocol_1.ping() == FEATURES
    assert "Future XBoard protocol version not support, falling back to version 2" in protocol_1.log


def test_protover_wants_a_number(protocol_1):
    protocol_1.ask_text("protover x", "Error (integer argument expected): protover x\n")


@pytest.mark.parametrize("identity, name", [
    ("id Club", "Vorka Club"), ("id ##Foo", "Foo"), ("id ##", "Vorka ##"), ("id ##A b", "A b"), ("id", "Vorka"),
])
def test_name(protocol_1, identity, name):
    protocol_1.send(identity, "protover 2")
    assert f'feature myname="{name}"\n' in protocol_1.ping()


def test_fritz_is_protocol_1(start):
    engine = start()
    engine.expect("> ")
    engine.send("fritz", "sd 1")
    engine.ask("e4", "move ")
    assert "feature" not in engine.output


def test_back_to_the_console(protocol_1):
    protocol_1.send("console")
    protocol_1.expect("!\n \rWhite 1> ")
    protocol_1.send("sd 1")
    protocol_1.ask("e4", r"Depth: 1\. ")  # thinking output is on again
    protocol_1.expect("Vorka played: ")


def test_answers_to_features_go_to_the_log(xboard):
    xboard.send("accepted ping", "rejected san", "random", ".")
    assert xboard.ping() == "stat01: 0 0 0 0 0\n"
    assert xboard.log.count("Command ignored (command is not supported)" + SILENT) == 3


def test_empty_lines_get_no_answer(xboard):
    xboard.send("", "  ", "\t")
    assert xboard.ping() == ""


def test_prompts_and_boards_stay_away(xboard):
    xboard.send("force", "e4", "e5", "undo", "edit", "#", "Ke1", "c", "Ke8", ".")
    assert xboard.ping() == ""
    assert "+---+" in xboard.log


# --- Playing ---

def test_a_game_with_usermove(xboard):
    xboard.send("new", "sd 1", "level 40 5 0")
    position = rules.Position.from_fen()
    for move in ("e4", "d4", "a3", "h3"):
        position = position.make(position.find(move))
        answer = xboard.ask(f"usermove {move}", r"^move (\S+)\n")[1]
        position = position.make(position.find(answer))
        assert xboard.position() == " ".join(position.fen().split()[:4])


def test_thinking_needs_post(xboard):
    xboard.send("sd 2")
    assert re.fullmatch(r"", xboard.ping())
    start = len(xboard.output)
    xboard.ask("usermove e4", r"^move \S+\n")
    assert re.fullmatch(r"move \S+\n", xboard.output[start:])
    assert re.search(r"^1 -?\d+ \d+ \d+ .* \n" + re.escape(SILENT), xboard.log, re.M)
    xboard.send("post")
    xboard.ask("usermove d4", r"^2 -?\d+ \d+ \d+ ([^ \n]+ )+\n")
    xboard.expect(r"^move \S+\n")


def test_search_report_in_the_log(xboard):
    xboard.send("sd 2")
    xboard.ask("usermove e4", "^move ")
    xboard.ping()
    header = xboard.log[xboard.log.index("starting search (not sent to xboard)\n"):]
    assert re.search(r"FEN: rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1\nsearch settings:\ntype=normal\n"
                     r"max_depth=2\nmax_time_limit=\d+\nvariable_time_limit=\d+\n\(not sent to xboard\)\n", header)
    assert re.search(r"^time: \S+ sec \(\d+ knodes, \S+ knps\)\nhit ratio: trans=\S+, pawn=\S+, eval=\S+\n"
                     r"ETTC tries=\d+, cutoffs=\d+, efficiency=\S+\n", header, re.M)
    assert "knps" not in xboard.output


@pytest.mark.parametrize("fen, move, result", [
    ("rnbqkbnr/pppp1ppp/8/4p3/8/5P2/PPPPP1PP/RNBQKBNR w KQkq - 0 2", "g4", "0-1 {Black mates}"),
    ("k7/8/1K6/8/8/8/8/6Q1 w - - 0 1", "Qg8#", "1-0 {White mates}"),
    ("7k/5K2/8/8/8/8/8/6Q1 w - - 0 1", "Qg6", "1/2-1/2 {Stalemate}"),
    ("4k3/8/8/8/8/8/4p3/4K2B w - - 0 1", "Kxe2", "1/2-1/2 {Insufficient material}"),
    ("4k3/8/8/8/8/8/8/R3K3 w - - 99 90", "Kd2", "1/2-1/2 {Fifthy move rule}"),
])
def test_results_that_the_engine_sees(xboard, fen, move, result):
    xboard.send("force", f"setboard {fen}", "sd 3", "playother", f"usermove {move}")
    xboard.expect_text(f"{result}\n")


def test_no_results_in_force_mode(xboard):
    xboard.send("force", "f3", "e5", "g4", "Qh4")
    assert xboard.ping() == ""


def test_moves_after_the_end_are_refused(xboard):
    xboard.send("result 1-0 {Black resigns}")
    xboard.ask_text("usermove e4", "Illegal move: usermove e4\n")
    xboard.send("new", "sd 1")
    xboard.ask("usermove e4", "^move ")


def test_resigning_is_left_to_the_interface(xboard):
    xboard.send("force", "setboard 4k3/8/8/8/8/P6P/1PQ2QP1/K7 w - - 0 1", "sd 1", "playother")
    for move in ("a4", "a5", "b3", "b4", "h4"):
        xboard.ask(f"usermove {move}", "^move ")
    xboard.ask("usermove h5", r"^move \S+\nresign\n")
    assert "1-0" not in xboard.ping()
    xboard.send("result 1-0 {Black resigns}")
    xboard.ask_text("usermove g3", "Illegal move: usermove g3\n")


def test_draw_offers(xboard):
    xboard.send("sd 1", "draw", "usermove e4")
    xboard.expect_text("telluser Vorka is thinking about the draw offer and will decide after the next move.\n")
    xboard.expect_text("telluser Vorka rejects the draw offer and wants to play on.\n")
    xboard.expect("^move ")


def test_id_names_the_one_who_decides(xboard):
    xboard.send("id ##Foo")
    xboard.ask_text("draw", "telluser Foo is thinking about the draw offer and will decide after the next move.\n")


def test_accepted_draw_still_plays_the_move(xboard):
    xboard.send("force", "setboard 4k3/8/8/8/8/P6P/1PQ2QP1/K7 w - - 0 1", "sd 1", "computer", "playother", "draw")
    xboard.ask("usermove a4", r"^offer draw\nmove \S+\n")


def test_engine_offers_a_draw(xboard):
    xboard.send("force", "setboard 4k3/8/8/p1p1p1p1/P1P1P1P1/8/8/4K3 w - - 0 1", "sd 2", "playother")
    xboard.ask("usermove Ke2", "^move ")
    xboard.ask("usermove Kd3", r"^move \S+\noffer draw\n")


def test_move_numbers_and_colours_of_setboard(xboard):
    xboard.send("force", "setboard 4k3/8/8/8/8/8/4P3/4K3 b - - 0 1", "sd 1")
    xboard.ask("go", r"^move K\S+\n")


# --- Positions ---

def test_impossible_position_leaves_an_empty_board(xboard):
    xboard.send("force")
    line = "setboard 4k3/8/8/8/8/8/8/8 w - - 0 1"
    xboard.ask_text(line, "telluser Illegal position\n")
    for move in ("usermove e4", "Kd7", "usermove Ke2"):
        xboard.ask_text(move, f"Illegal move: {move}\n")
    xboard.send("eval", "undo", "hint", "analyze", "exit", "go", "write_fen x", "display", "?", ".", "next", "remove")
    xboard.ping()
    xboard.send("force")
    xboard.ask_text("usermove e4", "Illegal move: usermove e4\n")
    xboard.send("new", "sd 1")
    xboard.ask("usermove e4", "^move ")


@pytest.mark.parametrize("line, answer", [("verify", "Current position is valid\n"), ("display", "en-passant square: none\n"),
                                          ("help", "cancel"), ("nonsense", "Error (unknown command): nonsense\n")])
def test_edit_answers_before_anything_else_is_said(xboard, line, answer):
    # No prompt follows here that would carry the answer along.
    xboard.send("force", "edit")
    xboard.ask_text(line, answer)


def test_impossible_position_by_edit(xboard):
    xboard.send("force", "edit", "#", "Ke1")
    xboard.ask_text(".", "telluser Illegal position\n")
    xboard.ask_text("usermove e4", "Illegal move: usermove e4\n")
    xboard.send("setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", "usermove e4")
    assert xboard.ping() == ""
    assert xboard.position() == "4k3/8/8/8/4P3/8/8/4K3 b - e3"


def test_position_then_undo_in_force_mode(xboard):
    xboard.send("force", "usermove e4", "usermove e5", "undo", "undo", "usermove d4")
    assert xboard.ping() == ""
    assert xboard.position().startswith("rnbqkbnr/pppppppp/8/8/3P4/")


def test_newlines_in_messages_become_tabs(start):
    # A start-up failure quotes the word as it stands.
    engine = start("--xboard", "--two\nlines")
    engine.wait(status=1)
    assert engine.output.endswith('telluser Error while parsing startup commands (stopped at "two\tlines")\n')


@pytest.mark.parametrize("line", [
    "usermove e5", "usermove e2-e4", "foo", "Ke9", "0-0-0-0",
])
def test_illegal_moves(xboard, line):
    xboard.ask_text(line, f"Illegal move: {line}\n")
