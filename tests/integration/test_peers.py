"""The measuring scripts of benchmarks/ read what other programs say; what they read is recorded here."""

import importlib.machinery
import importlib.util
import os
import pathlib
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree

import pytest

BENCHMARKS = pathlib.Path(__file__).resolve().parent.parent.parent / "benchmarks"
BUILD = pathlib.Path(os.environ["VORKA_ENGINE"]).parent
SANITIZED = os.environ.get("VORKA_SANITIZED") == "1"
PATH = os.environ.get("PATH", "") + ":/usr/games"


def script(name):
    specification = importlib.util.spec_from_loader(name, importlib.machinery.SourceFileLoader(name, str(BENCHMARKS / name)))
    module = importlib.util.module_from_spec(specification)
    sys.dont_write_bytecode = True
    specification.loader.exec_module(module)
    return module


peers = script("peers")
flame_graph = script("flame_graph")

GLAURUNG = """info depth 12
info currmove g1f3 currmovenumber 1
info nodes 164553 nps 65611 time 2508 hashfull 3
info nodes 164553 nps 65558 time 2510 hashfull 3
bestmove g1f3 ponder g8f6"""
TOGA = """info depth 12 seldepth 24 time 1690 nodes 488635 nps 289195
info depth 13
info currmove d2d4 currmovenumber 1
info time 2022 nodes 600000 nps 296684 cpuload 227
info hashfull 102
bestmove d2d4 ponder d7d5"""
PERFT = """start                                    depth 5     4865609  120.2 million/s, beside 151.0 million/s
all: 112.5 million/s, beside 150.0 million/s, ratio 0.750
"""
EVALUATION = """{"context": {}, "benchmarks": [
{"name": "Evaluate/full/0", "run_type": "iteration", "items_per_second": 1.5e+06},
{"name": "Evaluate/full_with_new_pawns/1", "run_type": "iteration", "items_per_second": 5.0e+05}]}"""
CALLGRIND = """==24203== Events    : Ir
==24203== Collected : 990653861
==24203==
"""


def test_nodes_of_a_search_are_the_last_reported():
    assert peers.nodes_of_uci(GLAURUNG.splitlines()) == 164553
    assert peers.nodes_of_uci(TOGA.splitlines()) == 600000
    assert peers.nodes_of_status("stat01: 115 178597 5 31 37 Ne5") == 178597
    with pytest.raises(ValueError):
        peers.nodes_of_uci(["bestmove e2e4"])


def test_speeds_of_programs():
    assert peers.perft_speeds(PERFT) == (112.5e6, 150.0e6)
    with pytest.raises(ValueError):
        peers.perft_speeds("wanted 20")
    assert peers.evaluation_speeds(EVALUATION) == {"full, middle games": 1.5e6, "full with new pawns, endings": 5.0e5}
    assert peers.callgrind_instructions(CALLGRIND) == 990653861
    assert peers.bench_nodes("Branching: 8.05\nBench: 10965058\n") == 10965058


def test_table_has_medians_and_ratios_run_by_run():
    samples = peers.Samples()
    for ours, its in ((1e6, 2e6), (3e6, 2e6), (2e6, 1e6)):
        samples.add("speed", "vorka", ours, "/s")
        samples.add("speed", "toga2", its, "/s")
    lines = peers.table(samples)
    assert re.fullmatch(r"speed +vorka +2\.000 M/s", lines[1])
    assert re.fullmatch(r" +toga2 +2\.000 M/s +1\.500 +0\.500 +2\.000", lines[2])


def run_peers(*options):
    return subprocess.run([sys.executable, BENCHMARKS / "peers", "--build", BUILD, *options], capture_output=True, text=True)


@pytest.mark.parametrize("options", [["--seconds", "0"], ["--runs", "x"], ["--only", "nonsense"], ["--build", "/nowhere"]])
def test_bad_words_are_refused(options):
    run = run_peers("--peers", "--only", "start", *options)
    assert run.returncode != 0 and run.stdout == "" and run.stderr


