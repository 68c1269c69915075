#include "search/tournament/reverse_futility.h"

#include <algorithm>

namespace tournament {

NodeAnswer ReverseFutility(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    if (rules.reverse_futility == 0 || !node.may_bet() || node.distance > rules.reverse_futility_distance) {
        return go_on;
    }
    const Score improving = node.is_improving ? rules.reverse_futility_improving : 0;
    const Score margin = std::max(ForPlies(rules.reverse_futility_margin, node.distance) - improving, 0);
    if (node.estimate < node.beta + margin) return go_on;
    return rules.fail_soft != 0 ? node.estimate : node.beta;
}

}  // namespace tournament
