#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

/// Sets of like men, as indices number them.
namespace VorkaTablebases {

/// How many sets of `count` things, one to three, there are among `n`.
[[nodiscard]] constexpr std::uint64_t Choose(std::uint64_t n, std::size_t count) {
    switch (count) {
        case 1:
            return n;
        case 2:
            return n * (n - 1) / 2;
        default:
            return n * (n - 1) * (n - 2) / 6;
    }
}

/// Things of a set, in any order; the first `count` of them count.
using ThingsOfSet = std::array<std::uint64_t, 3>;

/// The number of a set among those with as many things: 0 for the lowest ones.
[[nodiscard]] constexpr std::uint64_t NumberOfSet(ThingsOfSet things, std::size_t count) {
    if (count == 1) return things[0];
    if (things[0] < things[1]) std::swap(things[0], things[1]);
    if (count == 2) return Choose(things[0], 2) + things[1];
    if (things[1] < things[2]) std::swap(things[1], things[2]);
    if (things[0] < things[1]) std::swap(things[0], things[1]);
    return Choose(things[0], 3) + Choose(things[1], 2) + things[2];
}

static_assert(NumberOfSet({1, 0, 2}, 3) == 0 && NumberOfSet({63, 61, 62}, 3) == Choose(64, 3) - 1);
static_assert(NumberOfSet({0, 1}, 2) == 0 && NumberOfSet({63, 62}, 2) == Choose(64, 2) - 1);

}  // namespace VorkaTablebases
