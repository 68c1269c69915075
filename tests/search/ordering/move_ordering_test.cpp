#include "search/ordering/move_ordering.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chess/notation.h"
#include "evaluation/context/position_type.h"
#include "search/node/move_list.h"
#include "search/node/pruning.h"
#include "search/node/quiescence.h"
#include "search/ordering/hopeless_margin.h"
#include "search/ordering/static_order.h"
#include "search/ordering/tactical_scores.h"
#include "search/state/sort_score.h"
#include "support/board_builder.h"
#include "support/random_games.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

using Words = std::vector<Move>;
using Texts = std::vector<std::string>;

/// What the sorter delivers, batch by batch, in the order in which a node tries it. Words as they stand in the list.
std::vector<Words> BatchesOf(Node& node) {
    std::vector<Words> batches;
    MoveSortState state;
    for (;;) {
        MoveBatch batch = StagedMoveSorter(state, node);
        Words words(batch.begin, batch.end);
        if (!batch.is_ordered) std::sort(words.begin(), words.end(), std::greater<>{});
        batches.push_back(words);
        if (batch.is_last) return batches;
    }
}

Words Joined(const std::vector<Words>& batches) {
    Words joined;
    for (const Words& batch : batches) joined.insert(joined.end(), batch.begin(), batch.end());
    return joined;
}

Texts TextsOf(const Words& words) {
    Texts texts;
    for (const Move word : words) texts.push_back(MoveToCoordinate(word & move_bits));
    return texts;
}

// --- A position with moves of every group ---
//
// Promising: d1h5 takes the queen (477), c3b5 wins the exchange (370). Other tactical moves: a1a7 takes a pawn (335),
// c3d5 (309) and d1d5 (264) lose a piece for one. All others are quiet.

constexpr std::string_view mixed_fen = "6k1/p4ppp/2p5/1r1p3q/8/2N5/5PPP/R2Q2K1 w - - 0 1";

class MoveOrdering : public testing::Test {
  protected:
    /// A node that is sorted stage by stage, with its list.
    Node& ListedNode(Score beta = 0) {
        Node& node = nodes_.emplace_back(search_.NodeAt(beta, 256));
        EXPECT_FALSE(ListMoves(node));
        return node;
    }
    Move Word(std::string_view text) const { return MoveOf(search_.board->board, text); }
    void SetKillers(std::string_view first, std::string_view second = "") {
        search_.board->killers[0] = {.first = first.empty() ? INVALID : Word(first),
                                     .second = second.empty() ? INVALID : Word(second)};
    }
    /// Tells history of a cut with so many plies left.
    void Cut(std::string_view text, int plies) {
        search_.board->history.UpdateHistory(Word(text), white, plies * ONE_PLY, 0);
    }
    Texts FirstGroup() { return TextsOf(BatchesOf(ListedNode()).front()); }

    SearchBuilder search_{mixed_fen, {.randomize_move_ordering_of_remaining_moves = 0}};

  private:
    std::deque<Node> nodes_;  // stay where they are
};

TEST_F(MoveOrdering, StagesFollowOneAnother) {
    Cut("g1f1", 2);
    Cut("h2h4", 20);
    SetKillers("d1d4");
    const std::vector<Words> batches = BatchesOf(ListedNode());
    ASSERT_EQ(batches.size(), 4U);
    EXPECT_EQ(TextsOf(batches[0]), (Texts{"d1h5", "c3b5", "d1d4"}));
    EXPECT_EQ(TextsOf(batches[1]), (Texts{"a1a7", "c3d5", "d1d5"}));
    EXPECT_EQ(TextsOf(batches[2]), (Texts{"h2h4", "g1f1"}));
    const Words& rest = batches[3];
    EXPECT_EQ(rest.size(), LegalMovesOf(search_.board->board).size() - 8);
    for (const Move word : rest) EXPECT_FALSE(IsTactical(word));
}

