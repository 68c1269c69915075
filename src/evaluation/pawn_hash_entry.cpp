#include "evaluation/pawn_hash_entry.h"

#include "evaluation/position_type.h"
#include "frame/checked_assert.h"
#include "frame/vocabulary.h"

namespace {

/// Reported as an assertion of `hash`, as everything that is wrong with a table is.
void expect_type_with_pawns(int position_type) {
    if (position_type != pawnless) return;
    FailAssertion(vocabulary::pawn_hash_type_condition, "hash", __LINE__, vocabulary::unexpected_position_type);
}

}  // namespace

PAWN_HASH_ENTRY construct_pawn_entry(const EVALUATION_CONTEXT& /*context*/, const BOARD& board,
                                     int position_type) noexcept {
    expect_type_with_pawns(position_type);
    PAWN_HASH_ENTRY entry;
    entry.pawn_key = board.frame().pawn_key;
    entry.position_type = static_cast<std::uint8_t>(position_type);
    return entry;
}

void restore_pawn_entry(const PAWN_HASH_ENTRY& entry, EVALUATION_CONTEXT& context, const BOARD& /*board*/) noexcept {
    expect_type_with_pawns(entry.position_type);
    context.pawn_entry_from_table = true;
}
