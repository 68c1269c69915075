#pragma once

#include <cstdint>

#include "search/node_flags.h"
#include "search/score.h"
#include "search/search_board.h"

/// One call of SearchNode: its question, and what its steps have found out so far.
struct Node {
    SearchBoard& search;
    const std::uint32_t ply;
    const Score beta;
    const Distance distance;
    const bool in_check;  ///< the side on move
    NodeType type;
    int position_class;  ///< the parent's until the node has its own
    ChildFlags child_flags;
    NodeFlags flags = NodeFlags::none;
    Move* moves;      ///< first of the node's own list
    Move* moves_end;  ///< where the children's lists begin

    [[nodiscard]] const BOARD& board() const { return search.board; }
    /// INVALID behind a null move.
    [[nodiscard]] Move last_move() const { return search.moves_played[ply]; }
    /// From the view of the side on move, as every score of the node.
    [[nodiscard]] Score draw_score() const { return search.draw_score[search.board.side_to_move]; }
    [[nodiscard]] Score material_balance() const { return search.board.frame().material_balance; }
    /// Whether the node looks at a selection of the moves only. In check every move is searched.
    [[nodiscard]] bool is_quiescence() const { return distance < 1 && !in_check; }
};
