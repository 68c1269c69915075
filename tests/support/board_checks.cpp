#include "support/board_checks.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "support/slow_chess.h"

namespace {

/// Collects the names of fields that are not as expected.
class Findings {
  public:
    template <class Left, class Right>
    void Compare(const char* field, const Left& left, const Right& right) {
        if (!(left == right)) text_ += std::string(field) + '\n';
    }
    [[nodiscard]] const std::string& text() const { return text_; }

  private:
    std::string text_;
};

Bitboard SquaresOf(const BOARD& board, int code) {
    Bitboard squares = 0;
    for (Square s = a1; s <= h8; ++s)
        if (board.squares[s] == code) squares |= Bit(s);
    return squares;
}

int CountOf(Bitboard set) {
    int count = 0;
    for (Square s = a1; s <= h8; ++s) count += Has(set, s);
    return count;
}

Bitboard Permuted(Bitboard set, const std::array<std::uint8_t, 64>& bit_of) {
    Bitboard permuted = 0;
    for (Square s = a1; s <= h8; ++s)
        if (Has(set, s)) permuted |= Bit(bit_of[static_cast<std::size_t>(s)]);
    return permuted;
}

SIDE_PIECES SideFromScratch(const BOARD& board, Colour side) {
    const int sign = side == white ? 1 : -1;
    SIDE_PIECES pieces{};
    pieces.pawns = SquaresOf(board, sign * pawn);
    pieces.knights = SquaresOf(board, sign * knight);
    pieces.bishops = SquaresOf(board, sign * bishop);
    pieces.rooks = SquaresOf(board, sign * rook);
    pieces.queens = SquaresOf(board, sign * queen);
    pieces.king_square = SlowKingSquare(SlowFromBoard(board), side);
    pieces.all = pieces.pawns | pieces.knights | pieces.bishops | pieces.rooks | pieces.queens;
    pieces.all |= SquaresOf(board, sign * king);
    pieces.minor_points = 3 * CountOf(pieces.knights | pieces.bishops);
    pieces.heavy_points = CountOf(pieces.rooks) + 2 * CountOf(pieces.queens);
    return pieces;
}

}  // namespace

std::string Disagreements(const BOARD& board) {
    const SlowPosition position = SlowFromBoard(board);
    const Bitboard occupied = ~SquaresOf(board, no_piece);
    int material = 0, balance = 0;
    std::uint64_t pawn_key = 0;
    for (Square s = a1; s <= h8; ++s) {
        const int code = board.squares[s], piece = std::abs(code);
        material += material_units[piece];
        balance += (code > 0) == (board.side_to_move == white) ? piece_value[piece] : -piece_value[piece];
        if (piece == pawn) pawn_key ^= bitboard_tables.zobrist_piece[s][code + 6];
    }

    Findings findings;
    findings.Compare("white", board.sides[white], SideFromScratch(board, white));
    findings.Compare("black", board.sides[black], SideFromScratch(board, black));
    findings.Compare("occupied", board.occupied, occupied);
    findings.Compare("occupied_a1h8", board.occupied_a1h8, Permuted(occupied, ROTATE_DIAG_A1H8));
    findings.Compare("occupied_file", board.occupied_file, Permuted(occupied, ROTATE_FILE));
    findings.Compare("occupied_a8h1", board.occupied_a8h1, Permuted(occupied, ROTATE_DIAG_A8H1));
    findings.Compare("total_material", board.total_material, material);
    findings.Compare("material_balance", int{board.frame().material_balance}, balance);
    findings.Compare("in_check", board.in_check(), SlowInCheck(position, position.side));
    findings.Compare("pawn_key", board.frame().pawn_key, pawn_key);
    findings.Compare("key", board.key(), SlowKey(position));
    return findings.text();
}

std::string Differences(const BOARD& left, const BOARD& right) {
    Findings findings;
    findings.Compare("ply", left.ply, right.ply);
    findings.Compare("side_to_move", left.side_to_move, right.side_to_move);
    findings.Compare("total_material", left.total_material, right.total_material);
    findings.Compare("occupied", left.occupied, right.occupied);
    findings.Compare("occupied_a1h8", left.occupied_a1h8, right.occupied_a1h8);
    findings.Compare("occupied_file", left.occupied_file, right.occupied_file);
    findings.Compare("occupied_a8h1", left.occupied_a8h1, right.occupied_a8h1);
    findings.Compare("white", left.sides[white], right.sides[white]);
    findings.Compare("black", left.sides[black], right.sides[black]);
    findings.Compare("squares", std::equal(left.squares, left.squares + 64, right.squares), true);
    findings.Compare("frames", std::equal(left.frames, left.frames + left.ply + 1, right.frames), true);
    const auto past_of = [](const BOARD& board) { return board.key_history - board.key_store + board.ply; };
    findings.Compare("place in key_store", past_of(left), past_of(right));
    findings.Compare("keys", std::equal(left.key_store, left.key_store + past_of(left) + 1, right.key_store), true);
    return findings.text();
}
