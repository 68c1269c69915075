#include "selfplay/statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <numeric>

namespace {

/// Half of the 95 % interval of the normal distribution, in standard deviations.
constexpr double width_of_95_percent = 1.959963984540054;
/// One unit of normalized Elo is as many standard deviations of a game.
constexpr double normalized_unit = 800 / std::numbers::ln10;
constexpr double games_in_a_pair = 2;

/// Share of the points in a pair, by its number of half points.
constexpr double ShareOf(std::size_t half_points) { return static_cast<double>(half_points) / 4; }

struct Moments {
    double mean = 0;
    double variance = 0;  ///< of one pair's share
};

Moments MomentsOf(const PairCounts& counts) {
    const auto pairs = static_cast<double>(PairsOf(counts));
    Moments moments;
    for (std::size_t i = 0; i < counts.size(); ++i) moments.mean += ShareOf(i) * static_cast<double>(counts[i]) / pairs;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        moments.variance += std::pow(ShareOf(i) - moments.mean, 2) * static_cast<double>(counts[i]) / pairs;
    }
    return moments;
}

double NormalDistribution(double deviations) { return std::erfc(-deviations / std::numbers::sqrt2) / 2; }

}  // namespace

std::uint64_t PairsOf(const PairCounts& counts) {
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

double EloOfScore(double score) { return -400 * std::log10(1 / score - 1); }
double ScoreOfElo(double elo) { return 1 / (1 + std::pow(10, -elo / 400)); }

Strength StrengthOf(const PairCounts& counts) {
    const auto pairs = static_cast<double>(PairsOf(counts));
    const Moments moments = MomentsOf(counts);
    // A match without a lost point tells no more than that the next half point was not lost.
    const double least = 0.25 / (games_in_a_pair * pairs);
    const auto elo = [least](double score) { return EloOfScore(std::clamp(score, least, 1 - least)); };

    Strength strength;
    strength.score.value = moments.mean;
    strength.elo.value = elo(moments.mean);
    if (moments.variance <= 0) {
        if (moments.mean != 0.5) strength.superiority = moments.mean > 0.5 ? 1 : 0;
        return strength;
    }
    const double lead = moments.mean - 0.5;
    const double deviation = std::sqrt(moments.variance / pairs);
    const double error = width_of_95_percent * deviation;
    strength.score.error = error;
    strength.elo.error = (elo(moments.mean + error) - elo(moments.mean - error)) / 2;
    const double deviation_of_a_game = std::sqrt(games_in_a_pair * moments.variance);
    strength.normalized_elo =
        Measured{.value = normalized_unit * lead / deviation_of_a_game,
                 .error = normalized_unit * width_of_95_percent / std::sqrt(games_in_a_pair * pairs)};
    strength.superiority = NormalDistribution(lead / deviation);
    return strength;
}

// --- The sequential test ---
//
// With the shares x of the five results and their frequencies p, the likeliest distribution q with a mean of s has
// q = p / (1 + t (x - s)), where t is the one number for which q (x - s) sums up to 0: the sum falls as t grows, so t
// is found by halving. It lies where all q are positive.
//
//     results 0, 1/2, 1, 3/2, 2 of    5 20 50 20 5   pairs, s = 0.5: t = 0 and q = p, for the mean is 0.5 as it is.

namespace {

using Frequencies = std::array<double, 5>;

/// A result that has not come up yet may still come: it counts as a thousandth of a pair.
Frequencies FrequenciesOf(const PairCounts& counts, double& pairs) {
    constexpr double unseen = 1e-3;
    Frequencies frequencies{};
    for (std::size_t i = 0; i < counts.size(); ++i) {
        frequencies[i] = std::max(static_cast<double>(counts[i]), unseen);
    }
    pairs = std::accumulate(frequencies.begin(), frequencies.end(), 0.0);
    for (double& frequency : frequencies) frequency /= pairs;
    return frequencies;
}

Frequencies LikeliestWithMean(const Frequencies& frequencies, double mean) {
    constexpr double margin = 1e-12;
    double low = -1 / (1 - mean) + margin;
    double high = 1 / mean - margin;
    for (int step = 0; step < 200 && high - low > std::numeric_limits<double>::epsilon(); ++step) {
        const double t = (low + high) / 2;
        double sum = 0;
        for (std::size_t i = 0; i < frequencies.size(); ++i) {
            sum += frequencies[i] * (ShareOf(i) - mean) / (1 + t * (ShareOf(i) - mean));
        }
        (sum > 0 ? low : high) = t;
    }
    Frequencies likeliest = frequencies;
    for (std::size_t i = 0; i < frequencies.size(); ++i) likeliest[i] /= 1 + low * (ShareOf(i) - mean);
    return likeliest;
}

}  // namespace

double LogLikelihoodRatio(const PairCounts& counts, double elo0, double elo1) {
    if (PairsOf(counts) == 0) return 0;
    double pairs = 0;
    const Frequencies frequencies = FrequenciesOf(counts, pairs);
    const Frequencies with0 = LikeliestWithMean(frequencies, ScoreOfElo(elo0));
    const Frequencies with1 = LikeliestWithMean(frequencies, ScoreOfElo(elo1));
    double ratio = 0;
    for (std::size_t i = 0; i < frequencies.size(); ++i) ratio += frequencies[i] * std::log(with1[i] / with0[i]);
    return pairs * ratio;
}

double Sprt::LowerBound() const { return std::log(beta / (1 - alpha)); }
double Sprt::UpperBound() const { return std::log((1 - beta) / alpha); }

SprtVerdict Sprt::Judge(const PairCounts& counts) const {
    const double ratio = LogLikelihoodRatio(counts, elo0, elo1);
    if (ratio <= LowerBound()) return SprtVerdict::no_better;
    return ratio >= UpperBound() ? SprtVerdict::better : SprtVerdict::undecided;
}
