#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "evaluation/context/evaluation_context.h"
#include "search/node/search_node.h"
#include "search/state/node.h"
#include "search/state/search_board.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"

/// A search board at a position, with empty tables and nobody around it: polls are counted and leave the countdown at
/// `reload`.
class SearchBuilder final : private NodePoll {
  public:
    explicit SearchBuilder(std::string_view fen, Score contempt = 0) : board(std::make_unique<SearchBoard>()) {
        ClearTables();
        board->poll = this;
        board->evaluation.settings = &settings_;
        board->StartSearch(BoardFromFen(std::string(fen)), contempt);
    }

    std::unique_ptr<SearchBoard> board;
    std::uint64_t reload = 1000000000;
    int polls = 0;

    static void ClearTables() {
        transposition_table.clear();
        pawn_hash_table.clear();
        evaluation_hash_table.clear();
    }

    /// Makes a move as the tree would.
    void Make(std::string_view text) {
        const Move move = MoveOf(board->board, text);
        board->moves_played[board->board.ply + 1] = move;
        board->board.MakeMove(move);
    }

    /// What SearchNode says to `beta` in the present position.
    [[nodiscard]] Score Ask(Score beta, Distance distance, NodeType type = NodeType::principal) {
        return SearchNode(*board, board->move_buffer, beta, distance, type, board->position_class[0], root_child);
    }

    /// A node at the present position whose steps can be called one by one.
    [[nodiscard]] Node NodeAt(Score beta, Distance distance) {
        return {.search = *board,
                .ply = board->board.ply,
                .beta = beta,
                .distance = distance,
                .in_check = board->board.in_check(),
                .type = NodeType::principal,
                .parent_class = board->position_class[0],
                .position_class = board->position_class[0],
                .child_flags = root_child,
                .moves = board->move_buffer,
                .moves_end = board->move_buffer};
    }

  private:
    void Poll() override {
        ++polls;
        board->poll_countdown = reload;
    }
    EVALUATION_SETTINGS settings_;
};
