#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// A node at the horizon or below it, not in check: captures and promotions to a queen, and at the horizon checks,
/// until nothing is left to take. Left out are moves that lose material by what can be taken on their square, and those
/// that do not bring the side on move to beta whatever they gain (chessprogramming.org, Delta Pruning).
[[nodiscard]] Score SearchQuiescence(TournamentNode& node);

}  // namespace tournament
