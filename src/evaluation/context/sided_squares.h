#pragma once

#include <cstdint>

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"

/// The tables of squares by colour: ahead is away from the back rank of `Us`.

/// The squares ahead on the file of `s`, and those behind it.
template <Colour Us>
[[nodiscard]] inline Bitboard file_ahead(Square s) noexcept {
    return bitboard_tables.ray_forward(Us)[s];
}
template <Colour Us>
[[nodiscard]] inline Bitboard file_behind(Square s) noexcept {
    return file_ahead<Opponent(Us)>(s);
}

/// The squares ahead on the file of `s` and on the files beside it: what a pawn there must pass.
template <Colour Us>
[[nodiscard]] inline Bitboard front_span(Square s) noexcept {
    return bitboard_tables.pawn_front_span(Us)[s];
}

/// The squares from which a pawn of `Us` runs to its promotion before a king on `king` catches it.
template <Colour Us>
[[nodiscard]] inline Bitboard pawns_out_of_reach(Square king, std::uint32_t side_to_move) noexcept {
    const auto& outside =
        Us == white ? bitboard_tables.outside_white_pawn_square : bitboard_tables.outside_black_pawn_square;
    return outside[king][side_to_move];
}
