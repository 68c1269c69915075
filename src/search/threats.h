#pragma once

#include "search/search_board.h"

/// The pin that stands in a position before the search makes any move: of all pinned pieces of both sides one of the
/// highest type, or an empty record.
[[nodiscard]] PinRecord FindStandingPin(const BOARD& board);
