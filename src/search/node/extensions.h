#pragma once

#include "search/state/node.h"

/// Extensions are distances that a node adds to that of its children. Each cause has a full and a limited amount; a
/// node decides once which column it uses. Delayed extensions belong to the position, instant ones to a move; three
/// caps bound the sums.

/// Chooses the column and sums what the position earns, once per node, into node.delayed_extension.
void DelayedExtensions(Node& node);

/// The distance for a move: the node's with its delayed and the move's instant extensions, capped. Notes the causes in
/// node.extended. Without search extensions it is the node's distance.
[[nodiscard]] Distance ExtendedDistance(Node& node, Move move);
