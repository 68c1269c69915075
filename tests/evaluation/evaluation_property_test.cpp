#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "evaluation/endings/ending.h"
#include "evaluation/middle_game.h"
#include "evaluation/pawns/pawn_hash_entry.h"
#include "support/evaluation_builder.h"
#include "support/random_games.h"

namespace {

int ScoreOf(const BOARD& board, const EVALUATION_SETTINGS& settings, int type) {
    return EvaluationBuilder(board, settings).Score(type);
}

/// The routine of an opening, a middle game or a plain ending without any table. Of the pairs every term is computed.
EVALUATION_RESULT RunRoutine(EVALUATION_CONTEXT& context, const BOARD& board, int type) {
    if (type == opening) return evaluate_opening(context, board, EstimateOf(board, *context.settings));
    if (type == middle_game) return evaluate_middle_game(context, board, EstimateOf(board, *context.settings));
    return evaluate_ending(context, board, board.frame().material_balance);
}

int FreshScore(const BOARD& board, const EVALUATION_SETTINGS& settings, int type) {
    EVALUATION_CONTEXT context{&settings};
    find_passed_pawns(context, board);
    return RunRoutine(context, board, type).score;
}

// Files are the same for both sides, so that rules that speak of left and right mirror as well: none is excepted.
TEST(EvaluationProperty, ColoursMakeNoDifferenceToPairs) {
    constexpr std::uint32_t seed = 4;
    constexpr int wanted = 100'000;
    std::mt19937 random(seed);
    int positions = 0;
    for (std::uint32_t round = 0; positions < wanted; ++round) {
        ForEachRandomPosition(seed + round, 140, 100, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
            const int type = classify_position(board, no_position_type);
            if (type > middle_game || positions == wanted) return;
            ++positions;
            const EVALUATION_SETTINGS settings{.draw_score = 0,
                                               .personality = static_cast<std::int16_t>(random() % 41 - 20)};
            const BOARD turned = WithColoursExchanged(board);
            ASSERT_EQ(classify_position(turned, no_position_type), type) << FenOf(board);
            ASSERT_EQ(FreshScore(turned, settings, type), FreshScore(board, settings, type)) << FenOf(board);
        });
        if (HasFatalFailure()) return;
    }
}

// In endings a rook counts those that it protects among the ones still to come, and both colours are walked from h8 to
// a1: with three rooks the first one may protect two others for White and none for Black. No other rule is excepted.
bool HasThreeRooks(const BOARD& board) {
    return PopCount(board.side(white).rooks) > 2 || PopCount(board.side(black).rooks) > 2;
}

