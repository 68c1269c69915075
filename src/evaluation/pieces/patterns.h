#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// Terms of the opening and middle game that look at the whole board. All are White minus Black.

/// Pieces at home that stand in each other's way, and the right to move. Changes `pressure` and `cover`.
template <class Context>
[[nodiscard]] SCORE_PAIR patterns_opening(Context& context, const BOARD& board) noexcept;
template <class Context>
[[nodiscard]] SCORE_PAIR patterns_middle_game(Context& context, const BOARD& board) noexcept;

/// The squares that each side attacks, once its `attacks` are complete. Changes `pressure` and `cover`.
template <class Context>
[[nodiscard]] SCORE_PAIR space(Context& context, const BOARD& board) noexcept;

/// What `activity` is worth, once every other term has added to it. Middle game only.
template <class Context>
[[nodiscard]] SCORE_PAIR activity(Context& context, const BOARD& board) noexcept;
