#pragma once

#include <cstdint>

#include "chess/board.h"
#include "chess/move.h"
#include "chess/move_generator.h"
#include "evaluation/context/evaluation_context.h"
#include "search/engine/engine.h"
#include "search/state/history.h"
#include "search/state/node_poll.h"
#include "search/state/ordering_noise.h"
#include "search/state/pin_record.h"
#include "search/state/search_statistics.h"
#include "search/tables/score.h"

/// A run of queen checks against one side.
struct CheckRunRecord {
    std::int16_t length = 0;
    std::int16_t threat = 0;  ///< 1 if the run threatens perpetual check
    std::int16_t king_square = 0;
    std::int16_t material_balance = 0;
    Bitboard own_ring = 0;  ///< own pieces next to the king
};

/// The last moves that cut at a ply, the latest first.
struct KillerPair {
    Move first = INVALID;
    Move second = INVALID;

    void Take(Move move) noexcept {
        if (move == first) return;
        second = first;
        first = move;
    }
};

/// A node at this ply answers at once that it is below the bound, so max_frames slots are enough for every stack.
inline constexpr std::uint32_t last_ply = 78;

/// Nodes to the first poll of a search.
inline constexpr std::uint64_t first_poll_countdown = 100;

/// The position under search with the stacks of its plies (the index is the ply). A search works on this private record
/// alone: an exception that unwinds the tree may leave it in any state, and StartSearch sets it up again.
struct SearchBoard {
    /// `its_engine` must outlive the board.
    explicit SearchBoard(Engine& its_engine) : engine(its_engine) {
        evaluation.tables = &engine.tables;
        evaluation.bitbases = &engine.bitbases;
    }

    Engine& engine;
    BOARD board;
    SearchSettings settings;  ///< a copy of the engine's: one plain load for a node

    Move moves_played[max_frames] = {};            ///< the move that led to each ply; INVALID marks a null move
    Move pv[max_frames][max_frames] = {};          ///< row `ply` is the line from that ply, ended by INVALID
    KillerPair killers[max_frames];                ///< kept from search to search
    std::int32_t position_class[max_frames] = {};  ///< of the line so far, as the position-type extension has noted it
    PinRecord pins[max_frames];
    CheckRunRecord check_runs[max_frames];
    HistoryTable history;

    OrderingNoise noise;

    EVALUATION_CONTEXT evaluation;
    Score draw_score[2] = {};    ///< worth of a draw, by side on move
    int iteration_depth = 1;     ///< number of the iteration at work
    int deepening_searches = 0;  ///< internal deepening searches that are on the stack

    // Local counters; the search collects them at every poll.
    std::uint64_t nodes = 0;
    std::uint64_t ettc_tries = 0;
    std::uint64_t ettc_cutoffs = 0;
    SearchStatistics statistics;  ///< of the whole search

    std::uint64_t poll_countdown = first_poll_countdown;
    NodePoll* poll = nullptr;  ///< not owned; must be set before a search

    Move move_buffer[max_frames * MAX_MOVES + move_list_room] = {};  ///< the move lists of a line, one after the other

    /// Sets everything up for a search from `position` (at ply 0). `contempt` is the worth of a draw for the side on
    /// move there.
    void StartSearch(const BOARD& position, Score contempt);

    /// The deepest ply that a move has led to since ForgetMovesPlayed. A null move alone does not count.
    [[nodiscard]] int DeepestPly() const noexcept;
    /// To be called at the root, where no move of the tree is on the board.
    void ForgetMovesPlayed() noexcept;
};
