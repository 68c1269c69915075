// A hundred mates: the solver says that they are what they claim to be, and the search finds them and tells how far.

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "chess/user_board.h"
#include "search/driver/search_controller.h"
#include "support/fake_search_host.h"
#include "support/mate_solver.h"
#include "support/search_builder.h"

namespace {

struct MateProblem {
    std::string fen;
    int moves = 0;
    std::uint64_t most_nodes = 6000000;  ///< the search may spend
};

/// Throws if a line is no problem.
std::vector<MateProblem> ReadProblems() {
    std::ifstream file(VORKA_TEST_DIRECTORY "/data/mates.epd");
    std::vector<MateProblem> problems;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#') continue;
        std::istringstream words(line);
        std::string board, side, castling, en_passant, code;
        MateProblem problem;
        words >> board >> side >> castling >> en_passant >> code >> problem.moves;
        if (!words || code != "dm") throw std::invalid_argument(line);
        for (const std::string* field : {&board, &side, &castling, &en_passant}) problem.fen += *field + ' ';
        problem.fen += "0 1";
        if (char semicolon = 0; words >> semicolon >> code && code == "acn") words >> problem.most_nodes;
        problems.push_back(problem);
    }
    return problems;
}

TEST(Mates, AreAHundredInTwoToFiveMoves) {
    int count[6] = {};
    for (const MateProblem& problem : ReadProblems()) {
        ASSERT_GE(problem.moves, 2);
        ASSERT_LE(problem.moves, 5);
        ++count[problem.moves];
    }
    EXPECT_EQ(count[2], 30);
    EXPECT_EQ(count[3], 30);
    EXPECT_EQ(count[4], 20);
    EXPECT_EQ(count[5], 20);
}

TEST(Mates, AreForcedAndNoShorter) {
    for (const MateProblem& problem : ReadProblems()) {
        const BOARD board = BoardFromFen(problem.fen);
        MateSolver solver;
        EXPECT_FALSE(solver.CanMate(board, problem.moves - 1)) << problem.fen;
        EXPECT_TRUE(solver.CanMate(board, problem.moves)) << problem.fen;
    }
}

/// Ends the search as soon as it announces the score that is looked for, or when it has searched too long.
struct MateHost : FakeSearchHost {
    MateHost(const SearchController& searching, int score, std::uint64_t nodes)
        : controller(searching), wanted(score), most_nodes(nodes) {}
    void sendThinking(const SearchInfo& info) override {
        best = std::max(best, info.score);
        if (info.score == wanted) throw search_aborted_exception{.discard = false};
    }
    void pollInput() override {
        if (controller.info().nodes > most_nodes) throw search_aborted_exception{.discard = false};
    }
    const SearchController& controller;
    int wanted;
    std::uint64_t most_nodes;
    int best = -infinity_bound;  ///< the highest score announced
};

#ifdef __SANITIZE_ADDRESS__
constexpr int most_moves_searched = 3;  // watched code is slow, and goes no other ways in longer mates
#else
constexpr int most_moves_searched = 5;
#endif

// What stands for the classic search is too little for one that leaves most quiet moves out until it is far from its
// horizon: it sees a long mate of few men by quiet moves iterations later, whatever its numbers are.
constexpr std::uint64_t allowance_for_leaving_out = 8;

/// By the classic search (false) and by the tournament search.
class MateSearch : public testing::TestWithParam<bool> {};

TEST_P(MateSearch, FindsThemWithTheRightDistance) {
    Engine engine{.settings = {}, .uses_tournament_search = GetParam(), .tournament = {}};
    ASSERT_TRUE(engine.tables.transposition.resize(16U << 20U));
    for (const MateProblem& problem : ReadProblems()) {
        if (problem.moves > most_moves_searched) continue;
        engine.tables.Clear();
        UserBoard game;
        game.SetBoardFromFen(problem.fen);
        SearchController controller(engine);
        const int score = infinity_bound - (2 * problem.moves - 1);
        MateHost host(controller, score, problem.most_nodes * (GetParam() ? allowance_for_leaving_out : 1));
        controller.Run({.max_depth = 60}, game, host);
        EXPECT_EQ(controller.score(), score) << problem.fen;
        EXPECT_LE(host.best, score) << problem.fen << ": nothing shorter was ever announced";
        // And the move that is to be played does mate in time.
        BOARD after = game.board();
        after.MakeMove(controller.best_move());
        after.ResetPly();
        MateSolver solver;
        for (const Move reply : LegalMovesOf(after)) {
            BOARD child = after;
            child.MakeMove(reply);
            child.ResetPly();
            EXPECT_TRUE(solver.CanMate(child, problem.moves - 1)) << problem.fen << ' ' << MoveToCoordinate(reply);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Mates, MateSearch, testing::Bool(),
                         [](const auto& row) { return row.param ? "Tournament" : "Classic"; });

}  // namespace
