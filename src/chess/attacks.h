#pragma once

#include "chess/board.h"

/// Who attacks what, on the present occupancy. Nothing here changes a board. Every `SIDE_PIECES` argument is one of the
/// two sides of the board that it comes with.

/// All pieces of both sides that attack `square`.
[[nodiscard]] Bitboard AttackersOf(Square square, const BOARD& board) noexcept;
/// Whether any piece of that side attacks `square`.
[[nodiscard]] bool IsAttackedBy(Square square, const BOARD& board, const SIDE_PIECES& side) noexcept;
/// The sliders of the fitting kind that stand next on the ray from `square` in `direction` (1 to 8 of the line table);
/// any other direction gives the empty set.
[[nodiscard]] Bitboard HiddenAttacker(Square square, int direction, const BOARD& board) noexcept;
/// The `candidates` that stand on a line between `square` and a slider of `attacker`: pinned pieces for the own king
/// and the enemy, discovering pieces for the enemy king and the own side.
[[nodiscard]] Bitboard FindPins(Square square, const BOARD& board, Bitboard candidates,
                                const SIDE_PIECES& attacker) noexcept;
/// Whether the side not to move stands in check.
[[nodiscard]] bool IsOpponentInCheck(const BOARD& board) noexcept;
/// Whether the side that makes the move stands in check after it. Works on a copy.
[[nodiscard]] bool LeavesKingInCheck(Move move, const BOARD& board);
/// Whether a queen of the side on move is attacked by an enemy pawn, knight, bishop or rook.
[[nodiscard]] bool QueenAttacked(const BOARD& board) noexcept;

/// The squares that each king can reach before the other, in a position of kings and pawns. A king may not leave the
/// rule-of-the-square rectangle of an enemy runner.
struct KingReach {
    Bitboard white, black;
};
[[nodiscard]] KingReach ReachableSquares(const BOARD& board, Bitboard white_runners, Bitboard black_runners) noexcept;
/// King steps on an empty board to the nearest of `targets`, at least 1. `targets` must not be empty.
[[nodiscard]] int KingStepsTo(Square square, Bitboard targets) noexcept;

/// The whole line through `square` along `direction`, both ways and without the square; empty if there is no line.
[[nodiscard]] Bitboard LineThrough(Square square, int direction) noexcept;

/// IsAttackedBy without the pawns, whose attacks the callers of this look up by colour.
[[nodiscard]] inline bool IsAttackedByPieces(Square square, const BOARD& board, const SIDE_PIECES& side) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    if (Has(t.king_attacks[side.king_square], square)) return true;
    if ((t.knight_attacks[square] & side.knights) != 0) return true;
    const Bitboard straight = side.rooks | side.queens;
    if ((t.rook_mask[square] & straight) != 0 && (board.RookAttacks(square) & straight) != 0) return true;
    const Bitboard diagonal = side.bishops | side.queens;
    return (t.bishop_mask[square] & diagonal) != 0 && (board.BishopAttacks(square) & diagonal) != 0;
}

/// Whether a piece of `By` attacks `square`.
template <Colour By>
[[nodiscard]] inline bool IsAttacked(Square square, const BOARD& board) noexcept {
    const SIDE_PIECES& side = board.side(By);
    return (bitboard_tables.pawn_attacks(Opponent(By))[square] & side.pawns) != 0 ||
           IsAttackedByPieces(square, board, side);
}
