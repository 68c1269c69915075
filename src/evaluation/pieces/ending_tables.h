#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bits.h"
#include "chess/square_table.h"

/// Values of pieces by square in endings, in centipawns, seen from White's side.
namespace ending_tables {

using ByteBoard = std::array<std::int8_t, 64>;

// clang-format off

inline constexpr ByteBoard knight_ending = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
    -55, -32, -25, -20, -20, -25, -32, -55,   // 8
    -35,   5,  16,  20,  20,  16,   5, -35,   // 7
    -20,  12,  23,  28,  28,  23,  12, -20,   // 6
    -15,  18,  24,  30,  30,  24,  18, -15,   // 5
    -15,  16,  22,  28,  28,  22,  16, -15,   // 4
    -20,  11,  18,  22,  22,  18,  11, -20,   // 3
    -22,   5,  11,  16,  16,  11,   5, -22,   // 2
    -55, -24, -22, -20, -20, -22, -24, -55,   // 1
});

inline constexpr ByteBoard bishop_ending = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
    -12,   0,   1,   2,   2,   1,   0, -12,   // 8
      0,   2,   4,   5,   5,   4,   2,   0,   // 7
      1,   4,   7,   9,   9,   7,   4,   1,   // 6
      2,   5,   9,  12,  12,   9,   5,   2,   // 5
      2,   5,   9,  12,  12,   9,   6,   2,   // 4
      1,   4,   7,   9,   9,   7,   4,   1,   // 3
     -2,   2,   3,   4,   4,   3,   1,  -2,   // 2
    -12,  -3,  -3,  -2,  -2,  -3,  -3, -12,   // 1
});

inline constexpr ByteBoard queen_ending = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
     -8,  -3,  -2,  -2,  -2,  -2,  -3,  -8,   // 8
     -3,  -2,   0,   1,   1,   0,  -2,  -3,   // 7
     -2,   0,   3,   5,   5,   3,   0,  -2,   // 6
     -2,   1,   5,   7,   7,   5,   1,  -2,   // 5
     -2,   1,   5,   7,   7,   5,   1,  -2,   // 4
     -2,   0,   3,   5,   5,   3,   0,  -2,   // 3
     -3,  -2,   0,   1,   1,   0,  -2,  -3,   // 2
     -8,  -3,  -2,  -2,  -2,  -2,  -3,  -8,   // 1
});

/// Where a queen stands against the other queen.
inline constexpr ByteBoard queen_centralisation = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
    -14,  -9,  -8,  -8,  -8,  -8,  -9, -14,   // 8
     -9,  -6,  -3,  -1,  -1,  -3,  -6,  -9,   // 7
     -8,  -3,   6,  10,  10,   6,  -3,  -8,   // 6
     -8,  -1,  10,  14,  14,  10,  -1,  -8,   // 5
     -8,  -1,  10,  14,  14,  10,  -1,  -8,   // 4
     -8,  -3,   6,  10,  10,   6,  -3,  -8,   // 3
     -9,  -6,  -3,  -1,  -1,  -3,  -6,  -9,   // 2
    -14,  -9,  -8,  -8,  -8,  -8,  -9, -14,   // 1
});

/// The king while the enemy has pieces enough to attack it.
inline constexpr ByteBoard king_normal = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      4,   6,   8,   8,   8,   8,   6,   4,   // 8
      6,   8,  10,  10,  10,  10,   8,   6,   // 7
      6,   2,   0,   0,   0,   0,   2,   6,   // 6
      6,   2,   0,  -2,  -2,   0,   2,   6,   // 5
      6,   2,   0,  -2,  -2,   0,   2,   6,   // 4
      6,   2,   0,   0,   0,   0,   2,   6,   // 3
      6,   8,  10,  10,  10,  10,   8,   6,   // 2
      4,   6,   8,   8,   8,   8,   6,   4,   // 1
});

/// And later.
inline constexpr ByteBoard king_late = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
      4,   0,   8,  12,  12,   8,   0,   4,   // 8
      4,   8,  12,  16,  16,  12,   8,   4,   // 7
      8,  12,  16,  20,  20,  16,  12,   8,   // 6
     12,  16,  20,  24,  24,  20,  16,  12,   // 5
     12,  16,  20,  24,  24,  20,  16,  12,   // 4
      8,  12,  16,  20,  20,  16,  12,   8,   // 3
      4,   8,  12,  16,  16,  12,   8,   4,   // 2
      4,   0,   8,  12,  12,   8,   0,   4,   // 1
});

/// How far a king is from the rim and the corners.
inline constexpr ByteBoard corner_table = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
    -80, -68, -56, -44, -44, -56, -68, -80,   // 8
    -68, -12,  -4,   4,   4,  -4, -12, -68,   // 7
    -56,  -4,  14,  24,  24,  14,  -4, -56,   // 6
    -44,   4,  24,  44,  44,  24,   4, -44,   // 5
    -44,   4,  24,  44,  44,  24,   4, -44,   // 4
    -56,  -4,  14,  24,  24,  14,  -4, -56,   // 3
    -68, -12,  -4,   4,   4,  -4, -12, -68,   // 2
    -80, -68, -56, -44, -44, -56, -68, -80,   // 1
});

/// How near a king is to the dark corners a1 and h8, where a bishop of that colour helps to mate it.
inline constexpr ByteBoard colored_corner_table = RankEightFirst<std::int8_t>({
//    a    b    c    d    e    f    g    h
    -60, -40,   2,  18,  40,  70, 110, 120,   // 8
    -40, -34, -10,  12,  26,  50,  90, 110,   // 7
      2, -10, -30, -20, -10,  36,  50,  70,   // 6
     18,  12, -20, -52, -52, -10,  26,  40,   // 5
     40,  26, -10, -52, -52, -20,  12,  18,   // 4
     70,  50,  36, -10, -20, -30, -10,   2,   // 3
    110,  90,  50,  26,  12, -10, -34, -40,   // 2
    120, 110,  70,  40,  18,   2, -40, -60,   // 1
});

// clang-format on

/// The value of `square` for a piece of `Us`.
template <Colour Us>
[[nodiscard]] constexpr int value_at(const ByteBoard& table, Square square) noexcept {
    return table[static_cast<std::size_t>(Seen<Us>(square))];
}
/// The value of a square where the colours make no difference.
[[nodiscard]] constexpr int value_at(const ByteBoard& table, Square square) noexcept {
    return table[static_cast<std::size_t>(square)];
}

}  // namespace ending_tables
