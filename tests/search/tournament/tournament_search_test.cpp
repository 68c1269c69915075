// The tournament search as a whole: it finds what is to be found, the same each time, and leaves the classic search
// alone.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "search/driver/bench_positions.h"
#include "search/driver/bench_search.h"
#include "search/driver/search_controller.h"
#include "search/driver/silent_host.h"
#include "support/fake_search_host.h"
#include "support/row_name.h"
#include "support/tournament_builder.h"

namespace {

constexpr std::string_view middle_game = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";

/// Openings, a sharp middle game, endings, promotions, and a side that is in check.
constexpr std::string_view positions[] = {
    "r1bqkbnr/pppp1ppp/2n5/1B2p3/4P3/5N2/PPPP1PPP/RNBQK2R b KQkq - 3 3",
    middle_game,
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",
    "8/pp3k2/2p1pp2/3p4/3P1P1p/2P1P2P/PP2K3/8 w - - 0 30",
    "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10",
    "4k3/8/8/8/7q/8/PPPP2PP/RNB1KBNR w - - 0 1",
};

/// An engine with what searches in it.
class Searcher {
  public:
    explicit Searcher(bool is_tournament, const TournamentSettings& settings = {}) {
        engine.uses_tournament_search = is_tournament;
        engine.tournament = settings;
        EXPECT_TRUE(engine.tables.Resize(8 * mebibyte, mebibyte));
    }

    std::uint64_t Search(std::string_view fen, const SearchLimits& limits) {
        UserBoard game;
        game.SetBoardFromFen(std::string(fen));
        host = FakeSearchHost();
        controller->Run(limits, game, host);
        return controller->info().nodes;
    }
    [[nodiscard]] int score() const { return controller->score(); }
    [[nodiscard]] std::string best_move() const { return MoveToCoordinate(controller->best_move()); }

