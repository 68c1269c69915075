#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "table_builder/solved_tables.h"

namespace table_builder {

/// How far a table is.
struct SolveState {
    int plies = 0;  ///< those of the mates that are looked for; 0 while captures and promotions are looked at before
    /// Of all positions: before the first pass those that were looked at. Then those with a mate that has been found,
    /// of those that may have one; the others are draws, so that the work may end at any share.
    double share = 0;
};
using SolveReport = std::function<void(const SolveState&)>;

/// Computes a table from the rules of chess. Every table that a capture or a promotion leads to must be there.
/// `threads` work on it. Throws std::overflow_error if a mate is too long for a byte.
/// `report` is called often, by the thread that calls.
[[nodiscard]] std::unique_ptr<SolvedTable> Solve(const Material& material, const SolvedTables& known, int threads,
                                                 const SolveReport& report = {});

/// Bytes of memory that Solve takes for a material, tables that must be there included.
[[nodiscard]] std::uint64_t MemoryToSolve(const Material& material);

}  // namespace table_builder
