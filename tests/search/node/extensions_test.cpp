#include "search/node/extensions.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <ostream>
#include <string_view>

#include "evaluation/context/position_type.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

constexpr std::string_view quiet_fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N2NP1/PP3PBP/R1BQ1RK1 w - - 4 10";

/// A node at ply 1, after a quiet move.
class Extensions : public testing::Test {
  protected:
    Extensions() {
        search_.Make("a2a3");
        search_.board->position_class[1] = search_.board->position_class[0];
        search_.board->iteration_depth = 6;  // the full column up to ply 5
    }
    [[nodiscard]] Node At(Distance distance, NodeType type = NodeType::cut) {
        Node node = search_.NodeAt(0, distance);
        node.type = type;
        node.child_flags = ChildFlags::none;
        node.flags = NodeFlags::queen_not_attacked;
        return node;
    }
    [[nodiscard]] Move MoveNamed(std::string_view text) { return MoveOf(search_.board->board, text); }

    SearchBuilder search_{quiet_fen};
};

// --- Which column ---

struct ColumnRow {
    std::string_view name;
    Distance distance;
    NodeType type;
    int iteration_depth;
    bool is_full;
    std::function<void(SearchSettings& settings)> change = [](SearchSettings&) {};
};
std::ostream& operator<<(std::ostream& out, const ColumnRow& row) { return out << row.name; }

class Columns : public Extensions, public testing::WithParamInterface<ColumnRow> {};

TEST_P(Columns, AreChosenByDistanceAndPly) {
    const ColumnRow& row = GetParam();
    row.change(search_.settings);
    search_.board->iteration_depth = row.iteration_depth;
    Node node = At(row.distance, row.type);
    DelayedExtensions(node);
    EXPECT_EQ(node.full_extensions, row.is_full);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Extensions, Columns, testing::Values(
    ColumnRow{"ply 1 of iteration 1", 64, NodeType::cut, 1, true},
    ColumnRow{"ply 1 with plies beginning at 0", 64, NodeType::cut, 1, false, [](SearchSettings& s) { s.full_extension_minimum_depth = 0; }},
    ColumnRow{"two thirds of the iteration, rounded down", 64, NodeType::cut, 2, true, [](SearchSettings& s) { s.full_extension_minimum_depth = 0; }},
    ColumnRow{"factor", 64, NodeType::cut, 2, false, [](SearchSettings& s) {
        s.full_extension_minimum_depth = 0; s.full_extension_root_depth_related_factor_multiplicator = 1; }},
    ColumnRow{"divisor", 64, NodeType::cut, 2, false, [](SearchSettings& s) {
        s.full_extension_minimum_depth = 0; s.full_extension_root_depth_related_factor_divisor = 5; }},
    ColumnRow{"least distance", 1, NodeType::cut, 6, true},
    ColumnRow{"below the least distance", 0, NodeType::cut, 6, false},
    ColumnRow{"below the least distance, principal variation", 0, NodeType::principal, 6, false},
    ColumnRow{"least distance of the principal variation is its own", 64, NodeType::principal, 6, false, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_searching_pv_move = 65; }},
    ColumnRow{"least distance of the others does not bind it", 64, NodeType::principal, 6, true, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_not_searching_pv_move = 65; }},
    ColumnRow{"least distance of the others", 64, NodeType::all, 6, false, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_not_searching_pv_move = 65; }},
    ColumnRow{"quiescence of the others never", 0, NodeType::cut, 6, false, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_not_searching_pv_move = -100; }},
    ColumnRow{"quiescence of the others, allowed", 0, NodeType::cut, 6, true, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_not_searching_pv_move = -100;
        s.never_full_extension_in_quiescence_if_not_searching_pv_move = false; }},
    ColumnRow{"quiescence of the principal variation", 0, NodeType::principal, 6, true, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_searching_pv_move = -100; }},
    ColumnRow{"quiescence of the principal variation, forbidden", 0, NodeType::principal, 6, false, [](SearchSettings& s) {
        s.min_depth_for_search_extensions_if_searching_pv_move = -100;
        s.never_full_extension_in_quiescence_if_searching_pv_move = true; }},
    ColumnRow{"no extensions at all", 64, NodeType::cut, 6, false, [](SearchSettings& s) { s.enable_search_extensions = false; }}),
    RowName<ColumnRow>);
