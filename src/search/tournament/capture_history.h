#pragma once

#include <cstdint>

#include "search/tournament/tournament_node.h"

namespace tournament {

/// How well a capture or promotion has done elsewhere, by its piece and target square and by what it takes, in the
/// units of GainAndRisk. After chessprogramming.org, History Heuristic (capture history).
[[nodiscard]] std::int32_t CaptureHistoryOf(const TournamentNode& node, Move tactical_move);
void LearnCapture(const TournamentNode& node, Move tactical_move, int bonus);

}  // namespace tournament
