#include "evaluation/endings/pawnless.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/context/view.h"
#include "evaluation/pieces/ending_tables.h"
#include "evaluation/rules/tell.h"

// Three cases, by the lead in material: none, one that is enough to mate, one that is not. The kings' places count as a
// mate needs them: the loser's in a corner, the winner's in the centre.

namespace {

using ending_tables::value_at;

constexpr Bitboard rim = files(0, 0) | files(7, 7) | ranks<white>(0, 0) | ranks<white>(7, 7);
constexpr Bitboard corner_blocks = (files(0, 1) | files(6, 7)) & (ranks<white>(0, 1) | ranks<white>(6, 7));

/// Up to here material is balanced; from there on it is enough to mate. Centipawns.
constexpr int balanced_material = 20;
constexpr int mating_material = 500;

int steps_between(Square a, Square b) { return bitboard_tables.manhattan_distance[a][b]; }

Bitboard pieces_of(const SIDE_PIECES& side) { return side.knights | side.bishops | side.rooks | side.queens; }

Bitboard kings_of(const SIDE_PIECES& one, const SIDE_PIECES& other) {
    return Bit(one.king_square) | Bit(other.king_square);
}

/// Two steps from the enemy king, which stands on the rim while the own one does not.
bool drives_to_rim(const SIDE_PIECES& own, const SIDE_PIECES& enemy) {
    return steps_between(own.king_square, enemy.king_square) == 2 && Has(rim, enemy.king_square) &&
           !Has(rim, own.king_square);
}

int distance_from_centre(Square king) { return -value_at(ending_tables::corner_table, king); }

/// What a piece loses far from the enemy king.
int piece_far_from_king(const BOARD& board, Square piece, Square king) {
    const int steps = bitboard_tables.distance[piece][king] - 1;
    switch (std::abs(board.squares[piece])) {
        case knight:
            return -2 * steps;
        case rook:
            return 0;
        default:
            return -steps;
    }
}

// --- Balanced material: pieces near the enemy king, and that king near the rim ---

namespace balanced {
int small_part_of_material(int material) { return material / 8; }
constexpr int king_driven_to_rim = 20;
int enemy_king_off_centre(Square king) { return distance_from_centre(king) / 8; }
int piece_far_from_king(const BOARD& board, Square piece, Square king) {
    return ::piece_far_from_king(board, piece, king) / 4;
}
constexpr int piece_not_attacked = 6;
constexpr int right_to_move = 3;
}  // namespace balanced

template <Colour Us, class Context>
int mate_helpers(Context& context, const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    const SIDE_PIECES& enemy = board.side(Opponent(Us));
    int sum = 0;
    const auto count = [&](Rule rule, int value, Bitboard squares) { sum += tell<Us>(context, rule, squares, value); };
    if (drives_to_rim(own, enemy))
        count(Rule::king_driven_to_rim, balanced::king_driven_to_rim, kings_of(own, enemy));
    else
        count(Rule::enemy_king_off_centre, balanced::enemy_king_off_centre(enemy.king_square), Bit(enemy.king_square));
    for (Bitboard rest = pieces_of(own); rest != 0;) {
        const Square s = TakeNextBit(rest);
        count(Rule::piece_far_from_king, balanced::piece_far_from_king(board, s, enemy.king_square), Bit(s));
        if (!IsAttackedBy(s, board, enemy)) count(Rule::piece_not_attacked, balanced::piece_not_attacked, Bit(s));
    }
    return sum;
}

// --- Enough to mate ---

namespace mating {

/// Four for each step.
int kings_apart(const SIDE_PIECES& winner, const SIDE_PIECES& loser) {
    return -4 * steps_between(winner.king_square, loser.king_square);
}

// Bishop and knight alone. They drive the king to a corner of the bishop's colour.
constexpr int bishop_and_knight = 1000;
constexpr int king_in_corner_block = -100;
int enemy_king_in_bishops_corner(const SIDE_PIECES& winner, Square king) {
    const bool on_light = (winner.bishops & light_squares) != 0;
    return value_at(ending_tables::colored_corner_table, on_light ? MirrorVertically(king) : king);
}

// All others.
constexpr int king_driven_to_rim = 40;
int own_king_in_centre(Square king) { return 3 * value_at(ending_tables::corner_table, king) / 2; }
constexpr int piece_to_mate_with = 650;
constexpr int piece_not_attacked = 6;
constexpr int pawns_without_pieces = 2000;
int enemy_piece_far_from_king(Square piece, Square king) { return 2 * -bitboard_tables.distance[piece][king]; }
template <Colour Us>
int pawn_by_rank(Square s) {
    static constexpr std::array<int, 7> by_rank = {0, 0, 4, 20, 52, 76, 100};
    return at(by_rank, rank_seen<Us>(s));
}

constexpr int enough_to_mate = 6;

}  // namespace mating

bool has_bishop_and_knight_alone(const BOARD& board, const SIDE_PIECES& winner) {
    constexpr int two_minor_pieces = 6;  // material units
    return board.total_material == two_minor_pieces && winner.minor_points == two_minor_pieces && winner.pawns == 0 &&
           winner.knights != 0 && winner.bishops != 0;
}

template <Colour Us, class Context>
int mate_with_bishop_and_knight(Context& context, const SIDE_PIECES& winner, const SIDE_PIECES& loser) {
    const Square king = loser.king_square;
    int sum = 0;
    const auto count = [&](Rule rule, int value, Bitboard squares) { sum += tell<Us>(context, rule, squares, value); };
    count(Rule::bishop_and_knight, mating::bishop_and_knight, pieces_of(winner));
    count(Rule::enemy_king_off_centre, distance_from_centre(king), Bit(king));
    count(Rule::kings_apart, mating::kings_apart(winner, loser), kings_of(winner, loser));
    if (Has(corner_blocks, winner.king_square))
        count(Rule::king_in_corner_block, mating::king_in_corner_block, Bit(winner.king_square));
    count(Rule::enemy_king_in_bishops_corner, mating::enemy_king_in_bishops_corner(winner, king),
          Bit(king) | winner.bishops);
    return sum;
}

template <Colour Us, class Context>
int mating_rule(Context& context, const BOARD& board, int lead) {
    const SIDE_PIECES& winner = board.side(Us);
    const SIDE_PIECES& loser = board.side(Opponent(Us));
    if (has_bishop_and_knight_alone(board, winner)) {
        return mate_with_bishop_and_knight<Us>(context, winner, loser);
    }
    int sum = 0;
    const auto count = [&](Rule rule, int value, Bitboard squares) { sum += tell<Us>(context, rule, squares, value); };
    count(Rule::material, lead, 0);
    if (drives_to_rim(winner, loser))
        count(Rule::king_driven_to_rim, mating::king_driven_to_rim, kings_of(winner, loser));
    else
        count(Rule::own_king_in_centre, mating::own_king_in_centre(winner.king_square), Bit(winner.king_square));
    const Bitboard pieces = pieces_of(winner);
    if (pieces == 0) count(Rule::pawns_without_pieces, mating::pawns_without_pieces, winner.pawns);
    for (Bitboard rest = pieces; rest != 0;) {
        const Square s = TakeNextBit(rest);
        count(Rule::piece_to_mate_with, mating::piece_to_mate_with, Bit(s));
        count(Rule::piece_far_from_king, piece_far_from_king(board, s, loser.king_square), Bit(s));
        if (!IsAttackedBy(s, board, loser)) count(Rule::piece_not_attacked, mating::piece_not_attacked, Bit(s));
    }
    for (Bitboard rest = pieces_of(loser); rest != 0;) {
        const Square s = TakeNextBit(rest);
        count(Rule::enemy_piece_far_from_king, mating::enemy_piece_far_from_king(s, winner.king_square), Bit(s));
    }
    count(Rule::enemy_king_off_centre, distance_from_centre(loser.king_square), Bit(loser.king_square));
    count(Rule::kings_apart, mating::kings_apart(winner, loser), kings_of(winner, loser));
    for (Bitboard pawns = winner.pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        count(Rule::pawn_by_rank, mating::pawn_by_rank<Us>(s), Bit(s));
    }
    return sum;
}

// --- A lead that is not enough to mate by itself ---

namespace weak {
int small_part_of_material(int lead) { return lead / 4; }
constexpr int king_driven_to_rim = 100;
int own_king_in_centre(Square king) { return value_at(ending_tables::corner_table, king); }
int enemy_king_off_centre(Square king) { return distance_from_centre(king) / 2; }
constexpr int piece_not_attacked = 10;
constexpr int lead_is_no_less = 0;
constexpr int not_enough_to_mate = 4;
}  // namespace weak

template <Colour Us, class Context>
int weak_rule(Context& context, const BOARD& board, int lead) {
    const SIDE_PIECES& winner = board.side(Us);
    const SIDE_PIECES& loser = board.side(Opponent(Us));
    int sum = 0;
    const auto count = [&](Rule rule, int value, Bitboard squares) { sum += tell<Us>(context, rule, squares, value); };
    count(Rule::small_part_of_material, weak::small_part_of_material(lead), 0);
    if (drives_to_rim(winner, loser))
        count(Rule::king_driven_to_rim, weak::king_driven_to_rim, kings_of(winner, loser));
    else
        count(Rule::own_king_in_centre, weak::own_king_in_centre(winner.king_square), Bit(winner.king_square));
    count(Rule::enemy_king_off_centre, weak::enemy_king_off_centre(loser.king_square), Bit(loser.king_square));
    for (Bitboard rest = pieces_of(winner); rest != 0;) {
        const Square s = TakeNextBit(rest);
        count(Rule::piece_far_from_king, piece_far_from_king(board, s, loser.king_square), Bit(s));
        if (!IsAttackedBy(s, board, loser)) count(Rule::piece_not_attacked, weak::piece_not_attacked, Bit(s));
    }
    return tell_limited(context, Us, Rule::lead_is_no_less, sum, std::max(sum, weak::lead_is_no_less));
}

/// For the side that is ahead.
template <Colour Us, class Context>
int value_of_lead(Context& context, const BOARD& board, int lead) {
    const Bitboard pieces = pieces_of(board.side(Us));
    if (lead >= mating_material) {
        const int value = mating_rule<Us>(context, board, lead);
        return value + tell<Us>(context, Rule::enough_to_mate, pieces, mating::enough_to_mate);
    }
    const int value = weak_rule<Us>(context, board, lead);
    return value + tell<Us>(context, Rule::not_enough_to_mate, pieces, weak::not_enough_to_mate);
}

template <class Context>
int value_of_balance(Context& context, const BOARD& board, int material) {
    int of_white = tell<white>(context, Rule::small_part_of_material, 0, balanced::small_part_of_material(material));
    of_white += mate_helpers<white>(context, board);
    of_white -= mate_helpers<black>(context, board);
    const Colour to_move = board.mover();
    return turned(board, of_white) + tell(context, to_move, Rule::right_to_move, 0, balanced::right_to_move);
}

}  // namespace

template <class Context>
int evaluate_pawnless(Context& context, const BOARD& board) noexcept {
    const int material = turned(board, static_cast<int>(board.frame().material_balance));
    const int lead = std::abs(material);
    if (lead <= balanced_material) return value_of_balance(context, board, material);
    return material > 0 ? turned_from(white, board, value_of_lead<white>(context, board, lead))
                        : turned_from(black, board, value_of_lead<black>(context, board, lead));
}

template int evaluate_pawnless(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template int evaluate_pawnless(TRACED_CONTEXT& context, const BOARD& board) noexcept;
