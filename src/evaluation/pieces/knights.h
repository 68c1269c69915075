#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// What the knights of one side are worth on their squares, in the opening and in the middle game. Extends `attacks`,
/// changes `pressure` and `cover`.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR knights_opening(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR knights_middle_game(Context& context, const BOARD& board) noexcept;

/// The squares that the knights of one side can go to; the other side's `attacks_no_queen` must be complete. Changes
/// `pressure` and `cover` of the centre.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR knight_mobility(Context& context, const BOARD& board) noexcept;

/// The knights of one side in an ending, in centipawns. Extends `attacks`.
template <Colour Us, class Context>
[[nodiscard]] int knights_ending(Context& context, const BOARD& board) noexcept;
