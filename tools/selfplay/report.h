#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "selfplay/pair_scores.h"
#include "selfplay/statistics.h"

/// How a match went, for people.

/// The score after some pair.
struct ScorePoint {
    std::uint64_t games = 0;
    Measured elo;
};

/// "games 40: +12 =20 -8, pairs 1 4 10 4 1, Elo +34.9 +- 60.1, normalized +50.0 +- 76.1, superiority 87.3 %"; with a
/// test "LLR 0.51 (-2.94 to 2.94) for 0 and 5 Elo" at the end.
[[nodiscard]] std::string ScoreLine(const PairScores& scores, const Sprt* test);

/// A picture of 720 by 420 points: Elo with its 95 % band over the games, below it the share of each result, of games
/// and of pairs.
[[nodiscard]] std::string ReportSvg(const std::string& first, const std::string& second, const PairScores& scores,
                                    const std::vector<ScorePoint>& history);
