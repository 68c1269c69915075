#pragma once

#include <vector>

#include "chess/move.h"

/// Which root moves the tables leave to the search.
namespace VorkaUci {

/// What the tables say of a move, from the view of the side that plays it: from a loss (0) over a draw (2) to a win
/// (4), 1 and 3 being a loss and a win that the fifty moves make a draw; and the half moves to the next capture, pawn
/// move or mate.
struct TableMove {
    Move move;
    int result;
    int distance;
};

/// The moves that keep the best result; of those that win the shortest ways, of those that lose the longest.
[[nodiscard]] std::vector<Move> BestTableMoves(const std::vector<TableMove>& moves);

}  // namespace VorkaUci
