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
                    OptionRow{"NegativeNumberAfterEqualsSign", {"--contempt=-5"}, "contempt -5", 1},
                    OptionRow{"NegativeNumberIsAnotherOption", {"--contempt", "-5"}, "contempt", 1},
                    OptionRow{"EqualsSignAtTheEnd", {"--st="}, "st=", 1},
                    OptionRow{"EqualsSignInFront", {"--=st"}, "=st", 1},
                    OptionRow{"SecondEqualsSignAfterOneInFront", {"--=a=b"}, "=a b", 1},
                    OptionRow{"EqualsSignAfterOneAtTheEnd", {"--a=="}, "a =", 1},
                    OptionRow{"DashInsideAParameter", {"--id", "a-b"}, "id a-b", 2},
                    OptionRow{"BlanksInsideAParameter", {"--setboard", "8/8 w - - 0 1"}, "setboard 8/8 w - - 0 1", 2},
                    OptionRow{"OneLetter", {"-a"}, "a", 1}),
    RowName<OptionRow>);

TEST(Option, ContinuesAfterTheOneBefore) {
    const std::vector<std::string> arguments{"--st", "5", "-sd=3"};
    std::size_t next = 2;
    EXPECT_EQ(TakeStartupOption(arguments, next).line(), "sd 3");
    EXPECT_EQ(next, 3U);
}

TEST(Option, NeedsSomethingAfterItsDashes) {
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

}  // namespace
