#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/command_bench.h"

namespace {

using Like = RecordingProtocol::Like;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string after_e4 = "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1";
const std::string after_e4_e5 = "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2";
const std::vector<std::string> fools_mate{"force", "f3", "e5", "g4", "Qh4"};

void ExpectPlayers(const GameControl& game, bool white_active, bool black_active, EngineMode mode) {
    EXPECT_EQ(game.player(white).active, white_active);
    EXPECT_EQ(game.player(black).active, black_active);
    EXPECT_EQ(game.mode(), mode);
}

void ExpectRequest(const CommandOutcome& outcome, SearchKind kind, const std::string& fen) {
    EXPECT_EQ(outcome.error, "");
    EXPECT_TRUE(outcome.finished) << "a request would be repeated";
    ASSERT_TRUE(outcome.request);
    EXPECT_EQ(outcome.request->limits.kind, kind);
    EXPECT_EQ(outcome.request->position.GetFen(), fen);
}

void ExpectDone(const CommandOutcome& outcome) {
    EXPECT_EQ(outcome.error, "");
    EXPECT_TRUE(outcome.finished);
    EXPECT_FALSE(outcome.request);
    EXPECT_FALSE(outcome.quit);
}

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

TEST(Playother, IsRefusedBehindTheEnd) {
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

// --- undo, next ---

TEST(Undo, TakesBackOneMoveOrAsManyAsAsked) {
    struct Row {
        std::string line;
        std::size_t left;
        std::string message;
    };
    for (const auto& [line, left, message] : {
             Row{"undo", 3, ""},
             Row{"undo 0", 4, ""},
             Row{"undo 1", 3, ""},
             Row{"undo 3", 1, ""},
             Row{"undo 4", 0, ""},
             Row{"undo 5", 0, "tellUser(could not undo 1 move(s), because start position has been reached)"},
             Row{"undo 999999", 0, "tellUser(could not undo 999995 move(s), because start position has been reached)"},
             Row{"undo all", 0, ""},
             Row{"undo 1000000", 0, ""},
         }) {
        CommandBench bench;
        bench.Prepare({"force", "e4", "e5", "Nf3", "Nc6"});
        GameAccess::forecast(bench.game) = Forecast::Of(77);
        ExpectDone(bench.Send(line));
        EXPECT_EQ(bench.game.made_moves().size(), left) << line;
        EXPECT_EQ(bench.game.next_moves().size(), 4 - left) << line;
        EXPECT_EQ(bench.game.forecast(), Forecast());
        std::vector<std::string> expected;
        if (!message.empty()) expected.push_back(message);
        expected.push_back("onBoardChanged(" + bench.fen() + ")");
        EXPECT_EQ(bench.calls, expected) << line;
    }
}

TEST(Undo, ChecksMovesThenCountThenMode) {
    CommandBench bench;
    EXPECT_EQ(bench.Send("undo -1").error, "Error (no move to undo): undo -1");
    bench.Prepare({"e4"});
    EXPECT_EQ(bench.Send("undo -1").error, "Error (argument out of bounds): undo -1");
    EXPECT_EQ(bench.Send("undo").error, "Error (must be in force mode): undo");
    EXPECT_EQ(bench.Send("undo all").error, "Error (must be in force mode): undo all");
    EXPECT_EQ(bench.fen(), after_e4);
}

TEST(Undo, AnalyzesTheEarlierPosition) {
    CommandBench bench;
    bench.Prepare({"analyze", "e4"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("undo");
    EXPECT_EQ(outcome.aborted, true);
    ExpectRequest(outcome, SearchKind::analyze, start_fen);
    EXPECT_EQ(bench.game.next_moves().size(), 1U) << "taken back once, not with each run";
}

TEST(Undo, LeadsBehindTheEndOfAGameBackIntoIt) {
    CommandBench bench;
    bench.Prepare(fools_mate);
    ASSERT_TRUE(bench.game.IsGameOver());
    ExpectDone(bench.Send("undo"));
    EXPECT_FALSE(bench.game.IsGameOver());
}

TEST(Next, MakesTakenBackMovesAgain) {
    struct Row {
        std::string line;
        std::size_t made;
        std::string message;
    };
    for (const auto& [line, made, message] : {
             Row{"next", 1, ""},
             Row{"next 0", 0, ""},
             Row{"next 3", 3, ""},
             Row{"next 4", 4, ""},
             Row{"next 6", 4, "tellUser(2 move(s) could not be made, because next move buffer is empty)"},
             Row{"next all", 4, ""},
         }) {
        CommandBench bench;
        bench.Prepare({"force", "e4", "e5", "Nf3", "Nc6", "undo all"});
        GameAccess::forecast(bench.game) = Forecast::Of(77);
        ExpectDone(bench.Send(line));
        EXPECT_EQ(bench.game.made_moves().size(), made) << line;
        EXPECT_EQ(bench.game.next_moves().size(), 4 - made) << line;
        EXPECT_EQ(bench.game.forecast(), Forecast());
        std::vector<std::string> expected;
        if (!message.empty()) expected.push_back(message);
        expected.push_back("onBoardChanged(" + bench.fen() + ")");
        EXPECT_EQ(bench.calls, expected) << line;
    }
}

TEST(Next, ChecksBufferThenCountThenMode) {
    CommandBench bench;
    EXPECT_EQ(bench.Send("next -1").error, "Error (next move buffer is empty): next -1");
    bench.Prepare({"force", "e4", "undo"});
    EXPECT_EQ(bench.Send("next -1").error, "Error (argument out of bounds): next -1");
    bench.Prepare({"playother"});
    EXPECT_EQ(bench.Send("next").error, "Error (must be in force mode): next");
    EXPECT_EQ(bench.fen(), start_fen);
}

TEST(Next, AnalyzesTheLaterPosition) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "e5", "undo all", "analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("next");
    EXPECT_EQ(outcome.aborted, true);
    ExpectRequest(outcome, SearchKind::analyze, after_e4);
}

TEST(Next, LeavesAnalyzeModeAtTheEndOfTheGame) {
    CommandBench bench(Like::xboard);
    bench.Prepare(fools_mate);
    bench.Prepare({"undo", "analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("next");
    EXPECT_EQ(outcome.aborted, true);
    ExpectDone(outcome);
    EXPECT_TRUE(bench.game.IsGameOver());
    EXPECT_EQ(bench.game.mode(), EngineMode::force);
}

// --- remove ---

TEST(Remove, TakesBackAMoveOfEachSide) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "e5", "playother"});
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    ExpectDone(bench.Send("remove"));
    EXPECT_EQ(bench.fen(), start_fen);
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_EQ(bench.game.next_moves().size(), 2U);
    EXPECT_THAT(bench.calls, ElementsAre("onBoardChanged(" + start_fen + ")"));
}

TEST(Remove, TakesTheMovesBackOnceAndBeforeItEndsTheSearch) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "e5", "Nf3", "Nc6", "playother", "hard"});
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    const auto command = translate(bench.game.protocol(), "remove");
    EXPECT_THROW(command->Execute(bench.game), search_aborted_exception);
    EXPECT_EQ(bench.fen(), after_e4_e5) << "inside the checks";
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_FALSE(command->finished);
    bench.game.onSearchFinished(true);
    try {
        command->Execute(bench.game);
        ADD_FAILURE() << "no forecast is looked for";
    } catch (const search_request_received_exception& received) {
        EXPECT_EQ(received.request.limits.kind, SearchKind::puzzle);
    }
    EXPECT_TRUE(command->finished);
    EXPECT_EQ(bench.fen(), after_e4_e5);
}

