// The bounds of a search that no clock has a part in: a number of nodes, and the root moves to choose from.

#include <gtest/gtest.h>

#include <cstdint>
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

}  // namespace
