#pragma once

#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/score_pair.h"

/// The numbers of a rule.
struct RULE_VALUES {
    SCORE_PAIR pair;   ///< centipawns
    int pressure = 0;  ///< points that it adds to the own counters of one wing
    int cover = 0;
};

/// Adds the points of a rule on its wing and gives its pair.
template <Colour Us>
inline SCORE_PAIR count_on(Wing wing, EVALUATION_CONTEXT& context, const RULE_VALUES& values) noexcept {
    if (values.pressure != 0) add_points(context.pressure[Us][wing], values.pressure);
    if (values.cover != 0) add_points(context.cover[Us][wing], values.cover);
    return values.pair;
}

/// Points of the activity, which is counted White minus Black.
template <Colour Us>
inline void add_activity(EVALUATION_CONTEXT& context, int points) noexcept {
    add_points(context.activity, Us == white ? points : -points);
}
