#include "evaluation/knights.h"

template <Colour Us>
SCORE_PAIR knights_opening(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR knights_opening<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_opening<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
SCORE_PAIR knights_middle_game(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR knights_middle_game<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knights_middle_game<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
SCORE_PAIR knight_mobility(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR knight_mobility<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR knight_mobility<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
int knights_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template int knights_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int knights_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
