#include "frame/game/draw_resign_advisor.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "bitbases/table_source.h"
#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

// Positions by what the rules look at: queens, pawns, and the men beside the pawns.
const std::string with_queens = start_fen;
const std::string without_queens = "rnb1kbnr/pppppppp/8/8/8/8/PPPPPPPP/RNB1KBNR w KQkq - 0 1";
const std::string one_queen = "rnb1kbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";
const std::string two_pawns_eight_men = "r1b1k1n1/p7/8/8/8/8/P7/R1B1K1N1 w - - 0 1";
const std::string two_pawns_nine_men = "r1b1k1n1/p7/8/8/8/8/P7/R1B1K1NN w - - 0 1";
const std::string three_pawns_eight_men = "r1b1k1n1/pp6/8/8/8/8/P7/R1B1K1N1 w - - 0 1";
const std::string two_pawns_with_queen = "r1bqk3/p7/8/8/8/8/P7/R1B1K1N1 w - - 0 1";

// --- Hopeless scores ---

struct HopelessRow {
    std::string name;
    ResignMode mode;
    bool opponent_is_computer;
    std::string fen;
    std::int32_t threshold;  ///< the highest hopeless score
};

class Hopeless : public testing::TestWithParam<HopelessRow> {};

TEST_P(Hopeless, UpToTheThreshold) {
    const HopelessRow& row = GetParam();
    DrawResignAdvisor advisor;
    advisor.resignMode = row.mode;
    advisor.opponentIsComputer = row.opponent_is_computer;
    const BOARD board = BoardFromFen(row.fen);
    EXPECT_TRUE(advisor.isHopeless(board, row.threshold));
    EXPECT_FALSE(advisor.isHopeless(board, row.threshold + 1));
}

INSTANTIATE_TEST_SUITE_P(
    Advisor, Hopeless,
    testing::Values(HopelessRow{"KeenModeAgainstPerson", ResignMode::keen, false, without_queens, -250},
                    HopelessRow{"KeenModeAgainstComputer", ResignMode::keen, true, without_queens, -250},
                    HopelessRow{"PatientModeAgainstPerson", ResignMode::patient, false, without_queens, -440},
                    HopelessRow{"PatientModeAgainstComputer", ResignMode::patient, true, without_queens, -440},
                    HopelessRow{"NeverMode", ResignMode::never, false, without_queens, -440},
                    HopelessRow{"ByOpponentAgainstPerson", ResignMode::by_opponent, false, without_queens, -250},
                    HopelessRow{"ByOpponentAgainstComputer", ResignMode::by_opponent, true, without_queens, -440},
                    HopelessRow{"QueensKeen", ResignMode::keen, false, with_queens, -320},
                    HopelessRow{"QueensPatient", ResignMode::patient, false, with_queens, -510},
                    HopelessRow{"OneQueen", ResignMode::keen, false, one_queen, -320},
                    HopelessRow{"FewMenKeen", ResignMode::keen, false, two_pawns_eight_men, -450},
                    HopelessRow{"FewMenPatient", ResignMode::patient, false, two_pawns_eight_men, -1040},
                    HopelessRow{"NineMen", ResignMode::keen, false, two_pawns_nine_men, -250},
                    HopelessRow{"ThreePawns", ResignMode::keen, false, three_pawns_eight_men, -250},
                    HopelessRow{"FewMenWithQueen", ResignMode::patient, false, two_pawns_with_queen, -1110}),
    RowName<HopelessRow>);

// --- What a search leaves behind ---

class Advisor : public testing::Test {
  protected:
    void Add(std::int32_t score, int times = 1) {
        for (int i = 0; i < times; ++i) advisor.addSearch(board, score, tables);
    }

    DrawResignAdvisor advisor;
    VorkaTablebases::Tablebases tables;
    BOARD board = BoardFromFen(with_queens);
};

TEST_F(Advisor, BeginsAsIfNothingHadBeenOffered) {
    EXPECT_EQ(advisor.lastScore, 1000000);
    EXPECT_EQ(advisor.sinceOffer, 1000);
    EXPECT_EQ(advisor.matedIn, -1);
    EXPECT_EQ(advisor.tablebaseVerdict, TablebaseVerdict::unknown);
    EXPECT_EQ(advisor.resignMode, ResignMode::by_opponent);
    EXPECT_EQ(advisor.drawValue, 0);
}

