#include <gtest/gtest.h>

#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/pawns/pawns_and_pieces.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

class PawnTermsInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(PawnTermsInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Endings, PawnTermsInEndings, testing::Values(
    ValueRow{"square e4", ending_squares, "4k3/8/8/8/4P3/8/8/4K3", 5},
    ValueRow{"square a7", ending_squares, "4k3/P7/8/8/8/8/8/4K3", 17},
    ValueRow{"square b7", ending_squares, "4k3/1P6/8/8/8/8/8/4K3", 18},
    ValueRow{"square d6", ending_squares, "4k3/8/3P4/8/8/8/8/4K3", 10},
    ValueRow{"square c6", ending_squares, "4k3/8/2P5/8/8/8/8/4K3", 11},
    ValueRow{"square h5", ending_squares, "4k3/8/8/7P/8/8/8/4K3", 6},
    ValueRow{"square h2", ending_squares, "4k3/8/8/8/8/8/7P/4K3", 0},
    ValueRow{"square g3", ending_squares, "4k3/8/8/8/8/6P1/8/4K3", 4},
    ValueRow{"stuck, nothing ahead", ending_backward, "4k3/8/8/3p4/8/8/4P3/4K3", -20},
    ValueRow{"stuck, two ranks ahead", ending_backward, "4k3/8/8/8/3pp3/8/4P3/4K3", -14},
    ValueRow{"stuck, three ranks ahead", ending_backward, "4k3/8/8/3pp3/8/8/4P3/4K3", -15},
    ValueRow{"stuck, four ranks ahead", ending_backward, "4k3/8/4p3/3p4/8/8/4P3/4K3", -15},
    ValueRow{"stuck, five ranks ahead", ending_backward, "4k3/4p3/8/3p4/8/8/4P3/4K3", -16},
    ValueRow{"backward, nothing ahead", ending_backward, "4k3/8/3p1p2/8/4P3/8/8/4K3", -10},
    ValueRow{"backward, a pawn ahead", ending_backward, "4k3/4p3/3p1p2/8/4P3/8/8/4K3", -8},
    ValueRow{"isolated, nothing ahead", ending_isolated, "4k3/8/8/8/4P3/8/8/4K3", -14},
    ValueRow{"isolated, a pawn ahead", ending_isolated, "4k3/8/4p3/8/4P3/8/8/4K3", -10},
    ValueRow{"isolated queen pawn has no rule of its own", ending_isolated, "4k3/8/8/8/3P4/8/8/4K3", -14},
    ValueRow{"duo", ending_together, "4k3/3pp3/8/8/3PP3/8/8/4K3", 8},
    ValueRow{"duo of passed pawns", ending_together, "4k3/8/8/8/3PP3/8/8/4K3", 8},
    ValueRow{"duo on the sixth rank", ending_together, "4k3/8/PP6/8/8/8/8/4K3", 20},
    ValueRow{"duo on the fifth rank", ending_together, "4k3/8/8/PP6/8/8/8/4K3", 14},
    ValueRow{"duo at home", ending_together, "4k3/8/8/8/8/8/PP6/4K3", 5},
    ValueRow{"a passed pawn behind another counts for nothing", ending_together, "4k3/8/8/P7/PP6/8/8/4K3", 4 + 3},
    ValueRow{"defended on e4", ending_together, "4k3/3pp3/8/8/4P3/3P4/8/4K3", 3},
    ValueRow{"defended on a4", ending_together, "4k3/pp6/8/8/P7/1P6/8/4K3", 5},
    ValueRow{"defended on b3", ending_together, "4k3/pp6/8/8/8/1P6/P7/4K3", 4},
    ValueRow{"two with a neighbour", ending_doubled, "4k3/8/8/8/8/4P3/3PP3/4K3", -18},
    ValueRow{"two isolated", ending_doubled, "4k3/8/8/8/4P3/8/4P3/4K3", -48},
    ValueRow{"two isolated, one rank", ending_doubled, "4k3/8/8/4p3/4P3/8/4P3/4K3", -40},
    ValueRow{"two isolated, two ranks", ending_doubled, "4k3/8/4p3/8/4P3/8/4P3/4K3", -42},
    ValueRow{"two isolated, three ranks", ending_doubled, "4k3/4p3/8/8/4P3/8/4P3/4K3", -44},
    ValueRow{"two isolated, four ranks", ending_doubled, "4k3/4p3/8/8/8/4P3/4P3/4K3", -44},
    ValueRow{"three with a neighbour", ending_doubled, "4k3/8/8/8/4P3/4P3/3PP3/4K3", -70},
    ValueRow{"three with a neighbour before a pawn", ending_doubled, "4k3/4p3/8/8/4P3/4P3/3PP3/4K3", -65},
    ValueRow{"three isolated", ending_doubled, "4k3/8/8/8/4P3/4P3/4P3/4K3", -90},
    ValueRow{"three isolated before a pawn", ending_doubled, "4k3/4p3/8/8/4P3/4P3/4P3/4K3", -85},
    ValueRow{"defended passed on e5", ending_defended, "6k1/2p5/8/4P3/3P4/8/8/4K3", 30},
    ValueRow{"defended passed on a5", ending_defended, "6k1/2p5/8/P7/1P6/8/8/4K3", 26},
    ValueRow{"defended passed on e6", ending_defended, "6k1/2p5/4P3/3P4/8/8/8/4K3", 55},
    ValueRow{"its defender is passed too", ending_defended, "6k1/8/8/4P3/3P4/8/8/4K3", 0},
    ValueRow{"connected on the fifth rank", ending_connected, "4k3/8/8/PP6/8/8/8/4K3", 67},
    ValueRow{"connected one rank apart", ending_connected, "4k3/8/5P2/6P1/8/8/8/4K3", 84},
    ValueRow{"connected two ranks apart", ending_connected, "4k3/1P6/8/P7/8/8/8/4K3", 103},
    ValueRow{"not connected", ending_connected, "4k3/8/8/P1P5/8/8/8/4K3", 0},
    ValueRow{"a loose defender", ending_chains, "4k3/8/8/8/4P3/3P4/8/4K3", -4},
    ValueRow{"a firm defender", ending_chains, "4k3/8/8/8/1P6/P7/8/4K3", 2},
    ValueRow{"majority at home", ending_majorities, "4k3/pp6/8/8/8/8/PPP5/4K3", 17},
    ValueRow{"majority with a pawn on the third rank", ending_majorities, "4k3/pp6/8/8/8/2P5/PP6/4K3", 19},
    ValueRow{"majority with a pawn on the fourth rank", ending_majorities, "4k3/pp6/8/8/2P5/8/PP6/4K3", 24},
    ValueRow{"majority with a pawn on the fifth rank", ending_majorities, "4k3/pp6/8/2P5/8/8/PP6/4K3", 27},
    ValueRow{"majority with a rammed pawn", ending_majorities, "4k3/1p6/8/2p5/2P5/8/PP6/4K3", 16},
    ValueRow{"two pawns alone in the centre", ending_patterns, "4k3/8/8/8/3P4/2P5/8/4K3", -6},
    ValueRow{"not alone", ending_patterns, "4k3/1p6/8/8/3P4/2P5/8/4K3", 0},
    ValueRow{"majority far from the king", ending_king, "6k1/pp6/8/8/8/8/PPP5/4K3", 18},
    ValueRow{"majority near the king", ending_king, "1k6/pp6/8/8/8/8/PPP5/4K3", 0},
    ValueRow{"four against three near the king", ending_king, "1k6/ppp5/8/8/8/8/PPPP4/4K3", 14}), RowName<ValueRow>);
// clang-format on

}  // namespace
