#include "evaluation/king_safety.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

// clang-format off
constexpr std::array<Wing, 8> wing_of_king_file = {
    //  a           b           c       d       e       f       g          h
    queen_side, queen_side, centre, centre, centre, centre, king_side, king_side,
};
// clang-format on

template <Colour Us>
void place_king(EVALUATION_CONTEXT& context, const BOARD& board) {
    const Square s = board.side(Us).king_square;
    context.king_wing[Us] = wing_of_king_file[static_cast<std::size_t>(FileOf(s))];
    context.attacks[Us] = bitboard_tables.king_attacks[s];
}

template <Colour Us>
void set_danger_factors(EVALUATION_CONTEXT& context) {
    context.cover_factor[Us] = danger_of_cover(context.king_cover[Us]);
    context.attack_factor[Us] = danger_of_attack(context.king_attack[Us]);
}

}  // namespace

void place_kings(EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    place_king<white>(context, board);
    place_king<black>(context, board);
}

double danger_of_cover(int king_cover) noexcept {
    if (king_cover < -9) return 1.0;
    if (king_cover >= 5) return 0.0;
    const double x = king_cover;
    return std::clamp(-1.71074236e-05 * x * x - 0.0347771834536 * x + 0.172185814, 0.0, 1.0);
}

double danger_of_attack(int king_attack) noexcept {
    if (king_attack >= 30) return 1.0;
    if (king_attack < -4) return 0.0;
    const double x = king_attack;
    const double factor = -1.9645048633650176e-05 * x * x * x + 0.0006210098320527342 * x * x + 0.0337458699134167 * x +
                          0.07126673933070571;
    return std::clamp(factor, 0.0, 1.0);
}

SCORE_PAIR king_safety(EVALUATION_CONTEXT& context, const BOARD& /*board*/) noexcept {
    set_danger_factors<white>(context);
    set_danger_factors<black>(context);
    return {};
}

int king_placement_ending(const EVALUATION_CONTEXT& /*context*/, const BOARD& /*board*/) noexcept { return 0; }
