#include "interfaces/commands_display.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "evaluation/evaluate.h"
#include "support/board_builder.h"
#include "support/command_bench.h"
#include "support/log_capture.h"

namespace {

using testing::Contains;
using testing::ElementsAre;

TEST(Display, ShowsTheBoardWithItsState) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send("display").finished);
    EXPECT_THAT(bench.calls, ElementsAre("showBoard(" + start_fen + ", with state)"));
}

TEST(Version, IsShownByTheProtocol) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send("version").finished);
    EXPECT_THAT(bench.calls, ElementsAre("showVersion"));
}

TEST(Eval, PrintsTheScoreOfThePosition) {
    CommandBench bench;
    bench.Prepare({"force", "setboard 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1"});
    for (const int personality : {0, 20}) {
        bench.game.protocol->personality = static_cast<std::int16_t>(personality);
        const int value = evaluate_for_display(bench.game.board(), personality);
        const LogCapture log;
        testing::internal::CaptureStdout();
        EXPECT_TRUE(bench.Send("eval").finished);
        const std::string expected = "eval: " + std::to_string(value) + "\n";
        EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
        EXPECT_EQ(log.text(), expected);
    }
}

TEST(Displays, RunBesideAnySearch) {
    for (const SearchStatus status :
         {SearchStatus::thinking, SearchStatus::pondering, SearchStatus::analyzing, SearchStatus::hint}) {
        for (const std::string line : {"display", "version", "eval", "."}) {
            CommandBench bench;
            bench.game.searchStatus = status;
            testing::internal::CaptureStdout();
            const auto outcome = bench.Send(line);
            (void)testing::internal::GetCapturedStdout();
            EXPECT_TRUE(outcome.finished) << line;
            EXPECT_FALSE(outcome.aborted) << line;
            EXPECT_EQ(bench.game.searchStatus, status) << line;
        }
    }
}

TEST(SearchStatusCommand, HasNothingToTellWithoutASearch) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send(".").finished);
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
    // A search that has not come to its first move yet.
    bench.game.searchStatus = SearchStatus::thinking;
    EXPECT_TRUE(bench.Send(".").finished);
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
}

/// Sends `.` from inside a search, the first time that it polls behind the start of an iteration, and then ends it.
class AskingHost : public SearchHost {
  public:
    explicit AskingHost(CommandBench& bench) : bench_(bench) {}
    void pollInput() override {
        if (!bench_.game.search.info().valid) return;
        bench_.Send(".");
        throw search_aborted_exception{true};
    }
    void sendThinking(const SearchInfo&) override {}
    void sendDepthStarted(int) override {}
    void sendNewPvMove(const std::string&) override {}
    void sendSearchInstability() override {}
    void sendSearchStatistics(const SearchInfo&) override {}
    void onSearchFinished(bool discard) override { bench_.game.onSearchFinished(discard); }

  private:
    CommandBench& bench_;
};

TEST(SearchStatusCommand, TellsOfARunningSearch) {
    CommandBench bench;
    AskingHost host(bench);
    bench.game.searchStatus = SearchStatus::analyzing;
    bench.game.search.Run({.kind = SearchKind::analyze}, bench.game, host);
    EXPECT_THAT(bench.calls, Contains("sendSearchStatus(search)"));
    EXPECT_EQ(bench.game.searchStatus, SearchStatus::none);
    bench.Send(".");
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
}

TEST(SearchStatusCommand, HasNothingToTellBehindTheEndOfTheGame) {
    CommandBench bench;
    AskingHost host(bench);
    bench.game.EndGame(GameResult::draw, GameEndReason::agreed_draw);
    bench.game.searchStatus = SearchStatus::analyzing;  // an analysis that waits for the next game
    bench.Send(".");
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
}

}  // namespace
