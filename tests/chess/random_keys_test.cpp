#include "chess/random_keys.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

// The check value that Knuth prints with ran_array: the first number of the last array, either way of drawing.
TEST(RandomKeys, GivesThePublishedCheckValue) {
    RandomKeys many_short_arrays(310952);
    std::vector<long> numbers(1009);
    for (int i = 0; i <= 2009; ++i) many_short_arrays.RanArray(numbers);
    EXPECT_EQ(numbers[0], 995235265);

    RandomKeys few_long_arrays(310952);
    numbers.resize(2009);
    for (int i = 0; i <= 1009; ++i) few_long_arrays.RanArray(numbers);
    EXPECT_EQ(numbers[0], 995235265);
}

TEST(RandomKeys, ServesTheFirstHundredOfEveryArray) {
    RandomKeys served, arrays;
    std::vector<long> numbers(1009);
    for (int round = 0; round < 3; ++round) {
        arrays.RanArray(numbers);
        for (std::size_t i = 0; i < 100; ++i) ASSERT_EQ(served.Next(), numbers[i]) << "array " << round << ", " << i;
    }
}

TEST(RandomKeys, TakesSixteenBitsOfFourNumbersLowestFirst) {
    RandomKeys keys, numbers;
    for (int i = 0; i < 200; ++i) {
        std::uint64_t expected = 0;
        for (int part = 0; part < 4; ++part)
            expected += (static_cast<std::uint64_t>(numbers.Next()) % 65536) << (16 * part);
        ASSERT_EQ(keys.Next64(), expected);
    }
}

TEST(RandomKeys, StreamsOfTwoSeedsDiffer) { EXPECT_NE(RandomKeys(310952).Next64(), RandomKeys(314159).Next64()); }

}  // namespace
