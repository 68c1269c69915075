#pragma once

#include <string_view>

#include "search/driver/search_host.h"
#include "search/driver/steering.h"
#include "search/engine/engine.h"

/// Searches one position of the bench from cleared tables, with nothing left of the search before. Returns what the
/// search tells at its end.
[[nodiscard]] SearchInfo SearchBenchPosition(Engine& engine, std::string_view fen, const SearchLimits& limits,
                                             SearchHost& host);
