#pragma once

#include "search/state/node.h"

/// Quiescence is no search of its own: below distance 1 a node that is not in check may stand pat, generates a
/// selection of its moves, and runs each of them through a filter.

/// Whether the side on move, not in check, is good enough without a move. A score below beta is no floor for the moves.
[[nodiscard]] NodeAnswer StandPat(Node& node);

/// The kinds of moves that a quiescence node generates (a GenerationMode mask).
[[nodiscard]] unsigned QuiescenceMode(const Node& node);

/// Whether a generated move is worth searching in quiescence. The side on move is not in check.
[[nodiscard]] bool PassesQuiescenceFilter(const Node& node, Move move);
