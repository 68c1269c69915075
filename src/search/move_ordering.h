#pragma once

#include "search/node.h"

/// The order in which a node tries its moves. A move carries its sort score in the top nine bits of its word, above the
/// move itself, so that comparing words orders them. The hash move is the node's affair: the sorters take it out of the
/// list, since it was searched.

/// Moves of a node's list that are to be tried next.
struct MoveBatch {
    Move* begin;
    Move* end;
    bool is_ordered;  ///< in order already; otherwise the largest word is picked each time
    bool is_last;
};

/// Where the staged sorter of one node stands.
struct MoveSortState {
    int stage = 0;
};

/// The next moves of a node that is no quiescence node, which has its list. A node that cuts early never pays for the
/// later stages. May shrink the list.
[[nodiscard]] MoveBatch StagedMoveSorter(MoveSortState& state, Node& node);

/// All moves of a quiescence node, in one batch.
[[nodiscard]] MoveBatch SortQuiescence(Node& node);
