#include "search/tournament/tournament_order.h"

#include <algorithm>
#include <utility>

#include "chess/exchange.h"
#include "search/node/move_list.h"
#include "search/tournament/capture_history.h"

namespace tournament {

namespace {

// The groups, from best to worst; within one the score is added. Quiet moves lie around 0.
constexpr std::int32_t sound_capture = 1 << 28;
constexpr std::int32_t first_killer = (1 << 27) + 1;
constexpr std::int32_t second_killer = 1 << 27;
constexpr std::int32_t counter_move = 1 << 26;
constexpr std::int32_t losing_capture = -(1 << 28);

/// From this distance on a cut counts no more, in plies.
constexpr int farthest_in_history = 63;

/// Where the answer to the last move is kept. Null after a pass.
Move* AnswerToLastMove(const TournamentNode& node) {
    const Move last = node.last_move();
    if (last == INVALID || node.rules().counter_moves == 0) return nullptr;
    return &node.state.tables().counter_move[PieceSquare(last, node.board().side_to_move ^ 1U)];
}

/// What a cut is worth in the histories: the more, the more nodes it has saved.
int Bonus(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    const int plies = std::clamp(node.plies(), 0, farthest_in_history) + 1;
    return std::min(rules.history_bonus_factor * plies * plies, rules.history_bonus_limit);
}

/// Captures that were tried in vain lose before quiet moves, too.
void LearnCaptures(const TournamentNode& node, std::span<const Move> searched, int bonus) {
    if (node.rules().capture_history == 0) return;
    for (const Move move : searched) {
        if (!IsQuiet(move)) LearnCapture(node, move, -bonus);
    }
    if (!IsQuiet(node.best_move)) LearnCapture(node, node.best_move, bonus);
}

void LearnQuietMoves(const TournamentNode& node, std::span<const Move> searched, int bonus) {
    const QuietHistory history(node);
    history.Learn(node.best_move, bonus);
    if (node.rules().history_malus == 0) return;
    for (const Move move : searched) {
        if (IsQuiet(move)) history.Learn(move, -bonus);
    }
}

}  // namespace

void LearnFromCut(TournamentNode& node, std::span<const Move> searched) {
    const int bonus = Bonus(node);
    LearnCaptures(node, searched, bonus);
    if (!IsQuiet(node.best_move)) return;
    LearnQuietMoves(node, searched, bonus);
    node.search.killers[node.ply].Take(node.best_move);
    if (Move* const answer = AnswerToLastMove(node)) *answer = node.best_move;
}

NodeAnswer MoveOrder::Next(Move& move) {
    if (stage_ == Stage::hash_move) {
        stage_ = Stage::list;
        move = node_.hash_move;
        if (move != INVALID) return go_on;
    }
    if (stage_ == Stage::list) {
        stage_ = Stage::pick;
        if (const auto answer = List()) return *answer;
    }
    move = Pick();
    return go_on;
}

NodeAnswer MoveOrder::List() {
    if (const auto answer = ListMoves(node_)) return answer;
    const KillerPair& killers = node_.search.killers[node_.ply];
    const Move counter = CounterMove();
    picker_.Take(node_.moves, node_.moves_end, [&](Move move) {
        if (!IsQuiet(move)) return CaptureScore(move);
        if (move == killers.first) return first_killer;
        if (move == killers.second) return second_killer;
        if (move == counter) return counter_move;
        return history_.Of(move);
    });
    return go_on;
}

Move MoveOrder::CounterMove() const {
    const Move* const answer = AnswerToLastMove(node_);
    return answer != nullptr ? *answer : INVALID;
}

std::int32_t MoveOrder::CaptureScore(Move move) const {
    const std::int32_t score = GainAndRisk(move) + CaptureHistoryOf(node_, move);
    if (PromotionPiece(move) != no_piece && PromotionPiece(move) != queen) return losing_capture + score;
    if (material_units[CapturedPiece(move)] >= material_units[MovingPiece(move)]) return sound_capture + score;
    Bitboard touched = 0;
    const bool is_sound = ExchangeScore(move, node_.board(), touched) >= 0;
    return (is_sound ? sound_capture : losing_capture) + score;
}

Move MoveOrder::Pick() {
    for (;;) {
        const Move move = picker_.Next();
        const bool is_left_out = leaves_out_quiet_moves_ && (move & tactical_bits) == 0;
        if (move == INVALID || (move != node_.hash_move && !is_left_out)) return move;
    }
}

}  // namespace tournament
