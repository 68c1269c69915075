#include "evaluation/blend.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>

#include "evaluation/context/position_type.h"

namespace {

// --- Endgame weight ---

/// By the units of the stronger side. Openings and middle games start at 22; lower entries are never read.
constexpr std::size_t least_units = 22;
constexpr std::size_t most_weighed_units = 35;

consteval std::array<double, most_weighed_units + 1> weights_by_units() {
    std::array<double, most_weighed_units + 1> weights{};
    for (std::size_t units = least_units; units <= most_weighed_units; ++units) {
        const double x = static_cast<double>(most_weighed_units - units) / 13;
        const double weight =
            0.24875006018 * x * x * x + 0.11095692200031873 * x * x + 0.7854795236172942 * x - 0.07369495345398903;
        weights[units] = std::clamp(weight, 0.0, 1.0);
    }
    return weights;
}
constexpr auto endgame_weights = weights_by_units();

// --- Blend ---

// From here on a personality knows one of the two values only.
constexpr int all_reckless = 1000;
constexpr int all_positional = -1000;
constexpr int full_weight = 16;

/// A clear lead calls for sharper play, the more so after the opening; near balance for a quieter one.
int material_part(int material_balance, bool is_middle_game) {
    const int base = is_middle_game ? 2 : 0;
    const int lead = std::abs(material_balance);
    if (lead >= 255) return base + 4;
    return lead < 50 ? base - 3 : base - 1;
}

int queen_part(const BOARD& board) {
    const bool white_has_queen = board.white_pieces().queens != 0;
    const bool black_has_queen = board.black_pieces().queens != 0;
    if (!white_has_queen && !black_has_queen) return -3;
    const int part = white_has_queen != black_has_queen ? 2 : 0;
    const int minor_points = board.white_pieces().minor_points + board.black_pieces().minor_points;
    if (minor_points > 23) return part + 1;
    if (minor_points < 12) return part - 2;
    return minor_points < 18 ? part - 1 : part;
}

int openness_part(const EVALUATION_CONTEXT& context) { return context.openness >> 2; }

/// A king in the centre or away from its first two ranks, the more dangerous the more pieces there are.
template <Colour Us>
double exposure(const BOARD& board, double middle_game_weight, double so_far) {
    const Square king_from_home = Seen<Us>(board.side(Us).king_square);
    const int file = FileOf(king_from_home);
    if (file >= 3 && file <= 5) so_far += 0.8 * middle_game_weight;
    if (RankOf(king_from_home) > 1) so_far += 3.0 * middle_game_weight;
    return so_far;
}

bool kings_on_opposite_wings(const BOARD& board) {
    // Not the table of king_wing: docs/oddities.md, wings of opposite kings.
    const auto is_on_queen_side = [](Square s) { return FileOf(s) <= 2; };
    const auto is_on_king_side = [](Square s) { return FileOf(s) >= 6; };
    const Square w = board.white_pieces().king_square;
    const Square b = board.black_pieces().king_square;
    return (is_on_queen_side(w) && is_on_king_side(b)) || (is_on_king_side(w) && is_on_queen_side(b));
}

double king_exposure(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const double middle_game_weight = 1.0 - context.endgame_weight;
    double sum = exposure<white>(board, middle_game_weight, 4.0);
    sum = exposure<black>(board, middle_game_weight, sum);
    return kings_on_opposite_wings(board) ? sum + 1.2 : sum;
}

/// How much the attacks on both kings make of their exposure, 0 to 20.
int danger_part(const EVALUATION_CONTEXT& context, const BOARD& board) {
    const double white_danger = context.cover_factor[white] * context.attack_factor[white];
    const double black_danger = context.cover_factor[black] * context.attack_factor[black];
    const double both = white_danger * black_danger;
    const double exposed = king_exposure(context, board) + 8.0 * (white_danger + black_danger + both);
    const double danger = std::max({both + 0.25, white_danger, black_danger}) * exposed;
    constexpr int most = 20;
    return danger >= most ? most : static_cast<int>(danger + 0.5);  // NOLINT(bugprone-incorrect-roundings): positive
}

}  // namespace

double endgame_weight(const BOARD& board) noexcept {
    const auto units = static_cast<std::size_t>(stronger_side_units(board));
    return units > most_weighed_units ? 0.0 : endgame_weights[units];
}

int blend_weight(bool is_middle_game, const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    return context.settings->personality + openness_part(context) +
           material_part(board.frame().material_balance, is_middle_game) + queen_part(board) +
           danger_part(context, board);
}

int blend(SCORE_PAIR sum, bool is_middle_game, const EVALUATION_CONTEXT& context, const BOARD& board) noexcept {
    const int positional = sum.positional();
    const int reckless = sum.reckless();
    const int personality = context.settings->personality;
    if (personality >= all_reckless) return reckless;
    if (personality <= all_positional) return positional;

    const int weight = blend_weight(is_middle_game, context, board);
    if (weight < 1) return positional;
    if (weight >= full_weight) return reckless;
    return ((full_weight - weight) * positional + weight * reckless) / full_weight;
}
