#include <utility>

#include "chess/board.h"
#include "chess/board_theory.h"
#include "chess/position_keys.h"
#include "frame/base/theory.h"

// A move changes three kinds of state. What can't be computed back from the move stands in the frame of a ply, and an
// undo just steps back a frame; the key likewise, in the key history. Bitboards, squares and counters are changed in
// place, and an undo runs the same changes in the opposite sense: nearly all of them are exclusive-ors.

namespace {

/// A square's bits in the three rotated occupancies.
struct RotatedBits {
    Bitboard a1h8, file, a8h1;
};

constexpr std::array<RotatedBits, 64> rotated_bits = [] {
    std::array<RotatedBits, 64> bits{};
    for (std::size_t s = 0; s < bits.size(); ++s)
        bits[s] = {Bit(ROTATE_DIAG_A1H8[s]), Bit(ROTATE_FILE[s]), Bit(ROTATE_DIAG_A8H1[s])};
    return bits;
}();

void FlipRotated(BOARD& board, Square s) {
    const RotatedBits& bits = rotated_bits[static_cast<std::size_t>(s)];
    board.occupied_a1h8 ^= bits.a1h8;
    board.occupied_file ^= bits.file;
    board.occupied_a8h1 ^= bits.a8h1;
}

void SetRotated(BOARD& board, Square s) {
    const RotatedBits& bits = rotated_bits[static_cast<std::size_t>(s)];
    board.occupied_a1h8 |= bits.a1h8;
    board.occupied_file |= bits.file;
    board.occupied_a8h1 |= bits.a8h1;
}

/// By piece type; kings have no set of their own.
constexpr Bitboard SIDE_PIECES::*set_of_piece[7] = {nullptr,
                                                    &SIDE_PIECES::pawns,
                                                    &SIDE_PIECES::knights,
                                                    &SIDE_PIECES::bishops,
                                                    &SIDE_PIECES::rooks,
                                                    &SIDE_PIECES::queens,
                                                    nullptr};
constexpr std::int32_t minor_points_of[7] = {0, 0, 3, 3, 0, 0, 0};
constexpr std::int32_t heavy_points_of[7] = {0, 0, 0, 0, 1, 2, 0};

/// `sign` is +1 for a piece that appears and -1 for one that goes.
void CountPiece(BOARD& board, SIDE_PIECES& side, int piece, int sign) {
    board.total_material += sign * material_units[piece];
    side.minor_points += sign * minor_points_of[piece];
    side.heavy_points += sign * heavy_points_of[piece];
}

void SubtractMaterial(PLY_FRAME& frame, int centipawns) {
    frame.material_balance = static_cast<std::int16_t>(frame.material_balance - centipawns);
}

template <Colour Us>
constexpr bool IsCastlingFromHome(Square from, Square to) {
    return from == Seen<Us>(e1) && (to == Seen<Us>(g1) || to == Seen<Us>(c1));
}

template <Colour Us>
constexpr bool IsDoubleStep(Square from, Square to) {
    return to - from == 2 * Forward(Us);
}

/// The castling rook, in both directions: all it touches is flipped; `squares` are exchanged.
template <Colour Us>
void FlipCastlingRook(BOARD& board, RookJump jump) {
    const Bitboard both = Bit(jump.from) | Bit(jump.to);
    FlipRotated(board, jump.from);
    FlipRotated(board, jump.to);
    board.sides[Us].rooks ^= both;
    board.sides[Us].all ^= both;
    std::swap(board.squares[jump.from], board.squares[jump.to]);
}

/// Makes one move, but for the key: see KeyAfter.
template <Colour Us>
class Maker {
  public:
    Maker(BOARD& board, Move move)
        : board_(board),
          move_(move),
          from_(FromSquare(move)),
          to_(ToSquare(move)),
          old_en_passant_square_(board.frame().en_passant_square) {}

    void Make() {
        FlipRotated(board_, from_);
        SetRotated(board_, to_);
        OpenFrame();
        MovePiece();
        switch (MovingPiece(move_)) {
            case pawn:
                Pawn();
                break;
            case rook:
                Rook();
                break;
            case king:
                King();
                break;
            default:
                own_.*set_of_piece[MovingPiece(move_)] ^= Bit(from_) | Bit(to_);
                break;
        }
        if (CapturedPiece(move_) != no_piece) Capture();
        board_.side_to_move = Them;
        board_.occupied = own_.all | enemy_.all;
    }

  private:
    static constexpr Colour Them = Opponent(Us);

    void OpenFrame() {
        const PLY_FRAME& before = board_.frames[board_.ply];
        frame_ = &board_.frames[++board_.ply];
        frame_->material_balance = static_cast<std::int16_t>(-before.material_balance);
        // As if it were a quiet move of a piece; pawn moves and captures put 0 there.
        frame_->fifty_counter = static_cast<std::uint16_t>(before.fifty_counter + 1);
        frame_->en_passant_square = 0;
        frame_->castling = before.castling;
        // The move's own bits are the only source of this: no attack test is made.
        frame_->in_check = GivesCheck(move_);
        frame_->pawn_key = before.pawn_key;
    }

