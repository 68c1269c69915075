#!/usr/bin/env python3
"""Checks that no layer holds state of its own: reads the symbols of the built libraries.

    check_globals.py <library>..    of all libraries: lists every variable that lies in writable memory and is not named
                                    below, and every name below that no library has
    check_globals.py --self-test    shows that both faults are reported

Two engines live in one process because what changes belongs to an Engine or to a game. What may stay outside is named
below with the reason.
"""

import subprocess
import sys

ALLOWED = {
    # Constant once they are built, before main.
    "bitboard_tables": "built before main",
    "(anonymous namespace)::king_attacks": "built before main",
    "(anonymous namespace)::results": "const; the compiler puts it beside what is written",
    "ExecutableDirectory()::directory": "const, set by the first call",
    "VorkaHelpScreen::EditHelp()::help": "const, built by the first call",
    "VorkaInterfaces::keywordTable()::rows": "const, joined by the first call",
    # Of the process, which has one of each.
    "vlog": "the log",
    # One reader for descriptor 0: a second one would miss the lines that the first has read ahead. The main loop, edit
    # mode, the page stop of help and optimize_piece all read. An owner would have to be passed through all protocols
    # and commands, only to say which of one reader is meant.
    "(anonymous namespace)::StandardInput()::reader": "standard input, with what was read ahead",
    "StandardOutput()::stream": "the stream of standard output, opened by the first call",
    "(anonymous namespace)::has_hung_up": "set by a signal, which is sent to the process",
    # Every `xboard` makes a new protocol object; the terminal stays in the mode that the first one has set.
    "SetStdinRawMode()::done": "the mode of the terminal",
    # Seeded by the second: two generators that start together would draw the same. The count is of the process, as the
    # log that it is noted in.
    "NonDeterministicRand_16bit()::state": "chance for greetings and personalities",
    "NonDeterministicRand_16bit()::calls": "chance for greetings and personalities",
    "std::__ioinit": "the streams of the library",
}

# These lie in writable memory with some compilers alone.
BY_SOME_COMPILERS = {"(anonymous namespace)::king_attacks", "(anonymous namespace)::results", "std::__ioinit"}


def without_parameters(name):
    """`f(int, T<x>)::v` as `f()::v`; a name like `(anonymous namespace)::v` stays."""
    kept = ""
    depth = 0
    for position, letter in enumerate(name):
        if name.startswith("(anonymous namespace)", position) and depth == 0:
            kept += "\0"
        if letter == "(" and not kept.endswith("\0"):
            kept += "(" if depth == 0 else ""
            depth += 1
        elif letter == ")" and depth > 0:
            depth -= 1
            kept += ")" if depth == 0 else ""
        elif depth == 0:
            kept += letter
    return kept.replace("\0", "")


def is_writable(section):
    """Constants with addresses in them lie in .data.rel.*: the loader writes them, and nobody after it."""
    return section.startswith((".bss", ".data", ".tbss", ".tdata")) and not section.startswith(".data.rel")


def variables(listing):
    """The names of the variables in writable memory, from the output of nm --format=sysv."""
    for line in listing.splitlines():
        fields = [field.strip() for field in line.split("|")]
        if len(fields) != 7 or not is_writable(fields[6]):
            continue
        name = fields[0]
        if name.startswith(("DW.ref.", "guard variable for ", ".")) or name in (".bss", ".data"):
            continue
        yield without_parameters(name)


def faults_in(listing):
    return sorted({name for name in variables(listing) if name not in ALLOWED})


def unused_in(listings):
    """The allowed names that none of the listings has."""
    found = {name for listing in listings for name in variables(listing)}
    return sorted(ALLOWED.keys() - found - BY_SOME_COMPILERS)


def self_test():
    def row(name, section):
        return f"{name} |0000000000000000|   b  |            OBJECT|0000000000000004|     |{section}\n"

    clean = row("vlog", ".bss") + row("settings_table", ".data.rel.ro") + row("guard variable for f(int)::v", ".bss")
    clean += row("ExecutableDirectory(std::string const&)::directory", ".bss") + row("text", ".rodata")
    clean += row("(anonymous namespace)::StandardInput()::reader", ".bss")
    expected = {
        clean: [],
        clean + row("counter", ".bss"): ["counter"],
        row("f(int (*)(char))::last", ".data"): ["f()::last"],
        row("(anonymous namespace)::cache", ".data.cache"): ["(anonymous namespace)::cache"],
    }
    for listing, faults in expected.items():
        if faults_in(listing) != faults:
            print(f"found {faults_in(listing)} instead of {faults} in\n{listing}")
            return 1
    all_allowed = [row(name, ".bss") for name in ALLOWED]
    if unused_in(all_allowed) or unused_in([line for line in all_allowed if not line.startswith("vlog ")]) != ["vlog"]:
        print("an allowed name that nobody uses was judged wrongly")
        return 1
    return 0


def main():
    if sys.argv[1:] == ["--self-test"]:
        return self_test()
    if not sys.argv[1:]:
        print(__doc__)
        return 2
    status = 0
    listings = []
    for library in sys.argv[1:]:
        listing = subprocess.run(
            ["nm", "--demangle", "--defined-only", "--format=sysv", library], check=True, capture_output=True, text=True
        ).stdout
        listings.append(listing)
        for name in faults_in(listing):
            print(f"{library}: {name} changes while the program runs, and belongs to no engine")
            status = 1
    for name in unused_in(listings):
        print(f"{name} is allowed, and no library has it")
        status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
