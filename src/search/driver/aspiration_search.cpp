#include "search/driver/aspiration_search.h"

#include <algorithm>

Score AspirationSearch(const BoundSearchTask& task, Score window, SearchClock& clock, FailState& fail_state,
                       const BoundQuestion& ask) {
    Score lower = task.lower;
    Score upper = task.upper;
    Score step = window;
    Score test = std::clamp(task.guess - step / 2, lower + 1, upper);
    for (;;) {
        fail_state = ClassifyBounds(lower, upper, task.guess);
        clock.NoteFail(fail_state);
        clock.SetBounds(lower, upper);
        const Score answer = ask(test);
        if (answer >= test) {
            lower = std::min(answer, upper);
            test = std::min(lower + step, upper);
        } else {
            upper = std::max(answer, lower);
            test = std::max(upper - step + 1, lower + 1);
        }
        const bool known_on_both_sides = lower > task.lower && upper < task.upper;
        const bool may_be_mate = upper >= mate_score_limit || lower <= -mate_score_limit;
        const bool are_close = upper - lower <= window;
        if (lower >= upper || (known_on_both_sides && are_close && !may_be_mate)) break;
        if (known_on_both_sides) {
            test = lower + (upper - lower + 1) / 2;
        } else {
            step += std::max(step / 2, 1);
        }
    }
    const Score result = upper < task.upper ? lower + (upper - lower) / 2 : lower;
    clock.SetIterationScore(result);
    return result;
}
