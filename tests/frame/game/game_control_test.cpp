#include "frame/game/game_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/fake_search_host.h"
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
        control.SetBoardFromFen(fen);
        control.clock.resetClock(control.side_to_move());
        control.setPlayers(control.defaultEngine(true), control.defaultHuman(), false);
    }

    /// Runs a real search over so many iterations, and then the end-of-search handler as for `status`.
    void Search(SearchStatus status, int depth = 2) {
        FakeSearchHost host;
        control.search.Run({.kind = SearchKind::normal, .max_depth = depth}, control, host);
        control.searchStatus = status;
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
    EXPECT_EQ(control.engineMode, EngineMode::one_side);
    EXPECT_FALSE(control.players[white].active);
    EXPECT_EQ(control.players[white].name, "Incognito");
    EXPECT_TRUE(control.players[black].active);
    EXPECT_TRUE(control.players[black].isEngine);
    EXPECT_EQ(control.players[black].name, "Vorka");
    EXPECT_EQ(control.searchStatus, SearchStatus::none);
    EXPECT_EQ(control.prediction, no_prediction);
    EXPECT_FALSE(control.pondering);
    EXPECT_EQ(control.maxTime, 0);
    EXPECT_EQ(control.maxDepth, 0);
    EXPECT_THAT(calls, IsEmpty());
}

TEST(GameControl, DefaultsMakeTheRecordsOfPlayers) {
    Game game;
    GameControl& control = game.control;
    control.playerDefaults = {.opponentName = "Anna", .opponentRating = 1900, .engineRating = 2400};
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
    game.control.setPlayers(game.control.defaultEngine(row.on_move), game.control.defaultEngine(row.not_on_move),
                            row.analyze);
    EXPECT_EQ(game.control.engineMode, row.mode);
    EXPECT_EQ(game.control.players[black].active, row.on_move);
    EXPECT_EQ(game.control.players[white].active, row.not_on_move);
}

INSTANTIATE_TEST_SUITE_P(GameControl, Players,
                         testing::Values(PlayersRow{"NoSide", false, false, false, EngineMode::force},
                                         PlayersRow{"SideOnMove", true, false, false, EngineMode::one_side},
                                         PlayersRow{"OtherSide", false, true, false, EngineMode::one_side},
                                         PlayersRow{"BothSides", true, true, false, EngineMode::both_sides},
                                         PlayersRow{"Analyze", false, false, true, EngineMode::analyze},
                                         PlayersRow{"AnalyzeAlthoughActive", true, false, true, EngineMode::analyze}),
                         RowName<PlayersRow>);

TEST(GameControl, LeavingPlayClearsBothSides) {
    Game game;
    game.control.setPlayers(game.control.defaultEngine(true), game.control.defaultEngine(true), false);
    game.control.leavePlay(EngineMode::analyze);
    EXPECT_EQ(game.control.engineMode, EngineMode::analyze);
    EXPECT_FALSE(game.control.players[white].active);
    EXPECT_FALSE(game.control.players[black].active);
}

