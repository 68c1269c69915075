#pragma once

#include <istream>
#include <ostream>
#include <string>

#include "chess/user_board.h"

/// One game as text in Portable Game Notation.
///
///     [Event "?"]
///     ..
///
///     1. e4 e5 2. Nf3 *
///
///     *
///
/// Tags, moves, move numbers, comments and the result are read; variations in brackets and numeric glyphs are refused.
/// Reading stops at the end of the first game.

/// The header. A field that a file does not give keeps the value that it has here.
struct PGN_TAGS {
    std::string event = "?";
    std::string site = "?";
    std::string date = "????.??.??";
    std::string round = "-";
    std::string white = "?";
    std::string black = "?";
    std::string time_control = "?";
    std::string fen;  ///< the start position, empty for the usual one

    bool operator==(const PGN_TAGS&) const = default;
};

/// "2026.11.21"; a part that is not known (-1) as question marks.
[[nodiscard]] std::string DateToPgn(int year, int month, int day);

/// Reads the header, and leaves the stream just after it. Throws UserBoard::io_error for a tag that does not end.
void ReadPgnTags(std::istream& stream, PGN_TAGS& tags);

/// Reads a game. `board` then stands at its start, with all moves as next moves, and has the result that the text
/// gives. A failure leaves `board` as it was. Throws UserBoard::io_error for a text that is no game or ends early,
/// UserBoard::invalid_move and UserBoard::invalid_position.
void ReadPgn(UserBoard& board, std::istream& stream, PGN_TAGS& tags);

/// Writes the moves that are made, in lines of 70 characters at most, with the tags and the result of the game. A start
/// position other than the usual one gets a tag of its own, whatever `tags` says.
void WritePgn(const UserBoard& board, std::ostream& stream, const PGN_TAGS& tags);
