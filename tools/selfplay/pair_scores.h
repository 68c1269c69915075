#pragma once

#include <cstdint>
#include <map>

#include "chess/user_board.h"
#include "selfplay/statistics.h"

/// Won, drawn and lost by the first engine.
struct GameCounts {
    std::uint64_t wins = 0, draws = 0, losses = 0;

    bool operator==(const GameCounts&) const = default;
};

/// Games 2k and 2k + 1 are pair k: the same opening, the first engine with White in the first of the two.
[[nodiscard]] constexpr bool FirstHasWhite(std::uint64_t game) { return game % 2 == 0; }
/// What a finished game gave to the first engine.
[[nodiscard]] int HalfPointsOfFirst(std::uint64_t game, GameResult result);

/// Results that count pair by pair, in the order of their numbers. Games may come in any order: a pair counts once it
/// is whole and all before it are, so that the score, and whoever stops by it, doesn't depend on which game ends first.
class PairScores {
  public:
    /// A game that has not been taken yet.
    void Take(std::uint64_t game, GameResult result);
    /// Counts the next pair if it is whole. False if not.
    bool CountNext();

    [[nodiscard]] const PairCounts& pairs() const { return pairs_; }
    /// Of the pairs that count.
    [[nodiscard]] const GameCounts& games() const { return games_; }
    [[nodiscard]] std::uint64_t pairs_counted() const { return next_; }

  private:
    void CountGame(int half_points);

    std::map<std::uint64_t, int> waiting_;  ///< half points by game
    std::uint64_t next_ = 0;                ///< the first pair that doesn't count yet
    PairCounts pairs_{};
    GameCounts games_;
};
