#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

#include "chess/move_generator.h"

namespace tournament {

/// What a move gains at once, in centipawns.
[[nodiscard]] constexpr std::int32_t GainOf(Move move) {
    return piece_value[CapturedPiece(move)] + piece_value[PromotionPiece(move)];
}

inline constexpr std::int32_t score_of_centipawn = 8;
/// The score of captures and promotions: the gain counts first, then the piece that is risked for it.
[[nodiscard]] constexpr std::int32_t GainAndRisk(Move move) {
    return GainOf(move) * score_of_centipawn - MovingPiece(move);
}

/// Hands out the moves of a list, the highest score first, the earliest of equals.
class MovePicker {
  public:
    /// Takes the list from `first` to `end`, whose order changes as moves are picked, and the score of each move.
    template <typename ScoreOf>
    void Take(Move* first, Move* end, ScoreOf score_of) {
        next_ = first;
        end_ = end;
        score_ = scores_.data();
        std::transform(first, end, score_, score_of);
    }
    /// INVALID after the last.
    [[nodiscard]] Move Next() {
        if (next_ == end_) return INVALID;
        const auto best = std::max_element(score_, score_ + (end_ - next_)) - score_;
        std::iter_swap(score_, score_ + best);
        std::iter_swap(next_, next_ + best);
        ++score_;
        return *next_++;
    }

  private:
    Move* next_ = nullptr;
    Move* end_ = nullptr;
    std::int32_t* score_ = nullptr;               ///< of the next move
    std::array<std::int32_t, MAX_MOVES> scores_;  ///< filled only as far as the list goes
};

}  // namespace tournament
