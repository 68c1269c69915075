#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/command_bench.h"
#include "support/fake_search_host.h"
#include "support/log_capture.h"
#include "support/standard_input.h"

namespace {

using Like = RecordingProtocol::Like;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string pawn_fen = "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1";
const std::string pawn_fen_written = "4k3/8/8/8/8/8/4P3/4K3 w - - 0 2";  // one higher than read: deliberate
const std::string impossible_fen = "4k3/8/8/8/8/8/4R3/4K3 w - - 0 1";    // Black in check, White on move

// --- white, black ---

TEST(SetSide, GivesTheMoveToOneSideAndTheOtherToTheEngine) {
    CommandBench bench;
    bench.Prepare({"force", "e4", "c6"});
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    EXPECT_TRUE(bench.Send("white").finished);
    EXPECT_EQ(bench.game.made_moves().size(), 2U) << "already on move: the game goes on";
    EXPECT_EQ(bench.game.forecast(), Forecast::Of(77));
    EXPECT_TRUE(bench.game.player(black).active);
    EXPECT_EQ(bench.game.mode(), EngineMode::one_side);
    EXPECT_FALSE(bench.game.clock().running());
}

TEST(SetSide, StartsAGameFromTheTurnedPosition) {
    CommandBench bench;
    bench.Prepare({"force", "e3", "c6", "Nf3"});
    GameAccess::clock(bench.game).startClock();
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    EXPECT_TRUE(bench.Send("white").finished);
    EXPECT_EQ(bench.game.side_to_move(), white);
    EXPECT_THAT(bench.game.made_moves(), IsEmpty());
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_TRUE(bench.game.player(black).active);
    EXPECT_FALSE(bench.game.clock().running());
    EXPECT_TRUE(bench.Send("black").finished);
    EXPECT_EQ(bench.game.side_to_move(), black);
    EXPECT_TRUE(bench.game.player(white).active);
    const auto outcome = bench.Send("go");
    EXPECT_EQ(outcome.request->position.side_to_move(), black);
    EXPECT_TRUE(bench.game.player(black).active);
}

TEST(SetSide, IsRefusedWhereThePositionForbidsIt) {
    CommandBench bench;
    bench.Prepare({"force", "e4"});  // an en passant square
    const std::string fen = bench.fen();
    EXPECT_EQ(bench.Send("white").error, "Error (cannot change sides): white");
    bench.Prepare({"d6", "Bb5"});  // check
    GameAccess::pretendSearch(bench.game, SearchKind::pondering);
    EXPECT_EQ(bench.Send("white").error, "Error (cannot change sides): white");
    EXPECT_EQ(bench.game.runningSearch(), SearchKind::pondering) << "the search goes on";
    EXPECT_EQ(bench.game.made_moves().size(), 3U);
    EXPECT_EQ(bench.game.mode(), EngineMode::force);
}

TEST(SetSide, EndsARunningSearchAndTurnsTheBoardOnce) {
    CommandBench bench;
    GameAccess::pretendSearch(bench.game, SearchKind::normal);
    const auto outcome = bench.Send("black");
    EXPECT_EQ(outcome.aborted, true);
    EXPECT_TRUE(outcome.finished);
    EXPECT_EQ(bench.game.side_to_move(), black);
}

// --- setboard ---

TEST(Setboard, ReplacesTheGame) {
    CommandBench bench;
    bench.Prepare({"force", "e4"});
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    GameAccess::advisor(bench.game).drawOfferPending = true;
    EXPECT_TRUE(bench.Send("setboard 4k3/4p3/8/8/8/8/8/4K3 b - - 3 7").finished);
    EXPECT_EQ(bench.fen(), "4k3/4p3/8/8/8/8/8/4K3 b - - 3 8");
    EXPECT_THAT(bench.game.made_moves(), IsEmpty());
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_FALSE(bench.game.advisor().drawOfferPending);
    EXPECT_EQ(bench.game.clock().active(), black);
    EXPECT_EQ(bench.game.mode(), EngineMode::force);
    EXPECT_THAT(bench.calls, ElementsAre("onBoardChanged(" + bench.fen() + ")"));
}

TEST(Setboard, IsRefusedWhileTheEnginePlays) {
    CommandBench bench;
    for (const std::string& line : {"setboard " + pawn_fen, std::string("setboard nonsense"), std::string("edit")}) {
        EXPECT_EQ(bench.Send(line).error, "Error (must be in force mode): " + line);
    }
    EXPECT_EQ(bench.fen(), start_fen);
}

TEST(Setboard, RestartsTheAnalysis) {
    CommandBench bench;
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = bench.Send("setboard " + pawn_fen);
    EXPECT_EQ(outcome.aborted, true);
    EXPECT_TRUE(outcome.finished);
    ASSERT_TRUE(outcome.request);
    EXPECT_EQ(outcome.request->limits.kind, SearchKind::analyze);
    EXPECT_EQ(outcome.request->position.GetFen(), pawn_fen_written);
}

TEST(Setboard, RefusesATextThatIsNoFen) {
    for (const std::string fen : {
             "nonsense",
             "\"\"",
             "4k3/8/8/8/8/8/4P3/4K3 w - - 0",
             "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1 2",
             "4k3/8/8/8/8/8/4P3/4K4 w - - 0 1",
             "4k3/8/8/8/8/8/4P3/4K2 w - - 0 1",
             "4k3/8/8/8/8/4P3/4K3 w - - 0 1",
             "4k3/8/8/8/8/8/4P3/4K3/8 w - - 0 1",
             "4k3/8/8/8/8/8/4P3/4K3 x - - 0 1",
             "4k3/8/8/8/8/8/4P3/4K3 w qK - 0 1",
             "4k3/8/8/8/8/8/4P3/4K3 w - e9 0 1",
             "4k3/8/8/8/8/8/4P3/4K3 w - - 101 1",
             "4k3/8/8/8/8/8/4P3/4K3 w - - -1 1",
             "4k3/8/8/8/8/8/4P3/4K3 w - - 0 x",
             "4k3/8/8/8/8/8/4Z3/4K3 w - - 0 1",
             "\xff/\xfe w - - 0 1",
         }) {
        for (const Like model : {Like::console, Like::xboard}) {
            CommandBench bench(model);
            bench.Prepare({"analyze"});
            GameAccess::pretendSearch(bench.game, SearchKind::analyze);
            const auto outcome = bench.Send("setboard " + fen);
            EXPECT_EQ(outcome.error, "Error (input inconsistent with FEN standard): setboard " + fen);
            EXPECT_FALSE(outcome.aborted) << "the analysis goes on";
            EXPECT_EQ(bench.fen(), start_fen);
            EXPECT_THAT(bench.calls, IsEmpty());
        }
    }
}

const std::vector<std::string> impossible_fens{
    impossible_fen,
    "4k3/8/8/8/8/8/8/8 w - - 0 1",
    "8/8/8/8/8/8/8/8 w - - 0 1",
    "kk6/8/8/8/8/8/8/K7 w - - 0 1",
    "4k2P/8/8/8/8/8/8/4K3 w - - 0 1",
    "4k3/8/8/8/8/8/8/4K3 w KQkq - 0 1",
    "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e6 0 1",  // the wrong rank
    "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq d3 0 1",  // no pawn there
};

TEST(Setboard, IgnoresAnImpossiblePositionInTheConsole) {
    for (const std::string& fen : impossible_fens) {
        CommandBench bench(Like::console);
        bench.Prepare({"analyze"});
        GameAccess::pretendSearch(bench.game, SearchKind::analyze);
        const auto outcome = bench.Send("setboard " + fen);
        EXPECT_TRUE(outcome.finished);
        EXPECT_FALSE(outcome.aborted) << "the analysis goes on";
        EXPECT_THAT(bench.calls, ElementsAre("sendCommandIgnored(Illegal position)")) << fen;
        EXPECT_EQ(bench.fen(), start_fen);
    }
}

TEST(Setboard, LeavesAnInterfaceWithoutAPosition) {
    for (const std::string& fen : impossible_fens) {
        CommandBench bench(Like::xboard);
        bench.Prepare({"force"});
        GameAccess::forecast(bench.game) = Forecast::Of(77);
        const auto outcome = bench.Send("setboard " + fen);
        EXPECT_TRUE(outcome.finished);
        EXPECT_FALSE(outcome.request);
        EXPECT_THAT(bench.calls, ElementsAre("tellUser(Illegal position)")) << fen;
        EXPECT_FALSE(bench.game.IsPositionValid());
        EXPECT_EQ(bench.game.forecast(), Forecast());
    }
}

TEST(Setboard, KeepsAnalyzeModeWithoutAPosition) {
    CommandBench bench(Like::xboard);
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    auto outcome = bench.Send("setboard " + impossible_fen);
    EXPECT_EQ(outcome.aborted, true);
    EXPECT_THAT(bench.calls, ElementsAre("tellUser(Illegal position)")) << "once, not with each run";
    ASSERT_TRUE(outcome.request) << "the shell waits for input in the place of an analysis";
    EXPECT_EQ(outcome.request->limits.kind, SearchKind::analyze);
    EXPECT_TRUE(outcome.request->position.IsGameOver());
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    EXPECT_TRUE(bench.Send("exit").finished);
    EXPECT_EQ(bench.game.mode(), EngineMode::force);
}

// --- The empty position that an impossible one leaves behind ---

/// Every line is answered, with nothing on the board and `answer` as error or else as what the protocol was told.
struct EmptyPositionCase {
    std::string line;
    std::string answer;
    bool searches = false;  ///< a request goes out, which the search entry answers at once
};

// clang-format off
const std::vector<EmptyPositionCase> empty_position_cases{
    {"e4",                "Illegal move: e4"},
    {"usermove e4",       "Illegal move: usermove e4"},
    {"O-O",               "Illegal move: O-O"},
    {"undo",              "Error (no move to undo): undo"},
    {"undo all",          "Error (no move to undo): undo all"},
    {"next",              "Error (next move buffer is empty): next"},
    {"remove",            "Error (no moves to remove): remove"},
    {"eval",              "Error (command not legal now): eval"},
    {"draw",              "Error (game over): draw"},
    {"playother",         "Error (game over): playother"},
    {"black",             "Error (cannot change sides): black"},
    {"exit",              "Error (must be in analyze mode): exit"},
    {"result 1-0",        "sendCommandIgnored(game over)"},
    {"?",                 "sendCommandIgnored(no search running)"},
    {".",                 "sendSearchStatus(none)"},
    {"go",                "", true},
    {"analyze",           "", true},
    {"hint",              "", true},
    {"white",             ""},
    {"force",             ""},
    {"time 100",          ""},
    {"otim 100",          ""},
    {"level 40 5 0",      ""},
    {"hard",              ""},
    {"easy",              ""},
    {"name x",            ""},
    {"rating 1 2",        ""},
    {"computer",          ""},
    {"write_fen /dev/null", ""},
    {"write_pgn /dev/null", ""},
    {"setboard x",        "Error (input inconsistent with FEN standard): setboard x"},
    {"setboard " + impossible_fen, "tellUser(Illegal position)"},
};
// clang-format on

TEST(EmptyPosition, IsSurvivedByEveryCommand) {
    for (const EmptyPositionCase& row : empty_position_cases) {
        CommandBench bench(Like::xboard);
        bench.Prepare({"force", "setboard " + impossible_fen});
        ASSERT_FALSE(bench.game.IsPositionValid());
        const LogCapture log;
        const auto outcome = bench.Send(row.line);
        if (row.answer.starts_with("Error") || row.answer.starts_with("Illegal")) {
            EXPECT_EQ(outcome.error, row.answer);
        } else {
            EXPECT_EQ(outcome.error, "");
            EXPECT_TRUE(outcome.finished) << row.line;
            EXPECT_EQ(bench.calls, row.answer.empty() ? std::vector<std::string>{} : std::vector{row.answer})
                << row.line;
        }
        EXPECT_EQ(outcome.request.has_value(), row.searches) << row.line;
        EXPECT_FALSE(bench.game.IsPositionValid()) << row.line;
        if (outcome.request && outcome.request->limits.kind != SearchKind::analyze) {
            FakeSearchHost host;
            host.on_finished = [&](bool discard) { bench.game.onSearchFinished(discard); };
            GameAccess::pretendSearch(bench.game, SearchKind::normal);
            GameAccess::search(bench.game).Run(outcome.request->limits, outcome.request->position, host);
            EXPECT_EQ(bench.game.runningSearch(), std::nullopt);
        }
        EXPECT_EQ(bench.Send("force").error, "") << row.line;
        EXPECT_EQ(bench.Send("setboard " + pawn_fen).error, "") << row.line;
        EXPECT_TRUE(bench.game.IsPositionValid()) << row.line;
        EXPECT_EQ(bench.Send("e4").error, "") << row.line;
    }
}

TEST(EmptyPosition, HasNoMoveForAHint) {
    CommandBench bench(Like::xboard);
    bench.Prepare({"force", "setboard " + impossible_fen, "hint"});
    bench.game.onSearchFinished(true);
    EXPECT_TRUE(bench.Send("hint").finished);
    EXPECT_THAT(bench.calls, ElementsAre("sendHint"));
}

TEST(EmptyPosition, IsDisplayedAndForgottenByNew) {
    CommandBench bench(Like::xboard);
    bench.Prepare({"force", "setboard " + impossible_fen});
    EXPECT_TRUE(bench.Send("display").finished);
    EXPECT_TRUE(bench.Send("new").finished);
    EXPECT_TRUE(bench.game.IsPositionValid());
    EXPECT_EQ(bench.fen(), start_fen);
    EXPECT_FALSE(bench.game.IsGameOver());
}

TEST(EmptyPosition, CanBeEdited) {
    CommandBench bench(Like::xboard);
    bench.Prepare({"force", "setboard " + impossible_fen});
    const StandardInputText input("Ke1\nPe2\nc\nKe8\n.\n");
    EXPECT_TRUE(bench.Send("edit").finished);
    EXPECT_EQ(bench.fen(), "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
}

// --- edit ---

/// What a dialogue of edit mode left behind.
struct EditOutcome {
    CommandOutcome command;
    std::string screen;
    std::vector<std::string> calls;  ///< without the prompts
    std::ptrdiff_t prompts = 0;
};

EditOutcome Edit(CommandBench& bench, std::string_view input_lines) {
    const StandardInputText input(input_lines);
    testing::internal::CaptureStdout();
    EditOutcome outcome{.command = bench.Send("edit"), .screen = {}, .calls = {}};
    vlog.Flush();
    outcome.screen = testing::internal::GetCapturedStdout();
    std::ranges::copy_if(bench.calls, std::back_inserter(outcome.calls),
                         [](const std::string& call) { return call != "sendEditPrompt"; });
    outcome.prompts = std::ranges::count(bench.calls, "sendEditPrompt");
    return outcome;
}

class EditMode : public testing::Test {
  protected:
    EditMode() { bench.Prepare({"force"}); }
    const LogCapture log;
    CommandBench bench{Like::console};
};

TEST_F(EditMode, BuildsAPosition) {
    GameAccess::forecast(bench.game) = Forecast::Of(77);
    GameAccess::advisor(bench.game).drawOfferPending = true;
    const auto outcome = Edit(bench, "#\nKe1\nPe2\nra1\nc\nKe8\nqd8\ns\n.\n");
    EXPECT_TRUE(outcome.command.finished);
    EXPECT_EQ(bench.fen(), "3qk3/8/8/8/8/8/4P3/R3K3 b Q - 0 1");
    EXPECT_EQ(outcome.prompts, 9);
    const std::vector<std::string> edits(7, "onEditBoardChanged");  // the colour of the next piece is not on the board
    std::vector<std::string> expected = edits;
    expected.push_back("onBoardChanged(" + bench.fen() + ")");
    EXPECT_EQ(outcome.calls, expected);
    EXPECT_EQ(bench.game.forecast(), Forecast());
    EXPECT_FALSE(bench.game.advisor().drawOfferPending);
    EXPECT_EQ(bench.game.clock().active(), black);
}

TEST_F(EditMode, StartsFromTheCurrentPosition) {
    bench.Prepare({"e3", "e6"});
    EXPECT_TRUE(Edit(bench, "xe3\nPe4\n.\n").command.finished);
    EXPECT_EQ(bench.fen(), "rnbqkbnr/pppp1ppp/4p3/8/4P3/8/PPPP1PPP/RNBQKBNR w KQkq - 0 1");
    EXPECT_THAT(bench.game.made_moves(), IsEmpty());
}

TEST_F(EditMode, IsGivenUp) {
    bench.Prepare({"e4"});
    const std::string fen = bench.fen();
    const auto outcome = Edit(bench, "#\ncancel\n");
    EXPECT_TRUE(outcome.command.finished);
    EXPECT_EQ(outcome.calls, (std::vector<std::string>{"onEditBoardChanged", "sendEditModeAborted"}));
    EXPECT_EQ(bench.fen(), fen);
    EXPECT_EQ(bench.game.made_moves().size(), 1U);
}

TEST_F(EditMode, DoesNotLetAPersonGoWithAnIllegalPosition) {
    const auto outcome = Edit(bench, "#\n.\nKe1\n.\ncancel\n");
    EXPECT_EQ(outcome.calls, (std::vector<std::string>{"onEditBoardChanged", "sendCommandIgnored(Illegal position)",
                                                       "onEditBoardChanged", "sendCommandIgnored(Illegal position)",
                                                       "sendEditModeAborted"}));
    EXPECT_EQ(bench.fen(), start_fen);
}

TEST_F(EditMode, LeavesAnInterfaceWithoutAPosition) {
    CommandBench xboard(Like::xboard);
    xboard.Prepare({"force"});
    const auto outcome = Edit(xboard, "#\n.\n");
    EXPECT_TRUE(outcome.command.finished);
    EXPECT_EQ(outcome.calls, (std::vector<std::string>{"onEditBoardChanged", "tellUser(Illegal position)"}));
    EXPECT_FALSE(xboard.game.IsPositionValid());
}

TEST_F(EditMode, SaysWhetherThePositionIsLegal) {
    const auto outcome = Edit(bench, "verify\n#\nverify\ncancel\n");
    EXPECT_EQ(outcome.screen, "Current position is valid\nCurrent position is invalid\n");
}

TEST_F(EditMode, DisplaysEvenAnIllegalPosition) {
    const auto outcome = Edit(bench, "#\nKa1\ndisplay\ncancel\n");
    EXPECT_THAT(outcome.screen, HasSubstr("K"));
    EXPECT_THAT(outcome.screen, HasSubstr("side on move"));
    EXPECT_THAT(outcome.screen, Not(HasSubstr("P")));
}

TEST_F(EditMode, AnswersUnknownLinesAndGoesOn) {
    const auto outcome = Edit(bench, "restore\n\n # #\nZe4\n\"\n\xff\ncancel\n");
    EXPECT_EQ(outcome.calls, (std::vector<std::string>{
                                 "sendError(Error (unknown command): restore)", "sendError(Error (unknown command): )",
                                 "sendError(Error (unknown command):  # #)", "sendError(Error (unknown command): Ze4)",
                                 "sendError(Error (could not tokenize the input string): \")",
                                 "sendError(Error (unknown command): \xff)", "sendEditModeAborted"}));
}

TEST_F(EditMode, ShowsItsHelp) {
    const auto outcome = Edit(bench, "help\ncancel\n");
    EXPECT_THAT(outcome.screen, HasSubstr("command    description\ncancel.... Leaves edit mode"));
    EXPECT_THAT(outcome.screen, HasSubstr("quit...... Leaves the program\n"));
}

TEST_F(EditMode, SurvivesALineOfAMegabyte) {
    const std::string line(1U << 20U, 'P');
    const auto outcome = Edit(bench, line + "\ncancel\n");
    EXPECT_EQ(outcome.calls.front(), "sendError(Error (unknown command): " + line + ")");
}

TEST_F(EditMode, EndsTheProgramInOrder) {
    for (const std::string input : {"quit\n", "#\nquit\n", "", "#\n", "Pe"}) {
        bench.Prepare({"new", "force"});
        const auto outcome = Edit(bench, input);
        EXPECT_TRUE(outcome.command.quit) << input;
        EXPECT_FALSE(outcome.command.finished);
        EXPECT_EQ(bench.fen(), start_fen);
    }
}

TEST_F(EditMode, IsADialogueOnceEvenIfASearchRuns) {
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = Edit(bench, "xe2\n.\n");
    EXPECT_EQ(outcome.command.aborted, true);
    EXPECT_EQ(outcome.command.runs, 2);
    EXPECT_EQ(outcome.prompts, 2);
    ASSERT_TRUE(outcome.command.request);
    EXPECT_EQ(outcome.command.request->position.GetFen(), "rnbqkbnr/pppppppp/8/8/8/8/PPPP1PPP/RNBQKBNR w KQkq - 0 1");
}

TEST_F(EditMode, DoesNotDisturbTheAnalysisUnlessItSucceeds) {
    bench.Prepare({"analyze"});
    GameAccess::pretendSearch(bench.game, SearchKind::analyze);
    const auto outcome = Edit(bench, "#\ncancel\n");
    EXPECT_FALSE(outcome.command.aborted);
    EXPECT_EQ(bench.game.runningSearch(), SearchKind::analyze);
}

}  // namespace
