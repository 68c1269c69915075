#include "chess/exchange.h"

#include <algorithm>
#include <cstdlib>

#include "chess/attacks.h"

// All sums are from Black's view, so that capturing a white piece adds its value and capturing a black one adds its
// negative value. `gain[i]` is the sum if the exchange ends after capture i; from the last capture backwards each side
// then chooses between stopping and going on.

namespace {

/// By signed piece code + 6.
constexpr int exchange_value[13] = {-32767, -1020, -500, -315, -305, -100, 0, 100, 305, 315, 500, 1020, 32767};

constexpr int ValueOf(int signed_piece) { return exchange_value[signed_piece + 6]; }

/// A result below this is a knight for a bishop.
constexpr int smallest_gain_beyond_minor_trade = 11;

/// The pieces of the cheapest kind that `side` has among `attackers`.
Bitboard CheapestOf(Bitboard attackers, const SIDE_PIECES& side) {
    for (const Bitboard kind : {side.pawns, side.knights, side.bishops, side.rooks, side.queens})
        if ((attackers & kind) != 0) return attackers & kind;
    return attackers & Bit(side.king_square);
}

Bitboard AttacksFrom(Square s, int piece, const BOARD& board) {
    switch (piece) {
        case pawn:
            return bitboard_tables.pawn_attacks(board.mover())[s];
        case knight:
            return bitboard_tables.knight_attacks[s];
        case bishop:
            return board.BishopAttacks(s);
        case rook:
            return board.RookAttacks(s);
        case queen:
            return board.QueenAttacks(s);
        default:
            return bitboard_tables.king_attacks[s];
    }
}

}  // namespace

int ExchangeScore(Move move, const BOARD& board, Bitboard& touched) noexcept {
    const auto& direction = bitboard_tables.direction;
    const Square from = FromSquare(move), to = ToSquare(move);
    const bool white_moves = board.side_to_move == white;
    const auto signed_code = [](int piece, bool is_white) { return is_white ? piece : -piece; };

    Bitboard attackers = (AttackersOf(to, board) & ~Bit(from)) | HiddenAttacker(from, direction[to][from], board);
    touched = attackers;

    // One entry per piece that can take part at most, and one for the move itself.
    int gain[65];
    int last = 0;
    gain[0] = ValueOf(signed_code(CapturedPiece(move), !white_moves));
    // Whatever it promotes to, the new piece counts as a queen.
    const int standing = PromotionPiece(move) != no_piece ? int{queen} : MovingPiece(move);
    int standing_value = ValueOf(signed_code(standing, white_moves));

    for (std::uint32_t side = board.side_to_move ^ 1U; attackers != 0; side ^= 1U) {
        const Bitboard cheapest = CheapestOf(attackers, board.sides[side]);
        if (cheapest == 0) break;
        const Square square = FindNextBit(cheapest);
        attackers ^= Bit(square);
        gain[last + 1] = gain[last] + standing_value;
        ++last;
        standing_value = ValueOf(board.squares[square]);
        const Bitboard hidden = HiddenAttacker(square, direction[to][square], board);
        attackers |= hidden;
        touched |= hidden;
    }

    for (; last > 0; --last) {
        const bool white_captures = (last % 2 == 0) == white_moves;
        gain[last - 1] = white_captures ? std::min(gain[last - 1], gain[last]) : std::max(gain[last - 1], gain[last]);
    }
    return white_moves ? -gain[0] : gain[0];
}

int AttackGain(Move move, const BOARD& board, bool neglect_minor_trade) noexcept {
    const Square from = FromSquare(move), to = ToSquare(move);
    const int piece = MovingPiece(move);
    const SIDE_PIECES& enemy = board.enemy();

    Bitboard targets = AttacksFrom(to, piece, board) & enemy.all & ~Bit(enemy.king_square);
    const bool is_slider = piece == bishop || piece == rook || piece == queen;
    if (is_slider && CapturedPiece(move) == no_piece) targets &= ~LineThrough(to, bitboard_tables.direction[from][to]);

    int best = 0;
    while (targets != 0) {
        const Square target = TakeNextBit(targets);
        const Move capture = MakeWord(to, target, piece, std::abs(int{board.squares[target]}));
        Bitboard touched;
        best = std::max(best, ExchangeScore(capture, board, touched));
    }
    return neglect_minor_trade && best < smallest_gain_beyond_minor_trade ? 0 : best;
}
