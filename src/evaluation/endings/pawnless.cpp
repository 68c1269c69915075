#include "evaluation/endings/pawnless.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/pieces/ending_tables.h"

namespace {

using ending_tables::value_at;

constexpr Bitboard rim = files(0, 0) | files(7, 7) | ranks<white>(0, 0) | ranks<white>(7, 7);
constexpr Bitboard corner_blocks = (files(0, 1) | files(6, 7)) & (ranks<white>(0, 1) | ranks<white>(6, 7));

/// Up to here material is balanced; from there on it is enough to mate. Centipawns.
constexpr int balanced_material = 20;
constexpr int mating_material = 500;

int manhattan(Square a, Square b) { return bitboard_tables.manhattan_distance[a][b]; }

Bitboard pieces_of(const SIDE_PIECES& side) { return side.knights | side.bishops | side.rooks | side.queens; }

/// Two steps from the enemy king, which stands on the rim while the own one does not.
bool drives_to_rim(const SIDE_PIECES& own, const SIDE_PIECES& enemy) {
    return manhattan(own.king_square, enemy.king_square) == 2 && Has(rim, enemy.king_square) &&
           !Has(rim, own.king_square);
}

/// What a piece loses far from the enemy king.
int far_from_king(const BOARD& board, Square piece, Square king) {
    const int steps = bitboard_tables.distance[piece][king] - 1;
    switch (std::abs(board.squares[piece])) {
        case knight:
            return 2 * steps;
        case rook:
            return 0;
        default:
            return steps;
    }
}

/// Balanced material: pieces near the enemy king, and that king near the rim.
int mate_helpers(const BOARD& board, Colour side) {
    const SIDE_PIECES& own = board.side(side);
    const SIDE_PIECES& enemy = board.side(Opponent(side));
    int sum = drives_to_rim(own, enemy) ? 20 : -(value_at(ending_tables::corner_table, enemy.king_square) / 8);
    for (Bitboard rest = pieces_of(own); rest != 0;) {
        const Square s = TakeNextBit(rest);
        sum -= far_from_king(board, s, enemy.king_square) / 4;
        if (!IsAttackedBy(s, board, enemy)) sum += 6;
    }
    return sum;
}

// In the rules for a winner the kings' places count as a mate needs them: the loser's in a corner, the winner's in the
// centre.

bool has_bishop_and_knight_alone(const BOARD& board, const SIDE_PIECES& winner) {
    return board.total_material == 6 && winner.minor_points == 6 && winner.pawns == 0 && winner.knights != 0 &&
           winner.bishops != 0;
}

int mate_with_bishop_and_knight(const SIDE_PIECES& winner, const SIDE_PIECES& loser) {
    const bool on_light = (winner.bishops & light_squares) != 0;
    const Square king = loser.king_square;
    int value = 1000 - value_at(ending_tables::corner_table, king) - 4 * manhattan(winner.king_square, king);
    if (Has(corner_blocks, winner.king_square)) value -= 100;
    return value + value_at(ending_tables::colored_corner_table, on_light ? MirrorVertically(king) : king);
}

int rank_bonus_of_pawns(const SIDE_PIECES& winner, Colour side) {
    static constexpr std::array<int, 7> by_rank = {0, 0, 4, 20, 52, 76, 100};
    int sum = 0;
    for (Bitboard pawns = winner.pawns; pawns != 0;) {
        const int rank = RankOf(TakeNextBit(pawns));
        sum += by_rank[static_cast<std::size_t>(side == white ? rank : 7 - rank)];
    }
    return sum;
}

int mating_rule(const BOARD& board, Colour winning_side, int lead) {
    const SIDE_PIECES& winner = board.side(winning_side);
    const SIDE_PIECES& loser = board.side(Opponent(winning_side));
    if (has_bishop_and_knight_alone(board, winner)) return mate_with_bishop_and_knight(winner, loser);
    int value = drives_to_rim(winner, loser) ? lead + 40
                                             : lead + 3 * value_at(ending_tables::corner_table, winner.king_square) / 2;
    const Bitboard pieces = pieces_of(winner);
    if (pieces == 0) value += 2000;
    for (Bitboard rest = pieces; rest != 0;) {
        const Square s = TakeNextBit(rest);
        value += 650 - far_from_king(board, s, loser.king_square);
        if (!IsAttackedBy(s, board, loser)) value += 6;
    }
    for (Bitboard rest = pieces_of(loser); rest != 0;) {
        value -= 2 * bitboard_tables.distance[TakeNextBit(rest)][winner.king_square];
    }
    value -= value_at(ending_tables::corner_table, loser.king_square);
    value -= 4 * manhattan(winner.king_square, loser.king_square);
    return value + rank_bonus_of_pawns(winner, winning_side);
}

/// A lead that is not enough to mate by itself.
int weak_rule(const BOARD& board, Colour winning_side, int lead) {
    const SIDE_PIECES& winner = board.side(winning_side);
    const SIDE_PIECES& loser = board.side(Opponent(winning_side));
    int value = lead / 4;
    value += drives_to_rim(winner, loser) ? 100 : value_at(ending_tables::corner_table, winner.king_square);
    value -= value_at(ending_tables::corner_table, loser.king_square) / 2;
    for (Bitboard rest = pieces_of(winner); rest != 0;) {
        const Square s = TakeNextBit(rest);
        value -= far_from_king(board, s, loser.king_square);
        if (!IsAttackedBy(s, board, loser)) value += 10;
    }
    return std::max(value, 0);
}

}  // namespace

int evaluate_pawnless(const BOARD& board) noexcept {
    const bool white_to_move = board.side_to_move == white;
    const int material = white_to_move ? board.frame().material_balance : -board.frame().material_balance;
    const int lead = std::abs(material);
    if (lead <= balanced_material) {
        const int value = material / 8 + mate_helpers(board, white) - mate_helpers(board, black);
        return (white_to_move ? value : -value) + 3;
    }
    const Colour winning_side = material > 0 ? white : black;
    const int value =
        lead >= mating_material ? mating_rule(board, winning_side, lead) + 6 : weak_rule(board, winning_side, lead) + 4;
    return board.side_to_move == winning_side ? value : -value;
}
