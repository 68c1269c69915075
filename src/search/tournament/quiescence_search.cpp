#include "search/tournament/quiescence_search.h"

#include <algorithm>
#include <array>
#include <utility>

#include "chess/move_generator.h"
#include "evaluation/evaluate.h"
#include "search/tournament/move_pruning.h"
#include "search/tournament/move_search.h"

namespace tournament {

namespace {

constexpr std::int32_t hash_move_first = 1 << 28;
/// A bishop for a knight is no loss, in centipawns.
constexpr Score exchange_tolerance = 10;

Score GainOf(Move move) { return piece_value[CapturedPiece(move)] + piece_value[PromotionPiece(move)]; }

/// The moves of a quiescence node, the greatest gain first.
class TacticalMoves {
  public:
    explicit TacticalMoves(TournamentNode& node) : node_(node) {
        constexpr unsigned checks = mode_direct_checks | mode_discovered_checks | mode_double_checks;
        const bool looks_for_checks = node.distance > -node.rules().quiescence_checks;
        node.moves_end = GenerateMoves(node.moves, node.board(),
                                       mode_captures | mode_queen_promotions | (looks_for_checks ? checks : 0U));
        std::transform(node.moves, node.moves_end, scores_.begin(), [&](Move move) {
            if (move == node.hash_move) return hash_move_first;
            return GainOf(move) * 8 - MovingPiece(move);
        });
    }
    /// INVALID after the last.
    [[nodiscard]] Move Next() {
        const std::ptrdiff_t count = node_.moves_end - node_.moves;
        if (picked_ == count) return INVALID;
        const auto best = std::max_element(scores_.begin() + picked_, scores_.begin() + count);
        std::iter_swap(scores_.begin() + picked_, best);
        std::swap(node_.moves[picked_], node_.moves[best - scores_.begin()]);
        return node_.moves[picked_++];
    }

  private:
    TournamentNode& node_;
    std::ptrdiff_t picked_ = 0;
    std::array<std::int32_t, MAX_MOVES> scores_;
};

/// Whether a move may bring the side on move to beta without losing material.
bool IsWorthTrying(const TournamentNode& node, Move move, Score stand_pat) {
    if (PromotionPiece(move) != no_piece && PromotionPiece(move) != queen) return false;
    if (!GivesCheck(move) && stand_pat + GainOf(move) + node.rules().delta_margin < node.beta) return false;
    return !LosesMoreThan(node, move, exchange_tolerance);
}

}  // namespace

Score SearchQuiescence(TournamentNode& node) {
    const Score stand_pat = full_evaluation(node.search.evaluation, node.board(), node.position_class);
    if (stand_pat >= node.beta) return stand_pat;
    node.has_pruned = true;
    TacticalMoves moves(node);
    for (Move move = moves.Next(); move != INVALID; move = moves.Next()) {
        ++node.moves_tried;
        if (!IsWorthTrying(node, move, stand_pat)) continue;
        MakeMove(node, move);
        const Score score = AskChild(node, node.moves_tried == 1 ? -node.type : NodeType::cut, node.distance - ONE_PLY);
        node.search.board.UnmakeMove(move);
        if (Keep(node, move, score)) break;
    }
    return Finish(node);
}

}  // namespace tournament
