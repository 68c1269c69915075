#include <gtest/gtest.h>

#include "support/king_rows.h"
#include "support/row_name.h"

namespace {

class TrappedKingRules : public testing::TestWithParam<KingRow> {};

/// The rows tell what changes: danger that was found before stays, and so do its factors.
TEST_P(TrappedKingRules, GivePairAndChangeDanger) {
    const KingRow& row = GetParam();
    constexpr int attack_before = 40;
    constexpr int cover_before = -3;
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        EVALUATION_CONTEXT& context = builder.context;
        ASSERT_EQ(builder.board.side(own).king_square, own == white ? row.square : MirrorVertically(row.square));
        if (row.prepare != nullptr) row.prepare(context, own);
        context.king_attack[own] = attack_before;
        context.king_cover[own] = cover_before;
        context.attack_factor[own] = context.cover_factor[own] = 0.375;
        const SCORE_PAIR pair =
            own == white ? trapped_king<white>(context, builder.board) : trapped_king<black>(context, builder.board);
        EXPECT_EQ(KingText(pair, context.king_attack[own] - attack_before, context.king_cover[own] - cover_before),
                  KingText(row.pair, row.attack, row.cover))
            << row.position;
        EXPECT_EQ(context.attack_factor[own], 0.375);
        EXPECT_EQ(context.cover_factor[own], 0.375);
    });
}

