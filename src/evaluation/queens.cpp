#include "evaluation/queens.h"

template <Colour Us>
SCORE_PAIR queens_opening(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR queens_opening<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_opening<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
SCORE_PAIR queens_middle_game(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR queens_middle_game<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR queens_middle_game<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
int queens_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template int queens_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int queens_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
