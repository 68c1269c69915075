"""Talking to the engine while it searches: pondering, analysis, hints, and commands that break in."""

import re

import pytest
import rules

THINKING = {"console": r"Depth: {}\. \S+ .*\(-?#?\d+\)\n", "xboard": r"^{} -?\d+ \d+ \d+ \S+ "}


class Talk:
    """One protocol's words for what both can do."""

    def __init__(self, engine, protocol):
        self.engine, self.protocol = engine, protocol

    def move(self, text):
        """Sends a move and returns the engine's answer."""
        if self.protocol == "xboard":
            return self.engine.ask(f"usermove {text}", r"^move (\S+)\n")[1]
        return self.engine.ask(text, r"Vorka played: (\S+)\n")[1]

    def thinking(self, depth=r"\d+"):
        return self.engine.expect(THINKING[self.protocol].format(depth))

    def hint(self):
        return self.engine.ask("hint", r"(?:Vorka suggests|Hint:) (\S+)\n")[1]

    def search_types(self):
        """The kinds of search up to now, in order."""
        self.engine.ping()
        return re.findall(r"^type=(\w+)$", self.engine.log, re.M)


@pytest.fixture(params=["console", "xboard"])
def talk(request):
    return Talk(request.getfixturevalue(request.param), request.param)


def think_long(engine):
    """Starts a search that would take minutes."""
    engine.send("post", "level 1 60 0", "e4")


# --- Pondering ---

def test_no_pondering_unless_told(talk):
    talk.engine.send("sd 2")
    talk.move("e4")
    assert talk.search_types() == ["normal"]


def start_pondering(talk):
    """Lets the engine ponder; returns the position and the move that it expects."""
    talk.engine.send("st 1", "hard")
    position = rules.Position.from_fen()
    position = position.make(position.find("e4"))
    position = position.make(position.find(talk.move("e4")))
    assert talk.search_types()[-1] == "pondering"
    return position, talk.hint()


def test_ponder_hit(talk):
    position, expected = start_pondering(talk)
    position = position.make(position.find(expected))
    answer = talk.move(expected)
    position.find(answer)
    talk.engine.ping()
    note = f"Predicted move made ({expected})"
    if talk.protocol == "console":
        assert note + "\n" in talk.engine.output
    else:
        assert note + " (not sent to xboard)\n" in talk.engine.log
        assert "Predicted" not in talk.engine.output
    # The pondering search itself went on and answered: one search for each of the two moves that began in it.
    assert talk.search_types()[:2] == ["normal", "pondering"]
    assert talk.search_types()[2:] in (["pondering"], ["puzzle", "pondering"])


def test_ponder_miss(talk):
    position, expected = start_pondering(talk)
    other = next(text for text in map(position.san, position.legal_moves()) if text != expected)
    position = position.make(position.find(other))
    position.find(talk.move(other))
    assert "Predicted move made" not in talk.engine.log
    assert talk.search_types()[:3] == ["normal", "pondering", "normal"]


def test_commands_beside_pondering(talk):
    _, expected = start_pondering(talk)
    talk.engine.send("time 1000", "otim 1000", "name Anna", "rating 1 2", "sd 0", "st 1", "nopost", "post", "computer")
    talk.engine.ask_text("ping 5", "pong 5\n")
    assert talk.hint() == expected
    talk.engine.ask("eval", r"^.*eval: -?\d+\n")
    talk.engine.ask("version", "Vorka v2")
    talk.engine.ask("display", r"en-passant square: \w+\n")
    assert talk.search_types() == ["normal", "pondering"]


def test_illegal_move_does_not_disturb_pondering(talk):
    _, expected = start_pondering(talk)
    talk.engine.ask_text("Ke5", "Illegal move: Ke5\n")
    talk.engine.ask_text("sd x", "Error (integer argument expected): sd x\n")
    talk.engine.ask_text("bk", "Error (command is not supported): bk\n")
    assert talk.hint() == expected
    assert talk.search_types() == ["normal", "pondering"]


def test_easy_ends_pondering(talk):
    start_pondering(talk)
    talk.engine.send("easy")
    talk.engine.ping()
    talk.move("d4")
    assert talk.search_types() == ["normal", "pondering", "normal"]


def test_go_during_pondering_thinks_for_the_side_on_move(talk):
    position, _ = start_pondering(talk)
    answer = talk.engine.ask("go", r"(?:move|Vorka played:) (\S+)\n")[1]
    position.find(answer)


def test_new_during_pondering(talk):
    start_pondering(talk)
    talk.engine.send("new", "easy", "sd 1")
    talk.move("d4")
    assert talk.engine.position().startswith("r") or talk.engine.position()


