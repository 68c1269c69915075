#include "evaluation/passed_pawns.h"

SCORE_PAIR passed_pawns(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return {}; }

int passed_pawns_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return 0; }

UNSTOPPABLE_BONUS unstoppable_bonus(const EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}

int checked_unstoppable_bonus(const EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/,
                              RunnerCheck /*check*/) noexcept {
    return 0;
}