TEST(EvaluationProperty, ColoursMakeNoDifference) {
    constexpr std::uint32_t seed = 4;
    std::mt19937 random(seed);
    ForEachRandomPosition(seed, 56, 80, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        if (HasThreeRooks(board) && classify_position(board, no_position_type) > middle_game) return;
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

void ExpectSameFacts(const EVALUATION_CONTEXT& restored, const EVALUATION_CONTEXT& fresh) {
    for (const Colour side : {white, black}) {
        const PAWN_INFO& a = restored.pawns[side];
        const PAWN_INFO& b = fresh.pawns[side];
        EXPECT_EQ(a.passed, b.passed);
        EXPECT_EQ(a.front_passed, b.front_passed);
        EXPECT_EQ(a.passed_rank, b.passed_rank);
        EXPECT_EQ(a.isolated, b.isolated);
        EXPECT_EQ(a.backward, b.backward);
        EXPECT_EQ(a.backward_stuck, b.backward_stuck);
        EXPECT_EQ(a.covered, b.covered);
        EXPECT_EQ(a.advance_squares, b.advance_squares);
        EXPECT_EQ(a.centre_gaps, b.centre_gaps);
        EXPECT_EQ(restored.pressure[side], fresh.pressure[side]);
        EXPECT_EQ(restored.cover[side], fresh.cover[side]);
    }
    for (const Wing wing : {queen_side, king_side}) {
        EXPECT_EQ(restored.majority[wing].kind, fresh.majority[wing].kind);
        EXPECT_EQ(restored.majority[wing].count_a, fresh.majority[wing].count_a);
        EXPECT_EQ(restored.majority[wing].count_b, fresh.majority[wing].count_b);
    }
    EXPECT_EQ(restored.openness, fresh.openness);
    EXPECT_EQ(restored.activity, fresh.activity);
}

TEST(EvaluationProperty, ARestoredPawnEntryGivesWhatAFreshOneGives) {
    constexpr std::uint32_t seed = 21;
    const EVALUATION_SETTINGS settings;
    int pairs = 0;
    int endings = 0;
    ForEachRandomPosition(seed, 280, 80, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        const int type = classify_position(board, no_position_type);
        if (type == rook_ending || type == queen_ending || type == pawn_ending || type == pawnless) return;
        EVALUATION_CONTEXT fresh{&settings};
        find_passed_pawns(fresh, board);
        const EVALUATION_RESULT result = RunRoutine(fresh, board, type);
        if (result.lazy) return;
        EVALUATION_CONTEXT restored{&settings};
        restore_pawn_entry(construct_pawn_entry(fresh, board, type), restored, board);
        ASSERT_EQ(RunRoutine(restored, board, type).score, result.score) << FenOf(board);
        ExpectSameFacts(restored, fresh);
        ASSERT_FALSE(testing::Test::HasNonfatalFailure()) << FenOf(board);
        ++(type <= middle_game ? pairs : endings);
    });
    EXPECT_GT(pairs, 1000);
    EXPECT_GT(endings, 1000);
}

TEST(EvaluationProperty, TablesDoNotChangeTheAnswer) {
    // The positions share their tables, whose slots are few: entries come and go. Only bounds inside the lazy margin
    // are asked: a stored score answers better than an estimate does.
    constexpr std::uint32_t seed = 11;
    const EVALUATION_SETTINGS settings{.draw_score = 12, .personality = 3};
    struct Question {
        BOARD board;
        int type;
        int bound;
        bool is_reached;
    };
    std::vector<Question> questions;
    std::mt19937 random(seed);
    ForEachRandomPosition(seed, 28, 60, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        const int type = classify_position(board, no_position_type);
        EvaluationBuilder position(board, settings);
        const int near = type <= middle_game ? position.Estimate() : board.frame().material_balance;
        const int bound = near + static_cast<int>(random() % 401) - 200;
        questions.push_back({board, type, bound, position.AskAfresh(bound) >= bound});
    });
    HashTables tables;
    EVALUATION_CONTEXT context{&settings, &tables};
    for (int round = 0; round < 2; ++round) {
        for (const Question& question : questions) {
            ASSERT_EQ(evaluate(context, question.board, question.bound, question.type) >= question.bound,
                      question.is_reached)
                << FenOf(question.board) << " at " << question.bound;
        }
    }
    EXPECT_GT(tables.evaluation.hits(), 0U);
    EXPECT_GT(tables.pawn.hits(), 0U);
}

TEST(EvaluationProperty, ExactScoresAreThoseOfBisectingByHand) {
    constexpr std::uint32_t seed = 31;
    const EVALUATION_SETTINGS settings;
    ForEachRandomPosition(seed, 42, 80, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        const int type = classify_position(board, no_position_type);
        if (type == pawnless) return;
        HashTables tables;
        EVALUATION_CONTEXT context{&settings, &tables};
        int low = -32767;
        int high = 32767;
        while (low < high) {
            const int middle = (low + high) / 2 == low ? high : (low + high) / 2;
            if (evaluate(context, board, middle, type) < middle)
                high = middle - 1;
            else
                low = middle;
        }
        ASSERT_EQ(ScoreOf(board, settings, type), low) << FenOf(board);
    });
}

}  // namespace
