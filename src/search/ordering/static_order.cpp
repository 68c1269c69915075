#include "search/ordering/static_order.h"

#include <algorithm>

#include "evaluation/context/position_type.h"
#include "search/state/sort_score.h"

namespace {

/// Every score starts here, so that bad squares have something to take away.
constexpr std::int32_t base_score = 50;
/// Bound of the setting for the noise.
constexpr std::int32_t largest_noise = 200;

/// The largest score that the tables allow, noise left out.
constexpr std::int32_t LargestScore(const OrderTables& tables) {
    std::int32_t largest = 0;
    for (const OrderTable& table : tables) {
        const auto [least, most] = std::minmax_element(table.by_square.begin(), table.by_square.end());
        largest = std::max(largest, base_score + table.piece + *most - *least / 2);
    }
    return largest;
}
// With the default noise every score stays below those of tactical moves; with the largest noise nothing overflows.
constexpr std::int32_t default_noise = 5;
static_assert(LargestScore(opening_order) + default_noise < 256 && LargestScore(ending_order) + default_noise < 256);
static_assert(LargestScore(opening_order) + largest_noise <= max_sort_score);
static_assert(LargestScore(ending_order) + largest_noise <= max_sort_score);

}  // namespace

StaticMoveOrder::StaticMoveOrder(const Node& node) noexcept
    : tables_(node.position_class <= middle_game ? opening_order : ending_order),
      noise_(node.search.noise),
      turn_(static_cast<unsigned>(Seen(node.board().mover(), a1))),
      noise_width_(node.settings().randomize_move_ordering_of_remaining_moves),
      from_square_(node.settings().enable_static_move_ordering_from_sq_malus),
      to_square_(node.settings().enable_static_move_ordering_to_sq_bonus),
      piece_(node.settings().enable_static_move_ordering_piece_dependent_bonus) {}

std::int32_t StaticMoveOrder::ScoreOf(Move move) const noexcept {
    const OrderTable& table = tables_[static_cast<std::size_t>(MovingPiece(move) - 1)];
    std::int32_t score = base_score;
    if (noise_width_ != 0) {
        score += static_cast<std::int32_t>(noise_.Below(static_cast<std::uint32_t>(noise_width_)));
    }
    if (piece_) score += table.piece;
    if (to_square_) score += table.by_square[static_cast<unsigned>(ToSquare(move)) ^ turn_];
    if (from_square_) score -= table.by_square[static_cast<unsigned>(FromSquare(move)) ^ turn_] / 2;
    return std::max(score, 0);
}
