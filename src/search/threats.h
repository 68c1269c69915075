#pragma once

#include "search/node.h"

/// The pin that stands in a position before the search makes any move: of all pinned pieces of both sides one of the
/// highest type, or an empty record.
[[nodiscard]] PinRecord FindStandingPin(const BOARD& board);

/// Follows the pin of the previous ply through the last move, into the record of this ply and node.pin_result; sets or
/// keeps the pin flag, and what it keeps from being pruned. The ply must be 2 or more.
void DetectPinThreat(Node& node);

/// Counts the queen checks in a row against the side on move, which is in check, and marks a threatening perpetual
/// check.
void PerpetualCheckTest(Node& node);
