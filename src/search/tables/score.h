#pragma once

#include <cstdint>

/// The units of the search. Three words are kept apart everywhere: `ply` is a whole number of half moves from the root,
/// `distance` is the depth that is left, and `depth` is the number of the iteration.

/// Hundredths of a pawn, from the view of the side on move.
using Score = std::int32_t;
/// Remaining depth in 1/64 ply. Below 1 a node is a quiescence node; negative values are ordinary.
using Distance = std::int32_t;
inline constexpr Distance ONE_PLY = 64;

inline constexpr Score infinity_bound = 32767;
/// A node's best score before any move. If it still stands after the moves, none was searched.
inline constexpr Score best_score_start = -infinity_bound;
/// A score at or beyond +-mate_score_limit tells the distance to a mate.
inline constexpr Score mate_score_limit = 31767;
/// "No bound is known", in the place of a distance.
inline constexpr Distance no_distance = -32767;

/// The side on move is mated at this ply.
[[nodiscard]] constexpr Score MatedScore(std::uint32_t ply) { return static_cast<Score>(ply) - infinity_bound; }

/// A known value as the answer to "is it worth at least beta?": beta if so, beta - 1 if not.
[[nodiscard]] constexpr Score AsAnswer(Score value, Score beta) { return value < beta ? beta - 1 : beta; }
