// Enemy pawns that come at a king on the wing. The naked king on g1 is worth (6 - 36 - 20, 2 - 42 - 25) = (-50, -65)
// and 46 points of cover short, the one on b1 (-54, -65); a storm pawn on one of the three files makes that (-56, -77)
// or
// (-60, -77) with 9 points of attack, on two of them (-50, -71) or (-54, -71) with 4. What follows is the storm.

#include <gtest/gtest.h>

#include "support/king_rows.h"
#include "support/row_name.h"

namespace {

class StormRules : public testing::TestWithParam<KingRow> {};
TEST_P(StormRules, GivePairAndDanger) {
    ExpectShelter<shelter<white, EVALUATION_CONTEXT>, shelter<black, EVALUATION_CONTEXT>>(GetParam());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Distance, StormRules, testing::Values(
    KingRow{"rank 3 is no storm", g1, "4k3/8/8/8/8/6p1/8/6K1", {-56, -77}, 9 + 4, -46},
    KingRow{"rank 4", g1, "4k3/8/8/8/6p1/8/8/6K1", {-56 - 3, -77 - 8}, 9 + 4, -46},
    KingRow{"rank 5", g1, "4k3/8/8/6p1/8/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"rank 6", g1, "4k3/8/6p1/8/8/8/8/6K1", {-56 - 6, -77 - 12}, 9 + 8, -46},
    KingRow{"rank 7", g1, "4k3/6p1/8/8/8/8/8/6K1", {-56, -77}, 9, -46},
    KingRow{"behind one on rank 3", g1, "4k3/8/6p1/8/8/6p1/8/6K1", {-56 - 6, -77 - 12}, 9 + 4 + 8, -46},
    KingRow{"nearest of two", g1, "4k3/8/6p1/8/6p1/8/8/6K1", {-56 - 3, -77 - 8}, 9 + 4, -46},
    KingRow{"on all three files", g1, "4k3/8/8/8/5ppp/8/8/6K1", {-50 + 6 - 3 * 3 - 2 * 5, -65 + 12 - 3 * 8 - 2 * 16}, -6 + 3 * 4 + 2 * 6, -46}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(Kings, StormRules, testing::Values(
    KingRow{"on a1", a1, "4k3/8/8/p7/8/8/8/K7", {2 - 24 - 7 - 5, 2 - 28 - 6 - 12 - 13}, 4 + 7, -29},
    KingRow{"on b1", b1, "4k3/8/8/1p6/8/8/8/1K6", {-60 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"on h1", h1, "4k3/8/8/7p/8/8/8/7K", {6 - 24 - 7 - 5, 2 - 28 - 6 - 12 - 13}, 4 + 7, -29},
    KingRow{"not on c1", c1, "4k3/8/8/1p6/8/8/8/2K5", {2 - 36 - 6 - 20, 2 - 42 - 12 - 25}, 9, -46},
    KingRow{"not on d1", d1, "4k3/8/8/3p4/8/8/8/3K4", {-55 - 36 - 6 - 20, -80 - 42 - 12 - 25}, 9, -46},
    KingRow{"not on f1", f1, "4k3/8/8/6p1/8/8/8/5K2", {2 - 36 - 6 - 20, 2 - 42 - 12 - 25}, 9, -46},
    KingRow{"on g2", g2, "4k3/8/8/8/6p1/8/6K1/8", {-6 - 56 - 3, -14 - 77 - 8}, 9 + 4, -8 - 46},
    KingRow{"on h2", h2, "4k3/8/8/7p/8/8/7K/8", {-6 + 6 - 24 - 7 - 5, -14 + 2 - 28 - 6 - 12 - 13}, 4 + 7, -8 - 29},
    KingRow{"not on g3", g3, "4k3/8/8/6p1/8/6K1/8/8", {-120, -200}, 10, 0},
    KingRow{"not from outside the walk", g1, "4k3/8/8/4p3/8/8/8/6K1", {-50 - 9, -65 - 18}, 13, -46}), RowName<KingRow>);

// The pawn on the e-file attacks a square of the f-file, and is no part of the walk.
INSTANTIATE_TEST_SUITE_P(AttackedPath, StormRules, testing::Values(
    KingRow{"right before rank 4", g1, "4k3/8/8/8/5p2/8/4P3/6K1", {-56 - 3 - 4, -77 - 8 - 12}, 9 + 4 + 12, -46},
    KingRow{"right before rank 5", g1, "4k3/8/8/5p2/8/4P3/8/6K1", {-56 - 5 - 4, -77 - 13 - 12}, 9 + 7 + 12, -46},
    KingRow{"one between, from rank 5", g1, "4k3/8/8/5p2/8/8/4P3/6K1", {-56 - 5 - 3, -77 - 13 - 8}, 9 + 7 + 10, -46},
    KingRow{"right before rank 6", g1, "4k3/8/5p2/8/4P3/8/8/6K1", {-56 - 6 - 4, -77 - 12 - 12}, 9 + 8 + 12, -46},
    KingRow{"one between, from rank 6", g1, "4k3/8/5p2/8/8/4P3/8/6K1", {-56 - 6 - 3, -77 - 12 - 8}, 9 + 8 + 10, -46},
    KingRow{"two between, from rank 6", g1, "4k3/8/5p2/8/8/8/4P3/6K1", {-56 - 6 - 1, -77 - 12 - 5}, 9 + 8 + 8, -46},
    KingRow{"right before rank 7", g1, "4k3/5p2/8/4P3/8/8/8/6K1", {-56 - 4, -77 - 12}, 9 + 12, -46},
    KingRow{"one between, from rank 7", g1, "4k3/5p2/8/8/4P3/8/8/6K1", {-56 - 3, -77 - 8}, 9 + 10, -46},
    KingRow{"two between, from rank 7", g1, "4k3/5p2/8/8/8/4P3/8/6K1", {-56 - 1, -77 - 5}, 9 + 8, -46},
    KingRow{"three between are nothing", g1, "4k3/5p2/8/8/8/8/4P3/6K1", {-56, -77}, 9, -46},
    KingRow{"the pawn itself attacked on rank 4", g1, "4k3/8/8/8/5p2/4P3/8/6K1", {-56 - 3, -77 - 8}, 9 + 4, -46},
    KingRow{"the pawn itself attacked on rank 5", g1, "4k3/8/8/5p2/4P3/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"behind the pawn", g1, "4k3/8/8/4P3/5p2/8/8/6K1", {-56 - 3, -77 - 8}, 9 + 4, -46},
    KingRow{"the square next to the pawn counts first", g1, "4k3/8/5p2/8/4P3/8/4P3/6K1", {-56 - 6 - 4, -77 - 12 - 12}, 9 + 8 + 12, -46},
    KingRow{"attacked through a knight", g1, "4k3/8/8/5p2/5N2/8/4P3/6K1", {-56 - 5 - 3, -77 - 13 - 8}, 9 + 7 + 10, -46},
    KingRow{"attacked by a piece is nothing", g1, "4k3/8/8/5p2/8/4N3/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"from the right", b1, "4k3/8/8/2p5/8/8/3P4/1K6", {-60 - 5 - 3, -77 - 13 - 8}, 9 + 7 + 10, -46}), RowName<KingRow>);

// f2 alone is (6 + 20 - 24 - 6 - 7, 2 + 28 - 28 - 12 - 12) and 29 short, f3 (6 + 13 - 24 - 6 - 20, 2 + 22 - 28 - 12 - 25) and
// 36 short, f4 (6 - 34 - 6 - 20, 2 - 40 - 12 - 25) and 42 short.
INSTANTIATE_TEST_SUITE_P(BlockedPath, StormRules, testing::Values(
    KingRow{"a pawn ahead", g1, "4k3/8/8/5p2/8/8/5P2/6K1", {-11 - 5 + 2, -22 - 13 + 10}, 9 + 7 - 4, -29},
    KingRow{"a pawn right ahead", g1, "4k3/8/8/8/5p2/5P2/8/6K1", {-31 - 3 + 2, -41 - 8 + 10}, 9 + 4 - 4, -36},
    KingRow{"a pawn far ahead", g1, "4k3/5p2/8/8/8/8/5P2/6K1", {-11 + 2, -22 + 10}, 9 - 4, -29},
    KingRow{"an attacked pawn is an attacked square", g1, "4k3/8/8/8/5p2/5P2/4P3/6K1", {-31 - 3 - 4, -41 - 8 - 12}, 9 + 4 + 12, -36},
    KingRow{"an attacked square before the pawn", g1, "4k3/8/8/5p2/8/8/4PP2/6K1", {-11 - 5 - 3, -22 - 13 - 8}, 9 + 7 + 10, -29},
    KingRow{"a pawn before the attacked square", g1, "4k3/8/8/5p2/5P2/8/4P3/6K1", {-54 - 5 + 2, -75 - 13 + 10}, 9 + 7 - 4, -42},
    KingRow{"a square three away hides the pawn", g1, "4k3/5p2/8/8/8/8/4PP2/6K1", {-11, -22}, 9, -29},
    KingRow{"a pawn behind blocks nothing", g1, "4k3/8/5P2/5p2/8/8/8/6K1", {-56 - 5 + 4, -77 - 13 + 8}, 9 + 7 - 2, -46},
    KingRow{"a piece blocks nothing", g1, "4k3/8/8/5p2/5n2/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"an own piece blocks nothing", g1, "4k3/8/8/5p2/5N2/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46}), RowName<KingRow>);

// The neighbour is looked for on the right, to the east, for both colours: no mirror.
INSTANTIATE_TEST_SUITE_P(Neighbour, StormRules, testing::Values(
    KingRow{"a and b", b1, "4k3/8/8/pp6/8/8/8/1K6", {-54 - 10 - 5, -71 - 26 - 16}, 4 + 14 + 6, -46},
    KingRow{"b and c", b1, "4k3/8/8/1pp5/8/8/8/1K6", {-54 - 10 - 5, -71 - 26 - 16}, 4 + 14 + 6, -46},
    KingRow{"c and d do not count", b1, "4k3/8/8/2pp4/8/8/8/1K6", {-60 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"a and c are apart", b1, "4k3/8/8/p1p5/8/8/8/1K6", {-54 - 10, -71 - 26}, 4 + 14, -46},
    KingRow{"b with c outside the walk", a1, "4k3/8/8/1pp5/8/8/8/K7", {2 - 24 - 7 - 5 - 5, 2 - 28 - 6 - 12 - 13 - 16}, 4 + 7 + 6, -29},
    KingRow{"f and g", g1, "4k3/8/8/5pp1/8/8/8/6K1", {-50 - 10 - 5, -71 - 26 - 16}, 4 + 14 + 6, -46},
    KingRow{"g and h", g1, "4k3/8/8/6pp/8/8/8/6K1", {-50 - 10 - 5, -71 - 26 - 16}, 4 + 14 + 6, -46},
    KingRow{"f and h are apart", g1, "4k3/8/8/5p1p/8/8/8/6K1", {-50 - 10, -71 - 26}, 4 + 14, -46},
    KingRow{"e beside f stands on the left", g1, "4k3/8/8/4pp2/8/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"f beside g stands on the left", h1, "4k3/8/8/5pp1/8/8/8/7K", {6 - 24 - 7 - 5, 2 - 28 - 6 - 12 - 13}, 4 + 7, -29},
    KingRow{"a pawn on the next rank", g1, "4k3/8/6p1/5p2/8/8/8/6K1", {-50 - 5 - 6, -71 - 13 - 12}, 4 + 7 + 8, -46},
    KingRow{"a piece is no neighbour", g1, "4k3/8/8/5pn1/8/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"an own pawn is no neighbour", a1, "4k3/8/8/1pP5/8/8/8/K7", {2 - 24 - 7 - 5, 2 - 28 - 6 - 12 - 13}, 4 + 7, -29},
    KingRow{"behind another pawn of its file", g1, "4k3/8/8/5pp1/6p1/8/8/6K1", {-50 - 5 - 5 - 3 + 4, -71 - 13 - 16 - 8 + 8}, 4 + 7 + 6 + 4 - 2, -46},
    KingRow{"unmoved on f g h", g1, "4k3/5ppp/8/8/8/8/8/6K1", {-50 + 6 - 10, -65 + 12 - 32}, -6 + 12, -46},
    KingRow{"unmoved on a b c", b1, "4k3/ppp5/8/8/8/8/8/1K6", {-54 + 6 - 10, -65 + 12 - 32}, -6 + 12, -46}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(SquareBehind, StormRules, testing::Values(
    KingRow{"a piece of the enemy", g1, "4k3/8/6n1/6p1/8/8/8/6K1", {-56 - 5 + 4, -77 - 13 + 8}, 9 + 7 - 2, -46},
    KingRow{"an own piece", g1, "4k3/8/6N1/6p1/8/8/8/6K1", {-56 - 5 + 4, -77 - 13 + 8}, 9 + 7 - 2, -46},
    KingRow{"another pawn", g1, "4k3/8/8/6p1/6p1/8/8/6K1", {-56 - 3 + 4, -77 - 8 + 8}, 9 + 4 - 2, -46},
    KingRow{"the enemy king", g1, "6k1/6p1/8/8/8/8/8/6K1", {-56 + 4, -77 + 8}, 9 - 2, -46},
    KingRow{"two squares behind", g1, "4k3/6n1/8/6p1/8/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"beside it", g1, "4k3/8/5n2/6p1/8/8/8/6K1", {-56 - 5, -77 - 13}, 9 + 7, -46},
    KingRow{"behind a pawn on rank 3", g1, "4k3/8/8/8/6n1/6p1/8/6K1", {-56, -77}, 9 + 4, -46},
    KingRow{"with an attacked path", g1, "4k3/8/5n2/5p2/8/8/4P3/6K1", {-56 - 5 - 3 + 4, -77 - 13 - 8 + 8}, 9 + 7 + 10 - 2, -46},
    KingRow{"with a neighbour", g1, "4k3/8/5n2/5pp1/8/8/8/6K1", {-50 - 10 - 5 + 4, -71 - 26 - 16 + 8}, 4 + 14 + 6 - 2, -46}), RowName<KingRow>);

// The shield of f2, g2, h2 is worth (81, 112) with its firmness; files without enemy pawns take from that.
INSTANTIATE_TEST_SUITE_P(AgainstAShield, StormRules, testing::Values(
    KingRow{"in contact", g1, "4k3/8/8/8/6p1/8/5PPP/6K1", {81 - 6 - 3 - 4, 112 - 12 - 8 - 12}, 9 + 4 + 12, 14},
    KingRow{"a rank away", g1, "4k3/8/8/6p1/8/8/5PPP/6K1", {81 - 6 - 5 - 3, 112 - 12 - 13 - 8}, 9 + 7 + 10, 14},
    KingRow{"two ranks away", g1, "4k3/8/6p1/8/8/8/5PPP/6K1", {81 - 6 - 6 - 1, 112 - 12 - 12 - 5}, 9 + 8 + 8, 14},
    KingRow{"not begun", g1, "4k3/6p1/8/8/8/8/5PPP/6K1", {81 - 6, 112 - 12}, 9, 14},
    KingRow{"with a man behind", g1, "4k3/8/6n1/6p1/8/8/5PPP/6K1", {81 - 6 - 5 - 3 + 4, 112 - 12 - 13 - 8 + 8}, 9 + 7 + 10 - 2, 14},
    KingRow{"against a pawn that nobody helps", g1, "4k3/8/8/8/6p1/8/6P1/6K1", {6 + 20 - 24 - 6 - 5 - 3 + 2, 2 + 28 - 28 - 12 - 8 - 8 + 10}, 9 + 4 - 4, -27},
    KingRow{"three pawns at home", g1, "4k3/5ppp/8/8/8/8/5PPP/6K1", {81 + 6 - 10, 112 + 12 - 32}, -6 + 12, 14},
    KingRow{"a neighbour east of the walk", b1, "4k3/2pp4/8/8/8/8/PPP5/1K6", {2 + 60 + 15 - 6, 2 + 84 + 26 - 12}, 9, 14},
    KingRow{"a neighbour east of the b-file", b1, "4k3/1pp5/8/8/8/8/PPP5/1K6", {2 + 60 + 15 - 0 - 5, 2 + 84 + 26 - 6 - 16}, 4 + 6, 14},
    KingRow{"not against a king in the centre", e1, "4k3/8/8/8/4p3/8/3PPP2/4K3", {-55 + 60 - 6 + 15, -80 + 84 - 12 + 26}, 9, 14}), RowName<KingRow>);
// clang-format on

}  // namespace
