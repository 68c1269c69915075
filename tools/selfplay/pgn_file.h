#pragma once

#include <string>
#include <string_view>

#include "frame/base/open_file.h"

/// The games of a match in PGN, added to what stands in a file: no game is ever lost.
class PgnFile {
  public:
    /// Opens the file, or makes it, and adds the games of `known`, those of this match that were played before. As many
    /// of them as the file ends with are there already; the last of these may have been cut off, and is completed.
    /// Throws std::runtime_error if it is no regular file, or can't be read or written.
    PgnFile(const std::string& path, std::string_view known);

    /// Throws std::runtime_error if the file can't be written.
    void Add(std::string_view games) const;

  private:
    std::string path_;
    OpenFile file_;
};

/// How much of the beginning of `known` the end of `kept` already has; all of it, if more follows after it.
[[nodiscard]] std::size_t LengthKept(std::string_view kept, std::string_view known);
