#include "search/ordering/tactical_scores.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "search/state/sort_score.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

std::int32_t TacticalScoreOf(std::string_view fen, std::string_view move, Score beta,
                             const SearchSettings& settings = {}) {
    SearchBuilder search(fen, settings);
    const Node node = search.NodeAt(beta, 256);
    return TacticalScore(node, MoveOf(search.board->board, move));
}

// --- The scores by default ---
//
// 325 for any tactical move; 15, 10, 65 for a direct, discovered, double check; 4, 5, 5, 6, 10 for the captured piece;
// the gain: a sixteenth of it, 8 less for a loss; above 150 an eighth and 15 more.

struct ScoreRow {
    std::string_view name;
    std::string_view fen;
    std::string_view move;
    std::int32_t score;
    Score beta = 0;
};
std::ostream& operator<<(std::ostream& out, const ScoreRow& row) { return out << row.name; }

class TacticalScores : public testing::TestWithParam<ScoreRow> {};

TEST_P(TacticalScores, OfAMove) {
    const ScoreRow& row = GetParam();
    EXPECT_EQ(TacticalScoreOf(row.fen, row.move, row.beta), row.score);
}

constexpr std::string_view checking_knight = "4k3/8/8/3N4/8/8/8/4K3 w - - 0 1";
/// A rook looks at the king through a knight, whose moves are all discovered checks.
constexpr std::string_view discovering_knight = "4k3/8/4N3/2p5/8/8/8/K3R3 w - - 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Exchanges, TacticalScores, testing::Values(
    ScoreRow{"pawn for nothing",          "4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1",    "e4d5", 325 + 4 + 100 / 16},
    ScoreRow{"knight for nothing",        "4k3/8/8/3n4/4P3/8/8/4K3 w - - 0 1",    "e4d5", 325 + 5 + 305 / 8 + 15},
    ScoreRow{"bishop for nothing",        "4k3/8/8/3b4/4P3/8/8/4K3 w - - 0 1",    "e4d5", 325 + 5 + 315 / 8 + 15},
    ScoreRow{"rook for nothing",          "4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1",    "e4d5", 325 + 6 + 500 / 8 + 15},
    ScoreRow{"queen for nothing",         "4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1",    "e4d5", 325 + 10 + 1020 / 8 + 15},
    ScoreRow{"en passant",                "4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1",    "e5d6", 325 + 4 + 100 / 16},
    ScoreRow{"bishop for knight is even", "4k3/8/2p5/3n4/4B3/8/8/4K3 w - - 0 1",  "e4d5", 325 + 5 - 10 / 16},
    ScoreRow{"knight for pawn",           "4k3/8/2p5/3p4/8/4N3/8/4K3 w - - 0 1",  "e3d5", 325 + 4 - 205 / 16 - 8},
    ScoreRow{"queen for pawn",            "4k3/8/2p5/3p4/8/8/8/3QK3 w - - 0 1",   "d1d5", 325 + 4 - 920 / 16 - 8}),
    RowName<ScoreRow>);

