#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// What the bishops of one side are worth in the opening and middle game. Extends `attacks`, changes `pressure`,
/// `cover` and `activity`.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR bishops(Context& context, const BOARD& board) noexcept;

/// The bishops of one side in an ending, in centipawns. Extends `attacks`.
template <Colour Us, class Context>
[[nodiscard]] int bishops_ending(Context& context, const BOARD& board) noexcept;

/// Whether both sides have bishops, all of one side on the one square colour and all of the other side on the other.
[[nodiscard]] bool has_opposite_bishops(const BOARD& board) noexcept;