// clang-format on

// --- Delayed extensions ---

struct DelayedRow {
    std::string_view name;
    Distance full, limited;
    ExtensionCauses cause;
    std::function<void(Node& node)> change;
};
std::ostream& operator<<(std::ostream& out, const DelayedRow& row) { return out << row.name; }

class DelayedAmounts : public Extensions, public testing::WithParamInterface<DelayedRow> {};

TEST_P(DelayedAmounts, HaveTwoColumnsAndAMinimumDistance) {
    const DelayedRow& row = GetParam();
    for (const bool full : {true, false}) {
        if (!full) search_.settings.full_extension_minimum_depth = -100;
        Node node = At(64);
        row.change(node);
        DelayedExtensions(node);
        EXPECT_EQ(node.delayed_extension, full ? row.full : row.limited);
        EXPECT_TRUE(HasAny(node.extended, row.cause));
        Node near = At(0);
        row.change(near);
        DelayedExtensions(near);
        EXPECT_EQ(near.delayed_extension, 0) << "below the least distance the position earns nothing";
        EXPECT_FALSE(HasAny(near.extended, row.cause));
    }
}

Node& WithFlag(Node& node, NodeFlags flag) {
    node.flags |= flag;
    return node;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Extensions, DelayedAmounts, testing::Values(
    DelayedRow{"mate threat", 64, 32, ExtensionCauses::mate_threat, [](Node& n) { WithFlag(n, NodeFlags::mate_threat); }},
    DelayedRow{"perpetual threat", 16, 4, ExtensionCauses::perpetual_threat, [](Node& n) { WithFlag(n, NodeFlags::perpetual_threat); }},
    DelayedRow{"new pin", 32, 20, ExtensionCauses::pin_threat, [](Node& n) { WithFlag(n, NodeFlags::pin_threat).pin_result = PinResult::new_pin; }},
    DelayedRow{"tightened pin", 24, 20, ExtensionCauses::pin_threat, [](Node& n) { WithFlag(n, NodeFlags::pin_threat).pin_result = PinResult::tightened; }},
    DelayedRow{"pin from the table", 24, 20, ExtensionCauses::pin_threat, [](Node& n) { WithFlag(n, NodeFlags::pin_threat).pin_result = PinResult::unchanged; }},
    DelayedRow{"new pin taken for one from the table", 25, 21, ExtensionCauses::pin_threat, [](Node& n) {
        WithFlag(n, NodeFlags::pin_threat).pin_result = PinResult::new_pin;
        n.search.settings.always_assume_that_pin_threat_was_hashed = true;
        n.search.settings.full_pin_threat_extension_bonus__hashed_pin = 25; n.search.settings.limited_pin_threat_extension_bonus__hashed_pin = 21; }},
    DelayedRow{"attacked queen", 12, 8, ExtensionCauses::queen_attacked, [](Node& n) { n.flags = NodeFlags::queen_attacked; }},
    DelayedRow{"all together", 124, 64, ExtensionCauses::mate_threat | ExtensionCauses::queen_attacked, [](Node& n) {
        WithFlag(n, NodeFlags::mate_threat | NodeFlags::perpetual_threat | NodeFlags::pin_threat | NodeFlags::queen_attacked).pin_result = PinResult::new_pin; }}),
    RowName<DelayedRow>);
// clang-format on

TEST_F(Extensions, QueenIsTestedOnceAndRemembered) {
    Node calm = At(64);
    calm.flags = NodeFlags::none;
    DelayedExtensions(calm);
    EXPECT_EQ(calm.flags, NodeFlags::queen_not_attacked);
    SearchBuilder attacked("3qk3/8/4N3/8/8/8/8/4K3 b - - 0 1");
    attacked.board->position_class[1] = attacked.board->position_class[0];
    attacked.Make("e8e7");
    attacked.Make("e1e2");
    Node node = attacked.NodeAt(0, 64);
    DelayedExtensions(node);
    EXPECT_EQ(node.flags, NodeFlags::queen_attacked);
}

