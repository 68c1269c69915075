#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// The terms of the pawn structure that look at pieces or kings too, so that they can't be cached. Each gives its value
/// for one side, in centipawns, and changes `pressure`, `cover` or `activity` directly.

/// A majority, by where the enemy king stands.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR majority_and_king(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] int majority_and_king_ending(Context& context, const BOARD& board) noexcept;

/// Pawns on c2, d2, e2 that can't advance because something stands before them.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR blocked_centre_pawns(Context& context, const BOARD& board) noexcept;

/// The pieces beside an isolated queen pawn that only one side has; two such pawns only weaken the centre.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR isolated_queen_pawn_and_pieces(Context& context, const BOARD& board) noexcept;

/// Rooks behind and ahead of the foremost passed pawns, and what stands in their way.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR passed_pawns_and_pieces(Context& context, const BOARD& board) noexcept;
