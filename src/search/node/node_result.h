#pragma once

#include "search/state/node.h"

/// Writes the line from this node: the move, then the child's line.
void TakeLine(Node& node, Move move);

/// Ends a node that has tried its moves, or has a cutting move in best_move and best: tells killers and history of a
/// cut, stores the result in the hash table, and gives the answer.
[[nodiscard]] Score FinishNode(const Node& node);

/// Keeps what the node has found, in the hash table.
void StoreResult(const Node& node, bool is_cut);
