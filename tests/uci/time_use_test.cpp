#include "uci/time_use.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "frame/base/text_utilities.h"
#include "support/row_name.h"

namespace {

using VorkaUci::LimitsFor;

SearchLimits Limits(std::string_view text, std::int64_t overhead = 0, Colour side = white) {
    return LimitsFor(VorkaUci::ReadGo(VorkaUtils::tokenize(text)), side, overhead);
}

TEST(TimeUse, KindFollowsTheWords) {
    EXPECT_EQ(Limits("wtime 1000").kind, SearchKind::normal);
    EXPECT_EQ(Limits("infinite").kind, SearchKind::analyze);
    EXPECT_EQ(Limits("").kind, SearchKind::analyze) << "nothing says when it ends";
    EXPECT_EQ(Limits("ponder wtime 1000").kind, SearchKind::pondering);
    EXPECT_EQ(Limits("ponder").kind, SearchKind::pondering);
}

TEST(TimeUse, DepthAndNodesArePassedOn) {
    EXPECT_EQ(Limits("depth 7").max_depth, 7);
    EXPECT_EQ(Limits("depth 0").max_depth, 1);
    EXPECT_EQ(Limits("depth 99999999999").max_depth, 32767);
    EXPECT_EQ(Limits("nodes 12345").max_nodes, 12345U);
    EXPECT_EQ(Limits("nodes -4").max_nodes, 1U);
    EXPECT_EQ(Limits("depth 7").max_time_limit, 0);
}

TEST(TimeUse, MateIsLookedForUntilItIsRefuted) {
    EXPECT_EQ(Limits("mate 1").max_depth, 3);
    EXPECT_EQ(Limits("mate 5").max_depth, 11);
    EXPECT_EQ(Limits("mate 5 depth 4").max_depth, 4);
    EXPECT_EQ(Limits("mate 2 depth 9").max_depth, 5);
    EXPECT_EQ(Limits("mate -3").max_depth, 3) << "no less than one move";
    EXPECT_EQ(Limits("mate 99999999999999999999").max_depth, 32767);
}

TEST(TimeUse, MoveTimeIsTheHardLimitLessTheOverhead) {
    const SearchLimits limits = Limits("movetime 500", 30);
    EXPECT_EQ(limits.max_time_limit, 470);
    EXPECT_EQ(limits.variable_time_limit, 0);
    EXPECT_EQ(Limits("movetime 10", 30).max_time_limit, 1);
    EXPECT_EQ(Limits("movetime 0").max_time_limit, 1);
    EXPECT_EQ(Limits("movetime 500 wtime 100000").max_time_limit, 500);
}

TEST(TimeUse, ClockIsThatOfTheSideOnMove) {
    EXPECT_EQ(Limits("wtime 60100 btime 1", 0, white).max_time_limit, 15000);
    EXPECT_EQ(Limits("wtime 1 btime 60100", 0, black).max_time_limit, 15000);
    EXPECT_EQ(Limits("wtime 60000", 0, white).max_time_limit, Limits("wtime 60000", 0, black).max_time_limit)
        << "no clock of its own, so it takes the other's";
    EXPECT_EQ(Limits("wtime 60100 winc 600", 0, black).max_time_limit, 15420);
    EXPECT_EQ(Limits("winc 600", 0, black).max_time_limit, 0);
}

struct ClockRow {
    std::string_view name;
    std::string_view words;
    std::int32_t hard;
    std::int32_t variable;
};

class Clock : public testing::TestWithParam<ClockRow> {};

TEST_P(Clock, IsShared) {
    const SearchLimits limits = Limits(GetParam().words);
    EXPECT_EQ(limits.max_time_limit, GetParam().hard);
    EXPECT_EQ(limits.variable_time_limit, GetParam().variable);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(TimeUse, Clock, testing::Values(
    ClockRow{"rest of the game", "wtime 60100", 15000, 1200},
    ClockRow{"with an increment", "wtime 60100 winc 600", 15420, 1620},
    ClockRow{"forty moves", "wtime 300100 movestogo 40", 30000, 3750},
    ClockRow{"two moves", "wtime 10100 movestogo 2", 9000, 2500},
    ClockRow{"the last move", "wtime 10100 movestogo 1", 9000, 5000},
    ClockRow{"no moves left is one", "wtime 10100 movestogo 0", 9000, 5000},
    ClockRow{"a time control far away", "wtime 100100 movestogo 1000", 8000, 1000},
    ClockRow{"an increment larger than what is left", "wtime 200 winc 5000", 30, 7},
    ClockRow{"a fallen flag", "wtime -50 winc 100", 1, 1},
    ClockRow{"a bullet's end", "wtime 150 winc 10", 14, 3},
    ClockRow{"a nearly empty clock", "wtime 40 winc 10", 1, 1}),
    RowName<ClockRow>);
// clang-format on

TEST(TimeUse, NeverExceedsTheClock) {
    for (const std::int64_t left : {1, 2, 10, 11, 50, 100, 1000, 60000, 2000000000}) {
        for (const char* more :
             {"", " winc 10", " winc 60000", " movestogo 1", " movestogo 3 winc 1000", " movestogo 40"}) {
            const SearchLimits limits = Limits("wtime " + std::to_string(left) + more, 10);
            EXPECT_GE(limits.max_time_limit, 1);
            EXPECT_LE(limits.max_time_limit, std::max<std::int64_t>(left - 10, 1)) << left << more;
            EXPECT_LE(limits.variable_time_limit, limits.max_time_limit) << left << more;
        }
    }
}

TEST(TimeUse, LooksAtTheClockOftenEnough) {
    EXPECT_EQ(Limits("infinite").poll_interval, 10);
    EXPECT_EQ(Limits("movetime 1000").poll_interval, 10);
    EXPECT_EQ(Limits("movetime 60").poll_interval, 3);
    EXPECT_EQ(Limits("movetime 1").poll_interval, 1);
}

}  // namespace
