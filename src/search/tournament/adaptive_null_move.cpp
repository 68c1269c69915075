#include "search/tournament/adaptive_null_move.h"

#include <algorithm>

#include "chess/bits.h"
#include "evaluation/context/position_type.h"
#include "search/tournament/search_tournament_node.h"

namespace tournament {

namespace {

bool MayPass(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    const SIDE_PIECES& own = node.board().own();
    const int pieces = PopCount(own.all & ~own.pawns) - 1;  // without the king
    return rules.null_move != 0 && node.may_bet() && node.may_pass && node.distance >= rules.null_move_distance &&
           node.estimate >= node.beta && pieces >= rules.null_move_pieces;
}

Distance ReducedDistance(const TournamentNode& node) {
    const TournamentSettings& rules = node.rules();
    const Distance for_margin =
        std::min((node.estimate - node.beta) * ONE_PLY / rules.null_move_margin, rules.null_move_margin_limit);
    return node.distance - rules.null_move_reduction - ForPlies(rules.null_move_growth, node.distance) - for_margin;
}

Score ScoreAfterPass(const TournamentNode& node, Distance distance) {
    SearchBoard& search = node.search;
    search.moves_played[node.ply + 1] = INVALID;
    search.board.MakeNullMove();
    const Score score = -SearchNode(search, node.state, node.moves_end, 1 - node.beta, distance, -node.type,
                                    node.position_class, false);
    search.board.UnmakeNullMove();
    return score;
}

bool NeedsVerification(const TournamentNode& node) {
    return node.distance >= node.rules().null_move_verification || node.position_class >= balanced_ending;
}

}  // namespace

NodeAnswer AdaptiveNullMove(TournamentNode& node) {
    if (!MayPass(node)) return go_on;
    const Distance distance = ReducedDistance(node);
    const Score score_after_pass = ScoreAfterPass(node, distance);
    if (score_after_pass < node.beta) return go_on;
    if (NeedsVerification(node)) {
        // At this ply and on the same stacks; only its answer is of interest.
        const Distance deeper = std::max(distance, node.rules().null_move_verification_least);
        const Score score = SearchNode(node.search, node.state, node.moves_end, node.beta,
                                       std::min(deeper, node.distance - ONE_PLY), node.type, node.parent_class, false);
        if (score < node.beta) return go_on;
    }
    // A mate that is only threatened is none.
    const bool is_known_further = node.rules().fail_soft != 0 && score_after_pass < mate_score_limit;
    return is_known_further ? score_after_pass : node.beta;
}

}  // namespace tournament
