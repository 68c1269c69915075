#pragma once

#include <array>

#include "search/tables/score.h"

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
