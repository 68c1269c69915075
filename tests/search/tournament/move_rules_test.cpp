// What the tournament search does with a single move: reduces it, prunes it, extends it.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include "search/tournament/check_extension.h"
#include "search/tournament/late_move_reduction.h"
#include "search/tournament/move_pruning.h"
#include "search/tournament/singular_extension.h"
#include "search/tournament/tournament_order.h"
#include "support/row_name.h"
#include "support/tournament_builder.h"

namespace {

using tournament::ForPlies;
using tournament::HistoryScore;
using tournament::MoveOrder;
using tournament::Pruning;
using tournament::TournamentNode;

/// White is on move. a2a3 is quiet, d4d5 too, c4d5 takes a pawn.
constexpr std::string_view even_fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";
/// d1d8 is a sound check, a1a7 takes a pawn that is protected, d1d7 puts the queen where a bishop takes it.
constexpr std::string_view sharp_fen = "2b3k1/p4ppp/8/2b5/8/8/5PPP/R2Q2K1 w - - 0 1";

// --- Late move reduction ---

class Reductions : public testing::Test {
  protected:
    static constexpr TournamentSettings numbers{.late_move_reduction_base = 60,
                                                .late_move_reduction_factor = 40,
                                                .cut_node_reduction = 10,
                                                .worsening_reduction = 9,
                                                .killer_relief = 13,
                                                .check_relief = 17,
                                                .capture_relief = 19,
                                                .history_relief = 23};

    /// An all node of a side that improves: nothing is added to what the table says.
    [[nodiscard]] TournamentNode Late(int plies = 8, int moves = 12) {
        TournamentNode node = search_.NodeAt({.distance = plies * ONE_PLY, .type = NodeType::all});
        node.moves_tried = moves;
        node.is_improving = true;
        return node;
    }
    [[nodiscard]] Distance FromTable(int plies = 8, int moves = 12) { return search_.state->Reduction(plies, moves); }
    [[nodiscard]] static Distance Of(const TournamentNode& node, Move move, int history = 0) {
        return LateMoveReductionOf(node, move, history);
    }

