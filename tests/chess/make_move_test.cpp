#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/board_checks.h"
#include "support/row_name.h"
#include "support/slow_chess.h"

// What single moves do to the position, by name. That they do it right in every position is the business of
// move_generator_property_test.
namespace {

struct MoveRow {
    std::string_view name, fen, move;
    std::string_view after;  ///< the first four fields of the FEN
};
std::ostream& operator<<(std::ostream& out, const MoveRow& row) { return out << row.fen << ' ' << row.move; }

class MadeMoves : public testing::TestWithParam<MoveRow> {};

TEST_P(MadeMoves, GiveThePosition) {
    const MoveRow& row = GetParam();
    BOARD board = BoardFromFen(std::string(row.fen) + " 6 9");
    const BOARD before = board;
    const Move move = MoveOf(board, row.move);
    const std::uint64_t expected_key = board.HashKeyAfterMove(move);
    board.MakeMove(move);
    EXPECT_EQ(SlowFen(SlowFromBoard(board)), row.after);
    EXPECT_EQ(board.key(), expected_key);
    EXPECT_EQ(Disagreements(board), "");
    board.UnmakeMove(move);
    EXPECT_EQ(Differences(board, before), "");
}

constexpr auto move_rows = std::to_array<MoveRow>({
    {"double step sets the square with no enemy near", "4k3/8/8/8/8/8/P7/4K3 w - -", "a2a4",
     "4k3/8/8/8/P7/8/8/4K3 b - a3"},
    {"black double step", "4k3/7p/8/8/8/8/8/4K3 b - -", "h7h5", "4k3/8/8/7p/8/8/8/4K3 w - h6"},
    {"any move clears the square", "4k3/8/8/8/P7/8/8/4K3 b - a3", "e8e7", "8/4k3/8/8/P7/8/8/4K3 w - -"},
    {"en passant", "4k3/8/8/3pP3/8/8/8/4K3 w - d6", "e5d6", "4k3/8/3P4/8/8/8/8/4K3 b - -"},
    {"black en passant", "4k3/8/8/8/3Pp3/8/8/4K3 b - d3", "e4d3", "4k3/8/8/8/8/3p4/8/4K3 w - -"},
    {"pawn takes pawn beside a jumped square", "4k3/8/5p2/3pP3/8/8/8/4K3 w - d6", "e5f6",
     "4k3/8/5P2/3p4/8/8/8/4K3 b - -"},
    {"white short castling", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "e1g1", "r3k2r/8/8/8/8/8/8/R4RK1 b kq -"},
    {"white long castling", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "e1c1", "r3k2r/8/8/8/8/8/8/2KR3R b kq -"},
    {"black short castling", "r3k2r/8/8/8/8/8/8/R3K2R b KQkq -", "e8g8", "r4rk1/8/8/8/8/8/8/R3K2R w KQ -"},
    {"black long castling", "r3k2r/8/8/8/8/8/8/R3K2R b KQkq -", "e8c8", "2kr3r/8/8/8/8/8/8/R3K2R w KQ -"},
    {"king move loses both rights", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "e1e2", "r3k2r/8/8/8/8/8/4K3/R6R b kq -"},
    {"king steps to g1 without right", "r3k2r/8/8/8/8/8/8/R4K1R w kq -", "f1g1", "r3k2r/8/8/8/8/8/8/R5KR b kq -"},
    {"rook leaves h1", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "h1g1", "r3k2r/8/8/8/8/8/8/R3K1R1 b Qkq -"},
    {"rook leaves a1", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "a1b1", "r3k2r/8/8/8/8/8/8/1R2K2R b Kkq -"},
    {"rook leaves h8", "r3k2r/8/8/8/8/8/8/R3K2R b KQkq -", "h8h7", "r3k3/7r/8/8/8/8/8/R3K2R w KQq -"},
    {"rook takes rook, two rights go", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq -", "h1h8", "r3k2R/8/8/8/8/8/8/R3K3 b Qq -"},
    {"bishop takes the rook on a1", "r3k2r/8/8/8/3b4/8/8/R3K2R b KQkq -", "d4a1", "r3k2r/8/8/8/8/8/8/b3K2R w Kkq -"},
    {"a second rook leaves the corner", "4k3/8/8/8/8/8/R7/R3K2R w K -", "a1b1", "4k3/8/8/8/8/8/R7/1R2K2R b K -"},
    {"a second rook arrives in the corner", "4k3/8/8/8/8/8/R7/4K2R w K -", "a2a1", "4k3/8/8/8/8/8/8/R3K2R b K -"},
    {"a white rook leaves a black corner", "R3k2r/8/8/8/8/8/8/4K2R b Kk -", "e8f7", "R6r/5k2/8/8/8/8/8/4K2R w K -"},
    {"promotion to a queen", "4k3/P7/8/8/8/8/8/4K3 w - -", "a7a8", "Q3k3/8/8/8/8/8/8/4K3 b - -"},
    {"promotion to a knight", "4k3/P7/8/8/8/8/8/4K3 w - -", "a7a8N", "N3k3/8/8/8/8/8/8/4K3 b - -"},
    {"black promotion to a rook", "4k3/8/8/8/8/8/p7/4K3 b - -", "a2a1R", "4k3/8/8/8/8/8/8/r3K3 w - -"},
    {"promotion takes a rook and its right", "r3k2r/1P6/8/8/8/8/8/4K3 w kq -", "b7a8B", "B3k2r/8/8/8/8/8/8/4K3 b k -"},
});
INSTANTIATE_TEST_SUITE_P(Moves, MadeMoves, testing::ValuesIn(move_rows), RowName<MoveRow>);

TEST(MakeMove, ChangesTheKeyOnceWhenARightGoes) {
    BOARD board = BoardFromFen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    const std::uint64_t start = board.key();
    for (const std::string_view move : {"h1h2", "h8h7", "h2h1", "h7h8"}) board.MakeMove(MoveOf(board, move));
    EXPECT_EQ(board.key() ^ start, 0x517CC1B727220A94U ^ 0x5C6B34ADBF4E8E53U);
    const std::uint64_t without = board.key();
    for (const std::string_view move : {"h1h2", "h8h7", "h2h1", "h7h8"}) board.MakeMove(MoveOf(board, move));
    EXPECT_EQ(board.key(), without);
}

TEST(MakeMove, CountsPliesSinceCaptureOrPawnMove) {
    BOARD board = BoardFromFen("r3k3/7p/8/8/8/8/7P/R3K3 w - - 12 20");
    constexpr std::pair<std::string_view, int> moves[] = {{"e1d1", 13}, {"e8e7", 14}, {"h2h3", 0}, {"e7d7", 1},
                                                          {"a1a8", 0},  {"d7c7", 1},  {"a8a1", 2}, {"h7h5", 0}};
    for (const auto& [move, counter] : moves) {
        board.MakeMove(MoveOf(board, move));
        EXPECT_EQ(board.frame().fifty_counter, counter) << move;
    }
}

TEST(MakeMove, TakesTheCheckFromTheWord) {
    BOARD board = BoardFromFen("4k3/8/8/8/8/8/8/R3K3 w - - 0 1");
    const Move check = MoveOf(board, "a1a8");
    for (const Move bits : {Move{0}, direct_check_bit, discovered_check_bit, check_bits}) {
        const Move word = (check & ~check_bits) | bits;
        board.MakeMove(word);
        EXPECT_EQ(board.in_check(), bits != 0);
        board.UnmakeMove(word);
    }
}

TEST(NullMove, GivesTheMoveAway) {
    BOARD board = BoardFromFen("4k3/8/8/3pP3/8/8/8/R3K2R w KQ d6 5 1");
    const BOARD before = board;
    board.MakeNullMove();
    EXPECT_EQ(SlowFen(SlowFromBoard(board)), "4k3/8/8/3pP3/8/8/8/R3K2R b KQ -");
    EXPECT_EQ(board.frame().fifty_counter, 0);
    EXPECT_EQ(board.frame().material_balance, -before.frame().material_balance);
    EXPECT_EQ(board.ply, 1U);
    EXPECT_EQ(Disagreements(board), "");
    board.UnmakeNullMove();
    EXPECT_EQ(Differences(board, before), "");
}

}  // namespace
