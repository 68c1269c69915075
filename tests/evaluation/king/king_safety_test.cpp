#include "evaluation/king/king_safety.h"

#include <gtest/gtest.h>

#include <string_view>

#include "support/evaluation_builder.h"

namespace {

struct WingRow {
    Square king;
    Wing wing;
};

TEST(KingSafety, WingOfAKingFollowsFromItsFile) {
    for (const WingRow& row :
         {WingRow{a1, queen_side}, WingRow{b8, queen_side}, WingRow{c1, centre}, WingRow{d5, centre},
          WingRow{e1, centre}, WingRow{f8, centre}, WingRow{g1, king_side}, WingRow{h7, king_side}}) {
        EvaluationBuilder position("4k3/8/8/8/8/8/8/4K3 w - - 0 1");
        for (const Colour side : {white, black}) {
            position.board.sides[side].king_square = row.king;
            place_kings(position.context, position.board);
            EXPECT_EQ(position.context.king_wing[side], row.wing) << row.king;
            EXPECT_EQ(position.context.attacks[side], bitboard_tables.king_attacks[row.king]) << row.king;
        }
    }
}

/// Kings on their second rank, judged on the square beside them: a diagonal is that of the square asked about, not of
/// the one behind it.
TEST(KingSafety, CoverOfAKingOnItsSecondRank) {
    struct Row {
        std::string_view fen;
        int cover;  ///< of the black king
    };
    for (const Row& row : {Row{"r4b1r/ppknp1pp/2p1n3/q7/8/P1N1BN2/1PP1QPPP/2KR3R b - - 0 1", 0},
                           Row{"1R6/5kb1/5rpp/P7/3q3P/5pP1/1R5K/2r5 b - - 0 1", 5}}) {
        EvaluationBuilder position(row.fen);
        static_cast<void>(position.FullScore());
        EXPECT_EQ(position.context.king_cover[black], row.cover) << row.fen;
    }
}

}  // namespace
