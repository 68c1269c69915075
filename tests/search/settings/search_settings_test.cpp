#include "search/settings/search_settings.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

namespace {

using search_settings::SettingRow;
using search_settings::Table;

TEST(SearchSettings, HaveNamesOfTheirOwn) {
    std::set<std::string_view> names;
    for (const SettingRow& row : Table()) EXPECT_TRUE(names.insert(row.name).second) << row.name;
}

/// A row changes what no other row does: two rows of one member would show in each other.
TEST(SearchSettings, HaveAMemberForEachRow) {
    for (const SettingRow& changed : Table()) {
        SearchSettings settings;
        changed.Set(settings, 0,
                    changed.defaults[0] == changed.upper_bound ? changed.lower_bound : changed.upper_bound);
        for (const SettingRow& row : Table()) {
            EXPECT_EQ(row.Get(settings, 0) != row.defaults[0], row.name == changed.name)
                << changed.name << ", " << row.name;
        }
    }
}

TEST(SearchSettings, StartWithTheirDefaults) {
    const SearchSettings settings;
    for (const SettingRow& row : Table()) {
        for (std::size_t i = 0; i < row.size; ++i) EXPECT_EQ(row.Get(settings, i), row.defaults[i]) << row.name;
    }
}

TEST(SearchSettings, HaveDefaultsWithinTheirBounds) {
    for (const SettingRow& row : Table()) {
        EXPECT_LT(row.lower_bound, row.upper_bound) << row.name;
        for (std::size_t i = 0; i < row.size; ++i) {
            EXPECT_GE(row.defaults[i], row.lower_bound) << row.name;
            EXPECT_LE(row.defaults[i], row.upper_bound) << row.name;
        }
        for (std::size_t i = row.size; i < search_settings::max_setting_size; ++i) EXPECT_EQ(row.defaults[i], 0);
    }
}

TEST(SearchSettings, AreReadAndWrittenThroughTheirRows) {
    SearchSettings settings;
    for (const SettingRow& row : Table()) {
        for (std::size_t i = 0; i < row.size; ++i) {
            const std::int32_t before = row.Get(settings, i);
            const std::int32_t other = before == row.upper_bound ? row.lower_bound : row.upper_bound;
            row.Set(settings, i, other);
            EXPECT_EQ(row.Get(settings, i), other) << row.name;
        }
    }
}

/// Rows from the start, the middle and the end, each kind among them.
TEST(SearchSettings, StandInTheirOrder) {
    const auto at = [](std::size_t index) { return Table()[index]; };
    EXPECT_EQ(at(0).name, "root_distance_multiplier");
    EXPECT_EQ(at(1).name, "enable_search_extensions");
    EXPECT_EQ(at(172).name, "score_checking_move_should_neglect_trade_knight_vs_bishop");
    std::size_t checks = 0;
    while (at(checks).name != "checking_move_sorting_bonus_if_not_playing_for_mate") ++checks;
    EXPECT_EQ(at(checks - 1).name, "no_history_bonus_for_tactical_moves");
    EXPECT_EQ(at(checks + 1).name, "checking_move_sorting_bonus_if_playing_for_mate");
    EXPECT_EQ(at(checks + 2).name, "safe_queen_check_very_close_to_king_sorting_bonus");
    EXPECT_EQ(at(checks).size, 4U);
    EXPECT_EQ(at(checks).defaults, (std::array<std::int32_t, 6>{0, 15, 10, 65, 0, 0}));
    EXPECT_EQ(at(checks + 1).defaults, (std::array<std::int32_t, 6>{0, 70, 50, 75, 0, 0}));
    std::size_t captures = 0;
    while (at(captures).name != "capture_move_sorting_bonus") ++captures;
    EXPECT_EQ(at(captures - 1).name, "safe_non_queen_check_sorting_bonus");
    EXPECT_EQ(at(captures + 1).name, "very_promising_tactical_move_margin");
    EXPECT_EQ(at(captures).size, 6U);
    EXPECT_EQ(at(captures).defaults, (std::array<std::int32_t, 6>{0, 4, 5, 5, 6, 10}));
}

}  // namespace
