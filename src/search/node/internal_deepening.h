#pragma once

#include "search/state/node.h"

/// Without a hash move, finds a move to try first by a shallower search of the same node (internal iterative
/// deepening).
[[nodiscard]] NodeAnswer InternalDeepening(Node& node);
