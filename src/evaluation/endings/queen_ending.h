#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The routine of queen against queen: a plain ending, and what checks may hold.
[[nodiscard]] EVALUATION_RESULT evaluate_queen_ending(EVALUATION_CONTEXT& context, const BOARD& board,
                                                      int bound) noexcept;

/// What the queen ending makes of the score of a plain ending; both are for the side to move.
template <class Context>
[[nodiscard]] int score_of_queen_ending(Context& context, const BOARD& board, int plain_score) noexcept;
