#pragma once

#include "search/driver/bound_search.h"
#include "search/driver/search_clock.h"
#include "search/tables/score.h"

/// How the tournament search finds the score of a root move: as BoundSearch does, but from a little below the guess
/// upwards, by steps that grow while the answers go on in one direction. Bounds `window` apart are good enough, and so
/// long is the first step.
[[nodiscard]] Score AspirationSearch(const BoundSearchTask& task, Score window, SearchClock& clock,
                                     FailState& fail_state, const BoundQuestion& ask);
