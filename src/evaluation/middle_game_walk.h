#pragma once

#include <algorithm>
#include <iterator>

#include "chess/board.h"
#include "evaluation/blend.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/position_type.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"
#include "evaluation/pawns/pawn_structure_walk.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/pieces/patterns.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "evaluation/rules/term_visitor.h"

/// The walk over the terms of the opening and the middle game, for their routines and for whoever wants to see the
/// terms one by one: first `walk_first_terms`, whose sum may settle a question; then `find_places` and
/// `walk_other_terms`.

/// The cheap terms.
template <class Context, class Visitor>
void walk_first_terms(Context& context, const BOARD& board, Visitor& visitor) {
    find_bishop_pairs(context, board);
    visitor.OfBoth(Term::passed_pawns, passed_pawns(context, board));
    visitor.OfBoth(Term::material_imbalance, material_imbalance(context, board));
    visitor.OfBoth(Term::bishop_pair, bishop_pair(context, board));
}

/// The pieces of one kind, of each side that has any.
template <PositionType Type, Colour Us, class Context>
SCORE_PAIR knights_if_any(Context& context, const BOARD& board) {
    if (board.side(Us).knights == 0) return {};
    return Type == opening ? knights_opening<Us>(context, board) : knights_middle_game<Us>(context, board);
}
template <Colour Us, class Context>
SCORE_PAIR bishops_if_any(Context& context, const BOARD& board) {
    return board.side(Us).bishops != 0 ? bishops<Us>(context, board) : SCORE_PAIR{};
}
template <Colour Us, class Context>
SCORE_PAIR rooks_if_any(Context& context, const BOARD& board) {
    return board.side(Us).rooks != 0 ? rooks<Us>(context, board) : SCORE_PAIR{};
}
template <PositionType Type, Colour Us, class Context>
SCORE_PAIR queens_if_any(Context& context, const BOARD& board) {
    if (board.side(Us).queens == 0) return {};
    return Type == opening ? queens_opening<Us>(context, board) : queens_middle_game<Us>(context, board);
}
template <Colour Us, class Context>
SCORE_PAIR knight_mobility_if_any(Context& context, const BOARD& board) {
    return board.side(Us).knights != 0 ? knight_mobility<Us>(context, board) : SCORE_PAIR{};
}

/// The terms after the lazy test.
template <PositionType Type, class Context, class Visitor>
void walk_other_terms(Context& context, const BOARD& board, Visitor& visitor) {
    context.endgame_weight = endgame_weight(board);
    pawn_structure(context, board, Type, visitor);
    visitor.OfSides(Term::knights,
                    {knights_if_any<Type, white>(context, board), knights_if_any<Type, black>(context, board)});
    visitor.OfSides(Term::bishops, {bishops_if_any<white>(context, board), bishops_if_any<black>(context, board)});
    visitor.OfSides(Term::rooks, {rooks_if_any<white>(context, board), rooks_if_any<black>(context, board)});
    std::copy(std::begin(context.attacks), std::end(context.attacks), std::begin(context.attacks_no_queen));
    visitor.OfSides(Term::queens,
                    {queens_if_any<Type, white>(context, board), queens_if_any<Type, black>(context, board)});
    visitor.OfBoth(Term::patterns,
                   Type == opening ? patterns_opening(context, board) : patterns_middle_game(context, board));
    visitor.OfBoth(Term::space, space(context, board));
    if constexpr (Type == middle_game) visitor.OfBoth(Term::activity, activity(context, board));
    visitor.OfBoth(Term::king_safety, king_safety(context, board));
    visitor.OfSides(Term::knight_mobility,
                    {knight_mobility_if_any<white>(context, board), knight_mobility_if_any<black>(context, board)});
    visitor.OfBoth(Term::pawn_balance, pawn_balance(context, board));
}
