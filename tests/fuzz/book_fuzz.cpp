// Any file as an opening book: it is refused, or what it has for a position are legal moves, and any chance chooses one
// of them.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/temporary_directory.h"
#include "uci/book/polyglot_book.h"

namespace {

using namespace VorkaUci;

void Require(bool holds) {
    if (!holds) abort();
}

void LookUp(PolyglotBook& book, const BOARD& board) {
    const std::vector<Move> legal = LegalMovesOf(board);
    const std::vector<BookMove> found = book.Find(board);
    for (const BookMove& move : found) {
        Require(move.weight > 0 && std::find(legal.begin(), legal.end(), move.move) != legal.end());
    }
    for (const std::uint64_t chance : {std::uint64_t{0}, std::uint64_t{65537}, ~std::uint64_t{0}}) {
        const Move chosen = book.Choose(board, chance);
        Require((chosen == INVALID) == found.empty());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryDirectory folder;
    static const std::string path = folder.File("book.bin");
    static const std::array boards{BoardFromFen(start_fen), BoardFromFen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1"),
                                   BoardFromFen("n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1"),
                                   BoardFromFen("4k3/8/8/2pPp3/8/8/8/4K3 w - e6 0 1")};
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    PolyglotBook book;
    const bool is_open = book.Open(path);
    // A book without an entry is one, but there is nothing to use.
    Require(book.IsOpen() == (is_open && size > 0));
    for (const BOARD& board : boards) LookUp(book, board);
    return 0;
}
