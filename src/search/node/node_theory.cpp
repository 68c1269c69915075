#include "search/node/node_theory.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <vector>

#include "chess/attacks.h"
#include "evaluation/context/position_type.h"
#include "frame/base/checked_assert.h"
#include "frame/base/vocabulary.h"

namespace {

using vocabulary::no_error_description;

/// Bounds go to the infinity bound, and a little further: a candidate is asked first about ten points above the best
/// score, which may be a mate already, and the bound of a child is 1 - beta.
constexpr Score largest_bound = infinity_bound + 20;

bool IsInBuffer(const Node& node, const Move* place) {
    const auto& buffer = node.search.move_buffer;
    return std::begin(buffer) <= place && place + move_list_room <= std::end(buffer);
}

}  // namespace

void AssertNodeEntered(const Node& node) {
    const BOARD& board = node.board();
    CHECKED_ASSERT(node.ply == board.ply && node.ply < last_ply, no_error_description);
    CHECKED_ASSERT(-largest_bound <= node.beta && node.beta <= largest_bound, no_error_description);
    CHECKED_ASSERT(opening <= node.parent_class && node.parent_class < no_position_type, no_error_description);
    CHECKED_ASSERT(IsInBuffer(node, node.moves) && node.moves == node.moves_end, no_error_description);
    CHECKED_ASSERT(node.flags == NodeFlags::none && node.best_move == INVALID, no_error_description);
    const SIDE_PIECES& own = board.own();
    const SIDE_PIECES& enemy = board.enemy();
    CHECKED_ASSERT(node.in_check == IsAttackedBy(own.king_square, board, enemy), no_error_description);
    CHECKED_ASSERT(!IsAttackedBy(enemy.king_square, board, own), no_error_description);
    if (node.ply == 0) return;
    const Move last = node.last_move();
    CHECKED_ASSERT(last == INVALID || Has(enemy.all, ToSquare(last)), no_error_description);
    CHECKED_ASSERT(last != INVALID || !node.in_check, no_error_description);
    const int class_of_line = node.search.position_class[node.ply - 1];
    CHECKED_ASSERT(opening <= class_of_line && class_of_line < no_position_type, no_error_description);
}

void AssertIsAnswer(Score answer, Score bound) {
    CHECKED_ASSERT(answer == bound || answer == bound - 1, no_error_description);
}

void AssertListIsSound(const Node& node) {
    CHECKED_ASSERT(node.moves <= node.moves_end && node.moves_end - node.moves <= MAX_MOVES, no_error_description);
    CHECKED_ASSERT(IsInBuffer(node, node.moves_end), no_error_description);
    CHECKED_ASSERT(std::all_of(node.moves, node.moves_end,
                               [&](Move move) { return Has(node.board().own().all, FromSquare(move)); }),
                   no_error_description);
    if (node.board().key() % 128 != 0) return;  // the rest takes memory: few lists are looked at so closely
    std::vector<Move> sorted(node.moves, node.moves_end);
    std::sort(sorted.begin(), sorted.end());
    CHECKED_ASSERT(std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end(), no_error_description);
}
