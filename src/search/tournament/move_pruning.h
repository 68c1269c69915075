#pragma once

#include "search/tournament/tournament_node.h"

namespace tournament {

enum class Pruning { none, this_move, quiet_moves };

/// What is left out instead of searching a move, near the horizon and once another move has been searched:
/// - late quiet moves, the later the more plies are left (late move pruning;
///   chessprogramming.org, Futility Pruning, by the count of moves);
/// - quiet moves of a side that stands so far below beta that they hardly reach it (futility, after Heinz, Extended
///   futility pruning, 1998, here at the distance that a late move would be left with);
/// - quiet moves that have failed elsewhere (history pruning: the bet of late move reductions, taken to its end);
/// - moves that lose material by what can be taken on their square (chessprogramming.org, Static Exchange
///   Evaluation).
/// By the first two no later quiet move can pass either: all that neither capture nor promote nor check are left out.
[[nodiscard]] Pruning PruningOf(const TournamentNode& node, Move move, int history);

/// Whether a move loses more than a margin, in centipawns, by what can be taken on its square.
[[nodiscard]] bool LosesMoreThan(const TournamentNode& node, Move move, Score margin);

}  // namespace tournament
