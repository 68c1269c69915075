#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "chess/board.h"

/// Chess by the obvious rules on an array of 64 squares: every attack is walked square by square, every move is made
/// and looked at. Slow, short, and independent of all tables, so that fast code can be held against it.
struct SlowPosition {
    std::array<int, 64> squares{};  ///< signed piece codes
    Colour side = white;
    Square en_passant_square = 0;
    int castling = 0;

    bool operator==(const SlowPosition&) const = default;
};

/// Reads the first four fields of a FEN, which must be right.
[[nodiscard]] SlowPosition SlowFromFen(std::string_view fen);
[[nodiscard]] SlowPosition SlowFromBoard(const BOARD& board);
[[nodiscard]] std::string SlowFen(const SlowPosition& position);
/// Loads a position into a board; false if the board refuses it.
[[nodiscard]] bool LoadBoard(BOARD& board, const SlowPosition& position);

[[nodiscard]] Square SlowKingSquare(const SlowPosition& position, Colour side);
/// Whether the piece on `from` attacks `to`, on the present squares.
[[nodiscard]] bool SlowAttacks(const SlowPosition& position, Square from, Square to);
/// All squares from which `side` attacks `to`.
[[nodiscard]] Bitboard SlowAttackers(const SlowPosition& position, Square to, Colour side);
[[nodiscard]] bool SlowInCheck(const SlowPosition& position, Colour side);

/// The position after a move; of the word only from, to and promotion are read.
[[nodiscard]] SlowPosition SlowAfter(const SlowPosition& position, Move move);
/// The check bits of a legal move, by making it and looking which pieces attack the king then.
[[nodiscard]] Move SlowCheckBits(const SlowPosition& position, Move move);
/// All legal moves with all their bits, in the generator's order.
[[nodiscard]] std::vector<Move> SlowLegalMoves(const SlowPosition& position);
/// The position's key, piece by piece.
[[nodiscard]] std::uint64_t SlowKey(const SlowPosition& position);
