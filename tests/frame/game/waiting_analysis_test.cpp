// The analysis of a game that is over: nothing is searched, and a command ends it.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "frame/game/game_control.h"
#include "support/fake_search_host.h"
#include "support/game_access.h"
#include "support/recording_game_protocol.h"

namespace {

TEST(WaitInAnalysis, IsASearchOfItsKindUntilACommandEndsIt) {
    std::vector<std::string> calls;
    RecordingGameProtocol protocol(ProtocolLike::console, calls);
    Engine engine;
    GameControl game(engine, protocol);
    GameAccess::record(game).SetBoardFromFen("7k/5QQ1/8/8/8/8/8/K7 b - - 0 1");
    ASSERT_TRUE(game.IsGameOver());

    FakeSearchHost host;
    std::vector<std::optional<SearchKind>> seen;
    host.on_poll = [&] {
        seen.push_back(game.runningSearch());
        if (host.polls == 2) game.stopPlaying();
    };
    game.waitInAnalysis(host);
    EXPECT_EQ(seen, (std::vector<std::optional<SearchKind>>{SearchKind::analyze, SearchKind::analyze}));
    EXPECT_EQ(game.runningSearch(), std::nullopt);
}

TEST(WaitInAnalysis, ForgetsAHintThatWasAskedFor) {
    std::vector<std::string> calls;
    RecordingGameProtocol protocol(ProtocolLike::console, calls);
    Engine engine;
    GameControl game(engine, protocol);
    GameAccess::record(game).SetBoardFromFen("7k/5QQ1/8/8/8/8/8/K7 b - - 0 1");
    GameAccess::forecast(game) = Forecast::HintPending();

    FakeSearchHost host;
    host.on_poll = [&] { game.abortSearch(true); };
    game.waitInAnalysis(host);
    EXPECT_EQ(game.forecast(), Forecast::NoMoveExists());
}

}  // namespace
