#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// What the rooks of one side are worth in the opening and middle game. Extends `attacks`, changes `pressure`, `cover`
/// and `activity`.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR rooks(Context& context, const BOARD& board) noexcept;

/// The rooks of one side in an ending, in centipawns. Extends `attacks`.
template <Colour Us, class Context>
[[nodiscard]] int rooks_ending(Context& context, const BOARD& board) noexcept;
