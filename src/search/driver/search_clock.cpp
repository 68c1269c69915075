#include "search/driver/search_clock.h"

#include <cstdlib>

FailState ClassifyAgainst(Score score, Score guess) noexcept {
    const Score margin = (std::abs(guess) >> 3) + 25;
    if (score > guess + margin) return FailState::high;
    if (score < guess - margin) return FailState::low;
    return FailState::none;
}

void SearchClock::Reset(std::int64_t hard_limit, std::int64_t variable_limit) {
    *this = {};
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
    if (iteration_ <= 1) return false;
    if (hard_limit_ != 0 && elapsed >= hard_limit_) return true;
    if (variable_limit_ == 0) return false;

    auto limit = static_cast<double>(variable_limit_);
    switch (moment) {
        case SearchMoment::first_root_move:
            limit = limit * 1.2 * FirstRootMoveFactor(fail_state);
            break;
        case SearchMoment::later_root_move:
            limit = limit * 2.4 * LaterRootMoveFactor();
            break;
        case SearchMoment::iteration_complete:
            limit *= IsUnsettled() ? 0.8 * 1.45 : 0.4;
            break;
    }
    if (moment != SearchMoment::iteration_complete && IsUnsettled()) limit *= 1.45;
    if (unstable_) limit *= 1.75;
    if (IsQuiet()) limit *= 0.7;
    return elapsed >= static_cast<std::int64_t>(limit);
}

/// A search that fails low gets time to find something better; one that fails high has found it.
double SearchClock::FirstRootMoveFactor(FailState fail_state) const noexcept {
    const bool known = current_score_ != unknown;
    if (fail_state == FailState::low && !known) {
        const Score drop = previous_score_ - upper_;
        if (drop >= 256 && upper_ < 0) return 8;
        return drop < 101 ? 2 : 3;
    }
    if (fail_state == FailState::high && (!known || lower_ > previous_score_)) {
        const Score rise = lower_ - (known ? current_score_ : previous_score_);
        if (rise >= -304 && lower_ >= 1) return 0.5;
        if (rise >= -99) return 0.7;
    }
    return 1;
}

double SearchClock::LaterRootMoveFactor() const noexcept {
    const Score drop = previous_score_ - current_score_;
    if (drop >= 256 && upper_ < 0) return 8;
    if (drop > 100) return 3;
    if (drop > 25) return 2;
    return 1;
}

/// The last three iterations have moved a lot, the latest counting most.
bool SearchClock::IsUnsettled() const noexcept {
    if (iteration_ <= 4) return false;
    const auto weight = [](const IterationRecord& record) {
        const int fail = record.fail_state == FailState::low ? 25 : record.fail_state == FailState::high ? 15 : 0;
        return fail + (record.candidate ? 20 : 0);
    };
    const auto newest = records_.rbegin();
    return weight(newest[0]) + weight(newest[1]) / 2 + weight(newest[2]) / 2 > 29;
}

/// Nothing has happened in the last two iterations.
bool SearchClock::IsQuiet() const noexcept {
    if (iteration_ <= 4) return false;
    const auto calm = [](const IterationRecord& record) {
        return record.fail_state == FailState::none && !record.candidate;
    };
    const auto newest = records_.rbegin();
    return calm(newest[0]) && calm(newest[1]);
}
