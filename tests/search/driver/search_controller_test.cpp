#include "search/driver/search_controller.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "chess/move_generator.h"
#include "support/board_builder.h"
#include "support/fake_search_host.h"
#include "support/plain_settings.h"
#include "support/random_games.h"
#include "support/row_name.h"

namespace {

constexpr std::string_view middle_game_fen = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";

UserBoard GameFrom(std::string_view fen) {
    UserBoard game;
    game.SetBoardFromFen(std::string(fen));
    return game;
}

/// One search from a fresh controller and empty tables.
struct SearchRun {
    explicit SearchRun(std::string_view fen, SearchLimits search_limits = {})
        : game(GameFrom(fen)), limits(search_limits) {}
    void Run() { controller.Run(limits, game, host); }

    Engine engine;
    SearchController controller{engine};
    FakeSearchHost host;
    UserBoard game;
    SearchLimits limits;
};

std::vector<std::string> EventsOf(const FakeSearchHost& host, std::string_view prefix) {
    std::vector<std::string> events;
    for (const std::string& event : host.events) {
        if (event.compare(0, prefix.size(), prefix) == 0) events.push_back(event);
    }
    return events;
}

// --- Mates ---

struct MateRow {
    std::string_view name;
    std::string_view fen;
    int max_depth;
    Score score;
    std::string_view best;  ///< in coordinate notation; empty: any
};
std::ostream& operator<<(std::ostream& out, const MateRow& row) { return out << row.fen; }

class Mates : public testing::TestWithParam<MateRow> {};

/// Half moves to the mate that the side on move forces, or suffers if it must; 0 if there is none within `plies`.
int SlowMate(const BOARD& board, int plies) {
    const std::vector<Move> moves = LegalMovesOf(board);
    int shortest_win = 0, longest_loss = 0;
    bool loses = plies > 0;
    for (const Move move : moves) {
        if (plies == 0) break;
        BOARD after = board;
        after.MakeMove(move);
        if (after.in_check() && LegalMovesOf(after).empty()) return 1;
        const int reply = SlowMate(after, plies - 1);
        if (reply < 0 && (shortest_win == 0 || 1 - reply < shortest_win)) shortest_win = 1 - reply;
        if (reply <= 0) loses = false;
        if (reply + 1 > longest_loss) longest_loss = reply + 1;
    }
    if (shortest_win != 0) return shortest_win;
    return loses && !moves.empty() ? -longest_loss : 0;
}

TEST_P(Mates, AreFoundWithTheirDistance) {
    const MateRow& row = GetParam();
    const int mate = SlowMate(BoardFromFen(std::string(row.fen)), row.max_depth);
    ASSERT_EQ(row.score, mate > 0 ? 32767 - mate : -32767 - mate) << "the row itself";
    SearchRun run(row.fen, {.max_depth = row.max_depth});
    run.Run();
    EXPECT_EQ(run.controller.score(), row.score);
    if (!row.best.empty()) {
        EXPECT_EQ(MoveToCoordinate(run.controller.best_move()), row.best);
    }
    const auto& line = run.controller.info().principal_variation;
    const int plies = 32767 - std::abs(row.score);
    // The line is that of the last question; one that asks for a faster mate ends before the mating move.
    ASSERT_GE(line.size(), static_cast<std::size_t>(plies) - 1);
    if (line.size() == static_cast<std::size_t>(plies)) {
        EXPECT_EQ(line.back().second.back(), '#');
    }
    EXPECT_LE(line.size(), static_cast<std::size_t>(plies));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(SearchController, Mates, testing::Values(
    MateRow{"mate in one", "6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", 1, 32766, "a1a8"},
    MateRow{"mate in one for Black", "r5k1/5ppp/8/8/8/8/5PPP/6K1 b - - 0 1", 1, 32766, "a8a1"},
    MateRow{"mate in two", "7k/8/8/8/8/8/R7/1R4K1 w - - 0 1", 3, 32764, ""},
    MateRow{"mated in one", "7r/8/8/8/8/1k6/8/K7 w - - 0 1", 2, -32765, "a1b1"},
    MateRow{"mate in three", "8/8/7k/8/R7/1R6/8/6K1 w - - 0 1", 5, 32762, ""}),
    RowName<MateRow>);
// clang-format on

// --- Iterations ---

TEST(SearchController, DepthLimitOfFiveRunsFiveIterations) {
    SearchRun run("4k3/pppp4/8/8/8/8/PPPP4/4K3 w - - 0 1", {.max_depth = 5});
    run.Run();
    EXPECT_EQ(EventsOf(run.host, "depth"),
              (std::vector<std::string>{"depth 1", "depth 2", "depth 3", "depth 4", "depth 5"}));
    EXPECT_EQ(run.controller.info().depth, 5);
    EXPECT_EQ(run.host.finished, false);
    EXPECT_EQ(run.host.events[run.host.events.size() - 2], "statistics");
    EXPECT_EQ(run.host.events.back(), "finished");
}

TEST(SearchController, WithoutALimitTheLastIterationIsTheEightieth) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1");
    run.Run();
    EXPECT_EQ(EventsOf(run.host, "depth").size(), 80U);
    EXPECT_EQ(EventsOf(run.host, "depth").back(), "depth 80");
}

TEST(SearchController, HugeDepthLimitIsOrderly) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1",
                  {.kind = SearchKind::normal, .max_depth = 2147483647, .variable_time_limit = 50});
    run.Run();
    EXPECT_EQ(run.host.finished, false);
}

