#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "evaluation/pawns/pawn_terms.h"
#include "evaluation/pawns/pawns_and_pieces.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// The terms of the pawns once more, on other squares than pawn_terms_test has: the rim, the ends of each table and the
/// nearest positions in which a rule stays silent. Tables by square are compared cell by cell.

namespace {

using namespace sided;

// Whole sums, both instances of each.

template <Colour Us, PositionType Type>
SCORE_PAIR Whole(EVALUATION_CONTEXT& context, const BOARD& board) {
    const SCORE_PAIR sum = pawn_structure(context, board, Type);
    for (const Colour side : {white, black}) {  // their points are in `pressure` and `cover` by now
        context.pawn_pressure[side] = {};
        context.pawn_cover[side] = {};
    }
    return Us == white ? sum : -sum;
}
template <Colour Us>
int WholeInEnding(EVALUATION_CONTEXT& context, const BOARD& board) {
    const int sum = pawn_structure_ending(context, board);
    return Us == white ? sum : -sum;
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
    ExpectSquares(in_opening, {{
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
    ExpectSquares(in_middle_game, {{
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
    ExpectDuos(together, [&](Square s) { return SCORE_PAIR{Cell(positional, 5, s), Cell(reckless, 5, s)}; });
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
    ExpectDefended(together, [&](Square s) { return SCORE_PAIR{Cell(positional, 5, s), Cell(reckless, 5, s)}; });
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

class PawnPairs : public testing::TestWithParam<PairRow> {};
TEST_P(PawnPairs, Count) { ExpectPair(GetParam()); }

class PawnValues : public testing::TestWithParam<ValueRow> {};
TEST_P(PawnValues, Count) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Backward, PawnPairs, testing::Values(
    PairRow{"stuck on a2", backward, "4k3/8/8/8/1p6/8/P7/4K3", {-15, -12}, "pq-3 cq-8"},
    PairRow{"free of b5 two steps on", backward, "4k3/8/1p6/8/8/8/P7/4K3", {0, 0}},
    PairRow{"two steps from b5", backward, "4k3/8/8/1p6/8/8/P7/4K3", {-15, -12}, "pq-3 cq-8"},
    PairRow{"rammed, so not asked", backward, "4k3/8/8/1p6/8/p7/P7/4K3", {0, 0}},
    PairRow{"h2, two ranks", backward, "4k3/8/8/8/6pp/8/7P/4K3", {-6, -6}, "pk-1 ck-4"},
    PairRow{"h2, three ranks", backward, "4k3/8/8/7p/6p1/8/7P/4K3", {-8, -8}, "pk-1 ck-4"},
    PairRow{"h2, three ranks, held on h4", backward, "4k3/8/8/6pp/8/8/7P/4K3", {-8, -8}, "pk-1 ck-4"},
    PairRow{"h2, four ranks", backward, "4k3/8/7p/6p1/8/8/7P/4K3", {-9, -9}, "pk-1 ck-4"},
    PairRow{"h2, five ranks", backward, "4k3/7p/8/6p1/8/8/7P/4K3", {-11, -10}, "pk-1 ck-4"},
    PairRow{"stuck on g3", backward, "4k3/8/8/7p/8/6P1/4P3/4K3", {-15, -12}, "pk-3 ck-8"},
    PairRow{"g3 with help from f2", backward, "4k3/8/8/7p/8/6P1/5P2/4K3", {0, 0}},
    PairRow{"behind a defended pawn of its own", backward, "4k3/8/6P1/5P1p/8/6P1/8/4K3", {-8, -8}, "pk-1 ck-4"},
    PairRow{"behind a loose pawn of its own", backward, "4k3/8/6P1/4P2p/8/6P1/8/4K3", {-15, -12}, "pk-3 ck-8"},
    PairRow{"b5 against a7", backward, "4k3/p7/8/1P6/8/8/8/4K3", {-10, -5}, "pq-1 cq-3"},
    PairRow{"b5 against a7 and b7", backward, "4k3/pp6/8/1P6/8/8/8/4K3", {-3, -3}, "pq-1 cq-1"},
    PairRow{"a duo at home", backward, "4k3/8/8/8/5p1p/8/6PP/4K3", {-10, -5}, "ck-3"},
    PairRow{"a duo at home, five ranks", backward, "4k3/6p1/8/8/5p1p/8/6PP/4K3", {-3, -3}, "ck-1"},
    PairRow{"a duo that its neighbour helps on", backward, "4k3/8/8/5p1p/8/8/6PP/4K3", {0, 0}},
    PairRow{"a duo on the fourth rank", backward, "4k3/8/5p1p/8/6PP/8/8/4K3", {0, 0}},
    PairRow{"no way for its helper", backward, "4k3/8/3p4/8/4P3/3p4/3P4/4K3", {-10, -5}, "pc-1 cc-3"},
    PairRow{"a way for its helper", backward, "4k3/8/3p4/8/4P3/8/3P4/4K3", {0, 0}},
    PairRow{"c2 counts for the centre", backward, "4k3/8/8/8/1p6/8/2P5/4K3", {-15, -12}, "pc-3 cc-8"},
    PairRow{"f2 counts for the centre", backward, "4k3/8/8/8/6p1/8/5P2/4K3", {-15, -12}, "pc-3 cc-8"},
    PairRow{"b2 counts for the wing", backward, "4k3/8/8/8/p7/8/1P6/4K3", {-15, -12}, "pq-3 cq-8"},
    PairRow{"one on each wing", backward, "4k3/8/8/8/1p4p1/8/P6P/4K3", {-30, -24}, "pq-3 cq-8 pk-3 ck-8"}),
    RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Isolated, PawnPairs, testing::Values(
    PairRow{"h4", isolated, "4k3/8/8/8/7P/8/8/4K3", {-18, -6}, "ck-4"},
    PairRow{"b3 against b7", isolated, "4k3/1p6/8/8/8/1P6/8/4K3", {-14, -4}, "cq-2"},
    PairRow{"three of them", isolated, "4k3/8/8/8/P1P4P/8/8/4K3", {-54, -18}, "cq-4 cc-4 ck-4"},
    PairRow{"rims are no neighbours", isolated, "4k3/8/8/8/P7/7P/8/4K3", {-36, -12}, "cq-4 ck-4"},
    PairRow{"beside a doubled one", isolated, "4k3/8/8/P7/P7/8/7P/4K3", {-18, -6}, "ck-4"},
    PairRow{"a neighbour far ahead", isolated, "4k3/7P/8/8/8/8/6P1/4K3", {0, 0}},
    PairRow{"d4 against d7", isolated, "4k3/3p4/8/8/3P4/8/8/4K3", {-14, -4}, "cc-2"},
    PairRow{"queen pawn against c7 and e7", queen_pawn, "4k3/2p1p3/8/8/3P4/8/8/4K3", {-8, 12}, "cc-10 pc8"},
    PairRow{"queen pawn against b5 and f5", queen_pawn, "4k3/8/8/1p3p2/3P4/8/8/4K3", {-8, 12}, "cc-10 pc8"},
    PairRow{"queen pawn against c6 and e7", queen_pawn, "4k3/4p3/2p5/8/3P4/8/8/4K3", {-6, 15}, "cc-10 pc6 Cc3"},
    PairRow{"queen pawn against e6 and c7", queen_pawn, "4k3/2p5/4p3/8/3P4/8/8/4K3", {-6, 15}, "cc-10 pc5 Cc3"},
    PairRow{"queen pawn against c6 and d7", queen_pawn, "4k3/3p4/2p5/8/3P4/8/8/4K3", {0, 0}},
    PairRow{"queen pawn on d3", queen_pawn, "4k3/8/8/8/8/3P4/8/4K3", {0, 0}},
    PairRow{"queen pawn on d5", queen_pawn, "4k3/8/8/3P4/8/8/8/4K3", {0, 0}},
    PairRow{"queen pawn beside c2", queen_pawn, "4k3/8/8/8/3P4/8/2P5/4K3", {0, 0}},
    PairRow{"queen pawn beside e6", queen_pawn, "4k3/8/4P3/8/3P4/8/8/4K3", {0, 0}},
    PairRow{"queen pawn with a and h", queen_pawn, "4k3/8/8/8/P2P3P/8/8/4K3", {-8, 12}, "cc-10 pc8"}),
    RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Together, PawnPairs, testing::Values(
    PairRow{"duo and defended at once", together, "4k3/1ppp4/8/8/2PP4/1P6/8/4K3", {6 + 4 + 9, 10 + 2 + 12}},
    PairRow{"a passed pawn behind another", together, "4k3/8/1P6/8/1PP5/8/8/4K3", {2, 6}},
    PairRow{"the foremost passed pawns", together, "4k3/8/1PP5/8/8/8/8/4K3", {0, 0}},
    PairRow{"defended passed pawn", together, "4k3/4p3/8/1P6/2P5/8/8/4K3", {0, 0}},
    PairRow{"defended twice counts once", together, "4k3/2ppp3/8/3P4/2P1P3/8/8/4K3", {7, 7}},
    PairRow{"apart", together, "4k3/p1p5/8/8/P1P5/8/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Doubled, PawnPairs, testing::Values(
    PairRow{"two with a neighbour", doubled, "4k3/8/8/8/7P/6P1/7P/4K3", {-16, -6}, "pk-2 ck-3"},
    PairRow{"two with a neighbour before a pawn", doubled, "4k3/8/8/7p/7P/6P1/7P/4K3", {-16, -6}, "pk-2 ck-3"},
    PairRow{"two isolated", doubled, "4k3/8/8/8/6P1/8/6P1/4K3", {-50, -30}, "pk-2 ck-10"},
    PairRow{"two isolated, one rank", doubled, "4k3/8/8/8/1p6/1P6/1P6/4K3", {-30, -10}, "pq-1 cq-7"},
    PairRow{"two isolated, two ranks", doubled, "4k3/8/6p1/8/6P1/8/6P1/4K3", {-34, -14}, "pk-1 ck-7"},
    PairRow{"two isolated, three ranks", doubled, "4k3/8/p7/8/8/P7/P7/4K3", {-36, -15}, "pq-1 cq-7"},
    PairRow{"two isolated, four ranks", doubled, "4k3/7p/8/8/8/7P/7P/4K3", {-39, -17}, "pk-1 ck-7"},
    PairRow{"an enemy between them", doubled, "4k3/8/8/1P6/1p6/8/1P6/4K3", {-50, -30}, "pq-2 cq-10"},
    PairRow{"three with a neighbour", doubled, "4k3/8/8/P7/P7/P7/1P6/4K3", {-70, -70}, "pq-2 cq-8"},
    PairRow{"three with a neighbour, before a pawn", doubled, "4k3/p7/8/P7/P7/P7/1P6/4K3", {-65, -67}, "pq-2 cq-8"},
    PairRow{"three isolated", doubled, "4k3/8/8/7P/7P/7P/8/4K3", {-90, -90}, "pk-2 ck-8"},
    PairRow{"three isolated, before a pawn", doubled, "4k3/8/8/7p/7P/7P/7P/4K3", {-85, -82}, "pk-2 ck-8"},
    PairRow{"four isolated", doubled, "4k3/8/7P/7P/7P/7P/8/4K3", {-90, -90}, "pk-2 ck-8"},
    PairRow{"c-file counts for the centre", doubled, "4k3/8/8/8/2P5/8/2P5/4K3", {-50, -30}, "pc-2 cc-10"},
    PairRow{"two files", doubled, "4k3/8/8/8/8/1P4P1/1P4P1/4K3", {-100, -60}, "pq-2 cq-10 pk-2 ck-10"},
    PairRow{"two files side by side", doubled, "4k3/8/8/8/8/1PP5/1PP5/4K3", {-32, -12}, "pq-2 cq-3 pc-2 cc-3"},
    PairRow{"an enemy behind is no second pawn", doubled, "4k3/8/8/8/8/1P6/1p6/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Connected, PawnPairs, testing::Values(
    PairRow{"g7 and h7", connected, "k7/6PP/8/8/8/8/8/4K3", {125, 137}, "pk3 Ck-5"},
    PairRow{"b6 and c6", connected, "7k/8/1PP5/8/8/8/8/4K3", {55, 62}, "pq3 Cq-5"},
    PairRow{"c4 and d4", connected, "4k3/8/8/8/2PP4/8/8/4K3", {25, 22}, "pc3 Cc-5"},
    PairRow{"d3 and e3", connected, "4k3/8/8/8/8/3PP3/8/4K3", {20, 13}, "pc3 Cc-5"},
    PairRow{"e2 and f2", connected, "4k3/8/8/8/8/8/4PP2/4K3", {18, 12}, "pk3 Ck-5"},
    PairRow{"e5 and f5", connected, "4k3/8/8/4PP2/8/8/8/4K3", {40, 43}, "pk3 Ck-5"},
    PairRow{"f5 and g4", connected, "4k3/8/8/5P2/6P1/8/8/4K3", {36, 39}, "pk3 Ck-5"},
    PairRow{"c6 and b4", connected, "4k3/8/2P5/8/1P6/8/8/4K3", {38, 43}, "pq3 Cq-5"},
    PairRow{"d6 and e3", connected, "4k3/8/3P4/8/8/4P3/8/4K3", {27, 31}, "pc3 Cc-5"},
    PairRow{"g6 and h2", connected, "4k3/8/6P1/8/8/8/7P/4K3", {16, 18}, "pk3 Ck-5"},
    PairRow{"g7 and h2", connected, "k7/6P1/8/8/8/8/7P/4K3", {25, 27}, "pk3 Ck-5"},
    PairRow{"a4 and b2", connected, "4k3/8/8/8/P7/8/1P6/4K3", {17, 15}, "pq3 Cq-5"},
    PairRow{"of b, c and d the first two", connected, "4k3/8/8/8/1PPP4/8/8/4K3", {25, 22}, "pq3 Cq-5"},
    PairRow{"of d, e and f the first two", connected, "4k3/8/8/8/3PPP2/8/8/4K3", {25, 22}, "pc3 Cc-5"},
    PairRow{"a to d are two pairs", connected, "4k3/8/8/8/PPPP4/8/8/4K3", {50, 44}, "pq3 Cq-5 pc3 Cc-5"},
    PairRow{"f to h are one pair", connected, "4k3/8/8/8/5PPP/8/8/4K3", {25, 22}, "pk3 Ck-5"},
    PairRow{"the foremost of a file", connected, "4k3/8/1P6/P7/8/1P6/8/4K3", {49, 56}, "pq3 Cq-5"},
    PairRow{"the neighbour is held up", connected, "4k3/7p/8/8/5PP1/8/8/4K3", {0, 0}},
    PairRow{"a and h do not touch", connected, "4k3/8/8/8/P6P/8/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Chains, PawnPairs, testing::Values(
    PairRow{"a4 by b3", chains, "4k3/8/8/8/P7/1P6/8/4K3", {-8, -2}, "cq-2"},
    PairRow{"a4 by b3 beside a3", chains, "4k3/8/8/8/P7/PP6/8/4K3", {3, 0}, "cq1"},
    PairRow{"a4, b3, a2", chains, "4k3/8/8/8/P7/1P6/P7/4K3", {6, 0}, "cq2"},
    PairRow{"a4, b3, c2", chains, "4k3/8/8/8/P7/1P6/2P5/4K3", {-5, -2}, "cq1 cc-2"},
    PairRow{"a4 by b3, h2 stands apart", chains, "4k3/8/8/8/P7/1P6/7P/4K3", {-8, -2}, "cq-2"},
    PairRow{"h4 by g3, a4 stands apart", chains, "4k3/8/8/8/P6P/6P1/8/4K3", {-8, -2}, "ck-2"},
    PairRow{"h4 by g3", chains, "4k3/8/8/8/7P/6P1/8/4K3", {-8, -2}, "ck-2"},
    PairRow{"h4, g3, f2", chains, "4k3/8/8/8/7P/6P1/5P2/4K3", {-5, -2}, "ck1 cc-2"},
    PairRow{"h4, g3, h2", chains, "4k3/8/8/8/7P/6P1/7P/4K3", {6, 0}, "ck2"},
    PairRow{"g5 by f4 and h4", chains, "4k3/8/8/6P1/5P1P/8/8/4K3", {-5, -2}, "cc-2 ck1"},
    PairRow{"b5 by a4 and c4", chains, "4k3/8/8/1P6/P1P5/8/8/4K3", {-5, -2}, "cq1 cc-2"},
    PairRow{"c5 by b4 and d4", chains, "4k3/8/8/2P5/1P1P4/8/8/4K3", {-16, -4}, "cq-2 cc-2"},
    PairRow{"d4, c3, b2", chains, "4k3/8/8/8/3P4/2P5/1P6/4K3", {-5, -2}, "cc1 cq-2"},
    PairRow{"c3 and d3 hold two each", chains, "4k3/8/8/8/2PP4/2PP4/8/4K3", {6, 0}, "cc2"},
    PairRow{"an enemy is no defender", chains, "4k3/8/8/8/P7/1p6/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Majorities, PawnPairs, testing::Values(
    PairRow{"a3", majorities, "4k3/p7/8/8/8/P7/1P6/4K3", {18, 12}, "pq3"},
    PairRow{"a5", majorities, "4k3/p7/8/P7/8/8/1P6/4K3", {18, 18}, "pq5"},
    PairRow{"b6", majorities, "4k3/p7/1P6/8/8/8/2P5/4K3", {18, 20}, "pq6"},
    PairRow{"d4", majorities, "4k3/p1p5/8/8/3P4/8/PP6/4K3", {18, 16}, "pq4"},
    PairRow{"f4", majorities, "4k3/6pp/8/8/5P2/8/6PP/4K3", {18, 16}, "pk4"},
    PairRow{"e5 is backward", majorities, "4k3/5p1p/8/4P3/8/8/6PP/4K3", {18 - 2, 10 + 8 - 7}, "pk-2 Ck3"},
    PairRow{"e5 beside d5", majorities, "4k3/5p1p/8/3PP3/8/8/6PP/4K3", {18, 18}, "pk5"},
    PairRow{"a4 before a5", majorities, "4k3/1p6/8/p7/P7/8/1PP5/4K3", {18 - 2, 10 + 6 - 7}, "pq-2 Cq3"},
    PairRow{"a3 behind a4", majorities, "4k3/8/p7/8/P7/P7/1P6/4K3", {18 - 2, 10 + 6 + 2 - 7}, "Cq3"},
    PairRow{"passed", majorities, "4k3/8/8/6P1/8/8/8/4K3", {18, 10}, "pk2"},
    PairRow{"on both wings", majorities, "4k3/p6p/8/8/8/P6P/1P4P1/4K3", {36, 24}, "pq3 pk3"},
    PairRow{"the other wing is no zone", majorities, "4k3/p5p1/8/8/8/P5P1/1P6/4K3", {18, 12}, "pq3"},
    PairRow{"d2 alone is none", majorities, "4k3/8/8/8/8/8/3P4/4K3", {0, 0}},
    PairRow{"c2 alone is one", majorities, "4k3/8/8/8/8/8/2P5/4K3", {18, 10}, "pq2"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Centre, PawnPairs, testing::Values(
    PairRow{"e4 held from f3", centre_of_board, "4k3/8/8/8/8/5P2/8/4K3", {4 + 2, 12 + 1}, "pc6 cc2"},
    PairRow{"e4 held from f3, f7 may come", centre_of_board, "4k3/5p2/8/8/8/5P2/8/4K3", {2, 4}, "pc4"},
    PairRow{"d5 held from e4", centre_of_board, "4k3/8/8/8/4P3/5P2/8/4K3", {4 + 2 + 2, 12 + 1 + 2}, "pc7 cc2"},
    PairRow{"one pawn each", centre_of_board, "4k3/4p3/8/8/8/8/3P4/4K3", {4, 2}, "cc4"},
    PairRow{"two more pawns", centre_of_board, "4k3/8/8/8/8/8/3PP3/4K3", {8 + 2, 4 + 2}, "cc8 pc1"},
    PairRow{"one pawn fewer", centre_of_board, "4k3/8/4p3/8/8/8/2P5/4K3", {0, 0}},
    PairRow{"d2 alone", centre_of_board, "4k3/8/8/8/8/8/3P4/4K3", {4 + 2, 2 + 2}, "cc4 pc1"},
    PairRow{"d2 against f7", centre_of_board, "4k3/5p2/8/8/8/8/3P4/4K3", {2, 2}, "pc1"},
    PairRow{"d2 against c7", centre_of_board, "4k3/2p5/8/8/8/8/3P4/4K3", {4 + 2, 2 + 2}, "cc4 pc1"},
    PairRow{"f2 alone", centre_of_board, "4k3/8/8/8/8/8/5P2/4K3", {4, 2}, "cc4"},
    PairRow{"e5 held by both", centre_of_board, "4k3/8/3p4/8/5P2/8/8/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Patterns, PawnPairs, testing::Values(
    PairRow{"d2, e2 and d3", patterns, "4k3/8/8/8/8/3P4/3PP3/4K3", {-27, -54}, "pc-17 cc-14"},
    PairRow{"d2, e2 and e3", patterns, "4k3/8/8/8/8/4P3/3PP3/4K3", {-20, -40}, "pc-16 cc-12"},
    PairRow{"d2, e2 and g2", patterns, "4k3/8/8/8/8/8/3PP1P1/4K3", {-15, -34}, "pc-15 cc-10"},
    PairRow{"e2 and d3", patterns, "4k3/8/8/8/8/3P4/4P3/4K3", {0, 0}},
    PairRow{"e2 and h2", patterns, "4k3/8/8/8/8/8/4P2P/4K3", {0, 0}},
    PairRow{"d3 alone", patterns, "4k3/8/8/8/8/3P4/8/4K3", {0, 0}},
    PairRow{"e2, e3 of the enemy, and g2", patterns, "4k3/8/8/8/8/4p3/4P1P1/4K3", {-12, -20}, "pc-6 cc-6"},
    PairRow{"d4 and c2 against d5", patterns, "4k3/2p5/8/3p4/3P4/8/2P4P/4K3", {-12, -20}, "pc-6"},
    PairRow{"d4 and c2 behind d5", patterns, "4k3/8/8/3P4/3P4/8/2P5/4K3", {-2, -14}, "pc-3"},
    PairRow{"d4, c2 and c3", patterns, "4k3/8/8/8/3P4/2P5/2P5/4K3", {-2, -14}, "pc-3"},
    PairRow{"d4, c3 and b2", patterns, "4k3/8/8/8/3P4/2P5/1P6/4K3", {10, 8}, "cc3"},
    PairRow{"d4, c4 and e3", patterns, "4k3/8/8/8/2PP4/4P3/8/4K3", {8, 12}, "pc3"},
    PairRow{"d4, c3 and d2", patterns, "4k3/8/8/8/3P4/2P5/3P4/4K3", {10, 8}, "pc-4 cc1"},
    PairRow{"d4, c4, a2 and f2", patterns, "4k3/8/8/8/2PP4/8/P4P2/4K3", {-6, 2}, "cc-2"},
    PairRow{"d4 and c3 against a7 and f7", patterns, "4k3/p4p2/8/8/3P4/2P5/8/4K3", {-6, 2}, "cc-2"},
    PairRow{"d4 and c3 against e7", patterns, "4k3/4p3/8/8/3P4/2P5/8/4K3", {10, 8}, "cc3"},
    PairRow{"d4 and c3 against e2", patterns, "4k3/8/8/8/3P4/2P5/4p3/6K1", {10, 8}, "cc3"},
    PairRow{"c4 and d3", patterns, "4k3/8/8/8/2P5/3P4/8/4K3", {0, 0}},
    PairRow{"e4, f2 and f3", patterns, "4k3/8/8/8/4P3/5P2/5P2/4K3", {3, -4}, "pk-3 cc2"},
    PairRow{"e4, f3 and f4", patterns, "4k3/8/8/8/4PP2/5P2/8/4K3", {6, 14}, "pk6 cc2"},
    PairRow{"e4 and f2 behind e5", patterns, "4k3/8/8/4P3/4P3/8/5P2/4K3", {0, -8}, "pk-3"},
    PairRow{"e4, f4 and f2 against e5", patterns, "4k3/8/8/4p3/4PP2/8/5P2/4K3", {0, -6}, "pk2"},
    PairRow{"e4 and g2", patterns, "4k3/8/8/8/4P3/8/6P1/4K3", {0, 0}},
    PairRow{"e3 and f2", patterns, "4k3/8/8/8/8/4P3/5P2/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(MajorityAndKing, PawnPairs, testing::Values(
    PairRow{"king side, king on d8", majority_king, "3k4/7p/8/8/8/8/6PP/4K3", {20, 7}, "pk2 a12"},
    PairRow{"king side, king on e8", majority_king, "4k3/7p/8/8/8/8/6PP/4K3", {0, 0}},
    PairRow{"queen side, king on a1", majority_king, "8/p7/8/8/8/8/PP6/k3K3", {0, 0}},
    PairRow{"queen side, king on h1", majority_king, "8/p7/8/8/8/8/PP6/4K2k", {20, 7}, "pq2 a12"},
    PairRow{"four to three, king far", majority_king, "7k/ppp5/8/8/8/8/PPPP4/4K3", {20, 7}, "pq2 a12"},
    PairRow{"four to three with e2, king near", majority_king, "3k4/ppp5/8/8/8/8/PP1PP3/4K3", {5, 14}, "pq5 a20"},
    PairRow{"four to two, king near", majority_king, "k7/1p6/8/8/8/8/PPP5/4K3", {0, 0}},
    PairRow{"one each way", majority_king, "3k4/p6p/8/8/8/8/PP4PP/4K3", {20, 7}, "pk2 a12"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(BlockedCentre, PawnPairs, testing::Values(
    PairRow{"e2 by the own king", blocked_centre, "4k3/8/8/8/8/4K3/4P3/8", {-18, -28}, "pc-6 cc-4"},
    PairRow{"d2 by an enemy pawn", blocked_centre, "4k3/8/8/8/8/3p4/3P4/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"d2 by an enemy queen", blocked_centre, "4k3/8/8/8/8/3q4/3P4/4K3", {-18, -28}, "pc-6 cc-4"},
    PairRow{"d2 with a knight on d4", blocked_centre, "4k3/8/8/8/3N4/8/3P4/4K3", {0, 0}},
    PairRow{"d3 by a knight", blocked_centre, "4k3/8/8/8/3N4/3P4/8/4K3", {0, 0}},
    PairRow{"c2 by the own king", blocked_centre, "4k3/8/8/8/8/2K5/2P5/8", {-8, -10}, "pc-2"},
    PairRow{"c2 by a rook in a closed centre", blocked_centre, "4k3/8/8/3p4/3P4/2R5/2P5/4K3", {-25, -25}, "pc-4"},
    PairRow{"c2 by a rook against d5", blocked_centre, "4k3/8/8/3p4/8/2R5/2P5/4K3", {-8, -10}, "pc-2"},
    PairRow{"c2 and d2", blocked_centre, "4k3/8/8/8/8/2NB4/2PP4/4K3", {-26, -38}, "pc-8 cc-4"},
    PairRow{"b2 and f2", blocked_centre, "4k3/8/8/8/8/1N3N2/1P3P2/4K3", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(QueenPawnAndPieces, PawnPairs, testing::Values(
    PairRow{"59 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/RN1QKBNR", {0, 25}},
    PairRow{"58 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/QN1QK1NN", {-6, 10}},
    PairRow{"57 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/RN1QK1NN", {-6, 10}},
    PairRow{"49 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/Q2QK3", {-6, 10}},
    PairRow{"48 units", queen_pawn_pieces, "rnbqkbnr/8/8/8/3P4/8/8/R2QK1N1", {0, 0}},
    PairRow{"39 units", queen_pawn_pieces, "rn1qk3/8/8/8/3P4/8/8/R2QK1NR", {0, 0}},
    PairRow{"38 units", queen_pawn_pieces, "r2qk2r/8/8/8/3P4/8/8/R2QK2R", {-12, -4}},
    PairRow{"29 units", queen_pawn_pieces, "r2qk3/8/8/8/3P4/8/8/R3K1RR", {-12, -4}},
    PairRow{"28 units", queen_pawn_pieces, "r2qk3/8/8/8/3P4/8/8/R2QK3", {-18, -16}},
    PairRow{"bishop on h8", queen_pawn_pieces, "4k2B/8/8/8/3P4/8/8/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop on a7", queen_pawn_pieces, "4k3/B7/8/8/3P4/8/8/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop on b2 behind a knight", queen_pawn_pieces, "4k3/8/8/8/3P4/2N5/1B6/4K3", {-18, -18}, "cc2"},
    PairRow{"bishop on f8", queen_pawn_pieces, "4kB2/8/8/8/3P4/8/8/4K3", {-18, -15}, "cc1"},
    PairRow{"bishop on b5", queen_pawn_pieces, "6k1/8/8/1B6/3P4/8/8/5K2", {-18, -16}},
    PairRow{"bishop of the enemy", queen_pawn_pieces, "4k3/8/8/8/3P4/4b3/8/5K2", {-18, -16}},
    PairRow{"rook on d2", queen_pawn_pieces, "4k3/8/8/8/3P4/8/3R4/5K2", {-12, -10}, "cc2"},
    PairRow{"rooks on d1 and d3", queen_pawn_pieces, "4k3/8/8/8/3P4/3R4/8/3R1K2", {-12, -10}, "cc2"},
    PairRow{"rook on d5", queen_pawn_pieces, "4k3/8/8/3R4/3P4/8/8/5K2", {-18, -16}},
    PairRow{"the enemy's is no isolated one", queen_pawn_pieces, "4k3/8/2p5/3p4/3P4/8/8/4K3", {-18, -16}},
    PairRow{"the enemy's are doubled", queen_pawn_pieces, "4k3/8/3p4/3p4/3P4/8/8/4K3", {-18, -16}},
    PairRow{"both have one, with rooks and bishops", queen_pawn_pieces, "4k3/8/8/3p4/3P4/2B5/3R4/4K3", {0, 0}, "cc-6"},
    PairRow{"on d3", queen_pawn_pieces, "4k3/8/8/8/8/3P4/3R4/5K2", {0, 0}},
    PairRow{"beside e2", queen_pawn_pieces, "4k3/8/8/8/3P4/8/3RP3/5K2", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(PassedAndPieces, PawnPairs, testing::Values(
    PairRow{"rook behind h5", passed_pieces, "6k1/8/8/7P/8/8/8/K6R", {5 + 6, 5 + 8}, "pk1"},
    PairRow{"c6 is free", passed_pieces, "6k1/8/2P5/8/8/8/8/K7", {6, 8}, "pc1"},
    PairRow{"f5 is free", passed_pieces, "k7/8/8/5P2/8/8/8/K7", {6, 8}, "pc1"},
    PairRow{"b7 is free", passed_pieces, "6k1/1P6/8/8/8/8/8/K7", {6, 8}, "pq1"},
    PairRow{"knight before c6", passed_pieces, "6k1/2n5/2P5/8/8/8/8/K7", {-28, -30}, "Cc2"},
    PairRow{"bishop before c6", passed_pieces, "6k1/2b5/2P5/8/8/8/8/K7", {-24, -26}, "Cc2"},
    PairRow{"king before c6", passed_pieces, "8/2k5/2P5/8/8/8/8/K7", {-35, -37}, "Cc2"},
    PairRow{"queen before g7", passed_pieces, "k5q1/6P1/8/8/8/8/8/K7", {-36, -41}, "Ck2"},
    PairRow{"rook before g7", passed_pieces, "k5r1/6P1/8/8/8/8/8/K7", {-54 - 2, -62}, "Ck2"},
    PairRow{"king before g7", passed_pieces, "6k1/6P1/8/8/8/8/8/K7", {-90, -103}, "Ck2"},
    PairRow{"knight before g5", passed_pieces, "k7/8/6n1/6P1/8/8/8/K7", {-12, -10}, "Ck2"},
    PairRow{"knight before g4", passed_pieces, "k7/8/8/6n1/6P1/8/8/K7", {-6, -5}, "Ck2"},
    PairRow{"queen before b4", passed_pieces, "6k1/8/8/1q6/1P6/8/8/K7", {-3, -2}, "Cq2"},
    PairRow{"bishop before b3", passed_pieces, "6k1/8/8/8/1b6/1P6/8/K7", {-3, -3}, "Cq2"},
    PairRow{"bishop before b2", passed_pieces, "6k1/8/8/8/8/1b6/1P6/K7", {-1, -2}, "Cq2"},
    PairRow{"king before h2", passed_pieces, "8/8/8/8/8/7k/7P/K7", {-2, -3}, "Ck2"},
    PairRow{"own rook behind, enemy rook ahead", passed_pieces, "1r4k1/8/8/8/1P6/8/8/KR6", {3, 5}},
    PairRow{"own rook ahead of the foremost", passed_pieces, "6k1/1R6/8/1P6/8/8/8/K7", {6, 8}, "pq1"},
    PairRow{"own rook between two", passed_pieces, "6k1/8/8/1P6/8/1R6/1P6/K7", {5 + 6, 5 + 8}, "pq1"},
    PairRow{"two own rooks behind", passed_pieces, "6k1/8/8/8/1P6/1R6/1R6/K7", {5, 5}},
    PairRow{"own rook behind a knight", passed_pieces, "6k1/8/8/8/1P6/1N6/1R6/K7", {5, 5}},
    PairRow{"enemy rook behind a knight", passed_pieces, "6k1/8/8/8/6P1/6N1/6r1/K7", {-4, -2}},
    PairRow{"enemy rook far ahead", passed_pieces, "k5r1/6n1/8/8/6P1/8/8/K7", {-2, 0}},
    PairRow{"one on each wing", passed_pieces, "4k3/8/8/P6P/8/8/8/K6R", {5 + 12, 5 + 16}, "pq1 pk1"},
    PairRow{"rook on the next file", passed_pieces, "k7/8/8/8/6P1/8/8/K6R", {0, 0}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(PassedByFile, PawnPairs, testing::Values(
    PairRow{"the foremost of two files", passed, "6k1/8/8/P6P/8/8/P7/K7", {26 + 26, 17 + 17}},
    PairRow{"held up from the next file", passed, "6k1/1p6/8/P7/8/8/8/K7", {0, 0}},
    PairRow{"against a passed pawn", passed, "6k1/8/8/P6p/8/8/8/K7", {26 - 15, 17 - 8}}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Whole, PawnPairs, testing::Values(
    PairRow{"middle game a2", whole_middle_game, "4k3/8/8/8/8/8/P7/4K3", {-15 - 18 + 18 + 20, -25 - 6 + 10 + 7},
            "pq4 cq-4 a12"},
    PairRow{"opening a2", whole_opening, "4k3/8/8/8/8/8/P7/4K3", {-13 - 18 + 18 + 20, -20 - 6 + 10 + 7},
            "pq4 cq-4 a12"},
    PairRow{"all pawns at home", whole_opening, "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR", {0, 0},
            "pc-15 cc-10 Pc-15 Cc-10"}), RowName<PairRow>);

INSTANTIATE_TEST_SUITE_P(Backward, PawnValues, testing::Values(
    ValueRow{"stuck on a2", ending_backward, "4k3/8/8/8/1p6/8/P7/4K3", -20},
    ValueRow{"h2, two ranks", ending_backward, "4k3/8/8/8/6pp/8/7P/4K3", -14},
    ValueRow{"h2, three ranks", ending_backward, "4k3/8/8/7p/6p1/8/7P/4K3", -15},
    ValueRow{"h2, four ranks", ending_backward, "4k3/8/7p/6p1/8/8/7P/4K3", -15},
    ValueRow{"h2, five ranks", ending_backward, "4k3/7p/8/6p1/8/8/7P/4K3", -16},
    ValueRow{"g3 with help from f2", ending_backward, "4k3/8/8/7p/8/6P1/5P2/4K3", 0},
    ValueRow{"b5 against a7", ending_backward, "4k3/p7/8/1P6/8/8/8/4K3", -10},
    ValueRow{"b5 against a7 and b7", ending_backward, "4k3/pp6/8/1P6/8/8/8/4K3", -8},
    ValueRow{"a duo at home", ending_backward, "4k3/8/8/8/5p1p/8/6PP/4K3", -10},
    ValueRow{"a duo at home, five ranks", ending_backward, "4k3/6p1/8/8/5p1p/8/6PP/4K3", -8}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Isolated, PawnValues, testing::Values(
    ValueRow{"h4", ending_isolated, "4k3/8/8/8/7P/8/8/4K3", -14},
    ValueRow{"b3 against b7", ending_isolated, "4k3/1p6/8/8/8/1P6/8/4K3", -10},
    ValueRow{"three of them", ending_isolated, "4k3/8/8/8/P1P4P/8/8/4K3", -42},
    ValueRow{"doubled ones", ending_isolated, "4k3/8/8/8/6P1/8/6P1/4K3", 0},
    ValueRow{"a neighbour far ahead", ending_isolated, "4k3/7P/8/8/8/8/6P1/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Together, PawnValues, testing::Values(
    ValueRow{"a passed pawn behind another", ending_together, "4k3/8/1P6/8/1PP5/8/8/4K3", 4},
    ValueRow{"behind a passed pawn, itself held up", ending_together, "4k3/8/1P6/8/p7/1PP5/8/4K3", 6},
    ValueRow{"on the seventh rank", ending_together, "k7/6PP/8/8/8/8/8/4K3", 0},
    ValueRow{"defended on the seventh rank", ending_together, "k7/7P/6P1/8/8/8/8/4K3", 0},
    ValueRow{"defended passed pawn", ending_together, "4k3/4p3/8/1P6/2P5/8/8/4K3", 3},
    ValueRow{"duo and defended at once", ending_together, "4k3/1ppp4/8/8/2PP4/1P6/8/4K3", 4 + 3 + 4}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Doubled, PawnValues, testing::Values(
    ValueRow{"two with a neighbour", ending_doubled, "4k3/8/8/8/7P/6P1/7P/4K3", -18},
    ValueRow{"two isolated", ending_doubled, "4k3/8/8/8/6P1/8/6P1/4K3", -48},
    ValueRow{"two isolated, one rank", ending_doubled, "4k3/8/8/8/1p6/1P6/1P6/4K3", -40},
    ValueRow{"two isolated, two ranks", ending_doubled, "4k3/8/6p1/8/6P1/8/6P1/4K3", -42},
    ValueRow{"two isolated, three ranks", ending_doubled, "4k3/8/p7/8/8/P7/P7/4K3", -44},
    ValueRow{"two isolated, four ranks", ending_doubled, "4k3/7p/8/8/8/7P/7P/4K3", -44},
    ValueRow{"three with a neighbour", ending_doubled, "4k3/8/8/P7/P7/P7/1P6/4K3", -70},
    ValueRow{"three with a neighbour, before a pawn", ending_doubled, "4k3/p7/8/P7/P7/P7/1P6/4K3", -65},
    ValueRow{"three isolated", ending_doubled, "4k3/8/8/7P/7P/7P/8/4K3", -90},
    ValueRow{"three isolated, before a pawn", ending_doubled, "4k3/8/8/7p/7P/7P/7P/4K3", -85},
    ValueRow{"one", ending_doubled, "4k3/8/8/8/8/1P6/1p6/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(DefendedPassed, PawnValues, testing::Values(
    ValueRow{"h7 by g6", ending_defended, "k7/5p1P/6P1/8/8/8/8/4K3", 78},
    ValueRow{"b7 by c6", ending_defended, "7k/1P1p4/2P5/8/8/8/8/4K3", 90},
    ValueRow{"h6 by g5", ending_defended, "k7/5p2/7P/6P1/8/8/8/4K3", 48},
    ValueRow{"c4 by b3", ending_defended, "4k3/8/p7/8/2P5/1P6/8/4K3", 10},
    ValueRow{"h4 by g3", ending_defended, "4k3/5p2/8/8/7P/6P1/8/4K3", 8},
    ValueRow{"a3 by b2", ending_defended, "4k3/2p5/8/8/8/P7/1P6/4K3", 2},
    ValueRow{"c3 by b2", ending_defended, "4k3/p7/8/8/8/2P5/1P6/4K3", 3},
    ValueRow{"e4 by f3", ending_defended, "4k3/6p1/8/8/4P3/5P2/8/4K3", 10},
    ValueRow{"f5 by e4", ending_defended, "4k3/3p4/8/5P2/4P3/8/8/4K3", 30},
    ValueRow{"g5 by f4", ending_defended, "4k3/8/4p3/6P1/5P2/8/8/4K3", 30},
    ValueRow{"one of two defenders is passed", ending_defended, "4k3/5p2/8/3P4/2P1P3/8/8/4K3", 30},
    ValueRow{"no defender", ending_defended, "4k3/2p5/8/P7/8/1P6/8/4K3", 0},
    ValueRow{"both defenders are passed", ending_defended, "4k3/8/8/3P4/2P1P3/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Connected, PawnValues, testing::Values(
    ValueRow{"g7 and h7", ending_connected, "k7/6PP/8/8/8/8/8/4K3", 147},
    ValueRow{"b6 and c6", ending_connected, "7k/8/1PP5/8/8/8/8/4K3", 93},
    ValueRow{"c4 and d4", ending_connected, "4k3/8/8/8/2PP4/8/8/4K3", 56},
    ValueRow{"d3 and e3", ending_connected, "4k3/8/8/8/8/3PP3/8/4K3", 50},
    ValueRow{"e2 and f2", ending_connected, "4k3/8/8/8/8/8/4PP2/4K3", 48},
    ValueRow{"f5 and g4", ending_connected, "4k3/8/8/5P2/6P1/8/8/4K3", 60},
    ValueRow{"c6 and b4", ending_connected, "4k3/8/2P5/8/1P6/8/8/4K3", 65},
    ValueRow{"d6 and e3", ending_connected, "4k3/8/3P4/8/8/4P3/8/4K3", 46},
    ValueRow{"g6 and h2", ending_connected, "4k3/8/6P1/8/8/8/7P/4K3", 28},
    ValueRow{"g7 and h2", ending_connected, "k7/6P1/8/8/8/8/7P/4K3", 29},
    ValueRow{"a4 and b2", ending_connected, "4k3/8/8/8/P7/8/1P6/4K3", 39},
    ValueRow{"a to d are two pairs", ending_connected, "4k3/8/8/8/PPPP4/8/8/4K3", 112},
    ValueRow{"the neighbour is held up", ending_connected, "4k3/7p/8/8/5PP1/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Chains, PawnValues, testing::Values(
    ValueRow{"a4 by b3", ending_chains, "4k3/8/8/8/P7/1P6/8/4K3", -4},
    ValueRow{"a4, b3, a2", ending_chains, "4k3/8/8/8/P7/1P6/P7/4K3", 4},
    ValueRow{"h4, g3, f2", ending_chains, "4k3/8/8/8/7P/6P1/5P2/4K3", -2},
    ValueRow{"g5 by f4 and h4", ending_chains, "4k3/8/8/6P1/5P1P/8/8/4K3", -2},
    ValueRow{"c5 by b4 and d4", ending_chains, "4k3/8/8/2P5/1P1P4/8/8/4K3", -8},
    ValueRow{"h4 by g3, a4 stands apart", ending_chains, "4k3/8/8/8/P6P/6P1/8/4K3", -4}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Majorities, PawnValues, testing::Values(
    ValueRow{"a3", ending_majorities, "4k3/p7/8/8/8/P7/1P6/4K3", 19},
    ValueRow{"a5", ending_majorities, "4k3/p7/8/P7/8/8/1P6/4K3", 27},
    ValueRow{"b6", ending_majorities, "4k3/p7/1P6/8/8/8/2P5/4K3", 29},
    ValueRow{"f4", ending_majorities, "4k3/6pp/8/8/5P2/8/6PP/4K3", 24},
    ValueRow{"e5 is backward", ending_majorities, "4k3/5p1p/8/4P3/8/8/6PP/4K3", 17 + 10 - 8},
    ValueRow{"a3 behind a4", ending_majorities, "4k3/8/p7/8/P7/P7/1P6/4K3", 17 + 7 + 2 - 8},
    ValueRow{"passed", ending_majorities, "4k3/8/8/6P1/8/8/8/4K3", 17},
    ValueRow{"on both wings", ending_majorities, "4k3/p6p/8/8/8/P6P/1P4P1/4K3", 38},
    ValueRow{"none", ending_majorities, "4k3/8/8/8/8/8/3P4/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Patterns, PawnValues, testing::Values(
    ValueRow{"d4, c4, a2 and f2", ending_patterns, "4k3/8/8/8/2PP4/8/P4P2/4K3", -6},
    ValueRow{"d4, c3 and c2", ending_patterns, "4k3/8/8/8/3P4/2P5/2P5/4K3", 0},
    ValueRow{"d4, c3 and c4", ending_patterns, "4k3/8/8/8/2PP4/2P5/8/4K3", 0},
    ValueRow{"d4 and c3 against e7", ending_patterns, "4k3/4p3/8/8/3P4/2P5/8/4K3", 0},
    ValueRow{"d4 alone", ending_patterns, "4k3/8/8/8/3P4/8/8/4K3", 0}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(MajorityAndKing, PawnValues, testing::Values(
    ValueRow{"king side, king on d8", ending_king, "3k4/7p/8/8/8/8/6PP/4K3", 18},
    ValueRow{"king side, king on e8", ending_king, "4k3/7p/8/8/8/8/6PP/4K3", 0},
    ValueRow{"four to three, king far", ending_king, "7k/ppp5/8/8/8/8/PPPP4/4K3", 18},
    ValueRow{"king side, four to three, king near", ending_king, "4k3/5ppp/8/8/8/8/3PP1PP/4K3", 14},
    ValueRow{"one each way", ending_king, "3k4/p6p/8/8/8/8/PP4PP/4K3", 18}), RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(Whole, PawnValues, testing::Values(
    ValueRow{"a2", ending_whole, "4k3/8/8/8/8/8/P7/4K3", 0 - 14 + 17 + 18},
    ValueRow{"all pawns at home", ending_whole, "4k3/pppppppp/8/8/8/8/PPPPPPPP/4K3", 0}), RowName<ValueRow>);
// clang-format on

}  // namespace
