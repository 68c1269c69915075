#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bits.h"
#include "chess/square_table.h"

/// Values of pawns by square, in centipawns, seen from White's side. A pawn never stands on the first or last rank.

namespace pawn_tables {

using ByteBoard = std::array<std::int8_t, 64>;

// clang-format off

inline constexpr ByteBoard opening_positional = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      8,  10,  10,  -6,  -6,  10,  10,   8,   // 7
    -12,  -2,   8,  22,  22,   6,  -6, -12,   // 6
    -13,  -4,   7,  14,  14,   5,  -6, -13,   // 5
    -14,  -6,  10,  22,  22,   6,  -6, -14,   // 4
    -14,  -4,   3,  10,  10,   3,  -4, -14,   // 3
    -13,  -4,  -8,   4,   4,  -4,  -4, -13,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard opening_reckless = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      8,  10,  12,   0,   0,  10,  10,   8,   // 7
    -18, -14,   6,  32,  32,   6, -14, -18,   // 6
    -20, -14,   5,  28,  28,   5, -15, -20,   // 5
    -22, -15,  10,  34,  34,   6, -15, -22,   // 4
    -24, -15,  -3,  16,  16,  -3, -15, -24,   // 3
    -20, -15,  -8,   6,   6,  -6, -15, -20,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard middle_game_positional = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      8,  10,  10,  -6,  -6,  10,  10,   8,   // 7
    -12,  -2,   6,  21,  21,   6,  -6, -12,   // 6
    -13,  -4,   5,  21,  21,   5,  -6, -13,   // 5
    -14,  -6,   6,  18,  18,   6,  -6, -14,   // 4
    -14,  -7,   3,  12,  12,   3,  -7, -14,   // 3
    -15,  -6,  -6,   8,   8,  -4,  -6, -15,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard middle_game_reckless = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      8,  10,  10,   0,   0,  10,  10,   8,   // 7
    -19, -12,   4,  26,  26,   6, -12, -19,   // 6
    -21, -12,   3,  28,  28,   5, -13, -21,   // 5
    -23, -13,   4,  28,  28,   6, -13, -23,   // 4
    -25, -17,  -3,   6,   6,  -3, -17, -25,   // 3
    -25, -18,  -6,   0,   0,  -6, -15, -25,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard ending = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
     17,  18,  18,  18,  18,  18,  18,  17,   // 7
      9,  11,  11,  10,  10,  11,  11,   9,   // 6
      6,   8,   8,   7,   7,   8,   8,   6,   // 5
      3,   6,   6,   5,   5,   6,   6,   3,   // 4
      0,   4,   4,   3,   3,   4,   4,   0,   // 3
      0,   4,   4,   3,   3,   4,   4,   0,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

// A pawn with another one beside it.

inline constexpr ByteBoard duo_positional = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      0,   0,   0,   0,   0,   0,   0,   0,   // 7
      7,  10,  12,  16,  16,  12,  10,   7,   // 6
      3,   4,   8,  10,  10,   8,   4,   3,   // 5
      2,   2,   6,   9,   9,   8,   2,   2,   // 4
      0,   0,   1,   3,   3,   1,   0,   0,   // 3
      6,   6,   4,   0,   0,   4,   6,   6,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard duo_reckless = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      0,   0,   0,   0,   0,   0,   0,   0,   // 7
     10,  14,  18,  24,  24,  18,  14,  10,   // 6
      3,   8,  10,  14,  14,  10,   8,   3,   // 5
      2,   6,  10,  12,  12,  10,   6,   2,   // 4
      0,   0,   1,   4,   4,   1,   0,   0,   // 3
      2,   2,   1,   0,   0,   1,   2,   2,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard duo_ending = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      0,   0,   0,   0,   0,   0,   0,   0,   // 7
     10,  10,  10,  10,  10,  10,  10,  10,   // 6
      7,   7,   7,   7,   7,   7,   7,   7,   // 5
      3,   4,   4,   4,   4,   4,   4,   3,   // 4
      2,   3,   3,   3,   3,   3,   3,   2,   // 3
      2,   3,   3,   3,   3,   3,   3,   2,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

// A pawn that another one defends.

inline constexpr ByteBoard defended_positional = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      0,   0,   0,   0,   0,   0,   0,   0,   // 7
      6,   6,   9,  10,  10,   9,   6,   6,   // 6
      4,   5,   7,   7,   7,   6,   4,   4,   // 5
      4,   4,   4,   5,   5,   4,   4,   4,   // 4
      4,   5,   4,   3,   3,   4,   5,   4,   // 3
      0,   0,   0,   0,   0,   0,   0,   0,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard defended_reckless = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      0,   0,   0,   0,   0,   0,   0,   0,   // 7
      2,   4,   9,  12,  12,   9,   4,   2,   // 6
      0,   0,   6,   7,   7,   6,   0,   0,   // 5
      0,   0,   2,   5,   5,   2,   0,   0,   // 4
      0,   0,   0,   0,   0,   0,   0,   0,   // 3
      0,   0,   0,   0,   0,   0,   0,   0,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

inline constexpr ByteBoard defended_ending = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      0,   0,   0,   0,   0,   0,   0,   0,   // 8
      0,   0,   0,   0,   0,   0,   0,   0,   // 7
      3,   3,   3,   3,   3,   3,   3,   3,   // 6
      3,   3,   3,   3,   3,   3,   3,   3,   // 5
      5,   3,   3,   3,   3,   3,   3,   5,   // 4
      3,   4,   4,   4,   4,   4,   4,   3,   // 3
      0,   0,   0,   0,   0,   0,   0,   0,   // 2
      0,   0,   0,   0,   0,   0,   0,   0,   // 1
});

// clang-format on

/// The value of `square` for a pawn of `Us`.
template <Colour Us>
[[nodiscard]] constexpr int value_at(const ByteBoard& table, Square square) noexcept {
    return table[static_cast<std::size_t>(Seen<Us>(square))];
}

}  // namespace pawn_tables
