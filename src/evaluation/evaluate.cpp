#include "evaluation/evaluate.h"

#include <cstdlib>

#include "search/score.h"

int evaluate(EVALUATION_CONTEXT& /*context*/, const BOARD& board, int bound, int /*position_type*/) noexcept {
    // Scores near a mate are never computed.
    if (std::abs(bound) >= mate_score_limit) return bound > 0 ? bound - 1 : bound;
    return board.frame().material_balance;
}

int exact_evaluation(EVALUATION_CONTEXT& context, const BOARD& board, int position_type) noexcept {
    int low = -infinity_bound;
    int high = infinity_bound;
    for (;;) {
        int middle = (low + high) / 2;
        if (middle == low) middle = high;
        if (evaluate(context, board, middle, position_type) < middle) {
            high = middle - 1;
            if (low >= high) return low;
        } else {
            low = middle;
            if (middle >= high) return low;
        }
    }
}

int evaluate_for_display(const BOARD& board, int personality) noexcept {
    const EVALUATION_SETTINGS settings{.draw_score = 0, .personality = static_cast<std::int16_t>(personality)};
    EVALUATION_CONTEXT context{.settings = &settings};
    return exact_evaluation(context, board, classify_position(board, no_position_type));
}
