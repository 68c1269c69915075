#include "tablebases/mate_table_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace VorkaTablebases {

namespace {

Squares Turned(const Squares& squares, int turn) {
    Squares turned = squares;
    for (Square& s : turned) {
        if ((turn & 1) != 0) s ^= 7;
        if ((turn & 2) != 0) s ^= 56;
        if ((turn & 4) != 0) s = (s & 7) << 3 | s >> 3;
    }
    return turned;
}

const std::vector<std::string_view> names = {"KQK",  "KPK",  "KBNK",  "KBBK",  "KPPK",  "KQKR",  "KRKR", "KRKP",
                                             "KPKP", "KQPK", "KQQQK", "KPPPK", "KBBPK", "KRPKR", "KNNKP"};

}  // namespace

TEST(MateTableIndex, NumbersAllPairsOfKings) {
    EXPECT_EQ(MateTableIndex(*Material::FromName("KQK")).size(), 2U * 462 * 64);
    EXPECT_EQ(MateTableIndex(*Material::FromName("KPK")).size(), 2U * 1806 * 48);
    EXPECT_EQ(MateTableIndex(*Material::FromName("KBBK")).size(), 2U * 462 * (64 * 63 / 2));
    EXPECT_EQ(MateTableIndex(*Material::FromName("KPKP")).size(), 1U * 1806 * 48 * 48);
    EXPECT_EQ(MateTableIndex(*Material::FromName("KPPPK")).size(), 2U * 1806 * (48 * 47 * 46 / 6));
}

TEST(MateTableIndex, GivesEachNumberAPositionThatHasIt) {
    for (const std::string_view name : names) {
        const MateTableIndex index(*Material::FromName(name));
        std::mt19937_64 random(3);
        const std::uint64_t step = index.size() > 200000 ? 0 : 1;
        for (std::uint64_t i = 0; i < std::min<std::uint64_t>(index.size(), 200000); ++i) {
            const std::uint64_t number = step == 1 ? i : random() % index.size();
            Squares squares{};
            Colour to_move{};
            index.PositionOf(number, squares, to_move);
            const auto [first, second] = index.IndicesOf(squares, to_move);
            ASSERT_TRUE(number == first || number == second) << name;
            ASSERT_LT(std::max(first, second), index.size());
        }
    }
}

TEST(MateTableIndex, NumbersMirroredPositionsAlike) {
    for (const std::string_view name : names) {
        const Material material = *Material::FromName(name);
        const MateTableIndex index(material);
        std::mt19937_64 random(4);
        for (int i = 0; i < 3000; ++i) {
            Squares squares{};
            Colour to_move{};
            index.PositionOf(random() % index.size(), squares, to_move);
            const auto [first, second] = index.IndicesOf(squares, to_move);
            for (int turn = 1; turn < (material.has_pawns() ? 2 : 8); ++turn) {
                const auto [other, another] = index.IndicesOf(Turned(squares, turn), to_move);
                ASSERT_EQ(std::minmax(first, second), std::minmax(other, another)) << name << ' ' << turn;
            }
        }
    }
}

TEST(MateTableIndex, NumbersLikeMenInAnyOrder) {
    const MateTableIndex index(*Material::FromName("KNNNK"));
    const Squares squares{a1, e5, b3, g7, d2};
    const Squares mixed{a1, e5, d2, b3, g7};
    EXPECT_EQ(index.IndexOf(squares, white), index.IndexOf(mixed, white));
    EXPECT_NE(index.IndexOf(squares, white), index.IndexOf(squares, black));
}

TEST(MateTableIndex, SeesSymmetricMaterialWithWhiteToMove) {
    const MateTableIndex index(*Material::FromName("KPKP"));
    // White: king b1, pawn c4, Black: king g6, pawn f3; and the same with colours exchanged.
    EXPECT_EQ(index.IndexOf({b1, g6, c4, f3, 0}, white), index.IndexOf({g3, b8, f6, c5, 0}, black));
    EXPECT_NE(index.IndexOf({b1, g6, c4, f3, 0}, white), index.IndexOf({b1, g6, c4, f3, 0}, black));
}

TEST(MateTableIndex, GivesAPositionWithBothKingsOnTheDiagonalTwoNumbers) {
    const MateTableIndex index(*Material::FromName("KBNK"));
    const auto [first, second] = index.IndicesOf({b2, f6, c7, a4, 0}, black);
    EXPECT_NE(first, second);
    EXPECT_EQ(second, index.IndexOf({b2, f6, g3, d1, 0}, black));
    const auto [one, other] = index.IndicesOf({b2, f5, c7, a4, 0}, black);
    EXPECT_EQ(one, other);
}

}  // namespace VorkaTablebases
