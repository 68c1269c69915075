#pragma once

#include <cstdint>

#include "chess/move.h"
#include "search/ordering/order_tables.h"
#include "search/state/node.h"

/// The order of the moves of a node that nothing else is known of: by the squares that the piece leaves and reaches,
/// the kind of piece, and some noise.
class StaticMoveOrder {
  public:
    explicit StaticMoveOrder(const Node& node) noexcept;

    /// Whether anything orders these moves.
    [[nodiscard]] bool Exists() const noexcept { return noise_width_ != 0 || from_square_ || to_square_ || piece_; }
    /// The sort score of a move, at least 0. Draws from the noise.
    [[nodiscard]] std::int32_t ScoreOf(Move move) const noexcept;

  private:
    const OrderTables& tables_;
    OrderingNoise& noise_;
    const unsigned turn_;  ///< turns a square to the mover's view
    // The settings, which a walk over many moves reads over and over.
    const std::int32_t noise_width_;
    const bool from_square_;
    const bool to_square_;
    const bool piece_;
};
