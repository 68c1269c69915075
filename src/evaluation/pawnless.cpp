#include "evaluation/pawnless.h"

int evaluate_pawnless(const BOARD& board) noexcept { return board.frame().material_balance; }
