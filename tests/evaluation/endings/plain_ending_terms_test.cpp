#include <gtest/gtest.h>

#include "chess/notation.h"
#include "evaluation/pieces/rooks.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// The terms that a plain ending sums: every number was worked out on paper.

namespace {

using namespace sided;

// --- Passed pawns ---

class PassedPawnsInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(PassedPawnsInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
// The kings stand on e1 and e8 unless told: from a5 they are 4 and 4 steps away, from a8 7 and 4.
INSTANTIATE_TEST_SUITE_P(Rules, PassedPawnsInEndings, testing::Values(
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
    ValueRow{"not passed", ending_passed, "4k3/4p3/8/8/4P3/8/8/4K3", 0}),
    RowName<ValueRow>);

// By file and rank, then the own king to the pawn, the enemy's, and both to the queening square.
INSTANTIATE_TEST_SUITE_P(ByPlace, PassedPawnsInEndings, testing::Values(
    ValueRow{"a7, the king in the corner", ending_passed, "K7/P7/8/8/8/8/8/7k", 9 * 200 / 8 + 4 + 9 + 6 + 20},
    ValueRow{"b6, the enemy king in front", ending_passed, "8/1k6/1P6/8/8/8/8/7K", 9 * 115 / 8 - 5 - 5 - 6 - 5 - 9 * 40 / 8},
    ValueRow{"c5", ending_passed, "8/8/8/2P5/7K/5k2/8/8", 8 * 85 / 8 - 3 - 1 - 4 + 12 + 6},
    ValueRow{"e4", ending_passed, "8/k7/8/8/4P3/8/6K1/8", 7 * 53 / 8 + 3 - 0 - 5 + 5},
    ValueRow{"f3", ending_passed, "5k2/8/8/8/8/5P2/8/K7", 8 * 35 / 8 - 3 + 3 - 6 - 5},
    ValueRow{"g2", ending_passed, "3K4/8/8/8/8/8/k5P1/8", 9 * 30 / 8 - 5 + 6 + 0 + 16},
    ValueRow{"h2", ending_passed, "8/8/8/8/5k2/8/K6P/8", 9 * 30 / 8 - 6 - 3 - 6 + 5},
    ValueRow{"d6", ending_passed, "8/8/3P4/1k6/8/8/7K/8", 7 * 115 / 8 - 2 - 3 - 5 + 1 + 6},
    ValueRow{"a6, the king leads", ending_passed, "8/1K6/P2k4/8/8/8/8/8", 9 * 115 / 8 + 4 - 1 + 6 + 1 + 6},
    ValueRow{"a6, the enemy king near", ending_passed, "8/8/P1k5/8/8/8/8/7K", 9 * 115 / 8 - 6 - 3 - 6 - 3 + 6},
    ValueRow{"a4", ending_passed, "8/8/4K3/8/P4k2/8/8/8", 9 * 53 / 8 - 2 + 3 - 3 + 12},
    ValueRow{"a3", ending_passed, "8/6k1/2K5/8/8/P7/8/8", 9 * 35 / 8 + 0 + 6 + 3 + 16},
    ValueRow{"the pawn behind gives nothing", ending_passed, "4k3/8/8/P7/8/P7/8/4K3", 9 * 85 / 8 - 2 - 0 - 6 + 5 + 6},
    ValueRow{"an enemy pawn on the next file ahead", ending_passed, "4k3/1p6/8/P7/8/8/8/4K3", 0},
    ValueRow{"an enemy pawn on the next file level", ending_passed, "k7/8/8/Pp6/8/8/8/K7", (9 * 85 / 8 - 2 - 1 - 6 - 5 + 6) - (9 * 53 / 8 + 0 - 0 - 6 - 5)}),
    RowName<ValueRow>);

// Kings on h1 and h8: 74 - 2 - 1 - 6 + 1 = 66 for a pawn on e5, and 6 for the free square ahead.
INSTANTIATE_TEST_SUITE_P(WithPieces, PassedPawnsInEndings, testing::Values(
    ValueRow{"free", ending_passed, "7k/8/8/4P3/8/8/8/7K", 66 + 6},
    ValueRow{"an own rook behind all the same", ending_passed, "7k/8/8/4P3/8/4N3/8/4R2K", 66 + 6 + 12},
    ValueRow{"an own rook on the next file", ending_passed, "7k/8/8/4P3/8/8/8/5R1K", 66 + 6},
    ValueRow{"an own rook far ahead", ending_passed, "7k/4R3/8/4P3/8/8/8/7K", 66 + 6 - 8},
    ValueRow{"an own rook right ahead", ending_passed, "7k/8/4R3/4P3/8/8/8/7K", 66 - 8},
    ValueRow{"an own knight right ahead", ending_passed, "7k/8/4N3/4P3/8/8/8/7K", 66},
    ValueRow{"an enemy rook behind", ending_passed, "7k/8/8/4P3/8/8/4r3/7K", 66 + 6 - 10},
    ValueRow{"an enemy rook far ahead", ending_passed, "4r2k/8/8/4P3/8/8/8/7K", 66 + 6 - 4},
    ValueRow{"rooks of both sides", ending_passed, "4r2k/8/8/4P3/8/8/8/4R2K", 66 + 6 + 12 - 4},
    ValueRow{"an enemy rook right ahead", ending_passed, "7k/8/4r3/4P3/8/8/8/7K", 66 - 4 * 27 / 8 - 4},
    ValueRow{"an enemy knight right ahead", ending_passed, "7k/8/4n3/4P3/8/8/8/7K", 66 - 8 * 27 / 8},
    ValueRow{"an enemy bishop right ahead", ending_passed, "7k/8/4b3/4P3/8/8/8/7K", 66 - 7 * 27 / 8},
    ValueRow{"an enemy queen right ahead", ending_passed, "7k/8/4q3/4P3/8/8/8/7K", 66 - 4 * 27 / 8},
    ValueRow{"an enemy queen behind", ending_passed, "7k/8/8/4P3/8/8/4q3/7K", 66 + 6},
    ValueRow{"the enemy king right ahead", ending_passed, "8/8/4k3/4P3/8/8/8/7K", 74 - 2 - 5 - 6 - 3 - 9 * 27 / 8},
    ValueRow{"a knight before e2", ending_passed, "7k/8/8/8/8/4n3/4P3/7K", 7 * 30 / 8 + 0 + 6 - 6 + 1 - 8 * 4 / 8},
    ValueRow{"a knight before e3", ending_passed, "7k/8/8/8/4n3/4P3/8/7K", 7 * 35 / 8 + 0 + 3 - 6 + 1 - 8 * 5 / 8},
    ValueRow{"a knight before e4", ending_passed, "7k/8/8/4n3/4P3/8/8/7K", 7 * 53 / 8 + 0 - 0 - 6 + 1 - 8 * 12 / 8},
    ValueRow{"a knight before e6", ending_passed, "7k/4n3/4P3/8/8/8/8/7K", 7 * 115 / 8 - 3 - 1 - 6 + 1 - 8 * 40 / 8},
    ValueRow{"a knight before e7", ending_passed, "4n2k/4P3/8/8/8/8/8/7K", 7 * 200 / 8 - 5 - 1 - 6 + 1 - 8 * 85 / 8}),
    RowName<ValueRow>);
// clang-format on

// --- Knights ---

class KnightsInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(KnightsInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, KnightsInEndings, testing::Values(
    ValueRow{"knight on e5", all_knights, "4k3/8/8/4N3/8/8/8/4K3", 30 - 30},
    ValueRow{"knight on a1", all_knights, "4k3/8/8/8/8/8/8/N3K3", -55 - 30},
    ValueRow{"knight with four pawns", all_knights, "4k3/3pp3/8/4N3/8/8/3PP3/4K3", 30 + 12 - 30},
    ValueRow{"knight between two wings", all_knights, "4k3/8/8/4N3/8/8/P4P2/4K3", 30 + 6 - 30 - 12},
    ValueRow{"knight far from rim pawns", all_knights, "4k3/8/8/8/2N5/8/6P1/4K3", 22 - 30 - 8},
    ValueRow{"knight far from the other rim", all_knights, "4k3/8/8/8/5N2/8/P7/4K3", 22 - 30 - 8},
    ValueRow{"knight near rim pawns", all_knights, "4k3/8/8/8/5N2/8/6P1/4K3", 22 - 30},
    ValueRow{"two knights are both charged", all_knights, "4k3/8/8/4NN2/8/8/P4P2/4K3", 30 + 24 + 12 - 60 - 24}),
    RowName<ValueRow>);
// clang-format on

// --- Bishops ---

class BishopsInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(BishopsInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, BishopsInEndings, testing::Values(
    ValueRow{"bishop in the centre", all_bishops, "4k3/8/8/8/8/4B3/8/4K3", 9 + 2 * 8 - 15 + 2 * 1 + 4},
    ValueRow{"bishop without squares", all_bishops, "4k3/8/8/8/8/8/1P6/B3K3", -12 - 45},
    ValueRow{"bishop with one square", all_bishops, "4k3/8/8/8/8/8/3P4/2B1K3", -3 - 32},
    ValueRow{"bishop with two squares", all_bishops, "4k3/8/8/8/8/2P5/1B6/4K3", 2 - 32},
    ValueRow{"trapped on a7", all_bishops, "4k3/B7/1p6/8/8/8/8/4K3", 0 - 45 - 100},
    ValueRow{"trapped on a7 for good", all_bishops, "4k3/B1p5/1p6/8/8/8/8/4K3", 0 - 45 - 180 + 16},
    ValueRow{"trapped on h7", all_bishops, "4k3/7B/6p1/8/8/8/8/4K3", 0 - 45 - 100},
    ValueRow{"it attacks a passed pawn of one defender", all_bishops, "4k3/8/8/p7/1p6/8/3B4/4K3", 4 + 2 * 5 - 15 + 4 + 16},
    ValueRow{"it attacks a loose pawn", all_bishops, "4k3/8/8/8/1p6/8/3B4/4K3", 4 + 2 * 5 - 15 + 4}),
    RowName<ValueRow>);

// Enemy pawns that one pawn defends: the bishop on e3 is worth 11 by itself.
INSTANTIATE_TEST_SUITE_P(Targets, BishopsInEndings, testing::Values(
    ValueRow{"c5, defended once", all_bishops, "4k3/8/1p6/2p5/8/4B3/8/4K3", 11 + 16},
    ValueRow{"defended twice", all_bishops, "4k3/8/1p1p4/2p5/8/4B3/8/4K3", 11},
    ValueRow{"not defended", all_bishops, "4k3/8/8/2p5/8/4B3/8/4K3", 11},
    ValueRow{"defended by a piece", all_bishops, "4k3/3n4/8/2p5/8/4B3/8/4K3", 11},
    ValueRow{"beside another pawn", all_bishops, "4k3/8/1p6/2pp4/8/4B3/8/4K3", 11},
    ValueRow{"not passed", all_bishops, "4k3/8/1p6/2p5/8/4B3/2P5/4K3", 11},
    ValueRow{"not attacked", all_bishops, "4k3/1p6/p7/8/8/4B3/8/4K3", 9 + 1 + 2 + 4},
    ValueRow{"attacked by two bishops", all_bishops, "4k3/8/1p6/2p5/8/B3B3/8/4K3", 11 + (1 - 18) + 32},
    ValueRow{"with the pair", all_bishops, "4k3/8/1p6/2p5/8/4B3/8/K6B", 11 + (-12 - 3 + 4 + 3) + 4},
    ValueRow{"a7 without a pawn on b6", all_bishops, "4k3/B1p5/8/8/8/8/8/4K3", 0 - 5 + 2 + 3},
    ValueRow{"h7 shut in for good", all_bishops, "4k3/5p1B/6p1/8/8/8/8/4K3", 0 - 45 - 180 + 16}),
    RowName<ValueRow>);
// clang-format on

// --- Rooks ---

class RooksInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(RooksInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, RooksInEndings, testing::Values(
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
    ValueRow{"isolated enemy pawns", all_rooks, "4k3/8/8/p1p5/8/8/8/K6R", 85 - 12 + 7 + 8}),
    RowName<ValueRow>);

// A rook is worth 85 less 12 for every two pawns; a file without own pawns counts the more the fewer of them there are.
// A lone enemy pawn on a7 is isolated and adds 4.
INSTANTIATE_TEST_SUITE_P(OnFiles, RooksInEndings, testing::Values(
    ValueRow{"no rook", all_rooks, "4k3/p7/8/8/8/8/8/4K3", 0},
    ValueRow{"free, 1 file", all_rooks, "4k3/8/8/8/8/8/1PPPPPPP/R3K3", 85 - 36 + 18 + 12},
    ValueRow{"free, 2 files", all_rooks, "4k3/8/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 14},
    ValueRow{"free, 3 files", all_rooks, "4k3/8/8/8/8/8/3PPPPP/R3K3", 85 - 24 + 12},
    ValueRow{"free, 4 files", all_rooks, "4k3/8/8/8/8/8/4PPPP/R3K3", 85 - 24 + 10},
    ValueRow{"free, 5 files", all_rooks, "4k3/8/8/8/8/8/5PPP/R3K3", 85 - 12 + 9},
    ValueRow{"free, 6 files", all_rooks, "4k3/8/8/8/8/8/6PP/R3K3", 85 - 12 + 8},
    ValueRow{"free, 7 files", all_rooks, "4k3/8/8/8/8/8/7P/R3K3", 85 + 7},
    ValueRow{"free, 8 files", all_rooks, "4k3/8/8/8/8/8/8/R3K3", 85 + 7},
    ValueRow{"the only file without any pawn", all_rooks, "4k3/1p6/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 14 + 12 + 4},
    ValueRow{"half-free, 1 file", all_rooks, "4k3/p7/8/8/8/8/1PPPPPPP/R3K3", 85 - 48 + 12 + 4},
    ValueRow{"half-free, 2 files", all_rooks, "4k3/p7/8/8/8/8/2PPPPPP/R3K3", 85 - 36 + 9 + 4},
    ValueRow{"half-free, 3 files", all_rooks, "4k3/p7/8/8/8/8/3PPPPP/R3K3", 85 - 36 + 7 + 4},
    ValueRow{"half-free, 4 files", all_rooks, "4k3/p7/8/8/8/8/4PPPP/R3K3", 85 - 24 + 6 + 4},
    ValueRow{"half-free, 5 files", all_rooks, "4k3/p7/8/8/8/8/5PPP/R3K3", 85 - 24 + 5 + 4},
    ValueRow{"half-free, 6 files", all_rooks, "4k3/p7/8/8/8/8/6PP/R3K3", 85 - 12 + 5 + 4},
    ValueRow{"half-free, 7 files", all_rooks, "4k3/p7/8/8/8/8/7P/R3K3", 85 - 12 + 4 + 4},
    ValueRow{"half-free, 8 files", all_rooks, "4k3/p7/8/8/8/8/8/R3K3", 85 + 4 + 4},
    ValueRow{"16 pawns", all_rooks, "4k3/pppppppp/8/8/8/8/PPPPPPPP/R3K3", 85 - 96},
    ValueRow{"15 pawns", all_rooks, "4k3/1ppppppp/8/8/8/8/PPPPPPPP/R3K3", 85 - 84},
    ValueRow{"18 pawns", all_rooks, "4k3/pppppppp/p7/8/8/P7/PPPPPPPP/R3K3", 85 - 96},
    ValueRow{"doubled isolated pawns both count", all_rooks, "4k3/8/p7/p7/8/8/8/4K2R", 85 - 12 + 7 + 8},
    ValueRow{"neighbours are not isolated", all_rooks, "4k3/8/pp6/8/8/8/8/4K2R", 85 - 12 + 7},
    ValueRow{"isolated pawns count once", all_rooks, "4k3/8/p7/8/8/8/8/R3K2R", 85 + 4 + 85 + 7 + 4},
    ValueRow{"own isolated pawns do not count", all_rooks, "4k3/8/8/8/8/8/P7/4K2R", 85 + 7}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Together, RooksInEndings, testing::Values(
    ValueRow{"side by side", all_rooks, "4k3/8/8/8/8/8/8/RR2K3", 2 * 92 + 4},
    ValueRow{"on one file", all_rooks, "4k3/8/8/R7/8/8/8/R3K3", 2 * 92 + 4},
    ValueRow{"the king between", all_rooks, "4k3/8/8/8/8/8/8/1R1K1R2", 2 * 92},
    ValueRow{"three in a row", all_rooks, "4k3/8/8/8/8/8/8/RRR1K3", 3 * 92 + 2 * 4},
    ValueRow{"three around a corner, which comes last", all_rooks, "4k3/8/8/8/8/8/R7/RR2K3", 3 * 92 + 2 * 4},
    ValueRow{"against a queen", all_rooks, "4k3/8/8/8/8/8/2q5/RR2K3", 2 * 92 + 12},
    ValueRow{"queen against queen", all_rooks, "4k3/8/8/8/8/8/2q5/RR2K2Q", 2 * 92 + 4},
    ValueRow{"against queen and rook", all_rooks, "4k2r/8/8/8/8/8/2q5/RR2K3", 2 * 92 + 4},
    ValueRow{"seventh rank, king on the eighth", all_rooks, "4k3/RR6/8/8/8/8/8/4K3", 2 * (92 + 50) + 25},
    ValueRow{"seventh rank, king on the seventh", all_rooks, "8/RR2k3/8/8/8/8/8/4K3 b - - 0 1", 2 * (92 + 50) + 25},
    ValueRow{"seventh rank, king on the sixth", all_rooks, "8/RR6/4k3/8/8/8/8/4K3", 2 * 92 + 4},
    ValueRow{"seventh rank against a queen", all_rooks, "4k3/RR6/8/8/8/8/2q5/4K3", 2 * (92 + 50) + 25},
    ValueRow{"seventh rank, king out, against a queen", all_rooks, "8/RR6/4k3/8/8/8/2q5/4K3", 2 * 92 + 12},
    ValueRow{"one on the seventh rank", all_rooks, "4k3/R7/8/8/8/8/8/R3K3", 2 * 92 + 50 + 4},
    ValueRow{"seventh rank and sixth", all_rooks, "4k3/R7/R7/8/8/8/8/4K3", 2 * 92 + 50 + 4},
    ValueRow{"seventh rank and eighth", all_rooks, "R3k3/R7/8/8/8/8/8/4K3 b - - 0 1", 2 * 92 + 50 + 4},
    ValueRow{"one on the eighth rank", all_rooks, "R7/8/3k4/8/8/8/8/4K3", 92}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(TiedDown, RooksInEndings, testing::Values(
    ValueRow{"one pawn", all_rooks, "1r2k3/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"no rook behind it", all_rooks, "r3k3/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"a queen behind it", all_rooks, "1q2k3/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"not attacked", all_rooks, "1r2k3/1p6/8/8/8/8/8/2R1K3", 85 + 7 + 4},
    ValueRow{"on the sixth rank", all_rooks, "4k3/1r6/1p6/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"two pawns", all_rooks, "1r1r3k/1pRp4/8/8/8/8/8/4K3", 85 - 12 + 7 + 50 + 60 + 8},
    ValueRow{"beside a king on the sixth rank", all_rooks, "1r6/1p6/k7/8/8/8/8/1R2K3", 85 + 4 + 4},
    ValueRow{"away from a king on the sixth rank", all_rooks, "1r6/1p6/3k4/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"beside a king on the seventh rank", all_rooks, "1r6/kp6/8/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"beside a king on the eighth rank", all_rooks, "kr6/1p6/8/8/8/8/8/1R2K3", 85 + 4 + 30 + 4},
    ValueRow{"by two rooks", all_rooks, "1r2k3/Rp6/8/8/8/8/8/1R2K3", (85 + 4 + 30) + (85 + 7 + 50 + 30) + 4}),
    RowName<ValueRow>);
// clang-format on

TEST(RooksInEndings, RooksAttackAlongTheirLines) {
    EvaluationBuilder builder("4k3/8/8/3n4/8/8/3R4/4K3 w - - 0 1");
    builder.PrepareTerms();
    static_cast<void>(rooks_ending<white>(builder.context, builder.board));
    const Bitboard attacks = builder.context.attacks[white];
    for (const Square s : {d1, d3, d4, d5, a2, h2}) EXPECT_TRUE(Has(attacks, s)) << SquareToString(s);
    for (const Square s : {d6, c3, a1}) EXPECT_FALSE(Has(attacks, s)) << SquareToString(s);
}

// --- Queens ---

class QueensInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(QueensInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Places, QueensInEndings, testing::Values(
    ValueRow{"in the centre", all_queens, "7k/8/8/8/3Q4/8/8/K7 b - - 0 1", 7 - 2 * 3 - 2 * 4},
    ValueRow{"on the seventh rank", all_queens, "7k/1Q6/8/8/8/8/8/K7", -2 - 2 * 6 - 2 * 6 + 55},
    ValueRow{"c5", all_queens, "7k/8/8/2Q5/8/8/8/2K5", 5 - 2 * 4 - 2 * 5},
    ValueRow{"b2", all_queens, "6k1/8/8/8/8/8/1Q6/1K6", -2 - 2 * 1 - 2 * 6},
    ValueRow{"two of them", all_queens, "6k1/8/8/2Q5/8/8/1Q6/2K5", (5 - 2 * 4 - 2 * 4) + (-2 - 2 * 1 - 2 * 6)},
    ValueRow{"a7, the king on the sixth rank", all_queens, "8/Q7/7k/8/8/8/8/K7", -3 - 2 * 6 - 2 * 7},
    ValueRow{"a7, the king on the seventh rank", all_queens, "8/Q1p4k/8/8/8/8/8/K7", -3 - 2 * 6 - 2 * 7 + 55},
    ValueRow{"a7, the king on the eighth rank", all_queens, "6k1/Q7/8/8/8/8/8/K7", -3 - 2 * 6 - 2 * 6 + 55},
    ValueRow{"a rook pinned to the queen", all_queens, "3r3k/8/8/8/3R4/8/8/3Q2K1", -2 - 2 * 3 - 2 * 7 - 30},
    ValueRow{"a rook before a bishop", all_queens, "3b3k/8/8/8/3R4/8/8/3Q2K1", -2 - 2 * 3 - 2 * 7},
    ValueRow{"two rooks before a rook", all_queens, "3r3k/3R4/8/8/3R4/8/8/3Q2K1", -2 - 2 * 3 - 2 * 7},
    ValueRow{"a knight pinned to the queen", all_queens, "7k/8/8/7b/8/5N2/8/3Q2K1", -2 - 2 * 3 - 2 * 7 - 30},
    ValueRow{"a pawn pinned to the queen", all_queens, "3r3k/8/8/8/3P4/8/8/3Q2K1", -2 - 2 * 3 - 2 * 7 - 30},
    ValueRow{"the king between queen and rook", all_queens, "3r3k/8/8/8/3K4/8/8/3Q4", -2 - 2 * 3 - 2 * 7 - 30},
    ValueRow{"pinned to the king alone", all_queens, "6rk/8/8/8/6N1/8/8/3Q2K1", -2 - 2 * 3 - 2 * 7},
    ValueRow{"two pinned pieces", all_queens, "3r3k/8/8/7b/3R4/5N2/8/3Q2K1", -2 - 2 * 3 - 2 * 7 - 60}),
    RowName<ValueRow>);

// A queen on e5 with kings on h2 and g8 is worth 7 - 6 - 6 = -5; it can check on b8, e8 and more.
INSTANTIATE_TEST_SUITE_P(Behind, QueensInEndings, testing::Values(
    ValueRow{"checks on b8 and e8", all_queens, "6k1/5ppp/8/4Q3/8/8/7K/q7", -5 + 33 + 4 * 2},
    ValueRow{"checks later", all_queens, "6k1/5ppp/8/4Q3/8/8/7K/q7 b - - 0 1", -5 + 16 + 2 * 2},
    ValueRow{"checks after an answer to one", all_queens, "6k1/5ppp/8/4Q3/8/8/q6K/8", -5 + 16 + 2 * 2},
    ValueRow{"a check that takes a knight", all_queens, "1n4k1/5ppp/8/4Q3/8/8/7K/q7", -5 + 33 + 4 * 2},
    ValueRow{"no check", all_queens, "6k1/5ppp/8/7Q/8/8/1K6/4q3", -2 - 2 * 6 - 2 * 3},
    ValueRow{"checks on b8, e8, g3 and g5", all_queens, "6k1/5p1p/8/4Q3/8/8/7K/qn6", -5 + 33 + 4 * 4},
    ValueRow{"a pawn guards g5", all_queens, "6k1/5p2/7p/4Q3/8/8/7K/qn6", -5 + 33 + 4 * 3},
    ValueRow{"a knight guards g3", all_queens, "6k1/5p1p/8/4Q2n/8/8/7K/q7", -5 + 33 + 4 * 3},
    ValueRow{"a queen guards g3", all_queens, "6k1/5p1p/8/4Q3/8/q7/7K/1n6", -5 + 33 + 4 * 3},
    ValueRow{"an own bishop stands on g3", all_queens, "6k1/5p1p/8/4Q3/8/6B1/7K/qnn5", -5 + 33 + 4 * 3},
    ValueRow{"behind by ninety", all_queens, "6k1/7p/8/4Q3/8/8/7K/qn5B", -5 + 33 + 4 * 6},
    ValueRow{"behind by eighty", all_queens, "1r5k/1r5p/8/3Q4/8/8/8/2K5", 7 - 2 * 4 - 2 * 4},
    ValueRow{"level", all_queens, "6k1/8/8/4Q3/8/8/7K/q7", -5}),
    RowName<ValueRow>);
// clang-format on

// --- Kings ---

class KingsInEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(KingsInEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Places, KingsInEndings, testing::Values(
    ValueRow{"late", king_placement, "4k3/8/8/8/4K3/8/8/8", 2 * 24 - 2 * 12},
    ValueRow{"the enemy has two pieces", king_placement, "4k1bb/8/8/8/4K3/8/8/8", 2 * 24 - 2 * 12},
    ValueRow{"the enemy has three pieces", king_placement, "4kbbb/8/8/8/4K3/8/8/8", -2 - 2 * 12},
    ValueRow{"a queen against a bare king", king_placement, "7k/8/8/8/4K3/8/8/Q7 b - - 0 1", 2 * 24 - 4 + 100 + 10},
    ValueRow{"a queen against a king with two men", king_placement, "7k/6pp/8/8/4K3/8/8/1Q6", 2 * 24 - 4 + 100 - 30},
    ValueRow{"two rooks", king_placement, "7k/8/8/8/4K3/8/8/1RR5", 2 * 24 - 4 + 20 + 10},
    ValueRow{"one rook", king_placement, "7k/8/8/8/4K3/8/8/1R6", 2 * 24 - 2 * 4}),
    RowName<ValueRow>);

// The king on a1 is worth 2 * 4, the one on d5 -2; a queen 100 less the men around the enemy king.
INSTANTIATE_TEST_SUITE_P(WithHeavyPieces, KingsInEndings, testing::Values(
    ValueRow{"no man", king_placement, "8/8/8/3k4/8/8/8/KQ6", 8 + 2 + 100 + 10},
    ValueRow{"one", king_placement, "8/8/3p4/3k4/8/8/8/KQ6", 8 + 2 + 100 - 15},
    ValueRow{"two", king_placement, "8/8/2pp4/3k4/8/8/8/KQ6", 8 + 2 + 100 - 30},
    ValueRow{"three", king_placement, "8/8/2ppp3/3k4/8/8/8/KQ6", 8 + 2 + 100 - 40},
    ValueRow{"four", king_placement, "8/8/2ppp3/2pk4/8/8/8/KQ6", 8 + 2 + 100 - 45},
    ValueRow{"five", king_placement, "8/8/2ppp3/2pkp3/8/8/8/KQ6", 8 + 2 + 100 - 50},
    ValueRow{"six", king_placement, "8/8/2ppp3/2pkp3/2p5/8/8/KQ6", 8 + 2 + 100 - 55},
    ValueRow{"seven", king_placement, "8/8/2ppp3/2pkp3/2pp4/8/8/KQ6", 8 + 2 + 100 - 60},
    ValueRow{"eight", king_placement, "8/8/2ppp3/2pkp3/2ppp3/8/8/KQ6", 8 + 2 + 100 - 65},
    ValueRow{"a knight is a man too", king_placement, "8/8/3n4/3k4/8/8/8/KQ6", 8 + 2 + 100 - 15},
    ValueRow{"the queen's own pawn is not", king_placement, "8/8/3P4/3k4/8/8/8/KQ6", 8 + 2 + 100 + 10},
    ValueRow{"two rooks", king_placement, "8/8/3p4/3k4/8/8/8/KRR5", 8 + 2 + 20 - 15},
    ValueRow{"one rook", king_placement, "8/8/3p4/3k4/8/8/8/KR6", 8 - 2 * 24},
    ValueRow{"queens of both", king_placement, "3q4/8/3p4/3k4/8/8/8/KQ6", 4 + 2 + (100 - 15) - (100 - 15)}),
    RowName<ValueRow>);
// clang-format on

}  // namespace
