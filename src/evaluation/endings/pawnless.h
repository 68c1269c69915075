#pragma once

#include "chess/board.h"

/// The routine of positions without pawns, and of a pawnless side that is five units behind: how near the mate is, in
/// centipawns for the side to move. It reads nothing in the context and uses neither hash table.
template <class Context>
[[nodiscard]] int evaluate_pawnless(Context& context, const BOARD& board) noexcept;
