"""Random sessions with the whole programs, for scripts/fuzz: what is typed, how it is tried, and what is wrong.

A session is a list of lines. One that begins with "~ " is not sent: it is a pause of so many milliseconds, so that a search
gets some way. A session is in order if the program answers to the end, ends with status 0 once its input has ended,
and says nothing on standard error, where the sanitizers report. The sessions of tests/fuzz/sessions, which were
wrong once, are tried by tests/integration/test_sessions.py with every build.
"""

import os
import pathlib
import re
import subprocess
import tempfile
import threading
import time
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parents[2]
PATIENCE = 60.0  # seconds after the last line
FENS = ["8/8/8/8/8/8/8/8 w - - 0 1", "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1",
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 99 1",
        "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1", "4k3/8/8/2pPp3/8/8/8/4K3 w - e6 0 1", "KQ6/8/8/8/8/8/8/7k w - - 100 1",
        "QQQQKQQQ/QQQQQQQQ/8/8/8/8/qqqqqqqq/qqqqkqqq w - - 0 1", "8/8/8/3k4/3p4/3P4/P7/3K4 w - - 0 1", "kK6/8/8/8/8/8/8/8 w",
        "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", "8/8/1k6/8/4Q2Q/8/8/K6Q w - - 0 1"]
NUMBERS = ["0", "1", "2", "5", "-1", "40", "100", "99999", "2147483647", "2147483648", "-2147483648", "9223372036854775807",
           "18446744073709551615", "18446744073709551616", "1.5", "0:30", "5:00", "x", "", "1e9", "0x10", "007"]
MOVES = ["e4", "e5", "Nf3", "Nc6", "d4", "e2e4", "e7e5", "g1f3", "O-O", "O-O-O", "e8=Q", "a7a8q", "exd5", "exd6", "Kd1", "Qxf7#",
         "e7e8", "Nbd2", "R1e1", "a1a1", "h7h8n", "0-0", "Ke2", "Kf7", "c5", "b1c3", "g8f6", "zz", "a9a1"]
FILES = ["a.txt", "b.txt", "a.pgn", "missing", ".", "/dev/null", "/dev/full", "no/such/folder", "kp_kp.vbb", "\"a b\"", "..",
         "logfile.000", "tournament.txt"]
SIZES = ["0", "1", "64K", "1M", "4M", "3G7", "-1M", "1000000G", "18446744073709551615G", "M", "2m"]
SETTINGS = ["enable_ettc=true", "enable_ettc=2", "futility_pruning_margin=250", "futility_pruning_margin=99999999",
            "max_ply=3", "no_such=1", "null_move_reduction=0", "=", "futility_pruning_margin", "iid_max_reduction=16"]
# Of the tournament search: name, least and most value of each.
TOURNAMENT_TABLE = re.findall(r'^    \{"(\w+)", &TournamentSettings::\w+, (-?\d+), (-?\d+)\},$',
                              (ROOT / "src/search/settings/tournament_settings.h").read_text(), re.M)
TOURNAMENT = [name for name, _, _ in TOURNAMENT_TABLE]
LIMITS = [f"{name} value {bound}" for name, *bounds in TOURNAMENT_TABLE for bound in bounds]
ODD = ["", " ", "\t", "\\", "\"", "'", "a" * 300, "\x01\x02\xff", "go go go", "e4 e5", "\"force\"", "FORCE", "%s%n", "usermove"]


class Kind(NamedTuple):
    """One way to talk to a program."""
    program: str
    opening: list
    closing: list  # sent at the end; it leaves edit mode, and every search
    answer: str  # to the last line of that
    lines: list  # templates; see Generator


# A word in capitals between angle brackets is drawn from the list of that name.
COMMON = ["go", "new", "force", "?", ".", "hint", "draw", "analyze", "exit", "undo", "undo <NUMBERS>", "undo all", "next",
          "next <NUMBERS>", "remove", "<MOVES>", "<MOVES>", "<MOVES>", "usermove <MOVES>", "setboard <FENS>", "setboard <FENS>",
          "read_fen <FILES>", "write_fen <FILES>", "read_pgn <FILES>", "write_pgn <FILES>", "read_settings <FILES>",
          "write_settings <FILES>", "modify_settings <SETTINGS>", "modify_settings <SETTINGS>;<SETTINGS>", "display_settings",
          "display_settings all", "display", "eval", "hash", "hash trans <SIZES>", "hash pawn <SIZES>", "hash eval <SIZES>",
          "tb", "tb nalimov <SIZES> <FILES>", "probe <FENS>", "generate", "verify", "generate all", "contempt <NUMBERS>",
          "personality <NUMBERS>", "personality Random", "personality Rux", "personality", "sd <NUMBERS>", "st <NUMBERS>",
          "level <NUMBERS> <NUMBERS> <NUMBERS>", "level 40 1 0", "tc 40 90 30; 0 5 <NUMBERS>", "tc 0 1 0", "time <NUMBERS>",
          "otim <NUMBERS>", "hard", "easy", "post", "nopost", "computer", "name <ODD>", "rating <NUMBERS> <NUMBERS>",
          "id <ODD>", "result 1-0 {x}", "result <ODD>", "ping <NUMBERS>", "version", "help", "help hash", "white", "black", "playother",
          "optimize_piece", "bk", "random", "variant <ODD>", "accepted <ODD>", "rejected <ODD>", "pause", "resume", "<ODD>",
          "xboard", "console", "fritz", "protover <NUMBERS>", "~ 5", "~ 20", "~ 60"]
