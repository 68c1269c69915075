#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The routine of kings and pawns.
[[nodiscard]] EVALUATION_RESULT evaluate_pawn_ending(EVALUATION_CONTEXT& context, const BOARD& board,
                                                     int bound) noexcept;
