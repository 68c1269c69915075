#include "tablebases/nalimov/table_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace NalimovTablebases {

using testing::Optional;

TEST(MaterialNames, AreSmallAndInOrder) {
    EXPECT_THAT(MaterialNamed("kbnk"), Optional(*Material::FromName("KBNK")));
    for (const char* const name : {"", "kk", "KBNK", "kBNk", "knbk", "krkq", "kbnk ", "kqqqqk"}) {
        EXPECT_EQ(MaterialNamed(name), std::nullopt) << name;
    }
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
