#include "selfplay/adjudication.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "support/row_name.h"

namespace {

constexpr AdjudicationRules rules{
    .resign_moves = 2, .resign_score = 500, .draw_moves = 2, .draw_score = 10, .draw_from_move = 30};

struct Row {
    std::string_view name;
    std::int32_t first_move;           ///< its number in the game
    std::vector<std::int32_t> scores;  ///< of White and Black in turn, each for itself
    std::optional<GameResult> result;  ///< after the last one
};

class Adjudication : public testing::TestWithParam<Row> {};

TEST_P(Adjudication, ComesWithTheLastMove) {
    Adjudicator adjudicator(rules);
    std::optional<GameResult> result;
    for (std::size_t i = 0; i < GetParam().scores.size(); ++i) {
        ASSERT_EQ(result, std::nullopt) << "too early";
        const auto number = GetParam().first_move + static_cast<std::int32_t>(i / 2);
        result = adjudicator.Take(i % 2 == 0 ? white : black, GetParam().scores[i], number);
    }
    EXPECT_EQ(result, GetParam().result);
}

const Row rows[] = {
    {"both see White win", 10, {500, -500, 600, -700}, GameResult::white_wins},
    {"both see Black win", 10, {-500, 500, -600, 700}, GameResult::black_wins},
    {"one move too few", 10, {500, -500, 600}, std::nullopt},
    {"one score too small", 10, {500, -500, 499, -700, 600, -600}, std::nullopt},
    {"the loser sees it otherwise", 10, {900, -400, 900, -400, 900, -400}, std::nullopt},
    {"the run may begin with Black", 10, {0, -500, 600, -700, 800}, GameResult::white_wins},
    {"nothing happens", 30, {10, -10, 0, 5}, GameResult::draw},
    {"too early for a draw", 28, {10, -10, 0, 5}, std::nullopt},
    {"the run begins with its move", 29, {0, 0, 0, 0, 0, 0}, GameResult::draw},
    {"a score too large for a draw", 30, {10, -10, 11, 5, 0}, std::nullopt},
};

INSTANTIATE_TEST_SUITE_P(Adjudicator, Adjudication, testing::ValuesIn(rows), RowName<Row>);

TEST(Adjudicator, DoesNothingByDefault) {
    Adjudicator adjudicator{AdjudicationRules()};
    for (std::int32_t move = 1; move < 200; ++move) {
        EXPECT_EQ(adjudicator.Take(white, move < 100 ? 0 : 30000, move), std::nullopt);
        EXPECT_EQ(adjudicator.Take(black, move < 100 ? 0 : -30000, move), std::nullopt);
    }
}

}  // namespace
