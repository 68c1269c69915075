#include "search/tournament/move_pruning.h"

#include <algorithm>

#include "chess/exchange.h"

namespace tournament {

namespace {

bool IsTooLate(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    if (rules.late_move_pruning == 0 || node.distance > rules.late_move_pruning_distance) return false;
    const int square = node.plies() * node.plies();
    const int moves = rules.late_move_pruning_base + square * rules.late_move_pruning_share / 100;
    return node.moves_tried > (node.is_improving ? 2 * moves : moves);
}

/// `left` is the distance that the move would be left with.
bool IsFutile(const TournamentNode& node, Distance left) {
    const TournamentSettings& rules = node.rules();
    if (rules.futility == 0 || left > rules.futility_distance) return false;
    return node.estimate < node.beta - rules.futility_base - ForPlies(rules.futility_margin, left);
}

bool HasFailedElsewhere(const TournamentNode& node, int history, Distance left) {
    const TournamentSettings& rules = node.rules();
    return rules.history_pruning != 0 && left <= rules.history_pruning_distance &&
           history < -ForPlies(rules.history_pruning_limit, left + ONE_PLY);
}

bool LosesMaterial(const TournamentNode& node, Move move) {
    const TournamentSettings& rules = node.rules();
    if (rules.loss_pruning == 0 || node.distance > rules.loss_pruning_distance) return false;
    const Score per_ply = IsQuiet(move) ? rules.quiet_loss_margin : rules.capture_loss_margin;
    return LosesMoreThan(node, move, ForPlies(per_ply, node.distance));
}

}  // namespace

bool LosesMoreThan(const TournamentNode& node, Move move, Score margin) {
    if (MovingPiece(move) == king || PromotionPiece(move) != no_piece) return false;
    if (CapturedPiece(move) != no_piece && material_units[CapturedPiece(move)] >= material_units[MovingPiece(move)]) {
        return false;
    }
    Bitboard touched = 0;
    return ExchangeScore(move, node.board(), touched) < -margin;
}

Pruning PruningOf(const TournamentNode& node, Move move, int history) {
    // A side that is about to be mated looks at every move.
    if (node.moves_tried == 1 || node.best <= -mate_score_limit || node.in_check || !node.is_near_static_score()) {
        return Pruning::none;
    }
    if (IsQuiet(move) && !GivesCheck(move)) {
        const Distance left = std::max(node.distance - node.state.Reduction(node.plies(), node.moves_tried), 0);
        if (IsTooLate(node) || IsFutile(node, left)) return Pruning::quiet_moves;
        if (HasFailedElsewhere(node, history, left)) return Pruning::this_move;
    }
    return LosesMaterial(node, move) ? Pruning::this_move : Pruning::none;
}

}  // namespace tournament
