#include "search/node/transposition_cutoff.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "search/node/internal_deepening.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

/// Ten men, a balanced ending for the step.
constexpr std::string_view ending_fen = "6k1/5ppp/8/8/8/3n4/5PPP/1N4K1 w - - 0 1";

class Cutoff : public testing::Test {
  protected:
    [[nodiscard]] Node At(Distance distance, Score beta = 0) {
        Node node = search_.NodeAt(beta, distance);
        node.type = NodeType::cut;
        node.child_flags = ChildFlags::none;
        node.position_class = balanced_ending;
        return node;
    }
    [[nodiscard]] Move MoveNamed(std::string_view text) { return MoveOf(search_.board->board, text); }
    /// What the table knows of the position after a move, from the view of the side on move there.
    void Plant(std::string_view move, Score lower, Score upper, Distance distance, bool has_cut,
               std::string_view answer = {}) {
        BOARD child = search_.board->board;
        child.MakeMove(MoveNamed(move));
        TranspositionEntry entry = TranspositionEntry::Make(
            child.key(), answer.empty() ? INVALID : MoveOf(child, answer), has_cut, balanced_ending, NodeFlags::none);
        entry.lower_bound = static_cast<std::int16_t>(lower);
        entry.upper_bound = static_cast<std::int16_t>(upper);
        entry.lower_distance = lower == -infinity_bound ? no_distance : static_cast<std::int16_t>(distance);
        entry.upper_distance = upper == infinity_bound ? no_distance : static_cast<std::int16_t>(distance);
        search_.tables.transposition.Store(entry);
    }
    void PlantBad(std::string_view move, Distance distance = 64) {
        Plant(move, -infinity_bound, -20, distance, false, "d3f2");
    }
    void PlantGood(std::string_view move, Distance distance = 64) { Plant(move, 200, infinity_bound, distance, true); }

    SearchBuilder search_{ending_fen, {.enable_ettc = true}};
};

TEST_F(Cutoff, ChildThatIsBadForTheOpponentCuts) {
    PlantBad("b1c3");
    Node node = At(128);
    EXPECT_EQ(EnhancedTranspositionCutoff(node), 0);
    EXPECT_EQ(node.hash_move, MoveNamed("b1c3"));
    EXPECT_EQ(search_.board->ettc_tries, 1U);
    EXPECT_EQ(search_.board->ettc_cutoffs, 1U);
    EXPECT_EQ(search_.board->pv[0][0], MoveNamed("b1c3"));
    EXPECT_EQ(search_.board->pv[0][1], INVALID);
    EXPECT_EQ(search_.board->killers[0].first, MoveNamed("b1c3")) << "it cut here";
    EXPECT_EQ(ToSquare(search_.board->killers[1].first), f2) << "the child's own move goes to its killers";
    Move stored = INVALID;
    Distance distance = 0;
    ASSERT_TRUE(search_.tables.transposition.ProbeMove(search_.board->board.key(), stored, distance))
        << "the result is stored";
    EXPECT_EQ(stored, MoveNamed("b1c3"));
    EXPECT_EQ(distance, 128);
}

TEST_F(Cutoff, ChildMustBeKnownDeepEnough) {
    PlantBad("b1c3", 63);
    Node node = At(128);
    EXPECT_EQ(EnhancedTranspositionCutoff(node), go_on);
    EXPECT_EQ(search_.board->ettc_tries, 1U);
    EXPECT_EQ(search_.board->ettc_cutoffs, 0U);
    EXPECT_TRUE(node.has_move_list);
    const auto moves = LegalMovesOf(search_.board->board).size();
    EXPECT_EQ(static_cast<std::size_t>(node.moves_end - node.moves), moves);
    EXPECT_EQ(search_.board->nodes, moves) << "each child counts";
}

TEST_F(Cutoff, RefutedMovesLeaveTheList) {
    PlantGood("b1c3");
    PlantGood("b1a3");
    const auto moves = LegalMovesOf(search_.board->board).size();
    Node node = At(128);
    EXPECT_EQ(EnhancedTranspositionCutoff(node), go_on);
    EXPECT_EQ(static_cast<std::size_t>(node.moves_end - node.moves), moves - 2);
    EXPECT_EQ(std::find(node.moves, node.moves_end, MoveNamed("b1c3")), node.moves_end);
    Node with_hash_move = At(128);
    with_hash_move.hash_move = MoveNamed("b1c3");
    EXPECT_EQ(EnhancedTranspositionCutoff(with_hash_move), go_on);
    EXPECT_EQ(static_cast<std::size_t>(with_hash_move.moves_end - with_hash_move.moves), moves - 1)
        << "the hash move stays";
    search_.settings.ettc_should_remove_refuted_moves = false;
    Node all = At(128);
    EXPECT_EQ(EnhancedTranspositionCutoff(all), go_on);
    EXPECT_EQ(static_cast<std::size_t>(all.moves_end - all.moves), moves);
}

