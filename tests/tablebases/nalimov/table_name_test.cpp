#include "tablebases/nalimov/table_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "support/board_builder.h"

namespace NalimovTablebases {

using testing::Optional;

TEST(Materials, AreAsManyAsPublished) {
    EXPECT_EQ(MaterialsOf(3).size(), 5U);
    EXPECT_EQ(MaterialsOf(4).size(), 30U);
    EXPECT_EQ(MaterialsOf(5).size(), 110U);
}

TEST(Materials, HaveNamesAndKeysOfTheirOwn) {
    std::set<std::string> names;
    std::set<std::uint32_t> keys;
    std::size_t count = 0;
    for (const int men : {3, 4, 5}) {
        for (const Material& material : MaterialsOf(men)) {
            ++count;
            names.insert(material.name());
            keys.insert(material.key());
            EXPECT_EQ(material.name().size(), static_cast<std::size_t>(men));
            EXPECT_THAT(MaterialNamed(material.name()), Optional(material));
        }
    }
    EXPECT_EQ(names.size(), count);
    EXPECT_EQ(keys.size(), count);
}

TEST(Materials, OfABoardHaveTheSameKey) {
    const BOARD board = BoardFromFen("4k3/8/3b4/8/8/8/8/RN2K3 w - - 0 1");
    EXPECT_EQ(KeyOf(board, white), MaterialNamed("krnkb")->key());
    EXPECT_NE(KeyOf(board, black), MaterialNamed("krnkb")->key());
    EXPECT_EQ(KeyOf(BoardFromFen("4k2q/8/8/8/8/8/8/4K3 w - - 0 1"), black), MaterialNamed("kqk")->key());
}

struct NameRow {
    const char* file;
    const char* material;
    Side mover;
    bool is_packed;
};

TEST(TableNames, AreReadInAllForms) {
    constexpr NameRow rows[] = {
        {"kqk.nbw.emd", "kqk", first_side, true},    {"kqk.nbb.emd", "kqk", second_side, true},
        {"kbnk.nbw", "kbnk", first_side, false},     {"kpkp.nbb", "kpkp", second_side, false},
        {"krkn_nbw.emd", "krkn", first_side, true},  {"krkn_nbb", "krkn", second_side, false},
        {"krpkpnbw.emd", "krpkp", first_side, true}, {"KRPKPNBB.EMD", "krpkp", second_side, true},
        {"KQKRNBW", "kqkr", first_side, false},      {"kqqqk.nbw.emd", "kqqqk", first_side, true},
    };
    for (const NameRow& row : rows) {
        const TableName wanted{*MaterialNamed(row.material), row.mover, row.is_packed};
        EXPECT_THAT(ReadTableName(row.file), Optional(wanted)) << row.file;
    }
}

TEST(TableNames, OfOtherFilesAreNone) {
    for (const char* const file :
         {"",         "kqk",      "kqk.nbx",  "kqk.emd",         ".nbw.emd",          "kk.nbw",     "kkq.nbw",
          "knbk.nbw", "kbkq.nbw", "krkq.nbw", "kqkqk.nbw",       "kqkrr.nbw",         "kqqqqk.nbw", "kqqkqq.nbw",
          "qkk.nbw",  "kxk.nbw",  "kqk..nbw", "kqk.nbw.emd.bak", "krppkrp.0.nbw.emd", "KQvK.rtbw"}) {
        EXPECT_EQ(ReadTableName(file), std::nullopt) << file;
    }
}

TEST(TableNames, AreWrittenInTheUsualForm) {
    EXPECT_EQ(FileNameOf({*MaterialNamed("kbnk"), first_side, true}), "kbnk.nbw.emd");
    EXPECT_EQ(FileNameOf({*MaterialNamed("kpkp"), second_side, false}), "kpkp.nbb");
}

}  // namespace NalimovTablebases