TEST(Remove, WorksInForceModeWithEitherSideOnMove) {
    CommandBench bench;
    bench.Prepare({"force", "hard", "e4", "e5", "Nf3"});
    ExpectDone(bench.Send("remove"));
    EXPECT_EQ(bench.fen(), after_e4);
}

TEST(Remove, IsRefusedWhileTheEngineIsOnMoveOrAnalyzes) {
    CommandBench on_move;
    on_move.Prepare({"force", "e4", "e5", "go"});
    EXPECT_EQ(on_move.Send("remove").error, "Error (command not legal now): remove");
    CommandBench analyzing;
    analyzing.Prepare({"force", "e4", "e5", "analyze"});
    EXPECT_EQ(analyzing.Send("remove").error, "Error (command not legal now): remove");
    EXPECT_EQ(analyzing.fen(), after_e4_e5);
}

TEST(Remove, NeedsTwoMovesAndTakesBackNoneOfOne) {
    CommandBench bench;
    bench.Prepare({"force"});
    EXPECT_EQ(bench.Send("remove").error, "Error (no moves to remove): remove");
    bench.Prepare({"e4"});
    EXPECT_EQ(bench.Send("remove").error, "Error (no moves to remove): remove");
    EXPECT_EQ(bench.fen(), after_e4);
    EXPECT_THAT(bench.calls, IsEmpty());
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

TEST(Draw, IsRefusedBehindTheEndAndWithoutAnOpponent) {
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

// --- hint, ?, pondering ---

TEST(Hint, LooksForAMoveAndSaysNothingYet) {
    CommandBench bench;
    ExpectRequest(bench.Send("hint"), SearchKind::puzzle, start_fen);
    EXPECT_EQ(bench.game.forecast(), Forecast::HintPending());
    EXPECT_THAT(bench.calls, IsEmpty());
}

TEST(Hint, TellsTheStoredMove) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::Of(MoveOf(bench.game.board(), "g1f3"));
    for (const auto kind :
         std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::normal, SearchKind::pondering}) {
        GameAccess::pretendSearch(bench.game, kind);
        ExpectDone(bench.Send("hint"));
        EXPECT_THAT(bench.calls, ElementsAre("sendHint(Nf3)"));
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Hint, TellsThatThereIsNoMove) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::NoMoveExists();
    ExpectDone(bench.Send("hint"));
    EXPECT_THAT(bench.calls, ElementsAre("sendHint"));
}

