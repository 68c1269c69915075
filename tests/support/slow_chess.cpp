#include "support/slow_chess.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace {

constexpr std::string_view letters = ".pnbrqk";

int PieceOf(int code) { return std::abs(code); }
bool Belongs(int code, Colour side) { return side == white ? code > 0 : code < 0; }
int CodeOf(Colour side, int piece) { return side == white ? piece : -piece; }
std::size_t At(Square s) { return static_cast<std::size_t>(s); }
int Sign(int n) { return (n > 0) - (n < 0); }
int PawnStep(Colour side) { return side == white ? 8 : -8; }

/// Whether the squares strictly between two squares of a line are empty.
bool IsLineOpen(const SlowPosition& position, Square from, Square to) {
    const int step = Sign(RankOf(to) - RankOf(from)) * 8 + Sign(FileOf(to) - FileOf(from));
    for (Square s = from + step; s != to; s += step)
        if (position.squares[At(s)] != no_piece) return false;
    return true;
}

Move Word(const SlowPosition& position, Square from, Square to, int promotion = no_piece) {
    const int piece = PieceOf(position.squares[At(from)]);
    int captured = PieceOf(position.squares[At(to)]);
    if (piece == pawn && FileOf(from) != FileOf(to) && captured == no_piece) captured = pawn;
    return MakeWord(from, to, piece, captured, promotion);
}

void AddPawnMove(const SlowPosition& position, Square from, Square to, std::vector<Move>& moves) {
    if (RankOf(to) == 0 || RankOf(to) == 7)
        for (const int promotion : {queen, rook, bishop, knight}) moves.push_back(Word(position, from, to, promotion));
    else
        moves.push_back(Word(position, from, to));
}

void AddPawnMoves(const SlowPosition& position, Square from, std::vector<Move>& moves) {
    const Square ahead = from + PawnStep(position.side);
    if (position.squares[At(ahead)] == no_piece) {
        AddPawnMove(position, from, ahead, moves);
        const Square twice = ahead + PawnStep(position.side);
        if (RankOf(from) == (position.side == white ? 1 : 6) && position.squares[At(twice)] == no_piece)
            moves.push_back(Word(position, from, twice));
    }
    for (Square to = a1; to <= h8; ++to) {
        if (!SlowAttacks(position, from, to)) continue;
        const bool en_passant = position.en_passant_square != 0 && to == position.en_passant_square;
        if (en_passant || Belongs(position.squares[At(to)], Opponent(position.side)))
            AddPawnMove(position, from, to, moves);
    }
}

void AddCastling(const SlowPosition& position, Square king_from, int right, Square rook_from,
                 std::vector<Move>& moves) {
    if ((position.castling & right) == 0 || !IsLineOpen(position, king_from, rook_from)) return;
    const int step = Sign(rook_from - king_from);
    for (const Square s : {king_from, king_from + step, king_from + 2 * step})
        if (SlowAttackers(position, s, Opponent(position.side)) != 0) return;
    moves.push_back(Word(position, king_from, king_from + 2 * step));
}

/// Where a move stands in the list: castling; knights, bishops, rooks, queens; single steps, double steps, captures
/// towards the a-file, towards the h-file, en passant; the king.
std::tuple<int, int, int, int> OrderOf(const SlowPosition& position, Move m) {
    const Square from = FromSquare(m), to = ToSquare(m);
    const int piece = MovingPiece(m);
    if (IsCastling(m)) return {0, FileOf(to) == 6 ? 0 : 1, 0, 0};
    if (piece == king) return {10, -to, 0, 0};
    if (piece != pawn) return {piece, -from, -to, 0};
    if (CapturedPiece(m) == no_piece) return {std::abs(to - from) == 8 ? 6 : 7, -to, -PromotionPiece(m), 0};
    if (position.squares[At(to)] == no_piece) return {9, -from, 0, 0};
    return {8, FileOf(to) < FileOf(from) ? 0 : 1, -to, -PromotionPiece(m)};
}

}  // namespace

