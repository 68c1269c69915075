#pragma once

#include <cstdint>
#include <optional>

#include "bitbases/tablebases.h"

/// The values of the tables: one signed byte for each position, with the distance to mate in moves, from the view of
/// the side to move.
///
///     127           broken: no legal position
///     126 .. 1      mate in 1 .. 126
///     0             a draw
///     -126 .. -1    is mated in 0 (it is mate) .. 125
///     -127          is mated in 126
///     -128          mate in 127
namespace NalimovTablebases {

inline constexpr std::int8_t broken_value = 127;

/// The scores of the program: score_of_mate - |score| half moves to the mate.
using VorkaTablebases::score_of_mate;
[[nodiscard]] constexpr int ScoreOfMateIn(int moves) { return score_of_mate - (2 * moves - 1); }
[[nodiscard]] constexpr int ScoreOfMatedIn(int moves) { return -(score_of_mate - 2 * moves); }

/// Nothing for a position that is none.
[[nodiscard]] constexpr std::optional<int> ScoreOfValue(std::int8_t value) {
    if (value == broken_value) return std::nullopt;
    if (value == 0) return 0;
    if (value > 0) return ScoreOfMateIn(127 - value);
    if (value == -127) return ScoreOfMatedIn(126);
    if (value == -128) return ScoreOfMateIn(127);
    return ScoreOfMatedIn(value + 126);
}

/// Nothing for a mate that is further away than the tables can say.
[[nodiscard]] constexpr std::optional<std::int8_t> ValueOfScore(int score) {
    if (score == 0) return std::int8_t{0};
    const int plies = score_of_mate - (score > 0 ? score : -score);
    if (score > 0) {
        const int moves = (plies + 1) / 2;
        if (moves > 127) return std::nullopt;
        return static_cast<std::int8_t>(moves == 127 ? -128 : 127 - moves);
    }
    const int moves = plies / 2;
    if (moves > 126) return std::nullopt;
    return static_cast<std::int8_t>(moves == 126 ? -127 : moves - 126);
}

static_assert([] {
    for (int value = -128; value <= 126; ++value) {
        if (ValueOfScore(*ScoreOfValue(static_cast<std::int8_t>(value))) != value) return false;
    }
    return !ScoreOfValue(broken_value) && !ValueOfScore(ScoreOfMateIn(128)) && !ValueOfScore(ScoreOfMatedIn(127));
}());

}  // namespace NalimovTablebases
