#include <gtest/gtest.h>

#include "support/prepared_terms.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

// Queens of the opening and the middle game: every rule where it holds and where it just does not.

namespace {

using namespace sided;

class Queens : public testing::TestWithParam<PairRow> {};
TEST_P(Queens, GiveTheirPairAndPoints) { ExpectPair(GetParam()); }

// clang-format off
// In the sums stand, in this order, what the pawns are worth to the piece, its square, and its other rules.
INSTANTIATE_TEST_SUITE_P(Opening, Queens, testing::Values(
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
    PairRow{"on the seventh rank with the king out", opening_queens, "8/4Q3/7k/8/8/8/8/6K1", {-5, -2}, "pc16"},
    PairRow{"a knight pinned by a bishop", opening_queens, "6k1/8/8/7b/8/5N2/8/3Q2K1", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"two knights before a bishop", opening_queens, "6k1/8/8/7b/8/5N2/4N3/3Q2K1", {4, 4}, "pc16"},
    PairRow{"two men pinned", opening_queens, "3r2k1/8/8/7b/3P4/5N2/8/3Q2K1", {4 - 60, 4 - 60}, "pc16"},
    PairRow{"pinned by a queen", opening_queens, "3q2k1/8/8/8/8/3P4/8/3Q2K1", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"a bishop pins nothing on a file", opening_queens, "3b2k1/8/8/8/8/3P4/8/3Q2K1", {4, 4}, "pc16"},
    PairRow{"an enemy man is not pinned", opening_queens, "3r2k1/8/8/8/8/3p4/8/3Q2K1", {4, 4}, "pc16"},
    PairRow{"the king pinned", opening_queens, "3r2k1/8/8/8/8/8/3K4/3Q4", {4 - 30, 4 - 30}, "pc16"},
    PairRow{"on the second rank nobody counts squares", opening_queens, "6k1/8/8/8/8/8/4Q3/6K1", {8, 8}, "pc16", EnemyAttacksAll},
    PairRow{"no free square on the third", opening_queens, "6k1/8/8/8/8/4Q3/8/6K1 b - - 0 1", {1 - 5 - 70, 2 - 2 - 110}, "cc-10", EnemyAttacksAll},
    PairRow{"no free square on the left", opening_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 70, -2 - 110}, "pc-10 pq10 cq-10", EnemyAttacksAll},
    PairRow{"one free square on the left", opening_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 40, -2 - 70}, "pc-6 pq10 cq-8", EnemyLeaves<b1>},
    PairRow{"two free squares", opening_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5, -2}, "pc6 pq10", EnemyLeaves<b1, b4>},
    PairRow{"two free squares off the first rank", opening_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 8, -2 - 10}, "pc6 pq10 cq-2", EnemyLeaves<b2, b3>},
    PairRow{"two free squares off both ranks", opening_queens, "6k1/8/8/1Q6/8/8/8/4K3", {-5 - 18, -2 - 30}, "pc6 pq10 cq-4", EnemyLeaves<b3, b4>},
    PairRow{"a man to take is no free square", opening_queens, "1n4k1/8/8/1Q6/8/8/8/4K3", {-5 - 70, -2 - 110}, "pc-10 pq10 cq-10", EnemyLeaves<b8>},
    PairRow{"on the seventh", opening_queens, "2k5/7Q/8/8/8/8/8/4K3", {-10 - 5 + 10, -12 - 2 + 18}, "pc12 pk10"},
    PairRow{"on the seventh with the king there", opening_queens, "8/2k4Q/8/8/8/8/8/4K3 b - - 0 1", {-10 - 5 + 10, -12 - 2 + 18}, "pc12 pk10"},
    PairRow{"on the sixth", opening_queens, "2k5/8/6Q1/8/8/8/8/4K3", {-5, -2}, "pc6 pk10"}), RowName<PairRow>);

