#include "evaluation/pawn_ending.h"

EVALUATION_RESULT evaluate_pawn_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& board, int /*bound*/) noexcept {
    return {.score = board.frame().material_balance};
}
