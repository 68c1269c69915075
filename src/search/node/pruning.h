#pragma once

#include "search/state/node.h"

/// What a node leaves out or searches less deep: razoring, futility, and the reduction of late moves.

/// Limited razoring, extended futility and futility: lowers node.distance, sets the futility of the node.
void SelectiveGates(Node& node);

/// Whether a move is skipped since it can't bring the score near beta.
[[nodiscard]] bool IsFutile(const Node& node, Move move);

/// What a late move loses of its distance, in 1/64 ply; 0 for most. node.moves_tried counts `move` already.
[[nodiscard]] Distance LateMoveReduction(const Node& node, Move move);