// The distance to a king that can't castle any more counts too.
// In the sums stand its square, that it is out, and the distance to a king that can't castle any more.
INSTANTIATE_TEST_SUITE_P(MiddleGame, Queens, testing::Values(
    PairRow{"four squares from the king", middle_game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4, 4 + 8 - 2 - 12}, "pc18 pk10 Ck-4"},
    PairRow{"the king may castle", middle_game_queens, "r3k3/8/8/8/4Q3/8/8/6K1 b q - 0 1", {4 - 5, 4 - 2 + 8}, "pc22 Cc-4"},
    PairRow{"one square from the king", middle_game_queens, "6k1/6Q1/8/8/8/8/8/6K1 b - - 0 1", {-4 - 5 - 1 + 15, -6 + 8 - 2 - 3 + 25}, "pc6 pk42 Ck-4"},
    PairRow{"two squares", middle_game_queens, "6k1/8/6Q1/8/8/8/8/6K1 b - - 0 1", {1 - 5 - 2, 1 + 8 - 2 - 6}, "pc6 pk30 Ck-4"},
    PairRow{"three squares", middle_game_queens, "6k1/8/8/3Q4/8/8/8/6K1 b - - 0 1", {3 - 5 - 3, 4 + 8 - 2 - 9}, "pc18 pk16 Ck-4"},
    PairRow{"seven squares", middle_game_queens, "6k1/8/8/8/8/8/8/4Q1K1", {-5 - 7, -6 - 21}, "pc18"},
    PairRow{"no free square", middle_game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4 - 70, 4 + 8 - 2 - 12 - 110}, "pc2 cc-10 pk10 Ck-4", EnemyAttacksAll},
    PairRow{"kept from the first rank", middle_game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4 - 8, 4 + 8 - 2 - 12 - 14}, "pc18 cc-1 pk10 Ck-4", EnemyAttacksHome<1>},
    PairRow{"kept from both ranks", middle_game_queens, "6k1/8/8/8/4Q3/8/8/6K1", {4 - 5 - 4 - 12, 4 + 8 - 2 - 12 - 20}, "pc18 cc-4 pk10 Ck-4", EnemyAttacksHome<2>},
    PairRow{"it leaves its king", middle_game_queens, "6k1/8/Q7/8/8/8/8/7K", {0 - 5 - 6 - 8, 1 - 2 - 18 - 20}, "pc6 pq12 pk1 ck-16"},
    PairRow{"one square from the king and eight steps from its own", middle_game_queens, "6k1/7Q/8/8/8/8/8/5K2 b - - 0 1", {-4 - 5 - 1 + 15, -8 - 2 - 3 + 8 + 25}, "pc6 pk42 Ck-4"},
    PairRow{"one square from the king and nine steps from its own", middle_game_queens, "6k1/7Q/8/8/8/8/8/4K3 b - - 0 1", {-4 - 5 - 1 + 15 - 8, -8 - 2 - 3 + 8 + 25 - 20}, "pc6 pk42 Ck-4 cc-16"},
    PairRow{"two squares from the king", middle_game_queens, "6k1/8/7Q/8/8/8/8/5K2", {-5 - 2, 1 - 2 - 6 + 8}, "pc6 pk30 Ck-4"},
    PairRow{"three squares from the king", middle_game_queens, "6k1/8/8/7Q/8/8/8/5K2", {1 - 5 - 3, 1 - 2 - 9 + 8}, "pc6 pk28 Ck-4"},
    PairRow{"five squares from the king", middle_game_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5, 2 - 2 - 15}, "pc6 pq12 pk2"},
    PairRow{"ten steps from its own king", middle_game_queens, "6k1/8/8/1Q6/8/8/8/7K", {2 - 5 - 5 - 8, 2 - 2 - 15 - 20}, "pc6 pq12 pk2 ck-16"},
    PairRow{"nine steps but with an eye on its side", middle_game_queens, "6k1/8/8/1Q6/8/8/8/6K1", {2 - 5 - 5, 2 - 2 - 15}, "pc6 pq12 pk2"},
    PairRow{"ten steps from its king on b1", middle_game_queens, "k7/8/8/7Q/8/8/8/1K6", {1 - 5 - 7 - 8, 1 - 2 - 21 - 20}, "pc6 pk12 cq-16"},
    PairRow{"eleven steps from its king on d1", middle_game_queens, "7Q/8/k7/8/8/8/8/3K4", {-4 - 5 - 7 - 8, -6 - 2 - 21 - 20}, "pc6 pk12 cc-16"},
    PairRow{"eleven steps from its king on e1", middle_game_queens, "Q7/8/6k1/8/8/8/8/4K2R", {-4 - 5 - 6 - 8, -6 - 2 - 18 - 20}, "pc6 pq12 pk1 cc-16"},
    PairRow{"while its king may castle", middle_game_queens, "Q7/8/6k1/8/8/8/8/4K2R w K - 0 1", {-4 - 5 - 6, -6 - 2 - 18}, "pc6 pq12 pk1"},
    PairRow{"a square beside the king", middle_game_queens, "1k6/8/8/8/Q7/8/8/4K3", {1 - 5 - 4, 1 - 2 + 8 - 12}, "pc6 pq22 Cq-4"},
    PairRow{"a man to take is a free square", middle_game_queens, "1n4k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5 - 40, 2 - 2 - 15 - 70}, "pc-6 pq12 pk2 cq-8", EnemyLeaves<b8>},
    PairRow{"an own man is none", middle_game_queens, "6k1/8/8/1Q6/8/1N6/8/4K3", {2 - 5 - 5 - 70, 2 - 2 - 15 - 110}, "pc-10 pq12 pk2 cq-10", EnemyLeaves<b3>},
    PairRow{"two free squares", middle_game_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5, 2 - 2 - 15}, "pc6 pq12 pk2", EnemyLeaves<b1, b4>},
    PairRow{"two free squares off the first rank", middle_game_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5 - 8, 2 - 2 - 15 - 14}, "pc6 pq12 pk2 cq-1", EnemyLeaves<b2, b3>},
    PairRow{"two free squares off both ranks", middle_game_queens, "6k1/8/8/1Q6/8/8/8/4K3", {2 - 5 - 5 - 12, 2 - 2 - 15 - 20}, "pc6 pq12 pk2 cq-4", EnemyLeaves<b3, b4>},
    PairRow{"on the second rank nobody counts squares", middle_game_queens, "6k1/8/8/8/8/8/1Q6/4K3", {-6, 8 - 18}, "pc6 pq12 pk5 Ck-4", EnemyAttacksAll},
    PairRow{"the king may castle", middle_game_queens, "4k2r/8/8/8/1Q6/8/8/4K3 w k - 0 1", {2 - 5, 2 - 2 + 8}, "pc10 pq12 Cc-4"},
    PairRow{"the king may castle no more", middle_game_queens, "4k2r/8/8/8/1Q6/8/8/4K3", {2 - 5 - 4, 2 - 2 + 8 - 12}, "pc16 pq12 Cc-4"},
    PairRow{"on the seventh", middle_game_queens, "6k1/Q7/8/8/8/8/8/4K3", {-4 - 5 - 6 + 15, -8 - 2 + 8 - 18 + 25}, "pc6 pq12 pk13 Ck-4"},
    PairRow{"on the seventh with the king out", middle_game_queens, "8/Q7/6k1/8/8/8/8/4K3", {-4 - 5 - 6, -8 - 2 + 8 - 18}, "pc6 pq12 pk5 Ck-4"},
    PairRow{"a pawn pinned to it", middle_game_queens, "3r2k1/8/8/8/8/3P4/8/3Q2K1", {-6 - 30 - 7, -6 - 30 - 21}, "pc18"},
    PairRow{"nothing pinned to it", middle_game_queens, "3r2k1/8/8/8/3N4/3P4/8/3Q2K1", {-6 - 7, -6 - 21}, "pc18"}), RowName<PairRow>);
// clang-format on

}  // namespace
