#pragma once

#include "search/state/node.h"

/// Asks the hash table about all children before any of them is searched (enhanced transposition cutoff). A child that
/// is known to be bad enough for the opponent ends the node. Otherwise the node has its move list afterwards, without
/// the moves that the table refutes.
[[nodiscard]] NodeAnswer EnhancedTranspositionCutoff(Node& node);