def test_a_short_run_beside_an_older_build():
    run = run_peers("--peers", "--against", BUILD, "--only", "nodes", "start", "bench", "--runs", "1", "--positions", "1",
                    "--seconds", "0.3", "--starts", "2", "--bench-depth", "2")
    assert run.returncode == 0, run.stderr
    rows = [line[:44].strip() or line.split()[0] for line in run.stdout.splitlines()[1:]]
    assert len(rows) == 8 and rows.count("before") == 4
    assert "min" in run.stderr, "progress with an estimate"


def test_a_short_run_beside_the_peers():
    names = [name for name in ("glaurung", "toga2") if shutil.which(name, path=PATH)]
    if not names:
        pytest.skip("neither glaurung nor toga2 is installed")
    run = run_peers("--peers", *names, "--only", "nodes", "--runs", "1", "--positions", "1", "--seconds", "0.3")
    assert run.returncode == 0, run.stderr
    for name in ("vorka", *names):
        assert re.search(rf"\b{name} +[0-9.]+ [kM]", run.stdout), run.stdout


# --- The flame graph ---

# TryMove stands inlined in the node at the second address, and calls evaluate from there.
PROFILE = """version: 1
positions: instr line
events: Ir
ob=bench
fl=???
fn=SearchNode(SearchBoard&)'RootProbe(SearchBoard&)'main
0x10 0 100
0x14 0 50
cfn=evaluate(int)'SearchNode(SearchBoard&)'RootProbe(SearchBoard&)
calls=1 0x40
0x14 0 300
fn=evaluate(int)'SearchNode(SearchBoard&)'RootProbe(SearchBoard&)
0x40 0 300
fn=evaluate(int)'SearchNode(SearchBoard&)'SearchNode(SearchBoard&)
0x40 0 30
fn=main
0x60 0 20
"""
PLACES = """0x0000000000000010
SearchNode(SearchBoard&)
??:?
0x0000000000000014
(anonymous namespace)::TryMove(Node&, unsigned int)
a.cpp:1
SearchNode(SearchBoard&)
b.cpp:2
"""


def test_stacks_are_folded_at_the_node():
    profile = flame_graph.read_profile(PROFILE.splitlines(keepends=True))
    inlining = flame_graph.Inlining()
    inlining.take("bench", PLACES)
    assert flame_graph.fold(profile, inlining) == {
        ("SearchNode",): 100,
        ("SearchNode", "TryMove"): 50,
        ("SearchNode", "TryMove", "evaluate"): 330,
    }, "what is outside of the nodes is left out"


def test_names_are_short():
    for name, short in (("(anonymous namespace)::TryMove(Node&, unsigned int)", "TryMove"),
                        ("void VorkaUtils::Sort<int, std::vector<int> >(int)", "VorkaUtils::Sort"),
                        ("Score (anonymous namespace)::Amount<(Colour)0>(Node&) [clone .isra.0]", "Amount"),
                        ("Bitboard& std::array<int, 2ul>::operator[](unsigned long)", "std"), ("main", "main")):
        assert flame_graph.short_name(name) == short


def test_picture_is_xml_with_a_frame_for_each_function():
    picture = flame_graph.draw({("SearchNode",): 100, ("SearchNode", "evaluate<1>"): 300}, "a & b")
    titles = [title.text for title in xml.etree.ElementTree.fromstring(picture).iter("{http://www.w3.org/2000/svg}title")]
    assert titles == ["all: 100.0 %", "SearchNode: 100.0 %", "evaluate<1>: 75.0 %"]


def test_a_real_flame_graph(tmp_path):
    if SANITIZED:
        pytest.skip("callgrind can't run what was built with the sanitizers")
    if not shutil.which("valgrind"):
        pytest.skip("valgrind is not installed")
    picture = tmp_path / "picture.svg"
    subprocess.run([sys.executable, BENCHMARKS / "flame_graph", BUILD, "--depth", "1", "--output", picture], capture_output=True,
                   check=True)
    assert "<title>SearchNode: " in picture.read_text()
