#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bits.h"
#include "chess/square_table.h"

/// Values of pieces by square, seen from White's side.

namespace piece_tables {

using Board = std::array<std::int16_t, 64>;  ///< centipawns, or points of pressure

// clang-format off

inline constexpr Board knight_opening_positional = RankEightFirst<std::int16_t>({
//      a     b     c     d     e     f     g     h
    -260,  -40,  -40,  -40,  -40,  -40,  -40, -260,   // 8
     -40,    0,   14,   18,   18,   14,    0,  -40,   // 7
     -19,    7,   18,   24,   24,   18,    7,  -19,   // 6
     -18,    6,   15,   22,   22,   15,    6,  -18,   // 5
     -18,    6,   14,   20,   20,   14,    6,  -18,   // 4
     -20,    4,   11,   10,   10,   12,    7,  -20,   // 3
     -22,   -8,    8,    9,    8,    8,   -8,  -22,   // 2
     -50,  -20,  -20,  -20,  -20,  -20,  -20,  -50,   // 1
});

inline constexpr Board knight_opening_reckless = RankEightFirst<std::int16_t>({
//      a     b     c     d     e     f     g     h
    -260,  -45,  -45,  -45,  -45,  -45,  -45, -260,   // 8
     -45,   12,   26,   36,   36,   26,   12,  -45,   // 7
     -25,   26,   34,   42,   42,   34,   26,  -25,   // 6
     -25,   20,   32,   38,   38,   32,   20,  -25,   // 5
     -25,   20,   26,   34,   34,   26,   20,  -25,   // 4
     -29,   14,   18,   22,   22,   20,   14,  -29,   // 3
     -33,   -2,   10,   15,   14,   10,   -2,  -33,   // 2
     -71,  -25,  -25,  -25,  -25,  -25,  -25,  -71,   // 1
});

inline constexpr Board knight_middle_game_positional = RankEightFirst<std::int16_t>({
//      a     b     c     d     e     f     g     h
    -250,  -40,  -40,  -40,  -40,  -40,  -40, -250,   // 8
     -42,    8,   15,   16,   16,   15,    8,  -42,   // 7
     -20,   11,   20,   28,   28,   20,   11,  -20,   // 6
     -20,   12,   18,   26,   26,   18,   12,  -20,   // 5
     -20,   12,   18,   24,   24,   18,   12,  -20,   // 4
     -20,    9,   15,   18,   18,   15,   10,  -20,   // 3
     -22,   -8,    8,   10,   10,    8,   -8,  -22,   // 2
     -45,  -20,  -16,  -14,  -14,  -12,  -20,  -45,   // 1
});

inline constexpr Board knight_middle_game_reckless = RankEightFirst<std::int16_t>({
//      a     b     c     d     e     f     g     h
    -250,  -50,  -50,  -50,  -50,  -50,  -50, -250,   // 8
     -54,   18,   28,   36,   36,   34,   28,  -54,   // 7
     -30,   30,   40,   48,   48,   40,   30,  -30,   // 6
     -30,   27,   38,   44,   44,   38,   27,  -30,   // 5
     -30,   26,   34,   40,   40,   34,   26,  -30,   // 4
     -34,   16,   24,   30,   30,   26,   16,  -34,   // 3
     -38,    8,   10,   16,   16,   10,    8,  -38,   // 2
     -65,  -30,  -26,  -24,  -24,  -24,  -30,  -65,   // 1
});

/// What a knight adds to `pressure` on the wing where it stands.
inline constexpr Board knight_pressure = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
     -8,   4,   4,   5,   5,   4,   4,  -8,   // 8
     -4,   7,  10,  12,  12,  10,   7,  -4,   // 7
      4,   8,  10,  12,  12,  10,   8,   4,   // 6
      2,   7,   8,  10,  10,   8,   7,   2,   // 5
     -2,   6,   7,   8,   8,   7,   6,  -2,   // 4
     -5,   1,   4,   5,   5,   4,   1,  -5,   // 3
     -7,  -2,   0,   0,   0,   0,  -2,  -7,   // 2
    -13,  -7,  -7,  -7,  -7,  -7,  -7, -13,   // 1
});

