#pragma once

#include <optional>
#include <span>
#include <string>

#include "chess/board.h"

/// The words of `position`.
namespace VorkaUci {

/// The normal start position, at ply 0.
[[nodiscard]] BOARD StartPosition();

struct PositionCommand {
    BOARD board;          ///< at ply 0 after the moves
    std::string refused;  ///< the first move that can't be played, which ends the list; empty if there is none
};

/// Reads the words after `position`: `startpos` or `fen` with a position, then perhaps `moves`. A position may lack its
/// last fields, a clock above 100 half moves counts as 100, and castling rights and an en passant square that the men
/// contradict are left out. Nothing if there is no possible position.
[[nodiscard]] std::optional<PositionCommand> ReadPosition(std::span<const std::string> words);

}  // namespace VorkaUci
