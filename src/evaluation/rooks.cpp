#include "evaluation/rooks.h"

template <Colour Us>
SCORE_PAIR rooks(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR rooks<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR rooks<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
int rooks_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template int rooks_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int rooks_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
