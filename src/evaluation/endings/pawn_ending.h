#pragma once

#include "chess/board.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure_walk.h"
#include "evaluation/rules/term_visitor.h"

/// The routine of kings and pawns.
[[nodiscard]] EVALUATION_RESULT evaluate_pawn_ending(EVALUATION_CONTEXT& context, const BOARD& board,
                                                     int bound) noexcept;

// The walk over its terms, as in a plain ending: first `walk_first_pawn_ending_terms`, then `find_places` and
// `walk_other_pawn_ending_terms`, last `score_of_pawn_ending`.

/// Pawns are all there is: material and everything about the pawns count three times.
inline constexpr int times_in_pawn_ending = 3;

/// Pawns on their first square with both steps open.
template <class Context>
[[nodiscard]] SIDE_VALUES spare_pawn_moves(Context& context, const BOARD& board) noexcept;
/// Passed pawns so far apart that no king stops both.
template <class Context>
[[nodiscard]] SIDE_VALUES passed_pawns_on_both_rims(Context& context) noexcept;
/// The squares that a king reaches before the other one.
template <class Context>
[[nodiscard]] SIDE_VALUES reach_of_kings(Context& context, const BOARD& board) noexcept;

template <class Context, class Visitor>
void walk_first_pawn_ending_terms(Context& context, const BOARD& board, Visitor& visitor) {
    // In this order: the race reads what the passed pawns leave.
    visitor.OfBoth(Term::passed_pawns, passed_pawns_ending(context, board), times_in_pawn_ending);
    visitor.OfBoth(Term::pawn_race, race(context, board));
}

template <class Context, class Visitor>
void walk_other_pawn_ending_terms(Context& context, const BOARD& board, Visitor& visitor) {
    pawn_structure_ending(context, board, visitor, times_in_pawn_ending);
    visitor.OfSides(Term::spare_pawn_moves, spare_pawn_moves(context, board));
    visitor.OfSides(Term::passed_pawns_on_both_rims, passed_pawns_on_both_rims(context));
    visitor.OfSides(Term::reach_of_kings, reach_of_kings(context, board));
}

/// The sum of all terms with the material, in White's view.
template <class Context>
[[nodiscard]] int score_of_pawn_ending(Context& context, const BOARD& board, int sum) noexcept;
