#include "search/move_ordering.h"

#include <algorithm>

namespace {

void TakeOutHashMove(Node& node) {
    Move* const found = std::find(node.moves, node.moves_end, node.hash_move);
    if (found != node.moves_end) std::iter_swap(found, --node.moves_end);
}

}  // namespace

MoveBatch StagedMoveSorter(MoveSortState&, Node& node) {
    TakeOutHashMove(node);
    return {.begin = node.moves, .end = node.moves_end, .is_ordered = true, .is_last = true};
}

MoveBatch SortQuiescence(Node& node) {
    TakeOutHashMove(node);
    return {.begin = node.moves, .end = node.moves_end, .is_ordered = true, .is_last = true};
}
