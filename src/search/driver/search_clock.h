#pragma once

#include <cstdint>
#include <vector>

#include "search/tables/score.h"

/// Where the bounds of a running bisection stand against the guess that it began with.
enum class FailState { none = 0, low = 1, high = 2 };

/// `high` or `low` if the score is out of the guess's neighbourhood: an eighth of it plus 25 centipawns.
[[nodiscard]] FailState ClassifyAgainst(Score score, Score guess) noexcept;
/// The same for a score of which only bounds are known.
[[nodiscard]] FailState ClassifyBounds(Score lower, Score upper, Score guess) noexcept;

/// Where in an iteration the search asks whether it should stop.
enum class SearchMoment { first_root_move = 0, later_root_move = 1, iteration_complete = 2 };

/// What the limits mean for the first iteration: nothing, so that it is always whole; or the hard one holds there too,
/// but for the few milliseconds in which most positions get their first move.
enum class FirstIteration { is_whole, has_hard_limit };

/// Decides whether a running search should stop. The variable limit is stretched and shrunk by what the search goes
/// through: a falling score, an unstable root, a quiet run of iterations. All times are milliseconds.
class SearchClock {
  public:
    /// Begins a search. 0 means no limit.
    void Reset(std::int64_t hard_limit, std::int64_t variable_limit,
               FirstIteration first_iteration = FirstIteration::is_whole);
    void NewIteration();
    /// The score of the iteration, first known or risen.
    void SetIterationScore(Score score) noexcept;
    /// The bounds between which the running bisection has enclosed the score.
    void SetBounds(Score lower, Score upper) noexcept;
    /// The running bisection has left the neighbourhood of its guess; `none` changes nothing.
    void NoteFail(FailState state) noexcept;
    /// A root move seems to beat the best one.
    void NoteCandidate() noexcept { candidate_ = true; }
    /// A candidate failed on confirmation.
    void NoteInstability() noexcept { unstable_ = true; }
    /// How much of the limit the search wants to use up after an iteration, besides what is noted here: 1 is all of it.
    void SetWant(double factor) noexcept { want_ = factor; }

    /// `fail_state` is that of the running bisection for the first root move, otherwise `none`.
    [[nodiscard]] bool ShouldStop(std::int64_t elapsed, SearchMoment moment, FailState fail_state) const noexcept;

  private:
    struct IterationRecord {
        FailState fail_state;
        bool candidate;
    };

    [[nodiscard]] bool EndsFirstIteration(std::int64_t elapsed) const noexcept;
    [[nodiscard]] double FirstRootMoveFactor(FailState fail_state) const noexcept;
    [[nodiscard]] double LaterRootMoveFactor() const noexcept;
    [[nodiscard]] bool IsUnsettled() const noexcept;
    [[nodiscard]] bool IsQuiet() const noexcept;

    static constexpr Score unknown = 32867;

    std::int64_t hard_limit_ = 0;
    std::int64_t variable_limit_ = 0;
    FirstIteration first_iteration_ = FirstIteration::is_whole;
    Score previous_score_ = 0;
    Score current_score_ = unknown;
    double want_ = 1;
    std::int32_t iteration_ = 0;
    bool fail_low_ = false;
    bool fail_high_ = false;
    bool unstable_ = false;
    bool candidate_ = false;
    std::vector<IterationRecord> records_;
    Score lower_ = -infinity_bound;
    Score upper_ = infinity_bound;
};
