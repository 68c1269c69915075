#include "evaluation/endings/ending.h"

#include <algorithm>
#include <cstdlib>

#include "evaluation/endings/scaling.h"
#include "evaluation/endings/unstoppable_pawns.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/king/places.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/pieces/knights.h"
#include "evaluation/pieces/material_terms.h"
#include "evaluation/pieces/queens.h"
#include "evaluation/pieces/rooks.h"

namespace {

/// What the terms behind the lazy test are taken to add at most, in centipawns.
constexpr int lazy_margin = 700;
/// The lead in material from which on an ending is won as it stands, in centipawns.
constexpr int decisive_material = 500;

/// White's view from the side to move's, and back.
int turned(const BOARD& board, int score) { return board.side_to_move == white ? score : -score; }

int pieces(EVALUATION_CONTEXT& context, const BOARD& board) {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    int sum = 0;
    if (w.knights != 0) sum += knights_ending<white>(context, board);
    if (b.knights != 0) sum -= knights_ending<black>(context, board);
    if (w.bishops != 0) sum += bishops_ending<white>(context, board);
    if (b.bishops != 0) sum -= bishops_ending<black>(context, board);
    if (w.rooks != 0) sum += rooks_ending<white>(context, board);
    if (b.rooks != 0) sum -= rooks_ending<black>(context, board);
    if (w.queens != 0) sum += queens_ending<white>(context, board);
    if (b.queens != 0) sum -= queens_ending<black>(context, board);
    return sum;
}

}  // namespace

bool can_win(const SIDE_PIECES& side) noexcept {
    if (side.pawns != 0 || side.heavy_points > 0 || side.minor_points > 6) return true;
    return side.minor_points == 6 && side.bishops != 0;
}

int limit_to_draw_score(int score, int draw_score, const BOARD& board) noexcept {
    if (!can_win(board.white_pieces())) return std::min(score, draw_score);
    return can_win(board.black_pieces()) ? score : std::max(score, draw_score);
}

EVALUATION_RESULT evaluate_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    if (const auto value = wrong_bishop_rule(board)) return {.score = *value};

    find_bishop_pairs(context, board);
    int sum = passed_pawns_ending(context, board);
    sum += material_imbalance(board).positional();
    const UNSTOPPABLE_BONUS unstoppable = unstoppable_bonus(context, board);
    sum += unstoppable.score;
    sum += bishop_pair_ending(context);

    const int draw_score = context.settings->draw_score;
    const int material = turned(board, board.frame().material_balance);
    const int estimate = limit_to_draw_score(material + sum, draw_score, board);
    const int gap = bound - turned(board, estimate);
    if (std::abs(gap) > lazy_margin) return lazy_answer(gap <= 0, bound);

    find_places(context, board);
    sum += pawn_structure_ending(context, board);
    sum += pieces(context, board);
    sum += king_placement_ending(context, board);
    if (unstoppable.check != RunnerCheck::none) sum += checked_unstoppable_bonus(context, board, unstoppable.check);

    int score = material + sum;
    if (std::abs(material) < decisive_material) score = scale_ending(score, has_opposite_bishops(board), board);
    return {.score = turned(board, limit_to_draw_score(score, draw_score, board))};
}
