#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "chess/user_board.h"
#include "player_setup/player_setup.h"
#include "search/driver/search_controller.h"
#include "search/engine/engine.h"
#include "selfplay/adjudication.h"
#include "selfplay/openings.h"

/// What holds for both players of a game. Of nodes, depth and time one at least is set.
struct GameRules {
    std::uint64_t nodes = 0;           ///< of each move, exactly
    std::int32_t depth = 0;            ///< of each move
    std::int64_t base_time = 0;        ///< milliseconds for the game; 0: no clock runs
    std::int64_t increment = 0;        ///< milliseconds more after each move
    std::uint64_t hash_megabytes = 8;  ///< of each player's transposition table
    AdjudicationRules adjudication;

    bool operator==(const GameRules&) const = default;
};

/// A move with what the search said about it.
struct PlayedMove {
    Move move = INVALID;
    Score score = 0;  ///< centipawns for the mover
    int depth = 0;    ///< of the iteration that found it

    bool operator==(const PlayedMove&) const = default;
};

/// A finished game. Reasons tell adjudication from the rules of chess: resignation, agreed_draw, and flag_fell come
/// from outside of the board.
struct PlayedGame {
    std::uint64_t number = 0;  ///< in the match
    GameResult result = GameResult::running;
    GameEndReason reason = GameEndReason::unknown;
    std::vector<PlayedMove> moves;

    bool operator==(const PlayedGame&) const = default;
};

/// An engine that plays for one side. It starts each game as if it had just been built.
class Player {
  public:
    /// Throws std::bad_alloc.
    Player(const PlayerSetup& setup, std::uint64_t hash_megabytes);

    void StartGame();
    /// Thinks about the move to make in a game that still runs; nothing if `stop` was set meanwhile.
    [[nodiscard]] std::optional<PlayedMove> Think(const UserBoard& game, const SearchLimits& limits,
                                                  const std::atomic<bool>& stop);
    [[nodiscard]] const PlayerSetup& setup() const { return setup_; }

  private:
    PlayerSetup setup_;
    std::unique_ptr<Engine> engine_;
    std::unique_ptr<SearchController> controller_;
};

/// The nodes of a short search with the defaults: a number that changes when the search or the evaluation does, by
/// which kept games are told from those of another version.
[[nodiscard]] std::uint64_t SignatureOfEngine();

/// Plays a game to its end; nothing if `stop` is set before.
[[nodiscard]] std::optional<PlayedGame> PlayGame(Player& white_player, Player& black_player, const Opening& opening,
                                                 const GameRules& rules, const std::atomic<bool>& stop);