TEST(Hint, IsRefusedBesideASearchThatHasNoMoveForIt) {
    for (const SearchKind kind : {SearchKind::normal, SearchKind::pondering, SearchKind::analyze, SearchKind::puzzle}) {
        for (const Forecast forecast : {Forecast(), Forecast::HintPending()}) {
            CommandBench bench;
            GameAccess::pretendSearch(bench.game, kind);
            GameAccess::forecast(bench.game) = forecast;
            EXPECT_EQ(bench.Send("hint").error, "Error (command not legal now): hint");
            EXPECT_EQ(bench.game.forecast(), forecast);
        }
    }
}

TEST(Hint, LeavesNothingPendingBehindAnAbortedSearch) {
    for (const std::string line : {"new", "force", "go", "analyze", "playother", "white", "black", "result *", "e4"}) {
        CommandBench bench;
        bench.Send("hint");
        GameAccess::pretendSearch(bench.game, SearchKind::puzzle);
        const auto outcome = bench.Send(line);
        EXPECT_EQ(outcome.aborted, true) << line;
        EXPECT_EQ(bench.game.forecast(), Forecast()) << line;
        GameAccess::pretendSearch(bench.game, std::nullopt);
        EXPECT_EQ(bench.Send("hint").error, "") << line;
    }
}

TEST(Hint, IsThatThereIsNoMoveBehindTheEnd) {
    CommandBench bench;
    bench.Prepare(fools_mate);
    ASSERT_TRUE(bench.Send("hint").request);
    bench.game.onSearchFinished(true);  // what a search entry does with a finished game
    ExpectDone(bench.Send("hint"));
    EXPECT_THAT(bench.calls, ElementsAre("sendHint"));
}

TEST(HintDeathTest, PendingWithoutASearchIsADefect) {
    CommandBench bench;
    GameAccess::forecast(bench.game) = Forecast::HintPending();
    EXPECT_DEATH(bench.Send("hint"), "");
}

TEST(MoveNow, StopsThinkingOnceAndKeepsTheResult) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    const auto outcome = bench.Send("?");
    EXPECT_EQ(outcome.aborted, false);
    EXPECT_TRUE(outcome.finished) << "it must not run again behind the search that it ended";
    EXPECT_EQ(outcome.runs, 1);
}

