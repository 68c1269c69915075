#pragma once

#include "chess/board.h"

/// The eighteen material classes.
// clang-format off
enum PositionType : int {
    opening = 0, middle_game = 1, balanced_ending = 2, rook_ending = 3, queen_ending = 4,
    knight_against_knight = 5, knight_against_bishop = 6, same_coloured_bishops = 7, opposite_bishops = 8,
    rook_against_minor = 9, queen_against_rook = 10, lone_knight = 11, lone_bishop = 12, lone_rook = 13, lone_queen = 14,
    pawn_ending = 15, pawnless = 16, unbalanced_ending = 17,
};
// clang-format on

inline constexpr int no_position_type = 18;  ///< "no previous type"

/// The material units of the stronger side, three more with any queen on the board: above 21 a position is an opening
/// or a middle game.
[[nodiscard]] int stronger_side_units(const BOARD& board) noexcept;

/// The class of a position. `previous_type` is its parent's: a middle game never falls back into the opening along a
/// line of the search.
[[nodiscard]] int classify_position(const BOARD& board, int previous_type) noexcept;
