#include <gtest/gtest.h>

#include "evaluation/pawn_terms.h"
#include "evaluation/pawns_and_pieces.h"
#include "support/row_name.h"
#include "support/term_rows.h"

namespace {

class PawnTermsInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(PawnTermsInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

/// The functions read the context alone.
template <int (*Term)(const EVALUATION_CONTEXT&, const BOARD&) noexcept>
int Of(EVALUATION_CONTEXT& context, const BOARD& board) {
    return Term(context, board);
}
template <Colour Us>
int Connected(EVALUATION_CONTEXT& context, const BOARD& /*board*/) {
    return connected_passed_pawns_ending<Us>(context);
}
template <Colour Us>
int Patterns(EVALUATION_CONTEXT& /*context*/, const BOARD& board) {
    return centre_patterns_ending<Us>(board);
}

constexpr SidedTerm<int> by_square{Of<pawn_squares_ending<white>>, Of<pawn_squares_ending<black>>};
constexpr SidedTerm<int> backward{Of<backward_pawns_ending<white>>, Of<backward_pawns_ending<black>>};
constexpr SidedTerm<int> isolated{Of<isolated_pawns_ending<white>>, Of<isolated_pawns_ending<black>>};
constexpr SidedTerm<int> together{Of<duo_and_defended_pawns_ending<white>>, Of<duo_and_defended_pawns_ending<black>>};
constexpr SidedTerm<int> doubled{Of<doubled_pawns_ending<white>>, Of<doubled_pawns_ending<black>>};
constexpr SidedTerm<int> defended{Of<defended_passed_pawns_ending<white>>, Of<defended_passed_pawns_ending<black>>};
constexpr SidedTerm<int> connected{Connected<white>, Connected<black>};
constexpr SidedTerm<int> chains{Of<pawn_chains_ending<white>>, Of<pawn_chains_ending<black>>};
constexpr SidedTerm<int> majorities{Of<pawn_majorities_ending<white>>, Of<pawn_majorities_ending<black>>};
constexpr SidedTerm<int> patterns{Patterns<white>, Patterns<black>};
constexpr SidedTerm<int> and_king{Of<majority_and_king_ending<white>>, Of<majority_and_king_ending<black>>};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Endings, PawnTermsInEndings, testing::Values(
    ValueRow{"square e4", by_square, "4k3/8/8/8/4P3/8/8/4K3", 5},
    ValueRow{"square a7", by_square, "4k3/P7/8/8/8/8/8/4K3", 17},
    ValueRow{"square b7", by_square, "4k3/1P6/8/8/8/8/8/4K3", 18},
    ValueRow{"square d6", by_square, "4k3/8/3P4/8/8/8/8/4K3", 10},
    ValueRow{"square c6", by_square, "4k3/8/2P5/8/8/8/8/4K3", 11},
    ValueRow{"square h5", by_square, "4k3/8/8/7P/8/8/8/4K3", 6},
    ValueRow{"square h2", by_square, "4k3/8/8/8/8/8/7P/4K3", 0},
    ValueRow{"square g3", by_square, "4k3/8/8/8/8/6P1/8/4K3", 4},
    ValueRow{"stuck, nothing ahead", backward, "4k3/8/8/3p4/8/8/4P3/4K3", -20},
    ValueRow{"stuck, two ranks ahead", backward, "4k3/8/8/8/3pp3/8/4P3/4K3", -14},
    ValueRow{"stuck, three ranks ahead", backward, "4k3/8/8/3pp3/8/8/4P3/4K3", -15},
    ValueRow{"stuck, four ranks ahead", backward, "4k3/8/4p3/3p4/8/8/4P3/4K3", -15},
    ValueRow{"stuck, five ranks ahead", backward, "4k3/4p3/8/3p4/8/8/4P3/4K3", -16},
    ValueRow{"backward, nothing ahead", backward, "4k3/8/3p1p2/8/4P3/8/8/4K3", -10},
    ValueRow{"backward, a pawn ahead", backward, "4k3/4p3/3p1p2/8/4P3/8/8/4K3", -8},
    ValueRow{"isolated, nothing ahead", isolated, "4k3/8/8/8/4P3/8/8/4K3", -14},
    ValueRow{"isolated, a pawn ahead", isolated, "4k3/8/4p3/8/4P3/8/8/4K3", -10},
    ValueRow{"isolated queen pawn has no rule of its own", isolated, "4k3/8/8/8/3P4/8/8/4K3", -14},
    ValueRow{"duo", together, "4k3/3pp3/8/8/3PP3/8/8/4K3", 8},
    ValueRow{"duo of passed pawns", together, "4k3/8/8/8/3PP3/8/8/4K3", 8},
    ValueRow{"duo on the sixth rank", together, "4k3/8/PP6/8/8/8/8/4K3", 20},
    ValueRow{"duo on the fifth rank", together, "4k3/8/8/PP6/8/8/8/4K3", 14},
    ValueRow{"duo at home", together, "4k3/8/8/8/8/8/PP6/4K3", 5},
    ValueRow{"a passed pawn behind another counts for nothing", together, "4k3/8/8/P7/PP6/8/8/4K3", 4 + 3},
    ValueRow{"defended on e4", together, "4k3/3pp3/8/8/4P3/3P4/8/4K3", 3},
    ValueRow{"defended on a4", together, "4k3/pp6/8/8/P7/1P6/8/4K3", 5},
    ValueRow{"defended on b3", together, "4k3/pp6/8/8/8/1P6/P7/4K3", 4},
    ValueRow{"two with a neighbour", doubled, "4k3/8/8/8/8/4P3/3PP3/4K3", -18},
    ValueRow{"two isolated", doubled, "4k3/8/8/8/4P3/8/4P3/4K3", -48},
    ValueRow{"two isolated, one rank", doubled, "4k3/8/8/4p3/4P3/8/4P3/4K3", -40},
    ValueRow{"two isolated, two ranks", doubled, "4k3/8/4p3/8/4P3/8/4P3/4K3", -42},
    ValueRow{"two isolated, three ranks", doubled, "4k3/4p3/8/8/4P3/8/4P3/4K3", -44},
    ValueRow{"two isolated, four ranks", doubled, "4k3/4p3/8/8/8/4P3/4P3/4K3", -44},
    ValueRow{"three with a neighbour", doubled, "4k3/8/8/8/4P3/4P3/3PP3/4K3", -70},
    ValueRow{"three with a neighbour before a pawn", doubled, "4k3/4p3/8/8/4P3/4P3/3PP3/4K3", -65},
    ValueRow{"three isolated", doubled, "4k3/8/8/8/4P3/4P3/4P3/4K3", -90},
    ValueRow{"three isolated before a pawn", doubled, "4k3/4p3/8/8/4P3/4P3/4P3/4K3", -85},
    ValueRow{"defended passed on e5", defended, "6k1/2p5/8/4P3/3P4/8/8/4K3", 30},
    ValueRow{"defended passed on a5", defended, "6k1/2p5/8/P7/1P6/8/8/4K3", 26},
    ValueRow{"defended passed on e6", defended, "6k1/2p5/4P3/3P4/8/8/8/4K3", 55},
    ValueRow{"its defender is passed too", defended, "6k1/8/8/4P3/3P4/8/8/4K3", 0},
    ValueRow{"connected on the fifth rank", connected, "4k3/8/8/PP6/8/8/8/4K3", 67},
    ValueRow{"connected one rank apart", connected, "4k3/8/5P2/6P1/8/8/8/4K3", 84},
    ValueRow{"connected two ranks apart", connected, "4k3/1P6/8/P7/8/8/8/4K3", 103},
    ValueRow{"not connected", connected, "4k3/8/8/P1P5/8/8/8/4K3", 0},
    ValueRow{"a loose defender", chains, "4k3/8/8/8/4P3/3P4/8/4K3", -4},
    ValueRow{"a firm defender", chains, "4k3/8/8/8/1P6/P7/8/4K3", 2},
    ValueRow{"majority at home", majorities, "4k3/pp6/8/8/8/8/PPP5/4K3", 17},
    ValueRow{"majority with a pawn on the third rank", majorities, "4k3/pp6/8/8/8/2P5/PP6/4K3", 19},
    ValueRow{"majority with a pawn on the fourth rank", majorities, "4k3/pp6/8/8/2P5/8/PP6/4K3", 24},
    ValueRow{"majority with a pawn on the fifth rank", majorities, "4k3/pp6/8/2P5/8/8/PP6/4K3", 27},
    ValueRow{"majority with a rammed pawn", majorities, "4k3/1p6/8/2p5/2P5/8/PP6/4K3", 16},
    ValueRow{"two pawns alone in the centre", patterns, "4k3/8/8/8/3P4/2P5/8/4K3", -6},
    ValueRow{"not alone", patterns, "4k3/1p6/8/8/3P4/2P5/8/4K3", 0},
    ValueRow{"majority far from the king", and_king, "6k1/pp6/8/8/8/8/PPP5/4K3", 18},
    ValueRow{"majority near the king", and_king, "1k6/pp6/8/8/8/8/PPP5/4K3", 0},
    ValueRow{"four against three near the king", and_king, "1k6/ppp5/8/8/8/8/PPPP4/4K3", 14}), RowName<ValueRow>);
// clang-format on

}  // namespace
