#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bitboard_tables.h"
#include "chess/board.h"

/// The parts that a position's key is made of, for the code that keeps it up to date.

inline constexpr std::array<std::uint8_t, 2> castling_rights_of = {white_short | white_long, black_short | black_long};

/// By set of rights: the keys of all rights held.
inline constexpr std::array<std::uint64_t, 16> castling_keys = [] {
    constexpr std::uint64_t key_of_right[4] = {0x517CC1B727220A94, 0x229A1869D1B6232E, 0x5C6B34ADBF4E8E53,
                                               0x11489E10D9AD68F5};
    std::array<std::uint64_t, 16> keys{};
    for (std::size_t rights = 0; rights < keys.size(); ++rights)
        for (std::size_t bit = 0; bit < 4; ++bit)
            if ((rights >> bit & 1U) != 0) keys[rights] ^= key_of_right[bit];
    return keys;
}();

/// By square: the right that goes when the rook in this corner moves or is captured.
inline constexpr std::array<std::uint8_t, 64> castling_right_of_corner = [] {
    std::array<std::uint8_t, 64> right{};
    right[h1] = white_short;
    right[a1] = white_long;
    right[h8] = black_short;
    right[a8] = black_long;
    return right;
}();

/// By square: the rights that go when whatever stands here moves or is captured. A right is held only while its king
/// and its rook are at home, so nobody else can stand there.
inline constexpr std::array<std::uint8_t, 64> castling_rights_of_home = [] {
    std::array<std::uint8_t, 64> rights = castling_right_of_corner;
    rights[e1] = castling_rights_of[white];
    rights[e8] = castling_rights_of[black];
    return rights;
}();

[[nodiscard]] inline std::uint64_t PieceKey(Square s, int signed_piece) {
    return bitboard_tables.zobrist_piece[s][signed_piece + 6];
}

/// A piece type's code on the board.
[[nodiscard]] constexpr int SignedCode(Colour side, int piece) { return side == white ? piece : -piece; }
template <Colour Us>
[[nodiscard]] constexpr int SignedCode(int piece) {
    return SignedCode(Us, piece);
}

/// The square behind `s`, where a pawn of `Us` came from.
template <Colour Us>
[[nodiscard]] constexpr Square Behind(Square s) {
    return s - Forward(Us);
}

/// From and to of the rook that castles with a king going to `king_to`.
struct RookJump {
    Square from, to;
};
[[nodiscard]] constexpr RookJump RookJumpOf(Square king_to) {
    return FileOf(king_to) == FileOf(g1) ? RookJump{king_to + 1, king_to - 1} : RookJump{king_to - 2, king_to + 1};
}
