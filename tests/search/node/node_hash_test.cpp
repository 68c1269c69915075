// What a node takes from the hash table and leaves in it.

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"
#include "search/node/node_result.h"
#include "search/node/search_node.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"
#include "support/log_capture.h"
#include "support/plain_settings.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

constexpr std::string_view middle_game_fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";

/// A node at ply 1 with an entry of its own in the table.
class KnownNode : public testing::Test {
  protected:
    KnownNode() { search_.Make("a2a3"); }

    void Plant(std::string_view move, Score lower, Distance lower_distance, Score upper, Distance upper_distance,
               int position_class = opening, NodeFlags flags = NodeFlags::none, bool has_cut = true) {
        TranspositionEntry entry = TranspositionEntry::Make(
            board().key(), move.empty() ? INVALID : MoveOf(board(), move), has_cut, position_class, flags);
        entry.lower_bound = static_cast<std::int16_t>(lower);
        entry.lower_distance = static_cast<std::int16_t>(lower_distance);
        entry.upper_bound = static_cast<std::int16_t>(upper);
        entry.upper_distance = static_cast<std::int16_t>(upper_distance);
        search_.tables.transposition.Store(entry);
    }

    [[nodiscard]] BOARD& board() { return search_.board->board; }
    [[nodiscard]] std::optional<TranspositionEntry> Stored(const BOARD& board) {
        TranspositionHit hit;
        if (search_.tables.transposition.Probe(board.key(), board.ply, 0, 0, hit) == TranspositionAnswer::not_found) {
            return std::nullopt;
        }
        TranspositionEntry entry =
            TranspositionEntry::Make(board.key(), hit.move, false, hit.position_class, hit.flags);
        return entry;
    }
    /// The bounds of the stored entry, found out by questions.
    [[nodiscard]] TranspositionAnswer Probe(Distance distance, Score beta) {
        TranspositionHit hit;
        return search_.tables.transposition.Probe(board().key(), board().ply, distance, beta, hit);
    }

    SearchBuilder search_{middle_game_fen};
};

TEST_F(KnownNode, LowerBoundOnBetaAnswersAtOnce) {
    Plant("d8b6", 70, 320, infinity_bound, no_distance);
    EXPECT_EQ(search_.Ask(70, 320), 70);
    EXPECT_EQ(search_.board->nodes, 1U);
    EXPECT_EQ(search_.board->pv[1][0], MoveOf(board(), "d8b6"));
    EXPECT_EQ(search_.board->pv[1][1], INVALID);
}

TEST_F(KnownNode, UpperBoundBelowBetaAnswersAtOnce) {
    Plant("d8b6", -infinity_bound, no_distance, 69, 320, opening, NodeFlags::none, false);
    EXPECT_EQ(search_.Ask(70, 320), 69);
    EXPECT_EQ(search_.board->nodes, 1U);
    EXPECT_EQ(search_.board->pv[1][0], MoveOf(board(), "d8b6"));
    EXPECT_EQ(search_.board->pv[1][1], INVALID);
}

TEST_F(KnownNode, ShallowerEntryDoesNotAnswer) {
    Plant("d8b6", 70, 191, infinity_bound, no_distance);
    (void)search_.Ask(70, 192);
    EXPECT_GT(search_.board->nodes, 1U);
}

TEST_F(KnownNode, IsNotAskedBelowTheProbingDistance) {
    Plant("d8b6", 70, 320, infinity_bound, no_distance);
    search_.settings.required_distance_to_probe_hashtables = 65;
    (void)search_.Ask(70, 64);
    EXPECT_GT(search_.board->nodes, 1U);
    search_.board->nodes = 0;
    (void)search_.Ask(70, 65);
    EXPECT_EQ(search_.board->nodes, 1U);
}

TEST_F(KnownNode, HashMoveIsTriedFirst) {
    search_.settings = PlainSettings();
    search_.settings.required_distance_to_probe_hashtables = -64000;
    // Whatever Black does is enough, so the first move tried is the one that cuts.
    Plant("h7h6", -500, 0, infinity_bound, no_distance);
    EXPECT_EQ(search_.Ask(-500, 64), -500);
    EXPECT_EQ(search_.board->pv[1][0], MoveOf(board(), "h7h6"));
}

TEST_F(KnownNode, ClassOfTheEntryIsTakenWithoutALook) {
    Plant("d8b6", 70, 0, infinity_bound, no_distance, unbalanced_ending);
    (void)search_.Ask(70, 64);
    EXPECT_EQ(search_.board->position_class[1], unbalanced_ending);
}

