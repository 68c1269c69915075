#include "chess/pgn.h"

#include <algorithm>
#include <array>
#include <deque>
#include <string_view>

#include "chess/fen.h"
#include "chess/notation.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"

namespace {

/// The most characters that are skipped at the end of a line, and in a comment.
constexpr std::streamsize longest_skip = 1000;
constexpr std::size_t longest_line = 70;

/// The tags with a field, by name. The result has none: it follows from the game.
struct TagField {
    std::string_view name;
    std::string PGN_TAGS::*field;
};
constexpr std::array tag_fields{
    TagField{vocabulary::tag_event, &PGN_TAGS::event},
    TagField{vocabulary::tag_site, &PGN_TAGS::site},
    TagField{vocabulary::tag_date, &PGN_TAGS::date},
    TagField{vocabulary::tag_round, &PGN_TAGS::round},
    TagField{vocabulary::tag_white, &PGN_TAGS::white},
    TagField{vocabulary::tag_black, &PGN_TAGS::black},
    TagField{vocabulary::tag_time_control, &PGN_TAGS::time_control},
    TagField{vocabulary::tag_fen, &PGN_TAGS::fen},
};

}  // namespace

// --- Tags ---

namespace {

/// The text between quotes, where a backslash stands before a quote and a backslash. The opening quote is read already.
std::string ReadQuoted(std::istream& stream) {
    std::string text;
    for (char c = 0; stream.get(c);) {
        if (c == '"') return text;
        if (c == '\\' && !stream.get(c)) break;
        text += c;
    }
    throw UserBoard::io_error();
}

/// Reads a tag up to its closing bracket. The opening one is read already.
void TakeTag(std::istream& stream, PGN_TAGS& tags) {
    std::string name;
    std::string value;
    for (char c = 0; stream.get(c);) {
        if (c == ']') {
            const auto found = std::find_if(tag_fields.begin(), tag_fields.end(),
                                            [&name](const TagField& tag) { return tag.name == name; });
            if (found != tag_fields.end()) tags.*(found->field) = value;
            return;
        }
        if (c == '"') {
            value = ReadQuoted(stream);
        } else if (VorkaUtils::white_space.find(c) == std::string_view::npos) {
            name += c;
        }
    }
    throw UserBoard::io_error();
}

std::string Padded(int number, std::size_t digits) {
    if (number < 0) return std::string(digits, '?');
    const std::string text = VorkaUtils::ToString(number);
    return std::string(digits - std::min(digits, text.size()), '0') + text;
}

}  // namespace

std::string DateToPgn(int year, int month, int day) {
    return Padded(year, 4) + '.' + Padded(month, 2) + '.' + Padded(day, 2);
}

void ReadPgnTags(std::istream& stream, PGN_TAGS& tags) {
    tags = {};
    for (char c = 0; stream >> c;) {
        if (c != '[') {
            stream.putback(c);
            return;
        }
        TakeTag(stream, tags);
    }
}

// --- Moves ---

namespace {

constexpr std::array results{GameResult::white_wins, GameResult::black_wins, GameResult::draw, GameResult::aborted};

/// The result that a word tells; `running` if it is none.
GameResult ResultOf(std::string_view word) {
    const auto found =
        std::find_if(results.begin(), results.end(), [word](GameResult result) { return ResultText(result) == word; });
    return found == results.end() ? GameResult::running : *found;
}

/// Without the digits and dots of a move number in front.
std::string_view WithoutMoveNumber(std::string_view word) {
    const std::size_t dots = std::min(word.find_first_not_of("0123456789"), word.size());
    const std::size_t rest = std::min(word.find_first_not_of('.', dots), word.size());
    return dots == 0 || rest == dots ? word : word.substr(rest);
}

/// Reads the moves of one game.
class MoveText {
  public:
    MoveText(std::istream& stream, const BOARD& start) : stream_(stream), board_(start) {}

    /// Reads up to the result, and gives it.
    GameResult Read() {
        while (SkipComments()) {
            std::string word;
            stream_ >> word;
            if (const GameResult result = TakeWord(word); result != GameResult::running) {
                stream_.ignore(longest_skip, '\n');
                return result;
            }
        }
        throw UserBoard::io_error();
    }
    [[nodiscard]] const std::deque<Move>& moves() const { return moves_; }

  private:
    /// Goes to the next word. False at the end of the text.
    bool SkipComments() {
        for (char c = 0; stream_ >> c;) {
            if (c == '{') {
                stream_.ignore(longest_skip, '}');
            } else if (c == ';') {
                stream_.ignore(longest_skip, '\n');
            } else {
                stream_.putback(c);
                return true;
            }
        }
        return false;
    }

