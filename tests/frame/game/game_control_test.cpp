#include "frame/game/game_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/fake_search_host.h"
#include "support/game_access.h"
#include "support/log_capture.h"
#include "support/recording_game_protocol.h"
#include "support/row_name.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Like = ProtocolLike;

/// A game with a recording protocol. The engine plays the side on move.
class Game {
  public:
    explicit Game(Like model = Like::console, const std::string& fen = start_fen)
        : protocol(model, calls), control(engine, protocol) {
        GameAccess::record(control).SetBoardFromFen(fen);
        GameAccess::clock(control).resetClock(control.side_to_move());
        GameAccess::setPlayers(control, control.defaultEngine(true), control.defaultHuman(), false);
    }

    /// Runs a real search over so many iterations, and then the end-of-search handler as for `kind`.
    void Search(std::optional<SearchKind> kind, int depth = 2) {
        FakeSearchHost host;
        GameAccess::search(control).Run({.kind = SearchKind::normal, .max_depth = depth}, control.record(), host);
        GameAccess::pretendSearch(control, kind);
        Finish(false);
    }
    void Finish(bool discard) {
        Run([&] { control.onSearchFinished(discard); });
    }
    template <class Action>
    void Run(Action action) {
        request.reset();
        try {
            action();
        } catch (const search_request_received_exception& received) {
            request = received.request;
        }
    }
    [[nodiscard]] SearchLimits LimitsOf(SearchKind kind) {
        Run([&] { control.requestSearch(kind); });
        return request.value().limits;
    }
    [[nodiscard]] Move MoveNamed(std::string_view text) const { return MoveOf(control.board(), text); }

    std::vector<std::string> calls;
    RecordingGameProtocol protocol;
    Engine engine;
    GameControl control;
    std::optional<SearchRequest> request;
};

// Black can do nothing about what the queen does, and a mate is far away.
const std::string winning = "7k/8/8/8/8/8/Q7/K7 w - - 0 1";
const std::string losing = "7k/8/8/8/8/8/q7/7K w - - 0 1";
const std::string losing_as_black = "7k/Q7/8/8/8/8/8/7K b - - 0 1";
const std::string mate_in_one = "7k/8/5KQ1/8/8/8/8/8 w - - 0 1";
// The search takes it for a draw, so that its line ends with the first move; the game goes on.
const std::string two_knights = "7k/8/8/8/8/8/8/KNN5 w - - 0 1";

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
    Game game;
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
    Game game(Like::console, "7k/8/8/8/8/8/q7/7K b - - 0 1");
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
    Game game;
    GameAccess::setPlayers(game.control, game.control.defaultEngine(true), game.control.defaultEngine(true), false);
    game.control.startAnalysis();
    EXPECT_EQ(game.control.mode(), EngineMode::analyze);
    EXPECT_FALSE(game.control.player(white).active);
    EXPECT_FALSE(game.control.player(black).active);
}

TEST(GameControl, AbortUnwindsOnlyARunningSearch) {
    Game game;
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
    Game game;
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
    Game game;
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
    Game game;
    game.control.setMilliseconds(white, 0);
    EXPECT_EQ(game.LimitsOf(SearchKind::normal).max_time_limit, 150);
    const SearchLimits limits = game.LimitsOf(SearchKind::pondering);
    EXPECT_EQ(limits.kind, SearchKind::pondering);
    EXPECT_EQ(limits.max_time_limit, 135000);
}

