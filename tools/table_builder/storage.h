#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "table_builder/solved_tables.h"

/// Tables on disk.
namespace table_builder {

[[nodiscard]] std::string PathOf(const std::string& folder, const Material& material);

/// Packs a solved table and writes its file whole, or not at all. False if that fails.
[[nodiscard]] bool WriteTable(const std::string& folder, const SolvedTable& table, int threads);

/// Reads a whole file; null if it is missing or not sound, told on standard output.
[[nodiscard]] std::unique_ptr<SolvedTable> ReadTable(const std::string& folder, const Material& material);

}  // namespace table_builder
