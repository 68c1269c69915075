#pragma once

#include "search/state/node.h"

/// Generates the node's moves from node.moves on. Mate and stalemate end the node, and so does a quiescence node
/// without a move to try, which tells nothing about mate. Sets the single reply flag.
[[nodiscard]] NodeAnswer ListMoves(Node& node);