TEST(GameControl, AnalysisHasNoLimitsAndAHintHasItsOwn) {
    Game game;
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
    Game game(Like::console, winning);
    game.Run([&] { game.control.requestSearch(SearchKind::analyze); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::analyze);
    GameAccess::record(game.control).Reset();
    EXPECT_EQ(game.request->position.GetFen(), "7k/8/8/8/8/8/Q7/K7 w - - 0 2");
}

// --- Operations ---

const std::string one_queen = "7k/8/8/8/8/8/q7/7K b - - 0 1";

/// A game in which everything stands that an operation might have to put back.
class LivelyGame : public Game {
  public:
    explicit LivelyGame(Like model = Like::console) : Game(model) {
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
    Game game;
    game.control.startAnalysis();
    game.control.newGame();
    EXPECT_EQ(game.control.mode(), EngineMode::analyze);
    EXPECT_FALSE(game.control.player(black).active);
    EXPECT_TRUE(game.control.player(black).isEngine);
}

TEST(GameControl, MoveIsNotedAndSwitchesTheClock) {
    Game game;
    EXPECT_EQ(game.control.playMove(game.MoveNamed("g1f3")), "Nf3");
    EXPECT_EQ(game.control.clock().active(), black);
    EXPECT_EQ(game.control.clock().movesLeft(white), 39);
    EXPECT_TRUE(game.control.clock().running());
    EXPECT_EQ(game.control.made_moves().size(), 1U);
}

TEST(GameControl, MoveStartsNoClockWhereTheEngineDoesNotPlay) {
    Game game;
    game.control.stopPlaying();
    (void)game.control.playMove(game.MoveNamed("g1f3"));
    EXPECT_FALSE(game.control.clock().running());
}

TEST(GameControl, MovesAreTakenBackAndMadeAgain) {
    Game game;
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
    Game game(Like::console, winning);
    game.control.giveMoveTo(black);
    EXPECT_EQ(game.control.side_to_move(), black);
    EXPECT_TRUE(game.control.player(white).active);
    game.control.giveMoveTo(white);
    EXPECT_EQ(game.control.side_to_move(), white);
    EXPECT_TRUE(game.control.player(black).active);
}

TEST(GameControl, FinishedGameKeepsItsEnd) {
    Game game;
    EXPECT_TRUE(game.control.endGame(GameResult::draw, GameEndReason::agreed_draw));
    EXPECT_FALSE(game.control.endGame(GameResult::white_wins, GameEndReason::resignation));
    EXPECT_EQ(game.control.result(), GameResult::draw);
    EXPECT_EQ(game.control.reason(), GameEndReason::agreed_draw);
}

TEST(GameControl, PonderHitIsThinking) {
    Game game;
    GameAccess::pretendSearch(game.control, SearchKind::pondering);
    game.control.ponderHit();
    EXPECT_EQ(game.control.runningSearch(), SearchKind::normal);
}

TEST(GameControl, PonderingEndsWhenItIsTurnedOff) {
    Game game;
    game.control.setPondering(true);
    GameAccess::pretendSearch(game.control, SearchKind::pondering);
    EXPECT_NO_THROW(game.control.setPondering(true));
    EXPECT_THROW(game.control.setPondering(false), search_aborted_exception);
    EXPECT_FALSE(game.control.pondering());
}

TEST(GameControl, SearchThatWasAskedForIsKnownWhileItRuns) {
    Game game;
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
    Game game;
    game.Run([&] { game.control.requestHint(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::puzzle);
    EXPECT_EQ(game.control.forecast(), Forecast::HintPending());
}

TEST(ForecastsDeathTest, CanNotBePendingTwice) {
    Game game;
    game.Run([&] { game.control.requestHint(); });
    EXPECT_DEATH(game.control.requestHint(), "");
}

// --- The end of a thinking search ---

TEST(ThinkingFinished, DiscardedSearchPlaysNothing) {
    Game game;
    GameAccess::pretendSearch(game.control, SearchKind::normal);
    game.Finish(true);
    EXPECT_EQ(game.control.runningSearch(), std::nullopt);
    EXPECT_THAT(game.calls, IsEmpty());
    EXPECT_EQ(game.control.advisor().searches, 0);
    EXPECT_FALSE(game.request);
}

TEST(ThinkingFinished, MoveIsPlayedAndShown) {
    Game game(Like::console, winning);
    game.Search(SearchKind::normal);
    ASSERT_EQ(game.calls.size(), 2U);
    EXPECT_EQ(game.calls[0],
              "sendEngineMove(" + MoveToSan(game.control.start().board, game.control.made_moves()[0]) + ")");
    EXPECT_EQ(game.calls[1], "onBoardChanged(" + game.control.GetFen() + ")");
    EXPECT_EQ(game.control.clock().active(), black);
    EXPECT_EQ(game.control.advisor().searches, 1);
    EXPECT_EQ(game.control.runningSearch(), std::nullopt);
    EXPECT_FALSE(game.request);  // pondering is off
}

TEST(ThinkingFinished, EndOnTheBoardIsAnnouncedAndStopsTheClock) {
    Game game(Like::xboard, mate_in_one);
    GameAccess::clock(game.control).startClock();
    game.control.setPondering(true);
    game.Search(SearchKind::normal);
    EXPECT_THAT(game.calls, ElementsAre("sendEngineMove(Qg7#)", "onBoardChanged(7k/6Q1/5K2/8/8/8/8/8 b - - 1 2)",
                                        "sendGameResult(1-0, White mates, mode 1)"));
    EXPECT_FALSE(game.control.clock().running());
    EXPECT_FALSE(game.request);
}

TEST(ThinkingFinished, PondersOnTheSecondMoveOfTheLine) {
    Game game(Like::console, winning);
    game.control.setPondering(true);
    game.Search(SearchKind::normal, 4);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_TRUE(game.control.forecast().Is(game.control.search().info().principal_variation.at(1).first));
    UserBoard predicted = game.control.record();
    predicted.MakeMove(game.control.forecast().move());
    EXPECT_EQ(game.request->position.GetFen(), predicted.GetFen());
    EXPECT_EQ(game.control.made_moves().size(), 1U);  // the game itself waits for the move
}

TEST(ThinkingFinished, LooksForAForecastBehindALineOfOneMove) {
    Game game(Like::console, two_knights);
    game.control.setPondering(true);
    game.Search(SearchKind::normal);
    ASSERT_EQ(game.control.search().info().principal_variation.size(), 1U);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::puzzle);
    EXPECT_EQ(game.request->position.GetFen(), game.control.GetFen());
    EXPECT_EQ(game.control.forecast(), Forecast());
}

TEST(ThinkingFinished, DrawOfferIsRejectedAndTheGameGoesOn) {
    const LogCapture log;
    Game game(Like::console, winning);
    GameAccess::advisor(game.control).drawOfferPending = true;
    testing::internal::CaptureStdout();
    game.Search(SearchKind::normal);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.text(), "Engine rejects draw offer (not sent to xboard)\n");
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[0], "sendDrawRejected(person)");
    EXPECT_FALSE(game.control.advisor().drawOfferPending);
    EXPECT_FALSE(game.control.IsGameOver());
}

TEST(ThinkingFinished, AcceptedDrawEndsTheGameInTheConsole) {
    Game game(Like::console, winning);
    GameAccess::clock(game.control).startClock();
    GameAccess::advisor(game.control).drawOfferPending = true;
    GameAccess::advisor(game.control).sinceOffer = 0;  // the engine offered with its last move
    game.Search(SearchKind::normal);
    EXPECT_THAT(game.calls, ElementsAre("sendDrawAccepted", "sendGameResult(1/2-1/2, Mutual agreement, mode 1)"));
    EXPECT_EQ(game.control.result(), GameResult::draw);
    EXPECT_EQ(game.control.reason(), GameEndReason::agreed_draw);
    EXPECT_FALSE(game.control.clock().running());
    EXPECT_THAT(game.control.made_moves(), IsEmpty());
}

TEST(ThinkingFinished, AcceptedDrawLeavesTheResultToAnInterface) {
    Game game(Like::xboard, winning);
    GameAccess::advisor(game.control).drawOfferPending = true;
    GameAccess::advisor(game.control).sinceOffer = 0;
    game.Search(SearchKind::normal);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[0], "sendDrawAccepted");
    EXPECT_FALSE(game.control.IsGameOver());
    EXPECT_EQ(game.control.made_moves().size(), 1U);
    EXPECT_FALSE(game.control.advisor().drawOfferPending);
}