TEST_F(MoveOrdering, WordsCarryTheirScores) {
    Cut("g1f1", 16);
    const std::vector<Words> batches = BatchesOf(ListedNode());
    EXPECT_EQ(SortScore(batches[0][0]), 477);
    EXPECT_EQ(SortScore(batches[0][1]), 370);
    EXPECT_EQ(SortScore(batches[1][0]), 335);
    EXPECT_EQ(SortScore(batches[1][1]), 309);
    EXPECT_EQ(SortScore(batches[1][2]), 264);
    EXPECT_EQ(SortScore(batches[2][0]), 257 >> 7);
    const Node& node = ListedNode();
    for (const Move word : batches[3]) EXPECT_EQ(SortScore(word), StaticMoveOrder(node).ScoreOf(word & move_bits));
}

TEST_F(MoveOrdering, RestIsPickedByItsScoresOrLeftAsItIs) {
    Node& scored = ListedNode();
    MoveSortState state;
    MoveBatch batch{};
    do batch = StagedMoveSorter(state, scored);
    while (!batch.is_last);
    EXPECT_FALSE(batch.is_ordered);

    search_.settings.enable_static_move_ordering_from_sq_malus = false;
    search_.settings.enable_static_move_ordering_to_sq_bonus = false;
    search_.settings.enable_static_move_ordering_piece_dependent_bonus = false;
    Node& plain = ListedNode();
    state = {};
    do batch = StagedMoveSorter(state, plain);
    while (!batch.is_last);
    EXPECT_TRUE(batch.is_ordered);
    for (const Move* word = batch.begin; word != batch.end; ++word) EXPECT_EQ(SortScore(*word), 0);
}

TEST_F(MoveOrdering, PromisingMovesAreThoseFromTheSettingOn) {
    search_.settings.promising_move_minimum_sorting_value = 335;
    EXPECT_EQ(FirstGroup(), (Texts{"d1h5", "c3b5", "a1a7"}));
    search_.settings.promising_move_minimum_sorting_value = 336;
    EXPECT_EQ(FirstGroup(), (Texts{"d1h5", "c3b5"}));
    search_.settings.promising_move_minimum_sorting_value = 478;
    EXPECT_EQ(FirstGroup(), (Texts{"d1h5", "c3b5", "a1a7", "c3d5", "d1d5"})) << "no group: the next stage at once";
}

TEST_F(MoveOrdering, TacticalScoresNeverFallBelowTheirLeast) {
    search_.settings.tactical_moves_minimum_sorting_value = 350;
    EXPECT_EQ(FirstGroup().size(), 5U);
}

// --- Where killers go ---

struct KillerRow {
    std::string_view name;
    std::string_view first, second;
    std::int32_t promising_before = 2;
    bool promising_killer_first = true;
    Texts group;
};
std::ostream& operator<<(std::ostream& out, const KillerRow& row) { return out << row.name; }

class Killers : public MoveOrdering, public testing::WithParamInterface<KillerRow> {};

TEST_P(Killers, Place) {
    const KillerRow& row = GetParam();
    search_.settings.promising_move_minimum_sorting_value = 330;  // three promising moves: d1h5, c3b5, a1a7
    search_.settings.max_promising_tacticals_before_killer_one = row.promising_before;
    search_.settings.if_killer1_is_promising_tactical_move_then_search_first = row.promising_killer_first;
    SetKillers(row.first, row.second);
    EXPECT_EQ(FirstGroup(), row.group);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Killers, Killers, testing::Values(
    KillerRow{"none",                       "", "",             2, true,  {"d1h5", "c3b5", "a1a7"}},
    KillerRow{"quiet after two",           "h2h4", "",         2, true,  {"d1h5", "c3b5", "h2h4", "a1a7"}},
    KillerRow{"quiet after one",           "h2h4", "",         1, true,  {"d1h5", "h2h4", "c3b5", "a1a7"}},
    KillerRow{"quiet after none",          "h2h4", "",         0, true,  {"h2h4", "d1h5", "c3b5", "a1a7"}},
    KillerRow{"quiet after all there are", "h2h4", "",         9, true,  {"d1h5", "c3b5", "a1a7", "h2h4"}},
    KillerRow{"two quiet",                  "h2h4", "g1f1",     1, true,  {"d1h5", "h2h4", "c3b5", "a1a7", "g1f1"}},
    KillerRow{"second alone",               "", "g1f1",         0, true,  {"d1h5", "c3b5", "a1a7", "g1f1"}},
    KillerRow{"tactical that promises nothing", "c3d5", "",     2, true,  {"d1h5", "c3b5", "c3d5", "a1a7"}},
    KillerRow{"both promise nothing",       "c3d5", "d1d5",     0, true,  {"c3d5", "d1h5", "c3b5", "a1a7", "d1d5"}},
    KillerRow{"quiet and tactical",         "h2h4", "d1d5",     2, true,  {"d1h5", "c3b5", "h2h4", "a1a7", "d1d5"}},
    KillerRow{"tactical and quiet",         "d1d5", "h2h4",     2, true,  {"d1h5", "c3b5", "d1d5", "a1a7", "h2h4"}},
    KillerRow{"promising goes first",       "a1a7", "",         2, true,  {"a1a7", "d1h5", "c3b5"}},
    KillerRow{"promising not first",        "a1a7", "",         1, false, {"d1h5", "a1a7", "c3b5"}},
    KillerRow{"promising stays early",      "d1h5", "",         2, false, {"d1h5", "c3b5", "a1a7"}},
    KillerRow{"promising second stays",     "h2h4", "d1h5",     2, true,  {"d1h5", "c3b5", "h2h4", "a1a7"}},
    KillerRow{"the same twice",             "h2h4", "h2h4",     2, true,  {"d1h5", "c3b5", "h2h4", "a1a7"}},
    KillerRow{"the same twice, tactical",   "c3d5", "c3d5",     2, true,  {"d1h5", "c3b5", "c3d5", "a1a7"}}),
    RowName<KillerRow>);
