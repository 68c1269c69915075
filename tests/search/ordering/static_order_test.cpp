#include "search/ordering/static_order.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "search/ordering/order_tables.h"
#include "support/board_builder.h"
#include "support/search_builder.h"

namespace {

/// Both sides have the same moves; no two squares that matter have the same value.
constexpr std::string_view white_fen = "2q1k1n1/8/8/8/8/8/8/2Q1K1N1 w - - 0 1";
constexpr std::string_view black_fen = "2q1k1n1/8/8/8/8/8/8/2Q1K1N1 b - - 0 1";

class StaticOrder : public testing::Test {
  protected:
    [[nodiscard]] std::int32_t ScoreOf(std::string_view fen, std::string_view move,
                                       int position_class = opening) const {
        SearchBuilder search(fen, settings_);
        Node node = search.NodeAt(0, 256);
        node.position_class = position_class;
        return StaticMoveOrder(node).ScoreOf(MoveOf(search.board->board, move));
    }

    SearchSettings settings_{.randomize_move_ordering_of_remaining_moves = 0};
};

const OrderTable& opening_knight = opening_order[knight - 1];
const OrderTable& ending_knight = ending_order[knight - 1];

TEST_F(StaticOrder, BoardsAreSeenFromWhite) {
    EXPECT_GT(opening_order[pawn - 1].by_square[e4], opening_order[pawn - 1].by_square[e2]);
    EXPECT_GT(ending_order[pawn - 1].by_square[a7], ending_order[pawn - 1].by_square[a2]);
    EXPECT_LT(opening_knight.by_square[a8], opening_knight.by_square[a1]);
}

TEST_F(StaticOrder, PieceValuesRiseFromPawnToQueen) {
    for (const OrderTables& tables : {opening_order, ending_order}) {
        for (std::size_t piece = knight; piece <= queen; ++piece) {
            EXPECT_GT(tables[piece - 1].piece, tables[piece - 2].piece);
        }
    }
}

TEST_F(StaticOrder, AddsPieceAndTargetAndTakesHalfTheOrigin) {
    const std::int32_t expected =
        50 + opening_knight.piece + opening_knight.by_square[f3] - opening_knight.by_square[g1] / 2;
    EXPECT_EQ(ScoreOf(white_fen, "g1f3"), expected);
    EXPECT_EQ(ScoreOf(black_fen, "g8f6"), expected) << "mirrored for Black";
    EXPECT_NE(ScoreOf(white_fen, "g1h3"), expected);
}

TEST_F(StaticOrder, HalvesAreRoundedTowardsZero) {
    const OrderTable& table = opening_order[queen - 1];
    ASSERT_EQ(table.by_square[c1] % 2, -1);
    EXPECT_EQ(ScoreOf(white_fen, "c1c2"), 50 + table.piece + table.by_square[c2] + -(table.by_square[c1] + 1) / 2);
}

TEST_F(StaticOrder, OpeningAndMiddleGameHaveTablesOfTheirOwn) {
    const std::int32_t early =
        50 + opening_knight.piece + opening_knight.by_square[f3] - opening_knight.by_square[g1] / 2;
    const std::int32_t late = 50 + ending_knight.piece + ending_knight.by_square[f3] - ending_knight.by_square[g1] / 2;
    ASSERT_NE(early, late);
    EXPECT_EQ(ScoreOf(white_fen, "g1f3", middle_game), early);
    EXPECT_EQ(ScoreOf(white_fen, "g1f3", balanced_ending), late);
    EXPECT_EQ(ScoreOf(white_fen, "g1f3", unbalanced_ending), late);
}

TEST_F(StaticOrder, BadMovesHaveNoScore) {
    constexpr std::string_view fen = "4k3/8/1N6/8/8/8/8/4K3 w - - 0 1";
    ASSERT_LT(50 + opening_knight.piece + opening_knight.by_square[a8] - opening_knight.by_square[b6] / 2, 0);
    EXPECT_EQ(ScoreOf(fen, "b6a8"), 0);
}

TEST_F(StaticOrder, EachPartHasItsSwitch) {
    const std::int32_t piece = opening_knight.piece;
    const std::int32_t to = opening_knight.by_square[f3];
    const std::int32_t from = opening_knight.by_square[g1] / 2;
    settings_.enable_static_move_ordering_piece_dependent_bonus = false;
    EXPECT_EQ(ScoreOf(white_fen, "g1f3"), 50 + to - from);
    settings_.enable_static_move_ordering_piece_dependent_bonus = true;
    settings_.enable_static_move_ordering_to_sq_bonus = false;
    EXPECT_EQ(ScoreOf(white_fen, "g1f3"), 50 + piece - from);
    settings_.enable_static_move_ordering_to_sq_bonus = true;
    settings_.enable_static_move_ordering_from_sq_malus = false;
    EXPECT_EQ(ScoreOf(white_fen, "g1f3"), 50 + piece + to);
}

TEST_F(StaticOrder, AnythingThatOrdersIsEnough) {
    SearchBuilder search(white_fen, settings_);
    const Node node = search.NodeAt(0, 256);
    EXPECT_TRUE(StaticMoveOrder(node).Exists());
    search.settings.enable_static_move_ordering_piece_dependent_bonus = false;
    search.settings.enable_static_move_ordering_to_sq_bonus = false;
    EXPECT_TRUE(StaticMoveOrder(node).Exists());
    search.settings.enable_static_move_ordering_from_sq_malus = false;
    EXPECT_FALSE(StaticMoveOrder(node).Exists());
    search.settings.enable_static_move_ordering_to_sq_bonus = true;
    EXPECT_TRUE(StaticMoveOrder(node).Exists());
    search.settings.enable_static_move_ordering_to_sq_bonus = false;
    search.settings.enable_static_move_ordering_piece_dependent_bonus = true;
    EXPECT_TRUE(StaticMoveOrder(node).Exists());
    search.settings.enable_static_move_ordering_piece_dependent_bonus = false;
    search.settings.randomize_move_ordering_of_remaining_moves = 1;
    EXPECT_TRUE(StaticMoveOrder(node).Exists());
}

TEST_F(StaticOrder, NoiseIsAsWideAsItsSetting) {
    const std::int32_t quiet = ScoreOf(white_fen, "g1f3");
    SearchBuilder search(white_fen, settings_);
    Node node = search.NodeAt(0, 256);
    node.position_class = opening;
    const Move move = MoveOf(search.board->board, "g1f3");
    for (const std::int32_t width : {1, 5, 200}) {
        search.settings.randomize_move_ordering_of_remaining_moves = width;
        std::set<std::int32_t> seen;
        for (int i = 0; i < 20000; ++i) seen.insert(StaticMoveOrder(node).ScoreOf(move) - quiet);
        EXPECT_EQ(seen.size(), static_cast<std::size_t>(width));
        EXPECT_EQ(*seen.begin(), 0);
        EXPECT_EQ(*seen.rbegin(), width - 1);
    }
}

}  // namespace
