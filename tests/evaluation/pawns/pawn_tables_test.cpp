#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/pawns/pawn_structure_walk.h"
#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/pawns/pawns_and_pieces.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// The tables by square of the pawn terms, cell by cell, and whole sums of the pawn structure.

namespace {

using namespace sided;

// Whole sums, both instances of each.

template <Colour Us, PositionType Type>
SCORE_PAIR Whole(EVALUATION_CONTEXT& context, const BOARD& board) {
    TermSum<SCORE_PAIR> terms;
    pawn_structure(context, board, Type, terms);
    const SCORE_PAIR sum = terms.sum();
    for (const Colour side : {white, black}) {  // their points are in `pressure` and `cover` by now
        context.pawn_pressure[side] = {};
        context.pawn_cover[side] = {};
    }
    return Us == white ? sum : -sum;
}
template <Colour Us>
int WholeInEnding(EVALUATION_CONTEXT& context, const BOARD& board) {
    TermSum<int> terms;
    pawn_structure_ending(context, board, terms);
    return Us == white ? terms.sum() : -terms.sum();
}

constexpr SidedTerm<SCORE_PAIR> whole_opening{Whole<white, opening>, Whole<black, opening>};
constexpr SidedTerm<SCORE_PAIR> whole_middle_game{Whole<white, middle_game>, Whole<black, middle_game>};

constexpr SidedTerm<int> ending_whole{WholeInEnding<white>, WholeInEnding<black>};

// Tables by square: the seventh rank first, as they are read from White's side.

using Ranks = std::vector<std::array<int, 8>>;

int Cell(const Ranks& ranks, int top, Square s) {
    return ranks.at(static_cast<std::size_t>(top - RankOf(s))).at(static_cast<std::size_t>(FileOf(s)));
}

/// Pawns of White and of Black, with the kings where no pawn of these tests attacks them.
std::string PawnsOnly(const std::vector<Square>& own, const std::vector<Square>& enemy) {
    std::string squares(64, '1');
    squares[h1] = 'K';
    squares[a1] = 'k';
    for (const Square s : own) squares[static_cast<std::size_t>(s)] = 'P';
    for (const Square s : enemy) squares[static_cast<std::size_t>(s)] = 'p';
    std::string board;
    for (std::size_t rank = 8; rank-- > 0;) board += squares.substr(8 * rank, 8) + (rank > 0 ? "/" : "");
    return board;
}

template <class Term, class Value>
void ExpectCell(const Term& term, const std::string& position, Value value) {
    ForBothColours(position, [&](EvaluationBuilder& builder, Colour own) {
        EXPECT_EQ((own == white ? term.of_white : term.of_black)(builder.context, builder.board), value) << position;
    });
}

/// One pawn on every square.
void ExpectSquares(const SidedTerm<SCORE_PAIR>& term, const Ranks& positional, const Ranks& reckless) {
    for (Square s = a2; s <= h7; ++s) {
        ExpectCell(term, PawnsOnly({s}, {}), SCORE_PAIR{Cell(positional, 6, s), Cell(reckless, 6, s)});
    }
}

/// Every two neighbours, and on the left a third one, so that each cell is settled. They face enemies: none is passed.
template <class Term, class Expected>
void ExpectDuos(const Term& term, Expected expected) {
    for (Square s = a2; s <= h6; ++s) {
        const int f = FileOf(s);
        if (f == 7) continue;
        ExpectCell(term, PawnsOnly({s, s + 1}, {a7 + f, a7 + f + 1}), expected(s) + expected(s + 1));
        if (f > 0) continue;
        ExpectCell(term, PawnsOnly({s, s + 1, s + 2}, {a7, b7, c7}), expected(s) + expected(s + 1) + expected(s + 2));
    }
}

/// A pawn on every square with a defender on its left, and with one on its right.
template <class Term, class Expected>
void ExpectDefended(const Term& term, Expected expected) {
    for (Square s = a3; s <= h6; ++s) {
        const int f = FileOf(s);
        if (f > 0) ExpectCell(term, PawnsOnly({s, s - 9}, {a7 + f}), expected(s));
        if (f < 7) ExpectCell(term, PawnsOnly({s, s - 7}, {a7 + f}), expected(s));
    }
}

// clang-format off
TEST(PawnTables, Opening) {
    ExpectSquares(squares_in_opening, {{
          8,  10,  10,  -6,  -6,  10,  10,   8}, {  // 7
        -12,  -2,   8,  22,  22,   6,  -6, -12}, {  // 6
        -13,  -4,   7,  14,  14,   5,  -6, -13}, {  // 5
        -14,  -6,  10,  22,  22,   6,  -6, -14}, {  // 4
        -14,  -4,   3,  10,  10,   3,  -4, -14}, {  // 3
        -13,  -4,  -8,   4,   4,  -4,  -4, -13}}, {{  // 2
          8,  10,  12,   0,   0,  10,  10,   8}, {  // 7
        -18, -14,   6,  32,  32,   6, -14, -18}, {  // 6
        -20, -14,   5,  28,  28,   5, -15, -20}, {  // 5
        -22, -15,  10,  34,  34,   6, -15, -22}, {  // 4
        -24, -15,  -3,  16,  16,  -3, -15, -24}, {  // 3
        -20, -15,  -8,   6,   6,  -6, -15, -20}});  // 2
}

TEST(PawnTables, MiddleGame) {
    ExpectSquares(squares_in_middle_game, {{
          8,  10,  10,  -6,  -6,  10,  10,   8}, {  // 7
        -12,  -2,   6,  21,  21,   6,  -6, -12}, {  // 6
        -13,  -4,   5,  21,  21,   5,  -6, -13}, {  // 5
        -14,  -6,   6,  18,  18,   6,  -6, -14}, {  // 4
        -14,  -7,   3,  12,  12,   3,  -7, -14}, {  // 3
        -15,  -6,  -6,   8,   8,  -4,  -6, -15}}, {{  // 2
          8,  10,  10,   0,   0,  10,  10,   8}, {  // 7
        -19, -12,   4,  26,  26,   6, -12, -19}, {  // 6
        -21, -12,   3,  28,  28,   5, -13, -21}, {  // 5
        -23, -13,   4,  28,  28,   6, -13, -23}, {  // 4
        -25, -17,  -3,   6,   6,  -3, -17, -25}, {  // 3
        -25, -18,  -6,   0,   0,  -6, -15, -25}});  // 2
}

TEST(PawnTables, Duo) {
    const Ranks positional = {
        { 7, 10, 12, 16, 16, 12, 10,  7},   // 6
        { 3,  4,  8, 10, 10,  8,  4,  3},   // 5
        { 2,  2,  6,  9,  9,  8,  2,  2},   // 4
        { 0,  0,  1,  3,  3,  1,  0,  0},   // 3
        { 6,  6,  4,  0,  0,  4,  6,  6}};  // 2
    const Ranks reckless = {
        {10, 14, 18, 24, 24, 18, 14, 10},   // 6
        { 3,  8, 10, 14, 14, 10,  8,  3},   // 5
        { 2,  6, 10, 12, 12, 10,  6,  2},   // 4
        { 0,  0,  1,  4,  4,  1,  0,  0},   // 3
        { 2,  2,  1,  0,  0,  1,  2,  2}};  // 2
    ExpectDuos(duo_and_defended, [&](Square s) { return SCORE_PAIR{Cell(positional, 5, s), Cell(reckless, 5, s)}; });
}

TEST(PawnTables, Defended) {
    const Ranks positional = {
        { 6,  6,  9, 10, 10,  9,  6,  6},   // 6
        { 4,  5,  7,  7,  7,  6,  4,  4},   // 5
        { 4,  4,  4,  5,  5,  4,  4,  4},   // 4
        { 4,  5,  4,  3,  3,  4,  5,  4}};  // 3
    const Ranks reckless = {
        { 2,  4,  9, 12, 12,  9,  4,  2},   // 6
        { 0,  0,  6,  7,  7,  6,  0,  0},   // 5
        { 0,  0,  2,  5,  5,  2,  0,  0},   // 4
        { 0,  0,  0,  0,  0,  0,  0,  0}};  // 3
    ExpectDefended(duo_and_defended, [&](Square s) { return SCORE_PAIR{Cell(positional, 5, s), Cell(reckless, 5, s)}; });
}

TEST(PawnTables, Ending) {
    const Ranks ranks = {
        {17, 18, 18, 18, 18, 18, 18, 17},   // 7
        { 9, 11, 11, 10, 10, 11, 11,  9},   // 6
        { 6,  8,  8,  7,  7,  8,  8,  6},   // 5
        { 3,  6,  6,  5,  5,  6,  6,  3},   // 4
        { 0,  4,  4,  3,  3,  4,  4,  0},   // 3
        { 0,  4,  4,  3,  3,  4,  4,  0}};  // 2
    for (Square s = a2; s <= h7; ++s) ExpectCell(ending_squares, PawnsOnly({s}, {}), Cell(ranks, 6, s));
}

TEST(PawnTables, DuoInEnding) {
    const Ranks ranks = {
        {10, 10, 10, 10, 10, 10, 10, 10},   // 6
        { 7,  7,  7,  7,  7,  7,  7,  7},   // 5
        { 3,  4,  4,  4,  4,  4,  4,  3},   // 4
        { 2,  3,  3,  3,  3,  3,  3,  2},   // 3
        { 2,  3,  3,  3,  3,  3,  3,  2}};  // 2
    ExpectDuos(ending_together, [&](Square s) { return Cell(ranks, 5, s); });
}

TEST(PawnTables, DefendedInEnding) {
    const Ranks ranks = {
        { 3,  3,  3,  3,  3,  3,  3,  3},   // 6
        { 3,  3,  3,  3,  3,  3,  3,  3},   // 5
        { 5,  3,  3,  3,  3,  3,  3,  5},   // 4
        { 3,  4,  4,  4,  4,  4,  4,  3}};  // 3
    ExpectDefended(ending_together, [&](Square s) { return Cell(ranks, 5, s); });
}
// clang-format on

TEST(PawnTables, Passed) {
    constexpr std::array by_file{7, 8, 7, 5, 5, 7, 8, 7};
    constexpr std::array positional{0, 10, 12, 18, 30, 55, 140};
    constexpr std::array reckless{0, 5, 7, 10, 20, 46, 140};
    for (Square s = a2; s <= h7; ++s) {
        const auto r = static_cast<std::size_t>(RankOf(s));
        const int k = by_file.at(static_cast<std::size_t>(FileOf(s)));
        ExpectCell(passed, PawnsOnly({s}, {}), SCORE_PAIR{k * positional.at(r) / 8, k * reckless.at(r) / 8});
    }
}

class WholePawnPairs : public testing::TestWithParam<PairRow> {};
TEST_P(WholePawnPairs, Count) { ExpectPair(GetParam()); }

class WholePawnValues : public testing::TestWithParam<ValueRow> {};
TEST_P(WholePawnValues, Count) { ExpectValue(GetParam()); }

// clang-format off

INSTANTIATE_TEST_SUITE_P(Whole, WholePawnPairs, testing::Values(
    PairRow{"middle game a2", whole_middle_game, "4k3/8/8/8/8/8/P7/4K3", {-15 - 18 + 18 + 20, -25 - 6 + 10 + 7},
            "pq4 cq-4 a12"},
    PairRow{"opening a2", whole_opening, "4k3/8/8/8/8/8/P7/4K3", {-13 - 18 + 18 + 20, -20 - 6 + 10 + 7},
            "pq4 cq-4 a12"},
    PairRow{"all pawns at home", whole_opening, "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR", {0, 0},
            "pc-15 cc-10 Pc-15 Cc-10"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Whole, WholePawnValues, testing::Values(
    ValueRow{"a2", ending_whole, "4k3/8/8/8/8/8/P7/4K3", 0 - 14 + 17 + 18},
    ValueRow{"all pawns at home", ending_whole, "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3", 0}), RowName<ValueRow>);
// clang-format on

}  // namespace