TEST(SearchController, FirstMoveIsReportedInEachIterationAndCandidatesWhenConfirmed) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.max_depth = 2});
    run.Run();
    ASSERT_GE(run.host.events.size(), 3U);
    EXPECT_EQ(run.host.events[0], "depth 1");
    EXPECT_EQ(run.host.events[1].substr(0, 8), "thinking");
    EXPECT_EQ(EventsOf(run.host, "thinking 32766 Ra8#").size(), 2U);
    // The mate is found in the first iteration, by the first move or after it, and then is the first move of the next.
    const auto second = std::find(run.host.events.begin(), run.host.events.end(), "depth 2");
    ASSERT_NE(second, run.host.events.end());
    EXPECT_EQ(*(second + 1), "thinking 32766 Ra8#");
    EXPECT_EQ(*(second + 2), "statistics") << "no other move beats a mate in one";
}

TEST(SearchController, CandidateIsNamedBeforeItIsConfirmed) {
    SearchRun run(middle_game_fen, {.max_depth = 1});
    run.Run();
    const auto& events = run.host.events;
    int candidates = 0;
    for (std::size_t i = 0; i < events.size(); ++i) {
        if (events[i].compare(0, 10, "candidate ") != 0) continue;
        ++candidates;
        const std::string move = events[i].substr(10);
        if (events[i + 1] == "instability") continue;
        EXPECT_NE(events[i + 1].find(' ' + move), std::string::npos) << events[i] << ", then " << events[i + 1];
    }
    EXPECT_GT(candidates, 0);
}

TEST(SearchController, ScoresRiseWithinAnIteration) {
    SearchRun run(middle_game_fen, {.max_depth = 3});
    run.Run();
    const SearchInfo* before = nullptr;
    for (const SearchInfo& info : run.host.thinking) {
        if (before != nullptr && before->depth == info.depth) {
            EXPECT_GT(info.score, before->score);
        }
        before = &info;
    }
}

TEST(SearchController, OnlyMoveIsSearchedLikeAnyOther) {
    SearchRun run("7k/8/8/8/8/8/6q1/7K w - - 0 1", {.max_depth = 4});
    run.Run();
    EXPECT_EQ(EventsOf(run.host, "depth").size(), 4U);
    EXPECT_EQ(EventsOf(run.host, "thinking").size(), 4U);
    EXPECT_EQ(MoveToCoordinate(run.controller.best_move()), "h1g2");
}

