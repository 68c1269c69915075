#include "evaluation/bishops.h"

template <Colour Us>
SCORE_PAIR bishops(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template SCORE_PAIR bishops<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SCORE_PAIR bishops<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

template <Colour Us>
int bishops_ending(EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept {
    return {};
}
template int bishops_ending<white>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int bishops_ending<black>(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

bool has_opposite_bishops(const BOARD& board) noexcept {
    const Bitboard w = board.white_pieces().bishops;
    const Bitboard b = board.black_pieces().bishops;
    if (w == 0 || b == 0) return false;
    return ((w & light_squares) == 0 && (b & ~light_squares) == 0) ||
           ((w & ~light_squares) == 0 && (b & light_squares) == 0);
}
