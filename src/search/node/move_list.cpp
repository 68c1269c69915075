#include "search/node/move_list.h"

#include "chess/move_generator.h"
#include "frame/base/theory.h"
#include "search/node/node_theory.h"
#include "search/node/quiescence.h"

NodeAnswer ListMoves(Node& node) {
    const unsigned mode = node.is_quiescence() ? QuiescenceMode(node) : mode_legal;
    node.moves_end = GenerateMoves(node.moves, node.board(), mode);
    node.has_move_list = true;
    if constexpr (theory_is_checked) AssertListIsSound(node);
    const auto count = node.moves_end - node.moves;
    if (node.is_quiescence()) {
        if (count == 0) return node.beta - 1;
        return go_on;
    }
    if (count == 0) return AsAnswer(node.in_check ? MatedScore(node.ply) : node.draw_score(), node.beta);
    if (count == 1) node.flags |= NodeFlags::single_reply;
    return go_on;
}
