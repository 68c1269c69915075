#include "search/node/null_move.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

/// White, on move, is a knight up in a middle game.
constexpr std::string_view ahead_fen = "r1bq1rk1/pp2bppp/4pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";

class Pass : public testing::Test {
  protected:
    /// A node off the principal variation that asks for what White has on the board.
    [[nodiscard]] Node At(Distance distance, Score above_material = 0) {
        Node node = search_.NodeAt(material() + above_material, distance);
        node.type = NodeType::cut;
        node.child_flags = ChildFlags::none;
        return node;
    }
    [[nodiscard]] Score material() const { return search_.board->board.frame().material_balance; }
    /// The distance that the entry after the null move has; nothing if there is none.
    [[nodiscard]] std::optional<Distance> DistanceAfterPass() const {
        BOARD board = search_.board->board;
        board.MakeNullMove();
        Move move = INVALID;
        Distance distance = 0;
        if (!search_.tables.transposition.ProbeMove(board.key(), move, distance)) return std::nullopt;
        return distance;
    }
    /// Puts an answer after the null move: whatever is asked there, the side on move has `score` at any distance.
    void PlantAfterPass(Score score) {
        BOARD board = search_.board->board;
        board.MakeNullMove();
        TranspositionEntry entry = TranspositionEntry::Make(board.key(), LegalMovesOf(board).front(), true,
                                                            search_.board->position_class[0], NodeFlags::none);
        entry.lower_bound = entry.upper_bound = static_cast<std::int16_t>(score);
        entry.lower_distance = entry.upper_distance = 32000;
        search_.tables.transposition.Store(entry);
    }

    SearchBuilder search_{ahead_fen, {.min_ply_for_null_move = 0}};
};

TEST_F(Pass, CutsWhenPassingIsGoodEnough) {
    Node node = At(256, -200);
    const std::string fen = FenOf(search_.board->board);
    EXPECT_EQ(NullMove(node), node.beta);
    EXPECT_EQ(FenOf(search_.board->board), fen) << "the null move is undone";
    EXPECT_EQ(search_.board->board.ply, 0U);
    EXPECT_EQ(search_.board->moves_played[1], INVALID) << "a zero word marks it";
}

TEST_F(Pass, DoesNotCutWhenItIsNot) {
    Node node = At(256, 199);
    const std::string fen = FenOf(search_.board->board);
    EXPECT_EQ(NullMove(node), go_on);
    EXPECT_EQ(FenOf(search_.board->board), fen);
    EXPECT_GT(search_.board->nodes, 0U) << "it was tried";
}

/// A score of exactly beta after the pass is not enough, since the bound is -beta and not 1 - beta.
TEST_F(Pass, MustBeWorthOnePointMoreThanBetaToCut) {
    Node node = At(256);
    PlantAfterPass(-node.beta);
    EXPECT_EQ(NullMove(node), go_on);
    search_.tables.Clear();
    PlantAfterPass(-node.beta - 1);
    EXPECT_EQ(NullMove(node), node.beta);
}

/// The reduction is the whole step: the ply of the pass is not taken off on top of it.
TEST_F(Pass, StepIsTheReductionAlone) {
    search_.settings.min_distance_for_mate_threat_test = 64000;
    search_.settings.required_distance_to_store_hashtables = 1;
    Node node = At(256, 150);
    (void)NullMove(node);
    EXPECT_EQ(DistanceAfterPass(), 256 - 128);
}

TEST_F(Pass, ReductionDependsOnTheDistance) {
    search_.settings.min_distance_for_mate_threat_test = 64000;
    search_.settings.required_distance_to_store_hashtables = 1;
    search_.settings.min_null_move_search_reduction = 100;
    search_.settings.max_null_move_search_reduction = 230;
    search_.settings.null_move_reduction_critical_distance = 300;
    Node near = At(299, 150);
    (void)NullMove(near);
    EXPECT_EQ(DistanceAfterPass(), 199);
    search_.tables.Clear();
    Node far = At(300, 150);
    (void)NullMove(far);
    EXPECT_EQ(DistanceAfterPass(), 70);
}

