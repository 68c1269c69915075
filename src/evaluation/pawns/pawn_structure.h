#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"

/// Pawn facts that every routine builds in the same order. `pawn_structure_walk.h` has the terms that score them.

/// Sets `pawn_count`, the masks of files without pawns, and `only_open_file`.
void find_open_files(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Sets what pawns attack and defend, and how they stand beside and behind one another: all facts that every
/// evaluation finds anew.
void find_pawn_attacks(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Finds whatever else the terms read and the pawn hash table keeps; `passed` must be known.
void find_pawn_facts(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
