#include <gtest/gtest.h>

#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// What is left of the score where few pawns or bishops of different colours are left.

namespace {

using namespace sided;

class Scaling : public testing::TestWithParam<ValueRow> {};
TEST_P(Scaling, LeavesThisMuch) { ExpectValue(GetParam()); }

// clang-format off
// Reduced by pawns of the winner, in eighths; no more than 50 is taken.
// By the winner's pawns in eighths, 50 less at most; then opposite bishops.
INSTANTIATE_TEST_SUITE_P(Rules, Scaling, testing::Values(
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
    ValueRow{"opposite bishops take 250 at most", scaled<1200, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 950},
    ValueRow{"no pawn, a quarter", scaled<66>, "4k3/8/8/8/8/8/8/4K3", 16},
    ValueRow{"no pawn, fifty less", scaled<68>, "4k3/8/8/8/8/8/8/4K3", 18},
    ValueRow{"one pawn, a half", scaled<99>, "4k3/8/8/8/8/8/P7/4K3", 49},
    ValueRow{"one pawn, fifty less", scaled<102>, "4k3/8/8/8/8/8/P7/4K3", 52},
    ValueRow{"four pawns", scaled<100>, "4k3/8/8/8/8/8/PPPP4/4K3", 87},
    ValueRow{"five pawns", scaled<99>, "4k3/8/8/8/8/8/PPPPP3/4K3", 99},
    ValueRow{"seven pawns", scaled<99>, "4k3/8/8/8/8/8/PPPPPPP1/4K3", 111},
    ValueRow{"eight pawns", scaled<99>, "4k3/8/8/8/8/8/PPPPPPPP/4K3", 111},
    ValueRow{"the enemy wins by one pawn", scaled<-100>, "4k3/p7/8/8/8/8/PPPP4/4K3", -50},
    ValueRow{"nought is nought", scaled<0>, "4k3/p7/8/8/8/8/PPPP4/4K3", 0},
    ValueRow{"bishops and rooks", scaled<100, true>, "2b1k2r/p7/8/8/8/8/PPPP4/2B1K2R", 65},
    ValueRow{"bishops alone, no pawn to attack", scaled<100, true>, "2b1k3/1p6/8/8/8/8/PPPP4/2B1K3", 16},
    ValueRow{"one to attack", scaled<100, true>, "2b1k3/p7/8/8/8/8/PPPP4/2B1K3", 32},
    ValueRow{"two", scaled<100, true>, "2b1k3/p1p5/8/8/8/8/PPPP4/2B1K3", 40},
    ValueRow{"three", scaled<100, true>, "2b1k3/p1p1p3/8/8/8/8/PPPP4/2B1K3", 48},
    ValueRow{"four", scaled<100, true>, "2b1k3/p1p1p1p1/8/8/8/8/PPPP4/2B1K3", 48},
    ValueRow{"one for a bishop on light squares", scaled<100, true>, "4kb2/pp6/8/8/8/8/PPPP4/4KB2", 32},
    ValueRow{"not more than 250 less", scaled<2000, true>, "2b1k3/1p6/8/8/8/8/PPPP4/2B1K3", 1700}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(FewPawns, Scaling, testing::Values(
    ValueRow{"an even score", scaled<0>, "4k3/8/8/8/8/8/8/4K3", 0},
    ValueRow{"no pawn, 66", scaled<66>, "4k3/8/8/8/8/8/8/4K3", 16},
    ValueRow{"no pawn, 68", scaled<68>, "4k3/8/8/8/8/8/8/4K3", 18},
    ValueRow{"one pawn, 65", scaled<65>, "4k3/8/8/8/8/8/P7/4K3", 32},
    ValueRow{"one pawn, 100", scaled<100>, "4k3/8/8/8/8/8/P7/4K3", 50},
    ValueRow{"one pawn, 102", scaled<102>, "4k3/8/8/8/8/8/P7/4K3", 52},
    ValueRow{"two pawns, 80", scaled<80>, "4k3/8/8/8/8/8/PP6/4K3", 50},
    ValueRow{"two pawns, 136", scaled<136>, "4k3/8/8/8/8/8/PP6/4K3", 86},
    ValueRow{"three pawns, 80", scaled<80>, "4k3/8/8/8/8/8/PPP5/4K3", 60},
    ValueRow{"three pawns, 204", scaled<204>, "4k3/8/8/8/8/8/PPP5/4K3", 154},
    ValueRow{"four pawns, 80", scaled<80>, "4k3/8/8/8/8/8/PPPP4/4K3", 70},
    ValueRow{"four pawns, 408", scaled<408>, "4k3/8/8/8/8/8/PPPP4/4K3", 358},
    ValueRow{"five pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPP3/4K3", 80},
    ValueRow{"six pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPPP2/4K3", 90},
    ValueRow{"seven pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPPPP1/4K3", 90},
    ValueRow{"eight pawns", scaled<80>, "4k3/8/8/8/8/8/PPPPPPPP/4K3", 90},
    ValueRow{"eight pawns on one wing", scaled<80>, "4k3/8/8/8/8/PPPP4/PPPP4/4K3", 90},
    ValueRow{"nine pawns, the a file alone on its wing", scaled<84>, "4k3/8/8/8/8/P2PP3/P2PPPPP/4K3", 94},
    ValueRow{"nine pawns, the c file alone on its wing", scaled<84>, "4k3/8/8/8/8/2PPP3/2PPPPPP/4K3", 94},
    ValueRow{"nine pawns, the f file alone on its wing", scaled<84>, "4k3/8/8/8/8/PPP5/PPPPPP2/4K3", 94},
    ValueRow{"nine pawns, the h file alone on its wing", scaled<84>, "4k3/8/8/8/8/PPP5/PPPPP2P/4K3", 94},
    ValueRow{"nine pawns, none on files a to c", scaled<84>, "4k3/8/8/8/8/3PPPP1/3PPPPP/4K3", 84},
    ValueRow{"nine pawns on one wing", scaled<80>, "4k3/8/8/8/8/PPPP4/PPPPP3/4K3", 80},
    ValueRow{"nine pawns on both wings", scaled<84>, "4k3/8/8/8/8/P7/PPPPPPPP/4K3", 94},
    ValueRow{"the loser's pawns do not count", scaled<-80>, "4k3/p7/8/8/8/8/PPPP4/4K3", -40}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(OppositeBishops, Scaling, testing::Values(
    ValueRow{"same colour", scaled<80>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 80},
    ValueRow{"with rooks", scaled<83, true>, "r1b1k3/8/8/8/8/8/PPPPP3/R1B1K3", 62},
    ValueRow{"with rooks, 1008", scaled<1008, true>, "r1b1k3/8/8/8/8/8/PPPPP3/R1B1K3", 758},
    ValueRow{"no target", scaled<83, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 15},
    ValueRow{"one target", scaled<83, true>, "2b1k3/p7/8/8/8/8/PPPPP3/2B1K3", 31},
    ValueRow{"one pawn of the wrong colour", scaled<83, true>, "2b1k3/1p6/8/8/8/8/PPPPP3/2B1K3", 15},
    ValueRow{"one target for a light bishop", scaled<83, true>, "4kb2/1p6/8/8/8/8/PPPPP3/4KB2", 31},
    ValueRow{"own pawns are no targets", scaled<83, true>, "4kb2/p7/8/8/8/8/PPPPP3/4KB2", 15},
    ValueRow{"two targets", scaled<83, true>, "2b1k3/p1p5/8/8/8/8/PPPPP3/2B1K3", 38},
    ValueRow{"three targets", scaled<83, true>, "2b1k3/p1p1p3/8/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"four targets", scaled<83, true>, "2b1k3/p1p1p1p1/8/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"five targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p6/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"six targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p1p4/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"seven targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p1p1p2/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"eight targets", scaled<83, true>, "2b1k3/p1p1p1p1/1p1p1p1p/8/8/8/PPPPP3/2B1K3", 46},
    ValueRow{"not more than 250", scaled<316, true>, "2b1k3/8/8/8/8/8/PPPPP3/2B1K3", 66},
    ValueRow{"first by pawns, then by bishops", scaled<80, true>, "2b1k3/8/8/8/8/8/P7/2B1K3", 7}),
    RowName<ValueRow>);
// clang-format on

}  // namespace
