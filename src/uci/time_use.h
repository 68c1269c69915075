#pragma once

#include <cstdint>

#include "chess/bits.h"
#include "search/driver/steering.h"
#include "uci/go_command.h"

/// How much time a `go` gives to a search. Within the hard limit the search's own clock decides.
namespace VorkaUci {

/// The limits of a search for the side on move, its root moves left out. `overhead`: milliseconds that a move loses on
/// its way to the interface.
[[nodiscard]] SearchLimits LimitsFor(const GoCommand& go, Colour side, std::int64_t overhead);

}  // namespace VorkaUci
