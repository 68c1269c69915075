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
    return node.estimate >= node.beta + margin ? NodeAnswer(node.beta) : go_on;
}

}  // namespace tournament
