#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// A side that stands so far above beta, so near the horizon, will not be brought below it by one reply.
/// The margin stands for the reply: the null move without a search, known as static null move pruning too
/// (chessprogramming.org, Reverse Futility Pruning).
[[nodiscard]] NodeAnswer ReverseFutility(const TournamentNode& node);

}  // namespace tournament