TEST(ThinkingFinished, OfferThatIsOneMoveOldIsForgotten) {
    Game game(Like::console, winning);
    GameAccess::advisor(game.control).drawOfferPending = true;
    GameAccess::advisor(game.control).sinceOffer = 1;
    game.Search(SearchKind::normal);
    EXPECT_EQ(game.calls.at(0), "sendDrawRejected(person)");
}

TEST(ThinkingFinished, ResignationEndsTheGameInTheConsole) {
    struct Side {
        std::string fen, result;
        GameResult code;
    };
    for (const Side& side :
         {Side{losing, "sendGameResult(0-1, White resigns, mode 1)", GameResult::black_wins},
          Side{losing_as_black, "sendGameResult(1-0, Black resigns, mode 1)", GameResult::white_wins}}) {
        Game game(Like::console, side.fen);
        game.control.setPondering(true);
        GameAccess::clock(game.control).startClock();
        GameAccess::advisor(game.control).hopelessRun = 5;
        game.Search(SearchKind::normal);
        ASSERT_EQ(game.calls.size(), 4U);
        EXPECT_EQ(game.calls[2], "sendResign");
        EXPECT_EQ(game.calls[3], side.result);
        EXPECT_EQ(game.control.result(), side.code);
        EXPECT_EQ(game.control.reason(), GameEndReason::resignation);
        EXPECT_FALSE(game.control.clock().running());
        EXPECT_FALSE(game.request);
    }
}

