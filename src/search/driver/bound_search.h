#pragma once

#include <functional>

#include "search/driver/search_clock.h"
#include "search/tables/score.h"

/// How the score of a root move is found: by bisection over yes/no questions.

/// "Is it worth at least `test`?": gives `test` if so, `test` - 1 if not.
using BoundQuestion = std::function<Score(Score test)>;

/// What a bisection starts from.
struct BoundSearchTask {
    int depth = 1;
    Score lower = -infinity_bound;
    Score upper = infinity_bound;
    Score guess = 0;
    Score contempt = 0;  ///< worth of a draw, which is worked out to the last point
};

/// Moves a test value between the bounds until they meet or are close enough. Tells `clock` the bounds before each
/// question, and the score at the end; keeps `fail_state` up to date for those who poll during a question.
[[nodiscard]] Score BoundSearch(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                const BoundQuestion& ask);

/// Whether the answer to one question says that a move is no better than `best`.
[[nodiscard]] bool RefutationTest(Score best, const BoundQuestion& ask);
/// The value that RefutationTest asks for: one point more, and near mates the next score that a mate can have.
[[nodiscard]] Score RefutationTestValue(Score best) noexcept;
