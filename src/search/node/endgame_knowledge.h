#pragma once

#include "search/state/node.h"

/// What bitbases and tablebases know of an ending: the answer of the node, if it settles the question. The first two
/// plies never ask the bitbases, since they know no distances: the moves there have to be told apart by searching.
[[nodiscard]] NodeAnswer EndgameKnowledge(const Node& node);
