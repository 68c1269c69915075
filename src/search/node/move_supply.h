#pragma once

#include "search/ordering/move_ordering.h"
#include "search/state/node.h"

/// The moves of a node in the order in which they are tried: the hash move, then the list, which is generated and
/// sorted no earlier than it is needed.
class MoveSupply {
  public:
    explicit MoveSupply(Node& node) : node_(node), state_(node.hash_move != INVALID ? State::hash_move : State::list) {}

    /// Sets `move` to the next move, INVALID after the last one. A result ends the node instead.
    [[nodiscard]] NodeAnswer Next(Move& move);

  private:
    /// What is done for the next move.
    enum class State { hash_move, list, sort, pick, none };

    [[nodiscard]] Move TakeHashMove();
    [[nodiscard]] NodeAnswer List(Move& move);
    void Sort();
    [[nodiscard]] Move Pick();

    Node& node_;
    State state_;
    MoveSortState sorter_;
    MoveBatch batch_{};
};
