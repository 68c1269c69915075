"""What is written down of the program's doings is what it does: the dialogues of tests/golden, and the sessions and
commands that the documents show.

Dialogues are compared byte for byte with tests/golden/dialogues: <name>.input is what is typed, <name>.stdout and
<name>.logfile are what the program prints and logs. A line of the input that begins with ~ is not sent: it is a pattern
to wait for. What no two runs share is replaced by a word in angle brackets, and nothing else. UPDATE_GOLDEN=1 writes the
files anew.

In the documents every block in plain fences is either a session at the prompt, which is typed anew and compared line by
line, or a list of shell commands. Each command has to be known to the table SHOWN, which says how it is tried. A block
that is neither, such as a drawing, begins with ```text, and a dialogue with vorka-uci with ```uci: test_uci tries those.
After ```dialogue stand lines for the program that begin with `> `, and what it answers, in this order.
"""

import difflib
import html
import json
import os
import re
import shlex
import shutil
import subprocess
import tempfile
import xml.etree.ElementTree
from pathlib import Path

import pytest
from engine import PROGRAM

FOLDER = Path(__file__).parent.parent / "golden" / "dialogues"
ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ.get("VORKA_ENGINE", "build/vorka")).resolve().parent

NORMALISED = [
    # The greeting is drawn by lot; so is the one at the return to the console.
    (r"(?m)^(?P<before>.*?)(?:Hallo|Guten Tag|Welcome|Vorka welcomes you|Vorka ist bereit|Ave und beim Jupiter)(?=!$|, )",
     r"\g<before><greeting>"),
    (r"(?m)(?<=^Vorka logfile created at: ).*$", "<date>"),
    (r"time: \S+ sec \(\d+ knodes, \S+ knps\)\nhit ratio: trans=\S+, pawn=\S+, eval=\S+\n"
     r"ETTC tries=\d+, cutoffs=\d+, efficiency=\S+\n", "<statistics>\n"),
    # On the screen a depth line stays open until the thinking line overwrites it.
    (r"(?:Depth: \d+\.(?=[\r\n<]| \()(?: \(not sent to xboard\)\n)?|\r?Depth: \d+\. .*\n|!\? \S+\n|\d+ knodes searched\n"
     r"|New move found: \S+\n|#warning: Search instability found!\n)+", "<thinking>\n"),
    (r"(?m)(?:^\d+ -?\d+ \d+ \d+ .* $\n(?: \(not sent to xboard\)\n)?|^New pv-move candidate found: .*\n"
     r"|^Search instability found!.*\n)+", "<thinking>\n"),
    # Where the program lies, and which files lie beside it.
    (r"(?m)^(Loading bitbases \(executables directory=').*('\):)$", r"\1<directory>\2"),
    (r"(?m)^- (two pawns|rammed pawn) bitbases (?:found|not found \('.*'\)\.?)$", r"- \1 bitbases <found or not>"),
    (r"(?m)^(max_time_limit=|variable_time_limit=)\d+$", r"\1<milliseconds>"),
]


def normalised(text):
    for pattern, replacement in NORMALISED:
        text = re.sub(pattern, replacement, text)
    return text


def compare(path, text):
    if os.environ.get("UPDATE_GOLDEN") == "1":
        path.write_bytes(text.encode("latin-1"))
    wanted = path.read_bytes().decode("latin-1") if path.exists() else ""
    if text != wanted:
        pytest.fail("\n".join(difflib.unified_diff(
            [repr(line) for line in wanted.split("\n")], [repr(line) for line in text.split("\n")],
            str(path.name), "this run", lineterm="", n=2)), pytrace=False)


@pytest.mark.parametrize("name", sorted(path.stem for path in FOLDER.glob("*.input")))
def test_transcript(start, name):
    engine = start()
    for line in (FOLDER / f"{name}.input").read_text().splitlines():
        if line.startswith("~"):
            engine.expect(line[1:])
        else:
            engine.send(line)
    output = engine.finish()
    assert engine.errors == ""
    compare(FOLDER / f"{name}.stdout", normalised(output))
    compare(FOLDER / f"{name}.logfile", normalised(engine.log))


