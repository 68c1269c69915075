// The score by one evaluation against the score by bisection.
//
// A bound test may answer by an estimate, which terms that come to more than the lazy margins contradict: then the
// bisection is misled, and the full evaluation, which computes every term, holds.

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

#include "support/evaluation_builder.h"
#include "support/random_games.h"

namespace {

int FullAfresh(EvaluationBuilder& builder) {
    builder.Forget();
    return full_evaluation(builder.context, builder.board, builder.Type());
}

TEST(FullEvaluation, IsTheScoreOfTheBisection) {
    constexpr std::uint32_t seed = 31;
    int positions = 0;
    int misled = 0;
    std::mt19937 random(seed);
    EvaluationBuilder builder(start_fen);
    ForEachRandomPosition(seed, 560, 100, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        builder.board = board;
        builder.settings = {.draw_score = static_cast<std::int16_t>(random() % 41 - 20),
                            .personality = static_cast<std::int16_t>(random() % 41 - 20)};
        ++positions;
        const int score = FullAfresh(builder);
        const int exact = builder.Score();
        if (exact == score) return;
        ++misled;
        // Asked at the estimate, where no estimate can answer, the bound test tells the same.
        ASSERT_LE(builder.Type(), middle_game) << FenOf(board);
        ASSERT_EQ(score, builder.FullScore()) << FenOf(board);
    });
    EXPECT_GT(positions, 10000);
    RecordProperty("misled", misled);
    EXPECT_LT(misled, positions / 100) << "of " << positions;
}

/// What it leaves in the table answers bound tests as it answers itself.
TEST(FullEvaluation, LeavesItsScoreInTheTable) {
    constexpr std::uint32_t seed = 32;
    EvaluationBuilder builder(start_fen);
    ForEachRandomPosition(seed, 56, 60, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        builder.board = board;
        const int type = builder.Type();
        const int score = FullAfresh(builder);
        ASSERT_EQ(full_evaluation(builder.context, board, type), score) << FenOf(board);
        if (type == pawnless) return;
        const auto stored = builder.tables.evaluation.ScoreOf(board.key());
        ASSERT_TRUE(stored.has_value()) << FenOf(board);
        ASSERT_EQ(*stored, score) << FenOf(board);
        for (const int bound : {score - 900, score, score + 1, score + 900}) {
            ASSERT_EQ(builder.Ask(bound) >= bound, score >= bound) << FenOf(board);
        }
    });
}

/// A known score is taken from the table without a look at the board.
TEST(FullEvaluation, BelievesTheTable) {
    EvaluationBuilder builder(start_fen);
    builder.tables.evaluation.Store({.key = builder.board.key(), .score = 1234});
    EXPECT_EQ(full_evaluation(builder.context, builder.board, builder.Type()), 1234);
}

/// What evaluations of other positions have left changes nothing.
TEST(FullEvaluation, IsTheSameWithTablesThatAreInUse) {
    constexpr std::uint32_t seed = 33;
    EvaluationBuilder used(start_fen);
    EvaluationBuilder fresh(start_fen);
    ForEachRandomPosition(seed, 56, 60, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        fresh.board = board;
        ASSERT_EQ(full_evaluation(used.context, board, fresh.Type()), FullAfresh(fresh)) << FenOf(board);
    });
}

}  // namespace
