#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

#include "player_setup/player_setup.h"
#include "selfplay/game.h"
#include "selfplay/openings.h"

/// A match of two players: each opening twice, with colours turned.
struct MatchPlan {
    std::array<PlayerSetup, 2> players;
    GameRules rules;
    /// In the order of the pairs; after the last one they begin anew.
    std::vector<Opening> openings;
    std::uint64_t first_game = 0;  ///< even
    std::uint64_t games = 2;       ///< even
    unsigned concurrency = 1;      ///< games at a time, each in a thread of its own
};

[[nodiscard]] const Opening& OpeningOf(const MatchPlan& plan, std::uint64_t game);

/// Plays those games of the plan that `is_wanted` asks for, and hands each to `on_game`, one at a time and from any
/// thread, as they end. A game doesn't depend on the others, nor on how many are played at a time (unless a clock
/// runs). Ends early, leaving unfinished games, once `stop` is set; `on_game` may set it. Throws std::bad_alloc, and
/// what `on_game` throws.
void PlayMatch(const MatchPlan& plan, const std::function<bool(std::uint64_t game)>& is_wanted,
               const std::function<void(const PlayedGame&)>& on_game, std::atomic<bool>& stop);
