#include "search/driver/root_search.h"

#include <algorithm>
#include <iterator>

Score RootSearch::Ask(SearchBoard& search, Move move, const RootQuestion& question) {
    search.moves_played[1] = move;
    search.board.MakeMove(move);
    const Score answer = AskBelow(search, question);
    search.board.UnmakeMove(move);

    search.pv[0][0] = move;
    std::copy(std::begin(search.pv[1]), std::prev(std::end(search.pv[1])), std::next(std::begin(search.pv[0])));
    return -answer;
}
