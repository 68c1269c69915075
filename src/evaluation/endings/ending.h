#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// The routine of the endings that have none of their own. It sums plain scores, in White's view: no pairs, no blend.
/// It needs a cleared context on which the pawn hash table was tried.
[[nodiscard]] EVALUATION_RESULT evaluate_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept;

/// From the sum of all terms to the score: material, scaling, and who can win at all. White's view, both.
template <class Context>
[[nodiscard]] int score_of_ending(Context& context, const BOARD& board, int sum) noexcept;

/// Whether this side has enough to win with: a pawn, a rook or queen, three minor pieces, or two with a bishop.
[[nodiscard]] bool can_win(const SIDE_PIECES& side) noexcept;

/// A side that can't win is not better than a draw: `score` and `draw_score` are in White's view.
[[nodiscard]] int limit_to_draw_score(int score, int draw_score, const BOARD& board) noexcept;
