#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

#include "evaluation/endings/pawn_ending.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure_walk.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// Kings and pawns alone.

namespace {

using namespace sided;

constexpr int sign(Colour us) { return us == white ? 1 : -1; }

/// The routine of kings and pawns without what the pawn structure gives.
template <Colour Us>
int PawnEnding(EVALUATION_CONTEXT& context, const BOARD& board) {
    EVALUATION_CONTEXT fresh{context.settings};
    find_passed_pawns(fresh, board);
    const EVALUATION_RESULT result = evaluate_pawn_ending(fresh, board, 0);
    EXPECT_FALSE(result.lazy);
    const int for_us = board.side_to_move == Us ? result.score : -result.score;
    TermSum<int> structure;
    pawn_structure_ending(context, board, structure);
    return for_us - 3 * sign(Us) * structure.sum();
}

constexpr SidedTerm<int> pawn_endings{PawnEnding<white>, PawnEnding<black>};

class PawnEndings : public testing::TestWithParam<ValueRow> {};
TEST_P(PawnEndings, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
// Three times the material, three times the passed pawns, the race, and three for every square reached first.
INSTANTIATE_TEST_SUITE_P(WithoutStructure, PawnEndings, testing::Values(
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
    ValueRow{"the same with the other side to move", pawn_endings, "8/8/8/1p1k4/1P6/8/8/1K6 b - - 0 1", 3 * (10 - 51)}),
    RowName<ValueRow>);
// clang-format on

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
INSTANTIATE_TEST_SUITE_P(WithStructure, WholePawnEndings, testing::Values(
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
            position.context = EVALUATION_CONTEXT(&position.settings);
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
    Estimates, PawnEndingLazyTest,
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

}  // namespace
