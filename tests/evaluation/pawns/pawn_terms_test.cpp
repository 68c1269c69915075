#include "evaluation/pawns/pawn_terms.h"

#include <gtest/gtest.h>

#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

class PawnTerms : public testing::TestWithParam<PairRow> {};
TEST_P(PawnTerms, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Squares, PawnTerms, testing::Values(
    PairRow{"opening e4", in_opening, "4k3/8/8/8/4P3/8/8/4K3", {22, 34}},
    PairRow{"opening a2", in_opening, "4k3/8/8/8/8/8/P7/4K3", {-13, -20}},
    PairRow{"opening c2", in_opening, "4k3/8/8/8/8/8/2P5/4K3", {-8, -8}},
    PairRow{"opening f2", in_opening, "4k3/8/8/8/8/8/5P2/4K3", {-4, -6}},
    PairRow{"opening c4", in_opening, "4k3/8/8/8/2P5/8/8/4K3", {10, 10}},
    PairRow{"opening f4", in_opening, "4k3/8/8/8/5P2/8/8/4K3", {6, 6}},
    PairRow{"opening d5", in_opening, "4k3/8/8/3P4/8/8/8/4K3", {14, 28}},
    PairRow{"opening b5", in_opening, "4k3/8/8/1P6/8/8/8/4K3", {-4, -14}},
    PairRow{"opening g5", in_opening, "4k3/8/8/6P1/8/8/8/4K3", {-6, -15}},
    PairRow{"opening b6", in_opening, "4k3/8/1P6/8/8/8/8/4K3", {-2, -14}},
    PairRow{"opening g6", in_opening, "4k3/8/6P1/8/8/8/8/4K3", {-6, -14}},
    PairRow{"opening c7", in_opening, "4k3/2P5/8/8/8/8/8/4K3", {10, 12}},
    PairRow{"opening f7", in_opening, "7k/5P2/8/8/8/8/8/4K3", {10, 10}},
    PairRow{"middle game e4", in_middle_game, "4k3/8/8/8/4P3/8/8/4K3", {18, 28}},
    PairRow{"middle game h2", in_middle_game, "4k3/8/8/8/8/8/7P/4K3", {-15, -25}},
    PairRow{"middle game b2", in_middle_game, "4k3/8/8/8/8/8/1P6/4K3", {-6, -18}},
    PairRow{"middle game g2", in_middle_game, "4k3/8/8/8/8/8/6P1/4K3", {-6, -15}},
    PairRow{"middle game c2", in_middle_game, "4k3/8/8/8/8/8/2P5/4K3", {-6, -6}},
    PairRow{"middle game f2", in_middle_game, "4k3/8/8/8/8/8/5P2/4K3", {-4, -6}},
    PairRow{"middle game e3", in_middle_game, "4k3/8/8/8/8/4P3/8/4K3", {12, 6}},
    PairRow{"middle game c5", in_middle_game, "4k3/8/8/2P5/8/8/8/4K3", {5, 3}},
    PairRow{"middle game f5", in_middle_game, "4k3/8/8/5P2/8/8/8/4K3", {5, 5}},
    PairRow{"middle game c6", in_middle_game, "4k3/8/2P5/8/8/8/8/4K3", {6, 4}},
    PairRow{"middle game a6", in_middle_game, "4k3/8/P7/8/8/8/8/4K3", {-12, -19}},
    PairRow{"middle game d7", in_middle_game, "7k/3P4/8/8/8/8/8/4K3", {-6, 0}},
    PairRow{"pawns add up", in_middle_game, "4k3/8/8/8/3PP3/8/8/4K3", {36, 56}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Backward, PawnTerms, testing::Values(
    PairRow{"stuck, nothing ahead", backward, "4k3/8/8/3p4/8/8/4P3/4K3", {-15, -12}, "pc-3 cc-8"},
    PairRow{"stuck, two ranks ahead", backward, "4k3/8/8/8/3pp3/8/4P3/4K3", {-6, -6}, "pc-1 cc-4"},
    PairRow{"stuck, three ranks ahead", backward, "4k3/8/8/3pp3/8/8/4P3/4K3", {-8, -8}, "pc-1 cc-4"},
    PairRow{"stuck, four ranks ahead", backward, "4k3/8/4p3/3p4/8/8/4P3/4K3", {-9, -9}, "pc-1 cc-4"},
    PairRow{"stuck, five ranks ahead", backward, "4k3/4p3/8/3p4/8/8/4P3/4K3", {-11, -10}, "pc-1 cc-4"},
    PairRow{"stuck on a wing", backward, "4k3/8/8/2p5/8/8/1P6/4K3", {-15, -12}, "pq-3 cq-8"},
    PairRow{"not stuck, nothing ahead", backward, "4k3/8/3p1p2/8/4P3/8/8/4K3", {-10, -5}, "pc-1 cc-3"},
    PairRow{"not stuck, a pawn ahead", backward, "4k3/4p3/3p1p2/8/4P3/8/8/4K3", {-3, -3}, "pc-1 cc-1"},
    PairRow{"in a duo it keeps its pressure", backward, "4k3/8/8/3p1p2/8/3PP3/8/4K3", {-10, -5}, "cc-3"},
    PairRow{"not backward", backward, "4k3/8/3p4/8/8/8/4P3/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Isolated, PawnTerms, testing::Values(
    PairRow{"nothing ahead", isolated, "4k3/8/8/8/4P3/8/8/4K3", {-18, -6}, "cc-4"},
    PairRow{"a pawn ahead", isolated, "4k3/8/4p3/8/4P3/8/8/4K3", {-14, -4}, "cc-2"},
    PairRow{"on the left", isolated, "4k3/8/8/8/P7/8/8/4K3", {-18, -6}, "cq-4"},
    PairRow{"on the right", isolated, "4k3/8/8/8/6P1/8/8/4K3", {-18, -6}, "ck-4"},
    PairRow{"doubled ones are counted elsewhere", isolated, "4k3/8/8/8/4P3/8/4P3/4K3", {0, 0}},
    PairRow{"with a neighbour", isolated, "4k3/8/8/8/4P3/8/3P4/4K3", {0, 0}},
    PairRow{"queen pawn", queen_pawn, "4k3/8/8/8/3P4/8/8/4K3", {-8, 12}, "cc-10 pc8"},
    PairRow{"queen pawn against e6", queen_pawn, "4k3/8/4p3/8/3P4/8/8/4K3", {-6, 15}, "cc-10 pc5 Cc3"},
    PairRow{"queen pawn against c6", queen_pawn, "4k3/8/2p5/8/3P4/8/8/4K3", {-6, 15}, "cc-10 pc6 Cc3"},
    PairRow{"queen pawn against both", queen_pawn, "4k3/8/2p1p3/8/3P4/8/8/4K3", {-6, 15}, "cc-10 pc5 Cc3"},
    PairRow{"queen pawn met on c5", queen_pawn, "4k3/8/8/2p5/3P4/8/8/4K3", {0, 0}},
    PairRow{"queen pawn met on d5", queen_pawn, "4k3/8/8/3p4/3P4/8/8/4K3", {0, 0}},
    PairRow{"queen pawn met on e5", queen_pawn, "4k3/8/8/4p3/3P4/8/8/4K3", {0, 0}},
    PairRow{"queen pawn met on d6", queen_pawn, "4k3/8/3p4/8/3P4/8/8/4K3", {0, 0}},
    PairRow{"queen pawn met on d7", queen_pawn, "4k3/3p4/8/8/3P4/8/8/4K3", {0, 0}},
    PairRow{"e7 does not meet it", queen_pawn, "4k3/4p3/8/8/3P4/8/8/4K3", {-8, 12}, "cc-10 pc8"},
    PairRow{"the king pawn has no such rule", queen_pawn, "4k3/8/8/8/4P3/8/8/4K3", {0, 0}},
    PairRow{"doubled queen pawns have none", queen_pawn, "4k3/8/8/8/3P4/8/3P4/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Together, PawnTerms, testing::Values(
    PairRow{"duo in the centre", together, "4k3/3pp3/8/8/3PP3/8/8/4K3", {18, 24}},
    PairRow{"duo at home on the rim", together, "4k3/pp6/8/8/8/8/PP6/4K3", {12, 4}},
    PairRow{"duo on f5 and g5", together, "4k3/5pp1/8/5PP1/8/8/8/4K3", {8 + 4, 10 + 8}},
    PairRow{"duo on f4 and g4", together, "4k3/5pp1/8/8/5PP1/8/8/4K3", {8 + 2, 10 + 6}},
    PairRow{"duo on c3 and d3", together, "4k3/2pp4/8/8/8/2PP4/8/4K3", {1 + 3, 1 + 4}},
    PairRow{"duo on the sixth rank", together, "4k3/3pp3/3PP3/8/8/8/8/4K3", {32, 48}},
    PairRow{"passed ones are not counted here", together, "4k3/8/8/8/3PP3/8/8/4K3", {0, 0}},
    PairRow{"defended on e4", together, "4k3/3pp3/8/8/4P3/3P4/8/4K3", {5, 5}},
    PairRow{"defended on b5", together, "4k3/pp6/8/1P6/P7/8/8/4K3", {5, 0}},
    PairRow{"defended on c5", together, "4k3/1pp5/8/2P5/1P6/8/8/4K3", {7, 6}},
    PairRow{"defended on f5", together, "4k3/4pp2/8/5P2/4P3/8/8/4K3", {6, 6}},
    PairRow{"defended on g3", together, "4k3/5pp1/8/8/8/6P1/5P2/4K3", {5, 0}},
    PairRow{"defended on d6", together, "4k3/2pp4/3P4/2P5/8/8/8/4K3", {10, 12}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Doubled, PawnTerms, testing::Values(
    PairRow{"two with a neighbour", doubled, "4k3/8/8/8/8/4P3/3PP3/4K3", {-16, -6}, "pc-2 cc-3"},
    PairRow{"two isolated", doubled, "4k3/8/8/8/4P3/8/4P3/4K3", {-50, -30}, "pc-2 cc-10"},
    PairRow{"two isolated before a pawn", doubled, "4k3/8/8/4p3/4P3/8/4P3/4K3", {-30, -10}, "pc-1 cc-7"},
    PairRow{"two isolated, two ranks", doubled, "4k3/8/4p3/8/4P3/8/4P3/4K3", {-34, -14}, "pc-1 cc-7"},
    PairRow{"two isolated, three ranks", doubled, "4k3/4p3/8/8/4P3/8/4P3/4K3", {-36, -15}, "pc-1 cc-7"},
    PairRow{"two isolated, four ranks", doubled, "4k3/4p3/8/8/8/4P3/4P3/4K3", {-39, -17}, "pc-1 cc-7"},
    PairRow{"three with a neighbour", doubled, "4k3/8/8/8/4P3/4P3/3PP3/4K3", {-70, -70}, "pc-2 cc-8"},
    PairRow{"three with a neighbour before a pawn", doubled, "4k3/4p3/8/8/4P3/4P3/3PP3/4K3", {-65, -67}, "pc-2 cc-8"},
    PairRow{"three isolated", doubled, "4k3/8/8/8/4P3/4P3/4P3/4K3", {-90, -90}, "pc-2 cc-8"},
    PairRow{"three isolated before a pawn", doubled, "4k3/4p3/8/8/4P3/4P3/4P3/4K3", {-85, -82}, "pc-2 cc-8"},
    PairRow{"on a wing", doubled, "4k3/8/8/8/P7/8/P7/4K3", {-50, -30}, "pq-2 cq-10"},
    PairRow{"none", doubled, "4k3/8/8/8/8/8/3PP3/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Connected, PawnTerms, testing::Values(
    PairRow{"on one rank", connected, "4k3/8/8/PP6/8/8/8/4K3", {40, 43}, "pq3 Cq-5"},
    PairRow{"at home", connected, "4k3/8/8/8/8/8/PP6/4K3", {18, 12}, "pq3 Cq-5"},
    PairRow{"on the third rank", connected, "4k3/8/8/8/8/PP6/8/4K3", {20, 13}, "pq3 Cq-5"},
    PairRow{"one rank apart", connected, "4k3/8/5P2/6P1/8/8/8/4K3", {49, 56}, "pk3 Ck-5"},
    PairRow{"two ranks apart", connected, "4k3/1P6/8/P7/8/8/8/4K3", {87, 96}, "pq3 Cq-5"},
    PairRow{"three ranks apart", connected, "7k/4P3/8/8/3P4/8/8/4K3", {62, 68}, "pc3 Cc-5"},
    PairRow{"four ranks apart", connected, "4k3/1P6/8/8/8/P7/8/4K3", {37, 41}, "pq3 Cq-5"},
    PairRow{"five ranks apart", connected, "4k3/1P6/8/8/8/8/P7/4K3", {25, 27}, "pq3 Cq-5"},
    PairRow{"of three files the first two", connected, "4k3/8/8/8/PPP5/8/8/4K3", {25, 22}, "pq3 Cq-5"},
    PairRow{"two pairs", connected, "4k3/8/8/8/PP4PP/8/8/4K3", {50, 44}, "pq3 Cq-5 pk3 Ck-5"},
    PairRow{"files apart", connected, "4k3/8/8/8/P1P5/8/8/4K3", {0, 0}},
    PairRow{"only one passed", connected, "4k3/2p5/8/8/PP6/8/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Chains, PawnTerms, testing::Values(
    PairRow{"a loose defender", chains, "4k3/8/8/8/4P3/3P4/8/4K3", {-8, -2}, "cc-2"},
    PairRow{"a defender in a duo", chains, "4k3/8/8/8/4P3/2PP4/8/4K3", {3, 0}, "cc1"},
    PairRow{"a defender on the left rim", chains, "4k3/8/8/8/1P6/P7/8/4K3", {3, 0}, "cq1"},
    PairRow{"a defender on the right rim", chains, "4k3/8/8/8/6P1/7P/8/4K3", {3, 0}, "ck1"},
    PairRow{"two loose defenders", chains, "4k3/8/8/8/4P3/3P1P2/8/4K3", {-16, -4}, "cc-4"},
    PairRow{"a defended defender and a loose one", chains, "4k3/8/8/8/4P3/3P4/2P5/4K3", {-5, -2}, "cc-1"},
    PairRow{"a defender on the right", chains, "4k3/8/8/8/4P3/5P2/8/4K3", {-8, -2}, "cc-2"},
    PairRow{"none", chains, "4k3/8/8/8/3PP3/8/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Majorities, PawnTerms, testing::Values(
    PairRow{"at home", majorities, "4k3/pp6/8/8/8/8/PPP5/4K3", {18, 10}, "pq2"},
    PairRow{"a pawn on the third rank", majorities, "4k3/pp6/8/8/8/2P5/PP6/4K3", {18, 12}, "pq3"},
    PairRow{"a pawn on the fourth rank", majorities, "4k3/pp6/8/8/2P5/8/PP6/4K3", {18, 16}, "pq4"},
    PairRow{"a pawn on the fifth rank", majorities, "4k3/pp6/8/2P5/8/8/PP6/4K3", {18, 18}, "pq5"},
    PairRow{"a rammed pawn", majorities, "4k3/1p6/8/2p5/2P5/8/PP6/4K3", {16, 9}, "pq-2 Cq3"},
    PairRow{"on the king side", majorities, "4k3/6pp/8/8/8/5P2/6PP/4K3", {18, 12}, "pk3"},
    PairRow{"passed pawns do not push", majorities, "4k3/8/8/8/8/1P6/8/4K3", {18, 10}, "pq2"},
    PairRow{"of the enemy", majorities, "4k3/ppp5/8/8/8/8/PP6/4K3", {0, 0}},
    PairRow{"none", majorities, "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(CentreSquares, PawnTerms, testing::Values(
    PairRow{"held for good", centre_of_board, "4k3/8/8/8/2P5/8/8/4K3", {4, 12}, "pc6"},
    PairRow{"held until a pawn comes", centre_of_board, "4k3/4p3/8/8/2P5/8/8/4K3", {2, 4}, "pc4"},
    PairRow{"within reach", centre_of_board, "4k3/8/8/8/8/8/2P5/4K3", {4, 2}, "cc4"},
    PairRow{"more pawns on d and e", centre_of_board, "4k3/8/8/8/8/8/4P3/4K3", {4 + 2, 2 + 2}, "cc4 pc1"},
    PairRow{"attacked by both", centre_of_board, "4k3/8/4p3/8/2P5/8/8/4K3", {0, 0}},
    PairRow{"a pawn on the square", centre_of_board, "4k3/8/8/3n4/2P5/8/8/4K3", {4, 12}, "pc6"},
    PairRow{"an enemy pawn on the square", centre_of_board, "4k3/8/8/3p4/2P5/8/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(CentrePatterns, PawnTerms, testing::Values(
    PairRow{"d2 and e2", patterns, "4k3/8/8/8/8/8/3PP3/4K3", {-15, -34}, "pc-15 cc-10"},
    PairRow{"d2", patterns, "4k3/8/8/8/8/8/3P4/4K3", {0, 0}, "pc-4 cc-2"},
    PairRow{"d2 and d3", patterns, "4k3/8/8/8/8/3P4/3P4/4K3", {-12, -20}, "pc-6 cc-6"},
    PairRow{"d2 before an enemy pawn", patterns, "4k3/8/8/8/8/3p4/3P4/4K3", {-12, -20}, "pc-6 cc-6"},
    PairRow{"e2 alone", patterns, "4k3/8/8/8/8/8/4P3/4K3", {0, 0}},
    PairRow{"e2 and e3", patterns, "4k3/8/8/8/8/4P3/4P3/4K3", {-12, -20}, "pc-6 cc-6"},
    PairRow{"e2 before an enemy pawn", patterns, "4k3/8/8/8/8/4p3/4P3/4K3", {-12, -20}, "pc-6 cc-6"},
    PairRow{"e2 and g2", patterns, "4k3/8/8/8/8/8/4P1P1/4K3", {-7, -14}, "pc-5 cc-4"},
    PairRow{"d4 and c2 against d5", patterns, "4k3/8/8/3p4/3P4/8/2P5/4K3", {-12, -20}, "pc-6"},
    PairRow{"d4 and c2", patterns, "4k3/8/8/8/3P4/8/2P5/4K3", {-2, -14}, "pc-3"},
    PairRow{"d4 and c3 alone", patterns, "4k3/8/8/8/3P4/2P5/8/4K3", {-6, 2}, "cc-2"},
    PairRow{"d4 and c4 alone", patterns, "4k3/p7/8/8/2PP4/8/8/4K3", {-6, 2}, "cc-2"},
    PairRow{"d4 and c3 against b7", patterns, "4k3/1p6/8/8/3P4/2P5/8/4K3", {10, 8}, "cc3"},
    PairRow{"d4 and c4 against b7", patterns, "4k3/1p6/8/8/2PP4/8/8/4K3", {8, 12}, "pc3"},
    PairRow{"d4, c3 and c4", patterns, "4k3/8/8/8/2PP4/2P5/8/4K3", {18, 20}, "pc3 cc3"},
    PairRow{"d4 alone", patterns, "4k3/8/8/8/3P4/8/8/4K3", {0, 0}},
    PairRow{"e4 and f2 against e5", patterns, "4k3/8/8/4p3/4P3/8/5P2/4K3", {-3, -16}, "pk-4"},
    PairRow{"e4 and f2", patterns, "4k3/8/8/8/4P3/8/5P2/4K3", {0, -8}, "pk-3"},
    PairRow{"e4 and f3", patterns, "4k3/8/8/8/4P3/5P2/8/4K3", {3, 4}, "cc2"},
    PairRow{"e4 and f4", patterns, "4k3/8/8/8/4PP2/8/8/4K3", {3, 10}, "pk6"},
    PairRow{"e4, f2 and f4", patterns, "4k3/8/8/8/4PP2/8/5P2/4K3", {3, 2}, "pk3"}), RowName<PairRow>);
// clang-format on

}  // namespace
