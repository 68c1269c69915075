#include "evaluation/endings/ending.h"

#include <algorithm>
#include <cstdlib>

#include "evaluation/context/view.h"
#include "evaluation/endings/ending_walk.h"
#include "evaluation/endings/scaling.h"
#include "evaluation/endings/wrong_bishop.h"
#include "evaluation/king/places.h"
#include "evaluation/pieces/bishops.h"
#include "evaluation/rules/tell.h"
#include "evaluation/rules/term_visitor.h"

namespace {

/// What the terms after the lazy test are taken to add at most, in centipawns.
constexpr int lazy_margin = 700;
/// The lead in material from which on an ending is won as it stands, in centipawns.
constexpr int decisive_material = 500;

/// White minus Black.
int material_of_both(const BOARD& board) { return turned(board, static_cast<int>(board.frame().material_balance)); }

}  // namespace

bool can_win(const SIDE_PIECES& side) noexcept {
    constexpr int two_minor_pieces = 6;  // material units
    if (side.pawns != 0 || side.heavy_points > 0 || side.minor_points > two_minor_pieces) return true;
    return side.minor_points == two_minor_pieces && side.bishops != 0;
}

int limit_to_draw_score(int score, int draw_score, const BOARD& board) noexcept {
    if (!can_win(board.white_pieces())) return std::min(score, draw_score);
    return can_win(board.black_pieces()) ? score : std::max(score, draw_score);
}

template <class Context>
int score_of_ending(Context& context, const BOARD& board, int sum) noexcept {
    const int material = material_of_both(board);
    int score = sum + tell<white>(context, Rule::material, 0, material);
    if (std::abs(material) < decisive_material) {
        score = scale_ending(context, score, has_opposite_bishops(board), board);
    }
    return tell_limited(context, white, Rule::side_that_cannot_win, score,
                        limit_to_draw_score(score, context.settings->draw_score, board));
}
template int score_of_ending(EVALUATION_CONTEXT& context, const BOARD& board, int sum) noexcept;
template int score_of_ending(TRACED_CONTEXT& context, const BOARD& board, int sum) noexcept;

EVALUATION_RESULT evaluate_ending(EVALUATION_CONTEXT& context, const BOARD& board, int bound) noexcept {
    if (const auto value = wrong_bishop_rule(context, board)) return {.score = *value};

    TermSum<int> terms;
    const RunnerCheck check = walk_first_ending_terms(context, board, terms);
    const int estimate =
        limit_to_draw_score(material_of_both(board) + terms.sum(), context.settings->draw_score, board);
    const int gap = bound - turned(board, estimate);
    if (std::abs(gap) > lazy_margin) return lazy_answer(gap <= 0, bound);

    find_places(context, board);
    walk_other_ending_terms(context, board, check, terms);
    return {.score = turned(board, score_of_ending(context, board, terms.sum()))};
}
