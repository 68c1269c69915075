#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/pawn_hash_entry.h"
#include "evaluation/pawns/pawn_structure.h"

/// What every routine looks up after its lazy test, before its terms: pawns, open files and kings.
inline void find_places(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    find_open_files(context, board);
    place_kings(context, board);
    find_pawn_attacks(context, board);
    if (context.pawn_entry != nullptr)
        restore_pawn_entry(*context.pawn_entry, context, board);
    else
        find_pawn_facts(context, board);
}
