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

/// The longest mate that a byte holds, in plies: losses may be no longer than the win before them.
inline constexpr int most_plies = 2 * VorkaTablebases::longest_win - 1;

/// Whether the pass that looks for mates of so many plies may find any. Two passes in a row that settled nothing are
/// the end, unless captures or promotions lead to longer mates. The pass after the longest mate that a byte holds is
/// the last in any case: it only tells whether there is a longer one.
[[nodiscard]] constexpr bool NeedsPass(int plies, int idle_passes, int longest_conversion) {
    return plies <= most_plies + 1 && (idle_passes < 2 || plies <= longest_conversion + 1);
}

/// Computes a table from the rules of chess. Every table that a capture or a promotion leads to must be there.
/// `threads` work on it. Throws std::overflow_error if a mate is too long for a byte.
/// `report` is called often, by the thread that calls.
[[nodiscard]] std::unique_ptr<SolvedTable> Solve(const Material& material, const SolvedTables& known, int threads,
                                                 const SolveReport& report = {});

/// Bytes of memory that the program takes at most to solve and write a material by so many threads, tables that must be
/// there included.
[[nodiscard]] std::uint64_t MemoryToSolve(const Material& material, int threads);

}  // namespace table_builder
