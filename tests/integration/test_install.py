"""What `cmake --install` puts under its prefix, and that the programs work from there: through PATH and through links
they find their bitbases, which lie in the folder of the executable."""

import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest
from engine import PROGRAM

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(PROGRAM).resolve().parent
HAS_BITBASES = os.environ.get("VORKA_SANITIZED") != "1"  # such a build computes none
LOADED = ("King+pawn vs king+pawn bitbases (loaded)\n"
          "King+pawn+pawn vs king+pawn with pawn ram bitbases (loaded)\n")

with_bitbases = pytest.mark.skipif(not HAS_BITBASES, reason="a build with sanitizers computes no bitbases")


def run(*command, **settings):
    settings.setdefault("input", "")
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=300, check=True,
                          **settings).stdout


@pytest.fixture(scope="module")
def prefix(tmp_path_factory):
    """A folder that all tests of this file look at and none changes."""
    folder = tmp_path_factory.mktemp("installed")
    run("cmake", "--install", BUILD, "--prefix", folder / "usr")
    assert [path.name for path in folder.iterdir()] == ["usr"]
    return folder / "usr"


def files_below(folder):
    """Files and links, as paths from the folder."""
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_symlink() or not path.is_dir()}


def say(folder, prefix, program, text):
    """What a program that is found through PATH answers. The folder is where it writes its log."""
    command = program if isinstance(program, list) else [program]
    return run(*command, cwd=folder, input=text, env={**os.environ, "PATH": f"{prefix}/games:{os.environ['PATH']}"})


def test_everything_has_its_place(prefix):
    found = files_below(prefix)
    for path in ("games/vorka", "games/vorka-uci", "games/vorka-xboard", "games/vorka-table-builder",
                 "games/vorka-check-tables", "lib/vorka/vorka", "lib/vorka/vorka-uci", "lib/vorka/vorka-xboard",
                 "share/man/man6/vorka.6", "share/man/man6/vorka-uci.6",
                 "share/man/man6/vorka-xboard.6", "share/man/man6/vorka-table-builder.6",
                 "share/man/man6/vorka-check-tables.6", "share/games/plugins/xboard/vorka.eng",
                 "share/games/vorka/settings/variants.txt", "share/bash-completion/completions/vorka",
                 "share/bash-completion/completions/vorka-uci", "share/bash-completion/completions/vorka-xboard",
                 "share/bash-completion/completions/vorka-table-builder",
                 "share/bash-completion/completions/vorka-check-tables",
                 "share/applications/vorka.desktop", "share/icons/hicolor/scalable/apps/vorka.svg",
                 "share/doc/vorka/LICENSE", "share/doc/vorka/README.md", "share/doc/vorka/CHANGELOG.md",
                 "share/doc/vorka/docs/manual.md", "share/doc/vorka/docs/uci.md"):
        assert path in found
    if HAS_BITBASES:
        for name in ("kp_kp.vbb", "kp_kp.vbb.sha256", "kpp_kp_ram.vbb", "kpp_kp_ram.vbb.sha256"):
            assert f"share/games/vorka/{name}" in found and f"lib/vorka/{name}" in found


def test_nothing_of_the_build_and_the_tests_comes_along(prefix):
    assert {path.split("/")[0] for path in files_below(prefix)} == {"games", "lib", "share"}
    programs = [path for path in files_below(prefix) if not path.startswith("share/doc/")]
    assert not [path for path in programs if re.search(r"test|bench|\.a$|\.h$|\.cmake$", path)]


def test_installed_documents_point_to_each_other(prefix):
    """Pictures, and documents of the folder docs; what a package leaves out is the licence, which Debian has."""
    documents = [prefix / "share/doc/vorka/README.md", *(prefix / "share/doc/vorka/docs").glob("*.md")]
    assert len(documents) > 10
    for document in documents:
        for target in re.findall(r"\]\((?!https?:)([^)#]+)(?:#[^)]*)?\)", document.read_text()):
            assert (document.parent / target).exists(), f"{document.name} links to {target}"


def test_links_lead_to_what_is_there_whatever_the_prefix(prefix):
    links = [path for path in prefix.rglob("*") if path.is_symlink()]
    assert links
    for link in links:
        assert not os.path.isabs(os.readlink(link)), link
        assert link.exists() and prefix in link.resolve().parents, link


def test_a_staging_folder_takes_all_of_it(prefix, tmp_path):
    """As packages are made: what is installed for /usr lies under DESTDIR, and is the same."""
    run("cmake", "--install", BUILD, "--prefix", "/usr", env={**os.environ, "DESTDIR": str(tmp_path)})
    assert [path.name for path in tmp_path.iterdir()] == ["usr"]
    assert files_below(tmp_path / "usr") == files_below(prefix)


@with_bitbases
def test_vorka_finds_its_bitbases_through_path(prefix, tmp_path):
    assert LOADED in say(tmp_path, prefix, "vorka", "tb\nquit\n")


