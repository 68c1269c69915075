#include <gtest/gtest.h>

#include <optional>

#include "evaluation/endings/ending.h"
#include "evaluation/endings/pawnless.h"
#include "evaluation/endings/rook_ending.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

namespace {

using namespace sided;

class EndingTerms : public testing::TestWithParam<ValueRow> {};
TEST_P(EndingTerms, GiveTheirValue) { ExpectValue(GetParam()); }

template <Colour Us>
int Unstoppable(EVALUATION_CONTEXT& context, const BOARD& board) {
    const int sum = unstoppable_bonus(context, board).score;
    return Us == white ? sum : -sum;
}
/// The second look, with all squares of the pieces of `Us` attacked that the rows need.
template <Colour Us>
int Checked(EVALUATION_CONTEXT& context, const BOARD& board) {
    static_cast<void>(rooks_ending<white>(context, board));
    static_cast<void>(rooks_ending<black>(context, board));
    const UNSTOPPABLE_BONUS bonus = unstoppable_bonus(context, board);
    EXPECT_EQ(bonus.check, Us == white ? RunnerCheck::black_pawns : RunnerCheck::white_pawns);
    const int sum = checked_unstoppable_bonus(context, board, bonus.check);
    return Us == white ? sum : -sum;
}
template <Colour Us>
int RookEnding(EVALUATION_CONTEXT& context, const BOARD& board) {
    const int score = evaluate_rook_ending(context, board, 0).score;
    return board.side_to_move == Us ? score : -score;
}
constexpr SidedTerm<int> runners{Unstoppable<white>, Unstoppable<black>};
constexpr SidedTerm<int> checked{Checked<white>, Checked<black>};
constexpr SidedTerm<int> rook_endings{RookEnding<white>, RookEnding<black>};

// clang-format off
// The kings stand on e1 and e8 unless told: from a5 they are 4 and 4 steps away, from a8 7 and 4.
INSTANTIATE_TEST_SUITE_P(Passed, EndingTerms, testing::Values(
    ValueRow{"a5 free", ending_passed, "4k3/8/8/P7/8/8/8/4K3", 9 * 85 / 8 + 6 - 2 - 0 - 6 + 5},
    ValueRow{"e4", ending_passed, "4k3/8/8/8/4P3/8/8/4K3", 7 * 53 / 8 + 0 - 0 - 6 - 5},
    ValueRow{"c2", ending_passed, "4k3/8/8/8/8/8/2P5/4K3", 8 * 30 / 8 + 3 + 6 - 6 - 3},
    ValueRow{"an own rook behind", ending_passed, "4k3/8/8/8/4P3/8/4R3/4K3", 46 - 11 + 12},
    ValueRow{"an own rook ahead", ending_passed, "4k3/8/4R3/8/4P3/8/8/4K3 b - - 0 1", 46 - 11 - 8},
    ValueRow{"an enemy rook behind", ending_passed, "4k3/8/8/8/4P3/8/4r3/4K3", 46 - 11 - 10},
    ValueRow{"an enemy rook ahead", ending_passed, "4k3/4r3/8/8/4P3/8/8/4K3", 46 - 11 - 4},
    ValueRow{"a knight in front", ending_passed, "4k3/8/8/4n3/4P3/8/8/4K3", 46 - 11 - 12},
    ValueRow{"a bishop in front", ending_passed, "4k3/8/8/4b3/4P3/8/8/4K3", 46 - 11 - 10},
    ValueRow{"a rook in front", ending_passed, "4k3/8/8/4r3/4P3/8/8/4K3", 46 - 11 - 6 - 4},
    ValueRow{"a queen in front", ending_passed, "4k3/8/8/4q3/4P3/8/8/4K3", 46 - 11 - 6},
    ValueRow{"the king in front", ending_passed, "8/8/8/4k3/4P3/8/8/4K3", 46 + 0 - 5 - 6 + 1 - 13},
    ValueRow{"not passed", ending_passed, "4k3/4p3/8/8/4P3/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Pieces, EndingTerms, testing::Values(
    ValueRow{"knight on e5", all_knights, "4k3/8/8/4N3/8/8/8/4K3", 30 - 30},
    ValueRow{"knight on a1", all_knights, "4k3/8/8/8/8/8/8/N3K3", -55 - 30},
    ValueRow{"knight with four pawns", all_knights, "4k3/3pp3/8/4N3/8/8/3PP3/4K3", 30 + 12 - 30},
    ValueRow{"knight between two wings", all_knights, "4k3/8/8/4N3/8/8/P4P2/4K3", 30 + 6 - 30 - 12},
    ValueRow{"knight far from rim pawns", all_knights, "4k3/8/8/8/2N5/8/6P1/4K3", 22 - 30 - 8},
    ValueRow{"knight far from the other rim", all_knights, "4k3/8/8/8/5N2/8/P7/4K3", 22 - 30 - 8},
    ValueRow{"knight near rim pawns", all_knights, "4k3/8/8/8/5N2/8/6P1/4K3", 22 - 30},
    ValueRow{"two knights are both charged", all_knights, "4k3/8/8/4NN2/8/8/P4P2/4K3", 30 + 24 + 12 - 60 - 24},
    ValueRow{"bishop in the centre", all_bishops, "4k3/8/8/8/8/4B3/8/4K3", 9 + 2 * 8 - 15 + 2 * 1 + 4},
    ValueRow{"bishop without squares", all_bishops, "4k3/8/8/8/8/8/1P6/B3K3", -12 - 45},
    ValueRow{"bishop with one square", all_bishops, "4k3/8/8/8/8/8/3P4/2B1K3", -3 - 32},
    ValueRow{"bishop with two squares", all_bishops, "4k3/8/8/8/8/2P5/1B6/4K3", 2 - 32},
    ValueRow{"trapped on a7", all_bishops, "4k3/B7/1p6/8/8/8/8/4K3", 0 - 45 - 100},
    ValueRow{"trapped on a7 for good", all_bishops, "4k3/B1p5/1p6/8/8/8/8/4K3", 0 - 45 - 180 + 16},
    ValueRow{"trapped on h7", all_bishops, "4k3/7B/6p1/8/8/8/8/4K3", 0 - 45 - 100},
    ValueRow{"it attacks a passed pawn of one defender", all_bishops, "4k3/8/8/p7/1p6/8/3B4/4K3", 4 + 2 * 5 - 15 + 4 + 16},
    ValueRow{"it attacks a loose pawn", all_bishops, "4k3/8/8/8/1p6/8/3B4/4K3", 4 + 2 * 5 - 15 + 4},
    ValueRow{"rook without pawns", all_rooks, "4k3/8/8/8/8/8/8/R3K3", 85 + 7},
    ValueRow{"rook on a closed file", all_rooks, "4k3/8/8/8/8/8/P7/R3K3", 85},
    ValueRow{"rook on the only file without a pawn", all_rooks, "4k3/8/8/8/8/8/1PPPPPPP/R3K3", 85 - 36 + 18 + 12},
    ValueRow{"rook on a half-open file", all_rooks, "4k3/p7/8/8/8/8/1PPPPPPP/R3K3", 85 - 48 + 12 + 4},
    ValueRow{"rook on one of two free files", all_rooks, "4k3/8/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 14},
    ValueRow{"rook on the seventh rank", all_rooks, "4k3/R7/8/8/8/8/8/4K3", 85 + 7 + 50},
    ValueRow{"rook on the seventh rank, king out", all_rooks, "8/R7/4k3/8/8/8/8/4K3", 85 + 7},
    ValueRow{"two rooks together", all_rooks, "4k3/8/8/8/8/8/8/RR2K3", 2 * (85 + 7) + 4},
    ValueRow{"two rooks against a queen", all_rooks, "4k3/8/8/8/8/2q5/8/RR2K3", 2 * (85 + 7) + 12},
    ValueRow{"two rooks on the seventh rank", all_rooks, "4k3/RR6/8/8/8/8/8/4K3", 2 * (85 + 7 + 50) + 25},
    ValueRow{"isolated enemy pawns", all_rooks, "4k3/8/8/p1p5/8/8/8/K6R", 85 - 12 + 7 + 8}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Queens, EndingTerms, testing::Values(
    ValueRow{"in the centre", all_queens, "7k/8/8/8/3Q4/8/8/K7 b - - 0 1", 7 - 2 * 3 - 2 * 4},
    ValueRow{"on the seventh rank", all_queens, "7k/1Q6/8/8/8/8/8/K7", -2 - 2 * 6 - 2 * 6 + 55}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(KingPlaces, EndingTerms, testing::Values(
    ValueRow{"late", kings, "4k3/8/8/8/4K3/8/8/8", 2 * 24 - 2 * 12},
    ValueRow{"the enemy has two pieces", kings, "4k1bb/8/8/8/4K3/8/8/8", 2 * 24 - 2 * 12},
    ValueRow{"the enemy has three pieces", kings, "4kbbb/8/8/8/4K3/8/8/8", -2 - 2 * 12},
    ValueRow{"a queen against a bare king", kings, "7k/8/8/8/4K3/8/8/Q7 b - - 0 1", 2 * 24 - 4 + 100 + 10},
    ValueRow{"a queen against a king with two men", kings, "7k/6pp/8/8/4K3/8/8/1Q6", 2 * 24 - 4 + 100 - 30},
    ValueRow{"two rooks", kings, "7k/8/8/8/4K3/8/8/1RR5", 2 * 24 - 4 + 20 + 10},
    ValueRow{"one rook", kings, "7k/8/8/8/4K3/8/8/1R6", 2 * 24 - 2 * 4}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Runners, EndingTerms, testing::Values(
    ValueRow{"with the move", runners, "8/8/8/7k/P7/8/8/K6N", 720},
    ValueRow{"without the move", runners, "8/8/8/7k/8/P7/8/K6N b - - 0 1", 520},
    ValueRow{"on the seventh rank", runners, "8/P7/8/7k/8/8/8/K6N", 920},
    ValueRow{"the most advanced counts", runners, "8/8/P7/7k/8/1P6/8/K6N", 800},
    ValueRow{"caught but won all the same", runners, "4k3/8/4K3/4P3/8/8/8/N7", 225},
    ValueRow{"caught and drawn", runners, "4k3/4P3/4K3/8/8/8/8/8 b - - 0 1", 0},
    ValueRow{"none", runners, "4k3/8/8/8/8/8/8/4K3", 0},
    ValueRow{"both sides have pieces", runners, "8/8/8/7k/P6n/8/8/K6N", 0},
    ValueRow{"a rook stops the enemy's pawn", checked, "8/8/8/1k6/1P5p/8/1K6/7R", 0},
    ValueRow{"a rook watches the enemy's pawn and nothing wins", checked, "8/8/8/1k6/7p/1P6/1K6/3R4", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(WrongBishop, EndingTerms, testing::Values(
    ValueRow{"the king is in the corner", wrong_bishop, "k7/8/8/P7/8/8/3B4/4K3", 0},
    ValueRow{"the king is beside the corner", wrong_bishop, "8/1k6/8/P7/8/8/3B4/4K3", 0},
    ValueRow{"the right bishop", wrong_bishop, "k7/8/8/P7/8/8/4B3/4K3", 835 + 62},
    ValueRow{"pawns on two files", wrong_bishop, "k7/8/8/PP6/8/8/3B4/4K3", 835 + 62 + 62},
    ValueRow{"the king is late", wrong_bishop, "8/8/1K6/P5k1/8/8/1B6/8", 315 + 50 + 10 + 62},
    ValueRow{"on the other rim", wrong_bishop, "8/8/8/1k5P/8/8/6B1/4K3", 315 + 50 - 30 + 62}), RowName<ValueRow>);

// Reduced by pawns of the winner, in eighths; no more than 50 is taken.
INSTANTIATE_TEST_SUITE_P(Scaling, EndingTerms, testing::Values(
    ValueRow{"no pawn", scaled<64>, "4k3/8/8/8/8/8/8/4K3", 16},
    ValueRow{"one pawn", scaled<64>, "4k3/8/8/8/8/8/P7/4K3", 32},
    ValueRow{"two pawns", scaled<64>, "4k3/8/8/8/8/8/PP6/4K3", 40},
    ValueRow{"three pawns", scaled<64>, "4k3/8/8/8/8/8/PPP5/4K3", 48},
    ValueRow{"four pawns", scaled<64>, "4k3/8/8/8/8/8/PPPP4/4K3", 56},
    ValueRow{"five pawns", scaled<64>, "4k3/8/8/8/8/8/PPPPP3/4K3", 64},
    ValueRow{"six pawns", scaled<64>, "4k3/8/8/8/8/8/PPPPPP2/4K3", 72},
    ValueRow{"not more than fifty", scaled<400>, "4k3/8/8/8/8/8/P7/4K3", 350},
    ValueRow{"the loser's pawns do not count", scaled<-64>, "4k3/8/8/8/8/8/PPPP4/4K3", -16},
    ValueRow{"opposite bishops with rooks", scaled<80, true>, "r1b1k3/8/8/8/8/8/PPPPP3/R1B1K3", 60},
    ValueRow{"opposite bishops alone, no target", scaled<80, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 15},
    ValueRow{"opposite bishops alone, one target", scaled<80, true>, "2b1k3/p7/8/8/8/8/PPPPP3/2B1K3", 30},
    ValueRow{"a pawn of the wrong colour", scaled<80, true>, "2b1k3/1p6/8/8/8/8/PPPPP3/2B1K3", 15},
    ValueRow{"opposite bishops take 250 at most", scaled<1200, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 950}), RowName<ValueRow>);

// Rook and pawn against rook.
INSTANTIATE_TEST_SUITE_P(RookAndPawn, EndingTerms, testing::Values(
    ValueRow{"the king before the pawn", rook_endings, "4k3/8/8/4P3/8/4K3/8/r6R", 10},
    ValueRow{"the bridge", rook_endings, "3K4/3P1k2/8/8/4R3/8/8/2r5", 350 + 8 - 0},
    ValueRow{"the bridge with the rook too low", rook_endings, "3K4/3P1k2/8/8/8/8/8/2r1R3", 350 + 8 - 24}), RowName<ValueRow>);
// clang-format on

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pawnless, EndingTerms, testing::Values(
    ValueRow{"queen", pawnless_endings, "7k/8/5K2/8/8/8/8/Q7", 1020 + 21 + 650 - 6 + 6 + 80 - 16 + 6},
    ValueRow{"rook", pawnless_endings, "7k/8/5K2/8/8/8/8/R7", 500 + 21 + 650 + 6 + 80 - 16 + 6},
    ValueRow{"rook, king on the rim", pawnless_endings, "4k3/8/4K3/8/8/8/8/R7", 500 + 40 + 650 + 6 + 44 - 8 + 6},
    ValueRow{"rook, the bare king to move", pawnless_endings, "7k/8/5K2/8/8/8/8/R7 b - - 0 1", 1247},
    ValueRow{"bishop and knight, the right corner", pawnless_endings, "k7/8/1K6/8/8/8/8/2NB4", 1000 + 80 - 12 + 120 + 6},
    ValueRow{"bishop and knight, the wrong corner", pawnless_endings, "k7/8/1K6/8/8/8/8/1NB5", 1000 + 80 - 12 - 60 + 6},
    ValueRow{"bishop and knight, the king in a corner", pawnless_endings, "8/8/8/8/3k4/8/8/K1NB4", 1000 - 44 - 24 - 100 - 52 + 6},
    ValueRow{"bishop", pawnless_endings, "7k/8/5K2/8/8/8/8/1B6", 78 + 14 + 40 - 6 + 10 + 4},
    ValueRow{"knight", pawnless_endings, "7k/8/5K2/8/8/8/8/1N6", 76 + 14 + 40 - 12 + 10 + 4},
    ValueRow{"even rooks, one king on the rim", pawnless_endings, "4k3/8/4K3/8/8/8/r7/7R", 20 + 6 - (-3 + 6) + 3},
    ValueRow{"even knights", pawnless_endings, "4k3/8/8/3n4/3N4/8/8/4K3", 3}), RowName<ValueRow>);
// clang-format on

TEST(EndingTerms, ABareKingIsDrivenToTheRim) {
    const auto score = [](std::string_view fen) {
        EVALUATION_CONTEXT context;
        return evaluate_pawnless(context, BoardFromFen(std::string(fen)));
    };
    EXPECT_GT(score("7k/8/5K2/8/8/8/8/Q7 w - - 0 1"), score("8/8/3k4/8/3K4/8/8/Q7 w - - 0 1"));
    EXPECT_GT(score("7k/8/5K2/8/8/8/8/R7 w - - 0 1"), score("8/8/3k4/8/3K4/8/8/R7 w - - 0 1"));
    EXPECT_GT(score("k7/8/1K6/8/8/8/8/2NB4 w - - 0 1"), score("7k/8/6K1/8/8/8/8/2NB4 w - - 0 1")) << "a light corner";
    EXPECT_GT(score("7k/8/6K1/8/8/8/8/1N1B4 w - - 0 1"), 500);
}

}  // namespace
