#include "search/state/search_statistics.h"

#include <gtest/gtest.h>

#include "support/search_builder.h"

namespace {

/// A position and the move that leads to the one asked about: the tree begins below the root.
struct Start {
    std::string_view fen;
    std::string_view move;
};

constexpr Start quiet_middle_game{"r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP2PPBP/R1BQ1RK1 w - - 4 10", "b2b3"};
/// The queen takes a rook for nothing.
constexpr Start rook_hangs{"2r2k2/5ppp/8/3r4/8/7P/3Q1PP1/6K1 b - - 0 1", "f8g8"};
/// One square is left to the king.
constexpr Start single_reply{"r6k/3r4/8/8/8/8/3P4/4K3 b - - 0 1", "a8a1"};

SearchStatistics StatisticsOf(const Start& start, Score beta, Distance distance, const SearchSettings& with = {}) {
    SearchBuilder search(start.fen, with);
    search.Make(start.move);
    (void)search.Ask(beta, distance);
    return search.board->statistics;
}

TEST(SearchStatistics, QuiescenceNodeHasNoDistanceLeft) {
    EXPECT_EQ(StatisticsOf(quiet_middle_game, -500, 0).quiescence_nodes, 1U);
    SearchBuilder search(quiet_middle_game.fen);
    search.Make(quiet_middle_game.move);
    (void)search.Ask(-500, 1);
    EXPECT_EQ(search.board->nodes, 2U);
    EXPECT_EQ(search.board->statistics.quiescence_nodes, 1U) << "the position after the first move";
}

TEST(SearchStatistics, NodeInCheckIsNoQuiescenceNode) {
    SearchBuilder search(single_reply.fen);
    search.Make(single_reply.move);
    (void)search.Ask(-5000, 0);
    EXPECT_EQ(search.board->nodes, 2U);
    EXPECT_EQ(search.board->statistics.quiescence_nodes, 1U) << "the position after the king's move";
}

TEST(SearchStatistics, CutByTheFirstMoveCountsTwice) {
    const SearchStatistics found = StatisticsOf(rook_hangs, 150, 0);
    EXPECT_GT(found.cuts, 0U);
    EXPECT_EQ(found.first_move_cuts, found.cuts);
}

TEST(SearchStatistics, CutByALaterMoveCountsOnce) {
    const SearchStatistics found = StatisticsOf(quiet_middle_game, 0, 4 * ONE_PLY);
    EXPECT_GT(found.cuts, found.first_move_cuts);
    EXPECT_GT(found.first_move_cuts, 0U);
}

TEST(SearchStatistics, StandingPatIsNoCut) { EXPECT_EQ(StatisticsOf(quiet_middle_game, -500, 0).cuts, 0U); }

TEST(SearchStatistics, MovesAreExtendedOnlyWithExtensions) {
    EXPECT_GT(StatisticsOf(single_reply, -1000, 2 * ONE_PLY).extended_moves, 0U) << "a single reply";
    EXPECT_EQ(StatisticsOf(single_reply, -1000, 2 * ONE_PLY, {.enable_search_extensions = false}).extended_moves, 0U);
}

TEST(SearchStatistics, LateMovesAreReduced) {
    EXPECT_GT(StatisticsOf(quiet_middle_game, 0, 5 * ONE_PLY).reduced_moves, 0U);
    EXPECT_EQ(StatisticsOf(quiet_middle_game, 0, 5 * ONE_PLY, {.enable_late_move_reduction = false}).reduced_moves, 0U);
}

TEST(SearchStatistics, ReducedMoveThatReachesBetaIsVerified) {
    EXPECT_GT(StatisticsOf(quiet_middle_game, 0, 6 * ONE_PLY).verifications, 0U);
    EXPECT_EQ(StatisticsOf(quiet_middle_game, 0, 6 * ONE_PLY, {.enable_verification_search = false}).verifications, 0U);
}

}  // namespace
