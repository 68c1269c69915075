#include "selfplay/statistics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

#include "support/row_name.h"

namespace {

// --- Strength ---

struct StrengthRow {
    std::string_view name;
    PairCounts counts;
    double score, score_error, elo, elo_error, normalized, superiority;
};

// Worked out by a script of its own from the definitions.
constexpr StrengthRow strength_rows[] = {
    {"a lead", {10, 80, 200, 120, 20}, 0.5348837, 0.0201158, 24.279136, 14.054048, 40.267823, 0.9996617},
    {"level", {1, 4, 10, 4, 1}, 0.5, 0.0979982, 0, 68.988751, 0, 0.5},
    {"few games", {2, 3, 4, 2, 0}, 0.3863636, 0.1458949, -80.365937, 111.120750, -113.080651, 0.0634302},
};

class StrengthOfPairs : public testing::TestWithParam<StrengthRow> {};

TEST_P(StrengthOfPairs, IsWhatTheDefinitionsGive) {
    const Strength strength = StrengthOf(GetParam().counts);
    EXPECT_NEAR(strength.score.value, GetParam().score, 1e-7);
    EXPECT_NEAR(strength.score.error.value(), GetParam().score_error, 1e-7);
    EXPECT_NEAR(strength.elo.value, GetParam().elo, 1e-5);
    EXPECT_NEAR(strength.elo.error.value(), GetParam().elo_error, 1e-5);
    EXPECT_NEAR(strength.normalized_elo.value().value, GetParam().normalized, 1e-5);
    EXPECT_NEAR(strength.superiority, GetParam().superiority, 1e-7);
}

INSTANTIATE_TEST_SUITE_P(Statistics, StrengthOfPairs, testing::ValuesIn(strength_rows), RowName<StrengthRow>);

TEST(Statistics, TurnedResultsTurnTheStrength) {
    const Strength strength = StrengthOf({3, 20, 41, 25, 9});
    const Strength turned = StrengthOf({9, 25, 41, 20, 3});
    EXPECT_NEAR(turned.elo.value, -strength.elo.value, 1e-9);
    EXPECT_NEAR(*turned.elo.error, *strength.elo.error, 1e-9);
    EXPECT_NEAR(turned.superiority, 1 - strength.superiority, 1e-12);
}

TEST(Statistics, ErrorIsThatOfDrawingPairsAgain) {
    // The slow way: as many pairs are drawn from those played, again and again, and the spread of their scores is
    // taken.
    constexpr PairCounts counts{12, 61, 140, 70, 17};
    std::vector<int> pairs;
    for (std::size_t i = 0; i < counts.size(); ++i) pairs.insert(pairs.end(), counts[i], static_cast<int>(i));
    std::mt19937 random(14);
    constexpr int samples = 20000;
    double sum = 0, squares = 0;
    for (int sample = 0; sample < samples; ++sample) {
        std::uint64_t half_points = 0;
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            half_points += static_cast<std::uint64_t>(pairs[random() % pairs.size()]);
        }
        const double score = static_cast<double>(half_points) / 4 / static_cast<double>(pairs.size());
        sum += score;
        squares += score * score;
    }
    const double mean = sum / samples;
    const double deviation = std::sqrt(squares / samples - mean * mean);
    EXPECT_NEAR(*StrengthOf(counts).score.error, 1.96 * deviation, 0.02 * 1.96 * deviation) << "of a fixed seed";
}

TEST(Statistics, NoErrorIsKnownWhileAllPairsEndAlike) {
    for (const PairCounts& counts : {PairCounts{0, 0, 1, 0, 0}, PairCounts{0, 0, 0, 0, 7}, PairCounts{5, 0, 0, 0, 0}}) {
        const Strength strength = StrengthOf(counts);
        EXPECT_EQ(strength.elo.error, std::nullopt);
        EXPECT_FALSE(strength.normalized_elo.has_value());
        EXPECT_TRUE(std::isfinite(strength.elo.value));
    }
    EXPECT_EQ(StrengthOf({0, 0, 3, 0, 0}).superiority, 0.5);
    EXPECT_EQ(StrengthOf({0, 0, 0, 0, 7}).superiority, 1);
    EXPECT_GT(StrengthOf({0, 0, 0, 0, 7}).elo.value, 500);
}

