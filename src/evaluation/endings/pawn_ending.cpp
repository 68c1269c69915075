#include "evaluation/endings/pawn_ending.h"

#include <cstdlib>

#include "chess/attacks.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/context/view.h"
#include "evaluation/endings/ending.h"
#include "evaluation/king/places.h"
#include "evaluation/rules/tell.h"

namespace {

/// What the terms after the lazy test are taken to add at most, in centipawns.
constexpr int lazy_margin = 3000;

constexpr int spare_pawn_move = 16;
constexpr int passed_pawns_on_both_rims_value = 60;
constexpr int square_that_king_reaches_first = 3;

template <Colour Us, class Context>
int spare_pawn_moves_of(Context& context, const BOARD& board) {
    const Bitboard open = context.pawns[Us].advance_squares;
    const Bitboard one = one_ahead<Us>(board.side(Us).pawns & ranks<Us>(1, 1)) & open;
    const Bitboard two = one_ahead<Us>(one) & open;
    return tell<Us>(context, Rule::spare_pawn_moves, two, spare_pawn_move * PopCount(two));
}

template <Colour Us, class Context>
int passed_pawns_on_both_rims_of(Context& context) {
    const Bitboard on_queen_side = context.pawns[Us].passed & files(0, 1);
    const Bitboard on_king_side = context.pawns[Us].passed & files(6, 7);
    if (on_queen_side == 0 || on_king_side == 0) return 0;
    return tell<Us>(context, Rule::passed_pawns_on_both_rims, on_queen_side | on_king_side,
                    passed_pawns_on_both_rims_value);
}

template <Colour Us, class Context>
int squares_that_king_reaches_first(Context& context, Bitboard squares) {
    return tell<Us>(context, Rule::squares_that_king_reaches_first, squares,
                    square_that_king_reaches_first * PopCount(squares));
}

}  // namespace

template <class Context>
SIDE_VALUES spare_pawn_moves(Context& context, const BOARD& board) noexcept {
    return {spare_pawn_moves_of<white>(context, board), spare_pawn_moves_of<black>(context, board)};
}

template <class Context>
SIDE_VALUES passed_pawns_on_both_rims(Context& context) noexcept {
    return {passed_pawns_on_both_rims_of<white>(context), passed_pawns_on_both_rims_of<black>(context)};
}

template <class Context>
SIDE_VALUES reach_of_kings(Context& context, const BOARD& board) noexcept {
    const KingReach reach =
        ReachableSquares(board, context.pawns[white].front_passed, context.pawns[black].front_passed);
    return {squares_that_king_reaches_first<white>(context, reach.white),
            squares_that_king_reaches_first<black>(context, reach.black)};
}

template <class Context>
int score_of_pawn_ending(Context& context, const BOARD& board, int sum) noexcept {
    const int material = turned(board, static_cast<int>(board.frame().material_balance));
    return sum + tell<white>(context, Rule::material, 0, times_in_pawn_ending * material);
}

EVALUATION_RESULT evaluate_pawn_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    TermSum<int> terms;
    walk_first_pawn_ending_terms(context, board, terms);
    const int material = turned(board, static_cast<int>(board.frame().material_balance));
    const int estimate = limit_to_draw_score(material + terms.sum(), context.settings->draw_score, board);
    const int gap = bound - turned(board, estimate);
    if (std::abs(gap) > lazy_margin) return lazy_answer(gap <= 0, bound);

    find_places(context, board);
    walk_other_pawn_ending_terms(context, board, terms);
    return {.score = turned(board, score_of_pawn_ending(context, board, terms.sum()))};
}

template SIDE_VALUES spare_pawn_moves(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SIDE_VALUES spare_pawn_moves(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template SIDE_VALUES passed_pawns_on_both_rims(EVALUATION_CONTEXT& context) noexcept;
template SIDE_VALUES passed_pawns_on_both_rims(TRACED_CONTEXT& context) noexcept;
template SIDE_VALUES reach_of_kings(EVALUATION_CONTEXT& context, const BOARD& board) noexcept;
template SIDE_VALUES reach_of_kings(TRACED_CONTEXT& context, const BOARD& board) noexcept;
template int score_of_pawn_ending(EVALUATION_CONTEXT& context, const BOARD& board, int sum) noexcept;
template int score_of_pawn_ending(TRACED_CONTEXT& context, const BOARD& board, int sum) noexcept;
