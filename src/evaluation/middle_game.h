#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The routines of the types `opening` and `middle_game`: pairs are summed term by term and blended at the end. They
/// need a cleared context on which the pawn hash table was tried.
[[nodiscard]] EVALUATION_RESULT evaluate_opening(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept;
[[nodiscard]] EVALUATION_RESULT evaluate_middle_game(EVALUATION_CONTEXT& context, const BOARD& board,
                                                     int bound) noexcept;
