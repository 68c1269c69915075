#pragma once

#include <cstdint>
#include <string>

#include "chess/user_board.h"

/// Which sides the engine plays.
enum class EngineMode : std::int32_t { force = 0, one_side = 1, both_sides = 2, analyze = 3 };

/// What a game says, by its meaning (the engine has resigned). The game does not know who listens: the protocols of
/// the interfaces implement this, and in tests a list of calls.
class GameProtocol {
  public:
    virtual ~GameProtocol() = default;

    /// True: the engine decides that the game is over when it resigns, agrees a draw or meets a bad setboard. False:
    /// the interface decides.
    [[nodiscard]] virtual bool claimsResultItself() const = 0;
    virtual void sendEngineMove(const std::string& move) = 0;
    virtual void sendGameResult(const UserBoard& game, GameResult result, GameEndReason reason, EngineMode mode) = 0;
    virtual void sendDrawAccepted() = 0;
    virtual void sendDrawRejected(bool opponent_is_computer) = 0;
    virtual void sendResign() = 0;
    virtual void sendDrawOffer() = 0;
    virtual void onBoardChanged(const UserBoard& game) = 0;
};
