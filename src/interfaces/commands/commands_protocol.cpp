#include "interfaces/commands/command_families.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/basic_protocol.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/console_protocol.h"
#include "interfaces/protocols/error_command.h"
#include "interfaces/protocols/xboard_protocols.h"

/// Commands that concern the connection: which protocol is in force and what it shows, who is at its other end, and
/// the end of the program.
namespace VorkaInterfaces {

namespace {

/// `quit`
class Command_Quit : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override {
        game.abortSearch(true);
        throw quit_command_received_exception{};
    }
};

/// Replaces the protocol object; the new one takes over the state of the old one and starts.
class Command_InstallNewProtocol : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.installProtocol(makeProtocol()); }
    [[nodiscard]] virtual std::unique_ptr<BasicProtocol> makeProtocol() const = 0;
};

/// `console`
class Command_Console : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override {
        return std::make_unique<ConsoleProtocol>();
    }
};

/// `xboard`, and `protover` with a version below 2
class Command_Xboard : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override {
        return std::make_unique<XBoardProtocol_1>();
    }
};

/// `protover`
class Command_Protover2 : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override {
        return std::make_unique<XBoardProtocol_2>();
    }
};

/// `fritz`
class Command_Fritz : public Command_InstallNewProtocol {
  public:
    using Command_InstallNewProtocol::Command_InstallNewProtocol;

  private:
    [[nodiscard]] std::unique_ptr<BasicProtocol> makeProtocol() const override {
        return std::make_unique<XBoardFritzAdapter>();
    }
};

/// Whether thinking output goes to standard output.
class Command_SetOutput : public CheckedCommand {
  public:
    Command_SetOutput(std::string input_line, bool new_post) : CheckedCommand(std::move(input_line)), post_(new_post) {}

  private:
    void work(ConnectedGame& game) override { game.protocol().post = post_; }

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
    void work(ConnectedGame&) override {
        vlog << vocabulary::pong << ' ' << number_ << '\n';
        vlog.Flush();
    }

    const std::string number_;
};

/// `id text`: changes the engine's own name.
class Command_Id : public CheckedCommand {
  public:
    Command_Id(std::string input_line, std::string id) : CheckedCommand(std::move(input_line)), id_(std::move(id)) {}

  private:
    void work(ConnectedGame& game) override { game.protocol().id = id_; }

    const std::string id_;
};

/// `name text`: the opponent's name.
class Command_Name : public CheckedCommand {
  public:
    Command_Name(std::string input_line, std::string name)
        : CheckedCommand(std::move(input_line)), name_(std::move(name)) {}

  private:
    void work(ConnectedGame& game) override { game.nameOpponent(name_); }

    const std::string name_;
};

/// `rating engine opponent`
class Command_Rating : public CheckedCommand {
  public:
    Command_Rating(std::string input_line, std::int32_t engine, std::int32_t opponent)
        : CheckedCommand(std::move(input_line)), engine_(engine), opponent_(opponent) {}

  private:
    void check(ConnectedGame&) override {
        if (engine_ < 0 || opponent_ < 0) refuse(vocabulary::argument_out_of_bounds);
    }

    void work(ConnectedGame& game) override { game.ratePlayers(engine_, opponent_); }
    const std::int32_t engine_;
    const std::int32_t opponent_;
};

/// `computer`: the opponent is one. Never taken back.
class Command_Computer : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.setOpponentIsComputer(); }
};

std::unique_ptr<Command> MakeProtover(BasicProtocol&, const TokenizedLine& input) {
    const std::int32_t version = Integer::Read(input, 1);
    if (version < 2) {
        LogOnly(vocabulary::unexpected_protocol_version);
        return std::make_unique<Command_Xboard>(input.line);
    }
    if (version > 2) LogOnly(vocabulary::future_protocol_version);
    return std::make_unique<Command_Protover2>(input.line);
}

/// A command of an interface that can't be ignored.
std::unique_ptr<Command> Refuse(BasicProtocol&, const TokenizedLine& input) {
    throw ErrorCommand(ErrorCommand::Kind::error, vocabulary::command_is_not_supported, input.line);
}

/// A command of an interface that does no harm.
std::unique_ptr<Command> Ignore(BasicProtocol& protocol, const TokenizedLine& input) {
    protocol.sendCommandIgnored(vocabulary::command_is_not_supported);
    return std::make_unique<Command_DoNothing>(input.line);
}

// clang-format off
constexpr Keyword keywords[] = {
    {"quit",     alone,        Make<Command_Quit>,                     at_start,    {230, help_texts::quit}},
    {"console",  alone,        Make<Command_Console>,                  prompt_only, {540, help_texts::console}},
    {"xboard",   alone,        Make<Command_Xboard>,                   at_start,    {550, help_texts::xboard}},
    {"protover", exactly(2),   MakeProtover,                           at_start,    {560, help_texts::protover}},
    {"fritz",    alone,        Make<Command_Fritz>,                    prompt_only, {570, help_texts::fritz}},
    {"post",     alone,        Make<Command_Post>,                     prompt_only, {430, help_texts::post}},
    {"nopost",   alone,        Make<Command_Nopost>,                   prompt_only, {420, help_texts::nopost}},
    {"ping",     exactly(2),   Make<Command_Ping, Word>,               prompt_only, {200, help_texts::ping}},
    {"id",       any,          Make<Command_Id, Rest>,                 at_start,    {130, help_texts::id}},
    {"name",     at_least_two, Make<Command_Name, Rest>,               prompt_only, {150, help_texts::name}},
    {"rating",   exactly(3),   Make<Command_Rating, Integer, Integer>, prompt_only, {240, help_texts::rating}},  // engine, opponent
    {"computer", alone,        Make<Command_Computer>,                 prompt_only, {610, help_texts::not_supported}},
    {"random",   any,          Ignore,                                 prompt_only, {590, help_texts::not_supported}},
    {"accepted", any,          Ignore,                                 prompt_only, {580, help_texts::not_supported}},
    {"rejected", any,          Ignore,                                 prompt_only, {600, help_texts::not_supported}},
    {"bk",       any,          Refuse},
    {"ics",      any,          Refuse},
    {"pause",    any,          Refuse},
    {"resume",   any,          Refuse},
    {"variant",  any,          Refuse},
};
// clang-format on

}  // namespace

std::span<const Keyword> protocolKeywords() { return keywords; }

}  // namespace VorkaInterfaces