# --- What the documents show ---

DOCUMENTS = ["README.md", "CONTRIBUTING.md", *sorted(f"docs/{path.name}" for path in (ROOT / "docs").glob("*.md"))]
PROMPT = re.compile(r"^(?:(?:White|Black) \d+|edit mode)> ")
GREETING = r"(?:Hallo|Guten Tag|Welcome|Vorka welcomes you|Vorka ist bereit|Ave und beim Jupiter)!"
LEFT_OUT = "[..]"


def blocks(document):
    """The blocks between plain fences, as lists of lines."""
    found = re.findall(r"(?ms)^```(\w*)\n(.*?)^```$", (ROOT / document).read_text())
    return [block.splitlines() for kind, block in found if kind not in ("text", "uci", "dialogue")]


def is_session(block):
    return any(PROMPT.match(line) for line in block)


SESSIONS = [(document, block) for document in DOCUMENTS for block in blocks(document) if is_session(block)]
COMMANDS = sorted({(document, line.split("  #")[0].strip()) for document in DOCUMENTS for block in blocks(document)
                   if not is_session(block) for line in block})


def as_seen(output):
    """The output as a terminal shows it: a carriage return goes back over the line."""
    lines = []
    for line in output.split("\n"):
        seen = ""
        for part in line.split("\r"):
            seen = part + seen[len(part):]
        lines.append(seen)
    return lines


def test_terminal_lines_are_overwritten():
    assert as_seen("Depth: 1.\rDepth: 1. e4 (0)\nlonger\rshort") == ["Depth: 1. e4 (0)", "shortr"]


def pattern_of(session):
    """A pattern for the whole session: lines as they stand, the greeting any of them, LEFT_OUT any lines or none."""
    parts = []
    for line in session:
        if line == LEFT_OUT:
            parts.append(r"(?:.*\n)*?")
        elif re.fullmatch(GREETING, line):
            parts.append(GREETING + r"\n")
        else:
            parts.append(re.escape(line) + r"\n")
    return "".join(parts)


@pytest.mark.parametrize("document, session", SESSIONS, ids=[document for document, _ in SESSIONS])
def test_session_of_a_document(start, document, session):
    engine = start()
    seen = "" if PROMPT.match(session[0]) else None  # a session that begins at a prompt leaves the greeting out
    for line in session:
        prompt = PROMPT.match(line)
        if not prompt:
            continue
        before, _ = engine.hear(r"(?: \r)?" + re.escape(prompt[0]))
        seen = (seen or "") + ("" if seen == "" and PROMPT.match(session[0]) else before) + line + "\n"
        engine.send(line[prompt.end():])
    if not PROMPT.match(session[-1]):
        seen += engine.hear(r"(?: \r)?" + PROMPT.pattern.lstrip("^"))[0]
    seen = "\n".join(as_seen(seen))
    if not re.fullmatch(pattern_of(session), seen):
        pytest.fail("\n".join(difflib.unified_diff(session, seen.splitlines(), document, "this run", lineterm="", n=2)),
                    pytrace=False)


DIALOGUES = [(document, block) for document in DOCUMENTS
             for block in re.findall(r"(?ms)^```dialogue\n(.*?)^```$", (ROOT / document).read_text())]
FILES_OF_BITBASES = ("kp_kp.vbb", "kpp_kp_ram.vbb")