/// Ten moves, but the entry says that there is one reply only: the search believes it and generates nothing.
TEST_F(KnownNode, SingleReplyIsBelievedWithoutGeneration) {
    search_.settings = PlainSettings();
    search_.settings.required_distance_to_probe_hashtables = -64000;
    Plant("d8d6", 0, 0, infinity_bound, no_distance, opening, NodeFlags::single_reply);
    EXPECT_EQ(search_.Ask(3000, 64), 2999);
    EXPECT_EQ(search_.board->nodes, 2U) << "the node and its one child, which stands pat";
}

TEST_F(KnownNode, SingleReplyIsExemptFromTheQuiescenceFilter) {
    search_.settings = PlainSettings();
    search_.settings.required_distance_to_probe_hashtables = -64000;
    // A quiet move that no quiescence search would try.
    Plant("h7h6", -200, -64, infinity_bound, no_distance, opening, NodeFlags::single_reply);
    (void)search_.Ask(3000, -10);
    EXPECT_EQ(search_.board->nodes, 2U);
    search_.tables.Clear();
    search_.board->nodes = 0;
    Plant("h7h6", -200, -64, infinity_bound, no_distance, opening);
    EXPECT_EQ(search_.Ask(3000, -10), 2999);
    EXPECT_EQ(search_.board->nodes, 1U) << "without the flag the filter refuses it";
    search_.settings.always_search_hash_move_in_quiescence = true;
    search_.board->nodes = 0;
    (void)search_.Ask(3000, -10);
    EXPECT_EQ(search_.board->nodes, 2U) << "the setting lets the hash move pass";
}

TEST_F(KnownNode, ImpossibleHashMoveIsReportedAndThatIsAll) {
    if (theory_is_checked) GTEST_SKIP() << "the next node's own assertions end the program here";
    const LogCapture log;
    testing::internal::CaptureStdout();
    // The queen's move without the check that the word claims: no such move stands here.
    TranspositionEntry entry = TranspositionEntry::Make(board().key(), MoveOf(board(), "d8b6") | direct_check_bit, true,
                                                        opening, NodeFlags::none);
    entry.lower_bound = -3000;
    entry.lower_distance = 0;
    search_.tables.transposition.Store(entry);
    const Score answer = search_.Ask(-2000, 64);
    (void)testing::internal::GetCapturedStdout();
    EXPECT_EQ(answer, -2000);
    const std::string text = log.text();
    EXPECT_NE(text.find("collision in transposition table detected"), std::string::npos) << text;
    EXPECT_NE(text.find("search_serial"), std::string::npos) << text;
    EXPECT_NE(text.find("hash_entry_found == false || board.IsMovePseudoLegal(hash_move)"), std::string::npos) << text;
}

// --- Store ---

class StoredNode : public KnownNode {
  protected:
    /// A node that has found something.
    [[nodiscard]] Node Found(Score beta, Distance distance, Score best, std::string_view move) {
        Node node = search_.NodeAt(beta, distance);
        node.best = best;
        node.best_move = MoveOf(board(), move);
        return node;
    }
};

TEST_F(StoredNode, CutFillsTheLowerBound) {
    Node node = Found(50, 130, 50, "d8b6");
    node.position_class = middle_game;
    node.flags = NodeFlags::pin_threat | NodeFlags::mate_threat | NodeFlags::perpetual_threat;
    EXPECT_EQ(FinishNode(node), 50);
    TranspositionHit hit;
    EXPECT_EQ(search_.tables.transposition.Probe(board().key(), 1, 130, 50, hit), TranspositionAnswer::at_least_beta);
    EXPECT_EQ(hit.move, node.best_move);
    EXPECT_EQ(hit.position_class, middle_game);
    EXPECT_EQ(hit.flags, NodeFlags::pin_threat | NodeFlags::mate_threat) << "the perpetual threat is not kept";
    EXPECT_EQ(Probe(130, 51), TranspositionAnswer::undecided) << "no upper bound";
    EXPECT_EQ(Probe(131, 50), TranspositionAnswer::undecided);
}

TEST_F(StoredNode, FailLowFillsTheUpperBoundAndKeepsTheBestMove) {
    const Node node = Found(50, 130, 49, "d8b6");
    EXPECT_EQ(FinishNode(node), 49);
    TranspositionHit hit;
    EXPECT_EQ(search_.tables.transposition.Probe(board().key(), 1, 130, 50, hit), TranspositionAnswer::below_beta);
    EXPECT_EQ(hit.move, node.best_move);
    EXPECT_EQ(Probe(130, 49), TranspositionAnswer::undecided) << "no lower bound";
    EXPECT_EQ(Probe(131, 50), TranspositionAnswer::undecided);
}

TEST_F(StoredNode, NothingIsStoredWhenEveryMoveWasSkipped) {
    const Node node = search_.NodeAt(50, 130);
    EXPECT_EQ(FinishNode(node), 49);
    EXPECT_EQ(Probe(0, 50), TranspositionAnswer::not_found);
}

