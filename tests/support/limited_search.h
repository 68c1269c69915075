#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "search/driver/classic_root_search.h"
#include "search/driver/tournament_root_search.h"
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
    /// The tournament search, which reads some of both settings.
    LimitedSearch(std::string_view fen, std::uint64_t most_nodes, const SearchSettings& settings,
                  const TournamentSettings& rules)
        : LimitedSearch(fen, most_nodes, settings) {
        tournament_ = std::make_unique<TournamentRootSearch>(rules);
        tournament_->NewSearch();
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

    /// What no search may do: answers that are neither bound (of the tournament search: that are no score), positions
    /// that a move left changed, and moves that stay excluded.
    [[nodiscard]] int faults() const { return faults_; }

  private:
    struct EnoughNodes {};

    void AskAbout(Move move, Score test, int depth, const BOARD& root) {
        RootSearch& root_search = tournament_ ? static_cast<RootSearch&>(*tournament_) : classic_;
        const Score answer = root_search.Ask(board_, move, {.test = test, .depth = depth});
        if (tournament_) {
            if (std::abs(answer) > infinity_bound) ++faults_;
            if (!std::ranges::all_of(tournament_->state().excluded, [](Move left_out) { return left_out == INVALID; }))
                ++faults_;
        } else if (answer != test && answer != test - 1) {
            ++faults_;
        }
        if (board_.board.key() != root.key()) ++faults_;
    }
    void Poll() override { throw EnoughNodes{}; }

    EVALUATION_SETTINGS evaluation_settings_;
    Engine engine_;
    SearchBoard board_{engine_};
    ClassicRootSearch classic_;
    std::unique_ptr<TournamentRootSearch> tournament_;  ///< null for the classic search
    int faults_ = 0;
};
