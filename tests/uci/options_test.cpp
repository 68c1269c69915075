#include "uci/options.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <variant>

#include "search/settings/tournament_settings.h"

namespace {

using namespace VorkaUci;

TEST(Options, HaveNamesOfTheirOwnAndAreFoundInAnyCase) {
    std::set<std::string_view> names;
    for (const OptionRow& row : OptionRows()) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_EQ(FindOption(row.name), &row);
    }
    EXPECT_EQ(FindOption("hASH"), FindOption("Hash"));
    EXPECT_EQ(FindOption("Hashes"), nullptr);
    EXPECT_EQ(FindOption(""), nullptr);
}

TEST(Options, AreOfferedWithDefaultAndLimits) {
    EXPECT_EQ(OptionLine(*FindOption("Hash")), "option name Hash type spin default 32 min 1 max 65536");
    EXPECT_EQ(OptionLine(*FindOption("Clear Hash")), "option name Clear Hash type button");
    EXPECT_EQ(OptionLine(*FindOption("Ponder")), "option name Ponder type check default false");
    EXPECT_EQ(OptionLine(*FindOption("Personality")).substr(0, 65),
              "option name Personality type combo default Default var Default va");
    EXPECT_EQ(OptionLine(*FindOption("Style")), "option name Style type spin default 0 min -1000 max 1000");
    EXPECT_EQ(OptionLine(*FindOption("MultiPV")), "option name MultiPV type spin default 1 min 1 max 8");
    EXPECT_EQ(OptionLine(*FindOption("UCI_Elo")), "option name UCI_Elo type spin default 1500 min 1000 max 2000");
    EXPECT_EQ(OptionLine(*FindOption("Log File")), "option name Log File type string default <empty>");
}

TEST(Options, OfNumbersTakeTheirLimitsAndNothingBeyond) {
    OptionValues values;
    for (const OptionRow& row : OptionRows()) {
        const auto* const spin = std::get_if<SpinOption>(&row.kind);
        if (spin == nullptr) continue;
        EXPECT_GE(values.*spin->value, spin->least) << row.name;
        EXPECT_LE(values.*spin->value, spin->most) << row.name;
        for (const int good : {spin->least, spin->most}) {
            EXPECT_TRUE(TakeValue(row, std::to_string(good), values)) << row.name;
            EXPECT_EQ(values.*spin->value, good) << row.name;
        }
        const std::string beyond[] = {std::to_string(spin->least - 1),
                                      std::to_string(spin->most + 1),
                                      "",
                                      "x",
                                      "1x",
                                      "1 2",
                                      "99999999999",
                                      "true",
                                      "<empty>"};
        for (const std::string& bad : beyond) {
            EXPECT_FALSE(TakeValue(row, bad, values)) << row.name << ' ' << bad;
            EXPECT_EQ(values.*spin->value, spin->most) << row.name;
        }
    }
}

TEST(Options, HaveOneForEachNumberOfTheTournamentSearch) {
    std::size_t count = 0;
    for (const OptionRow& row : OptionRows()) {
        if (std::holds_alternative<TournamentOption>(row.kind)) ++count;
    }
    EXPECT_EQ(count, tournament_settings::Table().size());
    OptionValues values;
    for (const tournament_settings::Row& setting : tournament_settings::Table()) {
        const OptionRow* const row = FindOption(setting.name);
        ASSERT_NE(row, nullptr) << setting.name;
        const std::string name(setting.name), least = std::to_string(setting.least),
                                              most = std::to_string(setting.most);
        EXPECT_EQ(OptionLine(*row), "option name " + name + " type spin default " +
                                        std::to_string(TournamentSettings().*setting.place) + " min " + least +
                                        " max " + most);
        for (const std::int32_t good : {setting.least, setting.most}) {
            EXPECT_TRUE(TakeValue(*row, std::to_string(good), values)) << name;
            EXPECT_EQ(values.tournament.*setting.place, good) << name;
        }
        const std::string beyond[] = {
            std::to_string(setting.least - 1), std::to_string(setting.most + 1), "", "x", "1 2", "true"};
        for (const std::string& bad : beyond) {
            EXPECT_FALSE(TakeValue(*row, bad, values)) << name << ' ' << bad;
            EXPECT_EQ(values.tournament.*setting.place, setting.most) << name;
        }
    }
}

