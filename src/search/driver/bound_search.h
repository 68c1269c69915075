#pragma once

#include <functional>

#include "search/driver/search_clock.h"
#include "search/state/search_board.h"
#include "search/tables/score.h"

namespace tournament {
struct TournamentState;
}

/// How the score of a root move is found: by bisection over yes/no questions.

/// "Is it worth at least `test`?": gives `test` if so, `test` - 1 if not.
using BoundQuestion = std::function<Score(Score test)>;

/// What a bisection starts from.
struct BoundSearchTask {
    int depth = 1;
    Score lower = -infinity_bound;
    Score upper = infinity_bound;
    Score aspiration_window = 16;  ///< for AspirationSearch: bounds so close together are good enough
    Score guess = 0;
    Score contempt = 0;  ///< worth of a draw, which is worked out to the last point
};

/// Moves a test value between the bounds until they meet or are close enough. Tells `clock` the bounds before each
/// question, and the score at the end; keeps `fail_state` up to date for those who poll during a question.
[[nodiscard]] Score BoundSearch(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                const BoundQuestion& ask);

/// The same for the tournament search: from a little below the guess upwards, by steps that grow while the answers go
/// on in one direction.
[[nodiscard]] Score AspirationSearch(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state,
                                     const BoundQuestion& ask);

/// Whether the answer to one question says that a move is no better than `best`.
[[nodiscard]] bool RefutationTest(Score best, const BoundQuestion& ask);
/// The value that RefutationTest asks for: one point more, and near mates the next score that a mate can have.
[[nodiscard]] Score RefutationTestValue(Score best) noexcept;

/// Asks whether a root move is worth at least `test` at this depth. Leaves the line in pv[0]. Throws what a poll
/// throws.
[[nodiscard]] Score RootProbe(SearchBoard& search, Move move, Score test, int depth,
                              tournament::TournamentState* tournament_state = nullptr, Distance reduction = 0,
                              NodeType type = NodeType::principal);