    TournamentBuilder search_{even_fen, numbers};
    Move quiet_ = search_.MoveNamed("a2a3");
};

TEST_F(Reductions, AreThoseOfTheTableIfNothingIsSpecial) {
    for (int plies = 2; plies < 30; ++plies) {
        for (int moves = 2; moves < 70; ++moves) {
            const Distance expected = std::clamp(FromTable(plies, moves), 0, (plies - 1) * ONE_PLY);
            ASSERT_EQ(Of(Late(plies, moves), quiet_), expected) << plies << ' ' << moves;
        }
    }
}

TEST_F(Reductions, GrowWithThePliesLeftAndTheNumberOfTheMove) {
    for (int plies = 2; plies < 30; ++plies) {
        for (int moves = 2; moves < 70; ++moves) {
            ASSERT_LE(Of(Late(plies, moves), quiet_), Of(Late(plies + 1, moves), quiet_)) << plies << ' ' << moves;
            ASSERT_LE(Of(Late(plies, moves), quiet_), Of(Late(plies, moves + 1), quiet_)) << plies << ' ' << moves;
        }
    }
    EXPECT_LT(Of(Late(4), quiet_), Of(Late(16), quiet_));
    EXPECT_LT(Of(Late(8, 4), quiet_), Of(Late(8, 16), quiet_));
}

TEST_F(Reductions, NeverTakeMoreThanIsThere) {
    search_.state->Prepare({.late_move_reduction_base = 256, .late_move_reduction_factor = 128});
    for (Distance distance = search_.rules().late_move_reduction_distance; distance < 10 * ONE_PLY; ++distance) {
        TournamentNode node = Late();
        node.distance = distance;
        ASSERT_EQ(Of(node, quiet_, -3 * HistoryScore::largest), std::max(distance - ONE_PLY, 0));
    }
}

TEST_F(Reductions, AreNeverNegative) {
    search_.state->Prepare({.late_move_reduction_base = -256, .history_relief = 256});
    EXPECT_EQ(Of(Late(), quiet_, 3 * HistoryScore::largest), 0);
}

TEST_F(Reductions, ChangeByOneNumberForEachReason) {
    const Distance plain = FromTable();
    const auto with = [&](const std::function<void(TournamentNode&)>& change) {
        TournamentNode node = Late();
        change(node);
        return node;
    };
    EXPECT_EQ(Of(Late(), quiet_), plain);
    EXPECT_EQ(Of(with([](TournamentNode& n) { n.type = NodeType::cut; }), quiet_), plain + 10);
    EXPECT_EQ(Of(with([](TournamentNode& n) { n.is_improving = false; }), quiet_), plain + 9);
    EXPECT_EQ(Of(with([](TournamentNode& n) { const_cast<bool&>(n.in_check) = true; }), quiet_), plain - 17);
    EXPECT_EQ(Of(Late(), quiet_ | direct_check_bit), plain - 17);
    EXPECT_EQ(Of(Late(), quiet_ | discovered_check_bit), plain - 17);
    EXPECT_EQ(Of(Late(), search_.MoveNamed("c4d5")), plain - 19);
    EXPECT_EQ(Of(Late(), search_.MoveNamed("c4d5"), HistoryScore::largest), plain - 19)
        << "histories are of quiet moves";
    EXPECT_EQ(Of(Late(), quiet_, HistoryScore::largest), plain - 23);
    EXPECT_EQ(Of(Late(), quiet_, -HistoryScore::largest), plain + 23);
    search_.search().killers[0] = {.first = quiet_, .second = INVALID};
    EXPECT_EQ(Of(Late(), quiet_), plain - 13);
    search_.search().killers[0] = {.first = INVALID, .second = quiet_};
    EXPECT_EQ(Of(Late(), quiet_), plain - 13);
    search_.search().killers[0] = {.first = search_.MoveNamed("a2a4"), .second = search_.MoveNamed("h2h3")};
    EXPECT_EQ(Of(Late(), quiet_), plain);
}

struct NoReductionRow {
    std::string_view name;
    bool reduces;
    std::function<void(TournamentBuilder&, TournamentNode&)> change;
};
std::ostream& operator<<(std::ostream& out, const NoReductionRow& row) { return out << row.name; }

class ReductionGates : public Reductions, public testing::WithParamInterface<NoReductionRow> {};

TEST_P(ReductionGates, Hold) {
    TournamentNode node = Late();
    GetParam().change(search_, node);
    EXPECT_EQ(Of(node, quiet_) > 0, GetParam().reduces);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tournament, ReductionGates, testing::Values(
    NoReductionRow{"as it stands", true, [](TournamentBuilder&, TournamentNode&) {}},
    NoReductionRow{"switched off", false, [](TournamentBuilder& b, TournamentNode&) { b.rules().late_move_reduction = 0; }},
    NoReductionRow{"at its distance", true, [](TournamentBuilder& b, TournamentNode& n) { b.rules().late_move_reduction_distance = n.distance; }},
    NoReductionRow{"too near", false, [](TournamentBuilder& b, TournamentNode& n) { b.rules().late_move_reduction_distance = n.distance + 1; }},
    NoReductionRow{"second move", true, [](TournamentBuilder&, TournamentNode& n) { n.moves_tried = 2; }},
    NoReductionRow{"first move", false, [](TournamentBuilder&, TournamentNode& n) { n.moves_tried = 1; }},
    NoReductionRow{"principal too", true, [](TournamentBuilder&, TournamentNode& n) { n.type = NodeType::principal; n.moves_tried = 2; }}),
    RowName<NoReductionRow>);
// clang-format on

// --- Pruning of moves ---

/// Each row switches on what it is about; all else is off.
constexpr TournamentSettings no_pruning{.futility = 0,
                                        .late_move_pruning = 0,
                                        .loss_pruning = 0,
                                        .history_pruning = 0,
                                        .late_move_reduction_base = 0,
                                        .late_move_reduction_factor = 0};

struct PruningRow {
    std::string_view name;
    bool prunes;
    std::function<void(TournamentBuilder&, TournamentNode&)> change;
    std::string_view move = "a2a3";
    int history = 0;
    std::string_view fen = even_fen;
};
std::ostream& operator<<(std::ostream& out, const PruningRow& row) { return out << row.name; }

class MoveIsPruned : public testing::TestWithParam<PruningRow> {};

/// The tenth move of a cut node two plies from the horizon, which stands at beta.
TEST_P(MoveIsPruned, ByItsRule) {
    const PruningRow& row = GetParam();
    TournamentBuilder search(row.fen, no_pruning);
    TournamentNode node = search.NodeAt({.distance = 2 * ONE_PLY});
    node.moves_tried = 10;
    node.best = -100;
    row.change(search, node);
    EXPECT_EQ(PruningOf(node, search.MoveNamed(row.move), row.history) != Pruning::none, row.prunes);
}

void Late(TournamentBuilder& b, TournamentNode& n) {
    b.rules().late_move_pruning = 1;
    b.rules().late_move_pruning_distance = 2 * ONE_PLY;
    b.rules().late_move_pruning_base = 3;
    b.rules().late_move_pruning_share = 100;
    n.moves_tried = 3 + 4 + 1;
}
void Futile(TournamentBuilder& b, TournamentNode& n) {
    b.rules().futility = 1;
    b.rules().futility_distance = 2 * ONE_PLY;
    b.rules().futility_base = 70;
    b.rules().futility_margin = 50;
    n.estimate = n.beta - 70 - 2 * 50 - 1;
}
void Failed(TournamentBuilder& b, TournamentNode& /*n*/) {
    b.rules().history_pruning = 1;
    b.rules().history_pruning_distance = 2 * ONE_PLY;
    b.rules().history_pruning_limit = 1000;
}
void Losing(TournamentBuilder& b, TournamentNode& /*n*/) {
    b.rules().loss_pruning = 1;
    b.rules().loss_pruning_distance = 2 * ONE_PLY;
    b.rules().quiet_loss_margin = 1020 / 2 - 1;
    b.rules().capture_loss_margin = 400 / 2 - 1;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(LateMoves, MoveIsPruned, testing::Values(
    PruningRow{"nothing is switched on", false, [](TournamentBuilder&, TournamentNode& n) { n.moves_tried = 60; n.estimate = n.beta - 3000; }, "a2a3", -50000},
    PruningRow{"late", true, Late},
    PruningRow{"a move earlier", false, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); --n.moves_tried; }},
    PruningRow{"the last of half the share", false, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); b.rules().late_move_pruning_share = 50; n.moves_tried = 5; }},
    PruningRow{"after half the share", true, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); b.rules().late_move_pruning_share = 50; n.moves_tried = 6; }},
    PruningRow{"improving", false, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); n.is_improving = true; }},
    PruningRow{"improving, the last of twice as many", false, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); n.is_improving = true; n.moves_tried = 14; }},
    PruningRow{"improving, after twice as many", true, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); n.is_improving = true; n.moves_tried = 15; }},
    PruningRow{"too far", false, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); n.distance += 1; }},
    PruningRow{"captures stay", false, Late, "c4d5"},
    PruningRow{"checks stay", false, [](TournamentBuilder& b, TournamentNode& n) { Late(b, n); n.moves_tried = 60; }, "d1d8", 0, sharp_fen}),
    RowName<PruningRow>);
