#include "selfplay/adjudication.h"

#include <cstdlib>

std::optional<GameResult> Adjudicator::Take(Colour mover, std::int32_t score, std::int32_t move_number) {
    const std::int32_t for_white = mover == white ? score : -score;
    white_wins_run_ = for_white >= rules_.resign_score ? white_wins_run_ + 1 : 0;
    black_wins_run_ = for_white <= -rules_.resign_score ? black_wins_run_ + 1 : 0;
    const bool is_drawish = move_number >= rules_.draw_from_move && std::abs(score) <= rules_.draw_score;
    draw_run_ = is_drawish ? draw_run_ + 1 : 0;
    // A run holds the moves of both sides.
    if (rules_.resign_moves > 0 && white_wins_run_ >= 2 * rules_.resign_moves) return GameResult::white_wins;
    if (rules_.resign_moves > 0 && black_wins_run_ >= 2 * rules_.resign_moves) return GameResult::black_wins;
    if (rules_.draw_moves > 0 && draw_run_ >= 2 * rules_.draw_moves) return GameResult::draw;
    return std::nullopt;
}
