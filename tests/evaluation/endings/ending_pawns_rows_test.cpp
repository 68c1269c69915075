#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "bitbases/bitbases.h"
#include "evaluation/endings/ending.h"
#include "evaluation/endings/pawn_ending.h"
#include "evaluation/endings/queen_ending.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/temporary_directory.h"
#include "support/term_rows.h"

/// Pawns and queens in the ending: every number was worked out on paper.

namespace {

using namespace sided;

class EndingPawns : public testing::TestWithParam<ValueRow> {};
TEST_P(EndingPawns, GiveTheirValue) { ExpectValue(GetParam()); }

constexpr int sign(Colour us) { return us == white ? 1 : -1; }

template <Colour Us>
int Runners(EVALUATION_CONTEXT& context, const BOARD& board) {
    const UNSTOPPABLE_BONUS bonus = unstoppable_bonus(context, board);
    EXPECT_EQ(bonus.check, RunnerCheck::none);
    return sign(Us) * bonus.score;
}
/// The enemy's passed pawns looked at again, with all that the pieces attack.
template <Colour Us>
int SecondLook(EVALUATION_CONTEXT& context, const BOARD& board) {
    const UNSTOPPABLE_BONUS bonus = unstoppable_bonus(context, board);
    EXPECT_EQ(bonus.score, 0);
    EXPECT_EQ(bonus.check, Us == white ? RunnerCheck::black_pawns : RunnerCheck::white_pawns);
    static_cast<void>(knights_ending<Us>(context, board));
    static_cast<void>(bishops_ending<Us>(context, board));
    static_cast<void>(rooks_ending<Us>(context, board));
    static_cast<void>(queens_ending<Us>(context, board));
    return sign(Us) * checked_unstoppable_bonus(context, board, bonus.check);
}
/// The routine of kings and pawns without what the pawn structure gives.
template <Colour Us>
int PawnEnding(EVALUATION_CONTEXT& context, const BOARD& board) {
    EVALUATION_CONTEXT fresh{context.settings};
    find_passed_pawns(fresh, board);
    const EVALUATION_RESULT result = evaluate_pawn_ending(fresh, board, 0);
    EXPECT_FALSE(result.lazy);
    const int for_us = board.side_to_move == Us ? result.score : -result.score;
    return for_us - 3 * sign(Us) * pawn_structure_ending(context, board);
}

/// King, bishop and pawns against a bare king; -1 if the rule does not apply.
template <Colour Us>
int WrongBishop(EVALUATION_CONTEXT& /*context*/, const BOARD& board) {
    const std::optional<int> value = wrong_bishop_rule(board);
    if (!value) return -1;
    return board.side_to_move == Us ? *value : -*value;
}
constexpr SidedTerm<int> runners{Runners<white>, Runners<black>};
constexpr SidedTerm<int> second_look{SecondLook<white>, SecondLook<black>};
constexpr SidedTerm<int> bishop_and_pawns{WrongBishop<white>, WrongBishop<black>};
constexpr SidedTerm<int> pawn_endings{PawnEnding<white>, PawnEnding<black>};

// clang-format off
// By file and rank, then the own king to the pawn, the enemy's, and both to the queening square.
INSTANTIATE_TEST_SUITE_P(PassedByPlace, EndingPawns, testing::Values(
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
    ValueRow{"an enemy pawn on the next file level", ending_passed, "k7/8/8/Pp6/8/8/8/K7", (9 * 85 / 8 - 2 - 1 - 6 - 5 + 6) - (9 * 53 / 8 + 0 - 0 - 6 - 5)}), RowName<ValueRow>);

// Kings on h1 and h8: 74 - 2 - 1 - 6 + 1 = 66 for a pawn on e5, and 6 for the free square ahead.
INSTANTIATE_TEST_SUITE_P(PassedAndPieces, EndingPawns, testing::Values(
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

// The enemy king just out of the square of the pawn, and just in it; caught rook pawns are drawn here.
INSTANTIATE_TEST_SUITE_P(RunnersBySquare, EndingPawns, testing::Values(
    ValueRow{"a2", runners, "8/8/8/6k1/8/8/P7/K6N", 640},
    ValueRow{"a2 caught", runners, "8/8/8/5k2/8/8/P7/K6N", 0},
    ValueRow{"a2, not to move", runners, "8/8/8/7k/8/8/P7/K6N b - - 0 1", 520},
    ValueRow{"a2 caught, not to move", runners, "8/8/8/6k1/8/8/P7/K6N b - - 0 1", 0},
    ValueRow{"a2, the king behind it", runners, "8/8/8/8/8/8/P7/1k1K3N", 640},
    ValueRow{"a2 caught from behind", runners, "8/8/8/8/8/8/P7/1k1K3N b - - 0 1", 0},
    ValueRow{"a3", runners, "8/8/8/8/6k1/P7/8/K6N", 640},
    ValueRow{"a3, not to move", runners, "8/8/8/8/8/P6k/8/K6N b - - 0 1", 520},
    ValueRow{"a3 caught, not to move", runners, "8/8/8/8/8/P5k1/8/K6N b - - 0 1", 0},
    ValueRow{"a4", runners, "5k2/8/8/8/P7/8/8/K6N", 720},
    ValueRow{"a4 caught", runners, "4k3/8/8/8/P7/8/8/K6N", 0},
    ValueRow{"a4, not to move", runners, "6k1/8/8/8/P7/8/8/K6N b - - 0 1", 640},
    ValueRow{"a4 caught, not to move", runners, "5k2/8/8/8/P7/8/8/K6N b - - 0 1", 0},
    ValueRow{"a5", runners, "4k3/8/8/P7/8/8/8/K6N", 760},
    ValueRow{"a5 caught", runners, "3k4/8/8/P7/8/8/8/K6N", 0},
    ValueRow{"a5, not to move", runners, "5k2/8/8/P7/8/8/8/K6N b - - 0 1", 720},
    ValueRow{"a5 caught, not to move", runners, "4k3/8/8/P7/8/8/8/K6N b - - 0 1", 0},
    ValueRow{"a6", runners, "3k4/8/P7/8/8/8/8/K6N", 800},
    ValueRow{"a6 caught", runners, "2k5/8/P7/8/8/8/8/K6N", 0},
    ValueRow{"a6, not to move", runners, "4k3/8/P7/8/8/8/8/K6N b - - 0 1", 760},
    ValueRow{"a6 caught, not to move", runners, "3k4/8/P7/8/8/8/8/K6N b - - 0 1", 0},
    ValueRow{"a7", runners, "2k5/P7/8/8/8/8/8/K6N", 920},
    ValueRow{"a7, not to move", runners, "3k4/P7/8/8/8/8/8/K6N b - - 0 1", 800},
    ValueRow{"a7 caught, not to move", runners, "2k5/P7/8/8/8/8/8/K6N b - - 0 1", 0},
    ValueRow{"the caught pawn ahead does not count", runners, "2k5/8/P7/8/7P/8/8/K6N", 720},
    ValueRow{"neither does a pawn that is not passed", runners, "7k/8/1p6/P7/8/8/8/K6N", 0},
    ValueRow{"the enemy's passed pawn does not stop it", runners, "8/8/8/7k/P7/8/6p1/K6N", 720},
    ValueRow{"the enemy's passed pawn alone", runners, "8/8/8/7k/8/8/6p1/K6N", 0},
    ValueRow{"pieces on both sides", runners, "n7/8/8/6k1/8/8/P7/K6N", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(RaceValue, EndingPawns, testing::Values(
    ValueRow{"b2", runners, "1k6/8/1K6/8/8/8/1P6/7N", 210},
    ValueRow{"b3", runners, "1k6/8/1K6/8/8/1P6/8/7N", 210},
    ValueRow{"b4", runners, "1k6/8/1K6/8/1P6/8/8/7N", 215},
    ValueRow{"b5", runners, "1k6/8/1K6/1P6/8/8/8/7N", 225},
    ValueRow{"b6 to move", runners, "1k6/8/1PK5/8/8/8/8/7N", 240},
    ValueRow{"b6, not to move", runners, "1k6/8/1PK5/8/8/8/8/7N b - - 0 1", 0},
    ValueRow{"d7", runners, "8/2KPk3/8/8/8/8/8/N7", 250},
    ValueRow{"d7, not to move", runners, "8/2KPk3/8/8/8/8/8/N7 b - - 0 1", 250},
    ValueRow{"two that win", runners, "1k6/8/1K6/8/8/8/1PP5/N7", 400},
    ValueRow{"one that wins, one that draws", runners, "1k6/8/2K5/8/8/8/P1P5/7N", 210}), RowName<ValueRow>);

// A pawn on c2 or c3 that wins if nothing else runs.
INSTANTIATE_TEST_SUITE_P(SecondLooks, EndingPawns, testing::Values(
    ValueRow{"a rook stands before the pawn", second_look, "2k5/8/2K5/8/7p/8/2P5/7R", 210},
    ValueRow{"a bishop watches its way", second_look, "2k5/8/2K5/8/7p/8/2P3B1/8", 210},
    ValueRow{"a bishop does not watch its way", second_look, "2k5/8/2K5/8/7p/8/2P5/B7", 0},
    ValueRow{"a knight watches it", second_look, "3k4/8/3KpN2/8/8/2P5/8/8", 210},
    ValueRow{"a knight watches it beside its king alone", second_look, "3k4/8/3Kp1N1/8/8/2P5/8/8", 0},
    ValueRow{"the king stands before the pawn", second_look, "4k3/4p3/4K3/8/6P1/8/8/N7", 215},
    ValueRow{"a queen watches it", second_look, "2k5/8/2K5/8/7p/8/2P5/Q7", 210},
    ValueRow{"one of two is stopped", second_look, "2k5/8/2K5/8/p6p/8/2P5/7R", 210},
    ValueRow{"one of two runs", second_look, "2k5/8/2K5/8/p6p/8/2P5/7N", 0},
    ValueRow{"the last step is watched", second_look, "2k5/8/2K5/8/8/8/2P4p/4R3", 210}), RowName<ValueRow>);

// Enemy pawns that one pawn defends: the bishop on e3 is worth 11 by itself.
INSTANTIATE_TEST_SUITE_P(BishopsTargets, EndingPawns, testing::Values(
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
    ValueRow{"h7 shut in for good", all_bishops, "4k3/5p1B/6p1/8/8/8/8/4K3", 0 - 45 - 180 + 16}), RowName<ValueRow>);

// Three times the material, three times the passed pawns, the race, and three for every square reached first.
INSTANTIATE_TEST_SUITE_P(PawnEndings, EndingPawns, testing::Values(
    ValueRow{"a caught pawn that wins", pawn_endings, "4k3/8/8/8/8/8/4P3/4K3", 300 + 3 * 25 + 2 * 210 + 16 + 3 * (32 - 31)},
    ValueRow{"a caught pawn that draws", pawn_endings, "4k3/8/8/8/8/8/4P3/4K3 b - - 0 1", 300 + 3 * 25 + 16 + 3 * (30 - 33)},
    ValueRow{"two caught pawns that win", pawn_endings, "1k6/8/1K6/8/8/8/1PP5/8", 600 + 3 * 67 + 2 * 400 + 32 + 3 * (55 - 4)},
    ValueRow{"a runner", pawn_endings, "8/8/8/P5k1/8/8/8/K7", 300 + 3 * 115 + 2 * 760 + 3 * (54 - 1)},
    ValueRow{"a runner that just escapes", pawn_endings, "8/8/8/P3k3/8/8/8/K7", 300 + 3 * 98 + 2 * 760 + 3 * (38 - 15)},
    ValueRow{"a runner that is just caught", pawn_endings, "8/8/8/P3k3/8/8/8/K7 b - - 0 1", 300 + 3 * 98 + 3 * (37 - 15)},
    ValueRow{"a runner that does not move yet", pawn_endings, "8/8/8/P4k2/8/8/8/K7 b - - 0 1", 300 + 3 * 108 + 2 * 720 + 3 * (54 - 1)},
    ValueRow{"passed pawns on a and h", pawn_endings, "4k3/8/8/P6P/8/8/8/4K3", 600 + 3 * 191 + 2 * 760 + 60 + 3 * (56 - 1)},
    ValueRow{"passed pawns on b and g", pawn_endings, "7k/8/8/1P4P1/8/8/8/K7", 600 + 3 * 199 + 2 * 760 + 60 + 3 * (58 - 1)},
    ValueRow{"passed pawns on a and f", pawn_endings, "4k3/8/8/P4P2/8/8/8/4K3", 600 + 3 * 175 + 2 * 760 + 3 * (41 - 9)},
    ValueRow{"passed pawns on a and b", pawn_endings, "4k3/8/8/PP6/8/8/8/4K3", 600 + 3 * 191 + 2 * 760 + 3 * (42 - 12)},
    ValueRow{"passed pawns on c and h", pawn_endings, "4k3/8/8/2P4P/8/8/8/4K3", 600 + 3 * 172 + 3 * (43 - 8)},
    ValueRow{"both sides have passed pawns, nothing known", pawn_endings, "6k1/8/8/p2P4/P2p4/8/8/6K1", 0},
    ValueRow{"no passed pawns", pawn_endings, "4k3/p7/8/8/8/8/P7/4K3", 16 - 16 + 3 * (32 - 30)},
    ValueRow{"no passed pawns, the other side to move", pawn_endings, "4k3/p7/8/8/8/8/P7/4K3 b - - 0 1", 16 - 16 + 3 * (30 - 32)},
    ValueRow{"a king before a pawn at home", pawn_endings, "4k3/8/4p3/8/8/4K3/4P3/8", 16 + 3 * (41 - 19)},
    ValueRow{"a king before the enemy's pawn", pawn_endings, "4k3/4p3/4K3/8/8/8/4P3/8", 16 - 16 + 3 * (49 - 9)},
    ValueRow{"an enemy pawn two ranks ahead", pawn_endings, "4k3/4p3/8/8/4p3/8/4P3/4K3", -300 - 16 + 3 * (30 - 30)},
    ValueRow{"an enemy pawn right ahead", pawn_endings, "4k3/4p3/8/8/8/4p3/4P3/4K3", -300 - 16 + 3 * (29 - 31)},
    ValueRow{"an enemy pawn guards the second step", pawn_endings, "4k3/4p3/8/3p4/8/8/4P3/4K3", -300 + 16 - 16 + 3 * (30 - 29)},
    ValueRow{"an enemy pawn guards the first step", pawn_endings, "4k3/4p3/8/8/5p2/8/4P3/4K3", -300 - 16 + 3 * (30 - 30)},
    ValueRow{"a pawn past its home rank", pawn_endings, "8/8/8/1p1k4/1P6/8/8/1K6", 3 * (15 - 45)},
    ValueRow{"the same with the other side to move", pawn_endings, "8/8/8/1p1k4/1P6/8/8/1K6 b - - 0 1", 3 * (10 - 51)}), RowName<ValueRow>);

// The enemy king 2 to 7 steps from the corner, the own king 0 to 7; the pawn on a2 is worth 50.
INSTANTIATE_TEST_SUITE_P(BishopAndPawns, EndingPawns, testing::Values(
    ValueRow{"2 and 0 steps", bishop_and_pawns, "K1k5/8/8/8/8/8/P7/2B5", 315 - 20 + 80 + 50},
    ValueRow{"3 and 1", bishop_and_pawns, "8/1K1k4/8/8/8/8/P7/2B5", 315 + 10 + 80 + 50},
    ValueRow{"4 and 2", bishop_and_pawns, "8/8/2K1k3/8/8/8/P7/2B5", 315 + 20 + 10 + 50},
    ValueRow{"5 and 3", bishop_and_pawns, "8/8/8/3K1k2/8/8/P7/2B5", 315 + 30 + 0 + 50},
    ValueRow{"6 and 4", bishop_and_pawns, "8/8/8/8/4K1k1/8/P7/2B5", 315 + 50 - 10 + 50},
    ValueRow{"7 and 5", bishop_and_pawns, "8/8/8/8/8/5K1k/P7/2B5", 315 + 90 - 20 + 50},
    ValueRow{"2 and 6", bishop_and_pawns, "2k5/8/8/8/8/8/P5K1/2B5", 315 - 20 - 25 + 50},
    ValueRow{"3 and 7", bishop_and_pawns, "3k4/8/8/8/8/8/P7/2B4K b - - 0 1", 315 + 10 - 30 + 50},
    ValueRow{"1 and 7", bishop_and_pawns, "8/1k6/8/8/8/8/P7/2B4K", 0},
    ValueRow{"h-pawn, 1 step", bishop_and_pawns, "6k1/8/8/8/8/8/7P/4KB2", 0},
    ValueRow{"h-pawn, 2 steps", bishop_and_pawns, "5k2/8/8/8/8/8/7P/4KB2 b - - 0 1", 315 - 20 - 30 + 50},
    ValueRow{"h-pawn, the right bishop", bishop_and_pawns, "6k1/8/8/8/8/8/7P/2B1K3", 835 + 50},
    ValueRow{"doubled pawns", bishop_and_pawns, "3k4/8/8/8/8/P7/P7/2B4K", 315 + 10 - 30 + 50 + 52},
    ValueRow{"a3", bishop_and_pawns, "8/8/8/7k/8/P7/8/K4B2", 835 + 52},
    ValueRow{"a4", bishop_and_pawns, "8/8/8/7k/P7/8/8/K4B2", 835 + 55},
    ValueRow{"a5", bishop_and_pawns, "8/8/8/P6k/8/8/8/K4B2", 835 + 62},
    ValueRow{"a6", bishop_and_pawns, "8/8/P7/7k/8/8/8/K4B2", 835 + 76},
    ValueRow{"a7", bishop_and_pawns, "8/P7/8/7k/8/8/8/K4B2", 835 + 90},
    ValueRow{"b-pawn", bishop_and_pawns, "k7/8/8/8/8/8/1P6/K1B5", 835 + 50},
    ValueRow{"pawns on both rims", bishop_and_pawns, "k7/8/8/8/8/8/P6P/K1B5", 835 + 50 + 50},
    ValueRow{"a knight", bishop_and_pawns, "k7/8/8/8/8/8/P7/K1N5", -1},
    ValueRow{"the enemy has a pawn", bishop_and_pawns, "k7/p7/8/8/8/8/P7/K1B5", -1},
    ValueRow{"the bishop is the enemy's", bishop_and_pawns, "k1b5/8/8/8/8/8/P7/K7", -1},
    ValueRow{"two pieces", bishop_and_pawns, "k1n5/8/8/8/8/8/P7/K1B5", -1}), RowName<ValueRow>);

// By the winner's pawns in eighths, 50 less at most; then opposite bishops.
INSTANTIATE_TEST_SUITE_P(Scaling, EndingPawns, testing::Values(
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
    ValueRow{"not more than 250 less", scaled<2000, true>, "2b1k3/1p6/8/8/8/8/PPPP4/2B1K3", 1700}), RowName<ValueRow>);
// clang-format on

TEST(Runners, AreWhitesAloneIfNeitherSideHasPieces) {
    EvaluationBuilder of_white("8/8/8/6k1/8/8/P7/K7 w - - 0 1"), of_black(WithColoursExchanged(of_white.board), {});
    of_white.PrepareTerms();
    of_black.PrepareTerms();
    EXPECT_EQ(unstoppable_bonus(of_white.context, of_white.board).score, 640);
    EXPECT_EQ(unstoppable_bonus(of_black.context, of_black.board).score, 0);
}

// --- The whole of a pawn ending ---

struct WholeRow {
    std::string_view name;
    std::string_view fen;
    int score;  ///< for the side to move
};
std::ostream& operator<<(std::ostream& out, const WholeRow& row) { return out << row.name; }

class WholePawnEndings : public testing::TestWithParam<WholeRow> {};
TEST_P(WholePawnEndings, HaveTheirScore) {
    EvaluationBuilder position{FenOfRow(GetParam().fen)};
    EXPECT_EQ(position.AskAfresh(0), GetParam().score);
    EvaluationBuilder exchanged{WithColoursExchanged(position.board), {}};
    EXPECT_EQ(exchanged.AskAfresh(0), GetParam().score);
}

// clang-format off
// The last numbers are three times the pawn structure: its squares and that it stands alone, a majority and its wing.
INSTANTIATE_TEST_SUITE_P(PawnEndings, WholePawnEndings, testing::Values(
    WholeRow{"a runner", "8/8/8/P5k1/8/8/8/K7", 300 + 3 * 115 + 2 * 760 + 3 * 53 + 3 * (6 - 14 + 17 + 18)},
    WholeRow{"a runner against the side to move", "8/8/8/P4k2/8/8/8/K7 b - - 0 1", -(300 + 3 * 108 + 2 * 720 + 3 * 53 + 3 * (6 - 14 + 17 + 18))},
    WholeRow{"a rammed pair", "8/8/8/1p1k4/1P6/8/8/1K6", 3 * (15 - 45)}), RowName<WholeRow>);
// clang-format on

// --- When it stops early ---

struct StopRow {
    std::string_view name;
    std::string_view fen;
    int estimate;  ///< for the side to move: the material once, with passed pawns and race
    int draw_score = 0;
};
std::ostream& operator<<(std::ostream& out, const StopRow& row) { return out << row.name; }

class PawnEndingLazyTest : public testing::TestWithParam<StopRow> {};
TEST_P(PawnEndingLazyTest, StopsBeyondThreeThousand) {
    const StopRow& row = GetParam();
    for (const bool exchange : {false, true}) {
        SCOPED_TRACE(exchange ? "colours exchanged" : "as written");
        const BOARD as_written = BoardFromFen(FenOfRow(row.fen));
        EvaluationBuilder position{
            exchange ? WithColoursExchanged(as_written) : as_written,
            {.draw_score = static_cast<std::int16_t>(exchange ? -row.draw_score : row.draw_score)}};
        const auto result = [&](int bound) {
            position.context = {.settings = &position.settings};
            find_passed_pawns(position.context, position.board);
            return evaluate_pawn_ending(position.context, position.board, bound);
        };
        EXPECT_FALSE(result(row.estimate + 3000).lazy);
        EXPECT_TRUE(result(row.estimate + 3001).lazy);
        EXPECT_EQ(result(row.estimate + 3001).score, row.estimate + 3000);
        EXPECT_FALSE(result(row.estimate - 3000).lazy);
        EXPECT_TRUE(result(row.estimate - 3001).lazy);
        EXPECT_EQ(result(row.estimate - 3001).score, row.estimate - 3001);
    }
}

INSTANTIATE_TEST_SUITE_P(
    PawnEndings, PawnEndingLazyTest,
    testing::Values(StopRow{"a runner", "8/8/8/P5k1/8/8/8/K7", 100 + 3 * 115 + 2 * 760},
                    StopRow{"a runner against the side to move", "8/8/8/P4k2/8/8/8/K7 b - - 0 1",
                            -(100 + 3 * 108 + 2 * 720)},
                    StopRow{"no passed pawns", "4k3/p7/8/8/8/8/P7/4K3", 0},
                    StopRow{"no passed pawns, a draw score", "4k3/p7/8/8/8/8/P7/4K3", 0, 50},
                    StopRow{"a lone pawn that draws", "5k2/8/8/8/P7/8/8/K7 b - - 0 1", -(100 + 3 * 68)},
                    StopRow{"a bare king is not better than a draw", "5k2/8/8/8/P7/8/8/K7 b - - 0 1", -700, 700},
                    StopRow{"the draw score is below", "5k2/8/8/8/P7/8/8/K7 b - - 0 1", -(100 + 3 * 68), 300}),
    RowName<StopRow>);

TEST(PawnEnding, DrawScoreDoesNotLimitItsScore) {
    constexpr std::string_view fen = "5k2/8/8/8/P7/8/8/K7 b - - 0 1";
    EXPECT_EQ(EvaluationBuilder(fen, {.draw_score = 2000}).AskAfresh(0), EvaluationBuilder(fen).AskAfresh(0));
}

// --- Races with the file of two pawns ---

/// A file of results in which every pair of pawns has a result of its own.
class TwoPawnsFile {
  public:
    explicit TwoPawnsFile(int everywhere)
        : bytes_(VorkaBitbases::two_pawns_size, static_cast<char>(everywhere * 0x55)) {}

    /// For the side to move, which is the one that the squares are own to.
    void Set(Colour to_move, Square own_pawn, Square enemy_pawn, Square own_king, Square enemy_king, int value) {
        const int turn = (to_move == white ? 0 : 56) ^ ((own_pawn & 7) > 3 ? 7 : 0);
        const VorkaBitbases::Cell cell =
            VorkaBitbases::TwoPawnsCell(own_pawn ^ turn, enemy_pawn ^ turn, own_king ^ turn, enemy_king ^ turn);
        auto& byte = bytes_.at(cell.offset);
        byte = static_cast<char>((byte & ~(3 << cell.shift)) | value << cell.shift);
    }
    void LoadInto(VorkaBitbases::Bitbases& bitbases) {
        const std::string path = directory_.File("two_pawns");
        std::ofstream(path, std::ios::binary).write(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
        bitbases.LoadTwoPawns(path);
    }

  private:
    TemporaryDirectory directory_;
    std::vector<char> bytes_;
};

/// White's pawns on a5 and h5 against the black ones on d3 and f3; kings on e1 and e8.
struct RaceRow {
    std::string_view name;
    int d3_a5, d3_h5, f3_a5, f3_h5;  ///< stored results for the side to move
    int white_to_move, black_to_move;
};
std::ostream& operator<<(std::ostream& out, const RaceRow& row) { return out << row.name; }

class Races : public testing::TestWithParam<RaceRow> {};
TEST_P(Races, TakeTheBestOfBlacksPawnsAgainstTheWorstOfWhites) {
    const RaceRow& row = GetParam();
    for (const Colour to_move : {white, black}) {
        SCOPED_TRACE(to_move == white ? "White to move" : "Black to move");
        TwoPawnsFile file(0);
        for (const auto& [white_pawn, black_pawn, value] :
             {std::tuple{a5, d3, row.d3_a5}, std::tuple{h5, d3, row.d3_h5}, std::tuple{a5, f3, row.f3_a5},
              std::tuple{h5, f3, row.f3_h5}}) {
            if (to_move == white) file.Set(white, white_pawn, black_pawn, e1, e8, value);
            if (to_move == black) file.Set(black, black_pawn, white_pawn, e8, e1, value);
        }
        EvaluationBuilder position(to_move == white ? "4k3/8/8/P6P/8/3p1p2/8/4K3 w - - 0 1"
                                                    : "4k3/8/8/P6P/8/3p1p2/8/4K3 b - - 0 1");
        file.LoadInto(position.bitbases);
        position.PrepareTerms();
        EXPECT_EQ(race(position.context, position.board), to_move == white ? row.white_to_move : row.black_to_move);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(PawnEndings, Races, testing::Values(
    RaceRow{"all zero", 0, 0, 0, 0, 0, 0},
    RaceRow{"all one", 1, 1, 1, 1, 150, -150},
    RaceRow{"all two", 2, 2, 2, 2, 2, 2},
    RaceRow{"all three", 3, 3, 3, 3, -150, 150},
    RaceRow{"each of Black's has a bad one", 1, 3, 3, 1, -150, -150},
    RaceRow{"one of Black's is the same against both", 1, 1, 3, 3, 150, 150},
    RaceRow{"its other pawn", 3, 3, 1, 1, 150, 150},
    RaceRow{"zero and two", 0, 2, 3, 1, 0, 0},
    RaceRow{"two alone against zero", 2, 2, 0, 0, 2, 2},
    RaceRow{"mixed", 1, 0, 2, 1, 2, -150}), RowName<RaceRow>);
// clang-format on

TEST(Races, CountOnceInThePawnEnding) {
    constexpr std::string_view to_move[] = {"6k1/8/8/p2P4/P2p4/8/8/6K1 w - - 0 1",
                                            "6k1/8/8/p2P4/P2p4/8/8/6K1 b - - 0 1"};
    for (const std::string_view fen : to_move) {
        const int without = EvaluationBuilder(fen).AskAfresh(0);
        TwoPawnsFile file(1);
        EvaluationBuilder position(fen);
        file.LoadInto(position.bitbases);
        EXPECT_EQ(position.AskAfresh(0), without + 150) << fen;
    }
}

// --- Queens ---

// clang-format off
INSTANTIATE_TEST_SUITE_P(Queens, EndingPawns, testing::Values(
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
    ValueRow{"two pinned pieces", all_queens, "3r3k/8/8/7b/3R4/5N2/8/3Q2K1", -2 - 2 * 3 - 2 * 7 - 60}), RowName<ValueRow>);

// A queen on e5 with kings on h2 and g8 is worth 7 - 6 - 6 = -5; it can check on b8, e8 and more.
INSTANTIATE_TEST_SUITE_P(QueensBehind, EndingPawns, testing::Values(
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
    ValueRow{"level", all_queens, "6k1/8/8/4Q3/8/8/7K/q7", -5}), RowName<ValueRow>);
// clang-format on

// clang-format off
// The king on a1 is worth 2 * 4, the one on d5 -2; a queen 100 less the men around the enemy king.
INSTANTIATE_TEST_SUITE_P(QueensAndTheEnemyKing, EndingPawns, testing::Values(
    ValueRow{"no man", kings, "8/8/8/3k4/8/8/8/KQ6", 8 + 2 + 100 + 10},
    ValueRow{"one", kings, "8/8/3p4/3k4/8/8/8/KQ6", 8 + 2 + 100 - 15},
    ValueRow{"two", kings, "8/8/2pp4/3k4/8/8/8/KQ6", 8 + 2 + 100 - 30},
    ValueRow{"three", kings, "8/8/2ppp3/3k4/8/8/8/KQ6", 8 + 2 + 100 - 40},
    ValueRow{"four", kings, "8/8/2ppp3/2pk4/8/8/8/KQ6", 8 + 2 + 100 - 45},
    ValueRow{"five", kings, "8/8/2ppp3/2pkp3/8/8/8/KQ6", 8 + 2 + 100 - 50},
    ValueRow{"six", kings, "8/8/2ppp3/2pkp3/2p5/8/8/KQ6", 8 + 2 + 100 - 55},
    ValueRow{"seven", kings, "8/8/2ppp3/2pkp3/2pp4/8/8/KQ6", 8 + 2 + 100 - 60},
    ValueRow{"eight", kings, "8/8/2ppp3/2pkp3/2ppp3/8/8/KQ6", 8 + 2 + 100 - 65},
    ValueRow{"a knight is a man too", kings, "8/8/3n4/3k4/8/8/8/KQ6", 8 + 2 + 100 - 15},
    ValueRow{"the queen's own pawn is not", kings, "8/8/3P4/3k4/8/8/8/KQ6", 8 + 2 + 100 + 10},
    ValueRow{"two rooks", kings, "8/8/3p4/3k4/8/8/8/KRR5", 8 + 2 + 20 - 15},
    ValueRow{"one rook", kings, "8/8/3p4/3k4/8/8/8/KR6", 8 - 2 * 24},
    ValueRow{"queens of both", kings, "3q4/8/3p4/3k4/8/8/8/KQ6", 4 + 2 + (100 - 15) - (100 - 15)}), RowName<ValueRow>);
// clang-format on

// --- Queen against queen ---

enum class Checks { not_needed, none, own_alone, both };  ///< not_needed: the side to move stands no worse

struct QueenRow {
    std::string_view name;
    std::string_view fen;
    int shift;  ///< what the queens' places, passed pawns and half of the material add to the plain ending
    Checks checks = Checks::not_needed;
    int pawns = 0;  ///< next to the king of the side that is not to move, on the files b to g
};
std::ostream& operator<<(std::ostream& out, const QueenRow& row) { return out << row.name; }

int QueenEndingFromPlain(const QueenRow& row, int plain) {
    const int sum = plain + row.shift;
    if (row.checks == Checks::not_needed) {
        EXPECT_GE(sum, 0);
        return sum;
    }
    EXPECT_LT(sum, 0);
    if (row.checks == Checks::none) return sum;
    const int times = sum * (row.checks == Checks::both ? 5 : 3);
    return (row.pawns == 0 ? 4 : 6 + row.pawns) * (times / 8) / 8;
}

class QueenEndings : public testing::TestWithParam<QueenRow> {};
TEST_P(QueenEndings, AreAPlainEndingAndTheQueens) {
    for (const bool exchange : {false, true}) {
        SCOPED_TRACE(exchange ? "colours exchanged" : "as written");
        const BOARD as_written = BoardFromFen(FenOfRow(GetParam().fen));
        EvaluationBuilder position{exchange ? WithColoursExchanged(as_written) : as_written, {}};
        ASSERT_EQ(position.Type(), 4);
        const auto result = [&](auto routine, int bound) {
            position.context = {.settings = &position.settings};
            find_passed_pawns(position.context, position.board);
            return routine(position.context, position.board, bound);
        };
        int bound = -1000;
        while (result(evaluate_ending, bound).lazy) ASSERT_LE(bound += 200, 1000);
        const EVALUATION_RESULT plain = result(evaluate_ending, bound), found = result(evaluate_queen_ending, bound);
        EXPECT_FALSE(found.lazy);
        EXPECT_EQ(found.score, QueenEndingFromPlain(GetParam(), plain.score));
        for (const int far : {-5000, 5000}) {
            EXPECT_TRUE(result(evaluate_queen_ending, far).lazy);
            EXPECT_EQ(result(evaluate_queen_ending, far).score, result(evaluate_ending, far).score);
        }
    }
}

// clang-format off
// Queens on d5 and a2 are worth 7 and -4, those on d5 and b8 too; a foremost passed pawn -50, -52, -30, 10, 75 or 160 by
// rank, none -45.
INSTANTIATE_TEST_SUITE_P(QueenEndings, QueenEndings, testing::Values(
    QueenRow{"no passed pawns", "6k1/5ppp/8/3Q4/8/8/q4PPP/6K1", 24 + 7 + 4},
    QueenRow{"a2", "1q4k1/5pp1/8/3Q4/8/8/P4PP1/6K1", -50 + 24 + 7 + 4 - 50 + 45},
    QueenRow{"a3", "1q4k1/5pp1/8/3Q4/8/P7/5PP1/6K1", -50 + 24 + 7 + 4 - 52 + 45},
    QueenRow{"a4", "1q4k1/5pp1/8/3Q4/P7/8/5PP1/6K1", -50 + 24 + 7 + 4 - 30 + 45},
    QueenRow{"a5", "1q4k1/5pp1/8/P2Q4/8/8/5PP1/6K1", -50 + 24 + 7 + 4 + 10 + 45},
    QueenRow{"a6", "1q4k1/5pp1/P7/3Q4/8/8/5PP1/6K1", -50 + 24 + 7 + 4 + 75 + 45},
    QueenRow{"a7", "1q4k1/P4pp1/8/3Q4/8/8/5PP1/6K1", -50 + 24 + 7 + 4 + 160 + 45},
    QueenRow{"the foremost of two", "1q4k1/5pp1/2P5/3Q4/8/P7/5PP1/6K1", -100 + 24 + 7 + 4 + 75 + 45},
    QueenRow{"passed pawns of both", "6k1/5p2/P7/3Q4/8/7p/q4P2/6K1", 24 + 7 + 4 + 75 - 75},
    QueenRow{"no check helps", "6k1/5ppp/6q1/ppp5/8/8/1Q3PPP/6K1", 150 + 24 - 3 + 1 - 45 + 30, Checks::none},
    QueenRow{"the other side alone has checks", "6k1/5ppp/7Q/ppp5/8/8/2q2PPP/6K1", 150 + 24 - 4 + 1 - 45 + 30, Checks::none},
    QueenRow{"checks of the side to move", "6k1/1Q3ppp/8/ppp5/8/7q/5PPP/6K1", 150 + 24 - 3 + 4 - 45 + 30, Checks::own_alone, 2},
    QueenRow{"both have checks", "6k1/5ppp/8/ppp1Q3/2q5/8/5PPP/6K1", 150 + 24 + 7 - 5 - 45 + 30, Checks::both, 2},
    QueenRow{"a pawn before the king", "6k1/6pp/7q/ppp5/8/8/5PPP/3Q2K1", 100 + 24 - 4 + 4 - 45 + 30, Checks::own_alone, 1},
    QueenRow{"a pawn two ranks before it", "6k1/2Q2p1p/6p1/ppp5/8/5q2/5PPP/6K1", 150 + 24 - 1 - 3 - 45 + 30, Checks::both, 1},
    QueenRow{"a pawn guards the only check", "6k1/q5p1/5p1p/ppp5/8/8/5PPP/2Q3K1", 150 + 24 - 4 + 4 - 45 + 30, Checks::none},
    QueenRow{"a pawn of the checking side", "8/8/3Q1ppp/ppp3k1/6P1/1q6/5P1P/6K1", 150 + 24 + 5 + 1 - 45 + 30, Checks::both, 2},
    QueenRow{"a rook pawn", "6k1/7p/1q6/ppp5/8/Q7/5PPP/6K1", 50 + 24 - 4 + 1 - 50 + 30, Checks::own_alone, 0},
    QueenRow{"the king in the corner, a7 and b7", "k7/pp6/8/5ppp/8/5q2/PPP5/1K2Q3", 100 + 24 - 4 - 3 - 45 + 30, Checks::own_alone, 1},
    QueenRow{"the king in the corner, a7", "k7/p6Q/8/5ppp/8/5q2/PPP5/1K6", 50 + 24 - 4 - 3 - 50 + 30, Checks::both, 0},
    QueenRow{"doubled b-pawns", "k7/1p6/1p5Q/5ppp/3q4/8/PPP5/1K6", 100 + 24 - 4 - 7 - 45 + 30, Checks::both, 1}), RowName<QueenRow>);
// clang-format on

}  // namespace
