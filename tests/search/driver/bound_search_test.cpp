#include "search/driver/bound_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <random>
#include <string_view>
#include <vector>

#include "support/known_score.h"
#include "support/log_capture.h"
#include "support/row_name.h"

namespace {

Score Bisect(const BoundSearchTask& task, KnownScore& known, FailState* last_state = nullptr) {
    SearchClock clock;
    clock.Reset(0, 0);
    FailState state = FailState::none;
    const Score result = BoundSearch(task, clock, state, [&](Score test) { return known(test); });
    if (last_state != nullptr) *last_state = state;
    return result;
}

// --- The walk of the test value ---

struct WalkRow {
    std::string_view name;
    BoundSearchTask task;
    Score score;
    std::vector<Score> asked;
    Score result;
};
std::ostream& operator<<(std::ostream& out, const WalkRow& row) { return out << row.name; }

class Walks : public testing::TestWithParam<WalkRow> {};

TEST_P(Walks, AskTheseQuestions) {
    KnownScore known{.score = GetParam().score, .asked = {}};
    EXPECT_EQ(Bisect(GetParam().task, known), GetParam().result);
    EXPECT_EQ(known.asked, GetParam().asked);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(BoundSearch, Walks, testing::Values(
    // Guess 30 at depth 4: a step of 53; one turn leaves 27, a quarter of the gap 13, another turn 7.
    WalkRow{"the example of the file", {.depth = 4, .guess = 30, .contempt = -200}, 60, {30, 83, 56, 63}, 59},
    // Guess 0 at depth 1: a step of 125. 0 is worked out to the last point, since it is the draw score.
    WalkRow{"the draw score", {.depth = 1, .guess = 0}, 0, {0, 125, 62, 31, 13, 4, 0, 1}, 0},
    // A run in one direction: the third yes is the first one that lets the step grow.
    WalkRow{"a run upwards", {.depth = 4, .upper = 600, .guess = 0, .contempt = -200}, 599, {0, 50, 100, 160, 238, 347, 482, 582}, 591},
    WalkRow{"a run downwards and a turn", {.depth = 3, .guess = 100}, -400, {100, 32, -36, -117, -222, -369, -589, -479, -425, -393, -400}, -397},
    WalkRow{"a mate in two", {.depth = 3, .guess = 0}, 32764,
            {0, 58, 116, 185, 274, 398, 584, 881, 1385, 2292, 4015, 7461, 14697, 28614, 32767, 32248, 32508, 32637, 32713, 32754, 32766, 32764, 32765}, 32764},
    WalkRow{"bounds that are close at once", {.depth = 9, .lower = 10, .upper = 30, .guess = 20}, 25, {}, 20},
    // Bounds are close enough if the draw score lies more than one point outside of them.
    WalkRow{"two above the draw score", {.depth = 9, .lower = 2, .upper = 6, .guess = 4}, 2, {}, 4},
    WalkRow{"one above the draw score", {.depth = 9, .lower = 1, .upper = 5, .guess = 4}, 1, {4, 3, 2}, 1},
    WalkRow{"two below the draw score", {.depth = 9, .lower = -6, .upper = -2, .guess = -4}, -2, {}, -4},
    WalkRow{"one below the draw score", {.depth = 9, .lower = -5, .upper = -1, .guess = -4}, -1, {-4, -3, -2, -1}, -1},
    WalkRow{"bounds that meet", {.depth = 9, .lower = 10, .upper = 10, .guess = 10}, 25, {}, 10}),
    RowName<WalkRow>);
// clang-format on

// --- What the result is worth ---

struct ResultRow {
    std::string_view name;
    Score score;
    Score contempt = 0;
    bool exact = false;
};
std::ostream& operator<<(std::ostream& out, const ResultRow& row) { return out << row.name; }

class Results : public testing::TestWithParam<ResultRow> {};

TEST_P(Results, AreCloseOrExact) {
    const ResultRow& row = GetParam();
    for (const Score guess : {0, row.score, row.score - 700, row.score + 700, -32000, 32000}) {
        for (const int depth : {1, 2, 5, 40, 200}) {
            KnownScore known{.score = row.score, .asked = {}};
            const Score result = Bisect({.depth = depth, .guess = guess, .contempt = row.contempt}, known);
            if (row.exact) {
                EXPECT_EQ(result, row.score) << "guess " << guess << ", depth " << depth;
            } else {
                EXPECT_NEAR(result, row.score, 10) << "guess " << guess << ", depth " << depth;
            }
            EXPECT_LT(known.asked.size(), 400U) << "guess " << guess << ", depth " << depth;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    BoundSearch, Results,
    testing::Values(ResultRow{"small plus", 37}, ResultRow{"small minus", -37}, ResultRow{"large plus", 2500},
                    ResultRow{"large minus", -2500}, ResultRow{"the draw score", 0, 0, true},
                    ResultRow{"another draw score", -30, -30, true}, ResultRow{"mate in one", 32766, 0, true},
                    ResultRow{"mate in five", 32758, 0, true}, ResultRow{"mated in two", -32763, 0, true},
                    ResultRow{"mated at once", -32765, 0, true}, ResultRow{"nearest own mate score", 31767, 0, true},
                    ResultRow{"nearest enemy mate score", -31767, 0, true}),
    RowName<ResultRow>);

TEST(BoundSearch, EnclosesEveryScoreFromEveryGuess) {
    constexpr std::uint32_t seed = 20240229;
    std::mt19937 random(seed);
    const auto between = [&](Score low, Score high) {
        return low + static_cast<Score>(random() % static_cast<std::uint32_t>(high - low + 1));
    };
    for (int i = 0; i < 20000; ++i) {
        const BoundSearchTask task{
            .depth = between(1, 80), .guess = between(-3000, 3000), .contempt = between(-50, 50)};
        KnownScore known{.score = between(-3000, 3000), .asked = {}};
        const Score result = Bisect(task, known);
        ASSERT_NEAR(result, known.score, 10) << "seed " << seed << ", round " << i;
        if (known.score == task.contempt) {
            ASSERT_EQ(result, known.score) << "seed " << seed << ", round " << i;
        }
        for (const Score test : known.asked) {
            ASSERT_GE(test, task.lower);
            ASSERT_LE(test, task.upper);
        }
    }
}

TEST(BoundSearch, YesAtTheUpperBoundEndsIt) {
    KnownScore known{.score = 500, .asked = {}};
    EXPECT_EQ(Bisect({.depth = 6, .lower = -1, .upper = 0, .guess = 0}, known), 0);
    EXPECT_EQ(known.asked, std::vector<Score>{0});
}

TEST(BoundSearch, CrossedBoundsAreLoggedAndEndIt) {
    LogCapture log;
    SearchClock clock;
    FailState state{};
    // Yes at 60, and then no at 60: the position has changed its mind.
    int questions = 0;
    const auto fickle = [&](Score test) { return questions++ == 0 ? test : Score{10}; };
    testing::internal::CaptureStdout();
    const Score result = BoundSearch({.depth = 6, .guess = 60}, clock, state, fickle);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "an interface must not see it";
    EXPECT_EQ(result, 10);
    EXPECT_EQ(log.text(), "error: lowerbound and upperbound crossed!\nlowerbound=60, upperbound=10\n");
}

// --- Fail states ---

TEST(BoundSearch, FailStateIsThatOfTheBoundsDuringAQuestion) {
    SearchClock clock;
    FailState state{};
    std::vector<FailState> states;
    const auto ask = [&](Score test) {
        states.push_back(state);
        return Score{130} >= test ? test : test - 1;
    };
    EXPECT_NEAR(BoundSearch({.depth = 4, .guess = 0, .contempt = -900}, clock, state, ask), 130, 10);
    ASSERT_GE(states.size(), 3U);
    EXPECT_EQ(states[0], FailState::none) << "nothing is known yet";
    EXPECT_EQ(states[1], FailState::none) << "at least 0";
    EXPECT_EQ(states[2], FailState::high) << "at least 50, more than 25 above the guess";
    EXPECT_EQ(state, FailState::high);
}

TEST(BoundSearch, FailLowIsToldWhenTheUpperBoundHasFallen) {
    KnownScore known{.score = -130, .asked = {}};
    FailState state{};
    EXPECT_NEAR(Bisect({.depth = 4, .guess = 0, .contempt = 900}, known, &state), -130, 10);
    EXPECT_EQ(state, FailState::low);
}

TEST(BoundSearch, TellsTheClockItsScore) {
    SearchClock clock;
    clock.Reset(0, 1000);
    clock.NewIteration();
    FailState state{};
    KnownScore known{.score = 400, .asked = {}};
    clock.SetIterationScore(BoundSearch({.depth = 4, .guess = 400}, clock, state, std::ref(known)));
    clock.NewIteration();
    known.score = 100;
    (void)BoundSearch({.depth = 4, .guess = 400}, clock, state, std::ref(known));
    // About 300 lost, and the upper bound is not negative: three times the usual 2.4.
    EXPECT_FALSE(clock.ShouldStop(7199, SearchMoment::later_root_move, FailState::none));
    EXPECT_TRUE(clock.ShouldStop(7200, SearchMoment::later_root_move, FailState::none));
}

// --- Refutation ---

struct RefutationRow {
    std::string_view name;
    Score best;
    Score test;
};
std::ostream& operator<<(std::ostream& out, const RefutationRow& row) { return out << row.name; }

class Refutations : public testing::TestWithParam<RefutationRow> {};

TEST_P(Refutations, AskForTheNextPossibleScore) {
    const RefutationRow& row = GetParam();
    EXPECT_EQ(RefutationTestValue(row.best), row.test);
    KnownScore equal{.score = row.test - 1, .asked = {}};
    EXPECT_TRUE(RefutationTest(row.best, std::ref(equal)));
    EXPECT_EQ(equal.asked, std::vector<Score>{row.test});
    KnownScore better{.score = row.test, .asked = {}};
    EXPECT_FALSE(RefutationTest(row.best, std::ref(better)));
}

INSTANTIATE_TEST_SUITE_P(
    BoundSearch, Refutations,
    testing::Values(RefutationRow{"usual", 40, 41}, RefutationRow{"minus", -40, -39},
                    RefutationRow{"last without parity", 31766, 31767}, RefutationRow{"31768 is even", 31767, 31768},
                    RefutationRow{"31769 is odd", 31768, 31770}, RefutationRow{"mate in one", 32766, 32768},
                    RefutationRow{"mate in two", 32764, 32766},
                    RefutationRow{"minus 31767 has no parity", -31768, -31767},
                    RefutationRow{"minus 31768 is even", -31769, -31767}, RefutationRow{"mated in one", -32765, -32763},
                    RefutationRow{"minus 32765 is odd", -32766, -32765}),
    RowName<RefutationRow>);

}  // namespace