TEST(GameControl, AbortUnwindsOnlyARunningSearch) {
    Game game;
    EXPECT_NO_THROW(game.control.abortSearch(true));
    for (const bool discard : {true, false}) {
        game.control.searchStatus = SearchStatus::hint;
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
    game.control.clock.setControls(white, {{.moves = row.moves_left, .base = 1, .increment = 0, .next = -1}});
    game.control.clock.setMilliseconds(white, row.left);
    const SearchLimits limits = game.control.limitsFor(SearchPurpose::think);
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
    game.control.maxTime = 5000;
    game.control.maxDepth = 7;
    for (const SearchPurpose purpose : {SearchPurpose::think, SearchPurpose::ponder}) {
        const SearchLimits limits = game.control.limitsFor(purpose);
        EXPECT_EQ(limits.max_time_limit, 5000);
        EXPECT_EQ(limits.variable_time_limit, 3658);
        EXPECT_EQ(limits.max_depth, 7);
    }
    game.control.maxTime = 200000;  // looser than the clock
    EXPECT_EQ(game.control.limitsFor(SearchPurpose::think).max_time_limit, 135000);
}

TEST(GameControl, PonderingLooksAtTheClockThatStands) {
    Game game;
    game.control.clock.setMilliseconds(white, 0);
    EXPECT_EQ(game.control.limitsFor(SearchPurpose::think).max_time_limit, 150);
    const SearchLimits limits = game.control.limitsFor(SearchPurpose::ponder);
    EXPECT_EQ(limits.kind, SearchKind::pondering);
    EXPECT_EQ(limits.max_time_limit, 135000);
}

TEST(GameControl, AnalysisHasNoLimitsAndAHintHasItsOwn) {
    Game game;
    game.control.maxTime = 10;
    game.control.maxDepth = 3;
    const SearchLimits analysis = game.control.limitsFor(SearchPurpose::analyze);
    EXPECT_EQ(analysis.kind, SearchKind::analyze);
    EXPECT_EQ(analysis.max_depth, 0);
    EXPECT_EQ(analysis.max_time_limit, 0);
    EXPECT_EQ(analysis.variable_time_limit, 0);
    const SearchLimits hint = game.control.limitsFor(SearchPurpose::hint);
    EXPECT_EQ(hint.kind, SearchKind::puzzle);
    EXPECT_EQ(hint.max_depth, 0);
    EXPECT_EQ(hint.max_time_limit, 1000);
    EXPECT_EQ(hint.variable_time_limit, 750);
}

TEST(GameControl, RequestCarriesACopyOfThePosition) {
    Game game(Like::console, winning);
    game.Run([&] { game.control.requestSearch(SearchPurpose::analyze, game.control); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::analyze);
    game.control.Reset();
    EXPECT_EQ(game.request->position.GetFen(), "7k/8/8/8/8/8/Q7/K7 w - - 0 2");
}

// --- Changes of the game ---

TEST(GameControl, MoveIsNotedSwitchesTheClockAndForgetsThePrediction) {
    Game game;
    game.control.prediction = game.MoveNamed("e2e4");
    std::string text;
    game.control.makeMove(game.MoveNamed("g1f3"), text);
    EXPECT_EQ(text, "Nf3");
    EXPECT_EQ(game.control.clock.active(), black);
    EXPECT_EQ(game.control.clock.movesLeft(white), 39);
    EXPECT_EQ(game.control.prediction, no_prediction);
    EXPECT_EQ(game.control.made_moves().size(), 1U);
    EXPECT_THAT(game.calls, IsEmpty());
}

TEST(GameControl, ReplacedGameStartsAnew) {
    Game game;
    UserBoard other;
    other.SetBoardFromFen("7k/8/8/8/8/8/q7/7K b - - 0 1");
    game.control.prediction = prediction_no_move_exists;
    game.control.advisor.searches = 9;
    game.control.clock.startClock();
    game.control.clock.setMilliseconds(white, 5);
    game.control.replaceGame(other);
    EXPECT_EQ(game.control.GetFen(), other.GetFen());
    EXPECT_EQ(game.control.prediction, no_prediction);
    EXPECT_EQ(game.control.advisor.searches, 0);
    EXPECT_FALSE(game.control.clock.running());
    EXPECT_EQ(game.control.clock.active(), black);
    EXPECT_EQ(game.control.clock.milliseconds(white), 300000);
    EXPECT_THAT(game.calls, ElementsAre("onBoardChanged(" + other.GetFen() + ")"));
}

// --- The end of a thinking search ---

TEST(ThinkingFinished, DiscardedSearchPlaysNothing) {
    Game game;
    game.control.searchStatus = SearchStatus::thinking;
    game.Finish(true);
    EXPECT_EQ(game.control.searchStatus, SearchStatus::none);
    EXPECT_THAT(game.calls, IsEmpty());
    EXPECT_EQ(game.control.advisor.searches, 0);
    EXPECT_FALSE(game.request);
}

TEST(ThinkingFinished, MoveIsPlayedAndShown) {
    Game game(Like::console, winning);
    game.Search(SearchStatus::thinking);
    ASSERT_EQ(game.calls.size(), 2U);
    EXPECT_EQ(game.calls[0],
              "sendEngineMove(" + MoveToSan(game.control.start().board, game.control.made_moves()[0]) + ")");
    EXPECT_EQ(game.calls[1], "onBoardChanged(" + game.control.GetFen() + ")");
    EXPECT_EQ(game.control.clock.active(), black);
    EXPECT_EQ(game.control.advisor.searches, 1);
    EXPECT_EQ(game.control.searchStatus, SearchStatus::none);
    EXPECT_FALSE(game.request);  // pondering is off
}

TEST(ThinkingFinished, EndOnTheBoardIsAnnouncedAndStopsTheClock) {
    Game game(Like::xboard, mate_in_one);
    game.control.clock.startClock();
    game.control.pondering = true;
    game.Search(SearchStatus::thinking);
    EXPECT_THAT(game.calls, ElementsAre("sendEngineMove(Qg7#)", "onBoardChanged(7k/6Q1/5K2/8/8/8/8/8 b - - 1 2)",
                                        "sendGameResult(1-0, White mates, mode 1)"));
    EXPECT_FALSE(game.control.clock.running());
    EXPECT_FALSE(game.request);
}

TEST(ThinkingFinished, PondersOnTheSecondMoveOfTheLine) {
    Game game(Like::console, winning);
    game.control.pondering = true;
    game.Search(SearchStatus::thinking, 4);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.control.prediction, game.control.search.info().principal_variation.at(1).first & move_bits);
    UserBoard predicted = game.control;
    predicted.MakeMove(game.control.prediction);
    EXPECT_EQ(game.request->position.GetFen(), predicted.GetFen());
    EXPECT_EQ(game.control.made_moves().size(), 1U);  // the game itself waits for the move
}

TEST(ThinkingFinished, LooksForAForecastBehindALineOfOneMove) {
    Game game(Like::console, two_knights);
    game.control.pondering = true;
    game.Search(SearchStatus::thinking);
    ASSERT_EQ(game.control.search.info().principal_variation.size(), 1U);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::puzzle);
    EXPECT_EQ(game.request->position.GetFen(), game.control.GetFen());
    EXPECT_EQ(game.control.prediction, no_prediction);
}