INSTANTIATE_TEST_SUITE_P(Checks, TacticalScores, testing::Values(
    ScoreRow{"safe knight",             checking_knight, "d5f6", 325 + 15 + 4},
    ScoreRow{"knight that is lost",     "4k3/6p1/8/3N4/8/8/8/4K3 w - - 0 1", "d5f6", 325 + 15 - 305 / 16 - 8},
    ScoreRow{"knight for bishop's pawn","4k3/6p1/5b2/3N4/8/8/8/4K3 w - - 0 1", "d5f6", 325 + 15 + 5 + 4 + 10 / 16},
    ScoreRow{"knight that forks a rook","r3k3/8/8/3N4/8/8/8/4K3 w - - 0 1", "d5c7", 325 + 15 + 4 + 500 / 8 + 15},
    ScoreRow{"lost knight forks nothing","r3k3/8/1b6/3N4/8/8/8/4K3 w - - 0 1", "d5c7", 325 + 15 - 305 / 16 - 8},
    ScoreRow{"capture that forks nothing without a check", "r3k3/8/8/1p6/3N4/8/8/4K3 w - - 0 1", "d4b5", 325 + 4 + 100 / 16},
    ScoreRow{"even exchange is safe",   "4k3/1p6/2n5/1B6/8/8/8/4K3 w - - 0 1", "b5c6", 325 + 15 + 5 + 4 + (-10 + 100) / 16},
    ScoreRow{"safe queen next to the king",   "4k3/8/3P4/8/7Q/8/8/K7 w - - 0 1", "h4e7", 325 + 15 + 75},
    ScoreRow{"safe queen two squares off",    "4k3/8/8/8/8/8/8/K2Q4 w - - 0 1",   "d1e2", 325 + 15 + 6},
    ScoreRow{"safe queen two squares off the king", "4k3/8/8/8/2Q5/8/8/K7 w - - 0 1", "c4e6", 325 + 15 + 10},
    ScoreRow{"queen that is lost",            "4k3/5p2/8/8/2Q5/8/8/K7 w - - 0 1", "c4e6", 325 + 15 - 1020 / 16 - 8},
    ScoreRow{"castling with check",           "5k2/8/8/8/8/8/8/4K2R w K - 0 1",   "e1g1", 325 + 15 + 4},
    ScoreRow{"looking for mate: direct",      checking_knight,    "d5f6", 325 + 70 + 4, 31767},
    ScoreRow{"looking for less: direct",      checking_knight,    "d5f6", 325 + 15 + 4, 31766},
    ScoreRow{"looking for mate: discovered",  discovering_knight, "e6g5", 325 + 50, 31767},
    ScoreRow{"looking for mate: double",      "4k3/8/8/4N3/8/8/8/K3R3 w - - 0 1", "e5f3", 325 + 50, 31767},
    ScoreRow{"double",                        "4k3/8/8/8/4N3/8/8/K3R3 w - - 0 1", "e4f6", 325 + 65 + 4},
    ScoreRow{"double, looking for mate",      "4k3/8/8/8/4N3/8/8/K3R3 w - - 0 1", "e4f6", 325 + 75 + 4, 31767},
    ScoreRow{"lost double far from the king", "4k3/6p1/8/8/4N3/8/8/K3R3 w - - 0 1", "e4f6", 325 + 65},
    ScoreRow{"lost double with a threat", "4k1r1/6p1/8/8/4N3/8/8/K3R3 w - - 0 1", "e4f6", 325 + 65 + 500 / 8 + 15}),
    RowName<ScoreRow>);

INSTANTIATE_TEST_SUITE_P(DiscoveredChecks, TacticalScores, testing::Values(
    ScoreRow{"quiet",                                 discovering_knight, "e6g5", 325 + 10},
    ScoreRow{"may lose the piece far from the king",  discovering_knight, "e6d4", 325 + 10},
    ScoreRow{"may not lose it next to the king",      discovering_knight, "e6d8", 325 + 10 - 305 / 16 - 8},
    ScoreRow{"a pawn counts, without a safe piece",   discovering_knight, "e6c5", 325 + 10 + 4 + 100 / 16},
    ScoreRow{"a pawn and a threat to a rook",  "4k3/8/4N3/2p5/r7/8/8/1K2R3 w - - 0 1", "e6c5", 325 + 10 + 4 + 600 / 8 + 15},
    ScoreRow{"a threat counts far from the king, where the piece is lost", "4k3/8/4N3/2p5/8/1r6/8/K3R3 w - - 0 1", "e6d4", 325 + 10 + 500 / 8 + 15},
    ScoreRow{"nothing is lost and nothing threatened", "4k3/8/4N3/8/8/8/8/K3R3 w - - 0 1", "e6d4", 325 + 10},
    ScoreRow{"an even threat next to the king counts", "4k3/8/4N1r1/6B1/8/8/8/K3R3 w - - 0 1", "e6f8", 325 + 10 - 305 / 16 - 8},
    ScoreRow{"a safe threat next to the king counts", "4k3/8/4N1r1/8/1B6/8/8/K3R3 w - - 0 1", "e6f8", 325 + 10 + 500 / 8 + 15}),
    RowName<ScoreRow>);

