#pragma once

#include <cstdint>
#include <vector>

#include "tune/parameters.h"

/// Simultaneous perturbation: all parameters are moved at once, each up or down by chance, and the settings on one side
/// play a pair of games against those on the other. Whoever wins pulls all parameters its way. Most of what a pair
/// tells is noise; over thousands of pairs what is no noise adds up.
///
/// After k of N pairs a parameter is tried at value +- c, where c = c_end (N / k)^0.101, and each game of lead moves it
/// by r c, where r = r_end (c_end / c)^2 ((A + N) / (A + k))^0.602 and A = N / 10. So steps and spans are
/// widest at the beginning, and are c_end and r_end at the end.

/// How long a run is. Its course depends on these and the results of the games alone.
struct SpsaPlan {
    std::uint64_t pairs = 1;  ///< in all
    std::uint64_t batch = 1;  ///< pairs between two steps, each with directions of its own
    std::uint64_t seed = 1;   ///< of the directions
};

/// Two settings that play a pair.
struct Trial {
    std::uint64_t pair = 0;  ///< its number in the run
    std::vector<double> plus, minus;
};

class Spsa {
  public:
    Spsa(std::vector<Parameter> parameters, const SpsaPlan& plan);

    [[nodiscard]] const std::vector<Parameter>& parameters() const { return parameters_; }
    [[nodiscard]] const SpsaPlan& plan() const { return plan_; }
    [[nodiscard]] const std::vector<double>& values() const { return values_; }
    [[nodiscard]] std::uint64_t pairs_done() const { return pairs_done_; }
    [[nodiscard]] bool IsDone() const { return pairs_done_ >= plan_.pairs; }

    /// What to play next: the same as long as no results were taken.
    [[nodiscard]] std::vector<Trial> NextBatch() const;
    /// Takes the results of that batch, in its order: half points of the plus side less those of the minus side, -4
    /// to 4.
    void Take(const std::vector<int>& leads);
    /// Goes to where a run stood that had been kept.
    void GoOnFrom(std::uint64_t pairs_done, std::vector<double> values);

  private:
    /// How far from its value a parameter is tried in a pair.
    [[nodiscard]] double Span(const Parameter& parameter, std::uint64_t pair) const;
    /// What a game of lead moves it by.
    [[nodiscard]] double Step(const Parameter& parameter, std::uint64_t pair) const;
    /// +1 or -1 for each parameter.
    [[nodiscard]] std::vector<int> Directions(std::uint64_t pair) const;

    std::vector<Parameter> parameters_;
    SpsaPlan plan_;
    std::vector<double> values_;
    std::uint64_t pairs_done_ = 0;
};
