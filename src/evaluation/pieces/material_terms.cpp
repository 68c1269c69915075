#include "evaluation/pieces/material_terms.h"

#include <numeric>

namespace {

bool has_bishops_on_both_colours(const SIDE_PIECES& side) {
    return (side.bishops & light_squares) != 0 && (side.bishops & ~light_squares) != 0;
}

/// 1 if White alone has the pair, -1 if Black alone has it.
int pair_lead(const EVALUATION_CONTEXT& context) {
    return static_cast<int>(context.has_bishop_pair[white]) - static_cast<int>(context.has_bishop_pair[black]);
}

int total(const WingCounters& counters) { return std::accumulate(counters.begin(), counters.end(), 0); }

/// For the side that is a pawn up, by the pressure of both sides over the whole board.
SCORE_PAIR pawn_lead(int own_pressure, int enemy_pressure) {
    if (enemy_pressure < 0) return {20, 12};
    if (own_pressure < enemy_pressure >> 1 && enemy_pressure > own_pressure + 20) return {4, -10};
    if (enemy_pressure > own_pressure + 10) return {13, -4};
    return {16, 0};
}

}  // namespace

void find_bishop_pairs(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    context.has_bishop_pair[white] = has_bishops_on_both_colours(board.white_pieces());
    context.has_bishop_pair[black] = has_bishops_on_both_colours(board.black_pieces());
}

SCORE_PAIR bishop_pair(const EVALUATION_CONTEXT& context) noexcept {
    constexpr int value = 50;
    return {value * pair_lead(context), value * pair_lead(context)};
}

int bishop_pair_ending(const EVALUATION_CONTEXT& context) noexcept {
    constexpr int value = 55;
    return value * pair_lead(context);
}

SCORE_PAIR material_imbalance(const BOARD& board) noexcept {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    const int heavy_lead = w.heavy_points - b.heavy_points;
    const int minor_lead = w.minor_points - b.minor_points;
    const int lead = 5 * heavy_lead + minor_lead;
    if (lead >= 4) return {400, 180};
    if (lead <= -4) return {-400, -180};

    // What is left has a lead of three units at most.
    if (minor_lead == 3 && heavy_lead == 0) return w.pawns == 0 ? SCORE_PAIR{-120, -120} : SCORE_PAIR{160, 160};
    if (minor_lead == -3 && heavy_lead == 0) return b.pawns == 0 ? SCORE_PAIR{120, 120} : SCORE_PAIR{-160, -160};
    if (minor_lead == 6 && heavy_lead == -1) return {130, 180};
    if (minor_lead == -6 && heavy_lead == 1) return {-130, -180};
    if (minor_lead == 9 && heavy_lead == -2) return {50, 100};
    if (minor_lead == -9 && heavy_lead == 2) return {-50, -100};
    return {};
}

SCORE_PAIR pawn_balance(const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const int lead = PopCount(board.white_pieces().pawns) - PopCount(board.black_pieces().pawns);
    if (lead != 1 && lead != -1) return {};
    const int white_pressure = total(context.pressure[white]);
    const int black_pressure = total(context.pressure[black]);
    return lead == 1 ? pawn_lead(white_pressure, black_pressure) : -pawn_lead(black_pressure, white_pressure);
}
