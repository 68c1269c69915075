#pragma once

#include "chess/board.h"
#include "evaluation/evaluation_context.h"
#include "evaluation/position_type.h"

/// A bound test, in centipawns for the side to move: `result >= bound` means that the true score is at least `bound`,
/// `result < bound` that it is below; a result other than `bound` and `bound - 1` is the true score.
[[nodiscard]] int evaluate(EVALUATION_CONTEXT& context, const BOARD& board, int bound, int position_type) noexcept;

/// The score itself, by bisection over evaluate.
[[nodiscard]] int exact_evaluation(EVALUATION_CONTEXT& context, const BOARD& board, int position_type) noexcept;

/// exact_evaluation with no contempt and the given personality, for the `eval` command.
[[nodiscard]] int evaluate_for_display(const BOARD& board, int personality) noexcept;