// clang-format on

TEST_F(MoveOrdering, KillersMakeAFirstGroupOfTheirOwn) {
    search_.settings.promising_move_minimum_sorting_value = 511;
    SetKillers("h2h4", "g1f1");
    EXPECT_EQ(FirstGroup(), (Texts{"h2h4", "g1f1"}));
}

TEST_F(MoveOrdering, KillersOfAnotherPlyOrPositionAreNone) {
    SetKillers("h2h4");
    std::swap(search_.board->killers[0], search_.board->killers[1]);
    EXPECT_EQ(FirstGroup(), (Texts{"d1h5", "c3b5"}));
    search_.board->killers[0] = {.first = Word("h2h4") | direct_check_bit, .second = MakeWord(h2, h5, pawn)};
    EXPECT_EQ(FirstGroup(), (Texts{"d1h5", "c3b5"})) << "the word must be the same, check bits and all";
}

TEST_F(MoveOrdering, KillersCanBeSwitchedOff) {
    SetKillers("h2h4", "g1f1");
    search_.settings.enable_killer_heuristic_for_move_ordering = false;
    EXPECT_EQ(FirstGroup(), (Texts{"d1h5", "c3b5"}));
}

TEST_F(MoveOrdering, KillerThatIsTheHashMoveIsNotTriedAgain) {
    for (const std::string_view text : {"h2h4", "c3b5", "c3d5"}) {
        SetKillers(text, "g1f1");
        Node& node = ListedNode();
        node.hash_move = Word(text);
        const Texts order = TextsOf(BatchesOf(node).front());
        EXPECT_EQ(std::count(order.begin(), order.end(), text), 0);
        EXPECT_EQ(order.size() + 1, LegalMovesOf(search_.board->board).size());
    }
}

// --- History before the remaining tactical moves ---

class HistoryFirst : public MoveOrdering {
  protected:
    HistoryFirst() {
        search_.settings.enable_best_history_moves_before_remaining_tacticals = true;
        search_.settings.max_promising_tacticals_before_killer_one = 2;
        Cut("g1f1", 20);
        Cut("h2h4", 30);
        Cut("g1h1", 12);
    }
    /// The bound at which the side on move lacks `missing` centipawns.
    Score BoundFor(Score missing) {
        const Node& node = ListedNode();
        return node.material_balance() + hopeless_margin[static_cast<std::size_t>(node.position_class)] + missing;
    }
    Texts SecondGroup(Score missing) { return TextsOf(BatchesOf(ListedNode(BoundFor(missing)))[1]); }
    const Texts best_history_ = {"h2h4", "g1f1"};
    const Texts tacticals_ = {"a1a7", "c3d5", "d1d5"};
};

