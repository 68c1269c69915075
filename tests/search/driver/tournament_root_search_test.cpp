#include "search/driver/tournament_root_search.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

std::vector<RootMoveRecord> MovesWithNodes(const std::vector<std::uint64_t>& nodes) {
    std::vector<RootMoveRecord> moves;
    for (const std::uint64_t count : nodes) moves.push_back({.text = std::to_string(count), .nodes = count});
    return moves;
}

std::string Names(const std::vector<RootMoveRecord>& moves) {
    std::string names;
    for (const RootMoveRecord& record : moves) names += record.text + " ";
    return names;
}

/// The root search that has begun a search with these settings.
class TournamentRoot : public testing::Test {
  protected:
    TournamentRootSearch& Root() {
        root_.NewSearch();
        return root_;
    }
    /// Milliseconds after which no further iteration begins, if the moves took so many nodes.
    std::int64_t TimeWanted(const std::vector<std::uint64_t>& nodes) {
        SearchClock clock;
        clock.Reset(0, 1000);
        clock.NewIteration();
        clock.NewIteration();
        Root().NoteEffort(MovesWithNodes(nodes), clock);
        std::int64_t milliseconds = 0;
        while (!clock.ShouldStop(milliseconds, SearchMoment::iteration_complete, FailState::none)) ++milliseconds;
        return milliseconds;
    }

    TournamentSettings settings_;

  private:
    TournamentRootSearch root_{settings_};
};

TEST_F(TournamentRoot, BringsLargeSubtreesForward) {
    auto moves = MovesWithNodes({5, 10, 40, 20, 30});
    Root().OrderMoves(moves, 1, 3);
    EXPECT_EQ(Names(moves), "5 40 30 20 10 ") << "the best move stays in front";
}

TEST_F(TournamentRoot, LeavesTheBestMoveOfEachLineInItsPlace) {
    auto moves = MovesWithNodes({5, 10, 20, 30, 40});
    Root().OrderMoves(moves, 3, 3);
    EXPECT_EQ(Names(moves), "5 10 20 40 30 ");
}

TEST_F(TournamentRoot, KeepsMovesOfEqualSizeInTheirOrder) {
    auto moves = MovesWithNodes({1, 7, 7, 7});
    moves[1].text = "first";
    moves[3].text = "last";
    Root().OrderMoves(moves, 1, 5);
    EXPECT_EQ(Names(moves), "1 first 7 last ");
}

TEST_F(TournamentRoot, ForgetsAPartOfOlderIterations) {
    settings_.root_memory = 25;
    auto moves = MovesWithNodes({100, 40});
    Root().OrderMoves(moves, 1, 3);
    EXPECT_EQ(moves[0].nodes, 25U);
    EXPECT_EQ(moves[1].nodes, 10U);
}

TEST_F(TournamentRoot, KeepsTheOrderOfTheFirstIterationsAndIfToldTo) {
    auto moves = MovesWithNodes({5, 10, 40});
    Root().OrderMoves(moves, 1, 2);
    EXPECT_EQ(Names(moves), "5 10 40 ");
    settings_.root_order = 0;
    Root().OrderMoves(moves, 1, 3);
    EXPECT_EQ(Names(moves), "5 10 40 ");
    EXPECT_EQ(moves[2].nodes, 40U);
}

TEST_F(TournamentRoot, ReducesLateMovesOfDeepIterations) {
    settings_.root_full_moves = 4;
    EXPECT_EQ(Root().Reduction(3, 8), 0);
    EXPECT_GT(Root().Reduction(4, 8), 0);
    EXPECT_GT(Root().Reduction(20, 8), Root().Reduction(4, 8));
    EXPECT_GT(Root().Reduction(4, 12), Root().Reduction(4, 8));
    EXPECT_EQ(Root().Reduction(20, 2), 0);
    settings_.late_move_reduction = 0;
    EXPECT_EQ(Root().Reduction(20, 8), 0);
}

TEST_F(TournamentRoot, TakesLessTimeTheMoreWentToTheBestMove) {
    settings_.time_by_effort = 0;
    const std::int64_t usual = TimeWanted({99, 1});
    EXPECT_EQ(TimeWanted({1, 99}), usual);
    settings_.time_by_effort = 1;
    settings_.effort_time = 150;
    settings_.effort_saving = 100;
    EXPECT_EQ(TimeWanted({100, 0}), usual / 2);
    EXPECT_EQ(TimeWanted({50, 30, 20}), usual);
    EXPECT_EQ(TimeWanted({0, 100}), usual + usual / 2);
    EXPECT_EQ(TimeWanted({0, 0}), usual) << "nothing is known";
}

TEST_F(TournamentRoot, ThinksOnAnOnlyMoveForSomePlies) {
    settings_.only_move_depth = 4;
    EXPECT_FALSE(Root().IsEnoughForOnlyMove(3));
    EXPECT_TRUE(Root().IsEnoughForOnlyMove(4));
}

}  // namespace
