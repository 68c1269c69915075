#pragma once

#include "search/driver/root_search.h"

/// The root of the classic search: moves stay in the order in which they were best, each is asked at its full distance.
class ClassicRootSearch final : public RootSearch {
  public:
    void NewSearch() override {}
    void OrderMoves(std::span<RootMoveRecord> /*moves*/, std::size_t /*lines*/, int /*depth*/) const override {}
    [[nodiscard]] Distance Reduction(int /*place*/, int /*depth*/) const override { return 0; }
    [[nodiscard]] Score FindScore(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                  const BoundQuestion& ask) const override {
        return BoundSearch(task, clock, fail_state, ask);
    }
    void NoteEffort(std::span<const RootMoveRecord> /*moves*/, SearchClock& /*clock*/) const override {}
    [[nodiscard]] bool IsEnoughForOnlyMove(int /*depth*/) const override { return false; }

  private:
    [[nodiscard]] Score AskBelow(SearchBoard& search, const RootQuestion& question) override;
};
