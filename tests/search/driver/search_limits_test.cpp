// The bounds of a search that no clock has a part in: a number of nodes, and the root moves to choose from.

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <set>
#include <span>
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

// --- Several lines ---

/// Notes the last score and the first move of each line in each iteration.
struct LineHost : FakeSearchHost {
    struct Told {
        int score;
        std::string move;
    };
    void sendThinking(const SearchInfo& info) override {
        told[info.depth][info.line] = {info.score, MoveToCoordinate(info.principal_variation.front().first)};
    }
    std::map<int, std::map<int, Told>> told;
};

struct LineSearch {
    explicit LineSearch(SearchLimits limits, std::string_view fen = middle_game) {
        game.SetBoardFromFen(std::string(fen));
        controller.Run(limits, game, host);
    }
    Engine engine;
    SearchController controller{engine};
    LineHost host;
    UserBoard game;
};

TEST(Lines, HaveMovesOfTheirOwnAndFallingScores) {
    const LineSearch search({.max_depth = 3, .lines = 5});
    for (const auto& [depth, lines] : search.host.told) {
        ASSERT_EQ(lines.size(), 5U) << depth;
        std::set<std::string> moves;
        for (const auto& [line, told] : lines) {
            EXPECT_TRUE(moves.insert(told.move).second) << depth << ' ' << told.move;
            if (line > 0) {
                EXPECT_LE(told.score, lines.at(line - 1).score) << depth;
            }
        }
    }
    EXPECT_EQ(MoveToCoordinate(search.controller.best_move()), search.host.told.at(3).at(0).move);
    EXPECT_EQ(search.controller.score(), search.host.told.at(3).at(0).score);
    EXPECT_EQ(search.controller.info().line, 0);
}

TEST(Lines, SecondOneIsWhatIsBestWithoutTheFirst) {
    constexpr std::string_view two_rooks = "6k1/5ppp/8/8/8/8/1R3PPP/R5K1 w - - 0 1";  // two mates, and nothing as good
    const LineSearch both({.max_depth = 2, .lines = 3}, two_rooks);
    const auto& lines = both.host.told.at(2);
    EXPECT_EQ((std::set<std::string>{lines.at(0).move, lines.at(1).move}), (std::set<std::string>{"a1a8", "b2b8"}));
    EXPECT_EQ(lines.at(0).score, 32766);
    EXPECT_EQ(lines.at(1).score, 32766);
    EXPECT_LT(lines.at(2).score, 32766);
}

TEST(Lines, AreNotMoreThanThereAreMoves) {
    const LineSearch search({.max_depth = 2, .lines = 8}, "7k/8/8/8/8/8/1r6/7K w - - 0 1");
    EXPECT_EQ(search.host.told.at(2).size(), 1U);
}

TEST(Lines, LeaveTheBestMoveInPlaceWhereverTheSearchEnds) {
    for (std::uint64_t nodes = 500; nodes < 30000; nodes += 777) {
        const LineSearch search({.max_nodes = nodes, .lines = 4});
        const auto& info = search.controller.info();
        EXPECT_EQ(info.line, 0);
        ASSERT_FALSE(info.principal_variation.empty());
        EXPECT_EQ(info.principal_variation.front().first, search.controller.best_move());
        const auto& last = search.host.told.rbegin()->second;
        if (last.size() > 1) {
            EXPECT_EQ(MoveToCoordinate(search.controller.best_move()), last.at(0).move) << nodes;
        }
    }
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
    void sendBound(const SearchInfo& info, int score, ScoreBound bound, std::span<const Move> line) override {
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
