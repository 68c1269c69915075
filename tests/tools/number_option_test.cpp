#include "options/number_option.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(NumberOption, WholeNumberWithinItsBounds) {
    EXPECT_EQ(NumberIn("1", 1, 80), 1);
    EXPECT_EQ(NumberIn("80", 1, 80), 80);
    EXPECT_EQ(NumberIn("-1000", -1000, 1000), -1000);
    EXPECT_EQ(NumberIn<std::uint64_t>("16", 0, std::numeric_limits<std::uint64_t>::max()), 16U);
}

TEST(NumberOption, EverythingElseIsRefused) {
    for (const char* text : {"", "abc", "yes", "5x", " 5", "5 ", "+5", "5.0", "0x10", "1e3", "-", "0", "81", "-1",
                             "99999999999999999999", "4294967297"}) {
        EXPECT_EQ(NumberIn(text, 1, 80), std::nullopt) << '"' << text << '"';
    }
    EXPECT_EQ(NumberIn<std::uint64_t>("-1", 0, std::numeric_limits<std::uint64_t>::max()), std::nullopt);
}

TEST(NumberOption, RefusalSaysWhatWasWanted) {
    int depth = 6;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(ReadNumberOption("bench", "--depth", "abc", 1, 80, depth));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "bench: --depth takes a number from 1 to 80, not \"abc\"\n");
    EXPECT_EQ(depth, 6);
    EXPECT_TRUE(ReadNumberOption("bench", "--depth", "7", 1, 80, depth));
    EXPECT_EQ(depth, 7);
}

}  // namespace
