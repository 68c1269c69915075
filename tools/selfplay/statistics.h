#pragma once

#include <array>
#include <cstdint>
#include <optional>

/// What the results of a match say about the strength of the first engine.
///
/// Games come in pairs: one opening, played twice with colours turned. What one game of a pair gains by the opening the
/// other loses, so the pair is what is counted; its five results (0, 1/2, 1, 3/2 and 2 points) vary less than those of
/// two games that know nothing of each other.

/// How many pairs gave the first engine 0, 1, 2, 3 and 4 half points.
using PairCounts = std::array<std::uint64_t, 5>;

[[nodiscard]] std::uint64_t PairsOf(const PairCounts& counts);

/// A value with the half width of its 95 % interval. No error is known as long as all pairs have ended alike.
struct Measured {
    double value = 0;
    std::optional<double> error;
};

/// Strength of the first engine against the second.
struct Strength {
    Measured score;  ///< share of the points, 0 to 1
    Measured elo;    ///< logistic: 400 points are ten times the chances
    /// The lead in standard deviations of a game, in 800 / ln 10 of them; not known either as long as all pairs have
    /// ended alike.
    std::optional<Measured> normalized_elo;
    /// The chance that the first engine is the stronger one, 0 to 1: its likelihood of superiority.
    double superiority = 0.5;
};

/// Of at least one pair.
[[nodiscard]] Strength StrengthOf(const PairCounts& counts);

/// Elo from a share of the points, which is neither 0 nor 1; and the other way.
[[nodiscard]] double EloOfScore(double score);
[[nodiscard]] double ScoreOfElo(double elo);

// --- When to stop ---

enum class SprtVerdict { undecided, no_better, better };

/// The sequential probability ratio test between two hypotheses about the logistic Elo.
struct Sprt {
    double elo0 = 0;      ///< "no better": the lead is this
    double elo1 = 5;      ///< "better": the lead is this; more than elo0
    double alpha = 0.05;  ///< the risk to call an engine better that is not
    double beta = 0.05;   ///< the risk to call it no better though it is

    [[nodiscard]] double LowerBound() const;
    [[nodiscard]] double UpperBound() const;
    [[nodiscard]] SprtVerdict Judge(const PairCounts& counts) const;
};

/// The logarithm of how much likelier the results are with a lead of `elo1` than with one of `elo0`: each time with the
/// distribution of pairs that explains them best among all with that mean. 0 without pairs.
[[nodiscard]] double LogLikelihoodRatio(const PairCounts& counts, double elo0, double elo1);
