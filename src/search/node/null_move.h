#pragma once

#include "search/state/node.h"

/// Lets the opponent move twice, and cuts if even that is good enough for the side on move. If it is not, finds out
/// whether the opponent threatens to mate, and sets the mate threat flag.
[[nodiscard]] NodeAnswer NullMove(Node& node);
