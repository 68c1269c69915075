#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// What the queens of one side are worth in the opening and in the middle game. Extends `attacks`, changes `pressure`
/// and `cover`.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR queens_opening(Context& context, const BOARD& board) noexcept;
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR queens_middle_game(Context& context, const BOARD& board) noexcept;

/// The queens of one side in an ending, in centipawns. Extends `attacks`.
template <Colour Us, class Context>
[[nodiscard]] int queens_ending(Context& context, const BOARD& board) noexcept;
