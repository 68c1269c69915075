#pragma once

#include <algorithm>

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// Terms of material beyond the values of the pieces. All are White minus Black.

/// By what knights and rooks are weighed: half of all pawns on the board, 8 at most.
[[nodiscard]] inline int half_of_all_pawns(const EVALUATION_CONTEXT& context) noexcept {
    return std::min((context.pawn_count[white] + context.pawn_count[black]) >> 1, 8);
}

/// Sets `has_bishop_pair` of both sides.
void find_bishop_pairs(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// Needs `has_bishop_pair`.
template <class Context>
[[nodiscard]] SCORE_PAIR bishop_pair(Context& context, const BOARD& board) noexcept;
/// The same in an ending.
template <class Context>
[[nodiscard]] int bishop_pair_ending(Context& context, const BOARD& board) noexcept;

/// Unequal pieces: a rook or more ahead, a minor piece ahead, minor pieces against rooks.
template <class Context>
[[nodiscard]] SCORE_PAIR material_imbalance(Context& context, const BOARD& board) noexcept;

/// A lead of one pawn, which is worth less while the other side has the initiative. Needs `pawn_count` and `pressure`.
template <class Context>
[[nodiscard]] SCORE_PAIR pawn_balance(Context& context, const BOARD& board) noexcept;
