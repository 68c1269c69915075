#include "evaluation/context/score_pair.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>

namespace {

constexpr std::array values{0, 1, -1, 7, -120, 400, 0x3FFF, 0x4000, -0x4000, 0x7FFF, -0x7FFF, -0x8000};

int Wrapped(int value) { return static_cast<std::int16_t>(value); }

/// What the high half of a word gets from a positional sum that no longer fits into the low one.
int Carried(int positional) { return (positional - Wrapped(positional)) / 0x10000; }

TEST(ScorePair, HalvesAddAndSubtractOnTheirOwn) {
    for (const int p : values) {
        for (const int r : values) {
            for (const int q : values) {
                for (const int t : values) {
                    const SCORE_PAIR a(p, r);
                    const SCORE_PAIR b(q, t);
                    ASSERT_EQ((a + b).positional(), Wrapped(p + q)) << p << ' ' << q;
                    ASSERT_EQ((a + b).reckless(), Wrapped(r + t + Carried(p + q)))
                        << r << ' ' << t << " beside " << p << ' ' << q;
                    ASSERT_EQ((a - b).positional(), Wrapped(p - q)) << p << ' ' << q;
                    ASSERT_EQ((a - b).reckless(), Wrapped(r - t + Carried(p - q)))
                        << r << ' ' << t << " beside " << p << ' ' << q;
                }
            }
        }
    }
}

TEST(ScorePair, KeepsWhatItIsGiven) {
    for (const int p : values) {
        for (const int r : values) {
            EXPECT_EQ(SCORE_PAIR(p, r).positional(), p);
            EXPECT_EQ(SCORE_PAIR(p, r).reckless(), r);
            EXPECT_EQ(-SCORE_PAIR(p, r), SCORE_PAIR(-p, -r));
        }
    }
}

/// Sums of many terms beside the same sums of plain numbers. Halves that wrap on the way and come back are exact, and a
/// reckless half may wrap for good.
TEST(ScorePair, LongSumsAreThoseOfPlainNumbers) {
    constexpr unsigned seed = 20131;
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> any_half(-0x8000, 0x7FFF);
    for (int round = 0; round < 10000; ++round) {
        SCORE_PAIR sum;
        int positional = 0;
        int reckless = 0;
        for (int term = 0; term < 30; ++term) {
            const int p = any_half(random);
            const int r = any_half(random);
            const bool adds = random() % 2 == 0;
            sum = adds ? sum + SCORE_PAIR(p, r) : sum - SCORE_PAIR(p, r);
            positional += adds ? p : -p;
            reckless += adds ? r : -r;
        }
        const int wanted = any_half(random);
        const SCORE_PAIR brought_back = sum + SCORE_PAIR(wanted - positional, 0);
        ASSERT_EQ(brought_back.positional(), wanted) << "seed " << seed << ", round " << round;
        ASSERT_EQ(brought_back.reckless(), Wrapped(reckless)) << "seed " << seed << ", round " << round;
    }
}

TEST(ScorePair, StartsAtZero) {
    static_assert(SCORE_PAIR{} == SCORE_PAIR{0, 0});
    static_assert(SCORE_PAIR{0, 1} != SCORE_PAIR{1, 0});
}

}  // namespace
