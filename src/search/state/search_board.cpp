#include "search/state/search_board.h"

#include <algorithm>
#include <iterator>

#include "evaluation/context/position_type.h"

void SearchBoard::StartSearch(const BOARD& position, Score contempt) {
    board = position;
    moves_played[0] = INVALID;
    pv[0][0] = INVALID;
    position_class[0] = classify_position(board, no_position_type);
    std::fill(std::begin(pins), std::end(pins), PinRecord{});
    pins[0] = FindStandingPin(board);
    std::fill(std::begin(check_runs), std::end(check_runs), CheckRunRecord{});
    history.NewSearch();
    draw_score[position.side_to_move] = contempt;
    draw_score[position.side_to_move ^ 1U] = -contempt;
    noise.Restart();
    iteration_depth = 1;
    deepening_searches = 0;
    nodes = ettc_tries = ettc_cutoffs = 0;
    statistics = {};
    poll_countdown = first_poll_countdown;
}

int SearchBoard::DeepestPly() const noexcept {
    const auto deepest =
        std::find_if(std::rbegin(moves_played), std::rend(moves_played), [](Move move) { return move != INVALID; });
    return deepest == std::rend(moves_played) ? 0 : static_cast<int>(std::rend(moves_played) - deepest) - 1;
}

void SearchBoard::ForgetMovesPlayed() noexcept { std::fill(std::begin(moves_played), std::end(moves_played), INVALID); }
