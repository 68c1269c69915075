#include "selfplay/option_texts.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace {

std::string WhyRefused(const std::function<void()>& read) {
    try {
        read();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

TEST(OptionTexts, NumbersAreReadStrictly) {
    EXPECT_EQ(ReadNumber("--depth", "7", 1, 80), 7);
    EXPECT_EQ(WhyRefused([] { (void)ReadNumber("--depth", "7x", 1, 80); }),
              "--depth takes a number from 1 to 80, not \"7x\"");
    EXPECT_EQ(WhyRefused([] { (void)ReadNumber("--depth", "81", 1, 80); }),
              "--depth takes a number from 1 to 80, not \"81\"");
}

TEST(OptionTexts, DecimalsTooAndNothingElse) {
    EXPECT_EQ(ReadReal("--sprt", "-2.5", -10, 10), -2.5);
    EXPECT_EQ(ReadReal("--sprt", "3", -10, 10), 3);
    for (const char* text : {"", "-", ".", "1.", ".5", "1e3", "nan", "inf", "0x1", "1,5", " 1", "11", "1.2.3"}) {
        EXPECT_EQ(WhyRefused([text] { (void)ReadReal("--sprt", text, -10, 10); }),
                  "--sprt takes a number from -10 to 10, not \"" + std::string(text) + '"');
    }
}

TEST(OptionTexts, TimeIsSecondsAndAnIncrement) {
    std::int64_t base = 0, increment = 0;
    ReadTimeControl("10+0.1", base, increment);
    EXPECT_EQ(base, 10000);
    EXPECT_EQ(increment, 100);
    ReadTimeControl("0.25", base, increment);
    EXPECT_EQ(base, 250);
    EXPECT_EQ(increment, 0);
    for (const char* text : {"", "+1", "0+1", "-1+0", "10+", "10+x", "10 + 1"}) {
        EXPECT_EQ(WhyRefused([&] { ReadTimeControl(text, base, increment); }),
                  "--time takes seconds and an increment, as 10+0.1, not \"" + std::string(text) + '"');
    }
}

TEST(OptionTexts, RowsOfNumbersHaveColons) {
    EXPECT_EQ(ReadNumbers<3>("--draw", "40:8:10"), (std::array{40, 8, 10}));
    for (const char* text : {"", "40", "40:8", "40:8:10:2", "40:8:x", "40:8:-1"}) {
        EXPECT_EQ(WhyRefused([text] { (void)ReadNumbers<3>("--draw", text); }),
                  "--draw takes 3 numbers with colons between them, not \"" + std::string(text) + '"');
    }
}

}  // namespace
