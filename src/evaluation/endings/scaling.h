#pragma once

#include "chess/board.h"

/// Draws the score of an ending, in White's view, nearer to a draw when few pawns are left to win it with or the
/// bishops stand on different colours.
template <class Context>
[[nodiscard]] int scale_ending(Context& context, int score, bool bishops_are_opposite, const BOARD& board) noexcept;
