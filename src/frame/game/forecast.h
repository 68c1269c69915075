#pragma once

#include "chess/move.h"

/// What the engine expects as the next move on the board, which is also what `hint` answers.
class Forecast {
  public:
    enum class State {
        none,            ///< nobody has looked yet
        hint_pending,    ///< `hint` has asked for a search, which has not ended yet
        no_move_exists,  ///< a search has found no legal move
        move,            ///< move() is expected
    };

    constexpr Forecast() = default;
    [[nodiscard]] static constexpr Forecast HintPending() { return Forecast(State::hint_pending, INVALID); }
    [[nodiscard]] static constexpr Forecast NoMoveExists() { return Forecast(State::no_move_exists, INVALID); }
    /// The best move of a search; INVALID says that there is none.
    [[nodiscard]] static constexpr Forecast Of(Move move) {
        const Move word = move & move_bits;
        return word == INVALID ? NoMoveExists() : Forecast(State::move, word);
    }

    [[nodiscard]] constexpr State state() const { return state_; }
    /// INVALID in every other state than `move`.
    [[nodiscard]] constexpr Move move() const { return move_; }
    /// Whether just this move is expected.
    [[nodiscard]] constexpr bool Is(Move move) const { return state_ == State::move && move_ == (move & move_bits); }

    bool operator==(const Forecast&) const = default;

  private:
    constexpr Forecast(State state, Move move) : state_(state), move_(move) {}

    State state_ = State::none;
    Move move_ = INVALID;
};