TEST_F(Cutoff, NothingLeftIsBelowBeta) {
    for (const Move move : LegalMovesOf(search_.board->board)) PlantGood(MoveToCoordinate(move));
    Node node = At(128);
    EXPECT_EQ(EnhancedTranspositionCutoff(node), -1);
}

TEST_F(Cutoff, SingleReplyIsNotAskedAbout) {
    SearchBuilder search("1b4rk/8/8/8/p7/8/P7/7K w - - 0 1", {.enable_ettc = true});
    Node node = search.NodeAt(0, 128);
    node.type = NodeType::cut;
    node.child_flags = ChildFlags::none;
    node.position_class = balanced_ending;
    EXPECT_EQ(EnhancedTranspositionCutoff(node), go_on);
    EXPECT_TRUE(HasAny(node.flags, NodeFlags::single_reply));
    EXPECT_EQ(node.hash_move, MoveOf(search.board->board, "a2a3"));
    EXPECT_EQ(search.board->ettc_tries, 0U);
}

TEST_F(Cutoff, MateEndsTheNode) {
    SearchBuilder search("8/8/8/8/8/6k1/8/r5K1 w - - 0 1", {.enable_ettc = true});
    Node node = search.NodeAt(0, 128);
    node.type = NodeType::cut;
    node.child_flags = ChildFlags::none;
    node.position_class = balanced_ending;
    EXPECT_EQ(EnhancedTranspositionCutoff(node), -1);
}

struct GateRow {
    std::string_view name;
    bool passes;
    std::function<void(Node& node)> change;
};
std::ostream& operator<<(std::ostream& out, const GateRow& row) { return out << row.name; }

class CutoffGates : public Cutoff, public testing::WithParamInterface<GateRow> {};

