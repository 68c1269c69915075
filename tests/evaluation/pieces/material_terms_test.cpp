#include "evaluation/pieces/material_terms.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

#include "support/evaluation_builder.h"
#include "support/row_name.h"

inline void PrintTo(const SCORE_PAIR& pair, std::ostream* out) {
    *out << '(' << pair.positional() << ", " << pair.reckless() << ')';
}

namespace {

// --- Imbalance ---

struct ImbalanceRow {
    std::string_view name;
    int minor_lead;
    int heavy_lead;
    bool white_has_pawns;
    bool black_has_pawns;
    SCORE_PAIR pair;
};
std::ostream& operator<<(std::ostream& out, const ImbalanceRow& row) { return out << row.name; }

class MaterialImbalance : public testing::TestWithParam<ImbalanceRow> {};

TEST_P(MaterialImbalance, FollowsFromTheLeads) {
    const ImbalanceRow& row = GetParam();
    BOARD board;
    board.sides[white].minor_points = 12 + row.minor_lead;
    board.sides[black].minor_points = 12;
    board.sides[white].heavy_points = 4 + row.heavy_lead;
    board.sides[black].heavy_points = 4;
    board.sides[white].pawns = row.white_has_pawns ? Bit(a2) : 0;
    board.sides[black].pawns = row.black_has_pawns ? Bit(a7) : 0;
    EVALUATION_CONTEXT context;
    EXPECT_EQ(material_imbalance(context, board), row.pair);
}

INSTANTIATE_TEST_SUITE_P(
    Material, MaterialImbalance,
    testing::Values(ImbalanceRow{"balance", 0, 0, true, true, {0, 0}},
                    ImbalanceRow{"the exchange for a minor piece", 3, -1, true, true, {0, 0}},
                    ImbalanceRow{"a rook", 0, 1, true, true, {400, 180}},
                    ImbalanceRow{"lead of four", 9, -1, true, true, {400, 180}},
                    ImbalanceRow{"behind by four", -9, 1, true, true, {-400, -180}},
                    ImbalanceRow{"behind by a queen", 0, -2, false, true, {-400, -180}},
                    ImbalanceRow{"two minor pieces", 6, 0, false, false, {400, 180}},
                    ImbalanceRow{"a minor piece with pawns", 3, 0, true, false, {160, 160}},
                    ImbalanceRow{"a minor piece without pawns", 3, 0, false, true, {-120, -120}},
                    ImbalanceRow{"behind by a minor piece with pawns", -3, 0, false, true, {-160, -160}},
                    ImbalanceRow{"behind by a minor piece without pawns", -3, 0, true, false, {120, 120}},
                    ImbalanceRow{"two minor pieces for a rook", 6, -1, true, true, {130, 180}},
                    ImbalanceRow{"a rook for two minor pieces", -6, 1, true, true, {-130, -180}},
                    ImbalanceRow{"three minor pieces for two rooks", 9, -2, true, true, {50, 100}},
                    ImbalanceRow{"two rooks for three minor pieces", -9, 2, true, true, {-50, -100}},
                    ImbalanceRow{"two units ahead", -3, 1, true, true, {0, 0}},
                    ImbalanceRow{"two units behind otherwise", -12, 2, true, true, {0, 0}},
                    ImbalanceRow{"two units ahead otherwise", 12, -2, true, true, {0, 0}}),
    RowName<ImbalanceRow>);

// --- Bishop pair ---

struct PairRow {
    std::string_view name;
    std::string_view fen;
    int lead;
};
std::ostream& operator<<(std::ostream& out, const PairRow& row) { return out << row.name; }

class BishopPair : public testing::TestWithParam<PairRow> {};

TEST_P(BishopPair, CountsForTheSideThatAloneHasIt) {
    EvaluationBuilder position(GetParam().fen);
    find_bishop_pairs(position.context, position.board);
    const int lead = GetParam().lead;
    EXPECT_EQ(bishop_pair(position.context, position.board), SCORE_PAIR(50 * lead, 50 * lead));
    EXPECT_EQ(bishop_pair_ending(position.context, position.board), 55 * lead);
}

INSTANTIATE_TEST_SUITE_P(Material, BishopPair,
                         testing::Values(PairRow{"nobody", "2b1k3/4p3/8/8/8/8/4P3/2B1K3 w - - 0 1", 0},
                                         PairRow{"White", "2b1k3/4p3/8/8/8/8/4P3/2B1KB2 w - - 0 1", 1},
                                         PairRow{"White, Black to move", "2b1k3/4p3/8/8/8/8/4P3/2B1KB2 b - - 0 1", 1},
                                         PairRow{"Black", "2b1kb2/4p3/8/8/8/8/4P3/2B1K3 w - - 0 1", -1},
                                         PairRow{"both", "2b1kb2/4p3/8/8/8/8/4P3/2B1KB2 w - - 0 1", 0},
                                         PairRow{"two on one colour are none", "4k3/4p3/8/8/5B2/8/4P3/2B1K3 w - - 0 1",
                                                 0},
                                         PairRow{"three on two colours", "4k3/4p3/8/8/5B2/8/4P3/2B1KB2 w - - 0 1", 1}),
                         RowName<PairRow>);

// --- Pawn balance ---

struct BalanceRow {
    std::string_view name;
    int own_pressure;  // of the side that is a pawn up
    int enemy_pressure;
    SCORE_PAIR pair;
};
std::ostream& operator<<(std::ostream& out, const BalanceRow& row) { return out << row.name; }

class PawnBalance : public testing::TestWithParam<BalanceRow> {
  protected:
    /// The pressure comes from all three wings.
    static WingCounters Spread(int pressure) {
        return {static_cast<std::int16_t>(pressure - 5), static_cast<std::int16_t>(-2), static_cast<std::int16_t>(7)};
    }
};

TEST_P(PawnBalance, LeadIsWorthLessUnderPressure) {
    const BalanceRow& row = GetParam();
    EvaluationBuilder white_leads("4k3/pp6/8/8/8/8/PPP5/4K3 w - - 0 1");
    white_leads.PrepareTerms();
    white_leads.context.pressure[white] = Spread(row.own_pressure);
    white_leads.context.pressure[black] = Spread(row.enemy_pressure);
    EXPECT_EQ(pawn_balance(white_leads.context, white_leads.board), row.pair);

    EvaluationBuilder black_leads("4k3/ppp5/8/8/8/8/PP6/4K3 w - - 0 1");
    black_leads.PrepareTerms();
    black_leads.context.pressure[black] = Spread(row.own_pressure);
    black_leads.context.pressure[white] = Spread(row.enemy_pressure);
    EXPECT_EQ(pawn_balance(black_leads.context, black_leads.board), -row.pair);
}

INSTANTIATE_TEST_SUITE_P(Material, PawnBalance,
                         testing::Values(BalanceRow{"enemy on the retreat", -90, -1, {20, 12}},
                                         BalanceRow{"enemy without pressure", 0, 0, {16, 0}},
                                         BalanceRow{"enemy ten ahead", 30, 40, {16, 0}},
                                         BalanceRow{"enemy eleven ahead", 30, 41, {13, -4}},
                                         BalanceRow{"twenty ahead and more than double", 5, 25, {13, -4}},
                                         BalanceRow{"far ahead and more than double", 5, 26, {4, -10}},
                                         BalanceRow{"far ahead and just double", 21, 42, {13, -4}},
                                         BalanceRow{"half is rounded down", 21, 43, {13, -4}},
                                         BalanceRow{"far ahead and a little more than double", 21, 44, {4, -10}}),
                         RowName<BalanceRow>);

TEST(PawnBalanceTerm, OnlyALeadOfOnePawnCounts) {
    for (const std::string_view fen : {"4k3/pp6/8/8/8/8/PP6/4K3 w - - 0 1", "4k3/p7/8/8/8/8/PPP5/4K3 w - - 0 1",
                                       "4k3/ppp5/8/8/8/8/P7/4K3 w - - 0 1"}) {
        EvaluationBuilder position(fen);
        position.PrepareTerms();
        position.context.pressure[white] = {-50, -50, -50};
        position.context.pressure[black] = {-50, -50, -50};
        EXPECT_EQ(pawn_balance(position.context, position.board), SCORE_PAIR()) << fen;
    }
}

}  // namespace
