#include "search/tournament/tournament_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <set>

#include "support/board_builder.h"

namespace {

using tournament::HistoryScore;
using tournament::PieceSquare;
using tournament::TournamentState;

// --- HistoryScore ---

TEST(HistoryScore, GrowsByABonusAndFallsByAMalus) {
    HistoryScore score;
    EXPECT_EQ(score.value(), 0);
    score.Learn(300);
    EXPECT_EQ(score.value(), 300);
    score.Learn(-400);
    EXPECT_LT(score.value(), -90);
    EXPECT_GT(score.value(), -110);
}

TEST(HistoryScore, MovesTheLessTheFartherOutItIs) {
    HistoryScore score;
    int last_step = 1001;
    for (int i = 0; i < 100; ++i) {
        const int before = score.value();
        score.Learn(1000);
        const int step = score.value() - before;
        EXPECT_LE(step, last_step);
        EXPECT_GE(step, 0);
        last_step = step;
    }
    EXPECT_GT(score.value(), HistoryScore::largest - 100);
    const int before = score.value();
    score.Learn(-1000);
    EXPECT_LT(score.value(), before - 1900) << "one failure after a long row of cuts counts almost twice";
}

TEST(HistoryScore, LeavesItsRangeForNoBonus) {
    constexpr unsigned seed = 3;
    std::mt19937 random(seed);
    HistoryScore score;
    const auto largest_bonus = static_cast<int>(tournament_settings::Find("history_bonus_limit")->most);
    ASSERT_LE(largest_bonus, HistoryScore::largest);
    for (int i = 0; i < 1'000'000; ++i) {
        const int before = score.value();
        const int most = random() % 2 == 0 ? largest_bonus : HistoryScore::largest;
        // Long runs in one direction lead to the ends.
        const int direction = (i >> 10 & 1) != 0 ? 1 : -1;
        const int bonus = random() % 8 == 0 ? static_cast<int>(random() % (2 * static_cast<unsigned>(most) + 1)) - most
                                            : direction * static_cast<int>(random() % static_cast<unsigned>(most + 1));
        score.Learn(bonus);
        ASSERT_LE(std::abs(score.value()), HistoryScore::largest) << "seed " << seed << ", step " << i;
        if (bonus > 0) {
            ASSERT_GE(score.value(), before);
        }
        if (bonus < 0) {
            ASSERT_LE(score.value(), before);
        }
    }
}

// --- Places ---

TEST(PieceSquares, AreDifferentForEachSidePieceAndTarget) {
    std::set<std::size_t> places;
    for (const std::uint32_t side : {0U, 1U}) {
        for (int piece = pawn; piece <= king; ++piece) {
            for (Square to = a1; to <= h8; ++to) {
                const std::size_t place = PieceSquare(MakeWord(a1, to, piece), side);
                EXPECT_LT(place, tournament::piece_square_count);
                EXPECT_TRUE(places.insert(place).second);
                EXPECT_EQ(PieceSquare(MakeWord(h8, to, piece, queen, rook) | check_bits, side), place);
            }
        }
    }
    EXPECT_EQ(places.size(), tournament::piece_square_count);
}

// --- The table of reductions ---

TEST(ReductionTable, FollowsItsFormula) {
    TournamentState state;
    for (const auto& [base, factor] : {std::pair{40, 28}, std::pair{0, 0}, std::pair{-256, 128}, std::pair{256, 128}}) {
        state.Prepare({.late_move_reduction_base = base, .late_move_reduction_factor = factor});
        for (const int plies : {1, 2, 3, 10, 63}) {
            for (const int moves : {1, 2, 3, 10, 63}) {
                const double expected = base + factor * std::log(plies) * std::log(moves);
                EXPECT_NEAR(state.Reduction(plies, moves), expected, 0.5001) << plies << ' ' << moves;
            }
        }
    }
}

TEST(ReductionTable, EndsWithItsLastRowAndColumn) {
    const TournamentState state;
    EXPECT_EQ(state.Reduction(64, 20), state.Reduction(63, 20));
    EXPECT_EQ(state.Reduction(1000, 20), state.Reduction(63, 20));
    EXPECT_EQ(state.Reduction(20, MAX_MOVES), state.Reduction(20, 63));
    EXPECT_EQ(state.Reduction(0, 20), 0) << "less than a ply";
    EXPECT_EQ(state.Reduction(20, 0), 0);
}

TEST(ReductionTable, IsReadyWithoutPreparation) {
    const TournamentState made;
    TournamentState prepared;
    prepared.Prepare({});
    for (int plies = 0; plies < 64; ++plies) {
        for (int moves = 0; moves < 64; ++moves) {
            ASSERT_EQ(made.Reduction(plies, moves), prepared.Reduction(plies, moves));
        }
    }
}

// --- What stays and what goes ---

TEST(TournamentState, KeepsWhatIsKnownOfMovesFromSearchToSearch) {
    TournamentState state;
    state.tables().by_squares[1][77].Learn(500);
    state.tables().continuation[1][5][6].Learn(-500);
    state.tables().counter_move[3] = 4;
    state.excluded[7] = 99;
    state.Prepare({.futility = 0});
    state.NewSearch();
    EXPECT_EQ(state.settings.futility, 0);
    EXPECT_EQ(state.tables().by_squares[1][77].value(), 500);
    EXPECT_EQ(state.tables().continuation[1][5][6].value(), -500);
    EXPECT_EQ(state.tables().counter_move[3], 4U);
    EXPECT_TRUE(std::ranges::all_of(state.excluded, [](Move move) { return move == INVALID; }));
    state.Clear();
    EXPECT_EQ(state.tables().by_squares[1][77].value(), 0);
    EXPECT_EQ(state.tables().continuation[1][5][6].value(), 0);
    EXPECT_EQ(state.tables().counter_move[3], INVALID);
}

TEST(TournamentState, KnowsNothingAtFirst) {
    TournamentState state;
    for (const auto& side : state.tables().by_squares) {
        EXPECT_TRUE(std::ranges::all_of(side, [](HistoryScore score) { return score.value() == 0; }));
    }
    EXPECT_TRUE(std::ranges::all_of(state.tables().counter_move, [](Move move) { return move == INVALID; }));
    EXPECT_TRUE(std::ranges::all_of(state.excluded, [](Move move) { return move == INVALID; }));
}

}  // namespace
