#include "frame/game/chess_clock.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::int64_t now_in_milliseconds = 0;

Timestamp FakeNow() {
    return {.valid = true, .seconds = now_in_milliseconds / 1000, .microseconds = now_in_milliseconds % 1000 * 1000};
}

class ChessClockTest : public testing::Test {
  protected:
    ChessClockTest() { now_in_milliseconds = 5000; }

    static void Wait(std::int64_t milliseconds) { now_in_milliseconds += milliseconds; }
    void MakeMoves(int moves) {
        for (int i = 0; i < moves; ++i) {
            clock.switchClock();
            clock.switchClock();
        }
    }

    ChessClock clock{&FakeNow};
};

TEST_F(ChessClockTest, BeginsWithFortyMovesInFiveMinutesForBothSides) {
    for (const Colour side : {white, black}) {
        EXPECT_EQ(clock.milliseconds(side), 300000);
        EXPECT_EQ(clock.movesLeft(side), 40);
    }
    EXPECT_EQ(clock.active(), white);
    EXPECT_FALSE(clock.running());
}

TEST_F(ChessClockTest, StopTakesTheElapsedTimeOffTheActiveSide) {
    clock.startClock();
    EXPECT_TRUE(clock.running());
    Wait(1234);
    EXPECT_EQ(clock.milliseconds(white), 300000);  // nothing is taken off while the clock runs
    clock.stopClock();
    EXPECT_FALSE(clock.running());
    EXPECT_EQ(clock.milliseconds(white), 298766);
    EXPECT_EQ(clock.milliseconds(black), 300000);
}

TEST_F(ChessClockTest, StartLeavesARunningClockAlone) {
    clock.startClock();
    Wait(1000);
    clock.startClock();
    Wait(500);
    clock.stopClock();
    EXPECT_EQ(clock.milliseconds(white), 298500);
}

TEST_F(ChessClockTest, StopLeavesAStandingClockAlone) {
    Wait(1000);
    clock.stopClock();
    EXPECT_EQ(clock.milliseconds(white), 300000);

    clock.startClock();
    Wait(1000);
    clock.stopClock();
    Wait(1000);
    clock.stopClock();
    EXPECT_EQ(clock.milliseconds(white), 299000);
}

TEST_F(ChessClockTest, SwitchBillsEachSideForItsOwnTime) {
    clock.startClock();
    Wait(1000);
    clock.switchClock();
    EXPECT_TRUE(clock.running());
    EXPECT_EQ(clock.active(), black);
    Wait(200);
    clock.switchClock();
    EXPECT_EQ(clock.active(), white);
    EXPECT_EQ(clock.milliseconds(white), 299000);
    EXPECT_EQ(clock.milliseconds(black), 299800);
    EXPECT_EQ(clock.movesLeft(white), 39);
    EXPECT_EQ(clock.movesLeft(black), 39);
}

TEST_F(ChessClockTest, SwitchOfAStandingClockTakesNoTimeButCountsTheMove) {
    clock.setControls(white, {{.moves = 40, .base = 60000, .increment = 2000, .next = -1}});
    Wait(1000);
    clock.switchClock();
    EXPECT_FALSE(clock.running());
    EXPECT_EQ(clock.milliseconds(white), 62000);
    EXPECT_EQ(clock.movesLeft(white), 39);
}

TEST_F(ChessClockTest, IncrementComesInWithEachMove) {
    clock.setControls(white, {{.moves = -1, .base = 60000, .increment = 500, .next = -1}});
    clock.startClock();
    Wait(2000);
    clock.switchClock();
    EXPECT_EQ(clock.milliseconds(white), 58500);
    EXPECT_EQ(clock.movesLeft(white), -1);  // a game without a move count counts nothing
}

TEST_F(ChessClockTest, LastMoveOfARepeatedEntryAddsItsTimeAgain) {
    clock.setControls(white, {{.moves = 3, .base = 1000, .increment = 10, .next = -1}});
    MakeMoves(2);
    EXPECT_EQ(clock.movesLeft(white), 1);
    EXPECT_EQ(clock.milliseconds(white), 1020);
    MakeMoves(1);
    EXPECT_EQ(clock.movesLeft(white), 3);
    EXPECT_EQ(clock.milliseconds(white), 2030);
}

