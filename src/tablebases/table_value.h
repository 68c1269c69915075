#pragma once

#include <cstdint>

#include "bitbases/tablebases.h"

/// What a table says of a position in one byte, for the side to move:
///
///     0            a draw
///     1 .. 127     mate in so many moves
///     128 .. 254   mated in 0 .. 126 moves; 128 is checkmate
///     255          no position (only while a table is computed)
namespace VorkaTablebases {

using TableValue = std::uint8_t;

inline constexpr TableValue table_draw = 0;
inline constexpr TableValue table_checkmate = 128;
inline constexpr TableValue table_illegal = 255;
inline constexpr int longest_win = 127;   ///< in moves
inline constexpr int longest_loss = 126;  ///< in moves

[[nodiscard]] constexpr bool IsWin(TableValue value) { return value >= 1 && value <= longest_win; }
[[nodiscard]] constexpr bool IsLoss(TableValue value) { return value >= table_checkmate && value != table_illegal; }

/// Plies to the mate of a win or a loss.
[[nodiscard]] constexpr int PliesOf(TableValue value) { return IsWin(value) ? 2 * value - 1 : 2 * (value - 128); }

/// Who mates in an odd number of plies wins, who is mated in an even one loses.
[[nodiscard]] constexpr TableValue ValueOf(int plies) {
    return static_cast<TableValue>(plies % 2 != 0 ? (plies + 1) / 2 : table_checkmate + plies / 2);
}

/// 0 for a draw, else score_of_mate less the plies to the mate, negative for a loss.
[[nodiscard]] constexpr int ScoreOf(TableValue value) {
    if (value == table_draw) return 0;
    return IsWin(value) ? score_of_mate - PliesOf(value) : PliesOf(value) - score_of_mate;
}

static_assert(ScoreOf(1) == 32766 && ScoreOf(table_checkmate) == -32767 && ScoreOf(table_checkmate + 1) == -32765);
static_assert(ValueOf(1) == 1 && ValueOf(0) == table_checkmate && ValueOf(2) == table_checkmate + 1);

}  // namespace VorkaTablebases
