#include "evaluation/endings/scaling.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/table_lookup.h"

namespace {

/// The fewer pawns the winner has, the less is left of his score; but never more than half a pawn is taken.
int reduce_by_pawns(int value, Bitboard pawns) {
    static constexpr std::array<int, 9> eighths = {2, 4, 5, 6, 7, 8, 9, 9, 9};
    const int count = PopCount(pawns);
    if (count > 8) {  // more than a game can bring
        const bool on_both_wings = (pawns & files(0, 2)) != 0 && (pawns & files(5, 7)) != 0;
        return on_both_wings ? value + value / 8 : value;
    }
    return std::max(at(eighths, count) * value / 8, value - 50);
}

/// With no other pieces, the loser's pawns that the winner's bishop could attack are what is left to play for.
int reduce_by_opposite_bishops(int value, const BOARD& board, const SIDE_PIECES& winner, const SIDE_PIECES& loser) {
    static constexpr std::array<int, 9> eighths = {2, 4, 5, 6, 6, 6, 6, 6, 6};
    constexpr int two_bishops = 6;  // material units
    int reduced = 6 * value / 8;
    if (board.total_material == two_bishops) {
        const bool is_light = (winner.bishops & light_squares) != 0;
        const int targets = PopCount(loser.pawns & (is_light ? light_squares : ~light_squares));
        reduced = at(eighths, std::min(targets, 8)) * reduced / 8;
    }
    return std::max(reduced, value - 250);
}

/// The value for the side with bishop and pawns.
template <Colour Us>
int bishop_and_pawns(const BOARD& board) {
    // By the distance of the kings to the corner where the pawns promote.
    static constexpr std::array<int, 8> enemy_king = {-127, -127, -20, 10, 20, 30, 50, 90};
    static constexpr std::array<int, 8> own_king = {80, 80, 10, 0, -10, -20, -25, -30};
    static constexpr std::array<int, 7> pawn_by_rank = {0, 50, 52, 55, 62, 76, 90};
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    int value = 835;
    const bool on_a_file = (own.pawns & ~a_file) == 0;
    if (on_a_file || (own.pawns & ~h_file) == 0) {
        const Square corner = Seen<Us>(on_a_file ? a8 : h8);
        if (Has(light_squares, corner) != ((own.bishops & light_squares) != 0)) {
            const int to_enemy = bitboard_tables.distance[enemy.king_square][corner];
            if (to_enemy < 2) return 0;  // the king in the corner can't be driven out
            value = 315 + at(enemy_king, to_enemy) + at(own_king, bitboard_tables.distance[own.king_square][corner]);
        }
    }
    for (Bitboard pawns = own.pawns; pawns != 0;) value += at(pawn_by_rank, rank_seen<Us>(TakeNextBit(pawns)));
    return value;
}

}  // namespace

int scale_ending(int score, bool opposite_bishops, const BOARD& board) noexcept {
    const Colour winning_side = score >= 0 ? white : black;
    const SIDE_PIECES& winner = board.side(winning_side);
    int value = reduce_by_pawns(std::abs(score), winner.pawns);
    if (opposite_bishops) value = reduce_by_opposite_bishops(value, board, winner, board.side(Opponent(winning_side)));
    return score >= 0 ? value : -value;
}

std::optional<int> wrong_bishop_rule(const BOARD& board) noexcept {
    constexpr int one_minor_piece = 3;  // material units
    if (board.total_material != one_minor_piece) return std::nullopt;
    for (const Colour side : {white, black}) {
        if (board.side(Opponent(side)).pawns != 0 || board.side(side).pawns == 0) continue;
        if (board.side(side).bishops == 0) continue;
        const int value = side == white ? bishop_and_pawns<white>(board) : bishop_and_pawns<black>(board);
        return board.side_to_move == side ? value : -value;
    }
    return std::nullopt;
}
