#include <gtest/gtest.h>

#include "support/prepared_terms.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

// Rooks of the opening and the middle game: every rule where it holds and where it just does not.

namespace {

using namespace sided;

class Rooks : public testing::TestWithParam<PairRow> {};
TEST_P(Rooks, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
// In the sums stand, in this order, what the pawns are worth to the piece, its square, and its other rules.
// Without pawns a rook is worth (75, 45); its squares on the file come next.
INSTANTIATE_TEST_SUITE_P(Rules, Rooks, testing::Values(
    PairRow{"on an open file", rooks_of_game, "4k3/8/8/8/8/8/8/R5K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"on a half-open file", rooks_of_game, "4k3/p7/8/8/8/8/8/R5K1", {75 + 3 + 12, 45 + 8 + 18}, "pq6 a24"},
    PairRow{"behind its pawn", rooks_of_game, "4k3/8/8/8/8/8/P7/R5K1", {75 - 4 - 6 + 6, 45 - 10 - 14 + 12}, "a24"},
    PairRow{"behind its pawn with nowhere to go", rooks_of_game, "4k3/8/8/8/8/8/P7/RN4K1", {75 - 4 - 6 - 2, 45 - 10 - 14 - 6}, "pq-9 a24"},
    PairRow{"behind its pawn among closed files", rooks_of_game, "4k3/8/8/8/8/8/PP6/R1B3K1", {75 - 12 - 4 - 6, 45 - 12 - 10 - 14}, "pq-4 a24"},
    PairRow{"behind a far pawn", rooks_of_game, "4k3/8/8/8/P7/8/8/R5K1", {75 + 0, 45 - 2}, "a24"},
    PairRow{"an enemy pawn before the own one", rooks_of_game, "4k3/8/8/P7/p7/8/8/R5K1", {75 - 12 + 0 + 12, 45 - 12 - 2 + 18}, "pq6 a24"},
    PairRow{"before its own pawn", rooks_of_game, "4k3/8/8/8/R7/8/P7/6K1", {75 + 3, 45 + 8}, "pq6 cq-6 a24"},
    PairRow{"on the seventh rank", rooks_of_game, "6k1/R7/8/8/8/8/8/6K1", {75 + 4 + 7 + 28, 45 + 10 + 15 + 50}, "pq6 cq3 pc14 a24"},
    PairRow{"on the seventh rank with the king out", rooks_of_game, "8/R7/6k1/8/8/8/8/6K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"on the file of the king", rooks_of_game, "4k3/8/8/8/8/8/8/4R1K1 b - - 0 1", {75 + 4 + 7 + 15, 45 + 10 + 15 + 38}, "pc19 cc3 a24"},
    PairRow{"beside the file of the king", rooks_of_game, "4k3/8/8/8/8/8/8/3R2K1", {75 + 4 + 7 + 12, 45 + 10 + 15 + 33}, "pc17 cc3 a24"},
    PairRow{"against a queen", rooks_of_game, "q5k1/8/8/8/8/8/8/R5K1", {75 + 4 + 7 + 8, 45 + 10 + 15 + 25}, "pq10 cq3 Cq-9 a24"},
    PairRow{"against a rook", rooks_of_game, "r5k1/8/8/8/8/8/8/R5K1", {75 + 4 + 16, 45 + 10 + 25}, "pq8 cq2 a24"},
    PairRow{"on the only open file", rooks_of_game, "6k1/1ppppppp/8/8/8/8/1PPPPPPP/R5K1", {75 - 84 + 4 + 35, 45 - 84 + 10 + 36}, "pq8 cq8 a24"},
    PairRow{"on the only open file against a rook", rooks_of_game, "r5k1/1ppppppp/8/8/8/8/1PPPPPPP/R5K1", {75 - 84 + 4 + 25, 45 - 84 + 10 + 30}, "pq12 cq4 a24"},
    PairRow{"two on a file against one", rooks_of_game, "r5k1/8/8/8/8/8/R7/R5K1", {2 * (75 + 4 + 7 + 8), 2 * (45 + 10 + 15 + 12)}, "pq12 cq6 cc4 a48"},
    PairRow{"side by side", rooks_of_game, "4k3/8/8/8/8/8/8/RR4K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq13 cq7 cc4 a48"},
    PairRow{"side by side on the seventh rank", rooks_of_game, "6k1/RR6/8/8/8/8/8/6K1", {2 * (75 + 4 + 15 + 7 + 28), 2 * (45 + 10 + 28 + 15 + 50)}, "pq12 cq6 pc48 a48"},
    PairRow{"apart through a queen", rooks_of_game, "6k1/8/8/8/R7/Q7/R7/6K1", {2 * (75 + 4 - 6 + 7), 2 * (45 + 10 - 10 + 15)}, "pq8 cq-2 a48"},
    PairRow{"shut in by its king", rooks_of_game, "6k1/8/8/8/8/8/5PPP/6KR", {75 - 12 - 4 - 6 - 2 - 50, 45 - 12 - 10 - 14 - 6 - 70}, "pk-17 ck-5 a24"},
    PairRow{"a right to castle is no prison", rooks_of_game, "4k3/8/8/8/8/8/4PPPP/4KBNR w K - 0 1", {75 - 24 - 4 - 6 - 2, 45 - 24 - 10 - 14 - 6}, "pk-9 a24"},
    PairRow{"one square", rooks_of_game, "4k3/8/8/8/8/8/N7/R5K1", {75 - 4 + 7, 45 - 10 + 15}, "pq6 cq3 a24"},
    PairRow{"two squares", rooks_of_game, "4k3/8/8/8/8/N7/8/R5K1", {75 - 2 + 7, 45 - 8 + 15}, "pq6 cq3 a24"},
    PairRow{"three squares", rooks_of_game, "4k3/8/8/8/N7/8/8/R5K1", {75 + 7, 45 - 2 + 15}, "pq6 cq3 a24"},
    PairRow{"four squares", rooks_of_game, "4k3/8/8/N7/8/8/8/R5K1", {75 + 1 + 7, 45 + 4 + 15}, "pq6 cq3 a24"},
    PairRow{"five squares", rooks_of_game, "4k3/8/n7/8/8/8/8/R5K1", {75 + 2 + 7, 45 + 6 + 15}, "pq6 cq3 a24"},
    PairRow{"six squares", rooks_of_game, "4k3/n7/8/8/8/8/8/R5K1", {75 + 3 + 7, 45 + 8 + 15}, "pq6 cq3 a24"},
    PairRow{"three pawns are one pair", rooks_of_game, "4k3/2p5/8/8/8/8/2PP4/R5K1", {63 + 4 + 7, 33 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"through its queen", rooks_of_game, "6k1/8/8/8/8/Q7/8/R5K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"not through the queen of the enemy", rooks_of_game, "6k1/8/8/8/q7/8/8/R5K1", {75 + 7 + 8, 45 - 2 + 15 + 25}, "pq10 cq3 Cq-9 a24"},
    PairRow{"two on a file", rooks_of_game, "6k1/8/8/8/R7/8/8/R5K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq12 cq6 cc4 a48"},
    PairRow{"two on a file against two", rooks_of_game, "r5k1/r7/8/8/8/8/R7/R5K1", {2 * (75 + 3 + 8 + 16), 2 * (45 + 8 + 12 + 25)}, "pq16 cq4 cc4 a48"},
    PairRow{"between own pawns", rooks_of_game, "4k3/8/P7/8/R7/8/P7/6K1", {63 + 1, 33 + 4}, "a24"},
    PairRow{"a far own pawn behind an enemy pawn", rooks_of_game, "4k3/8/P7/8/p7/8/8/R5K1", {63 + 12, 33 - 2 + 18}, "pq6 a24"},
    PairRow{"an own pawn on the third before an enemy pawn", rooks_of_game, "4k3/8/p7/8/8/P7/8/R5K1", {63 - 2 - 6 + 6, 33 - 8 - 14 + 12}, "a24"},
    PairRow{"only the first own pawn counts", rooks_of_game, "4k3/8/8/P7/p7/P7/8/R5K1", {63 - 2 - 6 + 6, 33 - 8 - 14 + 12}, "a24"},
    PairRow{"an enemy pawn behind it", rooks_of_game, "4k3/8/8/8/R7/8/p7/6K1", {75 + 3 + 12, 45 + 8 + 18}, "pq6 a24"},
    PairRow{"its own pawn behind it and an enemy pawn ahead", rooks_of_game, "4k3/p7/8/8/R7/8/P7/6K1", {63 + 2, 33 + 6}, "pq6 cq-6 a24"},
    PairRow{"side by side on the seventh with the king out", rooks_of_game, "8/RR6/7k/8/8/8/8/6K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq12 cq6 cc4 a48"},
    PairRow{"apart on the seventh", rooks_of_game, "6k1/R1R5/8/8/8/8/8/6K1", {2 * (75 + 4 + 15 + 7 + 28), 2 * (45 + 10 + 28 + 15 + 50)}, "pq12 cq6 pc48 a48"},
    PairRow{"one on the seventh and one on the eighth", rooks_of_game, "R5k1/R7/8/8/8/8/8/6K1 b - - 0 1", {2 * (75 + 4 + 8 + 7) + 28, 2 * (45 + 10 + 12 + 15) + 50}, "pq12 cq6 cc4 pc14 a48"},
    PairRow{"one on the seventh and one on the sixth", rooks_of_game, "6k1/R7/R7/8/8/8/8/6K1", {2 * (75 + 4 + 8 + 7) + 28, 2 * (45 + 10 + 12 + 15) + 50}, "pq12 cq6 cc4 pc14 a48"},
    PairRow{"one on the seventh and one behind it", rooks_of_game, "6k1/R7/8/8/8/8/8/R5K1", {2 * (75 + 4 + 8 + 7) + 28, 2 * (45 + 10 + 12 + 15) + 50}, "pq12 cq6 cc4 pc14 a48"},
    PairRow{"far apart on a rank", rooks_of_game, "7k/8/8/8/8/8/8/R2R2K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq6 pc6 cq3 cc7 a48"},
    PairRow{"a knight between them", rooks_of_game, "7k/8/8/8/8/8/8/RNR3K1", {2 * (75 + 4 + 7), 2 * (45 + 10 + 15)}, "pq12 cq6 a48"},
    PairRow{"the queen between them", rooks_of_game, "6k1/2R5/8/8/2Q5/8/2R5/6K1 b - - 0 1", {2 * (75 + 4 - 6 + 7) + 28, 2 * (45 + 10 - 10 + 15) + 50}, "pq8 cq-2 pc14 a48"},
    PairRow{"on b1 and c2", rooks_of_game, "6k1/8/8/8/8/8/2R5/1R4K1", {2 * (75 + 4 + 7) + 2, 2 * (45 + 10 + 15) + 4}, "pq13 cq7 a48"},
    PairRow{"on b1 and c1 behind b2", rooks_of_game, "6k1/8/8/8/8/8/1P6/1RR3K1", {75 - 4 + 8 - 6 + 6 + 75 + 4 + 8 + 7, 45 - 10 + 12 - 14 + 12 + 45 + 10 + 12 + 15}, "pq6 cq3 cc4 a48"},
    PairRow{"on b1 and c1 behind b3", rooks_of_game, "6k1/8/8/8/8/1P6/8/1RR3K1", {75 - 2 + 8 + 2 - 6 + 6 + 75 + 4 + 8 + 7, 45 - 8 + 12 + 4 - 14 + 12 + 45 + 10 + 12 + 15}, "pq7 cq4 cc4 a48"},
    PairRow{"on b2 and c2", rooks_of_game, "6k1/8/8/8/8/8/1RR5/6K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq13 cq7 cc4 a48"},
    PairRow{"on c1 and d1", rooks_of_game, "6k1/8/8/8/8/8/8/2RR2K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq7 cq4 pc6 cc7 a48"},
    PairRow{"on b3 and c2", rooks_of_game, "6k1/8/8/8/8/1R6/2R5/6K1", {2 * (75 + 4 + 7), 2 * (45 + 10 + 15)}, "pq12 cq6 a48"},
    PairRow{"on b1 and c1 beside d2", rooks_of_game, "6k1/8/8/8/8/8/3P4/1RR3K1", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pq13 cq7 cc4 a48"},
    PairRow{"on b1 and c1 behind c2", rooks_of_game, "6k1/8/8/8/8/8/2P5/1RR3K1", {75 + 4 + 8 + 7 + 75 - 4 + 8 - 6 + 6, 45 + 10 + 12 + 15 + 45 - 10 + 12 - 14 + 12}, "pq6 cq3 cc4 a48"},
    PairRow{"on the third rank nobody asks", rooks_of_game, "6k1/8/8/8/8/RR6/8/6K1", {2 * (75 + 4 + 8 + 7), 2 * (45 + 10 + 12 + 15)}, "pq12 cq6 cc4 a48"},
    PairRow{"on h1 and a2", rooks_of_game, "4k3/8/8/8/8/4K3/R7/7R", {2 * (75 + 4 + 7), 2 * (45 + 10 + 15)}, "pq6 cq3 pk6 ck3 a48"},
    PairRow{"on g1 and h1", rooks_of_game, "1k6/8/8/8/8/K7/8/6RR", {2 * (75 + 4 + 8 + 7) + 2, 2 * (45 + 10 + 12 + 15) + 4}, "pk13 ck7 cc4 a48"},
    PairRow{"two on the only open file against one", rooks_of_game, "r5k1/1ppppppp/8/8/8/8/RPPPPPPP/R5K1", {2 * (-9 + 4 + 8 + 35), 2 * (-39 + 10 + 12 + 36)}, "pq16 cq16 cc4 a48"},
    PairRow{"on the only open file against one", rooks_of_game, "1k3r2/ppppp1pp/8/8/8/8/PPPPP1PP/1K3R2", {-9 + 4 + 25, -39 + 10 + 30}, "pk12 ck4 a24"},
    PairRow{"on an open file against one", rooks_of_game, "1k3r2/8/8/8/8/8/8/1K3R2", {75 + 4 + 16, 45 + 10 + 25}, "pk8 ck2 a24"},
    PairRow{"on one of two open files", rooks_of_game, "6k1/2pppppp/8/8/8/8/2PPPPPP/R5K1", {3 + 4 + 7, -27 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"behind h3 beside a closed file", rooks_of_game, "4k3/8/8/8/8/6PP/8/1K3N1R", {63 - 2 - 6, 33 - 8 - 14}, "pk-4 a24"},
    PairRow{"behind h3 and a knight", rooks_of_game, "1k6/8/8/8/8/K6P/8/6NR", {75 - 2 - 6 - 2, 45 - 8 - 14 - 6}, "pk-9 a24"},
    PairRow{"a piece to take is no empty square", rooks_of_game, "1k6/8/8/8/8/K6P/8/6nR", {75 - 2 - 6 - 2, 45 - 8 - 14 - 6}, "pk-9 a24"},
    PairRow{"shut in on a1", rooks_of_game, "4k3/8/8/8/8/8/P7/RK6", {75 - 4 - 6 - 2 - 50, 45 - 10 - 14 - 6 - 70}, "pq-17 cq-5 a24"},
    PairRow{"shut in on b1", rooks_of_game, "4k3/8/8/8/8/8/1P6/1RK5", {75 - 4 - 6 + 6 - 50, 45 - 10 - 14 + 12 - 70}, "pq-8 cq-5 a24"},
    PairRow{"shut in on a2", rooks_of_game, "4k3/8/8/8/8/P7/R1N5/1K6", {75 - 2 - 6 + 6 - 50, 45 - 8 - 14 + 12 - 70}, "pq-8 cq-5 a24"},
    PairRow{"c2 is a way out", rooks_of_game, "4k3/8/8/8/8/P7/R7/1K6", {75 - 2 - 6 + 6, 45 - 8 - 14 + 12}, "a24"},
    PairRow{"a knight outside shuts it in", rooks_of_game, "4k3/8/8/8/8/8/1P6/KR1N4", {75 - 4 - 6 + 6 - 50, 45 - 10 - 14 + 12 - 70}, "pq-8 cq-5 a24"},
    PairRow{"a knight to take is a way out", rooks_of_game, "4k3/8/8/8/8/8/1P6/KR1n4", {75 - 4 - 6 + 6, 45 - 10 - 14 + 12}, "a24"},
    PairRow{"shut in behind h4", rooks_of_game, "4k3/8/8/8/7P/8/8/6KR", {75 - 50, 45 - 2 - 70}, "pk-8 ck-5 a24"},
    PairRow{"shut in on f1", rooks_of_game, "4k3/8/8/8/8/8/5P2/4NRK1", {75 - 4 - 6 - 2 - 50, 45 - 10 - 14 - 6 - 70}, "pk-17 ck-5 a24"},
    PairRow{"a king in the other corner shuts nobody in", rooks_of_game, "4k3/8/8/8/8/8/7P/1K4NR", {75 - 4 - 6 - 2, 45 - 10 - 14 - 6}, "pk-9 a24"},
    PairRow{"a right of the enemy to castle opens nothing", rooks_of_game, "r3k2r/8/8/8/8/8/7P/6KR w kq - 0 1", {75 - 4 - 6 - 2 - 50, 45 - 10 - 14 - 6 - 70}, "pk-17 ck-5 a24"},
    PairRow{"g3 is a way out", rooks_of_game, "4k3/8/8/8/7P/7R/6K1/8", {75, 45 - 2}, "a24"},
    PairRow{"half-open on the seventh", rooks_of_game, "6k1/1R6/1p6/8/8/8/8/6K1", {75 - 2 + 12 + 28, 45 - 8 + 18 + 50}, "pq6 pc14 a24"},
    PairRow{"the king on the seventh too", rooks_of_game, "8/R5k1/8/8/8/8/8/6K1 b - - 0 1", {75 + 4 + 7 + 28, 45 + 10 + 15 + 50}, "pq6 cq3 pc14 a24"},
    PairRow{"on the sixth", rooks_of_game, "6k1/8/R7/8/8/8/8/6K1", {75 + 4 + 7, 45 + 10 + 15}, "pq6 cq3 a24"},
    PairRow{"behind its pawn on the file of the king", rooks_of_game, "4k3/8/8/8/4P3/8/8/4R1K1", {75, 45 - 2}, "a24"},
    PairRow{"before its pawn on the file of the king", rooks_of_game, "4k3/8/8/4R3/8/4P3/8/6K1 b - - 0 1", {75 + 2 + 15, 45 + 6 + 38}, "pc19 cc-6 a24"},
    PairRow{"on the file of a king on c8", rooks_of_game, "2k5/8/8/8/8/8/8/2R3K1 b - - 0 1", {75 + 4 + 7 + 15, 45 + 10 + 15 + 38}, "pq6 cq3 pc13 a24"},
    PairRow{"beside the file of a king on c8", rooks_of_game, "2k5/8/8/8/8/8/8/1R4K1", {75 + 4 + 7 + 12, 45 + 10 + 15 + 33}, "pq6 cq3 pc11 a24"},
    PairRow{"two files from the king", rooks_of_game, "1k6/8/8/8/8/8/8/3R2K1", {75 + 4 + 7, 45 + 10 + 15}, "pc6 cc3 a24"},
    PairRow{"beside the file of a king in the corner", rooks_of_game, "k7/8/8/8/8/8/8/1R4K1", {75 + 4 + 7 + 12, 45 + 10 + 15 + 33}, "pq17 cq3 a24"},
    PairRow{"across the rim from the king", rooks_of_game, "k7/8/8/8/8/8/5K2/7R", {75 + 4 + 7, 45 + 10 + 15}, "pk6 ck3 a24"},
    PairRow{"before its pawn against a queen", rooks_of_game, "q5k1/8/8/R7/8/P7/8/6K1", {75 + 2 + 8, 45 + 6 + 25}, "pq10 cq-6 Cq-9 a24"},
    PairRow{"behind its pawn against a queen", rooks_of_game, "q5k1/8/8/8/P7/8/8/R5K1", {75, 45 - 2}, "a24"},
    PairRow{"against a queen behind it", rooks_of_game, "6k1/8/8/R7/8/6K1/8/q7", {75 + 4 + 7 + 8, 45 + 10 + 15 + 25}, "pq10 cq3 Cq-9 a24"}), RowName<PairRow>);
// clang-format on

}  // namespace
