#include "web/desk.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <deque>
#include <sstream>
#include <vector>

#include "chess/move_generator.h"
#include "chess/notation.h"
#include "chess/pgn.h"
#include "chess/user_board.h"
#include "evaluation/personality.h"
#include "frame/base/text_utilities.h"
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
        game.board.MakeMove(move);
    }
    return game;
}

JsonValue Texts(const std::vector<std::string>& texts) {
    return JsonValue::Array(texts, [](const std::string& text) { return text; });
}

JsonValue GameAnswer(Lines& lines) {
    const Game game = ReadGame(lines);
    const BOARD& board = game.board.board();
    std::vector<Move> moves;
    if (!game.board.IsGameOver()) GenerateLegalMoves(board, moves);
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

struct TagName {
    std::string_view name;
    std::string PGN_TAGS::*field;
};
constexpr std::array tag_names{
    TagName{"event", &PGN_TAGS::event}, TagName{"site", &PGN_TAGS::site},   TagName{"date", &PGN_TAGS::date},
    TagName{"round", &PGN_TAGS::round}, TagName{"white", &PGN_TAGS::white}, TagName{"black", &PGN_TAGS::black},
};

JsonValue ReadPgnAnswer(Lines& lines) {
    std::istringstream text{std::string(lines.rest())};
    UserBoard board;
    PGN_TAGS tags;
    try {
        ReadPgn(board, text, tags);
    } catch (const UserBoard::invalid_move&) {
        throw illegal_move_in_game;
    } catch (const UserBoard::user_exception&) {
        throw unreadable_game;
    }
    const auto text_of = [](Move move) { return VorkaUci::MoveText(move); };
    return JsonValue::Object({{"fen", tags.fen.empty() ? "" : board.GetFen()},
                              {"moves", JsonValue::Array(board.next_moves(), text_of)},
                              {"white", tags.white},
                              {"black", tags.black},
                              {"result", ResultText(board.result())}});
}

/// After the game the result stands, as a word, and then the tags, one a line with a blank after its name.
JsonValue WritePgnAnswer(Lines& lines) {
    Game game = ReadGame(lines);
    const std::string_view result = lines.Next();
    for (const GameResult ended : {GameResult::white_wins, GameResult::black_wins, GameResult::draw}) {
        if (!game.board.IsGameOver() && result == ResultText(ended)) {
            game.board.EndGame(ended, GameEndReason::unknown);
        }
    }
    PGN_TAGS tags;
    while (!lines.rest().empty()) {
        const std::string_view line = lines.Next();
        const std::size_t blank = std::min(line.find(' '), line.size());
        const auto* const tag = std::find_if(tag_names.begin(), tag_names.end(),
                                             [&](const TagName& row) { return row.name == line.substr(0, blank); });
        if (tag == tag_names.end()) throw no_such_tag;
        tags.*(tag->field) = VorkaUtils::Trimmed(line.substr(blank));
    }
    std::ostringstream text;
    WritePgn(game.board, text, tags);
    return JsonValue::Object({{"pgn", text.str()}});
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
