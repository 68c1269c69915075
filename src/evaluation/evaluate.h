#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/position_type.h"

/// A bound test, in centipawns for the side to move: `result >= bound` means that the true score is at least `bound`,
/// `result < bound` that it is below; a result other than `bound` and `bound - 1` is the true score. It costs the less
/// the farther the bound is away. `context.settings` and `context.tables` must be set, and `position_type` be the
/// position's.
[[nodiscard]] int evaluate(EVALUATION_CONTEXT& context, const BOARD& board, int bound, int position_type) noexcept;

/// The score itself, by bisection over evaluate.
[[nodiscard]] int exact_evaluation(EVALUATION_CONTEXT& context, const BOARD& board, int position_type) noexcept;

/// The same score by one evaluation as a rule, for those who need no answer but the score: it does not stop early.
[[nodiscard]] int full_evaluation(EVALUATION_CONTEXT& context, const BOARD& board, int position_type) noexcept;

/// The score with no contempt and the given personality, for the `eval` command. Of `tables`, that of the evaluation
/// holds the scores of the search's own settings: it is neither read nor written.
[[nodiscard]] int evaluate_for_display(const BOARD& board, int personality, HashTables& tables,
                                       const VorkaBitbases::Bitbases& bitbases) noexcept;
