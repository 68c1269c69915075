// Knights, bishops, rooks and queens of the opening and middle game: every square of their tables, and what they
// attack.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

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
        ExpectPair({"", opening_knights, position, pair, counters});
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
        ExpectPair({"", middle_game_knights, position, pair, counters});
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
        ExpectPair({"", bishops_of_game, position, pair, !is_long ? "a-5" : is_left ? "cq3 pk6 a-5" : "ck3 pq6 a-5"});
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
        ExpectPair({"", opening_queens, WalledIn(s), pair, counters});
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
        ExpectPair({"", middle_game_queens, WalledIn(s), pair, counters});
    }
}

// --- Attacks ---

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
INSTANTIATE_TEST_SUITE_P(Pieces, AttacksOfPieces, testing::Values(
    AttackRow{"opening knights", opening_knights, "k7/8/8/8/8/8/K7/1N5N", On(a3, c3, d2, f2, g3)},
    AttackRow{"game knights", middle_game_knights, "k7/8/8/8/8/8/K7/1N5N", On(a3, c3, d2, f2, g3)},
    AttackRow{"a bishop", bishops_of_game, "k7/8/8/8/3P4/8/1B6/K7", On(a1, a3, c1, c3, d4)},
    AttackRow{"a bishop on another diagonal", bishops_of_game, "k7/8/8/8/3N4/2B5/8/K7", On(b2, a1, d4, b4, a5, d2, e1)},
    AttackRow{"a rook", rooks_of_game, "7k/8/8/N7/8/8/6K1/R7", On(a2, a3, a4, a5) | first_row_from_b},
    AttackRow{"a rook through its queen", rooks_of_game, "7k/8/8/8/Q7/8/6K1/R7", On(a2, a3, a4, a5, a6, a7, a8) | first_row_from_b},
    AttackRow{"a rook against a queen", rooks_of_game, "7k/8/8/8/q7/8/6K1/R7", On(a2, a3, a4) | first_row_from_b},
    AttackRow{"two rooks before a knight", rooks_of_game, "7k/8/8/N7/8/R7/6K1/R7", On(a1, a2, a3, a4, a5) | first_row_from_b | third_row_from_b},
    AttackRow{"an opening queen", opening_queens, "7k/8/8/8/8/8/1P6/QN4K1", On(a2, a3, a4, a5, a6, a7, a8, b1, b2)},
    AttackRow{"a game queen", middle_game_queens, "7k/8/8/8/8/8/1P6/QN4K1", On(a2, a3, a4, a5, a6, a7, a8, b1, b2)}), RowName<AttackRow>);
// clang-format on

}  // namespace
