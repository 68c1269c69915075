#include "bench_run/bench_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const BenchRow quick{.fen = "8/8/8/8/8/8/8/K1k5 w - - 0 1",
                     .nodes = 1000,
                     .microseconds = 2000,
                     .depth = 6,
                     .microseconds_to_depth = 1999,
                     .statistics = {.quiescence_nodes = 600,
                                    .cuts = 200,
                                    .first_move_cuts = 190,
                                    .extended_moves = 70,
                                    .reduced_moves = 40,
                                    .verifications = 5},
                     .transposition = {.probes = 400, .hits = 100},
                     .scores = {.probes = 500, .hits = 50},
                     .pawns = {.probes = 300, .hits = 297}};

BenchRow Slow() {
    BenchRow slow = quick;
    slow.fen = "8/8/8/8/8/8/8/k1K5 b - - 0 1";
    slow.nodes = 3000;
    slow.microseconds = 30000;
    return slow;
}

std::string WhyRefused(const std::string& text) {
    try {
        (void)ReadFileText(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

TEST(BenchRun, FileGivesBackWhatWasKept) {
    const std::vector<BenchRow> run = {quick, Slow()};
    const std::string text = FileText(run);
    EXPECT_EQ(FileText(ReadFileText(text)), text);
    const BenchRow back = ReadFileText(text).at(0);
    EXPECT_EQ(back.fen, quick.fen);
    EXPECT_EQ(back.statistics, quick.statistics);
    EXPECT_EQ(back.pawns.hits, 297U);
}

TEST(BenchRun, FileIsALineForEachPosition) {
    EXPECT_THAT(FileText({quick}), StartsWith("nodes microseconds depth "));
    EXPECT_THAT(
        FileText({quick}),
        HasSubstr("\n1000 2000 6 1999 600 200 190 70 40 5 400 100 500 50 300 297 8/8/8/8/8/8/8/K1k5 w - - 0 1\n"));
}

TEST(BenchRun, OtherTextIsRefusedWithItsLine) {
    const std::string whole = FileText({quick, Slow()});
    EXPECT_EQ(WhyRefused(""), "line 1: no run of this program");
    EXPECT_EQ(WhyRefused("Nodes: 5\n"), "line 1: no run of this program");
    std::string broken = whole;
    broken.replace(broken.find("3000 "), 4, "3x00");
    EXPECT_EQ(WhyRefused(broken), "line 3: no number for nodes: \"3x00\"");
    EXPECT_THAT(WhyRefused(whole.substr(0, whole.find(" 8/"))), StartsWith("line 2: no position"));
}

TEST(BenchRun, RowShowsShares) {
    const std::string row = TableRow(quick);
    for (const char* cell :
         {" 1000 ", " 60.0 %", " 95.0 %", " 25.0 %", " 10.0 %", " 99.0 %", " 0.0700", " 0.0400", " 0.0050"}) {
        EXPECT_THAT(row, HasSubstr(cell));
    }
    EXPECT_EQ(row.size(), TableHead().size());
}

TEST(BenchRun, EmptySearchHasNoShares) { EXPECT_THAT(TableRow(BenchRow()), HasSubstr(" 0.0 %")); }

TEST(BenchRun, ComparisonIsRatiosForEachAndInAll) {
    BenchRow now = quick;
    now.nodes = 500;
    now.microseconds = 500;
    const std::string text = ComparisonText({now, Slow()}, {quick, Slow()}, true);
    EXPECT_THAT(text, HasSubstr("    0.500    0.250    2.000  8/8/8/8/8/8/8/K1k5 w - - 0 1\n"));
    EXPECT_THAT(text, HasSubstr("    1.000    1.000    1.000  8/8/8/8/8/8/8/k1K5 b - - 0 1\n"));
    EXPECT_THAT(text, HasSubstr("    0.875    0.953    0.918  in all\n"));
    EXPECT_THAT(ComparisonText({now}, {quick}, false), testing::Not(HasSubstr("K1k5")));
}

TEST(BenchRun, OtherPositionsCannotBeCompared) {
    EXPECT_THROW((void)ComparisonText({quick}, {Slow()}, true), std::runtime_error);
    EXPECT_THROW((void)ComparisonText({quick}, {quick, Slow()}, true), std::runtime_error);
    EXPECT_NO_THROW(RequireSamePositions({quick}, {quick.fen}));
}

}  // namespace
