#!/usr/bin/env python3
"""Checks the arrows between the folders of the engine: who includes what.

    check_includes.py               reads every #include "..." and <...> of src, tools, benchmarks and tests
    check_includes.py --self-test   shows that each kind of fault is reported

Faults are: an include of a folder that the folder of the file may not see, an include of something else than a header,
C++ in a file that ends neither in .h nor in .cpp, a line of the table below that points upwards, and a circle of files,
where a header and the .cpp of its name count as one.
"""

import re
import sys
from pathlib import Path, PurePosixPath

# The folders, the lowest first, and what each may see beside itself. A name that ends in "/" stands for all folders
# inside. A folder sees nothing that comes after it; a folder that isn't named here may not hold C++.
BASE = "frame/base"
# Its files where a page is the user.
WEB_PLATFORM = "frame/base/web"
TABLES = "search/tables"
# What those above the search see of it.
SEARCH = (TABLES, "search/settings", "search/engine", "search/driver")
FOLDERS = {
    BASE: (),
    WEB_PLATFORM: (BASE,),
    "chess": (BASE,),
    TABLES: (BASE, "chess"),
    "bitbases": (BASE, "chess", TABLES),
    "tablebases": (BASE, "chess", "bitbases"),
    "tablebases/nalimov": (BASE, "chess", "bitbases", "tablebases"),
    "tablebases/opener": (BASE, "bitbases", "tablebases", "tablebases/nalimov"),
    "evaluation/context": (BASE, "chess", TABLES, "bitbases"),
    "evaluation/rules": (BASE, "chess", "evaluation/context"),
    "evaluation/pawns": (BASE, "chess", TABLES, "evaluation/context", "evaluation/rules"),
    "evaluation/pieces": (BASE, "chess", "evaluation/context", "evaluation/rules"),
    "evaluation/king": (BASE, "chess", "evaluation/context", "evaluation/rules", "evaluation/pawns",
                        "evaluation/pieces"),
    "evaluation/endings": (BASE, "chess", "bitbases", "evaluation/"),
    "evaluation": (BASE, "chess", TABLES, "bitbases", "evaluation/"),
    "search/settings": (BASE,),
    "search/engine": (BASE, TABLES, "bitbases", "search/settings"),
    "search/state": (BASE, "chess", TABLES, "bitbases", "evaluation/context", "search/settings", "search/engine"),
    "search/ordering": (BASE, "chess", TABLES, "evaluation/", "search/settings", "search/state"),
    "search/node": (BASE, "chess", TABLES, "bitbases", "evaluation", "evaluation/context", "search/"),
    "search/tournament": (BASE, "chess", TABLES, "bitbases", "evaluation", "evaluation/context", "search/"),
    "search/driver": (BASE, "chess", TABLES, "bitbases", "evaluation", "evaluation/context", "search/"),
    "frame/game": (BASE, "chess", "bitbases", *SEARCH),
    "interfaces/protocols": (BASE, "chess", "evaluation", *SEARCH, "frame/game"),
    "interfaces/commands": (BASE, "chess", "bitbases", "evaluation", *SEARCH, "frame/game", "interfaces/protocols"),
    "frame/shell": (BASE, "chess", "bitbases", "tablebases/opener", *SEARCH, "frame/game", "interfaces/"),
    "frame/launcher": (BASE,),
    "uci/book": (BASE, "chess"),
    "uci/syzygy": (BASE, "chess", TABLES, "bitbases"),
    "uci": (BASE, "chess", "bitbases", "evaluation", *SEARCH, "uci/"),
    "web": (BASE, WEB_PLATFORM, "chess", "evaluation", "search/settings", "search/engine", "uci"),
    "tools/options": (BASE,),
    "tools/check_tables": (BASE, "chess", "tablebases", "tablebases/nalimov", "tools/options"),
    "tools/player_setup": (BASE, "evaluation", *SEARCH, "tools/options"),
    "tools/bench_run": (BASE, *SEARCH, "tools/options"),
    "tools/bitbase_builder": (BASE, "chess", "bitbases", "tools/options"),
    "tools/table_builder": (BASE, "chess", "bitbases", "tablebases", "tools/options", "tools/bitbase_builder"),
    "tools/selfplay": (BASE, "chess", *SEARCH, "tools/options", "tools/player_setup"),
    "tools/tune": (BASE, "chess", *SEARCH, "tools/options", "tools/player_setup", "tools/selfplay"),
    "tools": (BASE, "chess", "bitbases", "evaluation", "evaluation/", *SEARCH, "tools/options",
              "tools/player_setup", "tools/bench_run"),
    "tests/support": (BASE, "chess", "bitbases", "evaluation", "evaluation/", "search/", "frame/game", "interfaces/"),
    "tests/faults": (),
    "benchmarks": (BASE, "chess", "bitbases", "tablebases/opener", "evaluation", *SEARCH, "tests/support", "tools/options"),
}

