#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// Extends the hash move if every other move is worse by a margin, as a search of half the distance without it finds.
/// After Anantharaman, Campbell and Hsu, Singular extensions (1990), in the form that asks for the hash move alone. If
/// another move is at least beta as well the node is given up at once: two moves that cut at half the distance are
/// taken for one at the whole (after Bjornsson and Marsland, Multi-cut pruning, 1999).
[[nodiscard]] NodeAnswer SingularExtension(TournamentNode& node);

}  // namespace tournament