@pytest.mark.parametrize("document, dialogue", DIALOGUES, ids=[document for document, _ in DIALOGUES])
def test_dialogue_of_a_document(start, tmp_path, document, dialogue):
    """[..] stands for any lines, N for a number, WORD for a word. A copy of the program has only those files beside it
    that the dialogue finds there. Tables of one pawn are computed where it takes them into use."""
    program = Path(shutil.copy(PROGRAM, tmp_path))
    for name in FILES_OF_BITBASES:
        if "file already exists" in dialogue:
            (tmp_path / name).touch()
    folder = tmp_path / "started"
    (folder / "tables").mkdir(parents=True)
    if "Nalimov tablebases... 'tables'" in dialogue:
        built = subprocess.run([os.environ["VORKA_TABLE_BUILDER"], "--quiet", "--output", folder / "tables", "KPK"],
                               capture_output=True, text=True)
        if "can't pack" in built.stderr:
            pytest.skip("this build was made without zstd")
        assert built.returncode == 0, built.stderr
    engine = start(folder=folder, program=program)
    for line in dialogue.splitlines():
        if line.startswith("> "):
            engine.send(line[2:])
        elif line != LEFT_OUT:
            words = [{"N": r"-?\d+", "WORD": r"\S+"}.get(word, re.escape(word)) for word in line.split(" ")]
            engine.expect(r"(?:^|\r|> )" + " ".join(words) + r" ?$")


def run(*command):
    return subprocess.run(command, cwd=ROOT, capture_output=True, encoding="utf-8", errors="replace", check=True).stdout


def script_answers_help(words):
    """A script that installs and builds is only read by the shell and asked for its help, which names its words."""
    run("bash", "-n", words[0])
    told = run(words[0], "--help")
    assert "usage: " + words[0] in told
    for word in words[1:]:
        assert word in told


def options_of_the_script_exist(words):
    """The options before -- are its own; those after it, if any, ctest's."""
    script_answers_help(words[:1])
    told = run(words[0], "--help")
    for word in words[1:words.index("--") if "--" in words else None]:
        if word.startswith("--"):
            assert word in told


def python_script_answers_help(words):
    """The same for one in Python, which takes a number after its name, or words."""
    told = run(words[0], "--help")
    assert "usage: " + words[0] in told
    for word in words[1:]:
        assert word.isdigit() or re.search(rf"\b{word}\b", told)


def preset_exists(words):
    """cmake and ctest are not run: the preset, the options and the target must exist."""
    presets = json.loads((ROOT / "CMakePresets.json").read_text())
    kinds = {"--build": "buildPresets", "--workflow": "workflowPresets", "ctest": "testPresets",
             "cpack": "packagePresets"}
    kind = next((kinds[word] for word in words if word in kinds), "configurePresets")
    if "--preset" in words:
        name = words[words.index("--preset") + 1]
        assert name in [preset["name"] for preset in presets[kind]], f"no preset {name} in {kind}"
    for word in words:
        if word.startswith("-D") and not word.startswith("-DCMAKE_"):
            assert f"option({word[2:].split('=')[0]} " in (ROOT / "CMakeLists.txt").read_text()
    if "--target" in words:
        target = words[words.index("--target") + 1]
        assert re.search(rf"^{target}:", run("cmake", "--build", str(BUILD), "--target", "help"), re.M)
    if "-L" in words:
        tests = run("ctest", "--test-dir", str(BUILD), "-N", *words[words.index("-L"):])
        assert int(re.search(r"Total Tests: (\d+)", tests)[1]) > 0


