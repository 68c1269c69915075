#include "search/node/child_search.h"

#include <gtest/gtest.h>

#include <string_view>

#include "search/tables/hash.h"
#include "support/board_builder.h"
#include "support/plain_settings.h"
#include "support/search_builder.h"

namespace {

using enum ChildFlags;

constexpr std::string_view checks_fen = "6k1/5ppp/8/8/8/8/Q4PPP/6K1 w - - 0 1";

class Child : public testing::Test {
  protected:
    [[nodiscard]] Move MoveNamed(std::string_view text) { return MoveOf(search_.board->board, text); }

    /// The distance with which the child was searched, as its entry in the table has it; no_distance for no entry.
    [[nodiscard]] Distance StoredDistance(Move move) {
        Move hash_move = INVALID;
        Distance distance = no_distance;
        (void)search_.tables.transposition.ProbeMove(search_.board->board.HashKeyAfterMove(move), hash_move, distance);
        return distance;
    }

    [[nodiscard]] Score Ask(Node& node, Move move, Distance new_distance, Distance reduced) {
        return SearchChild(node, move, node.board().HashKeyAfterMove(move), new_distance, reduced);
    }

    SearchBuilder search_{checks_fen};
};

TEST_F(Child, InheritsWhatIsMeantForIt) {
    Node node = search_.NodeAt(0, 128);
    node.child_flags = no_null_move | no_late_move_reduction | NextPly(no_extended_futility | no_perpetual_test);
    EXPECT_EQ(FlagsForChild(node, MoveNamed("a2a3")), no_extended_futility | no_perpetual_test);
}

TEST_F(Child, DoubleCheckKeepsItFromRecapturing) {
    Node node = search_.NodeAt(0, 128);
    node.child_flags = ChildFlags::none;
    node.extended = ExtensionCauses::simple_check | ExtensionCauses::recapture;
    EXPECT_EQ(FlagsForChild(node, MoveNamed("a2a8")), ChildFlags::none);
    node.extended |= ExtensionCauses::double_check;
    EXPECT_EQ(FlagsForChild(node, MoveNamed("a2a8")), no_recapture_extension);
}

TEST_F(Child, ChecksCanKeepItsChildrenFromBeingPruned) {
    Node node = search_.NodeAt(0, 128);
    node.child_flags = ChildFlags::none;
    EXPECT_EQ(FlagsForChild(node, MoveNamed("a2a8")), ChildFlags::none) << "not by default";
    search_.settings.skip_razoring_when_last_move_was_a_check = true;
    EXPECT_EQ(Word(FlagsForChild(node, MoveNamed("a2a8"))), 0x100U) << "one ply later than the check: deliberate";
    search_.settings.skip_extended_futility_pruning_when_last_move_was_a_check = true;
    EXPECT_EQ(Word(FlagsForChild(node, MoveNamed("a2a8"))), 0x300U);
    EXPECT_EQ(FlagsForChild(node, MoveNamed("a2a3")), ChildFlags::none) << "no check";
}

TEST_F(Child, GivesItsAnswerFromTheOtherSideAndLeavesTheBoardAlone) {
    Node node = search_.NodeAt(1020, 64);
    node.moves_tried = 1;
    const std::string fen = FenOf(search_.board->board);
    EXPECT_EQ(Ask(node, MoveNamed("a2a3"), 64, 0), 1020);
    EXPECT_EQ(FenOf(search_.board->board), fen);
    EXPECT_EQ(search_.board->moves_played[1], MoveNamed("a2a3"));
    Node too_much = search_.NodeAt(2000, 64);
    too_much.moves_tried = 1;
    EXPECT_EQ(Ask(too_much, MoveNamed("a2a3"), 64, 0), 1999);
}

TEST_F(Child, CutOfAReducedMoveIsConfirmedWithoutTheReduction) {
    search_.settings = PlainSettings();
    search_.settings.required_distance_to_store_hashtables = -64000;
    const Move move = MoveNamed("a2a3");
    for (const bool verify : {true, false}) {
        search_.settings.enable_verification_search = verify;
        search_.tables.transposition.clear();
        Node node = search_.NodeAt(1020, 256);
        node.moves_tried = 5;
        EXPECT_EQ(Ask(node, move, 128, 64), 1020);
        EXPECT_EQ(StoredDistance(move), verify ? 128 : 64);
    }
    search_.settings.enable_verification_search = true;
    search_.tables.transposition.clear();
    Node no_cut = search_.NodeAt(1500, 256);
    no_cut.moves_tried = 5;
    EXPECT_EQ(Ask(no_cut, move, 128, 64), 1499);
    EXPECT_EQ(StoredDistance(move), 64) << "no cut, nothing to confirm";
    search_.tables.transposition.clear();
    Node unreduced = search_.NodeAt(1020, 256);
    unreduced.moves_tried = 5;
    EXPECT_EQ(Ask(unreduced, move, 128, 0), 1020);
    EXPECT_EQ(StoredDistance(move), 64) << "nothing was reduced";
}

}  // namespace