    void MovePiece() {
        const int code = SignedCode<Us>(MovingPiece(move_));
        board_.squares[from_] = no_piece;
        board_.squares[to_] = static_cast<std::int8_t>(code);
        own_.all ^= Bit(from_) | Bit(to_);
    }

    void Pawn() {
        own_.pawns ^= Bit(from_) | Bit(to_);
        frame_->pawn_key ^= PieceKey(from_, SignedCode<Us>(pawn)) ^ PieceKey(to_, SignedCode<Us>(pawn));
        frame_->fifty_counter = 0;
        if (IsDoubleStep<Us>(from_, to_)) {
            frame_->en_passant_square = static_cast<std::uint16_t>(Behind<Us>(to_));
        } else if (PromotionPiece(move_) != no_piece) {
            Promote();
        }
    }

    void Promote() {
        const int piece = PromotionPiece(move_);
        frame_->pawn_key ^= PieceKey(to_, SignedCode<Us>(pawn));
        board_.squares[to_] = static_cast<std::int8_t>(SignedCode<Us>(piece));
        own_.pawns ^= Bit(to_);
        own_.*set_of_piece[piece] ^= Bit(to_);
        SubtractMaterial(*frame_, piece_value[piece] - piece_value[pawn]);
        CountPiece(board_, own_, piece, +1);
    }

    void Rook() {
        own_.rooks ^= Bit(from_) | Bit(to_);
        DropRights(castling_right_of_corner[static_cast<std::size_t>(from_)] & castling_rights_of[Us]);
    }

    void King() {
        own_.king_square = to_;
        const unsigned held = frame_->castling & castling_rights_of[Us];
        if (held == 0) return;
        DropRights(held);
        if (IsCastlingFromHome<Us>(from_, to_)) FlipCastlingRook<Us>(board_, RookJumpOf(to_));
    }

    void DropRights(unsigned rights) { frame_->castling = static_cast<std::uint8_t>(frame_->castling & ~rights); }

    void Capture() {
        const int piece = CapturedPiece(move_);
        frame_->fifty_counter = 0;
        SubtractMaterial(*frame_, piece_value[piece]);
        if (piece == pawn) return CapturePawn();

        enemy_.all ^= Bit(to_);
        enemy_.*set_of_piece[piece] ^= Bit(to_);
        CountPiece(board_, enemy_, piece, -1);
        if (piece == rook)
            DropRights(castling_right_of_corner[static_cast<std::size_t>(to_)] & castling_rights_of[Them]);
    }

    void CapturePawn() {
        const bool en_passant = MovingPiece(move_) == pawn && to_ == old_en_passant_square_ && to_ != 0;
        const Square taken = en_passant ? Behind<Us>(to_) : to_;
        if (en_passant) {
            FlipRotated(board_, taken);
            board_.squares[taken] = no_piece;
        }
        enemy_.all ^= Bit(taken);
        enemy_.pawns ^= Bit(taken);
        frame_->pawn_key ^= PieceKey(taken, SignedCode<Them>(pawn));
    }