SlowPosition SlowFromFen(std::string_view fen) {
    SlowPosition position;
    std::size_t i = 0;
    for (int file = 0, rank = 7; fen[i] != ' '; ++i) {
        const char c = fen[i];
        if (c == '/') {
            --rank;
            file = 0;
        } else if (c >= '1' && c <= '8') {
            file += c - '0';
        } else {
            const bool is_white = c >= 'A' && c <= 'Z';
            const auto piece = static_cast<int>(letters.find(static_cast<char>(is_white ? c - 'A' + 'a' : c)));
            position.squares[At(rank * 8 + file++)] = is_white ? piece : -piece;
        }
    }
    position.side = fen[i + 1] == 'w' ? white : black;
    for (i += 3; fen[i] != ' '; ++i)
        if (fen[i] != '-') position.castling |= 1 << std::string_view("KQkq").find(fen[i]);
    if (fen[i + 1] != '-') position.en_passant_square = (fen[i + 2] - '1') * 8 + (fen[i + 1] - 'a');
    return position;
}

SlowPosition SlowFromBoard(const BOARD& board) {
    SlowPosition position;
    std::copy(std::begin(board.squares), std::end(board.squares), position.squares.begin());
    position.side = static_cast<Colour>(board.side_to_move);
    position.en_passant_square = board.frame().en_passant_square;
    position.castling = board.frame().castling;
    return position;
}

std::string SlowFen(const SlowPosition& position) {
    std::string fen;
    for (int rank = 7; rank >= 0; --rank) {
        int empty = 0;
        const auto flush = [&] {
            if (empty != 0) fen += std::to_string(empty);
            empty = 0;
        };
        for (int file = 0; file < 8; ++file) {
            const int code = position.squares[At(rank * 8 + file)];
            if (code == no_piece) {
                ++empty;
                continue;
            }
            flush();
            const char letter = letters[At(PieceOf(code))];
            fen += code > 0 ? static_cast<char>(letter - 'a' + 'A') : letter;
        }
        flush();
        if (rank > 0) fen += '/';
    }
    fen += position.side == white ? " w " : " b ";
    for (std::size_t right = 0; right < 4; ++right)
        if ((position.castling >> right & 1) != 0) fen += std::string_view("KQkq")[right];
    if (position.castling == 0) fen += '-';
    if (position.en_passant_square == 0) return fen + " -";
    return fen + ' ' + static_cast<char>('a' + FileOf(position.en_passant_square)) +
           static_cast<char>('1' + RankOf(position.en_passant_square));
}

bool LoadBoard(BOARD& board, const SlowPosition& position) {
    std::int8_t squares[64];
    for (Square s = a1; s <= h8; ++s) squares[s] = static_cast<std::int8_t>(position.squares[At(s)]);
    return board.SetPosition(squares, static_cast<int>(position.side), position.en_passant_square, position.castling);
}

Square SlowKingSquare(const SlowPosition& position, Colour side) {
    const auto found = std::find(position.squares.begin(), position.squares.end(), CodeOf(side, king));
    return static_cast<Square>(found - position.squares.begin());
}

bool SlowAttacks(const SlowPosition& position, Square from, Square to) {
    const int code = position.squares[At(from)];
    const int files = std::abs(FileOf(to) - FileOf(from)), ranks = std::abs(RankOf(to) - RankOf(from));
    if (from == to) return false;
    const bool straight = files == 0 || ranks == 0, diagonal = files == ranks;
    switch (PieceOf(code)) {
        case pawn:
            return files == 1 && RankOf(to) - RankOf(from) == (code > 0 ? 1 : -1);
        case knight:
            return files * ranks == 2;
        case bishop:
            return diagonal && IsLineOpen(position, from, to);
        case rook:
            return straight && IsLineOpen(position, from, to);
        case queen:
            return (straight || diagonal) && IsLineOpen(position, from, to);
        case king:
            return files <= 1 && ranks <= 1;
        default:
            return false;
    }
}

Bitboard SlowAttackers(const SlowPosition& position, Square to, Colour side) {
    Bitboard attackers = 0;
    for (Square from = a1; from <= h8; ++from)
        if (Belongs(position.squares[At(from)], side) && SlowAttacks(position, from, to)) attackers |= Bit(from);
    return attackers;
}

