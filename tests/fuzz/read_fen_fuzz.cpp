// Any text as a position: it is refused with one of the two exceptions and the game stays as it was, or it is a sound
// position that reads back from what is written of it.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "chess/user_board.h"
#include "support/board_builder.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    UserBoard game;
    try {
        game.SetBoardFromFen(text);
    } catch (const UserBoard::io_error&) {
        Require(game.GetFen() == start_fen);
        return 0;
    } catch (const UserBoard::invalid_position&) {
        Require(game.GetFen() == start_fen);
        return 0;
    }
    const BOARD& board = game.board();
    Require(board.IsValid() && board.ply == 0);
    const BOARD read = BoardFromFen(FenOf(board));
    Require(read.key() == board.key() && read.frame() == board.frame());
    Require(LegalMovesOf(read) == LegalMovesOf(board));
    return 0;
}
