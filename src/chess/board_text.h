#pragma once

#include <string>

#include "chess/board.h"

/// What a board looks like in print.

/// Writes the board to the log stream, with the state line if asked. No flush.
void PrintBoard(const BOARD& board, bool with_state);
/// "KQkq", and "-" for no right.
[[nodiscard]] std::string CastlingText(const BOARD& board);
/// "e3", and "-" for no square.
[[nodiscard]] std::string EnPassantText(const BOARD& board);
