#pragma once

#include <cstdint>
#include <string>

#include "chess/board.h"

/// Positions in Forsyth-Edwards notation, with all six fields.
///
/// ReadFen fills a scratch board; `ply_offset` becomes twice the move number, plus one with Black to move. A game that
/// starts with this offset shows a move number one higher than the text had: docs/oddities.md, move number of a FEN.
/// Throws game_errors::io_error for a text that is no FEN (a clock above 100 among them), and
/// game_errors::invalid_position for one of an impossible position; `board` is unusable then.
void ReadFen(BOARD& board, const std::string& text, std::uint32_t& ply_offset);

[[nodiscard]] std::string WriteFen(const BOARD& board, int full_move_number);
