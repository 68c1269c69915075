#include "evaluation/personality.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "support/row_name.h"

namespace {

struct NameRow {
    std::string_view name;
    int value;
};
std::ostream& operator<<(std::ostream& out, const NameRow& row) { return out << row.name; }

class PersonalityNames : public testing::TestWithParam<NameRow> {};

TEST_P(PersonalityNames, GiveTheirValue) {
    int value = 77;
    ASSERT_TRUE(parse_personality(GetParam().name, value));
    EXPECT_EQ(value, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Personality, PersonalityNames,
                         testing::Values(NameRow{"Default", 0}, NameRow{"Vorka", 0}, NameRow{"Ormalt", 2},
                                         NameRow{"Druvane", 4}, NameRow{"Fenmarl", 6}, NameRow{"Hestrand", 8},
                                         NameRow{"Norvesk", 11}, NameRow{"Zantoval", 13}, NameRow{"Tolvane", 15},
                                         NameRow{"Belrix", -2}, NameRow{"Yeldor", -4}, NameRow{"Quimbel", -6},
                                         NameRow{"Lumbrik", -8}, NameRow{"Pelgrin", -10}, NameRow{"Ikervo", -12},
                                         NameRow{"Wendral", -15}, NameRow{"Rux", 1000}, NameRow{"Sedrimo", -1000},
                                         NameRow{"1000", 1000}, NameRow{"-20", -20}, NameRow{"1001", 1001},
                                         NameRow{"007", 7}),
                         RowName<NameRow>);

class UnknownPersonalities : public testing::TestWithParam<std::string_view> {};

TEST_P(UnknownPersonalities, AreRefused) {
    int value = 77;
    EXPECT_FALSE(parse_personality(GetParam(), value));
    EXPECT_EQ(value, 77);
}

INSTANTIATE_TEST_SUITE_P(Personality, UnknownPersonalities,
                         testing::Values("", "default", "RUX", "Rux ", "random", "12x", "1.5", "99999999999"));

TEST(Personality, RandomIsDrawnBetweenMinusTwentyAndTwenty) {
    std::set<int> drawn;
    for (int i = 0; i < 2000; ++i) {
        int value = 77;
        ASSERT_TRUE(parse_personality("Random", value));
        ASSERT_GE(value, -20);
        ASSERT_LE(value, 20);
        drawn.insert(value);
    }
    EXPECT_GT(drawn.size(), 20U) << "a new draw at each call";
}

TEST(Personality, NameIsTheFirstOfItsValueOrTheNumber) {
    EXPECT_EQ(personality_name(0), "Default");
    EXPECT_EQ(personality_name(-1000), "Sedrimo");
    EXPECT_EQ(personality_name(15), "Tolvane");
    EXPECT_EQ(personality_name(1), "1");
    EXPECT_EQ(personality_name(-999), "-999");
}

TEST(Personality, NamesAreEighteenAndEachIsRead) {
    const std::vector<std::string_view> names = personality_names();
    EXPECT_EQ(names.size(), 18U);
    EXPECT_EQ(names.front(), "Default");
    for (const std::string_view name : names) {
        int value = 0;
        EXPECT_TRUE(parse_personality(name, value)) << name;
    }
}

}  // namespace
