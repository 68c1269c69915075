#include "search/node/transposition_cutoff.h"

#include <algorithm>
#include <cstdlib>

#include "chess/bits.h"
#include "evaluation/context/position_type.h"
#include "search/node/move_list.h"
#include "search/node/node_result.h"
#include "search/tables/hash.h"

namespace {

bool MayAskTheTable(const Node& node) {
    return node.settings().enable_ettc &&
           !(node.settings().only_use_ettc_in_endgames && node.position_class < balanced_ending) &&
           node.distance > node.settings().min_distance_for_ettc &&
           node.distance <= node.settings().max_distance_for_ettc &&
           !(node.settings().only_use_ettc_on_cut_nodes && node.type != NodeType::cut) &&
           std::abs(node.beta) < mate_score_limit &&
           PopCount(node.board().occupied) <= node.settings().max_pieces_left_for_ettc &&
           !HasAny(node.child_flags, ChildFlags::no_ettc) &&
           !HasAny(node.flags, NodeFlags::single_reply | NodeFlags::perpetual_threat);
}

TranspositionAnswer AskForChild(const Node& node, Move move, TranspositionHit& hit) {
    ++node.search.nodes;
    return node.search.engine.tables.transposition.Probe(node.board().HashKeyAfterMove(move), node.ply + 1,
                                                         node.distance - ONE_PLY, 1 - node.beta, hit);
}

Score CutWith(Node& node, Move move, Move answer_of_child) {
    SearchBoard& search = node.search;
    ++search.ettc_tries;
    ++search.ettc_cutoffs;
    if (answer_of_child != INVALID) search.killers[node.ply + 1].Take(answer_of_child);
    node.hash_move = node.best_move = move;
    node.best = node.beta;
    search.pv[node.ply][0] = move;
    search.pv[node.ply][1] = INVALID;
    return FinishNode(node);
}

}  // namespace

NodeAnswer EnhancedTranspositionCutoff(Node& node) {
    if (!MayAskTheTable(node)) return go_on;
    if (const auto answer = ListMoves(node)) return answer;
    if (HasAny(node.flags, NodeFlags::single_reply)) {
        node.hash_move = *node.moves;
        return go_on;
    }
    for (Move* next = node.moves; next != node.moves_end;) {
        TranspositionHit hit;
        const TranspositionAnswer answer = AskForChild(node, *next, hit);
        if (answer == TranspositionAnswer::below_beta) return CutWith(node, *next, hit.move);
        const bool is_refuted = answer == TranspositionAnswer::at_least_beta &&
                                node.settings().ettc_should_remove_refuted_moves && *next != node.hash_move;
        if (is_refuted) {
            std::iter_swap(next, --node.moves_end);
        } else {
            ++next;
        }
    }
    ++node.search.ettc_tries;
    if (node.moves == node.moves_end) return node.beta - 1;
    return go_on;
}
