#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "chess/move.h"

/// Playing below full strength: few nodes, and now and then a move that is not the best. The one place of the table.
namespace VorkaUci {

/// How one strength plays.
struct Strength {
    int elo;
    std::uint64_t nodes;  ///< of each move
    int blur;             ///< centipawns that chance may add to the score of a move
};

/// From weak to strong. The numbers between two rows are found by their shares.
[[nodiscard]] std::span<const Strength> StrengthTable();
inline constexpr int weakest_elo = 1000;
inline constexpr int strongest_elo = 2000;
/// `elo` within the table's ends.
[[nodiscard]] Strength StrengthOf(int elo);

/// A move that could be played, with its score in centipawns.
struct Candidate {
    Move move;
    int score;
};
/// How many candidates a search has to find.
inline constexpr int candidate_count = 4;
/// The best of the candidates after chance has added up to `blur` to each. `chance` gives any number, evenly spread.
/// INVALID if there are none.
template <class Chance>
[[nodiscard]] Move ChooseBlurred(const std::vector<Candidate>& candidates, int blur, Chance chance) {
    Move best = INVALID;
    std::int64_t best_score = 0;
    for (const Candidate& candidate : candidates) {
        const std::int64_t score =
            candidate.score + static_cast<std::int64_t>(chance() % static_cast<std::uint64_t>(blur + 1));
        if (best != INVALID && score <= best_score) continue;
        best = candidate.move;
        best_score = score;
    }
    return best;
}

}  // namespace VorkaUci
