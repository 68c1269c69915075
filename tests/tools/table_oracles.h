#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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

/// The folder of tables that are there to be proved: that of VORKA_TABLES, otherwise some that CTest has had computed.
/// Empty if there is none.
inline std::string FolderOfTables() {
    const std::string all = Environment("VORKA_TABLES");
    return all.empty() ? Environment("VORKA_SOME_TABLES") : all;
}

/// The materials of so many men whose tables lie in a folder.
inline std::vector<VorkaTablebases::Material> MaterialsIn(const std::string& folder, std::size_t men) {
    std::vector<VorkaTablebases::Material> materials;
    if (folder.empty()) return materials;
    for (VorkaTablebases::Material& material : VorkaTablebases::MaterialsOf(men)) {
        if (std::filesystem::exists(table_builder::PathOf(folder, material))) materials.push_back(std::move(material));
    }
    return materials;
}

/// Tables to be proved: those that are there, otherwise those of three men, which are computed.
class TableOracles : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        if (!VorkaTablebases::HasPacking()) return;
        folder_ = FolderOfTables();
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
    static std::vector<VorkaTablebases::Material> FourMen() { return MaterialsIn(folder_, 4); }

    static inline std::string folder_;
    static inline std::unique_ptr<TemporaryDirectory> computed_;
    std::unique_ptr<VorkaTablebases::TableSource> tables_;
};
