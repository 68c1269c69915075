// Any text as a move in one of a few positions, which the first byte chooses: what comes out is a legal move that reads
// back from its own texts, or one of the four errors. Only the first sixteen characters count.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "chess/notation.h"
#include "support/board_builder.h"

namespace {

const std::vector<BOARD>& Positions() {
    static const std::vector<BOARD> positions = {
        BoardFromFen(start_fen),
        BoardFromFen("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1"),
        BoardFromFen("n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1"),
        BoardFromFen("8/8/1k6/8/4Q2Q/8/8/K6Q w - - 0 1"),
        BoardFromFen("4k3/8/8/2pPp3/8/8/8/4K3 w - e6 0 1"),
        BoardFromFen("k7/8/8/8/8/8/6q1/7K w - - 0 1"),
        BOARD(),
    };
    return positions;
}

void Require(bool holds) {
    if (!holds) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const BOARD& board = Positions()[data[0] % Positions().size()];
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);

    MoveParseError error{};
    const Move move = ParseMove(text, board, error);
    MoveParseError error_of_head{};
    Require(ParseMove(text.substr(0, 16), board, error_of_head) == move && error_of_head == error);
    if (move == INVALID) {
        Require(!MoveParseErrorText(error).empty());
        return 0;
    }
    const std::vector<Move> legal = LegalMovesOf(board);
    Require(std::find(legal.begin(), legal.end(), move) != legal.end());
    Require(ParseMove(MoveToSan(board, move), board, error) == move);
    Require(ParseMove(MoveToCoordinate(move), board, error) == move);
    return 0;
}
