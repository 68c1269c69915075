#include "search/tournament/move_search.h"

#include <algorithm>

#include "search/node/node_result.h"
#include "search/tournament/search_tournament_node.h"

namespace tournament {

std::uint64_t KeyAfter(const TournamentNode& node, Move move) {
    const std::uint64_t key = node.board().HashKeyAfterMove(move);
    node.search.engine.tables.Prefetch(key);
    return key;
}

void MakeMove(const TournamentNode& node, Move move, std::uint64_t key) {
    SearchBoard& search = node.search;
    search.moves_played[node.ply + 1] = move;
    search.board.MakeMove(move, key);
    search.engine.tables.pawn.Prefetch(search.board.frame().pawn_key, node.position_class);
}

Score AskChild(const TournamentNode& node, NodeType type, Distance distance) {
    return -SearchNode(node.search, node.state, node.moves_end, 1 - node.beta, distance, type, node.position_class,
                       true);
}

bool Keep(TournamentNode& node, Move move, Score score) {
    if (score <= node.best) return false;
    node.best = score;
    if (score >= node.beta || node.best_move == INVALID) {
        node.best_move = move;
        TakeLine(node, move);
    }
    if (score < node.beta) return false;
    ++node.search.statistics.cuts;
    if (node.moves_tried == 1) ++node.search.statistics.first_move_cuts;
    return true;
}

void LeaveOut(TournamentNode& node, Score most) {
    node.has_pruned = true;
    if (node.rules().fail_soft != 0) node.best = std::max(node.best, std::min(most, node.beta - 1));
}

Score Finish(TournamentNode& node) {
    if (node.best == best_score_start) return node.beta - 1;  // every move was left out
    const bool is_cut = node.best >= node.beta;
    if (!is_cut && node.has_pruned && node.rules().fail_soft == 0) node.best = node.beta - 1;
    if (!is_cut && node.hash_move != INVALID) node.best_move = node.hash_move;
    if (node.excluded == INVALID) StoreResult(node, is_cut);
    return node.best;
}

}  // namespace tournament
