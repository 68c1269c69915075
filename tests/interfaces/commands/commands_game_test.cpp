#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/command_expectations.h"

namespace {

using Like = RecordingProtocol::Like;
using testing::ElementsAre;
using testing::IsEmpty;

// --- new ---

TEST(New, StartsAGameWithTheEngineAsBlack) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "e5", "sd 3", "st 2", "draw", "level 0 1 0"});
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    GameAccess::advisor(bench.game).drawOfferPending = true;
    GameAccess::clock(bench.game).switchClock();
    const auto outcome = bench.Send("new");
    ExpectDone(outcome);
    EXPECT_EQ(bench.fen(), start_fen);
    EXPECT_THAT(bench.game.made_moves(), IsEmpty());
    ExpectPlayers(bench.game, false, true, EngineMode::one_side);
    EXPECT_TRUE(bench.game.player(black).isEngine);
    EXPECT_EQ(GameAccess::maxDepth(bench.game), 0);
    EXPECT_EQ(GameAccess::maxTime(bench.game), 0);
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_FALSE(bench.game.advisor().drawOfferPending);
    EXPECT_EQ(bench.game.clock().active(), white);
    EXPECT_FALSE(bench.game.clock().running());
    EXPECT_EQ(bench.game.clock().milliseconds(white), 60000) << "the control itself stays";
    EXPECT_THAT(bench.calls, ElementsAre("onBoardChanged(" + start_fen + ")"));
}

TEST(New, GoesOnAnalyzing) {
    CommandBench bench;
    bench.Prepare({"analyze", "e4"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("new");
    EXPECT_EQ(outcome.aborted, true);
    ExpectRequest(outcome, SearchKind::analyze, start_fen);
    ExpectPlayers(bench.game, false, false, EngineMode::analyze);
    EXPECT_TRUE(bench.game.player(black).isEngine);
}

// --- force, go, playother ---

TEST(Force, LeavesNoSideToTheEngine) {
    CommandBench bench;
    GameAccess::clock(bench.game).startClock();
    ExpectDone(bench.Send("force"));
    ExpectPlayers(bench.game, false, false, EngineMode::force);
    EXPECT_FALSE(bench.game.clock().running());
    EXPECT_THAT(bench.calls, IsEmpty());
}

TEST(Go, GivesTheSideOnMoveToTheEngine) {
    CommandBench bench;
    bench.Prepare({"force", "e4"});
    GameAccess::advisor(bench.game).drawOfferPending = true;
    ExpectRequest(bench.Send("go"), SearchKind::normal, after_e4);
    ExpectPlayers(bench.game, false, true, EngineMode::one_side);
    EXPECT_TRUE(bench.game.clock().running());
    EXPECT_FALSE(bench.game.advisor().drawOfferPending);
}

TEST(Go, IsRefusedWhileTheEngineThinksOrAnalyzes) {
    for (const SearchKind kind : {SearchKind::normal, SearchKind::analyze}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        EXPECT_EQ(bench.Send("go").error, "Error (command not legal now): go");
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Go, EndsPonderingAndLooksForAHint) {
    for (const SearchKind kind : {SearchKind::pondering, SearchKind::puzzle}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        const auto outcome = bench.Send("go");
        EXPECT_EQ(outcome.aborted, true);
        EXPECT_EQ(outcome.runs, 2);
        ExpectRequest(outcome, SearchKind::normal, start_fen);
    }
}

TEST(Playother, GivesTheSideNotOnMoveToTheEngine) {
    CommandBench bench;
    bench.Prepare({"force", "e4"});
    GameAccess::advisor(bench.game).drawOfferPending = true;
    ExpectDone(bench.Send("playother"));
    ExpectPlayers(bench.game, true, false, EngineMode::one_side);
    EXPECT_TRUE(bench.game.clock().running());
    EXPECT_FALSE(bench.game.advisor().drawOfferPending);
}

TEST(Playother, LooksForAForecastWhenPondering) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "hard"});
    ExpectRequest(bench.Send("playother"), SearchKind::puzzle, after_e4);
}

TEST(Playother, PondersOnAForecast) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "hard"});
    GameAccess::forecast(bench.game) = Forecast::Of(MoveOf(bench.game.board(), "e7e5"));
    ExpectRequest(bench.Send("playother"), SearchKind::pondering, after_e4_e5);
    EXPECT_EQ(bench.fen(), after_e4);
}

TEST(Playother, IsRefusedAfterTheEnd) {
    CommandBench bench;
    bench.Prepare(fools_mate);
    EXPECT_EQ(bench.Send("playother").error, "Error (game over): playother");
    ExpectPlayers(bench.game, false, false, EngineMode::force);
}

// --- analyze, exit ---

TEST(Analyze, TakesTheEngineOutOfTheGame) {
    CommandBench bench;
    GameAccess::clock(bench.game).startClock();
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    const auto outcome = bench.Send("analyze");
    EXPECT_EQ(outcome.aborted, true);
    ExpectRequest(outcome, SearchKind::analyze, start_fen);
    ExpectPlayers(bench.game, false, false, EngineMode::analyze);
    EXPECT_FALSE(bench.game.clock().running());
}

TEST(Analyze, StartsAgainFromAnalyzeMode) {
    CommandBench bench;
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("analyze");
    EXPECT_EQ(outcome.aborted, true);
    ExpectRequest(outcome, SearchKind::analyze, start_fen);
}

