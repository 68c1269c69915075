#!/usr/bin/env python3
"""Checks that the fixed sentences of the engine stand in the vocabulary alone.

    check_sentences.py               reads every string literal of src
    check_sentences.py --self-test   shows which literals are reported

A sentence is a literal with two words beside each other, or with one word that ends like a sentence ("Ready."). Words
alone are no sentences: the names of commands and settings, formats, letters of pieces. Neither are comments, includes,
conditions and reasons of static_assert and CHECKED_ASSERT.
"""

import re
import sys
from pathlib import Path

# Where sentences belong.
VOCABULARY = {"src/frame/base/vocabulary.h", "src/interfaces/protocols/help_texts.h", "src/uci/uci_texts.h"}
# What no user of the engine ever reads, and why.
FOR_DEVELOPERS = {"src/bitbases/single_pawn_generator.cpp": "a program that the build runs; it writes C++"}

TWO_WORDS = re.compile(r"[A-Za-z]{2,}[,;:]?\s+[A-Za-z]{2,}")
END_OF_SENTENCE = re.compile(r"[A-Za-z]{3,}[.!?]\s*$")
# A comment, a raw literal, a literal, a character, or a line of the preprocessor; whichever begins first.
TOKENS = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"(?P<fence>[^()\s\\]{0,16})\((?P<raw>.*?)\)(?P=fence)"|"(?P<text>(?:\\.|[^"\\\n])*)"'
    r"|'(?:\\.|[^'\\\n])+'|^[ \t]*\#(?:\\\n|[^\n])*|\b(?P<assertion>static_assert|CHECKED_ASSERT)\s*(?=\()",
    re.DOTALL | re.MULTILINE)
ESCAPE = re.compile(r"\\(?:[0-7]{1,3}|x[0-9A-Fa-f]+|.)")


def literals(text):
    """(line number, what is read) of every literal; literals that follow one another are one."""
    end_of_assertion = 0
    found = []
    for token in TOKENS.finditer(text):
        if token.group("assertion"):
            end_of_assertion = max(end_of_assertion, closing_parenthesis(text, token.end()))
            continue
        literal = token.group("raw") if token.group("raw") is not None else token.group("text")
        if literal is None or token.start() < end_of_assertion:
            continue
        readable = literal if token.group("raw") is not None else ESCAPE.sub(" ", literal)
        if found and not text[found[-1][2]:token.start()].strip():
            found[-1] = (found[-1][0], found[-1][1] + readable, token.end())
        else:
            found.append((text.count("\n", 0, token.start()) + 1, readable, token.end()))
    return [(line, readable) for line, readable, _ in found]


def closing_parenthesis(text, opening):
    """The position after the parenthesis that closes the one at `opening`; those inside literals don't count."""
    depth = 0
    for token in re.finditer(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|[()]', text[opening:]):
        depth += {"(": 1, ")": -1}.get(token.group(), 0)
        if depth == 0:
            return opening + token.end()
    return len(text)


def is_sentence(readable):
    return bool(TWO_WORDS.search(readable) or END_OF_SENTENCE.search(readable))


def faults(path, text):
    return [f'{path}:{line}: "{readable}"' for line, readable in literals(text) if is_sentence(readable)]


def self_test():
    reported = [
        'vlog << "the game is over";',
        'vlog << "Ready.";',
        'vlog << "illegal\\nmove";',
        'constexpr std::string_view text = "out "\n    "of range";',
        'say(R"(two words)");',
        'refuse("unknown command");  // said to the user',
        'CHECKED_ASSERT(ok, vocabulary::bad); say("not asserted");',
        "const char quote = '\"'; say(\"two words\");",
    ]
    passed = [
        '#include "two words.h"',
        '// the game is "over and out"',
        '/* "a sentence\n of two lines" */',
        'static_assert(sizeof(int) == 4, "an int has four bytes");',
        'CHECKED_ASSERT(n < Size(), "sunk too deep (again)");',
        'Keyword{"modify_settings", at_least_two},',
        'text += " - ";',
        'constexpr std::string_view letters = "KQkq";',
        'name + ".XXXXXX"',
        'say("one"); say("more");',
        'open("/dev/null", O_RDWR);',
        "constexpr char quote = '\"'; // two words \"",
        'constexpr std::string_view quotes = "\\"\'";',
    ]
    wrong = [text for text in reported if not faults("x", text)] + [text for text in passed if faults("x", text)]
    for text in wrong:
        print(f"self-test: judged wrongly: {text}", file=sys.stderr)
    print(f"{len(reported) + len(passed) - len(wrong)} of {len(reported) + len(passed)} lines were judged rightly.")
    return 1 if wrong else 0


def main(arguments):
    if arguments == ["--self-test"]:
        return self_test()
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    root = Path(__file__).resolve().parents[2]
    found = []
    for path in sorted((root / "src").rglob("*")):
        name = path.relative_to(root).as_posix()
        if path.suffix in (".h", ".cpp") and name not in VOCABULARY and name not in FOR_DEVELOPERS:
            found += faults(name, path.read_text())
    if found:
        print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