TEST_F(Advisor, SearchCountsAndRemembersItsScore) {
    Add(12);
    Add(13);
    EXPECT_EQ(advisor.searches, 2);
    EXPECT_EQ(advisor.sinceOffer, 1002);
    EXPECT_EQ(advisor.lastScore, 13);
    EXPECT_EQ(advisor.tablebaseVerdict, TablebaseVerdict::unknown);
}

struct MateRow {
    std::string name;
    std::int32_t last_score;
    std::int32_t score;
    bool losing_mate_worse;
    std::int32_t mated_in;
};

class LosingMate : public testing::TestWithParam<MateRow> {};

TEST_P(LosingMate, IsNotedWithItsDistance) {
    DrawResignAdvisor advisor;
    advisor.lastScore = GetParam().last_score;
    advisor.addSearch(BoardFromFen(with_queens), GetParam().score, {});
    EXPECT_EQ(advisor.losingMateWorse, GetParam().losing_mate_worse);
    EXPECT_EQ(advisor.matedIn, GetParam().mated_in);
}

INSTANTIATE_TEST_SUITE_P(
    Advisor, LosingMate,
    testing::Values(MateRow{"FirstSearch", 1000000, -32765, true, 1},
                    MateRow{"WorseThanBefore", -32757, -32759, true, 4}, MateRow{"AsBefore", -32759, -32759, false, 4},
                    MateRow{"BetterThanBefore", -32761, -32759, false, 4}, MateRow{"JustAMate", 0, -31768, true, 500},
                    MateRow{"JustNoMate", 0, -31767, false, -1}, MateRow{"WinningMate", 0, 32760, false, -1},
                    MateRow{"MatedOnTheSpot", 0, -32766, true, 1}),
    RowName<MateRow>);

struct RunRow {
    std::string name;
    std::string fen;
    std::int32_t draw_value;
    std::int32_t score;
    std::int32_t below, above, draw_score, drawish;  ///< runs after one search that began with 5 each
};

class Runs : public testing::TestWithParam<RunRow> {};

TEST_P(Runs, GoOnOrBeginAnew) {
    const RunRow& row = GetParam();
    DrawResignAdvisor advisor;
    advisor.drawValue = row.draw_value;
    advisor.belowRun = advisor.aboveRun = advisor.drawScoreRun = advisor.drawishRun = 5;
    advisor.addSearch(BoardFromFen(row.fen), row.score, {});
    EXPECT_EQ(advisor.belowRun, row.below);
    EXPECT_EQ(advisor.aboveRun, row.above);
    EXPECT_EQ(advisor.drawScoreRun, row.draw_score);
    EXPECT_EQ(advisor.drawishRun, row.drawish);
}

INSTANTIATE_TEST_SUITE_P(Advisor, Runs,
                         testing::Values(RunRow{"OnTheDrawValue", with_queens, 0, 0, 0, 0, 6, 6},
                                         RunRow{"NotYetAbove", with_queens, 0, 14, 0, 0, 0, 6},
                                         RunRow{"Above", with_queens, 0, 15, 0, 6, 0, 6},
                                         RunRow{"NotYetBelow", with_queens, 0, -14, 0, 0, 0, 6},
                                         RunRow{"Below", with_queens, 0, -15, 6, 0, 0, 6},
                                         RunRow{"DrawishWithQueens", with_queens, 0, 17, 0, 6, 0, 6},
                                         RunRow{"NotDrawishWithQueens", with_queens, 0, 18, 0, 6, 0, 0},
                                         RunRow{"NotDrawishBelow", with_queens, 0, -18, 6, 0, 0, 0},
                                         RunRow{"DrawishWithoutQueens", without_queens, 0, 25, 0, 6, 0, 6},
                                         RunRow{"DrawishBelowWithoutQueens", without_queens, 0, -25, 6, 0, 0, 6},
                                         RunRow{"NotDrawishWithoutQueens", without_queens, 0, 26, 0, 6, 0, 0},
                                         RunRow{"OneQueenIsAQueen", one_queen, 0, 18, 0, 6, 0, 0},
                                         // The drawish margin is around zero, the others around the draw value.
                                         RunRow{"OnAnotherDrawValue", with_queens, 30, 30, 0, 0, 6, 0},
                                         RunRow{"BelowAnotherDrawValue", with_queens, 30, 15, 6, 0, 0, 6},
                                         RunRow{"AboveAnotherDrawValue", with_queens, -30, -15, 0, 6, 0, 6}),
                         RowName<RunRow>);

