#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bits.h"

/// Every geometry table and every Zobrist key, built before main and constant from then on. No static initialiser of
/// another file may read it.
struct BITBOARD_TABLES {
    std::uint8_t bit_info[65536];  ///< population << 4 | highest bit; 65535 reads 15 and means 16 bits
    std::uint8_t diag_shift_a1h8[64];
    std::uint8_t diag_shift_a8h1[64];
    std::uint16_t diag_mask_a1h8[64];
    std::uint16_t diag_mask_a8h1[64];
    Bitboard attacks_diag_a1h8[64][256];
    Bitboard attacks_diag_a8h1[64][256];
    Bitboard attacks_rank[64][256];
    Bitboard attacks_file[64][256];
    Bitboard knight_attacks[64];
    Bitboard king_attacks[64];
    std::int8_t direction[64][64];  ///< 0 no line; 1 west, 2 east, 3 north, 4 south, 5 NW, 6 NE, 7 SW, 8 SE
    Bitboard between[64][64];
    std::int8_t distance[64][64];  ///< king steps
    std::int8_t manhattan_distance[64][64];
    Bitboard ray_west[64], ray_east[64], ray_north[64], ray_south[64];
    Bitboard ray_north_west[64], ray_north_east[64], ray_south_west[64], ray_south_east[64];
    Bitboard bishop_mask[64], rook_mask[64], queen_mask[64];  ///< the square itself included
    Bitboard white_pawn_attacks[64], black_pawn_attacks[64];
    Bitboard white_pawn_front_span[64], black_pawn_front_span[64];
    Bitboard black_pawn_attack_span[64], white_pawn_attack_span[64];
    Bitboard white_pawn_square[64], white_pawn_square_wide[64], black_pawn_square_wide[64], black_pawn_square[64];
    Bitboard outside_white_pawn_square[64][2];  ///< by the defending king: pawn_square, pawn_square_wide
    Bitboard outside_black_pawn_square[64][2];  ///< by the defending king: pawn_square_wide, pawn_square
    std::uint64_t zobrist_piece[64][13];        ///< [square][piece + 6]
    std::uint64_t zobrist_ep_third_rank[8], zobrist_ep_sixth_rank[8];

    [[nodiscard]] const Bitboard* pawn_attacks(Colour side) const {
        return side == white ? white_pawn_attacks : black_pawn_attacks;
    }
    [[nodiscard]] const Bitboard* pawn_front_span(Colour side) const {
        return side == white ? white_pawn_front_span : black_pawn_front_span;
    }
    /// The squares ahead on the same file, as a side sees it.
    [[nodiscard]] const Bitboard* ray_forward(Colour side) const { return side == white ? ray_north : ray_south; }
    /// The key of a set en passant square.
    [[nodiscard]] std::uint64_t zobrist_ep(Square s) const {
        return s < a4 ? zobrist_ep_third_rank[FileOf(s)] : zobrist_ep_sixth_rank[FileOf(s)];
    }
};

extern const BITBOARD_TABLES bitboard_tables;

/// The line directions as `direction` and HiddenAttacker number them.
enum LineDirection : int {
    no_line,
    west,
    east,
    north,
    south,
    north_west,
    north_east,
    south_west,
    south_east,
};

namespace rotation {

/// Numbers the squares of the 15 diagonals, one diagonal after the other. The diagonals start at the squares of two
/// edges, and each is walked eastwards with `rank_step`.
consteval std::array<std::uint8_t, 64> Diagonals(const std::array<Square, 15>& starts, int rank_step) {
    std::array<std::uint8_t, 64> bit_of{};
    std::uint8_t bit = 0;
    for (const Square start : starts) {
        for (int f = FileOf(start), r = RankOf(start); f < 8 && r >= 0 && r < 8; ++f, r += rank_step)
            bit_of[static_cast<std::size_t>(r * 8 + f)] = bit++;
    }
    return bit_of;
}

/// Each file in a byte, the h-file lowest, the first rank in bit 0.
consteval std::array<std::uint8_t, 64> Files() {
    std::array<std::uint8_t, 64> bit_of{};
    for (int s = a1; s <= h8; ++s)
        bit_of[static_cast<std::size_t>(s)] = static_cast<std::uint8_t>((7 - FileOf(s)) * 8 + RankOf(s));
    return bit_of;
}

/// Where the diagonals parallel to a1-h8 start, the shortest at the h1 end first; likewise those parallel to a8-h1.
inline constexpr std::array<Square, 15> starts_a1h8 = {h1, g1, f1, e1, d1, c1, b1, a1, a2, a3, a4, a5, a6, a7, a8};
inline constexpr std::array<Square, 15> starts_a8h1 = {a1, a2, a3, a4, a5, a6, a7, a8, b8, c8, d8, e8, f8, g8, h8};

}  // namespace rotation

/// The bit of each square in a rotated occupancy: every diagonal or file is a run of neighbouring bits there.
inline constexpr std::array<std::uint8_t, 64> ROTATE_DIAG_A1H8 = rotation::Diagonals(rotation::starts_a1h8, +1);
inline constexpr std::array<std::uint8_t, 64> ROTATE_FILE = rotation::Files();
inline constexpr std::array<std::uint8_t, 64> ROTATE_DIAG_A8H1 = rotation::Diagonals(rotation::starts_a8h1, -1);
