#pragma once

#include "search/settings/search_settings.h"
#include "search/tables/hash.h"

/// All that an engine holds besides its game: what one search leaves to the next, and what its commands set. Owned by
/// main, or by whoever else wants an engine; any number of them live side by side. Must outlive its searches.
struct Engine {
    SearchSettings settings;
    HashTables tables{};
};
