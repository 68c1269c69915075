#pragma once

#include <optional>

#include "chess/board.h"

/// Draws the score of an ending, in White's view, nearer to a draw when few pawns are left to win it with or the
/// bishops stand on different colours.
[[nodiscard]] int scale_ending(int score, bool opposite_bishops, const BOARD& board) noexcept;

/// A bishop and pawns on one edge file against the bare king, where the bishop may be of no use: the final score, in
/// centipawns for the side to move. Applies to no other material.
[[nodiscard]] std::optional<int> wrong_bishop_rule(const BOARD& board) noexcept;
