#include "search/tournament/quiescence_search.h"

#include <cstdint>

#include "chess/move_generator.h"
#include "evaluation/evaluate.h"
#include "search/tournament/capture_history.h"
#include "search/tournament/move_picker.h"
#include "search/tournament/move_pruning.h"
#include "search/tournament/move_search.h"

namespace tournament {

namespace {

constexpr std::int32_t hash_move_first = 1 << 28;

/// Lists the moves of a quiescence node for `picker`, the hash move first, then by what they gain.
void ListTacticalMoves(TournamentNode& node, MovePicker& picker) {
    constexpr unsigned checks = mode_direct_checks | mode_discovered_checks | mode_double_checks;
    const bool looks_for_checks = node.distance > -node.rules().quiescence_checks;
    node.moves_end = GenerateMoves(node.moves, node.board(),
                                   mode_captures | mode_queen_promotions | (looks_for_checks ? checks : 0U));
    picker.Take(node.moves, node.moves_end, [&](Move move) {
        return move == node.hash_move ? hash_move_first : GainAndRisk(move) + CaptureHistoryOf(node, move);
    });
}

/// What a move may be worth to the side on move.
Score MostAfter(const TournamentNode& node, Move move, Score stand_pat) {
    return stand_pat + GainOf(move) + node.rules().delta_margin;
}

bool MayReachBeta(const TournamentNode& node, Move move, Score stand_pat) {
    if (PromotionPiece(move) != no_piece && PromotionPiece(move) != queen) return false;
    return GivesCheck(move) || MostAfter(node, move, stand_pat) >= node.beta;
}

}  // namespace

Score SearchQuiescence(TournamentNode& node) {
    const Score stand_pat = full_evaluation(node.search.evaluation, node.board(), node.position_class);
    if (stand_pat >= node.beta) return stand_pat;
    LeaveOut(node, stand_pat);  // the quiet moves
    MovePicker moves;
    ListTacticalMoves(node, moves);
    for (Move move = moves.Next(); move != INVALID; move = moves.Next()) {
        if (!MayReachBeta(node, move, stand_pat)) {
            LeaveOut(node, MostAfter(node, move, stand_pat));
            continue;
        }
        const std::uint64_t key = KeyAfter(node, move);
        if (LosesMoreThan(node, move, node.rules().exchange_tolerance)) continue;
        ++node.moves_tried;
        MakeMove(node, move, key);
        const Score score = AskChild(node, node.moves_tried == 1 ? -node.type : NodeType::cut, node.distance - ONE_PLY);
        node.search.board.UnmakeMove(move);
        if (Keep(node, move, score)) break;
    }
    return Finish(node);
}

}  // namespace tournament