TEST_F(Extensions, DelayedSumIsCapped) {
    search_.settings.full_mate_threat_extension_bonus = 200;
    Node node = At(64);
    node.flags |= NodeFlags::mate_threat;
    DelayedExtensions(node);
    EXPECT_EQ(node.delayed_extension, 128);
    search_.settings.full_delayed_extensions_bonus = 64000;
    Node uncapped = At(64);
    uncapped.flags |= NodeFlags::mate_threat;
    DelayedExtensions(uncapped);
    EXPECT_EQ(uncapped.delayed_extension, 200) << "64000 is no cap";
    search_.settings.full_extension_minimum_depth = -100;
    search_.settings.limited_mate_threat_extension_bonus = 100;
    Node limited = At(64);
    limited.flags |= NodeFlags::mate_threat;
    DelayedExtensions(limited);
    EXPECT_EQ(limited.delayed_extension, 80);
}

// --- The position-type term ---

struct TypeRow {
    std::string_view name;
    int previous, present;
    Distance distance;
    NodeType type;
    bool is_full;
    Distance term;
};
std::ostream& operator<<(std::ostream& out, const TypeRow& row) { return out << row.name; }

class TypeTerms : public Extensions, public testing::WithParamInterface<TypeRow> {};

TEST_P(TypeTerms, FollowTheClassOfTheLine) {
    const TypeRow& row = GetParam();
    if (!row.is_full) search_.settings.full_extension_minimum_depth = -100;
    search_.settings.full_delayed_extensions_bonus = search_.settings.limited_delayed_extensions_bonus = 64000;
    search_.board->position_class[0] = row.previous;
    Node node = At(row.distance, row.type);
    node.position_class = row.present;
    DelayedExtensions(node);
    EXPECT_EQ(node.delayed_extension, row.term);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Extensions, TypeTerms, testing::Values(
    TypeRow{"staying in a middle game", 1, 1, 64, NodeType::cut, true, 0},
    TypeRow{"staying in a queen ending", 4, 4, 64, NodeType::cut, true, 4},
    TypeRow{"staying in a queen ending, limited", 4, 4, 64, NodeType::cut, false, 1},
    TypeRow{"staying in a pawn ending", 15, 15, 64, NodeType::principal, true, 10},
    TypeRow{"staying where queen fights rook", 10, 10, 64, NodeType::cut, true, -10},
    TypeRow{"a negative term is not quartered", 10, 10, 64, NodeType::cut, false, -10},
    TypeRow{"a negative term stays in quiescence", 16, 16, 0, NodeType::cut, true, -21},
    TypeRow{"a positive term does not", 15, 15, 0, NodeType::cut, true, 0},
    TypeRow{"entering a pawn ending", 17, 15, 64, NodeType::principal, true, 256},
    TypeRow{"entering a pawn ending, limited", 17, 15, 64, NodeType::principal, false, 64},
    TypeRow{"entering off the principal variation counts half", 17, 15, 64, NodeType::all, true, 128},
    TypeRow{"entering far from the horizon", 17, 15, 385, NodeType::principal, true, 384},
    TypeRow{"entering not quite so far", 17, 15, 384, NodeType::principal, true, 256},
    TypeRow{"entering far off the principal variation", 17, 15, 513, NodeType::cut, true, 192},
    TypeRow{"entering not quite so far off it", 17, 15, 512, NodeType::cut, true, 128},
    TypeRow{"entering a pawnless ending", 15, 16, 64, NodeType::principal, true, -384},
    TypeRow{"a negative one is neither grown nor halved", 15, 16, 600, NodeType::cut, true, -384},
    TypeRow{"and stays below the least distance", 15, 16, 0, NodeType::cut, true, -384},
    TypeRow{"entering a middle game", 0, 1, 64, NodeType::principal, true, 0}),
    RowName<TypeRow>);
// clang-format on

/// The two tables by type, as they stand in front of whoever tunes them.
// clang-format off
constexpr std::array<Distance, 18> stay_by_type{0, 0, 0, 0, 4, 5, 5, 5, 0, 0, -10, 5, 5, 0, -8, 10, -21, 0};
constexpr std::array<Distance, 18> enter_by_type{0, 0, 32, 16, 128, 64, 64, 32, 32, -32, -192, 128, 128, 0, -128, 256, -384, 32};
// clang-format on

