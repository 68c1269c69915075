#include "evaluation/rook_ending.h"

EVALUATION_RESULT evaluate_rook_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& board, int /*bound*/) noexcept {
    return {.score = board.frame().material_balance};
}