# The tests of a layer see that layer, the layers below it, and tests/support. (What a support header needs of higher
# layers a test can't use unless it links them.) The made-up files and sources beside the tests of the bitbases are for
# the layers above as well.
LAYERS = (
    (BASE,),
    ("chess",),
    (TABLES,),
    ("bitbases",),
    ("tablebases", "tablebases/nalimov", "tablebases/opener"),
    ("evaluation/context", "evaluation/pawns", "evaluation/pieces", "evaluation/king", "evaluation/endings",
     "evaluation"),
    ("search/settings", "search/engine", "search/state", "search/ordering", "search/node", "search/tournament",
     "search/driver"),
    ("frame/game",),
    ("interfaces/protocols", "interfaces/commands"),
    ("frame/shell",),
    ("uci/book", "uci/syzygy", "uci"),
    ("web",),
)
below = []
for layer in LAYERS:
    below += layer
    seen_by_tests = (*below, "tests/support", *(["tests/bitbases"] if "tests/bitbases" in FOLDERS else []))
    FOLDERS.update({f"tests/{folder}": seen_by_tests for folder in layer})
FOLDERS["tests/frame/launcher"] = (BASE, "frame/launcher", "tests/support")
FOLDERS["tests/tools"] = (BASE, "chess", "bitbases", "tablebases", "tablebases/nalimov", "tablebases/opener", *SEARCH,
                           "tools/bitbase_builder", "tools/table_builder", "tools/check_tables", "tools/bench_run",
                           "tools/player_setup", "tests/tablebases/nalimov", "tools/options", "tests/bitbases", "tests/support")
FOLDERS["tests/tools/selfplay"] = (BASE, "chess", *SEARCH, "tools/selfplay", "tests/support")
FOLDERS["tests/tools/tune"] = (BASE, *SEARCH, "tools/selfplay", "tools/tune", "tests/support")
# A target may feed any layer. The tests in tests/integration run programs, and hold no C++.
FOLDERS["tests/fuzz"] = (*below, "tests/support")

# Where the compiler looks for a name, beside the folder of the file.
ROOTS = ("src", "tools", "tests")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^">]+)[">]')
CPP = (".h", ".cpp")
# C++ under these names would be read by nobody here.
OTHER_ENDINGS = {".c", ".cc", ".cxx", ".c++", ".C", ".cppm", ".ixx", ".hh", ".hpp", ".hxx", ".h++", ".H", ".inc", ".inl",
                 ".ipp", ".tcc", ".tpp", ".txx", ".def"}


def folder_of(path):
    """The name of a file's folder as the table has it: without src/."""
    parts = PurePosixPath(path).parts[:-1]
    return "/".join(parts[1:] if parts[0] == "src" else parts)


def module_of(path):
    return str(PurePosixPath(path).with_suffix(""))


def may_see(folder, other, folders):
    """Whether the line of `folder` names `other`, which stands above it in the table."""
    names = list(folders)
    if names.index(other) > names.index(folder):
        return False
    return any(other == name or (name.endswith("/") and other.startswith(name)) for name in folders[folder])


