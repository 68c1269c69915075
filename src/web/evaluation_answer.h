#pragma once

#include "chess/board.h"
#include "web/json_text.h"

namespace VorkaWeb {

/// Why the score of a position is what it is, as evaluation_trace.h has it: terms, rules with their squares, the steps
/// of an ending, the blend. Values are centipawns, pairs stand as [positional, reckless].
[[nodiscard]] JsonValue EvaluationAnswer(const BOARD& board, int personality);

}  // namespace VorkaWeb
