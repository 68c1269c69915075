#include "interfaces/commands_databases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "bitbases/table_source.h"
#include "support/command_bench.h"
#include "support/log_capture.h"
#include "support/standard_input.h"

namespace {

using testing::HasSubstr;

class DatabaseCommands : public testing::Test {
  protected:
    DatabaseCommands() { bench_.Prepare({"force"}); }
    /// What the line says on the screen, an error behind it.
    std::string Say(const std::string& line) {
        testing::internal::CaptureStdout();
        const CommandOutcome outcome = bench_.Send(line);
        return testing::internal::GetCapturedStdout() + outcome.error;
    }
    LogCapture log_;
    CommandBench bench_;
};

TEST_F(DatabaseCommands, TbShowsWhatThereIs) {
    EXPECT_EQ(
        Say("tb"),
        "Supported bitbases/tablebases:\nNalimov tablebases (type=nalimov)\nKing+pawn vs king bitbases (built-in)\n"
        "King+pawn vs king+pawn bitbases (not loaded)\n"
        "King+pawn+pawn vs king+pawn with pawn ram bitbases (not loaded)\n");
}

TEST_F(DatabaseCommands, TbFindsNoTables) {
    EXPECT_EQ(
        Say("tb nalimov 8M no where"),
        "Initializing Nalimov tablebases... 'no where'\n"
        "Error! Could not initialize tablebases!\nIs the path correct?\n"
        "Error (Could not initialize Nalimov tablebases.\nReason: Could not open tablebases. Is the path correct?): "
        "tb nalimov 8M no where");
    EXPECT_THAT(Say("tb nalimov 2G x"),
                testing::StartsWith("NalimovInitializer: Cannot allocate the requested memory, because of an integer "
                                    "overflow. Allocating maximum memory instead.\nInitializing"));
}

/// Tables of the folder "here", which need a cache of 1024 bytes.
VorkaTablebases::SourceOpener OpenHere() {
    return [](const std::string& path) -> std::unique_ptr<VorkaTablebases::TableSource> {
        if (path != "here") return nullptr;
        return std::make_unique<FakeTables>(Always(VorkaTablebases::ProbeResult::found, -32700), 1024);
    };
}

TEST_F(DatabaseCommands, TbTakesTablesIntoUse) {
    VorkaInterfaces::Command_InitTablebases::useOpener(OpenHere());
    EXPECT_EQ(Say("tb nalimov 8M here"), "Initializing Nalimov tablebases... 'here'\n");
    EXPECT_THAT(Say("probe 8/8/8/8/8/2k5/3q4/K7 w - - 0 1"),
                testing::EndsWith("\nProbing bitbases: not found\nProbing tablebases: result=-32700\n"));
    EXPECT_THAT(Say("probe r3k2r/8/8/8/8/8/8/4K3 b kq - 0 1"), testing::EndsWith("\nProbing tablebases: not found\n"));
    EXPECT_EQ(Say("tb nalimov 1K here"), "Initializing Nalimov tablebases... 'here'\n") << "another cache";
    EXPECT_EQ(Say("tb nalimov 0 here"), "Initializing Nalimov tablebases... 'here'\n") << "no cache";
    EXPECT_THAT(Say("tb nalimov 1000 here"),
                testing::AllOf(HasSubstr("Error! Could not initialize tablebases!\nIncrease the cache size.\n"),
                               HasSubstr("Reason: Increase the cache size, because it is too small.")));
    EXPECT_THAT(Say("probe 8/8/8/8/8/2k5/3q4/K7 w - - 0 1"), HasSubstr("disabled (not loaded)"))
        << "a set-up that failed leaves none in use";
    VorkaInterfaces::Command_InitTablebases::useOpener(NalimovTablebases::OpenNothing);
}

TEST_F(DatabaseCommands, TbIsAnErrorThatAStartUpOptionSurvives) {
    const auto command = bench_.game.protocol->translate("tb nalimov 8M x");
    EXPECT_THROW(command->Execute(bench_.game), VorkaInterfaces::IgnorableErrorCommand);
}

TEST_F(DatabaseCommands, TbReadsItsWordsInOrder) {
    EXPECT_EQ(Say("tb foo x y"), "Error (could not parse type): tb foo x y");
    EXPECT_EQ(Say("tb nalimov x y"), "Error (could not parse new size): tb nalimov x y");
    EXPECT_EQ(Say("tb nalimov 8M"), "Error (missing parameters): tb nalimov 8M");
}

TEST_F(DatabaseCommands, ProbeSaysWhatIsKnown) {
    EXPECT_THAT(Say("probe 4k3/8/4K3/4P3/8/8/8/8 w - - 0 1"),
                testing::EndsWith("\nProbing bitbases: result=32703\nProbing tablebases: disabled (not loaded)\n"));
    EXPECT_THAT(Say("probe 4k3/4P3/4K3/8/8/8/8/8 b - - 0 1"), HasSubstr("Probing bitbases: result=0\n"));
    bench_.calls.clear();
    EXPECT_THAT(Say("probe 4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1"),
                testing::EndsWith("\nProbing bitbases: not found\nProbing tablebases: disabled (not loaded)\n"));
    EXPECT_THAT(bench_.calls, testing::ElementsAre(HasSubstr("showBoard")));
    EXPECT_THAT(bench_.fen(), testing::StartsWith("rnbqkbnr/")) << "the game is another one";
    EXPECT_EQ(Say("probe x y"), "Error (input inconsistent with FEN standard): probe x y");
    EXPECT_EQ(Say("probe 8/8/8/8/8/8/8/8 w - - 0 1"), "Error (Illegal position): probe 8/8/8/8/8/8/8/8 w - - 0 1");
}

TEST_F(DatabaseCommands, JobsAreListed) {
    EXPECT_EQ(Say("generate"), "List of available generation jobs:\ntwo_pawns\nrammed_pawn\n");
    EXPECT_EQ(Say("verify"), "List of available verification jobs:\nsingle_pawn\ntwo_pawns\nrammed_pawn\n");
}

TEST_F(DatabaseCommands, JobsNeedTables) {
    EXPECT_EQ(
        Say("generate all"),
        "Generating king+pawn vs king+pawn bitbases data file... failed\nError (tablebases not loaded): generate all");
    EXPECT_EQ(
        Say("generate rammed_pawn"),
        "Generating rammed pawn bitbases data file... failed\nError (tablebases not loaded): generate rammed_pawn");
    EXPECT_THAT(Say("verify two_pawns 'rammed_pawn'"),
                testing::MatchesRegex(
                    "Verifying bitbase 'two_pawns'...skipped\n"
                    "Verifying bitbase 'rammed_pawn'...skipped\nVerification finished \\([0-9]+ms total\\)\\.\n"));
    EXPECT_EQ(Say("verify all"),
              "Verifying bitbase 'single_pawn'...aborted\nError (tablebases not loaded): verify all");
}

TEST_F(DatabaseCommands, UnknownJobsAreRefusedBeforeAnyRuns) {
    EXPECT_EQ(Say("generate two_pawns foo"),
              "Error (Could not parse generation job description 'foo'): generate two_pawns foo");
    EXPECT_EQ(Say("verify foo"), "Error (Could not parse verify job description 'foo'): verify foo");
    EXPECT_EQ(Say("generate single_pawn"),
              "Error (Support for single pawn bitbase generation disabled): generate single_pawn");
    EXPECT_EQ(Say("generate generic"), "Error (Support for generic bitbase generation disabled): generate generic");
    EXPECT_EQ(Say("verify generic"), "Error (Generic bitbases verification not supported): verify generic");
}

// --- optimize_piece ---

class OptimizePiece : public DatabaseCommands {
  protected:
    std::string Ask(const std::string& fen, const std::string& answer) {
        bench_.Prepare({"setboard " + fen});
        const StandardInputText input(answer + "\n");
        return Say("optimize_piece");
    }
};

TEST_F(OptimizePiece, RefusesWhatIsNoSquareWithAMan) {
    for (const std::string answer : {"e5", "", "e", "e22", "i1", "??"}) {
        EXPECT_EQ(Ask("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", answer), "Piece:\nError: Invalid square\n") << answer;
    }
}

TEST_F(OptimizePiece, TellsTheBestSquare) {
    for (const std::string answer : {"e2", "e1", "e8"}) {
        EXPECT_THAT(Ask("4k3/8/8/8/8/8/4P3/4K3 w - - 0 1", answer),
                    testing::ContainsRegex("^Piece:\n(New best square: [a-h][1-8] \\(val=-?[0-9]+\\)\n)+"
                                           "Best square: [a-h][1-8] \\(val=-?[0-9]+\\)\n$"));
    }
}

TEST_F(OptimizePiece, KeepsBishopsOnTheirColourAndPawnsAhead) {
    EXPECT_THAT(Ask("4k3/8/8/8/8/8/8/2B1K3 w - - 0 1", "c1"), testing::Not(HasSubstr("h1 ")));
    EXPECT_THAT(Ask("4k3/8/8/4P3/8/8/8/4K3 w - - 0 1", "e5"), testing::ContainsRegex("Best square: e[567] "));
    EXPECT_THAT(Ask("4k3/8/8/8/4p3/8/8/4K3 b - - 0 1", "e4"), testing::ContainsRegex("Best square: e[234] "));
}

}  // namespace
