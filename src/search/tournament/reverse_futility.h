#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// A side that stands so far above beta, so near the horizon, will not be brought below it by one reply.
/// Also known as static null move pruning: the margin stands for the reply.
[[nodiscard]] NodeAnswer ReverseFutility(const TournamentNode& node);

}  // namespace tournament
