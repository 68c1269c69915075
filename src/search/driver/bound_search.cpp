// BoundSearch encloses a score between a lower and an upper bound. Each question halves nothing by itself: the next
// test value lies one step from the bound that was just found, and the step grows while the answers go on in one
// direction (the score has left the guess for good) and is halved when they turn. An example at depth 4 with the guess
// 30, and steps of 100 / 4 + 25 + 30 / 10 = 53: at least 30? yes; at least 83? no, so at most 82, and the step is 27:
// at least 56? yes, and the step is a quarter of the gap, halved: 7; at least 63? no. 56 and 62 are less than 21 apart,
// and so 59 is good enough.

#include "search/driver/bound_search.h"

#include <algorithm>
#include <cstdlib>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

namespace {

/// Bounds this close together are not worked out to the last point, unless they touch a mate or the draw score.
constexpr Score close_enough = 21;

// The first step, in centipawns: a constant part, one that is divided by the depth, since the guess gets better with
// it, and a tenth of the guess. It grows by as many tenths as there were answers in one direction.
constexpr Score first_step = 25;
constexpr Score first_step_by_depth = 100;
constexpr Score tenths = 10;

bool AreCloseEnough(Score lower, Score upper, Score contempt) {
    if (std::abs(lower - upper) >= close_enough) return false;
    const bool above_draw = upper < mate_score_limit && contempt + 1 < lower;
    const bool below_draw = lower > -mate_score_limit && upper < contempt - 1;
    return above_draw || below_draw;
}

/// How far the next test value goes beyond the bound just found.
class Step {
  public:
    Step(int depth, Score guess) : size_(first_step_by_depth / depth + first_step + std::abs(guess) / tenths) {}

    void Limit(Score gap) { size_ = std::clamp(size_, 1, std::max(gap >> 2, 1)); }
    /// `direction` is 1 after a yes, -1 after a no.
    void Answered(int direction) {
        const int run = trend_ * direction;  // answers in this direction, negative if they came in the other
        if (run > 1) size_ += size_ * run / tenths;
        if (run < 0) size_ -= size_ / 2;
        trend_ = run < 0 ? direction : trend_ + direction;
        size_ = std::max(size_, 1);
    }
    [[nodiscard]] Score size() const { return size_; }

  private:
    Score size_;
    int trend_ = 0;
};

void LogCrossedBounds(Score lower, Score upper) {
    const EchoScope file_only(vlog, Echo::off);
    vlog << vocabulary::bounds_crossed << vocabulary::lowerbound_is << lower << vocabulary::upperbound_is << upper
         << '\n';
}

}  // namespace

Score BoundSearch(const BoundSearchTask& task, SearchClock& clock, FailState& fail_state, const BoundQuestion& ask) {
    Score lower = task.lower;
    Score upper = task.upper;
    Score test = task.guess;
    Step step(task.depth, task.guess);
    Score result = task.guess;
    for (;;) {
        fail_state = ClassifyBounds(lower, upper, task.guess);
        clock.NoteFail(fail_state);
        if (AreCloseEnough(lower, upper, task.contempt)) {
            result = std::max(lower, (lower + upper) / 2);
            break;
        }
        step.Limit(std::abs(lower - upper));
        clock.SetBounds(lower, upper);
        result = ask(test);
        const bool answered_yes = result >= test;
        (answered_yes ? lower : upper) = result;
        step.Answered(answered_yes ? 1 : -1);
        const Score next = result > lower ? result + 1 - step.size() : result + step.size();
        if (lower > upper) LogCrossedBounds(lower, upper);
        if (lower >= upper) break;
        test = std::max(lower, std::min(next, upper));
    }
    clock.SetIterationScore(result);
    return result;
}

Score RefutationTestValue(Score best) noexcept {
    const Score test = best + 1;
    const bool is_odd = test % 2 != 0;
    // Own mates have even scores, enemy mates odd ones.
    if (test > mate_score_limit) return is_odd ? test + 1 : test;
    if (test < -mate_score_limit) return is_odd ? test : test + 1;
    return test;
}

bool RefutationTest(Score best, const BoundQuestion& ask) {
    const Score test = RefutationTestValue(best);
    return ask(test) < test;
}
