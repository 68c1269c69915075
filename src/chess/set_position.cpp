// How a position is loaded onto a board, and what a valid one must fulfil.

#include <algorithm>

#include "chess/attacks.h"
#include "chess/board.h"
#include "chess/position_keys.h"

namespace {

constexpr int max_pawns_of_a_side = 14;
constexpr Bitboard first_and_last_rank = 0xFF000000000000FF;

/// Where an en passant square lies that the side to move may capture on.
constexpr int EnPassantRank(Colour side_to_move) { return RankOf(Seen(side_to_move, a6)); }

bool CanBeLoaded(const std::int8_t (&position)[64], int side, int en_passant_square, int castling) {
    if (side != white && side != black) return false;
    if (en_passant_square < 0 || en_passant_square > 63) return false;
    if (en_passant_square != 0 && RankOf(en_passant_square) != EnPassantRank(static_cast<Colour>(side))) return false;
    if (castling < 0 || castling > 15) return false;
    return std::all_of(std::begin(position), std::end(position),
                       [](int code) { return code >= -king && code <= king; });
}

/// Puts a piece on an empty square of a board under construction; the key is not touched.
void PutPiece(BOARD& board, Square s, int code) {
    SIDE_PIECES& side = board.sides[code > 0 ? white : black];
    PLY_FRAME& frame = board.frame();
    const int piece = code > 0 ? code : -code;
    board.squares[s] = static_cast<std::int8_t>(code);
    board.occupied |= Bit(s);
    board.occupied_a1h8 |= Bit(ROTATE_DIAG_A1H8[static_cast<std::size_t>(s)]);
    board.occupied_file |= Bit(ROTATE_FILE[static_cast<std::size_t>(s)]);
    board.occupied_a8h1 |= Bit(ROTATE_DIAG_A8H1[static_cast<std::size_t>(s)]);
    side.all |= Bit(s);
    board.total_material += material_units[piece];
    frame.material_balance =
        static_cast<std::int16_t>(frame.material_balance + (code > 0 ? piece_value[piece] : -piece_value[piece]));
    switch (piece) {
        case pawn:
            side.pawns |= Bit(s);
            frame.pawn_key ^= PieceKey(s, code);
            break;
        case knight:
            side.knights |= Bit(s);
            side.minor_points += 3;
            break;
        case bishop:
            side.bishops |= Bit(s);
            side.minor_points += 3;
            break;
        case rook:
            side.rooks |= Bit(s);
            side.heavy_points += 1;
            break;
        case queen:
            side.queens |= Bit(s);
            side.heavy_points += 2;
            break;
        default:
            side.king_square = s;
            break;
    }
}

std::uint64_t KeyFromScratch(const BOARD& board) {
    const PLY_FRAME& frame = board.frame();
    std::uint64_t key = castling_keys[frame.castling];
    for (Bitboard rest = board.occupied; rest != 0;) {
        const Square s = TakeNextBit(rest);
        key ^= PieceKey(s, board.squares[s]);
    }
    if (board.side_to_move == black) key ^= side_key;
    if (frame.en_passant_square != 0) key ^= bitboard_tables.zobrist_ep(frame.en_passant_square);
    return key;
}

bool HasOneKing(const BOARD& board, Colour side) {
    return std::count(std::begin(board.squares), std::end(board.squares), SignedCode(side, king)) == 1;
}

bool HasPossiblePawns(const SIDE_PIECES& side) {
    return (side.pawns & first_and_last_rank) == 0 && PopCount(side.pawns) <= max_pawns_of_a_side;
}

/// The square was jumped over by an enemy pawn that now stands in front of it, as the side to move sees it.
bool IsEnPassantSquarePossible(const BOARD& board) {
    const Square s = board.frame().en_passant_square;
    if (s == 0) return true;
    if (RankOf(s) != EnPassantRank(board.mover())) return false;
    const int step = Forward(board.mover());
    return board.squares[s] == no_piece && board.squares[s + step] == no_piece &&
           board.squares[s - step] == SignedCode(Opponent(board.mover()), pawn);
}

template <Colour Us>
bool AreRightsPossible(const BOARD& board) {
    const unsigned held = board.frame().castling & castling_rights_of[Us];
    const auto stands_on = [&board](int piece, Square s) {
        return board.squares[Seen<Us>(s)] == SignedCode<Us>(piece);
    };
    if (held != 0 && !stands_on(king, e1)) return false;
    if ((held & (white_short | black_short)) != 0 && !stands_on(rook, h1)) return false;
    return (held & (white_long | black_long)) == 0 || stands_on(rook, a1);
}

}  // namespace

bool BOARD::SetPosition(const std::int8_t (&position)[64], int side, int en_passant_square, int castling) {
    if (!CanBeLoaded(position, side, en_passant_square, castling)) return false;
    std::int8_t pieces[64];  // `position` may be this board's own array
    std::copy(std::begin(position), std::end(position), pieces);

    *this = BOARD();
    side_to_move = static_cast<std::uint32_t>(side);
    frame().en_passant_square = static_cast<std::uint16_t>(en_passant_square);
    frame().castling = static_cast<std::uint8_t>(castling);
    for (Square s = a1; s <= h8; ++s)
        if (pieces[s] != no_piece) PutPiece(*this, s, pieces[s]);
    if (side_to_move == black) frame().material_balance = static_cast<std::int16_t>(-frame().material_balance);
    frame().in_check = IsAttackedBy(own().king_square, *this, enemy());
    key_history[0] = KeyFromScratch(*this);
    return IsValid();
}

bool BOARD::IsValid() const {
    return HasOneKing(*this, white) && HasOneKing(*this, black) && HasPossiblePawns(sides[white]) &&
           HasPossiblePawns(sides[black]) && IsEnPassantSquarePossible(*this) && AreRightsPossible<white>(*this) &&
           AreRightsPossible<black>(*this) && !IsOpponentInCheck(*this);
}

bool BOARD::ChangeSide() {
    PLY_FRAME changed = frame();
    changed.material_balance = static_cast<std::int16_t>(-changed.material_balance);
    changed.fifty_counter = 0;
    const std::uint64_t changed_key = key() ^ side_key;
    side_to_move ^= 1U;
    ply = 0;
    frames[0] = changed;
    key_history = key_store;
    key_history[0] = changed_key;
    return IsValid();
}
