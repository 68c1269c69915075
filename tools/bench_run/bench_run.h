#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "search/driver/search_host.h"

/// What `bench` found out: kept in a file, read back, and set beside another run.

/// One position, or the sum of several.
struct BenchRow {
    std::string fen;
    std::uint64_t nodes = 0;
    std::uint64_t microseconds = 0;
    std::uint64_t depth = 0;                  ///< iterations that were completed
    std::uint64_t microseconds_to_depth = 0;  ///< until the last of them was
    SearchStatistics statistics;
    TableUse transposition, scores, pawns;

    /// Adds all numbers of another position.
    BenchRow& operator+=(const BenchRow& other);
};

/// Nodes a second; 0 where no time has passed.
[[nodiscard]] double Speed(const BenchRow& row);

/// The file of a run: a line with the names of the columns, then one line for each position, its FEN last.
[[nodiscard]] std::string FileText(const std::vector<BenchRow>& run);
/// Throws std::runtime_error, with the number of the line, for a text that is no such file.
[[nodiscard]] std::vector<BenchRow> ReadFileText(const std::string& text);

/// The head of the table of positions, without what follows the columns.
[[nodiscard]] std::string TableHead();
/// The numbers of one position below it.
[[nodiscard]] std::string TableRow(const BenchRow& row);
/// What the search did in all positions together, a line for each kind of number.
[[nodiscard]] std::string TotalsText(const BenchRow& total);

/// How this run stands to one that was kept: ratios above 1 mean more nodes, more time, more nodes a second in this
/// one. With `each`, a line for each position too. Throws std::runtime_error if the positions are not the same.
[[nodiscard]] std::string ComparisonText(const std::vector<BenchRow>& run, const std::vector<BenchRow>& kept,
                                         bool each);
/// Throws std::runtime_error if a kept run is not of these positions.
void RequireSamePositions(const std::vector<BenchRow>& run, const std::vector<std::string_view>& positions);
