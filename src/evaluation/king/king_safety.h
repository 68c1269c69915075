#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// Sets `king_wing` of both sides, and starts their `attacks` with the squares next to their kings.
void place_kings(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// How exposed a king is: 0.0 behind a good cover (5 points and more), 1.0 without any (below -9).
[[nodiscard]] double danger_of_cover(int king_cover) noexcept;
/// How much of an attack runs against a king: 0.0 below -4 points, 1.0 from 30 on.
[[nodiscard]] double danger_of_attack(int king_attack) noexcept;

/// Sets both factors of a king from its `king_cover` and `king_attack`.
template <Colour Us>
void set_danger_factors(EVALUATION_CONTEXT& context) noexcept;

/// The shelter of a king on `square`, with whatever storms it. Sets `king_attack`, `king_cover` and the danger factors
/// of this side from the counters of both.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR shelter(Context& context, const BOARD& board, Square square) noexcept;
/// The same where the king may still choose between two squares: from the c- and f-file it looks at both neighbours.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR castled_shelter(Context& context, const BOARD& board, Square square) noexcept;
/// A castled king that can't leave its first rank. Changes `king_attack` and `king_cover`, but not the factors.
template <Colour Us, class Context>
[[nodiscard]] SCORE_PAIR trapped_king(Context& context, const BOARD& board) noexcept;

/// Shelter of both kings, White minus Black. Needs the `attacks` of both sides; sets the danger inputs and factors.
template <class Context>
[[nodiscard]] SCORE_PAIR king_safety(Context& context, const BOARD& board) noexcept;

/// Where the kings stand in an ending, in centipawns, White minus Black.
template <class Context>
[[nodiscard]] int king_placement_ending(Context& context, const BOARD& board) noexcept;
