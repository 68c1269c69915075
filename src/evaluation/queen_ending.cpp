#include "evaluation/queen_ending.h"

EVALUATION_RESULT evaluate_queen_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& board, int /*bound*/) noexcept {
    return {.score = board.frame().material_balance};
}
