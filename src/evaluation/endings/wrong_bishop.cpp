#include "evaluation/endings/wrong_bishop.h"

#include <array>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/table_lookup.h"
#include "evaluation/context/view.h"
#include "evaluation/rules/tell.h"

namespace {

constexpr int bishop_and_pawns = 835;
/// All pawns stand on one edge file, and the bishop does not attack the corner where they promote.
constexpr int bishop_of_wrong_colour = 315;

// By distance to that corner.
int enemy_king_from_corner(int distance) {
    static constexpr std::array<int, 8> by_distance = {-127, -127, -20, 10, 20, 30, 50, 90};
    return at(by_distance, distance);
}
int own_king_from_corner(int distance) {
    static constexpr std::array<int, 8> by_distance = {80, 80, 10, 0, -10, -20, -25, -30};
    return at(by_distance, distance);
}
/// The king in the corner or beside it can't be driven out.
bool king_holds_corner(int distance) { return distance < 2; }
constexpr int score_of_held_corner = 0;

template <Colour Us>
int pawn_with_bishop_by_rank(Square s) {
    static constexpr std::array<int, 7> by_rank = {0, 50, 52, 55, 62, 76, 90};
    return at(by_rank, rank_seen<Us>(s));
}

/// The corner where the pawns promote that the bishop does not attack; nothing if the bishop is of use.
template <Colour Us>
std::optional<Square> corner_out_of_reach(const SIDE_PIECES& own) {
    const bool on_a_file = (own.pawns & ~a_file) == 0;
    if (!on_a_file && (own.pawns & ~h_file) != 0) return std::nullopt;
    const Square corner = Seen<Us>(on_a_file ? a8 : h8);
    if (Has(light_squares, corner) == ((own.bishops & light_squares) != 0)) return std::nullopt;
    return corner;
}

/// The value for the side with bishop and pawns.
template <Colour Us, class Context>
int value_of_bishop_and_pawns(Context& context, const BOARD& board) {
    const SIDE_PIECES& own = board.side(Us);
    const Square own_king = own.king_square;
    const Square enemy_king = board.side(Opponent(Us)).king_square;
    int sum = 0;
    const auto count = [&](Rule rule, int value, Bitboard squares) { sum += tell<Us>(context, rule, squares, value); };
    if (const auto corner = corner_out_of_reach<Us>(own)) {
        const int distance = bitboard_tables.distance[enemy_king][*corner];
        const Bitboard corner_and_king = Bit(*corner) | Bit(enemy_king);
        if (king_holds_corner(distance)) {
            return tell_set(context, Us, Rule::king_holds_corner, corner_and_king, score_of_held_corner);
        }
        count(Rule::bishop_of_wrong_colour, bishop_of_wrong_colour, own.bishops);
        count(Rule::enemy_king_from_corner, enemy_king_from_corner(distance), corner_and_king);
        count(Rule::own_king_from_corner, own_king_from_corner(bitboard_tables.distance[own_king][*corner]),
              Bit(*corner) | Bit(own_king));
    } else {
        count(Rule::bishop_and_pawns, bishop_and_pawns, own.bishops | own.pawns);
    }
    for (Bitboard pawns = own.pawns; pawns != 0;) {
        const Square s = TakeNextBit(pawns);
        count(Rule::pawn_with_bishop_by_rank, pawn_with_bishop_by_rank<Us>(s), Bit(s));
    }
    return sum;
}

/// Whether `Us` has a bishop and pawns, the enemy nothing; there is one minor piece on the board.
template <Colour Us>
bool has_bishop_and_pawns_alone(const BOARD& board) {
    return board.side(Opponent(Us)).pawns == 0 && board.side(Us).pawns != 0 && board.side(Us).bishops != 0;
}

}  // namespace

template <class Context>
std::optional<int> wrong_bishop_rule(Context& context, const BOARD& board) noexcept {
    constexpr int one_minor_piece = 3;  // material units
    if (board.total_material != one_minor_piece) return std::nullopt;
    if (has_bishop_and_pawns_alone<white>(board)) {
        return turned_from(white, board, value_of_bishop_and_pawns<white>(context, board));
    }
    if (has_bishop_and_pawns_alone<black>(board)) {
        return turned_from(black, board, value_of_bishop_and_pawns<black>(context, board));
    }
    return std::nullopt;
}

template std::optional<int> wrong_bishop_rule(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template std::optional<int> wrong_bishop_rule(TRACED_CONTEXT& context, const BOARD& board) noexcept;
