#include "search/node/node_result.h"

#include <algorithm>
#include <cstdint>

#include "search/tables/hash.h"

namespace {

void RewardCut(const Node& node) {
    SearchBoard& search = node.search;
    search.killers[node.ply].Take(node.best_move);
    if (node.settings().no_history_bonus_for_tactical_moves && (node.best_move & tactical_bits) != 0) return;
    search.history.UpdateHistory(node.best_move, node.board().mover(), node.distance, node.ply);
}

/// Mate scores are kept as seen from the node.
Score FromNode(Score score, std::uint32_t ply) {
    if (score >= mate_score_limit) return score + static_cast<Score>(ply);
    if (score <= -mate_score_limit) return score - static_cast<Score>(ply);
    return score;
}

/// An entry has 16 bits for a distance.
std::int16_t StoredDistance(Distance distance) {
    return static_cast<std::int16_t>(std::clamp(distance, no_distance + 1, -no_distance));
}

}  // namespace

void StoreResult(const Node& node, bool is_cut) {
    TranspositionEntry entry =
        TranspositionEntry::Make(node.board().key(), node.best_move, is_cut, node.position_class, node.flags);
    const auto score = static_cast<std::int16_t>(FromNode(node.best, node.ply));
    const std::int16_t distance = StoredDistance(node.distance);
    if (is_cut) {
        entry.lower_bound = score;
        entry.lower_distance = distance;
    } else {
        entry.upper_bound = score;
        entry.upper_distance = distance;
    }
    node.search.engine.tables.transposition.Store(entry);
}

void TakeLine(Node& node, Move move) {
    Move* line = node.search.pv[node.ply];
    const Move* rest = node.search.pv[node.ply + 1];
    *line++ = move;
    while ((*line++ = *rest++) != INVALID) {
    }
}

Score FinishNode(const Node& node) {
    if (node.best == best_score_start) return node.beta - 1;  // every move was skipped
    const bool is_cut = node.best >= node.beta;
    if (is_cut) RewardCut(node);
    if (node.distance >= node.settings().required_distance_to_store_hashtables) StoreResult(node, is_cut);
    return node.best;
}
