#include <cstdlib>

#include "chess/board.h"
#include "chess/special_moves.h"
#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

// A word from another position is tested field by field against this one. It was made by the generator somewhere, so
// that its geometry is taken for granted: that a slider moves along one of its lines, or that castling is allowed at
// all, is not tested, and neither is the safety of the own king, except after an en passant capture.

namespace {

bool IsCastlingDistance(Square from, Square to) { return std::abs(from - to) == 2; }

template <Colour Us>
bool IsEnPassantPossible(const BOARD& board, Move move) {
    const EnPassantCapture<Us> capture{board, FromSquare(move)};
    if (board.in_check()) {
        const SIDE_PIECES& enemy = board.sides[Opponent(Us)];
        const Bitboard checkers = AttackersOf(board.sides[Us].king_square, board) & enemy.all;
        if (checkers != Bit(capture.taken)) return false;
    }
    return !capture.ExposesOwnKing() && (move & check_bits) == capture.CheckBits();
}

template <Colour Us>
bool IsPawnStepOrCapturePossible(const BOARD& board, Move move) {
    const Square from = FromSquare(move), to = ToSquare(move);
    const int captured = CapturedPiece(move);
    const int steps = Us == white ? to - from : from - to;
    if (steps == 8) return captured == no_piece && !Has(board.occupied, to);
    if (steps == 16) return captured == no_piece && !Has(board.occupied, to) && !Has(board.occupied, Behind<Us>(to));
    return captured != no_piece && board.squares[to] == SignedCode<Opponent(Us)>(captured);
}

template <Colour Us>
bool IsPieceMovePossible(const BOARD& board, Move move) {
    const Square from = FromSquare(move), to = ToSquare(move);
    if (board.squares[to] != SignedCode<Opponent(Us)>(CapturedPiece(move))) return false;
    switch (MovingPiece(move)) {
        case knight:
            return Has(bitboard_tables.knight_attacks[from], to);
        case king:
            return Has(bitboard_tables.king_attacks[from], to) || IsCastlingDistance(from, to);
        default:
            return (bitboard_tables.between[from][to] & board.occupied) == 0;
    }
}

/// Whether the piece that stands on `to` after the move attacks the enemy king; a slider may look along its line
/// through the square that the move leaves.
template <Colour Us>
bool ChecksDirectly(const BOARD& board, Move move) {
    const BITBOARD_TABLES& t = bitboard_tables;
    const Square from = FromSquare(move), to = ToSquare(move);
    const Square enemy_king = board.sides[Opponent(Us)].king_square;
    const int promotion = PromotionPiece(move);
    Bitboard lines = 0;
    switch (promotion != no_piece ? promotion : MovingPiece(move)) {
        case pawn:
            return Has(t.pawn_attacks(Us)[to], enemy_king);
        case knight:
            return Has(t.knight_attacks[to], enemy_king);
        case king:
            return IsCastlingDistance(from, to) && CastlingGivesCheck(board, from, to, enemy_king);
        case bishop:
            lines = board.BishopAttacks(enemy_king);
            break;
        case rook:
            lines = board.RookAttacks(enemy_king);
            break;
        default:
            lines = board.QueenAttacks(enemy_king);
            break;
    }
    return Has(lines, to) || (Has(lines, from) && t.direction[enemy_king][from] == t.direction[from][to]);
}

template <Colour Us>
bool ChecksByDiscovery(const BOARD& board, Move move) {
    const Square from = FromSquare(move), to = ToSquare(move);
    const Square enemy_king = board.sides[Opponent(Us)].king_square;
    return FindPins(enemy_king, board, Bit(from), board.sides[Us]) != 0 &&
           !Has(LineThrough(enemy_king, bitboard_tables.direction[enemy_king][from]), to);
}

template <Colour Us>
bool IsPseudoLegal(const BOARD& board, Move move) {
    const int piece = MovingPiece(move);
    if (piece == no_piece || board.squares[FromSquare(move)] != SignedCode<Us>(piece)) return false;
    if (piece == pawn) {
        const Square en_passant_square = board.frame().en_passant_square;
        if (CapturedPiece(move) == pawn && en_passant_square != 0 && ToSquare(move) == en_passant_square)
            return IsEnPassantPossible<Us>(board, move);
        if (!IsPawnStepOrCapturePossible<Us>(board, move)) return false;
    } else if (!IsPieceMovePossible<Us>(board, move)) {
        return false;
    }
    return GivesDirectCheck(move) == ChecksDirectly<Us>(board, move) &&
           GivesDiscoveredCheck(move) == ChecksByDiscovery<Us>(board, move);
}

}  // namespace

bool BOARD::IsMovePseudoLegal(Move move) const {
    CHECKED_ASSERT(move != INVALID, vocabulary::pseudo_legal_test_of_invalid_move);
    return side_to_move == white ? IsPseudoLegal<white>(*this, move) : IsPseudoLegal<black>(*this, move);
}
