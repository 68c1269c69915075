#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "interfaces/commands/command.h"
#include "interfaces/protocols/basic_protocol.h"

/// Commands that concern the connection: which protocol is in force and what it shows, who sits at its other end, and
/// the end of the program.
namespace VorkaInterfaces {

/// An empty line, or a word that is ignored for compatibility.
class Command_DoNothing : public Command {
  public:
    using Command::Command;
    void Execute(ConnectedGame& game) override;
};

/// `quit`
class Command_Quit : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// Replaces the protocol object; the new one takes over the state of the old one and starts.
class Command_InstallNewProtocol : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
    [[nodiscard]] virtual std::unique_ptr<BasicProtocol> makeProtocol() const = 0;
};

/// `console`
class Command_Console : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override;
};

/// `xboard`, and `protover` with a version below 2
class Command_Xboard : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override;
};

/// `protover`
class Command_Protover2 : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override;
};

/// `fritz`
class Command_Fritz : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override;
};

/// Whether thinking output goes to standard output.
class Command_SetOutput : public CheckedCommand {
  public:
    Command_SetOutput(std::string input_line, bool new_post) : CheckedCommand(std::move(input_line)), post_(new_post) {}

  private:
    void work(ConnectedGame& game) override;
    const bool post_;
};

/// `post`
class Command_Post : public Command_SetOutput {
  public:
    explicit Command_Post(std::string input_line) : Command_SetOutput(std::move(input_line), true) {}
};

/// `nopost`
class Command_Nopost : public Command_SetOutput {
  public:
    explicit Command_Nopost(std::string input_line) : Command_SetOutput(std::move(input_line), false) {}
};

/// `ping n`: answered at once, also during a search.
class Command_Ping : public CheckedCommand {
  public:
    Command_Ping(std::string input_line, std::string number)
        : CheckedCommand(std::move(input_line)), number_(std::move(number)) {}

  private:
    void work(ConnectedGame& game) override;
    const std::string number_;
};

/// `id text`: changes the engine's own name.
class Command_Id : public CheckedCommand {
  public:
    Command_Id(std::string input_line, std::string id) : CheckedCommand(std::move(input_line)), id_(std::move(id)) {}

  private:
    void work(ConnectedGame& game) override;
    const std::string id_;
};

/// `name text`: the opponent's name.
class Command_Name : public CheckedCommand {
  public:
    Command_Name(std::string input_line, std::string name)
        : CheckedCommand(std::move(input_line)), name_(std::move(name)) {}

  private:
    void work(ConnectedGame& game) override;
    const std::string name_;
};

/// `rating engine opponent`
class Command_Rating : public CheckedCommand {
  public:
    Command_Rating(std::string input_line, std::int32_t engine, std::int32_t opponent)
        : CheckedCommand(std::move(input_line)), engine_(engine), opponent_(opponent) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t engine_;
    const std::int32_t opponent_;
};

/// `computer`: the opponent is one. Never taken back.
class Command_Computer : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

}  // namespace VorkaInterfaces
