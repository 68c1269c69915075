#pragma once

#include "evaluation/context/evaluation_context.h"
#include "evaluation/context/rule_values.h"
#include "evaluation/context/score_pair.h"

/// Counting for the terms that the pawn hash table keeps: their points go to counters of their own.

/// Adds the points of a rule on its wing and gives its pair.
template <Colour Us>
inline SCORE_PAIR count_of_pawns_on(Wing wing, EVALUATION_CONTEXT& context, const RULE_VALUES& values) noexcept {
    if (values.pressure != 0) add_points(context.pawn_pressure[Us][wing], values.pressure);
    if (values.cover != 0) add_points(context.pawn_cover[Us][wing], values.cover);
    return values.pair;
}

/// What a rule does to the cover of the enemy.
template <Colour Us>
inline void add_enemy_cover_of_pawns(Wing wing, EVALUATION_CONTEXT& context, int points) noexcept {
    add_points(context.pawn_cover[Opponent(Us)][wing], points);
}