def version():
    return re.search(r"project\(vorka VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]


def installation_is_of_a_preset(words):
    """test_install installs; here the build must be one that a preset makes."""
    presets = json.loads((ROOT / "CMakePresets.json").read_text())["configurePresets"]
    assert Path(words[2]).parent.name == "build" and Path(words[2]).name in [preset["name"] for preset in presets]


def package_is_what_is_made(words):
    """Nothing is installed: the file must have the name that cpack gives it."""
    release = re.search(r"CPACK_DEBIAN_PACKAGE_RELEASE (\d+)", (ROOT / "cmake/VorkaPackage.cmake").read_text())[1]
    assert words[2] == f"./build/package/out/vorka_{version()}-{release}_amd64.deb"


def image_can_be_made(words):
    """Docker isn't asked: scripts/try_package follows the Dockerfile, whose words it has to know."""
    assert words[-1] == {"build": ".", "run": "vorka"}[words[1]]
    known = re.findall(r'word == "(\w+)"', (ROOT / "scripts/try_package").read_text())
    text = (ROOT / "Dockerfile").read_text().replace("\\\n", "")
    assert {line.split()[0] for line in text.splitlines() if line and not line.startswith("#")} <= {*known}


def packages_are_those_of_the_scripts(words):
    """Nothing is installed: the packages must be those that the scripts install."""
    assert f"build_packages=({' '.join(words[2:])})\n" in (ROOT / "scripts/lib/packages.sh").read_text()


def xboard_gets_the_engine(words):
    """XBoard opens a window and stays out: its options must be its own, test_xboard_match plays with them."""
    assert words[1] == "-fcp" and words[2].endswith("/build/play/vorka-xboard") and words[3] == "-fd"
    shown = (ROOT / "tests/integration/test_xboard_match.py").read_text()
    assert '"-fcp"' in shown and '"-fd"' in shown


def in_this_build(word):
    return re.sub(r"^build/\w+/", f"{BUILD}/", word)


def program_runs(words, *more):
    """A program of the release build is run as it stands, from the build under test."""
    return run(in_this_build(words[0]), *words[1:], *more)


def bench_runs(words):
    """Run to a lower depth; the signature itself is compared elsewhere. A run is kept in, or compared with, a file of
    the test's own."""
    with tempfile.TemporaryDirectory() as folder:
        kept = f"{folder}/a.run"
        if "--compare" in words:
            run(in_this_build(words[0]), "--depth", "1", "--save", kept)
        own = [kept if before in ("--save", "--compare") else word for before, word in zip([""] + words, words)]
        assert re.search(r"^Bench: \d+$", program_runs(own, "--depth", "1"), re.M)


def solves_positions(words):
    """FILE stands for any; here it holds one position, and depth 1 does for it."""
    assert words[-1] == "FILE"
    with tempfile.NamedTemporaryFile("w", suffix=".epd") as file:
        file.write("7k/5Q2/6K1/8/8/8/8/8 w - - bm Qf8#;\n")
        file.flush()
        assert "Solved: 1 of 1" in run(in_this_build(words[0]), "--depth", "1", file.name)


def trace_tells_the_score(words):
    assert "score" in program_runs(words).lower()


def program_answers_help(words):
    """What plays for minutes, or stands in another build, is asked for its help; the options must stand there."""
    told = run(words[0], "--help")
    for word in words[1:]:
        if word.startswith("--"):
            assert word in told


def program_names_its_words(words):
    told = run(words[0], "--help")
    for word in words[1:]:
        assert re.search(rf"\b{word}\b", told)


def tool_answers_help(words):
    """The same for a program of the build under test."""
    told = run(in_this_build(words[0]), "--help")
    for word in words[1:]:
        if word.startswith("--"):
            assert word in told


def fuzz_target_has_seeds(words):
    """A fuzz target needs clang's library and is not built here; its source and its seeds must be there."""
    name = Path(words[0]).name
    assert (ROOT / f"tests/fuzz/{name}.cpp").is_file()
    assert any((ROOT / words[1]).iterdir())
    assert words[1] == f"tests/fuzz/seeds/{name}"


def annotations_are_taken_out(words):
    """pgn-extract reads a game with all that is taken out of it; without that package nothing is tried."""
    program = shutil.which(words[0], path=f"{os.environ['PATH']}:/usr/games")
    if program:
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "annotated.pgn").write_text("1. e4 $1 {good} e5 (1... c5 2. Nf3) 2. Nf3! *\n")
            subprocess.run([program, *words[1:]], cwd=folder, capture_output=True, check=True)
            assert Path(folder, "plain.pgn").read_text().split("\n\n")[1].strip() == "1. e4 e5 2. Nf3 *"


