#include "selfplay/match.h"

#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include "selfplay/pair_scores.h"

const Opening& OpeningOf(const MatchPlan& plan, std::uint64_t game) {
    return plan.openings[game / 2 % plan.openings.size()];
}

namespace {

/// What the threads of a match share.
class Playing {
  public:
    Playing(const MatchPlan& plan, const std::function<bool(std::uint64_t)>& is_wanted,
            const std::function<void(const PlayedGame&)>& on_game, std::atomic<bool>& stop)
        : plan_(plan), is_wanted_(is_wanted), on_game_(on_game), stop_(stop), next_(plan.first_game) {}

    void Run() {
        std::vector<std::thread> threads;
        for (unsigned i = 1; i < plan_.concurrency; ++i) threads.emplace_back([this] { PlayAll(); });
        PlayAll();
        for (std::thread& thread : threads) thread.join();
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    /// One thread: two engines, game after game. The first failure of all ends the match.
    void PlayAll() {
        try {
            Player first(plan_.players[0], plan_.rules.hash_megabytes);
            Player second(plan_.players[1], plan_.rules.hash_megabytes);
            for (std::uint64_t game = 0; !stop_ && TakeNext(game);) {
                const bool first_has_white = FirstHasWhite(game);
                auto played = PlayGame(first_has_white ? first : second, first_has_white ? second : first,
                                       OpeningOf(plan_, game), plan_.rules, stop_);
                if (!played) return;
                played->number = game;
                const std::lock_guard lock(mutex_);
                if (!stop_) on_game_(*played);
            }
        } catch (...) {
            const std::lock_guard lock(mutex_);
            if (!failure_) failure_ = std::current_exception();
            stop_ = true;
        }
    }

    bool TakeNext(std::uint64_t& game) {
        const std::lock_guard lock(mutex_);
        while (next_ < plan_.first_game + plan_.games) {
            game = next_++;
            if (is_wanted_(game)) return true;
        }
        return false;
    }

    const MatchPlan& plan_;
    const std::function<bool(std::uint64_t)>& is_wanted_;
    const std::function<void(const PlayedGame&)>& on_game_;
    std::atomic<bool>& stop_;
    std::mutex mutex_;
    std::uint64_t next_;
    std::exception_ptr failure_;
};

}  // namespace

void PlayMatch(const MatchPlan& plan, const std::function<bool(std::uint64_t)>& is_wanted,
               const std::function<void(const PlayedGame&)>& on_game, std::atomic<bool>& stop) {
    Playing(plan, is_wanted, on_game, stop).Run();
}