TEST(SearchController, LinesArePlayable) {
    for (const std::string_view fen : {std::string_view(start_fen), middle_game_fen,
                                       std::string_view("8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1")}) {
        SearchRun run(fen, {.max_depth = 3});
        run.Run();
        ASSERT_FALSE(run.host.thinking.empty());
        for (const SearchInfo& info : run.host.thinking) {
            BOARD board = run.game.board();
            ASSERT_FALSE(info.principal_variation.empty());
            for (const auto& [move, text] : info.principal_variation) {
                ASSERT_TRUE(VerifyMove(move, board)) << fen << ", depth " << info.depth << ": " << text;
                EXPECT_EQ(text, MoveToSan(board, move));
                board.MakeMove(move);
            }
        }
        EXPECT_EQ(run.controller.best_move(), run.host.thinking.back().principal_variation.front().first);
    }
}

TEST(SearchController, SameSearchTwiceVisitsTheSameTree) {
    std::vector<std::string> events[2];
    std::uint64_t nodes[2];
    for (int i = 0; i < 2; ++i) {
        SearchRun run(middle_game_fen, {.max_depth = 6});
        run.Run();
        events[i] = run.host.events;
        nodes[i] = run.controller.info().nodes;
    }
    EXPECT_EQ(events[0], events[1]);
    EXPECT_EQ(nodes[0], nodes[1]);
    EXPECT_GT(nodes[0], 10000U);
}

TEST(SearchController, GameIsLeftAlone) {
    SearchRun run(middle_game_fen, {.max_depth = 2});
    run.Run();
    EXPECT_EQ(run.game.GetFen().substr(0, 60), std::string(middle_game_fen).substr(0, 60));
    EXPECT_TRUE(run.game.made_moves().empty());
}

TEST(SearchController, InfoCountsTheMovesLeftInTheIteration) {
    SearchRun run(middle_game_fen, {.max_depth = 1});
    run.Run();
    ASSERT_FALSE(run.host.thinking.empty());
    EXPECT_EQ(run.host.thinking.front().root_moves, 48);
    EXPECT_EQ(run.host.thinking.front().moves_to_search, 47) << "the first one is finished";
    EXPECT_EQ(run.controller.info().moves_to_search, 0) << "refuted moves are finished too";
    EXPECT_FALSE(run.controller.info().valid) << "no move is in work any more";
    EXPECT_TRUE(run.host.thinking.front().valid);
    EXPECT_FALSE(run.controller.IsRunning());
}

// --- A candidate that fails on confirmation ---

/// Rook against rook: the king steps out of check to the rook it protects, and at depth 2 that looks better for one
/// question and not for the next.
class FailedCandidate : public testing::Test {
  protected:
    FailedCandidate() {
        run_.engine.settings = PlainSettings();
        // The search that confirms the candidate sees one ply less than the question that found it.
        run_.host.on_candidate = [this] {
            if (candidates_++ == 0) run_.engine.settings.root_distance_multiplier = 0;
            moves_left_ = run_.controller.info().moves_to_search;
        };
        run_.host.on_instability = [this] { run_.engine.settings.root_distance_multiplier = 64; };
    }

    SearchRun run_{"5r2/8/5k2/8/8/5R2/4K3/8 b - - 8 1", {.max_depth = 2}};
    int candidates_ = 0;
    int moves_left_ = 0;
};

TEST_F(FailedCandidate, IsNotTheBestMove) {
    run_.Run();
    ASSERT_EQ(candidates_, 1);
    ASSERT_EQ(run_.host.events[run_.host.events.size() - 4], "candidate Ke7");
    ASSERT_EQ(run_.host.events[run_.host.events.size() - 3], "instability");
    EXPECT_EQ(run_.controller.score(), run_.host.thinking.back().score);
    EXPECT_NE(MoveToCoordinate(run_.controller.best_move()), "f6e7");
    EXPECT_EQ(run_.controller.info().principal_variation, run_.host.thinking.back().principal_variation);
}

