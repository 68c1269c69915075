#include "selfplay/pair_scores.h"

#include <cstddef>

namespace {

constexpr int win = 2;
constexpr int draw = 1;

}  // namespace

int HalfPointsOfFirst(std::uint64_t game, GameResult result) {
    if (result == GameResult::draw) return draw;
    const bool has_won = result == (FirstHasWhite(game) ? GameResult::white_wins : GameResult::black_wins);
    return has_won ? win : 0;
}

void PairScores::Take(std::uint64_t game, GameResult result) { waiting_[game] = HalfPointsOfFirst(game, result); }

bool PairScores::CountNext() {
    const auto first = waiting_.find(2 * next_);
    const auto second = waiting_.find(2 * next_ + 1);
    if (first == waiting_.end() || second == waiting_.end()) return false;
    ++pairs_[static_cast<std::size_t>(first->second + second->second)];
    CountGame(first->second);
    CountGame(second->second);
    waiting_.erase(first);
    waiting_.erase(second);
    ++next_;
    return true;
}

void PairScores::CountGame(int half_points) {
    ++(half_points == win ? games_.wins : half_points == draw ? games_.draws : games_.losses);
}
