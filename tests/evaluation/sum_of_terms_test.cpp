// The routines against a plain list of their terms: each routine has to run all of them, in this order, since they read
// what those before them left in the context.

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "evaluation/blend.h"
#include "evaluation/endings/ending.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/endings/wrong_bishop.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"
#include "evaluation/pawns/pawn_structure_walk.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/pieces/patterns.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"
#include "support/evaluation_builder.h"
#include "support/random_games.h"

namespace {

void FindPlaces(EVALUATION_CONTEXT& context, const BOARD& board) {
    find_bishop_pairs(context, board);
    find_passed_pawns(context, board);
    find_open_files(context, board);
    place_kings(context, board);
    find_pawn_attacks(context, board);
}

int ForSideToMove(const BOARD& board, int score) { return board.side_to_move == white ? score : -score; }

template <Colour Us>
SCORE_PAIR Knights(EVALUATION_CONTEXT& context, const BOARD& board, bool is_opening) {
    return is_opening ? knights_opening<Us>(context, board) : knights_middle_game<Us>(context, board);
}
template <Colour Us>
SCORE_PAIR Queens(EVALUATION_CONTEXT& context, const BOARD& board, bool is_opening) {
    return is_opening ? queens_opening<Us>(context, board) : queens_middle_game<Us>(context, board);
}

int SumOfPairs(const EVALUATION_SETTINGS& settings, const BOARD& board, PositionType type) {
    EVALUATION_CONTEXT context{&settings};
    FindPlaces(context, board);
    context.endgame_weight = endgame_weight(board);
    const bool is_opening = type == opening;
    SCORE_PAIR sum = passed_pawns(context, board);
    sum += material_imbalance(context, board);
    sum += bishop_pair(context, board);
    find_pawn_facts(context, board);
    TermSum<SCORE_PAIR> pawns;
    pawn_structure(context, board, type, pawns);
    sum += pawns.sum();
    if (board.side(white).knights != 0) sum += Knights<white>(context, board, is_opening);
    if (board.side(black).knights != 0) sum -= Knights<black>(context, board, is_opening);
    if (board.side(white).bishops != 0) sum += bishops<white>(context, board);
    if (board.side(black).bishops != 0) sum -= bishops<black>(context, board);
    if (board.side(white).rooks != 0) sum += rooks<white>(context, board);
    if (board.side(black).rooks != 0) sum -= rooks<black>(context, board);
    context.attacks_no_queen[white] = context.attacks[white];
    context.attacks_no_queen[black] = context.attacks[black];
    if (board.side(white).queens != 0) sum += Queens<white>(context, board, is_opening);
    if (board.side(black).queens != 0) sum -= Queens<black>(context, board, is_opening);
    sum += is_opening ? patterns_opening(context, board) : patterns_middle_game(context, board);
    sum += space(context, board);
    if (!is_opening) sum += activity(context, board);
    sum += king_safety(context, board);
    if (board.side(white).knights != 0) sum += knight_mobility<white>(context, board);
    if (board.side(black).knights != 0) sum -= knight_mobility<black>(context, board);
    sum += pawn_balance(context, board);
    return board.frame().material_balance + ForSideToMove(board, blend(sum, !is_opening, context, board));
}

int SumOfEnding(const EVALUATION_SETTINGS& settings, const BOARD& board) {
    EVALUATION_CONTEXT context{&settings};
    if (const auto value = wrong_bishop_rule(context, board)) return *value;
    FindPlaces(context, board);
    find_pawn_facts(context, board);
    int sum = ForSideToMove(board, board.frame().material_balance);
    const bool is_near_balance = std::abs(sum) < 500;
    sum += passed_pawns_ending(context, board);
    sum += material_imbalance(context, board).positional();
    const UNSTOPPABLE_BONUS unstoppable = unstoppable_bonus(context, board);
    sum += unstoppable.score;
    sum += bishop_pair_ending(context, board);
    TermSum<int> pawns;
    pawn_structure_ending(context, board, pawns);
    sum += pawns.sum();
    sum += knights_ending<white>(context, board) - knights_ending<black>(context, board);
    sum += bishops_ending<white>(context, board) - bishops_ending<black>(context, board);
    sum += rooks_ending<white>(context, board) - rooks_ending<black>(context, board);
    sum += queens_ending<white>(context, board) - queens_ending<black>(context, board);
    sum += king_placement_ending(context, board);
    sum += checked_unstoppable_bonus(context, board, unstoppable.check);
    if (is_near_balance) sum = scale_ending(context, sum, has_opposite_bishops(board), board);
    return ForSideToMove(board, limit_to_draw_score(sum, settings.draw_score, board));
}

TEST(SumOfTerms, IsTheScore) {
    constexpr std::uint32_t seed = 77;
    int pair_sums = 0;
    int endings = 0;
    ForEachRandomPosition(seed, 112, 120, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
        EvaluationBuilder position(FenOf(board), {.draw_score = 17, .personality = 4});
        const int type = position.Type();
        if (type == opening || type == middle_game) {
            ++pair_sums;
            ASSERT_EQ(position.FullScore(), SumOfPairs(position.settings, board, static_cast<PositionType>(type)))
                << FenOf(board);
        } else if (type != rook_ending && type != queen_ending && type != pawn_ending && type != pawnless) {
            ++endings;
            ASSERT_EQ(position.Score(), SumOfEnding(position.settings, board)) << FenOf(board);
        }
    });
    EXPECT_GT(pair_sums, 100);
    EXPECT_GT(endings, 100);
}

}  // namespace
