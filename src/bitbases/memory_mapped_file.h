#pragma once

#include <cstdint>
#include <string>

#include "frame/base/vorka_exception.h"

namespace VorkaUtils {

/// A whole file, mapped to be read. Only pages that are touched cost memory.
class ReadOnlyMemoryMappedFile {
  public:
    class IOException : public VorkaException {};

    /// Throws IOException if the file can't be opened or mapped, or has another size, in bytes.
    ReadOnlyMemoryMappedFile(const std::string& path, std::uint32_t expected_size);
    ~ReadOnlyMemoryMappedFile();
    ReadOnlyMemoryMappedFile(const ReadOnlyMemoryMappedFile&) = delete;
    ReadOnlyMemoryMappedFile& operator=(const ReadOnlyMemoryMappedFile&) = delete;

    [[nodiscard]] const std::uint8_t* address() const noexcept { return address_; }
    [[nodiscard]] std::uint32_t size() const noexcept { return size_; }

  private:
    const std::uint8_t* address_ = nullptr;
    std::uint32_t size_ = 0;
};

/// A file of a given size that is created, or cut and filled with zero bytes, and mapped to be written.
class MemoryMappedFile {
  public:
    class IOException : public VorkaException {};

    /// Asserts that `size`, in bytes, is above 0. Throws IOException if the file can't be created, extended or mapped.
    MemoryMappedFile(const std::string& path, std::uint32_t size);
    ~MemoryMappedFile();
    MemoryMappedFile(const MemoryMappedFile&) = delete;
    MemoryMappedFile& operator=(const MemoryMappedFile&) = delete;

    /// Writes what was changed to the disk. False if that fails.
    bool Flush() noexcept;
    [[nodiscard]] std::uint8_t* address() const noexcept { return address_; }
    [[nodiscard]] std::uint32_t size() const noexcept { return size_; }

  private:
    std::uint8_t* address_ = nullptr;
    std::uint32_t size_ = 0;
};

}  // namespace VorkaUtils
