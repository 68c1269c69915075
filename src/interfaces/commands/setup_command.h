#pragma once

#include "chess/user_board.h"
#include "interfaces/commands/command.h"

namespace VorkaInterfaces {

/// How reading a position ended.
enum class PositionStatus { read = 0, illegal = 1, given_up = 2 };

/// Reads a position, once, while a search may still be running, and then replaces the game with it.
class Command_SetupBoardCommands : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) final;
    void work(ConnectedGame& game) final;
    void replaceGame(ConnectedGame& game);
    void answerIllegalPosition(ConnectedGame& game);
    /// Fills `position` if the answer is `read`; leaves the game alone.
    [[nodiscard]] virtual PositionStatus readPosition(ConnectedGame& game, UserBoard& position) = 0;
    /// Called when the game has been replaced.
    virtual void onReplaced(ConnectedGame&) {}

    UserBoard position_;
    PositionStatus status_ = PositionStatus::given_up;
};

}  // namespace VorkaInterfaces
