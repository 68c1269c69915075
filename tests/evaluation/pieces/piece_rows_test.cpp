// Knights, bishops, rooks and queens of the opening and middle game: every square of their tables, every rule where it
// holds and where it just does not.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "support/row_name.h"
#include "support/term_rows.h"

namespace {

constexpr SidedTerm<SCORE_PAIR> early_knights{knights_opening<white>, knights_opening<black>};
constexpr SidedTerm<SCORE_PAIR> later_knights{knights_middle_game<white>, knights_middle_game<black>};
constexpr SidedTerm<SCORE_PAIR> ways_of_knights{knight_mobility<white>, knight_mobility<black>};
constexpr SidedTerm<SCORE_PAIR> of_bishops{bishops<white>, bishops<black>};
constexpr SidedTerm<SCORE_PAIR> of_rooks{rooks<white>, rooks<black>};
constexpr SidedTerm<SCORE_PAIR> early_queens{queens_opening<white>, queens_opening<black>};
constexpr SidedTerm<SCORE_PAIR> later_queens{queens_middle_game<white>, queens_middle_game<black>};

// --- Tables ---

/// As printed: a8 first.
using Printed = std::array<int, 64>;

int Entry(const Printed& board, Square s) { return board.at(static_cast<std::size_t>(s ^ 56)); }
int Distance(Square a, Square b) { return std::max(std::abs(a % 8 - b % 8), std::abs(a / 8 - b / 8)); }

std::string Placed(std::initializer_list<std::pair<Square, char>> men) {
    std::string text;
    for (int rank = 7; rank >= 0; --rank) {
        for (int file = 0; file < 8; ++file) {
            char man = '1';
            for (const auto& [square, letter] : men) {
                if (square == rank * 8 + file) man = letter;
            }
            text += man;
        }
        if (rank > 0) text += '/';
    }
    return text + " b - - 0 1";
}

/// A square for the own king where it never stands in the way: a knight's move off, towards the nearer rim.
Square KnightMoveFrom(Square s) {
    const int outward = s % 8 < 4 ? -1 : 1;
    for (const auto& [right, up] : {std::pair{outward, -2}, {-outward, -2}, {outward, 2}, {-outward, 2}}) {
        const int file = s % 8 + right;
        const int rank = s / 8 + up;
        if (file >= 0 && file < 8 && rank >= 0 && rank < 8) return rank * 8 + file;
    }
    return s;
}

std::string Word(std::string_view counter, int points) {
    return points == 0 ? "" : std::string(counter) + std::to_string(points) + " ";
}
std::string_view PressureThere(Square s) { return s % 8 < 3 ? "pq" : s % 8 < 5 ? "pc" : "pk"; }
std::string_view CoverThere(Square s) { return s % 8 < 3 ? "cq" : s % 8 < 5 ? "cc" : "ck"; }

// clang-format off
constexpr Printed knight_p0 = {
    -260, -40, -40, -40, -40, -40, -40, -260,
     -40,   0,  14,  18,  18,  14,   0,  -40,
     -19,   7,  18,  24,  24,  18,   7,  -19,
     -18,   6,  15,  22,  22,  15,   6,  -18,
     -18,   6,  14,  20,  20,  14,   6,  -18,
     -20,   4,  11,  10,  10,  12,   7,  -20,
     -22,  -8,   8,   9,   8,   8,  -8,  -22,
     -50, -20, -20, -20, -20, -20, -20,  -50};
constexpr Printed knight_r0 = {
    -260, -45, -45, -45, -45, -45, -45, -260,
     -45,  12,  26,  36,  36,  26,  12,  -45,
     -25,  26,  34,  42,  42,  34,  26,  -25,
     -25,  20,  32,  38,  38,  32,  20,  -25,
     -25,  20,  26,  34,  34,  26,  20,  -25,
     -29,  14,  18,  22,  22,  20,  14,  -29,
     -33,  -2,  10,  15,  14,  10,  -2,  -33,
     -71, -25, -25, -25, -25, -25, -25,  -71};
constexpr Printed knight_p1 = {
    -250, -40, -40, -40, -40, -40, -40, -250,
     -42,   8,  15,  16,  16,  15,   8,  -42,
     -20,  11,  20,  28,  28,  20,  11,  -20,
     -20,  12,  18,  26,  26,  18,  12,  -20,
     -20,  12,  18,  24,  24,  18,  12,  -20,
     -20,   9,  15,  18,  18,  15,  10,  -20,
     -22,  -8,   8,  10,  10,   8,  -8,  -22,
     -45, -20, -16, -14, -14, -12, -20,  -45};
constexpr Printed knight_r1 = {
    -250, -50, -50, -50, -50, -50, -50, -250,
     -54,  18,  28,  36,  36,  34,  28,  -54,
     -30,  30,  40,  48,  48,  40,  30,  -30,
     -30,  27,  38,  44,  44,  38,  27,  -30,
     -30,  26,  34,  40,  40,  34,  26,  -30,
     -34,  16,  24,  30,  30,  26,  16,  -34,
     -38,   8,  10,  16,  16,  10,   8,  -38,
     -65, -30, -26, -24, -24, -24, -30,  -65};
constexpr Printed knight_points = {
      -8,   4,   4,   5,   5,   4,   4,   -8,
      -4,   7,  10,  12,  12,  10,   7,   -4,
       4,   8,  10,  12,  12,  10,   8,    4,
       2,   7,   8,  10,  10,   8,   7,    2,
      -2,   6,   7,   8,   8,   7,   6,   -2,
      -5,   1,   4,   5,   5,   4,   1,   -5,
      -7,  -2,   0,   0,   0,   0,  -2,   -7,
     -13,  -7,  -7,  -7,  -7,  -7,  -7,  -13};

constexpr Printed bishop_p = {
     -15,  -4,  -4,  -4,  -4,  -4,  -4,  -15,
      -2,  -2,  -2,   0,   0,  -2,  -2,   -2,
       4,   8,  10,  12,  12,  10,   8,    4,
       4,  10,  10,  18,  18,  10,  10,    4,
       8,  10,  16,  18,  18,  16,  10,    8,
       6,  12,  15,  16,  16,  15,  12,    6,
       3,  20,  10,  14,  14,  10,  20,    3,
      -8,  -4,  -8,  -6,  -6,  -8,  -4,   -8};
constexpr Printed bishop_r = {
     -15,   0,   4,   6,   6,   4,   0,  -15,
       4,   8,  10,  16,  16,  10,   8,    4,
       8,  12,  16,  20,  20,  16,  12,    8,
      12,  16,  20,  24,  24,  20,  16,   12,
      12,  16,  26,  28,  28,  24,  16,   12,
      12,  16,  20,  24,  24,  20,  16,   12,
       6,  22,  12,  18,  18,  12,  22,    6,
     -12,  -2,  -4,  -2,  -2,  -4,  -2,  -12};
// What its squares are worth to a bishop on an empty board.
constexpr Printed bishop_ways_p = {
       1,  -1,  -2,  -2,  -2,  -2,  -1,   1,
      -1,   1,   1,   0,   0,   1,   1,  -1,
      -2,   0,   4,   3,   3,   4,   0,  -2,
      -3,  -1,   3,   7,   7,   3,  -1,  -3,
      -3,  -1,   2,   7,   7,   2,  -1,  -3,
      -2,   0,   3,   2,   2,   3,   0,  -2,
      -1,   1,   0,  -1,  -1,   0,   1,  -1,
       1,  -1,  -2,  -3,  -3,  -2,  -1,   1};
constexpr Printed bishop_ways_r = {
       8,   3,  -1,  -2,  -2,  -1,   3,   8,
       2,   9,   6,   4,   4,   6,   9,   2,
      -2,   5,  14,  12,  12,  14,   5,  -2,
      -3,   3,  13,  24,  24,  13,   3,  -3,
      -3,   3,  11,  23,  23,  11,   3,  -3,
      -1,   5,  13,  10,  10,  13,   5,  -1,
       3,   9,   4,   0,   0,   4,   9,   3,
       9,   2,  -4,  -6,  -6,  -4,   2,   9};

constexpr Printed queen_p0 = {
     -10, -10, -10, -10, -10, -10, -10, -10,
     -10, -23,   0,   0,   0,   0, -23, -10,
      -8,   0,   0,   0,   0,   0,   0,  -8,
       0,   0,   0,   0,   0,   0,   0,   0,
       2,   0,   0,   0,   0,   0,   0,   0,
       0,   2,   2,   1,   1,   2,   0,   0,
      -1,   0,   6,   6,   8,   4,   0,  -1,
      -8,  -7,  -7,   4,   0,  -7,  -7,  -8};
constexpr Printed queen_r0 = {
     -12, -10, -10, -10, -10, -10, -10, -12,
     -12, -18,   0,   0,   0,   0, -18, -12,
      -8,   0,   2,   5,   5,   2,   0,  -8,
       0,   0,   2,   4,   4,   2,   0,   0,
       2,   0,   2,   4,   4,   2,   0,   0,
       0,   4,   2,   2,   2,   2,   2,   0,
      -3,   0,   6,   6,   8,   4,   2,  -3,
     -12, -12, -12,   4,   2, -12, -12, -12};
constexpr Printed queen_p1 = {
      -4,  -4,   0,   0,   0,   0,  -4,  -4,
      -4,  -4,   1,   1,   1,   1,  -4,  -4,
       0,   1,   2,   2,   2,   2,   1,   0,
       1,   2,   3,   3,   3,   3,   2,   1,
       1,   2,   3,   4,   4,   3,   2,   1,
       0,   2,   3,   4,   4,   3,   2,   0,
      -1,   0,   6,   6,   6,   4,   0,  -1,
      -8,  -4,  -2,  -6,  -5,  -2,  -4,  -8};
constexpr Printed queen_r1 = {
      -6,  -6,   1,   1,   1,   1,  -6,  -6,
      -8,  -6,   1,   1,   1,   1,  -6,  -8,
       1,   1,   2,   4,   4,   2,   1,   1,
       1,   2,   2,   4,   4,   2,   2,   1,
       1,   2,   2,   4,   4,   2,   2,   1,
       0,   2,   3,   4,   4,   3,   2,   0,
      -3,   0,   6,   6,   6,   4,   0,  -3,
     -12, -12, -12,  -6,  -6, -12, -12, -12};
// clang-format on

/// The corner on the far half of the board.
Square FarCorner(Square s) { return s % 8 < 4 ? h8 : a8; }
std::string_view PressureInCorner(Square s) { return s % 8 < 4 ? "pk" : "pq"; }

TEST(PieceTables, OfOpeningKnights) {
    for (Square s = a1; s <= h8; ++s) {
        const std::string position = Placed({{s, 'N'}, {KnightMoveFrom(s), 'K'}, {FarCorner(s), 'k'}});
        const bool is_outpost = s / 8 > 2;
        const bool is_far_outpost = s / 8 > 3;
        const SCORE_PAIR pair{-30 + Entry(knight_p0, s) + (is_outpost ? 9 : 0),
                              -30 + Entry(knight_r0, s) + (is_outpost ? 14 : 0)};
        const std::string counters = Word(PressureThere(s), Entry(knight_points, s) + (is_far_outpost ? 4 : 0)) +
                                     Word(CoverThere(s), is_far_outpost ? 2 : 0);
        ExpectPair({"", early_knights, position, pair, counters});
    }
}

TEST(PieceTables, OfGameKnights) {
    for (Square s = a1; s <= h8; ++s) {
        const std::string position = Placed({{s, 'N'}, {KnightMoveFrom(s), 'K'}, {FarCorner(s), 'k'}});
        const bool is_outpost = s / 8 > 2;
        const bool is_far_outpost = s / 8 > 3;
        const int way = Distance(s, FarCorner(s));  // it is never on the wing of that king
        const SCORE_PAIR pair{-30 + Entry(knight_p1, s) + (is_outpost ? 13 : 0) - way,
                              -30 + Entry(knight_r1, s) + (is_outpost ? 23 : 0) - 5 - 8 * way};
        const std::string counters = Word(PressureThere(s), Entry(knight_points, s) + (is_far_outpost ? 4 : 0)) +
                                     Word(CoverThere(s), is_far_outpost ? 3 : 0);
        ExpectPair({"", later_knights, position, pair, counters});
    }
}

TEST(PieceTables, OfBishops) {
    for (Square s = a1; s <= h8; ++s) {
        const bool is_light = (s % 8 + s / 8) % 2 != 0;
        const std::string position =  // the kings on the other colour
            Placed({{s, 'B'}, {is_light ? a3 : a4, 'K'}, {is_light ? h8 : h7, 'k'}});
        const bool is_left = s == a1 || s == b2;
        const bool is_long = is_left || s == h1 || s == g2;
        const SCORE_PAIR pair{
            Entry(bishop_p, s) + Entry(bishop_ways_p, s) + (is_long ? -6 + 8 + 24 : 0),
            Entry(bishop_r, s) + Entry(bishop_ways_r, s) + (is_long ? -4 + 10 + 24 : 0),
        };
        ExpectPair({"", of_bishops, position, pair, !is_long ? "a-5" : is_left ? "cq3 pk6 a-5" : "ck3 pq6 a-5"});
    }
}

/// A king in the corner, walled in by its own men: no queen looks at a square beside it.
std::string WalledIn(Square queen) {
    const Square king = KnightMoveFrom(queen);
    return queen % 8 < 4 ? Placed({{queen, 'Q'},
                                   {king, 'K'},
                                   {h8, 'k'},
                                   {g8, 'n'},
                                   {h7, 'p'},
                                   {g7, 'p'},
                                   {f8, 'n'},
                                   {f7, 'p'},
                                   {f6, 'p'},
                                   {g6, 'p'},
                                   {h6, 'p'}})
                         : Placed({{queen, 'Q'},
                                   {king, 'K'},
                                   {a8, 'k'},
                                   {b8, 'n'},
                                   {a7, 'p'},
                                   {b7, 'p'},
                                   {c8, 'n'},
                                   {c7, 'p'},
                                   {c6, 'p'},
                                   {b6, 'p'},
                                   {a6, 'p'}});
}

TEST(PieceTables, OfOpeningQueens) {
    for (Square s = a1; s <= h8; ++s) {
        const bool is_out = s / 8 > 1;
        const bool is_on_seventh = s / 8 == 6;
        const SCORE_PAIR pair{Entry(queen_p0, s) - (is_out ? 5 : 0) + (is_on_seventh ? 10 : 0),
                              Entry(queen_r0, s) - (is_out ? 2 : 0) + (is_on_seventh ? 18 : 0)};
        std::string counters = PressureThere(s) == "pc" ? "pc16 " : "pc6 " + Word(PressureThere(s), 10);
        counters += Word(PressureInCorner(s), is_on_seventh ? 6 : 0);
        ExpectPair({"", early_queens, WalledIn(s), pair, counters});
    }
}

TEST(PieceTables, OfGameQueens) {
    constexpr std::array<int, 8> by_distance = {0, 18, 14, 12, 6, 2, 1, 0};
    for (Square s = a1; s <= h8; ++s) {
        const bool is_out = s / 8 > 1;
        const bool is_on_seventh = s / 8 == 6;
        const int way = Distance(s, FarCorner(s));
        const SCORE_PAIR pair{Entry(queen_p1, s) - (is_out ? 5 : 0) + (is_on_seventh ? 15 : 0) - way,
                              Entry(queen_r1, s) - (is_out ? 2 : 0) + (is_on_seventh ? 25 : 0) - 3 * way};
        std::string counters = PressureThere(s) == "pc" ? "pc18 " : "pc6 " + Word(PressureThere(s), 12);
        counters += Word(PressureInCorner(s), by_distance.at(static_cast<std::size_t>(way)) + (is_on_seventh ? 8 : 0));
        ExpectPair({"", later_queens, WalledIn(s), pair, counters});
    }
}

// --- Rules ---

class PieceRows : public testing::TestWithParam<PairRow> {};
TEST_P(PieceRows, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

template <int Openness>
void Open(EVALUATION_CONTEXT& context, Colour /*own*/) {
    context.openness = Openness;
}
void EnemyEverywhere(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = ~Bitboard{0};
}
template <Square... Left>
void EnemyLeavesOnly(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = ~(Bit(own == white ? Left : MirrorVertically(Left)) | ...);
}

// In the sums stand, in this order, what the pawns are worth to the piece, its square, and its other rules.
// clang-format off
INSTANTIATE_TEST_SUITE_P(OpeningKnights, PieceRows, testing::Values(
    PairRow{"one pawn is no pair", early_knights, "4k3/8/8/8/8/6N1/P7/4K3", {-30 + 7, -30 + 14}, "pk1"},
    PairRow{"three pawns are one pair", early_knights, "4k3/pp6/8/8/8/6N1/P7/4K3", {-24 + 7, -24 + 14}, "pk1"},
    PairRow{"fifteen pawns are seven pairs", early_knights, "4k3/pppppppp/8/8/8/8/PPPPN1PP/4K3", {12 + 8, 12 + 14}},
    PairRow{"two far from one another", early_knights, "4k3/8/8/8/8/1N4N1/8/4K3", {-60 + 4 + 7, -60 + 14 + 14}, "pq1 pk1"},
    PairRow{"three in a chain", early_knights, "4k3/8/8/8/8/5N2/3N4/1N2K3", {-90 - 20 + 9 + 12, -90 - 25 + 15 + 20}, "pq-7 pk4 cq1 cc1 ck1"},
    PairRow{"defended from the left", early_knights, "4k3/8/8/8/8/1N6/P7/4K3", {-30 + 4 + 2, -30 + 14}, "pq1 cq1"},
    PairRow{"defended from both sides", early_knights, "4k3/8/8/8/8/2N5/1P1P4/4K3", {-24 + 11 + 2, -24 + 18}, "pq4 cq1"},
    PairRow{"a pawn behind defends nothing", early_knights, "4k3/8/8/8/8/2N5/2P5/4K3", {-30 + 11, -30 + 18}, "pq4"},
    PairRow{"a pawn across the rim defends nothing", early_knights, "4k3/8/8/8/8/P6N/8/4K3", {-30 - 20, -30 - 29}, "pk-5"},
    PairRow{"a chaser on the fourth rank", early_knights, "4k3/2p5/8/8/3N4/8/8/4K3", {-30 + 20 - 2, -30 + 34 - 4}, "pc8"},
    PairRow{"a pawn beside chases nobody", early_knights, "4k3/8/8/8/2pN4/8/8/4K3", {-30 + 20 + 9, -30 + 34 + 14}, "pc8"},
    PairRow{"a pawn before chases nobody", early_knights, "4k3/3p4/8/8/3N4/8/8/4K3", {-30 + 20 + 9, -30 + 34 + 14}, "pc8"},
    PairRow{"a pawn right ahead chases", early_knights, "4k3/8/4p3/3N4/8/8/8/4K3", {-30 + 22 - 2, -30 + 38 - 4}, "pc10"},
    PairRow{"its chaser may not step", early_knights, "4k3/2p5/8/1P1N4/8/8/8/4K3", {-24 + 22 + 2, -24 + 38 + 10}, "pc13"},
    PairRow{"its chaser is held by a piece", early_knights, "4k3/4p3/4n3/3N4/8/8/8/4K3", {-30 + 22 + 2, -30 + 38 + 10}, "pc13"},
    PairRow{"both chasers are held", early_knights, "3k4/2p1p3/4P3/1P1N4/8/8/8/4K3", {-18 + 22 + 2, -18 + 38 + 10}, "pc13"},
    PairRow{"a chaser of the rim", early_knights, "4k3/1p6/8/N7/8/8/8/4K3", {-30 - 18 - 2, -30 - 25 - 4}, "pq2"},
    PairRow{"a chaser of the other rim", early_knights, "4k3/6p1/7N/8/8/8/8/4K3", {-30 - 19 - 2, -30 - 25 - 4}, "pk4"},
    PairRow{"no chaser across the rim", early_knights, "4k3/7p/8/N7/8/8/8/4K3", {-30 - 18 + 9, -30 - 25 + 14}, "pq6 cq2"},
    PairRow{"outpost on the last rank", early_knights, "4k1N1/8/8/8/8/8/8/4K3", {-30 - 40 + 9, -30 - 45 + 14}, "pk8 ck2"},
    PairRow{"defended outpost on the fourth rank", early_knights, "4k3/2p5/8/8/4N3/3P4/8/4K3", {-24 + 20 + 2 + 9, -24 + 34 + 14}, "pc8 cc1"},
    PairRow{"firm outpost on the sixth", early_knights, "4k3/p7/2N5/1P6/8/8/8/4K3", {-24 + 18 + 2 + 9 + 13, -24 + 34 + 14 + 18}, "pq16 cq4"},
    PairRow{"firm outpost on the seventh", early_knights, "4k3/2p1N3/3P4/8/8/8/8/4K3", {-24 + 18 + 2 + 9 + 13, -24 + 36 + 14 + 18}, "pc18 cc4"},
    PairRow{"a pawn that was passed by", early_knights, "4k3/p7/2N5/1Pp5/8/8/8/4K3", {-24 + 18 + 2 + 9 + 13, -24 + 34 + 14 + 18}, "pq16 cq4"},
    PairRow{"one of two defenders is passed", early_knights, "4k3/p7/2N5/1P1P4/8/8/8/4K3", {-24 + 18 + 2 + 9 + 21, -24 + 34 + 14 + 27}, "pq16 cq4"},
    PairRow{"both defenders are passed", early_knights, "4k3/8/2N5/1P1P4/8/8/8/4K3", {-24 + 18 + 2 + 9 + 5, -24 + 34 + 14 + 12}, "pq14 cq3"},
    PairRow{"a pawn ahead and one defender", early_knights, "4k3/2p5/2N5/1P6/8/8/8/4K3", {-24 + 18 + 2 + 9 + 3, -24 + 34 + 14 + 7}, "pq14 cq3"},
    PairRow{"a pawn ahead and no defender", early_knights, "4k3/2p5/2N5/8/8/8/8/4K3", {-30 + 18 + 9, -30 + 34 + 14}, "pq14 cq2"}), RowName<PairRow>);

// Without pawns the openness is 15, which costs 5 reckless points.
INSTANTIATE_TEST_SUITE_P(GameKnights, PieceRows, testing::Values(
    PairRow{"four squares from the king on its wing", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-30 + 10, -30 + 16 - 5}, "pk1"},
    PairRow{"five squares from it", later_knights, "6k1/8/8/8/8/6N1/8/4K3", {-30 + 10 - 5, -30 + 16 - 5 - 40}, "pk1"},
    PairRow{"two squares from it on another wing", later_knights, "8/6k1/8/4N3/8/8/8/4K3", {-30 + 26 + 13 - 2, -30 + 44 + 23 - 5 - 16}, "pc14 cc3"},
    PairRow{"the king on c8 stands in the centre", later_knights, "2k5/8/8/2N5/8/8/8/4K3", {-30 + 18 + 13 - 3, -30 + 38 + 23 - 5 - 24}, "pq12 cq3"},
    PairRow{"the king on f8 stands in the centre", later_knights, "5k2/8/8/5N2/8/8/8/4K3", {-30 + 18 + 13 - 3, -30 + 38 + 23 - 5 - 24}, "pk12 ck3"},
    PairRow{"the king on g8 does not", later_knights, "6k1/8/8/5N2/8/8/8/4K3", {-30 + 18 + 13, -30 + 38 + 23 - 5}, "pk12 ck3"},
    PairRow{"the king on b8 does not", later_knights, "1k6/8/8/2N5/8/8/8/4K3", {-30 + 18 + 13, -30 + 38 + 23 - 5}, "pq12 cq3"},
    PairRow{"seven squares from the king", later_knights, "6k1/8/8/8/8/8/8/1N2K3", {-30 - 20 - 7, -30 - 30 - 5 - 56}, "pq-7"},
    PairRow{"openness 1", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 + 15}, "pk7", Open<1>},
    PairRow{"openness 3", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 + 12}, "pk6", Open<3>},
    PairRow{"openness 5", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 + 6}, "pk4", Open<5>},
    PairRow{"openness 7", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 + 3}, "pk3", Open<7>},
    PairRow{"openness 9", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 + 2}, "pk2", Open<9>},
    PairRow{"openness 10", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14}, "pk2", Open<10>},
    PairRow{"openness 13", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 - 2}, "pk1", Open<13>},
    PairRow{"openness 14", later_knights, "8/6k1/8/8/8/6N1/8/4K3", {-20, -14 - 5}, "pk1", Open<14>},
    PairRow{"three in a chain", later_knights, "4k3/8/8/8/8/5N2/3N4/1N2K3", {-90 - 20 + 10 + 15 - 7 - 6 - 5 + 3, -90 - 30 + 16 + 26 - 15 - 56 - 48 - 40 - 6}, "pq-9 pc-2 pk2 cq4 cc4 ck4"},
    PairRow{"defended by a pawn", later_knights, "8/6k1/8/8/8/6N1/5P2/4K3", {-30 + 10 + 2, -30 + 16 - 5 + 2}, "pk1 ck1", Open<15>},
    PairRow{"defended by two", later_knights, "8/6k1/8/8/8/6N1/5P1P/4K3", {-24 + 10 + 2, -24 + 16 - 5 + 2}, "pk1 ck1", Open<15>},
    PairRow{"a pawn behind defends nothing", later_knights, "8/6k1/8/8/8/6N1/6P1/4K3", {-30 + 10, -30 + 16 - 5}, "pk1", Open<15>},
    PairRow{"a chaser on the fourth rank", later_knights, "4k3/2p5/8/8/3N4/8/8/4K3", {-30 + 24 + 2, -30 + 40 - 5 + 4}, "pc8", Open<15>},
    PairRow{"on the third rank nobody asks", later_knights, "8/5pk1/8/8/8/6N1/8/4K3", {-30 + 10, -30 + 16 - 5}, "pk1", Open<15>},
    PairRow{"its chaser may not step", later_knights, "4k3/2p5/8/1P1N4/8/8/8/4K3", {-24 + 26 + 3, -24 + 44 - 5 + 10}, "pc12", Open<15>},
    PairRow{"one of its chasers may", later_knights, "4k3/2p1p3/8/1P1N4/8/8/8/4K3", {-24 + 26 + 2, -24 + 44 - 5 + 4}, "pc10", Open<15>},
    PairRow{"outpost on the fourth rank", later_knights, "4k3/8/8/8/3N4/8/8/4K3", {-30 + 24 + 13, -30 + 40 - 5 + 23}, "pc8"},
    PairRow{"firm outpost on the sixth", later_knights, "8/pk6/2N5/1P6/8/8/8/4K3", {-24 + 20 + 2 + 13 + 13, -24 + 40 - 5 + 2 + 23 + 20}, "pq17 cq5", Open<15>},
    PairRow{"one of two defenders is passed", later_knights, "8/pk6/2N5/1P1P4/8/8/8/4K3", {-24 + 20 + 2 + 13 + 25, -24 + 40 - 5 + 2 + 23 + 32}, "pq17 cq5", Open<15>},
    PairRow{"both defenders are passed", later_knights, "8/1k6/2N5/1P1P4/8/8/8/4K3", {-24 + 20 + 2 + 13 + 6, -24 + 40 - 5 + 2 + 23 + 14}, "pq14 cq4", Open<15>},
    PairRow{"a pawn ahead and one defender", later_knights, "8/1kp5/2N5/1P6/8/8/8/4K3", {-24 + 20 + 2 + 13 + 2, -24 + 40 - 5 + 2 + 23 + 10}, "pq14 cq4", Open<15>},
    PairRow{"a pawn ahead and no defender", later_knights, "8/1kp5/2N5/8/8/8/8/4K3", {-30 + 20 + 13, -30 + 40 - 5 + 23}, "pq14 cq3", Open<15>}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(WaysOfKnights, PieceRows, testing::Values(
    PairRow{"eight squares", ways_of_knights, "4k3/8/8/4N3/8/8/8/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"seven squares", ways_of_knights, "4k3/8/8/8/4N3/8/5P2/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"six squares", ways_of_knights, "4k3/8/8/8/4N3/8/3P1P2/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"five squares", ways_of_knights, "4k3/8/8/8/4N3/2P5/3P1P2/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"four squares", ways_of_knights, "4k3/8/3P4/8/4N3/2P5/3P1P2/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"three squares", ways_of_knights, "4k3/8/3P1P2/8/4N3/2P5/3P1P2/4K3", {3, 6}, "pc1 cc1"},
    PairRow{"a piece that it could take is no way", ways_of_knights, "4k3/8/8/8/8/1r6/8/N3K3", {-2, -4}, "pc-3 cc-3"},
    PairRow{"one square is left", ways_of_knights, "4k3/8/8/8/8/8/8/N3K3", {-2, -4}, "pc-3 cc-3", EnemyLeavesOnly<b3>},
    PairRow{"an own pawn does not help against a pawn", ways_of_knights, "4k3/8/8/8/p7/8/P7/N3K3", {-6, -12}, "pc-6 cc-6", EnemyEverywhere},
    PairRow{"against pieces it does", ways_of_knights, "4k3/p7/8/8/8/8/P7/N3K3", {-2, -4}, "pc-3 cc-3", EnemyEverywhere},
    PairRow{"two knights", ways_of_knights, "4k3/8/8/8/8/8/8/N3K2N", {4, 8}},
    PairRow{"four knights", ways_of_knights, "4k2N/8/8/8/1p6/8/8/NN2K2N", {2 - 2 + 2 + 2, 4 - 4 + 4 + 4}, "pc-3 cc-3"}), RowName<PairRow>);

// A bishop without the other costs 5 of activity, or earns 10 with it.
INSTANTIATE_TEST_SUITE_P(LongDiagonals, PieceRows, testing::Values(
    PairRow{"behind b2", of_bishops, "4k3/8/8/8/8/8/1P6/B3K3", {-8 - 6 - 24, -12 - 4 - 38}, "cq-2 a-5"},
    PairRow{"against b2", of_bishops, "4k3/8/8/8/8/8/1p6/B3K3", {-8 - 6 - 24, -12 - 4 - 38}, "cq-2 a-5"},
    PairRow{"behind g2", of_bishops, "4k3/8/8/8/8/8/6P1/4K2B", {-8 - 6 - 24, -12 - 4 - 38}, "ck-2 a-5"},
    PairRow{"behind b2 and b3", of_bishops, "4k3/8/8/8/8/1P6/1P6/B3K3", {-8 - 24, -12 - 38}, "a-5"},
    PairRow{"an enemy pawn on b3 is no fence", of_bishops, "4k3/8/8/8/8/1p6/8/B3K3", {-8 - 6 + 8 + 24 + 2 + 1 - 2, -12 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"behind f6", of_bishops, "4k3/8/5P2/8/8/8/1B6/4K3", {20 - 6 + 8 + 11 + 8 + 2 - 5, 22 - 4 + 10 + 11 + 8 + 8 + 2 + 1 - 12}, "cq1 pk2 a-5"},
    PairRow{"against f6", of_bishops, "4k3/8/5p2/8/8/8/1B6/4K3", {20 - 6 + 8 + 8 + 8 + 2 - 5, 22 - 4 + 10 + 8 + 8 + 8 + 2 + 1 - 12}, "cq1 pk1 a-5"},
    PairRow{"behind g7", of_bishops, "4k3/6P1/8/8/8/8/1B6/4K3", {20 - 6 + 8 + 14 + 8 + 2 + 1 - 3, 22 - 4 + 10 + 14 + 8 + 8 + 4 + 2 - 8}, "cq1 pk4 a-5"},
    PairRow{"against g7", of_bishops, "4k3/6p1/8/8/8/8/1B6/4K3", {20 - 6 + 8 + 11 + 8 + 2 + 1 - 3, 22 - 4 + 10 + 11 + 8 + 8 + 4 + 2 - 8}, "cq1 pk2 a-5"},
    PairRow{"against d4", of_bishops, "4k3/8/8/8/3p4/8/1B6/4K3", {20 - 6 + 8 - 2 + 8 - 10, 22 - 4 + 10 - 3 + 8 + 2 - 30}, "cq-1 pk1 a-5"},
    PairRow{"two pawns", of_bishops, "4k3/8/8/4p3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 6 - 10, 22 - 4 + 10 + 4 + 6 + 2 - 30}, "pk1 a-5"},
    PairRow{"three pawns", of_bishops, "4k3/8/5p2/4p3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 3 - 10, 22 - 4 + 10 + 4 + 4 + 2 - 30 - 2}, "pk1 a-5"},
    PairRow{"four pawns", of_bishops, "4k3/6p1/5p2/4p3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 - 10, 22 - 4 + 10 + 4 + 1 + 2 - 30 - 4}, "pk1 pc-1 a-5"},
    PairRow{"five pawns", of_bishops, "4k3/6p1/5p2/4p3/3P4/2P5/1B6/4K3", {20 - 6 + 8 - 2 - 2 - 16, 22 - 4 + 10 - 3 - 4 - 32 - 4}, "cq-1 pk1 pc-1 a-5"},
    PairRow{"on the right behind its fence", of_bishops, "4k3/8/8/8/4p3/6P1/6B1/4K3", {20 + 8 - 2 + 8 - 10, 22 + 10 - 3 + 8 + 2 - 30}, "ck1 pq1 a-5"},
    PairRow{"bad behind e4", of_bishops, "4k3/8/8/4p3/4P3/6P1/6B1/1N2K3", {20 + 8 + 3 + 8 - 10 - 8 - 10, 22 + 10 + 4 + 8 + 2 - 30 - 10 - 12}, "ck2 pq1 pc-11 cc-8 a-5"},
    PairRow{"bad with two knights", of_bishops, "4k3/8/8/4p3/4P3/6P1/6B1/NN2K3", {20 + 8 + 3 + 8 - 10 - 8 - 5, 22 + 10 + 4 + 8 + 2 - 30 - 10 - 7}, "ck2 pq1 pc-10 cc-7 a-5"},
    PairRow{"bad with three knights", of_bishops, "4k3/8/8/4p3/4P3/6P1/6B1/NNN1K3", {20 + 8 + 3 + 8 - 10 - 8 - 5, 22 + 10 + 4 + 8 + 2 - 30 - 10 - 7}, "ck2 pq1 pc-10 cc-7 a-5"},
    PairRow{"on the right against f3", of_bishops, "4k3/8/8/8/8/5p2/6B1/4K3", {20 - 6 + 8 - 5 + 8 - 16, 22 - 4 + 10 - 10 + 8 - 32}, "ck-7 pq1 a-5"},
    PairRow{"free behind e5 and so never bad", of_bishops, "4k3/8/4p3/4Pp2/5P2/8/1B6/4K3", {20 - 6 + 8 + 8 + 8 + 1 - 8, 22 - 4 + 10 + 8 + 8 + 4 + 2 - 20}, "cq1 pk1 a-5"},
    PairRow{"bad behind d4", of_bishops, "4k3/8/8/3pp3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 6 - 10 - 8 - 15, 22 - 4 + 10 + 4 + 6 + 2 - 30 - 10 - 17}, "pk1 pc-12 cc-10 a-5"},
    PairRow{"free and so never bad", of_bishops, "4k3/8/8/5p2/4pP2/4P3/1B6/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"through a knight", of_bishops, "4k3/8/8/8/3N4/8/1B6/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"through its king", of_bishops, "4k3/8/8/8/3K4/8/1B6/8", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"through a knight on b2", of_bishops, "4k3/8/8/8/8/8/1N6/B3K3", {-8 - 6 + 8 + 24 + 2 + 1 - 2, -12 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"not through two knights", of_bishops, "4k3/8/8/4N3/3N4/8/1B6/4K3", {20 - 6 + 8 + 24 + 2 - 5, 22 - 4 + 10 + 24 + 8 + 2 - 12}, "cq3 pk6 a-5"},
    PairRow{"not through an enemy knight", of_bishops, "4k3/8/8/8/3n4/8/1B6/4K3", {20 - 6 + 8 + 24 + 1 - 8, 22 - 4 + 10 + 24 + 4 + 2 - 20}, "cq3 pk6 a-5"},
    PairRow{"not from c3", of_bishops, "4k3/8/8/8/3N4/2B5/8/6K1", {15 + 1 - 3, 20 + 4 + 2 - 8}, "a-5"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Bishops, PieceRows, testing::Values(
    PairRow{"no square", of_bishops, "4k3/8/8/6P1/7B/6P1/8/4K3", {8 - 24, 12 - 38}, "a-5"},
    PairRow{"its own square alone", of_bishops, "4k3/8/8/5P1P/6B1/5P1P/8/4K3", {10 - 16, 16 - 32}, "a-5"},
    PairRow{"three squares", of_bishops, "4k3/4p3/8/6B1/8/4P3/8/4K3", {10 + 1 - 8, 16 + 4 + 2 - 20}, "a-5"},
    PairRow{"four squares", of_bishops, "4k3/8/8/6B1/8/4P3/8/4K3", {10 + 1 - 5, 16 + 4 + 3 - 12}, "a-5"},
    PairRow{"five squares", of_bishops, "4k3/8/8/6B1/8/8/3P4/4K3", {10 + 1 - 3, 16 + 6 + 3 - 8}, "a-5"},
    PairRow{"two held pawns", of_bishops, "4k3/8/8/8/3p1p2/3P1P2/8/1B2K3", {-4 - 16 - 18 - 15, -2 - 32 - 24 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"one held pawn of two", of_bishops, "4k3/8/8/8/3p4/3P1P2/8/1B2K3", {-4 - 16, -2 - 32}, "a-5"},
    PairRow{"two held pawns of the other colour", of_bishops, "4k3/8/8/3p4/3P1p2/5P2/8/1B2K3", {-4 + 1 + 1 - 3, -2 + 4 + 4 + 2 - 8}, "a-5"},
    PairRow{"a held pawn on d5", of_bishops, "4k3/8/3p4/3P4/8/8/8/1B2K3", {-4 + 1 + 1 - 3, -2 + 4 + 4 + 2 - 8}, "a-5"},
    PairRow{"pawns held by own pieces", of_bishops, "4k3/8/8/2p5/2P5/4R3/4P3/1B2K3 b - - 0 1", {-4 + 1 + 1 - 3 - 8 - 15, -2 + 4 + 4 + 2 - 8 - 10 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"a pawn that may not step", of_bishops, "4k3/8/3p4/8/4P3/8/8/1B2K3", {-4 - 10 - 8 - 15, -2 + 2 - 30 - 10 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"a pawn that may step", of_bishops, "4k3/8/8/8/4P3/8/8/1B2K3", {-4 - 10, -2 + 2 - 30}, "a-5"},
    PairRow{"bad without a square", of_bishops, "4k3/8/8/4p3/4P3/1P6/B7/4K3", {3 - 24 - 30 - 15, 6 - 38 - 37 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"on d2 behind e3", of_bishops, "4k3/8/8/8/8/4P3/3B4/4K3", {14 - 8 - 6, 18 + 2 - 20 - 20}, "pc-5 a-5"},
    PairRow{"on f1 behind d3", of_bishops, "4k3/8/8/8/8/3P4/8/4KB2", {-8 - 10 - 6, -4 - 30 - 20}, "pc-5 a-5"},
    PairRow{"on e2 behind d3", of_bishops, "4k3/8/8/8/8/3P4/4B3/4K3", {14 - 8 - 6, 18 + 2 - 20 - 20}, "pc-5 a-5"},
    PairRow{"on e2 behind an enemy pawn", of_bishops, "4k3/8/8/8/8/3p4/4B3/4K3", {14 - 8, 18 + 2 - 20}, "a-5"},
    PairRow{"on c1 behind d2 and e3", of_bishops, "4k3/8/8/8/8/4P3/3P4/2B1K3", {-8 - 16 - 6, -4 - 32 - 20}, "pc-5 a-5"},
    PairRow{"on f1 behind its queen", of_bishops, "4k3/8/8/8/8/8/4Q3/4KB2 b - - 0 1", {-8 - 10 - 8, -4 - 30 - 18}, "pc-3 a-5"},
    PairRow{"on f1 behind its king", of_bishops, "4k3/8/8/8/8/8/4K3/5B2", {-8 - 10 - 8, -4 - 30 - 18}, "pc-3 a-5"},
    PairRow{"on f1 before an enemy knight", of_bishops, "4k3/8/8/8/8/8/4n3/4KB2", {-8 - 10, -4 - 30}, "a-5"},
    PairRow{"on c1 with d3", of_bishops, "4k3/8/8/8/8/3P4/8/2B1K3", {-8 + 1 - 3, -4 + 4 - 8}, "a-5"},
    PairRow{"on d3 behind e4", of_bishops, "4k3/8/8/8/4P3/3B4/8/4K3", {16 + 1 - 3, 24 + 4 - 8 - 5}, "pc-1 a-5"},
    PairRow{"on d3 behind d4", of_bishops, "4k3/8/8/8/3P4/3B4/8/4K3", {16 + 1 + 1, 24 + 4 + 6 + 2 - 2}, "a-5"},
    PairRow{"bad on e3 behind d4", of_bishops, "4k3/8/8/3p4/3P4/4B3/8/4K3", {16 + 1 - 3 - 8 - 3 - 15, 24 + 4 - 8 - 10 - 6 - 17}, "pc-14 cc-10 a-5"},
    PairRow{"trapped on h7 for good", of_bishops, "4k3/5p1B/6p1/8/8/8/8/4K3", {-2 - 24 - 180, 4 + 2 - 38 - 180 - 2}, "a-5"},
    PairRow{"trapped on a7", of_bishops, "4k3/B2p4/1p6/8/8/8/8/4K3", {-2 - 24 - 110, 4 + 2 - 38 - 110}, "a-5"},
    PairRow{"on a7 behind its own pawn", of_bishops, "4k3/B7/1P6/8/8/8/8/4K3", {-2 - 24, 4 + 2 - 38}, "a-5"},
    PairRow{"on a7 before a knight", of_bishops, "4k3/B7/1n6/8/8/8/8/4K3", {-2 - 16, 4 + 2 - 32}, "a-5"},
    PairRow{"on a6 it is not trapped", of_bishops, "4k3/8/B7/1p6/8/8/8/4K3", {4 - 16, 8 + 2 - 32}, "a-5"},
    PairRow{"defended pawns of its colour", of_bishops, "4k3/1p4p1/2p2p2/8/8/3B4/8/4K3", {18, 34 - 2}, "a-5"},
    PairRow{"two of one colour", of_bishops, "4k3/8/8/8/8/3B4/8/4KB2", {-8 - 8 + 18, -4 + 2 - 20 + 34}, "a-5"},
    PairRow{"pair and openness 3", of_bishops, "4k3/8/8/8/8/3BB3/8/4K3", {36 + 2, 68 + 5}, "a10", Open<3>},
    PairRow{"pair and openness 4", of_bishops, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 5, 68 + 2}, "pc1 a10", Open<4>},
    PairRow{"pair and openness 7", of_bishops, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 5, 68 + 2}, "pc1 a10", Open<7>},
    PairRow{"pair and openness 8", of_bishops, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 7, 68 - 2}, "pc2 cc1 a10", Open<8>},
    PairRow{"pair and openness 11", of_bishops, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 7, 68 - 2}, "pc2 cc1 a10", Open<11>},
    PairRow{"pair and openness 12", of_bishops, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 10, 68 - 5}, "pc3 cc1 a10", Open<12>},
    PairRow{"pair with a bad one", of_bishops, "4k3/8/8/4p3/4P3/4B3/8/1B2K3", {-4 - 10 - 8 + 18 - 7, -2 + 2 - 30 - 10 + 34 - 2}, "pc-6 cc-5 a10", Open<8>},
    PairRow{"pair against two defended pawns", of_bishops, "4k3/1p4p1/2p2p2/8/8/3BB3/8/4K3", {36 - 7, 68 - 2 - 4}, "pc1 cc1 a10", Open<8>},
    PairRow{"pair against three", of_bishops, "4k3/1p4p1/2p2p2/3p4/8/3BB3/8/4K3", {36 - 7, 68 - 2 - 6}, "pc1 cc1 a10", Open<8>}), RowName<PairRow>);

// Without pawns a rook is worth (75, 45); its squares on the file come next.
INSTANTIATE_TEST_SUITE_P(Rooks, PieceRows, testing::Values(
    PairRow{"one square", of_rooks, "4k3/8/8/8/8/8/N7/R5K1", {75 - 4 + 7, 45 - 10 + 15}, "pq6 cq3 a24"},
    PairRow{"two squares", of_rooks, "4k3/8/8/8/8/N7/8/R5K1", {75 - 2 + 7, 45 - 8 + 15}, "pq6 cq3 a24"},
    PairRow{"three squares", of_rooks, "4k3/8/8/8/N7/8/8/R5K1", {75 + 7, 45 - 2 + 15}, "pq6 cq3 a24"},
    PairRow{"four squares", of_rooks, "4k3/8/8/N7/8/8/8/R5K1", {75 + 1 + 7, 45 + 4 + 15}, "pq6 cq3 a24"},
    PairRow{"five squares", of_rooks, "4k3/8/n7/8/8/8/8/R5K1", {75 + 2 + 7, 45 + 6 + 15}, "pq6 cq3 a24"},
    PairRow{"six squares", of_rooks, "4k3/n7/8/8/8/8/8/R5K1", {75 + 3 + 7, 45 + 8 + 15}, "pq6 cq3 a24"},
    PairRow{"three pawns are one pair", of_rooks, "4k3/2p5/8/8/8/8/2PP4/R5K1", {63 + 4 + 7, 33 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"through its queen", of_rooks, "6k1/8/8/8/8/Q7/8/R5K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"not through the queen of the enemy", of_rooks, "6k1/8/8/8/q7/8/8/R5K1", {75 + 7 + 8, 45 - 2 + 15 + 25}, "pq10 cq3 Cq-9 a24"},
    PairRow{"two on a file", of_rooks, "6k1/8/8/8/R7/8/8/R5K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq12 cq6 cc4 a48"},
    PairRow{"two on a file against two", of_rooks, "r5k1/r7/8/8/8/8/R7/R5K1", {2 * (75 + 3 + 8 + 16), 2 * (45 + 8 + 12 + 25)}, "pq16 cq4 cc4 a48"},
    PairRow{"between own pawns", of_rooks, "4k3/8/P7/8/R7/8/P7/6K1", {63 + 1, 33 + 4}, "a24"},
    PairRow{"a far own pawn behind an enemy pawn", of_rooks, "4k3/8/P7/8/p7/8/8/R5K1", {63 + 12, 33 - 2 + 18}, "pq6 a24"},
    PairRow{"an own pawn on the third before an enemy pawn", of_rooks, "4k3/8/p7/8/8/P7/8/R5K1", {63 - 2 - 6 + 6, 33 - 8 - 14 + 12}, "a24"},
    PairRow{"only the first own pawn counts", of_rooks, "4k3/8/8/P7/p7/P7/8/R5K1", {63 - 2 - 6 + 6, 33 - 8 - 14 + 12}, "a24"},
    PairRow{"an enemy pawn behind it", of_rooks, "4k3/8/8/8/R7/8/p7/6K1", {75 + 3 + 12, 45 + 8 + 18}, "pq6 a24"},
    PairRow{"its own pawn behind it and an enemy pawn ahead", of_rooks, "4k3/p7/8/8/R7/8/P7/6K1", {63 + 2, 33 + 6}, "pq6 cq-6 a24"},
    PairRow{"side by side on the seventh with the king out", of_rooks, "8/RR6/7k/8/8/8/8/6K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq12 cq6 cc4 a48"},
    PairRow{"apart on the seventh", of_rooks, "6k1/R1R5/8/8/8/8/8/6K1", {2 * (75 + 4 + 15 + 7 + 28), 2 * (45 + 10 + 28 + 15 + 50)}, "pq12 cq6 pc48 a48"},
    PairRow{"one on the seventh and one on the eighth", of_rooks, "R5k1/R7/8/8/8/8/8/6K1 b - - 0 1", {2 * (75 + 4 + 8 + 7) + 28, 2 * (45 + 10 + 12 + 15) + 50}, "pq12 cq6 cc4 pc14 a48"},
    PairRow{"one on the seventh and one on the sixth", of_rooks, "6k1/R7/R7/8/8/8/8/6K1", {2 * (75 + 4 + 8 + 7) + 28, 2 * (45 + 10 + 12 + 15) + 50}, "pq12 cq6 cc4 pc14 a48"},
    PairRow{"one on the seventh and one behind it", of_rooks, "6k1/R7/8/8/8/8/8/R5K1", {2 * (75 + 4 + 8 + 7) + 28, 2 * (45 + 10 + 12 + 15) + 50}, "pq12 cq6 cc4 pc14 a48"},
    PairRow{"far apart on a rank", of_rooks, "7k/8/8/8/8/8/8/R2R2K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq6 pc6 cq3 cc7 a48"},
    PairRow{"a knight between them", of_rooks, "7k/8/8/8/8/8/8/RNR3K1", {2 * (75 + 4 + 7), 2 * (45 + 10 + 15)}, "pq12 cq6 a48"},
    PairRow{"the queen between them", of_rooks, "6k1/2R5/8/8/2Q5/8/2R5/6K1 b - - 0 1", {2 * (75 + 4 - 6 + 7) + 28, 2 * (45 + 10 - 10 + 15) + 50}, "pq8 cq-2 pc14 a48"},
    PairRow{"on b1 and c2", of_rooks, "6k1/8/8/8/8/8/2R5/1R4K1", {2 * (75 + 4 + 7) + 2, 2 * (45 + 10 + 15) + 4}, "pq13 cq7 a48"},
    PairRow{"on b1 and c1 behind b2", of_rooks, "6k1/8/8/8/8/8/1P6/1RR3K1", {75 - 4 + 8 - 6 + 6 + 75 + 4 + 8 + 7, 45 - 10 + 12 - 14 + 12 + 45 + 10 + 12 + 15}, "pq6 cq3 cc4 a48"},
    PairRow{"on b1 and c1 behind b3", of_rooks, "6k1/8/8/8/8/1P6/8/1RR3K1", {75 - 2 + 8 + 2 - 6 + 6 + 75 + 4 + 8 + 7, 45 - 8 + 12 + 4 - 14 + 12 + 45 + 10 + 12 + 15}, "pq7 cq4 cc4 a48"},
    PairRow{"on b2 and c2", of_rooks, "6k1/8/8/8/8/8/1RR5/6K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq13 cq7 cc4 a48"},
    PairRow{"on b3 and c2", of_rooks, "6k1/8/8/8/8/1R6/2R5/6K1", {2 * (75 + 4 + 7), 2 * (45 + 10 + 15)}, "pq12 cq6 a48"},
    PairRow{"on b1 and c1 beside d2", of_rooks, "6k1/8/8/8/8/8/3P4/1RR3K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq13 cq7 cc4 a48"},
    PairRow{"on b1 and c1 behind c2", of_rooks, "6k1/8/8/8/8/8/2P5/1RR3K1", {75 + 4 + 8 + 7 + 75 - 4 + 8 - 6 + 6, 45 + 10 + 12 + 15 + 45 - 10 + 12 - 14 + 12}, "pq6 cq3 cc4 a48"},
    PairRow{"on the third rank nobody asks", of_rooks, "6k1/8/8/8/8/RR6/8/6K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq12 cq6 cc4 a48"},
    PairRow{"on h1 and a2", of_rooks, "4k3/8/8/8/8/4K3/R7/7R", {2 * (75 + 4 + 7), 2 * (45 + 10 + 15)}, "pq6 cq3 pk6 ck3 a48"},
    PairRow{"on g1 and h1", of_rooks, "1k6/8/8/8/8/K7/8/6RR", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pk13 ck7 cc4 a48"},
    PairRow{"two on the only open file against one", of_rooks, "r5k1/1ppppppp/8/8/8/8/RPPPPPPP/R5K1", {2 * (-9 + 4 + 8 + 35), 2 * (-39 + 10 + 12 + 36)}, "pq16 cq16 cc4 a48"},
    PairRow{"on the only open file against one", of_rooks, "1k3r2/ppppp1pp/8/8/8/8/PPPPP1PP/1K3R2", {-9 + 4 + 25, -39 + 10 + 30}, "pk12 ck4 a24"},
    PairRow{"on an open file against one", of_rooks, "1k3r2/8/8/8/8/8/8/1K3R2", {75 + 4 + 16, 45 + 10 + 25}, "pk8 ck2 a24"},
    PairRow{"on one of two open files", of_rooks, "6k1/2pppppp/8/8/8/8/2PPPPPP/R5K1", {3 + 4 + 7, -27 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"behind h3 beside a closed file", of_rooks, "4k3/8/8/8/8/6PP/8/1K3N1R", {63 - 2 - 6, 33 - 8 - 14}, "pk-4 a24"},
    PairRow{"behind h3 and a knight", of_rooks, "1k6/8/8/8/8/K6P/8/6NR", {75 - 2 - 6 - 2, 45 - 8 - 14 - 6}, "pk-9 a24"},
    PairRow{"a piece to take is no empty square", of_rooks, "1k6/8/8/8/8/K6P/8/6nR", {75 - 2 - 6 - 2, 45 - 8 - 14 - 6}, "pk-9 a24"},
    PairRow{"shut in on a1", of_rooks, "4k3/8/8/8/8/8/P7/RK6", {75 - 4 - 6 - 2 - 50, 45 - 10 - 14 - 6 - 70}, "pq-17 cq-5 a24"},
    PairRow{"shut in on b1", of_rooks, "4k3/8/8/8/8/8/1P6/1RK5", {75 - 4 - 6 + 6 - 50, 45 - 10 - 14 + 12 - 70}, "pq-8 cq-5 a24"},
    PairRow{"shut in on a2", of_rooks, "4k3/8/8/8/8/P7/R1N5/1K6", {75 - 2 - 6 + 6 - 50, 45 - 8 - 14 + 12 - 70}, "pq-8 cq-5 a24"},
    PairRow{"c2 is a way out", of_rooks, "4k3/8/8/8/8/P7/R7/1K6", {75 - 2 - 6 + 6, 45 - 8 - 14 + 12}, "a24"},
    PairRow{"a knight outside shuts it in", of_rooks, "4k3/8/8/8/8/8/1P6/KR1N4", {75 - 4 - 6 + 6 - 50, 45 - 10 - 14 + 12 - 70}, "pq-8 cq-5 a24"},
    PairRow{"a knight to take is a way out", of_rooks, "4k3/8/8/8/8/8/1P6/KR1n4", {75 - 4 - 6 + 6, 45 - 10 - 14 + 12}, "a24"},
    PairRow{"shut in behind h4", of_rooks, "4k3/8/8/8/7P/8/8/6KR", {75 - 50, 45 - 2 - 70}, "pk-8 ck-5 a24"},
    PairRow{"shut in on f1", of_rooks, "4k3/8/8/8/8/8/5P2/4NRK1", {75 - 4 - 6 - 2 - 50, 45 - 10 - 14 - 6 - 70}, "pk-17 ck-5 a24"},
    PairRow{"a king in the other corner shuts nobody in", of_rooks, "4k3/8/8/8/8/8/7P/1K4NR", {75 - 4 - 6 - 2, 45 - 10 - 14 - 6}, "pk-9 a24"},
    PairRow{"a right of the enemy to castle opens nothing", of_rooks, "r3k2r/8/8/8/8/8/7P/6KR w kq - 0 1", {75 - 4 - 6 - 2 - 50, 45 - 10 - 14 - 6 - 70}, "pk-17 ck-5 a24"},
    PairRow{"g3 is a way out", of_rooks, "4k3/8/8/8/7P/7R/6K1/8", {75, 45 - 2}, "a24"},
    PairRow{"half-open on the seventh", of_rooks, "6k1/1R6/1p6/8/8/8/8/6K1", {75 - 2 + 12 + 28, 45 - 8 + 18 + 50}, "pq6 pc14 a24"},
    PairRow{"the king on the seventh too", of_rooks, "8/R5k1/8/8/8/8/8/6K1 b - - 0 1", {75 + 4 + 7 + 28, 45 + 10 + 15 + 50}, "pq6 cq3 pc14 a24"},
    PairRow{"on the sixth", of_rooks, "6k1/8/R7/8/8/8/8/6K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"behind its pawn on the file of the king", of_rooks, "4k3/8/8/8/4P3/8/8/4R1K1", {75, 45 - 2}, "a24"},
    PairRow{"before its pawn on the file of the king", of_rooks, "4k3/8/8/4R3/8/4P3/8/6K1 b - - 0 1", {75 + 2 + 15, 45 + 6 + 38}, "pc19 cc-6 a24"},
    PairRow{"on the file of a king on c8", of_rooks, "2k5/8/8/8/8/8/8/2R3K1 b - - 0 1", {75 + 4 + 7 + 15, 45 + 10 + 15 + 38}, "pq6 cq3 pc13 a24"},
    PairRow{"beside the file of a king on c8", of_rooks, "2k5/8/8/8/8/8/8/1R4K1", {75 + 4 + 7 + 12, 45 + 10 + 15 + 33}, "pq6 cq3 pc11 a24"},
    PairRow{"two files from the king", of_rooks, "1k6/8/8/8/8/8/8/3R2K1", {75 + 4 + 7, 45 + 10 + 15}, "pc6 cc3 a24"},
    PairRow{"beside the file of a king in the corner", of_rooks, "k7/8/8/8/8/8/8/1R4K1", {75 + 4 + 7 + 12, 45 + 10 + 15 + 33}, "pq17 cq3 a24"},
    PairRow{"across the rim from the king", of_rooks, "k7/8/8/8/8/8/5K2/7R", {75 + 4 + 7, 45 + 10 + 15}, "pk6 ck3 a24"},
    PairRow{"before its pawn against a queen", of_rooks, "q5k1/8/8/R7/8/P7/8/6K1", {75 + 2 + 8, 45 + 6 + 25}, "pq10 cq-6 Cq-9 a24"},
    PairRow{"behind its pawn against a queen", of_rooks, "q5k1/8/8/8/P7/8/8/R5K1", {75, 45 - 2}, "a24"},
    PairRow{"against a queen behind it", of_rooks, "6k1/8/8/R7/8/6K1/8/q7", {75 + 4 + 7 + 8, 45 + 10 + 15 + 25}, "pq10 cq3 Cq-9 a24"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(OpeningQueens, PieceRows, testing::Values(
    PairRow{"a knight pinned by a bishop", early_queens, "6k1/8/8/7b/8/5N2/8/3Q2K1", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"two knights before a bishop", early_queens, "6k1/8/8/7b/8/5N2/4N3/3Q2K1", {4, 4}, "pc16"},
    PairRow{"two men pinned", early_queens, "3r2k1/8/8/7b/3P4/5N2/8/3Q2K1", {4 - 60, 4 - 60}, "pc16"},
    PairRow{"pinned by a queen", early_queens, "3q2k1/8/8/8/8/3P4/8/3Q2K1", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"a bishop pins nothing on a file", early_queens, "3b2k1/8/8/8/8/3P4/8/3Q2K1", {4, 4}, "pc16"},
    PairRow{"an enemy man is not pinned", early_queens, "3r2k1/8/8/8/8/3p4/8/3Q2K1", {4, 4}, "pc16"},
    PairRow{"the king pinned", early_queens, "3r2k1/8/8/8/8/8/3K4/3Q4", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"on the second rank nobody counts squares", early_queens, "6k1/8/8/8/8/8/4Q3/6K1", {8, 8}, "pc16", EnemyEverywhere},
    PairRow{"no free square on the third", early_queens, "6k1/8/8/8/8/4Q3/8/6K1 b - - 0 1", {1 - 5 - 70, 2 - 2 - 110}, "cc-10", EnemyEverywhere},
    PairRow{"no free square on the left", early_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 70, -2 - 110}, "pc-10 pq10 cq-10", EnemyEverywhere},
    PairRow{"one free square on the left", early_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 40, -2 - 70}, "pc-6 pq10 cq-8", EnemyLeavesOnly<b1>},
    PairRow{"two free squares", early_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5, -2}, "pc6 pq10", EnemyLeavesOnly<b1, b4>},
    PairRow{"two free squares off the first rank", early_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 8, -2 - 10}, "pc6 pq10 cq-2", EnemyLeavesOnly<b2, b3>},
    PairRow{"two free squares off both ranks", early_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 18, -2 - 30}, "pc6 pq10 cq-4", EnemyLeavesOnly<b3, b4>},
    PairRow{"a man to take is no free square", early_queens, "1n4k1/8/8/1Q6/8/8/8/4K3", {-5 - 70, -2 - 110}, "pc-10 pq10 cq-10", EnemyLeavesOnly<b8>},
    PairRow{"on the seventh", early_queens, "2k5/7Q/8/8/8/8/8/4K3", {-10 - 5 + 10, -12 - 2 + 18}, "pc12 pk10"},
    PairRow{"on the seventh with the king there", early_queens, "8/2k4Q/8/8/8/8/8/4K3 b - - 0 1", {-10 - 5 + 10, -12 - 2 + 18}, "pc12 pk10"},
    PairRow{"on the sixth", early_queens, "2k5/8/6Q1/8/8/8/8/4K3", {-5, -2}, "pc6 pk10"}), RowName<PairRow>);

// In the sums stand its square, that it is out, and the distance to a king that can't castle any more.
INSTANTIATE_TEST_SUITE_P(GameQueens, PieceRows, testing::Values(
    PairRow{"one square from the king and eight steps from its own", later_queens, "6k1/7Q/8/8/8/8/8/5K2 b - - 0 1", {-4 - 5 - 1 + 15, -8 - 2 - 3 + 8 + 25}, "pc6 pk42 Ck-4"},
    PairRow{"one square from the king and nine steps from its own", later_queens, "6k1/7Q/8/8/8/8/8/4K3 b - - 0 1", {-4 - 5 - 1 + 15 - 8, -8 - 2 - 3 + 8 + 25 - 20}, "pc6 pk42 Ck-4 cc-16"},
    PairRow{"two squares from the king", later_queens, "6k1/8/7Q/8/8/8/8/5K2", {-5 - 2, 1 - 2 - 6 + 8}, "pc6 pk30 Ck-4"},
    PairRow{"three squares from the king", later_queens, "6k1/8/8/7Q/8/8/8/5K2", {1 - 5 - 3, 1 - 2 - 9 + 8}, "pc6 pk28 Ck-4"},
    PairRow{"five squares from the king", later_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5, 2 - 2 - 15}, "pc6 pq12 pk2"},
    PairRow{"ten steps from its own king", later_queens, "6k1/8/8/1Q6/8/8/8/7K", {2 - 5 - 5 - 8, 2 - 2 - 15 - 20}, "pc6 pq12 pk2 ck-16"},
    PairRow{"nine steps but with an eye on its side", later_queens, "6k1/8/8/1Q6/8/8/8/6K1", {2 - 5 - 5, 2 - 2 - 15}, "pc6 pq12 pk2"},
    PairRow{"ten steps from its king on b1", later_queens, "k7/8/8/7Q/8/8/8/1K6", {1 - 5 - 7 - 8, 1 - 2 - 21 - 20}, "pc6 pk12 cq-16"},
    PairRow{"eleven steps from its king on d1", later_queens, "7Q/8/k7/8/8/8/8/3K4", {-4 - 5 - 7 - 8, -6 - 2 - 21 - 20}, "pc6 pk12 cc-16"},
    PairRow{"eleven steps from its king on e1", later_queens, "Q7/8/6k1/8/8/8/8/4K2R", {-4 - 5 - 6 - 8, -6 - 2 - 18 - 20}, "pc6 pq12 pk1 cc-16"},
    PairRow{"while its king may castle", later_queens, "Q7/8/6k1/8/8/8/8/4K2R w K - 0 1", {-4 - 5 - 6, -6 - 2 - 18}, "pc6 pq12 pk1"},
    PairRow{"a square beside the king", later_queens, "1k6/8/8/8/Q7/8/8/4K3", {1 - 5 - 4, 1 - 2 + 8 - 12}, "pc6 pq22 Cq-4"},
    PairRow{"a man to take is a free square", later_queens, "1n4k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5 - 40, 2 - 2 - 15 - 70}, "pc-6 pq12 pk2 cq-8", EnemyLeavesOnly<b8>},
    PairRow{"an own man is none", later_queens, "6k1/8/8/1Q6/8/1N6/8/4K3", {2 - 5 - 5 - 70, 2 - 2 - 15 - 110}, "pc-10 pq12 pk2 cq-10", EnemyLeavesOnly<b3>},
    PairRow{"two free squares", later_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5, 2 - 2 - 15}, "pc6 pq12 pk2", EnemyLeavesOnly<b1, b4>},
    PairRow{"two free squares off the first rank", later_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5 - 8, 2 - 2 - 15 - 14}, "pc6 pq12 pk2 cq-1", EnemyLeavesOnly<b2, b3>},
    PairRow{"two free squares off both ranks", later_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5 - 12, 2 - 2 - 15 - 20}, "pc6 pq12 pk2 cq-4", EnemyLeavesOnly<b3, b4>},
    PairRow{"on the second rank nobody counts squares", later_queens, "6k1/8/8/8/8/8/1Q6/4K3", {-6, 8 - 18}, "pc6 pq12 pk5 Ck-4", EnemyEverywhere},
    PairRow{"the king may castle", later_queens, "4k2r/8/8/8/1Q6/8/8/4K3 w k - 0 1", {2 - 5, 2 - 2 + 8}, "pc10 pq12 Cc-4"},
    PairRow{"the king may castle no more", later_queens, "4k2r/8/8/8/1Q6/8/8/4K3", {2 - 5 - 4, 2 - 2 + 8 - 12}, "pc16 pq12 Cc-4"},
    PairRow{"on the seventh", later_queens, "6k1/Q7/8/8/8/8/8/4K3", {-4 - 5 - 6 + 15, -8 - 2 + 8 - 18 + 25}, "pc6 pq12 pk13 Ck-4"},
    PairRow{"on the seventh with the king out", later_queens, "8/Q7/6k1/8/8/8/8/4K3", {-4 - 5 - 6, -8 - 2 + 8 - 18}, "pc6 pq12 pk5 Ck-4"},
    PairRow{"a pawn pinned to it", later_queens, "3r2k1/8/8/8/8/3P4/8/3Q2K1", {-6 - 30 - 7, -6 - 30 - 21}, "pc18"},
    PairRow{"nothing pinned to it", later_queens, "3r2k1/8/8/8/3N4/3P4/8/3Q2K1", {-6 - 7, -6 - 21}, "pc18"}), RowName<PairRow>);
// clang-format on

// --- What the pieces leave for other terms ---

/// The squares that a term adds to the attacks of its side, as that side sees them.
struct AttackRow {
    std::string_view name;
    SidedTerm<SCORE_PAIR> term;
    std::string_view position;
    Bitboard squares;
};
std::ostream& operator<<(std::ostream& out, const AttackRow& row) { return out << row.name; }

class AttacksOfPieces : public testing::TestWithParam<AttackRow> {};
TEST_P(AttacksOfPieces, AreAdded) {
    const AttackRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const Bitboard of_king = builder.context.attacks[own];
        (own == white ? row.term.of_white : row.term.of_black)(builder.context, builder.board);
        const Bitboard squares = own == white ? row.squares : MirrorRanks(row.squares);
        EXPECT_EQ(builder.context.attacks[own], of_king | squares) << row.position;
    });
}

template <class... Squares>
constexpr Bitboard On(Squares... squares) {
    return (Bit(squares) | ...);
}
constexpr Bitboard first_row_from_b = On(b1, c1, d1, e1, f1, g1, h1);
constexpr Bitboard third_row_from_b = On(b3, c3, d3, e3, f3, g3, h3);

// clang-format off
INSTANTIATE_TEST_SUITE_P(PieceRows, AttacksOfPieces, testing::Values(
    AttackRow{"opening knights", early_knights, "k7/8/8/8/8/8/K7/1N5N", On(a3, c3, d2, f2, g3)},
    AttackRow{"game knights", later_knights, "k7/8/8/8/8/8/K7/1N5N", On(a3, c3, d2, f2, g3)},
    AttackRow{"a bishop", of_bishops, "k7/8/8/8/3P4/8/1B6/K7", On(a1, a3, c1, c3, d4)},
    AttackRow{"a bishop on another diagonal", of_bishops, "k7/8/8/8/3N4/2B5/8/K7", On(b2, a1, d4, b4, a5, d2, e1)},
    AttackRow{"a rook", of_rooks, "7k/8/8/N7/8/8/6K1/R7", On(a2, a3, a4, a5) | first_row_from_b},
    AttackRow{"a rook through its queen", of_rooks, "7k/8/8/8/Q7/8/6K1/R7", On(a2, a3, a4, a5, a6, a7, a8) | first_row_from_b},
    AttackRow{"a rook against a queen", of_rooks, "7k/8/8/8/q7/8/6K1/R7", On(a2, a3, a4) | first_row_from_b},
    AttackRow{"two rooks before a knight", of_rooks, "7k/8/8/N7/8/R7/6K1/R7", On(a1, a2, a3, a4, a5) | first_row_from_b | third_row_from_b},
    AttackRow{"an opening queen", early_queens, "7k/8/8/8/8/8/1P6/QN4K1", On(a2, a3, a4, a5, a6, a7, a8, b1, b2)},
    AttackRow{"a game queen", later_queens, "7k/8/8/8/8/8/1P6/QN4K1", On(a2, a3, a4, a5, a6, a7, a8, b1, b2)}), RowName<AttackRow>);
// clang-format on

/// The knights that middle-game knights leave as near to a king.
struct NearRow {
    std::string_view name;
    std::string_view position;
    Bitboard near_enemy, near_own;
};
std::ostream& operator<<(std::ostream& out, const NearRow& row) { return out << row.name; }

class KnightsNearKings : public testing::TestWithParam<NearRow> {};
TEST_P(KnightsNearKings, AreMarked) {
    const NearRow& row = GetParam();
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const auto turned = [&](Bitboard squares) { return own == white ? squares : MirrorRanks(squares); };
        (own == white ? later_knights.of_white : later_knights.of_black)(builder.context, builder.board);
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(PieceRows, KnightsNearKings, testing::Values(
    NearRow{"four squares from the enemy king", "8/6k1/8/8/8/6N1/8/K7", On(g3), 0},
    NearRow{"five squares from it", "6k1/8/8/8/8/6N1/8/K7", 0, 0},
    NearRow{"near it on another wing", "8/6k1/8/4N3/8/8/8/K7", 0, 0},
    NearRow{"two of three", "8/6k1/7N/4N3/8/6N1/8/K7", On(g3, h6), 0},
    NearRow{"near both kings", "8/6k1/8/8/8/6N1/8/6K1", On(g3), On(g3)},
    NearRow{"four squares from its own king", "k7/8/8/6N1/8/8/8/6K1", 0, On(g5)},
    NearRow{"five squares from it all", "k7/8/6N1/8/8/8/8/6K1", 0, 0},
    NearRow{"beside its king on another wing", "k7/8/8/8/8/8/4N3/6K1", 0, 0},
    NearRow{"before its king on c1", "6k1/8/8/8/8/2N5/8/2K5", 0, 0},
    NearRow{"beside its king on c1", "6k1/8/8/8/8/3N4/8/2K5", 0, On(d3)},
    NearRow{"before its king on b1", "6k1/8/8/8/8/2N5/8/1K6", 0, On(c3)}), RowName<NearRow>);
// clang-format on

}  // namespace
