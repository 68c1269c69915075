#pragma once

#include <bit>
#include <cstdint>

/// A set of squares: bit n is square n. a1 is 0, h1 is 7, h8 is 63.
using Bitboard = std::uint64_t;
using Square = int;

/// The two sides. Used as an index: 0 White, 1 Black.
enum Colour : std::uint32_t { white = 0, black = 1 };
[[nodiscard]] constexpr Colour Opponent(Colour side) { return static_cast<Colour>(side ^ 1U); }

/// Piece types. On a board a black piece is the negated code.
enum PieceType : int { no_piece = 0, pawn = 1, knight = 2, bishop = 3, rook = 4, queen = 5, king = 6 };

// clang-format off
enum SquareName : int {
    a1, b1, c1, d1, e1, f1, g1, h1,
    a2, b2, c2, d2, e2, f2, g2, h2,
    a3, b3, c3, d3, e3, f3, g3, h3,
    a4, b4, c4, d4, e4, f4, g4, h4,
    a5, b5, c5, d5, e5, f5, g5, h5,
    a6, b6, c6, d6, e6, f6, g6, h6,
    a7, b7, c7, d7, e7, f7, g7, h7,
    a8, b8, c8, d8, e8, f8, g8, h8,
};
// clang-format on

/// By piece type: material units (knight and bishop 3, rook 5, queen 9), and hundredths of a pawn.
inline constexpr int material_units[7] = {0, 0, 3, 3, 5, 9, 0};
inline constexpr int piece_value[7] = {0, 100, 305, 315, 500, 1020, 0};

[[nodiscard]] constexpr int FileOf(Square s) { return s & 7; }
[[nodiscard]] constexpr int RankOf(Square s) { return s >> 3; }
[[nodiscard]] constexpr Bitboard Bit(Square s) { return Bitboard{1} << s; }
[[nodiscard]] constexpr bool Has(Bitboard set, Square s) { return ((set >> s) & 1U) != 0; }

[[nodiscard]] constexpr Square MirrorVertically(Square s) { return s ^ 56; }
[[nodiscard]] constexpr Square MirrorHorizontally(Square s) { return s ^ 7; }
static_assert([] {
    for (int rank = 0; rank < 8; ++rank) {
        for (int file = 0; file < 8; ++file) {
            const Square s = rank * 8 + file;
            if (FileOf(s) != file || RankOf(s) != rank) return false;
            if (MirrorVertically(s) != (7 - rank) * 8 + file) return false;
            if (MirrorHorizontally(s) != rank * 8 + (7 - file)) return false;
        }
    }
    return true;
}());

/// A square written from White's side, as a side sees it: rank r becomes 7 - r for Black, files stay.
[[nodiscard]] constexpr Square Seen(Colour side, Square s) { return side == white ? s : MirrorVertically(s); }
template <Colour Us>
[[nodiscard]] constexpr Square Seen(Square s) {
    return Seen(Us, s);
}

/// The step of a side's pawns, from square to square.
[[nodiscard]] constexpr int Forward(Colour side) { return side == white ? 8 : -8; }

/// The scans and counts exist in two forms with the same results: one that reads a 64 K table of 16-bit chunks, and one
/// from the language's own bit operations. The latter is faster (benchmarks/perft measures both) and stands behind the
/// plain names below; a build with VORKA_TABLE_BITS puts the table there.
namespace table_bits {
[[nodiscard]] int PopCount(Bitboard b) noexcept;
[[nodiscard]] Square FindHighestBit(Bitboard b) noexcept;
[[nodiscard]] Square FindLowestBit(Bitboard b) noexcept;
}  // namespace table_bits

namespace portable_bits {
[[nodiscard]] constexpr int PopCount(Bitboard b) noexcept { return std::popcount(b); }
// Bit 0 is set so that the empty set gives 0 without a branch.
[[nodiscard]] constexpr Square FindHighestBit(Bitboard b) noexcept { return 63 ^ std::countl_zero(b | 1U); }
[[nodiscard]] constexpr Square FindLowestBit(Bitboard b) noexcept { return b == 0 ? 0 : std::countr_zero(b); }
}  // namespace portable_bits

#ifdef VORKA_TABLE_BITS
namespace bits_in_force = table_bits;
#else
namespace bits_in_force = portable_bits;
#endif

/// Number of squares in a set; the sparse form is for sets that are expected to be small.
[[nodiscard]] inline int PopCount(Bitboard b) noexcept { return bits_in_force::PopCount(b); }
[[nodiscard]] inline int PopCountSparse(Bitboard b) noexcept { return bits_in_force::PopCount(b); }
/// The highest and the lowest square of a set; 0 for the empty set.
[[nodiscard]] inline Square FindHighestBit(Bitboard b) noexcept { return bits_in_force::FindHighestBit(b); }
[[nodiscard]] inline Square FindLowestBit(Bitboard b) noexcept { return bits_in_force::FindLowestBit(b); }
/// The next square of a walk: sets are walked from h8 to a1, and the order of moves depends on it.
[[nodiscard]] inline Square FindNextBit(Bitboard b) noexcept { return FindHighestBit(b); }
/// FindNextBit, and takes the square out of the set, which must not be empty.
[[nodiscard]] inline Square TakeNextBit(Bitboard& b) noexcept {
    const Square s = FindNextBit(b);
    b ^= Bit(s);
    return s;
}
[[nodiscard]] constexpr bool HasSeveral(Bitboard b) noexcept { return (b & (b - 1)) != 0; }
/// The set upside down: rank 1 exchanged with rank 8, and so on.
[[nodiscard]] constexpr Bitboard MirrorRanks(Bitboard b) noexcept {
    b = ((b >> 8) & 0x00FF00FF00FF00FF) | ((b & 0x00FF00FF00FF00FF) << 8);
    b = ((b >> 16) & 0x0000FFFF0000FFFF) | ((b & 0x0000FFFF0000FFFF) << 16);
    return (b >> 32) | (b << 32);
}
