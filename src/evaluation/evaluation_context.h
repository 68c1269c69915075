#pragma once

#include <cstdint>

/// What shifts every evaluation of a search. Owned by the search, shared by pointer with every context.
struct EVALUATION_SETTINGS {
    std::int16_t draw_score = 0;   ///< centipawns, White's view
    std::int16_t personality = 0;  ///< -1000..1000
};

/// The working record of one evaluation.
struct EVALUATION_CONTEXT {
    const EVALUATION_SETTINGS* settings = nullptr;
};
