// Razoring, futility and the reduction of late moves: each gate with a node that just passes and one that just does
// not.

#include "search/node/pruning.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

/// White is on move, in a middle game with even material.
constexpr std::string_view even_fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";

/// What a row changes before the step is called.
using Change = std::function<void(Node& node)>;

class Gates : public testing::Test {
  protected:
    /// A node off the principal variation that lacks `lead` centipawns of what is asked.
    [[nodiscard]] Node Lacking(Score lead, Distance distance) {
        Node node = search_.NodeAt(search_.board->board.frame().material_balance + lead, distance);
        node.type = NodeType::cut;
        node.child_flags = ChildFlags::none;
        return node;
    }

    SearchBuilder search_{even_fen};
};

// --- Limited razoring ---

TEST_F(Gates, RazoringTakesOnePlyAndKeepsTheAmount) {
    Node node = Lacking(1021, 140);
    SelectiveGates(node);
    EXPECT_EQ(node.distance, 76);
    EXPECT_EQ(node.razored, 64);
}

TEST_F(Gates, RazoringToAFixedDistance) {
    search_.settings.limited_razoring_reduction_independent_of_current_distance = true;
    Node node = Lacking(1021, 140);
    SelectiveGates(node);
    EXPECT_EQ(node.distance, 112);
    EXPECT_EQ(node.razored, 28);
}

struct GateRow {
    std::string_view name;
    bool passes;
    Change change;
};
std::ostream& operator<<(std::ostream& out, const GateRow& row) { return out << row.name; }

class RazoringGates : public Gates, public testing::WithParamInterface<GateRow> {};

TEST_P(RazoringGates, Hold) {
    Node node = Lacking(1021, 140);
    GetParam().change(node);
    const Distance before = node.distance;
    SelectiveGates(node);
    EXPECT_EQ(node.distance != before, GetParam().passes);
    EXPECT_EQ(node.razored, before - node.distance);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pruning, RazoringGates, testing::Values(
    GateRow{"as it stands", true, [](Node&) {}},
    GateRow{"shortest distance", true, [](Node& n) { n.distance = 129; }},
    GateRow{"too short", false, [](Node& n) { n.distance = 128; }},
    GateRow{"longest distance", true, [](Node& n) { n.distance = 208; }},
    GateRow{"too long", false, [](Node& n) { n.distance = 209; }},
    GateRow{"switched off", false, [](Node& n) { n.search.settings.enable_limited_razoring_if_not_searching_pv_move = false; }},
    GateRow{"principal variation", false, [](Node& n) { n.type = NodeType::principal; }},
    GateRow{"principal variation, switched on", true, [](Node& n) {
        n.type = NodeType::principal; n.search.settings.enable_limited_razoring_if_searching_pv_move = true; }},
    GateRow{"told not to", false, [](Node& n) { n.child_flags = ChildFlags::no_limited_razoring; }},
    GateRow{"told something else", true, [](Node& n) { n.child_flags = ChildFlags::no_extended_futility | NextPly(ChildFlags::no_limited_razoring); }},
    GateRow{"margin just reached", false, [](Node& n) { n.search.settings.limited_razoring_margin = 1021; }},
    GateRow{"seven pieces are enough", true, [](Node& n) { n.search.settings.minimum_enemy_pieces_left_for_limited_razoring = 8; }},
    GateRow{"eight would not be", false, [](Node& n) { n.search.settings.minimum_enemy_pieces_left_for_limited_razoring = 9; }},
    GateRow{"a threat", false, [](Node& n) { n.flags = NodeFlags::pin_threat; }},
    GateRow{"no queen attacked is no threat", true, [](Node& n) { n.flags = NodeFlags::queen_not_attacked; }},
    GateRow{"a threat that does not count", true, [](Node& n) {
        n.flags = NodeFlags::mate_threat; n.search.settings.disable_selective_techniques_if_threats_exist = false; }},
    GateRow{"simple ending by the parent's class", false, [](Node& n) { const_cast<int&>(n.parent_class) = rook_ending; }},
    GateRow{"the last of the simple endings", false, [](Node& n) { const_cast<int&>(n.parent_class) = pawnless; }},
    GateRow{"balanced ending is not simple", true, [](Node& n) { const_cast<int&>(n.parent_class) = balanced_ending; }},
    GateRow{"unbalanced ending is not simple", true, [](Node& n) { const_cast<int&>(n.parent_class) = unbalanced_ending; }},
    GateRow{"simple ending by the node's own class does not count", true, [](Node& n) { n.position_class = rook_ending; }},
    GateRow{"simple endings searched as others", true, [](Node& n) {
        const_cast<int&>(n.parent_class) = rook_ending; n.search.settings.disable_selective_techniques_if_searching_simple_endgames = false; }}),
    RowName<GateRow>);
