#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/position_type.h"
#include "evaluation/context/score_pair.h"

/// Pawn facts that every routine builds in the same order, and the sums of the terms that score them.

/// Sets `pawn_count`, the masks of files without pawns, and `only_open_file`.
void find_open_files(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Sets what pawns attack and defend, and how they stand beside and behind one another: all facts that every
/// evaluation finds anew.
void find_pawn_attacks(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Finds whatever else the terms read and the pawn hash table keeps; `passed` must be known.
void find_pawn_facts(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// The pawn structure of the opening or middle game, White minus Black: `type` chooses the values by square. Facts from
/// the pawn hash table bring the cached part with them. Changes `pressure`, `cover` and `activity`.
[[nodiscard]] SCORE_PAIR pawn_structure(EVALUATION_CONTEXT& context, const BOARD& board, PositionType type) noexcept;
/// The same in an ending, in centipawns.
[[nodiscard]] int pawn_structure_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