TEST_F(FailedCandidate, IsTheSecondMoveOfTheNextIteration) {
    run_.limits.max_depth = 3;
    run_.Run();
    const auto& events = run_.host.events;
    const auto next = std::find(events.begin(), events.end(), "depth 3");
    ASSERT_NE(next, events.end());
    EXPECT_EQ(run_.host.thinking[2].principal_variation.front(), run_.host.thinking[1].principal_variation.front())
        << "the old best move is the first again";
    EXPECT_EQ(*(next + 2), "candidate Ke7");
    EXPECT_EQ(moves_left_, run_.controller.info().root_moves - 1);
    EXPECT_EQ(MoveToCoordinate(run_.controller.best_move()), "f6e7");
}

/// A candidate beat the best score at this depth; a search that is cut off while it works out by how much plays it.
TEST(SearchController, CandidateStandsAsTheBestMoveWhileItIsConfirmed) {
    int cut_off = 0;
    for (const std::string& fen : random_game_starts) {
        SearchRun run(fen, {.max_depth = 3});
        std::string candidate;
        run.host.on_poll = [&] {
            const std::string& last = run.host.events.back();
            if (last.compare(0, 10, "candidate ") != 0 || run.controller.info().root_move_text != last.substr(10))
                return;
            candidate = last.substr(10);
            throw search_aborted_exception{false};
        };
        run.Run();
        if (candidate.empty()) continue;
        ++cut_off;
        EXPECT_EQ(MoveToSan(run.game.board(), run.controller.best_move()), candidate) << fen;
        EXPECT_EQ(run.controller.score(), run.host.thinking.back().score) << fen << ": the score is the old one";
    }
    EXPECT_GT(cut_off, 0) << "no poll came at the right time";
}

// --- Draws ---

TEST(SearchController, ContemptIsTheWorthOfADrawForTheRootSide) {
    for (const std::string_view fen : {"7k/8/8/8/8/8/6r1/7K w - - 0 1", "7K/8/8/8/8/8/6R1/7k b - - 0 1"}) {
        SearchRun run(fen, {.max_depth = 2});
        run.controller.SetContempt(33);
        run.Run();
        EXPECT_EQ(run.controller.score(), 33) << fen << ": taking the rook leaves the kings alone";
    }
}

TEST(SearchController, ContemptDecidesBetweenADrawAndTheRest) {
    // A queen behind: a move of the king is the hundredth without progress, one of the pawn starts the count again.
    constexpr std::string_view fen = "3qk3/8/8/8/8/8/P7/4K3 w - - 99 80";
    SearchRun content(fen, {.max_depth = 1});
    content.Run();
    EXPECT_EQ(content.controller.score(), 0);
    EXPECT_EQ(MovingPiece(content.controller.best_move()), king);
    SearchRun proud(fen, {.max_depth = 1});
    proud.controller.SetContempt(-7000);
    proud.Run();
    EXPECT_GT(proud.controller.score(), -7000);
    EXPECT_EQ(MovingPiece(proud.controller.best_move()), pawn);
}

TEST(SearchController, NewContemptClearsTheTablesThatDependOnIt) {
    Engine engine;
    HashTables& tables = engine.tables;
    SearchController controller(engine);
    const auto fill = [&tables] {
        tables.transposition.Store(TranspositionEntry::Make(5, INVALID, false, 0, NodeFlags::none));
        tables.evaluation.Store({.key = 5, .score = 1});
        tables.pawn.Store({.pawn_key = 5, .position_type = 2});
    };
    const auto is_empty = [](const ABSTRACT_HASH_TABLE& table) { return table.freeSlots() == table.totalSlots(); };
    fill();
    controller.SetContempt(0);
    EXPECT_FALSE(is_empty(tables.transposition)) << "the same value does nothing";
    controller.SetContempt(10);
    EXPECT_EQ(controller.contempt(), 10);
    EXPECT_TRUE(is_empty(tables.transposition));
    EXPECT_TRUE(is_empty(tables.evaluation));
    EXPECT_FALSE(is_empty(tables.pawn));
    fill();
    controller.SetPersonality(0);
    EXPECT_FALSE(is_empty(tables.transposition));
    controller.SetPersonality(-5);
    EXPECT_TRUE(is_empty(tables.transposition));
    EXPECT_TRUE(is_empty(tables.evaluation));
    EXPECT_FALSE(is_empty(tables.pawn));
}

