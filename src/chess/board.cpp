#include "chess/board.h"

#include <algorithm>

#include "chess/attacks.h"
#include "chess/move_generator.h"
#include "chess/notation.h"
#include "chess/position_keys.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

namespace {

constexpr int max_pawns_of_a_side = 14;
constexpr Bitboard first_and_last_rank = 0xFF000000000000FF;
/// The longest history that a draw by fifty moves can't have ended; what is older can't be repeated.
constexpr std::ptrdiff_t max_keys_before_ply_0 = max_keys - max_frames;

/// Where an en passant square lies that the side to move may capture on.
constexpr int EnPassantRank(std::uint32_t side_to_move) { return side_to_move == white ? 5 : 2; }

std::int8_t CodeOf(std::uint32_t side, int piece) { return static_cast<std::int8_t>(side == white ? piece : -piece); }

bool CanBeLoaded(const std::int8_t (&position)[64], int side, int en_passant_square, int castling) {
    if (side != white && side != black) return false;
    if (en_passant_square < 0 || en_passant_square > 63) return false;
    if (en_passant_square != 0 && RankOf(en_passant_square) != EnPassantRank(static_cast<std::uint32_t>(side)))
        return false;
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
    return std::count(std::begin(board.squares), std::end(board.squares), CodeOf(side, king)) == 1;
}

bool HasPossiblePawns(const SIDE_PIECES& side) {
    return (side.pawns & first_and_last_rank) == 0 && PopCount(side.pawns) <= max_pawns_of_a_side;
}

/// The square was jumped over by an enemy pawn that now stands in front of it, as the side to move sees it.
bool IsEnPassantSquarePossible(const BOARD& board) {
    const Square s = board.frame().en_passant_square;
    if (s == 0) return true;
    if (RankOf(s) != EnPassantRank(board.side_to_move)) return false;
    const int step = board.side_to_move == white ? 8 : -8;
    return board.squares[s] == no_piece && board.squares[s + step] == no_piece &&
           board.squares[s - step] == CodeOf(board.side_to_move ^ 1U, pawn);
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

BOARD::BOARD()
    : ply(0),
      side_to_move(white),
      total_material(0),
      occupied(0),
      occupied_a1h8(0),
      occupied_file(0),
      occupied_a8h1(0),
      sides{},
      squares{},
      key_history(key_store),
      frames{},
      key_store{} {}

BOARD::BOARD(const BOARD& other) { *this = other; }

BOARD& BOARD::operator=(const BOARD& other) {
    if (this == &other) return *this;
    ply = other.ply;
    side_to_move = other.side_to_move;
    total_material = other.total_material;
    occupied = other.occupied;
    occupied_a1h8 = other.occupied_a1h8;
    occupied_file = other.occupied_file;
    occupied_a8h1 = other.occupied_a8h1;
    std::copy(std::begin(other.sides), std::end(other.sides), sides);
    std::copy(std::begin(other.squares), std::end(other.squares), squares);
    std::copy(std::begin(other.frames), std::end(other.frames), frames);
    std::copy(std::begin(other.key_store), std::end(other.key_store), key_store);
    key_history = key_store + (other.key_history - other.key_store);
    return *this;
}

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
           AreRightsPossible<black>(*this) && !IsOpponentInCheck();
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

void BOARD::ResetPly() {
    frames[0] = frame();
    if (frames[0].fifty_counter == 0) {
        key_store[0] = key();
        key_history = key_store;
    } else {
        key_history += ply;
        // A game that goes on beyond the fifty moves drops its oldest keys: the search needs the room behind.
        if (const std::ptrdiff_t surplus = key_history - key_store - max_keys_before_ply_0; surplus > 0) {
            std::copy(key_store + surplus, key_history + 1, key_store);
            key_history -= surplus;
        }
    }
    ply = 0;
}

void BOARD::SetFiftyCounter(int n) {
    const std::uint64_t current = key();
    frame().fifty_counter = static_cast<std::uint16_t>(n);
    for (int i = 0; i < n; ++i) key_store[i] = static_cast<std::uint64_t>(i) + 1;
    key_history = key_store + n;
    key_history[ply] = current;
}

bool BOARD::IsOpponentInCheck() const {
    return side_to_move == white ? IsAttacked<white>(sides[black].king_square, *this)
                                 : IsAttacked<black>(sides[white].king_square, *this);
}

bool BOARD::LeavesKingInCheck(Move move) const {
    BOARD copy = *this;
    copy.MakeMove(move);
    return copy.IsOpponentInCheck();
}

bool BOARD::VerifyMove(Move move) const {
    Move buffer[move_list_room];
    const Move* const end = GenerateMoves(buffer, *this, mode_legal);
    return std::find<const Move*>(buffer, end, move) != end;
}

namespace {

/// At most a minor piece or two knights on each side.
bool HasTooLittleMaterial(const SIDE_PIECES& side) {
    if (side.pawns != 0 || side.heavy_points != 0) return false;
    return side.minor_points < 6 || (side.minor_points == 6 && side.bishops == 0);
}

}  // namespace

bool BOARD::IsDraw() const noexcept {
    if (HasTooLittleMaterial(sides[white]) && HasTooLittleMaterial(sides[black])) return true;
    const int plies = frame().fifty_counter;
    if (plies < 4) return false;
    if (plies > 99) return true;
    const std::uint64_t* const current = key_history + ply;
    for (int back = 2; back <= plies; back += 2)
        if (*(current - back) == *current) return true;
    return false;
}

std::string BOARD::CastlingText() const {
    constexpr std::string_view letters = "KQkq";
    std::string text;
    for (std::size_t right = 0; right < letters.size(); ++right)
        if ((frame().castling >> right & 1) != 0) text += letters[right];
    return text.empty() ? std::string(vocabulary::no_castling_and_no_square) : text;
}

std::string BOARD::EnPassantText() const {
    const Square s = frame().en_passant_square;
    return s == 0 ? std::string(vocabulary::no_castling_and_no_square) : SquareToString(s);
}

void BOARD::Print(bool with_state) const {
    vlog << vocabulary::board_separator_line;
    for (int r = 7; r >= 0; --r) {
        vlog << "  " << r + 1 << " |";
        for (int f = 0; f < 8; ++f) {
            const int code = squares[r * 8 + f];
            const char letter = piece_letters[static_cast<std::size_t>(code > 0 ? code : -code)];
            vlog << ' ' << (code > 0 ? "*" : "") << letter << (code > 0 ? "" : " ") << '|';
        }
        vlog << '\n';
    }
    vlog << vocabulary::board_separator_line << vocabulary::board_files_line;
    if (!with_state) return;
    vlog << vocabulary::castle_possibilities << ": " << CastlingText() << '\n'
         << vocabulary::side_on_move << ": "
         << (side_to_move == white ? vocabulary::side_white : vocabulary::side_black) << "; "
         << vocabulary::en_passant_square << ": " << EnPassantText() << '\n';
}