@with_bitbases
def test_vorka_finds_its_bitbases_through_a_link(prefix, tmp_path):
    (tmp_path / "chess").symlink_to(prefix / "games" / "vorka")
    assert LOADED in run(tmp_path / "chess", cwd=tmp_path, input="tb\nquit\n")
    assert LOADED in run("./chess", cwd=tmp_path, input="tb\nquit\n")


@with_bitbases
def test_vorka_finds_its_bitbases_after_the_folder_has_moved(prefix, tmp_path):
    moved = tmp_path / "other place"
    shutil.copytree(prefix, moved, symlinks=True)
    assert LOADED in say(tmp_path, moved, "vorka", "tb\nquit\n")


@with_bitbases
def test_installed_checksums_fit(prefix):
    for folder in ("share/games/vorka", "lib/vorka"):
        run("sha256sum", "--check", "--strict", "kp_kp.vbb.sha256", "kpp_kp_ram.vbb.sha256", cwd=prefix / folder)


def test_vorka_uci_answers_through_path(prefix, tmp_path):
    said = say(tmp_path, prefix, "vorka-uci", "uci\nposition startpos\ngo depth 2\n")
    assert said.startswith("id name Vorka ") and "uciok\n" in said and "\nbestmove " in said


@with_bitbases
def test_vorka_uci_finds_its_bitbases_through_path(prefix, tmp_path):
    said = say(tmp_path, prefix, "vorka-uci", "position fen 4k3/1p6/8/8/8/8/P7/4K3 w - - 0 1\ngo depth 6\n")
    assert re.search(r"tbhits [1-9]", said) and "info string" not in said


def test_vorka_xboard_answers_through_path(prefix, tmp_path):
    command = (prefix / "share/games/plugins/xboard/vorka.eng").read_text().splitlines()[1]
    said = say(tmp_path, prefix, command, "protover 2\nquit\n")
    assert said.startswith("feature ") or "\nfeature " in said


def has_packing(prefix):
    """Whether the build can write tables."""
    return "libzstd" in run("ldd", prefix / "games/vorka-table-builder")


def test_vorka_finds_mates_in_tables_of_the_installed_builder(prefix, tmp_path):
    if not has_packing(prefix):
        pytest.skip("this build was made without zstd")
    tables = tmp_path / "tables"
    tables.mkdir()
    said = say(tmp_path, prefix, ["vorka-table-builder", "--output", tables, "KQK"], "")
    assert re.search(r"(?m)^ +[\d.]+ s +0 %  KQK$", said)
    assert "result=32766" in say(tmp_path, prefix, ["vorka", "--tb", "nalimov", "8M", tables],
                                 "probe 8/8/8/8/8/2K5/7Q/k7 w - - 0 1\nquit\n")


@pytest.mark.parametrize("name", ["vorka-table-builder", "vorka-check-tables"])
def test_tools_for_tables_know_the_name_they_are_called_by(prefix, tmp_path, name):
    said = say(tmp_path, prefix, [name, "--help"], "")
    assert said.startswith(f"usage: {name} ")
    manual = words_of(f"{name}.6")
    for option in re.findall(r"--\w+", said):
        assert option in manual, option


# --- Manuals, completion, menu ---

MANUALS = ["vorka.6", "vorka-uci.6", "vorka-table-builder.6", "vorka-check-tables.6", "vorka-xboard.6"]


def words_of(manual):
    """The text of a manual, without its marks."""
    source = (ROOT / "packaging/man" / manual).read_text()
    return re.sub(r"\\f[BIRP]|\\&", "", source).replace("\\-", "-").replace('"', "")


@pytest.mark.skipif(not shutil.which("man"), reason="there is no man")
@pytest.mark.parametrize("name", MANUALS)
def test_manual_is_read_without_a_warning(prefix, name):
    told = subprocess.run(["man", "--warnings", "--local-file", name], cwd=prefix / "share/man/man6",
                          env={**os.environ, "MANWIDTH": "80", "MANPATH": str(prefix / "share/man")},
                          capture_output=True, text=True, check=True)
    assert told.stderr == ""


@pytest.mark.skipif(not shutil.which("mandoc"), reason="there is no mandoc")
@pytest.mark.parametrize("name", MANUALS[:-1])
def test_manual_is_in_order(prefix, name):
    assert run("mandoc", "-T", "lint", "-W", "warning", prefix / "share/man/man6" / name) == ""