/// The enemy attacks these squares and no others, whatever the board shows.
template <Square... Squares>
void Attacks(EVALUATION_CONTEXT& context, Colour own) {
    const Bitboard squares = (Bitboard{0} | ... | Bit(Squares));
    context.attacks[Opponent(own)] = own == white ? squares : MirrorRanks(squares);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Squares, TrappedKingRules, testing::Values(
    KingRow{"a1", a1, "2r1k3/8/8/8/8/8/PP6/K7", {-6, -12}, 0, -6, Attacks<c1>},
    KingRow{"b1", b1, "3rk3/8/8/8/8/8/PPP5/1K6", {-6, -12}, 0, -6, Attacks<d1>},
    KingRow{"not c1", c1, "4k2r/8/8/8/8/8/1PPP4/2K5", {0, 0}, 0, 0, Attacks<h1>},
    KingRow{"not d1", d1, "5r1k/8/8/8/8/8/2PPP3/3K4", {0, 0}, 0, 0, Attacks<f1, g1>},
    KingRow{"not e1", e1, "r6k/8/8/8/8/8/3PPP2/4K3", {0, 0}, 0, 0, Attacks<a1>},
    KingRow{"not f1", f1, "r3k3/8/8/8/8/8/4PPP1/5K2", {0, 0}, 0, 0, Attacks<a1>},
    KingRow{"g1", g1, "r3k3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<a1>},
    KingRow{"h1", h1, "r3k3/8/8/8/8/8/6PP/7K", {-6, -12}, 0, -6, Attacks<a1>},
    KingRow{"not g2", g2, "r3k3/8/8/8/8/5PPP/6K1/8", {0, 0}, 0, 0, Attacks<a1>},
    KingRow{"not a2", a2, "7k/8/8/8/8/PP6/K7/3r4", {0, 0}, 0, 0, Attacks<c1, e1>}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(WayOut, TrappedKingRules, testing::Values(
    KingRow{"a1, far end", a1, "4k2r/8/8/8/8/8/PP6/K7", {-6, -12}, 0, -6, Attacks<h1>},
    KingRow{"a1, the next square", a1, "4k3/8/8/8/8/8/PP6/K4r2", {0, 0}, 0, 0, Attacks<b1>},
    KingRow{"b1, far end", b1, "4k2r/8/8/8/8/8/PPP5/1K6", {-6, -12}, 0, -6, Attacks<h1>},
    KingRow{"b1, the next square", b1, "4k3/8/8/8/8/8/PPP5/1K3r2", {0, 0}, 0, 0, Attacks<c1>},
    KingRow{"b1, the other side", b1, "3rk3/8/8/8/8/8/PPP5/1K6", {0, 0}, 0, 0, Attacks<a1>},
    KingRow{"g1, near end", g1, "3kr3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<e1>},
    KingRow{"g1, the next square", g1, "4k3/8/8/8/8/8/5PPP/2r3K1", {0, 0}, 0, 0, Attacks<f1>},
    KingRow{"g1, the other side", g1, "3rk3/8/8/8/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<h1>},
    KingRow{"h1, near end", h1, "4kr2/8/8/8/8/8/6PP/7K", {-6, -12}, 0, -6, Attacks<f1>},
    KingRow{"h1, the next square", h1, "4k3/8/8/8/8/8/6PP/2r4K", {0, 0}, 0, 0, Attacks<g1>}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(Air, TrappedKingRules, testing::Values(
    KingRow{"a1 with a2 free", a1, "2r1k3/8/8/8/8/P7/1P6/K7", {0, 0}, 0, 0, Attacks<c1>},
    KingRow{"a1 with b2 free", a1, "2r1k3/8/8/8/8/1P6/P7/K7", {0, 0}, 0, 0, Attacks<c1>},
    KingRow{"b1 with a2 free", b1, "3rk3/8/8/8/8/P7/1PP5/1K6", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"b1 with c2 free", b1, "3rk3/8/8/8/8/2P5/PP6/1K6", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"g1 with g2 free", g1, "3rk3/8/8/8/8/6P1/5P1P/6K1", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"a piece there counts as air", g1, "3rk3/8/8/8/8/8/5PPN/6K1", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"an enemy pawn beside the way ahead", b1, "3rk3/8/8/8/8/8/pPP5/1K6", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"pawns on the third rank are too far", h1, "3rk3/8/8/8/8/6PP/8/7K", {0, 0}, 0, 0, Attacks<d1>}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(BackRank, TrappedKingRules, testing::Values(
    KingRow{"queen along the file", g1, "3qk3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<d1>},
    KingRow{"queen along the diagonal", g1, "4k3/8/8/q7/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<e1>},
    KingRow{"queen along the rank", g1, "4k3/8/8/8/8/8/5PPP/q5K1", {-6, -12}, 0, -6, Attacks<e1>},
    KingRow{"bishop", g1, "4k3/8/8/b7/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<e1>},
    KingRow{"knight", g1, "4k3/8/8/8/8/2n5/5PPP/6K1", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"rook that a pawn holds off", g1, "3rk3/8/8/3P4/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"rook of the own side", g1, "4k3/8/8/8/8/8/5PPP/3R2K1", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"rook against a guarded square", g1, "3rk3/8/8/8/8/8/5PPP/3R2K1", {-6, -12}, 0, -6, Attacks<d1>},
    KingRow{"no square attacked", g1, "3rk3/8/8/8/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<>},
    KingRow{"only squares ahead attacked", g1, "3rk3/8/8/8/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<d2, d3, d4>},
    KingRow{"the second of two squares", g1, "3rk3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<a1, d1>},
    KingRow{"the first of two squares", g1, "r3k3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<a1, d1>},
    KingRow{"two squares count once", g1, "r2rk3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<a1, d1>}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(LonePawn, TrappedKingRules, testing::Values(
    KingRow{"before a1", a1, "4k3/8/8/8/8/8/pP6/K7", {200, 240}, -10, 2, Attacks<>},
    KingRow{"before b1", b1, "4k3/8/8/8/8/8/PpP5/1K6", {200, 240}, -10, 2, Attacks<>},
    KingRow{"before g1", g1, "4k3/8/8/8/8/8/5PpP/6K1", {200, 240}, -10, 2, Attacks<>},
    KingRow{"before h1", h1, "4k3/8/8/8/8/8/6Pp/7K", {200, 240}, -10, 2, Attacks<>},
    KingRow{"not before f1", f1, "4k3/8/8/8/8/8/4PpP1/5K2", {0, 0}, 0, 0, Attacks<>},
    KingRow{"defended from the left", b1, "4k3/8/8/8/8/p7/PpP5/1K6", {0, 0}, 0, 0, Attacks<>},
    KingRow{"defended from the right", b1, "4k3/8/8/8/8/2p5/PpP5/1K6", {0, 0}, 0, 0, Attacks<>},
    KingRow{"defended on the rim", a1, "4k3/8/8/8/8/1p6/pP6/K7", {0, 0}, 0, 0, Attacks<>},
    KingRow{"a pawn behind it defends nothing", a1, "4k3/8/8/8/8/p7/pP6/K7", {200, 240}, -10, 2, Attacks<>},
    KingRow{"defended by a rook is alone", a1, "r3k3/8/8/8/8/8/pP6/K7", {200, 240}, -10, 2, Attacks<a2, c1>},
    KingRow{"with another way out", b1, "4k3/8/8/8/8/8/Pp6/1K6", {0, 0}, 0, 0, Attacks<>},
    KingRow{"with a piece beside it", b1, "4k3/8/8/8/8/8/PpN5/1K6", {0, 0}, 0, 0, Attacks<>},
    KingRow{"a piece instead", b1, "4k3/8/8/8/8/8/PnP5/1K6", {0, 0}, 0, 0, Attacks<>},
    KingRow{"a square ahead of it", b1, "4k3/8/8/8/8/1p6/P1P5/1K6", {0, 0}, 0, 0, Attacks<>}), RowName<KingRow>);

INSTANTIATE_TEST_SUITE_P(PlainBoard, TrappedKingRules, testing::Values(
    KingRow{"a rook reaches the back rank", g1, "3rk3/8/8/8/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<d1>},
    KingRow{"a queen reaches it", g1, "4k3/8/8/6q1/8/8/5PPP/6K1", {-6, -12}, 0, -6, Attacks<c1>},
    KingRow{"a bishop does not count", g1, "4k3/8/8/6b1/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<c1>},
    KingRow{"the way out is not attacked", g1, "3rk3/8/8/8/8/8/5PPP/6K1", {0, 0}, 0, 0, Attacks<f1>},
    KingRow{"from b1 the c-file does not count", b1, "2r1k3/8/8/8/8/8/PPP5/1K6", {0, 0}, 0, 0, Attacks<c1>},
    KingRow{"there is air", g1, "3rk3/8/8/8/8/7P/5PP1/6K1", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"not in the corner", f1, "3rk3/8/8/8/8/8/4PPP1/5K2", {0, 0}, 0, 0, Attacks<d1>},
    KingRow{"a lone pawn before h1", h1, "4k3/8/8/8/8/8/6Pp/7K", {200, 240}, -10, 2},
    KingRow{"a defended pawn before h1", h1, "4k3/8/8/8/8/6p1/6Pp/7K", {0, 0}, 0, 0},
    KingRow{"a lone pawn beside a way out", h1, "4k3/8/8/8/8/8/7p/7K", {0, 0}, 0, 0}), RowName<KingRow>);
// clang-format on

}  // namespace