TEST_F(Extensions, EveryTypeHasItsTerms) {
    search_.settings.full_delayed_extensions_bonus = 64000;
    for (std::size_t type = 0; type < stay_by_type.size(); ++type) {
        for (const bool stays : {true, false}) {
            const int present = static_cast<int>(type);
            search_.board->position_class[0] = stays ? present : 17 - present;
            Node node = At(64, NodeType::principal);
            node.position_class = present;
            DelayedExtensions(node);
            EXPECT_EQ(node.delayed_extension, stays ? stay_by_type[type] : enter_by_type[type]) << "type " << type;
        }
    }
}

/// Rooks are traded on e7 and the kings move on: the trade itself earns nothing, but the line is still in its old class
/// then, so that the first quiet move enters the new one.
TEST(ClassOfTheLine, IsKeptUntilAQuietMoveEntersTheNewOne) {
    SearchBuilder search("4k3/4r3/8/3p4/3P4/8/8/4R1K1 w - - 0 1", {.full_delayed_extensions_bonus = 64000});
    search.board->iteration_depth = 20;
    const auto term_after = [&](std::string_view move) {
        search.Make(move);
        (void)search.Ask(-30000, 1);  // a node that looks at its class and leaves
        Node node = search.NodeAt(-30000, 64);
        node.flags = NodeFlags::queen_not_attacked;
        node.position_class = classify_position(search.board->board, no_position_type);
        DelayedExtensions(node);
        return node.delayed_extension;
    };
    EXPECT_EQ(term_after("e1e7"), 0);
    EXPECT_EQ(search.board->position_class[1], rook_ending);
    EXPECT_EQ(term_after("e8e7"), 0);
    EXPECT_EQ(search.board->position_class[2], rook_ending) << "still";
    EXPECT_EQ(term_after("g1f2"), 256) << "a pawn ending is entered";
    EXPECT_EQ(search.board->position_class[3], pawn_ending);
    EXPECT_EQ(term_after("e7e6"), 10) << "and stayed in";
}

TEST_F(Extensions, TypeTermIsOnlyForQuietLastMoves) {
    search_.board->position_class[0] = unbalanced_ending;
    const auto term = [&] {
        Node node = At(64, NodeType::principal);
        node.position_class = queen_ending;
        DelayedExtensions(node);
        return node.delayed_extension;
    };
    EXPECT_EQ(term(), 128);
    search_.board->moves_played[1] |= direct_check_bit;
    EXPECT_EQ(term(), 0) << "a check is not quiet either";
    search_.board->moves_played[1] = MakeWord(a2, a3, pawn, knight);
    EXPECT_EQ(term(), 0);
    search_.board->moves_played[1] = INVALID;
    EXPECT_EQ(term(), 128) << "after a null move";
    search_.settings.enable_position_type_dependent_search_extensions = false;
    EXPECT_EQ(term(), 0);
}

// --- Instant extensions ---

struct InstantRow {
    std::string_view name;
    std::string_view fen;
    std::string_view before;  ///< leads to ply 1
    std::string_view move;
    Distance full, limited;
    std::function<void(Node& node)> change = [](Node&) {};
};
std::ostream& operator<<(std::ostream& out, const InstantRow& row) { return out << row.name; }

class InstantAmounts : public testing::TestWithParam<InstantRow> {};

TEST_P(InstantAmounts, HaveTwoColumnsAtEveryDistance) {
    const InstantRow& row = GetParam();
    for (const bool full : {true, false}) {
        for (const Distance distance : {256, 0, -200}) {
            SearchBuilder search(row.fen);
            search.Make(row.before);
            Node node = search.NodeAt(0, distance);
            node.child_flags = ChildFlags::none;
            row.change(node);
            node.full_extensions = full;
            EXPECT_EQ(ExtendedDistance(node, MoveOf(search.board->board, row.move)) - distance,
                      full ? row.full : row.limited);
        }
    }
}

