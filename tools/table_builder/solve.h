#pragma once

#include <cstdint>
#include <memory>

#include "table_builder/solved_tables.h"

namespace table_builder {

/// Computes a table from the rules of chess. Every table that a capture or a promotion leads to must be there.
/// `threads` work on it. Throws std::overflow_error if a mate is too long for a byte.
[[nodiscard]] std::unique_ptr<SolvedTable> Solve(const Material& material, const SolvedTables& known, int threads);

/// Bytes of memory that Solve takes for a material, tables that must be there included.
[[nodiscard]] std::uint64_t MemoryToSolve(const Material& material);

}  // namespace table_builder
