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
INSTANTIATE_TEST_SUITE_P(PawnSquares, PawnTermsInEndings, testing::Values(
    ValueRow{"square e4", ending_squares, "4k3/8/8/8/4P3/8/8/4K3", 5},
    ValueRow{"square a7", ending_squares, "4k3/P7/8/8/8/8/8/4K3", 17},
    ValueRow{"square b7", ending_squares, "4k3/1P6/8/8/8/8/8/4K3", 18},
    ValueRow{"square d6", ending_squares, "4k3/8/3P4/8/8/8/8/4K3", 10},
    ValueRow{"square c6", ending_squares, "4k3/8/2P5/8/8/8/8/4K3", 11},
    ValueRow{"square h5", ending_squares, "4k3/8/8/7P/8/8/8/4K3", 6},
    ValueRow{"square h2", ending_squares, "4k3/8/8/8/8/8/7P/4K3", 0},
    ValueRow{"square g3", ending_squares, "4k3/8/8/8/8/6P1/8/4K3", 4}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(BackwardPawns, PawnTermsInEndings, testing::Values(
    ValueRow{"stuck, nothing ahead", ending_backward, "4k3/8/8/3p4/8/8/4P3/4K3", -20},
    ValueRow{"stuck, two ranks ahead", ending_backward, "4k3/8/8/8/3pp3/8/4P3/4K3", -14},
    ValueRow{"stuck, three ranks ahead", ending_backward, "4k3/8/8/3pp3/8/8/4P3/4K3", -15},
    ValueRow{"stuck, four ranks ahead", ending_backward, "4k3/8/4p3/3p4/8/8/4P3/4K3", -15},
    ValueRow{"stuck, five ranks ahead", ending_backward, "4k3/4p3/8/3p4/8/8/4P3/4K3", -16},
    ValueRow{"backward, nothing ahead", ending_backward, "4k3/8/3p1p2/8/4P3/8/8/4K3", -10},
    ValueRow{"backward, a pawn ahead", ending_backward, "4k3/4p3/3p1p2/8/4P3/8/8/4K3", -8},
    ValueRow{"stuck on a2", ending_backward, "4k3/8/8/8/1p6/8/P7/4K3", -20},
    ValueRow{"h2, two ranks", ending_backward, "4k3/8/8/8/6pp/8/7P/4K3", -14},
    ValueRow{"h2, three ranks", ending_backward, "4k3/8/8/7p/6p1/8/7P/4K3", -15},
    ValueRow{"h2, four ranks", ending_backward, "4k3/8/7p/6p1/8/8/7P/4K3", -15},
    ValueRow{"h2, five ranks", ending_backward, "4k3/7p/8/6p1/8/8/7P/4K3", -16},
    ValueRow{"g3 with help from f2", ending_backward, "4k3/8/8/7p/8/6P1/5P2/4K3", 0},
    ValueRow{"b5 against a7", ending_backward, "4k3/p7/8/1P6/8/8/8/4K3", -10},
    ValueRow{"b5 against a7 and b7", ending_backward, "4k3/pp6/8/1P6/8/8/8/4K3", -8},
    ValueRow{"a duo at home", ending_backward, "4k3/8/8/8/5p1p/8/6PP/4K3", -10},
    ValueRow{"a duo at home, five ranks", ending_backward, "4k3/6p1/8/8/5p1p/8/6PP/4K3", -8}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(IsolatedPawns, PawnTermsInEndings, testing::Values(
    ValueRow{"isolated, nothing ahead", ending_isolated, "4k3/8/8/8/4P3/8/8/4K3", -14},
    ValueRow{"isolated, a pawn ahead", ending_isolated, "4k3/8/4p3/8/4P3/8/8/4K3", -10},
    ValueRow{"isolated queen pawn has no rule of its own", ending_isolated, "4k3/8/8/8/3P4/8/8/4K3", -14},
    ValueRow{"h4", ending_isolated, "4k3/8/8/8/7P/8/8/4K3", -14},
    ValueRow{"b3 against b7", ending_isolated, "4k3/1p6/8/8/8/1P6/8/4K3", -10},
    ValueRow{"three of them", ending_isolated, "4k3/8/8/8/P1P4P/8/8/4K3", -42},
    ValueRow{"doubled ones", ending_isolated, "4k3/8/8/8/6P1/8/6P1/4K3", 0},
    ValueRow{"a neighbour far ahead", ending_isolated, "4k3/7P/8/8/8/8/6P1/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(DuoAndDefendedPawns, PawnTermsInEndings, testing::Values(
    ValueRow{"duo", ending_together, "4k3/3pp3/8/8/3PP3/8/8/4K3", 8},
    ValueRow{"duo of passed pawns", ending_together, "4k3/8/8/8/3PP3/8/8/4K3", 8},
    ValueRow{"duo on the sixth rank", ending_together, "4k3/8/PP6/8/8/8/8/4K3", 20},
    ValueRow{"duo on the fifth rank", ending_together, "4k3/8/8/PP6/8/8/8/4K3", 14},
    ValueRow{"duo at home", ending_together, "4k3/8/8/8/8/8/PP6/4K3", 5},
    ValueRow{"a passed pawn behind another counts for nothing", ending_together, "4k3/8/8/P7/PP6/8/8/4K3", 4 + 3},
    ValueRow{"defended on e4", ending_together, "4k3/3pp3/8/8/4P3/3P4/8/4K3", 3},
    ValueRow{"defended on a4", ending_together, "4k3/pp6/8/8/P7/1P6/8/4K3", 5},
    ValueRow{"defended on b3", ending_together, "4k3/pp6/8/8/8/1P6/P7/4K3", 4},
    ValueRow{"a passed pawn behind another", ending_together, "4k3/8/1P6/8/1PP5/8/8/4K3", 4},
    ValueRow{"behind a passed pawn, itself held up", ending_together, "4k3/8/1P6/8/p7/1PP5/8/4K3", 6},
    ValueRow{"on the seventh rank", ending_together, "k7/6PP/8/8/8/8/8/4K3", 0},
    ValueRow{"defended on the seventh rank", ending_together, "k7/7P/6P1/8/8/8/8/4K3", 0},
    ValueRow{"defended passed pawn", ending_together, "4k3/4p3/8/1P6/2P5/8/8/4K3", 3},
    ValueRow{"duo and defended at once", ending_together, "4k3/1ppp4/8/8/2PP4/1P6/8/4K3", 4 + 3 + 4}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(DoubledPawns, PawnTermsInEndings, testing::Values(
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
    ValueRow{"two with a neighbour", ending_doubled, "4k3/8/8/8/7P/6P1/7P/4K3", -18},
    ValueRow{"two isolated", ending_doubled, "4k3/8/8/8/6P1/8/6P1/4K3", -48},
    ValueRow{"two isolated, one rank", ending_doubled, "4k3/8/8/8/1p6/1P6/1P6/4K3", -40},
    ValueRow{"two isolated, two ranks", ending_doubled, "4k3/8/6p1/8/6P1/8/6P1/4K3", -42},
    ValueRow{"two isolated, three ranks", ending_doubled, "4k3/8/p7/8/8/P7/P7/4K3", -44},
    ValueRow{"two isolated, four ranks", ending_doubled, "4k3/7p/8/8/8/7P/7P/4K3", -44},
    ValueRow{"three with a neighbour", ending_doubled, "4k3/8/8/P7/P7/P7/1P6/4K3", -70},
    ValueRow{"three with a neighbour, before a pawn", ending_doubled, "4k3/p7/8/P7/P7/P7/1P6/4K3", -65},
    ValueRow{"three isolated", ending_doubled, "4k3/8/8/7P/7P/7P/8/4K3", -90},
    ValueRow{"three isolated, before a pawn", ending_doubled, "4k3/8/8/7p/7P/7P/7P/4K3", -85},
    ValueRow{"one", ending_doubled, "4k3/8/8/8/8/1P6/1p6/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(DefendedPassedPawns, PawnTermsInEndings, testing::Values(
    ValueRow{"defended passed on e5", ending_defended, "6k1/2p5/8/4P3/3P4/8/8/4K3", 30},
    ValueRow{"defended passed on a5", ending_defended, "6k1/2p5/8/P7/1P6/8/8/4K3", 26},
    ValueRow{"defended passed on e6", ending_defended, "6k1/2p5/4P3/3P4/8/8/8/4K3", 55},
    ValueRow{"its defender is passed too", ending_defended, "6k1/8/8/4P3/3P4/8/8/4K3", 0},
    ValueRow{"h7 by g6", ending_defended, "k7/5p1P/6P1/8/8/8/8/4K3", 78},
    ValueRow{"b7 by c6", ending_defended, "7k/1P1p4/2P5/8/8/8/8/4K3", 90},
    ValueRow{"h6 by g5", ending_defended, "k7/5p2/7P/6P1/8/8/8/4K3", 48},
    ValueRow{"c4 by b3", ending_defended, "4k3/8/p7/8/2P5/1P6/8/4K3", 10},
    ValueRow{"h4 by g3", ending_defended, "4k3/5p2/8/8/7P/6P1/8/4K3", 8},
    ValueRow{"a3 by b2", ending_defended, "4k3/2p5/8/8/8/P7/1P6/4K3", 2},
    ValueRow{"c3 by b2", ending_defended, "4k3/p7/8/8/8/2P5/1P6/4K3", 3},
    ValueRow{"e4 by f3", ending_defended, "4k3/6p1/8/8/4P3/5P2/8/4K3", 10},
    ValueRow{"f5 by e4", ending_defended, "4k3/3p4/8/5P2/4P3/8/8/4K3", 30},
    ValueRow{"g5 by f4", ending_defended, "4k3/8/4p3/6P1/5P2/8/8/4K3", 30},
    ValueRow{"one of two defenders is passed", ending_defended, "4k3/5p2/8/3P4/2P1P3/8/8/4K3", 30},
    ValueRow{"no defender", ending_defended, "4k3/2p5/8/P7/8/1P6/8/4K3", 0},
    ValueRow{"both defenders are passed", ending_defended, "4k3/8/8/3P4/2P1P3/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(ConnectedPassedPawns, PawnTermsInEndings, testing::Values(
    ValueRow{"connected on the fifth rank", ending_connected, "4k3/8/8/PP6/8/8/8/4K3", 67},
    ValueRow{"connected one rank apart", ending_connected, "4k3/8/5P2/6P1/8/8/8/4K3", 84},
    ValueRow{"connected two ranks apart", ending_connected, "4k3/1P6/8/P7/8/8/8/4K3", 103},
    ValueRow{"not connected", ending_connected, "4k3/8/8/P1P5/8/8/8/4K3", 0},
    ValueRow{"g7 and h7", ending_connected, "k7/6PP/8/8/8/8/8/4K3", 147},
    ValueRow{"b6 and c6", ending_connected, "7k/8/1PP5/8/8/8/8/4K3", 93},
    ValueRow{"c4 and d4", ending_connected, "4k3/8/8/8/2PP4/8/8/4K3", 56},
    ValueRow{"d3 and e3", ending_connected, "4k3/8/8/8/8/3PP3/8/4K3", 50},
    ValueRow{"e2 and f2", ending_connected, "4k3/8/8/8/8/8/4PP2/4K3", 48},
    ValueRow{"f5 and g4", ending_connected, "4k3/8/8/5P2/6P1/8/8/4K3", 60},
    ValueRow{"c6 and b4", ending_connected, "4k3/8/2P5/8/1P6/8/8/4K3", 65},
    ValueRow{"d6 and e3", ending_connected, "4k3/8/3P4/8/8/4P3/8/4K3", 46},
    ValueRow{"g6 and h2", ending_connected, "4k3/8/6P1/8/8/8/7P/4K3", 28},
    ValueRow{"g7 and h2", ending_connected, "k7/6P1/8/8/8/8/7P/4K3", 29},
    ValueRow{"a4 and b2", ending_connected, "4k3/8/8/8/P7/8/1P6/4K3", 39},
    ValueRow{"a to d are two pairs", ending_connected, "4k3/8/8/8/PPPP4/8/8/4K3", 112},
    ValueRow{"the neighbour is held up", ending_connected, "4k3/7p/8/8/5PP1/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(PawnChains, PawnTermsInEndings, testing::Values(
    ValueRow{"a loose defender", ending_chains, "4k3/8/8/8/4P3/3P4/8/4K3", -4},
    ValueRow{"a firm defender", ending_chains, "4k3/8/8/8/1P6/P7/8/4K3", 2},
    ValueRow{"a4 by b3", ending_chains, "4k3/8/8/8/P7/1P6/8/4K3", -4},
    ValueRow{"a4, b3, a2", ending_chains, "4k3/8/8/8/P7/1P6/P7/4K3", 4},
    ValueRow{"h4, g3, f2", ending_chains, "4k3/8/8/8/7P/6P1/5P2/4K3", -2},
    ValueRow{"g5 by f4 and h4", ending_chains, "4k3/8/8/6P1/5P1P/8/8/4K3", -2},
    ValueRow{"c5 by b4 and d4", ending_chains, "4k3/8/8/2P5/1P1P4/8/8/4K3", -8},
    ValueRow{"h4 by g3, a4 stands apart", ending_chains, "4k3/8/8/8/P6P/6P1/8/4K3", -4}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(PawnMajorities, PawnTermsInEndings, testing::Values(
    ValueRow{"majority at home", ending_majorities, "4k3/pp6/8/8/8/8/PPP5/4K3", 17},
    ValueRow{"majority with a pawn on the third rank", ending_majorities, "4k3/pp6/8/8/8/2P5/PP6/4K3", 19},
    ValueRow{"majority with a pawn on the fourth rank", ending_majorities, "4k3/pp6/8/8/2P5/8/PP6/4K3", 24},
    ValueRow{"majority with a pawn on the fifth rank", ending_majorities, "4k3/pp6/8/2P5/8/8/PP6/4K3", 27},
    ValueRow{"majority with a rammed pawn", ending_majorities, "4k3/1p6/8/2p5/2P5/8/PP6/4K3", 16},
    ValueRow{"a3", ending_majorities, "4k3/p7/8/8/8/P7/1P6/4K3", 19},
    ValueRow{"a5", ending_majorities, "4k3/p7/8/P7/8/8/1P6/4K3", 27},
    ValueRow{"b6", ending_majorities, "4k3/p7/1P6/8/8/8/2P5/4K3", 29},
    ValueRow{"f4", ending_majorities, "4k3/6pp/8/8/5P2/8/6PP/4K3", 24},
    ValueRow{"e5 is backward", ending_majorities, "4k3/5p1p/8/4P3/8/8/6PP/4K3", 17 + 10 - 8},
    ValueRow{"a3 behind a4", ending_majorities, "4k3/8/p7/8/P7/P7/1P6/4K3", 17 + 7 + 2 - 8},
    ValueRow{"passed", ending_majorities, "4k3/8/8/6P1/8/8/8/4K3", 17},
    ValueRow{"on both wings", ending_majorities, "4k3/p6p/8/8/8/P6P/1P4P1/4K3", 38},
    ValueRow{"none", ending_majorities, "4k3/8/8/8/8/8/3P4/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(CentrePatterns, PawnTermsInEndings, testing::Values(
    ValueRow{"two pawns alone in the centre", ending_patterns, "4k3/8/8/8/3P4/2P5/8/4K3", -6},
    ValueRow{"not alone", ending_patterns, "4k3/1p6/8/8/3P4/2P5/8/4K3", 0},
    ValueRow{"d4, c4, a2 and f2", ending_patterns, "4k3/8/8/8/2PP4/8/P4P2/4K3", -6},
    ValueRow{"d4, c3 and c2", ending_patterns, "4k3/8/8/8/3P4/2P5/2P5/4K3", 0},
    ValueRow{"d4, c3 and c4", ending_patterns, "4k3/8/8/8/2PP4/2P5/8/4K3", 0},
    ValueRow{"d4 and c3 against e7", ending_patterns, "4k3/4p3/8/8/3P4/2P5/8/4K3", 0},
    ValueRow{"d4 alone", ending_patterns, "4k3/8/8/8/3P4/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(MajorityAndKing, PawnTermsInEndings, testing::Values(
    ValueRow{"majority far from the king", ending_king, "6k1/pp6/8/8/8/8/PPP5/4K3", 18},
    ValueRow{"majority near the king", ending_king, "1k6/pp6/8/8/8/8/PPP5/4K3", 0},
    ValueRow{"four against three near the king", ending_king, "1k6/ppp5/8/8/8/8/PPPP4/4K3", 14},
    ValueRow{"king side, king on d8", ending_king, "3k4/7p/8/8/8/8/6PP/4K3", 18},
    ValueRow{"king side, king on e8", ending_king, "4k3/7p/8/8/8/8/6PP/4K3", 0},
    ValueRow{"four to three, king far", ending_king, "7k/ppp5/8/8/8/8/PPPP4/4K3", 18},
    ValueRow{"king side, four to three, king near", ending_king, "4k3/5ppp/8/8/8/8/3PP1PP/4K3", 14},
    ValueRow{"one each way", ending_king, "3k4/p6p/8/8/8/8/PP4PP/4K3", 18}), RowName<ValueRow>);
// clang-format on

}  // namespace
