#include "search/driver/search_clock.h"

#include <algorithm>
#include <cstdlib>

namespace {

// Scores, drops and rises are in centipawns; shares are factors of the variable limit.

/// The neighbourhood of a guess: so much, and an eighth of the guess.
constexpr Score least_margin = 25;

/// The part of the limit that may have passed when the search asks, by the moment at which it does.
constexpr double share_at_first_root_move = 1.2;
constexpr double share_at_later_root_move = 2.4;
constexpr double share_after_iteration = 0.4;
constexpr double share_after_unsettled_iteration = 0.8;

/// A first iteration may take so long whatever its limit, in milliseconds: cut short it may not have looked at the best
/// move, and usually it is over by then.
constexpr std::int64_t least_for_first_iteration = 5;

/// What stretches the limit, and what shrinks it.
constexpr double unsettled_factor = 1.45;
constexpr double unstable_root_factor = 1.75;
constexpr double quiet_factor = 0.7;

/// More time for a score that falls, so that something better is found.
constexpr double catastrophe_factor = 8;
constexpr double large_drop_factor = 3;
constexpr double small_drop_factor = 2;
/// From this drop on a score below zero is a catastrophe.
constexpr Score catastrophic_drop = 256;
/// Drops above this are large. Those of a later root move are small above the second number, and below it nothing.
constexpr Score largest_small_drop = 100;
constexpr Score negligible_drop = 25;

/// Less time for a score that rises: half of it if the side stands better, or else a little less. The margins are below
/// zero, since the lower bound of the bisection may lag behind the score it is compared with.
constexpr double winning_rise_factor = 0.5;
constexpr double rise_factor = 0.7;
constexpr Score least_winning_rise = -304;
constexpr Score least_rise = -99;

/// How much an iteration counts when it is asked whether the search is unsettled. Two weights add up if an iteration
/// has failed and has had a candidate; the iterations before the last one count half.
constexpr int fail_low_weight = 25;
constexpr int fail_high_weight = 15;
constexpr int candidate_weight = 20;
/// The search is unsettled above this sum.
constexpr int largest_settled_sum = 29;
/// Up to this iteration the search is neither unsettled nor quiet.
constexpr int first_iterations = 4;

}  // namespace

FailState ClassifyAgainst(Score score, Score guess) noexcept {
    const Score margin = (std::abs(guess) >> 3) + least_margin;
    if (score > guess + margin) return FailState::high;
    if (score < guess - margin) return FailState::low;
    return FailState::none;
}

FailState ClassifyBounds(Score lower, Score upper, Score guess) noexcept {
    if (ClassifyAgainst(lower, guess) == FailState::high) return FailState::high;
    if (ClassifyAgainst(upper, guess) == FailState::low) return FailState::low;
    return FailState::none;
}

void SearchClock::Reset(std::int64_t hard_limit, std::int64_t variable_limit, FirstIteration first_iteration) {
    *this = {};
    first_iteration_ = first_iteration;
    hard_limit_ = hard_limit;
    variable_limit_ = variable_limit;
}

void SearchClock::NewIteration() {
    ++iteration_;
    if (iteration_ > 1) {
        const FailState state = fail_low_ ? FailState::low : fail_high_ ? FailState::high : FailState::none;
        records_.push_back({.fail_state = state, .candidate = candidate_});
    }
    // The fail flags stay set for the rest of the search: docs/oddities.md, fail flags.
    unstable_ = candidate_ = false;
    previous_score_ = current_score_;
    current_score_ = unknown;
}

void SearchClock::SetIterationScore(Score score) noexcept {
    if (current_score_ == unknown) {
        current_score_ = score;
    } else if (score > current_score_) {
        current_score_ = score;
        candidate_ = true;
    }
}

void SearchClock::SetBounds(Score lower, Score upper) noexcept {
    lower_ = lower;
    upper_ = upper;
}

void SearchClock::NoteFail(FailState state) noexcept {
    if (state == FailState::high) fail_high_ = true;
    if (state == FailState::low) fail_low_ = true;
}

bool SearchClock::ShouldStop(std::int64_t elapsed, SearchMoment moment, FailState fail_state) const noexcept {
    if (iteration_ <= 1) return EndsFirstIteration(elapsed);
    if (hard_limit_ != 0 && elapsed >= hard_limit_) return true;
    if (variable_limit_ == 0) return false;

    auto limit = static_cast<double>(variable_limit_);
    switch (moment) {
        case SearchMoment::first_root_move:
            limit = limit * share_at_first_root_move * FirstRootMoveFactor(fail_state);
            break;
        case SearchMoment::later_root_move:
            limit = limit * share_at_later_root_move * LaterRootMoveFactor();
            break;
        case SearchMoment::iteration_complete:
            limit *= IsUnsettled() ? share_after_unsettled_iteration * unsettled_factor : share_after_iteration;
            limit *= want_;
            break;
    }
    if (moment != SearchMoment::iteration_complete && IsUnsettled()) limit *= unsettled_factor;
    if (unstable_) limit *= unstable_root_factor;
    if (IsQuiet()) limit *= quiet_factor;
    return elapsed >= static_cast<std::int64_t>(limit);
}

/// The variable limit never ends the first iteration: nothing is known yet by which it could be stretched.
bool SearchClock::EndsFirstIteration(std::int64_t elapsed) const noexcept {
    if (first_iteration_ == FirstIteration::is_whole || hard_limit_ == 0) return false;
    return elapsed >= std::max(hard_limit_, least_for_first_iteration);
}

/// A search that fails low gets time to find something better; one that fails high has found it.
double SearchClock::FirstRootMoveFactor(FailState fail_state) const noexcept {
    const bool known = current_score_ != unknown;
    if (fail_state == FailState::low && !known) {
        const Score drop = previous_score_ - upper_;
        if (drop >= catastrophic_drop && upper_ < 0) return catastrophe_factor;
        return drop <= largest_small_drop ? small_drop_factor : large_drop_factor;
    }
    if (fail_state == FailState::high && (!known || lower_ > previous_score_)) {
        const Score rise = lower_ - (known ? current_score_ : previous_score_);
        if (rise >= least_winning_rise && lower_ > 0) return winning_rise_factor;
        if (rise >= least_rise) return rise_factor;
    }
    return 1;
}

double SearchClock::LaterRootMoveFactor() const noexcept {
    const Score drop = previous_score_ - current_score_;
    if (drop >= catastrophic_drop && upper_ < 0) return catastrophe_factor;
    if (drop > largest_small_drop) return large_drop_factor;
    if (drop > negligible_drop) return small_drop_factor;
    return 1;
}

/// The last three iterations have moved a lot, the latest counting most.
bool SearchClock::IsUnsettled() const noexcept {
    if (iteration_ <= first_iterations) return false;
    const auto weight = [](const IterationRecord& record) {
        const int fail = record.fail_state == FailState::low    ? fail_low_weight
                         : record.fail_state == FailState::high ? fail_high_weight
                                                                : 0;
        return fail + (record.candidate ? candidate_weight : 0);
    };
    const auto newest = records_.rbegin();
    return weight(newest[0]) + weight(newest[1]) / 2 + weight(newest[2]) / 2 > largest_settled_sum;
}

/// Nothing has happened in the last two iterations.
bool SearchClock::IsQuiet() const noexcept {
    if (iteration_ <= first_iterations) return false;
    const auto calm = [](const IterationRecord& record) {
        return record.fail_state == FailState::none && !record.candidate;
    };
    const auto newest = records_.rbegin();
    return calm(newest[0]) && calm(newest[1]);
}
