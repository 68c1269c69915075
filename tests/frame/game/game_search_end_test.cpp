#include "frame/game/game_control.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/recorded_game.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Like = ProtocolLike;

// --- The end of a thinking search ---

TEST(ThinkingFinished, DiscardedSearchPlaysNothing) {
    RecordedGame game;
    GameAccess::pretendSearch(game.control, SearchKind::normal);
    game.Finish(true);
    EXPECT_EQ(game.control.runningSearch(), std::nullopt);
    EXPECT_THAT(game.calls, IsEmpty());
    EXPECT_EQ(game.control.advisor().searches, 0);
    EXPECT_FALSE(game.request);
}

TEST(ThinkingFinished, MoveIsPlayedAndShown) {
    RecordedGame game(Like::console, winning);
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
    RecordedGame game(Like::xboard, mate_in_one);
    GameAccess::clock(game.control).startClock();
    game.control.setPondering(true);
    game.Search(SearchKind::normal);
    EXPECT_THAT(game.calls, ElementsAre("sendEngineMove(Qg7#)", "onBoardChanged(7k/6Q1/5K2/8/8/8/8/8 b - - 1 2)",
                                        "sendGameResult(1-0, White mates, mode 1)"));
    EXPECT_FALSE(game.control.clock().running());
    EXPECT_FALSE(game.request);
}

TEST(ThinkingFinished, PondersOnTheSecondMoveOfTheLine) {
    RecordedGame game(Like::console, winning);
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

TEST(ThinkingFinished, LooksForAForecastAfterALineOfOneMove) {
    RecordedGame game(Like::console, two_knights);
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
    RecordedGame game(Like::console, winning);
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
    RecordedGame game(Like::console, winning);
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
    RecordedGame game(Like::xboard, winning);
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
    RecordedGame game(Like::console, winning);
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
        RecordedGame game(Like::console, side.fen);
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
    RecordedGame game(Like::xboard, losing);
    game.control.setPondering(true);
    GameAccess::advisor(game.control).hopelessRun = 5;
    game.Search(SearchKind::normal);
    ASSERT_EQ(game.calls.size(), 3U);
    EXPECT_EQ(game.calls[2], "sendResign");
    EXPECT_FALSE(game.control.IsGameOver());
    EXPECT_TRUE(game.request);
}

TEST(ThinkingFinished, OneScoreIsNoReasonToResign) {
    RecordedGame game(Like::console, losing);
    GameAccess::advisor(game.control).hopelessRun = 4;
    game.Search(SearchKind::normal);
    EXPECT_EQ(game.calls.size(), 2U);
}

TEST(ThinkingFinished, DrawIsOfferedAfterTheMove) {
    RecordedGame game(Like::console, two_knights);
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
    RecordedGame game(Like::console, winning);
    game.control.setPondering(true);
    GameAccess::forecast(game.control) = Forecast::HintPending();
    game.Search(SearchKind::puzzle);
    EXPECT_TRUE(game.control.forecast().Is(game.control.search().best_move()));
    EXPECT_THAT(game.calls, IsEmpty());
    EXPECT_FALSE(game.request);
    EXPECT_EQ(game.control.advisor().searches, 0);
}

TEST(HintFinished, ForecastIsPonderedOn) {
    RecordedGame game(Like::console, winning);
    game.control.setPondering(true);
    game.Search(SearchKind::puzzle);
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.request->position.made_moves().size(), 1U);
    EXPECT_EQ(game.request->position.made_moves()[0], game.control.forecast().move());
    EXPECT_THAT(game.control.made_moves(), IsEmpty());
}

TEST(HintFinished, ForecastIsKeptWithPonderingOff) {
    RecordedGame game(Like::console, winning);
    game.Search(SearchKind::puzzle);
    EXPECT_EQ(game.control.forecast().state(), Forecast::State::move);
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, ForecastThatEndsTheGameIsNotPonderedOn) {
    RecordedGame game(Like::console, mate_in_one);
    game.control.setPondering(true);
    game.Search(SearchKind::puzzle);
    EXPECT_EQ(game.control.forecast(), Forecast::Of(game.MoveNamed("g6g7")));
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, WithoutAMoveThereIsNothingToForecast) {
    RecordedGame game;
    game.control.setPondering(true);
    GameAccess::pretendSearch(game.control, SearchKind::puzzle);
    game.Finish(false);  // no search ever found a move
    EXPECT_EQ(game.control.forecast(), Forecast::NoMoveExists());
    EXPECT_FALSE(game.request);
}

TEST(HintFinished, AbortLeavesNoPendingRequest) {
    RecordedGame game;
    GameAccess::forecast(game.control) = Forecast::HintPending();
    GameAccess::pretendSearch(game.control, SearchKind::puzzle);
    game.Finish(true);
    EXPECT_EQ(game.control.forecast(), Forecast());
}

TEST(HintFinished, AbortKeepsAMove) {
    RecordedGame game;
    GameAccess::forecast(game.control) = Forecast::Of(game.MoveNamed("e2e4"));
    GameAccess::pretendSearch(game.control, SearchKind::pondering);
    game.Finish(true);
    EXPECT_EQ(game.control.forecast(), Forecast::Of(game.MoveNamed("e2e4")));
}

TEST(HintFinished, FinishedGameAndImpossiblePositionHaveNoMove) {
    for (const bool impossible : {false, true}) {
        RecordedGame game;
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
        RecordedGame game;
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
    RecordedGame game;
    game.Run([&] { game.control.startPondering(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::puzzle);
    EXPECT_THAT(game.request->position.made_moves(), IsEmpty());
}

TEST(StartPondering, PondersOnAStoredMove) {
    RecordedGame game;
    GameAccess::forecast(game.control) = Forecast::Of(game.MoveNamed("e2e4"));
    game.Run([&] { game.control.startPondering(); });
    ASSERT_TRUE(game.request);
    EXPECT_EQ(game.request->limits.kind, SearchKind::pondering);
    EXPECT_EQ(game.request->position.made_moves().size(), 1U);
    EXPECT_EQ(game.control.forecast(), Forecast::Of(game.MoveNamed("e2e4")));
}

TEST(StartPondering, ReturnsWithoutSomethingToPonderOn) {
    for (const Forecast forecast : {Forecast::NoMoveExists(), Forecast::HintPending()}) {
        RecordedGame game;
        GameAccess::forecast(game.control) = forecast;
        game.Run([&] { game.control.startPondering(); });
        EXPECT_FALSE(game.request);
    }
    RecordedGame over;
    GameAccess::record(over.control).EndGame(GameResult::draw, GameEndReason::agreed_draw);
    over.Run([&] { over.control.startPondering(); });
    EXPECT_FALSE(over.request);

    RecordedGame impossible;
    GameAccess::record(impossible.control).SetInvalid();
    impossible.Run([&] { impossible.control.startPondering(); });
    EXPECT_FALSE(impossible.request);
}

}  // namespace
