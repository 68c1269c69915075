#include "selfplay/match.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <stdexcept>

#include "chess/pgn.h"
#include "selfplay/game_text.h"
#include "tools/selfplay/small_match.h"

namespace {

TEST(Match, GamesAreTheSameHoweverManyAreAtATime) {
    MatchPlan plan = SmallMatch();
    const auto alone = GamesOf(plan);
    ASSERT_EQ(alone.size(), plan.games);
    plan.concurrency = 3;
    EXPECT_EQ(GamesOf(plan), alone);
}

TEST(Match, GameDoesNotDependOnThoseBeforeIt) {
    MatchPlan plan = SmallMatch();
    const auto all = GamesOf(plan);
    plan.first_game = 6;
    plan.games = 2;
    const auto last = GamesOf(plan);
    ASSERT_EQ(last.size(), 2U);
    EXPECT_EQ(last.at(6), all.at(6));
    EXPECT_EQ(last.at(7), all.at(7));
}

TEST(Match, PairIsOneOpeningWithColoursTurned) {
    const MatchPlan plan = SmallMatch(4);
    EXPECT_EQ(&OpeningOf(plan, 0), &OpeningOf(plan, 1));
    EXPECT_NE(&OpeningOf(plan, 1), &OpeningOf(plan, 2));
    const auto games = GamesOf(plan);
    EXPECT_NE(games.at(0).moves, games.at(1).moves) << "other players have the move";
    MatchPlan turned = plan;
    std::swap(turned.players[0], turned.players[1]);
    const auto turned_games = GamesOf(turned);
    EXPECT_EQ(turned_games.at(1).moves, games.at(0).moves);
    EXPECT_EQ(turned_games.at(0).moves, games.at(1).moves);
}

TEST(Match, EqualPlayersPlayTheSameGameTwice) {
    MatchPlan plan = SmallMatch(2);
    plan.players[1] = plan.players[0];
    const auto games = GamesOf(plan);
    EXPECT_EQ(games.at(0).moves, games.at(1).moves);
}

TEST(Match, PlayerMayHaveNodesOfItsOwn) {
    MatchPlan plan = SmallMatch(2);
    plan.players[1] = plan.players[0];
    plan.players[1].nodes = 1000;
    const auto games = GamesOf(plan);
    EXPECT_NE(games.at(0).moves, games.at(1).moves);
}

TEST(Match, OnlyWantedGamesArePlayed) {
    MatchPlan plan = SmallMatch();
    plan.concurrency = 2;
    std::atomic<bool> stop{false};
    std::vector<std::uint64_t> played;
    PlayMatch(
        plan, [](std::uint64_t game) { return game % 3 == 0; },
        [&](const PlayedGame& game) { played.push_back(game.number); }, stop);
    EXPECT_THAT(played, testing::UnorderedElementsAre(0, 3, 6));
}

TEST(Match, StopsWhenItIsTold) {
    MatchPlan plan = SmallMatch(1000);
    plan.concurrency = 2;
    std::atomic<bool> stop{false};
    int games = 0;
    PlayMatch(
        plan, [](std::uint64_t) { return true; },
        [&](const PlayedGame&) {
            ++games;
            stop = games == 3;
        },
        stop);
    EXPECT_EQ(games, 3) << "a game that ends after that is not told of";
}

TEST(Match, FailureEndsIt) {
    MatchPlan plan = SmallMatch(1000);
    plan.concurrency = 2;
    std::atomic<bool> stop{false};
    const auto fail = [](const PlayedGame&) { throw std::runtime_error("disk full"); };
    EXPECT_THROW(PlayMatch(
                     plan, [](std::uint64_t) { return true; }, fail, stop),
                 std::runtime_error);
    plan.rules.hash_megabytes = std::uint64_t{1} << 40;
    stop = false;
    EXPECT_THROW(PlayMatch(
                     plan, [](std::uint64_t) { return true; }, [](const PlayedGame&) {}, stop),
                 std::bad_alloc);
}

TEST(Match, AdjudicationEndsGamesEarly) {
    MatchPlan plan = SmallMatch(4);
    plan.rules.nodes = 500;
    const auto whole = GamesOf(plan);
    plan.rules.adjudication = {.resign_moves = 1, .resign_score = 300};
    const auto cut = GamesOf(plan);
    int resigned = 0;
    for (const auto& [number, game] : cut) {
        if (game.reason != GameEndReason::resignation) continue;
        ++resigned;
        EXPECT_LT(game.moves.size(), whole.at(number).moves.size());
        EXPECT_TRUE(std::equal(game.moves.begin(), game.moves.end(), whole.at(number).moves.begin()));
    }
    EXPECT_GT(resigned, 0);
}

TEST(Match, ClockRunsAndFlagsFall) {
    MatchPlan plan = SmallMatch(2);
    plan.rules.nodes = 0;
    plan.rules.depth = 30;
    plan.rules.base_time = 1;
    for (const auto& [number, game] : GamesOf(plan)) EXPECT_EQ(game.reason, GameEndReason::flag_fell);
    plan.rules.depth = 1;
    plan.rules.base_time = 1'000'000;
    for (const auto& [number, game] : GamesOf(plan)) EXPECT_NE(game.reason, GameEndReason::flag_fell);
}

// --- Texts ---

TEST(GameText, PgnReadsBack) {
    const MatchPlan plan = SmallMatch(4);
    std::string text;
    const auto games = GamesOf(plan);
    for (const auto& [number, game] : games) text += PgnOf(plan, game);
    std::istringstream stream(text);
    for (const auto& [number, game] : games) {
        UserBoard board;
        PGN_TAGS tags;
        ReadPgn(board, stream, tags);
        EXPECT_EQ(tags.white, number % 2 == 0 ? "first" : "second");
        EXPECT_EQ(tags.black, number % 2 == 0 ? "second" : "first");
        EXPECT_EQ(board.result(), game.result);
        ASSERT_EQ(board.next_moves().size(), game.moves.size());
        for (std::size_t i = 0; i < game.moves.size(); ++i) EXPECT_EQ(board.next_moves()[i], game.moves[i].move);
        EXPECT_EQ(board.start().board.key(), OpeningOf(plan, number).position.start().board.key());
    }
}

TEST(GameText, PgnShowsScoresDepthsAndTheMovesOfTheOpening) {
    MatchPlan plan = SmallMatch(2);
    std::istringstream opening("[Event \"?\"]\n\n1. e4 e5 2. Nf3 *\n");
    plan.openings = ReadOpenings(opening, 1000);
    PlayedGame game{.number = 1, .result = GameResult::draw, .reason = GameEndReason::agreed_draw, .moves = {}};
    MoveParseError error{};
    game.moves.push_back(
        {.move = ParseMove("b8c6", plan.openings[0].position.board(), error) & move_bits, .score = -25, .depth = 6});
    EXPECT_EQ(PgnOf(plan, game),
              "[Event \"Self-play\"]\n[Site \"?\"]\n[Date \"????.??.??\"]\n[Round \"1.2\"]\n[White \"second\"]\n"
              "[Black \"first\"]\n[Result \"1/2-1/2\"]\n[TimeControl \"-\"]\n[Termination \"Mutual agreement\"]\n\n"
              "1. e4 e5 2. Nf3 Nc6 {-0.25/6} 1/2-1/2\n\n");
}

TEST(GameText, PgnCountsTheMovesToAMate) {
    MatchPlan plan = SmallMatch(2);
    std::istringstream opening("4k3/8/8/8/8/8/4P3/4K3 w - -\n");
    plan.openings = ReadOpenings(opening, 0);
    PlayedGame game{.number = 0, .result = GameResult::white_wins, .reason = GameEndReason::mate, .moves = {}};
    BOARD board = plan.openings[0].position.board();
    constexpr std::pair<const char*, Score> moves[] = {{"e2e4", infinity_bound - 5},
                                                       {"e8e7", -infinity_bound + 4},
                                                       {"e4e5", infinity_bound - 1},
                                                       {"e7e8", -infinity_bound}};
    for (const auto& [text, score] : moves) {
        MoveParseError error{};
        game.moves.push_back({.move = ParseMove(text, board, error) & move_bits, .score = score, .depth = 7});
        PlayGameMove(board, game.moves.back().move);
    }
    EXPECT_NE(PgnOf(plan, game).find("1. e4 {+M3/7} Ke7 {-M2/7} 2. e5 {+M1/7} Ke8 {-M0/7} 1-0"), std::string::npos)
        << PgnOf(plan, game);
}

TEST(GameText, LineReadsBack) {
    const MatchPlan plan = SmallMatch(2);
    for (const auto& [number, game] : GamesOf(plan)) EXPECT_EQ(GameOfLine(plan, LineOf(game)), game);
}

struct BadLine {
    const char* text;
    const char* complaint;
};

TEST(GameText, LinesThatAreNoneAreTold) {
    MatchPlan plan = SmallMatch(2);
    std::istringstream opening("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq -\n");
    plan.openings = ReadOpenings(opening, 0);
    constexpr BadLine bad[] = {
        {"", "no game: \"\""},
        {"0 1-0", "no game: \"0 1-0\""},
        {"x 1-0 0", "no number of a game: \"x\""},
        {"0 2-0 0", "no result: \"2-0\""},
        {"0 1-0 10", "no reason: \"10\""},
        {"0 1-0 0 e2e4", "no move with score and depth: \"e2e4\""},
        {"0 1-0 0 e2e4/x/5", "no score: \"x\""},
        {"0 1-0 0 e2e4/0/-5", "no depth: \"-5\""},
        {"0 1-0 0 e2e4/0/5 e2e4/0/5", "no correspondence: \"e2e4/0/5\""},
    };
    for (const BadLine& line : bad) {
        try {
            (void)GameOfLine(plan, line.text);
            ADD_FAILURE() << line.text;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), line.complaint);
        }
    }
}

}  // namespace
