#pragma once

#include "search/state/search_board.h"
#include "search/tables/node_flags.h"

// Both are defined in search_serial.cpp, which calls the steps. The steps that search deeper know no more of it than
// this.

/// Whether the position of `search` is worth at least `beta`: returns beta if so, beta - 1 if not. One function for
/// full width and quiescence alike, and the only recursive one. The move just played stands in moves_played;
/// `move_buffer` is the first free slot of the shared move array; `position_class` is the parent's. Leaves its line in
/// pv[ply]. What a poll throws passes through; the board is then useless until the next StartSearch.
[[nodiscard]] Score SearchNode(SearchBoard& search, Move* move_buffer, Score beta, Distance distance, NodeType type,
                               int position_class, ChildFlags child_flags);

/// The class of `board`, reached by `last_move` (INVALID for a null move) from a position of class `parent_class`.
/// A class is kept until something happens that may change it.
[[nodiscard]] int ClassAfterMove(const BOARD& board, Move last_move, int parent_class) noexcept;
