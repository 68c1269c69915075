// Every setting matters: for each of them a position, a depth and a changed value with which a search visits another
// number of nodes. Where one setting hides another, the first is changed on both sides. The rows were found by a search
// over positions and values; any row that shows a difference will do. Every change of the evaluation moves the trees,
// so where a row has lost its effect the other positions are tried as well before the test gives up.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "chess/user_board.h"
#include "search/driver/search_controller.h"
#include "search/settings/search_settings.h"
#include "support/fake_search_host.h"

namespace {

using search_settings::SettingRow;
using search_settings::Table;

// clang-format off
constexpr std::string_view positions[] = {
    "8/8/1k1p4/1P1P1p2/K4P2/8/8/8 w - - 4 60",  // 0
    "8/5pk1/1p2p1p1/1P1rP2p/3R1P1P/4K1P1/8/8 w - - 5 45",  // 1
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",  // 2
    "7k/1r4pp/8/2P5/1P6/q7/5QPP/6K1 b - - 0 1",  // 3
    "3r2k1/pp3pp1/2p1q2p/4P3/2P2Q2/1P4P1/P4P1P/3R2K1 w - - 3 27",  // 4
    "6k1/6p1/8/6KQ/1r6/q2b4/8/8 w - - 0 32",  // 5
    "r1b2r1k/4qp1p/p2ppb1Q/4nP2/1p1NP3/2N5/PPP4P/2KR1BR1 w - - 4 18",  // 6
    "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",  // 7
    "5rk1/1R3ppp/8/8/8/8/1q3PPP/Q5K1 w - - 0 1",  // 8
    "8/1p3pk1/p2p2p1/3Pn2p/1P2P2P/P3B1P1/5K2/8 w - - 2 38",  // 9
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",  // 10
    "r1b1k2r/2qnbppp/p2ppn2/1p4B1/3NPPP1/2N2Q2/PPP4P/2KR1B1R b kq - 0 11",  // 11
    "8/2k5/3p4/1P1P4/1K3p2/6p1/6P1/8 w - - 0 1",  // 12
    "r1bqkbnr/pppp1ppp/2n5/1B2p3/4P3/5N2/PPPP1PPP/RNBQK2R b KQkq - 3 3",  // 13
    "6k1/5pp1/p3q2p/1p6/3Q4/2P3P1/PP3P1P/6K1 w - - 0 32",  // 14
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",  // 15
    "4k2r/1b1n1p2/p2bp1p1/1p1p3p/3P1P1P/2PBPN2/PP1K2P1/1R4R1 w k - 1 24",  // 16
    "4k2r/4n2p/8/8/1B2N3/8/4R1P1/4K3 w - - 0 1",  // 17
    "4k3/8/8/4N3/8/8/8/K3R3 w - - 0 1",  // 18
    "r1bqk2r/ppp2ppp/2n5/1B1pp3/1b1Pn3/2N1PN2/PPP2PPP/R1BQK2R w KQkq - 0 8",  // 19
    "8/8/8/8/5kp1/P7/8/1K1N4 w - - 0 1",  // 20
    "6k1/pp3p1p/2n3p1/3N4/1b6/8/PPP2PPP/2K4R w - - 0 1",  // 21
    "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1",  // 22
    "5k2/6pp/p1qN4/1p1p4/3P4/2PKP2Q/PP3r2/3R4 b - - 0 1",  // 23
    "r1bq1rk1/pp4pp/2n2n2/4P3/8/2N2N2/PPP3PP/R1BQ1RK1 w - - 0 1",  // 24
    "rnbqk2r/pp2ppbp/3p1np1/2p5/2PPP3/2N2N2/PP2BPPP/R1BQK2R b KQkq - 1 6",  // 25
};

struct EffectRow {
    std::string_view name;
    std::size_t element;
    std::int32_t value;
    std::size_t position;
    int depth;
    std::vector<std::pair<std::string_view, std::int32_t>> beside = {};  ///< what else is changed, on both sides
};

const std::vector<EffectRow> effect_rows = {
    {"root_distance_multiplier", 0, 128, 0, 2},
    {"enable_search_extensions", 0, 0, 0, 2},
    {"min_depth_for_search_extensions_if_searching_pv_move", 0, 0, 1, 2},
    {"min_depth_for_search_extensions_if_not_searching_pv_move", 0, 0, 22, 2},
    {"full_extension_minimum_depth", 0, 2, 3, 2},
    {"full_extension_root_depth_related_factor_multiplicator", 0, 4, 3, 2},
    {"full_extension_root_depth_related_factor_divisor", 0, 6, 1, 2},
    {"never_full_extension_in_quiescence_if_searching_pv_move", 0, 1, 1, 2, {{"min_depth_for_search_extensions_if_searching_pv_move", -1000}, {"min_depth_for_search_extensions_if_not_searching_pv_move", -1000}}},
    {"never_full_extension_in_quiescence_if_not_searching_pv_move", 0, 0, 3, 2, {{"min_depth_for_search_extensions_if_searching_pv_move", -1000}, {"min_depth_for_search_extensions_if_not_searching_pv_move", -1000}}},
    {"min_distance_for_null_move", 0, 256, 4, 3},
    {"min_ply_for_null_move", 0, 8, 4, 3},
    {"max_ply_for_null_move", 0, 0, 4, 3},
    {"skip_null_move_if_side_on_move_is_searching_for_mate", 0, 1, 22, 4, {{"maximum_material_margin_for_null_move", 32767000}, {"min_ply_for_null_move", 0}}},
    {"maximum_material_margin_for_null_move", 0, -32767000, 4, 3},
    {"skip_enhanced_transposition_cutoff_if_searching_null_move", 0, 1, 14, 4, {{"enable_ettc", 1}, {"only_use_ettc_in_endgames", 0}, {"max_pieces_left_for_ettc", 64}, {"max_distance_for_ettc", 64000}}},
    {"skip_razoring_if_searching_null_move", 0, 1, 6, 3, {{"min_ply_for_null_move", 0}, {"max_distance_for_limited_razoring", 1000}, {"min_distance_for_limited_razoring", 0}, {"limited_razoring_margin", 100}}},
    {"skip_extended_futility_pruning_if_searching_null_move", 0, 1, 4, 4},
    {"skip_lmr_at_the_next_depth_if_searching_null_move", 0, 0, 8, 4, {{"root_distance_multiplier", 128}}},
    {"skip_lmr_at_the_depth_after_the_next_if_searching_null_move", 0, 0, 5, 4, {{"min_ply_for_null_move", 0}, {"root_distance_multiplier", 200}}},
    {"null_move_reduction_critical_distance", 0, 192, 3, 4, {{"min_ply_for_null_move", 0}, {"max_null_move_search_reduction", 192}}},
    {"min_null_move_search_reduction", 0, 256, 4, 3},
    {"max_null_move_search_reduction", 0, 256, 4, 3, {{"min_ply_for_null_move", 0}, {"null_move_reduction_critical_distance", 0}}},
    {"min_distance_for_mate_threat_test", 0, 64000, 3, 5},
    {"min_depth_for_iid_if_searching_pv_move", 0, 256, 5, 3},
    {"min_depth_for_iid_if_not_searching_pv_move", 0, 128, 0, 5},
    {"iid_critical_distance", 0, 256, 0, 4, {{"root_distance_multiplier", 128}}},
    {"iid_min_reduction", 0, 64, 5, 5},
    {"iid_max_reduction", 0, 16, 23, 4, {{"iid_critical_distance", 128}}},
    {"iid_extra_reduction_if_not_searching_pv_move", 0, -64, 6, 2},
    {"skip_razoring_if_doing_iid", 0, 0, 7, 4, {{"root_distance_multiplier", 128}}},
    {"skip_extended_futility_pruning_if_doing_iid", 0, 0, 8, 3, {{"root_distance_multiplier", 128}}},
    {"enable_position_type_dependent_search_extensions", 0, 0, 0, 2},
    {"disable_selective_techniques_if_threats_exist", 0, 0, 3, 3},
    {"disable_selective_techniques_if_searching_simple_endgames", 0, 0, 1, 2},
    {"enable_limited_razoring_if_searching_pv_move", 0, 1, 7, 4},
    {"enable_limited_razoring_if_not_searching_pv_move", 0, 0, 6, 4},
    {"min_distance_for_limited_razoring", 0, 0, 22, 2},
    {"max_distance_for_limited_razoring", 0, 104, 6, 4},
    {"skip_limited_razoring_if_searching_for_mate", 0, 0, 22, 2, {{"max_distance_for_limited_razoring", 1000}, {"min_distance_for_limited_razoring", 0}, {"limited_razoring_margin", 0}, {"minimum_enemy_pieces_left_for_limited_razoring", 0}, {"disable_selective_techniques_if_searching_simple_endgames", 0}, {"disable_selective_techniques_if_threats_exist", 0}}},
    {"minimum_enemy_pieces_left_for_limited_razoring", 0, 0, 8, 3},
    {"limited_razoring_margin", 0, 0, 2, 3},
    {"limited_razoring_reduction_independent_of_current_distance", 0, 1, 6, 4},
    {"limited_razoring_dynamic_reduction_factor", 0, 128, 6, 4},
    {"limited_razoring_static_reduced_distance", 0, 224, 6, 3, {{"limited_razoring_reduction_independent_of_current_distance", 1}}},
    {"skip_razoring_when_last_move_was_a_check", 0, 1, 6, 4},
    {"enable_extended_futility_pruning_if_searching_pv_move", 0, 1, 8, 2},
    {"enable_extended_futility_pruning_if_not_searching_pv_move", 0, 0, 8, 3},
    {"min_distance_for_extended_futility_pruning", 0, 130, 8, 3},
    {"max_distance_for_extended_futility_pruning", 0, 68, 8, 3},
    {"extended_futility_pruning_margin", 0, 300, 2, 3},
    {"skip_extended_futility_pruning_when_last_move_was_a_check", 0, 1, 8, 3},
    {"enable_futility_pruning_if_searching_pv_move", 0, 1, 3, 2},
    {"enable_futility_pruning_if_not_searching_pv_move", 0, 0, 1, 2},
    {"max_distance_for_futility_pruning", 0, 128, 2, 3},
    {"skip_futility_pruning_if_searching_for_mate", 0, 1, 20, 3, {{"root_distance_multiplier", 128}}},
    {"futility_pruning_margin", 0, 600, 3, 2},
    {"enable_late_move_reduction", 0, 0, 3, 4},
    {"enable_extended_late_move_reduction", 0, 0, 6, 4, {{"root_distance_multiplier", 128}}},
    {"standard_late_move_reduction", 0, 128, 6, 4},
    {"extended_late_move_reduction", 0, 384, 6, 4, {{"root_distance_multiplier", 128}}},
    {"skip_late_move_reduction_if_in_principal_variation", 0, 0, 0, 5},
    {"skip_late_move_reduction_if_extended", 0, 0, 3, 4},
    {"enable_verification_search", 0, 0, 20, 4, {{"root_distance_multiplier", 128}}},
    {"required_distance_to_probe_hashtables", 0, 0, 3, 2},
    {"required_distance_to_store_hashtables", 0, 0, 3, 2},
    {"generate_checking_moves_min_distance", 0, -768, 9, 3},
    {"search_every_normal_check_in_quiescence_min_distance", 0, -102, 1, 2},
    {"search_every_discovered_check_in_quiescence_min_distance", 0, -115, 6, 2},
    {"search_every_double_check_in_quiescence_min_distance", 0, 0, 10, 4},
    {"always_search_hash_move_in_quiescence", 0, 1, 3, 3},
    {"generate_castling_moves_in_quiescence_min_distance", 0, 0, 11, 2},
    {"max_distance_for_stand_pat_checks", 0, 64, 0, 2},
    {"no_stand_pat_check_if_full_searching_simple_endgames", 0, 0, 15, 2, {{"max_distance_for_stand_pat_checks", 64000}}},
    {"enable_ettc", 0, 1, 0, 3},
    {"only_use_ettc_in_endgames", 0, 0, 13, 3, {{"enable_ettc", 1}, {"max_pieces_left_for_ettc", 64}, {"max_distance_for_ettc", 64000}}},
    {"only_use_ettc_on_cut_nodes", 0, 0, 0, 3, {{"enable_ettc", 1}, {"only_use_ettc_in_endgames", 0}}},
    {"min_distance_for_ettc", 0, 128, 0, 3, {{"enable_ettc", 1}, {"only_use_ettc_in_endgames", 0}}},
    {"max_distance_for_ettc", 0, 256, 0, 4, {{"enable_ettc", 1}, {"only_use_ettc_in_endgames", 0}}},
    {"max_pieces_left_for_ettc", 0, 20, 1, 2, {{"enable_ettc", 1}, {"only_use_ettc_in_endgames", 0}}},
    {"ettc_should_remove_refuted_moves", 0, 0, 12, 4, {{"enable_ettc", 1}, {"only_use_ettc_in_endgames", 0}}},
    {"full_simple_check_extension_bonus", 0, 80, 0, 2},
    {"limited_simple_check_extension_bonus", 0, 48, 1, 2},
    {"full_discovered_check_extension_bonus", 0, 64, 17, 2, {{"root_distance_multiplier", 128}}},
    {"limited_discovered_check_extension_bonus", 0, 40, 6, 2},
    {"full_double_check_extension_bonus", 0, 160, 18, 2, {{"root_distance_multiplier", 128}}},
    {"limited_double_check_extension_bonus", 0, 80, 5, 3},
    {"full_single_move_extension_bonus", 0, 64, 3, 2},
    {"limited_single_move_extension_bonus", 0, 128, 3, 2},
    {"full_recapture_extension_bonus", 0, 56, 0, 2},
    {"limited_recapture_extension_bonus", 0, 24, 3, 2},
    {"min_captured_piece_for_recapture_extension", 0, 2, 1, 2},
    {"capture_and_recapture_must_be_on_the_same_sq", 0, 1, 1, 2},
    {"full_passer_6th_rank_extension_bonus__non_endgame", 0, 48, 24, 3, {{"full_extension_minimum_depth", 100}}},
    {"limited_passer_6th_rank_extension_bonus__non_endgame", 0, 76, 6, 3},
    {"full_passer_6th_rank_extension_bonus__endgame", 0, 64, 0, 2},
    {"limited_passer_6th_rank_extension_bonus__endgame", 0, 32, 3, 3},
    {"passer_must_reach_6th_rank_by_non_capture_move", 0, 0, 1, 4},
    {"full_passer_7th_rank_extension_bonus__non_endgame", 0, 128, 10, 2},
    {"limited_passer_7th_rank_extension_bonus__non_endgame", 0, 64, 6, 2},
    {"full_passer_7th_rank_extension_bonus__endgame", 0, 128, 1, 5},
    {"limited_passer_7th_rank_extension_bonus__endgame", 0, 64, 3, 2},
    {"full_rook_on_7th_rank_extension_bonus", 0, 24, 1, 3},
    {"limited_rook_on_7th_rank_extension_bonus", 0, 12, 1, 2},
    {"full_queen_attacked_extension_bonus", 0, 24, 8, 2},
    {"limited_queen_attacked_extension_bonus", 0, 16, 3, 3},
    {"enable_perpetual_check_detection", 0, 0, 3, 3},
    {"full_perpetual_check_threat_extension_bonus", 0, 32, 14, 2, {{"full_extension_minimum_depth", 100}}},
    {"limited_perpetual_check_threat_extension_bonus", 0, 8, 3, 3},
    {"enable_pin_threat_detection", 0, 0, 4, 4},
    {"consider_only_winning_pins_as_threats", 0, 1, 19, 3, {{"root_distance_multiplier", 128}}},
    {"skip_stand_pat_because_of_pin_threat", 0, 1, 4, 2},
    {"skip_pruning_at_this_ply_because_of_pin_threat", 0, 0, 19, 4, {{"disable_selective_techniques_if_threats_exist", 0}, {"skip_pruning_at_the_next_ply_because_of_pin_threat", 0}, {"max_distance_for_limited_razoring", 1000}, {"min_distance_for_limited_razoring", 0}, {"limited_razoring_margin", 0}}},
    {"skip_pruning_at_the_next_ply_because_of_pin_threat", 0, 0, 6, 4},
    {"full_pin_threat_extension_bonus__new_pin", 0, 16, 4, 4},
    {"limited_pin_threat_extension_bonus__new_pin", 0, 10, 6, 4},
    {"full_pin_threat_extension_bonus__tightend_pin", 0, 48, 25, 4, {{"full_extension_minimum_depth", 100}}},
    {"limited_pin_threat_extension_bonus__tightend_pin", 0, 40, 19, 3, {{"root_distance_multiplier", 128}}},
    {"full_pin_threat_extension_bonus__hashed_pin", 0, 48, 4, 3, {{"always_assume_that_pin_threat_was_hashed", 1}, {"full_extension_minimum_depth", 100}}},
    {"limited_pin_threat_extension_bonus__hashed_pin", 0, 40, 6, 3, {{"always_assume_that_pin_threat_was_hashed", 1}, {"full_extension_minimum_depth", -100}, {"full_extension_root_depth_related_factor_multiplicator", 0}}},
    {"always_assume_that_pin_threat_was_hashed", 0, 1, 4, 4},
    {"full_mate_threat_extension_bonus", 0, 128, 22, 2, {{"full_extension_minimum_depth", 100}}},
    {"limited_mate_threat_extension_bonus", 0, 64, 3, 5},
    {"extend_if_mate_in_x_moves_threat", 0, 1, 3, 5},
    {"maximum_distance_for_null_move_mate_threat_test", 0, 0, 20, 3, {{"root_distance_multiplier", 128}}},
    {"limit_distance_for_null_move_mate_threat_test", 0, 0, 15, 3, {{"min_ply_for_null_move", 0}, {"min_distance_for_null_move", -1000}, {"maximum_distance_for_null_move_mate_threat_test", 64000}}},
    {"full_delayed_extensions_bonus", 0, 0, 0, 2},
    {"limited_delayed_extensions_bonus", 0, 0, 6, 2},
    {"full_instant_extensions_bonus", 0, 256, 8, 2},
    {"limited_instant_extensions_bonus", 0, 40, 3, 2},
    {"full_total_extensions_bonus", 0, 96, 3, 2},
    {"limited_total_extensions_bonus", 0, 64, 3, 2},
    {"no_history_bonus_for_tactical_moves", 0, 0, 3, 2},
    {"checking_move_sorting_bonus_if_not_playing_for_mate", 0, 64, 1, 2},
    {"checking_move_sorting_bonus_if_playing_for_mate", 1, -400, 8, 2},
    {"safe_queen_check_very_close_to_king_sorting_bonus", 0, 0, 8, 3},
    {"safe_queen_check_quite_close_to_king_sorting_bonus", 0, 20, 3, 2},
    {"safe_queen_check_not_close_to_king_sorting_bonus", 0, 12, 3, 2},
    {"safe_non_queen_check_sorting_bonus", 0, 8, 5, 2},
    {"capture_move_sorting_bonus", 0, 64, 0, 2},
    {"very_promising_tactical_move_margin", 0, 300, 11, 2},
    {"material_win_sorting_bonus__multiplicator", 0, 2, 11, 2},
    {"material_win_sorting_bonus__divisor", 0, 16, 6, 2},
    {"material_win_sorting_bonus__minimum", 0, 79, 7, 2},
    {"material_quite_equal_sorting_bonus__multiplicator", 0, 2, 9, 2},
    {"material_quite_equal_sorting_bonus__divisor", 0, 32, 3, 2},
    {"material_quite_equal_sorting_bonus__minimum", 0, 64, 1, 2},
    {"material_loss_sorting_malus__multiplicator", 0, 2, 6, 2},
    {"material_loss_sorting_malus__divisor", 0, 32, 2, 2},
    {"material_loss_sorting_malus__minimum", 0, 16, 5, 4},
    {"tactical_moves_minimum_sorting_value", 0, 128, 10, 2},
    {"tactical_moves_default_sorting_value", 0, 162, 1, 2},
    {"promising_move_minimum_sorting_value", 0, 175, 0, 2},
    {"enable_killer_heuristic_for_move_ordering", 0, 0, 0, 2},
    {"if_killer1_is_promising_tactical_move_then_search_first", 0, 0, 3, 2},
    {"max_promising_tacticals_before_killer_one", 0, 0, 1, 2},
    {"killer1_bonus__quiescence", 0, 150, 3, 3},
    {"killer2_bonus__quiescence", 0, 100, 10, 2},
    {"wins_enough_material_to_reach_at_least_beta__quiescence", 0, 15, 9, 3},
    {"enable_best_history_moves_before_remaining_tacticals", 0, 1, 1, 2},
    {"max_material_margin_to_search_history_moves_before_tacticals", 0, 800, 16, 2, {{"enable_best_history_moves_before_remaining_tacticals", 1}}},
    {"max_history_moves_before_remaining_tacticals", 0, 0, 13, 2, {{"enable_best_history_moves_before_remaining_tacticals", 1}}},
    {"enable_static_move_ordering_from_sq_malus", 0, 0, 1, 2},
    {"enable_static_move_ordering_to_sq_bonus", 0, 0, 1, 2},
    {"enable_static_move_ordering_piece_dependent_bonus", 0, 0, 3, 2},
    {"randomize_move_ordering_of_remaining_moves", 0, 10, 0, 3},
    {"score_checking_move_should_neglect_trade_knight_vs_bishop", 0, 0, 10, 3, {{"root_distance_multiplier", 128}}},
};

/// Settings that are read by nobody and change nothing.
constexpr std::string_view without_effect[] = {
    "skip_perpetual_check_test_if_searching_null_move", "enable_aggressive_history_pruning", "randomize_quiescence_move_ordering",
};

/// Settings whose gate is tested at its step alone. The first can't show: the node after a root move is of the principal
/// variation, which has no null move anyway. The others need nodes that ask for a mate and are pruned otherwise.
constexpr std::string_view tested_at_their_step[] = {
    "skip_null_move_at_the_root",                          // bound_search_test
    "skip_null_move_if_enemy_is_searching_for_mate",       // null_move_test
    "skip_extended_futility_pruning_if_searching_for_mate",  // pruning_test
    "search_all_tacticals_first_if_playing_for_mate",      // move_ordering_test
};
// clang-format on

const SettingRow& RowNamed(std::string_view name) {
    return *std::find_if(Table().begin(), Table().end(), [name](const SettingRow& row) { return row.name == name; });
}

/// A search of an engine that has done nothing before.
std::uint64_t NodesOf(std::string_view fen, int depth, const SearchSettings& settings = {}) {
    Engine engine{.settings = settings};
    UserBoard game;
    game.SetBoardFromFen(std::string(fen));
    SearchController controller(engine);
    FakeSearchHost host;
    controller.Run({.max_depth = depth}, game, host);
    return controller.info().nodes;
}

TEST(SettingsEffect, EverySettingStandsInOneOfTheLists) {
    for (const SettingRow& row : Table()) {
        const auto count = std::count_if(effect_rows.begin(), effect_rows.end(),
                                         [&](const EffectRow& effect) { return effect.name == row.name; }) +
                           std::count(std::begin(without_effect), std::end(without_effect), row.name) +
                           std::count(std::begin(tested_at_their_step), std::end(tested_at_their_step), row.name);
        EXPECT_EQ(count, 1) << row.name;
    }
}

bool ShowsAt(const EffectRow& row, std::string_view fen, int depth) {
    const SettingRow& setting = RowNamed(row.name);
    SearchSettings settings;
    for (const auto& [name, value] : row.beside) RowNamed(name).Set(settings, 0, value);
    const std::uint64_t before = NodesOf(fen, depth, settings);
    setting.Set(settings, row.element, row.value);
    return NodesOf(fen, depth, settings) != before;
}

bool ShowsSomewhere(const EffectRow& row) {
    for (const int depth : {row.depth, row.depth + 1}) {
        for (const std::string_view fen : positions) {
            if (ShowsAt(row, fen, depth)) return true;
        }
    }
    return false;
}

#ifdef __SANITIZE_ADDRESS__
constexpr int deepest = 3;  // watched code is slow, and goes no other ways in larger trees
#else
constexpr int deepest = 5;
#endif

TEST(SettingsEffect, EachChangesTheTree) {
    for (const EffectRow& row : effect_rows) {
        if (row.depth > deepest) continue;
        ASSERT_NE(RowNamed(row.name).defaults[row.element], row.value) << row.name;
        EXPECT_TRUE(ShowsAt(row, positions[row.position], row.depth) || ShowsSomewhere(row)) << row.name;
    }
}

TEST(SettingsEffect, ThoseThatNobodyReadsChangeNothing) {
    for (const std::string_view name : without_effect) {
        const SettingRow& setting = RowNamed(name);
        for (const std::string_view fen : positions) {
            SearchSettings settings;
            setting.Set(settings, 0,
                        setting.defaults[0] == setting.upper_bound ? setting.lower_bound : setting.upper_bound);
            EXPECT_EQ(NodesOf(fen, 2, settings), NodesOf(fen, 2)) << name << ", " << fen;
        }
    }
}

TEST(SettingsEffect, SameSettingsVisitTheSameNodes) {
    for (const std::string_view fen : positions) EXPECT_EQ(NodesOf(fen, 3), NodesOf(fen, 3)) << fen;
}

}  // namespace
