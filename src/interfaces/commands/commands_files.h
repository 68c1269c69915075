#pragma once

#include <fstream>
#include <string>
#include <utility>

#include "interfaces/commands/command.h"
#include "interfaces/commands/commands_setup.h"

/// Commands that read and write positions and games.
namespace VorkaInterfaces {

/// A position or a game from a file takes the place of the game.
class Command_ReadFile : public Command_SetupBoardCommands {
  public:
    Command_ReadFile(std::string input_line, std::string path, std::string_view unreadable)
        : Command_SetupBoardCommands(std::move(input_line)), path_(std::move(path)), unreadable_(unreadable) {}

  private:
    [[nodiscard]] PositionStatus readPosition(ConnectedGame& game, UserBoard& position) final;
    /// May throw the exceptions of UserBoard.
    virtual void read(std::istream& file, UserBoard& position) const = 0;

    const std::string path_;
    const std::string_view unreadable_;  ///< what is said of a file that holds something else
};

/// `read_fen file`
class Command_ReadFEN : public Command_ReadFile {
  public:
    Command_ReadFEN(std::string input_line, std::string path);

  private:
    void read(std::istream& file, UserBoard& position) const override;
};

/// `read_pgn file`: the game stands at its start, and `next` plays its moves.
class Command_ReadPGN : public Command_ReadFile {
  public:
    Command_ReadPGN(std::string input_line, std::string path);

  private:
    void read(std::istream& file, UserBoard& position) const override;
    void onReplaced(ConnectedGame& game) override;
};

/// Writes a file, whole or not at all.
class Command_WriteFile : public CheckedCommand {
  public:
    Command_WriteFile(std::string input_line, std::string path, std::string_view unwritable)
        : CheckedCommand(std::move(input_line)), path_(std::move(path)), unwritable_(unwritable) {}

  private:
    void work(ConnectedGame& game) final;
    [[nodiscard]] virtual std::string text(const ConnectedGame& game) const = 0;

    const std::string path_;
    const std::string_view unwritable_;  ///< what is said of a device that is full
};

/// `write_fen file`
class Command_WriteFEN : public Command_WriteFile {
  public:
    Command_WriteFEN(std::string input_line, std::string path);

  private:
    [[nodiscard]] std::string text(const ConnectedGame& game) const override;
};

/// `write_pgn file`
class Command_WritePGN : public Command_WriteFile {
  public:
    Command_WritePGN(std::string input_line, std::string path);

  private:
    [[nodiscard]] std::string text(const ConnectedGame& game) const override;
};

}  // namespace VorkaInterfaces
