#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chess/bits.h"
#include "chess/move.h"

/// From an input line to words, of a command or of edit mode: the same in every protocol.
namespace VorkaInterfaces {

/// An input line and its words.
struct TokenizedLine {
    std::string line;
    std::vector<std::string> tokens;
};

/// Splits a line; a word may hold blanks between quotes of either kind. Throws ErrorCommand for an open quote.
[[nodiscard]] TokenizedLine tokenizeLine(const std::string& line);
/// The tokens of [from, to), separated by single blanks.
[[nodiscard]] std::string joinTokens(const std::vector<std::string>& tokens, std::size_t from, std::size_t to);

/// What a line of edit mode asks for.
enum class EditCommand { clear, switch_colour, switch_side, done, cancel, help, verify, display, quit, place, unknown };

/// The next line of standard input, "quit" at its end. Throws ErrorCommand for one that is too long.
[[nodiscard]] std::string readInputLine();

/// Reads one line of edit mode; blocks. `square` and `piece` are set for `place`; `line` is what was read.
/// Throws ErrorCommand for a line that does not tokenize.
[[nodiscard]] EditCommand readEditCommand(std::string& line, Square& square, PieceType& piece);

}  // namespace VorkaInterfaces
