#include "chess/attacks.h"

namespace {

Bitboard StraightSliders(const SIDE_PIECES& side) { return side.rooks | side.queens; }
Bitboard DiagonalSliders(const SIDE_PIECES& side) { return side.bishops | side.queens; }

Bitboard StraightSliders(const BOARD& board) {
    return StraightSliders(board.sides[0]) | StraightSliders(board.sides[1]);
}
Bitboard DiagonalSliders(const BOARD& board) {
    return DiagonalSliders(board.sides[0]) | DiagonalSliders(board.sides[1]);
}

/// The set with all neighbours of its squares.
Bitboard WithNeighbours(Bitboard set) {
    constexpr Bitboard a_file = 0x0101010101010101, h_file = a_file << 7;
    set |= (set & ~a_file) >> 1 | (set & ~h_file) << 1;
    return set | set << 8 | set >> 8;
}

Bitboard PawnAttacks(Bitboard pawns, Colour side) {
    Bitboard attacked = 0;
    while (pawns != 0) attacked |= bitboard_tables.pawn_attacks(side)[TakeNextBit(pawns)];
    return attacked;
}

}  // namespace

Bitboard AttackersOf(Square square, const BOARD& board) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    const SIDE_PIECES& w = board.sides[white];
    const SIDE_PIECES& b = board.sides[black];
    Bitboard attackers = (t.black_pawn_attacks[square] & w.pawns) | (t.white_pawn_attacks[square] & b.pawns) |
                         (t.knight_attacks[square] & (w.knights | b.knights)) |
                         (t.king_attacks[square] & (Bit(w.king_square) | Bit(b.king_square)));
    // Few sliders stand on a line with the square at all.
    const Bitboard straight = t.rook_mask[square] & StraightSliders(board);
    if (straight != 0) attackers |= straight & board.RookAttacks(square);
    const Bitboard diagonal = t.bishop_mask[square] & DiagonalSliders(board);
    if (diagonal != 0) attackers |= diagonal & board.BishopAttacks(square);
    return attackers;
}

bool IsAttackedBy(Square square, const BOARD& board, const SIDE_PIECES& side) noexcept {
    return &side == &board.sides[white] ? IsAttacked<white>(square, board) : IsAttacked<black>(square, board);
}

Bitboard HiddenAttacker(Square square, int direction, const BOARD& board) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    switch (direction) {
        case west:
            return board.RankAttacks(square) & t.ray_west[square] & StraightSliders(board);
        case east:
            return board.RankAttacks(square) & t.ray_east[square] & StraightSliders(board);
        case north:
            return board.FileAttacks(square) & t.ray_north[square] & StraightSliders(board);
        case south:
            return board.FileAttacks(square) & t.ray_south[square] & StraightSliders(board);
        case north_west:
            return board.DiagonalA8H1Attacks(square) & t.ray_north_west[square] & DiagonalSliders(board);
        case north_east:
            return board.DiagonalA1H8Attacks(square) & t.ray_north_east[square] & DiagonalSliders(board);
        case south_west:
            return board.DiagonalA1H8Attacks(square) & t.ray_south_west[square] & DiagonalSliders(board);
        case south_east:
            return board.DiagonalA8H1Attacks(square) & t.ray_south_east[square] & DiagonalSliders(board);
        default:
            return 0;
    }
}

// A slider pins what stands alone between it and the square. Few sliders are on a line with the square at all, so they
// are walked, not the candidates.
Bitboard FindPins(Square square, const BOARD& board, Bitboard candidates, const SIDE_PIECES& attacker) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    Bitboard sliders =
        (t.rook_mask[square] & StraightSliders(attacker)) | (t.bishop_mask[square] & DiagonalSliders(attacker));
    Bitboard pins = 0;
    while (sliders != 0) {
        const Bitboard blockers = t.between[square][TakeNextBit(sliders)] & board.occupied;
        if (!HasSeveral(blockers)) pins |= blockers & candidates;
    }
    return pins;
}

bool IsOpponentInCheck(const BOARD& board) noexcept {
    return board.side_to_move == white ? IsAttacked<white>(board.sides[black].king_square, board)
                                       : IsAttacked<black>(board.sides[white].king_square, board);
}

bool LeavesKingInCheck(Move move, const BOARD& board) {
    BOARD after = board;
    after.MakeMove(move);
    return IsOpponentInCheck(after);
}

bool QueenAttacked(const BOARD& board) noexcept {
    const SIDE_PIECES& enemy = board.enemy();
    const Bitboard cheaper = enemy.pawns | enemy.knights | enemy.bishops | enemy.rooks;
    for (Bitboard queens = board.own().queens; queens != 0;)
        if ((AttackersOf(TakeNextBit(queens), board) & cheaper) != 0) return true;
    return false;
}

KingReach ReachableSquares(const BOARD& board, Bitboard white_runners, Bitboard black_runners) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    Bitboard barred[2], reached[2];
    for (const Colour side : {white, black}) {
        const SIDE_PIECES& enemy = board.sides[Opponent(side)];
        barred[side] =
            board.sides[side].pawns | t.king_attacks[enemy.king_square] | PawnAttacks(enemy.pawns, Opponent(side));
        reached[side] = Bit(board.sides[side].king_square);
    }
    while (white_runners != 0) barred[black] |= ~t.white_pawn_square[TakeNextBit(white_runners)];
    while (black_runners != 0) barred[white] |= ~t.black_pawn_square[TakeNextBit(black_runners)];

    const std::uint32_t first = board.side_to_move;
    for (bool grew = true; grew;) {
        grew = false;
        const Bitboard step[2] = {WithNeighbours(reached[white]), WithNeighbours(reached[black])};
        for (const std::uint32_t side : {first, first ^ 1U}) {
            const std::uint32_t other = side ^ 1U;
            const Bitboard guarded = step[other] & board.sides[other].pawns;
            const Bitboard before = reached[side];
            reached[side] |= step[side] & ~barred[side] & ~guarded;
            barred[other] |= step[side];
            grew |= reached[side] != before;
        }
    }
    return {reached[white], reached[black]};
}

int KingStepsTo(Square square, Bitboard targets) noexcept {
    int steps = 1;
    for (Bitboard reached = bitboard_tables.king_attacks[square]; (reached & targets) == 0; ++steps)
        reached = WithNeighbours(reached);
    return steps;
}

Bitboard LineThrough(Square square, int direction) noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    switch (direction) {
        case west:
        case east:
            return t.ray_west[square] | t.ray_east[square];
        case north:
        case south:
            return t.ray_north[square] | t.ray_south[square];
        case north_west:
        case south_east:
            return t.ray_north_west[square] | t.ray_south_east[square];
        case north_east:
        case south_west:
            return t.ray_north_east[square] | t.ray_south_west[square];
        default:
            return 0;
    }
}