    BOARD& board_;
    const Move move_;
    const Square from_, to_;
    const Square old_en_passant_square_;
    SIDE_PIECES& own_ = board_.sides[Us];
    SIDE_PIECES& enemy_ = board_.sides[Them];
    PLY_FRAME* frame_ = nullptr;
};

/// Puts back what a captured piece took with it. The rotated occupancies at `to` are set already, or set here.
template <Colour Us>
void UnmakeCapture(BOARD& board, Move move) {
    constexpr Colour Them = Opponent(Us);
    const int piece = CapturedPiece(move);
    const Square to = ToSquare(move);
    SIDE_PIECES& enemy = board.sides[Them];
    const bool en_passant =
        piece == pawn && MovingPiece(move) == pawn && to == board.frame().en_passant_square && to != 0;
    const Square taken = en_passant ? Behind<Us>(to) : to;
    SetRotated(board, taken);
    board.squares[taken] = static_cast<std::int8_t>(SignedCode<Them>(piece));
    enemy.all ^= Bit(taken);
    enemy.*set_of_piece[piece] ^= Bit(taken);
    CountPiece(board, enemy, piece, +1);
}

template <Colour Us>
void Unmake(BOARD& board, Move move) {
    const Square from = FromSquare(move), to = ToSquare(move);
    const int piece = MovingPiece(move);
    SIDE_PIECES& own = board.sides[Us];
    const Bitboard both = Bit(from) | Bit(to);

    --board.ply;
    board.side_to_move = Us;
    FlipRotated(board, from);
    FlipRotated(board, to);
    board.squares[from] = static_cast<std::int8_t>(SignedCode<Us>(piece));
    board.squares[to] = no_piece;
    own.all ^= both;
    if (piece == king) {
        own.king_square = from;
        if (IsCastlingFromHome<Us>(from, to)) FlipCastlingRook<Us>(board, RookJumpOf(to));
    } else if (const int promotion = PromotionPiece(move); promotion != no_piece) {
        own.pawns ^= Bit(from);
        own.*set_of_piece[promotion] ^= Bit(to);
        CountPiece(board, own, promotion, -1);
    } else {
        own.*set_of_piece[piece] ^= both;
    }
    if (CapturedPiece(move) != no_piece) UnmakeCapture<Us>(board, move);
    board.occupied = own.all | board.sides[Opponent(Us)].all;
}

/// What a move changes in the key. It stands apart, since the search wants to know the key before the move is made: the
/// memory that a table will be probed at can be asked for meanwhile.
template <Colour Us>
std::uint64_t KeyAfter(const BOARD& board, Move move) {
    constexpr Colour Them = Opponent(Us);
    const Square from = FromSquare(move), to = ToSquare(move);
    const int piece = MovingPiece(move), captured = CapturedPiece(move), promotion = PromotionPiece(move);
    const Square en_passant_square = board.frame().en_passant_square;
    const int standing = promotion != no_piece ? promotion : piece;
    std::uint64_t key =
        board.key() ^ side_key ^ PieceKey(from, SignedCode<Us>(piece)) ^ PieceKey(to, SignedCode<Us>(standing));
    if (en_passant_square != 0) key ^= bitboard_tables.zobrist_ep(en_passant_square);
    if (piece == pawn && IsDoubleStep<Us>(from, to)) key ^= bitboard_tables.zobrist_ep(Behind<Us>(to));
    if (captured != no_piece) {
        const bool en_passant = piece == pawn && captured == pawn && to == en_passant_square && to != 0;
        key ^= PieceKey(en_passant ? Behind<Us>(to) : to, SignedCode<Them>(captured));
    }
    const unsigned dropped = board.frame().castling & (castling_rights_of_home[static_cast<std::size_t>(from)] |
                                                       castling_rights_of_home[static_cast<std::size_t>(to)]);
    if (dropped == 0) return key;
    if (piece == king && IsCastlingFromHome<Us>(from, to)) {
        const RookJump jump = RookJumpOf(to);
        key ^= PieceKey(jump.from, SignedCode<Us>(rook)) ^ PieceKey(jump.to, SignedCode<Us>(rook));
    }
    return key ^ castling_keys[dropped];
}

}  // namespace

void BOARD::MakeMove(Move move, std::uint64_t key_after_move) noexcept {
    if constexpr (theory_is_checked) {
        AssertMoveFits(*this, move);
        AssertKeyIsForetold(*this, move, key_after_move);
    }
    if (side_to_move == white)
        Maker<white>(*this, move).Make();
    else
        Maker<black>(*this, move).Make();
    key_history[ply] = key_after_move;
    if constexpr (theory_is_checked) AssertMoveMade(*this, move);
}

// The side that made the move is the one not to move.
void BOARD::UnmakeMove(Move move) noexcept {
    if constexpr (theory_is_checked) AssertMoveWasMade(*this, move);
    if (side_to_move == black)
        Unmake<white>(*this, move);
    else
        Unmake<black>(*this, move);
    if constexpr (theory_is_checked) AssertMoveUndone(*this, move);
}

// The fifty counter starts again, so that no repetition is found across a null move: docs/oddities.md,
// null move and repetition.
void BOARD::MakeNullMove() noexcept {
    if constexpr (theory_is_checked) AssertNullMoveFits(*this);
    const PLY_FRAME& before = frames[ply];
    const std::uint64_t new_key = HashKeyAfterNullMove();
    frames[ply + 1] = {.material_balance = static_cast<std::int16_t>(-before.material_balance),
                       .fifty_counter = 0,
                       .en_passant_square = 0,
                       .castling = before.castling,
                       .in_check = 0,
                       .pawn_key = before.pawn_key};
    ++ply;
    key_history[ply] = new_key;
    side_to_move ^= 1U;
    if constexpr (theory_is_checked) AssertNullMoveMade(*this);
}

std::uint64_t BOARD::HashKeyAfterNullMove() const noexcept {
    const std::uint64_t new_key = key() ^ side_key;
    const Square en_passant = frame().en_passant_square;
    return en_passant != 0 ? new_key ^ bitboard_tables.zobrist_ep(en_passant) : new_key;
}

std::uint64_t BOARD::HashKeyAfterMove(Move move) const noexcept {
    return side_to_move == white ? KeyAfter<white>(*this, move) : KeyAfter<black>(*this, move);
}
