#pragma once

#include "chess/bitboard_tables.h"
#include "evaluation/context/board_areas.h"

/// The tables of squares by colour: ahead is away from the back rank of `Us`.

/// The squares ahead on the file of `s`, and those behind it.
template <Colour Us>
[[nodiscard]] inline Bitboard file_ahead(Square s) noexcept {
    return Us == white ? bitboard_tables.ray_north[s] : bitboard_tables.ray_south[s];
}
template <Colour Us>
[[nodiscard]] inline Bitboard file_behind(Square s) noexcept {
    return file_ahead<Opponent(Us)>(s);
}

/// The squares ahead on the file of `s` and on the files beside it: what a pawn there must pass.
template <Colour Us>
[[nodiscard]] inline Bitboard front_span(Square s) noexcept {
    return Us == white ? bitboard_tables.white_pawn_front_span[s] : bitboard_tables.black_pawn_front_span[s];
}
