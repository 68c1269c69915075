// The bounds of a search that no clock has a part in: a number of nodes, and the root moves to choose from.

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "chess/notation.h"
#include "search/driver/search_controller.h"
#include "support/fake_search_host.h"

namespace {

constexpr std::string_view middle_game = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";

/// A search of a fresh engine, and what it came to.
struct FreshSearch {
    explicit FreshSearch(SearchLimits limits) {
        game.SetBoardFromFen(std::string(middle_game));
        controller.Run(limits, game, host);
    }
    [[nodiscard]] std::uint64_t nodes() const { return controller.info().nodes; }
    [[nodiscard]] std::string best_move() const { return MoveToCoordinate(controller.best_move()); }

    Engine engine;
    SearchController controller{engine};
    FakeSearchHost host;
    UserBoard game;
};

Move MoveNamed(const std::string& text) {
    UserBoard game;
    game.SetBoardFromFen(std::string(middle_game));
    MoveParseError error{};
    return ParseMove(text, game.board(), error);
}

class NodeLimit : public testing::TestWithParam<std::uint64_t> {};

TEST_P(NodeLimit, IsExact) {
    const FreshSearch search({.max_nodes = GetParam()});
    EXPECT_EQ(search.nodes(), GetParam());
    EXPECT_EQ(search.host.finished, false) << "what was found is played";
    EXPECT_NE(search.controller.best_move(), INVALID);
}

TEST_P(NodeLimit, GivesTheSameSearchEachTime) {
    const FreshSearch first({.max_nodes = GetParam()}), second({.max_nodes = GetParam()});
    EXPECT_EQ(first.host.events, second.host.events);
    EXPECT_EQ(first.best_move(), second.best_move());
}

INSTANTIATE_TEST_SUITE_P(SearchLimits, NodeLimit, testing::Values(1, 2, 99, 100, 101, 102, 1000, 12345, 50000));

TEST(SearchLimits, DepthThatEndsBeforeTheNodesIsSearchedAsEver) {
    const FreshSearch free({.max_depth = 3}), bounded({.max_depth = 3, .max_nodes = 100'000'000});
    EXPECT_EQ(free.nodes(), bounded.nodes());
    EXPECT_EQ(free.host.events, bounded.host.events);
}

TEST(SearchLimits, NodesEndAPonderingSearchOnlyAfterTheHit) {
    UserBoard game;
    game.SetBoardFromFen(std::string(middle_game));
    Engine engine;
    SearchController controller(engine);
    FakeSearchHost host;
    std::uint64_t hit_at = 0;
    host.on_poll = [&] {
        if (hit_at != 0 || controller.info().nodes < 20000) return;
        hit_at = controller.info().nodes;
        controller.PonderHit();
    };
    controller.Run({.kind = SearchKind::pondering, .max_nodes = 1000}, game, host);
    EXPECT_GE(hit_at, 20000U);
    EXPECT_GE(controller.info().nodes, hit_at);
    EXPECT_EQ(host.finished, false);
}

TEST(SearchLimits, ChosenRootMovesAreTheOnlyOnes) {
    const Move quiet = MoveNamed("a2a3"), losing = MoveNamed("f3f6");
    const FreshSearch one({.max_depth = 3, .root_moves = {losing}});
    EXPECT_EQ(one.best_move(), "f3f6");
    EXPECT_EQ(one.controller.info().root_moves, 1);
    const FreshSearch two({.max_depth = 3, .root_moves = {losing, quiet}});
    EXPECT_EQ(two.controller.info().root_moves, 2);
}

TEST(SearchLimits, RootMovesThatTheGameDoesNotHaveLeaveNothingToSearch) {
    const FreshSearch search({.max_depth = 3, .root_moves = {INVALID}});
    EXPECT_EQ(search.host.finished, true);
    EXPECT_EQ(search.controller.best_move(), INVALID);
}

// --- Polls ---

TEST(PollInterval, DoesNotChangeTheSearch) {
    const FreshSearch usual({.max_nodes = 60000}), often({.max_nodes = 60000, .poll_interval = 1});
    EXPECT_EQ(usual.nodes(), often.nodes());
    EXPECT_EQ(usual.host.events, often.host.events);
    EXPECT_GT(often.host.polls, 2 * usual.host.polls);
}

TEST(PollInterval, DisturbsTheFirstIterationToo) {
    const FreshSearch usual({.max_depth = 1}), often({.max_depth = 1, .poll_interval = 1});
    ASSERT_GT(usual.nodes(), first_poll_countdown);
    EXPECT_EQ(usual.host.polls, 0);
    EXPECT_GT(often.host.polls, 0);
}

// --- What is told besides ---

/// Notes root moves and bounds.
struct ListeningHost : FakeSearchHost {
    void sendCurrentMove(const SearchInfo& info, Move move) override {
        current.push_back(MoveToCoordinate(move));
        places.push_back(info.root_moves - info.moves_to_search + 1);
    }
    void sendBound(const SearchInfo& info, int score, ScoreBound bound, const std::vector<Move>& line) override {
        ASSERT_FALSE(line.empty());
        EXPECT_EQ(MoveToCoordinate(line.front()), current.back());
        (bound == ScoreBound::at_least ? lowest : highest)[info.depth] = score;
    }
    std::vector<std::string> current;
    std::vector<int> places;
    std::map<int, int> lowest, highest;  ///< the last bounds of each iteration
};

TEST(SearchHost, HearsEachRootMoveAndTheBoundsOfItsScore) {
    UserBoard game;
    game.SetBoardFromFen(std::string(middle_game));
    Engine engine;
    SearchController controller(engine);
    ListeningHost host;
    controller.Run({.max_depth = 2}, game, host);
    const auto moves = static_cast<std::size_t>(controller.info().root_moves);
    ASSERT_EQ(host.current.size(), 2 * moves);
    for (std::size_t i = 0; i < host.places.size(); ++i) EXPECT_EQ(host.places[i], static_cast<int>(i % moves) + 1);
    EXPECT_LE(host.lowest[2], controller.score());
    EXPECT_GE(host.highest[2], controller.score());
}

TEST(SearchInfo, TellsTheLongestLineOfTheIteration) {
    const FreshSearch search({.max_depth = 3});
    EXPECT_GT(search.controller.info().selective_depth, 3);
    EXPECT_LT(search.controller.info().selective_depth, static_cast<int>(max_frames));
}

TEST(SearchController, SearchesAPositionThatIsADrawByRuleIfThereIsNoGame) {
    UserBoard game;
    game.SetBoardFromFen("4k3/8/8/8/8/8/8/4K2R w - - 100 80");
    ASSERT_TRUE(game.IsGameOver());
    Engine engine;
    SearchController controller(engine);
    FakeSearchHost host;
    controller.Run({.max_depth = 2}, game, host);
    EXPECT_EQ(host.finished, true);
    EXPECT_EQ(controller.best_move(), INVALID);
    controller.Run({.max_depth = 2}, game.board(), host);
    EXPECT_EQ(host.finished, false);
    EXPECT_NE(controller.best_move(), INVALID);
    EXPECT_EQ(controller.score(), 0);
}

}  // namespace
