#include "search/tournament/internal_reduction.h"

#include <algorithm>

namespace tournament {

void InternalReduction(TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    if (rules.internal_reduction == 0 || node.hash_move != INVALID || node.excluded != INVALID ||
        node.distance < rules.internal_reduction_distance) {
        return;
    }
    node.distance = std::max(node.distance - rules.internal_reduction_amount, ONE_PLY);
}

}  // namespace tournament
