#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "frame/base/open_file.h"

namespace VorkaTablebases {

/// All files of a folder, in the order of their names; none if there is no such folder.
[[nodiscard]] std::vector<std::filesystem::path> FilesIn(const std::string& folder);

/// A file of a table, of whatever format, while it is read.
class TableFile {
  public:
    explicit TableFile(std::string path);

    [[nodiscard]] const std::string& path() const noexcept { return path_; }
    [[nodiscard]] bool is_regular() const noexcept { return file_.is_regular(); }
    /// Bytes of the file. Nothing, after a message, if they can't be told.
    [[nodiscard]] std::optional<std::uint64_t> size() const noexcept;
    /// Reads a part of what describes the table. False, after a message that the file can't be read.
    [[nodiscard]] bool ReadHead(std::uint64_t offset, std::span<std::uint8_t> to) const noexcept;
    /// Reads a block. False, after a message that tells what failed.
    [[nodiscard]] bool ReadBlock(std::uint64_t offset, std::span<std::uint8_t> to) const noexcept;

  private:
    const std::string path_;
    const OpenFile file_;
};

}  // namespace VorkaTablebases
