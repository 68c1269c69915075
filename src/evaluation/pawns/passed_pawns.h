#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// Finds the passed pawns of both sides. Those of a known structure come from the pawn hash table.
void find_passed_pawns(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// Sets `front_passed` and `passed_rank` of both sides from `passed`.
void find_foremost_passed_pawns(EVALUATION_CONTEXT& context) noexcept;

/// The foremost passed pawn of every file, White minus Black. It runs before everything else, on restored passed pawns
/// too. Sets `front_passed` and `passed_rank`.
template <class Context>
[[nodiscard]] SCORE_PAIR passed_pawns(Context& context, const BOARD& board) noexcept;
/// The same in an ending, in centipawns: what stands before the pawn, rooks and kings count too.
template <class Context>
[[nodiscard]] int passed_pawns_ending(Context& context, const BOARD& board) noexcept;
