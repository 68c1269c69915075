#pragma once

#include "search/state/node.h"

/// The order in which a node tries its moves. The moves are sorted by the scores in their words (sort_score.h). The
/// hash move is not among them: the node has searched it already, and the sorters take it out of the list.

/// Moves of a node's list that are to be tried next.
struct MoveBatch {
    Move* begin;
    Move* end;
    bool is_ordered;  ///< in order already; otherwise the largest word is picked each time
    bool is_last;
};

/// What the staged sorter has ready next, in this order.
enum class SortStage {
    first_group,        ///< promising tactical moves and killers
    best_history,       ///< the best history moves, if they go before the remaining tactical moves
    tacticals,          ///< the remaining tactical moves
    remaining_history,  ///< moves that have cut elsewhere
    rest,
    done,
};

/// Where the staged sorter of one node stands. The groups of the list lie one after the other; the moves already
/// delivered lie before them.
struct MoveSortState {
    SortStage stage = SortStage::first_group;
    Move* next = nullptr;            ///< first move that was not delivered
    Move* tacticals_end = nullptr;   ///< end of the tactical moves, and of the first group
    Move* history_end = nullptr;     ///< end of the history moves; set when history was read
    bool history_is_sorted = false;  ///< the remaining history moves are in order already
};

/// The next moves of a node outside quiescence. Its list must be generated already. A node that cuts early never pays
/// for the later stages. Takes the hash move out of the list.
[[nodiscard]] MoveBatch StagedMoveSorter(MoveSortState& state, Node& node) noexcept;

/// All moves of a quiescence node, in one batch. Takes the hash move out of the list.
[[nodiscard]] MoveBatch SortQuiescence(Node& node) noexcept;