TEST(SearchController, DrawScoreOfTheEvaluationFollowsTheRootSide) {
    // Whether a score from before the search survives it.
    Engine engine;
    HashTables& tables = engine.tables;
    const auto run_with_a_full_table = [&tables](SearchController& controller, std::string_view fen) {
        FakeSearchHost host;
        tables.evaluation.Store({.key = 5, .score = 1});
        controller.Run({.max_depth = 1}, GameFrom(fen), host);
        return tables.evaluation.Probe(5, 1) != EvaluationAnswer::not_found;
    };
    constexpr std::string_view white_to_move = "4k3/pppp4/8/8/8/8/PPPP4/4K3 w - - 0 1";
    constexpr std::string_view black_to_move = "4k3/pppp4/8/8/8/8/PPPP4/4K3 b - - 0 1";
    SearchController controller(engine);
    EXPECT_TRUE(run_with_a_full_table(controller, black_to_move)) << "no contempt, one draw score for both sides";
    controller.SetContempt(20);
    EXPECT_TRUE(run_with_a_full_table(controller, black_to_move));
    EXPECT_FALSE(run_with_a_full_table(controller, white_to_move)) << "what was stored for Black is worth nothing now";
    EXPECT_TRUE(run_with_a_full_table(controller, white_to_move));
}

// --- Ends before the tree ---

TEST(SearchController, FinishedGameIsNotSearched) {
    SearchRun run("R5k1/5ppp/8/8/8/8/5PPP/6K1 b - - 0 1");
    ASSERT_TRUE(run.game.IsGameOver());
    run.Run();
    EXPECT_EQ(run.host.events, std::vector<std::string>{"discarded"});
    EXPECT_EQ(run.controller.best_move(), INVALID);
    EXPECT_FALSE(run.controller.info().valid);
}

TEST(SearchController, InvalidPositionIsNotSearched) {
    SearchRun run(start_fen);
    run.game.SetInvalid();
    run.Run();
    EXPECT_EQ(run.host.events, std::vector<std::string>{"discarded"});
    EXPECT_EQ(run.controller.best_move(), INVALID);
}

TEST(SearchController, EarlierResultIsForgotten) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.max_depth = 1});
    run.Run();
    ASSERT_NE(run.controller.best_move(), INVALID);
    run.game = GameFrom("R5k1/5ppp/8/8/8/8/5PPP/6K1 b - - 0 1");
    run.Run();
    EXPECT_EQ(run.controller.best_move(), INVALID);
    EXPECT_EQ(run.controller.score(), 0);
    EXPECT_TRUE(run.controller.info().principal_variation.empty());
}

// --- Polling and what flies through ---

/// Too much to search in any test: the host has to end it.
constexpr std::string_view endless = middle_game_fen;

TEST(SearchController, AbortKeepsTheLastCompletedUpdate) {
    for (const bool discard : {false, true}) {
        SearchRun run(endless);
        run.host.on_poll = [&run, discard] {
            if (run.controller.info().depth >= 3) throw search_aborted_exception{discard};
        };
        run.Run();
        EXPECT_EQ(run.host.finished, discard);
        ASSERT_TRUE(run.host.statistics);
        EXPECT_FALSE(run.controller.IsRunning());
        ASSERT_FALSE(run.host.thinking.empty());
        EXPECT_EQ(run.controller.score(), run.host.thinking.back().score);
        EXPECT_EQ(run.controller.info().start.valid, true);
        EXPECT_EQ(run.controller.info().end.valid, true);
        EXPECT_GT(run.controller.info().nodes, 0U);
    }
}

