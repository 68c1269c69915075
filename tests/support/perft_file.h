#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "chess/board.h"

/// One line of tests/data/perft.txt: `counts[d - 1]` ways lead from the position through d half moves.
struct PerftRow {
    std::string id, fen, source;
    std::vector<std::uint64_t> counts;

    friend std::ostream& operator<<(std::ostream& out, const PerftRow& row) { return out << row.id; }
};

/// Throws std::runtime_error, naming file and line, for a file that can't be read or a line that is no row.
[[nodiscard]] std::vector<PerftRow> ReadPerftFile(const std::string& path);

/// Counts the ways through `depth` half moves, at least 1. The leaves are taken from the length of the last list.
[[nodiscard]] std::uint64_t PerftByLists(BOARD& board, int depth);
/// The same with every leaf made and unmade.
[[nodiscard]] std::uint64_t PerftByMoves(BOARD& board, int depth);
/// "e2e4: 20" for every legal move: what the ways begin with.
[[nodiscard]] std::string PerftByFirstMove(BOARD& board, int depth);
