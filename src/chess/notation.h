#pragma once

#include <string>
#include <string_view>

#include "chess/board.h"

/// Why a text is no move here. UserBoard::invalid_move carries the value.
enum class MoveParseError : int { ambiguous = 0, no_correspondence = 1, invalid_castling = 2, syntax = 3 };
/// "ambiguous move" and so on.
[[nodiscard]] std::string_view MoveParseErrorText(MoveParseError error);

[[nodiscard]] bool IsFileChar(char c);  ///< either case
[[nodiscard]] bool IsRankChar(char c);
[[nodiscard]] char FileChar(int file);
[[nodiscard]] char RankChar(int rank);
[[nodiscard]] Square SquareFromChars(char file, char rank);
[[nodiscard]] std::string SquareToString(Square square);

/// Letters by piece type (blank for none), and by signed piece code + 6.
inline constexpr std::string_view piece_letters = " PNBRQK";
inline constexpr std::string_view signed_piece_letters = "kqrbnp?PNBRQK";

/// Reads coordinate notation, castling and standard algebraic notation by filtering the legal moves. Only the first 16
/// characters count, and a zero among them ends the text. INVALID with `error` set if no one legal move fits; an empty
/// text is no move, and the empty board has no legal moves.
[[nodiscard]] Move ParseMove(std::string_view text, const BOARD& board, MoveParseError& error);

/// "e2e4"; a promotion adds its letter unless it is to a queen.
[[nodiscard]] std::string MoveToCoordinate(Move move);
/// "Ng1-f3", with a pawn's letter. Castling that mates reads "O-O+", here and in SAN: docs/oddities.md, castling that
/// mates. `move` is legal in `board`.
[[nodiscard]] std::string MoveToLongAlgebraic(const BOARD& board, Move move);
/// "Nf3". `move` is legal in `board`.
[[nodiscard]] std::string MoveToSan(const BOARD& board, Move move);
