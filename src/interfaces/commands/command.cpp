#include "interfaces/commands/command.h"

#include "frame/base/vocabulary.h"
#include "frame/game/game_control.h"

namespace VorkaInterfaces {

namespace {

[[nodiscard]] std::string_view NameOfKind(ErrorCommand::Kind kind) {
    switch (kind) {
        case ErrorCommand::Kind::illegal_move:
            return vocabulary::illegal_move;
        case ErrorCommand::Kind::error:
            return vocabulary::error;
        case ErrorCommand::Kind::plain:
            break;
    }
    return {};
}

}  // namespace

void Command::refuse(std::string_view reason) const { throw ErrorCommand(ErrorCommand::Kind::error, reason, line); }

void CheckedCommand::Execute(GameControl& game) {
    if (!checked_) {
        check(game);
        checked_ = true;
    }
    if (!finished) work(game);
    finished = true;
}

void CheckedCommand::finishWithSearch(GameControl& game, SearchPurpose purpose) {
    finished = true;
    game.requestSearch(purpose, game);
}

ErrorCommand::ErrorCommand(Kind kind, std::string_view reason, std::string_view line) : text_(NameOfKind(kind)) {
    if (!reason.empty()) text_.append(" (").append(reason).append(")");
    text_.append(": ").append(line);
}

}  // namespace VorkaInterfaces