constexpr std::string_view captures_fen = "4k3/8/3n4/2b1p3/3P1N2/2P5/8/4K3 w - - 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Extensions, InstantAmounts, testing::Values(
    InstantRow{"quiet", quiet_fen, "a2a3", "a7a6", 0, 0},
    InstantRow{"simple check", "4k3/8/8/8/8/8/8/R3K3 b - - 0 1", "e8f8", "a1a8", 40, 24},
    InstantRow{"discovered check", "4k3/8/8/8/8/4N3/8/4RK2 b - - 0 1", "e8e7", "e3g4", 32, 20},
    InstantRow{"double check", "4k3/8/8/8/8/4N3/8/4RK2 b - - 0 1", "e8e7", "e3f5", 80, 40},
    InstantRow{"recapture of a bishop by way of a pawn: not equal", captures_fen, "d4c5", "d6c4", 0, 0},
    InstantRow{"recapture, pawn for pawn", "4k3/8/3p4/4p3/3P4/8/8/4K3 w - - 0 1", "d4e5", "d6e5", 28, 12},
    InstantRow{"knight takes bishop, then knight is taken", "4k3/8/1p6/2b5/4N3/8/8/4K3 b - - 0 1", "e8e7", "e4c5", 0, 0},
    InstantRow{"a pawn taken after a quiet move counts as one", "4k3/8/8/4p3/3P4/8/8/4K3 b - - 0 1", "e8e7", "d4e5", 28, 12},
    InstantRow{"a knight taken after a quiet move does not", "4k3/8/8/4n3/3P4/8/8/4K3 b - - 0 1", "e8e7", "d4e5", 0, 0},
    InstantRow{"a knight recaptures a bishop's equal", "4k3/8/1p6/2b5/4N3/8/8/4K3 w - - 0 1", "e4c5", "b6c5", 28, 12},
    InstantRow{"recapture on another square", "4k3/8/8/2b5/4N3/6b1/5N2/K7 w - - 0 1", "e4c5", "g3f2", 28, 12},
    InstantRow{"recapture on another square, where it must be the same", "4k3/8/8/2b5/4N3/6b1/5N2/K7 w - - 0 1", "e4c5", "g3f2", 0, 0, [](Node& n) {
        n.search.settings.capture_and_recapture_must_be_on_the_same_sq = true; }},
    InstantRow{"a rook for a knight is none", "4k3/8/1p6/2n5/8/8/8/2R1K3 w - - 0 1", "c1c5", "b6c5", 0, 0},
    InstantRow{"no capture after a capture", "4k3/8/1p6/2n5/8/8/8/2R1K3 w - - 0 1", "c1c5", "b6b5", 0, 0},
    InstantRow{"recapture forbidden", "4k3/8/1p6/2b5/4N3/8/8/4K3 w - - 0 1", "e4c5", "b6c5", 0, 0, [](Node& n) {
        n.child_flags = ChildFlags::no_recapture_extension; }},
    InstantRow{"recapture of too little", "4k3/8/1p6/2b5/4N3/8/8/4K3 w - - 0 1", "e4c5", "b6c5", 0, 0, [](Node& n) {
        n.search.settings.min_captured_piece_for_recapture_extension = knight + 1; }},
    InstantRow{"recapture of just enough", "4k3/8/1p6/2b5/4N3/8/8/4K3 w - - 0 1", "e4c5", "b6c5", 28, 12, [](Node& n) {
        n.search.settings.min_captured_piece_for_recapture_extension = knight; }},
    InstantRow{"recapture on the same square", "4k3/8/1p6/2b5/4N3/8/8/4K3 w - - 0 1", "e4c5", "b6c5", 28, 12, [](Node& n) {
        n.search.settings.capture_and_recapture_must_be_on_the_same_sq = true; }},
    InstantRow{"pawn to the 7th, passed or not", "3nk3/8/3PP3/8/8/8/8/4K3 b - - 0 1", "e8f8", "d6d7", 64, 32},
    InstantRow{"black pawn to its 7th", "4k3/8/8/8/8/3p4/8/4K3 w - - 0 1", "e1f1", "d3d2", 64, 32},
    InstantRow{"passed pawn to the 6th in an ending", "4k3/8/8/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5d6", 32, 16},
    InstantRow{"black passed pawn to its 6th", "4k3/8/8/8/3p4/8/8/4K3 w - - 0 1", "e1f1", "d4d3", 32, 16},
    InstantRow{"passed pawn to the 6th in a middle game", "4k3/8/8/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5d6", 24, 12, [](Node& n) { n.position_class = middle_game; }},
    InstantRow{"pawn to the 6th with an enemy pawn ahead", "4k3/2p5/8/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5d6", 0, 0},
    InstantRow{"pawn to the 6th with an enemy pawn straight ahead", "4k3/3p4/8/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5d6", 0, 0},
    InstantRow{"black pawn to its 6th with an enemy pawn ahead", "4k3/8/8/8/3p4/8/4P3/6K1 w - - 0 1", "g1h1", "d4d3", 0, 0},
    InstantRow{"pawn to the 6th with an own pawn ahead", "4k3/2P5/8/3P4/8/8/8/4K3 b - - 0 1", "e8f7", "d5d6", 32, 16},
    InstantRow{"pawn to the 6th with an enemy pawn two files off", "4k3/1p6/8/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5d6", 32, 16},
    InstantRow{"pawn to the 8th", "8/3P3k/8/8/8/8/8/4K3 b - - 0 1", "h7h6", "d7d8", 0, 0},
    InstantRow{"pawn to the 7th in a middle game", "4k3/8/3P4/8/8/8/8/4K3 b - - 0 1", "e8f8", "d6d7", 65, 33, [](Node& n) {
        n.position_class = middle_game;
        n.search.settings.full_passer_7th_rank_extension_bonus__non_endgame = 65; n.search.settings.limited_passer_7th_rank_extension_bonus__non_endgame = 33; }},
    InstantRow{"pawn to the 7th in the first ending", "4k3/8/3P4/8/8/8/8/4K3 b - - 0 1", "e8f8", "d6d7", 66, 34, [](Node& n) {
        n.position_class = balanced_ending;
        n.search.settings.full_passer_7th_rank_extension_bonus__endgame = 66; n.search.settings.limited_passer_7th_rank_extension_bonus__endgame = 34; }},
    InstantRow{"rook to the 6th", "6k1/8/8/8/8/8/8/R3K3 b - - 0 1", "g8h8", "a1a6", 0, 0},
    InstantRow{"queen to the 7th", "6k1/8/8/8/8/8/8/Q3K3 b - - 0 1", "g8f8", "a1a7", 0, 0},
    InstantRow{"pawn to the 6th with an enemy pawn beside", "4k3/8/2p5/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5d6", 32, 16},
    InstantRow{"pawn to the 6th by a capture", "4k3/8/2n5/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5c6", 0, 0},
    InstantRow{"pawn to the 6th by a capture that counts", "4k3/8/2n5/3P4/8/8/8/4K3 b - - 0 1", "e8f8", "d5c6", 32, 16, [](Node& n) {
        n.search.settings.passer_must_reach_6th_rank_by_non_capture_move = false; }},
    InstantRow{"pawn to the 5th", "4k3/8/8/8/3P4/8/8/4K3 b - - 0 1", "e8f8", "d4d5", 0, 0},
    InstantRow{"rook to the 7th", "6k1/5p2/8/8/8/8/8/R3K3 b - - 0 1", "g8h8", "a1a7", 12, 6},
    InstantRow{"black rook to its 7th", "r5k1/8/8/8/8/8/5P2/6K1 w - - 0 1", "g1h1", "a8a2", 12, 6},
    InstantRow{"rook along the 7th", "6k1/R7/8/8/8/8/8/4K3 b - - 0 1", "g8h8", "a7b7", 0, 0},
    InstantRow{"rook to the 7th, the king on its third rank", "8/8/5k2/8/8/8/8/R3K3 b - - 0 1", "f6g6", "a1a7", 0, 0},
    InstantRow{"rook to the 7th, the king on its second rank", "8/5k2/8/8/8/8/8/RN2K3 b - - 0 1", "f7g7", "a1a7", 52, 30},
    InstantRow{"rook to the 8th", "1n4k1/7p/8/8/8/8/8/R3K3 b - - 0 1", "h7h6", "a1a8", 0, 0},
    InstantRow{"rook from the 8th to the 7th", "R3n1k1/7p/8/8/8/8/8/4K3 b - - 0 1", "h7h6", "a8a7", 12, 6},
    InstantRow{"black rook to its 7th, the king on its third rank", "r5k1/8/8/8/8/6K1/8/8 w - - 0 1", "g3f3", "a8a2", 0, 0},
    InstantRow{"black rook to its 7th, the king on its second rank", "r5k1/8/8/8/8/8/1N4K1/8 w - - 0 1", "g2h2", "a8a2", 12, 6},
    InstantRow{"single reply", quiet_fen, "a2a3", "a7a6", 128, 64, [](Node& n) { n.flags = NodeFlags::single_reply; }},
    InstantRow{"sum is capped", "4k3/8/8/8/8/8/8/R3K3 b - - 0 1", "e8e7", "a1a7", 128, 80, [](Node& n) { n.flags = NodeFlags::single_reply; }},
    InstantRow{"without a cap", "4k3/8/8/8/8/8/8/R3K3 b - - 0 1", "e8f8", "a1a8", 168, 88, [](Node& n) {
        n.flags = NodeFlags::single_reply;
        n.search.settings.full_instant_extensions_bonus = n.search.settings.limited_instant_extensions_bonus = 64000; }},
    InstantRow{"with the delayed ones, capped again", "4k3/8/8/8/8/8/8/R3K3 b - - 0 1", "e8e7", "a1a7", 192, 128, [](Node& n) {
        n.flags = NodeFlags::single_reply; n.delayed_extension = 128; }},
    InstantRow{"with the delayed ones, uncapped", "4k3/8/8/8/8/8/8/R3K3 b - - 0 1", "e8e7", "a1a7", 256, 208, [](Node& n) {
        n.flags = NodeFlags::single_reply; n.delayed_extension = 128;
        n.search.settings.full_total_extensions_bonus = n.search.settings.limited_total_extensions_bonus = 64000; }},
    InstantRow{"delayed ones may be negative", quiet_fen, "a2a3", "a7a6", -21, -21, [](Node& n) { n.delayed_extension = -21; }},
    InstantRow{"switched off", "4k3/8/8/8/8/8/8/R3K3 b - - 0 1", "e8e7", "a1a7", 0, 0, [](Node& n) {
        n.flags = NodeFlags::single_reply; n.search.settings.enable_search_extensions = false; }}),
    RowName<InstantRow>);
