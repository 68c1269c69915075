#include "frame/game/game_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/recorded_game.h"
#include "support/row_name.h"

namespace {

using testing::IsEmpty;
using Like = ProtocolLike;

// --- The state at the start ---

TEST(GameControl, BeginsWithTheEngineAsBlack) {
    std::vector<std::string> calls;
    RecordingGameProtocol protocol(Like::console, calls);
    Engine engine;
    const GameControl control(engine, protocol);
    EXPECT_EQ(control.mode(), EngineMode::one_side);
    EXPECT_FALSE(control.player(white).active);
    EXPECT_EQ(control.player(white).name, "Incognito");
    EXPECT_TRUE(control.player(black).active);
    EXPECT_TRUE(control.player(black).isEngine);
    EXPECT_EQ(control.player(black).name, "Vorka");
    EXPECT_EQ(control.runningSearch(), std::nullopt);
    EXPECT_EQ(control.forecast(), Forecast());
    EXPECT_FALSE(control.pondering());
    EXPECT_EQ(GameAccess::maxTime(control), 0);
    EXPECT_EQ(GameAccess::maxDepth(control), 0);
    EXPECT_THAT(calls, IsEmpty());
}

TEST(GameControl, DefaultsMakeTheRecordsOfPlayers) {
    RecordedGame game;
    GameControl& control = game.control;
    control.nameOpponent("Anna");
    control.ratePlayers(2400, 1900);
    EXPECT_EQ(control.defaultHuman().name, "Anna");
    EXPECT_EQ(control.defaultHuman().rating, 1900);
    EXPECT_FALSE(control.defaultHuman().isEngine);
    EXPECT_FALSE(control.defaultHuman().active);
    EXPECT_EQ(control.defaultEngine(false).name, "Vorka");
    EXPECT_EQ(control.defaultEngine(false).rating, 2400);
    EXPECT_TRUE(control.defaultEngine(false).isEngine);
    EXPECT_FALSE(control.defaultEngine(false).active);
    EXPECT_TRUE(control.defaultEngine(true).active);
}

struct PlayersRow {
    std::string name;
    bool on_move, not_on_move, analyze;
    EngineMode mode;
};

class Players : public testing::TestWithParam<PlayersRow> {};

TEST_P(Players, SetTheEngineMode) {
    RecordedGame game(Like::console, "7k/8/8/8/8/8/q7/7K b - - 0 1");
    const PlayersRow& row = GetParam();
    GameAccess::setPlayers(game.control, game.control.defaultEngine(row.on_move),
                           game.control.defaultEngine(row.not_on_move), row.analyze);
    EXPECT_EQ(game.control.mode(), row.mode);
    EXPECT_EQ(game.control.player(black).active, row.on_move);
    EXPECT_EQ(game.control.player(white).active, row.not_on_move);
}

INSTANTIATE_TEST_SUITE_P(GameControl, Players,
                         testing::Values(PlayersRow{"NoSide", false, false, false, EngineMode::force},
                                         PlayersRow{"SideOnMove", true, false, false, EngineMode::one_side},
                                         PlayersRow{"OtherSide", false, true, false, EngineMode::one_side},
                                         PlayersRow{"BothSides", true, true, false, EngineMode::both_sides},
                                         PlayersRow{"Analyze", false, false, true, EngineMode::analyze}),
                         RowName<PlayersRow>);

TEST(GameControl, AnalysisTakesBothSidesFromTheEngine) {
    RecordedGame game;
    GameAccess::setPlayers(game.control, game.control.defaultEngine(true), game.control.defaultEngine(true), false);
    game.control.startAnalysis();
    EXPECT_EQ(game.control.mode(), EngineMode::analyze);
    EXPECT_FALSE(game.control.player(white).active);
    EXPECT_FALSE(game.control.player(black).active);
}

TEST(GameControl, AbortUnwindsOnlyARunningSearch) {
    RecordedGame game;
    EXPECT_NO_THROW(game.control.abortSearch(true));
    for (const bool discard : {true, false}) {
        GameAccess::pretendSearch(game.control, SearchKind::puzzle);
        try {
            game.control.abortSearch(discard);
            FAIL() << "the search goes on";
        } catch (const search_aborted_exception& aborted) {
            EXPECT_EQ(aborted.discard, discard);
        }
    }
}

// --- Limits ---

struct BudgetRow {
    std::string name;
    std::int64_t left;
    std::int32_t moves_left;
    std::int32_t maximum, variable;
};

class Budget : public testing::TestWithParam<BudgetRow> {};

TEST_P(Budget, FollowsFromTheClock) {
    const BudgetRow& row = GetParam();
    RecordedGame game;
    game.control.setTimeControls(white, {{.moves = row.moves_left, .base = 1, .increment = 0, .next = -1}});
    game.control.setMilliseconds(white, row.left);
    const SearchLimits limits = game.LimitsOf(SearchKind::normal);
    EXPECT_EQ(limits.kind, SearchKind::normal);
    EXPECT_EQ(limits.max_depth, 0);
    EXPECT_EQ(limits.max_time_limit, row.maximum);
    EXPECT_EQ(limits.variable_time_limit, row.variable);
}

INSTANTIATE_TEST_SUITE_P(
    GameControl, Budget,
    testing::Values(BudgetRow{"StartOfAGame", 300000, 40, 135000, 3658}, BudgetRow{"NoTimeLeft", 0, 40, 150, 150},
                    BudgetRow{"NegativeTime", -100000, -1, 150, 150}, BudgetRow{"OneMillisecond", 1, 40, 150, 150},
                    BudgetRow{"RestOfTheGame", 600000, -1, 420000, 9677},
                    BudgetRow{"ReserveIsRoundedHalfUp", 110030, -1, 3525, 1774},
                    BudgetRow{"RestOfTheGameInAHurry", 100000, -1, 150, 1612},
                    BudgetRow{"LastMoveToTheControl", 10000, 1, 10000, 2500},
                    BudgetRow{"ShareOfTheMovesIsMore", 60000, 17, 3529, 1666},
                    BudgetRow{"ShareOfTheMovesIsLess", 60000, 15, 6000, 1875},
                    BudgetRow{"VariableJustAboveTheLeast", 12382, 40, 309, 151},
                    BudgetRow{"VariableAtTheLeast", 12300, 40, 307, 150},
                    BudgetRow{"VariableBelowTheLeast", 6200, 40, 155, 150},
                    BudgetRow{"BeyondTheRange", 1000000000000, -1, std::numeric_limits<std::int32_t>::max(),
                              std::numeric_limits<std::int32_t>::max()},
                    BudgetRow{"ManyMoves", 300000, std::numeric_limits<std::int32_t>::max(), 150, 150}),
    RowName<BudgetRow>);

TEST(GameControl, BoundsOfThePlayerHoldForThinkingAndPondering) {
    RecordedGame game;
    game.control.setMaxTime(5000);
    game.control.setMaxDepth(7);
    for (const SearchKind kind : {SearchKind::normal, SearchKind::pondering}) {
        const SearchLimits limits = game.LimitsOf(kind);
        EXPECT_EQ(limits.max_time_limit, 5000);
        EXPECT_EQ(limits.variable_time_limit, 3658);
        EXPECT_EQ(limits.max_depth, 7);
    }
    game.control.setMaxTime(200000);  // looser than the clock
    EXPECT_EQ(game.LimitsOf(SearchKind::normal).max_time_limit, 135000);
}

TEST(GameControl, PonderingLooksAtTheClockThatStands) {
    RecordedGame game;
    game.control.setMilliseconds(white, 0);
    EXPECT_EQ(game.LimitsOf(SearchKind::normal).max_time_limit, 150);
    const SearchLimits limits = game.LimitsOf(SearchKind::pondering);
    EXPECT_EQ(limits.kind, SearchKind::pondering);
    EXPECT_EQ(limits.max_time_limit, 135000);
}

TEST(GameControl, AnalysisHasNoLimitsAndAHintHasItsOwn) {
    RecordedGame game;
    game.control.setMaxTime(10);
    game.control.setMaxDepth(3);
    const SearchLimits analysis = game.LimitsOf(SearchKind::analyze);
    EXPECT_EQ(analysis.kind, SearchKind::analyze);
    EXPECT_EQ(analysis.max_depth, 0);
    EXPECT_EQ(analysis.max_time_limit, 0);
    EXPECT_EQ(analysis.variable_time_limit, 0);
    const SearchLimits hint = game.LimitsOf(SearchKind::puzzle);
    EXPECT_EQ(hint.kind, SearchKind::puzzle);
    EXPECT_EQ(hint.max_depth, 0);
    EXPECT_EQ(hint.max_time_limit, 1000);
    EXPECT_EQ(hint.variable_time_limit, 750);
}

TEST(GameControl, RequestCarriesACopyOfThePosition) {
    RecordedGame game(Like::console, winning);
    game.Run([&] { game.control.requestSearch(SearchKind::analyze); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::analyze);
    GameAccess::record(game.control).Reset();
    EXPECT_EQ(game.request->position.GetFen(), "7k/8/8/8/8/8/Q7/K7 w - - 0 2");
}

}  // namespace