TEST(ThinkingFinished, ResignationLeavesTheResultToAnInterface) {
    Game game(Like::xboard, losing);
    game.control.setPondering(true);
    GameAccess::advisor(game.control).hopelessRun = 5;
    game.Search(SearchKind::normal);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[2], "sendResign");
    EXPECT_FALSE(game.control.IsGameOver());
    EXPECT_TRUE(game.request);
}

TEST(ThinkingFinished, OneScoreIsNoReasonToResign) {
    Game game(Like::console, losing);
    GameAccess::advisor(game.control).hopelessRun = 4;
    game.Search(SearchKind::normal);
    EXPECT_EQ(game.calls.size(), 2U);
}

TEST(ThinkingFinished, DrawIsOfferedBehindTheMove) {
    Game game(Like::console, two_knights);
    GameAccess::advisor(game.control).searches = 1;
    GameAccess::advisor(game.control).drawScoreRun = 1;
    game.Search(SearchKind::normal);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[2], "sendDrawOffer");
    EXPECT_EQ(game.control.advisor().sinceOffer, 0);
    EXPECT_FALSE(game.control.IsGameOver());
}

// --- The end of a hint or forecast search ---

TEST(HintFinished, AnswersNothingByItself) {
    Game game(Like::console, winning);
    game.control.setPondering(true);
    GameAccess::forecast(game.control) = Forecast::HintPending();
    game.Search(SearchKind::puzzle);
    EXPECT_TRUE(game.control.forecast().Is(game.control.search().best_move()));
    EXPECT_THAT(game.calls, IsEmpty());
    EXPECT_FALSE(game.request);
    EXPECT_EQ(game.control.advisor().searches, 0);
}

TEST(HintFinished, ForecastIsPonderedOn) {
    Game game(Like::console, winning);
    game.control.setPondering(true);
    game.Search(SearchKind::puzzle);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.request->position.made_moves().size(), 1U);
    EXPECT_EQ(game.request->position.made_moves()[0], game.control.forecast().move());
    EXPECT_THAT(game.control.made_moves(), IsEmpty());
}

