#include "selfplay/pair_scores.h"

#include <gtest/gtest.h>

namespace {

TEST(PairScores, FirstPlayerTurnsItsColour) {
    EXPECT_EQ(HalfPointsOfFirst(0, GameResult::white_wins), 2);
    EXPECT_EQ(HalfPointsOfFirst(1, GameResult::white_wins), 0);
    EXPECT_EQ(HalfPointsOfFirst(0, GameResult::black_wins), 0);
    EXPECT_EQ(HalfPointsOfFirst(1, GameResult::black_wins), 2);
    EXPECT_EQ(HalfPointsOfFirst(0, GameResult::draw), 1);
    EXPECT_EQ(HalfPointsOfFirst(1, GameResult::draw), 1);
}

TEST(PairScores, CountWholePairsInTheirOrder) {
    PairScores scores;
    scores.Take(3, GameResult::black_wins);
    scores.Take(2, GameResult::draw);
    EXPECT_FALSE(scores.CountNext()) << "pair 1 is whole, and waits for pair 0";
    scores.Take(0, GameResult::white_wins);
    EXPECT_FALSE(scores.CountNext());
    scores.Take(1, GameResult::white_wins);
    EXPECT_TRUE(scores.CountNext());
    EXPECT_EQ(scores.pairs(), (PairCounts{0, 0, 1, 0, 0}));
    EXPECT_EQ(scores.games(), (GameCounts{1, 0, 1}));
    EXPECT_TRUE(scores.CountNext());
    EXPECT_FALSE(scores.CountNext());
    EXPECT_EQ(scores.pairs(), (PairCounts{0, 0, 1, 1, 0}));
    EXPECT_EQ(scores.games(), (GameCounts{2, 1, 1}));
    EXPECT_EQ(scores.pairs_counted(), 2U);
}

}  // namespace
