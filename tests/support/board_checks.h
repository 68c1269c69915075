#pragma once

#include <string>

#include "chess/board.h"

/// What of a board's record does not follow from its squares, side to move, castling rights and en passant square: a
/// line for each field that disagrees with a count from scratch, empty if all is well.
[[nodiscard]] std::string Disagreements(const BOARD& board);

/// The fields in which two boards differ, empty if they hold the same position with the same past: frames and keys
/// count up to the current ply.
[[nodiscard]] std::string Differences(const BOARD& left, const BOARD& right);
