#include "interfaces/commands/jobs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bitbases/bitbases.h"
#include "bitbases/synthetic_file.h"
#include "bitbases/table_source.h"
#include "interfaces/commands/jobs.h"
#include "support/command_bench.h"
#include "support/log_capture.h"
#include "support/standard_input.h"

namespace {

using testing::HasSubstr;

class DatabaseCommands : public testing::Test {
  protected:
    DatabaseCommands() { bench_.Prepare({"force"}); }
    /// What the line says on the screen, an error after it.
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
    bench_.engine.open_tablebases = OpenHere();
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
}

TEST_F(DatabaseCommands, TbIsAnErrorThatAStartUpOptionSurvives) {
    const auto command = translate(bench_.game.protocol(), "tb nalimov 8M x");
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

TEST_F(DatabaseCommands, ProbeTellsEachAnswerOfTheTables) {
    using enum VorkaTablebases::ProbeResult;
    const auto answer = [&](VorkaTablebases::ProbeResult result, int score, const std::string& fen) {
        bench_.engine.tablebases = TablebasesOf(Always(result, score));
        return Say("probe " + fen);
    };
    const std::string rooks = "4k2r/8/8/8/8/8/8/4K2R w - - 0 1";
    const std::string head = "\nProbing bitbases: not found\nProbing tablebases: ";
    EXPECT_EQ(answer(found, 32750, rooks), head + "result=32750\n");
    EXPECT_EQ(answer(found, -32750, rooks), head + "result=-32750\n");
    EXPECT_EQ(answer(found, 0, rooks), head + "result=0\n");
    EXPECT_EQ(answer(not_found, 5, rooks), head + "not found\n");
    EXPECT_EQ(answer(disabled, 5, rooks), head + "disabled (not loaded)\n");
    EXPECT_EQ(answer(queued, 5, rooks), head + "queued (this should never happen!)\n");
    EXPECT_EQ(answer(found, 5, "4k2r/8/8/8/8/8/8/4K2R w K - 0 1"), head + "not found\n") << "a right to castle";
    EXPECT_EQ(answer(found, 5, "4k3/8/4K3/4P3/8/8/8/8 w - - 0 1"),
              "\nProbing bitbases: result=32703\nProbing tablebases: result=5\n")
        << "both are asked";
}

TEST_F(DatabaseCommands, ProbeReadsTheLoadedFiles) {
    const BitbaseFiles files;
    VorkaBitbases::Bitbases& bitbases = bench_.engine.bitbases;
    const std::string two = "4k3/8/6p1/8/1P6/8/8/4K3 w - - 0 1";
    const std::string three = "4k3/8/8/2p5/2P3P1/8/8/4K3 b - - 0 1";
    const auto probe = [&](const std::string& fen) { return Say("probe " + fen); };
    const auto known = [](const std::string& answer) {
        return "\nProbing bitbases: " + answer + "\nProbing tablebases: disabled (not loaded)\n";
    };
    files.LoadTwoPawns(bitbases, VorkaBitbases::TwoPawnsCell(b4, g6, e1, e8), VorkaBitbases::stored_win);
    EXPECT_EQ(probe(two), known("result=32679"));
    EXPECT_EQ(probe(three), known("not found")) << "the other file is missing";
    EXPECT_EQ(probe("4k3/8/8/8/1P4P1/8/8/4K3 w - - 0 1"), known("not found")) << "both pawns are White's";
    EXPECT_EQ(probe("4k3/8/6p1/8/1P6/8/8/4KN2 w - - 0 1"), known("not found")) << "a knight";
    bitbases = {};
    files.LoadRammedPawn(bitbases, VorkaBitbases::RammedPawnsCell(c4, g4, e1, e8, 1), VorkaBitbases::stored_loss);
    EXPECT_EQ(probe(three), known("result=32621")) << "Black wins";
    EXPECT_EQ(probe(two), known("not found"));
    EXPECT_EQ(probe("4k3/8/8/2p5/2P3P1/8/8/4K3 w - - 0 1"), known("result=0")) << "drawn with White to move";
    EXPECT_EQ(probe("4k3/8/8/2p5/8/2P3P1/8/4K3 b - - 0 1"), known("not found")) << "no pawn is blocked";
    EXPECT_EQ(probe("4k3/8/8/6p1/5pP1/8/8/4K3 b - - 0 1"), known("result=0"));
    EXPECT_EQ(probe("4k3/8/8/6p1/5pP1/8/8/4K3 b - g3 0 1"), known("not found")) << "en passant";
}

TEST_F(DatabaseCommands, ProbeLeavesTheSearchAlone) {
    GameAccess::pretendSearch(bench_.game, SearchKind::analyze);
    testing::internal::CaptureStdout();
    const CommandOutcome outcome = bench_.Send("probe 4k3/8/4K3/4P3/8/8/8/8 w - - 0 1");
    EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("result=32703"));
    EXPECT_EQ(outcome.aborted, std::nullopt);
    EXPECT_EQ(outcome.runs, 1);
    EXPECT_EQ(bench_.game.runningSearch(), SearchKind::analyze);
}

TEST_F(DatabaseCommands, TbTellsTheFilesApart) {
    const auto status = [](const std::string& two, const std::string& three) {
        return testing::EndsWith("King+pawn vs king bitbases (built-in)\nKing+pawn vs king+pawn bitbases (" + two +
                                 ")\nKing+pawn+pawn vs king+pawn with pawn ram bitbases (" + three + ")\n");
    };
    const BitbaseFiles files;
    VorkaBitbases::Bitbases& bitbases = bench_.engine.bitbases;
    files.LoadTwoPawns(bitbases);
    EXPECT_THAT(Say("tb"), status("loaded", "not loaded"));
    files.LoadRammedPawn(bitbases);
    EXPECT_THAT(Say("tb"), status("loaded", "loaded"));
    bitbases = {};
    files.LoadRammedPawn(bitbases);
    EXPECT_THAT(Say("tb"), status("not loaded", "loaded"));
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

// --- Words of jobs ---

/// The text that words are refused with, and none if they are names of jobs.
template <class Jobs>
std::string RefusalOf(Jobs jobs, const std::string& words) {
    try {
        static_cast<void>(jobs(words));
    } catch (const VorkaInterfaces::AbstractJob::JobFailedException& error) {
        return error.text();
    }
    return "";
}

template <class Jobs>
std::vector<std::string_view> NamesOf(const Jobs& jobs) {
    std::vector<std::string_view> names;
    for (const auto& job : jobs) names.push_back(job->name());
    return names;
}

TEST(JobWords, AreHeldTogetherByQuotes) {
    for (const std::string_view quotes : {"\"\"", "''", "[]", "{}"}) {
        const auto quoted = [&](const std::string& words) { return quotes[0] + words + quotes[1]; };
        EXPECT_EQ(RefusalOf(VorkaInterfaces::generationJobs, quoted("two_pawns rammed_pawn")),
                  "Could not parse generation job description 'two_pawns rammed_pawn'");
        EXPECT_EQ(RefusalOf(VorkaInterfaces::verificationJobs, quoted("two_pawns  single_pawn")),
                  "Could not parse verify job description 'two_pawns  single_pawn'");
        EXPECT_THAT(NamesOf(VorkaInterfaces::verificationJobs(quoted("two_pawns") + " " + quoted("single_pawn"))),
                    testing::ElementsAre("two_pawns", "single_pawn"));
        EXPECT_EQ(VorkaInterfaces::generationJobs(quoted("all")).size(), 2U);
    }
}

TEST(JobWords, NeedTheirClosingQuote) {
    for (const std::string words : {"\"two_pawns", "'two_pawns", "[two_pawns", "{two_pawns", "[two_pawns}",
                                    "{two_pawns]", "two_pawns [", "[two_pawns\""}) {
        EXPECT_EQ(RefusalOf(VorkaInterfaces::generationJobs, words), "could not tokenize the input string") << words;
        EXPECT_EQ(RefusalOf(VorkaInterfaces::verificationJobs, words), "could not tokenize the input string") << words;
    }
    EXPECT_EQ(RefusalOf(VorkaInterfaces::generationJobs, "two_pawns]"),
              "Could not parse generation job description 'two_pawns]'")
        << "closing alone is no quote";
}

TEST_F(DatabaseCommands, JobWordsAreHeldTogetherByBrackets) {
    EXPECT_EQ(Say("generate [two_pawns rammed_pawn]"),
              "Error (Could not parse generation job description 'two_pawns rammed_pawn'): "
              "generate [two_pawns rammed_pawn]");
    EXPECT_EQ(Say("verify {two_pawns rammed_pawn}"),
              "Error (Could not parse verify job description 'two_pawns rammed_pawn'): "
              "verify {two_pawns rammed_pawn}");
    EXPECT_THAT(Say("verify [two_pawns] {rammed_pawn}"),
                testing::StartsWith("Verifying bitbase 'two_pawns'...skipped\n"
                                    "Verifying bitbase 'rammed_pawn'...skipped\nVerification finished ("));
    for (const std::string line : {"generate [two_pawns", "verify {two_pawns", "verify 'two_pawns"}) {
        EXPECT_EQ(Say(line), "Error (could not tokenize the input string): " + line);
    }
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
