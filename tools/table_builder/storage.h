#pragma once

#include <functional>
#include <memory>
#include <string>

#include "table_builder/solved_tables.h"

/// Tables on disk.
namespace table_builder {

[[nodiscard]] std::string PathOf(const std::string& folder, const Material& material);

/// Packs a solved table and writes its file whole, or not at all. False if that fails.
/// `report` is told the share that is packed, often, by the thread that calls.
[[nodiscard]] bool WriteTable(const std::string& folder, const SolvedTable& table, int threads,
                              const std::function<void(double)>& report = {});

/// Whether the file is there and sound. If it is damaged, that is told on standard output.
[[nodiscard]] bool IsSound(const std::string& folder, const Material& material);

/// Reads a whole file; null if it is missing or not sound, told on standard output.
[[nodiscard]] std::unique_ptr<SolvedTable> ReadTable(const std::string& folder, const Material& material);

}  // namespace table_builder
