#include "tune/spsa.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "selfplay/random_numbers.h"

namespace {

// What Spall recommends for the two schedules.
constexpr double step_decay = 0.602;
constexpr double span_decay = 0.101;
constexpr double settling_share = 0.1;  ///< A, of all pairs: keeps the first steps from being wild

}  // namespace

Spsa::Spsa(std::vector<Parameter> parameters, const SpsaPlan& plan) : parameters_(std::move(parameters)), plan_(plan) {
    for (const Parameter& parameter : parameters_) values_.push_back(parameter.start);
}

double Spsa::Span(const Parameter& parameter, std::uint64_t pair) const {
    const auto all = static_cast<double>(plan_.pairs);
    return parameter.last_span * std::pow(all / static_cast<double>(pair + 1), span_decay);
}

double Spsa::Step(const Parameter& parameter, std::uint64_t pair) const {
    const auto all = static_cast<double>(plan_.pairs);
    const double settling = settling_share * all;
    const double span = Span(parameter, pair);
    const double decay = std::pow((settling + all) / (settling + static_cast<double>(pair + 1)), step_decay);
    return parameter.last_rate * parameter.last_span * parameter.last_span / span * decay;
}

std::vector<int> Spsa::Directions(std::uint64_t pair) const {
    RandomNumbers random(RandomNumbers(plan_.seed).Next() ^ RandomNumbers(~pair).Next());
    std::vector<int> directions;
    for (std::size_t i = 0; i < parameters_.size(); ++i) directions.push_back(random.Below(2) == 0 ? 1 : -1);
    return directions;
}

std::vector<Trial> Spsa::NextBatch() const {
    std::vector<Trial> batch;
    const std::uint64_t end = std::min(pairs_done_ + plan_.batch, plan_.pairs);
    for (std::uint64_t pair = pairs_done_; pair < end; ++pair) {
        Trial trial{.pair = pair, .plus = values_, .minus = values_};
        const std::vector<int> directions = Directions(pair);
        for (std::size_t i = 0; i < parameters_.size(); ++i) {
            const double span = directions[i] * Span(parameters_[i], pair);
            trial.plus[i] += span;
            trial.minus[i] -= span;
        }
        batch.push_back(std::move(trial));
    }
    return batch;
}

void Spsa::Take(const std::vector<int>& leads) {
    std::vector<double> moved = values_;
    for (std::size_t k = 0; k < leads.size(); ++k) {
        const std::uint64_t pair = pairs_done_ + k;
        const std::vector<int> directions = Directions(pair);
        for (std::size_t i = 0; i < parameters_.size(); ++i) {
            moved[i] += leads[k] * directions[i] * Step(parameters_[i], pair);
        }
    }
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        values_[i] = std::clamp(moved[i], parameters_[i].least, parameters_[i].most);
    }
    pairs_done_ += leads.size();
}

void Spsa::GoOnFrom(std::uint64_t pairs_done, std::vector<double> values) {
    pairs_done_ = pairs_done;
    values_ = std::move(values);
}