TEST_F(HistoryFirst, BestMovesGoBeforeTheRemainingTacticals) {
    const std::vector<Words> batches = BatchesOf(ListedNode(BoundFor(0)));
    ASSERT_EQ(batches.size(), 5U);
    EXPECT_EQ(TextsOf(batches[0]), (Texts{"d1h5", "c3b5"}));
    EXPECT_EQ(TextsOf(batches[1]), best_history_);
    EXPECT_EQ(TextsOf(batches[2]), tacticals_);
    EXPECT_EQ(TextsOf(batches[3]), (Texts{"g1h1"}));
}

TEST_F(HistoryFirst, AsManyAsPromisingMovesBeforeTheKiller) {
    search_.settings.max_history_moves_before_remaining_tacticals = 1;
    search_.settings.max_promising_tacticals_before_killer_one = 3;
    EXPECT_EQ(SecondGroup(0), (Texts{"h2h4", "g1f1", "g1h1"})) << "limited by the other setting: deliberate";
    search_.settings.max_promising_tacticals_before_killer_one = 1;
    EXPECT_EQ(SecondGroup(0), (Texts{"h2h4"}));
    search_.settings.max_promising_tacticals_before_killer_one = 0;
    EXPECT_EQ(SecondGroup(0), tacticals_);
    search_.settings.max_promising_tacticals_before_killer_one = 1000;
    EXPECT_EQ(SecondGroup(0).size(), 3U);
}

TEST_F(HistoryFirst, SwitchAndLimitOfNone) {
    search_.settings.max_history_moves_before_remaining_tacticals = 0;
    EXPECT_EQ(SecondGroup(0), tacticals_);
    search_.settings.max_history_moves_before_remaining_tacticals = 1;
    EXPECT_EQ(SecondGroup(0), best_history_);
    search_.settings.enable_best_history_moves_before_remaining_tacticals = false;
    EXPECT_EQ(SecondGroup(0), tacticals_);
}

TEST_F(HistoryFirst, MaterialMustBeNearBeta) {
    EXPECT_EQ(SecondGroup(400), best_history_);
    EXPECT_EQ(SecondGroup(401), tacticals_);
    EXPECT_EQ(SecondGroup(-400), best_history_);
    EXPECT_EQ(SecondGroup(-401), tacticals_);
    search_.settings.max_material_margin_to_search_history_moves_before_tacticals = 401;
    EXPECT_EQ(SecondGroup(401), best_history_);
    EXPECT_EQ(SecondGroup(-401), best_history_);
}

TEST_F(HistoryFirst, LookingForMateTacticalMovesGoFirst) {
    search_.settings.max_material_margin_to_search_history_moves_before_tacticals = 32767000;
    EXPECT_EQ(TextsOf(BatchesOf(ListedNode(31766))[1]), best_history_);
    EXPECT_EQ(TextsOf(BatchesOf(ListedNode(31767))[1]), tacticals_);
    search_.settings.search_all_tacticals_first_if_playing_for_mate = false;
    EXPECT_EQ(TextsOf(BatchesOf(ListedNode(31767))[1]), best_history_);
}

TEST_F(HistoryFirst, HistoryIsReadOnce) {
    Node& node = ListedNode(BoundFor(0));
    MoveSortState state;
    (void)StagedMoveSorter(state, node);
    MoveBatch batch = StagedMoveSorter(state, node);
    ASSERT_EQ(TextsOf({batch.begin, batch.end}), best_history_);
    Cut("d1d4", 40);
    batch = StagedMoveSorter(state, node);
    ASSERT_EQ(TextsOf({batch.begin, batch.end}), tacticals_);
    batch = StagedMoveSorter(state, node);
    EXPECT_EQ(TextsOf({batch.begin, batch.end}), (Texts{"g1h1"}));
}

TEST_F(HistoryFirst, AlsoWhenSortedAtOnce) {
    Node& node = ListedNode(BoundFor(0));
    node.type = NodeType::all;
    const Texts order = TextsOf(BatchesOf(node).front());
    EXPECT_EQ(Texts(order.begin(), order.begin() + 8),
              (Texts{"d1h5", "c3b5", "h2h4", "g1f1", "a1a7", "c3d5", "d1d5", "g1h1"}));
}

// --- All at once, or by stages ---

TEST_F(MoveOrdering, AllNodesAreSortedAtOnce) {
    for (const NodeType type : {NodeType::all, NodeType::principal, NodeType::cut}) {
        Node& node = ListedNode();
        node.type = type;
        EXPECT_EQ(BatchesOf(node).size() == 1, type == NodeType::all);
    }
}