bool SlowInCheck(const SlowPosition& position, Colour side) {
    return SlowAttackers(position, SlowKingSquare(position, side), Opponent(side)) != 0;
}

SlowPosition SlowAfter(const SlowPosition& position, Move move) {
    const Square from = FromSquare(move), to = ToSquare(move);
    SlowPosition after = position;
    const int code = position.squares[At(from)];
    after.squares[At(from)] = no_piece;
    after.squares[At(to)] = PromotionPiece(move) != no_piece ? CodeOf(position.side, PromotionPiece(move)) : code;
    after.en_passant_square = 0;
    if (PieceOf(code) == pawn) {
        if (std::abs(to - from) == 16) after.en_passant_square = (from + to) / 2;
        if (FileOf(from) != FileOf(to) && position.squares[At(to)] == no_piece)
            after.squares[At(to - PawnStep(position.side))] = no_piece;
    }
    if (PieceOf(code) == king && std::abs(to - from) == 2) {
        const Square corner = to > from ? to + 1 : to - 2;
        std::swap(after.squares[At(corner)], after.squares[At((from + to) / 2)]);
    }
    constexpr struct {
        Square s;
        int lost;
    } homes[] = {{e1, 3}, {h1, 1}, {a1, 2}, {e8, 12}, {h8, 4}, {a8, 8}};
    for (const auto& [s, lost] : homes)
        if (from == s || to == s) after.castling &= ~lost;
    after.side = Opponent(position.side);
    return after;
}

Move SlowCheckBits(const SlowPosition& position, Move move) {
    const SlowPosition after = SlowAfter(position, move);
    const Bitboard checkers = SlowAttackers(after, SlowKingSquare(after, after.side), position.side);
    const Square from = FromSquare(move), to = ToSquare(move);
    const Bitboard moved = IsCastling(move) ? Bit((from + to) / 2) : Bit(to);
    return ((checkers & moved) != 0 ? direct_check_bit : 0) | ((checkers & ~moved) != 0 ? discovered_check_bit : 0);
}

std::vector<Move> SlowLegalMoves(const SlowPosition& position) {
    std::vector<Move> moves;
    for (Square from = a1; from <= h8; ++from) {
        const int code = position.squares[At(from)];
        if (!Belongs(code, position.side)) continue;
        if (PieceOf(code) == pawn) {
            AddPawnMoves(position, from, moves);
            continue;
        }
        for (Square to = a1; to <= h8; ++to)
            if (SlowAttacks(position, from, to) && !Belongs(position.squares[At(to)], position.side))
                moves.push_back(Word(position, from, to));
    }
    const bool is_white = position.side == white;
    AddCastling(position, is_white ? e1 : e8, is_white ? white_short : black_short, is_white ? h1 : h8, moves);
    AddCastling(position, is_white ? e1 : e8, is_white ? white_long : black_long, is_white ? a1 : a8, moves);

    std::erase_if(moves, [&](Move m) { return SlowInCheck(SlowAfter(position, m), position.side); });
    for (Move& m : moves) m |= SlowCheckBits(position, m);
    std::sort(moves.begin(), moves.end(),
              [&](Move left, Move right) { return OrderOf(position, left) < OrderOf(position, right); });
    return moves;
}

std::uint64_t SlowKey(const SlowPosition& position) {
    constexpr std::uint64_t right_keys[4] = {0x517CC1B727220A94, 0x229A1869D1B6232E, 0x5C6B34ADBF4E8E53,
                                             0x11489E10D9AD68F5};
    std::uint64_t key = 0;
    for (Square s = a1; s <= h8; ++s)
        if (const int code = position.squares[At(s)]; code != no_piece)
            key ^= bitboard_tables.zobrist_piece[s][code + 6];
    if (position.side == black) key ^= 0x81DCF975A1CF4147;
    for (std::size_t right = 0; right < 4; ++right)
        if ((position.castling >> right & 1) != 0) key ^= right_keys[right];
    if (const Square s = position.en_passant_square; s != 0)
        key ^= RankOf(s) == 2 ? bitboard_tables.zobrist_ep_third_rank[FileOf(s)]
                              : bitboard_tables.zobrist_ep_sixth_rank[FileOf(s)];
    return key;
}
