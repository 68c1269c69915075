#include "tune/spsa.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <set>

#include "selfplay/random_numbers.h"
#include "tools/tune/tuned_parameters.h"

namespace {

constexpr const char* three =
    "futility_pruning_margin 300 0 600 30 0.02\n"
    "extended_futility_pruning_margin 600 0 1200 60 0.02\n"
    "limited_razoring_margin 1020 500 1500 50 0.02\n";
constexpr double best[] = {180, 800, 1450};

/// A made-up strength in Elo: it falls with the square of the way from the best values.
double StrengthAt(const std::vector<double>& values) {
    double strength = 0;
    for (std::size_t i = 0; i < values.size(); ++i) strength -= std::pow((values[i] - best[i]) / 100, 2) * 20;
    return strength;
}

/// The lead of one in a pair, by chance.
int PlayMadeUpPair(const Trial& trial, RandomNumbers& random) {
    const double score = 1 / (1 + std::pow(10, (StrengthAt(trial.minus) - StrengthAt(trial.plus)) / 400));
    int lead = 0;
    for (int game = 0; game < 2; ++game) {
        const double chance = static_cast<double>(random.Below(1'000'000)) / 1e6;
        lead += chance < score * 2 / 3 ? 1 : chance < score * 2 / 3 + 1.0 / 3 ? 0 : -1;
    }
    return lead;
}

/// Plays up to a number of pairs; each pair's chances depend on its number alone, as those of games do.
void PlayTo(Spsa& spsa, std::uint64_t pairs) {
    while (spsa.pairs_done() < pairs && !spsa.IsDone()) {
        std::vector<int> leads;
        for (const Trial& trial : spsa.NextBatch()) {
            RandomNumbers random(trial.pair * 7919 + 1);
            leads.push_back(PlayMadeUpPair(trial, random));
        }
        spsa.Take(leads);
    }
}

TEST(Spsa, FindsTheTopOfAMadeUpHill) {
    Spsa spsa(ParametersIn(three), {.pairs = 20000, .batch = 8, .seed = 3});
    PlayTo(spsa, 20000);
    EXPECT_TRUE(spsa.IsDone());
    EXPECT_NEAR(spsa.values()[0], best[0], 30);
    EXPECT_NEAR(spsa.values()[1], best[1], 40);
    EXPECT_NEAR(spsa.values()[2], best[2], 60);
}

TEST(Spsa, StaysWhereNothingIsToldApart) {
    Spsa spsa(ParametersIn(three), {.pairs = 1000, .batch = 10});
    while (!spsa.IsDone()) spsa.Take(std::vector<int>(spsa.NextBatch().size(), 0));
    EXPECT_EQ(spsa.values(), (std::vector<double>{300, 600, 1020}));
}

TEST(Spsa, KeepsWithinTheBounds) {
    Spsa spsa(ParametersIn("futility_pruning_margin 300 290 310 10 1\n"), {.pairs = 2000, .batch = 1});
    bool touched = false;
    while (!spsa.IsDone()) {
        const auto batch = spsa.NextBatch();
        spsa.Take({batch[0].plus[0] > batch[0].minus[0] ? 2 : -2});  // more is better, always
        ASSERT_LE(spsa.values()[0], 310);
        touched |= spsa.values()[0] == 310;
    }
    EXPECT_TRUE(touched);
}

TEST(Spsa, SpansAndStepsEndAtTheirNames) {
    Spsa spsa(ParametersIn("futility_pruning_margin 300 0 600 30 0.02\n"), {.pairs = 1000, .batch = 1});
    const double first_span = std::abs(spsa.NextBatch()[0].plus[0] - 300);
    EXPECT_NEAR(first_span, 30 * std::pow(1000, 0.101), 1e-9);
    spsa.GoOnFrom(999, {300});
    const auto batch = spsa.NextBatch();
    EXPECT_NEAR(std::abs(batch[0].plus[0] - 300), 30, 1e-9);
    EXPECT_NEAR(batch[0].plus[0] + batch[0].minus[0], 600, 1e-9);
    const double direction = batch[0].plus[0] > 300 ? 1 : -1;
    spsa.Take({2});
    EXPECT_NEAR(spsa.values()[0], 300 + direction * 2 * 0.02 * 30, 1e-9);
}

TEST(Spsa, EachPairHasDirectionsOfItsOwn) {
    const Spsa spsa(ParametersIn(three), {.pairs = 100, .batch = 100});
    std::set<std::vector<bool>> seen;
    int ups = 0;
    for (const Trial& trial : spsa.NextBatch()) {
        std::vector<bool> up;
        for (std::size_t i = 0; i < 3; ++i) up.push_back(trial.plus[i] > trial.minus[i]);
        seen.insert(up);
        ups += up[0] ? 1 : 0;
    }
    EXPECT_EQ(seen.size(), 8U);
    EXPECT_GT(ups, 30);
    EXPECT_LT(ups, 70);
}

TEST(Spsa, LastBatchIsAsLongAsWhatIsLeft) {
    Spsa spsa(ParametersIn(three), {.pairs = 10, .batch = 4});
    spsa.GoOnFrom(8, spsa.values());
    EXPECT_EQ(spsa.NextBatch().size(), 2U);
}

TEST(Spsa, GoesOnAsIfItHadNotStopped) {
    const SpsaPlan plan{.pairs = 400, .batch = 8, .seed = 5};
    Spsa whole(ParametersIn(three), plan), first(ParametersIn(three), plan), second(ParametersIn(three), plan);
    PlayTo(whole, 400);
    PlayTo(first, 160);
    second.GoOnFrom(first.pairs_done(), first.values());
    PlayTo(second, 400);
    EXPECT_EQ(second.values(), whole.values());
}

TEST(Spsa, SeedChangesTheCourse) {
    const Spsa one(ParametersIn(three), {.pairs = 64, .batch = 8, .seed = 1});
    const Spsa other(ParametersIn(three), {.pairs = 64, .batch = 8, .seed = 2});
    bool differs = false;
    for (std::size_t i = 0; i < 8; ++i) differs |= one.NextBatch()[i].plus != other.NextBatch()[i].plus;
    EXPECT_TRUE(differs);
}

}  // namespace
