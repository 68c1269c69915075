#pragma once

#include <limits>

#include "search/tables/score.h"

/// What a step that may end its node gives: the node's score, or `go_on`. It is one word, which comes back in a
/// register. A std::optional is put together in memory from its parts and read back as a whole, and waits for them each
/// time.
class NodeAnswer {
  public:
    constexpr NodeAnswer() = default;
    constexpr NodeAnswer(Score score) : score_(score) {}  // NOLINT(google-explicit-constructor): a score is an answer

    constexpr explicit operator bool() const { return score_ != nothing; }
    /// Only if there is one.
    constexpr Score operator*() const { return score_; }

    friend constexpr bool operator==(NodeAnswer, NodeAnswer) = default;

  private:
    static constexpr Score nothing = std::numeric_limits<Score>::min();
    Score score_ = nothing;
};

/// The node is not at its end yet.
inline constexpr NodeAnswer go_on;
