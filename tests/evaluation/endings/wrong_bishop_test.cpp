#include <gtest/gtest.h>

#include <ostream>
#include <string_view>

#include "evaluation/endings/wrong_bishop.h"
#include "support/row_name.h"
#include "support/sided_terms.h"
#include "support/term_rows.h"

/// A bishop and pawns against the bare king.

namespace {

using namespace sided;

class WrongBishop : public testing::TestWithParam<ValueRow> {};
TEST_P(WrongBishop, GiveTheirValue) { ExpectValue(GetParam()); }

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rules, WrongBishop, testing::Values(
    ValueRow{"the king is in the corner", wrong_bishop, "k7/8/8/P7/8/8/3B4/4K3", 0},
    ValueRow{"the king is beside the corner", wrong_bishop, "8/1k6/8/P7/8/8/3B4/4K3", 0},
    ValueRow{"the right bishop", wrong_bishop, "k7/8/8/P7/8/8/4B3/4K3", 835 + 62},
    ValueRow{"pawns on two files", wrong_bishop, "k7/8/8/PP6/8/8/3B4/4K3", 835 + 62 + 62},
    ValueRow{"the king is late", wrong_bishop, "8/8/1K6/P5k1/8/8/1B6/8", 315 + 50 + 10 + 62},
    ValueRow{"on the other rim", wrong_bishop, "8/8/8/1k5P/8/8/6B1/4K3", 315 + 50 - 30 + 62}),
    RowName<ValueRow>);

// The enemy king 2 to 7 steps from the corner, the own king 0 to 7; the pawn on a2 is worth 50.
INSTANTIATE_TEST_SUITE_P(ByDistance, WrongBishop, testing::Values(
    ValueRow{"2 and 0 steps", wrong_bishop, "K1k5/8/8/8/8/8/P7/2B5", 315 - 20 + 80 + 50},
    ValueRow{"3 and 1", wrong_bishop, "8/1K1k4/8/8/8/8/P7/2B5", 315 + 10 + 80 + 50},
    ValueRow{"4 and 2", wrong_bishop, "8/8/2K1k3/8/8/8/P7/2B5", 315 + 20 + 10 + 50},
    ValueRow{"5 and 3", wrong_bishop, "8/8/8/3K1k2/8/8/P7/2B5", 315 + 30 + 0 + 50},
    ValueRow{"6 and 4", wrong_bishop, "8/8/8/8/4K1k1/8/P7/2B5", 315 + 50 - 10 + 50},
    ValueRow{"7 and 5", wrong_bishop, "8/8/8/8/8/5K1k/P7/2B5", 315 + 90 - 20 + 50},
    ValueRow{"2 and 6", wrong_bishop, "2k5/8/8/8/8/8/P5K1/2B5", 315 - 20 - 25 + 50},
    ValueRow{"3 and 7", wrong_bishop, "3k4/8/8/8/8/8/P7/2B4K b - - 0 1", 315 + 10 - 30 + 50},
    ValueRow{"1 and 7", wrong_bishop, "8/1k6/8/8/8/8/P7/2B4K", 0},
    ValueRow{"h-pawn, 1 step", wrong_bishop, "6k1/8/8/8/8/8/7P/4KB2", 0},
    ValueRow{"h-pawn, 2 steps", wrong_bishop, "5k2/8/8/8/8/8/7P/4KB2 b - - 0 1", 315 - 20 - 30 + 50},
    ValueRow{"h-pawn, the right bishop", wrong_bishop, "6k1/8/8/8/8/8/7P/2B1K3", 835 + 50},
    ValueRow{"doubled pawns", wrong_bishop, "3k4/8/8/8/8/P7/P7/2B4K", 315 + 10 - 30 + 50 + 52},
    ValueRow{"a3", wrong_bishop, "8/8/8/7k/8/P7/8/K4B2", 835 + 52},
    ValueRow{"a4", wrong_bishop, "8/8/8/7k/P7/8/8/K4B2", 835 + 55},
    ValueRow{"a5", wrong_bishop, "8/8/8/P6k/8/8/8/K4B2", 835 + 62},
    ValueRow{"a6", wrong_bishop, "8/8/P7/7k/8/8/8/K4B2", 835 + 76},
    ValueRow{"a7", wrong_bishop, "8/P7/8/7k/8/8/8/K4B2", 835 + 90},
    ValueRow{"b-pawn", wrong_bishop, "k7/8/8/8/8/8/1P6/K1B5", 835 + 50},
    ValueRow{"pawns on both rims", wrong_bishop, "k7/8/8/8/8/8/P6P/K1B5", 835 + 50 + 50}),
    RowName<ValueRow>);