TEST(Options, OfferTwoSearchesAndAFileForOne) {
    EXPECT_EQ(OptionLine(*FindOption("Search")),
              "option name Search type combo default " + OptionValues().search + " var Classic var Tournament");
    EXPECT_EQ(OptionLine(*FindOption("Tournament File")), "option name Tournament File type string default <empty>");
    EXPECT_EQ(OptionValues().tournament, TournamentSettings());
}

TEST(Options, OfYesAndNoTakeTwoWords) {
    OptionValues values;
    for (const OptionRow& row : OptionRows()) {
        const auto* const check = std::get_if<CheckOption>(&row.kind);
        if (check == nullptr) continue;
        for (const bool value : {true, false}) {
            EXPECT_TRUE(TakeValue(row, value ? "true" : "False", values));
            EXPECT_EQ(values.*check->value, value) << row.name;
        }
        for (const char* bad : {"", "yes", "1", "true false"}) EXPECT_FALSE(TakeValue(row, bad, values)) << row.name;
    }
}

TEST(Options, OfTextTakeAnyAndAnEmptyOne) {
    OptionValues values;
    for (const OptionRow& row : OptionRows()) {
        const auto* const text = std::get_if<StringOption>(&row.kind);
        if (text == nullptr) continue;
        EXPECT_TRUE(TakeValue(row, "a folder/a  file", values));
        EXPECT_EQ(values.*text->value, "a folder/a  file") << row.name;
        EXPECT_TRUE(TakeValue(row, "<empty>", values));
        EXPECT_EQ(values.*text->value, "") << row.name;
    }
}

TEST(Options, OfChoicesTakeEachOfThemAndNoOther) {
    OptionValues values;
    for (const OptionRow& row : OptionRows()) {
        const auto* const combo = std::get_if<ComboOption>(&row.kind);
        if (combo == nullptr) continue;
        const auto choices = combo->choices();
        EXPECT_TRUE(TakeValue(row, values.*combo->value, values)) << "the default is one of them: " << row.name;
        for (const std::string_view choice : choices) {
            EXPECT_TRUE(TakeValue(row, choice, values));
            EXPECT_EQ(values.*combo->value, choice);
            EXPECT_NE(OptionLine(row).find(" var " + std::string(choice)), std::string::npos);
        }
        for (const char* bad : {"", "nobody", "<empty>"}) EXPECT_FALSE(TakeValue(row, bad, values)) << row.name;
    }
}

TEST(SetOption, NameAndValueMayHaveSeveralWords) {
    const SetOptionCommand command = ReadSetOption(" name Log   File value a  name/with blanks.txt \r");
    EXPECT_EQ(command.name, "Log File");
    EXPECT_EQ(command.value, "a  name/with blanks.txt") << "a value stands as it was written";
}

TEST(SetOption, ValueMayBeMissing) {
    EXPECT_EQ(ReadSetOption("name Clear Hash").name, "Clear Hash");
    EXPECT_EQ(ReadSetOption("name Clear Hash").value, "");
    EXPECT_EQ(ReadSetOption("name Hash value").value, "");
    EXPECT_EQ(ReadSetOption("name valuename value valued").name, "valuename");
    EXPECT_EQ(ReadSetOption("name valuename value valued").value, "valued");
}

TEST(SetOption, WithoutANameHasNone) {
    for (const char* line : {"", "value 5", "names Hash value 5"}) EXPECT_EQ(ReadSetOption(line).name, "") << line;
}

}  // namespace