TEST(MoveNow, IsIgnoredUnlessTheEngineThinks) {
    for (const auto kind : std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::pondering,
                                                                  SearchKind::analyze, SearchKind::puzzle}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        ExpectDone(bench.Send("?"));
        EXPECT_THAT(bench.calls, ElementsAre("sendCommandIgnored(no search running)"));
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Pondering, IsTurnedOnAndOffBesideAnySearch) {
    for (const auto kind : std::vector<std::optional<SearchKind>>{std::nullopt, SearchKind::normal, SearchKind::analyze,
                                                                  SearchKind::puzzle}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, kind);
        ExpectDone(bench.Send("hard"));
        EXPECT_TRUE(bench.game.pondering());
        ExpectDone(bench.Send("hard"));
        EXPECT_TRUE(bench.game.pondering());
        const auto outcome = bench.Send("easy");
        ExpectDone(outcome);
        EXPECT_FALSE(outcome.aborted);
        EXPECT_FALSE(bench.game.pondering());
        EXPECT_EQ(bench.game.runningSearch(), kind);
    }
}

TEST(Pondering, EndsAtOnceWhenItIsTurnedOff) {
    CommandBench bench;
    bench.Prepare({"hard"});
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
    ExpectDone(bench.Send("hard"));
    EXPECT_EQ(bench.game.runningSearch(), SearchKind::pondering);
    const auto outcome = bench.Send("easy");
    EXPECT_EQ(outcome.aborted, true);
    ExpectDone(outcome);
    EXPECT_FALSE(bench.game.pondering());
    EXPECT_EQ(bench.game.runningSearch(), std::nullopt);
}

// --- Moves ---

TEST(AMove, IsAnsweredByTheEngine) {
    for (const std::string line : {"e4", "e2e4", "usermove e4", "usermove e2e4", "E2E4"}) {
        CommandBench bench;
        ExpectRequest(bench.Send(line), SearchKind::normal, after_e4);
        EXPECT_EQ(bench.fen(), after_e4);
        EXPECT_THAT(bench.calls, ElementsAre("onBoardChanged(" + after_e4 + ")"));
        EXPECT_TRUE(bench.game.clock().running());
        EXPECT_EQ(bench.game.clock().active(), black);
    }
}

TEST(AMove, IsJustMadeInForceMode) {
    CommandBench bench;
    bench.Prepare({"force"});
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    ExpectDone(bench.Send("e4"));
    EXPECT_EQ(bench.fen(), after_e4);
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_FALSE(bench.game.clock().running());
}

TEST(AMove, IsAnalyzed) {
    CommandBench bench;
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("e4");
    EXPECT_EQ(outcome.aborted, true);
    EXPECT_EQ(outcome.runs, 2);
    ExpectRequest(outcome, SearchKind::analyze, after_e4);
    EXPECT_EQ(bench.game.made_moves().size(), 1U) << "made once, not with each run";
    EXPECT_THAT(bench.calls, ElementsAre("onBoardChanged(" + after_e4 + ")"));
}

TEST(AMove, MustBeLegal) {
    for (const std::string line : {"e5", "e2e5", "e7e5", "Nf6", "O-O", "foo", "usermove Ke2", "usermove \"\""}) {
        CommandBench bench;
        GameAccess::pretendSearch(bench.game, SearchKind::pondering);
        EXPECT_EQ(bench.Send(line).error, "Illegal move: " + line);
        EXPECT_EQ(bench.fen(), start_fen);
        EXPECT_EQ(bench.game.runningSearch(), SearchKind::pondering);
    }
}

TEST(AMove, IsRefusedWhileTheEngineThinks) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    EXPECT_EQ(bench.Send("e4").error, "Error (it is not your turn now): e4");
    EXPECT_EQ(bench.Send("usermove e4").error, "Error (it is not your turn now): usermove e4");
    EXPECT_EQ(bench.Send("e5").error, "Illegal move: e5") << "legality comes first";
    EXPECT_EQ(bench.fen(), start_fen);
    EXPECT_EQ(bench.game.runningSearch(), SearchKind::normal);
}

