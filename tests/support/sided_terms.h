#pragma once

#include <optional>

#include "evaluation/endings/ending.h"
#include "evaluation/endings/pawnless.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/endings/wrong_bishop.h"
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
int Pawnless(EVALUATION_CONTEXT& context, const BOARD& board) {
    return FromSideToMove<Us>(board, evaluate_pawnless(context, board));
}
template <Colour Us>
int WrongBishop(EVALUATION_CONTEXT& context, const BOARD& board) {
    const std::optional<int> value = wrong_bishop_rule(context, board);
    EXPECT_TRUE(value.has_value());
    return FromSideToMove<Us>(board, value.value_or(0));
}
template <int Score, bool OppositeBishops, Colour Us>
int Scaled(EVALUATION_CONTEXT& context, const BOARD& board) {
    return Us == white ? scale_ending(context, Score, OppositeBishops, board)
                       : -scale_ending(context, -Score, OppositeBishops, board);
}

// --- Pawns ---

inline constexpr SidedTerm<SCORE_PAIR> squares_in_opening{PawnSquares<white, opening>, PawnSquares<black, opening>};
inline constexpr SidedTerm<SCORE_PAIR> squares_in_middle_game{PawnSquares<white, middle_game>,
                                                              PawnSquares<black, middle_game>};
inline constexpr SidedTerm<SCORE_PAIR> backward{backward_pawns<white>, backward_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> isolated{isolated_pawns<white>, isolated_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> queen_pawn{isolated_queen_pawn<white>, isolated_queen_pawn<black>};
inline constexpr SidedTerm<SCORE_PAIR> duo_and_defended{duo_and_defended_pawns<white>, duo_and_defended_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> doubled{doubled_pawns<white>, doubled_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> connected{connected_passed_pawns<white>, connected_passed_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> chains{pawn_chains<white>, pawn_chains<black>};
inline constexpr SidedTerm<SCORE_PAIR> majorities{pawn_majorities<white>, pawn_majorities<black>};
inline constexpr SidedTerm<SCORE_PAIR> centre_of_board{centre_squares<white>, centre_squares<black>};
inline constexpr SidedTerm<SCORE_PAIR> centre_pawn_patterns{centre_patterns<white>, centre_patterns<black>};
inline constexpr SidedTerm<SCORE_PAIR> passed{SeenBy<passed_pawns<EVALUATION_CONTEXT>, white>,
                                              SeenBy<passed_pawns<EVALUATION_CONTEXT>, black>};
inline constexpr SidedTerm<SCORE_PAIR> majority_king{majority_and_king<white>, majority_and_king<black>};
inline constexpr SidedTerm<SCORE_PAIR> blocked_centre{blocked_centre_pawns<white>, blocked_centre_pawns<black>};
inline constexpr SidedTerm<SCORE_PAIR> queen_pawn_pieces{isolated_queen_pawn_and_pieces<white>,
                                                         isolated_queen_pawn_and_pieces<black>};
inline constexpr SidedTerm<SCORE_PAIR> passed_pieces{passed_pawns_and_pieces<white>, passed_pawns_and_pieces<black>};

inline constexpr SidedTerm<int> ending_squares{pawn_squares_ending<white>, pawn_squares_ending<black>};
inline constexpr SidedTerm<int> ending_backward{backward_pawns_ending<white>, backward_pawns_ending<black>};
inline constexpr SidedTerm<int> ending_isolated{isolated_pawns_ending<white>, isolated_pawns_ending<black>};
inline constexpr SidedTerm<int> ending_together{duo_and_defended_pawns_ending<white>,
                                                duo_and_defended_pawns_ending<black>};
inline constexpr SidedTerm<int> ending_doubled{doubled_pawns_ending<white>, doubled_pawns_ending<black>};
inline constexpr SidedTerm<int> ending_defended{defended_passed_pawns_ending<white>,
                                                defended_passed_pawns_ending<black>};
inline constexpr SidedTerm<int> ending_connected{connected_passed_pawns_ending<white>,
                                                 connected_passed_pawns_ending<black>};
inline constexpr SidedTerm<int> ending_chains{pawn_chains_ending<white>, pawn_chains_ending<black>};
inline constexpr SidedTerm<int> ending_majorities{pawn_majorities_ending<white>, pawn_majorities_ending<black>};
inline constexpr SidedTerm<int> ending_patterns{centre_patterns_ending<white>, centre_patterns_ending<black>};
inline constexpr SidedTerm<int> ending_king{majority_and_king_ending<white>, majority_and_king_ending<black>};

// --- Pieces ---

inline constexpr SidedTerm<SCORE_PAIR> opening_knights{knights_opening<white>, knights_opening<black>};
inline constexpr SidedTerm<SCORE_PAIR> middle_game_knights{knights_middle_game<white>, knights_middle_game<black>};
inline constexpr SidedTerm<SCORE_PAIR> knight_moves{knight_mobility<white>, knight_mobility<black>};
inline constexpr SidedTerm<SCORE_PAIR> bishops_of_game{bishops<white>, bishops<black>};
inline constexpr SidedTerm<SCORE_PAIR> rooks_of_game{rooks<white>, rooks<black>};
inline constexpr SidedTerm<SCORE_PAIR> opening_queens{queens_opening<white>, queens_opening<black>};
inline constexpr SidedTerm<SCORE_PAIR> middle_game_queens{queens_middle_game<white>, queens_middle_game<black>};

// --- The whole board ---

inline constexpr SidedTerm<SCORE_PAIR> early_patterns{SeenBy<patterns_opening<EVALUATION_CONTEXT>, white>,
                                                      SeenBy<patterns_opening<EVALUATION_CONTEXT>, black>};
inline constexpr SidedTerm<SCORE_PAIR> game_patterns{SeenBy<patterns_middle_game<EVALUATION_CONTEXT>, white>,
                                                     SeenBy<patterns_middle_game<EVALUATION_CONTEXT>, black>};
inline constexpr SidedTerm<SCORE_PAIR> of_space{SeenBy<space<EVALUATION_CONTEXT>, white>,
                                                SeenBy<space<EVALUATION_CONTEXT>, black>};
inline constexpr SidedTerm<SCORE_PAIR> of_activity{SeenBy<activity<EVALUATION_CONTEXT>, white>,
                                                   SeenBy<activity<EVALUATION_CONTEXT>, black>};

// --- Endings ---

inline constexpr SidedTerm<int> ending_passed{SeenBy<passed_pawns_ending<EVALUATION_CONTEXT>, white>,
                                              SeenBy<passed_pawns_ending<EVALUATION_CONTEXT>, black>};
inline constexpr SidedTerm<int> all_knights{knights_ending<white>, knights_ending<black>};
inline constexpr SidedTerm<int> all_bishops{bishops_ending<white>, bishops_ending<black>};
inline constexpr SidedTerm<int> all_rooks{rooks_ending<white>, rooks_ending<black>};
inline constexpr SidedTerm<int> all_queens{queens_ending<white>, queens_ending<black>};
inline constexpr SidedTerm<int> king_placement{SeenBy<king_placement_ending<EVALUATION_CONTEXT>, white>,
                                               SeenBy<king_placement_ending<EVALUATION_CONTEXT>, black>};
inline constexpr SidedTerm<int> wrong_bishop{WrongBishop<white>, WrongBishop<black>};
inline constexpr SidedTerm<int> pawnless_endings{Pawnless<white>, Pawnless<black>};
template <int Score, bool Opposite = false>
inline constexpr SidedTerm<int> scaled{Scaled<Score, Opposite, white>, Scaled<Score, Opposite, black>};

}  // namespace sided
