#include "search/node/perpetual_check.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

/// White's queen checks the black king, which goes to and fro; Black is a rook and more ahead.
constexpr std::string_view chase_fen = "6k1/6pp/8/8/4Q3/8/1r4r1/7K w - - 0 1";

struct RunRow {
    std::string_view name;
    int length;         ///< of the run so far, the present check not counted
    int first_balance;  ///< material of the chased side at the first record, against now
    Square first_king;
    Bitboard first_ring;
    bool is_threat;
};
std::ostream& operator<<(std::ostream& out, const RunRow& run) { return out << run.name; }

class Runs : public testing::TestWithParam<RunRow> {};

/// The node stands at ply 7 after a queen check, with checks at plies 5, 3, 1 as well; the records before it are made
/// up.
TEST_P(Runs, AreThreatsWhenTheyAreLongEnough) {
    const RunRow& run = GetParam();
    SearchBuilder search(chase_fen);
    SearchBoard& board = *search.board;
    search.Make("e4e8");
    ASSERT_TRUE(board.board.in_check());
    const Move check = board.moves_played[1];
    Node node{.search = board,
              .ply = 9,
              .beta = 0,
              .distance = 64,
              .in_check = true,
              .type = NodeType::cut,
              .parent_class = 0,
              .position_class = 0,
              .child_flags = ChildFlags::none,
              .moves = board.move_buffer,
              .moves_end = board.move_buffer};
    board.moves_played[9] = board.moves_played[7] = check;
    board.check_runs[7].length = static_cast<std::int16_t>(run.length);
    const int length = run.length + 1;
    if (length > 1) {
        CheckRunRecord& first = board.check_runs[9 + 2 - 2 * length];
        first.king_square = static_cast<std::int16_t>(run.first_king);
        first.own_ring = run.first_ring;
        first.material_balance = static_cast<std::int16_t>(node.material_balance() - run.first_balance);
    }
    PerpetualCheckTest(node);
    EXPECT_EQ(board.check_runs[9].length, length);
    EXPECT_EQ(board.check_runs[9].king_square, g8);
    EXPECT_EQ(board.check_runs[9].threat, run.is_threat ? 1 : 0);
    EXPECT_EQ(HasAny(node.flags, NodeFlags::perpetual_threat), run.is_threat);
    EXPECT_EQ(Word(node.child_flags), run.is_threat ? 0x300U : 0U);
}

// The king stands on g8 now, with the pawns g7 and h7 beside it.
constexpr Bitboard two_pawns = Bit(g7) | Bit(h7);

// clang-format off
INSTANTIATE_TEST_SUITE_P(PerpetualCheck, Runs, testing::Values(
    RunRow{"the first of a run", 0, 0, g8, two_pawns, false},
    RunRow{"two are enough", 1, 0, g8, two_pawns, true},
    RunRow{"two are enough if material was lost", 1, -500, g8, two_pawns, true},
    RunRow{"two are enough for a knight", 1, 314, g8, two_pawns, true},
    RunRow{"a bishop needs three", 1, 315, g8, two_pawns, false},
    RunRow{"three for a bishop", 2, 499, g8, two_pawns, true},
    RunRow{"a rook needs four", 2, 500, g8, two_pawns, false},
    RunRow{"four for a rook", 3, 500, g8, two_pawns, true},
    RunRow{"the king went one step", 1, 0, h8, two_pawns, true},
    RunRow{"the king went two steps", 1, 0, e8, two_pawns, false},
    RunRow{"the king went two steps, three are enough", 2, 0, e8, two_pawns, true},
    RunRow{"the king went three steps", 2, 0, d8, two_pawns, true},
    RunRow{"the king went four steps", 2, 0, c8, two_pawns, false},
    RunRow{"the king went four steps, four are enough", 3, 0, c8, two_pawns, true},
    RunRow{"a shelter where there was none", 1, 0, g8, 0, false},
    RunRow{"a shelter where there was none, three are enough", 2, 0, g8, 0, true},
    RunRow{"a shelter of one more piece", 1, 0, g8, Bit(h7), true},
    RunRow{"far away the shelter does not count", 2, 0, e8, 0, true}),
    RowName<RunRow>);