TEST(AMove, IsRefusedBehindTheEndWhateverEndedIt) {
    for (const std::string end : {"result *", "result 1-0", "result 1/2-1/2"}) {
        CommandBench bench;
        bench.Prepare({"force", end});
        EXPECT_EQ(bench.Send("e4").error, "Illegal move: e4") << end;
        EXPECT_EQ(bench.Send("usermove e4").error, "Illegal move: usermove e4") << end;
        EXPECT_EQ(bench.fen(), start_fen);
    }
}

/// The engine (Black) ponders on e4.
void PonderOnE4(CommandBench& bench) {
    bench.game.setPondering(true);
    GameAccess::forecast(bench.game) = Forecast::Of(MoveOf(bench.game.board(), "e2e4"));
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
}

TEST(AMove, ThatWasPredictedTurnsPonderingIntoThinking) {
    CommandBench bench;
    PonderOnE4(bench);
    const auto outcome = bench.Send("usermove e2e4");
    ExpectDone(outcome);
    EXPECT_EQ(outcome.runs, 1);
    EXPECT_FALSE(outcome.aborted);
    EXPECT_EQ(bench.game.runningSearch(), SearchKind::normal);
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_EQ(bench.fen(), after_e4);
    EXPECT_TRUE(bench.game.clock().running());
    EXPECT_EQ(bench.game.clock().active(), black);
    EXPECT_THAT(bench.calls, ElementsAre("onBoardChanged(" + after_e4 + ")", "sendPredictedMoveMade(e4)"));
}

TEST(AMove, ThatWasNotPredictedEndsPondering) {
    CommandBench bench;
    PonderOnE4(bench);
    const auto outcome = bench.Send("d4");
    EXPECT_EQ(outcome.aborted, true);
    EXPECT_EQ(outcome.runs, 2);
    ASSERT_TRUE(outcome.request);
    EXPECT_EQ(outcome.request->limits.kind, SearchKind::normal);
    EXPECT_EQ(bench.game.made_moves().size(), 1U);
}

TEST(AMove, EndsTheSearchForAForecast) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::puzzle);
    const auto outcome = bench.Send("e4");
    EXPECT_EQ(outcome.aborted, true);
    ExpectRequest(outcome, SearchKind::normal, after_e4);
}

TEST(AMove, ThatEndsTheGameIsAnnounced) {
    CommandBench bench;
    bench.Prepare({"force", "f3", "e5", "g4", "playother"});
    ExpectPlayers(bench.game, true, false, EngineMode::one_side);
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
    GameAccess::forecast(bench.game) = Forecast::Of(MoveOf(bench.game.board(), "d8h4"));
    const auto outcome = bench.Send("Qh4");
    EXPECT_EQ(outcome.aborted, true) << "even a predicted one";
    ExpectDone(outcome);
    EXPECT_THAT(bench.calls,
                ElementsAre("onBoardChanged(" + bench.fen() + ")", "sendGameResult(0-1, Black mates, mode 1)"));
    EXPECT_FALSE(bench.game.clock().running());
    ExpectPlayers(bench.game, false, false, EngineMode::force);
}

TEST(AMove, ThatEndsTheGameLeavesAnalyzeModeInTheConsoleAlone) {
    for (const Like model : {Like::console, Like::xboard}) {
        CommandBench bench(model);
        bench.Prepare({"force", "f3", "e5", "g4", "analyze"});
        GameAccess::pretendSearch(bench.game, SearchKind::analyze);
        const auto outcome = bench.Send("Qh4");
        EXPECT_EQ(outcome.aborted, true);
        EXPECT_TRUE(outcome.finished);
        EXPECT_THAT(bench.calls, Contains("sendGameResult(0-1, Black mates, mode 3)").Times(1));
        EXPECT_EQ(outcome.request.has_value(), model == Like::xboard);
        EXPECT_EQ(bench.game.mode(), model == Like::xboard ? EngineMode::analyze : EngineMode::force);
    }
}

}  // namespace
