#pragma once

#include <optional>

#include "search/node.h"

/// What a node leaves out, each technique with its gates. A step that may end the node returns its answer.

/// Asks the hash table about all children before any is searched (ETTC). May leave a thinned move list.
[[nodiscard]] std::optional<Score> EnhancedTranspositionCutoff(Node& node);

/// Passes, and cuts if even that is good enough; otherwise may find out that the opponent threatens to mate.
[[nodiscard]] std::optional<Score> NullMove(Node& node);

/// Limited razoring, extended futility and futility: lowers node.distance, sets the futility of the node.
void SelectiveGates(Node& node);

/// Finds a move to try first by a shallower search of the same node.
[[nodiscard]] std::optional<Score> InternalDeepening(Node& node);

/// Whether a move is skipped since it can't bring the score near beta.
[[nodiscard]] bool IsFutile(const Node& node, Move move);

/// What a late move loses of its distance; 0 for most. node.moves_tried counts `move` already.
[[nodiscard]] Distance LateMoveReduction(const Node& node, Move move);
