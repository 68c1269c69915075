#include "interfaces/commands/setup_command.h"

#include <string>

#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"

namespace VorkaInterfaces {

void Command_SetupBoardCommands::check(ConnectedGame& game) {
    if (game.mode() != EngineMode::force && game.mode() != EngineMode::analyze) {
        refuse(vocabulary::must_be_in_force_mode);
    }
    status_ = readPosition(game, position_);
}

void Command_SetupBoardCommands::work(ConnectedGame& game) {
    switch (status_) {
        case PositionStatus::read:
            replaceGame(game);
            break;
        case PositionStatus::illegal:
            answerIllegalPosition(game);
            break;
        case PositionStatus::given_up:
            game.protocol().sendEditModeAborted();
            break;
    }
}

void Command_SetupBoardCommands::replaceGame(ConnectedGame& game) {
    game.setPosition(position_);
    onReplaced(game);
    if (game.mode() == EngineMode::analyze) finishWithSearch(game, SearchKind::analyze);
}

void Command_SetupBoardCommands::answerIllegalPosition(ConnectedGame& game) {
    if (game.protocol().claimsResultItself()) {
        game.protocol().sendCommandIgnored(vocabulary::illegal_position);
        return;
    }
    // The interface plays on in its own position. In the old one every further move would be wrong, so there is none
    // any more.
    game.setInvalidPosition();
    game.protocol().tellUser(std::string(vocabulary::illegal_position));
    // Analyze mode goes on without a position, so that `exit` still leaves it.
    if (game.mode() == EngineMode::analyze) finishWithSearch(game, SearchKind::analyze);
}

}  // namespace VorkaInterfaces
