#include "evaluation/context/score_pair.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace {

constexpr std::array values{0, 1, -1, 7, -120, 400, 0x3FFF, 0x4000, -0x4000, 0x7FFF, -0x7FFF, -0x8000};

int Wrapped(int value) { return static_cast<std::int16_t>(value); }

TEST(ScorePair, HalvesAddAndSubtractOnTheirOwn) {
    for (const int p : values) {
        for (const int r : values) {
            for (const int q : values) {
                for (const int t : values) {
                    const SCORE_PAIR a(p, r);
                    const SCORE_PAIR b(q, t);
                    ASSERT_EQ((a + b).positional(), Wrapped(p + q)) << p << ' ' << q;
                    ASSERT_EQ((a + b).reckless(), Wrapped(r + t)) << r << ' ' << t << " beside " << p << ' ' << q;
                    ASSERT_EQ((a - b).positional(), Wrapped(p - q)) << p << ' ' << q;
                    ASSERT_EQ((a - b).reckless(), Wrapped(r - t)) << r << ' ' << t << " beside " << p << ' ' << q;
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

TEST(ScorePair, StartsAtZero) {
    static_assert(SCORE_PAIR{} == SCORE_PAIR{0, 0});
    static_assert(SCORE_PAIR{0, 1} != SCORE_PAIR{1, 0});
}

}  // namespace