INSTANTIATE_TEST_SUITE_P(Futility, MoveIsPruned, testing::Values(
    PruningRow{"futile", true, Futile},
    PruningRow{"margin just reached", false, [](TournamentBuilder& b, TournamentNode& n) { Futile(b, n); ++n.estimate; }},
    PruningRow{"too far", false, [](TournamentBuilder& b, TournamentNode& n) { Futile(b, n); b.rules().futility_distance = 2 * ONE_PLY - 1; }},
    PruningRow{"captures stay", false, [](TournamentBuilder& b, TournamentNode& n) { Futile(b, n); n.estimate -= 3000; }, "c4d5"},
    PruningRow{"checks stay", false, [](TournamentBuilder& b, TournamentNode& n) { Futile(b, n); n.estimate -= 3000; }, "d1d8", 0, sharp_fen},
    PruningRow{"by the distance that a late move is left with", true, [](TournamentBuilder& b, TournamentNode& n) {
        auto with = b.rules(); with.late_move_reduction_base = 2 * ONE_PLY; b.state->Prepare(with);
        Futile(b, n); b.rules().futility_distance = 0; n.estimate = n.beta - 71; }},
    PruningRow{"by that distance, margin just reached", false, [](TournamentBuilder& b, TournamentNode& n) {
        auto with = b.rules(); with.late_move_reduction_base = 2 * ONE_PLY; b.state->Prepare(with);
        Futile(b, n); b.rules().futility_distance = 0; n.estimate = n.beta - 70; }}),
    RowName<PruningRow>);
