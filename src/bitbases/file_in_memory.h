#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "frame/base/vorka_exception.h"

namespace VorkaUtils {

/// A whole file, to be read. It lies in memory of the program: a page of a mapping that somebody cuts off the file
/// would kill the program at its next look, and no look could be sure of the bytes that were there when they were
/// tested.
class FileInMemory {
  public:
    enum class Failure { not_opened, no_regular_file, other_size, not_read };
    class IOException : public VorkaException {
      public:
        explicit IOException(Failure failure) : failure_(failure) {}
        [[nodiscard]] Failure failure() const noexcept { return failure_; }

      private:
        Failure failure_;
    };

    /// Throws IOException if the file can't be opened or read, is no regular file, or has another size, in bytes; and
    /// if there is no memory for it.
    FileInMemory(const std::string& path, std::uint32_t expected_size);
    ~FileInMemory() = default;
    FileInMemory(const FileInMemory&) = delete;
    FileInMemory& operator=(const FileInMemory&) = delete;

    [[nodiscard]] const std::uint8_t* address() const noexcept { return bytes_.get(); }
    [[nodiscard]] std::uint32_t size() const noexcept { return size_; }

  private:
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::uint32_t size_ = 0;
};

}  // namespace VorkaUtils
