#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

#include "chess/user_board.h"

/// Where games begin.

/// A position to play from; in a PGN file's opening the moves that led there belong to the game.
struct Opening {
    UserBoard position;
};

/// Reads the openings of a file: EPD or FEN, one in a line, where lines that are blank or begin with # count for
/// nothing; or games in PGN, of which at most the first `most_plies` half moves are followed. A file whose first
/// character is a bracket is PGN. Throws std::runtime_error with the line or the game, and what is wrong: an opening
/// that can't be played on among it, and a file without any.
[[nodiscard]] std::vector<Opening> ReadOpenings(std::istream& file, std::uint32_t most_plies);

/// The same from a file by its path, which stands in front of what is wrong.
[[nodiscard]] std::vector<Opening> OpeningsOfFile(const std::string& path, std::uint32_t most_plies);

/// Puts them into the order of a seed, the same on every machine; 0 leaves them as they are.
void Shuffle(std::vector<Opening>& openings, std::uint64_t seed);

/// A number that tells one list of openings from another, in its order.
[[nodiscard]] std::uint64_t FingerprintOf(const std::vector<Opening>& openings);