TEST(HintFinished, ForecastIsKeptWithPonderingOff) {
    Game game(Like::console, winning);
    game.Search(SearchKind::puzzle);
    EXPECT_EQ(game.control.forecast().state(), Forecast::State::move);
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, ForecastThatEndsTheGameIsNotPonderedOn) {
    Game game(Like::console, mate_in_one);
    game.control.setPondering(true);
    game.Search(SearchKind::puzzle);
    EXPECT_EQ(game.control.forecast(), Forecast::Of(game.MoveNamed("g6g7")));
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, WithoutAMoveThereIsNothingToForecast) {
    Game game;
    game.control.setPondering(true);
    GameAccess::pretendSearch(game.control, SearchKind::puzzle);
    game.Finish(false);  // no search ever found a move
    EXPECT_EQ(game.control.forecast(), Forecast::NoMoveExists());
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, AbortLeavesNoPendingRequest) {
    Game game;
    GameAccess::forecast(game.control) = Forecast::HintPending();
    GameAccess::pretendSearch(game.control, SearchKind::puzzle);
    game.Finish(true);
    EXPECT_EQ(game.control.forecast(), Forecast());
}

TEST(HintFinished, AbortKeepsAMove) {
    Game game;
    GameAccess::forecast(game.control) = Forecast::Of(game.MoveNamed("e2e4"));
    GameAccess::pretendSearch(game.control, SearchKind::pondering);
    game.Finish(true);
    EXPECT_EQ(game.control.forecast(), Forecast::Of(game.MoveNamed("e2e4")));
}

TEST(HintFinished, FinishedGameAndImpossiblePositionHaveNoMove) {
    for (const bool impossible : {false, true}) {
        Game game;
        if (impossible) {
            GameAccess::record(game.control).SetInvalid();
        } else {
            GameAccess::record(game.control).EndGame(GameResult::draw, GameEndReason::agreed_draw);
        }
        GameAccess::forecast(game.control) = Forecast::HintPending();
        GameAccess::pretendSearch(game.control, SearchKind::puzzle);
        game.Finish(true);
        EXPECT_EQ(game.control.forecast(), Forecast::NoMoveExists());
    }
}

TEST(SearchFinished, AnalysisAndPonderingDoNothing) {
    for (const auto kind :
         std::vector<std::optional<SearchKind>>{SearchKind::analyze, SearchKind::pondering, std::nullopt}) {
        Game game;
        game.control.setPondering(true);
        game.Search(kind);
        EXPECT_EQ(game.control.runningSearch(), std::nullopt);
        EXPECT_THAT(game.calls, IsEmpty());
        EXPECT_FALSE(game.request);
        EXPECT_EQ(game.control.forecast(), Forecast());
    }
}

// --- Pondering ---

TEST(StartPondering, LooksForAForecastFirst) {
    Game game;
    game.Run([&] { game.control.startPondering(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::puzzle);
    EXPECT_THAT(game.request->position.made_moves(), IsEmpty());
}

TEST(StartPondering, PondersOnAStoredMove) {
    Game game;
    GameAccess::forecast(game.control) = Forecast::Of(game.MoveNamed("e2e4"));
    game.Run([&] { game.control.startPondering(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.request->position.made_moves().size(), 1U);
    EXPECT_EQ(game.control.forecast(), Forecast::Of(game.MoveNamed("e2e4")));
}

TEST(StartPondering, ReturnsWithoutSomethingToPonderOn) {
    for (const Forecast forecast : {Forecast::NoMoveExists(), Forecast::HintPending()}) {
        Game game;
        GameAccess::forecast(game.control) = forecast;
        game.Run([&] { game.control.startPondering(); });
        EXPECT_FALSE(game.request);
    }
    Game over;
    GameAccess::record(over.control).EndGame(GameResult::draw, GameEndReason::agreed_draw);
    over.Run([&] { over.control.startPondering(); });
    EXPECT_FALSE(over.request);

    Game impossible;
    GameAccess::record(impossible.control).SetInvalid();
    impossible.Run([&] { impossible.control.startPondering(); });
    EXPECT_FALSE(impossible.request);
}

}  // namespace
