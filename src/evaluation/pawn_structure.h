#pragma once

#include "chess/board.h"
#include "evaluation/evaluation_context.h"
#include "evaluation/position_type.h"
#include "evaluation/score_pair.h"

/// Pawn facts that every routine builds in the same order, and the terms that score them.

/// Builds the pawn lists, which the pawn hash table does not keep.
void build_pawn_lists(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Sets the masks and counts of files without pawns, and `only_open_file`.
void find_open_files(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Sets the squares that the pawns of both sides attack.
void find_pawn_attacks(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Finds whatever else the terms read and the pawn hash table keeps. Finds nothing yet.
void find_pawn_facts(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;

/// The pawn structure of the opening or middle game, White minus Black: `type` chooses the values by square. Changes
/// `pressure`, `cover` and `activity`. Adds nothing yet.
[[nodiscard]] SCORE_PAIR pawn_structure(EVALUATION_CONTEXT& context, const BOARD& board, PositionType type) noexcept;
/// The same in an ending, in centipawns. Adds nothing yet.
[[nodiscard]] int pawn_structure_ending(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
