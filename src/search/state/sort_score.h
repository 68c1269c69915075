#pragma once

#include <cstdint>

#include "chess/move.h"

/// A move carries its sort score in the top nine bits of its word, above the move itself, so that comparing words
/// orders moves by their scores.

inline constexpr int sort_score_shift = 23;
inline constexpr int max_sort_score = 511;
static_assert((Move{max_sort_score} << sort_score_shift | move_bits) == ~Move{0});

/// The move with a score in place of whatever score it had. A negative score wraps, and makes the word a large one.
[[nodiscard]] constexpr Move WithSortScore(Move word, std::int32_t score) noexcept {
    return (word & move_bits) | static_cast<Move>(score) << sort_score_shift;
}
[[nodiscard]] constexpr std::int32_t SortScore(Move word) noexcept {
    return static_cast<std::int32_t>(word >> sort_score_shift);
}
[[nodiscard]] constexpr bool IsTactical(Move word) noexcept { return (word & tactical_bits) != 0; }
