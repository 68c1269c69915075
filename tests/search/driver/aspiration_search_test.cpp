#include "search/driver/aspiration_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/known_score.h"
#include "support/row_name.h"

namespace {

constexpr Score usual_window = 16;

Score Aspire(const BoundSearchTask& task, Score window, KnownScore& known, FailState* last_state = nullptr) {
    SearchClock clock;
    clock.Reset(0, 0);
    FailState state = FailState::none;
    const Score result = AspirationSearch(task, window, clock, state, [&](Score test) { return known(test); });
    if (last_state != nullptr) *last_state = state;
    return result;
}

struct WalkRow {
    std::string_view name;
    BoundSearchTask task;
    Score window;
    Score score;
    std::vector<Score> asked;
    Score result;
};
std::ostream& operator<<(std::ostream& out, const WalkRow& row) { return out << row.name; }

class AspirationWalks : public testing::TestWithParam<WalkRow> {};

TEST_P(AspirationWalks, AskTheseQuestions) {
    KnownScore known{.score = GetParam().score, .asked = {}};
    EXPECT_EQ(Aspire(GetParam().task, GetParam().window, known), GetParam().result);
    EXPECT_EQ(known.asked, GetParam().asked);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AspirationSearch, AspirationWalks, testing::Values(
    // Half a window below the guess first, then a window above that.
    WalkRow{"as guessed", {.guess = 30}, 16, 30, {22, 38}, 29},
    // The step grows by half with each answer in one direction.
    WalkRow{"upwards", {.guess = 0}, 16, 90, {-8, 8, 32, 68, 122, 95, 81}, 87},
    WalkRow{"downwards", {.guess = 0}, 16, -60, {-8, -24, -48, -84, -66, -57}, -62},
    WalkRow{"a window of one point", {.guess = 5}, 1, 5, {5, 6}, 5},
    WalkRow{"no better than the lower bound", {.lower = 100, .guess = 90}, 16, 100, {101}, 100},
    WalkRow{"at the upper bound", {.upper = 50, .guess = 60}, 16, 70, {50}, 50},
    WalkRow{"bounds a point apart", {.lower = 10, .upper = 11, .guess = 0}, 16, 11, {11}, 11}),
    RowName<WalkRow>);
// clang-format on

TEST(AspirationSearch, EnclosesEveryScoreFromEveryGuess) {
    constexpr unsigned seed = 8;
    std::mt19937 random(seed);
    for (int round = 0; round < 20000; ++round) {
        const auto any = [&](int most) {
            return static_cast<Score>(random() % (2U * static_cast<unsigned>(most) + 1)) - most;
        };
        const int most = round % 4 == 0 ? infinity_bound - 1 : 2000;
        const Score window = std::max<Score>(static_cast<Score>(random() % 401), 1);
        KnownScore known{.score = any(most), .asked = {}};
        const Score guess = any(most);
        const Score result = Aspire({.guess = guess}, window, known);
        SCOPED_TRACE("seed " + std::to_string(seed) + ", round " + std::to_string(round));
        ASSERT_LE(std::abs(result - known.score), window);
        ASSERT_LE(known.asked.size(), 60U);
        if (std::abs(known.score) >= mate_score_limit) {
            ASSERT_EQ(result, known.score) << "mates are told exactly";
        }
    }
}

/// Answers beyond the test value move a bound at once.
TEST(AspirationSearch, TakesAnswersThatSayMore) {
    SearchClock clock;
    clock.Reset(0, 0);
    FailState state = FailState::none;
    std::vector<Score> asked;
    const Score result = AspirationSearch({.guess = 0}, usual_window, clock, state, [&](Score test) {
        asked.push_back(test);
        return test <= 200 ? 200 : 210;
    });
    EXPECT_EQ(asked, (std::vector<Score>{-8, 216}));
    EXPECT_EQ(result, 205);
}

TEST(AspirationSearch, KeepsTheFailState) {
    FailState state = FailState::none;
    KnownScore much_better{.score = 500, .asked = {}};
    static_cast<void>(Aspire({.guess = 0}, usual_window, much_better, &state));
    EXPECT_EQ(state, FailState::high);
    KnownScore much_worse{.score = -500, .asked = {}};
    static_cast<void>(Aspire({.guess = 0}, usual_window, much_worse, &state));
    EXPECT_EQ(state, FailState::low);
}

}  // namespace
