#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <ostream>
#include <string_view>

#include "chess/bits.h"
#include "evaluation/endings/ending.h"
#include "evaluation/endings/pawnless.h"
#include "evaluation/endings/rook_ending.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/pieces/rooks.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// The endings that pieces decide: mates, the bishop of the wrong colour, rooks. Every sum is written in the order in
/// which its parts are told: material, kings, pieces, the side to move.

namespace {

using namespace sided;

class EndingPieces : public testing::TestWithParam<ValueRow> {};
TEST_P(EndingPieces, GiveTheirValue) { ExpectValue(GetParam()); }

template <Colour Us>
int OnePawn(EVALUATION_CONTEXT& context, const BOARD& board) {
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
constexpr SidedTerm<int> one_pawn{OnePawn<white>, OnePawn<black>};
constexpr SidedTerm<int> ties{RookTies<white>, RookTies<black>};

// clang-format off

// --- No pawns, even ---

// Each king pays an eighth of the worth of the enemy king's square; 3 are for the side to move.
INSTANTIATE_TEST_SUITE_P(EvenKings, EndingPieces, testing::Values(
    ValueRow{"both on the rim", pawnless_endings, "4k3/8/8/8/8/8/8/4K3", 5 - 5 + 3},
    ValueRow{"corner a8", pawnless_endings, "k7/8/8/8/8/8/8/4K3", 10 - 5 + 3},
    ValueRow{"b8", pawnless_endings, "1k6/8/8/8/8/8/8/4K3", 8 - 5 + 3},
    ValueRow{"b8 with the other side to move", pawnless_endings, "1k6/8/8/8/8/8/8/4K3 b - - 0 1", 8 - 5 - 3},
    ValueRow{"c8", pawnless_endings, "2k5/8/8/8/8/8/8/4K3", 7 - 5 + 3},
    ValueRow{"d8", pawnless_endings, "3k4/8/8/8/8/8/8/4K3", 5 - 5 + 3},
    ValueRow{"b7", pawnless_endings, "8/1k6/8/8/8/8/8/4K3", 1 - 5 + 3},
    ValueRow{"c7", pawnless_endings, "8/2k5/8/8/8/8/8/4K3", 0 - 5 + 3},
    ValueRow{"d7", pawnless_endings, "8/3k4/8/8/8/8/8/4K3", 0 - 5 + 3},
    ValueRow{"c6", pawnless_endings, "8/8/2k5/8/8/8/8/4K3", -1 - 5 + 3},
    ValueRow{"d6", pawnless_endings, "8/8/3k4/8/8/8/8/4K3", -3 - 5 + 3},
    ValueRow{"d5", pawnless_endings, "8/8/8/3k4/8/8/8/4K3", -5 - 5 + 3},
    ValueRow{"opposition on the top rank", pawnless_endings, "4k3/8/4K3/8/8/8/8/8", 20 + 3 + 3},
    ValueRow{"opposition on the a file", pawnless_endings, "8/8/8/8/k1K5/8/8/8", 20 + 3 + 3},
    ValueRow{"opposition beside the a file", pawnless_endings, "1k6/8/1K6/8/8/8/8/8", 20 - 0 + 3},
    ValueRow{"opposition beside the h file", pawnless_endings, "6k1/8/6K1/8/8/8/8/8", 20 - 0 + 3},
    ValueRow{"opposition on the second rank", pawnless_endings, "8/8/8/8/8/8/k1K5/8", 20 - 0 + 3},
    ValueRow{"no opposition on the b file", pawnless_endings, "8/8/8/8/1k1K4/8/8/8", 0 + 5 + 3},
    ValueRow{"no opposition on the g file", pawnless_endings, "8/8/8/8/4K1k1/8/8/8", 0 + 5 + 3},
    ValueRow{"no opposition with both on the rim", pawnless_endings, "k7/8/K7/8/8/8/8/8", 10 - 7 + 3},
    ValueRow{"no opposition off the rim", pawnless_endings, "8/4k3/8/4K3/8/8/8/8", 0 + 5 + 3},
    ValueRow{"no opposition a knight's move away", pawnless_endings, "3k4/8/4K3/8/8/8/8/8", 5 + 3 + 3}),
    RowName<ValueRow>);

// With kings on e1 and e8, both of which pay 5. The knight on a8 costs 3 for its distance and gets 6 for being safe.
INSTANTIATE_TEST_SUITE_P(EvenPieces, EndingPieces, testing::Values(
    ValueRow{"knight at distance 1, attacked", pawnless_endings, "n3k3/3N4/8/8/8/8/8/4K3", (5 - 0) - (5 + 3) + 3},
    ValueRow{"knight at distance 2", pawnless_endings, "n3k3/8/4N3/8/8/8/8/4K3", (5 - 0 + 6) - (5 + 3) + 3},
    ValueRow{"knight at distance 3", pawnless_endings, "n3k3/8/8/4N3/8/8/8/4K3", (5 - 1 + 6) - (5 + 3) + 3},
    ValueRow{"knight at distance 4", pawnless_endings, "n3k3/8/8/8/4N3/8/8/4K3", (5 - 1 + 6) - (5 + 3) + 3},
    ValueRow{"knight at distance 5", pawnless_endings, "n3k3/8/8/8/8/4N3/8/4K3", (5 - 2 + 6) - (5 + 3) + 3},
    ValueRow{"knight at distance 6", pawnless_endings, "n3k3/8/8/8/8/8/4N3/4K3", (5 - 2 + 6) - (5 + 3) + 3},
    ValueRow{"knight at distance 7", pawnless_endings, "n3k3/8/8/8/8/8/8/3NK3", (5 - 3 + 6) - (5 + 3) + 3},
    ValueRow{"bishop at distance 1, attacked", pawnless_endings, "b3k3/4B3/8/8/8/8/8/4K3", 5 - (5 + 5) + 3},
    ValueRow{"bishop at distance 4", pawnless_endings, "b3k3/8/8/8/3B4/8/8/4K3", (5 - 0 + 6) - (5 + 5) + 3},
    ValueRow{"bishop at distance 5", pawnless_endings, "b3k3/8/8/8/8/4B3/8/4K3", (5 - 1 + 6) - (5 + 5) + 3},
    ValueRow{"bishop at distance 7", pawnless_endings, "b3k3/8/8/8/8/8/8/2B1K3", (5 - 1 + 6) - (5 + 5) + 3},
    ValueRow{"rooks pay for no distance", pawnless_endings, "r3k3/8/8/8/8/8/8/3RK3", (5 + 6) - (5 + 6) + 3},
    ValueRow{"rook attacked by the king", pawnless_endings, "4k2r/3R4/8/8/8/8/8/4K3", 5 - (5 + 6) + 3},
    ValueRow{"rooks attacking each other", pawnless_endings, "r3k3/8/8/8/8/8/8/R3K3", 5 - 5 + 3},
    ValueRow{"queens", pawnless_endings, "4k3/8/8/8/8/8/8/Q3K2q", (5 - 1 + 6) - (5 - 0 + 6) + 3},
    ValueRow{"bishop and knight, 10 apart", pawnless_endings, "n3k3/8/8/8/8/8/8/B3K3", 1 + (5 + 5) - (5 + 3) + 3},
    ValueRow{"the knight's side to move", pawnless_endings, "n3k3/8/8/8/8/8/8/B3K3 b - - 0 1", 1 + (5 + 5) - (5 + 3) - 3},
    ValueRow{"two bishops and two knights, 20 apart", pawnless_endings, "nn2k3/8/8/8/8/8/8/BB2K3", 2 + (5 + 5 + 5) - (5 + 3 + 3) + 3},
    ValueRow{"queen and two rooks, 20 apart", pawnless_endings, "rr2k3/8/8/8/8/8/8/3QK3", 2 + (5 - 1 + 6) - (5 + 6 + 6) + 3},
    ValueRow{"queen and rook and five minor pieces, 15 apart", pawnless_endings, "nn2kbnn/8/8/8/8/8/8/2RQK3", -1 + (5 + 5 + 6) - (5 + 4 * 3 + 5) + 3},
    ValueRow{"30 apart is not even", pawnless_endings, "rrn1k3/8/8/8/3K4/8/8/6QB", 7 + 44 + 22 + (10 - 6) + (10 - 6) + 4}),
    RowName<ValueRow>);

// --- No pawns, a mate ---

// The winning king gets three halves of its square, the losing one pays for its own and each step between them costs 4:
// on d4 and e8 that is 66 + 44 - 20.
INSTANTIATE_TEST_SUITE_P(Mates, EndingPieces, testing::Values(
    ValueRow{"rook", pawnless_endings, "4k3/8/8/8/3K4/8/8/R7", 500 + 66 + (650 + 6) + 44 - 20 + 6},
    ValueRow{"the loser to move", pawnless_endings, "4k3/8/8/8/3K4/8/8/R7 b - - 0 1", 500 + 66 + (650 + 6) + 44 - 20 + 6},
    ValueRow{"rook attacked by the king", pawnless_endings, "4k3/3R4/8/8/3K4/8/8/8", 500 + 66 + 650 + 44 - 20 + 6},
    ValueRow{"queen at distance 1", pawnless_endings, "4k3/4Q3/8/8/3K4/8/8/8 b - - 0 1", 1020 + 66 + 650 + 44 - 20 + 6},
    ValueRow{"queen at distance 2", pawnless_endings, "4k3/8/3Q4/8/3K4/8/8/8", 1020 + 66 + (650 - 1 + 6) + 44 - 20 + 6},
    ValueRow{"queen at distance 7", pawnless_endings, "4k3/8/8/8/3K4/8/8/7Q", 1020 + 66 + (650 - 6 + 6) + 44 - 20 + 6},
    ValueRow{"queen attacked by a rook", pawnless_endings, "4k3/8/8/8/3K4/8/8/r6Q", 520 + 66 + (650 - 6) - 2 * 3 + 44 - 20 + 6},
    ValueRow{"queen not attacked by the rook", pawnless_endings, "4k3/8/8/8/3K4/8/r7/7Q", 520 + 66 + (650 - 6 + 6) - 2 * 3 + 44 - 20 + 6},
    ValueRow{"two rooks", pawnless_endings, "4k3/8/8/8/3K4/8/8/RR6", 1000 + 66 + 2 * (650 + 6) + 44 - 20 + 6},
    ValueRow{"two bishops", pawnless_endings, "4k3/8/8/8/3K4/8/8/BB6", 630 + 66 + 2 * (650 - 6 + 6) + 44 - 20 + 6},
    ValueRow{"two knights", pawnless_endings, "4k3/8/8/8/3K4/8/8/NN6", 610 + 66 + 2 * (650 - 12 + 6) + 44 - 20 + 6},
    ValueRow{"knights nearer", pawnless_endings, "4k3/8/4N3/4N3/3K4/8/8/8", 610 + 66 + (650 - 2 + 6) + (650 - 4 + 6) + 44 - 20 + 6},
    ValueRow{"two pieces against two", pawnless_endings, "4kb2/8/8/8/n2K4/8/8/Q6R", 900 + 66 + (650 - 6 + 6) + (650 + 6) - 2 * 3 - 2 * 4 + 44 - 20 + 6},
    ValueRow{"500 ahead", pawnless_endings, "4kb2/8/8/8/3K4/8/8/R5B1", 500 + 66 + (650 + 6) + (650 - 6 + 6) - 2 * 4 + 44 - 20 + 6},
    ValueRow{"490 ahead is no mate", pawnless_endings, "4kb2/8/8/8/3K4/8/8/R5N1", 122 + 44 + 22 + 10 + (10 - 12) + 4},
    ValueRow{"opposition on the top rank", pawnless_endings, "4k3/8/4K3/8/8/8/8/7R", 500 + 40 + 656 + 44 - 8 + 6},
    ValueRow{"opposition on the h file", pawnless_endings, "8/8/8/8/5K1k/8/8/R7", 500 + 40 + 656 + 44 - 8 + 6},
    ValueRow{"no opposition with both on the rim", pawnless_endings, "7k/8/7K/8/8/8/8/R7", 500 - 84 + 656 + 80 - 8 + 6},
    ValueRow{"no opposition off the rim", pawnless_endings, "8/8/8/4k3/8/4K3/8/R7", 500 + 36 + 656 - 44 - 8 + 6},
    ValueRow{"no opposition a knight's move away", pawnless_endings, "4k3/8/3K4/8/8/8/8/R7", 500 + 36 + 656 + 44 - 12 + 6}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(MatesWithPawns, EndingPieces, testing::Values(
    ValueRow{"a2", pawnless_endings, "4k3/8/8/8/3K4/8/P7/7R", 600 + 66 + 656 + 44 - 20 + 0 + 6},
    ValueRow{"a3", pawnless_endings, "4k3/8/8/8/3K4/P7/8/7R", 600 + 66 + 656 + 44 - 20 + 4 + 6},
    ValueRow{"a4", pawnless_endings, "4k3/8/8/8/P2K4/8/8/7R", 600 + 66 + 656 + 44 - 20 + 20 + 6},
    ValueRow{"a5", pawnless_endings, "4k3/8/8/P7/3K4/8/8/7R", 600 + 66 + 656 + 44 - 20 + 52 + 6},
    ValueRow{"a6", pawnless_endings, "4k3/8/P7/8/3K4/8/8/7R", 600 + 66 + 656 + 44 - 20 + 76 + 6},
    ValueRow{"a7", pawnless_endings, "4k3/P7/8/8/3K4/8/8/7R", 600 + 66 + 656 + 44 - 20 + 100 + 6},
    ValueRow{"a4 and b5", pawnless_endings, "4k3/8/8/1P6/P2K4/8/8/7R", 700 + 66 + 656 + 44 - 20 + 20 + 52 + 6},
    ValueRow{"bishop, knight and pawn", pawnless_endings, "4k3/8/8/8/3K4/8/P7/BN6", 720 + 66 + (650 - 6 + 6) + (650 - 12 + 6) + 44 - 20 + 0 + 6},
    ValueRow{"pawns alone", pawnless_endings, "4k3/8/8/8/3K4/8/PPPPPP2/8", 600 + 66 + 2000 + 44 - 20 + 0 + 6}),
    RowName<ValueRow>);

// The losing king on e5 is worth 44 to itself, and as much as its shade of 52 to the corner that it must reach.
INSTANTIATE_TEST_SUITE_P(BishopAndKnight, EndingPieces, testing::Values(
    ValueRow{"winner on b2", pawnless_endings, "8/8/8/4k3/8/8/1K6/2BN4", 1000 - 44 - 24 - 100 - 52 + 6},
    ValueRow{"winner on c2", pawnless_endings, "8/8/8/4k3/8/8/2K5/2BN4", 1000 - 44 - 20 - 52 + 6},
    ValueRow{"winner on b3", pawnless_endings, "8/8/8/4k3/8/1K6/8/2BN4", 1000 - 44 - 20 - 52 + 6},
    ValueRow{"winner on g7", pawnless_endings, "8/6K1/8/4k3/8/8/8/2BN4", 1000 - 44 - 16 - 100 - 52 + 6},
    ValueRow{"winner on g6", pawnless_endings, "8/8/6K1/4k3/8/8/8/2BN4", 1000 - 44 - 12 - 52 + 6},
    ValueRow{"winner on f7", pawnless_endings, "8/5K2/8/4k3/8/8/8/2BN4", 1000 - 44 - 12 - 52 + 6},
    ValueRow{"winner on h2", pawnless_endings, "8/8/8/4k3/8/8/7K/2BN4", 1000 - 44 - 24 - 100 - 52 + 6},
    ValueRow{"winner on a7", pawnless_endings, "8/K7/8/4k3/8/8/8/2BN4", 1000 - 44 - 24 - 100 - 52 + 6},
    ValueRow{"light bishop, c5", pawnless_endings, "8/8/8/2k5/8/8/2K5/3N1B2 b - - 0 1", 1000 - 24 - 12 - 10 + 6},
    ValueRow{"dark bishop, c5", pawnless_endings, "8/8/8/2k5/8/8/2K5/2BN4", 1000 - 24 - 12 - 20 + 6},
    ValueRow{"no opposition here", pawnless_endings, "4k3/8/4K3/8/8/8/8/BN6", 1000 + 44 - 8 + 40 + 6}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(SmallLeads, EndingPieces, testing::Values(
    ValueRow{"bishop", pawnless_endings, "4k3/8/8/8/3K4/8/8/B7", 78 + 44 + 22 + (10 - 6) + 4},
    ValueRow{"the loser to move", pawnless_endings, "4k3/8/8/8/3K4/8/8/B7 b - - 0 1", 78 + 44 + 22 + (10 - 6) + 4},
    ValueRow{"bishop attacked", pawnless_endings, "4k3/4B3/8/8/3K4/8/8/8", 78 + 44 + 22 + 0 + 4},
    ValueRow{"knight", pawnless_endings, "4k3/8/8/8/3K4/8/8/N7", 76 + 44 + 22 + (10 - 12) + 4},
    ValueRow{"knight at distance 3", pawnless_endings, "4k3/8/8/4N3/3K4/8/8/8", 76 + 44 + 22 + (10 - 4) + 4},
    ValueRow{"rook against bishop", pawnless_endings, "4k1b1/8/8/8/3K4/8/8/2R5 b - - 0 1", 46 + 44 + 22 + 10 + 4},
    ValueRow{"two pieces against one", pawnless_endings, "4kn2/8/8/8/3K4/8/8/BN6", 78 + 44 + 22 + (10 - 6) + (10 - 12) + 4},
    ValueRow{"opposition", pawnless_endings, "4k3/8/4K3/8/8/8/8/B7", 78 + 100 + 22 + (10 - 6) + 4},
    ValueRow{"no opposition with both on the rim", pawnless_endings, "7k/8/7K/8/8/8/8/1N6", 76 - 56 + 40 + (10 - 12) + 4},
    ValueRow{"never below zero", pawnless_endings, "8/8/8/3k4/8/8/8/K1R4b", 0 + 4},
    ValueRow{"just below zero", pawnless_endings, "8/8/8/3k4/8/8/8/2RK3b", 0 + 4},
    ValueRow{"just above zero", pawnless_endings, "8/8/2k5/8/8/8/8/1R1K3b b - - 0 1", 46 - 44 - 7 + 10 + 4},
    ValueRow{"a pawn adds its material only", pawnless_endings, "4k3/8/8/P7/3K4/8/8/B7", 103 + 44 + 22 + (10 - 6) + 4}),
    RowName<ValueRow>);

// --- A bishop and pawns on the edge against the bare king ---

INSTANTIATE_TEST_SUITE_P(WrongCorner, EndingPieces, testing::Values(
    ValueRow{"the defender on a8", wrong_bishop, "k7/8/8/8/8/8/P7/2B1K3", 0},
    ValueRow{"the defender on a7", wrong_bishop, "8/k7/8/8/8/8/P7/2B1K3", 0},
    ValueRow{"the defender on b7", wrong_bishop, "8/1k6/8/8/8/8/P7/2B1K3 b - - 0 1", 0},
    ValueRow{"the defender on b8 against two pawns", wrong_bishop, "1k6/8/8/8/8/P7/P7/2B1K3", 0},
    ValueRow{"the defender 2 away", wrong_bishop, "8/8/1k6/8/8/8/P7/2B1K3", 315 - 20 - 30 + 50},
    ValueRow{"the defender 3 away", wrong_bishop, "3k4/8/8/8/8/8/P7/2B1K3", 315 + 10 - 30 + 50},
    ValueRow{"the defender 4 away", wrong_bishop, "4k3/8/8/8/8/8/P7/2B1K3", 315 + 20 - 30 + 50},
    ValueRow{"the defender 5 away", wrong_bishop, "5k2/8/8/8/8/8/P7/2B1K3", 315 + 30 - 30 + 50},
    ValueRow{"the defender 6 away", wrong_bishop, "6k1/8/8/8/8/8/P7/2B1K3", 315 + 50 - 30 + 50},
    ValueRow{"the defender 7 away", wrong_bishop, "7k/8/8/8/8/8/P7/2B1K3", 315 + 90 - 30 + 50},
    ValueRow{"the owner in the corner", wrong_bishop, "K6k/8/8/8/8/8/P7/2B5", 315 + 90 + 80 + 50},
    ValueRow{"the owner 1 away", wrong_bishop, "7k/1K6/8/8/8/8/P7/2B5", 315 + 90 + 80 + 50},
    ValueRow{"the owner 2 away", wrong_bishop, "7k/8/1K6/8/8/8/P7/2B5", 315 + 90 + 10 + 50},
    ValueRow{"the owner 3 away", wrong_bishop, "7k/8/8/1K6/8/8/P7/2B5", 315 + 90 + 0 + 50},
    ValueRow{"the owner 4 away", wrong_bishop, "7k/8/8/8/1K6/8/P7/2B5", 315 + 90 - 10 + 50},
    ValueRow{"the owner 5 away", wrong_bishop, "7k/8/8/8/8/1K6/P7/2B5", 315 + 90 - 20 + 50},
    ValueRow{"the owner 6 away", wrong_bishop, "7k/8/8/8/8/8/PK6/2B5 b - - 0 1", 315 + 90 - 25 + 50},
    ValueRow{"a3", wrong_bishop, "7k/8/8/8/8/P7/8/2B1K3", 315 + 90 - 30 + 52},
    ValueRow{"a4", wrong_bishop, "7k/8/8/8/P7/8/8/2B1K3", 315 + 90 - 30 + 55},
    ValueRow{"a5", wrong_bishop, "7k/8/8/P7/8/8/8/2B1K3", 315 + 90 - 30 + 62},
    ValueRow{"a6", wrong_bishop, "7k/8/P7/8/8/8/8/2B1K3", 315 + 90 - 30 + 76},
    ValueRow{"a7", wrong_bishop, "7k/P7/8/8/8/8/8/2B1K3", 315 + 90 - 30 + 90},
    ValueRow{"two pawns on the a file", wrong_bishop, "7k/8/8/P7/8/P7/8/2B1K3", 315 + 90 - 30 + 62 + 52},
    ValueRow{"the defender on h8", wrong_bishop, "7k/8/8/8/8/8/7P/4KB2", 0},
    ValueRow{"the defender on g7", wrong_bishop, "8/6k1/8/8/8/8/7P/4KB2", 0},
    ValueRow{"the defender on f6", wrong_bishop, "8/8/5k2/8/8/8/7P/2K2B2 b - - 0 1", 315 - 20 - 30 + 50},
    ValueRow{"the defender on a8, pawn on h2", wrong_bishop, "k7/8/8/8/8/8/7P/4KB2", 315 + 90 - 30 + 50},
    ValueRow{"the right bishop for a8", wrong_bishop, "k7/8/8/8/8/8/P7/4KB2", 835 + 50},
    ValueRow{"the right bishop for h8", wrong_bishop, "7k/8/8/8/8/7P/8/2B1K3 b - - 0 1", 835 + 52},
    ValueRow{"pawns on a and h", wrong_bishop, "k7/8/8/8/8/8/P6P/2B1K3", 835 + 50 + 50},
    ValueRow{"pawns on a and b", wrong_bishop, "k7/8/8/8/1P6/8/P7/2B1K3", 835 + 50 + 55},
    ValueRow{"pawns on g and h", wrong_bishop, "7k/8/6P1/8/8/8/7P/4KB2", 835 + 76 + 50},
    ValueRow{"a pawn on b", wrong_bishop, "1k6/8/8/8/8/8/1P6/2B1K3", 835 + 50},
    ValueRow{"a pawn on g", wrong_bishop, "6k1/8/8/8/8/6P1/8/4KB2", 835 + 52}), RowName<ValueRow>);

// --- Rook and pawn against rook ---

INSTANTIATE_TEST_SUITE_P(KingInFront, EndingPieces, testing::Values(
    ValueRow{"on e8", one_pawn, "4k3/8/8/4K3/4P3/8/8/r6R", 10},
    ValueRow{"on a8 against a7", one_pawn, "k7/P7/1K6/8/8/8/8/3r3R", 10},
    ValueRow{"on e7", one_pawn, "r7/4k3/8/8/4P3/4K3/8/7R", 15 - 5 + 12},
    ValueRow{"on e7, the other side to move", one_pawn, "r7/4k3/8/8/4P3/4K3/8/7R b - - 0 1", 15 - 5 + 12}),
    RowName<ValueRow>);

// Unless told, the pawn is on e6 and its king on e5: 15 - 3 + 20, and 13 more for a king outside the way of the pawn.
INSTANTIATE_TEST_SUITE_P(CutOff, EndingPieces, testing::Values(
    ValueRow{"not cut off", one_pawn, "8/7k/4P3/4K3/8/8/2r5/R7", 32 + 13},
    ValueRow{"by 3 files", one_pawn, "8/7k/4P3/4K3/8/8/2r5/5R2", 250 + 8 * 3},
    ValueRow{"by 3 files, the other side to move", one_pawn, "8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1", 250 + 8 * 3},
    ValueRow{"by 3 files from the g file", one_pawn, "8/7k/4P3/4K3/8/8/2r5/6R1", 250 + 8 * 3},
    ValueRow{"the rook on the king's file", one_pawn, "8/7k/4P3/4K3/8/8/2r5/7R b - - 0 1", 32 + 13},
    ValueRow{"the rook on the pawn's file", one_pawn, "8/7k/4P3/4K3/8/8/2r5/4R3", 32 + 13},
    ValueRow{"the enemy rook on its file", one_pawn, "5r2/7k/4P3/4K3/8/8/8/5R2", 32 + 13},
    ValueRow{"the own king on its file", one_pawn, "8/7k/4P3/5K2/8/8/2r5/5R2", 32 + 13},
    ValueRow{"by 3 files on the other side", one_pawn, "8/1k6/4P3/4K3/8/8/7r/3R4", 250 + 8 * 3},
    ValueRow{"the rook is not between them", one_pawn, "8/1k6/4P3/4K3/8/8/7r/5R2", 32 + 13},
    ValueRow{"by 5 files", one_pawn, "8/6k1/1P6/1K6/8/8/7r/3R4", 250 + 8 * 5},
    ValueRow{"by 7 files", one_pawn, "8/7k/P7/K7/8/8/6r1/3R4", 250 + 8 * 7},
    ValueRow{"by 2 files", one_pawn, "8/6k1/4P3/4K3/8/8/2r5/5R2", 32 + 32 * (2 + 5 - 6) + 45},
    ValueRow{"by 2 files on the other side", one_pawn, "8/2k5/4P3/4K3/8/8/7r/3R4", 32 + 32 * (2 + 5 - 6) + 45},
    ValueRow{"e7 by 2 files", one_pawn, "8/4P1k1/4K3/8/2r5/8/8/5R2", 15 - 2 + 24 + 32 * (2 + 6 - 6) + 45},
    ValueRow{"by 3 files on the fifth rank", one_pawn, "8/7k/8/4P3/4K3/8/2r5/5R2", 15 - 2 + 16 + 32 * (3 + 4 - 6) + 45},
    ValueRow{"h5 by 3 files", one_pawn, "8/4k3/8/7P/7K/8/2r5/6R1", 15 - 5 + 16 + 32 * (3 + 4 - 6) + 45},
    ValueRow{"a6 by 3 files", one_pawn, "8/3k4/P7/K7/8/8/6r1/1R6", 250 + 8 * 3}), RowName<ValueRow>);

// The rook belongs on the fourth rank; each rank off it costs 8.
INSTANTIATE_TEST_SUITE_P(Bridge, EndingPieces, testing::Values(
    ValueRow{"on the first rank", one_pawn, "2K5/2P2k2/8/8/8/1r6/8/4R3", 350 + 12 - 24},
    ValueRow{"on the fourth rank", one_pawn, "2K5/2P2k2/8/8/4R3/1r6/8/8", 350 + 12},
    ValueRow{"on the fifth rank", one_pawn, "2K5/2P2k2/8/4R3/8/1r6/8/8", 350 + 12 - 8},
    ValueRow{"on the eighth rank", one_pawn, "2K1R3/2P2k2/8/8/8/1r6/8/8", 350 + 12 - 32},
    ValueRow{"the enemy rook on the other side", one_pawn, "2K5/2P2k2/8/8/8/3r4/8/4R3", 350 + 12 - 24},
    ValueRow{"by 2 files, b7", one_pawn, "1K6/1P1k4/8/8/8/r7/8/2R5", 350 + 8 - 24},
    ValueRow{"by 2 files, g7", one_pawn, "6K1/4k1P1/8/8/8/7r/8/5R2", 350 + 8 - 24},
    ValueRow{"not on a7", one_pawn, "K7/P2k4/8/8/8/1r6/8/2R5", 250 + 24},
    ValueRow{"not on h7", one_pawn, "7K/4k2P/8/8/8/6r1/8/5R2", 250 + 24},
    ValueRow{"the king beside the square", one_pawn, "3K4/2P2k2/8/8/8/1r6/8/4R3", 250 + 24},
    ValueRow{"the enemy rook 2 files away", one_pawn, "2K5/2P1k3/8/8/8/r7/8/3R4", 15 - 5 + 24 + 64 + 45 + 220},
    ValueRow{"the enemy rook on the pawn's file", one_pawn, "2K5/2P1k3/8/8/8/2r5/8/3R4", 15 - 5 + 24 + 64 + 45 + 220},
    ValueRow{"the pawn on c6", one_pawn, "2K5/4k3/2P5/8/8/1r6/8/3R4", 15 - 5 + 20 + 32 + 45 + 220}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(OwnerInFront, EndingPieces, testing::Values(
    ValueRow{"the defender above the pawn", one_pawn, "8/8/4K2k/8/4P3/8/2r5/R7", 15 - 4 + 12 - 96 + 45 + 60},
    ValueRow{"the defender beside it", one_pawn, "8/8/4K3/8/4P2k/8/2r5/R7", 15 - 4 + 12 - 96 + 45 + 60},
    ValueRow{"the defender 1 rank below", one_pawn, "8/8/4K3/8/4P3/7k/2r5/R7", 15 - 4 + 12 - 96 + 45 + 220},
    ValueRow{"the defender 4 ranks below", one_pawn, "8/4K3/8/4P3/8/R7/2r5/7k", 15 - 5 + 16 - 64 + 45 + 4 * 32 + 100},
    ValueRow{"the defender 5 ranks below", one_pawn, "8/4K3/4P3/8/8/R7/2r5/7k", 15 - 5 + 20 - 32 + 45 + 5 * 32 + 100},
    ValueRow{"both kings in front", one_pawn, "8/5k2/3K4/8/4P3/8/8/r6R", 15 - 5 + 12 + 60},
    ValueRow{"the defender cut off", one_pawn, "8/8/4K2k/8/4P3/8/2r5/6R1", 15 - 4 + 12 + 0 + 45 + 220},
    ValueRow{"never below zero", one_pawn, "r6k/8/8/8/8/4K3/4P3/R7", 0}), RowName<ValueRow>);

// The pawn on e7 and the defender beside its way: 15 + 24 + 45, less the distance between the rook and the owner's king.
INSTANTIATE_TEST_SUITE_P(RookBetween, EndingPieces, testing::Values(
    ValueRow{"between, 2 files", one_pawn, "8/2k1P3/8/6K1/8/5r2/8/R7", 84 - 2 - 16 - 16},
    ValueRow{"between, 3 files", one_pawn, "8/2k1P3/8/7K/8/5r2/8/R7", 84 - 2 - 24 - 16},
    ValueRow{"between, 2 files on the other side", one_pawn, "8/4P1k1/8/2K5/8/3r4/8/7R", 84 - 2 - 16 - 16},
    ValueRow{"between, 3 files on the other side", one_pawn, "8/4P1k1/8/1K6/8/2r5/8/7R", 84 - 2 - 24 - 16},
    ValueRow{"not alone on its file", one_pawn, "8/2k1P3/8/6K1/8/5r2/8/5R2", 84 - 2},
    ValueRow{"on the king's file", one_pawn, "8/2k1P3/8/6K1/8/6r1/8/R7", 84 - 2},
    ValueRow{"on the pawn's file", one_pawn, "8/2k1P3/8/6K1/8/4r3/8/R7", 84 - 2},
    ValueRow{"beyond the pawn", one_pawn, "8/2k1P3/8/6K1/8/3r4/8/R7", 84 - 3},
    ValueRow{"beyond the king", one_pawn, "8/2k1P3/8/6K1/8/7r/8/R7", 84 - 2},
    ValueRow{"beyond the king on the other side", one_pawn, "8/4P1k1/8/2K5/8/1r6/8/7R", 84 - 2},
    ValueRow{"beyond the pawn on the other side", one_pawn, "8/4P1k1/8/2K5/8/5r2/8/7R", 84 - 3},
    ValueRow{"beyond, the defender 1 rank below", one_pawn, "8/4P3/2k5/6K1/8/7r/8/R7", 84 - 2 + 8},
    ValueRow{"beyond, the defender 6 ranks below", one_pawn, "8/4P3/8/6K1/8/R6r/8/2k5", 84 - 2 + 48},
    ValueRow{"between, the defender 1 rank below", one_pawn, "8/4P3/2k5/6K1/8/5r2/8/R7", 84 - 2 - 16 - 16},
    ValueRow{"not alone, the defender 1 rank below", one_pawn, "8/4P3/2k5/6K1/8/5r2/8/5R2", 84 - 2 + 8},
    ValueRow{"between, hardly above zero", one_pawn, "8/4k3/4P3/6K1/8/5r2/8/7R", 15 - 2 + 20 - 16 - 16},
    ValueRow{"between, never below zero", one_pawn, "8/4k3/4P3/6K1/8/8/8/5r1R", 0},
    ValueRow{"beyond, never below zero", one_pawn, "r7/8/7k/8/4P3/4K3/8/1R6", 0}), RowName<ValueRow>);

// --- More pawns, more rooks ---

INSTANTIATE_TEST_SUITE_P(TiedRooks, EndingPieces, testing::Values(
    ValueRow{"tied to b3", ties, "1r4k1/6pp/8/8/8/1P6/6PP/1R4K1", -30},
    ValueRow{"tied, the other side to move", ties, "1r4k1/6pp/8/8/8/1P6/6PP/1R4K1 b - - 0 1", -30},
    ValueRow{"not attacked", ties, "r5k1/6pp/8/8/8/1P6/6PP/1R4K1", 0},
    ValueRow{"not protected", ties, "1r4k1/6pp/8/8/8/1P6/6PP/R5K1", 0},
    ValueRow{"protected by a pawn", ties, "1r4k1/6pp/8/8/8/1P6/P5PP/1R4K1", 0},
    ValueRow{"beside the king", ties, "1r4k1/6pp/8/8/8/1P6/2K3PP/1R6", 0},
    ValueRow{"2 away from the king", ties, "1r4k1/6pp/8/8/8/1P6/6PP/1RK5", -30},
    ValueRow{"two pawns", ties, "6k1/6pp/8/8/1P3r2/8/1R3P2/7K", -60},
    ValueRow{"a pawn between", ties, "1r4k1/6pp/8/1p6/8/1P6/6PP/1R4K1", 0},
    ValueRow{"two rooks behind", ties, "1r4k1/r5pp/8/8/8/1P6/1R4PP/1R4K1", -30},
    ValueRow{"tied on both sides", ties, "1r2k2r/8/7p/8/1P6/8/8/1R1K3R", 0}), RowName<ValueRow>);

// A rook is worth 85 less 12 for every two pawns; a file without own pawns counts the more the fewer of them there are.
// A lone enemy pawn on a7 is isolated and adds 4.
INSTANTIATE_TEST_SUITE_P(RooksOnFiles, EndingPieces, testing::Values(
    ValueRow{"no rook", all_rooks, "4k3/p7/8/8/8/8/8/4K3", 0},
    ValueRow{"free, 1 file", all_rooks, "4k3/8/8/8/8/8/1PPPPPPP/R3K3", 85 - 36 + 18 + 12},
    ValueRow{"free, 2 files", all_rooks, "4k3/8/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 14},
    ValueRow{"free, 3 files", all_rooks, "4k3/8/8/8/8/8/3PPPPP/R3K3", 85 - 24 + 12},
    ValueRow{"free, 4 files", all_rooks, "4k3/8/8/8/8/8/4PPPP/R3K3", 85 - 24 + 10},
    ValueRow{"free, 5 files", all_rooks, "4k3/8/8/8/8/8/5PPP/R3K3", 85 - 12 + 9},
    ValueRow{"free, 6 files", all_rooks, "4k3/8/8/8/8/8/6PP/R3K3", 85 - 12 + 8},
    ValueRow{"free, 7 files", all_rooks, "4k3/8/8/8/8/8/7P/R3K3", 85 + 7},
    ValueRow{"free, 8 files", all_rooks, "4k3/8/8/8/8/8/8/R3K3", 85 + 7},
    ValueRow{"the only file without any pawn", all_rooks, "4k3/1p6/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 14 + 12 + 4},
    ValueRow{"half-free, 1 file", all_rooks, "4k3/p7/8/8/8/8/1PPPPPPP/R3K3", 85 - 48 + 12 + 4},
    ValueRow{"half-free, 2 files", all_rooks, "4k3/p7/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 9 + 4},
    ValueRow{"half-free, 3 files", all_rooks, "4k3/p7/8/8/8/8/3PPPPP/R3K3", 85 - 36 + 7 + 4},
    ValueRow{"half-free, 4 files", all_rooks, "4k3/p7/8/8/8/8/4PPPP/R3K3", 85 - 24 + 6 + 4},
    ValueRow{"half-free, 5 files", all_rooks, "4k3/p7/8/8/8/8/5PPP/R3K3", 85 - 24 + 5 + 4},
    ValueRow{"half-free, 6 files", all_rooks, "4k3/p7/8/8/8/8/6PP/R3K3", 85 - 12 + 5 + 4},
    ValueRow{"half-free, 7 files", all_rooks, "4k3/p7/8/8/8/8/7P/R3K3", 85 - 12 + 4 + 4},
    ValueRow{"half-free, 8 files", all_rooks, "4k3/p7/8/8/8/8/8/R3K3", 85 + 4 + 4},
    ValueRow{"16 pawns", all_rooks, "4k3/pppppppp/8/8/8/8/PPPPPPPP/R3K3", 85 - 96},
    ValueRow{"15 pawns", all_rooks, "4k3/1ppppppp/8/8/8/8/PPPPPPPP/R3K3", 85 - 84},
    ValueRow{"18 pawns", all_rooks, "4k3/pppppppp/p7/8/8/P7/PPPPPPPP/R3K3", 85 - 96},
    ValueRow{"doubled isolated pawns both count", all_rooks, "4k3/8/p7/p7/8/8/8/4K2R", 85 - 12 + 7 + 8},
    ValueRow{"neighbours are not isolated", all_rooks, "4k3/8/pp6/8/8/8/8/4K2R", 85 - 12 + 7},
    ValueRow{"isolated pawns count once", all_rooks, "4k3/8/p7/8/8/8/8/R3K2R", 85 + 4 + 85 + 7 + 4},
    ValueRow{"own isolated pawns do not count", all_rooks, "4k3/8/8/8/8/8/P7/4K2R", 85 + 7}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(RooksTogether, EndingPieces, testing::Values(
    ValueRow{"side by side", all_rooks, "4k3/8/8/8/8/8/8/RR2K3", 2 * 92 + 4},
    ValueRow{"on one file", all_rooks, "4k3/8/8/R7/8/8/8/R3K3", 2 * 92 + 4},
    ValueRow{"the king between", all_rooks, "4k3/8/8/8/8/8/8/1R1K1R2", 2 * 92},
    ValueRow{"three in a row", all_rooks, "4k3/8/8/8/8/8/8/RRR1K3", 3 * 92 + 2 * 4},
    ValueRow{"three around a corner, which comes last", all_rooks, "4k3/8/8/8/8/8/R7/RR2K3", 3 * 92 + 2 * 4},
    ValueRow{"against a queen", all_rooks, "4k3/8/8/8/8/8/2q5/RR2K3", 2 * 92 + 12},
    ValueRow{"queen against queen", all_rooks, "4k3/8/8/8/8/8/2q5/RR2K2Q", 2 * 92 + 4},
    ValueRow{"against queen and rook", all_rooks, "4k2r/8/8/8/8/8/2q5/RR2K3", 2 * 92 + 4},
    ValueRow{"seventh rank, king on the eighth", all_rooks, "4k3/RR6/8/8/8/8/8/4K3", 2 * (92 + 50) + 25},
    ValueRow{"seventh rank, king on the seventh", all_rooks, "8/RR2k3/8/8/8/8/8/4K3 b - - 0 1", 2 * (92 + 50) + 25},
    ValueRow{"seventh rank, king on the sixth", all_rooks, "8/RR6/4k3/8/8/8/8/4K3", 2 * 92 + 4},
    ValueRow{"seventh rank against a queen", all_rooks, "4k3/RR6/8/8/8/8/2q5/4K3", 2 * (92 + 50) + 25},
    ValueRow{"seventh rank, king out, against a queen", all_rooks, "8/RR6/4k3/8/8/8/2q5/4K3", 2 * 92 + 12},
    ValueRow{"one on the seventh rank", all_rooks, "4k3/R7/8/8/8/8/8/R3K3", 2 * 92 + 50 + 4},
    ValueRow{"seventh rank and sixth", all_rooks, "4k3/R7/R7/8/8/8/8/4K3", 2 * 92 + 50 + 4},
    ValueRow{"seventh rank and eighth", all_rooks, "R3k3/R7/8/8/8/8/8/4K3 b - - 0 1", 2 * 92 + 50 + 4},
    ValueRow{"one on the eighth rank", all_rooks, "R7/8/3k4/8/8/8/8/4K3", 92}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(RooksTiedDown, EndingPieces, testing::Values(
    ValueRow{"one pawn", all_rooks, "1r2k3/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"no rook behind it", all_rooks, "r3k3/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"a queen behind it", all_rooks, "1q2k3/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"not attacked", all_rooks, "1r2k3/1p6/8/8/8/8/8/2R1K3", 85 + 7 + 4},
    ValueRow{"on the sixth rank", all_rooks, "4k3/1r6/1p6/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"two pawns", all_rooks, "1r1r3k/1pRp4/8/8/8/8/8/4K3", 85 - 12 + 7 + 50 + 60 + 8},
    ValueRow{"beside a king on the sixth rank", all_rooks, "1r6/1p6/k7/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"away from a king on the sixth rank", all_rooks, "1r6/1p6/3k4/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"beside a king on the seventh rank", all_rooks, "1r6/kp6/8/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"beside a king on the eighth rank", all_rooks, "kr6/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"by two rooks", all_rooks, "1r2k3/Rp6/8/8/8/8/8/1R2K3", (85 + 4 + 30) + (85 + 7 + 50 + 30) + 4}),
    RowName<ValueRow>);

// --- Scaling ---

INSTANTIATE_TEST_SUITE_P(FewPawns, EndingPieces, testing::Values(
    ValueRow{"an even score", scaled<0>, "4k3/8/8/8/8/8/8/4K3", 0},
    ValueRow{"no pawn, 66", scaled<66>, "4k3/8/8/8/8/8/8/4K3", 16},
    ValueRow{"no pawn, 68", scaled<68>, "4k3/8/8/8/8/8/8/4K3", 18},
    ValueRow{"one pawn, 65", scaled<65>, "4k3/8/8/8/8/8/P7/4K3", 32},
    ValueRow{"one pawn, 100", scaled<100>, "4k3/8/8/8/8/8/P7/4K3", 50},
    ValueRow{"one pawn, 102", scaled<102>, "4k3/8/8/8/8/8/P7/4K3", 52},
    ValueRow{"two pawns, 80", scaled<80>, "4k3/8/8/8/8/8/PP6/4K3", 50},
    ValueRow{"two pawns, 136", scaled<136>, "4k3/8/8/8/8/8/PP6/4K3", 86},
    ValueRow{"three pawns, 80", scaled<80>, "4k3/8/8/8/8/8/PPP5/4K3", 60},
    ValueRow{"three pawns, 204", scaled<204>, "4k3/8/8/8/8/8/PPP5/4K3", 154},
    ValueRow{"four pawns, 80", scaled<80>, "4k3/8/8/8/8/8/PPPP4/4K3", 70},
    ValueRow{"four pawns, 408", scaled<408>, "4k3/8/8/8/8/8/PPPP4/4K3", 358},
    ValueRow{"five pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPP3/4K3", 80},
    ValueRow{"six pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPPP2/4K3", 90},
    ValueRow{"seven pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPPPP1/4K3", 90},
    ValueRow{"eight pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPPPPP/4K3", 90},
    ValueRow{"eight pawns on one wing", scaled<80>, "4k3/8/8/8/8/PPPP4/PPPP4/4K3", 90},
    ValueRow{"nine pawns, the a file alone on its wing", scaled<84>, "4k3/8/8/8/8/P2PP3/P2PPPPP/4K3", 94},
    ValueRow{"nine pawns, the c file alone on its wing", scaled<84>, "4k3/8/8/8/8/2PPP3/2PPPPPP/4K3", 94},
    ValueRow{"nine pawns, the f file alone on its wing", scaled<84>, "4k3/8/8/8/8/PPP5/PPPPPP2/4K3", 94},
    ValueRow{"nine pawns, the h file alone on its wing", scaled<84>, "4k3/8/8/8/8/PPP5/PPPPP2P/4K3", 94},
    ValueRow{"nine pawns, none on files a to c", scaled<84>, "4k3/8/8/8/8/3PPPP1/3PPPPP/4K3", 84},
    ValueRow{"nine pawns on one wing", scaled<80>, "4k3/8/8/8/8/PPPP4/PPPPP3/4K3", 80},
    ValueRow{"nine pawns on both wings", scaled<84>, "4k3/8/8/8/8/P7/PPPPPPPP/4K3", 94},
    ValueRow{"the loser's pawns do not count", scaled<-80>, "4k3/p7/8/8/8/8/PPPP4/4K3", -40}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(OppositeBishops, EndingPieces, testing::Values(
    ValueRow{"same colour", scaled<80>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 80},
    ValueRow{"with rooks", scaled<83, true>, "r1b1k3/8/8/8/8/8/PPPPP3/R1B1K3", 62},
    ValueRow{"with rooks, 1008", scaled<1008, true>, "r1b1k3/8/8/8/8/8/PPPPP3/R1B1K3", 758},
    ValueRow{"no target", scaled<83, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 15},
    ValueRow{"one target", scaled<83, true>, "2b1k3/p7/8/8/8/8/PPPPP3/2B1K3", 31},
    ValueRow{"one pawn of the wrong colour", scaled<83, true>, "2b1k3/1p6/8/8/8/8/PPPPP3/2B1K3", 15},
    ValueRow{"one target for a light bishop", scaled<83, true>, "4kb2/1p6/8/8/8/8/PPPPP3/4KB2", 31},
    ValueRow{"own pawns are no targets", scaled<83, true>, "4kb2/p7/8/8/8/8/PPPPP3/4KB2", 15},
    ValueRow{"two targets", scaled<83, true>, "2b1k3/p1p5/8/8/8/8/PPPPP3/2B1K3", 38},
    ValueRow{"three targets", scaled<83, true>, "2b1k3/p1p1p3/8/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"four targets", scaled<83, true>, "2b1k3/p1p1p1p1/8/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"five targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p6/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"six targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p1p4/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"seven targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p1p1p2/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"eight targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p1p1p1p/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"not more than 250", scaled<316, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 66},
    ValueRow{"first by pawns, then by bishops", scaled<80, true>, "2b1k3/8/8/8/8/8/P7/2B1K3", 7}), RowName<ValueRow>);
// clang-format on

// --- Whole tables ---

using Board64 = std::array<int, 64>;
/// Rank 8 first.
int At(const Board64& seen_from_white, Square s) {
    return seen_from_white.at(static_cast<std::size_t>(MirrorVertically(s)));
}

// clang-format off
constexpr Board64 centre_of_board{
    -80, -68, -56, -44, -44, -56, -68, -80,
    -68, -12,  -4,   4,   4,  -4, -12, -68,
    -56,  -4,  14,  24,  24,  14,  -4, -56,
    -44,   4,  24,  44,  44,  24,   4, -44,
    -44,   4,  24,  44,  44,  24,   4, -44,
    -56,  -4,  14,  24,  24,  14,  -4, -56,
    -68, -12,  -4,   4,   4,  -4, -12, -68,
    -80, -68, -56, -44, -44, -56, -68, -80};
constexpr Board64 dark_corners{
    -60, -40,   2,  18,  40,  70, 110, 120,
    -40, -34, -10,  12,  26,  50,  90, 110,
      2, -10, -30, -20, -10,  36,  50,  70,
     18,  12, -20, -52, -52, -10,  26,  40,
     40,  26, -10, -52, -52, -20,  12,  18,
     70,  50,  36, -10, -20, -30, -10,   2,
    110,  90,  50,  26,  12, -10, -34, -40,
    120, 110,  70,  40,  18,   2, -40, -60};
// clang-format on

int Files(Square a, Square b) { return std::abs(FileOf(a) - FileOf(b)); }
int Ranks(Square a, Square b) { return std::abs(RankOf(a) - RankOf(b)); }
int Steps(Square a, Square b) { return std::max(Files(a, b), Ranks(a, b)); }

constexpr std::int8_t knight_code = 2, bishop_code = 3, rook_code = 4, king_code = 6;

/// The losing side, Black, to move: the score that White sees.
struct Placement {
    std::int8_t squares[64] = {};
    void Put(std::int8_t code, Square s) { squares[s] = code; }
    [[nodiscard]] int Score() const {
        BOARD board;
        EXPECT_TRUE(board.SetPosition(squares, 1, 0, 0));
        EVALUATION_CONTEXT context;
        return -evaluate_pawnless(context, board);
    }
};

/// The first of these squares that is at least `steps` away from `s`.
Square Away(Square s, int steps, std::initializer_list<SquareName> squares) {
    return *std::find_if(squares.begin(), squares.end(), [&](Square t) { return Steps(s, t) >= steps; });
}

TEST(EndingPieces, EverySquareOfTheLosingKing) {
    for (Square s = a1; s <= h8; ++s) {
        const Square winner = Away(s, 2, {a1, h8});
        Placement placement;
        placement.Put(-king_code, s);
        placement.Put(king_code, winner);
        placement.Put(rook_code, Away(s, 2, {h1, a8}));
        EXPECT_EQ(placement.Score(),
                  500 - 120 + 656 - At(centre_of_board, s) - 4 * (Files(s, winner) + Ranks(s, winner)) + 6)
            << SquareToString(s);
    }
}

TEST(EndingPieces, EverySquareOfTheWinningKing) {
    for (Square s = a1; s <= h8; ++s) {
        const Square loser = Away(s, 3, {a1, h8});
        Placement placement;
        placement.Put(king_code, s);
        placement.Put(-king_code, loser);
        placement.Put(rook_code, s == h1 ? a8 : h1);
        EXPECT_EQ(placement.Score(),
                  500 + 3 * At(centre_of_board, s) / 2 + 656 + 80 - 4 * (Files(s, loser) + Ranks(s, loser)) + 6)
            << SquareToString(s);
    }
}

TEST(EndingPieces, EveryWayToTheRightCorner) {
    for (Square s = a1; s <= h8; ++s) {
        const Square winner = Away(s, 2, {c3, f6});
        for (const Square bishop : {a1, b1}) {
            const Square from = bishop == a1 ? (s == a1 ? h8 : a1) : (s == b1 ? g8 : b1);
            Placement placement;
            placement.Put(king_code, winner);
            placement.Put(-king_code, s);
            placement.Put(bishop_code, from);
            placement.Put(knight_code, s == e1 ? e8 : e1);
            EXPECT_EQ(placement.Score(), 1000 - At(centre_of_board, s) - 4 * (Files(s, winner) + Ranks(s, winner)) +
                                             At(dark_corners, bishop == a1 ? s : MirrorVertically(s)) + 6)
                << SquareToString(s) << " bishop on " << SquareToString(from);
        }
    }
}

TEST(EndingPieces, TheWinningKingAvoidsTheCorners) {
    for (Square s = a1; s <= h8; ++s) {
        const Square loser = Away(s, 2, {e5, d4, a4});
        Placement placement;
        placement.Put(king_code, s);
        placement.Put(-king_code, loser);
        placement.Put(bishop_code, s == c1 ? e3 : c1);
        placement.Put(knight_code, s == e1 ? e8 : e1);
        const bool is_corner = (FileOf(s) < 2 || FileOf(s) > 5) && (RankOf(s) < 2 || RankOf(s) > 5);
        EXPECT_EQ(placement.Score(), 1000 - At(centre_of_board, loser) - 4 * (Files(s, loser) + Ranks(s, loser)) -
                                         (is_corner ? 100 : 0) + At(dark_corners, loser) + 6)
            << SquareToString(s);
    }
}

// --- Where the rules begin and end ---

TEST(EndingPieces, TheWrongBishopNeedsABishopWithPawnsAgainstABareKing) {
    for (const char* const fen :
         {"k7/8/8/8/8/8/8/2B1K3 w - - 0 1", "k7/8/8/8/8/8/P7/2N1K3 w - - 0 1", "k7/8/8/8/8/8/P7/4K3 w - - 0 1",
          "k1b5/8/8/8/8/8/P7/4K3 w - - 0 1", "k7/7p/8/8/8/8/P7/2B1K3 w - - 0 1", "k7/8/8/8/8/8/P7/BB2K3 w - - 0 1",
          "k1n5/8/8/8/8/8/P7/2B1K3 w - - 0 1", "k7/8/8/8/8/8/P7/2R1K3 w - - 0 1"}) {
        const BOARD board = BoardFromFen(fen);
        EVALUATION_CONTEXT context;
        EXPECT_FALSE(wrong_bishop_rule(context, board).has_value()) << fen;
        EXPECT_FALSE(wrong_bishop_rule(context, WithColoursExchanged(board)).has_value()) << fen;
    }
}

TEST(EndingPieces, TheWrongBishopIsFinal) {
    EvaluationBuilder dead("k7/8/8/8/8/8/P7/2B1K3 b - - 0 1");
    EXPECT_EQ(dead.Score(), 0);
    EvaluationBuilder late("7k/8/8/8/8/8/P7/2B1K3 b - - 0 1");
    EXPECT_EQ(late.Score(), -425);
    for (const int bound : {-20000, -425, 20000}) {
        EvaluationBuilder builder("7k/8/8/8/8/8/P7/2B1K3 b - - 0 1");
        EXPECT_EQ(builder.Ask(bound), -425) << "no bound is too far away";
    }
}

TEST(EndingPieces, AMateIsScoredAtAnyBound) {
    for (const int bound : {-20000, 0, 20000}) {
        EvaluationBuilder builder("4k3/8/8/8/3K4/8/P7/7R b - - 0 1");
        EXPECT_EQ(builder.Type(), 16);
        EXPECT_EQ(builder.Ask(bound), -1352);
    }
}

TEST(EndingPieces, ASinglePawnIsScoredAtAnyBound) {
    for (const int bound : {-20000, 0, 20000}) {
        EvaluationBuilder builder("8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1");
        EXPECT_EQ(builder.Type(), 3);
        EXPECT_EQ(builder.Ask(bound), -274);
    }
}

TEST(EndingPieces, ARookEndingStopsWhereAPlainEndingDoes) {
    // The tied rook counts 30 against White, who is to move.
    constexpr std::string_view fen = "1r4k1/6pp/8/8/8/1P6/6PP/1R4K1 w - - 0 1";
    for (const int bound : {-5000, 5000}) {
        EvaluationBuilder builder(fen);
        EXPECT_EQ(builder.Ask(bound), bound < 0 ? bound : bound - 1);
    }
}

TEST(EndingPieces, RooksAttackAlongTheirLines) {
    EvaluationBuilder builder("4k3/8/8/3n4/8/8/3R4/4K3 w - - 0 1");
    builder.PrepareTerms();
    static_cast<void>(rooks_ending<white>(builder.context, builder.board));
    const Bitboard attacks = builder.context.attacks[white];
    for (const Square s : {d1, d3, d4, d5, a2, h2}) EXPECT_TRUE(Has(attacks, s)) << SquareToString(s);
    for (const Square s : {d6, c3, a1}) EXPECT_FALSE(Has(attacks, s)) << SquareToString(s);
}

}  // namespace
