#pragma once

#include <array>
#include <optional>

#include "search/state/node.h"

/// Quiescence is no search of its own: below distance 1 a node that is not in check may stand pat, generates a
/// selection of its moves, and runs each of them through a filter.

/// A capture is hopeless if it leaves the side on move this far below beta; by position type, in centipawns.
// clang-format off
inline constexpr std::array<Score, 18> hopeless_margin{
    285, 275,                      // opening, middle game
    300, 300, 300,                 // balanced, rooks, queens
    400, 400, 400, 400, 400,       // minor pieces, rook against minor
    500, 600, 600, 600, 1000,      // queen against rook, lone pieces
    3000, 5000, 700,               // pawns, pawnless, unbalanced
};
// clang-format on

/// Whether the side on move, not in check, is good enough without a move. A score below beta is no floor for the moves.
[[nodiscard]] std::optional<Score> StandPat(Node& node);

/// The kinds of moves that a quiescence node generates (a GenerationMode mask).
[[nodiscard]] unsigned QuiescenceMode(const Node& node);

/// Whether a generated move is worth searching in quiescence. The side on move is not in check.
[[nodiscard]] bool PassesQuiescenceFilter(const Node& node, Move move);