TEST_F(MoveOrdering, NodesWithAHashMoveAreSortedAtOnce) {
    for (const NodeType type : {NodeType::principal, NodeType::cut}) {
        Node& node = ListedNode();
        node.type = type;
        node.hash_move = Word("c3d5");
        EXPECT_EQ(BatchesOf(node).size(), 1U);
    }
}

TEST_F(MoveOrdering, ShortListsAreSortedAtOnce) {
    for (const std::ptrdiff_t size : {6, 7}) {
        Node& node = ListedNode();
        node.moves_end = node.moves + size;
        EXPECT_EQ(BatchesOf(node).size() == 1, size < 7) << size;
    }
}

TEST_F(MoveOrdering, SortedAtOnceIsTheSameOrder) {
    Cut("g1f1", 20);
    Cut("h2h4", 30);
    SetKillers("d1d4", "c3d5");
    Words by_stages;
    for (const Words& batch : BatchesOf(ListedNode())) by_stages.insert(by_stages.end(), batch.begin(), batch.end());
    Node& node = ListedNode();
    node.type = NodeType::all;
    const std::vector<Words> at_once = BatchesOf(node);
    ASSERT_EQ(at_once.size(), 1U);
    EXPECT_EQ(at_once.front(), by_stages);
}

TEST_F(MoveOrdering, HistoryIsReadWhenItsStageComes) {
    Node& node = ListedNode();
    MoveSortState state;
    MoveBatch batch = StagedMoveSorter(state, node);
    ASSERT_EQ(*batch.begin & move_bits, Word("d1h5"));
    Cut("g1f1", 20);
    batch = StagedMoveSorter(state, node);
    ASSERT_EQ(*batch.begin & move_bits, Word("a1a7"));
    batch = StagedMoveSorter(state, node);
    EXPECT_EQ(*batch.begin & move_bits, Word("g1f1"));
    EXPECT_EQ(batch.end - batch.begin, 1);
}

TEST_F(MoveOrdering, HistoryIsTheSideOnMoves) {
    search_.board->history.UpdateHistory(Word("g1f1"), black, 640, 0);
    EXPECT_EQ(BatchesOf(ListedNode()).size(), 3U);
    Cut("g1f1", 10);
    EXPECT_EQ(BatchesOf(ListedNode()).size(), 4U);
}

TEST_F(MoveOrdering, ScoresThatWordsBringAreForgotten) {
    Node& node = ListedNode();
    for (Move* word = node.moves; word != node.moves_end; ++word) *word = WithSortScore(*word, 300);
    SetKillers("h2h4");
    const std::vector<Words> batches = BatchesOf(node);
    EXPECT_EQ(TextsOf(batches[0]), (Texts{"d1h5", "c3b5", "h2h4"}));
    for (const Move word : batches.back()) EXPECT_EQ(SortScore(word), StaticMoveOrder(node).ScoreOf(word & move_bits));
}

TEST_F(MoveOrdering, HashMoveIsPutAfterTheList) {
    Node& node = ListedNode();
    node.hash_move = Word("a1a7");
    const Move* const end = node.moves_end;
    (void)BatchesOf(node);
    EXPECT_EQ(node.moves_end, end - 1);
    EXPECT_EQ(*node.moves_end & move_bits, node.hash_move);
}

TEST_F(MoveOrdering, HashMoveThatIsNotInTheListTakesNothingOut) {
    Node& node = ListedNode();
    node.hash_move = Word("a1a7") | direct_check_bit;
    const Move* const end = node.moves_end;
    (void)BatchesOf(node);
    EXPECT_EQ(node.moves_end, end);
}

TEST_F(MoveOrdering, OnlyTheHashMoveLeavesAnEmptyBatch) {
    Node& node = ListedNode();
    node.moves_end = node.moves + 1;
    node.hash_move = *node.moves;
    const std::vector<Words> batches = BatchesOf(node);
    ASSERT_EQ(batches.size(), 1U);
    EXPECT_TRUE(batches.front().empty());
}

// --- Quiescence ---

