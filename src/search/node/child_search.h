#pragma once

#include <cstdint>

#include "search/state/node.h"

/// What a node tells the child after `move` to leave out. node.extended must hold the causes of the move already.
[[nodiscard]] ChildFlags FlagsForChild(const Node& node, Move move);

/// Plays a move and asks the child the opposite question. `new_distance` is the node's with extensions and without
/// `reduced`, the distance that razoring and the reduction of late moves took off: a move that cuts has to confirm it
/// without them. `key_after_move` is board().HashKeyAfterMove(move). Gives the score from the node's view.
[[nodiscard]] Score SearchChild(Node& node, Move move, std::uint64_t key_after_move, Distance new_distance,
                                Distance reduced);
