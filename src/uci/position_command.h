#pragma once

#include <span>
#include <string>

#include "chess/board.h"

/// The words of `position`.
namespace VorkaUci {

/// The normal start position, at ply 0.
[[nodiscard]] BOARD StartPosition();

/// Reads the words after `position`: `startpos` or `fen` with a position, then perhaps `moves`. A position may lack its
/// last fields, and a clock above 100 half moves counts as 100. False, with the board left as it was, if there is no
/// possible position; otherwise the board stands at ply 0 after the moves. `refused` is set to the first move that
/// can't be played, which ends the list, and is empty if there is none.
[[nodiscard]] bool ReadPosition(std::span<const std::string> words, BOARD& board, std::string& refused);

}  // namespace VorkaUci