TEST(Statistics, EloAndScoreGoBothWays) {
    EXPECT_EQ(EloOfScore(0.5), 0);
    EXPECT_NEAR(EloOfScore(10.0 / 11), 400, 1e-9);
    for (const double elo : {-300.0, -5.0, 0.0, 2.5, 120.0}) EXPECT_NEAR(EloOfScore(ScoreOfElo(elo)), elo, 1e-9);
}

// --- The sequential test ---

struct RatioRow {
    std::string_view name;
    PairCounts counts;
    double elo0, elo1, ratio;
};

// Worked out by a script of its own, which finds the likeliest distribution by Newton's method with two multipliers.
constexpr RatioRow ratio_rows[] = {
    {"level", {5, 20, 50, 20, 5}, 0, 5, -0.051739},
    {"a lead", {10, 80, 200, 120, 20}, 0, 5, 2.081928},
    {"a lead, asked for a loss", {10, 80, 200, 120, 20}, -5, 0, 2.531213},
    {"two results unseen", {1, 0, 3, 0, 2}, 0, 10, 0.052837},
    {"one result seen", {0, 0, 7, 0, 0}, 0, 5, -0.096301},
    {"many games", {400, 3000, 8000, 3300, 450}, 0, 2, 5.624339},
    {"a clear loss", {120, 80, 200, 20, 10}, 0, 5, -5.422334},
    {"all won", {0, 0, 0, 0, 9}, 0, 50, 1.202573},
};

class RatioOfPairs : public testing::TestWithParam<RatioRow> {};

TEST_P(RatioOfPairs, IsWhatAnotherMethodFinds) {
    EXPECT_NEAR(LogLikelihoodRatio(GetParam().counts, GetParam().elo0, GetParam().elo1), GetParam().ratio, 2e-6);
}

TEST_P(RatioOfPairs, TurnsItsSignWithTheHypotheses) {
    EXPECT_NEAR(LogLikelihoodRatio(GetParam().counts, GetParam().elo1, GetParam().elo0), -GetParam().ratio, 2e-6);
}

INSTANTIATE_TEST_SUITE_P(Statistics, RatioOfPairs, testing::ValuesIn(ratio_rows), RowName<RatioRow>);

TEST(Statistics, TestEndsAtItsBounds) {
    const Sprt test{.elo0 = 0, .elo1 = 5};
    EXPECT_NEAR(test.UpperBound(), 2.944439, 1e-6);
    EXPECT_NEAR(test.LowerBound(), -2.944439, 1e-6);
    EXPECT_EQ(test.Judge({}), SprtVerdict::undecided);
    EXPECT_EQ(test.Judge({5, 20, 50, 20, 5}), SprtVerdict::undecided);
    EXPECT_EQ(test.Judge({400, 3000, 8000, 3300, 450}), SprtVerdict::better);
    EXPECT_EQ(test.Judge({120, 80, 200, 20, 10}), SprtVerdict::no_better);
}

TEST(Statistics, TestErrsAsSeldomAsItPromises) {
    // Players whose true lead is elo1, with a third of the games drawn: "no better" may come in one match of twenty.
    const Sprt test{.elo0 = 0, .elo1 = 100};
    std::mt19937 random(5);
    constexpr int matches = 2000;
    const double win = ScoreOfElo(100) - 1.0 / 6;
    const auto game = [&] {
        const double chance = static_cast<double>(random()) / 4294967296.0;
        return chance < win ? 2U : chance < win + 1.0 / 3 ? 1U : 0U;
    };
    int errors = 0;
    for (int match = 0; match < matches; ++match) {
        PairCounts counts{};
        SprtVerdict verdict = SprtVerdict::undecided;
        while (verdict == SprtVerdict::undecided) {
            ++counts[game() + game()];
            verdict = test.Judge(counts);
        }
        if (verdict == SprtVerdict::no_better) ++errors;
    }
    EXPECT_LT(errors, matches * 7 / 100);
    EXPECT_GT(errors, matches / 100);
}

}  // namespace
