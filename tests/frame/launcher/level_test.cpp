#include "frame/launcher/level.h"

#include <gtest/gtest.h>

#include <string>

#include "support/row_name.h"

namespace {

struct ChoiceRow {
    std::string name;
    Level processor;
    std::string wish;
    Level level;  ///< that is started, if nothing is refused
    std::string refusal = {};
};

class Choice : public testing::TestWithParam<ChoiceRow> {};

TEST_P(Choice, IsTheBestOrTheWish) {
    const ChoiceRow& row = GetParam();
    const LevelChoice choice = ChooseLevel(row.processor, row.wish);
    EXPECT_EQ(choice.refusal, row.refusal);
    if (row.refusal.empty()) {
        EXPECT_EQ(choice.level, row.level);
    }
}

using enum Level;

INSTANTIATE_TEST_SUITE_P(
    Launcher, Choice,
    testing::Values(
        ChoiceRow{"OldProcessor", x86_64, "", x86_64}, ChoiceRow{"MiddleProcessor", x86_64_v2, "", x86_64_v2},
        ChoiceRow{"NewProcessor", x86_64_v3, "", x86_64_v3}, ChoiceRow{"Lowest", x86_64_v3, "x86-64", x86_64},
        ChoiceRow{"Below", x86_64_v3, "x86-64-v2", x86_64_v2}, ChoiceRow{"Own", x86_64_v3, "x86-64-v3", x86_64_v3},
        ChoiceRow{"OwnOfOld", x86_64, "x86-64", x86_64},
        ChoiceRow{"JustAbove", x86_64_v2, "x86-64-v3", x86_64_v2,
                  "VORKA_LEVEL is above this processor: x86-64-v3; it has x86-64, x86-64-v2"},
        ChoiceRow{"AboveOld", x86_64, "x86-64-v2", x86_64,
                  "VORKA_LEVEL is above this processor: x86-64-v2; it has x86-64"},
        ChoiceRow{"Unknown", x86_64_v3, "x86-64-v4", x86_64_v3,
                  "VORKA_LEVEL names no level: x86-64-v4; the levels are x86-64, x86-64-v2, x86-64-v3"},
        ChoiceRow{"UnknownOnOld", x86_64, "v3", x86_64,
                  "VORKA_LEVEL names no level: v3; the levels are x86-64, x86-64-v2, x86-64-v3"},
        ChoiceRow{"Capitals", x86_64_v3, "X86-64", x86_64_v3,
                  "VORKA_LEVEL names no level: X86-64; the levels are x86-64, x86-64-v2, x86-64-v3"},
        ChoiceRow{"Blank", x86_64_v3, " x86-64", x86_64_v3,
                  "VORKA_LEVEL names no level:  x86-64; the levels are x86-64, x86-64-v2, x86-64-v3"}),
    RowName<ChoiceRow>);

struct PlaceRow {
    std::string name;
    std::string launcher;
    Level level;
    std::string beside;
    std::string in_library;
};

class Place : public testing::TestWithParam<PlaceRow> {};

TEST_P(Place, IsBesideOrInTheLibrary) {
    const PlaceRow& row = GetParam();
    const auto [beside, in_library] = PlacesOfProgram(row.launcher, row.level);
    EXPECT_EQ(beside, row.beside);
    EXPECT_EQ(in_library, row.in_library);
}

INSTANTIATE_TEST_SUITE_P(
    Launcher, Place,
    testing::Values(PlaceRow{"Games", "/usr/games/vorka", x86_64_v2, "/usr/games/vorka-x86-64-v2",
                             "/usr/lib/vorka/vorka-x86-64-v2"},
                    PlaceRow{"OtherName", "/opt/chess/bin/vorka-uci", x86_64, "/opt/chess/bin/vorka-uci-x86-64",
                             "/opt/chess/lib/vorka/vorka-uci-x86-64"},
                    PlaceRow{"FolderOfRoot", "/bin/vorka", x86_64_v3, "/bin/vorka-x86-64-v3",
                             "/lib/vorka/vorka-x86-64-v3"},
                    PlaceRow{"Root", "/vorka", x86_64, "/vorka-x86-64", "/lib/vorka/vorka-x86-64"}),
    RowName<PlaceRow>);

}  // namespace
