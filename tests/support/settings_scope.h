#pragma once

#include <array>
#include <vector>

#include "search/settings/search_settings.h"

/// Puts all search settings back at its end.
class SettingsScope {
  public:
    SettingsScope() {
        for (const search_settings::SettingRow& row : search_settings::Table()) {
            std::array<std::int32_t, search_settings::max_setting_size> values{};
            for (std::size_t i = 0; i < row.size; ++i) values[i] = row.Get(i);
            before_.push_back(values);
        }
    }
    ~SettingsScope() {
        std::size_t index = 0;
        for (const search_settings::SettingRow& row : search_settings::Table()) {
            for (std::size_t i = 0; i < row.size; ++i) row.Set(i, before_[index][i]);
            ++index;
        }
    }
    SettingsScope(const SettingsScope&) = delete;
    SettingsScope& operator=(const SettingsScope&) = delete;

  private:
    std::vector<std::array<std::int32_t, search_settings::max_setting_size>> before_;
};

/// Full width and quiescence and nothing else, while it lives: no table, no extension, nothing left out.
class PlainSearchScope : SettingsScope {
  public:
    PlainSearchScope() {
        namespace settings = search_settings;
        constexpr std::int32_t never = 64000;
        settings::required_distance_to_probe_hashtables = never;
        settings::required_distance_to_store_hashtables = never;
        settings::enable_search_extensions = false;
        settings::enable_pin_threat_detection = false;
        settings::enable_perpetual_check_detection = false;
        settings::min_distance_for_null_move = never;
        settings::min_depth_for_iid_if_searching_pv_move = never;
        settings::min_depth_for_iid_if_not_searching_pv_move = never;
        settings::enable_ettc = false;
        settings::enable_limited_razoring_if_searching_pv_move = false;
        settings::enable_limited_razoring_if_not_searching_pv_move = false;
        settings::enable_extended_futility_pruning_if_searching_pv_move = false;
        settings::enable_extended_futility_pruning_if_not_searching_pv_move = false;
        settings::enable_futility_pruning_if_searching_pv_move = false;
        settings::enable_futility_pruning_if_not_searching_pv_move = false;
        settings::enable_late_move_reduction = false;
    }
};
