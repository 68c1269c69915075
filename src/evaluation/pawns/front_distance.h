#pragma once

#include "chess/bitboard_tables.h"
#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The number of ranks from a pawn of `Us` to the first square ahead on its file that holds an enemy pawn or a
/// `defended` own pawn; 0 if there is none.
template <Colour Us>
[[nodiscard]] int front_distance(const EVALUATION_CONTEXT& context, const BOARD& board, Square square) noexcept {
    const Bitboard ahead = Us == white ? bitboard_tables.ray_north[square] : bitboard_tables.ray_south[square];
    const Bitboard stops = ahead & (board.side(Opponent(Us)).pawns | context.pawns[Us].defended);
    if (stops == 0) return 0;
    return Us == white ? RankOf(FindLowestBit(stops)) - RankOf(square) : RankOf(square) - RankOf(FindHighestBit(stops));
}
