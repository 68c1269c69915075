#include "evaluation/patterns.h"

SCORE_PAIR patterns_opening(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return {}; }

SCORE_PAIR patterns_middle_game(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return {}; }

SCORE_PAIR space(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return {}; }

SCORE_PAIR activity(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return {}; }
