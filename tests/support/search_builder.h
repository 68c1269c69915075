#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "evaluation/context/evaluation_context.h"
#include "search/engine/engine.h"
#include "search/node/search_node.h"
#include "search/state/node.h"
#include "search/state/search_board.h"
#include "support/board_builder.h"

/// A search board at a position, with an engine of its own and nobody around it: polls are counted and leave the
/// countdown at `reload`.
///
///     SearchBuilder search(fen, {.enable_ettc = true});
///     search.settings.min_distance_for_ettc = 0;  // holds from here on
class SearchBuilder final : private NodePoll {
  public:
    explicit SearchBuilder(std::string_view fen, Score contempt = 0) : SearchBuilder(fen, SearchSettings{}, contempt) {}
    SearchBuilder(std::string_view fen, const SearchSettings& with, Score contempt = 0) {
        settings = with;
        board->poll = this;
        board->evaluation.settings = &evaluation_settings_;
        board->StartSearch(BoardFromFen(std::string(fen)), contempt);
    }

    Engine engine;
    HashTables& tables = engine.tables;
    std::unique_ptr<SearchBoard> board = std::make_unique<SearchBoard>(engine);
    SearchSettings& settings = board->settings;
    std::uint64_t reload = 1000000000;
    int polls = 0;

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
    EVALUATION_SETTINGS evaluation_settings_;
};