INSTANTIATE_TEST_SUITE_P(ByCorner, WrongBishop, testing::Values(
    ValueRow{"the defender on a8", wrong_bishop, "k7/8/8/8/8/8/P7/2B1K3", 0},
    ValueRow{"the defender on a7", wrong_bishop, "8/k7/8/8/8/8/P7/2B1K3", 0},
    ValueRow{"the defender on b7", wrong_bishop, "8/1k6/8/8/8/8/P7/2B1K3 b - - 0 1", 0},
    ValueRow{"the defender on b8 against two pawns", wrong_bishop, "1k6/8/8/8/8/P7/P7/2B1K3", 0},
    ValueRow{"the defender 2 away", wrong_bishop, "8/8/1k6/8/8/8/P7/2B1K3", 315 - 20 - 30 + 50},
    ValueRow{"the defender 3 away", wrong_bishop, "3k4/8/8/8/8/8/P7/2B1K3", 315 + 10 - 30 + 50},
    ValueRow{"the defender 4 away", wrong_bishop, "4k3/8/8/8/8/8/P7/2B1K3", 315 + 20 - 30 + 50},
    ValueRow{"the defender 5 away", wrong_bishop, "5k2/8/8/8/8/8/P7/2B1K3", 315 + 30 - 30 + 50},
    ValueRow{"the defender 6 away", wrong_bishop, "6k1/8/8/8/8/8/P7/2B1K3", 315 + 50 - 30 + 50},
    ValueRow{"the defender 7 away", wrong_bishop, "7k/8/8/8/8/8/P7/2B1K3", 315 + 90 - 30 + 50},
    ValueRow{"the owner in the corner", wrong_bishop, "K6k/8/8/8/8/8/P7/2B5", 315 + 90 + 80 + 50},
    ValueRow{"the owner 1 away", wrong_bishop, "7k/1K6/8/8/8/8/P7/2B5", 315 + 90 + 80 + 50},
    ValueRow{"the owner 2 away", wrong_bishop, "7k/8/1K6/8/8/8/P7/2B5", 315 + 90 + 10 + 50},
    ValueRow{"the owner 3 away", wrong_bishop, "7k/8/8/1K6/8/8/P7/2B5", 315 + 90 + 0 + 50},
    ValueRow{"the owner 4 away", wrong_bishop, "7k/8/8/8/1K6/8/P7/2B5", 315 + 90 - 10 + 50},
    ValueRow{"the owner 5 away", wrong_bishop, "7k/8/8/8/8/1K6/P7/2B5", 315 + 90 - 20 + 50},
    ValueRow{"the owner 6 away", wrong_bishop, "7k/8/8/8/8/8/PK6/2B5 b - - 0 1", 315 + 90 - 25 + 50},
    ValueRow{"a3", wrong_bishop, "7k/8/8/8/8/P7/8/2B1K3", 315 + 90 - 30 + 52},
    ValueRow{"a4", wrong_bishop, "7k/8/8/8/P7/8/8/2B1K3", 315 + 90 - 30 + 55},
    ValueRow{"a5", wrong_bishop, "7k/8/8/P7/8/8/8/2B1K3", 315 + 90 - 30 + 62},
    ValueRow{"a6", wrong_bishop, "7k/8/P7/8/8/8/8/2B1K3", 315 + 90 - 30 + 76},
    ValueRow{"a7", wrong_bishop, "7k/P7/8/8/8/8/8/2B1K3", 315 + 90 - 30 + 90},
    ValueRow{"two pawns on the a file", wrong_bishop, "7k/8/8/P7/8/P7/8/2B1K3", 315 + 90 - 30 + 62 + 52},
    ValueRow{"the defender on h8", wrong_bishop, "7k/8/8/8/8/8/7P/4KB2", 0},
    ValueRow{"the defender on g7", wrong_bishop, "8/6k1/8/8/8/8/7P/4KB2", 0},
    ValueRow{"the defender on f6", wrong_bishop, "8/8/5k2/8/8/8/7P/2K2B2 b - - 0 1", 315 - 20 - 30 + 50},
    ValueRow{"the defender on a8, pawn on h2", wrong_bishop, "k7/8/8/8/8/8/7P/4KB2", 315 + 90 - 30 + 50},
    ValueRow{"the right bishop for a8", wrong_bishop, "k7/8/8/8/8/8/P7/4KB2", 835 + 50},
    ValueRow{"the right bishop for h8", wrong_bishop, "7k/8/8/8/8/7P/8/2B1K3 b - - 0 1", 835 + 52},
    ValueRow{"pawns on a and h", wrong_bishop, "k7/8/8/8/8/8/P6P/2B1K3", 835 + 50 + 50},
    ValueRow{"pawns on a and b", wrong_bishop, "k7/8/8/8/1P6/8/P7/2B1K3", 835 + 50 + 55},
    ValueRow{"pawns on g and h", wrong_bishop, "7k/8/6P1/8/8/8/7P/4KB2", 835 + 76 + 50},
    ValueRow{"a pawn on b", wrong_bishop, "1k6/8/8/8/8/8/1P6/2B1K3", 835 + 50},
    ValueRow{"a pawn on g", wrong_bishop, "6k1/8/8/8/8/6P1/8/4KB2", 835 + 52}),
    RowName<ValueRow>);
