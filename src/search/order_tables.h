#pragma once

#include <array>
#include <cstdint>

#include "chess/bits.h"
#include "chess/square_table.h"

/// Where a piece is better placed, seen from White's side: what orders the quiet moves that nothing else is known of.

struct OrderTable {
    std::array<std::int8_t, 64> by_square;
    std::int8_t piece;  ///< what a move of this piece gets whatever its squares
};
/// By piece type, pawn first.
using OrderTables = std::array<OrderTable, 6>;
static_assert(sizeof(OrderTables) == 6 * 65);

// clang-format off

namespace order_tables {

// Opening and middle game. The corners of the last rank are as bad for a knight as a byte can tell.

inline constexpr auto opening_pawn = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
    0,    0,    0,    0,    0,    0,    0,    0,   // 8
    8,   10,   10,   -6,   -6,   10,   10,    8,   // 7
  -12,   -2,    8,   22,   22,    6,   -6,  -12,   // 6
  -13,   -4,    7,   14,   14,    5,   -6,  -13,   // 5
  -14,   -6,   10,   22,   22,    6,   -6,  -14,   // 4
  -14,   -4,    3,   10,   10,    3,   -4,  -14,   // 3
  -13,   -4,   -8,    4,    4,   -4,   -4,  -13,   // 2
    0,    0,    0,    0,    0,    0,    0,    0,   // 1
});

inline constexpr auto opening_knight = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
 -128,  -40,  -40,  -40,  -40,  -40,  -40, -128,   // 8
  -40,    0,   14,   18,   18,   14,    0,  -40,   // 7
  -19,    7,   18,   24,   24,   18,    7,  -19,   // 6
  -18,    6,   15,   22,   22,   15,    6,  -18,   // 5
  -18,    6,   14,   20,   20,   14,    6,  -18,   // 4
  -20,    4,   11,   10,   10,   12,    7,  -20,   // 3
  -22,   -8,    8,    9,    8,    8,   -8,  -22,   // 2
  -50,  -20,  -20,  -20,  -20,  -20,  -20,  -50,   // 1
});

inline constexpr auto opening_bishop = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
  -15,   -4,   -4,   -4,   -4,   -4,   -4,  -15,   // 8
   -2,   -2,   -2,    0,    0,   -2,   -2,   -2,   // 7
    4,    8,   10,   12,   12,   10,    8,    4,   // 6
    4,   10,   10,   18,   18,   10,   10,    4,   // 5
    8,   10,   16,   18,   18,   16,   10,    8,   // 4
    6,   12,   15,   16,   16,   15,   12,    6,   // 3
    3,   20,   10,   14,   14,   10,   20,    3,   // 2
   -8,   -4,   -8,   -6,   -6,   -8,   -4,   -8,   // 1
});

inline constexpr auto opening_rook = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
    0,    0,    0,    0,    0,    0,    0,    0,   // 8
   28,   28,   28,   28,   28,   28,   28,   28,   // 7
    0,    0,    0,    0,    0,    0,    0,    0,   // 6
    0,    0,    0,    0,    0,    0,    0,    0,   // 5
    0,    0,    0,    0,    0,    0,    0,    0,   // 4
    0,    0,    0,    0,    0,    0,    0,    0,   // 3
    0,    0,    0,    0,    0,    0,    0,    0,   // 2
    0,    0,    0,    0,    0,    0,    0,    0,   // 1
});

inline constexpr auto opening_queen = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
  -10,  -10,  -10,  -10,  -10,  -10,  -10,  -10,   // 8
  -10,  -23,    0,    0,    0,    0,  -23,  -10,   // 7
   -8,    0,    0,    0,    0,    0,    0,   -8,   // 6
    0,    0,    0,    0,    0,    0,    0,    0,   // 5
    2,    0,    0,    0,    0,    0,    0,    0,   // 4
    0,    2,    2,    1,    1,    2,    0,    0,   // 3
   -1,    0,    6,    6,    8,    4,    0,   -1,   // 2
   -8,   -7,   -7,    4,    0,   -7,   -7,   -8,   // 1
});

// Endings.

