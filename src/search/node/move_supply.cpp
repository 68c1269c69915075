#include "search/node/move_supply.h"

#include <algorithm>

#include "search/node/move_list.h"

NodeAnswer MoveSupply::Next(Move& move) {
    move = INVALID;
    if (state_ == State::hash_move) {
        move = TakeHashMove();
        return go_on;
    }
    if (state_ == State::list) {
        if (const auto answer = List(move)) return answer;
    }
    while (state_ == State::sort || state_ == State::pick) {
        if (state_ == State::sort) Sort();
        if (batch_.begin != batch_.end) {
            move = Pick();
            break;
        }
        state_ = batch_.is_last ? State::none : State::sort;
    }
    return go_on;
}

std::uint64_t MoveSupply::Foretell(Move move) const {
    const std::uint64_t key = node_.board().HashKeyAfterMove(move);
    node_.search.engine.tables.Prefetch(key);
    return key;
}

Move MoveSupply::TakeHashMove() {
    // If it is the only reply nothing needs to be generated.
    state_ = HasAny(node_.flags, NodeFlags::single_reply) ? State::none : State::list;
    return node_.hash_move;
}

NodeAnswer MoveSupply::List(Move& move) {
    state_ = State::sort;
    if (node_.has_move_list) return go_on;
    if (const auto answer = ListMoves(node_)) return answer;
    if (node_.is_quiescence() || node_.moves_end - node_.moves > 1) return go_on;
    state_ = State::none;
    // With extensions the only move is tried again, now that it is known to be the only one: docs/oddities.md, single
    // reply.
    if (node_.settings().enable_search_extensions || node_.hash_move == INVALID) move = *node_.moves;
    return go_on;
}

void MoveSupply::Sort() {
    batch_ = node_.is_quiescence() ? SortQuiescence(node_) : StagedMoveSorter(sorter_, node_);
    state_ = State::pick;
}

Move MoveSupply::Pick() {
    // Of equal words the first stays in front.
    if (!batch_.is_ordered) std::iter_swap(batch_.begin, std::max_element(batch_.begin, batch_.end));
    return *batch_.begin++;
}
