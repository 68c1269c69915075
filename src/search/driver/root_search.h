#pragma once

#include <cstddef>
#include <span>

#include "search/driver/bound_search.h"
#include "search/driver/principal_variation.h"
#include "search/driver/search_clock.h"
#include "search/state/search_board.h"
#include "search/tables/score.h"

/// What the classic and the tournament search do at the root, each in its own way. The controller calls it between
/// questions and iterations; nothing below the root is virtual.
class RootSearch {
  public:
    RootSearch() = default;
    virtual ~RootSearch() = default;
    RootSearch(const RootSearch&) = delete;
    RootSearch& operator=(const RootSearch&) = delete;

    /// A search begins.
    virtual void NewSearch() = 0;
    /// The iteration `depth` begins: may bring the moves after the first `lines` into another order.
    virtual void OrderMoves(std::span<RootMoveRecord> moves, std::size_t lines, int depth) const = 0;
    /// How much less deep the move at `place` (0: the best one) is asked first.
    [[nodiscard]] virtual Distance Reduction(int place, int depth) const = 0;
    /// The score of a root move, by questions as `ask` takes them. Throws what a poll throws.
    [[nodiscard]] virtual Score FindScore(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                          const BoundQuestion& ask) const = 0;
    /// An iteration is complete: may tell `clock` how much time the search wants. The best move is in front.
    virtual void NoteEffort(std::span<const RootMoveRecord> moves, SearchClock& clock) const = 0;
    /// Whether an only move needs no more than these iterations in a game.
    [[nodiscard]] virtual bool IsEnoughForOnlyMove(int depth) const = 0;

    /// The answer to a question about a root move; leaves the line in pv[0]. Throws what a poll throws.
    [[nodiscard]] Score Ask(SearchBoard& search, Move move, const RootQuestion& question);

  private:
    /// The other side's answer in the position after the move.
    [[nodiscard]] virtual Score AskBelow(SearchBoard& search, const RootQuestion& question) = 0;
};

/// The distance from the position after a root move to the horizon.
[[nodiscard]] inline Distance DistanceBelow(const SearchBoard& search, const RootQuestion& question) {
    return (question.depth - 1) * search.settings.root_distance_multiplier - question.reduction;
}
