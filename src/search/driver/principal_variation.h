#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "chess/board.h"
#include "search/state/search_board.h"
#include "search/tables/hash.h"

/// A root move with the line that the search expects after it.
struct RootMoveRecord {
    Move move = INVALID;
    std::string text;          ///< in standard notation
    std::uint64_t nodes = 0;   ///< of its subtree, those of earlier iterations counting less
    std::vector<Move> line{};  ///< begins with `move`, once it has been searched
    std::size_t known = 0;     ///< the first moves of the line, which the last question rests on; the others only stood
                               ///< in the table
};

/// What is asked of a root move: whether it is worth at least `test`, in the iteration `depth`.
struct RootQuestion {
    Score test = 0;
    int depth = 1;
    Distance reduction = 0;                   ///< asked so much less deep
    NodeType expected = NodeType::principal;  ///< of the position after the move
};

/// Puts the positions of the record's line into the table, those after the first move that have no entry
/// yet, so that the next question begins with the moves of the line. `root_class` is the class of `root`.
void WriteLineToHash(const BOARD& root, const RootMoveRecord& record, int root_class, TRANSPOSITION_TABLE& table);

/// Takes the line that the last question has left in pv[0] of `search` (which stands at the root), and goes on with the
/// moves that the transposition table knows, up to a draw by rule or a position of which it knows none. The moves count
/// as known as long as the entry they come from answers the question, at no less than the depth that the iteration has
/// left there.
void ReadLineBack(const SearchBoard& search, const RootQuestion& question, RootMoveRecord& record);

/// A line as moves with their text. Ends before a move that can't be played, and says so in the log.
[[nodiscard]] std::vector<std::pair<Move, std::string>> RenderLine(const BOARD& root, const std::vector<Move>& line);
