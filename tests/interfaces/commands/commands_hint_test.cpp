#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/command_expectations.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// --- hint, ?, pondering ---

TEST(Hint, LooksForAMoveAndSaysNothingYet) {
    CommandBench bench;
    ExpectRequest(bench.Send("hint"), SearchKind::puzzle, start_fen);
    EXPECT_EQ(bench.game.forecast(), Forecast::HintPending());
    EXPECT_THAT(bench.calls, IsEmpty());
}

TEST(Hint, TellsTheStoredMove) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::Of(MoveOf(bench.game.board(), "g1f3"));
    for (const auto kind :
         std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::normal, SearchKind::pondering}) {
        GameAccess::pretendSearch(bench.game, kind);
        ExpectDone(bench.Send("hint"));
        EXPECT_THAT(bench.calls, ElementsAre("sendHint(Nf3)"));
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Hint, TellsThatThereIsNoMove) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::NoMoveExists();
    ExpectDone(bench.Send("hint"));
    EXPECT_THAT(bench.calls, ElementsAre("sendHint"));
}

TEST(Hint, IsRefusedBesideASearchThatHasNoMoveForIt) {
    for (const SearchKind kind : {SearchKind::normal, SearchKind::pondering, SearchKind::analyze, SearchKind::puzzle}) {
        for (const Forecast forecast : {Forecast(), Forecast::HintPending()}) {
            CommandBench bench;
            GameAccess::pretendSearch(bench.game, kind);
            GameAccess::forecast(bench.game) = forecast;
            EXPECT_EQ(bench.Send("hint").error, "Error (command not legal now): hint");
            EXPECT_EQ(bench.game.forecast(), forecast);
        }
    }
}

TEST(Hint, LeavesNothingPendingAfterAnAbortedSearch) {
    for (const std::string line : {"new", "force", "go", "analyze", "playother", "white", "black", "result *", "e4"}) {
        CommandBench bench;
        bench.Send("hint");
        GameAccess::pretendSearch(bench.game, SearchKind::puzzle);
        const auto outcome = bench.Send(line);
        EXPECT_EQ(outcome.aborted, true) << line;
        EXPECT_EQ(bench.game.forecast(), Forecast()) << line;
        GameAccess::pretendSearch(bench.game, std::nullopt);
        EXPECT_EQ(bench.Send("hint").error, "") << line;
    }
}

TEST(Hint, IsThatThereIsNoMoveAfterTheEnd) {
    CommandBench bench;
    bench.Prepare(fools_mate);
    ASSERT_TRUE(bench.Send("hint").request);
    bench.game.onSearchFinished(true);  // what a search entry does with a finished game
    ExpectDone(bench.Send("hint"));
    EXPECT_THAT(bench.calls, ElementsAre("sendHint"));
}

TEST(HintDeathTest, PendingWithoutASearchIsADefect) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::HintPending();
    EXPECT_DEATH(bench.Send("hint"), "");
}

TEST(MoveNow, StopsThinkingOnceAndKeepsTheResult) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    const auto outcome = bench.Send("?");
    EXPECT_EQ(outcome.aborted, false);
    EXPECT_TRUE(outcome.finished) << "it must not run again after the search that it ended";
    EXPECT_EQ(outcome.runs, 1);
}

TEST(MoveNow, IsIgnoredUnlessTheEngineThinks) {
    for (const auto kind : std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::pondering,
                                                                  SearchKind::analyze, SearchKind::puzzle}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        ExpectDone(bench.Send("?"));
        EXPECT_THAT(bench.calls, ElementsAre("sendCommandIgnored(no search running)"));
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Pondering, IsTurnedOnAndOffBesideAnySearch) {
    for (const auto kind : std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::normal, SearchKind::analyze,
                                                                  SearchKind::puzzle}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        ExpectDone(bench.Send("hard"));
        EXPECT_TRUE(bench.game.pondering());
        ExpectDone(bench.Send("hard"));
        EXPECT_TRUE(bench.game.pondering());
        const auto outcome = bench.Send("easy");
        ExpectDone(outcome);
        EXPECT_FALSE(outcome.aborted);
        EXPECT_FALSE(bench.game.pondering());
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Pondering, EndsAtOnceWhenItIsTurnedOff) {
    CommandBench bench;
    bench.Prepare({"hard"});
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
    ExpectDone(bench.Send("hard"));
    EXPECT_EQ(bench.game.runningSearch(), SearchKind::pondering);
    const auto outcome = bench.Send("easy");
    EXPECT_EQ(outcome.aborted, true);
    ExpectDone(outcome);
    EXPECT_FALSE(bench.game.pondering());
    EXPECT_EQ(bench.game.runningSearch(), std::nullopt);
}

}  // namespace