INSTANTIATE_TEST_SUITE_P(Promotions, TacticalScores, testing::Values(
    ScoreRow{"queen",                 "8/P7/8/8/8/8/8/k1K5 w - - 0 1",     "a7a8", 325 + 15 + 4 + 920 / 8 + 15},
    ScoreRow{"queen without check",   "8/P7/8/8/8/8/1k6/3K4 w - - 0 1",    "a7a8", 325 + 920 / 8 + 15},
    ScoreRow{"guarded queen",         "7r/P7/8/8/8/8/1k6/3K4 w - - 0 1",   "a7a8", 325 - 100 / 16 - 8},
    ScoreRow{"queen by capture",      "1n6/P7/8/8/8/8/2k5/K7 w - - 0 1",   "a7b8", 325 + 5 + 1225 / 8 + 15},
    ScoreRow{"most there is",         "1r6/P7/8/8/8/8/2k5/K7 w - - 0 1",   "a7b8", 511},
    ScoreRow{"knight with check",     "8/P1k5/8/8/8/8/8/3K4 w - - 0 1",    "a7a8N", 325 + 15 + 4 + 205 / 8 + 15},
    ScoreRow{"lost knight with check","7r/P1k5/8/8/8/8/8/3K4 w - - 0 1",   "a7a8N", 325 + 15 - 815 / 16 - 8},
    ScoreRow{"knight without check",  "8/P7/8/8/8/8/1k6/3K4 w - - 0 1",    "a7a8N", 325 - 715 / 16 - 8},
    ScoreRow{"bishop",                "8/P7/8/8/8/8/1k6/3K4 w - - 0 1",    "a7a8B", 325 - 705 / 16 - 8},
    ScoreRow{"rook",                  "8/P7/8/8/8/8/1k6/3K4 w - - 0 1",    "a7a8R", 325 - 520 / 16 - 8},
    ScoreRow{"rook with check",       "8/P7/8/8/8/8/8/k1K5 w - - 0 1",     "a7a8R", 325 + 15 - 520 / 16 - 8},
    ScoreRow{"rook takes no points by capture", "1q6/P7/8/8/8/8/2k5/K7 w - - 0 1", "a7b8R", 325 - 520 / 16 - 8}),
    RowName<ScoreRow>);
// clang-format on

TEST(TacticalScores, BlackIsNoOther) {
    EXPECT_EQ(TacticalScoreOf("4k3/8/8/8/3n4/8/8/R3K3 b - - 0 1", "d4c2", 0), 325 + 15 + 4 + 500 / 8 + 15);
}

// --- The settings ---

struct SettingScoreRow {
    std::string_view name;
    std::function<std::int32_t&(SearchSettings& settings)> setting;
    std::int32_t value;
    std::string_view fen;
    std::string_view move;
    std::int32_t score;  ///< with the value
};
std::ostream& operator<<(std::ostream& out, const SettingScoreRow& row) { return out << row.name; }

class TacticalSettings : public testing::TestWithParam<SettingScoreRow> {};

TEST_P(TacticalSettings, ChangeTheScore) {
    const SettingScoreRow& row = GetParam();
    EXPECT_NE(TacticalScoreOf(row.fen, row.move, 0), row.score);
    SearchSettings changed;
    row.setting(changed) = row.value;
    EXPECT_EQ(TacticalScoreOf(row.fen, row.move, 0, changed), row.score);
}

