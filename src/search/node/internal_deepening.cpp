#include "search/node/internal_deepening.h"

#include <algorithm>

#include "search/node/search_node.h"

namespace {

using enum ChildFlags;

constexpr ChildFlags deepening_flags = no_null_move | no_ettc | no_perpetual_test | untested;
static_assert(Word(deepening_flags) == 0x63);
static_assert(Word(deepening_flags | no_limited_razoring) == 0x6B);

ChildFlags DeepeningFlags(const Node& node) {
    ChildFlags flags = node.child_flags | deepening_flags;
    if (node.settings().skip_razoring_if_doing_iid) flags |= no_limited_razoring;
    if (node.settings().skip_extended_futility_pruning_if_doing_iid) flags |= no_extended_futility;
    return flags;
}

/// At most this many of these searches run inside each other. With small reductions and large extensions, which the
/// settings allow, they would nest until the stack is full; with the defaults no more than 15 were ever seen.
constexpr int deepest_nesting = 64;

Distance ReducedDistance(const Node& node) {
    Distance distance =
        node.distance - (node.distance >= node.settings().iid_critical_distance ? node.settings().iid_max_reduction
                                                                                : node.settings().iid_min_reduction);
    // It applies there in spite of the setting's name: docs/oddities.md, deepening on the principal variation.
    if (node.is_principal()) distance -= node.settings().iid_extra_reduction_if_not_searching_pv_move;
    return std::max(distance, 1);
}

bool IsInList(const Node& node, Move move) { return std::find(node.moves, node.moves_end, move) != node.moves_end; }

}  // namespace

NodeAnswer InternalDeepening(Node& node) {
    if (node.hash_move != INVALID) return go_on;
    const Distance threshold = node.is_principal() ? node.settings().min_depth_for_iid_if_searching_pv_move
                                                   : node.settings().min_depth_for_iid_if_not_searching_pv_move;
    if (node.distance < threshold) return go_on;
    const Distance reduced = ReducedDistance(node);
    if (reduced >= node.distance || node.search.deepening_searches == deepest_nesting) return go_on;
    // It runs at this ply and on the same stacks; only its best move is of interest. A throw leaves the counter to the
    // next StartSearch.
    ++node.search.deepening_searches;
    (void)SearchNode(node.search, node.moves_end, node.beta, reduced, node.type, node.parent_class,
                     DeepeningFlags(node));
    --node.search.deepening_searches;
    node.hash_move = node.search.pv[node.ply][0];
    const bool was_refuted = node.has_move_list && node.settings().ettc_should_remove_refuted_moves &&
                             node.hash_move != INVALID && !IsInList(node, node.hash_move);
    if (was_refuted) return node.beta - 1;
    return go_on;
}
