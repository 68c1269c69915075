#pragma once

#include <cstdint>

#include "chess/bits.h"

/// A move in one word, as the generator makes it:
///
///     bits 0-5 from, 6-11 to, 12-14 piece type, 15-17 captured type (1 for en passant), 18-20 promotion type,
///     21 direct check, 22 discovered check, 23-31 sort score of the move ordering, otherwise 0.
///
/// Castling is a king move of two files, with no further mark. Two words are the same move only if their check bits
/// are equal too.
using Move = std::uint32_t;

inline constexpr Move INVALID = 0;

inline constexpr Move direct_check_bit = 1U << 21;
inline constexpr Move discovered_check_bit = 1U << 22;
inline constexpr Move check_bits = direct_check_bit | discovered_check_bit;
/// Captured type, promotion and check bits: what the settings call tactical.
inline constexpr Move tactical_bits = 0x7F8000;
/// Captured type and promotion: the bits that change the material.
inline constexpr Move capture_or_promotion_bits = 0x1F8000;
/// The move without its sort score.
inline constexpr Move move_bits = 0x7FFFFF;

[[nodiscard]] constexpr Square FromSquare(Move m) { return static_cast<Square>(m & 63U); }
[[nodiscard]] constexpr Square ToSquare(Move m) { return static_cast<Square>((m >> 6) & 63U); }
[[nodiscard]] constexpr int MovingPiece(Move m) { return static_cast<int>((m >> 12) & 7U); }
[[nodiscard]] constexpr int CapturedPiece(Move m) { return static_cast<int>((m >> 15) & 7U); }
[[nodiscard]] constexpr int PromotionPiece(Move m) { return static_cast<int>((m >> 18) & 7U); }
[[nodiscard]] constexpr bool GivesDirectCheck(Move m) { return (m & direct_check_bit) != 0; }
[[nodiscard]] constexpr bool GivesDiscoveredCheck(Move m) { return (m & discovered_check_bit) != 0; }
[[nodiscard]] constexpr bool GivesCheck(Move m) { return (m & check_bits) != 0; }
/// How a move checks, as both of its check bits say it.
enum class CheckKind : unsigned { none = 0, direct = 1, discovered = 2, both = 3 };
[[nodiscard]] constexpr CheckKind CheckType(Move m) { return static_cast<CheckKind>((m & check_bits) >> 21); }
static_assert(CheckType(direct_check_bit) == CheckKind::direct &&
              CheckType(discovered_check_bit) == CheckKind::discovered && CheckType(check_bits) == CheckKind::both);

[[nodiscard]] constexpr Move MakeWord(Square from, Square to, int piece, int captured = no_piece,
                                      int promotion = no_piece) {
    return static_cast<Move>(from) | static_cast<Move>(to) << 6 | static_cast<Move>(piece) << 12 |
           static_cast<Move>(captured) << 15 | static_cast<Move>(promotion) << 18;
}

[[nodiscard]] constexpr bool IsCastling(Move m) {
    const int files = FileOf(ToSquare(m)) - FileOf(FromSquare(m));
    return MovingPiece(m) == king && (files == 2 || files == -2);
}

/// Castling by side: short, then long.
inline constexpr Move castling_word[2][2] = {{0x6184, 0x6084}, {0x6FBC, 0x6EBC}};
static_assert(castling_word[white][0] == MakeWord(e1, g1, king) && castling_word[black][1] == MakeWord(e8, c8, king));
