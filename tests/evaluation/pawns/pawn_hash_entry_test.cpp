#include "evaluation/pawns/pawn_hash_entry.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <string_view>

#include "support/evaluation_builder.h"

namespace {

constexpr std::string_view some_pawns = "4k3/p6p/8/3pP3/8/8/PP6/4K3 w - - 0 1";

TEST(PawnHashEntry, CarriesPawnsAndType) {
    const EvaluationBuilder position(some_pawns);
    const PAWN_HASH_ENTRY entry = construct_pawn_entry(position.context, position.board, 15);
    EXPECT_EQ(entry.pawn_key, position.board.frame().pawn_key);
    EXPECT_EQ(entry.position_type, 15);
}

TEST(PawnHashEntry, RestoringIsRemembered) {
    EvaluationBuilder position(some_pawns);
    restore_pawn_entry(construct_pawn_entry(position.context, position.board, 1), position.context, position.board);
    EXPECT_TRUE(position.context.pawn_entry_from_table);
}

TEST(PawnHashEntryDeathTest, APositionWithoutPawnsHasNone) {
    EvaluationBuilder position(some_pawns);
    // The report goes to standard output, and a death test watches the error stream.
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);
            static_cast<void>(construct_pawn_entry(position.context, position.board, 16));
        },
        testing::KilledBySignal(SIGABRT),
        "file: hash, line: [0-9]+\nPAWN_HASH_ENTRY::Construct: unexpected position_type");
    PAWN_HASH_ENTRY entry;
    entry.position_type = 16;
    EXPECT_EXIT(restore_pawn_entry(entry, position.context, position.board), testing::KilledBySignal(SIGABRT), "");
}

}  // namespace
