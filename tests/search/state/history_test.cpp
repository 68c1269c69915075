#include "search/state/history.h"

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

// --- Cuts ---

constexpr Distance one_ply = ONE_PLY;

std::uint32_t ValueIn(HistoryTable& history, std::uint32_t ply) {
    return history.Band(ply).Value(HistoryBand::Index(move, white));
}

TEST(HistoryOfCuts, BonusIsTheSquareOfTheFullPliesAndOne) {
    struct {
        Distance distance;
        std::uint32_t bonus;
    } constexpr rows[] = {{-500, 1}, {0, 1}, {63, 1}, {64, 2}, {127, 2}, {128, 5}, {640, 101}, {64 * 255, 65026}};
    for (const auto& row : rows) {
        HistoryTable history;
        history.UpdateHistory(move, white, row.distance, 20);
        EXPECT_EQ(ValueIn(history, 20), row.bonus) << row.distance;
    }
}

TEST(HistoryOfCuts, BandAndTheOneBeforeLearnOfACut) {
    struct {
        std::uint32_t ply;
        std::set<std::uint32_t> bands;
    } const rows[] = {{0, {0, 1}}, {7, {0, 1}}, {8, {0, 1}}, {15, {0, 1}}, {16, {1, 2}}, {31, {2, 3}}, {77, {8, 9}}};
    for (const auto& row : rows) {
        HistoryTable history;
        history.UpdateHistory(move, white, one_ply, row.ply);
        for (std::uint32_t band = 0; band < HistoryTable::band_count; ++band) {
            EXPECT_EQ(ValueIn(history, band * 8), row.bands.contains(band) ? 2U : 0U) << row.ply << ", " << band;
        }
    }
}

TEST(HistoryOfCuts, AddUpToTheMostThereIs) {
    HistoryTable history;
    history.UpdateHistory(move, white, 0, 20);
    history.UpdateHistory(move, white, 2 * one_ply, 20);
    EXPECT_EQ(ValueIn(history, 20), 6U);
    history.UpdateHistory(move, white, 255 * one_ply, 20);
    history.UpdateHistory(move, white, 255 * one_ply, 20);
    EXPECT_EQ(ValueIn(history, 20), 65535U);
    HistoryTable fresh;
    fresh.UpdateHistory(move, white, 1000 * one_ply, 20);
    EXPECT_EQ(ValueIn(fresh, 20), 65535U) << "the first one too";
}

TEST(HistoryOfCuts, BeginAgainInANewGeneration) {
    HistoryTable history;
    history.UpdateHistory(move, white, 3 * one_ply, 20);
    history.EnterPly(16);
    EXPECT_EQ(ValueIn(history, 16), 0U);
    EXPECT_EQ(ValueIn(history, 8), 10U) << "the other band keeps it";
    history.UpdateHistory(move, white, 0, 20);
    EXPECT_EQ(ValueIn(history, 16), 1U);
    EXPECT_EQ(ValueIn(history, 8), 11U);
}

TEST(HistoryOfCuts, BelongToOneSideAndMove) {
    HistoryTable history;
    history.UpdateHistory(move, white, one_ply, 20);
    EXPECT_EQ(history.Score(move, black, 20), 0);
    EXPECT_EQ(history.Score(MakeWord(g1, h3, knight), white, 20), 0);
    EXPECT_EQ(history.Score(MakeWord(g1, f3, bishop), white, 20), 0);
    EXPECT_EQ(history.Score(move, white, 20), 1);
}

// --- Scores ---

/// The score at `ply` of a move with these values in the band before and in its own.
std::int32_t ScoreAt(std::uint32_t ply, std::uint32_t before, std::uint32_t own) {
    HistoryTable history;
    const std::size_t index = HistoryBand::Index(move, white);
    if (ply >= 8) history.Band(ply - 8).Add(index, before);
    history.Band(ply).Add(index, own);
    return history.Score(move, white, ply);
}

TEST(HistoryScore, IsTheSumOfTwoBandsByThe128th) {
    struct {
        std::uint32_t ply, before, own;
        std::int32_t score;
    } constexpr rows[] = {
        {20, 0, 0, 0},       {20, 1, 0, 1},           {20, 0, 1, 1},       {20, 127, 128, 1},
        {20, 128, 128, 2},   {8, 128, 128, 2},        {20, 65535, 0, 511}, {20, 65407, 0, 510},
        {20, 65535, 1, 511}, {20, 65535, 65535, 511}, {7, 0, 256, 2},      {0, 0, 65535, 511},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ScoreAt(row.ply, row.before, row.own), row.score) << row.ply << " " << row.before << " " << row.own;
    }
}

TEST(HistoryScore, FirstBandIsAskedAloneInIt) {
    HistoryTable history;
    history.Band(8).Add(HistoryBand::Index(move, white), 1000);
    EXPECT_EQ(history.Score(move, white, 7), 0);
    EXPECT_EQ(history.Score(move, white, 8), 7);
    EXPECT_EQ(history.Score(move, white, 16), 7);
    EXPECT_EQ(history.Score(move, white, 24), 0) << "two bands on";
}

TEST(HistoryScore, OldGenerationsDoNotCount) {
    HistoryTable history;
    history.UpdateHistory(move, white, 20 * one_ply, 20);
    EXPECT_EQ(history.Score(move, white, 20), 802 >> 7);
    history.EnterPly(16);
    EXPECT_EQ(history.Score(move, white, 20), 401 >> 7);
    history.EnterPly(8);
    EXPECT_EQ(history.Score(move, white, 20), 0);
}

}  // namespace
