#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "evaluation/evaluate.h"
#include "support/board_builder.h"
#include "support/command_bench.h"
#include "support/fake_search_host.h"
#include "support/log_capture.h"

namespace {

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
        bench.game.protocol().personality = static_cast<std::int16_t>(personality);
        const int value =
            evaluate_for_display(bench.game.board(), personality, bench.engine.tables, bench.engine.bitbases);
        const LogCapture log;
        testing::internal::CaptureStdout();
        EXPECT_TRUE(bench.Send("eval").finished);
        const std::string expected = "eval: " + std::to_string(value) + "\n";
        EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
        EXPECT_EQ(log.text(), expected);
    }
}

TEST(Displays, RunBesideAnySearch) {
    for (const SearchKind kind : {SearchKind::normal, SearchKind::pondering, SearchKind::analyze, SearchKind::puzzle}) {
        for (const std::string line : {"display", "version", "eval", "."}) {
            CommandBench bench;
            GameAccess::pretendSearch(bench.game, kind);
            testing::internal::CaptureStdout();
            const auto outcome = bench.Send(line);
            (void)testing::internal::GetCapturedStdout();
            EXPECT_TRUE(outcome.finished) << line;
            EXPECT_FALSE(outcome.aborted) << line;
            EXPECT_EQ(bench.game.runningSearch(), kind) << line;
        }
    }
}

TEST(SearchStatusCommand, HasNothingToTellWithoutASearch) {
    CommandBench bench;
    EXPECT_TRUE(bench.Send(".").finished);
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
    // A search that has not come to its first move yet.
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    EXPECT_TRUE(bench.Send(".").finished);
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
}

/// Sends `.` from inside an analysis, once a root move is in work, after whatever `prepare` does; then ends it.
std::vector<std::string> AskRunningSearch(CommandBench& bench, const std::function<void()>& prepare) {
    FakeSearchHost host;
    host.on_poll = [&] {
        if (!bench.game.search().info().valid) return;
        prepare();
        bench.Send(".");
        throw search_aborted_exception{true};
    };
    host.on_finished = [&](bool discard) { bench.game.onSearchFinished(discard); };
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    GameAccess::search(bench.game).Run({.kind = SearchKind::analyze}, bench.game.record(), host);
    return bench.calls;
}

TEST(SearchStatusCommand, TellsOfARunningSearch) {
    CommandBench bench;
    EXPECT_THAT(AskRunningSearch(bench, [] {}), ElementsAre("sendSearchStatus(search)"));
    EXPECT_EQ(bench.game.runningSearch(), std::nullopt);
    bench.Send(".");
    EXPECT_THAT(bench.calls, ElementsAre("sendSearchStatus(none)"));
}

TEST(SearchStatusCommand, HasNothingToTellAfterTheEndOfTheGame) {
    CommandBench bench;
    const auto end_game = [&] { GameAccess::record(bench.game).EndGame(GameResult::draw, GameEndReason::agreed_draw); };
    EXPECT_THAT(AskRunningSearch(bench, end_game), ElementsAre("sendSearchStatus(none)"));
}

}  // namespace