    /// Gives the result if the word is one.
    GameResult TakeWord(std::string_view word) {
        // Three dots mark the number of a move by Black, which only the very first move can need.
        const bool begins_with_black = moves_.empty() && board_.side_to_move == black;
        if (word.find("...") != std::string_view::npos && !begins_with_black) throw UserBoard::io_error();
        const std::string_view text = WithoutMoveNumber(word);
        const GameResult result = ResultOf(text);
        if (text.starts_with('{') || text.starts_with(';')) {
            SkipCommentAfterNumber(text);
        } else if (!text.empty() && result == GameResult::running) {
            TakeMove(text);
        }
        return result;
    }

    /// A comment that begins in a word. What follows its end in the same word can't be told from a move and is
    /// refused.
    void SkipCommentAfterNumber(std::string_view text) {
        const std::size_t end = text.find('}');
        if (text.front() == ';') {
            stream_.ignore(longest_skip, '\n');
        } else if (end == std::string_view::npos) {
            stream_.ignore(longest_skip, '}');
        } else if (end + 1 != text.size()) {
            throw UserBoard::io_error();
        }
    }

    void TakeMove(std::string_view text) {
        MoveParseError error = MoveParseError::syntax;
        const Move move = ParseMove(text, board_, error);
        if (move == INVALID) {
            if (error == MoveParseError::syntax) throw UserBoard::io_error();
            throw UserBoard::invalid_move(error);
        }
        PlayGameMove(board_, move);
        moves_.push_back(move & move_bits);
    }

    std::istream& stream_;
    BOARD board_;
    std::deque<Move> moves_;
};

}  // namespace

void ReadPgn(UserBoard& board, std::istream& stream, PGN_TAGS& tags) {
    ReadPgnTags(stream, tags);
    UserBoard game;
    if (!tags.fen.empty()) game.SetBoardFromFen(tags.fen);
    MoveText text(stream, game.board());
    const GameResult result = text.Read();
    game.SetNextMoves(text.moves());
    game.EndGame(result, GameEndReason::unknown);
    board = game;
}

// --- Writing ---

namespace {

void WriteTag(std::ostream& stream, std::string_view name, std::string_view value) {
    stream << '[' << name << " \"";
    for (const char c : value) {
        if (c == '"' || c == '\\') stream << '\\';
        stream << c;
    }
    stream << "\"]\n";
}

/// The start position, with the number that a reader of it will count from; empty for the usual one.
std::string StartFen(const UserBoard& board) {
    const int number = std::max(static_cast<int>(board.ply_offset() / 2), 1);
    const std::string fen = WriteFen(board.start().board, number);
    return board.ply_offset() == 0 && fen == vocabulary::start_position_fen ? std::string() : fen;
}

void WriteMoves(const UserBoard& board, std::ostream& stream) {
    BOARD position = board.start().board;
    std::uint64_t ply = board.ply_offset();
    std::size_t line_length = 0;
    bool is_first = true;
    for (const Move move : board.made_moves()) {
        std::string text;
        if (position.side_to_move == white || is_first) {
            text = VorkaUtils::ToString(ply / 2 + 1) + '.';
            if (position.side_to_move == black) text += "..";
            text += ' ';
        }
        text += MoveToSan(position, move) + ' ';
        line_length += text.size();
        if (line_length > longest_line) {
            stream << '\n';
            line_length = text.size();
        }
        stream << text;
        PlayGameMove(position, move);
        ++ply;
        is_first = false;
    }
}

}  // namespace

void WritePgn(const UserBoard& board, std::ostream& stream, const PGN_TAGS& tags) {
    const std::string result = ResultText(board.result());
    WriteTag(stream, vocabulary::tag_event, tags.event);
    WriteTag(stream, vocabulary::tag_site, tags.site);
    WriteTag(stream, vocabulary::tag_date, tags.date);
    WriteTag(stream, vocabulary::tag_round, tags.round);
    WriteTag(stream, vocabulary::tag_white, tags.white);
    WriteTag(stream, vocabulary::tag_black, tags.black);
    WriteTag(stream, vocabulary::tag_result, result);
    WriteTag(stream, vocabulary::tag_time_control, tags.time_control);
    if (const std::string fen = StartFen(board); !fen.empty()) WriteTag(stream, vocabulary::tag_fen, fen);
    stream << '\n';
    WriteMoves(board, stream);
    stream << "\n\n" << result << '\n';
}
