#pragma once

#include "chess/attacks.h"
#include "chess/position_keys.h"

/// What castling and en passant do to the lines of the two kings: shared by the generator and the test of single moves.

/// Whether a slider of `side` looks at `square` with `occupied` as the occupancy, which need not be the board's.
[[nodiscard]] inline bool IsOnSlidersLine(Square square, const SIDE_PIECES& side, Bitboard occupied) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    Bitboard sliders =
        (t.rook_mask[square] & (side.rooks | side.queens)) | (t.bishop_mask[square] & (side.bishops | side.queens));
    while (sliders != 0)
        if ((t.between[square][TakeNextBit(sliders)] & occupied) == 0) return true;
    return false;
}

/// Whether the rook that castles checks `enemy_king`: along the rank through the square that the king leaves, or along
/// the file of its new square.
[[nodiscard]] inline bool CastlingGivesCheck(const BOARD& board, Square king_from, Square king_to,
                                             Square enemy_king) noexcept {
    const Square rook_to = (king_from + king_to) / 2;
    return Has(board.RankAttacks(king_from) | board.FileAttacks(rook_to), enemy_king);
}

/// An en passant capture on the square of the current frame, by a pawn of `Us` that stands on `from`.
template <Colour Us>
struct EnPassantCapture {
    const BOARD& board;
    Square from;
    Square to = board.frame().en_passant_square;
    Square taken = Behind<Us>(to);
    Bitboard occupied_after = (board.occupied & ~(Bit(from) | Bit(taken))) | Bit(to);

    [[nodiscard]] bool ExposesOwnKing() const noexcept {
        return IsOnSlidersLine(board.sides[Us].king_square, board.sides[Opponent(Us)], occupied_after);
    }
    [[nodiscard]] Move CheckBits() const noexcept {
        const Square enemy_king = board.sides[Opponent(Us)].king_square;
        Move bits = 0;
        if (Has(bitboard_tables.pawn_attacks(Us)[to], enemy_king)) bits |= direct_check_bit;
        if (IsOnSlidersLine(enemy_king, board.sides[Us], occupied_after)) bits |= discovered_check_bit;
        return bits;
    }
};
