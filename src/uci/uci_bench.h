#pragma once

#include "search/engine/engine.h"

/// `vorka-uci bench`: the signature of the search, in the words that frameworks for testing engines look for.
namespace VorkaUci {

/// Searches the positions of the bench to a depth and prints, last of all, the nodes and the nodes a second. False if
/// there is no memory for the tables. Leaves them resized, and full.
[[nodiscard]] bool RunBench(Engine& engine, int depth);

}  // namespace VorkaUci
