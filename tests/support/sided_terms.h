#pragma once

#include <optional>

#include "evaluation/endings/ending.h"
#include "evaluation/endings/pawnless.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"
#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/pawns/pawns_and_pieces.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/patterns.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "support/term_rows.h"

/// The terms that rows are written for, both instances of each. What the evaluation has as one sum of both sides is
/// turned to the side that the row is told for.
namespace sided {

template <auto Term, Colour Us>
auto SeenBy(EVALUATION_CONTEXT& context, const BOARD& board) {
    return Us == white ? Term(context, board) : -Term(context, board);
}
/// Turns a value for the side to move.
template <Colour Us>
int FromSideToMove(const BOARD& board, int value) {
    return board.side_to_move == Us ? value : -value;
}

template <Colour Us, PositionType Type>
SCORE_PAIR PawnSquares(EVALUATION_CONTEXT& context, const BOARD& board) {
    return pawn_squares<Us>(context, board, Type);
}
template <Colour Us>
SCORE_PAIR DuoAndDefended(EVALUATION_CONTEXT& context, const BOARD& board) {
    return duo_and_defended_pawns<Us>(context, board);
}
template <Colour Us>
SCORE_PAIR Connected(EVALUATION_CONTEXT& context, const BOARD& /*board*/) {
    return connected_passed_pawns<Us>(context);
}
/// A term that only reads the context.
template <int (*Term)(const EVALUATION_CONTEXT&, const BOARD&) noexcept>
int Of(EVALUATION_CONTEXT& context, const BOARD& board) {
    return Term(context, board);
}
template <Colour Us>
int ConnectedInEnding(EVALUATION_CONTEXT& context, const BOARD& /*board*/) {
    return connected_passed_pawns_ending<Us>(context);
}
template <Colour Us>
int PatternsInEnding(EVALUATION_CONTEXT& /*context*/, const BOARD& board) {
    return centre_patterns_ending<Us>(board);
}
template <Colour Us>
int Pawnless(EVALUATION_CONTEXT& /*context*/, const BOARD& board) {
    return FromSideToMove<Us>(board, evaluate_pawnless(board));
}
template <Colour Us>
int WrongBishop(EVALUATION_CONTEXT& /*context*/, const BOARD& board) {
    const std::optional<int> value = wrong_bishop_rule(board);
    EXPECT_TRUE(value.has_value());
    return FromSideToMove<Us>(board, value.value_or(0));
}
template <int Score, bool OppositeBishops, Colour Us>
int Scaled(EVALUATION_CONTEXT& /*context*/, const BOARD& board) {
    return Us == white ? scale_ending(Score, OppositeBishops, board) : -scale_ending(-Score, OppositeBishops, board);
}

// --- Pawns ---

inline constexpr SidedTerm<SCORE_PAIR> in_opening{PawnSquares<white, opening>, PawnSquares<black, opening>};
inline constexpr SidedTerm<SCORE_PAIR> in_middle_game{PawnSquares<white, middle_game>, PawnSquares<black, middle_game>};
inline constexpr SidedTerm<SCORE_PAIR> backward{backward_pawns<white>, backward_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> isolated{isolated_pawns<white>, isolated_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> queen_pawn{isolated_queen_pawn<white>, isolated_queen_pawn<black>};
inline constexpr SidedTerm<SCORE_PAIR> together{DuoAndDefended<white>, DuoAndDefended<black>};
inline constexpr SidedTerm<SCORE_PAIR> doubled{doubled_pawns<white>, doubled_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> connected{Connected<white>, Connected<black>};
inline constexpr SidedTerm<SCORE_PAIR> chains{pawn_chains<white>, pawn_chains<black>};
inline constexpr SidedTerm<SCORE_PAIR> majorities{pawn_majorities<white>, pawn_majorities<black>};
inline constexpr SidedTerm<SCORE_PAIR> centre_of_board{centre_squares<white>, centre_squares<black>};
inline constexpr SidedTerm<SCORE_PAIR> patterns{centre_patterns<white>, centre_patterns<black>};
inline constexpr SidedTerm<SCORE_PAIR> passed{SeenBy<passed_pawns, white>, SeenBy<passed_pawns, black>};
inline constexpr SidedTerm<SCORE_PAIR> majority_king{majority_and_king<white>, majority_and_king<black>};
inline constexpr SidedTerm<SCORE_PAIR> blocked_centre{blocked_centre_pawns<white>, blocked_centre_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> queen_pawn_pieces{isolated_queen_pawn_and_pieces<white>,
                                                         isolated_queen_pawn_and_pieces<black>};
inline constexpr SidedTerm<SCORE_PAIR> passed_pieces{passed_pawns_and_pieces<white>, passed_pawns_and_pieces<black>};

inline constexpr SidedTerm<int> ending_squares{Of<pawn_squares_ending<white>>, Of<pawn_squares_ending<black>>};
inline constexpr SidedTerm<int> ending_backward{Of<backward_pawns_ending<white>>, Of<backward_pawns_ending<black>>};
inline constexpr SidedTerm<int> ending_isolated{Of<isolated_pawns_ending<white>>, Of<isolated_pawns_ending<black>>};
inline constexpr SidedTerm<int> ending_together{Of<duo_and_defended_pawns_ending<white>>,
                                                Of<duo_and_defended_pawns_ending<black>>};
inline constexpr SidedTerm<int> ending_doubled{Of<doubled_pawns_ending<white>>, Of<doubled_pawns_ending<black>>};
inline constexpr SidedTerm<int> ending_defended{Of<defended_passed_pawns_ending<white>>,
                                                Of<defended_passed_pawns_ending<black>>};
inline constexpr SidedTerm<int> ending_connected{ConnectedInEnding<white>, ConnectedInEnding<black>};
inline constexpr SidedTerm<int> ending_chains{Of<pawn_chains_ending<white>>, Of<pawn_chains_ending<black>>};
inline constexpr SidedTerm<int> ending_majorities{Of<pawn_majorities_ending<white>>, Of<pawn_majorities_ending<black>>};
inline constexpr SidedTerm<int> ending_patterns{PatternsInEnding<white>, PatternsInEnding<black>};
inline constexpr SidedTerm<int> ending_king{Of<majority_and_king_ending<white>>, Of<majority_and_king_ending<black>>};

// --- The whole board ---

inline constexpr SidedTerm<SCORE_PAIR> early_patterns{SeenBy<patterns_opening, white>, SeenBy<patterns_opening, black>};
inline constexpr SidedTerm<SCORE_PAIR> game_patterns{SeenBy<patterns_middle_game, white>,
                                                     SeenBy<patterns_middle_game, black>};
inline constexpr SidedTerm<SCORE_PAIR> of_space{SeenBy<space, white>, SeenBy<space, black>};
inline constexpr SidedTerm<SCORE_PAIR> of_activity{SeenBy<activity, white>, SeenBy<activity, black>};

// --- Endings ---

inline constexpr SidedTerm<int> ending_passed{SeenBy<passed_pawns_ending, white>, SeenBy<passed_pawns_ending, black>};
inline constexpr SidedTerm<int> all_knights{knights_ending<white>, knights_ending<black>};
inline constexpr SidedTerm<int> all_bishops{bishops_ending<white>, bishops_ending<black>};
inline constexpr SidedTerm<int> all_rooks{rooks_ending<white>, rooks_ending<black>};
inline constexpr SidedTerm<int> all_queens{queens_ending<white>, queens_ending<black>};
inline constexpr SidedTerm<int> kings{SeenBy<king_placement_ending, white>, SeenBy<king_placement_ending, black>};
inline constexpr SidedTerm<int> wrong_bishop{WrongBishop<white>, WrongBishop<black>};
inline constexpr SidedTerm<int> pawnless_endings{Pawnless<white>, Pawnless<black>};
template <int Score, bool Opposite = false>
inline constexpr SidedTerm<int> scaled{Scaled<Score, Opposite, white>, Scaled<Score, Opposite, black>};

}  // namespace sided