// clang-format on

TEST_F(Gates, RazoringLeavesOutWhoSearchesForMate) {
    for (const bool skip : {true, false}) {
        search_.settings.skip_limited_razoring_if_searching_for_mate = skip;
        Node node = Lacking(0, 140);
        const_cast<Score&>(node.beta) = 31767;
        SelectiveGates(node);
        EXPECT_EQ(node.razored != 0, !skip);
        Node no_mate = Lacking(0, 140);
        const_cast<Score&>(no_mate.beta) = 31766;
        SelectiveGates(no_mate);
        EXPECT_NE(no_mate.razored, 0);
    }
}

// --- Futility ---

struct FutilityRow {
    std::string_view name;
    Distance distance;
    Score lead;  ///< that is lacking
    bool is_futile;
    Score margin;  ///< of the base, if it is
    Change change = [](Node&) {};
};
std::ostream& operator<<(std::ostream& out, const FutilityRow& row) { return out << row.name; }

class FutilityGates : public Gates, public testing::WithParamInterface<FutilityRow> {};

TEST_P(FutilityGates, Hold) {
    const FutilityRow& row = GetParam();
    Node node = Lacking(row.lead, row.distance);
    row.change(node);
    SelectiveGates(node);
    EXPECT_EQ(node.is_futile, row.is_futile);
    if (row.is_futile) {
        EXPECT_EQ(node.futility_base, node.material_balance() + row.margin);
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pruning, FutilityGates, testing::Values(
    FutilityRow{"quiescence", 0, 301, true, 300},
    FutilityRow{"quiescence, margin just reached", 0, 300, false, 0},
    FutilityRow{"quiescence in spite of a threat", -100, 301, true, 300, [](Node& n) { n.flags = NodeFlags::pin_threat; }},
    FutilityRow{"quiescence in a simple ending", 0, 301, true, 300, [](Node& n) { const_cast<int&>(n.parent_class) = rook_ending; }},
    FutilityRow{"quiescence, switched off", 0, 301, false, 0, [](Node& n) { n.search.settings.enable_futility_pruning_if_not_searching_pv_move = false; }},
    FutilityRow{"quiescence, principal variation", 0, 301, false, 0, [](Node& n) { n.type = NodeType::principal; }},
    FutilityRow{"quiescence, principal variation switched on", 0, 301, true, 300, [](Node& n) {
        n.type = NodeType::principal; n.search.settings.enable_futility_pruning_if_searching_pv_move = true; }},
    FutilityRow{"frontier", 64, 301, true, 300},
    FutilityRow{"frontier with a threat", 64, 301, false, 0, [](Node& n) { n.flags = NodeFlags::single_reply; }},
    FutilityRow{"one further is extended futility's", 65, 301, false, 0},
    FutilityRow{"extended futility", 65, 601, true, 600},
    FutilityRow{"extended futility, margin just reached", 65, 600, false, 0},
    FutilityRow{"extended futility, furthest", 137, 601, true, 600, [](Node& n) { n.search.settings.enable_limited_razoring_if_not_searching_pv_move = false; }},
    FutilityRow{"extended futility, too far", 138, 601, false, 0, [](Node& n) { n.search.settings.enable_limited_razoring_if_not_searching_pv_move = false; }},
    FutilityRow{"extended futility, told not to", 65, 601, false, 0, [](Node& n) { n.child_flags = ChildFlags::no_extended_futility; }},
    FutilityRow{"extended futility, switched off", 65, 601, false, 0, [](Node& n) { n.search.settings.enable_extended_futility_pruning_if_not_searching_pv_move = false; }},
    FutilityRow{"extended futility, principal variation", 65, 601, false, 0, [](Node& n) { n.type = NodeType::principal; }},
    FutilityRow{"extended futility, principal variation switched on", 65, 601, true, 600, [](Node& n) {
        n.type = NodeType::principal; n.search.settings.enable_extended_futility_pruning_if_searching_pv_move = true; }},
    FutilityRow{"extended futility after razoring, by the new distance", 140, 1021, true, 600},
    FutilityRow{"the later base replaces the one before", 65, 601, true, 300, [](Node& n) { n.search.settings.max_distance_for_futility_pruning = 65; }},
    FutilityRow{"the later base does not if it is no margin", 65, 601, true, 600, [](Node& n) {
        n.search.settings.max_distance_for_futility_pruning = 65; n.search.settings.futility_pruning_margin = 601; }}),
    RowName<FutilityRow>);
// clang-format on

TEST_F(Gates, FutilityCanLeaveOutWhoSearchesForMate) {
    const auto is_futile = [&](Distance distance) {
        Node node = Lacking(0, distance);
        const_cast<Score&>(node.beta) = 31767;
        SelectiveGates(node);
        return node.is_futile;
    };
    EXPECT_TRUE(is_futile(0));
    EXPECT_TRUE(is_futile(64));
    EXPECT_FALSE(is_futile(65)) << "extended futility leaves it out";
    search_.settings.skip_extended_futility_pruning_if_searching_for_mate = false;
    EXPECT_TRUE(is_futile(65));
    search_.settings.skip_futility_pruning_if_searching_for_mate = true;
    EXPECT_FALSE(is_futile(0));
    EXPECT_FALSE(is_futile(64));
}

// --- Futility of a move ---

struct MoveRow {
    std::string_view name;
    std::string_view fen;
    std::string_view move;
    Score gain;
    bool gives_check = false;
};
std::ostream& operator<<(std::ostream& out, const MoveRow& row) { return out << row.name; }

class FutileMoves : public testing::TestWithParam<MoveRow> {};

TEST_P(FutileMoves, AreThoseThatDoNotGainEnough) {
    const MoveRow& row = GetParam();
    SearchBuilder search(row.fen);
    const Move move = MoveOf(search.board->board, row.move);
    Node node = search.NodeAt(1000, 0);
    EXPECT_FALSE(IsFutile(node, move)) << "the node is not futile";
    node.is_futile = true;
    node.futility_base = 1000 - row.gain;
    EXPECT_FALSE(IsFutile(node, move)) << "just enough";
    node.futility_base = 1000 - row.gain - 1;
    EXPECT_EQ(IsFutile(node, move), !row.gives_check);
}

INSTANTIATE_TEST_SUITE_P(
    Pruning, FutileMoves,
    testing::Values(MoveRow{"quiet", even_fen, "a2a3", 0}, MoveRow{"pawn taken", even_fen, "c4d5", 100},
                    MoveRow{"knight taken", "4k3/8/8/3n4/4P3/8/8/4K3 w - - 0 1", "e4d5", 305},
                    MoveRow{"queen taken", "4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1", "e4d5", 1020},
                    MoveRow{"promotion to a queen", "8/P3k3/8/8/8/8/8/4K3 w - - 0 1", "a7a8", 920},
                    MoveRow{"promotion to a knight", "8/P3k3/8/8/8/8/8/4K3 w - - 0 1", "a7a8N", 205},
                    MoveRow{"promotion that takes", "1r6/P3k3/8/8/8/8/8/4K3 w - - 0 1", "a7b8", 1420},
                    MoveRow{"a check is never futile", "4k3/8/8/8/8/8/8/R3K3 w - - 0 1", "a1a8", 0, true}),
    RowName<MoveRow>);

// --- Late move reduction ---

class Reduction : public Gates {
  protected:
    /// The fourth move of a node that is deep enough.
    [[nodiscard]] Node Late() {
        Node node = Lacking(0, 192);
        node.moves_tried = 4;
        return node;
    }
    [[nodiscard]] Move MoveNamed(std::string_view text) { return MoveOf(search_.board->board, text); }
};

struct ReductionRow {
    std::string_view name;
    Distance reduction;
    Change change;
    std::string_view move = "a2a3";
};
std::ostream& operator<<(std::ostream& out, const ReductionRow& row) { return out << row.name; }

class ReductionGates : public Reduction, public testing::WithParamInterface<ReductionRow> {};

TEST_P(ReductionGates, Hold) {
    Node node = Late();
    GetParam().change(node);
    EXPECT_EQ(LateMoveReduction(node, MoveNamed(GetParam().move)), GetParam().reduction);
}

/// Deep, far down the list, after a capture that did not cut.
void MakeVeryLate(Node& node) {
    node.distance = 320;
    node.moves_tried = 8;
    node.hash_move = MoveOf(node.board(), "c4d5");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Pruning, ReductionGates, testing::Values(
    ReductionRow{"fourth move", 64, [](Node&) {}},
    ReductionRow{"captures too", 64, [](Node&) {}, "c4d5"},
    ReductionRow{"third move", 0, [](Node& n) { n.moves_tried = 3; }},
    ReductionRow{"too near", 0, [](Node& n) { n.distance = 191; }},
    ReductionRow{"switched off", 0, [](Node& n) { n.search.settings.enable_late_move_reduction = false; }},
    ReductionRow{"told not to", 0, [](Node& n) { n.child_flags = ChildFlags::no_late_move_reduction; }},
    ReductionRow{"its children are told not to", 64, [](Node& n) { n.child_flags = NextPly(ChildFlags::no_late_move_reduction); }},
    ReductionRow{"threat", 0, [](Node& n) { n.flags = NodeFlags::queen_attacked; }},
    ReductionRow{"threat, whatever the switch of the other techniques says", 0, [](Node& n) {
        n.flags = NodeFlags::queen_attacked; n.search.settings.disable_selective_techniques_if_threats_exist = false; }},
    ReductionRow{"principal variation", 0, [](Node& n) { n.type = NodeType::principal; }},
    ReductionRow{"principal variation that may", 64, [](Node& n) {
        n.type = NodeType::principal; n.search.settings.skip_late_move_reduction_if_in_principal_variation = false; }},
    ReductionRow{"extended", 0, [](Node& n) { n.extended = ExtensionCauses::rook_on_7th; }},
    ReductionRow{"extended by an earlier move of the node", 0, [](Node& n) { n.extended = ExtensionCauses::recapture; }},
    ReductionRow{"extended, and still", 64, [](Node& n) {
        n.extended = ExtensionCauses::recapture; n.search.settings.skip_late_move_reduction_if_extended = false; }},
    ReductionRow{"in check", 0, [](Node& n) { const_cast<bool&>(n.in_check) = true; }},
    ReductionRow{"amount", 50, [](Node& n) { n.search.settings.standard_late_move_reduction = 50; }},
    ReductionRow{"very late", 192, MakeVeryLate},
    ReductionRow{"very late, amount", 100, [](Node& n) { MakeVeryLate(n); n.search.settings.extended_late_move_reduction = 100; }},
    ReductionRow{"very late, switched off", 64, [](Node& n) { MakeVeryLate(n); n.search.settings.enable_extended_late_move_reduction = false; }},
    ReductionRow{"very late, a little too near", 64, [](Node& n) { MakeVeryLate(n); n.distance = 319; }},
    ReductionRow{"very late, seventh move", 64, [](Node& n) { MakeVeryLate(n); n.moves_tried = 7; }},
    ReductionRow{"very late, quiet hash move", 64, [](Node& n) { MakeVeryLate(n); n.hash_move = MoveOf(n.board(), "a2a4"); }},
    ReductionRow{"very late, no hash move", 64, [](Node& n) { MakeVeryLate(n); n.hash_move = INVALID; }},
    ReductionRow{"very late, a capture itself", 64, MakeVeryLate, "c4d5"},
    ReductionRow{"very late, gates of the reduction first", 0, [](Node& n) { MakeVeryLate(n); n.flags = NodeFlags::pin_threat; }}),
    RowName<ReductionRow>);
// clang-format on

TEST_F(Reduction, ChecksAreNeverReduced) {
    SearchBuilder search("4k3/8/8/8/8/8/P7/R3K3 w - - 0 1");
    Node node = search.NodeAt(0, 192);
    node.type = NodeType::all;
    node.child_flags = ChildFlags::none;
    node.moves_tried = 9;
    EXPECT_EQ(LateMoveReduction(node, MoveOf(search.board->board, "a2a3")), 64);
    EXPECT_EQ(LateMoveReduction(node, MoveOf(search.board->board, "e1e2")), 64);
    SearchBuilder check("4k3/8/8/8/8/8/8/R3K3 w - - 0 1");
    Node checking = check.NodeAt(0, 192);
    checking.type = NodeType::all;
    checking.child_flags = ChildFlags::none;
    checking.moves_tried = 9;
    EXPECT_EQ(LateMoveReduction(checking, MoveOf(check.board->board, "a1a8")), 0);
}

}  // namespace
