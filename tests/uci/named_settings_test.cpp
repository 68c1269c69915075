#include "uci/named_settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace {

using namespace VorkaUci;

TEST(NamedSettings, HaveNamesOfTheirOwn) {
    std::set<std::string_view> names;
    for (const NamedSettings& row : named_settings) EXPECT_TRUE(names.insert(row.name).second) << row.name;
}

TEST(NamedSettings, AreLookedForBesideTheProgramOrLeftAsTheyStand) {
    for (const NamedSettings& row : named_settings) {
        const std::string path = SettingsPath(std::string(row.name));
        EXPECT_TRUE(path == row.name || path.ends_with(row.file)) << path;
    }
}

TEST(NamedSettings, AreLookedForInPlacesThatCanBeTold) {
    const std::string places = PlacesOfNamedSettings("tuned");
    EXPECT_EQ(std::count(places.begin(), places.end(), ','), 2) << places;
    EXPECT_EQ(PlacesOfNamedSettings("tuned.txt"), "");
}

TEST(NamedSettings, LeaveAnyOtherPathAlone) {
    for (const char* path : {"some/file.txt", "", "TUNED", "tuned.txt"}) EXPECT_EQ(SettingsPath(path), path);
}

}  // namespace
