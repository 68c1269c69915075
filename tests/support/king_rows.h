#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "evaluation/king/king_safety.h"
#include "support/term_rows.h"

/// Rows for a king on a square: what it is worth there, and the danger that is found. Squares and positions are written
/// from White's view; every row is also run for Black, with the colours exchanged.
struct KingRow {
    std::string_view name;
    Square square;  ///< where the king is looked at; it may stand elsewhere
    std::string_view position;
    SCORE_PAIR pair;
    int attack;
    int cover;
    void (*prepare)(EVALUATION_CONTEXT& context, Colour own) = nullptr;
};
inline std::ostream& operator<<(std::ostream& out, const KingRow& row) { return out << row.name; }

/// "(positional, reckless) attack a cover c"
inline std::string KingText(SCORE_PAIR pair, int attack, int cover) {
    return PairText(pair, "attack " + std::to_string(attack) + " cover " + std::to_string(cover));
}

/// The pair of a shelter and its danger, with whatever another king left behind in the context.
template <auto OfWhite, auto OfBlack>
void ExpectShelter(const KingRow& row) {
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        EVALUATION_CONTEXT& context = builder.context;
        if (row.prepare != nullptr) row.prepare(context, own);
        context.king_attack[own] = context.king_cover[own] = 777;
        context.attack_factor[own] = context.cover_factor[own] = -1.0;
        const Square square = own == white ? row.square : MirrorVertically(row.square);
        const SCORE_PAIR pair = (own == white ? OfWhite : OfBlack)(context, builder.board, square);
        EXPECT_EQ(KingText(pair, context.king_attack[own], context.king_cover[own]),
                  KingText(row.pair, row.attack, row.cover))
            << row.position;
        EXPECT_EQ(context.attack_factor[own], danger_of_attack(row.attack)) << row.position;
        EXPECT_EQ(context.cover_factor[own], danger_of_cover(row.cover)) << row.position;
    });
}

/// Unlike numbers on all wings, of which a shelter reads the enemy's pressure and the own cover.
inline void OnAllWings(EVALUATION_CONTEXT& context, Colour own) {
    context.pressure[Opponent(own)] = {100, 200, 41};  // queen side, king side, centre
    context.cover[own] = {30, 50, 7};
    context.pressure[own] = context.cover[Opponent(own)] = {3000, 5000, 7000};
}

/// Numbers below zero in the centre: parts of them are cut towards zero.
inline void WeakCentre(EVALUATION_CONTEXT& context, Colour own) {
    context.pressure[Opponent(own)] = {10, 20, -41};
    context.cover[own] = {3, 5, -7};
}
