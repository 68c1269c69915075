#include "search/driver/search_clock.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string_view>
#include <vector>

#include "support/row_name.h"

namespace {

using enum SearchMoment;

/// An iteration that is over: what it met, and its score.
struct PastIteration {
    Score score = 0;
    bool candidate = false;
    FailState fail = FailState::none;
};

/// A search in the middle of an iteration. The variable limit is 1000 ms in all rows.
struct StopRow {
    std::string_view name;
    std::vector<PastIteration> past;  ///< before the iteration in work
    SearchMoment moment;
    std::int64_t limit;  ///< the search stops from this elapsed time on, in milliseconds
    FailState fail_state = FailState::none;
    Score current = 32867;  ///< score of the iteration in work; 32867: not known yet
    Score lower = -32767, upper = 32767;
    bool instability = false;
};
std::ostream& operator<<(std::ostream& out, const StopRow& row) { return out << row.name; }

constexpr Score unknown = 32867;

SearchClock ClockOf(const StopRow& row, std::int64_t hard_limit, std::int64_t variable_limit) {
    SearchClock clock;
    clock.Reset(hard_limit, variable_limit);
    for (const PastIteration& past : row.past) {
        clock.NewIteration();
        clock.NoteFail(past.fail);
        if (past.candidate) clock.NoteCandidate();
        clock.SetIterationScore(past.score);
    }
    clock.NewIteration();
    clock.SetBounds(row.lower, row.upper);
    if (row.current != unknown) clock.SetIterationScore(row.current);
    if (row.instability) clock.NoteInstability();
    return clock;
}

class StopTimes : public testing::TestWithParam<StopRow> {};

TEST_P(StopTimes, FollowFromWhatTheSearchMet) {
    const StopRow& row = GetParam();
    const SearchClock clock = ClockOf(row, 0, 1000);
    EXPECT_FALSE(clock.ShouldStop(row.limit - 1, row.moment, row.fail_state));
    EXPECT_TRUE(clock.ShouldStop(row.limit, row.moment, row.fail_state));
}

/// The last score of a search without events, in its second iteration.
std::vector<PastIteration> After(Score previous) { return {{.score = previous}}; }

// Four iterations are over: from the fifth on, unsettled and quiet are looked at.
const std::vector<PastIteration> three_calm{{}, {}, {}};
const std::vector<PastIteration> four_calm{{}, {}, {}, {}};
const std::vector<PastIteration> candidate_last{{}, {}, {}, {.candidate = true}};
const std::vector<PastIteration> candidate_before{{}, {}, {.candidate = true}, {}};
const std::vector<PastIteration> candidate_long_ago{{}, {.candidate = true}, {}, {}};
const std::vector<PastIteration> two_candidates{{}, {}, {.candidate = true}, {.candidate = true}};
const std::vector<PastIteration> two_candidates_early{{}, {.candidate = true}, {.candidate = true}};
const std::vector<PastIteration> outer_candidates{{}, {.candidate = true}, {}, {.candidate = true}};
const std::vector<PastIteration> older_candidates{{}, {.candidate = true}, {.candidate = true}, {}};
const std::vector<PastIteration> low_last{{}, {}, {}, {.fail = FailState::low}};
const std::vector<PastIteration> low_before{{}, {}, {.fail = FailState::low}, {}};
const std::vector<PastIteration> low_and_candidate{{}, {}, {}, {.candidate = true, .fail = FailState::low}};
const std::vector<PastIteration> high_and_candidate{{}, {}, {}, {.candidate = true, .fail = FailState::high}};
const std::vector<PastIteration> high_throughout{{}, {.fail = FailState::high}, {}, {}};

constexpr auto low = FailState::low;
constexpr auto high = FailState::high;

// clang-format off
INSTANTIATE_TEST_SUITE_P(FirstRootMove, StopTimes, testing::Values(
    //                                       past         moment           limit  fail  current   lower   upper
    StopRow{"nothing known",                 After(0),    first_root_move, 1200},
    StopRow{"high, up to 304 below",         After(305),  first_root_move,  600, high, unknown,      1,  32767},
    StopRow{"high, 305 below",               After(306),  first_root_move, 1200, high, unknown,      1,  32767},
    StopRow{"high, no plus, up to 99 below", After(99),   first_root_move,  840, high, unknown,      0,  32767},
    StopRow{"high, no plus, 100 below",      After(100),  first_root_move, 1200, high, unknown,      0,  32767},
    StopRow{"low by 100",                    After(100),  first_root_move, 2400, low,  unknown, -32767,      0},
    StopRow{"low by 101",                    After(101),  first_root_move, 3600, low,  unknown, -32767,      0},
    StopRow{"low by 255 into the minus",     After(199),  first_root_move, 3600, low,  unknown, -32767,    -56},
    StopRow{"low by 256 into the minus",     After(200),  first_root_move, 9600, low,  unknown, -32767,    -56},
    StopRow{"low by 256 to nothing",         After(256),  first_root_move, 3600, low,  unknown, -32767,      0},
    StopRow{"candidate above the last",      After(100),  first_root_move,  600, high,     100,    101,  32767},
    StopRow{"candidate not above the last",  After(100),  first_root_move, 1200, high,     100,    100,  32767},
    StopRow{"candidate 304 below the best",  After(100),  first_root_move,  600, high,     405,    101,  32767},
    StopRow{"candidate 305 below the best",  After(100),  first_root_move, 1200, high,     406,    101,  32767},
    StopRow{"candidate in the minus, 99",    After(-200), first_root_move,  840, high,      -1,   -100,  32767},
    StopRow{"candidate in the minus, 100",   After(-200), first_root_move, 1200, high,       0,   -100,  32767},
    StopRow{"low with a score",              After(400),  first_root_move, 1200, low,        0, -32767,   -300}),
    RowName<StopRow>);

INSTANTIATE_TEST_SUITE_P(LaterRootMove, StopTimes, testing::Values(
    StopRow{"no drop",                       After(0),    later_root_move, 2400, FailState::none,   0},
    StopRow{"a rise",                        After(0),    later_root_move, 2400, FailState::none, 300},
    StopRow{"25 lost",                       After(0),    later_root_move, 2400, FailState::none, -25},
    StopRow{"26 lost",                       After(0),    later_root_move, 4800, FailState::none, -26},
    StopRow{"100 lost",                      After(0),    later_root_move, 4800, FailState::none, -100},
    StopRow{"101 lost",                      After(0),    later_root_move, 7200, FailState::none, -101},
    StopRow{"255 lost into the minus",       After(0),    later_root_move, 7200, FailState::none, -255, -32767, -255},
    StopRow{"256 lost into the minus",       After(0),    later_root_move, 19200, FailState::none, -256, -32767, -1},
    StopRow{"256 lost, bound not negative",  After(300),  later_root_move, 7200, FailState::none,   44, -32767, 0}),
    RowName<StopRow>);

INSTANTIATE_TEST_SUITE_P(IterationComplete, StopTimes, testing::Values(
    StopRow{"settled",                       After(0),    iteration_complete, 400, FailState::none, 0},
    StopRow{"lost something",                After(300),  iteration_complete, 400, FailState::none, 0},
    StopRow{"unstable",                      After(0),    iteration_complete, 700, FailState::none, 0, -32767, 32767, true},
    StopRow{"quiet, too early to say",       three_calm,  iteration_complete, 400, FailState::none, 0},
    StopRow{"quiet",                         four_calm,   iteration_complete, 280, FailState::none, 0},
    StopRow{"unsettled",                  two_candidates, iteration_complete, 1160, FailState::none, 0}),
    RowName<StopRow>);

INSTANTIATE_TEST_SUITE_P(Events, StopTimes, testing::Values(
    StopRow{"calm, too early to say",        three_calm,           first_root_move, 1200},
    StopRow{"calm",                          four_calm,            first_root_move,  840},
    StopRow{"calm, later root move",         four_calm,            later_root_move, 1680, FailState::none, 0},
    StopRow{"calm but unstable",             four_calm,            first_root_move, 1470, FailState::none, unknown, -32767, 32767, true},
    StopRow{"candidate in the last",         candidate_last,       first_root_move, 1200},
    StopRow{"candidate in the one before",   candidate_before,     first_root_move, 1200},
    StopRow{"candidate two before",          candidate_long_ago,   first_root_move,  840},
    StopRow{"two candidates, too early",     two_candidates_early, first_root_move, 1200},
    StopRow{"two candidates: 30",            two_candidates,       first_root_move, 1740},
    StopRow{"two candidates, later move",    two_candidates,       later_root_move, 3480, FailState::none, 0},
    StopRow{"two candidates, unstable",      two_candidates,       first_root_move, 3045, FailState::none, unknown, -32767, 32767, true},
    StopRow{"last and third candidate: 30",  outer_candidates,     first_root_move, 1740},
    StopRow{"second and third: 20",          older_candidates,     first_root_move, 1200},
    StopRow{"fail low in the last: 25",      low_last,             first_root_move, 1200},
    StopRow{"fail low stays set: 37",        low_before,           first_root_move, 1740},
    StopRow{"fail low with candidate: 45",   low_and_candidate,    first_root_move, 1740},
    StopRow{"fail high with candidate: 35",  high_and_candidate,   first_root_move, 1740},
    StopRow{"three fail highs: 29",          high_throughout,      first_root_move, 1200}),
    RowName<StopRow>);
// clang-format on

TEST(SearchClock, NoLimitAppliesInTheFirstIteration) {
    const StopRow first{.name = "", .past = {}, .moment = first_root_move, .limit = 0};
    const SearchClock clock = ClockOf(first, 100, 100);
    EXPECT_FALSE(clock.ShouldStop(1000000, first_root_move, FailState::none));
    EXPECT_FALSE(clock.ShouldStop(1000000, iteration_complete, FailState::none));
}

TEST(SearchClock, HardLimitHoldsWhateverIsGoingOn) {
    const StopRow row{.name = "", .past = After(200), .moment = first_root_move, .limit = 0};
    const SearchClock clock = ClockOf(row, 500, 1000);
    EXPECT_FALSE(clock.ShouldStop(499, first_root_move, FailState::none));
    EXPECT_TRUE(clock.ShouldStop(500, first_root_move, FailState::none));
    const SearchClock hard_alone = ClockOf(row, 500, 0);
    EXPECT_FALSE(hard_alone.ShouldStop(499, iteration_complete, FailState::none));
    EXPECT_TRUE(hard_alone.ShouldStop(500, iteration_complete, FailState::none));
}

TEST(SearchClock, WithoutLimitsItNeverStops) {
    const StopRow row{.name = "", .past = four_calm, .moment = first_root_move, .limit = 0};
    const SearchClock clock = ClockOf(row, 0, 0);
    for (const SearchMoment moment : {first_root_move, later_root_move, iteration_complete}) {
        EXPECT_FALSE(clock.ShouldStop(INT64_MAX / 2, moment, FailState::none));
    }
}

TEST(SearchClock, WantCountsAfterAnIterationAlone) {
    const StopRow row{.name = "", .past = After(0), .moment = first_root_move, .limit = 0};
    SearchClock clock = ClockOf(row, 900, 1000);
    clock.SetWant(1.5);
    EXPECT_FALSE(clock.ShouldStop(599, iteration_complete, FailState::none));
    EXPECT_TRUE(clock.ShouldStop(600, iteration_complete, FailState::none));
    EXPECT_TRUE(clock.ShouldStop(900, first_root_move, FailState::none)) << "the hard limit holds";
    clock = ClockOf(row, 0, 1000);
    clock.SetWant(0.5);
    EXPECT_TRUE(clock.ShouldStop(200, iteration_complete, FailState::none));
    EXPECT_FALSE(clock.ShouldStop(1199, first_root_move, FailState::none));
    EXPECT_TRUE(clock.ShouldStop(1200, first_root_move, FailState::none));
    clock.Reset(0, 1000);
    clock.NewIteration();
    clock.NewIteration();
    EXPECT_FALSE(clock.ShouldStop(399, iteration_complete, FailState::none)) << "of the search before";
}

TEST(SearchClock, LimitIsTruncatedToWholeMilliseconds) {
    SearchClock clock;
    clock.Reset(0, 2);  // 0.8 ms after an iteration
    clock.NewIteration();
    clock.NewIteration();
    EXPECT_TRUE(clock.ShouldStop(0, iteration_complete, FailState::none));
}

TEST(SearchClock, ScoreThatRisesIsACandidate) {
    StopRow row{.name = "", .past = {{}, {}, {}}, .moment = first_root_move, .limit = 0};
    SearchClock clock = ClockOf(row, 0, 1000);
    clock.SetIterationScore(10);
    clock.SetIterationScore(11);
    clock.NewIteration();
    EXPECT_FALSE(clock.ShouldStop(840, first_root_move, FailState::none)) << "not quiet";
    clock = ClockOf(row, 0, 1000);
    clock.SetIterationScore(10);
    clock.SetIterationScore(10);
    clock.NewIteration();
    EXPECT_TRUE(clock.ShouldStop(840, first_root_move, FailState::none)) << "quiet";
}

TEST(SearchClock, InstabilityIsForgottenWithItsIteration) {
    StopRow row{.name = "", .past = After(0), .moment = first_root_move, .limit = 0, .instability = true};
    SearchClock clock = ClockOf(row, 0, 1000);
    EXPECT_FALSE(clock.ShouldStop(1200, first_root_move, FailState::none));
    clock.NewIteration();
    EXPECT_TRUE(clock.ShouldStop(1200, first_root_move, FailState::none));
}

TEST(SearchClock, ResetForgetsEverything) {
    StopRow row{.name = "", .past = low_and_candidate, .moment = first_root_move, .limit = 0, .instability = true};
    SearchClock clock = ClockOf(row, 0, 1000);
    clock.Reset(0, 1000);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(clock.ShouldStop(1000000, first_root_move, FailState::none), i > 1);
        clock.NewIteration();
    }
    EXPECT_TRUE(clock.ShouldStop(840, first_root_move, FailState::none)) << "five calm iterations";
}

