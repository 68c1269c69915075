#include "frame/shell/log_file_name.h"

#include <gtest/gtest.h>

#include <string>

#include "support/row_name.h"

namespace {

struct NameRow {
    std::string name;
    int existing;  ///< the names that exist already, from the first one on
    std::string expected;
};

class LogFileName : public testing::TestWithParam<NameRow> {};

TEST_P(LogFileName, IsTheFirstThatDoesNotExist) {
    int asked = 0;
    EXPECT_EQ(ChooseLogFileName([&](const std::string&) { return asked++ < GetParam().existing; }),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Shell, LogFileName,
                         testing::Values(NameRow{"FirstRun", 0, "logfile.000"}, NameRow{"SecondRun", 1, "logfile.001"},
                                         NameRow{"TwoDigits", 42, "logfile.042"},
                                         NameRow{"ThreeDigits", 999, "logfile.999"},
                                         NameRow{"FourDigits", 1000, "logfile.1000"},
                                         NameRow{"LastNumber", 99999, "logfile.99999"},
                                         NameRow{"AllExist", 100000, "logfile.max"}),
                         RowName<NameRow>);

TEST(LogFileName, GapIsFilled) {
    EXPECT_EQ(ChooseLogFileName([](const std::string& name) { return name != "logfile.007"; }), "logfile.007");
}

}  // namespace
