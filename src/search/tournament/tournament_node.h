#pragma once

#include <cstdlib>

#include "evaluation/evaluate.h"
#include "search/state/node.h"
#include "search/tournament/tournament_state.h"

namespace tournament {

/// "Not known", in the place of a static score: below all others.
inline constexpr Score unknown_score = -infinity_bound - 1;

/// One call of SearchNode: what the shared steps read and write, and what the steps of this search have found out.
struct TournamentNode : Node {
    TournamentState& state;
    const bool may_pass;  ///< no pass has led here, and none is being verified
    const Move excluded;  ///< the move to do without; INVALID: none
    Score static_score = unknown_score;
    Score estimate = unknown_score;  ///< the static score, corrected by what the table knows
    bool is_improving = false;       ///< the side on move stands better than at its last move
    bool has_pruned = false;         ///< a move was left out: what is below beta need not bound the score
    Score hash_lower_bound = -infinity_bound;
    Distance hash_lower_distance = no_distance;
    Score hash_upper_bound = infinity_bound;
    Distance hash_move_extension = 0;

    [[nodiscard]] const TournamentSettings& rules() const { return state.settings; }
    [[nodiscard]] int plies() const { return distance / ONE_PLY; }
    [[nodiscard]] bool is_near_mate() const { return std::abs(beta) >= mate_score_limit; }
    /// Whether the static score says something about the question. What is asked far away from it is whether there is a
    /// mate, or a win that the bitbases know.
    [[nodiscard]] bool is_near_static_score() const { return std::abs(static_score - beta) <= rules().farthest_bet; }
    /// Whether bets may be made on the static score.
    [[nodiscard]] bool may_bet() const {
        return !in_check && excluded == INVALID && !is_near_mate() && is_near_static_score();
    }
};

/// What an amount for each ply comes to at a distance.
[[nodiscard]] constexpr std::int32_t ForPlies(std::int32_t per_ply, Distance distance) {
    return per_ply * distance / ONE_PLY;
}
[[nodiscard]] inline bool IsQuiet(Move move) { return (move & capture_or_promotion_bits) == 0; }

}  // namespace tournament
