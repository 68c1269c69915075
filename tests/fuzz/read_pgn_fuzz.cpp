// Any text as a game: it is refused and the game stays as it was, or its moves can all be played and it reads back from
// what is written of it.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "chess/pgn.h"
#include "support/board_builder.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    UserBoard game;
    PGN_TAGS tags;
    try {
        std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
        ReadPgn(game, stream, tags);
    } catch (const UserBoard::user_exception&) {
        Require(game.GetFen() == start_fen && game.next_moves().empty() && !game.IsGameOver());
        return 0;
    }
    const std::deque<Move> moves = game.next_moves();
    if (moves.size() > 1000) return 0;  // each move of a game looks back at all positions
    while (!game.next_moves().empty()) game.NextMove();

    std::stringstream written;
    WritePgn(game, written, tags);
    UserBoard again;
    PGN_TAGS tags_again;
    ReadPgn(again, written, tags_again);
    Require(again.next_moves() == moves && tags_again.white == tags.white && tags_again.event == tags.event);
    return 0;
}