def makefile_names_the_program(words):
    """Nothing is built here: .ci/run does that. make says what it would do."""
    told = run(words[0], "-n", *words[1:])
    assert "--target vorka-uci" in told and told.splitlines()[-1].endswith(" " + words[1].split("=")[1])


def bench_is_counted(words):
    """Valgrind is not needed to see whether the bench takes its words."""
    bench_runs(words[[word.startswith("build/") for word in words].index(True):])


def proof_has_its_variables(words):
    """A long proof is not run: its test must be there and read the variables."""
    source = "".join((ROOT / f"tests/tools/{name}").read_text()
                     for name in (Path(words[-1]).name + ".cpp", "table_oracles.h"))
    for word in words[:-1]:
        assert f'Environment("{word.split("=")[0]}")' in source


SHOWN = [
    (r"make EXE=.*", makefile_names_the_program),
    (r"scripts/(fuzz|soak|mutate|manual|pictures|screenshots)( [\w ]+)?", python_script_answers_help),
    (r"scripts/try_package \w+", program_names_its_words),
    (r"scripts/(test|web)( .*)?", options_of_the_script_exist),
    (r"scripts/\w+( \w+)?", script_answers_help),
    (r"cmake --install .*", installation_is_of_a_preset),
    (r"(cmake|ctest|cpack) .*", preset_exists),
    (r"apt install \./.*", package_is_what_is_made),
    (r"docker (build|run) .*", image_can_be_made),
    (r"apt install .*", packages_are_those_of_the_scripts),
    (r"xboard .*", xboard_gets_the_engine),
    (r"pgn-extract .*", annotations_are_taken_out),
    (r"build/fuzz/.*", fuzz_target_has_seeds),
    (r"build/\w+/tools/bench( .*)?", bench_runs),
    (r"valgrind --tool=callgrind .*", bench_is_counted),
    (r"build/\w+/tools/eval_trace .*", trace_tells_the_score),
    (r"build/\w+/tools/solve_epd .*", solves_positions),
    (r"build/\w+/tools/(bitbase|table)_builder/\w+ --help", program_runs),
    (r"VORKA_\w+=.* build/test/tests/tools/\w+", proof_has_its_variables),
    (r"build/\w+/tools/(selfplay|tune)/\w+ .*", tool_answers_help),
    (r"build/\w+/tools/check_tables .*", tool_answers_help),
    (r"(tools|benchmarks|scripts)/\w+ .*", program_answers_help),
]


@pytest.mark.parametrize("document, line", COMMANDS)
def test_command_of_a_document(document, line):
    for command in line.split(" && "):
        command = command.removeprefix("sudo ")  # none of the checks does what needs root
        check = next((check for pattern, check in SHOWN if re.fullmatch(pattern, command)), None)
        assert check, f"{document} shows a command that no test knows: {command}"
        check(shlex.split(command))


@pytest.mark.parametrize("document", [*DOCUMENTS, "CHANGELOG.md"])
def test_links_and_paths_of_a_document(document):
    """What a document links to is there, and so is what it names in backticks with a folder of the repository."""
    text = (ROOT / document).read_text()
    for target in re.findall(r"\]\((?!https?:)([^)#]+)(?:#[^)]*)?\)", text):
        assert ((ROOT / document).parent / target).exists(), f"{document} links to {target}"
    folders = r"(?:\.ci|benchmarks|cmake|docs|packaging|scripts|settings|src|tests|tools)"
    for path in re.findall(rf"`({folders}/[\w./]+)`", text):
        found = (ROOT / path).exists() or (ROOT / f"{path}.cpp").exists()
        assert found, f"{document} names {path}"
    for path, name in re.findall(r"`(src/[\w./]+\.(?:cpp|h))`,\s+`([\w:]+)`", text):
        assert name.split("::")[-1] in (ROOT / path).read_text(), f"{document} looks for {name} in {path}"


