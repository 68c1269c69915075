#include "interfaces/commands/commands_protocol.h"

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/console_protocol.h"
#include "interfaces/protocols/xboard_protocols.h"

namespace VorkaInterfaces {

void Command_DoNothing::Execute(ConnectedGame&) { finished = true; }

void Command_Quit::work(ConnectedGame& game) {
    game.abortSearch(true);
    throw quit_command_received_exception{};
}

void Command_InstallNewProtocol::work(ConnectedGame& game) { game.installProtocol(makeProtocol()); }

std::unique_ptr<BasicProtocol> Command_Console::makeProtocol() const { return std::make_unique<ConsoleProtocol>(); }
std::unique_ptr<BasicProtocol> Command_Xboard::makeProtocol() const { return std::make_unique<XBoardProtocol_1>(); }
std::unique_ptr<BasicProtocol> Command_Protover2::makeProtocol() const { return std::make_unique<XBoardProtocol_2>(); }
std::unique_ptr<BasicProtocol> Command_Fritz::makeProtocol() const { return std::make_unique<XBoardFritzAdapter>(); }

void Command_SetOutput::work(ConnectedGame& game) { game.protocol().post = post_; }

void Command_Ping::work(ConnectedGame&) {
    vlog << vocabulary::pong << ' ' << number_ << '\n';
    vlog.Flush();
}

void Command_Id::work(ConnectedGame& game) { game.protocol().id = id_; }

void Command_Name::work(ConnectedGame& game) {
    game.playerDefaults.opponentName = name_;
    for (PlayerInfo& player : game.players) {
        if (!player.isEngine) player.name = name_;
    }
}

void Command_Rating::check(ConnectedGame&) {
    if (engine_ < 0 || opponent_ < 0) refuse(vocabulary::argument_out_of_bounds);
}

void Command_Rating::work(ConnectedGame& game) {
    game.playerDefaults.engineRating = engine_;
    game.playerDefaults.opponentRating = opponent_;
    if (game.players[white].active == game.players[black].active) return;
    for (PlayerInfo& player : game.players) player.rating = player.active ? engine_ : opponent_;
}

void Command_Computer::work(ConnectedGame& game) { game.advisor.opponentIsComputer = true; }

}  // namespace VorkaInterfaces
