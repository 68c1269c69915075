#pragma once

#include <cstdint>

#include "chess/board.h"

/// A pin that the search follows through the plies.
struct PinRecord {
    std::int16_t pinned_square = -1;  ///< -1: no pin
    std::int16_t pinner_square = -2;
    std::int32_t pinner_side = -1;  ///< a Colour

    bool operator==(const PinRecord&) const = default;
};

/// The record of `pinned`, which stands on a line between its king and a slider of `pinner_side`.
[[nodiscard]] PinRecord RecordPin(const BOARD& board, Square king_square, Square pinned, Colour pinner_side);
/// The pin that stands in a position before the search makes any move: of all pinned pieces of both sides one of the
/// highest type, or an empty record.
[[nodiscard]] PinRecord FindStandingPin(const BOARD& board);
