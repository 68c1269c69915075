#include "frame/game/game_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/recorded_game.h"
#include "support/row_name.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Like = ProtocolLike;

// --- Operations ---

const std::string one_queen = "7k/8/8/8/8/8/q7/7K b - - 0 1";

/// A game in which everything stands that an operation might have to put back.
class LivelyGame : public RecordedGame {
  public:
    explicit LivelyGame(Like model = Like::console) : RecordedGame(model) {
        GameAccess::record(control).MakeMoveFromText("g1f3");
        GameAccess::record(control).MakeMoveFromText("e7e5");
        GameAccess::record(control).UndoMove();
        GameAccess::forecast(control) = Forecast::Of(MoveNamed("e7e5"));
        GameAccess::advisor(control).searches = 9;
        GameAccess::clock(control).startClock();
        control.setMilliseconds(white, 5);
        control.setMaxDepth(7);
        control.setMaxTime(3000);
    }
};

/// What an operation does to the rest of the game.
struct OperationRow {
    std::string name;
    std::function<void(GameControl&)> run;
    std::string calls = {};  ///< what the protocol is told, but for the position
    bool forgets_forecast = false;
    bool resets_advisor = false;
    bool ends_search = true;
    std::optional<bool> clock_runs = {};  ///< none: as before
    EngineMode mode = EngineMode::one_side;
};

UserBoard OtherGame() {
    UserBoard other;
    other.SetBoardFromFen(one_queen);
    return other;
}

Move PawnToE5(const GameControl& game) { return MoveOf(game.board(), "e7e5"); }

// clang-format off
const std::vector<OperationRow> operations{
    {.name = "NewGame", .run = [](GameControl& g) { g.newGame(); },
     .calls = "onBoardChanged", .forgets_forecast = true, .resets_advisor = true, .clock_runs = false},
    {.name = "SetPosition", .run = [](GameControl& g) { g.setPosition(OtherGame()); },
     .calls = "onBoardChanged", .forgets_forecast = true, .resets_advisor = true, .clock_runs = false},
    {.name = "SetInvalidPosition", .run = [](GameControl& g) { g.setInvalidPosition(); }, .forgets_forecast = true},
    {.name = "PlayMove", .run = [](GameControl& g) { (void)g.playMove(PawnToE5(g)); },
     .calls = "onBoardChanged", .forgets_forecast = true, .ends_search = false, .clock_runs = true},
    {.name = "TakeBack", .run = [](GameControl& g) { g.takeBack(1); },
     .calls = "onBoardChanged", .forgets_forecast = true, .ends_search = false},
    {.name = "TakeBackNothing", .run = [](GameControl& g) { g.takeBack(0); },
     .calls = "onBoardChanged", .forgets_forecast = true, .ends_search = false},
    {.name = "MakeAgain", .run = [](GameControl& g) { g.makeAgain(1); },
     .calls = "onBoardChanged", .forgets_forecast = true},
    {.name = "GiveMoveToTheOtherSide", .run = [](GameControl& g) { g.giveMoveTo(white); },
     .forgets_forecast = true, .clock_runs = false},
    {.name = "GiveMoveToTheSideThatHasIt", .run = [](GameControl& g) { g.giveMoveTo(black); }, .clock_runs = false},
    {.name = "PlaySideOnMove", .run = [](GameControl& g) { g.playSideOnMove(); },
     .resets_advisor = true, .clock_runs = true},
    {.name = "PlayOtherSide", .run = [](GameControl& g) { g.playOtherSide(); },
     .resets_advisor = true, .clock_runs = true},
    {.name = "StopPlaying", .run = [](GameControl& g) { g.stopPlaying(); },
     .clock_runs = false, .mode = EngineMode::force},
    {.name = "StartAnalysis", .run = [](GameControl& g) { g.startAnalysis(); },
     .clock_runs = false, .mode = EngineMode::analyze},
    {.name = "LeaveAnalysis", .run = [](GameControl& g) { g.leaveAnalysis(); }, .mode = EngineMode::force},
    {.name = "EndGame", .run = [](GameControl& g) { (void)g.endGame(GameResult::draw, GameEndReason::agreed_draw); },
     .clock_runs = false, .mode = EngineMode::force},
    {.name = "TakeDrawOffer", .run = [](GameControl& g) { g.takeDrawOffer(); }, .ends_search = false},
    {.name = "SetContempt", .run = [](GameControl& g) { g.setContempt(20); },
     .resets_advisor = true, .ends_search = false},
    {.name = "SetContemptAsItIs", .run = [](GameControl& g) { g.setContempt(0); }, .ends_search = false},
    {.name = "NameOpponent", .run = [](GameControl& g) { g.nameOpponent("Anna"); }, .ends_search = false},
    {.name = "RatePlayers", .run = [](GameControl& g) { g.ratePlayers(1, 2); }, .ends_search = false},
    {.name = "PonderingOff", .run = [](GameControl& g) { g.setPondering(false); }, .ends_search = false},
};
// clang-format on

