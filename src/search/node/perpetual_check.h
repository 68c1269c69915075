#pragma once

#include "search/state/node.h"

/// Counts the queen checks in a row against the side on move, which is in check, and marks a threatening perpetual
/// check.
void PerpetualCheckTest(Node& node);