TEST(SearchClock, ScoresAreClassifiedAgainstTheGuess) {
    EXPECT_EQ(ClassifyAgainst(25, 0), FailState::none);
    EXPECT_EQ(ClassifyAgainst(26, 0), FailState::high);
    EXPECT_EQ(ClassifyAgainst(-25, 0), FailState::none);
    EXPECT_EQ(ClassifyAgainst(-26, 0), FailState::low);
    EXPECT_EQ(ClassifyAgainst(-80 - 35, -80), FailState::none);
    EXPECT_EQ(ClassifyAgainst(-80 - 36, -80), FailState::low);
    EXPECT_EQ(ClassifyAgainst(80 + 36, 80), FailState::high);
}

TEST(SearchClock, TheHardLimitHoldsInTheFirstIterationIfItIsAskedTo) {
    SearchClock clock;
    clock.Reset(100, 10, FirstIteration::has_hard_limit);
    clock.NewIteration();
    for (const SearchMoment moment : {first_root_move, later_root_move, iteration_complete}) {
        EXPECT_FALSE(clock.ShouldStop(99, moment, FailState::none)) << "the variable limit does not hold";
        EXPECT_TRUE(clock.ShouldStop(100, moment, FailState::none));
    }
    clock.Reset(0, 10, FirstIteration::has_hard_limit);
    clock.NewIteration();
    EXPECT_FALSE(clock.ShouldStop(1'000'000, first_root_move, FailState::none)) << "there is none";
}

TEST(SearchClock, AFirstIterationHasAFewMilliseconds) {
    SearchClock clock;
    clock.Reset(1, 1, FirstIteration::has_hard_limit);
    clock.NewIteration();
    EXPECT_FALSE(clock.ShouldStop(4, first_root_move, FailState::none));
    EXPECT_TRUE(clock.ShouldStop(5, first_root_move, FailState::none));
    clock.NewIteration();
    EXPECT_TRUE(clock.ShouldStop(1, first_root_move, FailState::none));
}

}  // namespace
