#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bitbase_builder/table.h"

namespace bitbase_builder {

/// The men of a table, but for the kings.
using Men = std::vector<Man>;

/// Everything that king and pawn against king and pawn leads to, and that ending itself, in the order in which the
/// tables have to be solved.
[[nodiscard]] std::vector<Men> tables_of_two_pawns();
/// The endings with a blocked pair, likewise; those of tables_of_two_pawns must be there.
[[nodiscard]] std::vector<Men> tables_of_rammed_pawns();

/// How long a table takes to solve, in no unit: only the share in a sum means something. From runs of all tables.
[[nodiscard]] double work_of(const Men& men) noexcept;

/// Says that a table is begun.
using TableBegun = std::function<void(const Men& men)>;
void solve(Library& library, const std::vector<Men>& tables, int threads, const TableBegun& begun);

/// The contents of the two files.
[[nodiscard]] std::vector<std::uint8_t> two_pawns_file(const Library& library);
[[nodiscard]] std::vector<std::uint8_t> rammed_pawn_file(const Library& library);

}  // namespace bitbase_builder
