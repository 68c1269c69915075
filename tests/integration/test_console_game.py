"""Whole games typed by hand in the console: moves, takebacks, edit mode, clocks, draws, resignation, results."""

import random
import re

import pytest
import rules


def play(engine, *moves):
    for move in moves:
        engine.send(move)
    return engine.ping()


# --- Moves ---

def test_both_sides_by_hand_until_mate(console):
    console.send("force")
    assert "Illegal" not in play(console, "e4", "e7e5", "Bf1c4", "Nc6", "Qh5", "g8f6")
    console.send("h5f7")
    console.expect_text("game over: 1-0 (White mates)\n")
    assert "Illegal move: Kxf7\n" in play(console, "Kxf7")
    assert console.position() == "r1bqkb1r/pppp1Qpp/2n2n2/4p3/2B1P3/8/PPPP1PPP/RNB1K1NR b KQkq -"


def test_prompt_counts_moves_and_names_the_side(console):
    console.send("force", "e4", "e5", "Nf3")
    assert re.findall(r" \r(\w+ \d+)> ", console.ping()) == ["White 1"] * 2 + ["Black 1", "White 2", "Black 2"]


@pytest.mark.parametrize("fen, text, after", [
    ("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "O-O", "r3k2r/8/8/8/8/8/8/R4RK1 b kq -"),
    ("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", "0-0-0", "r3k2r/8/8/8/8/8/8/2KR3R b kq -"),
    ("r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1", "e8c8", "2kr3r/8/8/8/8/8/8/R3K2R w KQ -"),
    ("8/P6k/8/8/8/8/8/K7 w - - 0 1", "a8=N", "N7/7k/8/8/8/8/8/K7 b - -"),
    ("8/P6k/8/8/8/8/8/K7 w - - 0 1", "a7a8r", "R7/7k/8/8/8/8/8/K7 b - -"),
    ("8/P6k/8/8/8/8/8/K7 w - - 0 1", "a7a8", "Q7/7k/8/8/8/8/8/K7 b - -"),
    ("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "exd6", "4k3/8/3P4/8/8/8/8/4K3 b - -"),
    ("4k3/8/8/8/8/5N2/8/1N2K3 w - - 0 1", "Nbd2", "4k3/8/8/8/8/5N2/3N4/4K3 b - -"),
    ("4k3/8/8/8/8/8/8/R3K3 w Q - 0 1", "usermove Ra8+", "R3k3/8/8/8/8/8/8/4K3 b - -"),
])
def test_notations(console, fen, text, after):
    console.send("force", f"setboard {fen}", text)
    assert console.position() == after


@pytest.mark.parametrize("text", ["e5", "e2e5", "e2-e4", "Nf3+", "Nxf3", "O-O", "e8Q", "foo", "Qd1", "=", "e4=", "x"])
def test_illegal_moves_change_nothing(console, text):
    console.send("force")
    console.ask_text(text, f"Illegal move: {text}\n")
    console.ask_text(f"usermove {text}", f"Illegal move: usermove {text}\n")
    assert console.position() == "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -"


# --- Results that the board brings about ---

@pytest.mark.parametrize("fen, moves, result", [
    (rules.START, "f3 e5 g4 Qh4#", "0-1 (Black mates)"),
    ("k7/8/1K6/8/8/8/8/6Q1 w - - 0 1", "Qg8#", "1-0 (White mates)"),
    ("7k/5K2/8/8/8/8/8/6Q1 w - - 0 1", "Qg5 Kh7 Qg6+ Kh8 Qg4 Kh7 Qf5+ Kh8 Qg6", "1/2-1/2 (Stalemate)"),
    ("4k3/8/8/8/8/8/4p3/4K2B w - - 0 1", "Kxe2", "1/2-1/2 (Insufficient material)"),
    (rules.START, "Nf3 Nf6 Ng1 Ng8 Nf3 Nf6 Ng1 Ng8", "1/2-1/2 (Threefold repetition)"),
    ("4k3/8/8/8/8/8/8/R3K3 w - - 99 90", "Kd2", "1/2-1/2 (Fifthy move rule)"),
])
def test_ends_on_the_board(console, fen, moves, result):
    console.send("force", f"setboard {fen}")
    *before, last = moves.split()
    assert "game over" not in play(console, *before)
    console.ask_text(last, f"game over: {result}\n")


def test_mate_outranks_the_fifty_move_rule(console):
    console.send("force", "setboard k7/8/1K6/8/8/8/8/6Q1 w - - 99 90")
    console.ask_text("Qg8", "game over: 1-0 (White mates)\n")


def test_two_knights_are_material_enough(console):
    console.send("force", "setboard 4k3/8/8/8/8/8/4p3/4K1NN w - - 0 1", "Kxe2")
    assert "game over" not in console.ping()


def test_undo_takes_back_the_end_of_the_game(console):
    console.send("force", "f3", "e5", "g4")
    console.ask_text("Qh4", "game over: 0-1 (Black mates)\n")
    console.send("undo", "Nc6", "e4")
    assert "Illegal" not in console.ping()


# --- Takebacks ---

def test_undo_and_next(console):
    console.send("force", "e4", "e5", "Nf3", "Nc6")
    console.send("undo", "undo 2", "next")
    assert console.position() == "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6"
    console.send("next all")
    assert console.position().startswith("r1bqkbnr/pppp1ppp/2n5/")
    console.send("undo all")
    assert console.position().startswith("rnbqkbnr/pppppppp/8/8/8/8/")


@pytest.mark.parametrize("lines, answer", [
    (["undo"], "Error (no move to undo): undo"),
    (["e4", "undo -1"], "Error (argument out of bounds): undo -1"),
    (["e4", "undo 3"], "could not undo 2 move(s), because start position has been reached"),
    (["next"], "Error (next move buffer is empty): next"),
    (["e4", "undo", "next -1"], "Error (argument out of bounds): next -1"),
    (["e4", "undo", "next 4"], "3 move(s) could not be made, because next move buffer is empty"),
    (["e4", "undo", "d4", "next"], "Error (next move buffer is empty): next"),
])
def test_takeback_answers(console, lines, answer):
    console.send("force", *lines)
    console.expect_text(answer + "\n")


def test_the_same_move_keeps_the_rest_of_the_buffer(console):
    console.send("force", "e4", "e5", "undo 2", "e4", "next")
    assert console.position().startswith("rnbqkbnr/pppp1ppp/8/4p3/4P3/")


def test_takebacks_want_force_mode(console):
    console.send("sd 1")
    console.ask("e4", "Vorka played: ")
    console.ask_text("undo", "Error (must be in force mode): undo\n")
    console.ask_text("next", "Error (next move buffer is empty): next\n")


def test_remove_takes_back_a_move_of_each_side(console):
    console.send("sd 1")
    console.ask("e4", "Vorka played: ")
    console.send("remove")
    assert console.position().startswith("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w")
    console.ask_text("remove", "Error (no moves to remove): remove\n")
    console.ask("d4", "Vorka played: ")


def test_remove_is_refused_outside_play(console):
    console.send("analyze")
    console.ask_text("remove", "Error (command not legal now): remove\n")
    console.send("exit")


# --- Sides ---

def test_white_then_go(console):
    console.send("sd 1", "white")
    console.ask("go", "Vorka played: ")
    console.expect(" \rBlack 1> ")


def test_black_flips_the_side_on_move(console):
    console.send("force", "black")
    assert console.position() == "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR b KQkq -"


def test_sides_that_cannot_change(console):
    console.send("force", "e4")
    console.ask_text("white", "Error (cannot change sides): white\n")
    console.send("setboard 4k3/8/8/8/8/8/4R3/4K3 b - - 0 1")
    console.ask_text("white", "Error (cannot change sides): white\n")
    assert console.position() == "4k3/8/8/8/8/8/4R3/4K3 b - -"


def test_playother_leaves_the_move_to_the_person(console):
    console.send("force", "e4", "sd 1", "playother")
    console.ask("e5", "Vorka played: ")


# --- Edit mode ---

def test_edit_sets_up_a_position(console):
    console.send("force", "edit")
    console.expect_text("edit mode> ")
    console.send("#", "Ke1", "Pa2", "Rh1", "c", "Ke8", "qd8", ".")
    assert console.position() == "3qk3/8/8/8/8/8/P7/4K2R w K -"


@pytest.mark.parametrize("lines, answer", [
    (["xxxx"], "Error (unknown command): xxxx"),
    ([""], "Error (unknown command): "),
    (["restore"], "Error (unknown command): restore"),
    (["K e1"], "Error (unknown command): K e1"),
    (["Zz9"], "Error (unknown command): Zz9"),
    (["Ke9"], "Error (unknown command): Ke9"),
    (['"Ke1'], 'Error (could not tokenize the input string): "Ke1'),
    (["verify"], "Current position is valid"),
    (["#", "verify"], "Current position is invalid"),
    (["#", "."], "Command ignored (Illegal position)"),
    (["xe1", "verify"], "Current position is invalid"),
    (["cancel"], "Edit mode aborted"),
])
def test_edit_answers(console, lines, answer):
    console.send("force", "edit", *lines)
    console.expect_text(answer + "\n")
    if lines[-1] != "cancel":
        console.ask_text("cancel", "Edit mode aborted\n")
    assert console.position().startswith("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -")


def test_edit_switches_the_side_to_move(console):
    console.send("force", "edit", "s", ".")
    assert console.position() == "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR b KQkq -"


def test_quit_in_edit_mode(console):
    console.send("force", "edit", "quit")
    console.wait(status=0)


def test_end_of_input_in_edit_mode(console):
    console.send("force", "edit", "#")
    console.finish(status=0)


def test_edit_wants_force_mode(console):
    console.ask_text("edit", "Error (must be in force mode): edit\n")


# --- Clocks ---

CLOCKS = """\
time (active side):
moves_left: {}
milliseconds_left: {}
out_of_time: {}
time (passive side):
moves_left: {}
milliseconds_left: {}
out_of_time: {}
player1 played by engine: {}
player2 played by engine: {}
"""


def test_time_and_otim_go_to_the_log(console):
    console.send("level 40 5 0", "time 1234", "otim 5678")
    console.ping()
    assert "milliseconds_left: 12340\n" in console.log and "milliseconds_left: 56780\n" in console.log
    # Black is the engine's, and White is on move.
    assert CLOCKS.format(40, 56780, "false", 40, 12340, "false", "false", "true") in console.log


@pytest.mark.parametrize("line, moves, milliseconds", [
    ("level 40 5 0", 40, 300000),
    ("level 0 5 3", -1, 300000),
    ("level 10 0:30 0", 10, 30000),
    ("level 10 1:05 0.5", 10, 65000),
    ("tc 20 2 0 -1 1 0", 20, 120000),
    ("tc 20 2 0 0 1 0", 20, 120000),
    ("tc 0 0:45 1", -1, 45000),
    ("tc 30 3 0 0 1 0; 0 9 9", 30, 180000),
])
def test_time_controls_set_the_running_clocks(console, line, moves, milliseconds):
    # The engine's clock is set, so that the block shows the control on the other side, which is on move.
    console.send("sd 1", line, "time 100")
    console.ping()
    assert CLOCKS.partition("time (passive")[0].format(moves, milliseconds, "false") in console.log


@pytest.mark.parametrize("line, reason", [
    ("level -1 5 0", "argument out of bounds"),
    ("level 40 0 0", "argument out of bounds"),
    ("level 40 -5 0", "argument out of bounds"),
    ("level 40 5 -1", "argument out of bounds"),
    ("tc", "missing parameters"),
    ("tc 40 5", "seperator missing (';')"),
    ("tc 40 5 0", "last time control must not terminate"),
    ("tc 40 5 0 -1 5 0; 20 5 0", "last time control must not terminate"),
    ("st -1", "argument out of bounds"),
    ("sd -1", "argument out of bounds"),
    ("rating -1 5", "argument out of bounds"),
])
def test_wrong_time_controls(console, line, reason):
    console.ask_text(line, f"Error ({reason}): {line}\n")


def limits(engine):
    """The limits of the last search that began, as its header in the log tells them."""
    found = re.findall(r"max_depth=(\d+)\nmax_time_limit=(\d+)\nvariable_time_limit=(\d+)\n", engine.log)
    return tuple(int(number) for number in found[-1])


@pytest.mark.parametrize("lines, depth, maximum, variable", [
    (["sd 1"], 1, 135000, 3659),
    (["sd 1", "st 2"], 1, 2000, 3659),
    (["sd 2", "st 0"], 2, 135000, 3659),
    (["sd 1", "level 0 1 0"], 1, 150, 968),
    (["sd 1", "level 20 0:10 0"], 1, 500, 238),
    (["sd 1", "time 0"], 1, 150, 150),
])
def test_search_limits_come_from_the_clock(console, lines, depth, maximum, variable):
    console.send(*lines)
    console.ask("e4", "Vorka played: ")
    console.ping()
    assert limits(console)[:2] == (depth, maximum)
    assert abs(limits(console)[2] - variable) <= 1


# --- Draws, resignation, results ---

DEFERRED = "Vorka is thinking about the draw offer and will decide after the next move.\n"


def test_draw_offer_is_rejected_in_the_opening(console):
    console.send("sd 1")
    console.ask_text("draw", DEFERRED)
    console.send("e4")
    console.expect_text("Vorka rejects the draw offer and wants to play on.\n")
    console.expect("Vorka played: ")
    console.ping()
    assert "Engine rejects draw offer" in console.log


def test_draw_offer_to_a_hopeless_engine_is_accepted(console):
    console.send("force", "setboard 4k3/8/8/8/8/P6P/1PQ2QP1/K7 w - - 0 1", "sd 1", "playother")
    console.ask_text("draw", DEFERRED)
    console.send("a4")
    console.expect_text("Vorka accepts draw offer\n")
    console.expect_text("game over: 1/2-1/2 (Mutual agreement)\n")
    assert "Vorka played" not in console.ping()
    console.ask_text("a5", "Illegal move: a5\n")


def test_computers_get_no_sentences_about_draws(console):
    console.send("sd 1", "computer", "draw")
    console.ask("e4", "Vorka played: ")
    assert "draw offer" not in console.output


def test_draw_wants_a_game(console):
    console.send("force")
    console.ask_text("draw", "Error (command not legal now): draw\n")
    console.send("result 1-0 {x}")
    console.ask_text("draw", "Error (game over): draw\n")


LOCKED = "4k3/8/8/p1p1p1p1/P1P1P1P1/8/8/4K3 w - - 0 1"


def test_engine_offers_a_draw_and_takes_it(console):
    console.send("force", f"setboard {LOCKED}", "sd 2", "playother", "nopost")
    offer = 'Vorka offers draw. (Note: type "draw" to accept)\n'
    console.ask("Ke2", "Vorka played: ")
    console.ping()
    assert offer not in console.output
    console.ask("Kd3", "Vorka played: ")
    console.expect_text(offer)
    console.ask_text("draw", DEFERRED)
    console.send("Ke3")
    console.expect_text("Vorka accepts draw offer\n")
    console.expect_text("game over: 1/2-1/2 (Mutual agreement)\n")


def test_engine_resigns_a_hopeless_game(console):
    console.send("force", "setboard 4k3/8/8/8/8/P6P/1PQ2QP1/K7 w - - 0 1", "sd 1", "playother")
    for move in ("a4", "a5", "b3", "b4", "h4"):
        console.ask(move, "Vorka played: ")
    assert "resigns" not in console.ping()
    console.send("h5")
    console.expect_text("Congratulations! Vorka resigns.\n")
    console.expect_text("game over: 1-0 (Black resigns)\n")
    console.ask_text("g3", "Illegal move: g3\n")


@pytest.mark.parametrize("line", ["result 1-0", "result 0-1 {White resigns}", "result 1/2-1/2 {mutual}", "result * {bye}"])
def test_result_ends_the_game(console, line):
    console.send(line)
    console.ask_text("e4", "Illegal move: e4\n")
    console.ask_text(line, "Command ignored (game over)\n")
    console.send("new", "force", "e4")
    assert "Illegal" not in console.ping()


def test_result_words(console):
    console.ask_text("result", "Error (missing parameters): result\n")
    console.ask_text("result 2-0 {x}", "Error (invalid argument(s)): result 2-0 {x}\n")


def test_analyze_is_refused_when_the_game_is_over(console):
    console.send("result 1-0")
    console.ask_text("analyze", "Command ignored (game over)\n")


def test_playother_is_refused_when_the_game_is_over(console):
    console.send("result 1-0")
    console.ask_text("playother", "Error (game over): playother\n")


# --- Small answers ---

@pytest.mark.parametrize("line, answer", [
    ("", "OK.\n"),
    (" \t ", "OK.\n"),
    (".", "Command ignored (no search running)\n"),
    ("?", "Command ignored (no search running)\n"),
    ("random", "Command ignored (command is not supported)\n"),
    ("accepted san", "Command ignored (command is not supported)\n"),
    ("rejected", "Command ignored (command is not supported)\n"),
    ("exit", "Error (must be in analyze mode): exit\n"),
    ("ping x", "pong x\n"),
    ("eval", "eval: 6\n"),
])
def test_small_answers(console, line, answer):
    console.ask_text(line, "White 1> " + answer)


def test_version(console):
    console.ask("version", r"^.*Vorka v2\.0\.1 \(")


def test_nopost_silences_the_thinking_alone(console):
    console.send("nopost", "sd 3")
    console.ask("e4", "Vorka played: .*\n")
    output = console.ping() + console.output
    assert "Depth: " not in output and "!? " not in output
    assert "knps)\n" in output
    assert re.search(r"^Depth: 1\. .*\(-?\d+\)\n \(not sent to xboard\)\n", console.log, re.M)


# --- A whole game against the engine ---

@pytest.mark.parametrize("seed", [1, 2, 3])
def test_a_whole_game_against_the_engine(console, seed):
    """A person who moves at random, in any notation; every answer is legal, and the end is the right one."""
    dice = random.Random(seed)
    console.send("sd 2", "nopost", "level 40 60 0")
    position, keys, ended = rules.Position.from_fen(), [], None

    def advance(move):
        nonlocal position, ended
        keys.append(position.key())
        position = position.make(move)
        ended = position.result(keys)

    for _ in range(150):
        move = dice.choice(position.legal_moves())
        text = dice.choice([rules.coordinate, position.san])(move)
        advance(move)
        console.send(text)
        if not ended:
            answer = console.expect(r"Vorka played: (\S+)\n")[1]
            move = position.find(answer)
            assert answer == position.san(move) or answer.startswith("O-O"), position.fen()
            advance(move)
        if ended:
            console.expect_text(f"game over: {ended[0]} ({ended[1]})\n")
            break
        if re.search("resigns", console.ping()):
            console.send("new", "force")
            break
    assert "Error" not in console.output and "Illegal" not in console.output
