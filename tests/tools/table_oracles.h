#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "support/temporary_directory.h"
#include "table_builder/solve.h"
#include "table_builder/storage.h"
#include "tablebases/opener/open_tables.h"
#include "tablebases/packing.h"
#include "tools/table_proof.h"

/// A variable of the environment; empty if it isn't set.
inline std::string Environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Tables to be proved: those of the folder VORKA_TABLES, otherwise those of three men, which are computed.
class TableOracles : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (!VorkaTablebases::HasPacking()) return;
        folder_ = Environment("VORKA_TABLES");
        if (!folder_.empty()) return;
        computed_ = std::make_unique<TemporaryDirectory>();
        folder_ = computed_->path().string();
        table_builder::SolvedTables tables;
        for (const VorkaTablebases::Material& material : VorkaTablebases::MaterialsOf(3)) {
            tables.Add(table_builder::Solve(material, tables, 2));
            ASSERT_TRUE(table_builder::WriteTable(folder_, tables.Of(material), 2));
        }
    }
    static void TearDownTestSuite() { computed_.reset(); }
    void SetUp() override {
        if (!VorkaTablebases::HasPacking()) GTEST_SKIP() << "this build was made without zstd";
        tables_ = VorkaTablebases::OpenTables(folder_);
        ASSERT_NE(tables_, nullptr);
        ASSERT_TRUE(tables_->UseCache(1 << 28));
    }
    static bool Has(const VorkaTablebases::Material& material) {
        return std::filesystem::exists(table_builder::PathOf(folder_, material));
    }
    static bool HasFourMen() { return computed_ == nullptr; }

    static inline std::string folder_;
    static inline std::unique_ptr<TemporaryDirectory> computed_;
    std::unique_ptr<VorkaTablebases::TableSource> tables_;
};