# --- Analysis ---

def test_analysis_with_moves_and_undo(talk):
    talk.engine.send("post", "analyze")
    talk.thinking()
    for line in ("e4", "e5", "undo", "usermove c5", "undo"):
        talk.engine.send(line)
        talk.engine.ping()
        talk.thinking()
    assert talk.engine.position() == "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3"
    talk.engine.send("exit")
    assert talk.search_types() == ["analyze"] * 6
    assert not re.search("^move |Vorka played", talk.engine.output, re.M)


def test_stat01_during_analysis(talk):
    talk.engine.send("post", "analyze")
    talk.thinking(2)
    time, nodes, depth, left, total = talk.engine.ask(".", r"stat01: (\d+) (\d+) (\d+) (-?\d+) (\d+) \S+\n").groups()
    assert int(total) == 20 and int(depth) >= 2 and int(nodes) > 0
    talk.engine.send("exit")
    talk.engine.ping()


def test_analysis_of_a_new_position(talk):
    talk.engine.send("post", "analyze")
    talk.thinking()
    talk.engine.send("setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1")
    talk.engine.ping()
    talk.thinking()
    talk.engine.send("new")
    talk.engine.ping()
    talk.thinking()
    talk.engine.send("exit")
    assert talk.search_types() == ["analyze"] * 3


@pytest.mark.parametrize("line, reason", [("go", "command not legal now"), ("remove", "command not legal now")])
def test_refused_during_analysis(talk, line, reason):
    talk.engine.send("post", "analyze")
    talk.thinking()
    talk.engine.ask_text(line, f"Error ({reason}): {line}\n")
    talk.thinking()
    assert talk.search_types() == ["analyze"]


def test_exit_goes_to_force_mode(talk):
    talk.engine.send("analyze", "exit", "e4", "e5")
    talk.engine.ping()
    assert talk.engine.position().startswith("rnbqkbnr/pppp1ppp/8/4p3/4P3/")
    talk.engine.ask_text("exit", "Error (must be in analyze mode): exit\n")


def test_end_of_input_during_analysis(talk):
    talk.engine.send("post", "analyze")
    talk.thinking()
    talk.engine.finish(status=0)


def test_analysis_past_the_last_iteration_waits(talk):
    """Two bare kings and blocked pawns are searched to the end of all iterations, or not: it goes on listening."""
    talk.engine.send("force", "setboard k7/8/1K6/8/8/8/8/6Q1 w - - 0 1", "post", "analyze")
    talk.thinking()
    talk.engine.ask_text("ping 4", "pong 4\n")
    talk.engine.send("exit")
    talk.engine.ping()


def test_xboard_analyzes_finished_games_by_waiting(xboard):
    xboard.send("force", "f3", "e5", "g4", "Qh4", "post", "analyze")
    assert xboard.ping() == ""
    assert "Entering analyze compatibility mode" in xboard.log
    assert xboard.ask(".", "^stat01: .*\n")[0] == "stat01: 0 0 0 0 0\n"
    xboard.send("undo")
    xboard.expect(THINKING["xboard"].format(r"\d+"))
    xboard.send("Qh4")
    xboard.ping()
    assert xboard.log.count("Entering analyze compatibility mode") == 2
    xboard.send("exit")
    xboard.ping()
    xboard.ask_text("exit", "Error (must be in analyze mode): exit\n")


def test_console_leaves_analysis_when_the_game_ends(console):
    console.send("force", "f3", "e5", "g4", "analyze", "Qh4")
    console.ping()
    console.ask_text("exit", "Error (must be in analyze mode): exit\n")
    console.ask_text("analyze", "Command ignored (game over)\n")


# --- Thinking ---

def test_ping_while_thinking_answers_at_once(talk):
    think_long(talk.engine)
    talk.thinking()
    talk.engine.ask_text("ping 3", "pong 3\n")
    assert not re.search("^move |Vorka played", talk.engine.output, re.M)
    talk.engine.ask("?", r"(?:^move |Vorka played: )\S+\n")


def test_move_now(talk):
    think_long(talk.engine)
    talk.thinking()
    answer = talk.engine.ask("?", r"(?:^move |Vorka played: )(\S+)\n")[1]
    position = rules.Position.from_fen()
    position.make(position.find("e4")).find(answer)


def test_move_now_at_once(talk):
    """Even before the first iteration is done there is a move to play."""
    talk.engine.send("level 1 60 0", "e4", "?")
    answer = talk.engine.expect(r"(?:^move |Vorka played: )(\S+)\n")[1]
    position = rules.Position.from_fen()
    position.make(position.find("e4")).find(answer)


