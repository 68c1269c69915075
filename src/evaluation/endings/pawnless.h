#pragma once

#include "chess/board.h"

/// The routine of positions without pawns, and of a pawnless side that is five units behind: how near the mate is, in
/// centipawns for the side to move. It uses neither hash table.
[[nodiscard]] int evaluate_pawnless(const BOARD& board) noexcept;
