#pragma once

#include <cstdint>

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/position_type.h"
#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/pawns/pawns_and_pieces.h"
#include "evaluation/rules/term_visitor.h"

/// The walk over the terms of the pawn structure, which the routines add up and the trace writes down.

/// The terms that depend on nothing but the pawns.
template <class Context, class Count>
void walk_pawns_alone(Context& context, const BOARD& board, PositionType type, Count count) {
    count(Term::pawn_squares, {pawn_squares<white>(context, board, type), pawn_squares<black>(context, board, type)});
    count(Term::backward_pawns, {backward_pawns<white>(context, board), backward_pawns<black>(context, board)});
    count(Term::isolated_pawns, {isolated_pawns<white>(context, board), isolated_pawns<black>(context, board)});
    count(Term::isolated_queen_pawn,
          {isolated_queen_pawn<white>(context, board), isolated_queen_pawn<black>(context, board)});
    count(Term::duo_and_defended_pawns,
          {duo_and_defended_pawns<white>(context, board), duo_and_defended_pawns<black>(context, board)});
    count(Term::doubled_pawns, {doubled_pawns<white>(context, board), doubled_pawns<black>(context, board)});
    count(Term::connected_passed_pawns,
          {connected_passed_pawns<white>(context, board), connected_passed_pawns<black>(context, board)});
    count(Term::pawn_chains, {pawn_chains<white>(context, board), pawn_chains<black>(context, board)});
    count(Term::pawn_majorities, {pawn_majorities<white>(context, board), pawn_majorities<black>(context, board)});
    count(Term::centre_squares, {centre_squares<white>(context, board), centre_squares<black>(context, board)});
    count(Term::centre_patterns, {centre_patterns<white>(context, board), centre_patterns<black>(context, board)});
}

/// The terms that look at pieces too.
template <class Context, class Visitor>
void walk_pawns_and_pieces(Context& context, const BOARD& board, Visitor& visitor) {
    visitor.OfSides(Term::majority_and_king,
                    {majority_and_king<white>(context, board), majority_and_king<black>(context, board)});
    visitor.OfSides(Term::blocked_centre_pawns,
                    {blocked_centre_pawns<white>(context, board), blocked_centre_pawns<black>(context, board)});
    visitor.OfSides(Term::isolated_queen_pawn_and_pieces, {isolated_queen_pawn_and_pieces<white>(context, board),
                                                           isolated_queen_pawn_and_pieces<black>(context, board)});
    visitor.OfSides(Term::passed_pawns_and_pieces,
                    {passed_pawns_and_pieces<white>(context, board), passed_pawns_and_pieces<black>(context, board)});
}

inline void add_to(WingCounters& counters, const WingCounters& others) {
    for (const Wing wing : {queen_side, king_side, centre}) add_points(counters[wing], others[wing]);
}

/// The pawn structure of the opening or middle game: `type` chooses the values by square. Facts from the pawn hash
/// table bring the cached part with them. Changes `pressure`, `cover` and `activity`.
template <class Context, class Visitor>
void pawn_structure(Context& context, const BOARD& board, PositionType type, Visitor& visitor) {
    if (!context.pawn_entry_from_table) {
        TermSum<SCORE_PAIR> pawns_alone;
        walk_pawns_alone(context, board, type, [&](Term term, const SIDE_PAIRS& pairs) {
            pawns_alone.OfSides(term, pairs);
            visitor.OfPawnsAlone(term, pairs);
        });
        context.pawn_positional = static_cast<std::int16_t>(pawns_alone.sum().positional());
        context.pawn_reckless = static_cast<std::int16_t>(pawns_alone.sum().reckless());
    }
    for (const Colour side : {white, black}) {
        add_to(context.pressure[side], context.pawn_pressure[side]);
        add_to(context.cover[side], context.pawn_cover[side]);
    }
    visitor.OfBoth(Term::pawns_alone, SCORE_PAIR{context.pawn_positional, context.pawn_reckless});
    walk_pawns_and_pieces(context, board, visitor);
}

// --- Endings ---

template <class Context, class Count>
void walk_pawns_alone_ending(Context& context, const BOARD& board, Count count) {
    count(Term::pawn_squares, {pawn_squares_ending<white>(context, board), pawn_squares_ending<black>(context, board)});
    count(Term::backward_pawns,
          {backward_pawns_ending<white>(context, board), backward_pawns_ending<black>(context, board)});
    count(Term::isolated_pawns,
          {isolated_pawns_ending<white>(context, board), isolated_pawns_ending<black>(context, board)});
    count(Term::duo_and_defended_pawns,
          {duo_and_defended_pawns_ending<white>(context, board), duo_and_defended_pawns_ending<black>(context, board)});
    count(Term::doubled_pawns,
          {doubled_pawns_ending<white>(context, board), doubled_pawns_ending<black>(context, board)});
    count(Term::defended_passed_pawns,
          {defended_passed_pawns_ending<white>(context, board), defended_passed_pawns_ending<black>(context, board)});
    count(Term::connected_passed_pawns,
          {connected_passed_pawns_ending<white>(context, board), connected_passed_pawns_ending<black>(context, board)});
    count(Term::pawn_chains, {pawn_chains_ending<white>(context, board), pawn_chains_ending<black>(context, board)});
    count(Term::pawn_majorities,
          {pawn_majorities_ending<white>(context, board), pawn_majorities_ending<black>(context, board)});
    count(Term::centre_patterns,
          {centre_patterns_ending<white>(context, board), centre_patterns_ending<black>(context, board)});
}

/// The pawn structure of an ending. Every term counts `times` over.
template <class Context, class Visitor>
void pawn_structure_ending(Context& context, const BOARD& board, Visitor& visitor, int times = 1) {
    if (!context.pawn_entry_from_table) {
        TermSum<int> pawns_alone;
        walk_pawns_alone_ending(context, board, [&](Term term, const SIDE_VALUES& values) {
            pawns_alone.OfSides(term, values);
            visitor.OfPawnsAlone(term, values, times);
        });
        context.pawn_ending = static_cast<std::int16_t>(pawns_alone.sum());
    }
    visitor.OfBoth(Term::pawns_alone, int{context.pawn_ending}, times);
    visitor.OfSides(Term::majority_and_king,
                    {majority_and_king_ending<white>(context, board), majority_and_king_ending<black>(context, board)},
                    times);
}
