#include "selfplay/game_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <vector>

#include "chess/fen.h"
#include "chess/notation.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "options/number_option.h"
#include "selfplay/pair_scores.h"

namespace {

constexpr std::size_t longest_line = 79;

void AddTag(std::string& text, std::string_view name, std::string_view value) {
    text.append("[").append(name).append(" \"");
    for (const char c : value) {
        if (c == '"' || c == '\\') text += '\\';
        text += c;
    }
    text += "\"]\n";
}

/// Words with blanks between them, in lines.
class Paragraph {
  public:
    explicit Paragraph(std::string& text) : text_(text) {}

    void Add(std::string_view word) {
        const bool fits = length_ + 1 + word.size() <= longest_line;
        if (length_ != 0) text_ += fits ? ' ' : '\n';
        length_ = length_ != 0 && fits ? length_ + 1 + word.size() : word.size();
        text_ += word;
    }

  private:
    std::string& text_;
    std::size_t length_ = 0;  ///< of the line so far
};

std::string CommentOn(const PlayedMove& move) {
    std::array<char, 64> text{};
    const Score size = std::abs(move.score);
    if (size >= mate_score_limit) {
        const char sign = move.score > 0 ? '+' : '-';
        std::snprintf(text.data(), text.size(), "{%cM%d/%d}", sign, (infinity_bound - size + 1) / 2, move.depth);
    } else {
        std::snprintf(text.data(), text.size(), "{%+.2f/%d}", move.score / 100.0, move.depth);
    }
    return text.data();
}

std::string RulesText(const MatchPlan& plan) {
    const GameRules& rules = plan.rules;
    if (rules.base_time == 0) return "-";
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%g+%g", static_cast<double>(rules.base_time) / 1000,
                  static_cast<double>(rules.increment) / 1000);
    return text.data();
}

/// The number of the first move: a start of its own begins with move 1, whatever its offset.
std::uint64_t FirstPly(const UserBoard& start) { return start.start().board.side_to_move == black ? 1 : 0; }

void AddTags(std::string& text, const MatchPlan& plan, const PlayedGame& game) {
    const bool first_has_white = FirstHasWhite(game.number);
    AddTag(text, "Event", "Self-play");
    AddTag(text, "Site", "?");
    AddTag(text, "Date", "????.??.??");
    AddTag(text, "Round", std::to_string(game.number / 2 + 1) + (first_has_white ? ".1" : ".2"));
    AddTag(text, "White", plan.players[first_has_white ? 0 : 1].name);
    AddTag(text, "Black", plan.players[first_has_white ? 1 : 0].name);
    AddTag(text, "Result", ResultText(game.result));
    AddTag(text, "TimeControl", RulesText(plan));
    AddTag(text, "Termination", ReasonText(game.result, game.reason));
    const std::string fen = WriteFen(OpeningOf(plan, game.number).position.start().board, 1);
    if (fen == vocabulary::start_position_fen) return;
    AddTag(text, "SetUp", "1");
    AddTag(text, "FEN", fen);
}

void AddMoves(std::string& text, const UserBoard& opening, const PlayedGame& game) {
    BOARD board = opening.start().board;
    std::uint64_t ply = FirstPly(opening);
    Paragraph moves(text);
    bool is_first = true;
    const auto add = [&](Move move) {
        const std::string number = std::to_string(ply / 2 + 1);
        if (board.side_to_move == white) moves.Add(number + '.');
        if (board.side_to_move == black && is_first) moves.Add(number + "...");
        moves.Add(MoveToSan(board, move));
        PlayGameMove(board, move);
        ++ply;
        is_first = false;
    };
    for (const Move move : opening.made_moves()) add(move);
    for (const PlayedMove& move : game.moves) {
        add(move.move);
        moves.Add(CommentOn(move));
    }
    moves.Add(ResultText(game.result));
    text += '\n';
}

}  // namespace

std::string PgnOf(const MatchPlan& plan, const PlayedGame& game) {
    std::string text;
    AddTags(text, plan, game);
    text += '\n';
    AddMoves(text, OpeningOf(plan, game.number).position, game);
    return text + '\n';
}

// --- Lines ---

std::string LineOf(const PlayedGame& game) {
    std::string line = std::to_string(game.number) + ' ' + ResultText(game.result) + ' ' +
                       std::to_string(static_cast<int>(game.reason));
    for (const PlayedMove& move : game.moves) {
        line += ' ' + MoveToCoordinate(move.move) + '/' + std::to_string(move.score) + '/' + std::to_string(move.depth);
    }
    return line;
}

namespace {

constexpr std::array finished{GameResult::white_wins, GameResult::black_wins, GameResult::draw};

[[noreturn]] void Refuse(std::string_view what, std::string_view text) {
    throw std::runtime_error(std::string(what) + ": \"" + std::string(text) + '"');
}

template <class Number>
Number NumberOf(std::string_view what, std::string_view text, Number least, Number most) {
    if (const std::optional<Number> number = NumberIn(text, least, most)) return *number;
    Refuse(what, text);
}

PlayedMove MoveOf(std::string_view word, const BOARD& board) {
    const std::vector<std::string> parts = VorkaUtils::tokenize(word, "/");
    if (parts.size() != 3) Refuse("no move with score and depth", word);
    MoveParseError error = MoveParseError::syntax;
    const Move move = ParseMove(parts[0], board, error);
    if (move == INVALID) Refuse(MoveParseErrorText(error), word);
    return {.move = move & move_bits,
            .score = NumberOf("no score", parts[1], -infinity_bound, infinity_bound),
            .depth = NumberOf("no depth", parts[2], 0, 1000)};
}

}  // namespace

PlayedGame GameOfLine(const MatchPlan& plan, std::string_view line) {
    const std::vector<std::string> words = VorkaUtils::tokenize(line);
    if (words.size() < 3) Refuse("no game", line);
    PlayedGame game;
    game.number = static_cast<std::uint64_t>(
        NumberOf<std::int64_t>("no number of a game", words[0], 0, std::numeric_limits<std::int64_t>::max()));
    const auto* const result = std::find_if(finished.begin(), finished.end(),
                                            [&](GameResult candidate) { return ResultText(candidate) == words[1]; });
    if (result == finished.end()) Refuse("no result", words[1]);
    game.result = *result;
    game.reason = static_cast<GameEndReason>(NumberOf("no reason", words[2], 0, 9));
    BOARD board = OpeningOf(plan, game.number).position.board();
    for (std::size_t i = 3; i < words.size(); ++i) {
        game.moves.push_back(MoveOf(words[i], board));
        PlayGameMove(board, game.moves.back().move);
    }
    return game;
}