// clang-format on

class NoRun : public testing::Test {
  protected:
    NoRun() : search_(chase_fen) {
        search_.Make("e4e8");
        search_.board->moves_played[3] = search_.board->moves_played[1];
        search_.board->check_runs[1].length = 0;
        search_.board->check_runs[3] = {.length = 9, .threat = 1};
    }
    [[nodiscard]] Node At3() {
        Node node{.search = *search_.board,
                  .ply = 3,
                  .beta = 0,
                  .distance = 64,
                  .in_check = true,
                  .type = NodeType::cut,
                  .parent_class = 0,
                  .position_class = 0,
                  .child_flags = ChildFlags::none,
                  .moves = search_.board->move_buffer,
                  .moves_end = search_.board->move_buffer};
        return node;
    }
    void ExpectNone(Node node) {
        PerpetualCheckTest(node);
        EXPECT_EQ(search_.board->check_runs[3].length, 0);
        EXPECT_EQ(search_.board->check_runs[3].threat, 0);
        EXPECT_EQ(node.flags, NodeFlags::none);
    }
    SearchBuilder search_;
};

TEST_F(NoRun, WhereTheTestIsForbidden) {
    Node node = At3();
    node.child_flags = ChildFlags::no_perpetual_test;
    PerpetualCheckTest(node);
    EXPECT_EQ(search_.board->check_runs[3].length, 0);
}

TEST_F(NoRun, WhereTheLastCheckIsNoQueens) {
    search_.board->moves_played[3] = MakeWord(a1, a8, rook) | direct_check_bit;
    ExpectNone(At3());
}

TEST_F(NoRun, WhereTheQueenGaveNoCheck) {
    search_.board->moves_played[3] = MakeWord(e4, e8, queen);
    ExpectNone(At3());
}

TEST_F(NoRun, WhereTheCheckBeforeIsMissing) {
    search_.board->moves_played[1] = INVALID;
    ExpectNone(At3());
}

TEST_F(NoRun, GoesOnOtherwise) {
    Node node = At3();
    PerpetualCheckTest(node);
    EXPECT_EQ(search_.board->check_runs[3].length, 1);
}

/// The first check opens no run, the second begins it with a record, and the third makes two.
TEST(PerpetualCheck, GrowsWithTheChecksOfALine) {
    SearchBuilder search("6k1/r7/8/8/8/8/8/1Q5K w - - 0 1");
    struct Ply {
        std::string_view move;
        int length;
        bool is_threat;
    };
    for (const Ply& ply : {Ply{"b1g6", 0, false}, Ply{"g8h8", -1, false}, Ply{"g6h6", 1, false}, Ply{"h8g8", -1, false},
                           Ply{"h6g6", 2, true}, Ply{"g8h8", -1, false}, Ply{"g6h6", 3, true}}) {
        search.Make(ply.move);
        Node node = search.NodeAt(0, 64);
        if (!node.in_check) continue;
        node.child_flags = ChildFlags::none;
        PerpetualCheckTest(node);
        EXPECT_EQ(search.board->check_runs[node.ply].length, ply.length);
        EXPECT_EQ(HasAny(node.flags, NodeFlags::perpetual_threat), ply.is_threat);
    }
}

TEST(PerpetualCheck, AtTheFirstPliesThereIsNoRun) {
    SearchBuilder search(chase_fen);
    search.Make("e4e8");
    Node node = search.NodeAt(0, 64);
    node.child_flags = ChildFlags::none;
    PerpetualCheckTest(node);
    EXPECT_EQ(search.board->check_runs[1].length, 0);
}

}  // namespace
