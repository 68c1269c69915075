#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "chess/fen.h"
#include "chess/move_generator.h"
#include "chess/notation.h"

inline const std::string start_fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

/// The position of a FEN. Throws what ReadFen throws.
[[nodiscard]] inline BOARD BoardFromFen(const std::string& fen) {
    BOARD board;
    std::uint32_t ply_offset = 0;
    ReadFen(board, fen, ply_offset);
    return board;
}

/// The FEN of a board whose move number does not matter.
[[nodiscard]] inline std::string FenOf(const BOARD& board) { return WriteFen(board, 1); }

[[nodiscard]] inline std::vector<Move> LegalMovesOf(const BOARD& board) {
    std::vector<Move> moves;
    GenerateLegalMoves(board, moves);
    return moves;
}

/// The legal move that MoveToCoordinate writes as `text` ("e7e8" promotes to a queen).
[[nodiscard]] inline Move MoveOf(const BOARD& board, std::string_view text) {
    for (const Move move : LegalMovesOf(board)) {
        if (MoveToCoordinate(move) == text) return move;
    }
    throw std::invalid_argument("no legal move " + std::string(text) + " in " + FenOf(board));
}
