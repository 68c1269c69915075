#pragma once

#include <cstdint>

#include "search/settings/search_settings.h"

/// Full width and quiescence and nothing else: no table, no extension, nothing left out.
[[nodiscard]] inline SearchSettings PlainSettings() {
    constexpr std::int32_t never = 64000;
    return {.enable_search_extensions = false,
            .min_distance_for_null_move = never,
            .min_depth_for_iid_if_searching_pv_move = never,
            .min_depth_for_iid_if_not_searching_pv_move = never,
            .enable_limited_razoring_if_searching_pv_move = false,
            .enable_limited_razoring_if_not_searching_pv_move = false,
            .enable_extended_futility_pruning_if_searching_pv_move = false,
            .enable_extended_futility_pruning_if_not_searching_pv_move = false,
            .enable_futility_pruning_if_searching_pv_move = false,
            .enable_futility_pruning_if_not_searching_pv_move = false,
            .enable_late_move_reduction = false,
            .required_distance_to_probe_hashtables = never,
            .required_distance_to_store_hashtables = never,
            .enable_ettc = false,
            .enable_perpetual_check_detection = false,
            .enable_pin_threat_detection = false};
}