TEST_F(MoveOrdering, QuiescenceSortsOnceForPicking) {
    Node& node = ListedNode(1000);
    node.hash_move = Word("c3b5");
    const OrderingNoise noise = search_.board->noise;
    const MoveBatch batch = SortQuiescence(node);
    EXPECT_FALSE(batch.is_ordered);
    EXPECT_TRUE(batch.is_last);
    EXPECT_EQ(batch.begin, node.moves);
    EXPECT_EQ(batch.end, node.moves_end);
    EXPECT_EQ(*batch.end & move_bits, node.hash_move);
    search_.board->noise = noise;
    for (const Move* word = batch.begin; word != batch.end; ++word) {
        ASSERT_EQ(SortScore(*word), QuiescenceScore(node, *word & move_bits));
    }
    EXPECT_EQ(*std::max_element(batch.begin, batch.end) & move_bits, Word("d1h5"));
}

TEST_F(MoveOrdering, QuiescenceForgetsScoresThatWordsBring) {
    SetKillers("h2h4", "d1d5");
    Node& node = ListedNode(1000);
    const Words listed(node.moves, node.moves_end);
    const OrderingNoise noise = search_.board->noise;
    MoveBatch batch = SortQuiescence(node);
    const Words expected(batch.begin, batch.end);
    search_.board->noise = noise;
    std::transform(listed.begin(), listed.end(), node.moves, [](Move word) { return WithSortScore(word, 511); });
    batch = SortQuiescence(node);
    EXPECT_EQ(Words(batch.begin, batch.end), expected);
}

// --- The noise ---

TEST(OrderingNoise, IsTheSameInEverySearch) {
    SearchBuilder first(start_fen), second(start_fen);
    const auto order_of = [](SearchBuilder& search) {
        Node node = search.NodeAt(0, 256);
        EXPECT_FALSE(ListMoves(node));
        return BatchesOf(node);
    };
    const std::vector<Words> orders[] = {order_of(first), order_of(first), order_of(second), order_of(second)};
    EXPECT_EQ(orders[0], orders[2]);
    EXPECT_EQ(orders[1], orders[3]);
    EXPECT_NE(orders[0], orders[1]) << "it goes on within a search";
    first.board->StartSearch(BOARD(first.board->board), 0);
    EXPECT_EQ(order_of(first), orders[0]) << "and begins again with the next";
}

TEST(OrderingNoise, DrawsPassedOverAreDraws) {
    for (std::uint32_t count = 0; count < 256; ++count) {
        OrderingNoise drawn, passed_over;
        for (std::uint32_t i = 0; i < count; ++i) (void)drawn.Below(10);
        passed_over.PassOver(count);
        ASSERT_EQ(drawn.Below(65535), passed_over.Below(65535)) << count;
    }
}

// --- Futile nodes: what is sure to be skipped is left out ---

class FutileMoves : public testing::TestWithParam<bool> {};

/// The parameter: whether history is read before the remaining tactical moves.
TEST_P(FutileMoves, AreLeftOutAndChangeNothingElse) {
    const bool best_history_first = GetParam();
    std::size_t left_out = 0;
    for (const std::string& fen : random_game_starts) {
        SearchBuilder search(fen);
        search.settings.enable_best_history_moves_before_remaining_tacticals = best_history_first;
        search.settings.max_history_moves_before_remaining_tacticals = 2;
        for (const NodeType type : {NodeType::cut, NodeType::all}) {
            Node node = search.NodeAt(0, 256);
            node.type = type;
            if (ListMoves(node)) continue;
            search.board->history.UpdateHistory(node.moves[0], search.board->board.mover(), 256, 0);
            Node futile = node;
            futile.is_futile = true;
            futile.futility_base = node.beta - 1;
            const Words listed(node.moves, node.moves_end);
            const OrderingNoise noise = search.board->noise;

            const Words all = Joined(BatchesOf(node));
            const OrderingNoise noise_after_all = std::exchange(search.board->noise, noise);
            std::copy(listed.begin(), listed.end(), node.moves);
            const Words spared = Joined(BatchesOf(futile));

            EXPECT_EQ(search.board->noise.Below(65535), OrderingNoise(noise_after_all).Below(65535)) << fen;
            ASSERT_LE(spared.size(), all.size());
            const auto first_left_out = all.begin() + static_cast<std::ptrdiff_t>(spared.size());
            EXPECT_EQ(spared, Words(all.begin(), first_left_out)) << fen;
            EXPECT_TRUE(std::all_of(first_left_out, all.end(), [&](Move word) {
                return IsFutile(futile, word & move_bits);
            })) << fen;
            left_out += static_cast<std::size_t>(all.end() - first_left_out);
        }
    }
    EXPECT_GT(left_out, 200U);
}