INSTANTIATE_TEST_SUITE_P(History, MoveIsPruned, testing::Values(
    PruningRow{"has failed elsewhere", true, Failed, "a2a3", -3001},
    PruningRow{"has failed a little less", false, Failed, "a2a3", -3000},
    PruningRow{"has done well", false, Failed, "a2a3", 3001},
    PruningRow{"too far", false, [](TournamentBuilder& b, TournamentNode& n) { Failed(b, n); n.distance += 1; }, "a2a3", -30000},
    PruningRow{"captures stay", false, Failed, "c4d5", -30000},
    PruningRow{"checks stay", false, Failed, "d1d8", -30000, sharp_fen}),
    RowName<PruningRow>);
INSTANTIATE_TEST_SUITE_P(Losses, MoveIsPruned, testing::Values(
    PruningRow{"a quiet move loses the queen", true, Losing, "d1d7", 0, sharp_fen},
    PruningRow{"not more than the margin", false, [](TournamentBuilder& b, TournamentNode& n) { Losing(b, n); ++b.rules().quiet_loss_margin; }, "d1d7", 0, sharp_fen},
    PruningRow{"too far", false, [](TournamentBuilder& b, TournamentNode& n) { Losing(b, n); ++n.distance; }, "d1d7", 0, sharp_fen},
    PruningRow{"a capture loses rook for pawn", true, Losing, "a1a7", 0, sharp_fen},
    PruningRow{"a capture not more than its margin", false, [](TournamentBuilder& b, TournamentNode& n) { Losing(b, n); ++b.rules().capture_loss_margin; }, "a1a7", 0, sharp_fen},
    PruningRow{"a quiet move that loses nothing", false, Losing, "a1b1", 0, sharp_fen},
    PruningRow{"a check that loses nothing", false, Losing, "d1d8", 0, sharp_fen}),
    RowName<PruningRow>);
// clang-format on

/// Whatever is switched on, some moves always stay.
struct KeptRow {
    std::string_view name;
    bool prunes;
    std::function<void(TournamentBuilder&, TournamentNode&)> change;
};
std::ostream& operator<<(std::ostream& out, const KeptRow& row) { return out << row.name; }

class KeptMoves : public testing::TestWithParam<KeptRow> {};

