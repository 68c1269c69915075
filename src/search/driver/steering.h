#pragma once

#include <cstdint>
#include <vector>

#include "chess/user_board.h"

/// What a search is for, and what the engine is doing while it runs.
enum class SearchKind : std::int32_t {
    normal = 0,     ///< on the engine's own clock; its best move is played
    analyze = 1,    ///< never stops by itself
    pondering = 2,  ///< on the opponent's clock, on the predicted move; never stops by itself
    puzzle = 3,     ///< a short run for a hint or a forecast
};

/// How far a search may go. 0 means no bound everywhere.
struct SearchLimits {
    SearchKind kind = SearchKind::normal;
    std::int32_t max_depth = 0;            ///< deepest iteration
    std::int32_t max_time_limit = 0;       ///< milliseconds that may not be exceeded
    std::int32_t variable_time_limit = 0;  ///< milliseconds that the search stretches and shrinks by what it meets
    std::uint64_t max_nodes = 0;           ///< nodes of the tree, exactly; for a search that ends by itself
    std::vector<Move> root_moves{};        ///< the legal moves to choose from; empty: all
    std::int32_t lines = 1;                ///< best moves to find with their scores, each without those before it
    /// Milliseconds between two looks for input and at the clock, from the first node on, so that the hard limit holds
    /// in the first iteration too. 0: an eighth of a second, none in the first three seconds of the first iteration,
    /// and no limit of time ends that. Does not change which nodes are visited before the end.
    std::int32_t poll_interval = 0;
};

/// What a command hands to the main loop when it wants a search.
struct SearchRequest {
    SearchLimits limits;
    UserBoard position;
};

// The exceptions that steer the search. They have no common base, and nothing but their own handler catches them.

/// Ends the running search; thrown from inside a poll, caught by the search entry.
struct search_aborted_exception {
    bool discard;  ///< true: forget the search; false: stop, and play what was found
};

/// A command wants a new search; passes through a running one, caught by the main loop.
struct search_request_received_exception {
    SearchRequest request;
};

/// Ends the program; passes through a running search, caught by the main loop.
struct quit_command_received_exception {};