// clang-format on

/// The root has no move before its own: the move on the stack there is none to recapture from.
TEST(InstantAmounts, RootRecapturesNothing) {
    SearchBuilder search("4k3/8/1p6/2N5/8/8/8/4K3 b - - 0 1");
    search.board->moves_played[0] = MakeWord(e4, c5, knight, bishop);
    Node node = search.NodeAt(0, 128);
    node.child_flags = ChildFlags::none;
    EXPECT_EQ(ExtendedDistance(node, MoveOf(search.board->board, "b6c5")), 128);
}

/// Only the check bits are taken back for the next move: one recapture keeps all later moves from being reduced.
TEST(ExtensionCauses, StaySetForLaterMovesButForTheChecks) {
    SearchBuilder search("4k3/8/1p6/2b5/4N3/8/8/R3K3 w - - 0 1");
    search.Make("e4c5");
    Node node = search.NodeAt(0, 128);
    node.child_flags = ChildFlags::none;
    (void)ExtendedDistance(node, MoveOf(search.board->board, "b6c5"));
    EXPECT_EQ(node.extended, ExtensionCauses::recapture);
    (void)ExtendedDistance(node, MoveOf(search.board->board, "e8e7"));
    EXPECT_EQ(node.extended, ExtensionCauses::recapture);

    SearchBuilder checks("4k3/8/8/8/8/4N3/8/R3RK2 b - - 0 1");
    checks.Make("e8e7");
    Node checking = checks.NodeAt(0, 128);
    for (const auto& [move, cause] :
         {std::pair{"e3f5", ExtensionCauses::double_check}, std::pair{"e3g4", ExtensionCauses::discovered_check}}) {
        (void)ExtendedDistance(checking, MoveOf(checks.board->board, move));
        EXPECT_EQ(checking.extended, cause);
    }
    (void)ExtendedDistance(checking, MoveOf(checks.board->board, "a1a7"));
    EXPECT_EQ(checking.extended, ExtensionCauses::simple_check | ExtensionCauses::rook_on_7th);
    (void)ExtendedDistance(checking, MoveOf(checks.board->board, "f1f2"));
    EXPECT_EQ(checking.extended, ExtensionCauses::rook_on_7th);
}

}  // namespace
