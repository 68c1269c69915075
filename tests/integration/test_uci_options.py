"""The options of vorka-uci."""

import os
import re
import shutil
from pathlib import Path

import pytest
import rules
from engine import UCI_PROGRAM
from uci_dialogue import BESTMOVE, MATE_IN_TWO, START, number, ready, search


# --- Options ---

def test_values_out_of_bounds_are_refused(uci):
    uci.send("setoption name Hash value 0")
    uci.expect_text("info string refused value of Hash: 0\n")
    uci.send("setoption name Nonsense value 3")
    uci.expect_text("info string there is no option Nonsense\n")


@pytest.mark.parametrize("line", ["setoption", "setoption name", "setoption Hash value 3", "setoption value 3 name Hash"])
def test_a_name_is_missed(uci, line):
    uci.ask_text(line, "info string setoption goes on with name NAME value VALUE\n")


def test_a_value_is_missed(uci):
    uci.ask_text("setoption name Hash", "info string refused value of Hash: (none)\n")


def test_the_size_of_the_tables_is_told_where_it_is_not_that_of_the_hash(uci):
    for size, taken in ((100, 63), (3, 2), (63, 35)):
        uci.ask_text(f"setoption name Hash value {size}",
                     f"info string the numbers of entries are powers of two, so the tables take {taken} MiB of {size}\n")
    for size in (1, 64, 256):
        uci.send(f"setoption name Hash value {size}")
        assert ready(uci) == ""


def test_a_log_file_is_a_regular_one(uci):
    (uci.folder / "link").symlink_to("log")
    os.mkfifo(uci.folder / "pipe")
    for name in ("pipe", "/dev/null", "."):
        uci.ask_text(f"setoption name Log File value {name}", f"info string could not open {name}\n")
    uci.send("setoption name Log File value link")
    ready(uci)
    assert (uci.folder / "log").read_text().startswith("Vorka logfile created at: ")


def test_two_programs_never_share_a_log(uci, start):
    other = start(program=UCI_PROGRAM, folder=uci.folder)
    for engine in (uci, other):
        engine.send("setoption name Log File value log")
        told = ready(engine)
    assert told == "info string could not open log: another program writes its log there\n"
    assert number(search(other, "go depth 2")[0][-1], "nodes") > 0
    search(uci, "go depth 3")
    uci.send("setoption name Log File value <empty>")
    ready(uci)
    log = (uci.folder / "log").read_text()
    assert "go depth 3" in log and "go depth 2" not in log
    other.send("setoption name Log File value log")
    assert ready(other) == ""


def test_the_places_of_settings_with_a_name_are_told(uci, start, tmp_path):
    """Beside a program that has no such folder."""
    (tmp_path / "a/b/c").mkdir(parents=True)
    shutil.copy(UCI_PROGRAM, tmp_path / "a/b/c/vorka-uci")
    alone = start(program=str(tmp_path / "a/b/c/vorka-uci"))
    alone.send("setoption name Settings File value tuned")
    places = ", ".join(str(tmp_path / folder / "settings/tuned.txt") for folder in ("a/b/c", "a/b", "a"))
    alone.expect_text(f"; it was looked for in {places}\n")


def test_what_is_wrong_with_a_bitbase_is_told(uci):
    (uci.folder / "kp_kp.vbb").write_bytes(b"short")
    uci.ask_text(f"setoption name Bitbase Path value {uci.folder}",
                 f"info string Could not open file '{uci.folder}/kp_kp.vbb' (it has another size than it should)\n")
    (uci.folder / "kp_kp.vbb").unlink()
    os.mkfifo(uci.folder / "kp_kp.vbb")
    uci.ask_text(f"setoption name Bitbase Path value {uci.folder}",
                 f"info string Could not open file '{uci.folder}/kp_kp.vbb' (it is no regular file)\n")


def test_a_bad_bitbase_does_not_hide_a_good_one(uci):
    """Of those files only the size is known, and a checksum that is missing is told of a file that is in use."""
    (uci.folder / "kp_kp.vbb").write_bytes(b"short")
    (uci.folder / "kpp_kp_ram.vbb").write_bytes(bytes(0x1E0000))
    uci.send(f"setoption name Bitbase Path value {uci.folder}")
    told = ready(uci)
    assert "kp_kp.vbb' (it has another size than it should)\n" in told
    assert "the checksum of this file is missing: kpp_kp_ram.vbb.sha256\n" in told


def test_what_is_wrong_with_the_bitbases_of_the_program_is_told_once(start, tmp_path):
    shutil.copy(UCI_PROGRAM, tmp_path / "vorka-uci")
    (tmp_path / "kp_kp.vbb").write_bytes(b"short")
    complaint = f"info string Could not open file '{tmp_path}/kp_kp.vbb' (it has another size than it should)\n"
    alone = start(program=str(tmp_path / "vorka-uci"))
    assert ready(alone) == "", "nothing comes before it is asked"
    alone.send("uci")
    assert complaint not in alone.hear("^uciok\n")[0]
    assert ready(alone) == complaint, "and nothing of the file that is not there"
    alone.send("uci")
    alone.expect("^uciok\n")
    assert ready(alone) == ""
    alone.send("setoption name Bitbase Path value <empty>")
    assert ready(alone) == complaint
    (tmp_path / "kp_kp.vbb").unlink()
    alone.send("setoption name Bitbase Path value <empty>")
    assert ready(alone) == ""


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
    # The numbers of the tournament search are written in small letters; their table has a test of its own.
    assert {name for name in offered if not re.fullmatch("[a-z_]+", name)} == {
        "Hash", "Clear Hash", "Ponder", "MultiPV", "Contempt", "Personality", "Style", "Search", "Settings File",
        "Tournament File", "OwnBook", "Book File", "UCI_LimitStrength", "UCI_Elo", "UCI_AnalyseMode", "UCI_Opponent",
        "Move Overhead", "Bitbase Path", "Syzygy Path", "Log File"}
    assert len(offered) > 50
    assert offered["Search"][4] == ["Classic", "Tournament"]
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


def test_settings_for_the_search_that_does_not_play_are_told(uci):
    (uci.folder / "deep.txt").write_text("root_distance_multiplier=128\n")
    for option, told in (("Settings File value deep.txt", True), ("Settings File value <empty>", False),
                         ("Search value Classic", False), ("Settings File value deep.txt", False),
                         ("Search value Tournament", False), ("UCI_LimitStrength value true", False),
                         ("Settings File value deep.txt", False)):
        uci.send(f"setoption name {option}")
        said = ready(uci)
        assert said.count("info string ") == told and ("with Search set to Classic" in said) == told, option


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
        assert number(lines[-1], "nodes") <= 400
        assert {number(line, "multipv") for line in lines if " multipv " in line} <= {1}
        position = position.make(position.find(best[1]))
        if position.result():
            break
    uci.send("go infinite")
    uci.expect("^info depth 4 ")
    uci.ask("stop", BESTMOVE)
    uci.send("setoption name UCI_LimitStrength value false")
    assert number(search(uci, "position startpos", "go depth 8")[0][-1], "nodes") > 1000


@pytest.mark.parametrize("word", ["ponderhit", "stop"])
def test_limited_strength_stays_limited_on_the_opponents_time(uci, word):
    uci.send("setoption name UCI_LimitStrength value true", "setoption name UCI_Elo value 1000")
    for _ in range(5):
        uci.send("ucinewgame", "position startpos", "go ponder wtime 60000 btime 60000")
        assert "bestmove" not in ready(uci)
        lines, best = search(uci, word)
        assert number(lines[-1], "nodes") <= 400
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
