"""Wrong words, wrong counts, wrong types, broken text: always the exact message, and never a changed game."""

import os
import random
import re

import pytest

START = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -"

ALONE = """. ? analyze black computer console display draw easy edit eval exit force fritz go hard help hint new nopost
    playother post quit remove version white xboard""".split()

WRONG_COUNTS = {
    "too many parameters": [word + " now" for word in ALONE] + ["undo 1 2", "next 1 2", "undo all all"],
    "wrong number of arguments": [
        "protover", "protover 1 2", "contempt", "contempt 1 2", "hash trans", "hash trans 1M 2", "level", "level 40",
        "level 40 5", "level 40 5 0 0", "otim", "otim 1 2", "time", "time 1 2", "personality a b", "ping", "ping 1 2",
        "read_fen", "read_fen a b", "read_pgn", "read_pgn a b", "read_settings", "read_settings a b", "rating",
        "rating 1", "rating 1 2 3", "sd", "sd 1 2", "st", "st 1 2", "write_fen", "write_fen a b", "write_pgn",
        "write_pgn a b", "write_settings", "write_settings a b", "usermove", "usermove e2e4 e7e5"],
    "missing parameters": ["modify_settings", "name", "probe", "result", "setboard", "tb nalimov", "tb nalimov 8M", "tc"],
    "integer argument expected": [
        "protover x", "contempt x", "level a 5 0", "level 40 a 0", "level 40 5 a", "level 40 5:xx 0", "level 4.5 5 0",
        "next x", "undo x", "undo 1.5", "undo 99999999999", "otim x", "time x", "time 1e3", "rating x 1", "rating 1 x",
        "sd x", "sd 1x", "sd --1", "st x", "st 1.5", "st 2147483648"],
    "command is not supported": ["bk", "ics", "pause", "resume", "variant normal", "bk x y"],
    "could not parse personality": ["personality foo"],
    "unrecognized command": ["one two", "e2e4 e7e5", "NEW game", "e4 ?", "\x01 \x02"],
    "could not tokenize the input string": ['"', "'", 'name "Anna', "setboard 'x", 'a"b', "ping it's"],
}


@pytest.mark.parametrize("reason, lines", WRONG_COUNTS.items())
def test_refused_with_the_reason(either, reason, lines):
    for line in lines:
        either.ask_text(line, f"Error ({reason}): {line}\n")
    assert either.position() == START


# --- Positions ---

NO_FEN = [
    "x",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1 2",
    "rnbqkbnr/pppppppp/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/ppppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/9/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/0/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/44/8/8/8/PPPPPPPP/RNBQKBNRR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNX w KQkq - 0 1",
    "/rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR/ w KQkq - 0 1",
    "//////// w - - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR W KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR wb KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w qK - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KK - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w K- - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w x - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e9 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq i6 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e66 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 101 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - -1 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - x 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 x",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 -1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 99999999999999999999",
]

NO_POSITION = [
    "8/8/8/8/8/8/8/8 w - - 0 1",  # no kings
    "4k3/8/8/8/8/8/8/8 w - - 0 1",
    "4k3/8/8/8/8/8/8/3KK3 w - - 0 1",
    "4k3/4R3/8/8/8/8/8/4K3 w - - 0 1",  # the side that moved is in check
    "4kK2/8/8/8/8/8/8/8 w - - 0 1",
    "P3k3/8/8/8/8/8/8/4K3 w - - 0 1",
    "4k3/8/8/8/8/8/8/p3K3 w - - 0 1",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e3 0 1",  # en passant on the wrong rank
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq e6 0 1",  # nothing to take there
    "4k3/8/8/8/8/8/8/4K3 w K - 0 1",  # a right without its rook
    "4k3/8/8/8/8/8/8/3K3R w K - 0 1",
    "QQQQQQQQ/QQQQQQQQ/QQQQQQQQ/QQQQQQQQ/8/8/k7/7K b - - 0 1",
]


def test_text_that_is_no_fen(either):
    either.send("force")
    for fen in NO_FEN:
        line = f"setboard {fen}"
        either.ask_text(line, f"Error (input inconsistent with FEN standard): {line}\n")
    assert either.position() == START


def test_impossible_positions_in_the_console(console):
    console.send("force", "e4")
    for fen in NO_POSITION:
        console.ask_text(f"setboard {fen}", "Command ignored (Illegal position)\n")
    assert console.position().startswith("rnbqkbnr/pppppppp/8/8/4P3/")
    console.send("e5")
    assert "Illegal move" not in console.ping()


def test_impossible_positions_under_xboard(xboard):
    for fen in NO_POSITION:
        xboard.send("new", "force", "e4")
        xboard.ask_text(f"setboard {fen}", "telluser Illegal position\n")
        xboard.ask_text("e5", "Illegal move: e5\n")
    # Nothing that is said to the invalid position may do harm.
    for line in """go|analyze|exit|eval|undo|next|remove|hint|hint|hint|write_fen x|display|edit|cancel|white|black|playother
                   draw|result *|?|.|sd 1|go|analyze|undo|post|hard|go|easy|force|edit|.|display""".replace("\n", "|").split("|"):
        xboard.send(line.strip())
        xboard.ping() if line.strip() not in ("edit",) else None
    xboard.send("new", "sd 1")
    xboard.ask("usermove e4", r"^move \S+\n")