// clang-format on

/// Positions to which the rule does not apply.
struct OtherRow {
    std::string_view name;
    std::string_view position;
};
std::ostream& operator<<(std::ostream& out, const OtherRow& row) { return out << row.name; }

class NoWrongBishop : public testing::TestWithParam<OtherRow> {};
TEST_P(NoWrongBishop, IsLeftToOtherRoutines) {
    ForBothColours(GetParam().position, [](EvaluationBuilder& builder, Colour /*own*/) {
        EXPECT_FALSE(wrong_bishop_rule(builder.context, builder.board).has_value()) << GetParam().position;
    });
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(OtherMaterial, NoWrongBishop, testing::Values(
    OtherRow{"a knight", "k7/8/8/8/8/8/P7/K1N5"},
    OtherRow{"the enemy has a pawn", "k7/p7/8/8/8/8/P7/K1B5"},
    OtherRow{"the bishop is the enemy's", "k1b5/8/8/8/8/8/P7/K7"},
    OtherRow{"two pieces", "k1n5/8/8/8/8/8/P7/K1B5"},
    OtherRow{"no pawns", "k7/8/8/8/8/8/8/2B1K3"},
    OtherRow{"a knight instead of the bishop", "k7/8/8/8/8/8/P7/2N1K3"},
    OtherRow{"no piece", "k7/8/8/8/8/8/P7/4K3"},
    OtherRow{"the bishop is the enemy's, kings apart", "k1b5/8/8/8/8/8/P7/4K3"},
    OtherRow{"the enemy has a pawn on the other rim", "k7/7p/8/8/8/8/P7/2B1K3"},
    OtherRow{"two bishops", "k7/8/8/8/8/8/P7/BB2K3"},
    OtherRow{"a knight of the enemy", "k1n5/8/8/8/8/8/P7/2B1K3"},
    OtherRow{"a rook", "k7/8/8/8/8/8/P7/2R1K3"}),
    RowName<OtherRow>);
// clang-format on

TEST(WrongBishopRule, IsFinal) {
    EvaluationBuilder dead("k7/8/8/8/8/8/P7/2B1K3 b - - 0 1");
    EXPECT_EQ(dead.Score(), 0);
    EvaluationBuilder late("7k/8/8/8/8/8/P7/2B1K3 b - - 0 1");
    EXPECT_EQ(late.Score(), -425);
    for (const int bound : {-20000, -425, 20000}) {
        EvaluationBuilder builder("7k/8/8/8/8/8/P7/2B1K3 b - - 0 1");
        EXPECT_EQ(builder.Ask(bound), -425) << "no bound is too far away";
    }
}

}  // namespace
