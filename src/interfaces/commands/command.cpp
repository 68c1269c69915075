#include "interfaces/commands/command.h"

#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"

namespace VorkaInterfaces {

void Command::refuse(std::string_view reason) const { throw ErrorCommand(ErrorCommand::Kind::error, reason, line); }

void CheckedCommand::Execute(ConnectedGame& game) {
    if (!checked_) {
        check(game);
        checked_ = true;
    }
    if (!finished) work(game);
    finished = true;
}

void CheckedCommand::finishWithSearch(ConnectedGame& game, SearchKind kind) {
    finished = true;
    game.requestSearch(kind);
}

}  // namespace VorkaInterfaces
