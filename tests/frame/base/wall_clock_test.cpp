#include "frame/base/wall_clock.h"

#include <gtest/gtest.h>

namespace {

struct ElapsedCase {
    const char* name;
    Timestamp from;
    Timestamp to;
    std::int64_t milliseconds;
};

class Elapsed : public testing::TestWithParam<ElapsedCase> {};

TEST_P(Elapsed, Milliseconds) {
    EXPECT_EQ(ElapsedMilliseconds(GetParam().from, GetParam().to), GetParam().milliseconds);
}

constexpr ElapsedCase elapsed_cases[] = {
    {"NoTime", {true, 5, 700}, {true, 5, 700}, 0},
    {"JustUnderAMillisecond", {true, 5, 0}, {true, 5, 999}, 0},
    {"OneMillisecond", {true, 5, 0}, {true, 5, 1000}, 1},
    {"WholeSeconds", {true, 5, 400}, {true, 8, 400}, 3000},
    {"AcrossASecondWithFewerMicroseconds", {true, 5, 900000}, {true, 6, 100000}, 200},
    {"AcrossASecondTruncated", {true, 5, 999999}, {true, 6, 0}, 0},
    {"TwoSecondsLessABit", {true, 5, 1}, {true, 7, 0}, 1999},
    {"Beyond32Bits", {true, 0, 0}, {true, 3000000000, 5000}, 3000000000005},
    {"BackWholeSeconds", {true, 8, 0}, {true, 5, 0}, -3000},
    {"BackAPartOfASecond", {true, 8, 500000}, {true, 8, 300000}, -200},
};

INSTANTIATE_TEST_SUITE_P(Cases, Elapsed, testing::ValuesIn(elapsed_cases),
                         [](const auto& row) { return row.param.name; });

TEST(Timestamp, IsInvalidUntilTheClockWasRead) {
    EXPECT_FALSE(Timestamp{}.valid);
    const Timestamp now = Timestamp::Now();
    EXPECT_TRUE(now.valid);
    EXPECT_GT(now.seconds, 0);
    EXPECT_GE(now.microseconds, 0);
    EXPECT_LT(now.microseconds, 1000000);
}

TEST(LocalTimeText, HasTheFormOfCtime) {
    const std::string text = LocalTimeText();
    ASSERT_EQ(text.size(), 25U);
    EXPECT_EQ(text.back(), '\n');
    EXPECT_EQ(text[13], ':');
    EXPECT_EQ(text[16], ':');
}

}  // namespace