def faults_of_table(folders):
    names = list(folders)
    for position, (folder, seen) in enumerate(folders.items()):
        for name in seen:
            inside = [other for other in names if other == name or (name.endswith("/") and other.startswith(name))]
            if not inside:
                yield f"the line of {folder} names {name}, which has no line"
            elif not name.endswith("/") and names.index(name) >= position:
                yield f"the line of {folder} names {name}, which doesn't come before it"


def resolve(path, name, known):
    """The file that an include of `name` in `path` reads; None if it is none of ours."""
    beside = str(PurePosixPath(path).parent / name)
    for candidate in [beside] + [f"{root}/{name}" for root in ROOTS]:
        if candidate in known:
            return candidate
    return None


def arrows_of(texts):
    """(file, line number, included file or None, name as written) of every include that isn't the system's, in order."""
    known = set(texts)
    for path in sorted(texts):
        for number, line in enumerate(texts[path].splitlines(), 1):
            if found := INCLUDE.match(line):
                bracket, name = found.groups()
                target = resolve(path, name, known)
                if target is not None or bracket == '"':
                    yield path, number, target, name


def faults_of_arrows(arrows, texts, folders):
    for path in sorted(texts):
        ending = PurePosixPath(path).suffix
        if ending in OTHER_ENDINGS:
            yield f"{path}: C++ stands in .h and .cpp, and not in {ending}"
        elif ending in CPP and folder_of(path) not in folders:
            yield f"{path}: the folder {folder_of(path)} has no line in the table of check_includes.py"
    for path, number, target, name in arrows:
        here = folder_of(path)
        if target is None:
            yield f"{path}:{number}: there is no file {name}"
            continue
        if PurePosixPath(target).suffix != ".h":
            yield f"{path}:{number}: {name} is no header"
            continue
        there = folder_of(target)
        if here == there or here not in folders or there not in folders:
            continue
        if not may_see(here, there, folders):
            yield f"{path}:{number}: {here} may not see {there} ({name})"


def circles(arrows):
    """Ways from a file back to itself, each a shortest one: lists of (file, line number, name). A circle that shares an
    arrow with one before it is left out, since it may go with that one."""
    ways = {}
    for path, number, target, name in arrows:
        if target is not None and module_of(target) != module_of(path):
            ways.setdefault(module_of(path), {}).setdefault(module_of(target), (path, number, name))

    def way_back(start):
        """The shortest way from `start` to itself, by breadth."""
        reached = {start: None}
        queue = [start]
        for module in queue:
            for following in sorted(ways.get(module, ())):
                if following == start:
                    steps = [ways[module][start]]
                    while module != start:
                        previous = reached[module]
                        steps.insert(0, ways[previous][module])
                        module = previous
                    return steps
                if following not in reached:
                    reached[following] = module
                    queue.append(following)
        return None

    shown = set()
    for module in sorted(ways):
        steps = way_back(module)
        if steps and not shown.intersection(steps):
            shown.update(steps)
            yield steps


def faults_of_circles(arrows):
    for steps in circles(arrows):
        yield "a circle of files:" + "".join(f"\n    {path}:{number} includes {name}" for path, number, name in steps)


def faults(texts, folders):
    arrows = list(arrows_of(texts))
    yield from faults_of_table(folders)
    yield from faults_of_arrows(arrows, texts, folders)
    yield from faults_of_circles(arrows)


def texts_of(root):
    """The files of the folders that the table speaks of; those that aren't C++ by their name are left unread."""
    files = [path for folder in ("src", "tools", "benchmarks", "tests") for path in (root / folder).rglob("*")]
    return {path.relative_to(root).as_posix(): path.read_text() if path.suffix in CPP else ""
            for path in files if path.is_file() and "__pycache__" not in path.parts}