TEST(Analyze, IgnoresAFinishedGameInTheConsoleAlone) {
    CommandBench console(Like::console);
    console.Prepare(fools_mate);
    ExpectDone(console.Send("analyze"));
    EXPECT_THAT(console.calls, ElementsAre("sendCommandIgnored(game over)"));
    EXPECT_EQ(console.game.mode(), EngineMode::force);

    CommandBench xboard(Like::xboard);
    xboard.Prepare(fools_mate);
    ExpectRequest(xboard.Send("analyze"), SearchKind::analyze, xboard.fen());
    EXPECT_EQ(xboard.game.mode(), EngineMode::analyze);
}

TEST(Exit, LeavesAnalyzeModeAndNothingElse) {
    CommandBench bench;
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("exit");
    EXPECT_EQ(outcome.aborted, true);
    ExpectDone(outcome);
    EXPECT_EQ(bench.game.mode(), EngineMode::force);
    EXPECT_EQ(bench.Send("exit").error, "Error (must be in analyze mode): exit");
}

TEST(Exit, IsRefusedWithoutAnAnalysis) {
    for (const auto kind : std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::normal,
                                                                  SearchKind::pondering, SearchKind::puzzle}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        EXPECT_EQ(bench.Send("exit").error, "Error (must be in analyze mode): exit");
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

// --- draw, result ---

TEST(Draw, IsNotedForTheEnginesNextMove) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    ExpectDone(bench.Send("draw"));
    EXPECT_TRUE(bench.game.advisor().drawOfferPending);
    EXPECT_THAT(bench.calls, ElementsAre("sendDrawOfferDeferred(person)"));
    bench.Prepare({"computer"});
    ExpectDone(bench.Send("draw"));
    EXPECT_THAT(bench.calls, ElementsAre("sendDrawOfferDeferred(computer)"));
}

TEST(Draw, IsRefusedAfterTheEndAndWithoutAnOpponent) {
    CommandBench bench;
    bench.Prepare({"force"});
    EXPECT_EQ(bench.Send("draw").error, "Error (command not legal now): draw");
    bench.Prepare({"result *"});
    EXPECT_EQ(bench.Send("draw").error, "Error (game over): draw");
    EXPECT_FALSE(bench.game.advisor().drawOfferPending);
}

TEST(Result, IsReadFromWordAndComment) {
    struct Row {
        std::string line;
        GameResult result;
        GameEndReason reason;
    };
    using enum GameEndReason;
    // clang-format off
    const std::vector<Row> rows{
        {"result 1-0",                                     GameResult::white_wins, unknown},
        {"result 0-1",                                     GameResult::black_wins, unknown},
        {"result 1/2-1/2",                                 GameResult::draw,       unknown},
        {"result *",                                       GameResult::aborted,    GameEndReason::aborted},
        {"result 1-0 {White resigns}",                     GameResult::white_wins, resignation},
        {"result 0-1 {WHITE RESIGNS}",                     GameResult::black_wins, resignation},
        {"result 0-1 {White forfeits on time}",            GameResult::black_wins, flag_fell},
        {"result 1-0 {Time, resigns}",                     GameResult::white_wins, flag_fell},
        {"result 1-0 {they agree}",                        GameResult::white_wins, unknown},
        {"result 1/2-1/2 {Draw by mutual agreement}",      GameResult::draw,       agreed_draw},
        {"result 1/2-1/2 {mutual}",                        GameResult::draw,       unknown},
        {"result 1/2-1/2 {mutal}",                         GameResult::draw,       agreed_draw},
        {"result 1/2-1/2 {Agreed on time}",                GameResult::draw,       agreed_draw},
        {"result 1/2-1/2 {out of time}",                   GameResult::draw,       flag_fell},
        {"result 1/2-1/2 {he resigned, too}",              GameResult::draw,       resignation},
        {"result * {White resigns on time by agreement}",  GameResult::aborted,    GameEndReason::aborted},
    };
    // clang-format on
    for (const auto& [line, result, reason] : rows) {
        CommandBench bench;
        GameAccess::clock(bench.game).startClock();
        ExpectDone(bench.Send(line));
        EXPECT_EQ(bench.game.result(), result) << line;
        EXPECT_EQ(bench.game.reason(), reason) << line;
        EXPECT_FALSE(bench.game.clock().running());
        ExpectPlayers(bench.game, false, false, EngineMode::force);
        EXPECT_THAT(bench.calls, IsEmpty());
    }
}

TEST(Result, MustBeOneOfFourWords) {
    for (const std::string word : {"1-1", "1:0", "1/2", "draw", "-", "\"\"", "\"1-0 \"", "0-1{mate}"}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, SearchKind::normal);
        EXPECT_EQ(bench.Send("result " + word).error, "Error (invalid argument(s)): result " + word);
        EXPECT_EQ(bench.game.runningSearch(), SearchKind::normal);
        EXPECT_FALSE(bench.game.IsGameOver());
    }
}

TEST(Result, EndsPlayButKeepsAnEarlierResult) {
    CommandBench bench;
    bench.Prepare(fools_mate);
    ExpectDone(bench.Send("result 1-0 {White resigns}"));
    EXPECT_THAT(bench.calls, ElementsAre("sendCommandIgnored(game over)"));
    EXPECT_EQ(bench.game.result(), GameResult::black_wins);
    EXPECT_EQ(bench.game.reason(), GameEndReason::mate);
}

TEST(Result, EndsARunningSearch) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    const auto outcome = bench.Send("result 1-0");
    EXPECT_EQ(outcome.aborted, true);
    ExpectDone(outcome);
    EXPECT_EQ(bench.game.result(), GameResult::white_wins);
}

}  // namespace
