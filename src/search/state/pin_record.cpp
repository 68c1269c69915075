#include "search/state/pin_record.h"

#include <cstdlib>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"

PinRecord RecordPin(const BOARD& board, Square king_square, Square pinned, Colour pinner_side) {
    const int away_from_king = bitboard_tables.direction[king_square][pinned];
    const Bitboard pinner = HiddenAttacker(pinned, away_from_king, board) & board.side(pinner_side).all;
    return {.pinned_square = static_cast<std::int16_t>(pinned),
            .pinner_square = static_cast<std::int16_t>(FindLowestBit(pinner)),
            .pinner_side = static_cast<std::int32_t>(pinner_side)};
}

PinRecord FindStandingPin(const BOARD& board) {
    PinRecord record;
    int highest_type = no_piece;
    for (const Colour victim : {board.mover(), Opponent(board.mover())}) {
        const SIDE_PIECES& own = board.side(victim);
        const Colour pinner_side = Opponent(victim);
        Bitboard pinned_pieces = FindPins(own.king_square, board, own.all, board.side(pinner_side));
        while (pinned_pieces != 0) {
            const Square pinned = FindNextBit(pinned_pieces);
            pinned_pieces ^= Bit(pinned);
            const int type = std::abs(board.squares[pinned]);
            if (type <= highest_type) continue;
            highest_type = type;
            record = RecordPin(board, own.king_square, pinned, pinner_side);
        }
    }
    return record;
}
