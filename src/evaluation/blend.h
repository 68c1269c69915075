#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// How far an opening or middle game has gone towards the ending, from 0.0 with nearly all pieces to 1.0.
[[nodiscard]] double endgame_weight(const BOARD& board) noexcept;

/// The sixteenths of the reckless value in a blend: personality, openness, material and the kings decide on them. May
/// lie outside 0 to 16. Needs `openness`, `endgame_weight` and the danger factors.
[[nodiscard]] int blend_weight(bool is_middle_game, const EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// One score, in centipawns, from the sum of all pairs: the positional value while both kings are safe, the
/// reckless one while a king is in danger, and in between by their weight. `is_middle_game` says that the opening is
/// over.
[[nodiscard]] int blend(SCORE_PAIR sum, bool is_middle_game, const EVALUATION_CONTEXT& context,
                        const BOARD& board) noexcept;
