#pragma once

#include "chess/board.h"
#include "evaluation/evaluation_context.h"
#include "evaluation/score_pair.h"

/// Sets `king_wing` of both sides, and starts their `attacks` with the squares next to their kings.
void place_kings(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// How naked a king is: 0.0 behind a good cover (5 points and more), 1.0 without any (below -9).
[[nodiscard]] double danger_of_cover(int king_cover) noexcept;
/// How much of an attack runs against a king: 0.0 below -4 points, 1.0 from 30 on.
[[nodiscard]] double danger_of_attack(int king_attack) noexcept;

/// Shelter of both kings, White minus Black. Sets the danger factors of both, from `king_attack` and `king_cover`. Adds
/// nothing yet.
[[nodiscard]] SCORE_PAIR king_safety(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// Where the kings stand in an ending, in centipawns, White minus Black. Adds nothing yet.
[[nodiscard]] int king_placement_ending(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
