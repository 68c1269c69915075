#pragma once

#include <cstdint>

/// What the nodes of a search did, counted for those who judge a change; nothing in the search reads it. What the
/// tables were asked they count themselves.
struct SearchStatistics {
    std::uint64_t quiescence_nodes = 0;  ///< entered with no distance left and out of check
    std::uint64_t cuts = 0;              ///< by a move that was searched
    std::uint64_t first_move_cuts = 0;   ///< by the first move that was searched
    std::uint64_t extended_moves = 0;    ///< searched deeper than the node's distance says
    std::uint64_t reduced_moves = 0;     ///< late ones, searched less deep
    std::uint64_t verifications = 0;     ///< reduced searches that reached beta and were repeated
    std::uint64_t endings_known = 0;     ///< positions that bitbases or tablebases have answered

    friend bool operator==(const SearchStatistics&, const SearchStatistics&) = default;
};