inline constexpr Board bishop_positional = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
    -15,  -4,  -4,  -4,  -4,  -4,  -4, -15,   // 8
     -2,  -2,  -2,   0,   0,  -2,  -2,  -2,   // 7
      4,   8,  10,  12,  12,  10,   8,   4,   // 6
      4,  10,  10,  18,  18,  10,  10,   4,   // 5
      8,  10,  16,  18,  18,  16,  10,   8,   // 4
      6,  12,  15,  16,  16,  15,  12,   6,   // 3
      3,  20,  10,  14,  14,  10,  20,   3,   // 2
     -8,  -4,  -8,  -6,  -6,  -8,  -4,  -8,   // 1
});

inline constexpr Board bishop_reckless = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
    -15,   0,   4,   6,   6,   4,   0, -15,   // 8
      4,   8,  10,  16,  16,  10,   8,   4,   // 7
      8,  12,  16,  20,  20,  16,  12,   8,   // 6
     12,  16,  20,  24,  24,  20,  16,  12,   // 5
     12,  16,  26,  28,  28,  24,  16,  12,   // 4
     12,  16,  20,  24,  24,  20,  16,  12,   // 3
      6,  22,  12,  18,  18,  12,  22,   6,   // 2
    -12,  -2,  -4,  -2,  -2,  -4,  -2, -12,   // 1
});

inline constexpr Board queen_opening_positional = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
    -10, -10, -10, -10, -10, -10, -10, -10,   // 8
    -10, -23,   0,   0,   0,   0, -23, -10,   // 7
     -8,   0,   0,   0,   0,   0,   0,  -8,   // 6
      0,   0,   0,   0,   0,   0,   0,   0,   // 5
      2,   0,   0,   0,   0,   0,   0,   0,   // 4
      0,   2,   2,   1,   1,   2,   0,   0,   // 3
     -1,   0,   6,   6,   8,   4,   0,  -1,   // 2
     -8,  -7,  -7,   4,   0,  -7,  -7,  -8,   // 1
});

inline constexpr Board queen_opening_reckless = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
    -12, -10, -10, -10, -10, -10, -10, -12,   // 8
    -12, -18,   0,   0,   0,   0, -18, -12,   // 7
     -8,   0,   2,   5,   5,   2,   0,  -8,   // 6
      0,   0,   2,   4,   4,   2,   0,   0,   // 5
      2,   0,   2,   4,   4,   2,   0,   0,   // 4
      0,   4,   2,   2,   2,   2,   2,   0,   // 3
     -3,   0,   6,   6,   8,   4,   2,  -3,   // 2
    -12, -12, -12,   4,   2, -12, -12, -12,   // 1
});

inline constexpr Board queen_middle_game_positional = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
     -4,  -4,   0,   0,   0,   0,  -4,  -4,   // 8
     -4,  -4,   1,   1,   1,   1,  -4,  -4,   // 7
      0,   1,   2,   2,   2,   2,   1,   0,   // 6
      1,   2,   3,   3,   3,   3,   2,   1,   // 5
      1,   2,   3,   4,   4,   3,   2,   1,   // 4
      0,   2,   3,   4,   4,   3,   2,   0,   // 3
     -1,   0,   6,   6,   6,   4,   0,  -1,   // 2
     -8,  -4,  -2,  -6,  -5,  -2,  -4,  -8,   // 1
});

inline constexpr Board queen_middle_game_reckless = RankEightFirst<std::int16_t>({
//     a    b    c    d    e    f    g    h
     -6,  -6,   1,   1,   1,   1,  -6,  -6,   // 8
     -8,  -6,   1,   1,   1,   1,  -6,  -8,   // 7
      1,   1,   2,   4,   4,   2,   1,   1,   // 6
      1,   2,   2,   4,   4,   2,   2,   1,   // 5
      1,   2,   2,   4,   4,   2,   2,   1,   // 4
      0,   2,   3,   4,   4,   3,   2,   0,   // 3
     -3,   0,   6,   6,   6,   4,   0,  -3,   // 2
    -12, -12, -12,  -6,  -6, -12, -12, -12,   // 1
});

// clang-format on

/// The value of `square` for a piece of `Us`.
template <Colour Us>
[[nodiscard]] constexpr int value_at(const Board& table, Square square) noexcept {
    return table[static_cast<std::size_t>(Seen<Us>(square))];
}

}  // namespace piece_tables
