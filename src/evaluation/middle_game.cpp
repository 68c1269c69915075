#include "evaluation/middle_game.h"

#include <cstdlib>
#include <optional>

#include "evaluation/blend.h"
#include "evaluation/context/position_type.h"
#include "evaluation/context/score_pair.h"
#include "evaluation/context/view.h"
#include "evaluation/king/places.h"
#include "evaluation/middle_game_walk.h"
#include "evaluation/rules/term_visitor.h"

namespace {

/// What the terms after the lazy test are taken to add at most, in centipawns.
template <PositionType Type>
constexpr int lazy_margin = Type == opening ? 285 : 275;

/// Stops when both values, on top of the material, are far from the bound and on the same side of it.
std::optional<EVALUATION_RESULT> lazy_test(const BOARD& board, SCORE_PAIR sum, int bound, int margin) {
    const int material = board.frame().material_balance;
    const SCORE_PAIR own_sum = turned(board, sum);
    const int positional_gap = bound - (material + own_sum.positional());
    if (std::abs(positional_gap) <= margin) return std::nullopt;
    const int reckless_gap = bound - (material + own_sum.reckless());
    if (std::abs(reckless_gap) <= margin || (positional_gap > 0) != (reckless_gap > 0)) return std::nullopt;
    return lazy_answer(positional_gap <= 0, bound);
}

template <PositionType Type>
EVALUATION_RESULT evaluate_with_pairs(EVALUATION_CONTEXT& context, const BOARD& board, int bound) {
    TermSum<SCORE_PAIR> terms;
    walk_first_terms(context, board, terms);
    if (const auto answer = lazy_test(board, terms.sum(), bound, lazy_margin<Type>)) return *answer;
    find_places(context, board);
    walk_other_terms<Type>(context, board, terms);

    const int value = blend(terms.sum(), Type == middle_game, context, board);
    return {.score = board.frame().material_balance + turned(board, value)};
}

}  // namespace

EVALUATION_RESULT evaluate_opening(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    return evaluate_with_pairs<opening>(context, board, bound);
}

EVALUATION_RESULT evaluate_middle_game(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    return evaluate_with_pairs<middle_game>(context, board, bound);
}
