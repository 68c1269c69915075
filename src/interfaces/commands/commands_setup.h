#pragma once

#include <optional>
#include <string>
#include <utility>

#include "chess/user_board.h"
#include "interfaces/commands/command.h"
#include "interfaces/protocols/basic_protocol.h"

/// Commands that put another position on the board.
namespace VorkaInterfaces {

/// Gives the move to one side, and the other side to the engine.
class Command_SetSide : public CheckedCommand {
  public:
    Command_SetSide(std::string input_line, Colour side) : CheckedCommand(std::move(input_line)), side_(side) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const Colour side_;
};

/// `white`
class Command_White : public Command_SetSide {
  public:
    explicit Command_White(std::string input_line) : Command_SetSide(std::move(input_line), white) {}
};

/// `black`
class Command_Black : public Command_SetSide {
  public:
    explicit Command_Black(std::string input_line) : Command_SetSide(std::move(input_line), black) {}
};

/// What came of the reading of a position.
enum class PositionStatus { read = 0, illegal = 1, given_up = 2 };

/// Reads a position, once, beside a search that may run, and then lets it take the place of the game.
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

/// `setboard fen`
class Command_Setboard : public Command_SetupBoardCommands {
  public:
    Command_Setboard(std::string input_line, std::string fen)
        : Command_SetupBoardCommands(std::move(input_line)), fen_(std::move(fen)) {}

  private:
    [[nodiscard]] PositionStatus readPosition(ConnectedGame& game, UserBoard& position) override;
    const std::string fen_;
};

/// `edit`: a dialogue, line by line, that blocks the program; a running analysis stands still meanwhile.
class Command_Edit : public Command_SetupBoardCommands {
  public:
    using Command_SetupBoardCommands::Command_SetupBoardCommands;

  private:
    [[nodiscard]] PositionStatus readPosition(ConnectedGame& game, UserBoard& position) override;
    /// Carries out one line. An answer ends the dialogue.
    [[nodiscard]] std::optional<PositionStatus> readAndObey(ConnectedGame& game, UserBoard& position);
    [[nodiscard]] std::optional<PositionStatus> confirm(BasicProtocol& protocol, UserBoard& position);

    EditBoard edit_board_;
};

}  // namespace VorkaInterfaces
