#pragma once

#include <string>
#include <string_view>

#include "chess/board.h"
#include "chess/move.h"

/// Moves as the UCI protocol writes them: coordinates, and every promotion with its letter. Castling is the king's
/// move.
namespace VorkaUci {

inline constexpr std::string_view null_move_text = "0000";

/// "e2e4", "e7e8q"; "0000" for INVALID.
[[nodiscard]] std::string MoveText(Move move);
/// The legal move of that text; INVALID if there is none.
[[nodiscard]] Move FindMove(std::string_view text, const BOARD& board);
/// Whether a word has the form of a move.
[[nodiscard]] bool LooksLikeMove(std::string_view word);

}  // namespace VorkaUci
