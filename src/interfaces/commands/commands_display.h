#pragma once

#include "interfaces/commands/command.h"

/// Commands that show something and change nothing.
namespace VorkaInterfaces {

/// `.`: how far the running search is.
class Command_SendSearchStatus : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `display`
class Command_Display : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `eval`: the evaluation of the current position, in centipawns for the side to move.
class Command_Eval : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `help`
class Command_Help : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `hash`
class Command_DisplayHashtableStatus : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `personality`
class Command_DisplayPersonality : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `version`
class Command_Version : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

}  // namespace VorkaInterfaces
