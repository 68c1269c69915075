#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "chess/bitboard_tables.h"
#include "chess/bits.h"
#include "chess/move.h"

/// Castling rights, as bits of PLY_FRAME::castling.
enum CastlingRight : std::uint8_t { white_short = 1, white_long = 2, black_short = 4, black_long = 8 };

/// The pieces of one side. `all` includes the king.
struct SIDE_PIECES {
    Bitboard pawns, knights, bishops, rooks, queens, all;
    std::int32_t king_square;
    std::int32_t minor_points;  ///< 3 for each knight or bishop
    std::int32_t heavy_points;  ///< 1 for each rook, 2 for each queen

    bool operator==(const SIDE_PIECES&) const = default;
};

/// What a move changes and an undo restores by stepping back.
struct PLY_FRAME {
    std::int16_t material_balance;    ///< centipawns, side to move minus opponent
    std::uint16_t fifty_counter;      ///< plies since the last capture or pawn move
    std::uint16_t en_passant_square;  ///< the square jumped over, 0 if none
    std::uint8_t castling;
    std::uint8_t in_check;   ///< 1 if the side to move is in check
    std::uint64_t pawn_key;  ///< XOR of zobrist_piece of all pawns

    bool operator==(const PLY_FRAME&) const = default;
};

/// The deepest ply that a search may reach, and the keys that repetitions are looked for in.
inline constexpr std::uint32_t max_frames = 80;
inline constexpr std::uint32_t max_keys = 180;  // 100 plies of the fifty-move window + max_frames

inline constexpr std::uint64_t side_key = 0x81DCF975A1CF4147;

/// The one position representation: a flat, copyable record. A move is undone without copying, since what can't be
/// computed back stands in `frames`; the current position is frame `ply`, its key is key_history[ply].
///
/// Invariants: occupied = white.all | black.all; squares, bitboards and the three rotated occupancies agree.
/// MakeMove and UnmakeMove assume correct input; SetPosition, ChangeSide and IsValid report a bad position.
struct BOARD {
    std::uint32_t ply;
    std::uint32_t side_to_move;   ///< a Colour
    std::int32_t total_material;  ///< material units of both sides
    Bitboard occupied;
    Bitboard occupied_a1h8;  ///< occupied permuted by ROTATE_DIAG_A1H8, and so on
    Bitboard occupied_file;
    Bitboard occupied_a8h1;
    SIDE_PIECES sides[2];  ///< White, then Black
    std::int8_t squares[64];
    std::uint64_t* key_history;  ///< points into key_store
    PLY_FRAME frames[max_frames];
    std::uint64_t key_store[max_keys];

    /// An empty board, which is no valid position.
    BOARD();
    /// A copy's key_history points into its own key_store.
    BOARD(const BOARD& other);
    BOARD& operator=(const BOARD& other);

    [[nodiscard]] Colour mover() const { return static_cast<Colour>(side_to_move); }
    [[nodiscard]] SIDE_PIECES& side(std::uint32_t colour) { return sides[colour]; }
    [[nodiscard]] const SIDE_PIECES& side(std::uint32_t colour) const { return sides[colour]; }
    [[nodiscard]] const SIDE_PIECES& white_pieces() const { return sides[0]; }
    [[nodiscard]] const SIDE_PIECES& black_pieces() const { return sides[1]; }
    [[nodiscard]] const SIDE_PIECES& own() const { return sides[side_to_move]; }
    [[nodiscard]] const SIDE_PIECES& enemy() const { return sides[side_to_move ^ 1U]; }
    [[nodiscard]] PLY_FRAME& frame() { return frames[ply]; }
    [[nodiscard]] const PLY_FRAME& frame() const { return frames[ply]; }
    [[nodiscard]] std::uint64_t key() const { return key_history[ply]; }
    [[nodiscard]] bool in_check() const { return frame().in_check != 0; }

    // Attacks of a piece on `s`, on the present occupancy.
    [[nodiscard]] Bitboard RankAttacks(Square s) const noexcept {
        return bitboard_tables.attacks_rank[s][(occupied >> (s & 56)) & 255];
    }
    [[nodiscard]] Bitboard FileAttacks(Square s) const noexcept {
        return bitboard_tables.attacks_file[s][(occupied_file >> ((~s & 7) * 8)) & 255];
    }
    [[nodiscard]] Bitboard DiagonalA1H8Attacks(Square s) const noexcept {
        const BITBOARD_TABLES& t = bitboard_tables;
        return t.attacks_diag_a1h8[s][(occupied_a1h8 >> t.diag_shift_a1h8[s]) & t.diag_mask_a1h8[s]];
    }
    [[nodiscard]] Bitboard DiagonalA8H1Attacks(Square s) const noexcept {
        const BITBOARD_TABLES& t = bitboard_tables;
        return t.attacks_diag_a8h1[s][(occupied_a8h1 >> t.diag_shift_a8h1[s]) & t.diag_mask_a8h1[s]];
    }
    [[nodiscard]] Bitboard RookAttacks(Square s) const noexcept { return RankAttacks(s) | FileAttacks(s); }
    [[nodiscard]] Bitboard BishopAttacks(Square s) const noexcept {
        return DiagonalA1H8Attacks(s) | DiagonalA8H1Attacks(s);
    }
    [[nodiscard]] Bitboard QueenAttacks(Square s) const noexcept { return RookAttacks(s) | BishopAttacks(s); }

    /// Loads a position as ply 0. False, with nothing changed, for values out of range (side, castling, piece codes, an
    /// en passant square on the wrong rank); false with the invalid position loaded if it fails IsValid.
    bool SetPosition(const std::int8_t (&position)[64], int side, int en_passant_square, int castling);

    /// `move` must be legal. Never fails, checks nothing; takes in_check from the move's own check bits.
    void MakeMove(Move move) noexcept { MakeMove(move, HashKeyAfterMove(move)); }
    /// The same for a caller who knows HashKeyAfterMove already.
    void MakeMove(Move move, std::uint64_t key_after_move) noexcept;
    /// `move` must be the last move made.
    void UnmakeMove(Move move) noexcept;
    void MakeNullMove() noexcept;
    void UnmakeNullMove() noexcept {
        --ply;
        side_to_move ^= 1U;
    }
    /// The key after a legal move.
    [[nodiscard]] std::uint64_t HashKeyAfterMove(Move move) const noexcept;
    [[nodiscard]] std::uint64_t HashKeyAfterNullMove() const noexcept;

    /// Whether a word from another position can be played here, check bits included; says nothing about the own king.
    [[nodiscard]] bool IsMovePseudoLegal(Move move) const;

    /// The search's draw: too little material, a fifty counter above 99, or one earlier occurrence of the key.
    [[nodiscard]] bool IsDraw() const noexcept;
    [[nodiscard]] bool IsValid() const;
    /// Gives the move to the other side, as a new ply 0. False if the result is no valid position: an en passant square
    /// is kept, and makes it invalid.
    bool ChangeSide();
    /// Makes the current position ply 0, keeping the keys that a repetition may still reach.
    void ResetPly();
    /// Sets the counter of a position at ply 0, 0 <= n <= 100, and fills the history below its key with keys that
    /// match nothing.
    void SetFiftyCounter(int n);
};