TEST_P(KeptMoves, AreNeverPruned) {
    for (const auto& rule : {&Late, &Futile, &Failed, &Losing}) {
        TournamentBuilder search(sharp_fen, no_pruning);
        TournamentNode node = search.NodeAt({.distance = 2 * ONE_PLY});
        node.best = -100;
        rule(search, node);
        node.moves_tried = 60;
        GetParam().change(search, node);
        EXPECT_EQ(PruningOf(node, search.MoveNamed("d1d7"), -30000) != Pruning::none, GetParam().prunes);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tournament, KeptMoves, testing::Values(
    KeptRow{"as it stands", true, [](TournamentBuilder&, TournamentNode&) {}},
    KeptRow{"second move", true, [](TournamentBuilder& b, TournamentNode& n) { if (b.rules().late_move_pruning == 0) n.moves_tried = 2; }},
    KeptRow{"first move", false, [](TournamentBuilder&, TournamentNode& n) { n.moves_tried = 1; }},
    KeptRow{"in check", false, [](TournamentBuilder&, TournamentNode& n) { const_cast<bool&>(n.in_check) = true; }},
    KeptRow{"being mated", false, [](TournamentBuilder&, TournamentNode& n) { n.best = -mate_score_limit; }},
    KeptRow{"nothing tried yet", false, [](TournamentBuilder&, TournamentNode& n) { n.best = best_score_start; }},
    KeptRow{"the worst that is no mate", true, [](TournamentBuilder&, TournamentNode& n) { n.best = -mate_score_limit + 1; }},
    KeptRow{"principal", true, [](TournamentBuilder&, TournamentNode& n) { n.type = NodeType::principal; }},
    KeptRow{"all node", true, [](TournamentBuilder&, TournamentNode& n) { n.type = NodeType::all; }}),
    RowName<KeptRow>);
// clang-format on

/// What passes for one late or futile move passes for those after it; a bad history is the move's own.
TEST(PruningOfMoves, TellsWhetherTheOtherQuietMovesGoToo) {
    for (const auto& [rule, pruning] :
         {std::pair{&Late, Pruning::quiet_moves}, std::pair{&Futile, Pruning::quiet_moves},
          std::pair{&Failed, Pruning::this_move}}) {
        TournamentBuilder search(even_fen, no_pruning);
        TournamentNode node = search.NodeAt({.distance = 2 * ONE_PLY});
        node.best = -100;
        rule(search, node);
        node.moves_tried = 60;
        EXPECT_EQ(PruningOf(node, search.MoveNamed("a2a3"), -30000), pruning);
    }
}

TEST(MoveOrderOfTournament, LeavesOutQuietMovesOnceToldTo) {
    TournamentBuilder search(even_fen, no_pruning);
    TournamentNode node = search.NodeAt({.distance = 2 * ONE_PLY});
    MoveOrder order(node);
    Move move = INVALID;
    ASSERT_FALSE(order.Next(move));
    order.LeaveOutQuietMoves();
    for (;;) {
        ASSERT_FALSE(order.Next(move));
        if (move == INVALID) break;
        EXPECT_NE(move & tactical_bits, 0U);
    }
}

TEST(LosesMoreThan, CountsWhatCanBeTakenOnTheSquare) {
    TournamentBuilder search(sharp_fen);
    const TournamentNode node = search.NodeAt({});
    EXPECT_TRUE(LosesMoreThan(node, search.MoveNamed("d1d7"), 1019));
    EXPECT_FALSE(LosesMoreThan(node, search.MoveNamed("d1d7"), 1020));
    EXPECT_TRUE(LosesMoreThan(node, search.MoveNamed("a1a7"), 399));
    EXPECT_FALSE(LosesMoreThan(node, search.MoveNamed("a1a7"), 400));
    EXPECT_FALSE(LosesMoreThan(node, search.MoveNamed("d1d8"), 0));
    EXPECT_FALSE(LosesMoreThan(node, search.MoveNamed("g1h1"), 0)) << "a king is never taken";
}

// --- Check extension ---

struct CheckRow {
    std::string_view name;
    std::string_view move;
    bool extends;
    Distance distance = ONE_PLY;
    std::string_view fen = sharp_fen;
};
std::ostream& operator<<(std::ostream& out, const CheckRow& row) { return out << row.name; }

class CheckExtensions : public testing::TestWithParam<CheckRow> {};

TEST_P(CheckExtensions, AreForChecksThatLoseNothing) {
    const CheckRow& row = GetParam();
    TournamentBuilder search(row.fen, {.check_extension = 33});
    const TournamentNode node = search.NodeAt({.distance = row.distance});
    EXPECT_EQ(CheckExtension(node, search.MoveNamed(row.move)), row.extends ? 33 : 0);
    search.rules().check_extension = 0;
    EXPECT_EQ(CheckExtension(node, search.MoveNamed(row.move)), 0);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tournament, CheckExtensions, testing::Values(
    CheckRow{"sound check", "d1d8", true},
    CheckRow{"far away", "d1d8", true, 20 * ONE_PLY},
    CheckRow{"nearest distance", "d1d8", true, 1},
    CheckRow{"at the horizon", "d1d8", false, 0},
    CheckRow{"below the horizon", "d1d8", false, -ONE_PLY},
    CheckRow{"no check", "d1b1", false},
    CheckRow{"no check that loses the queen", "d1d7", false},
    CheckRow{"check that loses a rook", "a1e1", false, ONE_PLY, "4k3/8/8/8/7b/8/8/R5K1 w - - 0 1"},
    CheckRow{"check that offers an exchange", "h5e5", true, ONE_PLY, "4k3/8/8/3r3R/5P2/8/8/6K1 w - - 0 1"},
    CheckRow{"discovered check", "e4d5", true, ONE_PLY, "4k3/8/8/3p4/4P3/8/8/4R1K1 w - - 0 1"}),
    RowName<CheckRow>);
// clang-format on

// --- Singular extension ---

/// c4d5 wins a knight that every other move leaves alone.
constexpr std::string_view singular_fen = "4k3/pp4pp/8/3n4/2P5/8/PP4PP/4K3 w - - 0 1";

class SingularExtensions : public testing::Test {
  protected:
    static constexpr TournamentSettings numbers{
        .singular_extension = 44, .singular_distance = 448, .singular_margin = 2};

    /// A node whose entry says that c4d5 wins the knight.
    [[nodiscard]] TournamentNode WithHashMove() {
        TournamentNode node = search_.NodeAt({.beta = 150, .distance = 448});
        node.hash_move = capture_;
        node.hash_lower_bound = 150;
        node.hash_lower_distance = 448;
        return node;
    }

    /// What the hash move of a node that goes on is extended by.
    [[nodiscard]] static Distance Extension(TournamentNode& node) {
        EXPECT_FALSE(SingularExtension(node));
        return node.hash_move_extension;
    }

    TournamentBuilder search_{singular_fen, numbers};
    Move capture_ = search_.MoveNamed("c4d5");
};

TEST_F(SingularExtensions, AreForTheHashMoveThatAloneIsGood) {
    TournamentNode node = WithHashMove();
    EXPECT_EQ(Extension(node), 44);
}

TEST_F(SingularExtensions, AreNotForOneOfSeveralGoodMoves) {
    TournamentNode node = WithHashMove();
    node.hash_lower_bound = -2000;
    EXPECT_EQ(Extension(node), 0);
    EXPECT_GT(search_.search().nodes, 0U) << "the others were searched";
}

/// The knight stays, but the other moves are good enough for this beta too.
TEST_F(SingularExtensions, EndTheNodeIfAnotherMoveIsAtLeastBetaAsWell) {
    for (const auto& [beta, multi_cut, cuts] :
         {std::tuple{-2000, 1, true}, std::tuple{-2000, 0, false}, std::tuple{150, 1, false}}) {
        TournamentNode node = search_.NodeAt({.beta = beta, .distance = 448});
        search_.rules().multi_cut = multi_cut;
        node.hash_move = capture_;
        node.hash_lower_bound = -1900;
        node.hash_lower_distance = 448;
        const NodeAnswer answer = SingularExtension(node);
        EXPECT_EQ(static_cast<bool>(answer), cuts) << beta << ' ' << multi_cut;
        if (cuts) {
            EXPECT_EQ(*answer, -1900 - ForPlies(search_.rules().singular_margin, 448));
        }
        EXPECT_EQ(node.hash_move_extension, 0);
    }
}

TEST_F(SingularExtensions, LeaveEverythingAsItWas) {
    for (const Score bound : {150, -2000}) {
        TournamentNode node = WithHashMove();
        node.hash_lower_bound = bound;
        static_cast<void>(SingularExtension(node));
        for (const Move excluded : search_.state->excluded) EXPECT_EQ(excluded, INVALID);
        EXPECT_EQ(FenOf(search_.board()), singular_fen);
        EXPECT_EQ(search_.board().ply, 0U);
        EXPECT_EQ(node.hash_move, capture_);
        EXPECT_EQ(node.distance, 448);
    }
}

/// What is found without a move says nothing about the position.
TEST_F(SingularExtensions, StoreNothingOfTheSearchWithoutTheMove) {
    TournamentNode node = WithHashMove();
    static_cast<void>(SingularExtension(node));
    EXPECT_EQ(search_.classic.tables.transposition.Find(search_.board().key()), nullptr);
}

/// The king in the corner has one move; without it nothing is left.
TEST(SingularExtension, IsForTheOnlyMove) {
    TournamentBuilder search("7k/6p1/8/8/8/8/r7/7K w - - 0 1", {.singular_extension = 44, .singular_distance = 448});
    ASSERT_EQ(LegalMovesOf(search.board()).size(), 1U);
    TournamentNode node = search.NodeAt({.beta = -50, .distance = 448});
    node.hash_move = LegalMovesOf(search.board()).front();
    node.hash_lower_bound = -50;
    node.hash_lower_distance = 448;
    EXPECT_FALSE(SingularExtension(node));
    EXPECT_EQ(node.hash_move_extension, 44);
}

struct SingularRow {
    std::string_view name;
    bool asks;
    std::function<void(TournamentBuilder&, TournamentNode&)> change;
};
std::ostream& operator<<(std::ostream& out, const SingularRow& row) { return out << row.name; }

class SingularGates : public SingularExtensions, public testing::WithParamInterface<SingularRow> {};

TEST_P(SingularGates, Hold) {
    TournamentNode node = WithHashMove();
    GetParam().change(search_, node);
    static_cast<void>(SingularExtension(node));
    EXPECT_EQ(search_.search().nodes > 0, GetParam().asks);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Tournament, SingularGates, testing::Values(
    SingularRow{"as it stands", true, [](TournamentBuilder&, TournamentNode&) {}},
    SingularRow{"principal", true, [](TournamentBuilder&, TournamentNode& n) { n.type = NodeType::principal; }},
    SingularRow{"switched off", false, [](TournamentBuilder& b, TournamentNode&) { b.rules().singular_extension = 0; }},
    SingularRow{"too near", false, [](TournamentBuilder&, TournamentNode& n) { n.distance = 447; }},
    SingularRow{"no hash move", false, [](TournamentBuilder&, TournamentNode& n) { n.hash_move = INVALID; }},
    SingularRow{"itself without a move", false, [](TournamentBuilder& b, TournamentNode& n) { const_cast<Move&>(n.excluded) = b.MoveNamed("a2a3"); }},
    SingularRow{"entry three plies shallower", true, [](TournamentBuilder&, TournamentNode& n) { n.hash_lower_distance = 448 - 192; }},
    SingularRow{"entry too shallow", false, [](TournamentBuilder&, TournamentNode& n) { n.hash_lower_distance = 448 - 193; }},
    SingularRow{"no lower bound", false, [](TournamentBuilder&, TournamentNode& n) { n.hash_lower_distance = no_distance; n.hash_lower_bound = -infinity_bound; }},
    SingularRow{"a mate", false, [](TournamentBuilder&, TournamentNode& n) { n.hash_lower_bound = mate_score_limit; }},
    SingularRow{"being mated", false, [](TournamentBuilder&, TournamentNode& n) { n.hash_lower_bound = -mate_score_limit; }},
    SingularRow{"almost a mate", true, [](TournamentBuilder&, TournamentNode& n) { n.hash_lower_bound = mate_score_limit - 1; }}),
    RowName<SingularRow>);
// clang-format on

TEST_F(SingularExtensions, AreNotForLongLines) {
    search_.search().iteration_depth = 1;
    for (const std::string_view move : {"a2a3", "a7a6", "a3a4"}) search_.Make(move);
    TournamentNode node = search_.NodeAt({.beta = 150, .distance = 448});
    node.hash_move = search_.MoveNamed("d5f6");
    node.hash_lower_bound = 150;
    node.hash_lower_distance = 448;
    static_cast<void>(SingularExtension(node));
    EXPECT_EQ(search_.search().nodes, 0U);
    search_.search().iteration_depth = 2;
    static_cast<void>(SingularExtension(node));
    EXPECT_GT(search_.search().nodes, 0U);
}

}  // namespace
