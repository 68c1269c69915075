#include "web/desk.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <sstream>
#include <vector>

#include "chess/fen.h"
#include "chess/move_generator.h"
#include "chess/notation.h"
#include "chess/pgn.h"
#include "chess/user_board.h"
#include "evaluation/personality.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "search/settings/search_settings.h"
#include "uci/move_text.h"
#include "uci/position_command.h"
#include "web/evaluation_answer.h"
#include "web/json_text.h"

namespace VorkaWeb {

namespace {

/// What is wrong with a question, as a word.
struct Refusal {
    std::string_view word;
};
constexpr Refusal no_such_question{"no_such_question"};
constexpr Refusal no_such_position{"no_such_position"};
constexpr Refusal illegal_move{"illegal_move"};
constexpr Refusal no_such_personality{"no_such_personality"};
constexpr Refusal no_such_tag{"no_such_tag"};
constexpr Refusal unreadable_game{"unreadable_game"};
constexpr Refusal illegal_move_in_game{"illegal_move_in_game"};

/// Takes lines off a text. A text that has ended gives empty ones.
class Lines {
  public:
    explicit Lines(std::string_view text) : rest_(text) {}

    std::string_view Next() {
        const std::size_t end = std::min(rest_.find('\n'), rest_.size());
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return line;
    }
    [[nodiscard]] std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

/// The start of a game. A position is read as leniently as UCI's `position` reads it.
UserBoard StartOf(std::string_view fen) {
    UserBoard game;
    std::vector<std::string> words = VorkaUtils::tokenize(fen);
    if (words.empty()) return game;
    words.insert(words.begin(), "fen");
    const auto command = VorkaUci::ReadPosition(words);
    if (!command) throw no_such_position;
    try {
        // The number of the move stands last, and is not kept by a board.
        constexpr std::size_t words_with_number = 7;
        int number = 1;
        try {
            if (words.size() == words_with_number) number = std::clamp(VorkaUtils::ToInteger(words.back()), 1, 9999);
        } catch (const string_conversion_error&) {
            // It counts as the first.
        }
        game.SetBoard(command->board, static_cast<std::uint32_t>(2 * (number - 1)));
    } catch (const UserBoard::invalid_position&) {
        throw no_such_position;
    }
    return game;
}

/// A game, with the notation of its moves.
struct Game {
    UserBoard board;
    std::vector<std::string> notation;
};

Game ReadGame(Lines& lines) {
    Game game{.board = StartOf(lines.Next()), .notation = {}};
    for (const std::string& text : VorkaUtils::tokenize(lines.Next())) {
        const Move move = VorkaUci::FindMove(text, game.board.board());
        if (move == INVALID) throw illegal_move;
        game.notation.push_back(MoveToSan(game.board.board(), move));
        // Players may overlook a repetition or the fifty moves: such an end counts at the last position alone.
        game.board.EndGame(GameResult::running, GameEndReason::unknown);
        game.board.MakeMove(move);
    }
    return game;
}

JsonValue Texts(const std::vector<std::string>& texts) {
    return JsonValue::Array(texts, [](const std::string& text) { return text; });
}

/// Whether a side could mate at all if the other one helped, as far as the pieces tell. One that can't does not win
/// when the other one's time is up.
bool CanMate(const BOARD& board, Colour colour) {
    const SIDE_PIECES& own = board.side(colour);
    const SIDE_PIECES& enemy = board.side(colour ^ 1U);
    if ((own.pawns | own.rooks | own.queens) != 0) return true;
    if (own.minor_points == 0) return false;
    constexpr std::int32_t knight_points = 3;
    // A knight mates a king in a corner whom his own men shut in. Queens alone never do: they can take it or give way.
    if (own.knights != 0) {
        return own.minor_points > knight_points || (enemy.pawns | enemy.knights | enemy.bishops | enemy.rooks) != 0;
    }
    // Bishops of one colour need something that stands on squares of the other one.
    constexpr Bitboard light_squares = 0x55AA55AA55AA55AA;  // b1, d1, ..
    const Bitboard bishops = own.bishops | enemy.bishops;
    const bool is_one_colour = (bishops & light_squares) == 0 || (bishops & ~light_squares) == 0;
    return !is_one_colour || (enemy.pawns | enemy.knights) != 0;
}

JsonValue GameAnswer(Lines& lines) {
    const Game game = ReadGame(lines);
    const BOARD& board = game.board.board();
    std::vector<Move> moves;
    GenerateLegalMoves(board, moves);  // also after a draw that the game itself may have overlooked
    const auto move_of = [&](Move move) {
        return JsonValue::Object({{"uci", VorkaUci::MoveText(move)}, {"san", MoveToSan(board, move)}});
    };
    return JsonValue::Object(
        {{"fen", game.board.GetFen()},
         {"side", board.mover() == white ? "white" : "black"},
         {"isCheck", board.in_check()},
         {"isOver", game.board.IsGameOver()},
         {"result", ResultText(game.board.result())},
         {"reason", game.board.IsGameOver() ? ReasonText(game.board.result(), game.board.reason()) : ""},
         {"canMate", JsonValue::Object({{"white", CanMate(board, white)}, {"black", CanMate(board, black)}})},
         {"notation", Texts(game.notation)},
         {"legal", JsonValue::Array(moves, move_of)}});
}

/// Its first line is the personality, a name or a number.
JsonValue EvaluationOfGame(Lines& lines) {
    int personality = 0;
    constexpr int most = 1000;
    if (!parse_personality(lines.Next(), personality) || std::abs(personality) > most) throw no_such_personality;
    return EvaluationAnswer(ReadGame(lines).board.board(), personality);
}

JsonValue SettingsAnswer() {
    const auto row_of = [](const search_settings::SettingRow& row) {
        std::vector<std::int32_t> defaults(row.defaults.begin(), row.defaults.begin() + row.size);
        return JsonValue::Object({{"name", row.name},
                                  {"isBoolean", row.is_boolean()},
                                  {"least", row.lower_bound},
                                  {"most", row.upper_bound},
                                  {"defaults", JsonValue::Array(defaults, [](std::int32_t value) { return value; })}});
    };
    return JsonValue::Object({{"settings", JsonValue::Array(search_settings::Table(), row_of)}});
}

/// Reads the tag FEN and the moves; the page knows all other tags itself.
JsonValue ReadPgnAnswer(Lines& lines) {
    std::istringstream text{std::string(lines.rest())};
    UserBoard board;
    std::string start;
    try {
        PGN_TAGS tags;
        ReadPgnTags(text, tags);
        if (!tags.fen.empty()) start = StartOf(tags.fen).GetFen();
        // With the start written in full, a text is read as leniently here as elsewhere on the desk.
        std::stringstream game;
        if (!start.empty()) game << "[FEN \"" << start << "\"]\n\n";
        if (text.good()) game << text.rdbuf();
        ReadPgn(board, game, tags);
    } catch (const UserBoard::invalid_move&) {
        throw illegal_move_in_game;
    } catch (const UserBoard::user_exception&) {
        throw unreadable_game;
    }
    const auto text_of = [](Move move) { return VorkaUci::MoveText(move); };
    return JsonValue::Object({{"fen", start},
                              {"moves", JsonValue::Array(board.next_moves(), text_of)},
                              {"result", ResultText(board.result())}});
}

struct Tag {
    std::string_view name;
    std::string_view value;
};

/// The tags that every game has, in their order, with what they say where nothing is known. The result comes after
/// them.
constexpr std::array roster{
    Tag{"Event", "?"}, Tag{"Site", "?"},  Tag{"Date", "????.??.??"},
    Tag{"Round", "-"}, Tag{"White", "?"}, Tag{"Black", "?"},
};
/// What follows from the game itself.
constexpr std::array own_tags{std::string_view("Result"), std::string_view("SetUp"), std::string_view("FEN")};

bool IsTagName(std::string_view name) {
    const auto is_part = [](char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    };
    return !name.empty() && std::all_of(name.begin(), name.end(), is_part) &&
           std::find(own_tags.begin(), own_tags.end(), name) == own_tags.end();
}

std::vector<Tag> ReadTags(Lines& lines) {
    std::vector<Tag> tags;
    while (!lines.rest().empty()) {
        const std::string_view line = lines.Next();
        const std::size_t blank = std::min(line.find(' '), line.size());
        if (!IsTagName(line.substr(0, blank))) throw no_such_tag;
        tags.push_back({line.substr(0, blank), line.substr(std::min(blank + 1, line.size()))});
    }
    return tags;
}

void WriteTag(std::string& text, const Tag& tag) {
    text += '[';
    text += tag.name;
    text += " \"";
    for (const char c : tag.value) {
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    text += "\"]\n";
}

/// The header: the roster first, then what else is known, then where the game begins. The number of the move in the FEN
/// is the true one: a page's game goes to other programs. (The engine's own files keep another: docs/oddities.md, move
/// number of a FEN.)
std::string Header(const UserBoard& board, const std::vector<Tag>& tags) {
    std::string text;
    const auto is_named = [](std::string_view name) { return [name](const Tag& tag) { return tag.name == name; }; };
    for (const Tag& usual : roster) {
        const auto given = std::find_if(tags.begin(), tags.end(), is_named(usual.name));
        WriteTag(text, given == tags.end() ? usual : *given);
    }
    WriteTag(text, {"Result", ResultText(board.result())});
    for (const Tag& tag : tags) {
        if (std::none_of(roster.begin(), roster.end(), is_named(tag.name))) WriteTag(text, tag);
    }
    const std::string start = WriteFen(board.start().board, static_cast<int>(board.ply_offset() / 2 + 1));
    if (start != vocabulary::start_position_fen) {
        WriteTag(text, {"SetUp", "1"});
        WriteTag(text, {"FEN", start});
    }
    return text;
}

/// The moves with their numbers, and the result.
std::string MoveText(const Game& game) {
    constexpr std::size_t longest_line = 79;
    std::string text;
    std::size_t line_begin = 0;
    const auto add = [&](const std::string& word) {
        if (text.size() - line_begin + word.size() >= longest_line) {
            text += '\n';
            line_begin = text.size();
        } else if (!text.empty()) {
            text += ' ';
        }
        text += word;
    };
    std::uint32_t ply = game.board.ply_offset();
    for (const std::string& san : game.notation) {
        const bool is_white = ply % 2 == 0;
        if (is_white || ply == game.board.ply_offset()) add(std::to_string(ply / 2 + 1) + (is_white ? "." : "..."));
        add(san);
        ++ply;
    }
    add(ResultText(game.board.result()));
    return text + '\n';
}

/// Whether the position leaves no doubt about the result, whatever the players said.
bool IsMateOrStalemate(const UserBoard& board) {
    return board.IsGameOver() && (board.reason() == GameEndReason::mate || board.reason() == GameEndReason::stalemate);
}

/// After the game the result stands, as a word, and then the tags, one a line with a blank after its name.
JsonValue WritePgnAnswer(Lines& lines) {
    Game game = ReadGame(lines);
    const std::string_view result = lines.Next();
    for (const GameResult ended : {GameResult::white_wins, GameResult::black_wins, GameResult::draw}) {
        if (!IsMateOrStalemate(game.board) && result == ResultText(ended)) {
            game.board.EndGame(ended, GameEndReason::unknown);
        }
    }
    return JsonValue::Object({{"pgn", Header(game.board, ReadTags(lines)) + '\n' + MoveText(game)}});
}

JsonValue AnswerTo(std::string_view word, Lines& lines) {
    if (word == "game") return GameAnswer(lines);
    if (word == "evaluation") return EvaluationOfGame(lines);
    if (word == "settings") return SettingsAnswer();
    if (word == "read_pgn") return ReadPgnAnswer(lines);
    if (word == "write_pgn") return WritePgnAnswer(lines);
    throw no_such_question;
}

}  // namespace

std::string Answer(std::string_view question) try {
    Lines lines(question);
    const std::string_view word = lines.Next();
    return AnswerTo(word, lines).text;
} catch (const Refusal& refusal) {
    return JsonValue::Object({{"error", refusal.word}}).text;
}

}  // namespace VorkaWeb