constexpr std::string_view pawn_fen = "4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1";
constexpr std::string_view rook_fen = "4k3/8/8/3r4/4P3/8/8/4K3 w - - 0 1";
constexpr std::string_view losing_fen = "4k3/8/2p5/3p4/8/8/8/3QK3 w - - 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(TacticalSettings, TacticalSettings, testing::Values(
    SettingScoreRow{"no check",       [](SearchSettings& s) -> std::int32_t& { return s.checking_move_sorting_bonus_if_not_playing_for_mate[0]; }, 3, pawn_fen, "e4d5", 325 + 3 + 4 + 6},
    SettingScoreRow{"direct check",   [](SearchSettings& s) -> std::int32_t& { return s.checking_move_sorting_bonus_if_not_playing_for_mate[1]; }, 3, checking_knight, "d5f6", 325 + 3 + 4},
    SettingScoreRow{"discovered",     [](SearchSettings& s) -> std::int32_t& { return s.checking_move_sorting_bonus_if_not_playing_for_mate[2]; }, 3, discovering_knight, "e6g5", 325 + 3},
    SettingScoreRow{"double",         [](SearchSettings& s) -> std::int32_t& { return s.checking_move_sorting_bonus_if_not_playing_for_mate[3]; }, 3, "4k3/8/8/8/4N3/8/8/K3R3 w - - 0 1", "e4f6", 325 + 3 + 4},
    SettingScoreRow{"any move",       [](SearchSettings& s) -> std::int32_t& { return s.tactical_moves_default_sorting_value; }, 300, pawn_fen, "e4d5", 300 + 4 + 6},
    SettingScoreRow{"least",          [](SearchSettings& s) -> std::int32_t& { return s.tactical_moves_minimum_sorting_value; }, 300, losing_fen, "d1d5", 300},
    SettingScoreRow{"captured pawn",  [](SearchSettings& s) -> std::int32_t& { return s.capture_move_sorting_bonus[1]; }, -9, pawn_fen, "e4d5", 325 - 9 + 6},
    SettingScoreRow{"nothing captured", [](SearchSettings& s) -> std::int32_t& { return s.capture_move_sorting_bonus[0]; }, 9, checking_knight, "d5f6", 325 + 15 + 9 + 4},
    SettingScoreRow{"queen next to the king", [](SearchSettings& s) -> std::int32_t& { return s.safe_queen_check_very_close_to_king_sorting_bonus; }, 1, "4k3/8/3P4/8/7Q/8/8/K7 w - - 0 1", "h4e7", 341},
    SettingScoreRow{"queen two squares off",  [](SearchSettings& s) -> std::int32_t& { return s.safe_queen_check_quite_close_to_king_sorting_bonus; }, 1, "4k3/8/8/8/2Q5/8/8/K7 w - - 0 1", "c4e6", 341},
    SettingScoreRow{"queen further off",      [](SearchSettings& s) -> std::int32_t& { return s.safe_queen_check_not_close_to_king_sorting_bonus; }, 1, "4k3/8/8/8/8/8/8/K2Q4 w - - 0 1", "d1e2", 341},
    SettingScoreRow{"other safe check",       [](SearchSettings& s) -> std::int32_t& { return s.safe_non_queen_check_sorting_bonus; }, 1, checking_knight, "d5f6", 341},
    SettingScoreRow{"margin below the gain",  [](SearchSettings& s) -> std::int32_t& { return s.very_promising_tactical_move_margin; }, 99, pawn_fen, "e4d5", 325 + 4 + 12 + 15},
    SettingScoreRow{"margin at the gain",     [](SearchSettings& s) -> std::int32_t& { return s.very_promising_tactical_move_margin; }, 500, rook_fen, "e4d5", 325 + 6 + 31},
    SettingScoreRow{"win, factor",   [](SearchSettings& s) -> std::int32_t& { return s.material_win_sorting_bonus__multiplicator; }, 2, rook_fen, "e4d5", 325 + 6 + 125 + 15},
    SettingScoreRow{"win, divisor",  [](SearchSettings& s) -> std::int32_t& { return s.material_win_sorting_bonus__divisor; }, 100, rook_fen, "e4d5", 325 + 6 + 5 + 15},
    SettingScoreRow{"win, least",    [](SearchSettings& s) -> std::int32_t& { return s.material_win_sorting_bonus__minimum; }, 1, rook_fen, "e4d5", 325 + 6 + 62 + 1},
    SettingScoreRow{"even, factor",  [](SearchSettings& s) -> std::int32_t& { return s.material_quite_equal_sorting_bonus__multiplicator; }, 2, pawn_fen, "e4d5", 325 + 4 + 12},
    SettingScoreRow{"even, divisor", [](SearchSettings& s) -> std::int32_t& { return s.material_quite_equal_sorting_bonus__divisor; }, 100, pawn_fen, "e4d5", 325 + 4 + 1},
    SettingScoreRow{"even, least",   [](SearchSettings& s) -> std::int32_t& { return s.material_quite_equal_sorting_bonus__minimum; }, -7, pawn_fen, "e4d5", 325 + 4 + 6 - 7},
    SettingScoreRow{"loss, factor",  [](SearchSettings& s) -> std::int32_t& { return s.material_loss_sorting_malus__multiplicator; }, -1, losing_fen, "d1d5", 325 + 4 + 57 - 8},
    SettingScoreRow{"loss, divisor", [](SearchSettings& s) -> std::int32_t& { return s.material_loss_sorting_malus__divisor; }, 100, losing_fen, "d1d5", 325 + 4 - 9 - 8},
    SettingScoreRow{"loss, least",   [](SearchSettings& s) -> std::int32_t& { return s.material_loss_sorting_malus__minimum; }, 1, losing_fen, "d1d5", 325 + 4 - 57 - 1}),
    RowName<SettingScoreRow>);
// clang-format on

