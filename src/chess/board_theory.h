#pragma once

#include "chess/board.h"

/// What must hold of a board around each move; a failure ends the program. For debug builds: see theory.h.

/// Before `move` is made: it can be read off this board.
void AssertMoveFits(const BOARD& board, Move move);
/// Before `move` is made: this is the key that it leads to.
void AssertKeyIsForetold(const BOARD& board, Move move, std::uint64_t key_after_move);
/// After `move` was made: the record is the one that SetPosition would build.
void AssertMoveMade(const BOARD& board, Move move);
/// Before `move` is taken back: it was the last one.
void AssertMoveWasMade(const BOARD& board, Move move);
/// After `move` was taken back: it could be made again.
void AssertMoveUndone(const BOARD& board, Move move);
/// Before a null move: there is room for it.
void AssertNullMoveFits(const BOARD& board);
/// After a null move: nothing has moved, and no pawn can be taken en passant any more.
void AssertNullMoveMade(const BOARD& board);
/// The record agrees with its own squares: sets, rotated occupancies, counters, keys.
void AssertBoardAgrees(const BOARD& board);