TEST_P(CutoffGates, Hold) {
    Node node = At(128);
    GetParam().change(node);
    (void)EnhancedTranspositionCutoff(node);
    EXPECT_EQ(node.has_move_list, GetParam().passes);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(TranspositionCutoff, CutoffGates, testing::Values(
    GateRow{"as it stands", true, [](Node&) {}},
    GateRow{"switched off", false, [](Node& n) { n.search.settings.enable_ettc = false; }},
    GateRow{"middle game", false, [](Node& n) { n.position_class = middle_game; }},
    GateRow{"middle game too", true, [](Node& n) { n.position_class = middle_game; n.search.settings.only_use_ettc_in_endgames = false; }},
    GateRow{"exactly the least distance", false, [](Node& n) { n.distance = 64; }},
    GateRow{"a little further", true, [](Node& n) { n.distance = 65; }},
    GateRow{"too far", false, [](Node& n) { n.distance = 129; }},
    GateRow{"all node", false, [](Node& n) { n.type = NodeType::all; }},
    GateRow{"principal variation", false, [](Node& n) { n.type = NodeType::principal; }},
    GateRow{"every node", true, [](Node& n) { n.type = NodeType::all; n.search.settings.only_use_ettc_on_cut_nodes = false; }},
    GateRow{"largest bound", true, [](Node& n) { const_cast<Score&>(n.beta) = 31766; }},
    GateRow{"bound of a mate", false, [](Node& n) { const_cast<Score&>(n.beta) = 31767; }},
    GateRow{"smallest bound", true, [](Node& n) { const_cast<Score&>(n.beta) = -31766; }},
    GateRow{"bound of being mated", false, [](Node& n) { const_cast<Score&>(n.beta) = -31767; }},
    GateRow{"eleven men", false, [](Node& n) { n.search.settings.max_pieces_left_for_ettc = 9; }},
    GateRow{"told not to", false, [](Node& n) { n.child_flags = ChildFlags::no_ettc; }},
    GateRow{"single reply", false, [](Node& n) { n.flags = NodeFlags::single_reply; }},
    GateRow{"perpetual threat", false, [](Node& n) { n.flags = NodeFlags::perpetual_threat; }},
    GateRow{"another threat", true, [](Node& n) { n.flags = NodeFlags::mate_threat | NodeFlags::queen_attacked | NodeFlags::pin_threat; }}),
    RowName<GateRow>);
// clang-format on

// --- Internal deepening ---

class Deepening : public Cutoff {
  protected:
    /// No node is searched at ply 0, so the position is reached by two moves.
    Deepening() {
        search_.settings.enable_ettc = false;
        search_.Make("h2h3");
        search_.Make("h7h6");
    }
    /// The distance of the node's own entry.
    [[nodiscard]] std::optional<Distance> StoredDistance() const {
        Move move = INVALID;
        Distance distance = 0;
        if (!search_.tables.transposition.ProbeMove(search_.board->board.key(), move, distance)) return std::nullopt;
        return distance;
    }
};

struct DeepeningRow {
    std::string_view name;
    Distance distance;
    NodeType type;
    std::optional<Distance> searched;  ///< nothing: not at all
};
std::ostream& operator<<(std::ostream& out, const DeepeningRow& row) { return out << row.name; }

class DeepeningDistances : public Deepening, public testing::WithParamInterface<DeepeningRow> {};

TEST_P(DeepeningDistances, AreReduced) {
    const DeepeningRow& row = GetParam();
    search_.settings.enable_limited_razoring_if_not_searching_pv_move = false;
    Node node = At(row.distance);
    node.type = row.type;
    EXPECT_EQ(InternalDeepening(node), go_on);
    EXPECT_EQ(StoredDistance(), row.searched);
    EXPECT_EQ(node.hash_move != INVALID, row.searched.has_value());
    EXPECT_EQ(node.distance, row.distance);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(InternalDeepening, DeepeningDistances, testing::Values(
    DeepeningRow{"cut node, too near", 255, NodeType::cut, std::nullopt},
    DeepeningRow{"cut node", 256, NodeType::cut, 127},
    DeepeningRow{"all node", 256, NodeType::all, 127},
    DeepeningRow{"cut node, just short of far", 511, NodeType::cut, 382},
    DeepeningRow{"cut node, far", 512, NodeType::cut, 320},
    DeepeningRow{"principal variation, too near", 127, NodeType::principal, std::nullopt},
    DeepeningRow{"principal variation, at least 1", 128, NodeType::principal, 1},
    DeepeningRow{"the extra reduction is for the principal variation, in spite of its name", 256, NodeType::principal, 63},
    DeepeningRow{"principal variation, far", 512, NodeType::principal, 256}),
    RowName<DeepeningRow>);
// clang-format on

TEST_F(Deepening, HashMoveMakesItNeedless) {
    Node node = At(512);
    node.hash_move = MoveNamed("b1c3");
    EXPECT_EQ(InternalDeepening(node), go_on);
    EXPECT_EQ(search_.board->nodes, 0U);
}

TEST_F(Deepening, MoveIsTheFirstOfTheLine) {
    Node node = At(256, -500);
    EXPECT_EQ(InternalDeepening(node), go_on);
    EXPECT_EQ(node.hash_move, search_.board->pv[2][0]);
    EXPECT_NE(node.hash_move, INVALID);
}

TEST_F(Deepening, MoveThatTheTableRefutedEndsTheNode) {
    Node node = At(256, -500);
    node.has_move_list = true;
    *node.moves_end++ = MoveNamed("g1h1");
    EXPECT_EQ(InternalDeepening(node), -501) << "the move found is not in the list";
    search_.settings.ettc_should_remove_refuted_moves = false;
    Node unthinned = At(256, -500);
    unthinned.has_move_list = true;
    *unthinned.moves_end++ = MoveNamed("g1h1");
    EXPECT_EQ(InternalDeepening(unthinned), go_on);
}

TEST_F(Deepening, ListSurvives) {
    Node node = At(256, -500);
    node.has_move_list = true;
    for (const Move move : LegalMovesOf(search_.board->board)) *node.moves_end++ = move;
    const std::vector<Move> before(node.moves, node.moves_end);
    EXPECT_EQ(InternalDeepening(node), go_on);
    EXPECT_EQ(std::vector<Move>(node.moves, node.moves_end), before);
}

}  // namespace
