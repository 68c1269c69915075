#include "evaluation/pawns/pawns_and_pieces.h"

#include <gtest/gtest.h>

#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

class PawnsAndPieces : public testing::TestWithParam<PairRow> {};
TEST_P(PawnsAndPieces, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Majority, PawnsAndPieces, testing::Values(
    PairRow{"queen side, king far", majority_king, "6k1/pp6/8/8/8/8/PPP5/4K3", {20, 7}, "pq2 a12"},
    PairRow{"queen side, king on e", majority_king, "4k3/pp6/8/8/8/8/PPP5/4K3", {20, 7}, "pq2 a12"},
    PairRow{"queen side, king near", majority_king, "3k4/pp6/8/8/8/8/PPP5/4K3", {0, 0}},
    PairRow{"four against three, king near", majority_king, "3k4/ppp5/8/8/8/8/PPPP4/4K3", {5, 14}, "pq5 a20"},
    PairRow{"king side, king far", majority_king, "1k6/6pp/8/8/8/8/5PPP/4K3", {20, 7}, "pk2 a12"},
    PairRow{"king side, king near", majority_king, "6k1/6pp/8/8/8/8/5PPP/4K3", {0, 0}},
    PairRow{"king side, four against three", majority_king, "6k1/5ppp/8/8/8/8/4PPPP/4K3", {5, 14}, "pk5 a20"},
    PairRow{"that of the enemy", majority_king, "6k1/ppp5/8/8/8/8/PP6/4K3", {0, 0}},
    PairRow{"king side, king on d8", majority_king, "3k4/7p/8/8/8/8/6PP/4K3", {20, 7}, "pk2 a12"},
    PairRow{"king side, king on e8", majority_king, "4k3/7p/8/8/8/8/6PP/4K3", {0, 0}},
    PairRow{"queen side, king on a1", majority_king, "8/p7/8/8/8/8/PP6/k3K3", {0, 0}},
    PairRow{"queen side, king on h1", majority_king, "8/p7/8/8/8/8/PP6/4K2k", {20, 7}, "pq2 a12"},
    PairRow{"four to three, king far", majority_king, "7k/ppp5/8/8/8/8/PPPP4/4K3", {20, 7}, "pq2 a12"},
    PairRow{"four to three with e2, king near", majority_king, "3k4/ppp5/8/8/8/8/PP1PP3/4K3", {5, 14}, "pq5 a20"},
    PairRow{"four to two, king near", majority_king, "k7/1p6/8/8/8/8/PPP5/4K3", {0, 0}},
    PairRow{"one each way", majority_king, "3k4/p6p/8/8/8/8/PP4PP/4K3", {20, 7}, "pk2 a12"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Blocked, PawnsAndPieces, testing::Values(
    PairRow{"d2 by a knight", blocked_centre, "4k3/8/8/8/8/3N4/3P4/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"e2 by an enemy", blocked_centre, "4k3/8/8/8/8/4b3/4P3/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"e2 by a pawn", blocked_centre, "4k3/8/8/8/8/4P3/4P3/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"both", blocked_centre, "4k3/8/8/8/8/3NB3/3PP3/4K3", {-36, -56}, "pc-12 cc-8"},
    PairRow{"neither", blocked_centre, "4k3/8/8/8/8/2N5/3PP3/4K3", {0, 0}},
    PairRow{"c2 by a knight", blocked_centre, "4k3/8/8/8/8/2N5/2P5/4K3", {-8, -10}, "pc-2"},
    PairRow{"c2 behind a closed centre", blocked_centre, "4k3/8/8/3p4/3P4/2N5/2P5/4K3", {-25, -25}, "pc-4"},
    PairRow{"c2 behind half a centre", blocked_centre, "4k3/8/8/8/3P4/2N5/2P5/4K3", {-8, -10}, "pc-2"},
    PairRow{"c2 by a pawn", blocked_centre, "4k3/8/8/8/8/2P5/2P5/4K3", {0, 0}},
    PairRow{"c2 by an enemy", blocked_centre, "4k3/8/8/8/8/2n5/2P5/4K3", {0, 0}},
    PairRow{"e2 by the own king", blocked_centre, "4k3/8/8/8/8/4K3/4P3/8", {-18, -28}, "pc-6 cc-4"},
    PairRow{"d2 by an enemy pawn", blocked_centre, "4k3/8/8/8/8/3p4/3P4/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"d2 by an enemy queen", blocked_centre, "4k3/8/8/8/8/3q4/3P4/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"d2 with a knight on d4", blocked_centre, "4k3/8/8/8/3N4/8/3P4/4K3", {0, 0}},
    PairRow{"d3 by a knight", blocked_centre, "4k3/8/8/8/3N4/3P4/8/4K3", {0, 0}},
    PairRow{"c2 by the own king", blocked_centre, "4k3/8/8/8/8/2K5/2P5/8", {-8, -10}, "pc-2"},
    PairRow{"c2 by a rook in a closed centre", blocked_centre, "4k3/8/8/3p4/3P4/2R5/2P5/4K3", {-25, -25}, "pc-4"},
    PairRow{"c2 by a rook against d5", blocked_centre, "4k3/8/8/3p4/8/2R5/2P5/4K3", {-8, -10}, "pc-2"},
    PairRow{"c2 and d2", blocked_centre, "4k3/8/8/8/8/2NB4/2PP4/4K3", {-26, -38}, "pc-8 cc-4"},
    PairRow{"b2 and f2", blocked_centre, "4k3/8/8/8/8/1N3N2/1P3P2/4K3", {0, 0}}), RowName<PairRow>);

// 62 units are all pieces; a queen is 9, a rook 5.
INSTANTIATE_TEST_SUITE_P(QueenPawn, PawnsAndPieces, testing::Values(
    PairRow{"all pieces", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/RNBQKBNR", {0, 25 + 1}, "cc1"},
    PairRow{"59 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/RNBQKB1R", {0, 26}, "cc1"},
    PairRow{"58 units", queen_pawn_pieces, "qqq1k3/8/8/8/3P4/8/8/RNBQKBNR", {-6, 11}, "cc1"},
    PairRow{"49 units", queen_pawn_pieces, "1nbqk1n1/8/8/8/3P4/8/8/RNBQKBNR", {-6, 10 + 1}, "cc1"},
    PairRow{"48 units", queen_pawn_pieces, "rn1qk3/8/8/8/3P4/8/8/RNBQKBNR", {0, 1}, "cc1"},
    PairRow{"39 units", queen_pawn_pieces, "rn2k3/8/8/8/3P4/8/8/RNBQKBNR", {0, 1}, "cc1"},
    PairRow{"38 units", queen_pawn_pieces, "rnb1k1nr/8/8/8/3P4/8/8/RNB1K1NR", {-12, -3}, "cc1"},
    PairRow{"29 units", queen_pawn_pieces, "r3k2r/8/8/8/3P4/8/8/RNB1K1NR", {-12 , -3}, "cc1"},
    PairRow{"28 units", queen_pawn_pieces, "3qk3/8/8/8/3P4/8/8/R3KRQ1", {-18, -16}},
    PairRow{"bishop that defends", queen_pawn_pieces, "3qk3/8/8/8/3P4/4B3/8/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop elsewhere", queen_pawn_pieces, "3qk3/8/8/8/3P4/8/8/2B1K3", {-18, -15}, "cc1"},
    PairRow{"bishop of the other colour", queen_pawn_pieces, "3qk3/8/8/8/3P4/3B4/8/4K3", {-18, -16}},
    PairRow{"rook on d1", queen_pawn_pieces, "3qk3/8/8/8/3P4/8/8/3RK3", {-12, -10}, "cc2"},
    PairRow{"rook on d3", queen_pawn_pieces, "3qk3/8/8/8/3P4/3R4/8/4K3", {-12, -10}, "cc2"},
    PairRow{"rook on c1", queen_pawn_pieces, "3qk3/8/8/8/3P4/8/8/2R1K3", {-18, -16}},
    PairRow{"both have one", queen_pawn_pieces, "3qk3/8/8/3p4/3P4/8/8/3RK3", {0, 0}, "cc-6"},
    PairRow{"none", queen_pawn_pieces, "3qk3/8/8/8/3PP3/8/8/3RK3", {0, 0}},
    PairRow{"59 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/RN1QKBNR", {0, 25}},
    PairRow{"58 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/QN1QK1NN", {-6, 10}},
    PairRow{"57 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/RN1QK1NN", {-6, 10}},
    PairRow{"49 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/Q2QK3", {-6, 10}},
    PairRow{"48 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/R2QK1N1", {0, 0}},
    PairRow{"39 units", queen_pawn_pieces, "rn1qk3/8/8/8/3P4/8/8/R2QK1NR", {0, 0}},
    PairRow{"38 units", queen_pawn_pieces, "r2qk2r/8/8/8/3P4/8/8/R2QK2R", {-12, -4}},
    PairRow{"29 units", queen_pawn_pieces, "r2qk3/8/8/8/3P4/8/8/R3K1RR", {-12, -4}},
    PairRow{"28 units", queen_pawn_pieces, "r2qk3/8/8/8/3P4/8/8/R2QK3", {-18, -16}},
    PairRow{"bishop on h8", queen_pawn_pieces, "4k2B/8/8/8/3P4/8/8/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop on a7", queen_pawn_pieces, "4k3/B7/8/8/3P4/8/8/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop on b2 behind a knight", queen_pawn_pieces, "4k3/8/8/8/3P4/2N5/1B6/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop on f8", queen_pawn_pieces, "4kB2/8/8/8/3P4/8/8/4K3", {-18, -15}, "cc1"},
    PairRow{"bishop on b5", queen_pawn_pieces, "6k1/8/8/1B6/3P4/8/8/5K2", {-18, -16}},
    PairRow{"bishop of the enemy", queen_pawn_pieces, "4k3/8/8/8/3P4/4b3/8/5K2", {-18, -16}},
    PairRow{"rook on d2", queen_pawn_pieces, "4k3/8/8/8/3P4/8/3R4/5K2", {-12, -10}, "cc2"},
    PairRow{"rooks on d1 and d3", queen_pawn_pieces, "4k3/8/8/8/3P4/3R4/8/3R1K2", {-12, -10}, "cc2"},
    PairRow{"rook on d5", queen_pawn_pieces, "4k3/8/8/3R4/3P4/8/8/5K2", {-18, -16}},
    PairRow{"the enemy's is no isolated one", queen_pawn_pieces, "4k3/8/2p5/3p4/3P4/8/8/4K3", {-18, -16}},
    PairRow{"the enemy's are doubled", queen_pawn_pieces, "4k3/8/3p4/3p4/3P4/8/8/4K3", {-18, -16}},
    PairRow{"both have one, with rooks and bishops", queen_pawn_pieces, "4k3/8/8/3p4/3P4/2B5/3R4/4K3", {0, 0}, "cc-6"},
    PairRow{"on d3", queen_pawn_pieces, "4k3/8/8/8/8/3P4/3R4/5K2", {0, 0}},
    PairRow{"beside e2", queen_pawn_pieces, "4k3/8/8/8/3P4/8/3RP3/5K2", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Passed, PawnsAndPieces, testing::Values(
    PairRow{"free on the fifth rank", passed_pieces, "6k1/8/8/4P3/8/8/8/6K1", {6, 8}, "pc1"},
    PairRow{"free on the fourth rank", passed_pieces, "6k1/8/8/8/4P3/8/8/6K1", {0, 0}},
    PairRow{"own rook behind", passed_pieces, "6k1/8/8/8/4P3/8/8/4R1K1", {5, 5}},
    PairRow{"own rook ahead", passed_pieces, "4R3/6k1/8/8/4P3/8/8/6K1", {0, 0}},
    PairRow{"enemy rook behind", passed_pieces, "6k1/8/8/8/4P3/8/8/4r1K1", {-4, -2}},
    PairRow{"enemy rook ahead", passed_pieces, "4r1k1/8/8/8/4P3/8/8/6K1", {-2, 0}},
    PairRow{"enemy rooks on both sides", passed_pieces, "4r1k1/8/8/8/4P3/8/8/4r1K1", {-4, -2}},
    PairRow{"knight in front", passed_pieces, "6k1/8/4n3/4P3/8/8/8/6K1", {-12, -10}, "Cc2"},
    PairRow{"bishop in front", passed_pieces, "6k1/8/4b3/4P3/8/8/8/6K1", {-10, -8}, "Cc2"},
    PairRow{"rook in front", passed_pieces, "6k1/8/4r3/4P3/8/8/8/6K1", {-9 - 2, -7}, "Cc2"},
    PairRow{"queen in front", passed_pieces, "6k1/8/4q3/4P3/8/8/8/6K1", {-6, -5}, "Cc2"},
    PairRow{"king in front", passed_pieces, "8/8/4k3/4P3/8/8/8/6K1", {-15, -12}, "Cc2"},
    PairRow{"knight on the last rank", passed_pieces, "n5k1/P7/8/8/8/8/8/6K1", {-72, -83}, "Cq2"},
    PairRow{"knight before the sixth rank", passed_pieces, "6k1/n7/P7/8/8/8/8/6K1", {-28, -30}, "Cq2"},
    PairRow{"knight before the second rank", passed_pieces, "6k1/8/8/8/8/n7/P7/6K1", {-2, -3}, "Cq2"},
    PairRow{"knight before the third rank", passed_pieces, "6k1/8/8/8/n7/P7/8/6K1", {-4, -4}, "Cq2"},
    PairRow{"knight before the fourth rank", passed_pieces, "6k1/8/8/n7/P7/8/8/6K1", {-6, -5}, "Cq2"},
    PairRow{"own piece in front", passed_pieces, "6k1/8/4N3/4P3/8/8/8/6K1", {0, 0}},
    PairRow{"not passed", passed_pieces, "6k1/4p3/8/4P3/8/8/8/4R1K1", {0, 0}},
    PairRow{"by file and rank e5", passed, "6k1/8/8/4P3/8/8/8/6K1", {18, 12}},
    PairRow{"by file and rank a7", passed, "6k1/P7/8/8/8/8/8/6K1", {122, 122}},
    PairRow{"by file and rank b2", passed, "6k1/8/8/8/8/8/1P6/6K1", {10, 5}},
    PairRow{"by file and rank c3", passed, "6k1/8/8/8/8/2P5/8/6K1", {10, 6}},
    PairRow{"by file and rank d4", passed, "6k1/8/8/8/3P4/8/8/6K1", {11, 6}},
    PairRow{"by file and rank f6", passed, "6k1/8/5P2/8/8/8/8/6K1", {48, 40}},
    PairRow{"by file and rank g5", passed, "k7/8/8/6P1/8/8/8/6K1", {30, 20}},
    PairRow{"by file and rank h6", passed, "k7/8/7P/8/8/8/8/6K1", {48, 40}},
    PairRow{"of a file the foremost", passed, "6k1/8/P7/8/P7/8/8/6K1", {48, 40}},
    PairRow{"rook behind h5", passed_pieces, "6k1/8/8/7P/8/8/8/K6R", {5 + 6, 5 + 8}, "pk1"},
    PairRow{"c6 is free", passed_pieces, "6k1/8/2P5/8/8/8/8/K7", {6, 8}, "pc1"},
    PairRow{"f5 is free", passed_pieces, "k7/8/8/5P2/8/8/8/K7", {6, 8}, "pc1"},
    PairRow{"b7 is free", passed_pieces, "6k1/1P6/8/8/8/8/8/K7", {6, 8}, "pq1"},
    PairRow{"knight before c6", passed_pieces, "6k1/2n5/2P5/8/8/8/8/K7", {-28, -30}, "Cc2"},
    PairRow{"bishop before c6", passed_pieces, "6k1/2b5/2P5/8/8/8/8/K7", {-24, -26}, "Cc2"},
    PairRow{"king before c6", passed_pieces, "8/2k5/2P5/8/8/8/8/K7", {-35, -37}, "Cc2"},
    PairRow{"queen before g7", passed_pieces, "k5q1/6P1/8/8/8/8/8/K7", {-36, -41}, "Ck2"},
    PairRow{"rook before g7", passed_pieces, "k5r1/6P1/8/8/8/8/8/K7", {-54 - 2, -62}, "Ck2"},
    PairRow{"king before g7", passed_pieces, "6k1/6P1/8/8/8/8/8/K7", {-90, -103}, "Ck2"},
    PairRow{"knight before g5", passed_pieces, "k7/8/6n1/6P1/8/8/8/K7", {-12, -10}, "Ck2"},
    PairRow{"knight before g4", passed_pieces, "k7/8/8/6n1/6P1/8/8/K7", {-6, -5}, "Ck2"},
    PairRow{"queen before b4", passed_pieces, "6k1/8/8/1q6/1P6/8/8/K7", {-3, -2}, "Cq2"},
    PairRow{"bishop before b3", passed_pieces, "6k1/8/8/8/1b6/1P6/8/K7", {-3, -3}, "Cq2"},
    PairRow{"bishop before b2", passed_pieces, "6k1/8/8/8/8/1b6/1P6/K7", {-1, -2}, "Cq2"},
    PairRow{"king before h2", passed_pieces, "8/8/8/8/8/7k/7P/K7", {-2, -3}, "Ck2"},
    PairRow{"own rook behind, enemy rook ahead", passed_pieces, "1r4k1/8/8/8/1P6/8/8/KR6", {3, 5}},
    PairRow{"own rook ahead of the foremost", passed_pieces, "6k1/1R6/8/1P6/8/8/8/K7", {6, 8}, "pq1"},
    PairRow{"own rook between two", passed_pieces, "6k1/8/8/1P6/8/1R6/1P6/K7", {5 + 6, 5 + 8}, "pq1"},
    PairRow{"two own rooks behind", passed_pieces, "6k1/8/8/8/1P6/1R6/1R6/K7", {5, 5}},
    PairRow{"own rook behind a knight", passed_pieces, "6k1/8/8/8/1P6/1N6/1R6/K7", {5, 5}},
    PairRow{"enemy rook behind a knight", passed_pieces, "6k1/8/8/8/6P1/6N1/6r1/K7", {-4, -2}},
    PairRow{"enemy rook far ahead", passed_pieces, "k5r1/6n1/8/8/6P1/8/8/K7", {-2, 0}},
    PairRow{"one on each wing", passed_pieces, "4k3/8/8/P6P/8/8/8/K6R", {5 + 12, 5 + 16}, "pq1 pk1"},
    PairRow{"rook on the next file", passed_pieces, "k7/8/8/8/6P1/8/8/K6R", {0, 0}}), RowName<PairRow>);
// clang-format on

}  // namespace