@pytest.mark.parametrize("name", sorted(path.stem for path in (ROOT / "docs/diagrams").glob("*.dot")))
def test_diagram_shows_its_text(name):
    """What graphviz draws depends on its version and the fonts; the words have to be those of the text."""
    text = (ROOT / f"docs/diagrams/{name}.dot").read_text()
    words = [word for label in re.findall(r'label = "([^"]*)"', text) for word in label.split(r"\n")]
    drawn = map(html.unescape, re.findall(r"<text[^>]*>([^<]*)</text>", (ROOT / f"docs/diagrams/{name}.svg").read_text()))
    assert sorted(words) == sorted(drawn)


@pytest.mark.parametrize("path", sorted((ROOT / "docs").glob("*/*.svg")), ids=lambda path: path.name)
def test_picture_is_shown_and_has_a_ground_of_its_own(path):
    """A document shows it, and on a dark page it can be read as well: something white, or nearly, lies below it."""
    assert any(f"]({path.parent.name}/{path.name})" in (ROOT / document).read_text() for document in DOCUMENTS)
    root = xml.etree.ElementTree.parse(path).getroot()
    fills = [re.sub(r".*fill: ?([^;]+).*", r"\1", element.get("style", "")) if "fill" in element.get("style", "")
             else element.get("fill") for element in list(root.iter())[:14]]
    assert any(re.fullmatch(r"white|#fff|#fff\w{3}", fill or "") for fill in fills), fills


# --- What looks wrong and is meant ---

def oddities():
    """The entries of docs/oddities.md: heading and text."""
    text = (ROOT / "docs/oddities.md").read_text().split("## How the alternatives")[0]
    return re.findall(r"(?ms)^### (.+?)$(.*?)(?=^##|\Z)", text)


def everything_under(folder):
    return "\n".join(path.read_text() for path in sorted((ROOT / folder).rglob("*")) if path.suffix in (".cpp", ".h"))


@pytest.mark.parametrize("name, text", oddities(), ids=[name for name, _ in oddities()])
def test_oddity_is_where_it_says_and_has_a_test(name, text):
    parts = dict(re.findall(r"(?ms)^- (Where|Stays|Otherwise|Test): (.*?)(?=^- |\Z)", text))
    assert list(parts) == ["Where", "Stays", "Otherwise", "Test"]
    place, file = re.findall(r"`([^`]+)`", parts["Where"])
    name = re.escape(place.split("::")[-1])
    assert re.search(rf"\b{name}\b", (ROOT / file).read_text()), f"{file} holds no {place}"
    tests = everything_under("tests")
    told = " ".join(parts["Test"].split())
    for row in re.findall(r'"([^"]+)"', told):
        assert f'"{row}"' in tests, f"no row of a test is called {row}"
    for test in re.findall(r"`([A-Z]\w+(?:\.\w+)?)`", told):
        suite, _, case = test.partition(".")
        assert re.search(rf"\b{suite}, {case}\b" if case else rf"\b{suite}\b", tests), f"there is no test {test}"


def test_comments_that_point_to_an_oddity_find_it():
    """A pointer is written as docs/oddities.md, then a comma and the entry's name or its beginning."""
    sources = re.sub(r"\s*\n\s*///?<? ?", " ", everything_under("src"))
    names = [name for name, _ in oddities()]
    for pointer in re.findall(r"docs/oddities\.md, ([^.:;)]*)", sources):
        found = any(pointer.startswith(name) or name.startswith(pointer) for name in names)
        assert found, f"docs/oddities.md has no entry {pointer!r}"


def test_no_comment_calls_a_rule_deliberate_and_leaves_it_at_that():
    for folder in ("src", "tools"):
        assert not re.findall(r"(?i)//.*\bdeliberate(?:ly)?\b.*", everything_under(folder)), "docs/oddities.md has the reasons"


# --- The steps of a node ---

