#pragma once

#include <cstdint>

#include "bitbases/bitbases.h"
#include "bitbases/tablebases.h"
#include "search/settings/search_settings.h"
#include "search/settings/tournament_settings.h"
#include "search/tables/hash.h"

inline constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;
/// What the tables get unless another size is asked for; bytes.
inline constexpr std::uint64_t usual_transposition_bytes = 32 * mebibyte;
inline constexpr std::uint64_t usual_evaluation_bytes = 4 * mebibyte;  ///< of pawns, and of scores

/// All that an engine holds besides its game: what one search leaves to the next, and what its commands set. Owned by
/// main, or by whoever else wants an engine; any number of them live side by side. Must outlive its searches.
struct Engine {
    SearchSettings settings;
    bool uses_tournament_search = false;
    TournamentSettings tournament{};
    HashTables tables{};
    VorkaBitbases::Bitbases bitbases{};
    VorkaTablebases::Tablebases tablebases{};
    /// What opens the tablebases of a directory. A program that reads tables puts its reader here.
    VorkaTablebases::SourceOpener open_tablebases = NalimovTablebases::OpenNothing;
};