TEST_F(Advisor, HopelessRunCountsHopelessScores) {
    Add(-320, 3);
    EXPECT_EQ(advisor.hopelessRun, 3);
    Add(-319);
    EXPECT_EQ(advisor.hopelessRun, 0);
}

struct VerdictRow {
    std::string name;
    std::optional<std::int32_t> score;
    TablebaseVerdict verdict;
};

class Verdict : public testing::TestWithParam<VerdictRow> {};

TEST_P(Verdict, FollowsFromTheTablebase) {
    DrawResignAdvisor advisor;
    advisor.tablebaseVerdict = TablebaseVerdict::drawn;
    advisor.setVerdict(GetParam().score);
    EXPECT_EQ(advisor.tablebaseVerdict, GetParam().verdict);
}

INSTANTIATE_TEST_SUITE_P(Advisor, Verdict,
                         testing::Values(VerdictRow{"NotFound", std::nullopt, TablebaseVerdict::unknown},
                                         VerdictRow{"Draw", 0, TablebaseVerdict::drawn},
                                         VerdictRow{"Win", 1, TablebaseVerdict::won},
                                         VerdictRow{"LostIn29", -(32767 - 29), TablebaseVerdict::lost_soon},
                                         VerdictRow{"LostIn30", -(32767 - 30), TablebaseVerdict::lost_far_off}),
                         RowName<VerdictRow>);

struct TablesRow {
    std::string name;
    VorkaTablebases::ProbeResult result;
    std::int32_t score;
    std::optional<TablebaseVerdict> verdict;  ///< none if that of before stays
};

class VerdictOfASearch : public testing::TestWithParam<TablesRow> {
  protected:
    const std::vector<TablebaseVerdict> all = {TablebaseVerdict::won, TablebaseVerdict::lost_soon,
                                               TablebaseVerdict::lost_far_off, TablebaseVerdict::drawn,
                                               TablebaseVerdict::unknown};
};

TEST_P(VerdictOfASearch, ComesFromTheTablesAlone) {
    const TablesRow& row = GetParam();
    const std::string fen = "4k3/8/8/8/8/8/4q3/K7 w - - 0 1";
    std::vector<std::string> asked;
    const VorkaTablebases::Tablebases tables = TablebasesOf([&](const BOARD& board, int& score) {
        asked.push_back(FenOf(board));
        score = row.score;
        return row.result;
    });
    for (const TablebaseVerdict before : all) {
        DrawResignAdvisor advisor;
        advisor.tablebaseVerdict = before;
        advisor.addSearch(BoardFromFen(fen), 12, tables);
        EXPECT_EQ(advisor.tablebaseVerdict, row.verdict.value_or(before)) << "before: " << static_cast<int>(before);
    }
    EXPECT_EQ(asked, std::vector<std::string>(all.size(), fen)) << "one question for each search";
}

using enum VorkaTablebases::ProbeResult;
INSTANTIATE_TEST_SUITE_P(Advisor, VerdictOfASearch,
                         testing::Values(TablesRow{"Draw", found, 0, TablebaseVerdict::drawn},
                                         TablesRow{"WinNear", found, 32767 - 1, TablebaseVerdict::won},
                                         TablesRow{"WinFarOff", found, 32767 - 100, TablebaseVerdict::won},
                                         TablesRow{"LostIn2", found, -(32767 - 2), TablebaseVerdict::lost_soon},
                                         TablesRow{"LostIn29", found, -(32767 - 29), TablebaseVerdict::lost_soon},
                                         TablesRow{"LostIn30", found, -(32767 - 30), TablebaseVerdict::lost_far_off},
                                         TablesRow{"NotFound", not_found, -(32767 - 2), TablebaseVerdict::unknown},
                                         TablesRow{"NotLoaded", disabled, -(32767 - 2), TablebaseVerdict::unknown},
                                         TablesRow{"Queued", queued, -(32767 - 2), std::nullopt}),
                         RowName<TablesRow>);

