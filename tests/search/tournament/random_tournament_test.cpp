// Whatever numbers a tuner tries inside their bounds, the tournament search ends, with a legal move and with the board
// as it was. Sets are drawn at random, half of them with values at the bounds.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "search/driver/search_controller.h"
#include "support/fake_search_host.h"
#include "support/random_games.h"
#include "support/tournament_builder.h"

namespace {

using tournament_settings::Row;
using tournament_settings::Table;

TournamentSettings RandomSettings(std::mt19937& random, bool at_bounds) {
    TournamentSettings settings;
    for (const Row& row : Table()) {
        const auto width = static_cast<std::uint32_t>(row.most - row.least) + 1;
        switch (random() % 4) {
            case 0:
                break;  // the default
            case 1:
                settings.*row.place = row.least;
                break;
            case 2:
                settings.*row.place = row.most;
                break;
            default:
                settings.*row.place = at_bounds ? row.most : row.least + static_cast<std::int32_t>(random() % width);
        }
    }
    return settings;
}

std::string TextOf(const TournamentSettings& settings) {
    std::string text;
    for (const Row& row : Table()) {
        if (settings.*row.place != TournamentSettings().*row.place) {
            text.append(" ").append(row.name).append("=").append(std::to_string(settings.*row.place));
        }
    }
    return text;
}

/// By the controller, root and all.
TEST(RandomTournamentSettings, EndWithALegalMove) {
    constexpr unsigned seed = 20261122;
    constexpr int sets = 1500;
    constexpr std::uint64_t most_nodes = 1000;
    std::mt19937 random(seed);
    for (int set = 0; set < sets; ++set) {
        Engine engine{
            .settings = {}, .uses_tournament_search = true, .tournament = RandomSettings(random, set % 2 == 0)};
        const std::string& fen = random_game_starts[static_cast<std::size_t>(set) % random_game_starts.size()];
        SCOPED_TRACE("seed " + std::to_string(seed) + ", set " + std::to_string(set) + ", " + fen +
                     TextOf(engine.tournament));
        UserBoard game;
        game.SetBoardFromFen(fen);
        SearchController controller(engine);
        FakeSearchHost host;
        controller.Run({.max_depth = 60, .max_nodes = most_nodes}, game, host);
        EXPECT_LE(controller.info().nodes, most_nodes);
        EXPECT_EQ(host.finished, false);
        EXPECT_TRUE(std::ranges::count(LegalMovesOf(game.board()), controller.best_move() & move_bits) == 1);
        EXPECT_LE(std::abs(controller.score()), infinity_bound);
        if (HasFailure()) return;
    }
}

TEST(RandomTournamentSettings, VisitTheSameNodesTwice) {
    constexpr unsigned seed = 12;
    std::mt19937 random(seed);
    for (int set = 0; set < 100; ++set) {
        const TournamentSettings settings = RandomSettings(random, set % 2 == 0);
        const std::string& fen = random_game_starts[static_cast<std::size_t>(set) % random_game_starts.size()];
        const auto events = [&] {
            Engine engine{.settings = {}, .uses_tournament_search = true, .tournament = settings};
            UserBoard game;
            game.SetBoardFromFen(fen);
            SearchController controller(engine);
            FakeSearchHost host;
            controller.Run({.max_depth = 4, .max_nodes = 20000}, game, host);
            host.events.push_back(std::to_string(controller.info().nodes));
            return host.events;
        };
        EXPECT_EQ(events(), events()) << "seed " << seed << ", set " << set << TextOf(settings);
    }
}

/// By questions to single nodes: answers are scores, the board is as before, and no move stays excluded.
TEST(RandomTournamentSettings, AnswerEachQuestion) {
    constexpr unsigned seed = 5;
    std::mt19937 random(seed);
    constexpr Score bounds[] = {-infinity_bound + 1, -mate_score_limit, -300, 0, 300,
                                mate_score_limit,    infinity_bound - 1};
    for (int set = 0; set < 300; ++set) {
        const std::string& fen = random_game_starts[static_cast<std::size_t>(set) % random_game_starts.size()];
        TournamentBuilder search(fen, RandomSettings(random, set % 2 == 0));
        SCOPED_TRACE("seed " + std::to_string(seed) + ", set " + std::to_string(set) + ", " + fen +
                     TextOf(search.rules()));
        search.search().iteration_depth = 3;
        for (const Score beta : bounds) {
            for (const Distance distance : {-200, 0, 1, 31, 63, 64, 100, 128, 192}) {
                const TournamentQuestion question{.beta = beta,
                                                  .distance = distance,
                                                  .type = static_cast<NodeType>(static_cast<int>(random() % 3) - 1)};
                struct Stop : NodePoll {
                    void Poll() override { throw 1; }
                } stop;
                search.search().poll = &stop;
                search.search().poll_countdown = 3000;
                try {
                    const Score answer = search.Ask(question);
                    ASSERT_LE(std::abs(answer), infinity_bound);
                    ASSERT_EQ(FenOf(search.board()), FenOf(BoardFromFen(fen)));
                    for (const Move move : search.state->excluded) ASSERT_EQ(move, INVALID);
                } catch (int) {
                    search.search().StartSearch(BoardFromFen(fen), 0);
                    search.state->NewSearch();
                }
            }
        }
    }
}

}  // namespace
