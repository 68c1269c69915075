#include "interfaces/commands/commands_display.h"

#include "evaluation/evaluate.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"

namespace VorkaInterfaces {

void Command_SendSearchStatus::work(ConnectedGame& game) {
    const bool search_runs = !game.IsGameOver() && game.searchStatus != SearchStatus::none && game.search.info().valid;
    game.protocol().sendSearchStatus(search_runs ? &game.search.info() : nullptr);
}

void Command_Display::work(ConnectedGame& game) { game.protocol().showBoard(game, true); }

void Command_Eval::check(ConnectedGame& game) {
    // There is nothing to evaluate on the board that an impossible position leaves behind.
    if (!game.IsPositionValid()) refuse(vocabulary::command_not_legal_now);
}

void Command_Eval::work(ConnectedGame& game) {
    vlog << vocabulary::eval << ": "
         << evaluate_for_display(game.board(), game.protocol().personality, game.engine.tables, game.engine.bitbases)
         << '\n';
    vlog.Flush();
}

void Command_Help::work(ConnectedGame& game) { game.protocol().showHelp(); }

void Command_DisplayHashtableStatus::work(ConnectedGame& game) {
    game.protocol().showHashtableStatus(game.engine.tables, true);
}

void Command_DisplayPersonality::work(ConnectedGame& game) { game.protocol().showPersonality(); }

void Command_Version::work(ConnectedGame& game) { game.protocol().showVersion(); }

}  // namespace VorkaInterfaces