TEST_F(VerdictOfASearch, IsUnknownWithoutTables) {
    for (const TablebaseVerdict before : all) {
        DrawResignAdvisor advisor;
        advisor.tablebaseVerdict = before;
        advisor.addSearch(BoardFromFen("4k3/8/8/8/8/8/4q3/K7 w - - 0 1"), 12, {});
        EXPECT_EQ(advisor.tablebaseVerdict, TablebaseVerdict::unknown);
    }
}

TEST_F(VerdictOfASearch, IsUnknownWhereTablesAreNotAsked) {
    const VorkaTablebases::Tablebases tables = TablebasesOf(Always(found, -(32767 - 2)));
    for (const std::string fen : {"r3k3/8/8/8/8/8/8/4K3 w q - 0 1", "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1"}) {
        DrawResignAdvisor advisor;
        advisor.tablebaseVerdict = TablebaseVerdict::drawn;
        advisor.addSearch(BoardFromFen(fen), 12, tables);
        EXPECT_EQ(advisor.tablebaseVerdict, TablebaseVerdict::unknown) << fen;
    }
}

TEST_F(Advisor, ResignsWithTheSearchThatTheTablesShowLost) {
    board = BoardFromFen("4k3/8/8/8/8/8/4q3/K7 w - - 0 1");
    const auto resigns = [&](VorkaTablebases::ProbeResult result, int plies) {
        tables = TablebasesOf(Always(result, -(32767 - plies)));
        Add(0);
        return advisor.shouldResign();
    };
    EXPECT_FALSE(resigns(found, 30));
    EXPECT_TRUE(resigns(found, 29));
    EXPECT_TRUE(resigns(queued, 30)) << "still known from before";
    EXPECT_FALSE(resigns(not_found, 29));
}

TEST_F(Advisor, ResetKeepsWhatIsNoStateOfTheGame) {
    advisor.opponentIsComputer = true;
    advisor.resignMode = ResignMode::patient;
    advisor.drawValue = -20;
    advisor.drawOfferPending = true;
    advisor.sinceOffer = 0;
    advisor.setVerdict(0);
    Add(-32760, 3);
    Add(-20, 3);
    Add(100, 3);
    advisor.losingMateWorse = true;
    advisor.reset();

    EXPECT_TRUE(advisor.opponentIsComputer);
    EXPECT_EQ(advisor.resignMode, ResignMode::patient);
    EXPECT_EQ(advisor.drawValue, -20);
    EXPECT_FALSE(advisor.drawOfferPending);
    EXPECT_FALSE(advisor.losingMateWorse);
    EXPECT_EQ(advisor.lastScore, 1000000);
    EXPECT_EQ(advisor.matedIn, -1);
    EXPECT_EQ(advisor.sinceOffer, 1000);
    EXPECT_EQ(advisor.tablebaseVerdict, TablebaseVerdict::unknown);
    for (const std::int32_t counter : {advisor.searches, advisor.drawScoreRun, advisor.drawishRun, advisor.hopelessRun,
                                       advisor.belowRun, advisor.aboveRun}) {
        EXPECT_EQ(counter, 0);
    }
}

TEST_F(Advisor, OnlyANewDrawValueResets) {
    Add(5, 4);
    advisor.setDrawValue(0);
    EXPECT_EQ(advisor.searches, 4);
    advisor.setDrawValue(10);
    EXPECT_EQ(advisor.searches, 0);
    EXPECT_EQ(advisor.drawValue, 10);
}

// --- The three questions ---

/// A state of the advisor, as a change to a fresh one.
struct QuestionRow {
    std::string name;
    void (*prepare)(DrawResignAdvisor& advisor);
    bool answer;
};

class ShouldResign : public testing::TestWithParam<QuestionRow> {};

TEST_P(ShouldResign, Answers) {
    DrawResignAdvisor advisor;
    GetParam().prepare(advisor);
    EXPECT_EQ(advisor.shouldResign(), GetParam().answer);
}

void SetMate(DrawResignAdvisor& advisor, bool worse, std::int32_t moves) {
    advisor.losingMateWorse = worse;
    advisor.matedIn = moves;
}

