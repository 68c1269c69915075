#include "search/driver/bench_search.h"

#include <string>

#include "chess/user_board.h"
#include "search/driver/search_controller.h"

SearchInfo SearchBenchPosition(Engine& engine, std::string_view fen, const SearchLimits& limits, SearchHost& host) {
    engine.tables.Clear();
    UserBoard game;
    game.SetBoardFromFen(std::string(fen));
    SearchController controller(engine);
    controller.Run(limits, game, host);
    return controller.info();
}
