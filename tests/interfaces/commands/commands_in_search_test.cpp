// Commands inside a real search: some run beside it, some end it and run again, one lets it go on as another.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/command_bench.h"
#include "support/fake_search_host.h"

namespace {

using testing::Contains;
using testing::HasSubstr;
using VorkaInterfaces::Command;

/// Runs a search as the engine does, and executes one line in the middle of it. What the line did with the search:
enum class Effect { went_on, ended };

struct RunningSearch {
    explicit RunningSearch(CommandBench& command_bench) : bench(command_bench) {
        host.on_finished = [this](bool discard) { bench.game.onSearchFinished(discard); };
    }

    /// The game takes it for a search of `kind`; `limits` say what it really is.
    Effect Send(SearchKind kind, const SearchLimits& limits, const std::string& line) {
        Effect effect = Effect::ended;
        host.on_poll = [&, polls = 0]() mutable {
            if (++polls == 3) {
                command = translate(bench.game.protocol(), line);
                command->Execute(bench.game);
            } else if (polls == 5) {
                effect = Effect::went_on;
                throw search_aborted_exception{true};
            }
        };
        GameAccess::pretendSearch(bench.game, kind);
        GameAccess::search(bench.game).Run(limits, bench.game.record(), host);
        return effect;
    }

    CommandBench& bench;
    FakeSearchHost host;
    std::unique_ptr<Command> command;
};

TEST(CommandsInASearch, RunBesideIt) {
    for (const std::string line :
         {"post",         "nopost",   "time 100", "otim 100", "ping 1", "name x", "rating 1 2", "computer", ".",
          "sd 3",         "st 3",     "version",  "draw",     "hard",   "easy",   "display",    "eval",     "id x",
          "level 40 5 0", "tc 0 5 0", "accepted", "random",   ""}) {
        CommandBench bench;
        RunningSearch search(bench);
        testing::internal::CaptureStdout();
        EXPECT_EQ(search.Send(SearchKind::normal, {.kind = SearchKind::normal}, line), Effect::went_on) << line;
        (void)testing::internal::GetCapturedStdout();
        ASSERT_TRUE(search.command) << line;
        EXPECT_TRUE(search.command->finished) << line;
    }
}

TEST(CommandsInASearch, EndItAndRunAgain) {
    struct Row {
        SearchKind kind;
        std::string line;
        bool asks_for_a_search = false;
    };
    for (const auto& [kind, line, asks_for_a_search] : {
             Row{SearchKind::normal, "new"},
             Row{SearchKind::normal, "force"},
             Row{SearchKind::pondering, "go", true},
             Row{SearchKind::normal, "analyze", true},
             Row{SearchKind::analyze, "exit"},
             Row{SearchKind::normal, "playother"},
             Row{SearchKind::normal, "white"},
             Row{SearchKind::normal, "black"},
             Row{SearchKind::normal, "result 1-0"},
             Row{SearchKind::pondering, "e4", true},
             Row{SearchKind::pondering, "easy"},
         }) {
        CommandBench bench;
        RunningSearch search(bench);
        EXPECT_EQ(search.Send(kind, {.kind = SearchKind::analyze}, line), Effect::ended) << line;
        EXPECT_EQ(search.host.finished, true) << line;
        EXPECT_EQ(bench.game.runningSearch(), std::nullopt) << line;
        ASSERT_TRUE(search.command) << line;
        EXPECT_FALSE(search.command->finished) << line;
        bool asked = false;
        try {
            search.command->Execute(bench.game);
        } catch (const search_request_received_exception&) {
            asked = true;
        }
        EXPECT_EQ(asked, asks_for_a_search) << line;
        EXPECT_TRUE(search.command->finished) << line;
    }
}

TEST(CommandsInASearch, PassAnErrorThroughItAndLeaveTheGameAlone) {
    CommandBench bench;
    RunningSearch search(bench);
    EXPECT_THROW(search.Send(SearchKind::normal, {.kind = SearchKind::normal}, "undo"), VorkaInterfaces::ErrorCommand);
    EXPECT_EQ(bench.fen(), start_fen);
}

TEST(CommandsInASearch, MoveAtOnceWithTheMoveFoundSoFar) {
    CommandBench bench;
    RunningSearch search(bench);
    bench.Prepare({"force", "e4"});
    bench.Prepare({"go"});
    EXPECT_EQ(search.Send(SearchKind::normal, {.kind = SearchKind::normal}, "?"), Effect::ended);
    EXPECT_EQ(search.host.finished, false);
    EXPECT_TRUE(search.command->finished);
    EXPECT_THAT(bench.calls, Contains(HasSubstr("sendEngineMove")));
    EXPECT_EQ(bench.game.made_moves().size(), 2U);
}

TEST(CommandsInASearch, TurnPonderingIntoThinkingWithThePredictedMove) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::Of(MoveOf(bench.game.board(), "e2e4"));
    UserBoard predicted = bench.game.record();
    predicted.MakeMove(bench.game.forecast().move());
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);

    FakeSearchHost host;
    host.on_finished = [&](bool discard) { bench.game.onSearchFinished(discard); };
    host.on_poll = [&, polls = 0]() mutable {
        if (++polls == 3) bench.Send("usermove e4");
    };
    GameAccess::search(bench.game)
        .Run({.kind = SearchKind::pondering, .max_time_limit = 200, .variable_time_limit = 100}, predicted, host);
    EXPECT_EQ(host.finished, false) << "it ended by itself, as a normal search";
    EXPECT_THAT(bench.calls, Contains("sendPredictedMoveMade(e4)"));
    EXPECT_THAT(bench.calls, Contains(HasSubstr("sendEngineMove")));
    EXPECT_EQ(bench.game.made_moves().size(), 2U);
    EXPECT_EQ(bench.game.runningSearch(), std::nullopt);
}

}  // namespace
