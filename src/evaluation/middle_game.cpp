#include "evaluation/middle_game.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>

#include "evaluation/bishops.h"
#include "evaluation/blend.h"
#include "evaluation/king_safety.h"
#include "evaluation/knights.h"
#include "evaluation/material_terms.h"
#include "evaluation/passed_pawns.h"
#include "evaluation/patterns.h"
#include "evaluation/pawn_structure.h"
#include "evaluation/position_type.h"
#include "evaluation/queens.h"
#include "evaluation/rooks.h"
#include "evaluation/score_pair.h"

namespace {

/// What the terms behind the lazy test are taken to add at most, in centipawns.
template <PositionType Type>
constexpr int lazy_margin = Type == opening ? 285 : 275;

/// Stops when both values, on top of the material, are far from the bound and on the same side of it.
std::optional<EVALUATION_RESULT> lazy_test(const BOARD& board, SCORE_PAIR sum, int bound, int margin) {
    const int material = board.frame().material_balance;
    const SCORE_PAIR own_sum = board.side_to_move == white ? sum : -sum;
    const int positional_gap = bound - (material + own_sum.positional());
    if (std::abs(positional_gap) <= margin) return std::nullopt;
    const int reckless_gap = bound - (material + own_sum.reckless());
    if (std::abs(reckless_gap) <= margin || (positional_gap > 0) != (reckless_gap > 0)) return std::nullopt;
    return lazy_answer(positional_gap <= 0, bound);
}

template <PositionType Type>
SCORE_PAIR knights(EVALUATION_CONTEXT& context, const BOARD& board) {
    SCORE_PAIR sum;
    if constexpr (Type == opening) {
        if (board.white_pieces().knights != 0) sum += knights_opening<white>(context, board);
        if (board.black_pieces().knights != 0) sum -= knights_opening<black>(context, board);
    } else {
        if (board.white_pieces().knights != 0) sum += knights_middle_game<white>(context, board);
        if (board.black_pieces().knights != 0) sum -= knights_middle_game<black>(context, board);
    }
    return sum;
}

SCORE_PAIR bishops_and_rooks(EVALUATION_CONTEXT& context, const BOARD& board) {
    SCORE_PAIR sum;
    if (board.white_pieces().bishops != 0) sum += bishops<white>(context, board);
    if (board.black_pieces().bishops != 0) sum -= bishops<black>(context, board);
    if (board.white_pieces().rooks != 0) sum += rooks<white>(context, board);
    if (board.black_pieces().rooks != 0) sum -= rooks<black>(context, board);
    return sum;
}

template <PositionType Type>
SCORE_PAIR queens(EVALUATION_CONTEXT& context, const BOARD& board) {
    SCORE_PAIR sum;
    if constexpr (Type == opening) {
        if (board.white_pieces().queens != 0) sum += queens_opening<white>(context, board);
        if (board.black_pieces().queens != 0) sum -= queens_opening<black>(context, board);
    } else {
        if (board.white_pieces().queens != 0) sum += queens_middle_game<white>(context, board);
        if (board.black_pieces().queens != 0) sum -= queens_middle_game<black>(context, board);
    }
    return sum;
}

/// The terms that read what the pieces attack and press on. Their order counts: each reads what those before it left in
/// the counters.
template <PositionType Type>
SCORE_PAIR terms_of_the_whole_board(EVALUATION_CONTEXT& context, const BOARD& board) {
    SCORE_PAIR sum = Type == opening ? patterns_opening(context, board) : patterns_middle_game(context, board);
    sum += space(context, board);
    if constexpr (Type == middle_game) sum += activity(context, board);
    sum += king_safety(context, board);
    if (board.white_pieces().knights != 0) sum += knight_mobility<white>(context, board);
    if (board.black_pieces().knights != 0) sum -= knight_mobility<black>(context, board);
    sum += pawn_balance(context, board);
    return sum;
}

template <PositionType Type>
EVALUATION_RESULT evaluate_with_pairs(EVALUATION_CONTEXT& context, const BOARD& board, int bound) {
    find_bishop_pairs(context, board);
    SCORE_PAIR sum = passed_pawns(context, board);
    sum += material_imbalance(board);
    sum += bishop_pair(context);
    if (const auto answer = lazy_test(board, sum, bound, lazy_margin<Type>)) return *answer;

    build_pawn_lists(context, board);
    find_open_files(context, board);
    place_kings(context, board);
    context.endgame_weight = endgame_weight(board);
    find_pawn_attacks(context, board);
    if (!context.pawn_entry_from_table) find_pawn_facts(context, board);
    sum += pawn_structure(context, board, Type);
    sum += knights<Type>(context, board);
    sum += bishops_and_rooks(context, board);
    std::copy(std::begin(context.attacks), std::end(context.attacks), std::begin(context.attacks_no_queen));
    sum += queens<Type>(context, board);
    sum += terms_of_the_whole_board<Type>(context, board);

    const int value = blend(sum, Type == middle_game, context, board);
    const int material = board.frame().material_balance;
    return {.score = board.side_to_move == white ? material + value : material - value};
}

}  // namespace

EVALUATION_RESULT evaluate_opening(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    return evaluate_with_pairs<opening>(context, board, bound);
}

EVALUATION_RESULT evaluate_middle_game(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    return evaluate_with_pairs<middle_game>(context, board, bound);
}
