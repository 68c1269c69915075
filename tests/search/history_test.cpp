#include "search/history.h"

#include <gtest/gtest.h>

#include <set>

#include "chess/board.h"

namespace {

constexpr Move move = MakeWord(g1, f3, knight);

TEST(History, EveryPieceSideAndPairOfSquaresHasItsOwnEntry) {
    std::set<std::size_t> seen;
    for (const Colour side : {white, black}) {
        for (int piece = pawn; piece <= king; ++piece) {
            seen.insert(HistoryBand::Index(MakeWord(h8, a1, piece), side));
            seen.insert(HistoryBand::Index(MakeWord(a1, h8, piece), side));
        }
    }
    EXPECT_EQ(seen.size(), 24U);
    EXPECT_LT(*seen.rbegin(), HistoryBand::entry_count);
    EXPECT_EQ(HistoryBand::Index(move | direct_check_bit, white), HistoryBand::Index(move, white));
}

TEST(History, BeginsZeroed) {
    HistoryTable history;
    for (std::uint32_t ply = 0; ply < max_frames; ply += 8) {
        EXPECT_EQ(history.Band(ply).generation(), 0);
        EXPECT_EQ(history.Band(ply).entries[HistoryBand::Index(move, white)].value, 0);
    }
}

TEST(History, NewSearchEmptiesTheBandsOfAllPlies) {
    HistoryTable history;
    for (std::uint32_t ply = 0; ply < max_frames; ++ply) {
        HistoryEntry& entry = history.Band(ply).entries[HistoryBand::Index(move, black)];
        entry = {.generation = history.Band(ply).generation(), .value = 9};
        ASSERT_TRUE(history.Band(ply).IsCurrent(entry));
    }
    history.NewSearch();
    for (std::uint32_t ply = 0; ply < max_frames; ++ply) {
        EXPECT_EQ(history.Band(ply).generation(), 1) << ply;
        EXPECT_FALSE(history.Band(ply).IsCurrent(history.Band(ply).entries[HistoryBand::Index(move, black)]));
    }
}

TEST(History, EnteringABandEmptiesItAlone) {
    HistoryTable history;
    for (std::uint32_t ply = 9; ply < 16; ++ply) history.EnterPly(ply);
    EXPECT_EQ(history.Band(8).generation(), 0) << "only its first ply counts";
    history.EnterPly(8);
    EXPECT_EQ(history.Band(8).generation(), 1);
    EXPECT_EQ(history.Band(15).generation(), 1) << "eight plies are one band";
    EXPECT_EQ(history.Band(7).generation(), 0);
    EXPECT_EQ(history.Band(16).generation(), 0);
}

TEST(History, GenerationsWrap) {
    HistoryTable history;
    for (int i = 0; i < 65536; ++i) history.EnterPly(16);
    EXPECT_EQ(history.Band(16).generation(), 0);
}

}  // namespace
