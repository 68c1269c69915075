#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "search/driver/bound_search.h"
#include "search/engine/engine.h"
#include "search/state/search_board.h"
#include "support/board_builder.h"

/// A search that is thrown out of its tree after so many nodes.
class LimitedSearch final : private NodePoll {
  public:
    LimitedSearch(std::string_view fen, std::uint64_t most_nodes, const SearchSettings& settings) {
        board_.settings = settings;
        board_.poll = this;
        board_.evaluation.settings = &evaluation_settings_;
        board_.StartSearch(BoardFromFen(std::string(fen)), 0);
        board_.poll_countdown = most_nodes;
    }

    /// Asks two questions of each move, an iteration after the other. The nodes visited.
    std::uint64_t Run(int iterations) {
        const BOARD root = board_.board;
        try {
            for (int depth = 1; depth <= iterations; ++depth) {
                board_.iteration_depth = depth;
                for (const Move move : LegalMovesOf(root)) {
                    for (const Score test : {0, 400}) AskAbout(move, test, depth, root);
                }
            }
        } catch (const EnoughNodes&) {
        }
        return board_.nodes;
    }

    /// What no search may do: answers that are neither bound, and positions that a move left changed.
    [[nodiscard]] int faults() const { return faults_; }

  private:
    struct EnoughNodes {};

    void AskAbout(Move move, Score test, int depth, const BOARD& root) {
        const Score answer = RootProbe(board_, move, test, depth);
        if (answer != test && answer != test - 1) ++faults_;
        if (board_.board.key() != root.key()) ++faults_;
    }
    void Poll() override { throw EnoughNodes{}; }

    EVALUATION_SETTINGS evaluation_settings_;
    Engine engine_;
    SearchBoard board_{engine_};
    int faults_ = 0;
};
