#include "evaluation/endings/ending.h"

#include <algorithm>
#include <cstdlib>

#include "evaluation/endings/ending_walk.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/king/places.h"
#include "evaluation/rules/term_visitor.h"

namespace {

/// What the terms after the lazy test are taken to add at most, in centipawns.
constexpr int lazy_margin = 700;
/// The lead in material from which on an ending is won as it stands, in centipawns.
constexpr int decisive_material = 500;

/// White's view from the side to move's, and back.
int turned(const BOARD& board, int score) { return board.side_to_move == white ? score : -score; }

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

    TermSum<int> terms;
    const RunnerCheck check = walk_first_ending_terms(context, board, terms);
    const int draw_score = context.settings->draw_score;
    const int material = turned(board, board.frame().material_balance);
    const int estimate = limit_to_draw_score(material + terms.sum(), draw_score, board);
    const int gap = bound - turned(board, estimate);
    if (std::abs(gap) > lazy_margin) return lazy_answer(gap <= 0, bound);

    find_places(context, board);
    walk_other_ending_terms(context, board, check, terms);

    int score = material + terms.sum();
    if (std::abs(material) < decisive_material) score = scale_ending(score, has_opposite_bishops(board), board);
    return {.score = turned(board, limit_to_draw_score(score, draw_score, board))};
}
