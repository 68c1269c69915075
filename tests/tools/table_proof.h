#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bitbase_builder/position.h"
#include "bitbases/tablebases.h"
#include "support/board_builder.h"
#include "tablebases/mate_table_index.h"
#include "tools/builder_boards.h"

/// What tests ask of tables that were computed.

/// Calls `visit(board)` for every `step`-th number from `begin` to before `end` whose position is legal.
template <class Visit>
void ForEachPositionOf(const VorkaTablebases::Material& material, std::uint64_t begin, std::uint64_t end,
                       std::uint64_t step, Visit visit) {
    const VorkaTablebases::MateTableIndex index(material);
    bitbase_builder::Position position;
    position.count = static_cast<int>(material.men());
    std::size_t place = 2;
    for (const Colour side : {white, black}) {
        for (const int type : material.of(side)) position.men[place++] = {side, type};
    }
    BOARD board;
    for (std::uint64_t number = begin; number < end; number += step) {
        index.PositionOf(number, position.at, position.to_move);
        if (is_legal(position) && PutOnBoard(board, position)) visit(board);
    }
}

/// The same for all numbers of a material.
template <class Visit>
void ForEachPositionOf(const VorkaTablebases::Material& material, std::uint64_t step, Visit visit) {
    ForEachPositionOf(material, 0, VorkaTablebases::MateTableIndex(material).size(), step, visit);
}

/// The score of a position in the tables, as TableSource tells it; nothing if it isn't there. Bare kings are a draw,
/// and a position with an en passant square has the value of its best move.
[[nodiscard]] std::optional<int> ScoreIn(VorkaTablebases::TableSource& tables, const BOARD& board);

/// The score of the best move, by the scores of the positions after each move. Nothing if one of them isn't there.
[[nodiscard]] std::optional<int> ScoreOfBestMove(VorkaTablebases::TableSource& tables, const BOARD& board);
