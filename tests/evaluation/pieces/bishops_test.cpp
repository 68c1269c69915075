#include <gtest/gtest.h>

#include "support/prepared_terms.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

// Bishops of the opening and the middle game: every rule where it holds and where it just does not.

namespace {

using namespace sided;

class Bishops : public testing::TestWithParam<PairRow> {};
TEST_P(Bishops, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
// In the sums stand, in this order, what the pawns are worth to the piece, its square, and its other rules.
// A bishop without the other costs 5 of activity, or earns 10 with it.
INSTANTIATE_TEST_SUITE_P(LongDiagonals, Bishops, testing::Values(
    PairRow{"behind b2", bishops_of_game, "4k3/8/8/8/8/8/1P6/B3K3", {-8 - 6 - 24, -12 - 4 - 38}, "cq-2 a-5"},
    PairRow{"against b2", bishops_of_game, "4k3/8/8/8/8/8/1p6/B3K3", {-8 - 6 - 24, -12 - 4 - 38}, "cq-2 a-5"},
    PairRow{"behind g2", bishops_of_game, "4k3/8/8/8/8/8/6P1/4K2B", {-8 - 6 - 24, -12 - 4 - 38}, "ck-2 a-5"},
    PairRow{"behind b2 and b3", bishops_of_game, "4k3/8/8/8/8/1P6/1P6/B3K3", {-8 - 24, -12 - 38}, "a-5"},
    PairRow{"an enemy pawn on b3 is no fence", bishops_of_game, "4k3/8/8/8/8/1p6/8/B3K3", {-8 - 6 + 8 + 24 + 2 + 1 - 2, -12 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"behind f6", bishops_of_game, "4k3/8/5P2/8/8/8/1B6/4K3", {20 - 6 + 8 + 11 + 8 + 2 - 5, 22 - 4 + 10 + 11 + 8 + 8 + 2 + 1 - 12}, "cq1 pk2 a-5"},
    PairRow{"against f6", bishops_of_game, "4k3/8/5p2/8/8/8/1B6/4K3", {20 - 6 + 8 + 8 + 8 + 2 - 5, 22 - 4 + 10 + 8 + 8 + 8 + 2 + 1 - 12}, "cq1 pk1 a-5"},
    PairRow{"behind g7", bishops_of_game, "4k3/6P1/8/8/8/8/1B6/4K3", {20 - 6 + 8 + 14 + 8 + 2 + 1 - 3, 22 - 4 + 10 + 14 + 8 + 8 + 4 + 2 - 8}, "cq1 pk4 a-5"},
    PairRow{"against g7", bishops_of_game, "4k3/6p1/8/8/8/8/1B6/4K3", {20 - 6 + 8 + 11 + 8 + 2 + 1 - 3, 22 - 4 + 10 + 11 + 8 + 8 + 4 + 2 - 8}, "cq1 pk2 a-5"},
    PairRow{"against d4", bishops_of_game, "4k3/8/8/8/3p4/8/1B6/4K3", {20 - 6 + 8 - 2 + 8 - 10, 22 - 4 + 10 - 3 + 8 + 2 - 30}, "cq-1 pk1 a-5"},
    PairRow{"two pawns", bishops_of_game, "4k3/8/8/4p3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 6 - 10, 22 - 4 + 10 + 4 + 6 + 2 - 30}, "pk1 a-5"},
    PairRow{"three pawns", bishops_of_game, "4k3/8/5p2/4p3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 3 - 10, 22 - 4 + 10 + 4 + 4 + 2 - 30 - 2}, "pk1 a-5"},
    PairRow{"four pawns", bishops_of_game, "4k3/6p1/5p2/4p3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 - 10, 22 - 4 + 10 + 4 + 1 + 2 - 30 - 4}, "pk1 pc-1 a-5"},
    PairRow{"five pawns", bishops_of_game, "4k3/6p1/5p2/4p3/3P4/2P5/1B6/4K3", {20 - 6 + 8 - 2 - 2 - 16, 22 - 4 + 10 - 3 - 4 - 32 - 4}, "cq-1 pk1 pc-1 a-5"},
    PairRow{"on the right behind its fence", bishops_of_game, "4k3/8/8/8/4p3/6P1/6B1/4K3", {20 + 8 - 2 + 8 - 10, 22 + 10 - 3 + 8 + 2 - 30}, "ck1 pq1 a-5"},
    PairRow{"bad behind e4", bishops_of_game, "4k3/8/8/4p3/4P3/6P1/6B1/1N2K3", {20 + 8 + 3 + 8 - 10 - 8 - 10, 22 + 10 + 4 + 8 + 2 - 30 - 10 - 12}, "ck2 pq1 pc-11 cc-8 a-5"},
    PairRow{"bad with two knights", bishops_of_game, "4k3/8/8/4p3/4P3/6P1/6B1/NN2K3", {20 + 8 + 3 + 8 - 10 - 8 - 5, 22 + 10 + 4 + 8 + 2 - 30 - 10 - 7}, "ck2 pq1 pc-10 cc-7 a-5"},
    PairRow{"bad with three knights", bishops_of_game, "4k3/8/8/4p3/4P3/6P1/6B1/NNN1K3", {20 + 8 + 3 + 8 - 10 - 8 - 5, 22 + 10 + 4 + 8 + 2 - 30 - 10 - 7}, "ck2 pq1 pc-10 cc-7 a-5"},
    PairRow{"on the right against f3", bishops_of_game, "4k3/8/8/8/8/5p2/6B1/4K3", {20 - 6 + 8 - 5 + 8 - 16, 22 - 4 + 10 - 10 + 8 - 32}, "ck-7 pq1 a-5"},
    PairRow{"free behind e5 and so never bad", bishops_of_game, "4k3/8/4p3/4Pp2/5P2/8/1B6/4K3", {20 - 6 + 8 + 8 + 8 + 1 - 8, 22 - 4 + 10 + 8 + 8 + 4 + 2 - 20}, "cq1 pk1 a-5"},
    PairRow{"bad behind d4", bishops_of_game, "4k3/8/8/3pp3/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 6 - 10 - 8 - 15, 22 - 4 + 10 + 4 + 6 + 2 - 30 - 10 - 17}, "pk1 pc-12 cc-10 a-5"},
    PairRow{"free and so never bad", bishops_of_game, "4k3/8/8/5p2/4pP2/4P3/1B6/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"through a knight", bishops_of_game, "4k3/8/8/8/3N4/8/1B6/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"through its king", bishops_of_game, "4k3/8/8/8/3K4/8/1B6/8", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"through a knight on b2", bishops_of_game, "4k3/8/8/8/8/8/1N6/B3K3", {-8 - 6 + 8 + 24 + 2 + 1 - 2, -12 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"not through two knights", bishops_of_game, "4k3/8/8/4N3/3N4/8/1B6/4K3", {20 - 6 + 8 + 24 + 2 - 5, 22 - 4 + 10 + 24 + 8 + 2 - 12}, "cq3 pk6 a-5"},
    PairRow{"not through an enemy knight", bishops_of_game, "4k3/8/8/8/3n4/8/1B6/4K3", {20 - 6 + 8 + 24 + 1 - 8, 22 - 4 + 10 + 24 + 4 + 2 - 20}, "cq3 pk6 a-5"},
    PairRow{"not from c3", bishops_of_game, "4k3/8/8/8/3N4/2B5/8/6K1", {15 + 1 - 3, 20 + 4 + 2 - 8}, "a-5"}), RowName<PairRow>);

// A bishop without the other costs 5 of activity.
INSTANTIATE_TEST_SUITE_P(Rules, Bishops, testing::Values(
    PairRow{"in the centre", bishops_of_game, "4k3/8/8/8/8/4B3/8/4K3", {16 + 1 + 1, 24 + 4 + 6 + 2 - 2}, "a-5"},
    PairRow{"in the corner of an open diagonal", bishops_of_game, "4k3/8/8/8/8/8/1B6/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"on the right", bishops_of_game, "4k3/8/8/8/8/8/6B1/4K3", {20 - 6 + 8 + 24 + 2 + 1 - 2, 22 - 4 + 10 + 24 + 8 + 4 + 3 - 6}, "ck3 pq6 a-5"},
    PairRow{"against a bishop of its colour", bishops_of_game, "4kb2/8/8/8/8/8/1B6/4K3", {20 - 6 + 24 + 2 + 1 - 2, 22 - 4 + 24 + 8 + 4 + 3 - 6}, "cq3 pk6 a-5"},
    PairRow{"against one of the other", bishops_of_game, "2b1k3/8/8/8/8/8/1B6/4K3", {47, 61}, "cq3 pk6 a-5"},
    PairRow{"behind c3", bishops_of_game, "4k3/8/8/8/8/2P5/1B6/4K3", {20 - 6 + 8 - 2 + 8 - 16, 22 - 4 + 10 - 3 + 8 - 32}, "cq-1 pk1 a-5"},
    PairRow{"behind b3", bishops_of_game, "4k3/8/8/8/8/1P6/1B6/4K3", {20 + 8 + 24 + 2 + 1 - 2, 22 + 10 + 24 + 8 + 4 + 3 - 6}, "cq5 pk6 a-5"},
    PairRow{"behind d4", bishops_of_game, "4k3/8/8/8/3P4/8/1B6/4K3", {20 - 6 + 8 + 3 + 8 - 10, 22 - 4 + 10 + 4 + 8 - 30 + 2}, "pk1 a-5"},
    PairRow{"behind e5", bishops_of_game, "4k3/8/8/4P3/8/8/1B6/4K3", {20 - 6 + 8 + 8 + 8 + 1 - 8, 22 - 4 + 10 + 8 + 8 + 4 + 2 - 20}, "cq1 pk1 a-5"},
    PairRow{"against c3", bishops_of_game, "4k3/8/8/8/8/2p5/1B6/4K3", {20 - 6 + 8 - 5 + 8 - 16, 22 - 4 + 10 - 10 + 8 - 32}, "cq-7 pk1 a-5"},
    PairRow{"against e5", bishops_of_game, "4k3/8/8/4p3/8/8/1B6/4K3", {20 - 6 + 8 + 3 + 8 + 1 - 8, 22 - 4 + 10 + 4 + 8 + 4 + 2 - 20}, "pk1 a-5"},
    PairRow{"at home behind its pawn", bishops_of_game, "4k3/8/8/8/8/8/3P4/2B1K3", {-8 - 16 - 8, -4 - 32 - 18}, "pc-3 a-5"},
    PairRow{"at home behind a man of its own", bishops_of_game, "4k3/8/8/8/8/8/3N4/2B1K3", {-8 - 10 - 8, -4 - 30 - 18}, "pc-3 a-5"},
    PairRow{"at home behind e3", bishops_of_game, "4k3/8/8/8/8/4P3/8/2B1K3", {-8 - 10 - 6, -4 - 30 - 20}, "pc-5 a-5"},
    PairRow{"before d4", bishops_of_game, "4k3/8/8/8/3P4/4B3/8/4K3", {16 + 1 - 3 - 3, 24 + 4 - 8 - 6}, "pc-2 a-5"},
    PairRow{"trapped on a7", bishops_of_game, "4k3/B7/1p6/8/8/8/8/4K3", {-2 - 24 - 110, 4 - 38 - 110 + 2}, "a-5"},
    PairRow{"trapped on a7 for good", bishops_of_game, "4k3/B1p5/1p6/8/8/8/8/4K3", {-2 - 24 - 180, 4 - 38 - 180 + 2 - 2}, "a-5"},
    PairRow{"trapped on h7", bishops_of_game, "4k3/7B/6p1/8/8/8/8/4K3", {-2 - 24 - 110, 4 - 38 - 110 + 2}, "a-5"},
    PairRow{"no square", bishops_of_game, "4k3/8/8/6P1/7B/6P1/8/4K3", {8 - 24, 12 - 38}, "a-5"},
    PairRow{"its own square alone", bishops_of_game, "4k3/8/8/5P1P/6B1/5P1P/8/4K3", {10 - 16, 16 - 32}, "a-5"},
    PairRow{"three squares", bishops_of_game, "4k3/4p3/8/6B1/8/4P3/8/4K3", {10 + 1 - 8, 16 + 4 + 2 - 20}, "a-5"},
    PairRow{"four squares", bishops_of_game, "4k3/8/8/6B1/8/4P3/8/4K3", {10 + 1 - 5, 16 + 4 + 3 - 12}, "a-5"},
    PairRow{"five squares", bishops_of_game, "4k3/8/8/6B1/8/8/3P4/4K3", {10 + 1 - 3, 16 + 6 + 3 - 8}, "a-5"},
    PairRow{"two held pawns", bishops_of_game, "4k3/8/8/8/3p1p2/3P1P2/8/1B2K3", {-4 - 16 - 18 - 15, -2 - 32 - 24 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"one held pawn of two", bishops_of_game, "4k3/8/8/8/3p4/3P1P2/8/1B2K3", {-4 - 16, -2 - 32}, "a-5"},
    PairRow{"two held pawns of the other colour", bishops_of_game, "4k3/8/8/3p4/3P1p2/5P2/8/1B2K3", {-4 + 1 + 1 - 3, -2 + 4 + 4 + 2 - 8}, "a-5"},
    PairRow{"a held pawn on d5", bishops_of_game, "4k3/8/3p4/3P4/8/8/8/1B2K3", {-4 + 1 + 1 - 3, -2 + 4 + 4 + 2 - 8}, "a-5"},
    PairRow{"pawns held by own pieces", bishops_of_game, "4k3/8/8/2p5/2P5/4R3/4P3/1B2K3 b - - 0 1", {-4 + 1 + 1 - 3 - 8 - 15, -2 + 4 + 4 + 2 - 8 - 10 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"a pawn that may not step", bishops_of_game, "4k3/8/3p4/8/4P3/8/8/1B2K3", {-4 - 10 - 8 - 15, -2 + 2 - 30 - 10 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"a pawn that may step", bishops_of_game, "4k3/8/8/8/4P3/8/8/1B2K3", {-4 - 10, -2 + 2 - 30}, "a-5"},
    PairRow{"bad without a square", bishops_of_game, "4k3/8/8/4p3/4P3/1P6/B7/4K3", {3 - 24 - 30 - 15, 6 - 38 - 37 - 17}, "pc-12 cc-10 a-5"},
    PairRow{"on d2 behind e3", bishops_of_game, "4k3/8/8/8/8/4P3/3B4/4K3", {14 - 8 - 6, 18 + 2 - 20 - 20}, "pc-5 a-5"},
    PairRow{"on f1 behind d3", bishops_of_game, "4k3/8/8/8/8/3P4/8/4KB2", {-8 - 10 - 6, -4 - 30 - 20}, "pc-5 a-5"},
    PairRow{"on e2 behind d3", bishops_of_game, "4k3/8/8/8/8/3P4/4B3/4K3", {14 - 8 - 6, 18 + 2 - 20 - 20}, "pc-5 a-5"},
    PairRow{"on e2 behind an enemy pawn", bishops_of_game, "4k3/8/8/8/8/3p4/4B3/4K3", {14 - 8, 18 + 2 - 20}, "a-5"},
    PairRow{"on c1 behind d2 and e3", bishops_of_game, "4k3/8/8/8/8/4P3/3P4/2B1K3", {-8 - 16 - 6, -4 - 32 - 20}, "pc-5 a-5"},
    PairRow{"on f1 behind its queen", bishops_of_game, "4k3/8/8/8/8/8/4Q3/4KB2 b - - 0 1", {-8 - 10 - 8, -4 - 30 - 18}, "pc-3 a-5"},
    PairRow{"on f1 behind its king", bishops_of_game, "4k3/8/8/8/8/8/4K3/5B2", {-8 - 10 - 8, -4 - 30 - 18}, "pc-3 a-5"},
    PairRow{"on f1 before an enemy knight", bishops_of_game, "4k3/8/8/8/8/8/4n3/4KB2", {-8 - 10, -4 - 30}, "a-5"},
    PairRow{"on c1 with d3", bishops_of_game, "4k3/8/8/8/8/3P4/8/2B1K3", {-8 + 1 - 3, -4 + 4 - 8}, "a-5"},
    PairRow{"on d3 behind e4", bishops_of_game, "4k3/8/8/8/4P3/3B4/8/4K3", {16 + 1 - 3, 24 + 4 - 8 - 5}, "pc-1 a-5"},
    PairRow{"on d3 behind d4", bishops_of_game, "4k3/8/8/8/3P4/3B4/8/4K3", {16 + 1 + 1, 24 + 4 + 6 + 2 - 2}, "a-5"},
    PairRow{"bad on e3 behind d4", bishops_of_game, "4k3/8/8/3p4/3P4/4B3/8/4K3", {16 + 1 - 3 - 8 - 3 - 15, 24 + 4 - 8 - 10 - 6 - 17}, "pc-14 cc-10 a-5"},
    PairRow{"trapped on h7 for good", bishops_of_game, "4k3/5p1B/6p1/8/8/8/8/4K3", {-2 - 24 - 180, 4 + 2 - 38 - 180 - 2}, "a-5"},
    PairRow{"trapped on a7", bishops_of_game, "4k3/B2p4/1p6/8/8/8/8/4K3", {-2 - 24 - 110, 4 + 2 - 38 - 110}, "a-5"},
    PairRow{"on a7 behind its own pawn", bishops_of_game, "4k3/B7/1P6/8/8/8/8/4K3", {-2 - 24, 4 + 2 - 38}, "a-5"},
    PairRow{"on a7 before a knight", bishops_of_game, "4k3/B7/1n6/8/8/8/8/4K3", {-2 - 16, 4 + 2 - 32}, "a-5"},
    PairRow{"on a6 it is not trapped", bishops_of_game, "4k3/8/B7/1p6/8/8/8/4K3", {4 - 16, 8 + 2 - 32}, "a-5"},
    PairRow{"defended pawns of its colour", bishops_of_game, "4k3/1p4p1/2p2p2/8/8/3B4/8/4K3", {18, 34 - 2}, "a-5"},
    PairRow{"two of one colour", bishops_of_game, "4k3/8/8/8/8/3B4/8/4KB2", {-8 - 8 + 18, -4 + 2 - 20 + 34}, "a-5"},
    PairRow{"pair and openness 3", bishops_of_game, "4k3/8/8/8/8/3BB3/8/4K3", {36 + 2, 68 + 5}, "a10", Open<3>},
    PairRow{"pair and openness 4", bishops_of_game, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 5, 68 + 2}, "pc1 a10", Open<4>},
    PairRow{"pair and openness 7", bishops_of_game, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 5, 68 + 2}, "pc1 a10", Open<7>},
    PairRow{"pair and openness 8", bishops_of_game, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 7, 68 - 2}, "pc2 cc1 a10", Open<8>},
    PairRow{"pair and openness 11", bishops_of_game, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 7, 68 - 2}, "pc2 cc1 a10", Open<11>},
    PairRow{"pair and openness 12", bishops_of_game, "4k3/8/8/8/8/3BB3/8/4K3", {36 - 10, 68 - 5}, "pc3 cc1 a10", Open<12>},
    PairRow{"pair with a bad one", bishops_of_game, "4k3/8/8/4p3/4P3/4B3/8/1B2K3", {-4 - 10 - 8 + 18 - 7, -2 + 2 - 30 - 10 + 34 - 2}, "pc-6 cc-5 a10", Open<8>},
    PairRow{"pair against two defended pawns", bishops_of_game, "4k3/1p4p1/2p2p2/8/8/3BB3/8/4K3", {36 - 7, 68 - 2 - 4}, "pc1 cc1 a10", Open<8>},
    PairRow{"pair against three", bishops_of_game, "4k3/1p4p1/2p2p2/3p4/8/3BB3/8/4K3", {36 - 7, 68 - 2 - 6}, "pc1 cc1 a10", Open<8>}), RowName<PairRow>);
// clang-format on

}  // namespace
