#pragma once

#include <filesystem>
#include <string>

/// The name by which a program was called, for what it says of itself: installed it may have another.
[[nodiscard]] inline std::string ProgramName(const char* const* argv) {
    return std::filesystem::path(argv[0]).filename().string();
}
