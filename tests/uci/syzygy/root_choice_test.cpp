#include "uci/syzygy/root_choice.h"

#include <gtest/gtest.h>

namespace {

using VorkaUci::BestTableMoves;
using Moves = std::vector<Move>;

TEST(RootChoice, OfNothingIsNothing) { EXPECT_EQ(BestTableMoves({}), Moves{}); }

TEST(RootChoice, OfWinsTakesTheShortest) {
    EXPECT_EQ(BestTableMoves({{1, 4, 9}, {2, 4, 3}, {3, 2, 0}, {4, 4, 3}, {5, 0, 1}}), (Moves{2, 4}));
}

TEST(RootChoice, OfLossesTakesTheLongest) { EXPECT_EQ(BestTableMoves({{1, 0, 9}, {2, 0, 30}, {3, 0, 4}}), Moves{2}); }

TEST(RootChoice, OfDrawsTakesAll) { EXPECT_EQ(BestTableMoves({{1, 2, 9}, {2, 0, 30}, {3, 2, 0}}), (Moves{1, 3})); }

TEST(RootChoice, PrefersAWinThatIsADrawByTheFiftyMovesToADraw) {
    EXPECT_EQ(BestTableMoves({{1, 2, 0}, {2, 3, 120}, {3, 3, 130}, {4, 1, 110}}), Moves{2});
    EXPECT_EQ(BestTableMoves({{1, 1, 101}, {2, 0, 30}, {3, 1, 120}}), Moves{3});
}

}  // namespace
