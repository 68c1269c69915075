#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure_walk.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "evaluation/rules/term_visitor.h"

/// The walk over the terms of a plain ending, as in the middle game: first `walk_first_ending_terms`, whose sum may
/// settle a question; then `find_places` and `walk_other_ending_terms`.

/// The cheap terms. Returns which passed pawns have to be looked at again at the end.
template <class Context, class Visitor>
RunnerCheck walk_first_ending_terms(Context& context, const BOARD& board, Visitor& visitor) {
    find_bishop_pairs(context, board);
    visitor.OfBoth(Term::passed_pawns, passed_pawns_ending(context, board));
    visitor.OfBoth(Term::material_imbalance, material_imbalance(context, board).positional());
    const UNSTOPPABLE_BONUS unstoppable = unstoppable_bonus(context, board);
    visitor.OfBoth(Term::unstoppable_pawns, unstoppable.score);
    visitor.OfBoth(Term::bishop_pair, bishop_pair_ending(context, board));
    return unstoppable.check;
}

/// The pieces of one kind, of each side that has any.
template <Colour Us, class Context>
int knights_ending_if_any(Context& context, const BOARD& board) {
    return board.side(Us).knights != 0 ? knights_ending<Us>(context, board) : 0;
}
template <Colour Us, class Context>
int bishops_ending_if_any(Context& context, const BOARD& board) {
    return board.side(Us).bishops != 0 ? bishops_ending<Us>(context, board) : 0;
}
template <Colour Us, class Context>
int rooks_ending_if_any(Context& context, const BOARD& board) {
    return board.side(Us).rooks != 0 ? rooks_ending<Us>(context, board) : 0;
}
template <Colour Us, class Context>
int queens_ending_if_any(Context& context, const BOARD& board) {
    return board.side(Us).queens != 0 ? queens_ending<Us>(context, board) : 0;
}

/// The terms after the lazy test.
template <class Context, class Visitor>
void walk_other_ending_terms(Context& context, const BOARD& board, RunnerCheck check, Visitor& visitor) {
    pawn_structure_ending(context, board, visitor);
    visitor.OfSides(Term::knights,
                    {knights_ending_if_any<white>(context, board), knights_ending_if_any<black>(context, board)});
    visitor.OfSides(Term::bishops,
                    {bishops_ending_if_any<white>(context, board), bishops_ending_if_any<black>(context, board)});
    visitor.OfSides(Term::rooks,
                    {rooks_ending_if_any<white>(context, board), rooks_ending_if_any<black>(context, board)});
    visitor.OfSides(Term::queens,
                    {queens_ending_if_any<white>(context, board), queens_ending_if_any<black>(context, board)});
    visitor.OfBoth(Term::king_placement, king_placement_ending(context, board));
    if (check == RunnerCheck::none) return;
    visitor.OfBoth(Term::checked_unstoppable_pawns, checked_unstoppable_bonus(context, board, check));
}
