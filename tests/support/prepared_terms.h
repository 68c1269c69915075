#pragma once

#include "evaluation/context/board_areas.h"
#include "evaluation/context/evaluation_context.h"

/// What rows of the terms (term_rows.h) find in the context, as terms before them would have left it. Squares are
/// written as the own side sees the board.

template <int Openness>
void Open(EVALUATION_CONTEXT& context, Colour /*own*/) {
    context.openness = Openness;
}

inline void EnemyAttacksAll(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = ~Bitboard{0};
}
/// All but some squares.
template <Square... Left>
void EnemyLeaves(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = ~(Bit(own == white ? Left : MirrorVertically(Left)) | ...);
}
/// The first ranks of the own side.
template <int Ranks>
void EnemyAttacksHome(EVALUATION_CONTEXT& context, Colour own) {
    context.attacks_no_queen[Opponent(own)] = own == white ? ranks<white>(0, Ranks - 1) : ranks<black>(0, Ranks - 1);
}
