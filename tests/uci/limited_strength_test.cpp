#include "uci/limited_strength.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace {

using VorkaUci::LimitedStrength;

/// A search that shows lines, each with a move of its own.
class LimitedStrengthTest : public testing::Test {
  protected:
    void Begin(int elo) {
        limits_ = {};
        strength_.Begin(elo, limits_);
    }
    void Show(int line, Move move, int score) {
        SearchInfo info;
        info.line = line;
        info.score = score;
        info.principal_variation = {{move, ""}};
        strength_.Note(info);
    }
    /// What is chosen in a hundred tries.
    std::set<Move> Choices() {
        std::set<Move> choices;
        for (int i = 0; i < 100; ++i) choices.insert(strength_.Choose(chance_));
        return choices;
    }

    LimitedStrength strength_;
    SearchLimits limits_;
    std::mt19937_64 chance_{1};
};

TEST_F(LimitedStrengthTest, SearchesFewNodesAndSeveralLines) {
    Begin(1000);
    EXPECT_EQ(limits_.max_nodes, 400U);
    EXPECT_EQ(limits_.lines, 4);
    SearchInfo info;
    info.nodes = 399;
    EXPECT_FALSE(strength_.HasSpentNodes(info));
    info.nodes = 400;
    EXPECT_TRUE(strength_.HasSpentNodes(info));
}

TEST_F(LimitedStrengthTest, KeepsNarrowerLimits) {
    limits_ = {.max_nodes = 20, .lines = 8};
    strength_.Begin(1000, limits_);
    EXPECT_EQ(limits_.max_nodes, 20U);
    EXPECT_EQ(limits_.lines, 8);
}

TEST_F(LimitedStrengthTest, WithoutALineHasNoMove) {
    Begin(1000);
    EXPECT_EQ(strength_.Choose(chance_), INVALID);
}

TEST_F(LimitedStrengthTest, ChoosesAmongTheLinesOfAnIteration) {
    Begin(1000);
    Show(0, 11, 50);
    Show(1, 12, 40);
    Show(2, 13, -500);
    EXPECT_EQ(Choices(), (std::set<Move>{11, 12}));
}

TEST_F(LimitedStrengthTest, ABetterLineTakesThePlaceOfTheOneBefore) {
    Begin(1000);
    Show(0, 11, 50);
    Show(0, 12, 60);
    EXPECT_EQ(Choices(), std::set<Move>{12});
}

TEST_F(LimitedStrengthTest, AnIterationThatWasCutOffGivesWayToTheOneBefore) {
    Begin(1000);
    Show(0, 11, 50);
    Show(1, 12, 40);
    Show(0, 13, 45);
    EXPECT_EQ(Choices(), (std::set<Move>{11, 12}));
}

TEST_F(LimitedStrengthTest, ForgetsTheSearchBefore) {
    Begin(1000);
    Show(0, 11, 50);
    Show(1, 12, 40);
    Begin(1400);
    EXPECT_EQ(strength_.Choose(chance_), INVALID);
    Show(0, 13, 90);
    Show(1, 14, 30);
    EXPECT_EQ(Choices(), std::set<Move>{13});
}

TEST_F(LimitedStrengthTest, TheStrongestLeavesTheChoiceToTheSearch) {
    Begin(2000);
    EXPECT_EQ(limits_.lines, 1) << "other lines would cost nodes";
    EXPECT_EQ(limits_.max_nodes, 500000U);
    Show(0, 13, 10);
    EXPECT_EQ(Choices(), std::set<Move>{INVALID});
}

}  // namespace
