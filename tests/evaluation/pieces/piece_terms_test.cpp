#include <gtest/gtest.h>

#include "evaluation/context/board_areas.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "support/row_name.h"
#include "support/term_rows.h"

namespace {

// In the sums stand, in this order, what the pawns are worth to the piece, its square, and its other rules.

class PieceTerms : public testing::TestWithParam<PairRow> {};
TEST_P(PieceTerms, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

constexpr SidedTerm<SCORE_PAIR> opening_knights{knights_opening<white>, knights_opening<black>};
constexpr SidedTerm<SCORE_PAIR> game_knights{knights_middle_game<white>, knights_middle_game<black>};
constexpr SidedTerm<SCORE_PAIR> mobility{knight_mobility<white>, knight_mobility<black>};
constexpr SidedTerm<SCORE_PAIR> all_bishops{bishops<white>, bishops<black>};
constexpr SidedTerm<SCORE_PAIR> all_rooks{rooks<white>, rooks<black>};
constexpr SidedTerm<SCORE_PAIR> opening_queens{queens_opening<white>, queens_opening<black>};
constexpr SidedTerm<SCORE_PAIR> game_queens{queens_middle_game<white>, queens_middle_game<black>};

void EnemyAttacksAll(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = ~Bitboard{0};
}
/// All but one square, as its side sees it.
template <Square Left>
void EnemyLeaves(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = ~Bit(own == white ? Left : MirrorVertically(Left));
}
template <int Ranks>
void EnemyAttacksHome(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = own == white ? ranks<white>(0, Ranks - 1) : ranks<black>(0, Ranks - 1);
}
template <int Openness>
void Open(EVALUATION_CONTEXT& context, Colour /*own*/) {
    context.openness = Openness;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(OpeningKnights, PieceTerms, testing::Values(
    PairRow{"on f3", opening_knights, "4k3/8/8/8/8/5N2/8/4K3", {-30 + 12, -30 + 20}, "pk4"},
    PairRow{"on c3", opening_knights, "4k3/8/8/8/8/2N5/8/4K3", {-30 + 11, -30 + 18}, "pq4"},
    PairRow{"on b1", opening_knights, "4k3/8/8/8/8/8/8/1N2K3", {-30 - 20, -30 - 25}, "pq-7"},
    PairRow{"on a1", opening_knights, "4k3/8/8/8/8/8/8/N3K3", {-30 - 50, -30 - 71}, "pq-13"},
    PairRow{"on e2", opening_knights, "4k3/8/8/8/8/8/4N3/4K3", {-30 + 8, -30 + 14}},
    PairRow{"on d2", opening_knights, "4k3/8/8/8/8/8/3N4/4K3", {-30 + 9, -30 + 15}},
    PairRow{"with two pawns", opening_knights, "4k3/p7/8/8/8/5N2/P7/4K3", {6 - 30 + 12, 6 - 30 + 20}, "pk4"},
    PairRow{"with sixteen pawns", opening_knights, "4k3/pppppppp/8/8/8/8/PPPPPPPP/1N2K3", {48 - 30 - 20, 48 - 30 - 25}, "pq-7"},
    PairRow{"defended by a pawn", opening_knights, "4k3/8/8/8/8/5N2/4P3/4K3", {-30 + 12 + 2, -30 + 20}, "pk4 ck1"},
    PairRow{"two that defend one another", opening_knights, "4k3/8/8/8/8/5N2/3N4/4K3", {-60 + 12 + 9, -60 + 20 + 15}, "pk4 ck1 cc1"},
    PairRow{"may be driven away", opening_knights, "4k3/3p4/8/4N3/8/8/8/4K3", {-30 + 22 - 2, -30 + 38 - 4}, "pc10"},
    PairRow{"its chaser is held", opening_knights, "4k3/3p4/3P4/4N3/8/8/8/4K3", {-24 + 22 + 2, -24 + 38 + 10}, "pc13"},
    PairRow{"one of two chasers is held", opening_knights, "4k3/3p1p2/3P4/4N3/8/8/8/4K3", {-24 + 22 - 2, -24 + 38 - 4}, "pc10"},
    PairRow{"on the third rank nobody asks", opening_knights, "4k3/3p4/8/8/8/4N3/8/4K3", {-30 + 10, -30 + 22}, "pc5"},
    PairRow{"outpost on the fourth rank", opening_knights, "4k3/8/8/8/4N3/8/8/4K3", {-30 + 20 + 9, -30 + 34 + 14}, "pc8"},
    PairRow{"outpost without defender", opening_knights, "4k3/8/8/4N3/8/8/8/4K3", {-30 + 22 + 9, -30 + 38 + 14}, "pc14 cc2"},
    PairRow{"firm outpost", opening_knights, "4k3/8/2p5/4N3/3P4/8/8/4K3", {-24 + 22 + 2 + 9 + 13, -24 + 38 + 14 + 18}, "pc16 cc4"},
    PairRow{"firm outpost of two", opening_knights, "4k3/8/2p5/4N3/3P1P2/8/8/4K3", {-24 + 22 + 2 + 9 + 21, -24 + 38 + 14 + 27}, "pc16 cc4"},
    PairRow{"outpost before a pawn", opening_knights, "4k3/4p3/8/4N3/3P4/8/8/4K3", {-24 + 22 + 2 + 9 + 3, -24 + 38 + 14 + 7}, "pc14 cc3"},
    PairRow{"outpost before a pawn of two", opening_knights, "4k3/4p3/8/4N3/3P1P2/8/8/4K3", {-24 + 22 + 2 + 9 + 5, -24 + 38 + 14 + 12}, "pc14 cc3"},
    PairRow{"outpost by a passed pawn", opening_knights, "4k3/8/8/4N3/3P4/8/8/4K3", {-30 + 22 + 2 + 9 + 3, -30 + 38 + 14 + 7}, "pc14 cc3"}), RowName<PairRow>);

// Without pawns the openness is 15, which costs 5 reckless points.
INSTANTIATE_TEST_SUITE_P(GameKnights, PieceTerms, testing::Values(
    PairRow{"near the king", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {-30 + 26 + 13, -30 + 44 + 23 - 5}, "pc14 cc3"},
    PairRow{"off the wing of the king", game_knights, "k7/8/8/4N3/8/8/8/4K3", {-30 + 26 + 13 - 4, -30 + 44 + 23 - 5 - 32}, "pc14 cc3"},
    PairRow{"far from the king", game_knights, "4k3/8/8/8/8/8/3N4/K7", {-30 + 10 - 6, -30 + 16 - 5 - 48}},
    PairRow{"on a1", game_knights, "4k3/8/8/8/8/8/8/N3K3", {-30 - 45 - 7, -30 - 65 - 5 - 56}, "pq-13"},
    PairRow{"two that defend one another", game_knights, "4k3/8/8/4N3/8/3N4/8/4K3", {-60 + 26 + 18 + 13 + 2 - 5, -60 + 44 + 30 + 23 - 10 - 4 - 40}, "pc15 cc11"},
    PairRow{"closed", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {-30 + 26 + 13, -30 + 44 + 23 + 15}, "pc20 cc3", Open<1>},
    PairRow{"openness 2", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {9, 37 + 12}, "pc19 cc3", Open<2>},
    PairRow{"openness 4", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {9, 37 + 6}, "pc17 cc3", Open<4>},
    PairRow{"openness 6", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {9, 37 + 3}, "pc16 cc3", Open<6>},
    PairRow{"openness 8", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {9, 37 + 2}, "pc15 cc3", Open<8>},
    PairRow{"openness 11", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {9, 37}, "pc15 cc3", Open<11>},
    PairRow{"openness 12", game_knights, "4k3/8/8/4N3/8/8/8/4K3", {9, 37 - 2}, "pc14 cc3", Open<12>},
    PairRow{"may be driven away", game_knights, "4k3/3p4/8/4N3/8/8/8/4K3", {-30 + 26 + 2, -30 + 44 + 4 - 5}, "pc10", Open<15>},
    PairRow{"its chaser is held", game_knights, "4k3/3p4/3P4/4N3/8/8/8/4K3", {-24 + 26 + 3, -24 + 44 + 10 - 5}, "pc12", Open<15>},
    PairRow{"firm outpost", game_knights, "4k3/8/2p5/4N3/3P4/8/8/4K3", {-24 + 26 + 2 + 13 + 13, -24 + 44 + 2 + 23 + 20 - 5}, "pc17 cc5", Open<15>},
    PairRow{"firm outpost of two", game_knights, "4k3/8/2p5/4N3/3P1P2/8/8/4K3", {-24 + 26 + 2 + 13 + 25, -24 + 44 + 2 + 23 + 32 - 5}, "pc17 cc5", Open<15>},
    PairRow{"outpost before a pawn", game_knights, "4k3/4p3/8/4N3/3P4/8/8/4K3", {-24 + 26 + 2 + 13 + 2, -24 + 44 + 2 + 23 + 10 - 5}, "pc14 cc4", Open<15>},
    PairRow{"outpost before a pawn of two", game_knights, "4k3/4p3/8/4N3/3P1P2/8/8/4K3", {-24 + 26 + 2 + 13 + 6, -24 + 44 + 2 + 23 + 14 - 5}, "pc14 cc4", Open<15>}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Mobility, PieceTerms, testing::Values(
    PairRow{"eight squares", mobility, "4k3/8/8/8/4N3/8/8/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"four squares", mobility, "4k3/8/8/8/N7/8/8/4K3", {4, 8}, "pc2 cc2"},
    PairRow{"three squares", mobility, "4k3/8/8/8/8/8/8/1N2K3", {3, 6}, "pc1 cc1"},
    PairRow{"two squares", mobility, "4k3/8/8/8/8/8/8/N3K3", {2, 4}},
    PairRow{"one square", mobility, "4k3/8/8/8/8/1P6/8/N3K3", {-2, -4}, "pc-3 cc-3"},
    PairRow{"no square", mobility, "4k3/8/8/8/4N3/8/8/4K3", {-6, -12}, "pc-6 cc-6", EnemyAttacksAll},
    PairRow{"a square that an enemy pawn attacks", mobility, "4k3/8/8/p7/8/8/8/N3K3", {2, 4}},
    PairRow{"squares under enemy pawns", mobility, "4k3/8/8/8/2p5/8/8/N3K3", {-2, -4}, "pc-3 cc-3"},
    PairRow{"own pawns make squares safe", mobility, "4k3/8/8/8/8/8/P7/N3K3", {-2, -4}, "pc-3 cc-3", EnemyAttacksAll}), RowName<PairRow>);

// A bishop without the other costs 5 of activity.
INSTANTIATE_TEST_SUITE_P(Bishops, PieceTerms, testing::Values(
    PairRow{"in the centre", all_bishops, "4k3/8/8/8/8/4B3/8/4K3", {16 + 1 + 1, 24 + 4 + 6 + 2 - 2}, "a-5"},
    PairRow{"in the corner of an open diagonal", all_bishops, "4k3/8/8/8/8/8/1B6/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"on the right", all_bishops, "4k3/8/8/8/8/8/6B1/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "ck3 pq6 a-5"},
    PairRow{"against a bishop of its colour", all_bishops, "4kb2/8/8/8/8/8/1B6/4K3", {20 - 6 + 24 + 2 + 1 - 2, 22 - 4 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"against one of the other", all_bishops, "2b1k3/8/8/8/8/8/1B6/4K3", {47, 61}, "cq3 pk6 a-5"},
    PairRow{"behind c3", all_bishops, "4k3/8/8/8/8/2P5/1B6/4K3", {20 - 6 + 8 - 2 + 8 - 16, 22 - 4 + 10 - 3 + 8 - 32}, "cq-1 pk1 a-5"},
    PairRow{"behind b3", all_bishops, "4k3/8/8/8/8/1P6/1B6/4K3", {20 + 8 + 24 + 2 + 1 - 2, 22 + 10 + 24 + 8 + 4 + 3 - 6}, "cq5 pk6 a-5"},
    PairRow{"behind d4", all_bishops, "4k3/8/8/8/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 8 - 10, 22 - 4 + 10 + 4 + 8 - 30 + 2}, "pk1 a-5"},
    PairRow{"behind e5", all_bishops, "4k3/8/8/4P3/8/8/1B6/4K3", {20 - 6 + 8 + 8 + 8 + 1 - 8, 22 - 4 + 10 + 8 + 8 + 4 + 2 - 20}, "cq1 pk1 a-5"},
    PairRow{"against c3", all_bishops, "4k3/8/8/8/8/2p5/1B6/4K3", {20 - 6 + 8 - 5 + 8 - 16, 22 - 4 + 10 - 10 + 8 - 32}, "cq-7 pk1 a-5"},
    PairRow{"against e5", all_bishops, "4k3/8/8/4p3/8/8/1B6/4K3", {20 - 6 + 8 + 3 + 8 + 1 - 8, 22 - 4 + 10 + 4 + 8 + 4 + 2 - 20}, "pk1 a-5"},
    PairRow{"at home behind its pawn", all_bishops, "4k3/8/8/8/8/8/3P4/2B1K3", {-8 - 16 - 8, -4 - 32 - 18}, "pc-3 a-5"},
    PairRow{"at home behind a man of its own", all_bishops, "4k3/8/8/8/8/8/3N4/2B1K3", {-8 - 10 - 8, -4 - 30 - 18}, "pc-3 a-5"},
    PairRow{"at home behind e3", all_bishops, "4k3/8/8/8/8/4P3/8/2B1K3", {-8 - 10 - 6, -4 - 30 - 20}, "pc-5 a-5"},
    PairRow{"before d4", all_bishops, "4k3/8/8/8/3P4/4B3/8/4K3", {16 + 1 - 3 - 3, 24 + 4 - 8 - 6}, "pc-2 a-5"},
    PairRow{"trapped on a7", all_bishops, "4k3/B7/1p6/8/8/8/8/4K3", {-2 - 24 - 110, 4 - 38 - 110 + 2}, "a-5"},
    PairRow{"trapped on a7 for good", all_bishops, "4k3/B1p5/1p6/8/8/8/8/4K3", {-2 - 24 - 180, 4 - 38 - 180 + 2 - 2}, "a-5"},
    PairRow{"trapped on h7", all_bishops, "4k3/7B/6p1/8/8/8/8/4K3", {-2 - 24 - 110, 4 - 38 - 110 + 2}, "a-5"}), RowName<PairRow>);
// clang-format on

// clang-format off
// Without pawns a rook is worth (75, 45); its squares on the file come next.
INSTANTIATE_TEST_SUITE_P(Rooks, PieceTerms, testing::Values(
    PairRow{"on an open file", all_rooks, "4k3/8/8/8/8/8/8/R5K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"on a half-open file", all_rooks, "4k3/p7/8/8/8/8/8/R5K1", {75 + 3 + 12, 45 + 8 + 18}, "pq6 a24"},
    PairRow{"behind its pawn", all_rooks, "4k3/8/8/8/8/8/P7/R5K1", {75 - 4 - 6 + 6, 45 - 10 - 14 + 12}, "a24"},
    PairRow{"behind its pawn with nowhere to go", all_rooks, "4k3/8/8/8/8/8/P7/RN4K1", {75 - 4 - 6 - 2, 45 - 10 - 14 - 6}, "pq-9 a24"},
    PairRow{"behind its pawn among closed files", all_rooks, "4k3/8/8/8/8/8/PP6/R1B3K1", {75 - 12 - 4 - 6, 45 - 12 - 10 - 14}, "pq-4 a24"},
    PairRow{"behind a far pawn", all_rooks, "4k3/8/8/8/P7/8/8/R5K1", {75 + 0, 45 - 2}, "a24"},
    PairRow{"an enemy pawn before the own one", all_rooks, "4k3/8/8/P7/p7/8/8/R5K1", {75 - 12 + 0 + 12, 45 - 12 - 2 + 18}, "pq6 a24"},
    PairRow{"before its own pawn", all_rooks, "4k3/8/8/8/R7/8/P7/6K1", {75 + 3, 45 + 8}, "pq6 cq-6 a24"},
    PairRow{"on the seventh rank", all_rooks, "6k1/R7/8/8/8/8/8/6K1", {75 + 4 + 7 + 28, 45 + 10 + 15 + 50}, "pq6 cq3 pc14 a24"},
    PairRow{"on the seventh rank with the king out", all_rooks, "8/R7/6k1/8/8/8/8/6K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"on the file of the king", all_rooks, "4k3/8/8/8/8/8/8/4R1K1 b - - 0 1", {75 + 4 + 7 + 15, 45 + 10 + 15 + 38}, "pc19 cc3 a24"},
    PairRow{"beside the file of the king", all_rooks, "4k3/8/8/8/8/8/8/3R2K1", {75 + 4 + 7 + 12, 45 + 10 + 15 + 33}, "pc17 cc3 a24"},
    PairRow{"against a queen", all_rooks, "q5k1/8/8/8/8/8/8/R5K1", {75 + 4 + 7 + 8, 45 + 10 + 15 + 25}, "pq10 cq3 Cq-9 a24"},
    PairRow{"against a rook", all_rooks, "r5k1/8/8/8/8/8/8/R5K1", {75 + 4 + 16, 45 + 10 + 25}, "pq8 cq2 a24"},
    PairRow{"on the only open file", all_rooks, "6k1/1ppppppp/8/8/8/8/1PPPPPPP/R5K1", {75 - 84 + 4 + 35, 45 - 84 + 10 + 36}, "pq8 cq8 a24"},
    PairRow{"on the only open file against a rook", all_rooks, "r5k1/1ppppppp/8/8/8/8/1PPPPPPP/R5K1", {75 - 84 + 4 + 25, 45 - 84 + 10 + 30}, "pq12 cq4 a24"},
    PairRow{"two on a file against one", all_rooks, "r5k1/8/8/8/8/8/R7/R5K1", {2 * (75 + 4 + 7 + 8), 2 * (45 + 10 + 15 + 12)}, "pq12 cq6 cc4 a48"},
    PairRow{"side by side", all_rooks, "4k3/8/8/8/8/8/8/RR4K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq13 cq7 cc4 a48"},
    PairRow{"side by side on the seventh rank", all_rooks, "6k1/RR6/8/8/8/8/8/6K1", {2 * (75 + 4 + 15 + 7 + 28), 2 * (45 + 10 + 28 + 15 + 50)}, "pq12 cq6 pc48 a48"},
    PairRow{"apart through a queen", all_rooks, "6k1/8/8/8/R7/Q7/R7/6K1", {2 * (75 + 4 - 6 + 7), 2 * (45 + 10 - 10 + 15)}, "pq8 cq-2 a48"},
    PairRow{"shut in by its king", all_rooks, "6k1/8/8/8/8/8/5PPP/6KR", {75 - 12 - 4 - 6 - 2 - 50, 45 - 12 - 10 - 14 - 6 - 70}, "pk-17 ck-5 a24"},
    PairRow{"a right to castle is no prison", all_rooks, "4k3/8/8/8/8/8/4PPPP/4KBNR w K - 0 1", {75 - 24 - 4 - 6 - 2, 45 - 24 - 10 - 14 - 6}, "pk-9 a24"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(OpeningQueens, PieceTerms, testing::Values(
    PairRow{"at home", opening_queens, "6k1/8/8/8/8/8/8/3Q2K1", {4, 4}, "pc16"},
    PairRow{"on b3", opening_queens, "7k/8/8/8/8/1Q6/8/6K1", {2 - 5, 4 - 2}, "pc6 pq10"},
    PairRow{"on e4", opening_queens, "6k1/8/8/8/4Q3/8/8/6K1", {-5, 4 - 2}, "pc16"},
    PairRow{"no free square", opening_queens, "6k1/8/8/8/4Q3/8/8/6K1", {-5 - 70, 4 - 2 - 110}, "cc-10", EnemyAttacksAll},
    PairRow{"one free square", opening_queens, "6k1/8/8/8/4Q3/8/8/6K1", {-5 - 40, 4 - 2 - 70}, "pc4 cc-8", EnemyLeaves<e1>},
    PairRow{"kept from the first rank", opening_queens, "6k1/8/8/8/4Q3/8/8/6K1", {-5 - 8, 4 - 2 - 10}, "pc16 cc-2", EnemyAttacksHome<1>},
    PairRow{"kept from both ranks", opening_queens, "6k1/8/8/8/4Q3/8/8/6K1", {-5 - 18, 4 - 2 - 30}, "pc16 cc-4", EnemyAttacksHome<2>},
    PairRow{"at home nobody counts squares", opening_queens, "6k1/8/8/8/8/8/8/3Q2K1", {4, 4}, "pc16", EnemyAttacksAll},
    PairRow{"a man pinned to it", opening_queens, "3r2k1/8/8/8/8/3P4/8/3Q2K1", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"a man on an open line", opening_queens, "6k1/8/8/8/8/3P4/8/3Q2K1", {4, 4}, "pc16"},
    PairRow{"on the seventh rank", opening_queens, "6k1/4Q3/8/8/8/8/8/6K1", {-5 + 10, -2 + 18}, "pc16 pk6"},
    PairRow{"on the seventh rank with the king out", opening_queens, "8/4Q3/7k/8/8/8/8/6K1", {-5, -2}, "pc16"}), RowName<PairRow>);

// The distance to a king that can't castle any more counts too.
INSTANTIATE_TEST_SUITE_P(GameQueens, PieceTerms, testing::Values(
    PairRow{"four squares from the king", game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4, 4 + 8 - 2 - 12}, "pc18 pk10 Ck-4"},
    PairRow{"the king may castle", game_queens, "r3k3/8/8/8/4Q3/8/8/6K1 b q - 0 1", {4 - 5, 4 - 2 + 8}, "pc22 Cc-4"},
    PairRow{"one square from the king", game_queens, "6k1/6Q1/8/8/8/8/8/6K1 b - - 0 1", {-4 - 5 - 1 + 15, -6 + 8 - 2 - 3 + 25}, "pc6 pk42 Ck-4"},
    PairRow{"two squares", game_queens, "6k1/8/6Q1/8/8/8/8/6K1 b - - 0 1", {1 - 5 - 2, 1 + 8 - 2 - 6}, "pc6 pk30 Ck-4"},
    PairRow{"three squares", game_queens, "6k1/8/8/3Q4/8/8/8/6K1 b - - 0 1", {3 - 5 - 3, 4 + 8 - 2 - 9}, "pc18 pk16 Ck-4"},
    PairRow{"seven squares", game_queens, "6k1/8/8/8/8/8/8/4Q1K1", {-5 - 7, -6 - 21}, "pc18"},
    PairRow{"no free square", game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4 - 70, 4 + 8 - 2 - 12 - 110}, "pc2 cc-10 pk10 Ck-4", EnemyAttacksAll},
    PairRow{"kept from the first rank", game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4 - 8, 4 + 8 - 2 - 12 - 14}, "pc18 cc-1 pk10 Ck-4", EnemyAttacksHome<1>},
    PairRow{"kept from both ranks", game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4 - 12, 4 + 8 - 2 - 12 - 20}, "pc18 cc-4 pk10 Ck-4", EnemyAttacksHome<2>},
    PairRow{"it leaves its king", game_queens, "6k1/8/Q7/8/8/8/8/7K", {0 - 5 - 6 - 8, 1 - 2 - 18 - 20}, "pc6 pq12 pk1 ck-16"}), RowName<PairRow>);
// clang-format on

}  // namespace