inline constexpr auto ending_pawn = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
    0,    0,    0,    0,    0,    0,    0,    0,   // 8
   17,   18,   18,   18,   18,   18,   18,   17,   // 7
    9,   11,   11,   10,   10,   11,   11,    9,   // 6
    6,    8,    8,    7,    7,    8,    8,    6,   // 5
    3,    6,    6,    5,    5,    6,    6,    3,   // 4
    0,    4,    4,    3,    3,    4,    4,    0,   // 3
    0,    4,    4,    3,    3,    4,    4,    0,   // 2
    0,    0,    0,    0,    0,    0,    0,    0,   // 1
});

inline constexpr auto ending_knight = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
  -55,  -32,  -25,  -20,  -20,  -25,  -32,  -55,   // 8
  -35,    5,   16,   20,   20,   16,    5,  -35,   // 7
  -20,   12,   23,   28,   28,   23,   12,  -20,   // 6
  -15,   18,   24,   30,   30,   24,   18,  -15,   // 5
  -15,   16,   22,   28,   28,   22,   16,  -15,   // 4
  -20,   11,   18,   22,   22,   18,   11,  -20,   // 3
  -22,    5,   11,   16,   16,   11,    5,  -22,   // 2
  -55,  -24,  -22,  -20,  -20,  -22,  -24,  -55,   // 1
});

inline constexpr auto ending_bishop = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
  -12,    0,    1,    2,    2,    1,    0,  -12,   // 8
    0,    2,    4,    5,    5,    4,    2,    0,   // 7
    1,    4,    7,    9,    9,    7,    4,    1,   // 6
    2,    5,    9,   12,   12,    9,    5,    2,   // 5
    2,    5,    9,   12,   12,    9,    6,    2,   // 4
    1,    4,    7,    9,    9,    7,    4,    1,   // 3
   -2,    2,    3,    4,    4,    3,    1,   -2,   // 2
  -12,   -3,   -3,   -2,   -2,   -3,   -3,  -12,   // 1
});

inline constexpr auto ending_rook = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
    0,    0,    0,    0,    0,    0,    0,    0,   // 8
   50,   50,   50,   50,   50,   50,   50,   50,   // 7
    0,    0,    0,    0,    0,    0,    0,    0,   // 6
    0,    0,    0,    0,    0,    0,    0,    0,   // 5
    0,    0,    0,    0,    0,    0,    0,    0,   // 4
    0,    0,    0,    0,    0,    0,    0,    0,   // 3
    0,    0,    0,    0,    0,    0,    0,    0,   // 2
    0,    0,    0,    0,    0,    0,    0,    0,   // 1
});

inline constexpr auto ending_queen = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
   -8,   -3,   -2,   -2,   -2,   -2,   -3,   -8,   // 8
   -3,   -2,    0,    1,    1,    0,   -2,   -3,   // 7
   -2,    0,    3,    5,    5,    3,    0,   -2,   // 6
   -2,    1,    5,    7,    7,    5,    1,   -2,   // 5
   -2,    1,    5,    7,    7,    5,    1,   -2,   // 4
   -2,    0,    3,    5,    5,    3,    0,   -2,   // 3
   -3,   -2,    0,    1,    1,    0,   -2,   -3,   // 2
   -8,   -3,   -2,   -2,   -2,   -2,   -3,   -8,   // 1
});

// Everywhere.

inline constexpr auto king = RankEightFirst<std::int8_t>({
//     a     b     c     d     e     f     g     h
    4,    6,    8,    8,    8,    8,    6,    4,   // 8
    6,    8,   10,   10,   10,   10,    8,    6,   // 7
    6,    2,    0,    0,    0,    0,    2,    6,   // 6
    6,    2,    0,   -2,   -2,    0,    2,    6,   // 5
    6,    2,    0,   -2,   -2,    0,    2,    6,   // 4
    6,    2,    0,    0,    0,    0,    2,    6,   // 3
    6,    8,   10,   10,   10,   10,    8,    6,   // 2
    4,    6,    8,    8,    8,    8,    6,    4,   // 1
});

}  // namespace order_tables

inline constexpr OrderTables opening_order{{
    {order_tables::opening_pawn,   1},
    {order_tables::opening_knight, 2},
    {order_tables::opening_bishop, 3},
    {order_tables::opening_rook,   4},
    {order_tables::opening_queen,  5},
    {order_tables::king,           0},
}};
inline constexpr OrderTables ending_order{{
    {order_tables::ending_pawn,   1},
    {order_tables::ending_knight, 2},
    {order_tables::ending_bishop, 3},
    {order_tables::ending_rook,   4},
    {order_tables::ending_queen,  5},
    {order_tables::king,          0},
}};

// clang-format on