    Engine engine;
    std::unique_ptr<SearchController> controller = std::make_unique<SearchController>(engine);
    FakeSearchHost host;
};

using Nodes = std::vector<std::uint64_t>;

Nodes NodesOf(Searcher& searcher, int depth) {
    Nodes nodes;
    for (const std::string_view fen : positions) nodes.push_back(searcher.Search(fen, {.max_depth = depth}));
    return nodes;
}

// --- The same each time ---

TEST(TournamentSearch, VisitsTheSameNodesInEachEngine) {
    Searcher first(true), second(true);
    EXPECT_EQ(NodesOf(first, 6), NodesOf(second, 6));
}

TEST(TournamentSearch, IsAnotherSearch) {
    Searcher classic(false), tournament(true);
    EXPECT_NE(NodesOf(classic, 3), NodesOf(tournament, 3));
}

TEST(TournamentSearch, AndTheClassicOneDoNotMindEachOther) {
    Searcher classic_alone(false), tournament_alone(true);
    const Nodes classic_nodes = NodesOf(classic_alone, 3);
    const Nodes tournament_nodes = NodesOf(tournament_alone, 5);
    Searcher classic(false), tournament(true);
    for (std::size_t i = 0; i < std::size(positions); ++i) {
        EXPECT_EQ(tournament.Search(positions[i], {.max_depth = 5}), tournament_nodes[i]) << positions[i];
        EXPECT_EQ(classic.Search(positions[i], {.max_depth = 3}), classic_nodes[i]) << positions[i];
    }
}

/// Its numbers are no concern of the classic search.
TEST(TournamentSearch, HasSettingsThatTheClassicSearchDoesNotRead) {
    TournamentSettings changed;
    for (const tournament_settings::Row& row : tournament_settings::Table()) changed.*row.place = row.most;
    Searcher plain(false), with_others(false, changed);
    EXPECT_EQ(NodesOf(plain, 3), NodesOf(with_others, 3));
}

TEST(TournamentSearch, HasTheSameBenchTotalInTwoRuns) {
    const auto total = [] {
        Engine engine{.settings = {}, .uses_tournament_search = true, .tournament = {}};
        EXPECT_TRUE(engine.tables.Resize(8 * mebibyte, mebibyte));
        std::uint64_t nodes = 0;
        SilentHost host;
        for (const auto& position : bench_positions) {
            nodes += SearchBenchPosition(engine, position, {.max_depth = 8}, host).nodes;
        }
        return nodes;
    };
    EXPECT_EQ(total(), total());
}

/// Whether a search with these settings visits other nodes in one of the positions.
bool ChangesNodes(const TournamentSettings& settings, const Nodes& plain, int depth) {
    Searcher searcher(true, settings);
    for (std::size_t i = 0; i < std::size(positions); ++i) {
        if (searcher.Search(positions[i], {.max_depth = depth}) != plain[i]) return true;
    }
    return false;
}

TEST(TournamentSearch, EachSettingChangesTheNodesButThoseOfTime) {
    TournamentSettings settings;
    // Or some would seldom be reached in searches as short as these.
    settings.history_pruning_limit = 400;
    settings.internal_reduction_distance = 2 * ONE_PLY;
    settings.singular_distance = 4 * ONE_PLY;
    settings.null_move_verification = 3 * ONE_PLY;
    constexpr int depth = 8;
    Searcher plain(true, settings);
    const Nodes nodes = NodesOf(plain, depth);
    for (const tournament_settings::Row& row : tournament_settings::Table()) {
        TournamentSettings least = settings, most = settings;
        least.*row.place = row.least;
        most.*row.place = row.most;
        const bool changes = ChangesNodes(least, nodes, depth) || ChangesNodes(most, nodes, depth);
        const bool is_of_time =
            row.name == "time_by_effort" || row.name.starts_with("effort_") || row.name == "only_move_depth";
        EXPECT_EQ(changes, !is_of_time) << row.name;
    }
}

// --- Time ---

/// All of the nodes go to a move that stands alone.
TEST(TournamentSearch, StopsSoonerTheMoreOfItsNodesGoToTheBestMove) {
    constexpr int hours = 10'000'000;
    const BOARD board = BoardFromFen(std::string(middle_game));
    const std::vector<Move> one{MoveOf(board, "e2a6")};
    const std::vector<Move> two{MoveOf(board, "e2a6"), MoveOf(board, "f3f6")};
    const auto depth_with = [&](const TournamentSettings& settings, const std::vector<Move>& moves) {
        Searcher searcher(true, settings);
        static_cast<void>(
            searcher.Search(middle_game, {.max_depth = 5, .variable_time_limit = hours, .root_moves = moves}));
        return searcher.controller->info().depth;
    };
    const TournamentSettings none_for_all{.time_by_effort = 1, .effort_time = 100, .effort_saving = 100};
    EXPECT_EQ(depth_with(none_for_all, one), 2) << "no search ends after its first iteration";
    EXPECT_EQ(depth_with(none_for_all, two), 5);
    EXPECT_EQ(depth_with({.time_by_effort = 1, .effort_time = 100, .effort_saving = 50}, one), 5);
    EXPECT_EQ(depth_with({.time_by_effort = 0, .effort_time = 100, .effort_saving = 100}, one), 5);
}

TEST(TournamentSearch, TheOnlyMoveTakesNoTimeOfAGame) {
    constexpr int hours = 10'000'000;
    const auto depth_with = [](int only_move_depth, std::int32_t time) {
        Searcher searcher(true, {.only_move_depth = only_move_depth});
        static_cast<void>(
            searcher.Search("7k/p7/8/8/8/8/P5q1/7K w - - 0 1", {.max_depth = 8, .variable_time_limit = time}));
        return searcher.controller->info().depth;
    };
    EXPECT_EQ(depth_with(3, hours), 3);
    EXPECT_EQ(depth_with(6, hours), 6);
    EXPECT_EQ(depth_with(80, hours), 8);
    EXPECT_EQ(depth_with(3, 0), 8) << "nobody waits for the clock";
}

// --- Limits ---

class TournamentNodeLimit : public testing::TestWithParam<std::uint64_t> {};

TEST_P(TournamentNodeLimit, IsExact) {
    Searcher searcher(true);
    EXPECT_EQ(searcher.Search(middle_game, {.max_nodes = GetParam()}), GetParam());
    EXPECT_EQ(searcher.host.finished, false) << "what was found is played";
    EXPECT_NE(searcher.controller->best_move(), INVALID);
}

INSTANTIATE_TEST_SUITE_P(TournamentSearch, TournamentNodeLimit,
                         testing::Values(1, 2, 99, 100, 101, 102, 1000, 12345, 50000));

TEST(TournamentSearch, FindsTheSameUnderALimitThatIsNotReached) {
    Searcher free(true), bounded(true);
    EXPECT_EQ(free.Search(middle_game, {.max_depth = 5}),
              bounded.Search(middle_game, {.max_depth = 5, .max_nodes = 100'000'000}));
    EXPECT_EQ(free.host.events, bounded.host.events);
}

TEST(TournamentSearch, ChoosesAmongTheRootMovesThatItIsGiven) {
    Searcher searcher(true);
    const Move losing = MoveOf(BoardFromFen(std::string(middle_game)), "f3f6");
    static_cast<void>(searcher.Search(middle_game, {.max_depth = 4, .root_moves = {losing}}));
    EXPECT_EQ(searcher.best_move(), "f3f6");
}

struct EnoughNodes {};

/// The poll throws between the order to do without a move and the search that would take it. (Where it does not, the
/// search takes the order off as it is entered.)
TEST(TournamentSearch, ForgetsAnExcludedMoveWhenItBeginsAnew) {
    struct Abort : NodePoll {
        void Poll() override { throw EnoughNodes{}; }
    } abort;
    TournamentBuilder search(middle_game);
    search.search().poll = &abort;
    search.search().poll_countdown = 1;
    search.state->excluded[0] = search.MoveNamed("e2a6");
    EXPECT_THROW(static_cast<void>(search.Ask({.distance = 5 * ONE_PLY})), EnoughNodes);
    EXPECT_NE(search.state->excluded[0], INVALID);
    search.state->NewSearch();
    for (const Move move : search.state->excluded) EXPECT_EQ(move, INVALID);
}

TEST(TournamentSearch, TakesTheOrderToDoWithoutAMoveOnce) {
    TournamentBuilder search(middle_game);
    search.state->excluded[0] = search.MoveNamed("e2a6");
    static_cast<void>(search.Ask({.distance = 3 * ONE_PLY}));
    for (const Move move : search.state->excluded) EXPECT_EQ(move, INVALID);
    EXPECT_EQ(search.classic.tables.transposition.Find(search.board().key()), nullptr) << "and stores nothing";
    static_cast<void>(search.Ask({.distance = 3 * ONE_PLY}));
    EXPECT_NE(search.classic.tables.transposition.Find(search.board().key()), nullptr);
}

TEST(TournamentSearch, SearchesAfterAnAbortedSearchAsAfterAnother) {
    // Killers and histories stay, so that the nodes may differ; what must not differ is that it works.
    Searcher searcher(true);
    for (std::uint64_t nodes = 1; nodes < 20000; nodes = nodes * 5 / 3 + 1) {
        EXPECT_EQ(searcher.Search(middle_game, {.max_nodes = nodes}), nodes);
        static_cast<void>(searcher.Search("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.max_depth = 4}));
        EXPECT_EQ(searcher.best_move(), "a1a8");
    }
}

// --- What it tells ---

/// Each line that is shown can be played to its end.
TEST(TournamentSearch, ShowsLegalLines) {
    Searcher searcher(true);
    for (const std::string_view fen : positions) {
        static_cast<void>(searcher.Search(fen, {.max_depth = 8}));
        ASSERT_FALSE(searcher.host.thinking.empty());
        for (const SearchInfo& info : searcher.host.thinking) {
            BOARD board = BoardFromFen(std::string(fen));
            ASSERT_FALSE(info.principal_variation.empty()) << fen;
            EXPECT_LE(info.known_moves, info.principal_variation.size());
            for (const auto& [move, text] : info.principal_variation) {
                const std::vector<Move> legal = LegalMovesOf(board);
                ASSERT_NE(std::ranges::find(legal, move & move_bits), legal.end()) << fen << ' ' << text;
                ASSERT_EQ(MoveToSan(board, move), text) << fen;
                board.MakeMove(move);
            }
        }
    }
}

struct ScoreRow {
    std::string_view name;
    std::string_view fen;
    int least;
    int most;
    std::string_view best_move = "";
};
std::ostream& operator<<(std::ostream& out, const ScoreRow& row) { return out << row.name; }

class TournamentScores : public testing::TestWithParam<ScoreRow> {};

TEST_P(TournamentScores, AreRight) {
    const ScoreRow& row = GetParam();
    Searcher searcher(true);
    // Bets hide a mate from searches that are not deeper than they reach.
    static_cast<void>(searcher.Search(row.fen, {.max_depth = 14}));
    EXPECT_GE(searcher.score(), row.least);
    EXPECT_LE(searcher.score(), row.most);
    if (!row.best_move.empty()) {
        EXPECT_EQ(searcher.best_move(), row.best_move);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(TournamentSearch, TournamentScores, testing::Values(
    ScoreRow{"mate in one", "6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", infinity_bound - 1, infinity_bound - 1, "a1a8"},
    ScoreRow{"mate in two", "7k/8/8/8/8/8/R7/1R4K1 w - - 0 1", infinity_bound - 3, infinity_bound - 3},
    ScoreRow{"mated in one", "7k/R7/8/8/8/8/8/1R4K1 b - - 0 1", -infinity_bound + 2, -infinity_bound + 2},
    ScoreRow{"two kings", "8/3k4/8/8/8/3K4/8/8 w - - 0 1", 0, 0},
    ScoreRow{"bare king against a knight", "8/3k4/8/8/8/3K4/3N4/8 w - - 0 1", 0, 0},
    ScoreRow{"the fifty moves are over", "7k/8/8/8/8/8/R7/6K1 w - - 99 80", 0, 0},
    ScoreRow{"a pawn that only stalemate keeps", "5k2/5P2/4K3/8/8/8/8/8 w - - 0 1", 0, 0},
    ScoreRow{"mate instead of stalemate", "7k/5Q2/8/6K1/8/8/8/8 w - - 0 1", infinity_bound - 5, infinity_bound - 5},
    ScoreRow{"king before a pawn, opposition lost", "4k3/8/4K3/4P3/8/8/8/8 b - - 0 1", -infinity_bound, -100},
    ScoreRow{"a queen for nothing", "4k3/7p/8/3q4/4P3/8/PP5P/4K3 w - - 0 1", 50, infinity_bound, "e4d5"}),
    RowName<ScoreRow>);
// clang-format on

}  // namespace