// --- Gates ---

struct GateRow {
    std::string_view name;
    bool passes;
    std::function<void(Node& node)> change;
};
std::ostream& operator<<(std::ostream& out, const GateRow& row) { return out << row.name; }

class PassGates : public Pass, public testing::WithParamInterface<GateRow> {};

TEST_P(PassGates, Hold) {
    Node node = At(128);
    GetParam().change(node);
    (void)NullMove(node);
    EXPECT_EQ(search_.board->nodes > 0, GetParam().passes);
}

void SetBeta(Node& node, Score beta) { const_cast<Score&>(node.beta) = beta; }

// clang-format off
INSTANTIATE_TEST_SUITE_P(NullMove, PassGates, testing::Values(
    GateRow{"as it stands", true, [](Node&) {}},
    GateRow{"all node", true, [](Node& n) { n.type = NodeType::all; }},
    GateRow{"principal variation, never", false, [](Node& n) { n.type = NodeType::principal; }},
    GateRow{"told not to", false, [](Node& n) { n.child_flags = ChildFlags::no_null_move; }},
    GateRow{"threat", false, [](Node& n) { n.flags = NodeFlags::mate_threat; }},
    GateRow{"perpetual check is a threat", false, [](Node& n) { n.flags = NodeFlags::perpetual_threat; }},
    GateRow{"queen test without a find is none", true, [](Node& n) { n.flags = NodeFlags::queen_not_attacked; }},
    GateRow{"too near", false, [](Node& n) { n.distance = 127; }},
    GateRow{"near by the setting", true, [](Node& n) { n.distance = 1; n.search.settings.min_distance_for_null_move = 1; }},
    GateRow{"too early in the line", false, [](Node& n) { n.search.settings.min_ply_for_null_move = 1; }},
    GateRow{"late enough in the line", true, [](Node& n) { n.search.settings.max_ply_for_null_move = 0; }},
    GateRow{"in check", false, [](Node& n) { const_cast<bool&>(n.in_check) = true; }},
    GateRow{"rook ending", false, [](Node& n) { n.position_class = rook_ending; }},
    GateRow{"queen ending", true, [](Node& n) { n.position_class = queen_ending; }},
    GateRow{"knights", false, [](Node& n) { n.position_class = knight_against_knight; }},
    GateRow{"pawnless", false, [](Node& n) { n.position_class = pawnless; }},
    GateRow{"unbalanced ending", true, [](Node& n) { n.position_class = unbalanced_ending; }},
    GateRow{"balanced ending", true, [](Node& n) { n.position_class = balanced_ending; }},
    GateRow{"margin", true, [](Node& n) { SetBeta(n, n.material_balance() + 200); }},
    GateRow{"beyond the margin", false, [](Node& n) { SetBeta(n, n.material_balance() + 201); }},
    GateRow{"searching for mate", true, [](Node& n) { SetBeta(n, 31767); n.search.settings.maximum_material_margin_for_null_move = 32767000; }},
    GateRow{"searching for mate, left out", false, [](Node& n) {
        SetBeta(n, 31767); n.search.settings.maximum_material_margin_for_null_move = 32767000;
        n.search.settings.skip_null_move_if_side_on_move_is_searching_for_mate = true; }},
    GateRow{"searching for almost a mate", true, [](Node& n) {
        SetBeta(n, 31766); n.search.settings.maximum_material_margin_for_null_move = 32767000;
        n.search.settings.skip_null_move_if_side_on_move_is_searching_for_mate = true; }},
    GateRow{"enemy searching for mate", true, [](Node& n) { SetBeta(n, -31767); }},
    GateRow{"enemy searching for mate, left out", false, [](Node& n) {
        SetBeta(n, -31767); n.search.settings.skip_null_move_if_enemy_is_searching_for_mate = true; }},
    GateRow{"enemy searching for almost a mate", true, [](Node& n) {
        SetBeta(n, -31766); n.search.settings.skip_null_move_if_enemy_is_searching_for_mate = true; }}),
    RowName<GateRow>);
