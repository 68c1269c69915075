// Whatever settings a tuner tries inside their bounds, the search neither crashes nor hangs. Sets are drawn at random,
// half of them with values at the bounds; each searches a few questions, up to a number of nodes.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "search/settings/search_settings.h"
#include "support/limited_search.h"
#include "support/row_name.h"

namespace {

using search_settings::SettingRow;
using search_settings::Table;

constexpr std::array positions{
    std::string_view{"rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8"},
    std::string_view{"r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1"},
    std::string_view{"8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1"},
    std::string_view{"3q1r2/5P1k/8/6Q1/8/8/5K2/8 w - - 0 1"},
    std::string_view{"8/5k2/8/8/3N4/4B3/3K4/8 w - - 0 1"},
    std::string_view{"8/3k4/3p4/8/3P4/3K4/8/8 b - - 0 1"},
};

SearchSettings RandomSettings(std::mt19937& random, bool at_bounds) {
    SearchSettings settings;
    for (const SettingRow& row : Table()) {
        for (std::size_t i = 0; i < row.size; ++i) {
            std::uniform_int_distribution<std::int32_t> inside(row.lower_bound, row.upper_bound);
            switch (random() % 4) {
                case 0:
                    row.Set(settings, i, row.defaults[i]);
                    break;
                case 1:
                    row.Set(settings, i, row.lower_bound);
                    break;
                case 2:
                    row.Set(settings, i, row.upper_bound);
                    break;
                default:
                    row.Set(settings, i, at_bounds ? row.upper_bound : inside(random));
            }
        }
    }
    return settings;
}

TEST(RandomSettings, NeitherCrashNorHang) {
    constexpr unsigned seed = 20261122;
    constexpr int sets = 4000;
    constexpr std::uint64_t most_nodes = 1000;
    std::mt19937 random(seed);
    for (int set = 0; set < sets; ++set) {
        const SearchSettings settings = RandomSettings(random, set % 2 == 0);
        const std::string_view fen = positions[static_cast<std::size_t>(set) % positions.size()];
        SCOPED_TRACE("seed " + std::to_string(seed) + ", set " + std::to_string(set) + ", " + std::string(fen));
        const auto search = std::make_unique<LimitedSearch>(fen, most_nodes, settings);
        EXPECT_GT(search->Run(3), 0U);
        EXPECT_EQ(search->faults(), 0);
    }
}

TEST(RandomSettings, VisitTheSameNodesTwice) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    for (int set = 0; set < 200; ++set) {
        const SearchSettings settings = RandomSettings(random, set % 2 == 0);
        const std::string_view fen = positions[static_cast<std::size_t>(set) % positions.size()];
        const std::uint64_t nodes = std::make_unique<LimitedSearch>(fen, 2000, settings)->Run(4);
        EXPECT_EQ(std::make_unique<LimitedSearch>(fen, 2000, settings)->Run(4), nodes)
            << "seed " << seed << ", set " << set;
    }
}

// --- Internal deepening that would never end ---

struct EndlessRow {
    std::string_view name;
    std::vector<std::pair<std::string_view, std::int32_t>> changes;
};
std::ostream& operator<<(std::ostream& out, const EndlessRow& row) { return out << row.name; }

class EndlessDeepening : public testing::TestWithParam<EndlessRow> {};

void Set(SearchSettings& settings, std::string_view name, std::int32_t value) {
    for (const SettingRow& row : Table()) {
        if (row.name != name) continue;
        ASSERT_LE(row.lower_bound, value);
        ASSERT_GE(row.upper_bound, value);
        return row.Set(settings, 0, value);
    }
    FAIL() << name;
}

/// Every search of these once called itself until the stack was full.
TEST_P(EndlessDeepening, Ends) {
    SearchSettings settings;
    for (const auto& [name, value] : GetParam().changes) Set(settings, name, value);
    for (const std::string_view fen : positions) {
        const std::uint64_t nodes = std::make_unique<LimitedSearch>(fen, 100000, settings)->Run(3);
        EXPECT_GT(nodes, 0U) << fen;
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(InternalDeepening, EndlessDeepening, testing::Values(
    EndlessRow{"from distance 0", {{"min_depth_for_iid_if_searching_pv_move", 0}}},
    EndlessRow{"from distance 1", {{"min_depth_for_iid_if_searching_pv_move", 1}}},
    EndlessRow{"from distance 1 off the principal variation", {{"min_depth_for_iid_if_not_searching_pv_move", 1}}},
    EndlessRow{"deeper than the node", {{"iid_extra_reduction_if_not_searching_pv_move", -64000}, {"min_depth_for_iid_if_searching_pv_move", 64}}},
    EndlessRow{"in small steps from far away", {{"iid_max_reduction", 16}, {"limited_single_move_extension_bonus", 64000},
                                                {"limited_total_extensions_bonus", 64000}, {"limited_instant_extensions_bonus", 64000}}}),
    RowName<EndlessRow>);
// clang-format on

}  // namespace
