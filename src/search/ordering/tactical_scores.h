#pragma once

#include <cstdint>

#include "chess/move.h"
#include "search/state/node.h"

/// Sort scores of captures, promotions and checks.

/// The sort score of a tactical move of a node that searches all its moves, from the setting for the least score to the
/// largest there is.
[[nodiscard]] std::int32_t TacticalScore(const Node& node, Move move) noexcept;

/// The sort score of a move of a quiescence node, at most the largest there is; may be negative. Draws from the noise.
[[nodiscard]] std::int32_t QuiescenceScore(const Node& node, Move move) noexcept;