@pytest.mark.parametrize("line, answer", [
    ("d5", "Error (it is not your turn now): d5"),
    ("usermove d5", "Error (it is not your turn now): usermove d5"),
    ("go", "Error (command not legal now): go"),
    ("d4", "Illegal move: d4"),
    ("hint", "Error (command not legal now): hint"),
    ("undo", "Error (must be in force mode): undo"),
    ("setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1",
     "Error (must be in force mode): setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1"),
    ("edit", "Error (must be in force mode): edit"),
    ("remove", "Error (command not legal now): remove"),
    ("exit", "Error (must be in analyze mode): exit"),
    ("result 3-0", "Error (invalid argument(s)): result 3-0"),
    ("one two", "Error (unrecognized command): one two"),
])
def test_refused_while_thinking(talk, line, answer):
    think_long(talk.engine)
    talk.thinking()
    talk.engine.ask_text(line, answer + "\n")
    talk.engine.ask("?", r"(?:^move |Vorka played: )\S+\n")
    assert talk.search_types() == ["normal"]


@pytest.mark.parametrize("line", ["force", "new", "result 1-0 {x}", "white", "analyze", "quit"])
def test_discards_the_thinking(talk, line):
    think_long(talk.engine)
    talk.thinking()
    talk.engine.send(line)
    if line == "quit":
        talk.engine.wait(status=0)
    else:
        talk.engine.ping()
    assert not re.search("^move |Vorka played", talk.engine.output, re.M)


def test_end_of_input_while_thinking(talk):
    think_long(talk.engine)
    talk.thinking()
    talk.engine.finish(status=0)


def test_post_and_nopost_while_thinking(talk):
    think_long(talk.engine)
    talk.thinking()
    talk.engine.send("nopost")
    talk.engine.ping()
    talk.engine.send("post")
    talk.thinking()
    talk.engine.ask("?", r"(?:^move |Vorka played: )\S+\n")


def test_draw_offer_while_thinking_is_answered_with_the_move(talk):
    think_long(talk.engine)
    talk.thinking()
    talk.engine.ask_text("draw", "Vorka is thinking about the draw offer and will decide after the next move.\n")
    talk.engine.send("?")
    talk.engine.expect_text("Vorka rejects the draw offer and wants to play on.\n")
    talk.engine.expect(r"(?:^move |Vorka played: )\S+\n")


def test_switching_the_protocol_while_thinking(console):
    think_long(console)
    console.expect(THINKING["console"].format(1))
    console.send("xboard", "post")
    console.expect(THINKING["xboard"].format(r"\d+"))
    console.ask("?", r"^move \S+\n")


# --- Hints ---

def test_hint_is_searched_first_and_told_the_next_time(talk):
    talk.engine.send("hint", "hint")
    move = talk.engine.expect(r"(?:Vorka suggests|Hint:) (\S+)\n")[1]
    rules.Position.from_fen().find(move)
    assert talk.search_types() == ["puzzle"]


def test_hint_that_is_aborted_is_asked_again(talk):
    talk.engine.send("hint", "new", "hint", "hint")
    rules.Position.from_fen().find(talk.engine.expect(r"(?:Vorka suggests|Hint:) (\S+)\n")[1])


@pytest.mark.parametrize("moves", [["f3", "e5", "g4", "Qh4"], []])
def test_hint_where_no_move_exists(talk, moves):
    talk.engine.send("force", *moves, *([] if moves else ["result 1-0"]), "hint", "hint", "hint")
    answer = talk.engine.ping()
    assert "suggests" not in answer and "Hint: " not in answer
    if talk.protocol == "console":
        assert "Hint request could not be responded, because no legal move was found\n" in answer


def test_time_runs_on_while_a_hint_is_searched(talk):
    talk.engine.send("hint", "sd 1")
    talk.engine.ping()
    talk.move("e4")


# --- Time ---

def test_whole_moves_in_a_tenth_of_a_second(talk):
    """Forty moves within six seconds and no time control overstepped."""
    talk.engine.send("level 40 0:06 0")
    position, keys = rules.Position.from_fen(), []
    for turn in range(10):
        legal = position.legal_moves()
        played = legal[turn * 7 % len(legal)]
        keys.append(position.key())
        position = position.make(played)
        reply = position.find(talk.move(rules.coordinate(played)))
        keys.append(position.key())
        position = position.make(reply)
        if position.result(keys):
            break
    talk.engine.send("time 100")
    talk.engine.ping()
    assert "out_of_time: true" not in talk.engine.log