def self_test():
    """Small made-up trees: one in order, and others with one fault each and words that its report must hold."""
    folders = {"low": (), "middle": ("low",), "high": ("middle",)}
    good = {
        "src/low/a.h": "",
        "src/low/a.cpp": '#include "low/a.h"\n',
        "src/middle/b.h": '#include <array>\n#include "low/a.h"\n',
        "src/high/c.cpp": '#include "middle/b.h"\n',
    }
    cases = [
        ("a tree in order", folders, {}, None),
        ("an arrow upwards", folders, {"src/low/d.cpp": '\n#include "middle/b.h"\n'},
         "src/low/d.cpp:2: low may not see middle (middle/b.h)"),
        ("a folder out of sight", folders, {"src/high/c.cpp": '#include "low/a.h"\n'},
         "src/high/c.cpp:1: high may not see low (low/a.h)"),
        ("a circle of two headers", folders,
         {"src/low/d.h": '#include "low/e.h"\n', "src/low/e.h": '#include "low/d.h"\n'},
         "src/low/d.h:1 includes low/e.h\n    src/low/e.h:1 includes low/d.h"),
        ("a circle through a .cpp", folders,
         {"src/low/d.h": "", "src/low/d.cpp": '#include "low/e.h"\n', "src/low/e.h": '#include "low/d.h"\n'},
         "src/low/d.cpp:1 includes low/e.h\n    src/low/e.h:1 includes low/d.h"),
        ("a circle of three", folders,
         {"src/low/d.h": '#include "low/e.h"\n', "src/low/e.h": '#include "low/f.h"\n',
          "src/low/f.h": '#include "low/d.h"\n'},
         "src/low/f.h:1 includes low/d.h"),
        ("one arrow that closes many circles", folders,
         {"src/low/d.h": '#include "low/e.h"\n#include "low/f.h"\n', "src/low/e.h": '#include "low/g.h"\n',
          "src/low/f.h": '#include "low/g.h"\n', "src/low/g.h": '#include "low/d.h"\n'},
         "src/low/g.h:1 includes low/d.h"),
        ("an arrow upwards in angle brackets", folders, {"src/low/d.cpp": "#  include <middle/b.h>\n"},
         "src/low/d.cpp:1: low may not see middle (middle/b.h)"),
        ("a test of a lower layer that looks up", {**folders, "tests/low": ("low",)},
         {"tests/low/a_test.cpp": '#include "low/a.h"\n#include "middle/b.h"\n'},
         "tests/low/a_test.cpp:2: tests/low may not see middle (middle/b.h)"),
        ("C++ with another ending", folders, {"src/low/table.inc": ""},
         "src/low/table.inc: C++ stands in .h and .cpp"),
        ("an include of no header", folders, {"src/low/d.cpp": "#include <low/d.txt>\n", "src/low/d.txt": ""},
         "src/low/d.cpp:1: low/d.txt is no header"),
        ("a text beside the code", folders, {"src/new/CMakeLists.txt": ""}, None),
        ("a folder without a line", folders, {"src/new/g.h": ""}, "the folder new has no line"),
        ("a file that isn't there", folders, {"src/low/a.h": '#include "low/none.h"\n'}, "there is no file low/none.h"),
        ("a table that points upwards", {**folders, "low": ("high",)}, {}, "the line of low names high"),
        ("a table with a folder that has no line", {**folders, "high": ("middle", "none")}, {}, "names none, which has no line"),
    ]
    failed = 0
    for title, table, changes, expected in cases:
        found = list(faults({**good, **changes}, table))
        fits = len(found) == (0 if expected is None else 1) and all(expected in fault for fault in found)
        if not fits:
            failed += 1
            print(f"self-test, {title}: expected {expected!r}, found {found}", file=sys.stderr)
    print(f"{len(cases) - failed} of {len(cases)} made-up trees were judged rightly.")
    return 1 if failed else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    found = list(faults(texts_of(Path(__file__).resolve().parents[2]), FOLDERS))
    print("\n".join(found), end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
