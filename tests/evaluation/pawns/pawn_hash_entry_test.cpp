#include "evaluation/pawns/pawn_hash_entry.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <string_view>

#include "support/evaluation_builder.h"
#include "support/squares_text.h"
#include "support/term_rows.h"

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

// How the facts are packed: three against two files of White on the queen side, of Black on the king side, openness
// 14 (nobody stands on two files, ten pawns, three of them in the centre).
constexpr std::string_view two_majorities = "4k3/pp3ppp/8/8/8/8/PPP2PP1/4K3";
constexpr std::uint32_t word_of_two_majorities =
    (1U | 3U << 2 | 2U << 5 | 0U << 8) | (2U | 3U << 2 | 2U << 5 | 7U << 8) << 11 | 14U << 22;

TEST(PawnHashEntry, PacksMajoritiesAndOpenness) {
    EvaluationBuilder position(FenOfRow(two_majorities));
    position.PrepareTerms();
    for (const int type : {0, 1, 2, 15}) {
        EXPECT_EQ(construct_pawn_entry(position.context, position.board, type).packed, word_of_two_majorities) << type;
    }
}

TEST(PawnHashEntry, UnpacksMajoritiesAndOpenness) {
    EvaluationBuilder position(FenOfRow(two_majorities));
    PAWN_HASH_ENTRY entry;
    entry.packed = word_of_two_majorities;
    restore_pawn_entry(entry, position.context, position.board);
    const auto& [on_queen_side, on_king_side] = position.context.majority;
    EXPECT_EQ(on_queen_side.kind, Majority::white);
    EXPECT_EQ(on_queen_side.count_a, 3);
    EXPECT_EQ(on_queen_side.count_b, 2);
    EXPECT_EQ(on_king_side.kind, Majority::black);
    EXPECT_EQ(on_king_side.count_a, 3);
    EXPECT_EQ(on_king_side.count_b, 2);
    EXPECT_EQ(position.context.openness, 14);
}

constexpr std::array<std::uint32_t, 4> counter_words = {
    5U << 1 | (1U | 3U << 1) << 10 | 511U << 21,         // White's pressure: 5, -3, 511
    (1U | 511U << 1) | 1U << 11 | (1U | 1U << 1) << 20,  // its cover: -511, 1, -1
    256U << 1,                                           // Black's pressure: 256, 0, 0
    (1U | 2U << 1) << 20,                                // its cover: 0, 0, -2
};

/// A context whose counters are those of counter_words.
EVALUATION_CONTEXT ContextWithCounters(const EvaluationBuilder& position) {
    EVALUATION_CONTEXT context = position.context;
    context.pawn_positional = -1234;
    context.pawn_reckless = 567;
    context.pawn_ending = -89;
    context.pawn_pressure[white] = {5, -3, 511};
    context.pawn_cover[white] = {-511, 1, -1};
    context.pawn_pressure[black] = {256, 0, 0};
    context.pawn_cover[black] = {0, 0, -2};
    return context;
}

TEST(PawnHashEntry, PacksScoresAndCounters) {
    const EvaluationBuilder position(FenOfRow(two_majorities));
    for (const int type : {0, 1}) {
        const PAWN_HASH_ENTRY entry = construct_pawn_entry(ContextWithCounters(position), position.board, type);
        EXPECT_EQ(entry.positional, -1234);
        EXPECT_EQ(entry.reckless, 567);
        EXPECT_EQ(entry.ending, -89);
        EXPECT_EQ(entry.counters, counter_words);
    }
}

TEST(PawnHashEntry, OfAnEndingHasNoPairAndNoCounters) {
    const EvaluationBuilder position(FenOfRow(two_majorities));
    for (const int type : {2, 15, 17}) {
        const PAWN_HASH_ENTRY entry = construct_pawn_entry(ContextWithCounters(position), position.board, type);
        EXPECT_EQ(entry.positional, 0);
        EXPECT_EQ(entry.reckless, 0);
        EXPECT_EQ(entry.ending, -89);
        EXPECT_EQ(entry.counters, (std::array<std::uint32_t, 4>{}));
    }
}

TEST(PawnHashEntry, UnpacksScoresAndCounters) {
    EvaluationBuilder position(FenOfRow(two_majorities));
    PAWN_HASH_ENTRY entry;
    entry.position_type = 1;
    entry.positional = -1234;
    entry.reckless = 567;
    entry.ending = -89;
    entry.counters = counter_words;
    restore_pawn_entry(entry, position.context, position.board);
    const EVALUATION_CONTEXT wanted = ContextWithCounters(position);
    for (const Colour side : {white, black}) {
        EXPECT_EQ(position.context.pawn_pressure[side], wanted.pawn_pressure[side]);
        EXPECT_EQ(position.context.pawn_cover[side], wanted.pawn_cover[side]);
    }
    EXPECT_EQ(position.context.pawn_positional, -1234);
    EXPECT_EQ(position.context.pawn_reckless, 567);
    EXPECT_EQ(position.context.pawn_ending, -89);
}

TEST(PawnHashEntry, SplitsTheColours) {
    EvaluationBuilder position("4k3/p7/8/1p6/P7/8/6P1/4K3 w - - 0 1");
    PAWN_HASH_ENTRY entry;
    entry.passed = Bit(g2) | Bit(b5);
    entry.isolated = Bit(a4) | Bit(g2);
    entry.backward = Bit(a4) | Bit(a7);
    entry.backward_stuck = Bit(a7);
    entry.covered = Bit(a4) | Bit(a7) | Bit(b5);
    entry.advance_squares = {Bit(g3), Bit(b4)};
    entry.centre_gaps = {Bit(d4) | Bit(e5), Bit(e4)};
    restore_pawn_entry(entry, position.context, position.board);
    const PAWN_INFO& of_white = position.context.pawns[white];
    const PAWN_INFO& of_black = position.context.pawns[black];
    EXPECT_EQ(SquaresText(of_white.passed), "g2");
    EXPECT_EQ(SquaresText(of_black.passed), "b5");
    EXPECT_EQ(PopCount(of_white.passed), 1);
    EXPECT_EQ(PopCount(of_black.passed), 1);
    EXPECT_EQ(SquaresText(of_white.isolated), "a4 g2");
    EXPECT_EQ(SquaresText(of_black.isolated), "");
    EXPECT_EQ(SquaresText(of_white.backward), "a4");
    EXPECT_EQ(SquaresText(of_black.backward), "a7");
    EXPECT_EQ(SquaresText(of_white.backward_stuck), "");
    EXPECT_EQ(SquaresText(of_black.backward_stuck), "a7");
    EXPECT_EQ(SquaresText(of_white.covered), "a4");
    EXPECT_EQ(SquaresText(of_black.covered), "a7 b5");
    EXPECT_EQ(SquaresText(of_white.advance_squares), "g3");
    EXPECT_EQ(SquaresText(of_black.advance_squares), "b4");
    EXPECT_EQ(SquaresText(of_white.centre_gaps), "d4 e5");
    EXPECT_EQ(SquaresText(of_black.centre_gaps), "e4");
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
