#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bitbase_builder/table.h"

namespace bitbase_builder {

/// Says that a table is begun.
using TableBegun = std::function<void(const std::string& name)>;

/// Solves everything that king and pawn against king and pawn leads to, and that ending itself.
void solve_two_pawns(Library& library, int threads, const TableBegun& begun);
/// Solves the endings with a blocked pair; the tables of solve_two_pawns must be there.
void solve_rammed_pawns(Library& library, int threads, const TableBegun& begun);

/// The contents of the two files.
[[nodiscard]] std::vector<std::uint8_t> two_pawns_file(const Library& library);
[[nodiscard]] std::vector<std::uint8_t> rammed_pawn_file(const Library& library);

}  // namespace bitbase_builder
