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
    PairRow{"that of the enemy", majority_king, "6k1/ppp5/8/8/8/8/PP6/4K3", {0, 0}}), RowName<PairRow>);

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
    PairRow{"c2 by an enemy", blocked_centre, "4k3/8/8/8/8/2n5/2P5/4K3", {0, 0}}), RowName<PairRow>);

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
    PairRow{"none", queen_pawn_pieces, "3qk3/8/8/8/3PP3/8/8/3RK3", {0, 0}}), RowName<PairRow>);

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
    PairRow{"of a file the foremost", passed, "6k1/8/P7/8/P7/8/8/6K1", {48, 40}}), RowName<PairRow>);
// clang-format on

}  // namespace
