#pragma once

#include <cstdint>
#include <random>

#include "bitbase_builder/table.h"
#include "support/board_builder.h"

/// The engine's board of a builder's position; false if the engine takes it for illegal.
inline bool PutOnBoard(BOARD& board, const bitbase_builder::Position& position, Square en_passant = 0) {
    std::int8_t squares[64] = {};
    for (std::size_t m = 0; m < static_cast<std::size_t>(position.count); ++m) {
        const int type = position.men[m].type;
        squares[position.at[m]] = static_cast<std::int8_t>(position.men[m].colour == white ? type : -type);
    }
    return board.SetPosition(squares, static_cast<int>(position.to_move), en_passant, 0);
}

/// Calls `visit(table, position)` for so many random legal positions of a table.
template <class Visit>
void ForRandomPositionsOf(const bitbase_builder::Table& table, int count, std::mt19937_64& random, Visit visit) {
    for (int found = 0; found < count;) {
        const bitbase_builder::Position position = table.position_of(random() % table.size());
        if (!is_legal(position)) continue;
        ++found;
        visit(table, position);
    }
}