// clang-format on

// --- Mate threat ---

/// Black threatens mate on the back rank; White, on move, is ahead and has all the time in the world.
constexpr std::string_view threatened_fen = "3r2k1/5ppp/8/8/8/8/R4PPP/1N4K1 w - - 0 1";

class MateThreat : public testing::Test {
  protected:
    /// Passes in a node where the pass does not cut; whether a mate threat was found.
    [[nodiscard]] bool IsFound(int position_class = unbalanced_ending, NodeType type = NodeType::cut) {
        SearchBuilder search(fen_, settings_);
        Node node = search.NodeAt(search.board->board.frame().material_balance + 400, 128);
        node.type = type;
        node.child_flags = ChildFlags::none;
        node.position_class = position_class;
        EXPECT_EQ(NullMove(node), go_on);
        nodes_ = search.board->nodes;
        BOARD board = search.board->board;
        board.MakeNullMove();
        Move move = INVALID;
        (void)search.tables.transposition.ProbeMove(board.key(), move, distance_after_pass_);
        return HasAny(node.flags, NodeFlags::mate_threat);
    }
    SearchSettings settings_{.min_ply_for_null_move = 0, .maximum_material_margin_for_null_move = 32767000};
    std::string_view fen_ = threatened_fen;
    std::uint64_t nodes_ = 0;
    Distance distance_after_pass_ = no_distance;
};

TEST_F(MateThreat, IsFoundAfterAPassThatDoesNotCut) { EXPECT_TRUE(IsFound()); }

TEST_F(MateThreat, IsNotLookedForTooNear) {
    settings_.min_distance_for_mate_threat_test = 129;
    EXPECT_FALSE(IsFound());
    settings_.min_distance_for_mate_threat_test = 128;
    EXPECT_TRUE(IsFound());
}

TEST_F(MateThreat, IsNotLookedForWhereNobodyMates) {
    EXPECT_TRUE(IsFound(queen_ending));
    EXPECT_TRUE(IsFound(balanced_ending));
    // The other types without a test have no null move either.
}

TEST_F(MateThreat, MustComeWithinSoManyMoves) {
    settings_.extend_if_mate_in_x_moves_threat = 1;
    EXPECT_TRUE(IsFound()) << "mate with the next move";
}

/// Of what is handed over, the distance is the negated node type: -1 from a cut node, +1 from an all node. The pass
/// itself is searched far below that here, so that the entry after it shows the test.
TEST_F(MateThreat, DistanceIsTheNegatedNodeType) {
    settings_.min_null_move_search_reduction = 640;
    EXPECT_TRUE(IsFound(unbalanced_ending, NodeType::cut));
    EXPECT_EQ(distance_after_pass_, -1);
    EXPECT_TRUE(IsFound(unbalanced_ending, NodeType::all));
    EXPECT_EQ(distance_after_pass_, 1);
}

/// And the node type is what the setting calls a distance: with 0 the test runs as a node of the principal variation,
/// whose futility is switched off, and so looks at more moves.
TEST_F(MateThreat, NodeTypeIsTheSettingThatSpeaksOfADistance) {
    fen_ = "3r2k1/5ppp/7P/8/8/8/R4PP1/1N4K1 w - - 0 1";
    settings_.min_null_move_search_reduction = 640;
    EXPECT_FALSE(IsFound(unbalanced_ending, NodeType::all)) << "the king has a way out";
    const std::uint64_t as_all_node = nodes_;
    settings_.maximum_distance_for_null_move_mate_threat_test = 0;
    (void)IsFound(unbalanced_ending, NodeType::all);
    EXPECT_GT(nodes_, as_all_node);
    settings_.maximum_distance_for_null_move_mate_threat_test = 64000;
    settings_.limit_distance_for_null_move_mate_threat_test = false;
    fen_ = threatened_fen;
    EXPECT_TRUE(IsFound()) << "any number passes as a node type";
}

}  // namespace
