#pragma once

#include <cstdint>
#include <optional>

#include "frame/game/game_control.h"

/// Puts a game into a state that would take a whole game to reach. What it changes is not checked against anything.
struct GameAccess {
    [[nodiscard]] static UserBoard& record(GameControl& game) { return game; }
    [[nodiscard]] static ChessClock& clock(GameControl& game) { return game.clock_; }
    [[nodiscard]] static DrawResignAdvisor& advisor(GameControl& game) { return game.advisor_; }
    [[nodiscard]] static Forecast& forecast(GameControl& game) { return game.forecast_; }
    [[nodiscard]] static SearchController& search(GameControl& game) { return game.search_; }
    static void setPlayers(GameControl& game, PlayerInfo onMove, PlayerInfo notOnMove, bool analyze) {
        game.setPlayers(std::move(onMove), std::move(notOnMove), analyze);
    }
    /// What the game takes for the running search; none for no search.
    static void pretendSearch(GameControl& game, std::optional<SearchKind> kind) { game.running_ = kind; }

    // Bounds that only the limits of a search show otherwise.
    [[nodiscard]] static std::int32_t maxTime(const GameControl& game) { return game.maxTime_; }
    [[nodiscard]] static std::int32_t maxDepth(const GameControl& game) { return game.maxDepth_; }
};
