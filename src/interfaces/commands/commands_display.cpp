#include "interfaces/commands/commands_display.h"

#include "evaluation/evaluate.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "frame/game/game_control.h"

namespace VorkaInterfaces {

void Command_SendSearchStatus::work(GameControl& game) {
    const bool search_runs = !game.IsGameOver() && game.searchStatus != SearchStatus::none && game.search.info().valid;
    game.protocol->sendSearchStatus(search_runs ? &game.search.info() : nullptr);
}

void Command_Display::work(GameControl& game) { game.protocol->showBoard(game, true); }

void Command_Eval::check(GameControl& game) {
    // There is nothing to evaluate on the board that an impossible position leaves behind.
    if (!game.IsPositionValid()) refuse(vocabulary::command_not_legal_now);
}

void Command_Eval::work(GameControl& game) {
    vlog << vocabulary::eval << ": " << evaluate_for_display(game.board(), game.protocol->personality) << '\n';
    vlog.Flush();
}

void Command_Help::work(GameControl& game) { game.protocol->showHelp(); }

void Command_DisplayHashtableStatus::work(GameControl& game) { game.protocol->showHashtableStatus(true); }

void Command_DisplayPersonality::work(GameControl& game) { game.protocol->showPersonality(); }

void Command_Version::work(GameControl& game) { game.protocol->showVersion(); }

}  // namespace VorkaInterfaces
