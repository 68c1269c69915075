#include "search/tournament/razoring.h"

#include "search/tournament/search_tournament_node.h"

namespace tournament {

NodeAnswer Razoring(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    if (rules.razoring == 0 || !node.may_bet() || node.distance > rules.razoring_distance ||
        node.estimate >= node.beta - ForPlies(rules.razoring_margin, node.distance)) {
        return go_on;
    }
    const Score score =
        SearchNode(node.search, node.state, node.moves_end, node.beta, 0, node.type, node.parent_class, node.may_pass);
    if (score < node.beta) return score;
    return go_on;
}

}  // namespace tournament
