#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "chess/board.h"
#include "chess/move.h"

/// Opening books in Polyglot's format: entries of 16 bytes, ordered by key, all numbers with their highest byte first.
///
/// | bytes  | what           |                                                                        |
/// |--------|----------------|------------------------------------------------------------------------|
/// | 0..7   | key            | of the position, see PolyglotKey                                       |
/// | 8..9   | move           | bits 0-2 file and 3-5 rank of the target, 6-8 and 9-11 of the origin,  |
/// |        |                | 12-14 promotion (1 knight .. 4 queen); castling takes the own rook     |
/// | 10..11 | weight         | how often the move is to be chosen; 0: never                           |
/// | 12..15 | learnt         | not used here                                                          |
namespace VorkaUci {

/// The key of a position in Polyglot's books.
[[nodiscard]] std::uint64_t PolyglotKey(const BOARD& board);

struct BookMove {
    Move move;
    std::uint16_t weight;
};

/// One book, or none.
class PolyglotBook {
  public:
    /// Takes a file into use, instead of the one before. False, with no book in use, if it can't be read or is no book:
    /// its size is no number of entries, or its keys are out of order in a sample.
    [[nodiscard]] bool Open(const std::string& path);
    void Close();
    [[nodiscard]] bool IsOpen() const { return count_ != 0; }

    /// The legal moves that the book has for a position with a weight above 0, in the order of the file.
    [[nodiscard]] std::vector<BookMove> Find(const BOARD& board);
    /// One of them by its weight: `chance` is any number, evenly spread. INVALID if there is none.
    [[nodiscard]] Move Choose(const BOARD& board, std::uint64_t chance);

  private:
    struct Entry {
        std::uint64_t key;
        std::uint16_t move;
        std::uint16_t weight;
    };
    /// Nothing can be read: an entry with the highest key, no move and no weight.
    [[nodiscard]] Entry Read(std::uint64_t index);
    [[nodiscard]] bool HasOrderedKeys();

    std::ifstream file_;
    std::uint64_t count_ = 0;  ///< entries
};

}  // namespace VorkaUci
