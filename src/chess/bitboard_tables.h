#pragma once

#include <cstdint>

#include "chess/bits.h"

/// Every geometry table and every Zobrist key, built before main and constant from then on.
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
};

extern const BITBOARD_TABLES& bitboard_tables;

/// The bit of each square in a rotated occupancy.
extern const std::uint8_t ROTATE_DIAG_A1H8[64], ROTATE_FILE[64], ROTATE_DIAG_A8H1[64];
