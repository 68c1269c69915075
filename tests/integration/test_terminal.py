"""Standard input is a terminal: raw mode, and lines that arrive byte by byte."""

import termios

RAW_NOTE = "Stdin has been set to raw mode (OS: Unix compatible). (not sent to xboard)\n"


def canonical(engine):
    """Whether the terminal still hands over whole lines only."""
    return bool(termios.tcgetattr(engine.terminal_of_child)[3] & termios.ICANON)


def test_console_leaves_the_terminal_as_it_is(start):
    engine = start(terminal=True)
    engine.ping()
    assert canonical(engine)
    assert RAW_NOTE not in engine.log


def test_xboard_switches_to_raw_mode_once(start):
    engine = start(terminal=True)
    engine.send("xboard", "protover 2", "xboard")
    engine.ping()
    assert not canonical(engine)
    assert engine.log.count(RAW_NOTE) == 1
    assert RAW_NOTE not in engine.output


def test_console_does_not_bring_the_old_mode_back(start):
    engine = start(terminal=True)
    engine.send("xboard", "console")
    engine.ping()
    assert not canonical(engine)


def test_bytes_one_by_one_make_a_line(start):
    engine = start(terminal=True)
    engine.send("xboard")
    engine.ping()
    for byte in b"ping 7\n":
        engine.send_bytes(bytes([byte]))
    engine.expect_text("pong 7\n")


def test_bytes_one_by_one_during_a_search(start):
    engine = start(terminal=True)
    engine.send("xboard", "protover 2", "post", "analyze")
    engine.expect(r"^\d+ -?\d+ \d+ \d+ ")
    for part in (b"pi", b"ng", b" 8", b"\npin", b"g 9\n"):
        engine.send_bytes(part)
    engine.expect_text("pong 8\n")
    engine.expect_text("pong 9\n")
    engine.send("exit")
    engine.ping()


def test_two_lines_in_one_write_during_a_search(start):
    # The second line already lies in the stream's buffer when the terminal has nothing more to say.
    engine = start(terminal=True)
    engine.send("xboard", "protover 2", "post", "analyze")
    engine.expect(r"^\d+ -?\d+ \d+ \d+ ")
    engine.send_bytes(b"ping 8\nping 9\nexit\nping 10\n")
    for number in (8, 9, 10):
        engine.expect_text(f"pong {number}\n")


def test_a_game_typed_at_a_terminal(start):
    engine = start(terminal=True)
    engine.send("sd 1", "easy")
    engine.ask("e4", "Vorka played: ")
    engine.expect("\rWhite 2> ")
    engine.ask("d4", "Vorka played: ")
    engine.expect("\rWhite 3> ")
    engine.send_bytes(b"\x04")  # end of input, as a person types it
    engine.wait(status=0)
