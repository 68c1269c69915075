// Bets on the static score: reverse futility, razoring, the null move, and the internal reduction beside them. Each
// with a node where it is made, and with nodes that lack one condition.

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "search/tournament/adaptive_null_move.h"
#include "search/tournament/internal_reduction.h"
#include "search/tournament/razoring.h"
#include "search/tournament/reverse_futility.h"
#include "support/row_name.h"
#include "support/tournament_builder.h"

namespace {

using tournament::ForPlies;
using tournament::TournamentNode;

/// White is on move, in a middle game with even material.
constexpr std::string_view even_fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";
constexpr std::string_view in_check_fen = "4k3/8/8/8/7q/8/PPPP2PP/RNB1KBNR w - - 0 1";

/// What a row changes in a node that would make its bet.
struct GateRow {
    std::string_view name;
    bool bets;
    std::function<void(TournamentBuilder&, TournamentQuestion&)> change;
    std::string_view fen = even_fen;
};
std::ostream& operator<<(std::ostream& out, const GateRow& row) { return out << row.name; }

/// The gates that all bets on the static score share.
// clang-format off
const GateRow shared_gates[] = {
    {"as it stands", true, [](TournamentBuilder&, TournamentQuestion&) {}},
    {"all node", true, [](TournamentBuilder&, TournamentQuestion& q) { q.type = NodeType::all; }},
    {"principal too", true, [](TournamentBuilder&, TournamentQuestion& q) { q.type = NodeType::principal; }},
    {"highest score that tells no mate", true, [](TournamentBuilder&, TournamentQuestion& q) { q.beta = mate_score_limit - 1; }},
    {"looking for a mate", false, [](TournamentBuilder&, TournamentQuestion& q) { q.beta = mate_score_limit; }},
    {"lowest score that tells no mate", true, [](TournamentBuilder&, TournamentQuestion& q) { q.beta = -mate_score_limit + 1; }},
    {"being mated", false, [](TournamentBuilder&, TournamentQuestion& q) { q.beta = -mate_score_limit; }},
    {"a move is excluded", false, [](TournamentBuilder& b, TournamentQuestion& q) { q.excluded = b.MoveNamed("a2a3"); }},
    {"in check", false, [](TournamentBuilder&, TournamentQuestion&) {}, in_check_fen},
};
// clang-format on

// --- Reverse futility ---

class ReverseFutilityGates : public testing::TestWithParam<GateRow> {};

NodeAnswer ReverseFutilityOf(const GateRow& row, Distance distance, Score beyond) {
    TournamentBuilder search(row.fen);
    TournamentQuestion question{.distance = distance};
    row.change(search, question);
    const Score margin = ForPlies(search.rules().reverse_futility_margin, question.distance);
    TournamentNode node = search.NodeAt(question, margin + beyond);
    const NodeAnswer answer = ReverseFutility(node);
    if (answer) {
        EXPECT_EQ(*answer, node.estimate) << row.name;
    }
    return answer;
}

TEST_P(ReverseFutilityGates, Hold) {
    EXPECT_EQ(static_cast<bool>(ReverseFutilityOf(GetParam(), ONE_PLY, 0)), GetParam().bets);
    EXPECT_FALSE(ReverseFutilityOf(GetParam(), ONE_PLY, -1)) << "a centipawn is lacking";
}

INSTANTIATE_TEST_SUITE_P(Shared, ReverseFutilityGates, testing::ValuesIn(shared_gates), RowName<GateRow>);
// clang-format off
INSTANTIATE_TEST_SUITE_P(Own, ReverseFutilityGates, testing::Values(
    GateRow{"longest distance", true, [](TournamentBuilder& b, TournamentQuestion& q) { q.distance = b.rules().reverse_futility_distance; }},
    GateRow{"too long", false, [](TournamentBuilder& b, TournamentQuestion& q) { q.distance = b.rules().reverse_futility_distance + 1; }},
    GateRow{"switched off", false, [](TournamentBuilder& b, TournamentQuestion&) { b.rules().reverse_futility = 0; }},
    GateRow{"after a pass", true, [](TournamentBuilder&, TournamentQuestion& q) { q.may_pass = false; }}), RowName<GateRow>);
// clang-format on

TEST(ReverseFutility, AsksForLessWhenTheSideImproves) {
    TournamentBuilder search(even_fen);
    search.rules().reverse_futility_margin = 80;
    search.rules().reverse_futility_improving = 30;
    const auto bets = [&](Distance distance, Score lead, bool is_improving) {
        TournamentNode node = search.NodeAt({.distance = distance}, lead);
        node.is_improving = is_improving;
        return static_cast<bool>(ReverseFutility(node));
    };
    EXPECT_TRUE(bets(128, 160, false));
    EXPECT_FALSE(bets(128, 159, false));
    EXPECT_TRUE(bets(128, 130, true));
    EXPECT_FALSE(bets(128, 129, true));
    EXPECT_TRUE(bets(96, 120, false)) << "half plies count half";
    EXPECT_FALSE(bets(96, 119, false));
}

TEST(ReverseFutility, AnswersByTheBoundWhereNothingMoreIsAskedFor) {
    for (const int fail_soft : {0, 1}) {
        TournamentBuilder search(even_fen, {.fail_soft = fail_soft});
        const TournamentNode node = search.NodeAt({.beta = 10, .distance = ONE_PLY}, 400);
        EXPECT_EQ(ReverseFutility(node), NodeAnswer(fail_soft != 0 ? 410 : 10));
    }
}

// --- Razoring ---

class RazoringGates : public testing::TestWithParam<GateRow> {};

/// Whether the node is ended, `short_of` centipawns below the margin, in a position that no capture helps.
bool IsRazored(const GateRow& row, Score short_of, std::uint64_t* nodes = nullptr) {
    TournamentBuilder search(row.fen);
    TournamentQuestion question{.beta = 2000, .distance = ONE_PLY};
    row.change(search, question);
    const Score margin = ForPlies(search.rules().razoring_margin, question.distance);
    TournamentNode node = search.NodeAt(question, -margin - short_of);
    const NodeAnswer answer = Razoring(node);
    if (answer) {
        EXPECT_LT(*answer, question.beta);
    }
    if (nodes != nullptr) *nodes = search.search().nodes;
    return static_cast<bool>(answer);
}

TEST_P(RazoringGates, Hold) {
    // Being mated, the captures are above beta: there the nodes tell whether they were looked at.
    std::uint64_t nodes = 0;
    static_cast<void>(IsRazored(GetParam(), 1, &nodes));
    EXPECT_EQ(nodes > 0, GetParam().bets);
    EXPECT_FALSE(IsRazored(GetParam(), 0, &nodes)) << "just not so far below";
    EXPECT_EQ(nodes, 0U);
}

INSTANTIATE_TEST_SUITE_P(Shared, RazoringGates, testing::ValuesIn(shared_gates), RowName<GateRow>);
// clang-format off
INSTANTIATE_TEST_SUITE_P(Own, RazoringGates, testing::Values(
    GateRow{"longest distance", true, [](TournamentBuilder& b, TournamentQuestion& q) { q.distance = b.rules().razoring_distance; }},
    GateRow{"too long", false, [](TournamentBuilder& b, TournamentQuestion& q) { q.distance = b.rules().razoring_distance + 1; }},
    GateRow{"switched off", false, [](TournamentBuilder& b, TournamentQuestion&) { b.rules().razoring = 0; }}), RowName<GateRow>);
// clang-format on

TEST(Razoring, EndsTheNodeUnlessCapturesReachBeta) {
    constexpr std::string_view hanging_queen = "4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1";
    TournamentBuilder search(hanging_queen);
    // The static score is made up: that of the captures is what decides.
    TournamentNode reaches = search.NodeAt({.beta = -300}, -3000);
    EXPECT_FALSE(Razoring(reaches));
    TournamentNode fails = search.NodeAt({.beta = 2500}, -300);
    const NodeAnswer answer = Razoring(fails);
    ASSERT_TRUE(answer);
    EXPECT_LT(*answer, 2500);
    EXPECT_EQ(FenOf(search.board()), hanging_queen) << "nothing is left on the board";
}

// --- Null move ---

/// White is a queen up and not in danger: a pass does no harm.
constexpr std::string_view winning_fen = "4k3/pp6/8/8/8/8/PP4PP/3QK2R w - - 0 1";
constexpr std::string_view winning_in_check_fen = "4k3/pp6/8/8/4r3/8/PP4PP/1Q2K2R w - - 0 1";

class NullMoveGates : public testing::TestWithParam<GateRow> {};

TEST_P(NullMoveGates, Hold) {
    TournamentBuilder search(GetParam().fen);
    search.rules().null_move_distance = 2 * ONE_PLY;
    search.rules().null_move_pieces = 2;
    TournamentQuestion question{.distance = 2 * ONE_PLY};
    GetParam().change(search, question);
    const std::string before = FenOf(search.board());
    TournamentNode node = search.NodeAt(question, 0);
    static_cast<void>(AdaptiveNullMove(node));
    EXPECT_EQ(search.search().nodes > 0, GetParam().bets);
    EXPECT_EQ(FenOf(search.board()), before);

    const std::uint64_t nodes = search.search().nodes;
    TournamentNode below = search.NodeAt(question, -1);
    EXPECT_FALSE(AdaptiveNullMove(below)) << "the static score is below beta";
    EXPECT_EQ(search.search().nodes, nodes);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Shared, NullMoveGates, testing::ValuesIn([] {
    std::vector<GateRow> rows(std::begin(shared_gates), std::end(shared_gates));
    for (GateRow& row : rows) row.fen = row.fen == in_check_fen ? winning_in_check_fen : winning_fen;
    return rows;
}()), RowName<GateRow>);
INSTANTIATE_TEST_SUITE_P(Own, NullMoveGates, testing::Values(
    GateRow{"too near", false, [](TournamentBuilder&, TournamentQuestion& q) { q.distance = 2 * ONE_PLY - 1; }, winning_fen},
    GateRow{"far away", true, [](TournamentBuilder&, TournamentQuestion& q) { q.distance = 4 * ONE_PLY; }, winning_fen},
    GateRow{"switched off", false, [](TournamentBuilder& b, TournamentQuestion&) { b.rules().null_move = 0; }, winning_fen},
    GateRow{"after a pass", false, [](TournamentBuilder&, TournamentQuestion& q) { q.may_pass = false; }, winning_fen},
    GateRow{"a piece too few", false, [](TournamentBuilder& b, TournamentQuestion&) { b.rules().null_move_pieces = 3; }, winning_fen},
    GateRow{"no pieces are needed", true, [](TournamentBuilder& b, TournamentQuestion&) { b.rules().null_move_pieces = 0; }, winning_fen}),
    RowName<GateRow>);
// clang-format on

TEST(NullMove, EndsTheNodeAndLeavesNoMoveBehind) {
    TournamentBuilder search(winning_fen, {.fail_soft = 0, .null_move_distance = 128});
    TournamentNode node = search.NodeAt({.beta = 100, .distance = 3 * ONE_PLY}, 500);
    EXPECT_EQ(AdaptiveNullMove(node), NodeAnswer(100));
    EXPECT_EQ(FenOf(search.board()), winning_fen);
    EXPECT_EQ(search.search().moves_played[1], INVALID) << "what the children see as the move before";
}

TEST(NullMove, AnswersWhatThePassIsWorthUnlessItIsAMate) {
    const auto answer = [](std::string_view fen, Score beta) {
        TournamentBuilder search(fen, {.fail_soft = 1,
                                       .reverse_futility = 0,
                                       .null_move_distance = 5 * ONE_PLY,
                                       .null_move_reduction = 64,
                                       .null_move_growth = 0,
                                       .null_move_margin_limit = 0});
        TournamentNode node = search.NodeAt({.beta = beta, .distance = 5 * ONE_PLY}, 600);
        return *AdaptiveNullMove(node);
    };
    const Score rook_ahead = answer(winning_fen, 100);
    EXPECT_GT(rook_ahead, 200);
    EXPECT_LT(rook_ahead, mate_score_limit);
    constexpr std::string_view mates_whatever_black_does = "7k/8/6K1/8/8/8/8/R7 w - - 0 1";
    EXPECT_EQ(answer(mates_whatever_black_does, 100), 100);
}

TEST(NullMove, GoesOnIfThePassIsRefuted) {
    // Black threatens to take the queen. With the move White takes first.
    constexpr std::string_view both_hang = "4k3/8/8/3q4/8/8/7K/3Q4 w - - 0 1";
    TournamentBuilder search(both_hang, {.null_move_distance = 64, .null_move_pieces = 0});
    TournamentNode node = search.NodeAt({.beta = -100, .distance = 3 * ONE_PLY}, 500);
    EXPECT_FALSE(AdaptiveNullMove(node));
    EXPECT_EQ(FenOf(search.board()), both_hang);
}

TEST(NullMove, IsVerifiedInEndingsAndFarFromTheHorizon) {
    const auto nodes = [](int position_class, Distance verification) {
        TournamentBuilder search(even_fen, {.null_move_distance = 64, .null_move_verification = verification});
        TournamentNode node = search.NodeAt({.beta = -400, .distance = 4 * ONE_PLY}, 600);
        node.position_class = position_class;
        EXPECT_GE(*AdaptiveNullMove(node), -400);
        return search.search().nodes;
    };
    EXPECT_GT(nodes(middle_game, 4 * ONE_PLY), nodes(middle_game, 4 * ONE_PLY + 1)) << "from this distance on";
    EXPECT_GT(nodes(balanced_ending, 4 * ONE_PLY + 1), nodes(middle_game, 4 * ONE_PLY + 1)) << "in an ending at any";
}

/// Whoever moves his king here loses his pawn, and a pass proves nothing: the verification finds out.
TEST(NullMove, IsNotBelievedWhereMovingIsTheTrouble) {
    const auto answer = [](Distance verification) {
        TournamentBuilder search("8/8/8/4pK2/3kP3/8/8/8 w - - 0 1", {.null_move_distance = 64,
                                                                     .null_move_reduction = 64,
                                                                     .null_move_growth = 0,
                                                                     .null_move_margin_limit = 0,
                                                                     .null_move_verification = verification,
                                                                     .null_move_pieces = 0});
        TournamentNode node = search.NodeAt({.beta = -50, .distance = 6 * ONE_PLY}, 0);
        node.position_class = middle_game;  // an ending is always verified
        return AdaptiveNullMove(node);
    };
    EXPECT_EQ(answer(64000), NodeAnswer(-50));
    EXPECT_FALSE(answer(0));
}

// --- Internal reduction ---

struct ReductionRow {
    std::string_view name;
    bool reduces;
    std::function<void(TournamentBuilder&, TournamentNode&)> change;
};
std::ostream& operator<<(std::ostream& out, const ReductionRow& row) { return out << row.name; }

class InternalReductions : public testing::TestWithParam<ReductionRow> {};

TEST_P(InternalReductions, TakeTheAmountOnce) {
    TournamentBuilder search(even_fen, {.internal_reduction_distance = 256, .internal_reduction_amount = 40});
    TournamentNode node = search.NodeAt({.distance = 256});
    GetParam().change(search, node);
    const Distance before = node.distance;
    InternalReduction(node);
    EXPECT_EQ(node.distance, GetParam().reduces ? before - 40 : before);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tournament, InternalReductions, testing::Values(
    ReductionRow{"at its distance", true, [](TournamentBuilder&, TournamentNode&) {}},
    ReductionRow{"farther away", true, [](TournamentBuilder&, TournamentNode& n) { n.distance = 1000; }},
    ReductionRow{"too near", false, [](TournamentBuilder&, TournamentNode& n) { n.distance = 255; }},
    ReductionRow{"switched off", false, [](TournamentBuilder& b, TournamentNode&) { b.rules().internal_reduction = 0; }},
    ReductionRow{"with a hash move", false, [](TournamentBuilder& b, TournamentNode& n) { n.hash_move = b.MoveNamed("a2a3"); }},
    ReductionRow{"a move is excluded", false, [](TournamentBuilder& b, TournamentNode& n) { const_cast<Move&>(n.excluded) = b.MoveNamed("a2a3"); }},
    ReductionRow{"principal too", true, [](TournamentBuilder&, TournamentNode& n) { n.type = NodeType::principal; }}),
    RowName<ReductionRow>);
// clang-format on

}  // namespace
