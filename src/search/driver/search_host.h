#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "chess/move.h"
#include "frame/base/wall_clock.h"
#include "search/state/search_statistics.h"

/// How often a hash table was asked in a search, and how often it knew.
struct TableUse {
    std::uint64_t probes = 0;
    std::uint64_t hits = 0;
};

/// What a search tells about itself; the counters are those of the last poll or iteration.
struct SearchInfo {
    bool valid = false;       ///< a root move is being searched
    int root_moves = 0;       ///< number of root moves
    int moves_to_search = 0;  ///< root moves of this iteration not finished yet, the one being searched included
    std::int16_t depth = 0;   ///< number of the iteration
    int line = 0;             ///< which of several lines the score and the variation are of; 0: the best one
    int selective_depth = 0;  ///< half moves of the longest line that the iteration has looked at
    std::uint64_t nodes = 0;
    std::string root_move_text;  ///< the root move in work
    std::vector<std::pair<Move, std::string>> principal_variation;
    /// The first moves of the variation, which the score rests on; the others only stood in the table.
    std::size_t known_moves = 0;
    int score = 0;  ///< centipawns for the side on move at the root
    Timestamp start;
    Timestamp end;  ///< valid once the search has ended
    std::uint64_t ettc_tries = 0;
    std::uint64_t ettc_cutoffs = 0;
    SearchStatistics statistics;
    // Set once the search has ended.
    TableUse transposition_table, pawn_hash_table, evaluation_hash_table;

    /// Milliseconds from the start to the end, or to now while the search runs.
    [[nodiscard]] std::int64_t Milliseconds() const {
        return ElapsedMilliseconds(start, end.valid ? end : Timestamp::Now());
    }
};

/// What an answer to a question of the root says about a score.
enum class ScoreBound { at_least, at_most };

/// What the search asks of the world. It runs on the caller's stack, with no thread beside it: pollInput runs commands
/// that have arrived, and one that can't run beside a search leaves it as an exception of steering.h.
class SearchHost {
  public:
    virtual ~SearchHost() = default;
    virtual void pollInput() = 0;
    virtual void sendThinking(const SearchInfo& info) = 0;
    virtual void sendDepthStarted(int depth) = 0;
    virtual void sendNewPvMove(const std::string& move) = 0;
    virtual void sendSearchInstability() = 0;
    /// A root move begins to be searched: the one that info.root_move_text names.
    virtual void sendCurrentMove(const SearchInfo& /*info*/, Move /*move*/) {}
    /// One question about the score of a root move is answered. `line` begins with that move and holds what the answer
    /// rests on; it may end in a move that can't be played.
    virtual void sendBound(const SearchInfo& /*info*/, int /*score*/, ScoreBound /*bound*/,
                           std::span<const Move> /*line*/) {}
    virtual void sendSearchStatistics(const SearchInfo& info) = 0;
    /// The very last call of a search; may throw a request for the next one.
    virtual void onSearchFinished(bool discard) = 0;
};
