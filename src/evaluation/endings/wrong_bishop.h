#pragma once

#include <optional>

#include "chess/board.h"

/// A bishop and pawns against the bare king. On one edge file the bishop may be of no use: the final score, in
/// centipawns for the side to move. Applies to no other material.
template <class Context>
[[nodiscard]] std::optional<int> wrong_bishop_rule(Context& context, const BOARD& board) noexcept;
