#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "search/tables/hash.h"

/// The pawn facts and scores of a finished evaluation, packed for the pawn hash table. Entries of one pawn structure
/// under two position types are kept apart. A position without pawns, type 16, has no entry: asking for one
/// fails an assertion.
[[nodiscard]] PAWN_HASH_ENTRY construct_pawn_entry(const EVALUATION_CONTEXT& context, const BOARD& board,
                                                   int position_type) noexcept;
/// The way back, in two steps: many a question is settled by the passed pawns and the material. Pawns that are not on
/// the board fail an assertion.
void restore_passed_pawns(const PAWN_HASH_ENTRY& entry, EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
/// Everything. Sets `pawn_entry_from_table`.
void restore_pawn_entry(const PAWN_HASH_ENTRY& entry, EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
