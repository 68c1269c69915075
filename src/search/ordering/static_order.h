#pragma once

#include <cstdint>

#include "chess/move.h"
#include "search/state/node.h"

/// Whether anything orders the moves that nothing else is known of.
[[nodiscard]] bool HasStaticOrder(const Node& node) noexcept;

/// The sort score of such a move: the squares that the piece leaves and reaches, the kind of piece, and some noise; at
/// least 0. Draws from the noise.
[[nodiscard]] std::int32_t StaticScore(const Node& node, Move move) noexcept;