INSTANTIATE_TEST_SUITE_P(
    Advisor, ShouldResign,
    testing::Values(QuestionRow{"Fresh", [](auto&) {}, false},
                    QuestionRow{"NeverMode",
                                [](auto& a) {
                                    a.resignMode = ResignMode::never;
                                    a.hopelessRun = 100;
                                    a.tablebaseVerdict = TablebaseVerdict::lost_soon;
                                },
                                false},
                    QuestionRow{"FiveHopelessScoresAgainstPerson", [](auto& a) { a.hopelessRun = 5; }, false},
                    QuestionRow{"SixHopelessScoresAgainstPerson", [](auto& a) { a.hopelessRun = 6; }, true},
                    QuestionRow{"FourHopelessScoresAgainstComputer",
                                [](auto& a) {
                                    a.opponentIsComputer = true;
                                    a.hopelessRun = 4;
                                },
                                false},
                    QuestionRow{"FiveHopelessScoresAgainstComputer",
                                [](auto& a) {
                                    a.opponentIsComputer = true;
                                    a.hopelessRun = 5;
                                },
                                true},
                    QuestionRow{"KeenModeIsEarly",
                                [](auto& a) {
                                    a.resignMode = ResignMode::keen;
                                    a.hopelessRun = 5;
                                },
                                true},
                    QuestionRow{"PatientModeIsLateAgainstComputerToo",
                                [](auto& a) {
                                    a.resignMode = ResignMode::patient;
                                    a.opponentIsComputer = true;
                                    a.hopelessRun = 5;
                                },
                                false},
                    QuestionRow{"WorseMateInFour", [](auto& a) { SetMate(a, true, 4); }, true},
                    QuestionRow{"WorseMateInFive", [](auto& a) { SetMate(a, true, 5); }, false},
                    QuestionRow{"MateInFourNoWorse", [](auto& a) { SetMate(a, false, 4); }, false},
                    QuestionRow{"WorseMateInTenEarly",
                                [](auto& a) {
                                    a.resignMode = ResignMode::keen;
                                    SetMate(a, true, 10);
                                },
                                true},
                    QuestionRow{"WorseMateInElevenEarly",
                                [](auto& a) {
                                    a.resignMode = ResignMode::keen;
                                    SetMate(a, true, 11);
                                },
                                false},
                    QuestionRow{"MateInSeventeenWithRun",
                                [](auto& a) {
                                    SetMate(a, false, 17);
                                    a.hopelessRun = 6;
                                },
                                true},
                    QuestionRow{"MateInEighteenWithRun",
                                [](auto& a) {
                                    SetMate(a, false, 18);
                                    a.hopelessRun = 6;
                                },
                                false},
                    QuestionRow{"MateInEighteenWithRunEarly",
                                [](auto& a) {
                                    a.resignMode = ResignMode::keen;
                                    SetMate(a, false, 18);
                                    a.hopelessRun = 6;
                                },
                                true},
                    QuestionRow{"TablebaseDraw",
                                [](auto& a) {
                                    a.hopelessRun = 100;
                                    a.tablebaseVerdict = TablebaseVerdict::drawn;
                                },
                                false},
                    QuestionRow{"TablebaseWin",
                                [](auto& a) {
                                    a.hopelessRun = 100;
                                    a.tablebaseVerdict = TablebaseVerdict::won;
                                },
                                false},
                    QuestionRow{"TablebaseLossFarOff",
                                [](auto& a) {
                                    a.hopelessRun = 100;
                                    a.tablebaseVerdict = TablebaseVerdict::lost_far_off;
                                },
                                false},
                    QuestionRow{"TablebaseLossSoon", [](auto& a) { a.tablebaseVerdict = TablebaseVerdict::lost_soon; },
                                true}),
    RowName<QuestionRow>);

class ShouldOfferDraw : public testing::TestWithParam<QuestionRow> {};

