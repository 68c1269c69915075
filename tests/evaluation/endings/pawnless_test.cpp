#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>

#include "chess/bits.h"
#include "chess/notation.h"
#include "evaluation/endings/pawnless.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// No pawns, or none on the side that is far behind. Every sum is written in the order in which its parts are told:
/// material, kings, pieces, the side to move.

namespace {

using namespace sided;

class PawnlessEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(PawnlessEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, PawnlessEndings, testing::Values(
    ValueRow{"queen", pawnless_endings, "7k/8/5K2/8/8/8/8/Q7", 1020 + 21 + 650 - 6 + 6 + 80 - 16 + 6},
    ValueRow{"rook", pawnless_endings, "7k/8/5K2/8/8/8/8/R7", 500 + 21 + 650 + 6 + 80 - 16 + 6},
    ValueRow{"rook, king on the rim", pawnless_endings, "4k3/8/4K3/8/8/8/8/R7", 500 + 40 + 650 + 6 + 44 - 8 + 6},
    ValueRow{"rook, the bare king to move", pawnless_endings, "7k/8/5K2/8/8/8/8/R7 b - - 0 1", 1247},
    ValueRow{"bishop and knight, the right corner", pawnless_endings, "k7/8/1K6/8/8/8/8/2NB4", 1000 + 80 - 12 + 120 + 6},
    ValueRow{"bishop and knight, the wrong corner", pawnless_endings, "k7/8/1K6/8/8/8/8/1NB5", 1000 + 80 - 12 - 60 + 6},
    ValueRow{"bishop and knight, the king in a corner", pawnless_endings, "8/8/8/8/3k4/8/8/K1NB4", 1000 - 44 - 24 - 100 - 52 + 6},
    ValueRow{"bishop", pawnless_endings, "7k/8/5K2/8/8/8/8/1B6", 78 + 14 + 40 - 6 + 10 + 4},
    ValueRow{"knight", pawnless_endings, "7k/8/5K2/8/8/8/8/1N6", 76 + 14 + 40 - 12 + 10 + 4},
    ValueRow{"even rooks, one king on the rim", pawnless_endings, "4k3/8/4K3/8/8/8/r7/7R", 20 + 6 - (-3 + 6) + 3},
    ValueRow{"even knights", pawnless_endings, "4k3/8/8/3n4/3N4/8/8/4K3", 3}),
    RowName<ValueRow>);

// Each king pays an eighth of the worth of the enemy king's square; 3 are for the side to move.
INSTANTIATE_TEST_SUITE_P(EvenKings, PawnlessEndings, testing::Values(
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
INSTANTIATE_TEST_SUITE_P(EvenPieces, PawnlessEndings, testing::Values(
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

// The winning king gets three halves of its square, the losing one pays for its own and each step between them costs 4:
// on d4 and e8 that is 66 + 44 - 20.
INSTANTIATE_TEST_SUITE_P(Mates, PawnlessEndings, testing::Values(
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

INSTANTIATE_TEST_SUITE_P(MatesWithPawns, PawnlessEndings, testing::Values(
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
INSTANTIATE_TEST_SUITE_P(BishopAndKnight, PawnlessEndings, testing::Values(
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

INSTANTIATE_TEST_SUITE_P(SmallLeads, PawnlessEndings, testing::Values(
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

TEST(PawnlessTables, EverySquareOfTheLosingKing) {
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

TEST(PawnlessTables, EverySquareOfTheWinningKing) {
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

TEST(PawnlessTables, EveryWayToTheRightCorner) {
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

TEST(PawnlessTables, TheWinningKingAvoidsTheCorners) {
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

TEST(PawnlessRule, AMateIsScoredAtAnyBound) {
    for (const int bound : {-20000, 0, 20000}) {
        EvaluationBuilder builder("4k3/8/8/8/3K4/8/P7/7R b - - 0 1");
        EXPECT_EQ(builder.Type(), 16);
        EXPECT_EQ(builder.Ask(bound), -1352);
    }
}

TEST(PawnlessRule, ABareKingIsDrivenToTheRim) {
    const auto score = [](std::string_view fen) {
        EVALUATION_CONTEXT context;
        return evaluate_pawnless(context, BoardFromFen(std::string(fen)));
    };
    EXPECT_GT(score("7k/8/5K2/8/8/8/8/Q7 w - - 0 1"), score("8/8/3k4/8/3K4/8/8/Q7 w - - 0 1"));
    EXPECT_GT(score("7k/8/5K2/8/8/8/8/R7 w - - 0 1"), score("8/8/3k4/8/3K4/8/8/R7 w - - 0 1"));
    EXPECT_GT(score("k7/8/1K6/8/8/8/8/2NB4 w - - 0 1"), score("7k/8/6K1/8/8/8/8/2NB4 w - - 0 1")) << "a light corner";
    EXPECT_GT(score("7k/8/6K1/8/8/8/8/1N1B4 w - - 0 1"), 500);
}

}  // namespace
