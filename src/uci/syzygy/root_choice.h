#pragma once

#include <vector>

#include "chess/move.h"

/// What the tables say of the root: which moves they leave to the search, and what those are worth.
namespace VorkaUci {

/// Half moves of the longest mate that is told as one. The wins that bitbases and tables know without their way are
/// written as mates that are further away.
inline constexpr int furthest_mate = 55;

/// A win by the tables is told as a mate after so many half moves, and those to the next step: further away than the
/// wins of the bitbases, which say more.
inline constexpr int plies_of_table_win = 300;

/// How a position ends, from the worst to the best; the numbers are those of the library.
enum class TableResult {
    loss = 0,
    loss_drawn_by_fifty_moves = 1,
    draw = 2,
    win_drawn_by_fifty_moves = 3,
    win = 4,
};

/// What the tables say of a move, from the view of the side that plays it.
struct TableMove {
    Move move;
    TableResult result;
    int distance;  ///< half moves to the next capture, pawn move or mate
};

/// The moves that keep the best result; of those that win the shortest ways, of those that lose the longest.
[[nodiscard]] std::vector<Move> BestTableMoves(const std::vector<TableMove>& moves);
/// What the tables say of `move`; null if they say nothing.
[[nodiscard]] const TableMove* FindTableMove(const std::vector<TableMove>& moves, Move move);
/// The score that is told for a move whose result is known. `score` is what the search has found: a mate stays. Wins
/// are further away than the search goes, the nearer to the next capture, pawn move or mate the better.
[[nodiscard]] int KnownScore(const TableMove& known, int score, int draw_score);

}  // namespace VorkaUci