TEST_P(ShouldOfferDraw, Answers) {
    DrawResignAdvisor advisor;
    advisor.searches = 2;
    GetParam().prepare(advisor);
    EXPECT_EQ(advisor.shouldOfferDraw(), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(Advisor, ShouldOfferDraw,
                         testing::Values(QuestionRow{"NoDrawishScores", [](auto&) {}, false},
                                         QuestionRow{"OneDrawScore", [](auto& a) { a.drawScoreRun = 1; }, false},
                                         QuestionRow{"TwoDrawScores", [](auto& a) { a.drawScoreRun = 2; }, true},
                                         QuestionRow{"OneSearch",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.searches = 1;
                                                     },
                                                     false},
                                         QuestionRow{"OfferPending",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.drawOfferPending = true;
                                                     },
                                                     false},
                                         QuestionRow{"TablebaseWin",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.tablebaseVerdict = TablebaseVerdict::won;
                                                     },
                                                     false},
                                         QuestionRow{"TablebaseDraw",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.tablebaseVerdict = TablebaseVerdict::drawn;
                                                     },
                                                     true},
                                         QuestionRow{"SevenSearchesAfterTheLastOffer",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.sinceOffer = 7;
                                                     },
                                                     false},
                                         QuestionRow{"EightSearchesAfterTheLastOffer",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.sinceOffer = 8;
                                                     },
                                                     true},
                                         QuestionRow{"ComputersAreAskedAgainAtOnce",
                                                     [](auto& a) {
                                                         a.drawScoreRun = 2;
                                                         a.sinceOffer = 1;
                                                         a.opponentIsComputer = true;
                                                     },
                                                     true},
                                         QuestionRow{"FourteenDrawishScores", [](auto& a) { a.drawishRun = 14; },
                                                     false},
                                         QuestionRow{"FifteenDrawishScores", [](auto& a) { a.drawishRun = 15; }, true},
                                         QuestionRow{"SixOfThemAbove",
                                                     [](auto& a) {
                                                         a.drawishRun = 15;
                                                         a.aboveRun = 6;
                                                     },
                                                     true},
                                         QuestionRow{"SevenOfThemAbove",
                                                     [](auto& a) {
                                                         a.drawishRun = 15;
                                                         a.aboveRun = 7;
                                                     },
                                                     false}),
                         RowName<QuestionRow>);

class AcceptDraw : public testing::TestWithParam<QuestionRow> {};

TEST_P(AcceptDraw, Answers) {
    DrawResignAdvisor advisor;
    advisor.drawOfferPending = true;
    GetParam().prepare(advisor);
    EXPECT_EQ(advisor.acceptDraw(), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(
    Advisor, AcceptDraw,
    testing::Values(QuestionRow{"Fresh", [](auto&) {}, false},
                    // The search that answers has been counted by then.
                    QuestionRow{"OfferedWithTheLastMove", [](auto& a) { a.sinceOffer = 1; }, true},
                    QuestionRow{"OfferedWithTheMoveBefore", [](auto& a) { a.sinceOffer = 2; }, false},
                    QuestionRow{"OneHopelessScore", [](auto& a) { a.hopelessRun = 1; }, true},
                    QuestionRow{"OneDrawScore", [](auto& a) { a.drawScoreRun = 1; }, false},
                    QuestionRow{"TwoDrawScores", [](auto& a) { a.drawScoreRun = 2; }, true},
                    QuestionRow{"FiveScoresBelow", [](auto& a) { a.belowRun = 5; }, false},
                    QuestionRow{"SixScoresBelow", [](auto& a) { a.belowRun = 6; }, true},
                    QuestionRow{"FourteenDrawishScores", [](auto& a) { a.drawishRun = 14; }, false},
                    QuestionRow{"FifteenDrawishScores", [](auto& a) { a.drawishRun = 15; }, true},
                    QuestionRow{"SixOfThemAbove",
                                [](auto& a) {
                                    a.drawishRun = 15;
                                    a.aboveRun = 6;
                                },
                                true},
                    QuestionRow{"SevenOfThemAbove",
                                [](auto& a) {
                                    a.drawishRun = 15;
                                    a.aboveRun = 7;
                                },
                                false}),
    RowName<QuestionRow>);

TEST_F(Advisor, OffersAfterTheSecondScoreOnTheDrawValue) {
    Add(0);
    EXPECT_FALSE(advisor.shouldOfferDraw());
    Add(0);
    EXPECT_TRUE(advisor.shouldOfferDraw());
}

TEST_F(Advisor, FallingScoresAgainstAComputerAreNoReasonToResignWithQueens) {
    advisor.opponentIsComputer = true;
    Add(-440, 20);
    EXPECT_FALSE(advisor.shouldResign());
    Add(-510, 4);
    EXPECT_FALSE(advisor.shouldResign());
    Add(-510);
    EXPECT_TRUE(advisor.shouldResign());
}

}  // namespace