TEST(TacticalSettings, BonusOfChecksForMateCountsWhenLookingForIt) {
    const SearchSettings settings{.checking_move_sorting_bonus_if_playing_for_mate = {100, 101, 102, 103}};
    EXPECT_EQ(TacticalScoreOf(pawn_fen, "e4d5", 31767, settings), 325 + 100 + 4 + 6);
    EXPECT_EQ(TacticalScoreOf(checking_knight, "d5f6", 31767, settings), 325 + 101 + 4);
    EXPECT_EQ(TacticalScoreOf(discovering_knight, "e6g5", 31767, settings), 325 + 102);
    EXPECT_EQ(TacticalScoreOf("4k3/8/8/8/4N3/8/8/K3R3 w - - 0 1", "e4f6", 31767, settings), 325 + 103 + 4);
}

TEST(TacticalSettings, ThreatOfAMinorTradeMayCount) {
    // The knight checks and attacks a guarded bishop: ten centipawns.
    constexpr std::string_view fen = "4k3/8/6p1/3N3b/8/8/8/4K3 w - - 0 1";
    SearchSettings settings{.material_quite_equal_sorting_bonus__divisor = 1};
    EXPECT_EQ(TacticalScoreOf(fen, "d5f6", 0, settings), 325 + 15 + 4);
    settings.score_checking_move_should_neglect_trade_knight_vs_bishop = false;
    EXPECT_EQ(TacticalScoreOf(fen, "d5f6", 0, settings), 325 + 15 + 4 + 10);
}

// --- Quiescence ---
//
// 256 for any move, and the gain by the same formulas: the captured piece less an eighth of the mover.

/// The score without its noise; the side on move wants `missing` centipawns more than it has.
std::int32_t QuiescenceScoreOf(std::string_view fen, std::string_view move, Score missing = 30000,
                               const SearchSettings& settings = {}) {
    SearchBuilder search(fen, settings);
    const Score material = search.board->board.frame().material_balance;
    const Node node = search.NodeAt(material + missing, 0);
    OrderingNoise noise = search.board->noise;
    const Move word = MoveOf(search.board->board, move);
    return QuiescenceScore(node, word) - static_cast<std::int32_t>(noise.Below(10));
}

class QuiescenceScores : public testing::TestWithParam<ScoreRow> {};

TEST_P(QuiescenceScores, OfAMove) {
    const ScoreRow& row = GetParam();
    EXPECT_EQ(QuiescenceScoreOf(row.fen, row.move), row.score);
}

constexpr std::string_view takers = "4k3/8/3p4/4n3/3PKB2/3N4/8/4Q2R w - - 0 1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(QuiescenceScores, QuiescenceScores, testing::Values(
    ScoreRow{"pawn takes pawn",     pawn_fen,   "e4d5", 256 + 88 / 16},
    ScoreRow{"pawn takes rook",     rook_fen,   "e4d5", 256 + 488 / 8 + 15},
    ScoreRow{"pawn takes knight",   takers,     "d4e5", 256 + 293 / 8 + 15},
    ScoreRow{"knight takes knight", takers,     "d3e5", 256 + 267 / 8 + 15},
    ScoreRow{"bishop takes knight", takers,     "f4e5", 256 + 266 / 8 + 15},
    ScoreRow{"king takes pawn",     "4k3/8/8/3p4/4K3/8/8/8 w - - 0 1", "e4d5", 256 + 100 / 16},
    ScoreRow{"rook takes pawn",     "4k3/8/8/3p4/8/8/8/3RK3 w - - 0 1", "d1d5", 256 + 38 / 16},
    ScoreRow{"queen takes pawn, guarded or not", "4k3/8/8/3p4/8/8/8/3QK3 w - - 0 1", "d1d5", 256 - 27 / 16 - 8},
    ScoreRow{"queen takes knight",  "4k3/8/8/3n4/8/8/8/3QK3 w - - 0 1", "d1d5", 256 + 178 / 8 + 15},
    ScoreRow{"queen promotion",     "8/P7/8/8/8/8/1k6/3K4 w - - 0 1", "a7a8", 256 + 920 / 8 + 15},
    ScoreRow{"knight promotion",    "8/P7/8/8/8/8/1k6/3K4 w - - 0 1", "a7a8N", 256 + 205 / 8 + 15},
    ScoreRow{"both",                "1r6/P7/8/8/8/8/2k5/K7 w - - 0 1", "a7b8", 256 + 1408 / 8 + 15},
    ScoreRow{"quiet check",         checking_knight, "d5f6", 256 + 15},
    ScoreRow{"discovered check",    discovering_knight, "e6g5", 256 + 10},
    ScoreRow{"castling",            "3k4/8/8/8/8/8/8/4K2R w K - 0 1", "e1g1", 256}),
    RowName<ScoreRow>);
