#include "frame/shell/startup_options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/row_name.h"

namespace {

struct OptionRow {
    std::string name;
    std::vector<std::string> arguments;
    std::string line;  ///< of the first option
    std::size_t used;  ///< arguments that it takes
    bool has_dash = true;
};

class Option : public testing::TestWithParam<OptionRow> {};

TEST_P(Option, IsTakenWithItsParameters) {
    const OptionRow& row = GetParam();
    std::size_t next = 0;
    const StartupOption option = TakeStartupOption(row.arguments, next);
    EXPECT_EQ(option.line(), row.line);
    EXPECT_EQ(next, row.used);
    EXPECT_EQ(option.argument, row.arguments[0]);
    EXPECT_EQ(option.has_dash, row.has_dash);
}

INSTANTIATE_TEST_SUITE_P(
    Shell, Option,
    testing::Values(OptionRow{"OneDash", {"-xboard"}, "xboard", 1}, OptionRow{"TwoDashes", {"--xboard"}, "xboard", 1},
                    OptionRow{"ThreeDashes", {"---xboard"}, "-xboard", 1},
                    OptionRow{"ThreeDashesAlone", {"---"}, "-", 1}, OptionRow{"NoDash", {"xboard"}, "xboard", 1, false},
                    OptionRow{"NoDashWithParameter", {"st", "5", "-sd", "3"}, "st 5", 2, false},
                    OptionRow{"Parameters", {"--hash", "trans", "64M", "--xboard"}, "hash trans 64M", 3},
                    OptionRow{"EqualsSign", {"--hash=trans", "64M"}, "hash trans 64M", 2},
                    OptionRow{"FirstEqualsSignParts", {"-modify_settings=a=1;b=2"}, "modify_settings a=1;b=2", 1},
                    OptionRow{"NegativeNumberBehindEqualsSign", {"--contempt=-5"}, "contempt -5", 1},
                    OptionRow{"NegativeNumberIsAnotherOption", {"--contempt", "-5"}, "contempt", 1},
                    OptionRow{"EqualsSignAtTheEnd", {"--st="}, "st=", 1},
                    OptionRow{"EqualsSignInFront", {"--=st"}, "=st", 1},
                    OptionRow{"SecondEqualsSignBehindOneInFront", {"--=a=b"}, "=a b", 1},
                    OptionRow{"EqualsSignBehindOneAtTheEnd", {"--a=="}, "a =", 1},
                    OptionRow{"DashInsideAParameter", {"--id", "a-b"}, "id a-b", 2},
                    OptionRow{"BlanksInsideAParameter", {"--setboard", "8/8 w - - 0 1"}, "setboard 8/8 w - - 0 1", 2},
                    OptionRow{"OneLetter", {"-a"}, "a", 1}),
    RowName<OptionRow>);

TEST(Option, ContinuesBehindTheOneBefore) {
    const std::vector<std::string> arguments{"--st", "5", "-sd=3"};
    std::size_t next = 2;
    EXPECT_EQ(TakeStartupOption(arguments, next).line(), "sd 3");
    EXPECT_EQ(next, 3U);
}

TEST(Option, NeedsSomethingBehindItsDashes) {
    for (const std::string dashes : {"-", "--"}) {
        std::size_t next = 0;
        try {
            (void)TakeStartupOption({dashes}, next);
            FAIL() << "parsed " << dashes;
        } catch (const could_not_parse_exception& failure) {
            EXPECT_EQ(failure.argument(), dashes);
        }
    }
}

struct WordRow {
    std::string name;
    bool is_startup_command, needs_force_mode, ends_program;
};

class Word : public testing::TestWithParam<WordRow> {};

TEST_P(Word, IsInItsLists) {
    const WordRow& row = GetParam();
    EXPECT_EQ(IsStartupCommand(row.name), row.is_startup_command);
    EXPECT_EQ(NeedsForceMode(row.name), row.needs_force_mode);
    EXPECT_EQ(EndsProgram(row.name), row.ends_program);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Shell, Word, testing::Values(
    //                         start  force  exit
    WordRow{"xboard",          true,  false, false},
    WordRow{"protover",        true,  false, false},
    WordRow{"easy",            true,  false, false},
    WordRow{"eval",            true,  false, false},
    WordRow{"contempt",        true,  true,  false},
    WordRow{"hash",            true,  true,  false},
    WordRow{"help",            true,  false, true},
    WordRow{"id",              true,  false, false},
    WordRow{"level",           true,  false, false},
    WordRow{"modify_settings", true,  true,  false},
    WordRow{"personality",     true,  true,  false},
    WordRow{"probe",           true,  false, false},
    WordRow{"quit",            true,  false, false},
    WordRow{"sd",              true,  false, false},
    WordRow{"setboard",        true,  true,  false},
    WordRow{"st",              true,  false, false},
    WordRow{"tb",              true,  true,  false},
    WordRow{"tc",              true,  false, false},
    WordRow{"version",         true,  false, true},
    WordRow{"read_fen",        true,  true,  false},
    WordRow{"read_pgn",        true,  true,  false},
    WordRow{"read_settings",   true,  true,  false},
    WordRow{"generate",        true,  true,  false},
    WordRow{"verify",          true,  true,  false},
    WordRow{"hard",            false, false, false},
    WordRow{"force",           false, false, false},
    WordRow{"new",             false, false, false},
    WordRow{"e2e4",            false, false, false},
    WordRow{"XBOARD",          false, false, false},
    WordRow{"",                false, false, false}
), RowName<WordRow>);
// clang-format on

}  // namespace
