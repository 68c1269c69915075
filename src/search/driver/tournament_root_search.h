#pragma once

#include "search/driver/root_search.h"
#include "search/tournament/tournament_state.h"

/// The root of the tournament search, and what that search remembers: moves in the order of the sizes of their
/// subtrees, late ones asked less deep first, scores by aspiration, less time where the best move had most of it.
class TournamentRootSearch final : public RootSearch {
  public:
    /// `settings` must outlive it; each search begins with what they are then. Throws std::bad_alloc.
    explicit TournamentRootSearch(const TournamentSettings& settings) : settings_(settings) {}

    void NewSearch() override;
    void OrderMoves(std::span<RootMoveRecord> moves, std::size_t lines, int depth) const override;
    [[nodiscard]] Distance Reduction(int place, int depth) const override;
    [[nodiscard]] Score FindScore(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                  const BoundQuestion& ask) const override;
    void NoteEffort(std::span<const RootMoveRecord> moves, SearchClock& clock) const override;
    [[nodiscard]] bool IsEnoughForOnlyMove(int depth) const override;

    [[nodiscard]] const tournament::TournamentState& state() const { return state_; }

  private:
    [[nodiscard]] Score AskBelow(SearchBoard& search, const RootQuestion& question) override;
    [[nodiscard]] const TournamentSettings& rules() const { return state_.settings; }

    const TournamentSettings& settings_;
    tournament::TournamentState state_;
};
