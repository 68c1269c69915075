#include "interfaces/protocols/input_line.h"

#include <array>
#include <string_view>

#include "chess/notation.h"
#include "frame/base/os_dependent.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/error_command.h"

namespace VorkaInterfaces {

namespace {

struct EditWord {
    std::string_view word;
    EditCommand command;
};

constexpr std::array edit_words{
    EditWord{"#", EditCommand::clear},       EditWord{"c", EditCommand::switch_colour},
    EditWord{"s", EditCommand::switch_side}, EditWord{".", EditCommand::done},
    EditWord{"cancel", EditCommand::cancel}, EditWord{"help", EditCommand::help},
    EditWord{"verify", EditCommand::verify}, EditWord{"display", EditCommand::display},
    EditWord{"quit", EditCommand::quit},
};

/// Reads a piece letter of either case; X clears the square.
[[nodiscard]] bool ReadPieceLetter(char letter, PieceType& piece) {
    if (letter == 'x' || letter == 'X') {
        piece = no_piece;
        return true;
    }
    const char upper = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
    const std::size_t type = piece_letters.find(upper);
    if (type == std::string_view::npos || type == no_piece) return false;
    piece = static_cast<PieceType>(type);
    return true;
}

}  // namespace

TokenizedLine tokenizeLine(const std::string& line) {
    constexpr std::string_view quotes = "\"'";
    try {
        return {line, VorkaUtils::tokenize(line, VorkaUtils::white_space, quotes, quotes)};
    } catch (const VorkaUtils::tokenize_exception&) {
        throw ErrorCommand(ErrorCommand::Kind::error, vocabulary::could_not_tokenize_the_input_string, line);
    }
}

std::string joinTokens(const std::vector<std::string>& tokens, std::size_t from, std::size_t to) {
    std::string text;
    for (std::size_t i = from; i < to; ++i) {
        if (i != from) text += ' ';
        text += tokens[i];
    }
    return text;
}

// The text of the error tells the number.
static_assert(longest_input_line == 1048576);

std::string readInputLine() {
    try {
        return ReadLine();
    } catch (const input_line_too_long& failure) {
        throw ErrorCommand(ErrorCommand::Kind::error, vocabulary::line_too_long, failure.beginning());
    }
}

EditCommand readEditCommand(std::string& line, Square& square, PieceType& piece) {
    line = readInputLine();
    const std::vector<std::string> words = tokenizeLine(line).tokens;
    if (words.size() != 1) return EditCommand::unknown;

    const std::string& word = words.front();
    for (const EditWord& row : edit_words) {
        if (word == row.word) return row.command;
    }
    if (word.size() != 3 || !IsFileChar(word[1]) || !IsRankChar(word[2])) return EditCommand::unknown;
    if (!ReadPieceLetter(word[0], piece)) return EditCommand::unknown;
    square = SquareFromChars(word[1], word[2]);
    return EditCommand::place;
}

}  // namespace VorkaInterfaces
