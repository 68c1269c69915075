#pragma once

#include <cstdint>

#include "search/ordering/move_ordering.h"
#include "search/state/node.h"

/// The moves of a node in the order in which they are tried: the hash move, then the list, which is generated and
/// sorted no earlier than it is needed.
class MoveSupply {
  public:
    explicit MoveSupply(Node& node) : node_(node), state_(node.hash_move != INVALID ? State::hash_move : State::list) {}

    /// Sets `move` to the next move, INVALID after the last one. A result ends the node instead.
    [[nodiscard]] NodeAnswer Next(Move& move);
    /// The key after a move. The child will look itself up: its memory is asked for now, if AskAhead has not done so.
    [[nodiscard]] std::uint64_t KeyAfter(Move move) { return move == foretold_ ? foretold_key_ : Foretell(move); }
    /// Asks for the memory of the move that comes next if this one does not cut, so that it comes while the move at
    /// hand is searched.
    void AskAhead() {
        if (!batch_.is_ordered || batch_.begin == batch_.end) return;
        foretold_ = *batch_.begin & move_bits;
        foretold_key_ = Foretell(foretold_);
    }

  private:
    /// What is done for the next move.
    enum class State { hash_move, list, sort, pick, none };

    [[nodiscard]] std::uint64_t Foretell(Move move) const;
    [[nodiscard]] Move TakeHashMove();
    [[nodiscard]] NodeAnswer List(Move& move);
    void Sort();
    [[nodiscard]] Move Pick();

    Node& node_;
    State state_;
    MoveSortState sorter_;
    MoveBatch batch_{};
    Move foretold_ = INVALID;
    std::uint64_t foretold_key_ = 0;  ///< after the foretold move
};
