#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/sided_squares.h"

/// The number of ranks from a pawn of `Us` to the first square ahead on its file that holds an enemy pawn or a
/// `defended` own pawn; 0 if there is none.
template <Colour Us>
[[nodiscard]] int front_distance(const EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept {
    const Bitboard stops = file_ahead<Us>(square) & (board.side(Opponent(Us)).pawns | context.pawns[Us].defended);
    return stops == 0 ? 0 : rank_seen<Us>(rearmost<Us>(stops)) - rank_seen<Us>(square);
}