# `edit` and `optimize_piece` read the lines after them.
EDIT = ["edit", "#", "c", "s", "Ke1", "Ke8", "Qa1", "xe1", "Pa8", "verify", "display", ".", "cancel", "help"]
XBOARD = ["time 500", "otim 500", "st 1", "go", "?", "hint", "undo", "remove", "draw", ".", "analyze", "exit", "new", "hard", "easy"]
UCI = ["ucinewgame", "isready", "position startpos", "position startpos moves <MOVES> <MOVES>", "position fen <FENS>",
       "position fen <FENS> moves <MOVES>", "position <ODD>", "go depth <NUMBERS>", "go depth 3", "go movetime <NUMBERS>",
       "go movetime 30", "go nodes <NUMBERS>", "go nodes 2000", "go infinite", "go ponder wtime <NUMBERS> btime <NUMBERS>", "go mate 2",
       "go wtime <NUMBERS> btime <NUMBERS> winc <NUMBERS> binc <NUMBERS> movestogo <NUMBERS>", "go searchmoves <MOVES> <MOVES> depth 2",
       "go <ODD>", "stop", "ponderhit", "debug on", "debug off", "debug <ODD>", "uci", "setoption name Hash value <NUMBERS>",
       "setoption name Hash value 2", "setoption name Clear Hash", "setoption name MultiPV value <NUMBERS>",
       "setoption name Contempt value <NUMBERS>", "setoption name Personality value Rux", "setoption name Personality value <ODD>",
       "setoption name Style value <NUMBERS>", "setoption name Settings File value <FILES>", "setoption name OwnBook value true",
       "setoption name Book File value <FILES>", "setoption name UCI_LimitStrength value true", "setoption name UCI_Elo value <NUMBERS>",
       "setoption name Bitbase Path value <FILES>", "setoption name Syzygy Path value <FILES>", "setoption name Log File value <FILES>",
       "setoption name UCI_AnalyseMode value true", "setoption name UCI_Opponent value <ODD>", "setoption name Ponder value true",
       *["setoption name Search value Tournament"] * 3, "setoption name Search value Classic", "setoption name Search value <ODD>",
       "setoption name Tournament File value <FILES>", "setoption name Tournament File value tournament.txt",
       *["setoption name <LIMITS>"] * 6, *["setoption name <TOURNAMENT> value <NUMBERS>"] * 3,
       "setoption name Move Overhead value <NUMBERS>", "setoption name <ODD> value <NUMBERS>", "setoption <ODD>", "<ODD>", "bench",
       "~ 5", "~ 20", "~ 60"]

KINDS = {
    "console": Kind("vorka", [], ["cancel", "cancel", "exit", "force", "ping 4711"], "pong 4711", COMMON * 2 + EDIT),
    "xboard": Kind("vorka", ["xboard", "protover 2"], ["cancel", "cancel", "exit", "force", "ping 4711"], "pong 4711", COMMON + XBOARD * 4 + EDIT),
    # A search to a depth goes on to it when the input has ended, however deep that is.
    "uci": Kind("vorka-uci", ["uci"], ["stop", "isready", "quit"], "readyok", UCI),
}
LISTS = {"FENS": FENS, "NUMBERS": NUMBERS, "MOVES": MOVES, "FILES": FILES, "SIZES": SIZES, "SETTINGS": SETTINGS, "ODD": ODD,
         "TOURNAMENT": TOURNAMENT, "LIMITS": LIMITS}


