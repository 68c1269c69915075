#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/command_expectations.h"

namespace {

using Like = RecordingProtocol::Like;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

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

TEST(AMove, IsRefusedAfterTheEndWhateverEndedIt) {
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

TEST(Undo, LeadsFromTheEndOfAGameBackIntoIt) {
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

}  // namespace
