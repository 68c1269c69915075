#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// How much deeper a check is searched, in 1/64 ply, if it loses no material: the reply is forced, and what
/// comes after it should not lie behind the horizon (chessprogramming.org, Check Extensions).
[[nodiscard]] Distance CheckExtension(const TournamentNode& node, Move move);

}  // namespace tournament
