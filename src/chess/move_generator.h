#pragma once

#include <vector>

#include "chess/board.h"

inline constexpr int MAX_MOVES = 256;
/// Room for the moves of any board at all, with a queen on every square.
inline constexpr int move_list_room = 4 * MAX_MOVES;

/// What GenerateMoves is asked for; bits of a mask.
enum GenerationMode : unsigned {
    mode_captures = 1,           ///< all captures, capture-promotions and en passant among them
    mode_direct_checks = 2,      ///< moves that give direct check, captures too
    mode_discovered_checks = 4,  ///< moves that give discovered check
    mode_double_checks = 8,      ///< moves that give both
    mode_queen_promotions = 16,  ///< pushes that promote to a queen
    mode_underpromotions = 32,   ///< pushes that promote, to all four pieces
    mode_castling = 64,          ///< castling, checking or not
    mode_all = 128,              ///< every move but castling
    mode_legal = 255,
};

/// Writes legal moves of the kinds in `mode` and returns the end; in check, every legal move whatever the mode. The
/// caller owns a buffer of at least MAX_MOVES words. Pieces of a kind come from the highest square to the lowest, and
/// so do the moves of a piece.
Move* GenerateMoves(Move* buffer, const BOARD& board, unsigned mode) noexcept;

/// Whether the exact word is among the legal moves.
[[nodiscard]] bool VerifyMove(Move move, const BOARD& board) noexcept;

/// False for a board with more men other than pawns than a game can have (16 a side), or more moves for either side
/// than a game can have (218). Such boards are refused where positions enter, so that no input reaches the assertion
/// below.
[[nodiscard]] bool FitsMoveLists(const BOARD& board) noexcept;

/// All legal moves in generator order. Asserts that the buffer was large enough.
void GenerateLegalMoves(const BOARD& board, std::vector<Move>& list);
