#include "tablebases/material.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "support/board_builder.h"

namespace VorkaTablebases {

namespace {

std::vector<std::string> NamesOf(const std::vector<Material>& materials) {
    std::vector<std::string> names;
    for (const Material& material : materials) names.push_back(material.name());
    return names;
}

Material Named(std::string_view name) { return Material::FromName(name).value(); }

}  // namespace

TEST(Material, ReadsAndWritesItsName) {
    for (const std::string name : {"KQK", "KBNK", "KRKP", "KPKR", "KQQKQ", "KPPPK"}) {
        EXPECT_EQ(Named(name).name(), name);
    }
    EXPECT_EQ(Named("knbk").name(), "KBNK");
    for (const std::string_view name :
         {"", "K", "KK", "KQ", "QKK", "KXK", "KQKK", "KQQQQK", "KQRKRR", "KQK ", " KQK"}) {
        EXPECT_FALSE(Material::FromName(name)) << name;
    }
}

TEST(Material, HasTheStrongerSideAsWhite) {
    EXPECT_EQ(Named("KRKQ").Normal().name(), "KQKR");
    EXPECT_EQ(Named("KQKNN").Normal().name(), "KNNKQ");
    EXPECT_EQ(Named("KBKQN").Normal().name(), "KQNKB");
    EXPECT_TRUE(Named("KNKP").is_normal());
    EXPECT_FALSE(Named("KPKN").is_normal());
    EXPECT_TRUE(Named("KRKR").is_symmetric());
    EXPECT_FALSE(Named("KRKB").is_symmetric());
}

TEST(Material, LeadsToWhatCapturesAndPromotionsLeave) {
    using testing::UnorderedElementsAre;
    EXPECT_THAT(NamesOf(Named("KBNK").Successors()), UnorderedElementsAre("KBK", "KNK"));
    EXPECT_THAT(NamesOf(Named("KQK").Successors()), UnorderedElementsAre());
    EXPECT_THAT(NamesOf(Named("KPK").Successors()), UnorderedElementsAre("KQK", "KRK", "KBK", "KNK"));
    EXPECT_THAT(NamesOf(Named("KRKP").Successors()),
                UnorderedElementsAre("KRK", "KPK", "KQKR", "KRKR", "KRKB", "KRKN", "KQK", "KBK", "KNK"));
}

TEST(Material, ComesAfterWhatItLeadsTo) {
    EXPECT_EQ(MaterialsOf(3).size(), 5U);
    EXPECT_EQ(MaterialsOf(4).size(), 30U);
    EXPECT_EQ(MaterialsOf(5).size(), 110U);
    std::set<std::string> seen;
    for (const std::size_t men : {3, 4, 5}) {
        for (const Material& material : MaterialsOf(men)) {
            EXPECT_TRUE(material.is_normal());
            for (const Material& next : material.Successors()) EXPECT_TRUE(seen.contains(next.name()));
            EXPECT_TRUE(seen.insert(material.name()).second) << material.name();
        }
    }
    EXPECT_EQ(WithSuccessors(Named("KPK")).size(), 5U);
}

TEST(Material, HasAKeyOfItsOwn) {
    std::set<std::uint32_t> keys;
    for (const std::size_t men : {3, 4, 5}) {
        for (const Material& material : MaterialsOf(men)) {
            EXPECT_TRUE(keys.insert(material.key()).second);
            const Material exchanged(material.of(black), material.of(white));
            EXPECT_EQ(keys.insert(exchanged.key()).second, !material.is_symmetric());
        }
    }
}

TEST(Material, OfABoardHasTheSameKey) {
    const BOARD board = BoardFromFen("4k3/8/3b4/8/8/8/8/RN2K3 w - - 0 1");
    EXPECT_EQ(Material::KeyOf(board, white), Named("KRNKB").key());
    EXPECT_EQ(Material::KeyOf(board, black), Named("KBKRN").key());
    EXPECT_EQ(Material::KeyOf(BoardFromFen("4k2q/8/8/8/8/8/8/4K3 w - - 0 1"), black), Named("KQK").key());
}

}  // namespace VorkaTablebases
