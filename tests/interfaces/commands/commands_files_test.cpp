#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/command_bench.h"
#include "support/log_capture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class FileCommands : public testing::Test {
  protected:
    FileCommands() { bench_.Prepare({"force", "e4"}); }
    std::string Put(const std::string& text) {
        std::ofstream(path_, std::ios::binary) << text;
        return path_;
    }
    std::string ErrorOf(const std::string& line) { return bench_.Send(line).error; }

    TemporaryDirectory directory_;
    std::string path_ = directory_.File("file");
    LogCapture log_;
    CommandBench bench_;
};

TEST_F(FileCommands, PositionIsWrittenAndReadBack) {
    EXPECT_EQ(ErrorOf("write_fen " + path_), "");
    EXPECT_EQ(TextOf(path_), "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1\n");
    bench_.Prepare({"new", "force"});
    const CommandOutcome outcome = bench_.Send("read_fen " + path_);
    EXPECT_TRUE(outcome.finished);
    EXPECT_THAT(bench_.fen(), testing::StartsWith("rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3"));
    EXPECT_THAT(bench_.calls, ElementsAre(HasSubstr("onBoardChanged")));
}

TEST_F(FileCommands, GameIsWrittenAndReadIntoTheNextMoves) {
    bench_.Prepare({"e5"});
    EXPECT_EQ(ErrorOf("write_pgn " + path_), "");
    EXPECT_THAT(TextOf(path_), HasSubstr("[White \"Incognito\"]\n[Black \"Vorka\"]\n[Result \"*\"]\n"));
    EXPECT_THAT(TextOf(path_), HasSubstr("\n\n1. e4 e5 \n\n*\n"));
    bench_.Prepare({"new", "force"});
    EXPECT_TRUE(bench_.Send("read_pgn " + path_).finished);
    EXPECT_THAT(bench_.calls, ElementsAre(HasSubstr("onBoardChanged"), HasSubstr("onGameLoaded")));
    EXPECT_EQ(bench_.game.next_moves().size(), 2U);
    bench_.Prepare({"next all"});
    EXPECT_EQ(bench_.game.made_moves().size(), 2U);
}

TEST_F(FileCommands, FileIsReadInAnalyzeModeAndAnalysedAtOnce) {
    Put("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
    bench_.Prepare({"analyze"});
    const CommandOutcome outcome = bench_.Send("read_fen " + path_);
    ASSERT_TRUE(outcome.request);
    EXPECT_EQ(outcome.request->limits.kind, SearchKind::analyze);
    CommandBench playing;
    EXPECT_EQ(playing.Send("read_fen " + path_).error, "Error (must be in force mode): read_fen " + path_);
}

TEST_F(FileCommands, FilesThatHoldSomethingElseLeaveTheGameAlone) {
    const std::string before = bench_.fen();
    struct Row {
        std::string text, fen_reason, pgn_reason;
    };
    const std::string no_fen = "could not read FEN file";
    const std::string no_pgn = "could not read PGN file";
    for (const Row& row : {
             Row{"", no_fen, no_pgn},
             Row{std::string("\0\1\2\xff", 4), no_fen, no_pgn},
             Row{std::string(100000, 'x'), no_fen, no_pgn},
             Row{"8/8/8/8/8/8/8/8 w - - 0 1", "Illegal position", "Illegal move"},
             Row{"[FEN \"8/8/8/8/8/8/8/8 w - - 0 1\"]\n*", no_fen, "Illegal position"},
             Row{"1. e4 e4 *", no_fen, "Illegal move"},
             Row{"1. e4 e5", no_fen, no_pgn},
             Row{"1. e4 (d4) e5 *", no_fen, no_pgn},
         }) {
        Put(row.text);
        EXPECT_EQ(ErrorOf("read_fen " + path_), "Error (" + row.fen_reason + "): read_fen " + path_);
        const std::string error = ErrorOf("read_pgn " + path_);
        EXPECT_TRUE(error == "Error (" + row.pgn_reason + "): read_pgn " + path_ ||
                    (row.pgn_reason == "Illegal move" && error == "Error (" + no_pgn + "): read_pgn " + path_))
            << error;
        EXPECT_EQ(bench_.fen(), before);
        EXPECT_EQ(bench_.game.made_moves().size(), 1U);
    }
}

TEST_F(FileCommands, PlacesWithoutAFileAreRefused) {
    const std::string folder = directory_.path().string();
    for (const std::string& place : {folder, directory_.File("none"), std::string("/dev/zero")}) {
        for (const std::string command : {"read_fen ", "read_pgn "}) {
            EXPECT_EQ(ErrorOf(command + place), "Error (could not open file): " + command + place);
        }
    }
    for (const std::string& place : {folder, directory_.File("none/x")}) {
        for (const std::string command : {"write_fen ", "write_pgn "}) {
            EXPECT_EQ(ErrorOf(command + place), "Error (could not open file): " + command + place);
        }
    }
    EXPECT_EQ(ErrorOf("write_fen /dev/full"), "Error (could not write FEN file): write_fen /dev/full");
    EXPECT_EQ(ErrorOf("write_pgn /dev/full"), "Error (could not write PGN file): write_pgn /dev/full");
}

TEST_F(FileCommands, LargeFileIsReadOnlyAsFarAsItCanBeAPosition) {
    Put("(");
    std::filesystem::resize_file(path_, 100U << 20U);
    EXPECT_EQ(ErrorOf("read_fen " + path_), "Error (could not read FEN file): read_fen " + path_);
    EXPECT_EQ(ErrorOf("read_pgn " + path_), "Error (could not read PGN file): read_pgn " + path_);
}

TEST_F(FileCommands, OnlyTheFirstLineIsThePosition) {
    Put("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1\r\nand more\n");
    EXPECT_EQ(ErrorOf("read_fen " + path_), "");
    EXPECT_THAT(bench_.fen(), testing::StartsWith("4k3/8/8/8/8/8/4P3/4K3 w"));
}

}  // namespace