def test_steps_of_a_node_are_numbered_alike():
    """docs/search.md has a row for each step, src/search/node/search_serial.cpp a comment that begins it."""
    classic, tournament = (ROOT / "docs/search.md").read_text().split("\n## The tournament search\n")
    rows = re.findall(r"(?m)^\| (\d+) \| ([^|]+) \| ([^|]+) \| [^|]+ \|$", classic)
    source = (ROOT / "src/search/node/search_serial.cpp").read_text()
    comments = {int(number): words for number, words in re.findall(r"// (\d+)\. (.*)", source)}
    assert [int(number) for number, _, _ in rows] == sorted(comments) == list(range(1, len(rows) + 1))
    for number, step, place in rows:
        assert step.startswith(comments[int(number)].rstrip(".")), f"step {number} is called {comments[int(number)]}"
        files = [path for name in re.findall(r"`(\w+)`", place) for end in ("cpp", "h")
                 for path in (ROOT / "src").rglob(f"{name}.{end}")]
        functions = [name for name in re.findall(r"`(\w+)`", place) if name[0].isupper()]
        assert files and functions
        for function in functions:
            assert any(function in path.read_text() for path in files), f"step {number}: no {function} there"


def test_glossary_names_what_there_is():
    names = re.findall(r"(?m)^\| `(\w+)` \|", (ROOT / "docs/glossary.md").read_text())
    sources = everything_under("src")
    assert names and [name for name in names if not re.search(rf"\b{name}\b", sources)] == []


# --- What the manual lists ---

MANUAL = (ROOT / "docs/manual.md").read_text()


def families():
    """The manual's sections about commands: title and text."""
    return re.findall(r"(?ms)^### (.+?)$(.*?)(?=^##)", MANUAL.split("## Commands\n")[1])


def commands_in(text):
    """What the tables of a text explain, without the moves."""
    rows = re.findall(r"(?m)^\| (`.*?) \| ", re.split(r"(?m)^\| word \|.*$(?:\n\|.*$)*", text)[0]
                      + "".join(re.split(r"(?m)^\| word \|.*$(?:\n\|.*$)*", text)[1:]))
    found = {shlex.split(code.replace("\\|", "|"))[0] for row in rows for code in re.findall(r"`([^`]+)`", row)}
    return {word for word in found if not re.fullmatch(r"[KQRBN]?[a-h][1-8].*|O-O", word)}


def manual_commands():
    return set().union(*(commands_in(text) for _, text in families()))


@pytest.mark.parametrize("title, text", families(), ids=[title for title, _ in families()])
def test_manual_has_an_example_for_each_command(title, text):
    """An example is something typed in a session or a dialogue of the same section; both are compared above."""
    typed = {line.split()[0] for line in re.findall(r"(?m)^(?:(?:(?:White|Black) \d+)?> )(.+)$", text)}
    assert commands_in(text) and commands_in(text) <= typed, commands_in(text) - typed


def test_manual_page_is_made_from_the_manual():
    run("scripts/manual", "--check")


def test_manual_lists_the_commands_that_there_are(start):
    keywords = set()
    for source in (ROOT / "src/interfaces/commands").glob("*.cpp"):
        for table in re.findall(r"(?s)\nconstexpr Keyword \w+(?:\[\] = )?\{(.*?)\};", source.read_text()):
            keywords |= set(re.findall(r'(?m)^(?: *\{)?"([^"]+)",', table))
    ignored = {"bk", "ics", "pause", "resume", "variant", "random", "accepted", "rejected"}  # words of interfaces alone
    assert manual_commands() == keywords - ignored


def test_manual_names_personalities(start):
    manual = (ROOT / "docs/manual.md").read_text()
    engine = start()
    engine.send("force")
    engine.ping()
    names = re.search(r"(?s)The names are (.*?)\.\n", manual)[1]
    for name in re.split(r",\s+|\s+and\s+", names):
        engine.send(f"personality {name}")
        assert "Error" not in engine.ping(), name
