#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// A side that stands so far below beta, so near the horizon, can only be helped by captures: they alone are searched,
/// and if they do not help the node is given up. After Birmingham and Kent, Tree-searching and tree-pruning techniques
/// (1977).
[[nodiscard]] NodeAnswer Razoring(const TournamentNode& node);

}  // namespace tournament
