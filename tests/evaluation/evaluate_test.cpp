#include "evaluation/evaluate.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

constexpr std::string_view queen_up = "4k3/pppppppp/8/8/8/8/PPPPPPPP/3QK3 w - - 0 1";
constexpr std::string_view queen_up_black_to_move = "4k3/pppppppp/8/8/8/8/PPPPPPPP/3QK3 b - - 0 1";

int Evaluate(std::string_view fen, int bound) {
    const EVALUATION_SETTINGS settings;
    EVALUATION_CONTEXT context{.settings = &settings};
    const BOARD board = BoardFromFen(std::string(fen));
    return evaluate(context, board, bound, classify_position(board, no_position_type));
}

struct BoundRow {
    std::string_view name;
    std::string_view fen;
    int bound;
    bool is_at_least;
};
std::ostream& operator<<(std::ostream& out, const BoundRow& row) { return out << row.name; }

class BoundTest : public testing::TestWithParam<BoundRow> {};

TEST_P(BoundTest, TellsTheSideOfTheBound) {
    EXPECT_EQ(Evaluate(GetParam().fen, GetParam().bound) >= GetParam().bound, GetParam().is_at_least);
}

INSTANTIATE_TEST_SUITE_P(
    Evaluate, BoundTest,
    testing::Values(BoundRow{"its own score", queen_up, 1020, true}, BoundRow{"one point more", queen_up, 1021, false},
                    BoundRow{"the other side's score", queen_up_black_to_move, -1020, true},
                    BoundRow{"the other side, one point more", queen_up_black_to_move, -1019, false},
                    BoundRow{"below every score", queen_up, -31766, true},
                    BoundRow{"above every score", queen_up, 31766, false}),
    RowName<BoundRow>);

TEST(Evaluate, NeverComputesScoresNearAMate) {
    EXPECT_EQ(Evaluate(queen_up, 31767), 31766);
    EXPECT_EQ(Evaluate(queen_up, -31767), -31767);
    EXPECT_EQ(Evaluate(queen_up, 32767), 32766);
    EXPECT_EQ(Evaluate(queen_up, -32767), -32767);
    EXPECT_NE(Evaluate(queen_up, 31766), 31765) << "the last bound that is looked at";
}

TEST(Evaluate, BisectionFindsTheScore) {
    for (const std::string_view fen : {queen_up, queen_up_black_to_move, std::string_view(start_fen)}) {
        const EVALUATION_SETTINGS settings;
        EVALUATION_CONTEXT context{.settings = &settings};
        const BOARD board = BoardFromFen(std::string(fen));
        EXPECT_EQ(exact_evaluation(context, board, classify_position(board, no_position_type)),
                  board.frame().material_balance)
            << fen;
    }
}

TEST(Evaluate, DisplayedScoreIsThatOfTheSideToMove) {
    EXPECT_EQ(evaluate_for_display(BoardFromFen(std::string(queen_up)), 0), 1020);
    EXPECT_EQ(evaluate_for_display(BoardFromFen(std::string(queen_up_black_to_move)), 1000), -1020);
}

}  // namespace