TEST(SearchController, SearchRunsWhileItIsPolled) {
    SearchRun run(endless);
    bool was_running = false;
    bool was_valid = false;
    std::string move_text;
    run.host.on_poll = [&] {
        was_running = run.controller.IsRunning();
        was_valid = run.controller.info().valid;
        move_text = run.controller.info().root_move_text;
        if (run.controller.info().depth >= 2) throw search_aborted_exception{true};
    };
    run.Run();
    EXPECT_TRUE(was_running);
    EXPECT_TRUE(was_valid);
    EXPECT_FALSE(move_text.empty());
}

TEST(SearchController, InputIsNotServedInAShortFirstIteration) {
    SearchRun run(endless, {.max_depth = 1});
    run.host.on_poll = [] { throw search_aborted_exception{true}; };
    run.Run();
    EXPECT_EQ(run.host.polls, 0);
    EXPECT_EQ(run.host.finished, false);
    EXPECT_GT(run.controller.info().nodes, 1000U) << "there were polls to be had";
}

TEST(SearchController, RequestPassesThroughAndLeavesTheControllerFit) {
    SearchRun run(endless);
    run.host.on_poll = [] { throw search_request_received_exception{}; };
    EXPECT_THROW(run.Run(), search_request_received_exception);
    EXPECT_FALSE(run.controller.IsRunning());
    EXPECT_FALSE(run.host.finished) << "the game is not told";
    EXPECT_FALSE(run.host.statistics);

    run.host.on_poll = [] {};
    run.limits.max_depth = 2;
    run.Run();
    EXPECT_EQ(run.host.finished, false);
    EXPECT_EQ(run.controller.info().depth, 2);
}

TEST(SearchController, QuitPassesThrough) {
    SearchRun run(endless);
    run.host.on_poll = [] { throw quit_command_received_exception{}; };
    EXPECT_THROW(run.Run(), quit_command_received_exception);
    EXPECT_FALSE(run.controller.IsRunning());
}

TEST(SearchController, EndHandlerMayAskForTheNextSearch) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.max_depth = 1});
    run.host.on_finished = [&](bool) {
        EXPECT_FALSE(run.controller.IsRunning());
        throw search_request_received_exception{};
    };
    EXPECT_THROW(run.Run(), search_request_received_exception);
    EXPECT_EQ(MoveToCoordinate(run.controller.best_move()), "a1a8");
}

TEST(SearchController, InterruptedSearchLeavesNoTraceButKillers) {
    constexpr SearchSettings without_killers{.enable_killer_heuristic_for_move_ordering = false,
                                             .killer1_bonus__quiescence = 0,
                                             .killer2_bonus__quiescence = 0};
    SearchRun interrupted(endless);
    interrupted.engine.settings = without_killers;
    interrupted.host.on_poll = [&] {
        if (interrupted.controller.info().depth >= 3) throw search_aborted_exception{true};
    };
    interrupted.Run();
    interrupted.engine.tables.transposition.clear();
    interrupted.host = {};
    interrupted.limits.max_depth = 2;
    interrupted.Run();

    SearchRun fresh(endless, {.max_depth = 2});
    fresh.engine.settings = without_killers;
    fresh.Run();
    EXPECT_EQ(interrupted.host.events, fresh.host.events);
    EXPECT_EQ(interrupted.controller.info().nodes, fresh.controller.info().nodes);
}

TEST(SearchController, BeforeTheFirstUpdateTheFirstLegalMoveStands) {
    // The protocol's pipe breaks, so to say, before the first line is reported: nothing has been completed yet.
    struct BrokenHost : FakeSearchHost {
        void sendDepthStarted(int) override { throw search_aborted_exception{false}; }
    };
    Engine engine;
    SearchController controller(engine);
    BrokenHost host;
    const UserBoard game = GameFrom(start_fen);
    controller.Run({}, game, host);
    EXPECT_EQ(controller.best_move(), LegalMovesOf(game.board()).front());
    EXPECT_TRUE(controller.info().principal_variation.empty());
}

// --- Kinds ---

