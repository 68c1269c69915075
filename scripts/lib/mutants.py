"""Small breaks of the code, for scripts/mutate: which there are, and how one looks.

A mutant is one change in one line: a comparison that takes its border in or leaves it out, a sum that becomes a
difference, `and` for `or`, a number that is one too large or too small, a condition turned round, a statement left out.
Lines that are no code of a function (comments, includes, declarations, assertions, tables of texts) are left alone, and
so are changes that no test could tell: reserved sizes, the width of a number that is printed nowhere.
"""

import re
from typing import NamedTuple

SWAPS = {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ", " == ": " != ", " != ": " == ", " + ": " - ", " - ": " + ",
         " && ": " || ", " || ": " && ", " += ": " -= ", " -= ": " += ", " * ": " + ", "std::min(": "std::max(",
         "std::max(": "std::min(", "++": "--", "return true;": "return false;", "return false;": "return true;",
         "std::min<": "std::max<", "std::max<": "std::min<", " & ": " | ", " | ": " & ", "continue;": "break;"}
NUMBER = re.compile(r"(?<![\w.'\"])(\d+)(?![\w.'\"])")
CONDITION = re.compile(r"^(\s*(?:\} else )?if )\((.*)\)( \{| return\b.*;| continue;| break;| [\w:.>-]+\(.*\);)$")
STATEMENT = re.compile(r"^(\s+)(?:[A-Za-z_][\w:.>\[\]-]*\(.*\);|(?:\+\+|--)[\w.]+;|[\w.>\[\]-]+ [|&+-]?= [^{]*;)$")
NO_CODE = re.compile(r"^\s*(//|#|\*|using |namespace |template|static_assert|constexpr|inline constexpr|class |struct |enum |public:|private:|case |default:|\[\[|return \*this|friend )"
                     r"|CHECKED_ASSERT|operator|reserve\(|= default|= delete|std::abort|Unreachable|static_cast<void>")
LITERAL = re.compile(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)\'|//.*$')


class Mutant(NamedTuple):
    path: str
    line: int  # from 1
    before: str
    after: str

    def key(self):
        """The same as long as the line is: a file may grow above it."""
        return f"{self.path} | {self.before.strip()} | {self.after.strip()}"


def mutants_of_line(text):
    """All changed forms of a line of code."""
    if NO_CODE.search(text):
        return []
    # What stands in literals is no code, and comments aren't: the search finds letters there, or the end of the line.
    code = LITERAL.sub(lambda found: ("" if found[0].startswith("//") else "_") * len(found[0]), text).rstrip()
    found = []
    for before, after in SWAPS.items():
        at = code.find(before)
        while at >= 0:
            if not is_type(code, at, before):
                found.append(text[:at] + after + text[at + len(before):])
            at = code.find(before, at + len(before))
    for number in NUMBER.finditer(code):
        for other in (int(number[1]) + 1, int(number[1]) - 1):
            if other >= 0:
                found.append(text[:number.start()] + str(other) + text[number.end():])
    if (condition := CONDITION.match(code)) and ";" not in condition[2] and "auto" not in condition[2] and " = " not in condition[2]:
        found.append(f"{condition[1]}(!({text[condition.start(2):condition.end(2)]})){text[condition.start(3):]}")
    if statement := STATEMENT.match(code):
        found.append(f"{statement[1]};")
    return [line for line in dict.fromkeys(found) if line != text]


def is_type(code, at, before):
    """Whether what looks like an operator belongs to a type: `BOARD & board`, `Name * name`."""
    return before in (" & ", " * ") and re.search(r"^\s*(const )?[A-Z]\w*$", code[:at]) is not None


def mutants_of_file(path, text):
    """All mutants of a file, in its order. Raw strings and tables that the formatter leaves alone are passed over."""
    found, is_table = [], False
    for number, line in enumerate(text.splitlines(), 1):
        if "clang-format off" in line:
            is_table = True
        if "clang-format on" in line:
            is_table = False
        if not is_table and line.startswith("    "):
            found += [Mutant(path, number, line, after) for after in mutants_of_line(line)]
    return found


def with_mutant(text, mutant):
    """The text of the file with the change. ValueError if the line is another one now."""
    lines = text.splitlines(keepends=True)
    if lines[mutant.line - 1].rstrip("\n") != mutant.before:
        raise ValueError(f"{mutant.path}:{mutant.line} has changed")
    lines[mutant.line - 1] = mutant.after + "\n"
    return "".join(lines)


def read_reasons(text):
    """Keys of mutants that may live, with the reason: PATH | BEFORE | AFTER | REASON, in blocks of four lines."""
    reasons = {}
    for block in re.split(r"\n\s*\n", "\n".join(line for line in text.splitlines() if not line.startswith("#"))):
        lines = [line.strip() for line in block.strip().splitlines()]
        if not lines:
            continue
        if len(lines) != 4:
            raise ValueError("not four lines: " + " / ".join(lines))
        reasons[" | ".join(lines[:3])] = lines[3]
    return reasons
