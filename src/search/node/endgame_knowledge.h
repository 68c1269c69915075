#pragma once

#include "evaluation/context/position_type.h"
#include "search/state/node.h"

/// What bitbases and tablebases know of an ending: the answer of the node, if it settles the question. The first two
/// plies never ask the bitbases, since they know no distances: the moves there have to be told apart by searching.
[[nodiscard]] NodeAnswer KnowledgeOfEnding(const Node& node);
/// The same for any position. Most nodes are no endings, so this test needs no call.
[[nodiscard]] inline NodeAnswer EndgameKnowledge(const Node& node) {
    return node.position_class < balanced_ending ? go_on : KnowledgeOfEnding(node);
}