TEST(SearchController, VariableLimitEndsAThinkingSearch) {
    SearchRun run(endless, {.variable_time_limit = 40});
    run.Run();
    EXPECT_EQ(run.host.finished, false);
    EXPECT_GE(run.controller.info().depth, 2) << "no limit applies to the first iteration";
}

TEST(SearchController, PuzzleServesNoInputAndEndsByItsLimit) {
    SearchRun run(endless, {.kind = SearchKind::puzzle, .max_time_limit = 60, .variable_time_limit = 45});
    run.Run();
    EXPECT_EQ(run.host.polls, 0);
    EXPECT_EQ(run.host.finished, false);
    EXPECT_NE(run.controller.best_move(), INVALID);
}

TEST(SearchController, AnalysisAndPonderingWaitForTheWorld) {
    for (const SearchKind kind : {SearchKind::analyze, SearchKind::pondering}) {
        SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.kind = kind,
                                                               .max_depth = kind == SearchKind::pondering ? 2 : 0,
                                                               .max_time_limit = 1,
                                                               .variable_time_limit = 1});
        int waits = 0;  // polls after the last iteration
        run.host.on_poll = [&] {
            EXPECT_TRUE(run.controller.IsRunning());
            if (run.controller.info().moves_to_search == 0 && ++waits == 2) throw search_aborted_exception{true};
        };
        run.Run();
        EXPECT_EQ(run.host.finished, true);
        EXPECT_EQ(run.controller.info().depth, kind == SearchKind::pondering ? 2 : 80);
    }
}

TEST(SearchController, AnalysisIgnoresTheDepthLimit) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.kind = SearchKind::analyze, .max_depth = 3});
    run.host.on_poll = [&run] {
        if (run.controller.info().depth == 80) throw search_aborted_exception{true};
    };
    run.Run();
    EXPECT_EQ(EventsOf(run.host, "depth").size(), 80U);
}

TEST(SearchController, PonderHitEndsTheWait) {
    SearchRun run("6k1/5ppp/8/8/8/8/5PPP/R5K1 w - - 0 1", {.kind = SearchKind::pondering, .max_depth = 2});
    run.host.on_poll = [&run] { run.controller.PonderHit(); };
    run.Run();
    EXPECT_EQ(run.host.polls, 1);
    EXPECT_EQ(run.host.finished, false);
}

TEST(SearchController, PonderHitPutsTheLimitsInForce) {
    SearchRun run(endless, {.kind = SearchKind::pondering, .max_time_limit = 30, .variable_time_limit = 30});
    run.host.on_poll = [&run] {
        if (run.controller.info().depth == 3) run.controller.PonderHit();
    };
    run.Run();
    EXPECT_EQ(run.host.finished, false);
    EXPECT_GE(run.controller.info().depth, 3) << "it went on until the hit";
}

TEST(SearchController, PonderingTimeCountsForSeventyPercent) {
    constexpr std::int64_t limit = 100;
    SearchRun run(endless, {.kind = SearchKind::pondering, .max_time_limit = limit});
    std::int64_t hit = 0;
    run.host.on_poll = [&] {
        if (hit != 0 || run.controller.info().Milliseconds() < limit) return;
        hit = run.controller.info().Milliseconds();
        run.controller.PonderHit();
    };
    run.Run();
    // A slow machine ends it later, nothing ends it sooner.
    if (run.controller.info().depth < 80) {
        EXPECT_GE(run.controller.info().Milliseconds() - hit * 3 / 10, limit);
    }
}

TEST(SearchController, AnalysisIsPolledWhileItSearches) {
    SearchRun run(endless, {.kind = SearchKind::analyze, .max_time_limit = 1, .variable_time_limit = 1});
    run.host.on_poll = [&run] {
        if (run.controller.info().depth >= 4) throw search_aborted_exception{true};
    };
    run.Run();
    EXPECT_GT(run.host.polls, 1) << "no limit has ended it";
    EXPECT_EQ(run.host.finished, true);
}

}  // namespace
