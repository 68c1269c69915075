#pragma once

#include "search/tournament/tournament_record.h"

namespace tournament {

class MoveOrder;

/// Whether a move is left out, near the horizon and once another move has been searched:
/// - late quiet moves, the later the more plies are left (late move pruning);
/// - quiet moves of a side that stands so far below beta that they hardly reach it (futility, after Heinz, Extended
///   futility pruning, 1998, here at the distance that a late move would be left with);
/// - quiet moves that have failed elsewhere (history pruning);
/// - moves that lose material by what can be taken on their square (pruning by static exchange).
/// Where no later quiet move can pass either, `order` is told to leave them out.
[[nodiscard]] bool IsPruned(const TournamentNode& node, MoveOrder& order, Move move, int history);

/// Whether a move loses more than a margin, in centipawns, by what can be taken on its square.
[[nodiscard]] bool LosesMoreThan(const TournamentNode& node, Move move, Score margin);

}  // namespace tournament
