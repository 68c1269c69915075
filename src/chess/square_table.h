#pragma once

#include <array>
#include <cstddef>

/// Takes 64 values as a player sees the board from White's side (a8 first) and gives them by square (a1 = 0).
template <class T>
[[nodiscard]] consteval std::array<T, 64> RankEightFirst(const T (&seen_from_white)[64]) {
    std::array<T, 64> by_square{};
    for (std::size_t i = 0; i < 64; ++i) by_square[i ^ 56] = seen_from_white[i];
    return by_square;
}