INSTANTIATE_TEST_SUITE_P(MoveOrdering, FutileMoves, testing::Bool());

// --- Against a slow model ---
//
// The order said plainly, with lists in the place of groups of one list. No noise, which depends on the walk.

Words LargestFirst(Words words) {
    std::sort(words.begin(), words.end(), std::greater<>{});
    return words;
}

bool TakeOut(Words& words, Move move) {
    const auto found = std::find_if(words.begin(), words.end(), [=](Move word) { return (word & move_bits) == move; });
    if (found == words.end()) return false;
    words.erase(found);
    return true;
}

bool Contains(const Words& words, Move move) {
    return std::any_of(words.begin(), words.end(), [=](Move word) { return (word & move_bits) == move; });
}

/// The moves in the order in which they should come, without scores.
Words ModelOrder(const Node& node, Words list) {
    for (Move& word : list) word &= move_bits;
    if (node.hash_move != INVALID) TakeOut(list, node.hash_move);
    Words promising, tacticals, history, rest;
    const auto side = static_cast<Colour>(node.board().side_to_move);
    for (const Move move : list) {
        if ((move & 0x7F8000) != 0) {
            const Move word = WithSortScore(move, TacticalScore(node, move));
            (SortScore(word) >= node.settings().promising_move_minimum_sorting_value ? promising : tacticals)
                .push_back(word);
        } else if (const std::int32_t score = node.search.history.Score(move, side, node.ply); score > 0) {
            history.push_back(WithSortScore(move, score));
        } else {
            rest.push_back(
                WithSortScore(move, StaticMoveOrder(node).Exists() ? StaticMoveOrder(node).ScoreOf(move) : 0));
        }
    }
    Words order = LargestFirst(promising);
    const auto take_from_others = [&](Move killer) {
        return TakeOut(tacticals, killer) || TakeOut(history, killer) || TakeOut(rest, killer);
    };
    const Move first = node.search.killers[node.ply].first;
    const Move second = node.search.killers[node.ply].second;
    if (node.settings().enable_killer_heuristic_for_move_ordering) {
        auto place = static_cast<std::size_t>(node.settings().max_promising_tacticals_before_killer_one);
        if (first != INVALID && Contains(order, first)) {
            if (node.settings().if_killer1_is_promising_tactical_move_then_search_first) place = 0;
            Words others = order;
            TakeOut(others, first);
            const auto at = static_cast<std::size_t>(
                std::find_if(order.begin(), order.end(), [&](Move word) { return (word & move_bits) == first; }) -
                order.begin());
            others.insert(others.begin() + static_cast<std::ptrdiff_t>(std::min(place, at)), first);
            order = others;
        } else if (first != INVALID && take_from_others(first)) {
            order.insert(order.begin() + static_cast<std::ptrdiff_t>(std::min(place, order.size())), first);
        }
        if (second != INVALID && !Contains(order, second) && take_from_others(second)) order.push_back(second);
    }
    history = LargestFirst(history);
    const Score missing =
        node.beta - node.material_balance() - hopeless_margin[static_cast<std::size_t>(node.position_class)];
    if (node.settings().enable_best_history_moves_before_remaining_tacticals &&
        std::abs(missing) <= node.settings().max_material_margin_to_search_history_moves_before_tacticals) {
        const auto count = static_cast<std::ptrdiff_t>(std::min(
            history.size(), static_cast<std::size_t>(node.settings().max_promising_tacticals_before_killer_one)));
        order.insert(order.end(), history.begin(), history.begin() + count);
        history.erase(history.begin(), history.begin() + count);
    }
    for (const Words& group :
         {LargestFirst(tacticals), history, StaticMoveOrder(node).Exists() ? LargestFirst(rest) : rest}) {
        order.insert(order.end(), group.begin(), group.end());
    }
    for (Move& word : order) word &= move_bits;
    return order;
}

class RandomOrdering : public testing::Test {
  protected:
    static constexpr std::uint32_t seed = 20261121;

