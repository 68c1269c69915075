#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/evaluation_builder.h"
#include "support/random_games.h"

namespace {

int ScoreOf(const BOARD& board, const EVALUATION_SETTINGS& settings, int type) {
    ForgetEvaluations();
    EVALUATION_CONTEXT context{.settings = &settings};
    return exact_evaluation(context, board, type);
}

TEST(EvaluationProperty, ColoursMakeNoDifference) {
    constexpr std::uint32_t seed = 4;
    std::mt19937 random(seed);
    ForEachRandomPosition(seed, 56, 80, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        const auto draw_score = static_cast<std::int16_t>(random() % 201 - 100);
        const auto personality = static_cast<std::int16_t>(random() % 41 - 20);
        const BOARD turned = WithColoursExchanged(board);
        const int type = classify_position(board, no_position_type);
        ASSERT_EQ(classify_position(turned, no_position_type), type) << FenOf(board);
        const EVALUATION_SETTINGS settings{.draw_score = draw_score, .personality = personality};
        const EVALUATION_SETTINGS turned_settings{.draw_score = static_cast<std::int16_t>(-draw_score),
                                                  .personality = personality};
        ASSERT_EQ(ScoreOf(turned, turned_settings, type), ScoreOf(board, settings, type)) << FenOf(board);
    });
}

TEST(EvaluationProperty, TablesDoNotChangeTheScore) {
    // The games share their tables, whose slots are few: entries come and go. Each position is asked for its own score.
    constexpr std::uint32_t seed = 11;
    const EVALUATION_SETTINGS settings{.draw_score = 12, .personality = 3};
    std::vector<std::pair<BOARD, int>> positions;
    ForEachRandomPosition(seed, 28, 60, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        positions.emplace_back(board, ScoreOf(board, settings, classify_position(board, no_position_type)));
    });
    ForgetEvaluations();
    EVALUATION_CONTEXT context{.settings = &settings};
    for (int round = 0; round < 2; ++round) {
        for (const auto& [board, score] : positions) {
            const int type = classify_position(board, no_position_type);
            ASSERT_GE(evaluate(context, board, score, type), score) << FenOf(board);
            ASSERT_LT(evaluate(context, board, score + 1, type), score + 1) << FenOf(board);
        }
    }
    EXPECT_GT(evaluation_hash_table.hits(), 0U);
    EXPECT_GT(pawn_hash_table.hits(), 0U);
}

}  // namespace