TEST_F(StoredNode, NothingIsStoredBelowTheStoringDistance) {
    search_.settings.required_distance_to_store_hashtables = 131;
    EXPECT_EQ(FinishNode(Found(50, 130, 50, "d8b6")), 50);
    EXPECT_EQ(Probe(0, 50), TranspositionAnswer::not_found);
    EXPECT_EQ(FinishNode(Found(50, 131, 50, "d8b6")), 50);
    EXPECT_NE(Probe(0, 50), TranspositionAnswer::not_found);
}

struct MateRow {
    std::string_view name;
    Score score;  ///< seen from the root
    Score stored;
};
std::ostream& operator<<(std::ostream& out, const MateRow& row) { return out << row.name; }

class StoredMates : public StoredNode, public testing::WithParamInterface<MateRow> {};

/// The position is stored at ply 1 and asked at ply 0: a mate that counts from the node shifts by that.
TEST_P(StoredMates, CountFromTheNode) {
    const MateRow& row = GetParam();
    (void)FinishNode(Found(row.score, 64, row.score, "d8b6"));
    TranspositionHit hit;
    EXPECT_EQ(search_.tables.transposition.Probe(board().key(), 0, 64, row.stored, hit),
              TranspositionAnswer::at_least_beta);
    EXPECT_EQ(search_.tables.transposition.Probe(board().key(), 0, 64, row.stored + 1, hit),
              TranspositionAnswer::undecided);
}

INSTANTIATE_TEST_SUITE_P(KnownNode, StoredMates,
                         testing::Values(MateRow{"no mate", 31766, 31766}, MateRow{"mating", 31767, 31768},
                                         MateRow{"mating soon", 32760, 32761}, MateRow{"no mated", -31766, -31766},
                                         MateRow{"mated", -31767, -31768}),
                         RowName<MateRow>);

TEST_F(StoredNode, DistancesBeyondTheEntryAreCutDown) {
    (void)FinishNode(Found(50, 64000, 50, "d8b6"));
    EXPECT_EQ(Probe(32767, 50), TranspositionAnswer::at_least_beta);
    search_.tables.Clear();
    (void)FinishNode(Found(50, -64000, 50, "d8b6"));
    EXPECT_EQ(Probe(-32766, 50), TranspositionAnswer::at_least_beta) << "not taken for no distance at all";
}

// --- Killers and history of a cut ---

TEST_F(StoredNode, CutMoveBecomesTheFirstKiller) {
    KillerPair& killers = search_.board->killers[1];
    const Move first = MoveOf(board(), "d8b6");
    const Move second = MoveOf(board(), "h7h6");
    const Move third = MoveOf(board(), "a7a6");
    (void)FinishNode(Found(50, 64, 50, "d8b6"));
    EXPECT_EQ(killers.first, first);
    EXPECT_EQ(killers.second, INVALID);
    (void)FinishNode(Found(50, 64, 50, "d8b6"));
    EXPECT_EQ(killers.second, INVALID) << "the first killer again: nothing moves";
    (void)FinishNode(Found(50, 64, 50, "h7h6"));
    EXPECT_EQ(killers.first, second);
    EXPECT_EQ(killers.second, first);
    (void)FinishNode(Found(50, 64, 50, "d8b6"));
    EXPECT_EQ(killers.first, first) << "the second killer again: they swap";
    EXPECT_EQ(killers.second, second);
    (void)FinishNode(Found(50, 64, 50, "a7a6"));
    EXPECT_EQ(killers.first, third);
    EXPECT_EQ(killers.second, first);
    (void)FinishNode(Found(50, 64, 49, "h7h6"));
    EXPECT_EQ(killers.first, third) << "a fail low tells nothing";
}

TEST_F(StoredNode, HistoryHearsOfQuietCutsOnly) {
    const auto value_of = [&](std::string_view text) {
        const HistoryBand& band = search_.board->history.Band(1);
        const HistoryEntry& entry = band.entries[HistoryBand::Index(MoveOf(board(), text), black)];
        return band.IsCurrent(entry) ? entry.value : 0;
    };
    (void)FinishNode(Found(50, 64, 50, "d8b6"));
    EXPECT_GT(value_of("d8b6"), 0);
    (void)FinishNode(Found(50, 64, 49, "h7h6"));
    EXPECT_EQ(value_of("h7h6"), 0) << "no cut";
    (void)FinishNode(Found(50, 64, 50, "d5c4"));
    EXPECT_EQ(value_of("d5c4"), 0) << "a capture";
    search_.settings.no_history_bonus_for_tactical_moves = false;
    (void)FinishNode(Found(50, 64, 50, "d5c4"));
    EXPECT_GT(value_of("d5c4"), 0);
}

}  // namespace
