#include "search/ordering/static_order.h"

#include <algorithm>

#include "evaluation/context/position_type.h"
#include "search/ordering/order_tables.h"
#include "search/state/sort_score.h"

namespace {

/// Every move has this much to lose.
constexpr std::int32_t base_score = 50;
/// Bound of the setting for the noise.
constexpr std::int32_t largest_noise = 200;

/// The largest score that the tables allow, noise left out.
constexpr std::int32_t LargestScore(const OrderTables& tables) {
    std::int32_t largest = 0;
    for (const OrderTable& table : tables) {
        const auto [least, most] = std::ranges::minmax(table.by_square);
        largest = std::max(largest, base_score + table.piece + most - least / 2);
    }
    return largest;
}
// Below every tactical move with the noise that is the default, and no overflow with the most.
constexpr std::int32_t default_noise = 5;
static_assert(LargestScore(opening_order) + default_noise < 256 && LargestScore(ending_order) + default_noise < 256);
static_assert(LargestScore(opening_order) + largest_noise <= max_sort_score);
static_assert(LargestScore(ending_order) + largest_noise <= max_sort_score);

}  // namespace

bool HasStaticOrder(const Node& node) noexcept {
    return node.settings().randomize_move_ordering_of_remaining_moves != 0 ||
           node.settings().enable_static_move_ordering_from_sq_malus ||
           node.settings().enable_static_move_ordering_to_sq_bonus ||
           node.settings().enable_static_move_ordering_piece_dependent_bonus;
}

std::int32_t StaticScore(const Node& node, Move move) noexcept {
    const OrderTables& tables = node.position_class <= middle_game ? opening_order : ending_order;
    const OrderTable& table = tables[static_cast<std::size_t>(MovingPiece(move) - 1)];
    // Seen from the mover's side.
    const unsigned turn = node.board().side_to_move == black ? 0x38 : 0;
    std::int32_t score = base_score;
    if (const auto noise = node.settings().randomize_move_ordering_of_remaining_moves; noise != 0) {
        score += static_cast<std::int32_t>(node.search.noise.Below(static_cast<std::uint32_t>(noise)));
    }
    if (node.settings().enable_static_move_ordering_piece_dependent_bonus) score += table.piece;
    if (node.settings().enable_static_move_ordering_to_sq_bonus) {
        score += table.by_square[static_cast<unsigned>(ToSquare(move)) ^ turn];
    }
    if (node.settings().enable_static_move_ordering_from_sq_malus) {
        score -= table.by_square[static_cast<unsigned>(FromSquare(move)) ^ turn] / 2;
    }
    return std::max(score, 0);
}
