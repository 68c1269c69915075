#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// Without a hash move the first move is a guess, and the distance is ill spent: the node is searched less deep, and
/// leaves a move for the next time (chessprogramming.org, Internal Iterative Reductions).
void InternalReduction(TournamentNode& node);

}  // namespace tournament