TEST_F(ChessClockTest, LastMoveOfAnEntryGoesOnToTheNext) {
    clock.setControls(white, {{.moves = 2, .base = 1000, .increment = 10, .next = 0},
                              {.moves = 1, .base = 300, .increment = 5, .next = 0},
                              {.moves = -1, .base = 70, .increment = 1, .next = -1}});
    MakeMoves(1);
    EXPECT_EQ(clock.milliseconds(white), 1010);
    MakeMoves(1);
    EXPECT_EQ(clock.movesLeft(white), 1);
    EXPECT_EQ(clock.milliseconds(white), 1320);
    MakeMoves(1);
    EXPECT_EQ(clock.movesLeft(white), -1);
    EXPECT_EQ(clock.milliseconds(white), 1395);
    MakeMoves(1);
    EXPECT_EQ(clock.milliseconds(white), 1396);
}

TEST_F(ChessClockTest, RepeatedEntryNeverReachesTheOnesAfterIt) {
    clock.setControls(white, {{.moves = 1, .base = 100, .increment = 0, .next = -1},
                              {.moves = -1, .base = 7, .increment = 0, .next = -1}});
    MakeMoves(2);
    EXPECT_EQ(clock.movesLeft(white), 1);
    EXPECT_EQ(clock.milliseconds(white), 300);
}

TEST_F(ChessClockTest, LastEntryOfAListRepeatsEvenIfItPointsOn) {
    clock.setControls(white, {{.moves = 1, .base = 100, .increment = 0, .next = 0}});
    MakeMoves(2);
    EXPECT_EQ(clock.movesLeft(white), 1);
    EXPECT_EQ(clock.milliseconds(white), 300);
}

TEST_F(ChessClockTest, ResetGoesBackToTheFirstEntriesAndTakesNoTime) {
    for (const Colour side : {white, black}) {
        clock.setControls(side, {{.moves = 1, .base = 1000, .increment = 0, .next = 0},
                                 {.moves = -1, .base = 50, .increment = 0, .next = -1}});
    }
    clock.startClock();
    MakeMoves(1);
    Wait(400);
    clock.resetClock(black);
    EXPECT_FALSE(clock.running());
    EXPECT_EQ(clock.active(), black);
    for (const Colour side : {white, black}) {
        EXPECT_EQ(clock.milliseconds(side), 1000);
        EXPECT_EQ(clock.movesLeft(side), 1);
    }
    MakeMoves(1);  // the second entry comes again
    EXPECT_EQ(clock.milliseconds(white), 1050);
}

TEST_F(ChessClockTest, NewControlsRestartOneSideAtOnce) {
    clock.startClock();
    Wait(100);
    clock.setControls(black, {{.moves = -1, .base = 7000, .increment = 0, .next = -1}});
    EXPECT_EQ(clock.milliseconds(black), 7000);
    EXPECT_EQ(clock.movesLeft(black), -1);
    EXPECT_EQ(clock.milliseconds(white), 300000);
    EXPECT_TRUE(clock.running());
}

TEST_F(ChessClockTest, WhatIsSetOnARunningClockCountsFromThatMoment) {
    clock.startClock();
    Wait(1000);
    clock.setMilliseconds(white, 5000);
    Wait(200);
    clock.setMilliseconds(black, 4000);  // whose clock stands
    Wait(300);
    clock.switchClock();
    EXPECT_EQ(clock.milliseconds(white), 4500);
    EXPECT_EQ(clock.milliseconds(black), 4000);
    Wait(1000);
    clock.setControls(black, {{.moves = -1, .base = 7000, .increment = 0, .next = -1}});
    Wait(100);
    clock.stopClock();
    EXPECT_EQ(clock.milliseconds(black), 6900);
}

TEST_F(ChessClockTest, TimeMayBecomeNegativeAndBeSet) {
    clock.setMilliseconds(white, 100);
    clock.startClock();
    Wait(250);
    clock.switchClock();
    EXPECT_EQ(clock.milliseconds(white), -150);
    clock.setMilliseconds(white, 9000000000);  // more than 32 bits
    EXPECT_EQ(clock.milliseconds(white), 9000000000);
}

TEST_F(ChessClockTest, ClockOfTheSystemGoingBackGivesTimeBack) {
    clock.startClock();
    Wait(-3000);
    clock.stopClock();
    EXPECT_EQ(clock.milliseconds(white), 303000);
}

}  // namespace
