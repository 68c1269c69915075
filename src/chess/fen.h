#pragma once

#include <cstdint>
#include <string>

#include "chess/board.h"

/// Reads a position in Forsyth-Edwards notation, all six fields, into a scratch board; `ply_offset` becomes twice the
/// move number, plus one with Black to move. Throws UserBoard::io_error for a text that is no FEN, and
/// UserBoard::invalid_position for one of an impossible position; `board` is unusable then.
void ReadFen(BOARD& board, const std::string& text, std::uint32_t& ply_offset);

[[nodiscard]] std::string WriteFen(const BOARD& board, int full_move_number);
