#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The routine of rook against rook and rooks against rooks, of equal number: a plain ending, and a rule for a
/// single pawn.
[[nodiscard]] EVALUATION_RESULT evaluate_rook_ending(EVALUATION_CONTEXT& context, const BOARD& board,
                                                     int bound) noexcept;
