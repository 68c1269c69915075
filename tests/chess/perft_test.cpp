#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/perft_file.h"

// Counts that take no time here; benchmarks/perft counts to the full depth of the file.
namespace {

constexpr std::uint64_t largest_count = 1'000'000;

const std::string data_file = VORKA_TEST_DIRECTORY "/data/perft.txt";

class Perft : public testing::TestWithParam<PerftRow> {};

std::string Report(const PerftRow& row, BOARD& board, int depth, std::uint64_t found) {
    return row.id + " (" + row.source + ")\n" + row.fen + "\ndepth " + std::to_string(depth) + ", wanted " +
           std::to_string(row.counts[static_cast<std::size_t>(depth) - 1]) + ", found " + std::to_string(found) +
           "\ncount per move:\n" + PerftByFirstMove(board, depth);
}

TEST_P(Perft, CountsAgree) {
    const PerftRow& row = GetParam();
    BOARD board = BoardFromFen(row.fen);
    for (std::size_t i = 0; i < row.counts.size() && row.counts[i] <= largest_count; ++i) {
        const int depth = static_cast<int>(i) + 1;
        const std::uint64_t by_lists = PerftByLists(board, depth);
        ASSERT_EQ(by_lists, row.counts[i]) << Report(row, board, depth, by_lists);
        const std::uint64_t by_moves = PerftByMoves(board, depth);
        ASSERT_EQ(by_moves, row.counts[i]) << Report(row, board, depth, by_moves);
    }
}

std::string IdOf(const testing::TestParamInfo<PerftRow>& info) {
    std::string name = info.param.id;
    for (char& c : name)
        if (c == '-') c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(DataFile, Perft, testing::ValuesIn(ReadPerftFile(data_file)), IdOf);

TEST(PerftFile, HoldsEnoughPositionsOnce) {
    const std::vector<PerftRow> rows = ReadPerftFile(data_file);
    EXPECT_GE(rows.size(), 20U);
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(rows[i].id, rows[j].id);
}

TEST(PerftReport, NamesPositionCountsAndMoves) {
    const PerftRow row{"two-moves", "K1k5/8/P7/8/8/8/8/8 w - - 0 1", "by hand", {3}};
    BOARD board = BoardFromFen(row.fen);
    EXPECT_EQ(Report(row, board, 1, PerftByLists(board, 1)),
              "two-moves (by hand)\nK1k5/8/P7/8/8/8/8/8 w - - 0 1\ndepth 1, wanted 3, found 2\n"
              "count per move:\na6a7: 1\na8a7: 1\n");
}

}  // namespace