def test_quoted_position_is_one_token(either):
    either.send("force", "setboard '4k3/8/8/8/8/8/4P3/4K3 w - - 0 1'")
    assert either.position() == "4k3/8/8/8/8/8/4P3/4K3 w - -"


# --- Raw bytes ---

MEBIBYTE = 1 << 20


def test_a_line_of_one_mebibyte(either):
    word = "x" * MEBIBYTE
    either.ask_text(word, f"Illegal move: {word}\n")
    line = "x " * (MEBIBYTE // 2)
    either.ask_text(line, f"Error (unrecognized command): {line}\n")
    either.send("setboard " + "8/" * (MEBIBYTE // 2 - 8))
    either.expect(r"Error \(must be in force mode\): setboard 8/8/")
    quoted = '"' + "y" * (MEBIBYTE - 1)
    either.ask_text(quoted, f"Error (could not tokenize the input string): {quoted}\n")
    name = "z" * (MEBIBYTE - 5)
    either.send(f"name {name}", f"id {name}", f"ping {name}")
    either.expect_text(f"pong {name}\n")
    assert either.position() == START


TOO_LONG = "Error (line longer than 1048576 bytes): "


@pytest.mark.parametrize("length", [MEBIBYTE + 1, 5 * MEBIBYTE + 17, 100 * MEBIBYTE])
def test_a_longer_line_is_skipped(either, length):
    either.send("force")
    line = "e4 " + "x" * (length - 3)
    either.ask_text(line, f"{TOO_LONG}e4 {'x' * 57}\n")
    either.send("e4")
    assert either.position().startswith("rnbqkbnr/pppppppp/8/8/4P3/")
    status = open(f"/proc/{either.process.pid}/status").read()
    assert int(re.search(r"VmHWM:\s+(\d+) kB", status)[1]) < 60000 or os.environ.get("VORKA_SANITIZED") == "1"


def test_a_longer_line_disturbs_neither_search_nor_edit_mode(either):
    either.send("force", "analyze", "x" * (MEBIBYTE + 1))
    either.expect_text(f"{TOO_LONG}{'x' * 60}\n")
    either.ask(".", r"stat01: \d+")
    either.send("exit", "edit", "#", "y" * (MEBIBYTE + 1))
    either.expect_text(f"{TOO_LONG}{'y' * 60}\n")
    either.send("Ke1", "c", "Ke8", ".")
    assert either.position().startswith("4k3/8/8/8/8/8/8/4K3")


def test_a_longer_line_at_the_end_of_the_input(console):
    console.send_bytes(b"x" * (MEBIBYTE + 1))
    assert f"{TOO_LONG}{'x' * 60}\n" in console.finish()


def test_numbers_of_one_mebibyte(either):
    digits = "9" * (MEBIBYTE - 20)
    for line in (f"sd {digits}", f"undo {digits}", f"level 40 {digits} 0"):
        either.ask_text(line, f"Error (integer argument expected): {line}\n")
    either.send(f"sd {'0' * (MEBIBYTE - 20)}1")
    either.send("e4")
    either.expect(r"(?:move|Vorka played:) \S+\n")


@pytest.mark.parametrize("line, answer", [
    (b"\0", b"Illegal move: \0\n"),
    (b"e9\0", b"Illegal move: e9\0\n"),
    (b"\0 \0", b"Error (unrecognized command): \0 \0\n"),
    (b"ping a\0b", b"pong a\0b\n"),
    (b"quit\0", b"Illegal move: quit\0\n"),
    (b"\xff\xfe\x80", b"Illegal move: \xff\xfe\x80\n"),
    (b"sd \xb2", b"Error (integer argument expected): sd \xb2\n"),
    (b"setboard \xff", b"Error (must be in force mode): setboard \xff\n"),
    (b"\x1b[A", b"Illegal move: \x1b[A\n"),
])
def test_bytes_that_are_no_text(either, line, answer):
    either.send_bytes(line + b"\n")
    either.expect_text(answer.decode("latin-1"))
    assert either.position() == START


def test_carriage_returns_are_blanks(either):
    either.send_bytes(b"force\r\ne4\r\n")
    assert "Illegal" not in either.ping()
    assert either.position().startswith("rnbqkbnr/pppppppp/8/8/4P3/")


def test_the_last_line_needs_no_end(start):
    engine = start()
    engine.send_bytes(b"ping 4")
    assert "pong 4\n" in engine.finish()


@pytest.mark.parametrize("seed", range(4))
def test_noise(start, seed):
    """Random bytes and shuffled words. The run ends in order, whatever they said."""
    dice = random.Random(seed)
    words = ALONE + "e4 Nf3 undo next sd st 1 0 -1 all level tc result 1-0 * setboard usermove ping # . c s Ke1 xe8 time otim".split()
    words = [word for word in words if word not in ("quit", "analyze")]
    engine = start("--sd", "1")
    for _ in range(400):
        if dice.random() < 0.2:
            line = dice.randbytes(dice.randrange(40)).replace(b"\n", b"").decode("latin-1")
        else:
            line = " ".join(dice.choice(words) for _ in range(dice.choice([1, 1, 1, 2, 3])))
        engine.send(line)
    engine.send("cancel", "force", "new", "sd 1")
    engine.finish(status=0)


def test_end_of_input_leaves_no_files_but_those_that_were_asked_for(start):
    engine = start()
    engine.send("force", "write_fen x", "write_pgn y")
    engine.finish()
    assert sorted(os.listdir(engine.folder)) == ["logfile.000", "x", "y"]
