#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/command_bench.h"
#include "support/log_capture.h"

namespace {

using testing::IsEmpty;

constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();

// --- time, otim ---

struct ClockCase {
    std::string name;
    std::vector<std::string> preparation;
    Colour engine;  ///< whose clock `time` sets
};

// clang-format off
const std::vector<ClockCase> clock_cases{
    {"the engine plays Black",               {},                                 black},
    {"the engine plays White",               {"force", "e4", "playother"},       white},
    {"nobody, White on move",                {"force"},                          white},
    {"nobody, Black on move",                {"force", "e4"},                    black},
    {"analysis, Black on move",              {"analyze", "e4"},                  black},
};
// clang-format on

TEST(Time, IsTheEnginesClockAndOtimTheOther) {
    for (const ClockCase& row : clock_cases) {
        CommandBench bench;
        bench.Prepare(row.preparation);
        const std::int64_t other = bench.game.clock().milliseconds(Opponent(row.engine));
        EXPECT_EQ(bench.Send("time 1234").error, "") << row.name;
        EXPECT_EQ(bench.game.clock().milliseconds(row.engine), 12340) << row.name;
        EXPECT_EQ(bench.game.clock().milliseconds(Opponent(row.engine)), other) << row.name;
        EXPECT_EQ(bench.Send("otim 99").error, "") << row.name;
        EXPECT_EQ(bench.game.clock().milliseconds(row.engine), 12340) << row.name;
        EXPECT_EQ(bench.game.clock().milliseconds(Opponent(row.engine)), 990) << row.name;
        EXPECT_THAT(bench.calls, IsEmpty());
    }
}

TEST(Time, TakesAnyInteger) {
    CommandBench bench;
    bench.Send("time 2147483647");
    EXPECT_EQ(bench.game.clock().milliseconds(black), 21474836470);
    bench.Send("time -5");
    EXPECT_EQ(bench.game.clock().milliseconds(black), -50);
}

TEST(Time, WritesTheClocksToTheLogAlone) {
    CommandBench bench;
    bench.Prepare({"level 40 5 0"});
    const LogCapture log;
    testing::internal::CaptureStdout();
    bench.Send("time 0");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.text(),
              "time (active side):\n"
              "moves_left: 40\n"
              "milliseconds_left: 300000\n"
              "out_of_time: false\n"
              "time (passive side):\n"
              "moves_left: 40\n"
              "milliseconds_left: 0\n"
              "out_of_time: true\n"
              "player1 played by engine: false\n"
              "player2 played by engine: true\n");
}

TEST(Otim, WritesTheSameBlock) {
    CommandBench bench;
    bench.Prepare({"force", "level 0 1 2", "e4"});
    const LogCapture log;
    testing::internal::CaptureStdout();
    bench.Send("otim 6000");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.text(),
              "time (active side):\n"
              "moves_left: -1\n"
              "milliseconds_left: 60000\n"
              "out_of_time: false\n"
              "time (passive side):\n"
              "moves_left: -1\n"
              "milliseconds_left: 60000\n"
              "out_of_time: false\n"
              "player1 played by engine: false\n"
              "player2 played by engine: false\n");
}

TEST(Time, RunsBesideAnySearch) {
    for (const SearchKind kind : {SearchKind::normal, SearchKind::pondering, SearchKind::analyze, SearchKind::puzzle}) {
        for (const std::string line : {"time 100", "otim 100", "sd 3", "st 3", "level 40 5 0", "tc 0 5 0"}) {
            CommandBench bench;
            GameAccess::pretendSearch(bench.game, kind);
            const auto outcome = bench.Send(line);
            EXPECT_TRUE(outcome.finished) << line;
            EXPECT_FALSE(outcome.aborted) << line;
            EXPECT_FALSE(outcome.request) << line;
            EXPECT_EQ(bench.game.runningSearch(), kind);
        }
    }
}

// --- sd, st ---

TEST(Bounds, AreKeptForTheNextSearch) {
    CommandBench bench;
    bench.Send("sd 7");
    EXPECT_EQ(GameAccess::maxDepth(bench.game), 7);
    bench.Send("st 3");
    EXPECT_EQ(GameAccess::maxTime(bench.game), 3000);
    bench.Send("sd 0");
    EXPECT_EQ(GameAccess::maxDepth(bench.game), 0);
    bench.Send("st 0");
    EXPECT_EQ(GameAccess::maxTime(bench.game), 0);
    bench.Send("st 2147483");
    EXPECT_EQ(GameAccess::maxTime(bench.game), 2147483000);
    bench.Send("st 2147484");
    EXPECT_EQ(GameAccess::maxTime(bench.game), largest);
    bench.Send("st 2147483647");
    EXPECT_EQ(GameAccess::maxTime(bench.game), largest);
}

TEST(Bounds, AreNotNegative) {
    CommandBench bench;
    bench.Prepare({"sd 7", "st 3"});
    EXPECT_EQ(bench.Send("sd -1").error, "Error (argument out of bounds): sd -1");
    EXPECT_EQ(bench.Send("st -1").error, "Error (argument out of bounds): st -1");
    EXPECT_EQ(GameAccess::maxDepth(bench.game), 7);
    EXPECT_EQ(GameAccess::maxTime(bench.game), 3000);
}

// --- level, tc ---

/// Moves left, milliseconds and what comes after them, as far as the clock shows it.
struct Shown {
    std::int32_t moves;
    std::int64_t milliseconds;
    bool operator==(const Shown&) const = default;
};

Shown ClockOf(const GameControl& game, Colour side) {
    return {game.clock().movesLeft(side), game.clock().milliseconds(side)};
}