def test_version_is_the_same_everywhere():
    version = re.search(r"project\(vorka VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]
    assert f'program_version = "v{version}"' in (ROOT / "src/frame/base/vocabulary.h").read_text()
    for name in MANUALS[:-1]:
        assert f'"Vorka {version}"' in (ROOT / "packaging/man" / name).read_text()
    release = re.search(r"CPACK_DEBIAN_PACKAGE_RELEASE (\d+)", (ROOT / "cmake/VorkaPackage.cmake").read_text())[1]
    assert (ROOT / "packaging/debian/changelog").read_text().startswith(f"vorka ({version}-{release}) ")
    for document in ("README.md", "docs/releasing.md"):
        files = re.findall(r"vorka[_-]([\d.]+(?:-\d+)?)(?=_|\.tar)", (ROOT / document).read_text())
        assert files and {*files} <= {version, f"{version}-{release}"}, document


def keywords():
    """The console's words, and those of them that may stand on the command line."""
    every, at_start = set(), set()
    row = r'\{"([^"]+)",\s+(?:\w+(?:\(\d+\))?, .*)?\b(prompt_only|at_start\w*)\b'
    for source in (ROOT / "src/interfaces/commands").glob("*.cpp"):
        for word, rest in re.findall(row, source.read_text()):
            every.add(word)
            if rest != "prompt_only":
                at_start.add(word)
    return every, at_start


def test_manual_of_vorka_has_every_command():
    every, at_start = keywords()
    told = words_of("vorka.6")
    for word in every - {"random", "accepted", "rejected"}:  # words of interfaces alone
        assert re.search(rf"(?m)^\.TP\n(?:.* )?{re.escape(word)}(?: |$|,)", told), word
    options = told.split(".SH OPTIONS")[1].split(".SH COMMANDS")[0]
    for word in at_start:
        assert re.search(rf"\b{word}\b", options), word


def test_manual_of_vorka_uci_has_every_option_and_command():
    text = (ROOT / "docs/uci.md").read_text()
    told = words_of("vorka-uci.6")
    table = text.split("## Options")[1]
    names = [name for row in re.findall(r"(?m)^\| (`[^|]+) \|", table) for name in re.findall(r"`([^`]+)`", row)]
    commands = [code.split()[0] for row in re.findall(r"(?m)^\| (`[^|]+) \|", text.split("## Options")[0])
                for code in re.findall(r"`([^`]+)`", row)]
    assert len(names) > 15 and len(commands) > 15
    for name in names + commands:
        assert re.search(rf"\b{name}\b", told), name


def completed(script, *words, **settings):
    """What bash offers for the last of the words."""
    shell = f"""
        . "{ROOT}/packaging/completions/{script}"
        compopt() {{ :; }}
        COMP_WORDS=("$@")
        COMP_CWORD=$((${{#COMP_WORDS[@]}} - 1))
        $(complete -p "$1" | sed -E 's/.*-F (\\w+) .*/\\1/')
        printf '%s\\n' "${{COMPREPLY[@]}}"
    """
    return set(run("bash", "-c", shell, "bash", *words, cwd=ROOT, **settings).split())


def test_completion_knows_what_may_stand_on_the_command_line():
    _, at_start = keywords()
    assert completed("vorka", "vorka", "") == {f"--{word}" for word in at_start}
    assert completed("vorka", "vorka-xboard", "--pers") == {"--personality"}
    assert completed("vorka", "vorka", "--hash", "") == {"trans", "pawn", "eval"}
    assert completed("vorka", "vorka", "--tb", "n") == {"nalimov"}
    assert "settings" in completed("vorka", "vorka", "--read_settings", "setting")
    assert completed("vorka-uci", "vorka-uci", "b") == {"bench"}
    assert not completed("vorka-uci", "vorka-uci", "bench", "")


def test_completion_asks_the_table_programs_for_their_options(prefix):
    path = {"env": {**os.environ, "PATH": f"{prefix}/games:{os.environ['PATH']}"}}
    for program, option in (("vorka-table-builder", "--memory"), ("vorka-check-tables", "--own")):
        options = set(re.findall(r"--[a-z]+", run(prefix / "games" / program, "--help")))
        assert option in options and completed("vorka-tables", program, "--", **path) == options
    assert "tests" in completed("vorka-tables", "vorka-check-tables", "te", **path)
    assert "tests" in completed("vorka-tables", "vorka-table-builder", "--output", "te", **path)
    assert not completed("vorka-tables", "vorka-table-builder", "--men", "", **path)


def test_completion_knows_the_personalities():
    names = re.search(r"(?s)The names are (.*?)\.\n", (ROOT / "docs/manual.md").read_text())[1]
    assert completed("vorka", "vorka", "--personality", "") == {*re.split(r",\s+|\s+and\s+", names), "Random"}


@pytest.mark.skipif(not shutil.which("desktop-file-validate"), reason="there is no desktop-file-validate")
def test_menu_entry_is_in_order(prefix):
    assert run("desktop-file-validate", prefix / "share/applications/vorka.desktop") == ""


def test_menu_entry_names_a_program_and_an_icon(prefix):
    lines = (prefix / "share/applications/vorka.desktop").read_text().splitlines()
    entry = dict(line.split("=", 1) for line in lines if "=" in line)
    assert os.access(prefix / "games" / entry["Exec"], os.X_OK)
    assert (prefix / f"share/icons/hicolor/scalable/apps/{entry['Icon']}.svg").read_text().startswith("<svg ")