    /// Calls visit(node) for thousands of nodes at random positions with random killers, history, types, hash moves and
    /// settings; the node has its list.
    template <class Visit>
    void ForEachNode(Visit visit) {
        SearchBuilder search(start_fen, {.randomize_move_ordering_of_remaining_moves = noise_});
        ForEachRandomPosition(seed, 60, 60, [&](const BOARD& board, const Words& legal) {
            if (legal.size() < 2) return;
            const std::uint32_t ply = board.ply;
            search.board->board = board;
            search.board->position_class[0] = classify_position(board, no_position_type);
            Node node = search.NodeAt(board.frame().material_balance + Below(1500), 256);
            ASSERT_FALSE(ListMoves(node));
            node.type = static_cast<NodeType>(Below(3) - 1);
            if (Below(2) == 0) node.hash_move = Any(legal);
            search.board->killers[ply] = {.first = AnyOrNone(legal), .second = AnyOrNone(legal)};
            if (ply % 8 == 0) search.board->history.EnterPly(ply);
            for (int i = Below(6); i > 0; --i) {
                search.board->history.UpdateHistory(Any(legal), static_cast<Colour>(board.side_to_move), 64 * Below(40),
                                                    ply);
            }
            search.settings.max_promising_tacticals_before_killer_one = Below(4);
            search.settings.if_killer1_is_promising_tactical_move_then_search_first = Below(2) == 0;
            search.settings.enable_best_history_moves_before_remaining_tacticals = Below(2) == 0;
            search.settings.promising_move_minimum_sorting_value = 320 + Below(40);
            visit(node);
        });
    }

    int Below(int n) { return static_cast<int>(random_() % static_cast<std::uint32_t>(n)); }
    Move Any(const Words& legal) { return legal[random_() % legal.size()]; }
    Move AnyOrNone(const Words& legal) { return Below(3) == 0 ? INVALID : Any(legal); }

    std::int32_t noise_ = 0;

  private:
    std::mt19937 random_{seed};
};

TEST_F(RandomOrdering, IsTheModels) {
    int nodes = 0;
    ForEachNode([&](Node& node) {
        const Words expected = ModelOrder(node, Words(node.moves, node.moves_end));
        Words order;
        for (const Words& batch : BatchesOf(node)) order.insert(order.end(), batch.begin(), batch.end());
        for (Move& word : order) word &= move_bits;
        ASSERT_EQ(TextsOf(order), TextsOf(expected)) << FenOf(node.board());
        ++nodes;
    });
    EXPECT_GT(nodes, 2000) << "seed " << seed;
}

TEST_F(RandomOrdering, NoMoveIsLostOrDoubled) {
    noise_ = 5;
    int nodes = 0;
    ForEachNode([&](Node& node) {
        // Some lists are thinned, some hold a word twice, some words carry scores.
        if (Below(3) == 0) node.moves_end -= Below(static_cast<int>(node.moves_end - node.moves));
        if (Below(3) == 0) *node.moves_end++ = *node.moves;
        if (Below(3) == 0) *node.moves = WithSortScore(*node.moves, Below(512));
        Words expected(node.moves, node.moves_end);
        for (Move& word : expected) word &= move_bits;
        if (node.hash_move != INVALID) TakeOut(expected, node.hash_move);
        Words delivered;
        for (const Words& batch : BatchesOf(node)) delivered.insert(delivered.end(), batch.begin(), batch.end());
        for (Move& word : delivered) word &= move_bits;
        ASSERT_EQ(LargestFirst(delivered), LargestFirst(expected)) << FenOf(node.board());
        ++nodes;
    });
    EXPECT_GT(nodes, 2000) << "seed " << seed;
}

TEST_F(RandomOrdering, QuiescenceLosesAndDoublesNoneEither) {
    ForEachNode([&](Node& node) {
        Words expected(node.moves, node.moves_end);
        if (node.hash_move != INVALID) TakeOut(expected, node.hash_move);
        const MoveBatch batch = SortQuiescence(node);
        Words delivered(batch.begin, batch.end);
        for (Move& word : delivered) word &= move_bits;
        ASSERT_EQ(LargestFirst(delivered), LargestFirst(expected)) << FenOf(node.board());
    });
}

}  // namespace