TEST(ThinkingFinished, DrawOfferIsRejectedAndTheGameGoesOn) {
    const LogCapture log;
    Game game(Like::console, winning);
    game.control.advisor.drawOfferPending = true;
    testing::internal::CaptureStdout();
    game.Search(SearchStatus::thinking);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.text(), "Engine rejects draw offer (not sent to xboard)\n");
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[0], "sendDrawRejected(person)");
    EXPECT_FALSE(game.control.advisor.drawOfferPending);
    EXPECT_FALSE(game.control.IsGameOver());
}

TEST(ThinkingFinished, AcceptedDrawEndsTheGameInTheConsole) {
    Game game(Like::console, winning);
    game.control.clock.startClock();
    game.control.advisor.drawOfferPending = true;
    game.control.advisor.sinceOffer = 0;  // the engine offered with its last move
    game.Search(SearchStatus::thinking);
    EXPECT_THAT(game.calls, ElementsAre("sendDrawAccepted", "sendGameResult(1/2-1/2, Mutual agreement, mode 1)"));
    EXPECT_EQ(game.control.result(), GameResult::draw);
    EXPECT_EQ(game.control.reason(), GameEndReason::agreed_draw);
    EXPECT_FALSE(game.control.clock.running());
    EXPECT_THAT(game.control.made_moves(), IsEmpty());
}

TEST(ThinkingFinished, AcceptedDrawLeavesTheResultToAnInterface) {
    Game game(Like::xboard, winning);
    game.control.advisor.drawOfferPending = true;
    game.control.advisor.sinceOffer = 0;
    game.Search(SearchStatus::thinking);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[0], "sendDrawAccepted");
    EXPECT_FALSE(game.control.IsGameOver());
    EXPECT_EQ(game.control.made_moves().size(), 1U);
    EXPECT_FALSE(game.control.advisor.drawOfferPending);
}

TEST(ThinkingFinished, OfferThatIsOneMoveOldIsForgotten) {
    Game game(Like::console, winning);
    game.control.advisor.drawOfferPending = true;
    game.control.advisor.sinceOffer = 1;
    game.Search(SearchStatus::thinking);
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
        game.control.pondering = true;
        game.control.clock.startClock();
        game.control.advisor.hopelessRun = 5;
        game.Search(SearchStatus::thinking);
        ASSERT_EQ(game.calls.size(), 4U);
        EXPECT_EQ(game.calls[2], "sendResign");
        EXPECT_EQ(game.calls[3], side.result);
        EXPECT_EQ(game.control.result(), side.code);
        EXPECT_EQ(game.control.reason(), GameEndReason::resignation);
        EXPECT_FALSE(game.control.clock.running());
        EXPECT_FALSE(game.request);
    }
}

TEST(ThinkingFinished, ResignationLeavesTheResultToAnInterface) {
    Game game(Like::xboard, losing);
    game.control.pondering = true;
    game.control.advisor.hopelessRun = 5;
    game.Search(SearchStatus::thinking);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[2], "sendResign");
    EXPECT_FALSE(game.control.IsGameOver());
    EXPECT_TRUE(game.request);
}

TEST(ThinkingFinished, OneScoreIsNoReasonToResign) {
    Game game(Like::console, losing);
    game.control.advisor.hopelessRun = 4;
    game.Search(SearchStatus::thinking);
    EXPECT_EQ(game.calls.size(), 2U);
}

