#include "evaluation/endings/ending.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

#include "evaluation/pieces/bishops.h"
#include "support/evaluation_builder.h"
#include "support/row_name.h"

namespace {

// --- Winning chances ---

struct ChanceRow {
    std::string_view name;
    std::string_view fen;
    bool can_win;  // White
};
std::ostream& operator<<(std::ostream& out, const ChanceRow& row) { return out << row.name; }

class WinningChances : public testing::TestWithParam<ChanceRow> {};

TEST_P(WinningChances, FollowFromTheMaterial) {
    const BOARD board = BoardFromFen(std::string(GetParam().fen));
    EXPECT_EQ(can_win(board.white_pieces()), GetParam().can_win);
    EXPECT_EQ(can_win(WithColoursExchanged(board).black_pieces()), GetParam().can_win);
    EXPECT_TRUE(can_win(board.black_pieces()));
}

INSTANTIATE_TEST_SUITE_P(Ending, WinningChances,
                         testing::Values(ChanceRow{"bare king", "4k3/pp6/8/8/8/8/8/4K3 w - - 0 1", false},
                                         ChanceRow{"a pawn", "4k3/pp6/8/8/8/8/P7/4K3 w - - 0 1", true},
                                         ChanceRow{"a rook", "4k3/pp6/8/8/8/8/8/R3K3 w - - 0 1", true},
                                         ChanceRow{"a queen", "4k3/pp6/8/8/8/8/8/Q3K3 w - - 0 1", true},
                                         ChanceRow{"a knight", "4k3/pp6/8/8/8/8/8/N3K3 w - - 0 1", false},
                                         ChanceRow{"a bishop", "4k3/pp6/8/8/8/8/8/B3K3 w - - 0 1", false},
                                         ChanceRow{"two knights", "4k3/pp6/8/8/8/8/8/NN2K3 w - - 0 1", false},
                                         ChanceRow{"bishop and knight", "4k3/pp6/8/8/8/8/8/NB2K3 w - - 0 1", true},
                                         ChanceRow{"two bishops", "4k3/pp6/8/8/8/8/8/BB2K3 w - - 0 1", true},
                                         ChanceRow{"three knights", "4k3/pp6/8/8/8/8/8/NNN1K3 w - - 0 1", true}),
                         RowName<ChanceRow>);

struct LimitRow {
    std::string_view name;
    std::string_view fen;
    int score;
    int limited;  // with a draw score of 25
};
std::ostream& operator<<(std::ostream& out, const LimitRow& row) { return out << row.name; }

class DrawLimit : public testing::TestWithParam<LimitRow> {};

TEST_P(DrawLimit, HoldsForTheSideThatCannotWin) {
    const BOARD board = BoardFromFen(std::string(GetParam().fen));
    EXPECT_EQ(limit_to_draw_score(GetParam().score, 25, board), GetParam().limited);
    EXPECT_EQ(limit_to_draw_score(-GetParam().score, -25, WithColoursExchanged(board)), -GetParam().limited);
}

constexpr std::string_view both_can = "4k3/p7/8/8/8/8/P7/4K3 w - - 0 1";
constexpr std::string_view white_cannot = "4k3/p7/8/8/8/8/8/N3K3 w - - 0 1";
constexpr std::string_view black_cannot = "4k1n1/8/8/8/8/8/P7/4K3 w - - 0 1";
constexpr std::string_view nobody_can = "4k1n1/8/8/8/8/8/8/4KN2 w - - 0 1";

INSTANTIATE_TEST_SUITE_P(Ending, DrawLimit,
                         testing::Values(LimitRow{"both can, high", both_can, 900, 900},
                                         LimitRow{"both can, low", both_can, -900, -900},
                                         LimitRow{"White can't, above", white_cannot, 26, 25},
                                         LimitRow{"White can't, below", white_cannot, 24, 24},
                                         LimitRow{"Black can't, above", black_cannot, 26, 26},
                                         LimitRow{"Black can't, below", black_cannot, 24, 25}),
                         RowName<LimitRow>);

TEST(DrawLimitForBoth, IsThatOfWhiteIfNobodyCanWin) {
    // No mirror: the cap on White comes first, and then none on Black follows.
    const BOARD board = BoardFromFen(std::string(nobody_can));
    EXPECT_EQ(limit_to_draw_score(300, 25, board), 25);
    EXPECT_EQ(limit_to_draw_score(-300, 25, board), -300);
}

TEST(Ending, SideThatCannotWinIsNotBetterThanADraw) {
    for (const int draw_score : {0, 30, -30}) {
        const EVALUATION_SETTINGS settings{.draw_score = static_cast<std::int16_t>(draw_score)};
        // A knight and the move against a pawn, and the same for Black.
        EXPECT_LE(EvaluationBuilder("4k3/p7/8/8/8/8/8/N3K3 w - - 0 1", settings).Score(), draw_score);
        EXPECT_GE(EvaluationBuilder("4k3/p7/8/8/8/8/8/N3K3 b - - 0 1", settings).Score(), -draw_score);
        EXPECT_LE(EvaluationBuilder("n3k3/8/8/8/8/8/P7/4K3 b - - 0 1", settings).Score(), -draw_score);
        EXPECT_GE(EvaluationBuilder("n3k3/8/8/8/8/8/P7/4K3 w - - 0 1", settings).Score(), draw_score);
    }
}

// --- Lazy test ---

struct EstimateRow {
    std::string_view name;
    std::string_view fen;
    int estimate;  // for the side to move
    int draw_score = 0;
};
std::ostream& operator<<(std::ostream& out, const EstimateRow& row) { return out << row.name; }

class EndingLazyTest : public testing::TestWithParam<EstimateRow> {};

TEST_P(EndingLazyTest, StopsBeyondTheMargin) {
    const EstimateRow& row = GetParam();
    EvaluationBuilder position(row.fen, {.draw_score = static_cast<std::int16_t>(row.draw_score)});
    const auto result = [&](int bound) {
        position.context = EVALUATION_CONTEXT(&position.settings);
        return evaluate_ending(position.context, position.board, bound);
    };
    EXPECT_FALSE(result(row.estimate + 700).lazy);
    EXPECT_TRUE(result(row.estimate + 701).lazy);
    EXPECT_EQ(result(row.estimate + 701).score, row.estimate + 700);
    EXPECT_FALSE(result(row.estimate - 700).lazy);
    EXPECT_TRUE(result(row.estimate - 701).lazy);
    EXPECT_EQ(result(row.estimate - 701).score, row.estimate - 701);
}

INSTANTIATE_TEST_SUITE_P(
    Ending, EndingLazyTest,
    testing::Values(EstimateRow{"balance", "4kb1r/4p3/8/8/8/8/4P3/4KB1R w - - 0 1", 0},
                    EstimateRow{"a knight up", "4k3/4p3/8/8/8/8/4P3/4K1N1 w - - 0 1", 305 + 160},
                    EstimateRow{"a knight up, the other side to move", "4k3/4p3/8/8/8/8/4P3/4K1N1 b - - 0 1", -465},
                    EstimateRow{"a knight down", "4k1n1/4p3/8/8/8/8/4P3/4K3 w - - 0 1", -465},
                    EstimateRow{"bishop pair", "2b1k1n1/4p3/8/8/8/8/4P3/2B1KB2 w - - 0 1", 10 + 55},
                    EstimateRow{"bishop pair of the other side", "2b1kb2/4p3/8/8/8/8/4P3/2B1K1N1 w - - 0 1", -65},
                    EstimateRow{"White can't win", "4k3/1p6/8/8/8/8/8/4KNN1 b - - 0 1", -25, 25},
                    EstimateRow{"Black can't win", "4knn1/8/8/8/8/8/1P6/4K3 w - - 0 1", 25, 25}),
    RowName<EstimateRow>);

// --- Opposite bishops ---

struct BishopsRow {
    std::string_view name;
    std::string_view fen;
    bool are_opposite;
};
std::ostream& operator<<(std::ostream& out, const BishopsRow& row) { return out << row.name; }

class OppositeBishops : public testing::TestWithParam<BishopsRow> {};

TEST_P(OppositeBishops, StandOnDifferentColours) {
    const BOARD board = BoardFromFen(std::string(GetParam().fen));
    EXPECT_EQ(has_opposite_bishops(board), GetParam().are_opposite);
    EXPECT_EQ(has_opposite_bishops(WithColoursExchanged(board)), GetParam().are_opposite);
}

INSTANTIATE_TEST_SUITE_P(
    Ending, OppositeBishops,
    testing::Values(BishopsRow{"one each, light and dark", "2b1k3/4p3/8/8/8/8/4P3/2B1K3 w - - 0 1", true},
                    BishopsRow{"one each on one colour", "4kb2/4p3/8/8/8/8/4P3/2B1K3 w - - 0 1", false},
                    BishopsRow{"a pair against one", "2b1k3/4p3/8/8/8/8/4P3/2B1KB2 w - - 0 1", false},
                    BishopsRow{"two on one colour against one", "2b1k3/4p3/8/8/5B2/8/4P3/2B1K3 w - - 0 1", true},
                    BishopsRow{"one side alone", "4k3/4p3/8/8/8/8/4P3/2B1K3 w - - 0 1", false},
                    BishopsRow{"none", "4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1", false}),
    RowName<BishopsRow>);

}  // namespace
