#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

/// Lets the side on move pass: if it is at least beta all the same, so it is with a move. The reduction grows with the
/// distance and with what the side stands above beta (after Heinz, Adaptive null-move pruning, 1999). In endings, where
/// passing may be the best move, and far from the horizon a cut is verified by a search without passes (after Tabibi
/// and Netanyahu, Verified null-move pruning, 2002).
[[nodiscard]] NodeAnswer AdaptiveNullMove(TournamentNode& node);

}  // namespace tournament
