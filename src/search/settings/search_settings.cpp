#include "search/settings/search_settings.h"

#include <cstddef>

namespace search_settings {
namespace {

constexpr SettingRow Integers(std::string_view name, std::int32_t* elements, std::size_t size,
                              const std::array<std::int32_t, max_setting_size>& defaults, std::int32_t lower_bound,
                              std::int32_t upper_bound) {
    return {.name = name,
            .flag = nullptr,
            .elements = elements,
            .size = size,
            .defaults = defaults,
            .lower_bound = lower_bound,
            .upper_bound = upper_bound};
}

template <std::size_t Size>
constexpr SettingRow Integers(std::string_view name, std::array<std::int32_t, Size>& variable,
                              const std::array<std::int32_t, Size>& values, std::int32_t lower_bound,
                              std::int32_t upper_bound) {
    std::array<std::int32_t, max_setting_size> defaults{};
    for (std::size_t i = 0; i < Size; ++i) defaults[i] = values[i];
    return Integers(name, variable.data(), Size, defaults, lower_bound, upper_bound);
}

constexpr SettingRow Integer(std::string_view name, std::int32_t& variable, std::int32_t value,
                             std::int32_t lower_bound, std::int32_t upper_bound) {
    return Integers(name, &variable, 1, {value}, lower_bound, upper_bound);
}

constexpr SettingRow Boolean(std::string_view name, bool& variable, bool value) {
    return {.name = name,
            .flag = &variable,
            .elements = nullptr,
            .size = 1,
            .defaults = {value ? 1 : 0},
            .lower_bound = 0,
            .upper_bound = 1};
}

/// Name, variable, default, lower and upper bound.
// clang-format off
constexpr SettingRow table[] = {
    // --- Root ---
    Integer("root_distance_multiplier", root_distance_multiplier, 64, 1, 6400),
    // --- Extensions: where they apply ---
    Boolean("enable_search_extensions", enable_search_extensions, true),
    Integer("min_depth_for_search_extensions_if_searching_pv_move", min_depth_for_search_extensions_if_searching_pv_move, 1, -64000, 64000),
    Integer("min_depth_for_search_extensions_if_not_searching_pv_move", min_depth_for_search_extensions_if_not_searching_pv_move, 1, -64000, 64000),
    Integer("full_extension_minimum_depth", full_extension_minimum_depth, 1, -5120, 5120),
    Integer("full_extension_root_depth_related_factor_multiplicator", full_extension_root_depth_related_factor_multiplicator, 2, -100, 100),
    Integer("full_extension_root_depth_related_factor_divisor", full_extension_root_depth_related_factor_divisor, 3, 1, 100),
    Boolean("never_full_extension_in_quiescence_if_searching_pv_move", never_full_extension_in_quiescence_if_searching_pv_move, false),
    Boolean("never_full_extension_in_quiescence_if_not_searching_pv_move", never_full_extension_in_quiescence_if_not_searching_pv_move, true),
    // --- Null move ---
    Boolean("skip_null_move_at_the_root", skip_null_move_at_the_root, true),
    Integer("min_distance_for_null_move", min_distance_for_null_move, 128, -64000, 64000),
    Integer("min_ply_for_null_move", min_ply_for_null_move, 4, 0, 64000),
    Integer("max_ply_for_null_move", max_ply_for_null_move, 64000, 0, 64000),
    Boolean("skip_null_move_if_side_on_move_is_searching_for_mate", skip_null_move_if_side_on_move_is_searching_for_mate, false),
    Boolean("skip_null_move_if_enemy_is_searching_for_mate", skip_null_move_if_enemy_is_searching_for_mate, false),
    Integer("maximum_material_margin_for_null_move", maximum_material_margin_for_null_move, 200, -32767000, 32767000),
    Boolean("skip_enhanced_transposition_cutoff_if_searching_null_move", skip_enhanced_transposition_cutoff_if_searching_null_move, false),
    Boolean("skip_perpetual_check_test_if_searching_null_move", skip_perpetual_check_test_if_searching_null_move, true),
    Boolean("skip_razoring_if_searching_null_move", skip_razoring_if_searching_null_move, false),
    Boolean("skip_extended_futility_pruning_if_searching_null_move", skip_extended_futility_pruning_if_searching_null_move, false),
    Boolean("skip_lmr_at_the_next_depth_if_searching_null_move", skip_lmr_at_the_next_depth_if_searching_null_move, true),
    Boolean("skip_lmr_at_the_depth_after_the_next_if_searching_null_move", skip_lmr_at_the_depth_after_the_next_if_searching_null_move, true),
    Integer("null_move_reduction_critical_distance", null_move_reduction_critical_distance, 384, -64000, 64000),
    Integer("min_null_move_search_reduction", min_null_move_search_reduction, 128, 0, 64000),
    Integer("max_null_move_search_reduction", max_null_move_search_reduction, 128, 0, 64000),
    // --- Mate threat test ---
    Integer("min_distance_for_mate_threat_test", min_distance_for_mate_threat_test, -64000, -64000, 64000),
    // --- Internal iterative deepening ---
    Integer("min_depth_for_iid_if_searching_pv_move", min_depth_for_iid_if_searching_pv_move, 128, 0, 64000),
    Integer("min_depth_for_iid_if_not_searching_pv_move", min_depth_for_iid_if_not_searching_pv_move, 256, 0, 64000),
    Integer("iid_critical_distance", iid_critical_distance, 512, 0, 64000),
    Integer("iid_min_reduction", iid_min_reduction, 129, 16, 64000),
    Integer("iid_max_reduction", iid_max_reduction, 192, 16, 64000),
    Integer("iid_extra_reduction_if_not_searching_pv_move", iid_extra_reduction_if_not_searching_pv_move, 64, -64000, 64000),
    Boolean("skip_razoring_if_doing_iid", skip_razoring_if_doing_iid, true),
    Boolean("skip_extended_futility_pruning_if_doing_iid", skip_extended_futility_pruning_if_doing_iid, true),
    // --- Selective techniques in general ---
    Boolean("enable_position_type_dependent_search_extensions", enable_position_type_dependent_search_extensions, true),
    Boolean("disable_selective_techniques_if_threats_exist", disable_selective_techniques_if_threats_exist, true),
    Boolean("disable_selective_techniques_if_searching_simple_endgames", disable_selective_techniques_if_searching_simple_endgames, true),
    // --- Limited razoring ---
    Boolean("enable_limited_razoring_if_searching_pv_move", enable_limited_razoring_if_searching_pv_move, false),
    Boolean("enable_limited_razoring_if_not_searching_pv_move", enable_limited_razoring_if_not_searching_pv_move, true),
    Integer("min_distance_for_limited_razoring", min_distance_for_limited_razoring, 129, 0, 64000),
    Integer("max_distance_for_limited_razoring", max_distance_for_limited_razoring, 208, 0, 64000),
    Boolean("skip_limited_razoring_if_searching_for_mate", skip_limited_razoring_if_searching_for_mate, true),
    Integer("minimum_enemy_pieces_left_for_limited_razoring", minimum_enemy_pieces_left_for_limited_razoring, 4, 0, 64),
    Integer("limited_razoring_margin", limited_razoring_margin, 1020, 0, 32767),
    Boolean("limited_razoring_reduction_independent_of_current_distance", limited_razoring_reduction_independent_of_current_distance, false),
    Integer("limited_razoring_dynamic_reduction_factor", limited_razoring_dynamic_reduction_factor, 64, 0, 64000),
    Integer("limited_razoring_static_reduced_distance", limited_razoring_static_reduced_distance, 112, 0, 64000),
    Boolean("skip_razoring_when_last_move_was_a_check", skip_razoring_when_last_move_was_a_check, false),
    // --- Extended futility ---
    Boolean("enable_extended_futility_pruning_if_searching_pv_move", enable_extended_futility_pruning_if_searching_pv_move, false),
    Boolean("enable_extended_futility_pruning_if_not_searching_pv_move", enable_extended_futility_pruning_if_not_searching_pv_move, true),
    Integer("min_distance_for_extended_futility_pruning", min_distance_for_extended_futility_pruning, 65, -64000, 64000),
    Integer("max_distance_for_extended_futility_pruning", max_distance_for_extended_futility_pruning, 137, -64000, 64000),
    Boolean("skip_extended_futility_pruning_if_searching_for_mate", skip_extended_futility_pruning_if_searching_for_mate, true),
    Integer("extended_futility_pruning_margin", extended_futility_pruning_margin, 600, 0, 32767),
    Boolean("skip_extended_futility_pruning_when_last_move_was_a_check", skip_extended_futility_pruning_when_last_move_was_a_check, false),
    // --- Futility ---
    Boolean("enable_futility_pruning_if_searching_pv_move", enable_futility_pruning_if_searching_pv_move, false),
    Boolean("enable_futility_pruning_if_not_searching_pv_move", enable_futility_pruning_if_not_searching_pv_move, true),
    Integer("max_distance_for_futility_pruning", max_distance_for_futility_pruning, 64, -64000, 64000),
    Boolean("skip_futility_pruning_if_searching_for_mate", skip_futility_pruning_if_searching_for_mate, false),
    Integer("futility_pruning_margin", futility_pruning_margin, 300, 0, 32767),
    // --- Late move reduction ---
    Boolean("enable_late_move_reduction", enable_late_move_reduction, true),
    Boolean("enable_extended_late_move_reduction", enable_extended_late_move_reduction, true),
    Integer("standard_late_move_reduction", standard_late_move_reduction, 64, 0, 64000),
    Integer("extended_late_move_reduction", extended_late_move_reduction, 192, 0, 64000),
    Boolean("skip_late_move_reduction_if_in_principal_variation", skip_late_move_reduction_if_in_principal_variation, true),
    Boolean("skip_late_move_reduction_if_extended", skip_late_move_reduction_if_extended, true),
    Boolean("enable_aggressive_history_pruning", enable_aggressive_history_pruning, true),
    Boolean("enable_verification_search", enable_verification_search, true),
    // --- Hash table ---
    Integer("required_distance_to_probe_hashtables", required_distance_to_probe_hashtables, -64000, -64000, 64000),
    Integer("required_distance_to_store_hashtables", required_distance_to_store_hashtables, -64000, -64000, 64000),
    // --- Quiescence ---
    Integer("generate_checking_moves_min_distance", generate_checking_moves_min_distance, -384, -64000, 64000),
    Integer("search_every_normal_check_in_quiescence_min_distance", search_every_normal_check_in_quiescence_min_distance, -51, -64000, 64000),
    Integer("search_every_discovered_check_in_quiescence_min_distance", search_every_discovered_check_in_quiescence_min_distance, -51, -64000, 64000),
    Integer("search_every_double_check_in_quiescence_min_distance", search_every_double_check_in_quiescence_min_distance, -64000, -64000, 64000),
    Boolean("always_search_hash_move_in_quiescence", always_search_hash_move_in_quiescence, false),
    Integer("generate_castling_moves_in_quiescence_min_distance", generate_castling_moves_in_quiescence_min_distance, -64000, -64000, 64000),
    Integer("max_distance_for_stand_pat_checks", max_distance_for_stand_pat_checks, 0, 0, 64000),
    Boolean("no_stand_pat_check_if_full_searching_simple_endgames", no_stand_pat_check_if_full_searching_simple_endgames, true),
    // --- Enhanced transposition cutoff ---
    Boolean("enable_ettc", enable_ettc, false),
    Boolean("only_use_ettc_in_endgames", only_use_ettc_in_endgames, true),
    Boolean("only_use_ettc_on_cut_nodes", only_use_ettc_on_cut_nodes, true),
    Integer("min_distance_for_ettc", min_distance_for_ettc, 64, 0, 64000),
    Integer("max_distance_for_ettc", max_distance_for_ettc, 128, 0, 64000),
    Integer("max_pieces_left_for_ettc", max_pieces_left_for_ettc, 10, 0, 64),
    Boolean("ettc_should_remove_refuted_moves", ettc_should_remove_refuted_moves, true),
    // --- Extensions: amounts ---
    Integer("full_simple_check_extension_bonus", full_simple_check_extension_bonus, 40, -64000, 64000),
    Integer("limited_simple_check_extension_bonus", limited_simple_check_extension_bonus, 24, -64000, 64000),
    Integer("full_discovered_check_extension_bonus", full_discovered_check_extension_bonus, 32, -64000, 64000),
    Integer("limited_discovered_check_extension_bonus", limited_discovered_check_extension_bonus, 20, -64000, 64000),
    Integer("full_double_check_extension_bonus", full_double_check_extension_bonus, 80, -64000, 64000),
    Integer("limited_double_check_extension_bonus", limited_double_check_extension_bonus, 40, -64000, 64000),
    Integer("full_single_move_extension_bonus", full_single_move_extension_bonus, 128, -64000, 64000),
    Integer("limited_single_move_extension_bonus", limited_single_move_extension_bonus, 64, -64000, 64000),
    Integer("full_recapture_extension_bonus", full_recapture_extension_bonus, 28, -64000, 64000),
    Integer("limited_recapture_extension_bonus", limited_recapture_extension_bonus, 12, -64000, 64000),
    Integer("min_captured_piece_for_recapture_extension", min_captured_piece_for_recapture_extension, 1, -64000, 64000),
    Boolean("capture_and_recapture_must_be_on_the_same_sq", capture_and_recapture_must_be_on_the_same_sq, false),
    Integer("full_passer_6th_rank_extension_bonus__non_endgame", full_passer_6th_rank_extension_bonus__non_endgame, 24, -64000, 64000),
    Integer("limited_passer_6th_rank_extension_bonus__non_endgame", limited_passer_6th_rank_extension_bonus__non_endgame, 12, -64000, 64000),
    Integer("full_passer_6th_rank_extension_bonus__endgame", full_passer_6th_rank_extension_bonus__endgame, 32, -64000, 64000),
    Integer("limited_passer_6th_rank_extension_bonus__endgame", limited_passer_6th_rank_extension_bonus__endgame, 16, -64000, 64000),
    Boolean("passer_must_reach_6th_rank_by_non_capture_move", passer_must_reach_6th_rank_by_non_capture_move, true),
    Integer("full_passer_7th_rank_extension_bonus__non_endgame", full_passer_7th_rank_extension_bonus__non_endgame, 64, -64000, 64000),
    Integer("limited_passer_7th_rank_extension_bonus__non_endgame", limited_passer_7th_rank_extension_bonus__non_endgame, 32, -64000, 64000),
    Integer("full_passer_7th_rank_extension_bonus__endgame", full_passer_7th_rank_extension_bonus__endgame, 64, -64000, 64000),
    Integer("limited_passer_7th_rank_extension_bonus__endgame", limited_passer_7th_rank_extension_bonus__endgame, 32, -64000, 64000),
    Integer("full_rook_on_7th_rank_extension_bonus", full_rook_on_7th_rank_extension_bonus, 12, -64000, 64000),
    Integer("limited_rook_on_7th_rank_extension_bonus", limited_rook_on_7th_rank_extension_bonus, 6, -64000, 64000),
    Integer("full_queen_attacked_extension_bonus", full_queen_attacked_extension_bonus, 12, -64000, 64000),
    Integer("limited_queen_attacked_extension_bonus", limited_queen_attacked_extension_bonus, 8, -64000, 64000),
    Boolean("enable_perpetual_check_detection", enable_perpetual_check_detection, true),
    Integer("full_perpetual_check_threat_extension_bonus", full_perpetual_check_threat_extension_bonus, 16, -64000, 64000),
    Integer("limited_perpetual_check_threat_extension_bonus", limited_perpetual_check_threat_extension_bonus, 4, -64000, 64000),
    Boolean("enable_pin_threat_detection", enable_pin_threat_detection, true),
    Boolean("consider_only_winning_pins_as_threats", consider_only_winning_pins_as_threats, false),
    Boolean("skip_stand_pat_because_of_pin_threat", skip_stand_pat_because_of_pin_threat, false),
    Boolean("skip_pruning_at_this_ply_because_of_pin_threat", skip_pruning_at_this_ply_because_of_pin_threat, true),
    Boolean("skip_pruning_at_the_next_ply_because_of_pin_threat", skip_pruning_at_the_next_ply_because_of_pin_threat, true),
    Integer("full_pin_threat_extension_bonus__new_pin", full_pin_threat_extension_bonus__new_pin, 32, -64000, 64000),
    Integer("limited_pin_threat_extension_bonus__new_pin", limited_pin_threat_extension_bonus__new_pin, 20, -64000, 64000),
    Integer("full_pin_threat_extension_bonus__tightend_pin", full_pin_threat_extension_bonus__tightend_pin, 24, -64000, 64000),
    Integer("limited_pin_threat_extension_bonus__tightend_pin", limited_pin_threat_extension_bonus__tightend_pin, 20, -64000, 64000),
    Integer("full_pin_threat_extension_bonus__hashed_pin", full_pin_threat_extension_bonus__hashed_pin, 24, -64000, 64000),
    Integer("limited_pin_threat_extension_bonus__hashed_pin", limited_pin_threat_extension_bonus__hashed_pin, 20, -64000, 64000),
    Boolean("always_assume_that_pin_threat_was_hashed", always_assume_that_pin_threat_was_hashed, false),
    Integer("full_mate_threat_extension_bonus", full_mate_threat_extension_bonus, 64, -64000, 64000),
    Integer("limited_mate_threat_extension_bonus", limited_mate_threat_extension_bonus, 32, -64000, 64000),
    Integer("extend_if_mate_in_x_moves_threat", extend_if_mate_in_x_moves_threat, 100, 1, 100),
    Integer("maximum_distance_for_null_move_mate_threat_test", maximum_distance_for_null_move_mate_threat_test, -1, -64000, 64000),
    Boolean("limit_distance_for_null_move_mate_threat_test", limit_distance_for_null_move_mate_threat_test, true),
    // --- Extensions: caps ---
    Integer("full_delayed_extensions_bonus", full_delayed_extensions_bonus, 128, 0, 64000),
    Integer("limited_delayed_extensions_bonus", limited_delayed_extensions_bonus, 80, 0, 64000),
    Integer("full_instant_extensions_bonus", full_instant_extensions_bonus, 128, 0, 64000),
    Integer("limited_instant_extensions_bonus", limited_instant_extensions_bonus, 80, 0, 64000),
    Integer("full_total_extensions_bonus", full_total_extensions_bonus, 192, 0, 64000),
    Integer("limited_total_extensions_bonus", limited_total_extensions_bonus, 128, 0, 64000),
    // --- Move ordering ---
    Boolean("no_history_bonus_for_tactical_moves", no_history_bonus_for_tactical_moves, true),
    Integers("checking_move_sorting_bonus_if_not_playing_for_mate", checking_move_sorting_bonus_if_not_playing_for_mate, {0, 15, 10, 65}, -511, 511),
    Integers("checking_move_sorting_bonus_if_playing_for_mate", checking_move_sorting_bonus_if_playing_for_mate, {0, 70, 50, 75}, -511, 511),
    Integer("safe_queen_check_very_close_to_king_sorting_bonus", safe_queen_check_very_close_to_king_sorting_bonus, 75, -511, 511),
    Integer("safe_queen_check_quite_close_to_king_sorting_bonus", safe_queen_check_quite_close_to_king_sorting_bonus, 10, -511, 511),
    Integer("safe_queen_check_not_close_to_king_sorting_bonus", safe_queen_check_not_close_to_king_sorting_bonus, 6, -511, 511),
    Integer("safe_non_queen_check_sorting_bonus", safe_non_queen_check_sorting_bonus, 4, -511, 511),
    Integers("capture_move_sorting_bonus", capture_move_sorting_bonus, {0, 4, 5, 5, 6, 10}, -511, 511),
    Integer("very_promising_tactical_move_margin", very_promising_tactical_move_margin, 150, 0, 32767),
    Integer("material_win_sorting_bonus__multiplicator", material_win_sorting_bonus__multiplicator, 1, -100, 100),
    Integer("material_win_sorting_bonus__divisor", material_win_sorting_bonus__divisor, 8, 1, 100),
    Integer("material_win_sorting_bonus__minimum", material_win_sorting_bonus__minimum, 15, -511, 511),
    Integer("material_quite_equal_sorting_bonus__multiplicator", material_quite_equal_sorting_bonus__multiplicator, 1, -100, 100),
    Integer("material_quite_equal_sorting_bonus__divisor", material_quite_equal_sorting_bonus__divisor, 16, 1, 100),
    Integer("material_quite_equal_sorting_bonus__minimum", material_quite_equal_sorting_bonus__minimum, 0, -511, 511),
    Integer("material_loss_sorting_malus__multiplicator", material_loss_sorting_malus__multiplicator, 1, -100, 100),
    Integer("material_loss_sorting_malus__divisor", material_loss_sorting_malus__divisor, 16, 1, 100),
    Integer("material_loss_sorting_malus__minimum", material_loss_sorting_malus__minimum, 8, -511, 511),
    Integer("tactical_moves_minimum_sorting_value", tactical_moves_minimum_sorting_value, 256, 0, 511),
    Integer("tactical_moves_default_sorting_value", tactical_moves_default_sorting_value, 325, 0, 511),
    Integer("promising_move_minimum_sorting_value", promising_move_minimum_sorting_value, 350, 0, 511),
    Boolean("enable_killer_heuristic_for_move_ordering", enable_killer_heuristic_for_move_ordering, true),
    Boolean("if_killer1_is_promising_tactical_move_then_search_first", if_killer1_is_promising_tactical_move_then_search_first, true),
    Integer("max_promising_tacticals_before_killer_one", max_promising_tacticals_before_killer_one, 2, 0, 1000),
    Integer("killer1_bonus__quiescence", killer1_bonus__quiescence, 300, -511, 511),
    Integer("killer2_bonus__quiescence", killer2_bonus__quiescence, 200, -511, 511),
    Integer("wins_enough_material_to_reach_at_least_beta__quiescence", wins_enough_material_to_reach_at_least_beta__quiescence, 30, -511, 511),
    Boolean("enable_best_history_moves_before_remaining_tacticals", enable_best_history_moves_before_remaining_tacticals, false),
    Boolean("search_all_tacticals_first_if_playing_for_mate", search_all_tacticals_first_if_playing_for_mate, true),
    Integer("max_material_margin_to_search_history_moves_before_tacticals", max_material_margin_to_search_history_moves_before_tacticals, 400, -32767000, 32767000),
    Integer("max_history_moves_before_remaining_tacticals", max_history_moves_before_remaining_tacticals, 1, 0, 1000),
    Boolean("enable_static_move_ordering_from_sq_malus", enable_static_move_ordering_from_sq_malus, true),
    Boolean("enable_static_move_ordering_to_sq_bonus", enable_static_move_ordering_to_sq_bonus, true),
    Boolean("enable_static_move_ordering_piece_dependent_bonus", enable_static_move_ordering_piece_dependent_bonus, true),
    Integer("randomize_move_ordering_of_remaining_moves", randomize_move_ordering_of_remaining_moves, 5, 0, 200),
    Integer("randomize_quiescence_move_ordering", randomize_quiescence_move_ordering, 8, 0, 1000),
    Boolean("score_checking_move_should_neglect_trade_knight_vs_bishop", score_checking_move_should_neglect_trade_knight_vs_bishop, true),
};
// clang-format on
static_assert(std::size(table) == 173);

// A variable takes its default from its row, which is found by name: g++ can't compare addresses in a constant
// expression when it builds for the sanitizers.

consteval const SettingRow& RowNamed(std::string_view name) {
    const SettingRow* row = table;
    while (row->name != name) ++row;
    return *row;
}

consteval bool BooleanDefault(std::string_view name) { return RowNamed(name).defaults[0] != 0; }

consteval std::int32_t IntegerDefault(std::string_view name) { return RowNamed(name).defaults[0]; }

template <std::size_t Size>
consteval std::array<std::int32_t, Size> ArrayDefault(std::string_view name) {
    std::array<std::int32_t, Size> values{};
    for (std::size_t i = 0; i < Size; ++i) values[i] = RowNamed(name).defaults[i];
    return values;
}

}  // namespace

constinit std::int32_t root_distance_multiplier = IntegerDefault("root_distance_multiplier");

constinit bool enable_search_extensions = BooleanDefault("enable_search_extensions");
constinit std::int32_t min_depth_for_search_extensions_if_searching_pv_move =
    IntegerDefault("min_depth_for_search_extensions_if_searching_pv_move");
constinit std::int32_t min_depth_for_search_extensions_if_not_searching_pv_move =
    IntegerDefault("min_depth_for_search_extensions_if_not_searching_pv_move");
constinit std::int32_t full_extension_minimum_depth = IntegerDefault("full_extension_minimum_depth");
constinit std::int32_t full_extension_root_depth_related_factor_multiplicator =
    IntegerDefault("full_extension_root_depth_related_factor_multiplicator");
constinit std::int32_t full_extension_root_depth_related_factor_divisor =
    IntegerDefault("full_extension_root_depth_related_factor_divisor");
constinit bool never_full_extension_in_quiescence_if_searching_pv_move =
    BooleanDefault("never_full_extension_in_quiescence_if_searching_pv_move");
constinit bool never_full_extension_in_quiescence_if_not_searching_pv_move =
    BooleanDefault("never_full_extension_in_quiescence_if_not_searching_pv_move");

constinit bool skip_null_move_at_the_root = BooleanDefault("skip_null_move_at_the_root");
constinit std::int32_t min_distance_for_null_move = IntegerDefault("min_distance_for_null_move");
constinit std::int32_t min_ply_for_null_move = IntegerDefault("min_ply_for_null_move");
constinit std::int32_t max_ply_for_null_move = IntegerDefault("max_ply_for_null_move");
constinit bool skip_null_move_if_side_on_move_is_searching_for_mate =
    BooleanDefault("skip_null_move_if_side_on_move_is_searching_for_mate");
constinit bool skip_null_move_if_enemy_is_searching_for_mate =
    BooleanDefault("skip_null_move_if_enemy_is_searching_for_mate");
constinit std::int32_t maximum_material_margin_for_null_move = IntegerDefault("maximum_material_margin_for_null_move");
constinit bool skip_enhanced_transposition_cutoff_if_searching_null_move =
    BooleanDefault("skip_enhanced_transposition_cutoff_if_searching_null_move");
constinit bool skip_perpetual_check_test_if_searching_null_move =
    BooleanDefault("skip_perpetual_check_test_if_searching_null_move");
constinit bool skip_razoring_if_searching_null_move = BooleanDefault("skip_razoring_if_searching_null_move");
constinit bool skip_extended_futility_pruning_if_searching_null_move =
    BooleanDefault("skip_extended_futility_pruning_if_searching_null_move");
constinit bool skip_lmr_at_the_next_depth_if_searching_null_move =
    BooleanDefault("skip_lmr_at_the_next_depth_if_searching_null_move");
constinit bool skip_lmr_at_the_depth_after_the_next_if_searching_null_move =
    BooleanDefault("skip_lmr_at_the_depth_after_the_next_if_searching_null_move");
constinit std::int32_t null_move_reduction_critical_distance = IntegerDefault("null_move_reduction_critical_distance");
constinit std::int32_t min_null_move_search_reduction = IntegerDefault("min_null_move_search_reduction");
constinit std::int32_t max_null_move_search_reduction = IntegerDefault("max_null_move_search_reduction");

constinit std::int32_t min_distance_for_mate_threat_test = IntegerDefault("min_distance_for_mate_threat_test");

constinit std::int32_t min_depth_for_iid_if_searching_pv_move =
    IntegerDefault("min_depth_for_iid_if_searching_pv_move");
constinit std::int32_t min_depth_for_iid_if_not_searching_pv_move =
    IntegerDefault("min_depth_for_iid_if_not_searching_pv_move");
constinit std::int32_t iid_critical_distance = IntegerDefault("iid_critical_distance");
constinit std::int32_t iid_min_reduction = IntegerDefault("iid_min_reduction");
constinit std::int32_t iid_max_reduction = IntegerDefault("iid_max_reduction");
constinit std::int32_t iid_extra_reduction_if_not_searching_pv_move =
    IntegerDefault("iid_extra_reduction_if_not_searching_pv_move");
constinit bool skip_razoring_if_doing_iid = BooleanDefault("skip_razoring_if_doing_iid");
constinit bool skip_extended_futility_pruning_if_doing_iid =
    BooleanDefault("skip_extended_futility_pruning_if_doing_iid");

constinit bool enable_position_type_dependent_search_extensions =
    BooleanDefault("enable_position_type_dependent_search_extensions");
constinit bool disable_selective_techniques_if_threats_exist =
    BooleanDefault("disable_selective_techniques_if_threats_exist");
constinit bool disable_selective_techniques_if_searching_simple_endgames =
    BooleanDefault("disable_selective_techniques_if_searching_simple_endgames");

constinit bool enable_limited_razoring_if_searching_pv_move =
    BooleanDefault("enable_limited_razoring_if_searching_pv_move");
constinit bool enable_limited_razoring_if_not_searching_pv_move =
    BooleanDefault("enable_limited_razoring_if_not_searching_pv_move");
constinit std::int32_t min_distance_for_limited_razoring = IntegerDefault("min_distance_for_limited_razoring");
constinit std::int32_t max_distance_for_limited_razoring = IntegerDefault("max_distance_for_limited_razoring");
constinit bool skip_limited_razoring_if_searching_for_mate =
    BooleanDefault("skip_limited_razoring_if_searching_for_mate");
constinit std::int32_t minimum_enemy_pieces_left_for_limited_razoring =
    IntegerDefault("minimum_enemy_pieces_left_for_limited_razoring");
constinit std::int32_t limited_razoring_margin = IntegerDefault("limited_razoring_margin");
constinit bool limited_razoring_reduction_independent_of_current_distance =
    BooleanDefault("limited_razoring_reduction_independent_of_current_distance");
constinit std::int32_t limited_razoring_dynamic_reduction_factor =
    IntegerDefault("limited_razoring_dynamic_reduction_factor");
constinit std::int32_t limited_razoring_static_reduced_distance =
    IntegerDefault("limited_razoring_static_reduced_distance");
constinit bool skip_razoring_when_last_move_was_a_check = BooleanDefault("skip_razoring_when_last_move_was_a_check");

constinit bool enable_extended_futility_pruning_if_searching_pv_move =
    BooleanDefault("enable_extended_futility_pruning_if_searching_pv_move");
constinit bool enable_extended_futility_pruning_if_not_searching_pv_move =
    BooleanDefault("enable_extended_futility_pruning_if_not_searching_pv_move");
constinit std::int32_t min_distance_for_extended_futility_pruning =
    IntegerDefault("min_distance_for_extended_futility_pruning");
constinit std::int32_t max_distance_for_extended_futility_pruning =
    IntegerDefault("max_distance_for_extended_futility_pruning");
constinit bool skip_extended_futility_pruning_if_searching_for_mate =
    BooleanDefault("skip_extended_futility_pruning_if_searching_for_mate");
constinit std::int32_t extended_futility_pruning_margin = IntegerDefault("extended_futility_pruning_margin");
constinit bool skip_extended_futility_pruning_when_last_move_was_a_check =
    BooleanDefault("skip_extended_futility_pruning_when_last_move_was_a_check");

constinit bool enable_futility_pruning_if_searching_pv_move =
    BooleanDefault("enable_futility_pruning_if_searching_pv_move");
constinit bool enable_futility_pruning_if_not_searching_pv_move =
    BooleanDefault("enable_futility_pruning_if_not_searching_pv_move");
constinit std::int32_t max_distance_for_futility_pruning = IntegerDefault("max_distance_for_futility_pruning");
constinit bool skip_futility_pruning_if_searching_for_mate =
    BooleanDefault("skip_futility_pruning_if_searching_for_mate");
constinit std::int32_t futility_pruning_margin = IntegerDefault("futility_pruning_margin");

constinit bool enable_late_move_reduction = BooleanDefault("enable_late_move_reduction");
constinit bool enable_extended_late_move_reduction = BooleanDefault("enable_extended_late_move_reduction");
constinit std::int32_t standard_late_move_reduction = IntegerDefault("standard_late_move_reduction");
constinit std::int32_t extended_late_move_reduction = IntegerDefault("extended_late_move_reduction");
constinit bool skip_late_move_reduction_if_in_principal_variation =
    BooleanDefault("skip_late_move_reduction_if_in_principal_variation");
constinit bool skip_late_move_reduction_if_extended = BooleanDefault("skip_late_move_reduction_if_extended");
constinit bool enable_aggressive_history_pruning = BooleanDefault("enable_aggressive_history_pruning");
constinit bool enable_verification_search = BooleanDefault("enable_verification_search");

constinit std::int32_t required_distance_to_probe_hashtables = IntegerDefault("required_distance_to_probe_hashtables");
constinit std::int32_t required_distance_to_store_hashtables = IntegerDefault("required_distance_to_store_hashtables");

constinit std::int32_t generate_checking_moves_min_distance = IntegerDefault("generate_checking_moves_min_distance");
constinit std::int32_t search_every_normal_check_in_quiescence_min_distance =
    IntegerDefault("search_every_normal_check_in_quiescence_min_distance");
constinit std::int32_t search_every_discovered_check_in_quiescence_min_distance =
    IntegerDefault("search_every_discovered_check_in_quiescence_min_distance");
constinit std::int32_t search_every_double_check_in_quiescence_min_distance =
    IntegerDefault("search_every_double_check_in_quiescence_min_distance");
constinit bool always_search_hash_move_in_quiescence = BooleanDefault("always_search_hash_move_in_quiescence");
constinit std::int32_t generate_castling_moves_in_quiescence_min_distance =
    IntegerDefault("generate_castling_moves_in_quiescence_min_distance");
constinit std::int32_t max_distance_for_stand_pat_checks = IntegerDefault("max_distance_for_stand_pat_checks");
constinit bool no_stand_pat_check_if_full_searching_simple_endgames =
    BooleanDefault("no_stand_pat_check_if_full_searching_simple_endgames");

constinit bool enable_ettc = BooleanDefault("enable_ettc");
constinit bool only_use_ettc_in_endgames = BooleanDefault("only_use_ettc_in_endgames");
constinit bool only_use_ettc_on_cut_nodes = BooleanDefault("only_use_ettc_on_cut_nodes");
constinit std::int32_t min_distance_for_ettc = IntegerDefault("min_distance_for_ettc");
constinit std::int32_t max_distance_for_ettc = IntegerDefault("max_distance_for_ettc");
constinit std::int32_t max_pieces_left_for_ettc = IntegerDefault("max_pieces_left_for_ettc");
constinit bool ettc_should_remove_refuted_moves = BooleanDefault("ettc_should_remove_refuted_moves");

constinit std::int32_t full_simple_check_extension_bonus = IntegerDefault("full_simple_check_extension_bonus");
constinit std::int32_t limited_simple_check_extension_bonus = IntegerDefault("limited_simple_check_extension_bonus");
constinit std::int32_t full_discovered_check_extension_bonus = IntegerDefault("full_discovered_check_extension_bonus");
constinit std::int32_t limited_discovered_check_extension_bonus =
    IntegerDefault("limited_discovered_check_extension_bonus");
constinit std::int32_t full_double_check_extension_bonus = IntegerDefault("full_double_check_extension_bonus");
constinit std::int32_t limited_double_check_extension_bonus = IntegerDefault("limited_double_check_extension_bonus");
constinit std::int32_t full_single_move_extension_bonus = IntegerDefault("full_single_move_extension_bonus");
constinit std::int32_t limited_single_move_extension_bonus = IntegerDefault("limited_single_move_extension_bonus");
constinit std::int32_t full_recapture_extension_bonus = IntegerDefault("full_recapture_extension_bonus");
constinit std::int32_t limited_recapture_extension_bonus = IntegerDefault("limited_recapture_extension_bonus");
constinit std::int32_t min_captured_piece_for_recapture_extension =
    IntegerDefault("min_captured_piece_for_recapture_extension");
constinit bool capture_and_recapture_must_be_on_the_same_sq =
    BooleanDefault("capture_and_recapture_must_be_on_the_same_sq");
constinit std::int32_t full_passer_6th_rank_extension_bonus__non_endgame =
    IntegerDefault("full_passer_6th_rank_extension_bonus__non_endgame");
constinit std::int32_t limited_passer_6th_rank_extension_bonus__non_endgame =
    IntegerDefault("limited_passer_6th_rank_extension_bonus__non_endgame");
constinit std::int32_t full_passer_6th_rank_extension_bonus__endgame =
    IntegerDefault("full_passer_6th_rank_extension_bonus__endgame");
constinit std::int32_t limited_passer_6th_rank_extension_bonus__endgame =
    IntegerDefault("limited_passer_6th_rank_extension_bonus__endgame");
constinit bool passer_must_reach_6th_rank_by_non_capture_move =
    BooleanDefault("passer_must_reach_6th_rank_by_non_capture_move");
constinit std::int32_t full_passer_7th_rank_extension_bonus__non_endgame =
    IntegerDefault("full_passer_7th_rank_extension_bonus__non_endgame");
constinit std::int32_t limited_passer_7th_rank_extension_bonus__non_endgame =
    IntegerDefault("limited_passer_7th_rank_extension_bonus__non_endgame");
constinit std::int32_t full_passer_7th_rank_extension_bonus__endgame =
    IntegerDefault("full_passer_7th_rank_extension_bonus__endgame");
constinit std::int32_t limited_passer_7th_rank_extension_bonus__endgame =
    IntegerDefault("limited_passer_7th_rank_extension_bonus__endgame");
constinit std::int32_t full_rook_on_7th_rank_extension_bonus = IntegerDefault("full_rook_on_7th_rank_extension_bonus");
constinit std::int32_t limited_rook_on_7th_rank_extension_bonus =
    IntegerDefault("limited_rook_on_7th_rank_extension_bonus");
constinit std::int32_t full_queen_attacked_extension_bonus = IntegerDefault("full_queen_attacked_extension_bonus");
constinit std::int32_t limited_queen_attacked_extension_bonus =
    IntegerDefault("limited_queen_attacked_extension_bonus");
constinit bool enable_perpetual_check_detection = BooleanDefault("enable_perpetual_check_detection");
constinit std::int32_t full_perpetual_check_threat_extension_bonus =
    IntegerDefault("full_perpetual_check_threat_extension_bonus");
constinit std::int32_t limited_perpetual_check_threat_extension_bonus =
    IntegerDefault("limited_perpetual_check_threat_extension_bonus");
constinit bool enable_pin_threat_detection = BooleanDefault("enable_pin_threat_detection");
constinit bool consider_only_winning_pins_as_threats = BooleanDefault("consider_only_winning_pins_as_threats");
constinit bool skip_stand_pat_because_of_pin_threat = BooleanDefault("skip_stand_pat_because_of_pin_threat");
constinit bool skip_pruning_at_this_ply_because_of_pin_threat =
    BooleanDefault("skip_pruning_at_this_ply_because_of_pin_threat");
constinit bool skip_pruning_at_the_next_ply_because_of_pin_threat =
    BooleanDefault("skip_pruning_at_the_next_ply_because_of_pin_threat");
constinit std::int32_t full_pin_threat_extension_bonus__new_pin =
    IntegerDefault("full_pin_threat_extension_bonus__new_pin");
constinit std::int32_t limited_pin_threat_extension_bonus__new_pin =
    IntegerDefault("limited_pin_threat_extension_bonus__new_pin");
constinit std::int32_t full_pin_threat_extension_bonus__tightend_pin =
    IntegerDefault("full_pin_threat_extension_bonus__tightend_pin");
constinit std::int32_t limited_pin_threat_extension_bonus__tightend_pin =
    IntegerDefault("limited_pin_threat_extension_bonus__tightend_pin");
constinit std::int32_t full_pin_threat_extension_bonus__hashed_pin =
    IntegerDefault("full_pin_threat_extension_bonus__hashed_pin");
constinit std::int32_t limited_pin_threat_extension_bonus__hashed_pin =
    IntegerDefault("limited_pin_threat_extension_bonus__hashed_pin");
constinit bool always_assume_that_pin_threat_was_hashed = BooleanDefault("always_assume_that_pin_threat_was_hashed");
constinit std::int32_t full_mate_threat_extension_bonus = IntegerDefault("full_mate_threat_extension_bonus");
constinit std::int32_t limited_mate_threat_extension_bonus = IntegerDefault("limited_mate_threat_extension_bonus");
constinit std::int32_t extend_if_mate_in_x_moves_threat = IntegerDefault("extend_if_mate_in_x_moves_threat");
constinit std::int32_t maximum_distance_for_null_move_mate_threat_test =
    IntegerDefault("maximum_distance_for_null_move_mate_threat_test");
constinit bool limit_distance_for_null_move_mate_threat_test =
    BooleanDefault("limit_distance_for_null_move_mate_threat_test");

constinit std::int32_t full_delayed_extensions_bonus = IntegerDefault("full_delayed_extensions_bonus");
constinit std::int32_t limited_delayed_extensions_bonus = IntegerDefault("limited_delayed_extensions_bonus");
constinit std::int32_t full_instant_extensions_bonus = IntegerDefault("full_instant_extensions_bonus");
constinit std::int32_t limited_instant_extensions_bonus = IntegerDefault("limited_instant_extensions_bonus");
constinit std::int32_t full_total_extensions_bonus = IntegerDefault("full_total_extensions_bonus");
constinit std::int32_t limited_total_extensions_bonus = IntegerDefault("limited_total_extensions_bonus");

constinit bool no_history_bonus_for_tactical_moves = BooleanDefault("no_history_bonus_for_tactical_moves");
constinit std::array<std::int32_t, 4> checking_move_sorting_bonus_if_not_playing_for_mate =
    ArrayDefault<4>("checking_move_sorting_bonus_if_not_playing_for_mate");
constinit std::array<std::int32_t, 4> checking_move_sorting_bonus_if_playing_for_mate =
    ArrayDefault<4>("checking_move_sorting_bonus_if_playing_for_mate");
constinit std::int32_t safe_queen_check_very_close_to_king_sorting_bonus =
    IntegerDefault("safe_queen_check_very_close_to_king_sorting_bonus");
constinit std::int32_t safe_queen_check_quite_close_to_king_sorting_bonus =
    IntegerDefault("safe_queen_check_quite_close_to_king_sorting_bonus");
constinit std::int32_t safe_queen_check_not_close_to_king_sorting_bonus =
    IntegerDefault("safe_queen_check_not_close_to_king_sorting_bonus");
constinit std::int32_t safe_non_queen_check_sorting_bonus = IntegerDefault("safe_non_queen_check_sorting_bonus");
constinit std::array<std::int32_t, 6> capture_move_sorting_bonus = ArrayDefault<6>("capture_move_sorting_bonus");
constinit std::int32_t very_promising_tactical_move_margin = IntegerDefault("very_promising_tactical_move_margin");
constinit std::int32_t material_win_sorting_bonus__multiplicator =
    IntegerDefault("material_win_sorting_bonus__multiplicator");
constinit std::int32_t material_win_sorting_bonus__divisor = IntegerDefault("material_win_sorting_bonus__divisor");
constinit std::int32_t material_win_sorting_bonus__minimum = IntegerDefault("material_win_sorting_bonus__minimum");
constinit std::int32_t material_quite_equal_sorting_bonus__multiplicator =
    IntegerDefault("material_quite_equal_sorting_bonus__multiplicator");
constinit std::int32_t material_quite_equal_sorting_bonus__divisor =
    IntegerDefault("material_quite_equal_sorting_bonus__divisor");
constinit std::int32_t material_quite_equal_sorting_bonus__minimum =
    IntegerDefault("material_quite_equal_sorting_bonus__minimum");
constinit std::int32_t material_loss_sorting_malus__multiplicator =
    IntegerDefault("material_loss_sorting_malus__multiplicator");
constinit std::int32_t material_loss_sorting_malus__divisor = IntegerDefault("material_loss_sorting_malus__divisor");
constinit std::int32_t material_loss_sorting_malus__minimum = IntegerDefault("material_loss_sorting_malus__minimum");
constinit std::int32_t tactical_moves_minimum_sorting_value = IntegerDefault("tactical_moves_minimum_sorting_value");
constinit std::int32_t tactical_moves_default_sorting_value = IntegerDefault("tactical_moves_default_sorting_value");
constinit std::int32_t promising_move_minimum_sorting_value = IntegerDefault("promising_move_minimum_sorting_value");
constinit bool enable_killer_heuristic_for_move_ordering = BooleanDefault("enable_killer_heuristic_for_move_ordering");
constinit bool if_killer1_is_promising_tactical_move_then_search_first =
    BooleanDefault("if_killer1_is_promising_tactical_move_then_search_first");
constinit std::int32_t max_promising_tacticals_before_killer_one =
    IntegerDefault("max_promising_tacticals_before_killer_one");
constinit std::int32_t killer1_bonus__quiescence = IntegerDefault("killer1_bonus__quiescence");
constinit std::int32_t killer2_bonus__quiescence = IntegerDefault("killer2_bonus__quiescence");
constinit std::int32_t wins_enough_material_to_reach_at_least_beta__quiescence =
    IntegerDefault("wins_enough_material_to_reach_at_least_beta__quiescence");
constinit bool enable_best_history_moves_before_remaining_tacticals =
    BooleanDefault("enable_best_history_moves_before_remaining_tacticals");
constinit bool search_all_tacticals_first_if_playing_for_mate =
    BooleanDefault("search_all_tacticals_first_if_playing_for_mate");
constinit std::int32_t max_material_margin_to_search_history_moves_before_tacticals =
    IntegerDefault("max_material_margin_to_search_history_moves_before_tacticals");
constinit std::int32_t max_history_moves_before_remaining_tacticals =
    IntegerDefault("max_history_moves_before_remaining_tacticals");
constinit bool enable_static_move_ordering_from_sq_malus = BooleanDefault("enable_static_move_ordering_from_sq_malus");
constinit bool enable_static_move_ordering_to_sq_bonus = BooleanDefault("enable_static_move_ordering_to_sq_bonus");
constinit bool enable_static_move_ordering_piece_dependent_bonus =
    BooleanDefault("enable_static_move_ordering_piece_dependent_bonus");
constinit std::int32_t randomize_move_ordering_of_remaining_moves =
    IntegerDefault("randomize_move_ordering_of_remaining_moves");
constinit std::int32_t randomize_quiescence_move_ordering = IntegerDefault("randomize_quiescence_move_ordering");
constinit bool score_checking_move_should_neglect_trade_knight_vs_bishop =
    BooleanDefault("score_checking_move_should_neglect_trade_knight_vs_bishop");

std::span<const SettingRow> Table() noexcept { return table; }

}  // namespace search_settings
