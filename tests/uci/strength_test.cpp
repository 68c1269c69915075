#include "uci/strength.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace VorkaUci;

TEST(Strength, OfARowIsTheRow) {
    for (const Strength& row : StrengthTable()) {
        const Strength found = StrengthOf(row.elo);
        EXPECT_EQ(found.nodes, row.nodes) << row.elo;
        EXPECT_EQ(found.blur, row.blur) << row.elo;
    }
}

TEST(Strength, RisesAllTheWay) {
    for (int elo = weakest_elo + 1; elo <= strongest_elo; ++elo) {
        EXPECT_GE(StrengthOf(elo).nodes, StrengthOf(elo - 1).nodes) << elo;
        EXPECT_LE(StrengthOf(elo).blur, StrengthOf(elo - 1).blur) << elo;
    }
}

TEST(Strength, BeyondTheTableIsThatOfItsEnds) {
    EXPECT_EQ(StrengthOf(0).nodes, StrengthOf(weakest_elo).nodes);
    EXPECT_EQ(StrengthOf(9999).nodes, StrengthOf(strongest_elo).nodes);
}

TEST(Blur, OfNothingTakesTheBest) {
    std::mt19937_64 chance(1);
    EXPECT_EQ(ChooseBlurred({{11, 5}, {12, 30}, {13, 29}}, 0, std::ref(chance)), 12U);
    EXPECT_EQ(ChooseBlurred({}, 50, std::ref(chance)), INVALID);
}

TEST(Blur, LetsAMoveWinThatIsNoWorseThanItsSize) {
    std::mt19937_64 chance(1);
    int second = 0;
    for (int i = 0; i < 300; ++i) {
        const Move move = ChooseBlurred({{11, 100}, {12, 60}, {13, 40}}, 59, std::ref(chance));
        EXPECT_NE(move, 13U) << "60 points behind";
        second += move == 12;
    }
    EXPECT_GT(second, 5);
    EXPECT_LT(second, 100);
}

}  // namespace
