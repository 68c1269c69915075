#include "search/node/child_search.h"

#include "frame/base/theory.h"
#include "search/node/node_theory.h"
#include "search/node/search_node.h"
#include "search/tables/hash.h"

ChildFlags FlagsForChild(const Node& node, Move move) {
    ChildFlags flags = Inherited(node.child_flags);
    if (HasAny(node.extended, ExtensionCauses::double_check)) flags |= ChildFlags::no_recapture_extension;
    if (GivesCheck(move)) {
        if (node.settings().skip_razoring_when_last_move_was_a_check) flags |= NextPly(ChildFlags::no_limited_razoring);
        if (node.settings().skip_extended_futility_pruning_when_last_move_was_a_check) {
            flags |= NextPly(ChildFlags::no_extended_futility);
        }
    }
    return flags;
}

Score SearchChild(Node& node, Move move, std::uint64_t key_after_move, Distance new_distance, Distance reduced) {
    SearchBoard& search = node.search;
    const ChildFlags flags = FlagsForChild(node, move);
    const NodeType type = node.moves_tried == 1 ? -node.type : NodeType::cut;
    search.moves_played[node.ply + 1] = move;
    search.board.MakeMove(move, key_after_move);
    // Most children keep the class of their parent.
    search.engine.tables.pawn.Prefetch(search.board.frame().pawn_key, node.position_class);
    Score score =
        -SearchNode(search, node.moves_end, 1 - node.beta, new_distance - ONE_PLY, type, node.position_class, flags);
    if (node.settings().enable_verification_search && score >= node.beta && reduced > 0) {
        ++search.statistics.verifications;
        score = -SearchNode(search, node.moves_end, 1 - node.beta, new_distance - ONE_PLY + reduced,
                            node.is_principal() ? NodeType::principal : NodeType::all, node.position_class, flags);
    }
    if constexpr (theory_is_checked) AssertIsAnswer(-score, 1 - node.beta);
    search.board.UnmakeMove(move);
    return score;
}
