#pragma once

#include "chess/board.h"

/// Whose view a value is told in. Terms count White minus Black, results are for the side to move.

/// From White's view to that of the side to move, and back.
template <class Value>
[[nodiscard]] constexpr Value turned(const BOARD& board, Value value) noexcept {
    return board.side_to_move == white ? value : -value;
}

/// From the view of `side` to that of the side to move, and back.
[[nodiscard]] constexpr int turned_from(Colour side, const BOARD& board, int value) noexcept {
    return board.side_to_move == side ? value : -value;
}
