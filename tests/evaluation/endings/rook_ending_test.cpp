#include <gtest/gtest.h>

#include <string_view>

#include "evaluation/endings/rook_ending.h"
#include "evaluation/evaluate.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// Rook and pawn against rook, and what rooks add to a plain ending. Sums are written in the order of the rules.

namespace {

using namespace sided;

template <Colour Us>
int RookAndPawnValue(EVALUATION_CONTEXT& context, const BOARD& board) {
    const EVALUATION_RESULT result = evaluate_rook_ending(context, board, 0);
    EXPECT_FALSE(result.lazy);
    return FromSideToMove<Us>(board, result.score);
}
/// What the rook ending knows beyond a plain ending.
template <Colour Us>
int RookTies(EVALUATION_CONTEXT& context, const BOARD& board) {
    context.tables->Clear();
    const int with_ties = exact_evaluation(context, board, 3);
    context.tables->Clear();
    return FromSideToMove<Us>(board, with_ties - exact_evaluation(context, board, 2));
}
constexpr SidedTerm<int> rook_and_pawn{RookAndPawnValue<white>, RookAndPawnValue<black>};
constexpr SidedTerm<int> tied_rooks{RookTies<white>, RookTies<black>};

// --- Rook and pawn against rook ---

class RookAndPawn : public testing::TestWithParam<ValueRow> {};
TEST_P(RookAndPawn, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
// Rook and pawn against rook.
INSTANTIATE_TEST_SUITE_P(Rules, RookAndPawn, testing::Values(
    ValueRow{"the king before the pawn", rook_and_pawn, "4k3/8/8/4P3/8/4K3/8/r6R", 10},
    ValueRow{"the bridge", rook_and_pawn, "3K4/3P1k2/8/8/4R3/8/8/2r5", 350 + 8 - 0},
    ValueRow{"the bridge with the rook too low", rook_and_pawn, "3K4/3P1k2/8/8/8/8/8/2r1R3", 350 + 8 - 24}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(KingInFront, RookAndPawn, testing::Values(
    ValueRow{"on e8", rook_and_pawn, "4k3/8/8/4K3/4P3/8/8/r6R", 10},
    ValueRow{"on a8 against a7", rook_and_pawn, "k7/P7/1K6/8/8/8/8/3r3R", 10},
    ValueRow{"on e7", rook_and_pawn, "r7/4k3/8/8/4P3/4K3/8/7R", 15 - 5 + 12},
    ValueRow{"on e7, the other side to move", rook_and_pawn, "r7/4k3/8/8/4P3/4K3/8/7R b - - 0 1", 15 - 5 + 12}),
    RowName<ValueRow>);

// Unless told, the pawn is on e6 and its king on e5: 15 - 3 + 20, and 13 more for a king outside the way of the pawn.
INSTANTIATE_TEST_SUITE_P(CutOff, RookAndPawn, testing::Values(
    ValueRow{"not cut off", rook_and_pawn, "8/7k/4P3/4K3/8/8/2r5/R7", 32 + 13},
    ValueRow{"by 3 files", rook_and_pawn, "8/7k/4P3/4K3/8/8/2r5/5R2", 250 + 8 * 3},
    ValueRow{"by 3 files, the other side to move", rook_and_pawn, "8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1", 250 + 8 * 3},
    ValueRow{"by 3 files from the g file", rook_and_pawn, "8/7k/4P3/4K3/8/8/2r5/6R1", 250 + 8 * 3},
    ValueRow{"the rook on the king's file", rook_and_pawn, "8/7k/4P3/4K3/8/8/2r5/7R b - - 0 1", 32 + 13},
    ValueRow{"the rook on the pawn's file", rook_and_pawn, "8/7k/4P3/4K3/8/8/2r5/4R3", 32 + 13},
    ValueRow{"the enemy rook on its file", rook_and_pawn, "5r2/7k/4P3/4K3/8/8/8/5R2", 32 + 13},
    ValueRow{"the own king on its file", rook_and_pawn, "8/7k/4P3/5K2/8/8/2r5/5R2", 32 + 13},
    ValueRow{"by 3 files on the other side", rook_and_pawn, "8/1k6/4P3/4K3/8/8/7r/3R4", 250 + 8 * 3},
    ValueRow{"the rook is not between them", rook_and_pawn, "8/1k6/4P3/4K3/8/8/7r/5R2", 32 + 13},
    ValueRow{"by 5 files", rook_and_pawn, "8/6k1/1P6/1K6/8/8/7r/3R4", 250 + 8 * 5},
    ValueRow{"by 7 files", rook_and_pawn, "8/7k/P7/K7/8/8/6r1/3R4", 250 + 8 * 7},
    ValueRow{"by 2 files", rook_and_pawn, "8/6k1/4P3/4K3/8/8/2r5/5R2", 32 + 32 * (2 + 5 - 6) + 45},
    ValueRow{"by 2 files on the other side", rook_and_pawn, "8/2k5/4P3/4K3/8/8/7r/3R4", 32 + 32 * (2 + 5 - 6) + 45},
    ValueRow{"e7 by 2 files", rook_and_pawn, "8/4P1k1/4K3/8/2r5/8/8/5R2", 15 - 2 + 24 + 32 * (2 + 6 - 6) + 45},
    ValueRow{"by 3 files on the fifth rank", rook_and_pawn, "8/7k/8/4P3/4K3/8/2r5/5R2", 15 - 2 + 16 + 32 * (3 + 4 - 6) + 45},
    ValueRow{"h5 by 3 files", rook_and_pawn, "8/4k3/8/7P/7K/8/2r5/6R1", 15 - 5 + 16 + 32 * (3 + 4 - 6) + 45},
    ValueRow{"a6 by 3 files", rook_and_pawn, "8/3k4/P7/K7/8/8/6r1/1R6", 250 + 8 * 3}),
    RowName<ValueRow>);

// The rook belongs on the fourth rank; each rank off it costs 8.
INSTANTIATE_TEST_SUITE_P(Bridge, RookAndPawn, testing::Values(
    ValueRow{"on the first rank", rook_and_pawn, "2K5/2P2k2/8/8/8/1r6/8/4R3", 350 + 12 - 24},
    ValueRow{"on the fourth rank", rook_and_pawn, "2K5/2P2k2/8/8/4R3/1r6/8/8", 350 + 12},
    ValueRow{"on the fifth rank", rook_and_pawn, "2K5/2P2k2/8/4R3/8/1r6/8/8", 350 + 12 - 8},
    ValueRow{"on the eighth rank", rook_and_pawn, "2K1R3/2P2k2/8/8/8/1r6/8/8", 350 + 12 - 32},
    ValueRow{"the enemy rook on the other side", rook_and_pawn, "2K5/2P2k2/8/8/8/3r4/8/4R3", 350 + 12 - 24},
    ValueRow{"by 2 files, b7", rook_and_pawn, "1K6/1P1k4/8/8/8/r7/8/2R5", 350 + 8 - 24},
    ValueRow{"by 2 files, g7", rook_and_pawn, "6K1/4k1P1/8/8/8/7r/8/5R2", 350 + 8 - 24},
    ValueRow{"not on a7", rook_and_pawn, "K7/P2k4/8/8/8/1r6/8/2R5", 250 + 24},
    ValueRow{"not on h7", rook_and_pawn, "7K/4k2P/8/8/8/6r1/8/5R2", 250 + 24},
    ValueRow{"the king beside the square", rook_and_pawn, "3K4/2P2k2/8/8/8/1r6/8/4R3", 250 + 24},
    ValueRow{"the enemy rook 2 files away", rook_and_pawn, "2K5/2P1k3/8/8/8/r7/8/3R4", 15 - 5 + 24 + 64 + 45 + 220},
    ValueRow{"the enemy rook on the pawn's file", rook_and_pawn, "2K5/2P1k3/8/8/8/2r5/8/3R4", 15 - 5 + 24 + 64 + 45 + 220},
    ValueRow{"the pawn on c6", rook_and_pawn, "2K5/4k3/2P5/8/8/1r6/8/3R4", 15 - 5 + 20 + 32 + 45 + 220}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(OwnerInFront, RookAndPawn, testing::Values(
    ValueRow{"the defender above the pawn", rook_and_pawn, "8/8/4K2k/8/4P3/8/2r5/R7", 15 - 4 + 12 - 96 + 45 + 60},
    ValueRow{"the defender beside it", rook_and_pawn, "8/8/4K3/8/4P2k/8/2r5/R7", 15 - 4 + 12 - 96 + 45 + 60},
    ValueRow{"the defender 1 rank below", rook_and_pawn, "8/8/4K3/8/4P3/7k/2r5/R7", 15 - 4 + 12 - 96 + 45 + 220},
    ValueRow{"the defender 4 ranks below", rook_and_pawn, "8/4K3/8/4P3/8/R7/2r5/7k", 15 - 5 + 16 - 64 + 45 + 4 * 32 + 100},
    ValueRow{"the defender 5 ranks below", rook_and_pawn, "8/4K3/4P3/8/8/R7/2r5/7k", 15 - 5 + 20 - 32 + 45 + 5 * 32 + 100},
    ValueRow{"both kings in front", rook_and_pawn, "8/5k2/3K4/8/4P3/8/8/r6R", 15 - 5 + 12 + 60},
    ValueRow{"the defender cut off", rook_and_pawn, "8/8/4K2k/8/4P3/8/2r5/6R1", 15 - 4 + 12 + 0 + 45 + 220},
    ValueRow{"never below zero", rook_and_pawn, "r6k/8/8/8/8/4K3/4P3/R7", 0}),
    RowName<ValueRow>);

// The pawn on e7 and the defender beside its way: 15 + 24 + 45, less the distance between the rook and the owner's king.
INSTANTIATE_TEST_SUITE_P(RookBetween, RookAndPawn, testing::Values(
    ValueRow{"between, 2 files", rook_and_pawn, "8/2k1P3/8/6K1/8/5r2/8/R7", 84 - 2 - 16 - 16},
    ValueRow{"between, 3 files", rook_and_pawn, "8/2k1P3/8/7K/8/5r2/8/R7", 84 - 2 - 24 - 16},
    ValueRow{"between, 2 files on the other side", rook_and_pawn, "8/4P1k1/8/2K5/8/3r4/8/7R", 84 - 2 - 16 - 16},
    ValueRow{"between, 3 files on the other side", rook_and_pawn, "8/4P1k1/8/1K6/8/2r5/8/7R", 84 - 2 - 24 - 16},
    ValueRow{"not alone on its file", rook_and_pawn, "8/2k1P3/8/6K1/8/5r2/8/5R2", 84 - 2},
    ValueRow{"on the king's file", rook_and_pawn, "8/2k1P3/8/6K1/8/6r1/8/R7", 84 - 2},
    ValueRow{"on the pawn's file", rook_and_pawn, "8/2k1P3/8/6K1/8/4r3/8/R7", 84 - 2},
    ValueRow{"beyond the pawn", rook_and_pawn, "8/2k1P3/8/6K1/8/3r4/8/R7", 84 - 3},
    ValueRow{"beyond the king", rook_and_pawn, "8/2k1P3/8/6K1/8/7r/8/R7", 84 - 2},
    ValueRow{"beyond the king on the other side", rook_and_pawn, "8/4P1k1/8/2K5/8/1r6/8/7R", 84 - 2},
    ValueRow{"beyond the pawn on the other side", rook_and_pawn, "8/4P1k1/8/2K5/8/5r2/8/7R", 84 - 3},
    ValueRow{"beyond, the defender 1 rank below", rook_and_pawn, "8/4P3/2k5/6K1/8/7r/8/R7", 84 - 2 + 8},
    ValueRow{"beyond, the defender 6 ranks below", rook_and_pawn, "8/4P3/8/6K1/8/R6r/8/2k5", 84 - 2 + 48},
    ValueRow{"between, the defender 1 rank below", rook_and_pawn, "8/4P3/2k5/6K1/8/5r2/8/R7", 84 - 2 - 16 - 16},
    ValueRow{"not alone, the defender 1 rank below", rook_and_pawn, "8/4P3/2k5/6K1/8/5r2/8/5R2", 84 - 2 + 8},
    ValueRow{"between, hardly above zero", rook_and_pawn, "8/4k3/4P3/6K1/8/5r2/8/7R", 15 - 2 + 20 - 16 - 16},
    ValueRow{"between, never below zero", rook_and_pawn, "8/4k3/4P3/6K1/8/8/8/5r1R", 0},
    ValueRow{"beyond, never below zero", rook_and_pawn, "r7/8/7k/8/4P3/4K3/8/1R6", 0}),
    RowName<ValueRow>);
// clang-format on

// --- More pawns, more rooks ---

class TiedRooks : public testing::TestWithParam<ValueRow> {};
TEST_P(TiedRooks, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawns, TiedRooks, testing::Values(
    ValueRow{"tied to b3", tied_rooks, "1r4k1/6pp/8/8/8/1P6/6PP/1R4K1", -30},
    ValueRow{"tied, the other side to move", tied_rooks, "1r4k1/6pp/8/8/8/1P6/6PP/1R4K1 b - - 0 1", -30},
    ValueRow{"not attacked", tied_rooks, "r5k1/6pp/8/8/8/1P6/6PP/1R4K1", 0},
    ValueRow{"not protected", tied_rooks, "1r4k1/6pp/8/8/8/1P6/6PP/R5K1", 0},
    ValueRow{"protected by a pawn", tied_rooks, "1r4k1/6pp/8/8/8/1P6/P5PP/1R4K1", 0},
    ValueRow{"beside the king", tied_rooks, "1r4k1/6pp/8/8/8/1P6/2K3PP/1R6", 0},
    ValueRow{"2 away from the king", tied_rooks, "1r4k1/6pp/8/8/8/1P6/6PP/1RK5", -30},
    ValueRow{"two pawns", tied_rooks, "6k1/6pp/8/8/1P3r2/8/1R3P2/7K", -60},
    ValueRow{"a pawn between", tied_rooks, "1r4k1/6pp/8/1p6/8/1P6/6PP/1R4K1", 0},
    ValueRow{"two rooks behind", tied_rooks, "1r4k1/r5pp/8/8/8/1P6/1R4PP/1R4K1", -30},
    ValueRow{"tied on both sides", tied_rooks, "1r2k2r/8/7p/8/1P6/8/8/1R1K3R", 0}),
    RowName<ValueRow>);
// clang-format on

// --- Where the rules begin and end ---

TEST(RookEnding, ASinglePawnIsScoredAtAnyBound) {
    for (const int bound : {-20000, 0, 20000}) {
        EvaluationBuilder builder("8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1");
        EXPECT_EQ(builder.Type(), 3);
        EXPECT_EQ(builder.Ask(bound), -274);
    }
}

TEST(RookEnding, ARookEndingStopsWhereAPlainEndingDoes) {
    // The tied rook counts 30 against White, who is to move.
    constexpr std::string_view fen = "1r4k1/6pp/8/8/8/1P6/6PP/1R4K1 w - - 0 1";
    for (const int bound : {-5000, 5000}) {
        EvaluationBuilder builder(fen);
        EXPECT_EQ(builder.Ask(bound), bound < 0 ? bound : bound - 1);
    }
}

}  // namespace
