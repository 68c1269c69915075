#include "search/tournament/singular_extension.h"

#include "search/tournament/search_tournament_node.h"

namespace tournament {

namespace {

bool MayBeSingular(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    return rules.singular_extension != 0 && node.hash_move != INVALID && node.excluded == INVALID &&
           node.distance >= rules.singular_distance &&
           node.hash_lower_distance >= node.distance - rules.singular_entry &&
           std::abs(node.hash_lower_bound) < mate_score_limit &&
           static_cast<int>(node.ply) <= rules.longest_line * node.search.iteration_depth;
}

}  // namespace

NodeAnswer SingularExtension(TournamentNode& node) {
    if (!MayBeSingular(node)) return go_on;
    const TournamentSettings& rules = node.rules();
    const Score bound = node.hash_lower_bound - ForPlies(rules.singular_margin, node.distance);
    node.state.excluded[node.ply] = node.hash_move;
    const Score others = SearchNode(node.search, node.state, node.moves_end, bound, (node.distance - ONE_PLY) / 2,
                                    node.type, node.parent_class, false);
    if (others < bound) {
        node.hash_move_extension = rules.singular_extension;
    } else if (rules.multi_cut != 0 && bound >= node.beta) {
        return bound;
    }
    return go_on;
}

}  // namespace tournament