def random_session(kind, random):
    """The lines of a session, opening and closing left out."""
    def filled(template):
        return re.sub("<([A-Z]+)>", lambda found: random.choice(LISTS[found[1]]), template)
    lines = [filled(random.choice(kind.lines)) for _ in range(random.randint(1, 60))]
    if random.random() < 0.03:
        lines.append("quit")
    return [damaged(line, random) if random.random() < 0.05 else line for line in lines]


def damaged(line, random):
    """A character lost, doubled or changed; a pause stays one."""
    if not line or line.startswith("~"):
        return line
    at = random.randrange(len(line))
    return line[:at] + random.choice(["", line[at] * 2, chr(random.randrange(32, 256)), " "]) + line[at + 1:]


def text_of(lines):
    return "".join(line + "\n" for line in lines)


def lines_of(text):
    return text.split("\n")[:-1]


class Finding(NamedTuple):
    fault: str  # in a few words; two sessions with the same words have the same fault
    told: str  # what it said


def try_session(kind, program, lines, patience=PATIENCE):
    """Runs a session in an empty folder. A Finding, or None if all was in order."""
    with tempfile.TemporaryDirectory(prefix="vorka-session-") as folder:
        (pathlib.Path(folder) / "a.txt").write_text(FENS[1] + "\n")
        (pathlib.Path(folder) / "a.pgn").write_text('[Event "?"]\n\n1. e4 e5 2. Nf3 {a} Nc6 *\n')
        (pathlib.Path(folder) / "tournament.txt").write_text("null_move = 0\nfutility_margin = 5\n")
        # As everywhere: a table that is too large for the memory is refused.
        environment = dict(os.environ, ASAN_OPTIONS="allocator_may_return_null=1", UBSAN_OPTIONS="print_stacktrace=1")
        with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
            process = subprocess.Popen([str(program)], cwd=folder, stdin=subprocess.PIPE, stdout=output, stderr=errors,
                                       env=environment, start_new_session=True)
            try:
                is_hanging = not converse(process, [*kind.opening, *lines, *kind.closing], patience)
            finally:
                if process.poll() is None:
                    process.kill()
                    process.wait()
            wanted = "" if "quit" in lines else kind.answer
            return judged(wanted, process.returncode, is_hanging, content(output), content(errors))


def content(file):
    file.seek(0)
    return file.read().decode("latin-1")


def converse(process, lines, patience):
    """Says the lines, ends the input, and waits for the end. False if it doesn't come."""
    def say():
        try:
            for line in lines:
                if pause := re.fullmatch(r"~ (\d{1,4})", line):
                    time.sleep(int(pause[1]) / 1000)
                    continue
                process.stdin.write(line.encode("latin-1") + b"\n")
                process.stdin.flush()
            process.stdin.close()
        except (BrokenPipeError, ValueError, OSError):
            pass  # it has ended, by itself or at the end of our patience
    # A program that reads nothing for long keeps the pipe full.
    speaker = threading.Thread(target=say, daemon=True)
    speaker.start()
    pauses = sum(int(line[2:]) for line in lines if re.fullmatch(r"~ \d{1,4}", line)) / 1000
    try:
        process.wait(patience + pauses)
        return True
    except subprocess.TimeoutExpired:
        return False
    finally:
        if process.poll() is None:
            process.kill()
        speaker.join()


SANITIZER = re.compile(r"(?:ERROR: \w+Sanitizer: ([\w-]+)|runtime error: (.*))")
FRAME = re.compile(r"#\d+ 0x[0-9a-f]+ in (.+?)\(?[^ ]* /?[^ ]*?src/([\w/.]+:\d+)")


def judged(wanted, status, is_hanging, output, errors):
    told = f"{output[-3000:]}\n--- standard error\n{errors[-8000:]}"
    if is_hanging:
        return Finding("does not end", told)
    if errors.strip():
        report = SANITIZER.search(errors)
        frame = FRAME.search(errors)
        words = (report[1] or report[2]) if report else errors.strip().splitlines()[0]
        return Finding(f"{words}{' in ' + frame[2] if frame else ''}", told)
    if status != 0:
        return Finding(f"ends with status {status}", told)
    if wanted not in output:
        return Finding(f"gives no {wanted}", told)
    return None


def fewer_lines(lines, is_wrong, still_time):
    """Delta debugging by lines: the shortest session found that is wrong still. `is_wrong` tries one."""
    size = max(len(lines) // 2, 1)
    while still_time():
        at, has_shrunk = 0, False
        while at < len(lines) and still_time():
            shorter = lines[:at] + lines[at + size:]
            if shorter != lines and is_wrong(shorter):
                lines, has_shrunk = shorter, True
            else:
                at += size
        if size == 1 and not has_shrunk:
            break
        size = max(size // 2, 1)
    return lines
