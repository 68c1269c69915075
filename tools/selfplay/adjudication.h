#pragma once

#include <cstdint>
#include <optional>

#include "chess/user_board.h"

/// Ends games that both engines agree about. Each kind is off while its `moves` are 0. Scores are centipawns.
struct AdjudicationRules {
    // One side is lost: in as many moves of its own in a row it thought so, and its opponent thought the same.
    std::int32_t resign_moves = 0;
    std::int32_t resign_score = 1000;
    // A draw: from this move of the game on (an opening's moves count if they are known), for so many moves of each
    // side in a row, no score beyond this.
    std::int32_t draw_moves = 0;
    std::int32_t draw_score = 10;
    std::int32_t draw_from_move = 40;

    bool operator==(const AdjudicationRules&) const = default;
};

/// Follows one game.
class Adjudicator {
  public:
    explicit Adjudicator(const AdjudicationRules& rules) : rules_(rules) {}

    /// The score that the mover gave to its move, and the number of that move in the game. The result if the game is to
    /// end after it.
    [[nodiscard]] std::optional<GameResult> Take(Colour mover, std::int32_t score, std::int32_t move_number);

  private:
    AdjudicationRules rules_;
    std::int32_t white_wins_run_ = 0;  ///< half moves in a row whose score says so
    std::int32_t black_wins_run_ = 0;
    std::int32_t draw_run_ = 0;
};
