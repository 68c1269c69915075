#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// How much less deep a move is searched that comes late in the order, in 1/64 ply. It grows with the logarithms of the
/// plies left and of the number of the move, and is less for killers, checks, captures and moves of good history; what
/// comes out at least beta is searched again in full. After Romstad, An introduction to late move reductions (2006).
[[nodiscard]] Distance LateMoveReductionOf(const TournamentNode& node, Move move, int history);

}  // namespace tournament