// clang-format on

TEST(QuiescenceScores, LookingForMateChecksCountMore) {
    EXPECT_EQ(QuiescenceScoreOf(checking_knight, "d5f6", 31766 - 305), 256 + 15);
    EXPECT_EQ(QuiescenceScoreOf(checking_knight, "d5f6", 31767 - 305), 256 + 70);
}

TEST(QuiescenceScores, EnoughMaterialForBetaCountsMore) {
    EXPECT_EQ(QuiescenceScoreOf(pawn_fen, "e4d5", 89), 256 + 5);
    EXPECT_EQ(QuiescenceScoreOf(pawn_fen, "e4d5", 88), 256 + 5 + 30);
    EXPECT_EQ(QuiescenceScoreOf(checking_knight, "d5f6", 0), 256 + 15 + 30) << "a quiet move has enough at beta";
    EXPECT_EQ(QuiescenceScoreOf(checking_knight, "d5f6", 1), 256 + 15);
    EXPECT_EQ(QuiescenceScoreOf(pawn_fen, "e4d5", 88, {.wins_enough_material_to_reach_at_least_beta__quiescence = 7}),
              256 + 5 + 7);
}

TEST(QuiescenceScores, LeastValueIsASetting) {
    EXPECT_EQ(QuiescenceScoreOf(pawn_fen, "e4d5", 30000, {.tactical_moves_minimum_sorting_value = 100}), 100 + 5);
}

TEST(QuiescenceScores, KillersCountMoreUpToTheMostThereIs) {
    SearchBuilder search(pawn_fen);
    const Move capture = MoveOf(search.board->board, "e4d5");
    const Node node = search.NodeAt(30000, 0);
    const auto score_without_noise = [&](Move move) {
        OrderingNoise noise = search.board->noise;
        const auto drawn = static_cast<std::int32_t>(noise.Below(10));
        return QuiescenceScore(node, move) - drawn;
    };
    search.board->killers[0] = {.first = INVALID, .second = capture};
    EXPECT_EQ(score_without_noise(capture), 256 + 5 + 200);
    search.settings.killer2_bonus__quiescence = 17;
    EXPECT_EQ(score_without_noise(capture), 256 + 5 + 17);
    search.board->killers[0] = {.first = capture, .second = INVALID};
    EXPECT_EQ(QuiescenceScore(node, capture), 511);
    search.settings.killer1_bonus__quiescence = 19;
    EXPECT_EQ(score_without_noise(capture), 256 + 5 + 19);
    EXPECT_EQ(score_without_noise(capture | direct_check_bit), 256 + 5 + 15) << "not the same word";
    search.board->killers[1] = {.first = capture, .second = capture};
    search.board->killers[0] = {};
    EXPECT_EQ(score_without_noise(capture), 256 + 5) << "of another ply";
}

TEST(QuiescenceScores, MayBeNegativeAndWrapToALargeWord) {
    SearchBuilder search(pawn_fen, {.tactical_moves_minimum_sorting_value = 0, .killer1_bonus__quiescence = -511});
    const Move capture = MoveOf(search.board->board, "e4d5");
    search.board->killers[0].first = capture;
    const Node node = search.NodeAt(30000, 0);
    OrderingNoise noise = search.board->noise;
    const std::int32_t score = QuiescenceScore(node, capture);
    EXPECT_EQ(score, 5 - 511 + static_cast<std::int32_t>(noise.Below(10)));
    EXPECT_EQ(SortScore(WithSortScore(capture, score)), 512 + score);
    EXPECT_EQ(SortScore(WithSortScore(capture, -1)), 511) << "above all others: deliberate";
}

TEST(QuiescenceScores, NoiseIsTenWideWhateverTheSetting) {
    for (const std::int32_t width : {0, 8, 1000}) {
        SearchBuilder search(pawn_fen, {.randomize_quiescence_move_ordering = width});
        const Move capture = MoveOf(search.board->board, "e4d5");
        const Node node = search.NodeAt(30000, 0);
        std::set<std::int32_t> seen;
        for (int i = 0; i < 1000; ++i) seen.insert(QuiescenceScore(node, capture) - 261);
        EXPECT_EQ(seen.size(), 10U);
        EXPECT_EQ(*seen.begin(), 0);
        EXPECT_EQ(*seen.rbegin(), 9);
    }
}

}  // namespace
