#pragma once

#include "search/state/node.h"

/// The search follows one pin through the plies: a piece that can't move without giving up its king to a slider, and
/// that is worth winning.

/// Follows the pin of the previous ply through the last move, into the record of this ply and node.pin_result; sets or
/// keeps the pin flag, and what it keeps from being pruned. The ply must be 2 or more.
void DetectPinThreat(Node& node);