TEST(ThinkingFinished, DrawIsOfferedBehindTheMove) {
    Game game(Like::console, two_knights);
    game.control.advisor.searches = game.control.advisor.drawScoreRun = 1;
    game.Search(SearchStatus::thinking);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[2], "sendDrawOffer");
    EXPECT_EQ(game.control.advisor.sinceOffer, 0);
    EXPECT_FALSE(game.control.IsGameOver());
}

// --- The end of a hint or forecast search ---

TEST(HintFinished, AnswersNothingByItself) {
    Game game(Like::console, winning);
    game.control.pondering = true;
    game.control.prediction = prediction_pending;
    game.Search(SearchStatus::hint);
    EXPECT_EQ(game.control.prediction, game.control.search.best_move() & move_bits);
    EXPECT_THAT(game.calls, IsEmpty());
    EXPECT_FALSE(game.request);
    EXPECT_EQ(game.control.advisor.searches, 0);
}

TEST(HintFinished, ForecastIsPonderedOn) {
    Game game(Like::console, winning);
    game.control.pondering = true;
    game.Search(SearchStatus::hint);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.request->position.made_moves().size(), 1U);
    EXPECT_EQ(game.request->position.made_moves()[0], game.control.prediction);
    EXPECT_THAT(game.control.made_moves(), IsEmpty());
}

TEST(HintFinished, ForecastIsKeptWithPonderingOff) {
    Game game(Like::console, winning);
    game.Search(SearchStatus::hint);
    EXPECT_GT(game.control.prediction, prediction_pending);
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, ForecastThatEndsTheGameIsNotPonderedOn) {
    Game game(Like::console, mate_in_one);
    game.control.pondering = true;
    game.Search(SearchStatus::hint);
    EXPECT_EQ(game.control.prediction, game.MoveNamed("g6g7"));
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, WithoutAMoveThereIsNothingToForecast) {
    Game game;
    game.control.pondering = true;
    game.control.searchStatus = SearchStatus::hint;
    game.Finish(false);  // no search ever found a move
    EXPECT_EQ(game.control.prediction, prediction_no_move_exists);
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, AbortLeavesNoPendingRequest) {
    Game game;
    game.control.prediction = prediction_pending;
    game.control.searchStatus = SearchStatus::hint;
    game.Finish(true);
    EXPECT_EQ(game.control.prediction, no_prediction);
}

TEST(HintFinished, AbortKeepsAMove) {
    Game game;
    game.control.prediction = game.MoveNamed("e2e4");
    game.control.searchStatus = SearchStatus::pondering;
    game.Finish(true);
    EXPECT_EQ(game.control.prediction, game.MoveNamed("e2e4"));
}

TEST(HintFinished, FinishedGameAndImpossiblePositionHaveNoMove) {
    for (const bool impossible : {false, true}) {
        Game game;
        if (impossible) {
            game.control.SetInvalid();
        } else {
            game.control.EndGame(GameResult::draw, GameEndReason::agreed_draw);
        }
        game.control.prediction = prediction_pending;
        game.control.searchStatus = SearchStatus::hint;
        game.Finish(true);
        EXPECT_EQ(game.control.prediction, prediction_no_move_exists);
    }
}

TEST(SearchFinished, AnalysisAndPonderingDoNothing) {
    for (const SearchStatus status : {SearchStatus::analyzing, SearchStatus::pondering, SearchStatus::none}) {
        Game game;
        game.control.pondering = true;
        game.Search(status);
        EXPECT_EQ(game.control.searchStatus, SearchStatus::none);
        EXPECT_THAT(game.calls, IsEmpty());
        EXPECT_FALSE(game.request);
        EXPECT_EQ(game.control.prediction, no_prediction);
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
    game.control.prediction = game.MoveNamed("e2e4");
    game.Run([&] { game.control.startPondering(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.request->position.made_moves().size(), 1U);
    EXPECT_EQ(game.control.prediction, game.MoveNamed("e2e4"));
}

TEST(StartPondering, ReturnsWithoutSomethingToPonderOn) {
    for (const std::uint32_t prediction : {prediction_no_move_exists, prediction_pending}) {
        Game game;
        game.control.prediction = prediction;
        game.Run([&] { game.control.startPondering(); });
        EXPECT_FALSE(game.request);
    }
    Game over;
    over.control.EndGame(GameResult::draw, GameEndReason::agreed_draw);
    over.Run([&] { over.control.startPondering(); });
    EXPECT_FALSE(over.request);

    Game impossible;
    impossible.control.SetInvalid();
    impossible.Run([&] { impossible.control.startPondering(); });
    EXPECT_FALSE(impossible.request);
}

}  // namespace
