#pragma once

#include "chess/board.h"

/// Plays out the captures on one square. `move` is legal in `board`.
/// Returns centipawns for the mover (a pawn is 100); sets `touched` to all squares that took part.
[[nodiscard]] int ExchangeScore(Move move, const BOARD& board, Bitboard& touched) noexcept;

/// The best exchange, in centipawns, that the moved piece threatens next from its new square; 0 if none.
/// With `neglect_minor_trade` a result below 11 (a knight for a bishop) counts as none.
[[nodiscard]] int AttackGain(Move move, const BOARD& board, bool neglect_minor_trade) noexcept;
