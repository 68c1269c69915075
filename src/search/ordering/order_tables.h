#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bits.h"
#include "chess/square_table.h"
#include "evaluation/pawns/pawn_tables.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/pieces/piece_tables.h"

/// Where a piece is better placed, seen from White's side: what orders the quiet moves that nothing else is known of.

struct OrderTable {
    std::array<std::int8_t, 64> by_square;
    std::int8_t piece;  ///< what a move of this piece gets whatever its squares
};
/// By piece type, pawn first.
using OrderTables = std::array<OrderTable, 6>;
static_assert(sizeof(OrderTables) == 6 * 65);

namespace order_tables {

/// A board of the evaluation, cut to what a byte can hold. Only a knight in a corner of the last rank needs the cut.
[[nodiscard]] consteval std::array<std::int8_t, 64> CutToBytes(const piece_tables::Board& board) {
    std::array<std::int8_t, 64> cut{};
    for (std::size_t s = 0; s < 64; ++s) cut[s] = static_cast<std::int8_t>(std::max<int>(board[s], -128));
    return cut;
}

inline constexpr auto opening_knight = CutToBytes(piece_tables::knight_opening_positional);
inline constexpr auto opening_bishop = CutToBytes(piece_tables::bishop_positional);
inline constexpr auto opening_queen = CutToBytes(piece_tables::queen_opening_positional);

// The evaluation has no boards of rooks; what it adds for one on the seventh rank stands here instead.

// clang-format off

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

// clang-format on

}  // namespace order_tables

// clang-format off

inline constexpr OrderTables opening_order{{
    {pawn_tables::opening_positional, 1},
    {order_tables::opening_knight,    2},
    {order_tables::opening_bishop,    3},
    {order_tables::opening_rook,      4},
    {order_tables::opening_queen,     5},
    {ending_tables::king_normal,      0},
}};
inline constexpr OrderTables ending_order{{
    {pawn_tables::ending,          1},
    {ending_tables::knight_ending, 2},
    {ending_tables::bishop_ending, 3},
    {order_tables::ending_rook,    4},
    {ending_tables::queen_ending,  5},
    {ending_tables::king_normal,   0},
}};

// clang-format on