TEST(Level, SetsBothClocksAtOnce) {
    struct Row {
        std::string line;
        Shown clock;
    };
    for (const auto& [line, clock] : {
             Row{"level 40 5 0", {40, 300000}},
             Row{"level 0 2 12", {-1, 120000}},
             Row{"level 1 0:30 0", {1, 30000}},
             Row{"level 0 1:05 0.1", {-1, 65000}},
             Row{"level 0 0:00.5 0", {-1, 500}},
             Row{"level 2147483647 35791 2147483", {largest, 2147460000}},
         }) {
        CommandBench bench;
        GameAccess::clock(bench.game).startClock();
        EXPECT_EQ(bench.Send(line).error, "");
        EXPECT_EQ(ClockOf(bench.game, white), clock) << line;
        EXPECT_EQ(ClockOf(bench.game, black), clock) << line;
    }
}

TEST(Level, CountsMovesAndAddsTheIncrement) {
    CommandBench bench;
    bench.Send("level 2 1 3");
    GameAccess::clock(bench.game).switchClock();
    EXPECT_EQ(ClockOf(bench.game, white), (Shown{1, 63000}));
    GameAccess::clock(bench.game).switchClock();
    GameAccess::clock(bench.game).switchClock();
    EXPECT_EQ(ClockOf(bench.game, white), (Shown{2, 126000})) << "the control repeats";
}

TEST(Level, KeepsItsBounds) {
    CommandBench bench;
    bench.Prepare({"level 0 3 0"});
    for (const std::string line :
         {"level -1 5 0", "level 40 0 0", "level 40 -5 0", "level 40 0:00 0", "level 40 5 -1", "level 40 0 12"}) {
        EXPECT_EQ(bench.Send(line).error, "Error (argument out of bounds): " + line);
    }
    EXPECT_EQ(ClockOf(bench.game, white), (Shown{-1, 180000}));
}

TEST(Tc, GivesEachSideItsList) {
    struct Row {
        std::string line;
        Shown white_clock;
        Shown black_clock;
    };
    for (const auto& [line, white_clock, black_clock] : {
             Row{"tc 0 5 0", {-1, 300000}, {-1, 300000}},
             Row{"tc -1 5 0", {-1, 300000}, {-1, 300000}},
             Row{"tc 40 90 30 0 30 30", {40, 5400000}, {40, 5400000}},
             Row{"tc 0 5 0;0 1:30 2", {-1, 300000}, {-1, 90000}},
             Row{"tc 0 5 0 ; 20 0:10 0.5 0 1 0", {-1, 300000}, {20, 10000}},
             Row{"tc '0 5 0;0 3 0'", {-1, 300000}, {-1, 180000}},
         }) {
        CommandBench bench;
        GameAccess::clock(bench.game).startClock();
        EXPECT_EQ(bench.Send(line).error, "");
        EXPECT_EQ(ClockOf(bench.game, white), white_clock) << line;
        EXPECT_EQ(ClockOf(bench.game, black), black_clock) << line;
    }
}

TEST(Tc, GoesThroughItsListAndRepeatsTheLastControl) {
    CommandBench bench;
    bench.Send("tc 1 1 0 2 2 0 0 3 5");
    std::vector<Shown> seen;
    for (int move = 0; move < 5; ++move) {
        seen.push_back(ClockOf(bench.game, white));
        GameAccess::clock(bench.game).switchClock();
        GameAccess::clock(bench.game).switchClock();
    }
    EXPECT_EQ(seen, (std::vector<Shown>{{1, 60000}, {2, 180000}, {1, 180000}, {-1, 360000}, {-1, 365000}}));
}

TEST(Tc, IsRefusedWithItsReason) {
    struct Row {
        std::string line;
        std::string reason;
    };
    // clang-format off
    const std::vector<Row> rows{
        {"tc",                       "missing parameters"},
        {"tc \"\"",                  "missing parameters"},
        {"tc ;",                     "missing parameters"},
        {"tc 0 5 0;",                "missing parameters"},
        {"tc ;0 5 0",                "missing parameters"},
        {"tc 0",                     "seperator missing (';')"},
        {"tc 0 5",                   "seperator missing (';')"},
        {"tc 0 5 0 0 5",             "seperator missing (';')"},
        {"tc 0 5 0;0 5",             "seperator missing (';')"},
        {"tc 0 5 0;0 5 0;0 5 0",     "too many parameters"},
        {"tc x 5 0",                 "integer argument expected"},
        {"tc 0 x 0",                 "integer argument expected"},
        {"tc 0 5 x",                 "integer argument expected"},
        {"tc 0 5:60 0",              "integer argument expected"},
        {"tc 40 5 0",                "last time control must not terminate"},
        {"tc 0 5 0;40 5 0",          "last time control must not terminate"},
        {"tc 0 5 0 40 5 0",          "last time control must not terminate"},
        {"tc -2 5 0",                "last time control must not terminate"},
        {"tc -2 5 0 0 5 0",          "argument out of bounds"},
        {"tc 0 -5 0",                "argument out of bounds"},
        {"tc 0 5 -1",                "argument out of bounds"},
    };
    // clang-format on
    for (const auto& [line, reason] : rows) {
        CommandBench bench;
        bench.Prepare({"level 0 3 0"});
        EXPECT_EQ(bench.Send(line).error, "Error (" + reason + "): " + line);
        EXPECT_EQ(ClockOf(bench.game, white), (Shown{-1, 180000})) << line;
        EXPECT_EQ(ClockOf(bench.game, black), (Shown{-1, 180000})) << line;
    }
}

}  // namespace
