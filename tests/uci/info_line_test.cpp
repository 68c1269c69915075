#include "uci/info_line.h"

#include <gtest/gtest.h>

#include "search/tables/score.h"
#include "support/row_name.h"
#include "uci/move_text.h"
#include "uci/position_command.h"

namespace {

struct Row {
    std::string_view name;
    int score;
    std::string_view text;
};

class ScoreTold : public testing::TestWithParam<Row> {};

TEST_P(ScoreTold, IsTold) { EXPECT_EQ(VorkaUci::ScoreText(GetParam().score), GetParam().text); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(InfoLine, ScoreTold, testing::Values(
    Row{"draw", 0, "cp 0"},
    Row{"a pawn up", 100, "cp 100"},
    Row{"a queen down", -950, "cp -950"},
    Row{"highest score", mate_score_limit - 1, "cp 31766"},
    Row{"mate in one", infinity_bound - 1, "mate 1"},
    Row{"mate in two", infinity_bound - 3, "mate 2"},
    Row{"mate in three", infinity_bound - 5, "mate 3"},
    Row{"mated in one", 2 - infinity_bound, "mate -1"},
    Row{"mated in three", 6 - infinity_bound, "mate -3"},
    Row{"furthest mate", infinity_bound - 55, "mate 28"},
    Row{"won ending", infinity_bound - 56, "cp 9944"},
    Row{"lost ending", 60 - infinity_bound, "cp -9940"},
    Row{"won ending far away", mate_score_limit, "cp 9000"}),
    RowName<Row>);
// clang-format on

/// A search in its fourth iteration, after two and a half seconds.
struct Fixture : testing::Test {
    Fixture() {
        info.depth = 4;
        info.selective_depth = 9;
        info.nodes = 5000;
        info.score = 31;
        info.root_moves = 20;
        info.moves_to_search = 18;
        info.start = {.valid = true, .seconds = 10, .microseconds = 0};
        info.end = {.valid = true, .seconds = 12, .microseconds = 500000};
        info.statistics.endings_known = 7;
    }
    [[nodiscard]] Move Find(std::string_view text) const { return VorkaUci::FindMove(text, board); }

    const BOARD board = VorkaUci::StartPosition();
    HashTables tables;
    SearchInfo info;
};

using InfoLine = Fixture;

TEST_F(InfoLine, TellsScoreCountsAndMoves) {
    info.principal_variation = {{Find("e2e4"), "e4"}, {Find("d2d4"), "d4"}};
    info.known_moves = 2;
    EXPECT_EQ(VorkaUci::ThinkingLine(info, tables),
              "info depth 4 seldepth 9 multipv 1 score cp 31 nodes 5000 nps 2000 hashfull 0 tbhits 7 time 2500 "
              "pv e2e4 d2d4");
}

TEST_F(InfoLine, EndsWithTheMovesThatTheScoreRestsOn) {
    info.principal_variation = {{Find("e2e4"), "e4"}, {Find("d2d4"), "d4"}};
    info.known_moves = 1;
    EXPECT_TRUE(VorkaUci::ThinkingLine(info, tables).ends_with(" pv e2e4"));
}

TEST_F(InfoLine, LeavesAnEmptyLineOut) {
    EXPECT_EQ(VorkaUci::ThinkingLine(info, tables),
              "info depth 4 seldepth 9 multipv 1 score cp 31 nodes 5000 nps 2000 hashfull 0 tbhits 7 time 2500");
}

TEST_F(InfoLine, SelectiveDepthIsNotBelowTheDepth) {
    info.selective_depth = 1;
    EXPECT_EQ(VorkaUci::ThinkingLine(info, tables).substr(0, 25), "info depth 4 seldepth 4 m");
}

TEST_F(InfoLine, BoundEndsItsLineBeforeAMoveThatCannotBePlayed) {
    const std::string head = "info depth 4 seldepth 9 multipv 1 score cp 50 ";
    const std::string status = " nodes 5000 nps 2000 hashfull 0 tbhits 7 time 2500 pv";
    const std::vector<Move> line{Find("e2e4"), Find("d2d4")};
    EXPECT_EQ(VorkaUci::BoundLine(info, tables, 50, ScoreBound::at_least, board, line),
              head + "lowerbound" + status + " e2e4");
    EXPECT_EQ(VorkaUci::BoundLine(info, tables, 50, ScoreBound::at_most, board, line),
              head + "upperbound" + status + " e2e4");
}

TEST_F(InfoLine, CurrentMoveIsNumbered) {
    EXPECT_EQ(VorkaUci::CurrentMoveLine(info, Find("e2e4")), "info depth 4 currmove e2e4 currmovenumber 3");
}

TEST_F(InfoLine, SpeedIsANumberWhenNoTimeHasPassed) {
    info.end = info.start;
    EXPECT_EQ(VorkaUci::StatusText(info, tables), "nodes 5000 nps 5000000 hashfull 0 tbhits 7 time 0");
}

}  // namespace