class Operation : public testing::TestWithParam<OperationRow> {};

TEST_P(Operation, ForgetsAndTellsWhatIsDue) {
    const OperationRow& row = GetParam();
    LivelyGame game;
    const Forecast forecast = game.control.forecast();
    row.run(game.control);
    EXPECT_EQ(game.control.forecast(), row.forgets_forecast ? Forecast() : forecast);
    EXPECT_EQ(game.control.advisor().searches, row.resets_advisor ? 0 : 9);
    EXPECT_EQ(game.control.clock().running(), row.clock_runs.value_or(true));
    EXPECT_EQ(game.control.mode(), row.mode);
    const int active = int{game.control.player(white).active} + int{game.control.player(black).active};
    EXPECT_EQ(active, row.mode == EngineMode::one_side ? 1 : 0);
    if (row.calls.empty()) {
        EXPECT_THAT(game.calls, IsEmpty());
    } else {
        EXPECT_THAT(game.calls, ElementsAre(row.calls + "(" + game.control.GetFen() + ")"));
    }
}

TEST_P(Operation, EndsARunningSearchBeforeAnythingChanges) {
    const OperationRow& row = GetParam();
    LivelyGame game;
    GameAccess::pretendSearch(game.control, SearchKind::normal);
    const std::string fen = game.control.GetFen();
    const Forecast forecast = game.control.forecast();
    if (!row.ends_search) {
        EXPECT_NO_THROW(row.run(game.control));
        EXPECT_EQ(game.control.runningSearch(), SearchKind::normal);
        return;
    }
    try {
        row.run(game.control);
        FAIL() << "the search goes on";
    } catch (const search_aborted_exception& aborted) {
        EXPECT_TRUE(aborted.discard);
    }
    EXPECT_EQ(game.control.GetFen(), fen);
    EXPECT_EQ(game.control.forecast(), forecast);
    EXPECT_EQ(game.control.advisor().searches, 9);
    EXPECT_EQ(game.control.mode(), EngineMode::one_side);
    EXPECT_TRUE(game.control.clock().running());
    EXPECT_THAT(game.calls, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(GameControl, Operation, testing::ValuesIn(operations), RowName<OperationRow>);

TEST(GameControl, NewGameHasNoBoundsAndGivesTheEngineBlack) {
    LivelyGame game;
    game.control.newGame();
    EXPECT_EQ(game.control.GetFen(), start_fen);
    EXPECT_EQ(GameAccess::maxDepth(game.control), 0);
    EXPECT_EQ(GameAccess::maxTime(game.control), 0);
    EXPECT_TRUE(game.control.player(black).active);
    EXPECT_EQ(game.control.clock().milliseconds(white), 300000);
    EXPECT_EQ(game.control.clock().active(), white);
}

TEST(GameControl, NewGameGoesOnAnalyzing) {
    RecordedGame game;
    game.control.startAnalysis();
    game.control.newGame();
    EXPECT_EQ(game.control.mode(), EngineMode::analyze);
    EXPECT_FALSE(game.control.player(black).active);
    EXPECT_TRUE(game.control.player(black).isEngine);
}

TEST(GameControl, MoveIsNotedAndSwitchesTheClock) {
    RecordedGame game;
    EXPECT_EQ(game.control.playMove(game.MoveNamed("g1f3")), "Nf3");
    EXPECT_EQ(game.control.clock().active(), black);
    EXPECT_EQ(game.control.clock().movesLeft(white), 39);
    EXPECT_TRUE(game.control.clock().running());
    EXPECT_EQ(game.control.made_moves().size(), 1U);
}

TEST(GameControl, MoveStartsNoClockWhereTheEngineDoesNotPlay) {
    RecordedGame game;
    game.control.stopPlaying();
    (void)game.control.playMove(game.MoveNamed("g1f3"));
    EXPECT_FALSE(game.control.clock().running());
}

TEST(GameControl, MovesAreTakenBackAndMadeAgain) {
    RecordedGame game;
    for (const std::string move : {"e2e4", "e7e5", "g1f3"}) (void)game.control.playMove(game.MoveNamed(move));
    game.control.takeBack(2);
    EXPECT_EQ(game.control.made_moves().size(), 1U);
    EXPECT_EQ(game.control.next_moves().size(), 2U);
    game.control.makeAgain(1);
    EXPECT_EQ(game.control.made_moves().size(), 2U);
    EXPECT_EQ(game.control.next_moves().size(), 1U);
}

TEST(GameControl, NewPositionTakesTheClocksAlong) {
    LivelyGame game;
    game.control.setPosition(OtherGame());
    EXPECT_EQ(game.control.GetFen(), OtherGame().GetFen());
    EXPECT_EQ(game.control.clock().active(), black);
    EXPECT_EQ(game.control.clock().milliseconds(white), 300000);
}

TEST(GameControl, SideOnMoveChangesWithItsPlayers) {
    RecordedGame game(Like::console, winning);
    game.control.giveMoveTo(black);
    EXPECT_EQ(game.control.side_to_move(), black);
    EXPECT_TRUE(game.control.player(white).active);
    game.control.giveMoveTo(white);
    EXPECT_EQ(game.control.side_to_move(), white);
    EXPECT_TRUE(game.control.player(black).active);
}

TEST(GameControl, FinishedGameKeepsItsEnd) {
    RecordedGame game;
    EXPECT_TRUE(game.control.endGame(GameResult::draw, GameEndReason::agreed_draw));
    EXPECT_FALSE(game.control.endGame(GameResult::white_wins, GameEndReason::resignation));
    EXPECT_EQ(game.control.result(), GameResult::draw);
    EXPECT_EQ(game.control.reason(), GameEndReason::agreed_draw);
}

TEST(GameControl, PonderHitIsThinking) {
    RecordedGame game;
    GameAccess::pretendSearch(game.control, SearchKind::pondering);
    game.control.ponderHit();
    EXPECT_EQ(game.control.runningSearch(), SearchKind::normal);
}

TEST(GameControl, PonderingEndsWhenItIsTurnedOff) {
    RecordedGame game;
    game.control.setPondering(true);
    GameAccess::pretendSearch(game.control, SearchKind::pondering);
    EXPECT_NO_THROW(game.control.setPondering(true));
    EXPECT_THROW(game.control.setPondering(false), search_aborted_exception);
    EXPECT_FALSE(game.control.pondering());
}

TEST(GameControl, SearchThatWasAskedForIsKnownWhileItRuns) {
    RecordedGame game;
    FakeSearchHost host;
    std::optional<SearchKind> seen;
    host.on_poll = [&] {
        seen = game.control.runningSearch();
        game.control.abortSearch(true);
    };
    host.on_finished = [&](bool discard) { game.control.onSearchFinished(discard); };
    game.control.runSearch({{.kind = SearchKind::analyze}, game.control.record()}, host);
    EXPECT_EQ(seen, SearchKind::analyze);
    EXPECT_EQ(game.control.runningSearch(), std::nullopt);
}

// --- The forecast ---

TEST(Forecasts, AreAStateAndAMove) {
    constexpr Move move = 0x1234;
    constexpr Move sorted = move | 0x3800000;  // with a sort score
    EXPECT_EQ(Forecast().state(), Forecast::State::none);
    EXPECT_EQ(Forecast::Of(INVALID), Forecast::NoMoveExists());
    EXPECT_EQ(Forecast::Of(sorted), Forecast::Of(move));
    EXPECT_EQ(Forecast::Of(sorted).move(), move);
    EXPECT_TRUE(Forecast::Of(move).Is(sorted));
    EXPECT_FALSE(Forecast::Of(move).Is(move + 1));
    for (const Forecast forecast : {Forecast(), Forecast::HintPending(), Forecast::NoMoveExists()}) {
        EXPECT_EQ(forecast.move(), INVALID);
        EXPECT_FALSE(forecast.Is(INVALID));
    }
}

TEST(Forecasts, ArePendingFromTheRequestOfAHint) {
    RecordedGame game;
    game.Run([&] { game.control.requestHint(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::puzzle);
    EXPECT_EQ(game.control.forecast(), Forecast::HintPending());
}

TEST(ForecastsDeathTest, CanNotBePendingTwice) {
    RecordedGame game;
    game.Run([&] { game.control.requestHint(); });
    EXPECT_DEATH(game.control.requestHint(), "");
}

}  // namespace
