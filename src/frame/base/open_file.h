#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// A descriptor that is closed at the end of the scope, if it was not before.
class OpenFile {
  public:
    /// Takes what open and its like return, which is below 0 if they failed.
    explicit OpenFile(int descriptor) noexcept : descriptor_(descriptor) {}
    ~OpenFile() { (void)Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }
    [[nodiscard]] bool is_open() const noexcept { return descriptor_ >= 0; }
    [[nodiscard]] bool is_regular() const noexcept;
    /// Whether it is a regular file of so many bytes.
    [[nodiscard]] bool has_size(std::uint64_t size) const noexcept;
    /// Bytes of the file; nothing if they can't be told.
    [[nodiscard]] std::optional<std::uint64_t> size() const noexcept;
    /// Whether the file still stands in a folder.
    [[nodiscard]] bool has_name() const noexcept;
    /// Until it is closed, by a kill too. False if somebody else has it.
    [[nodiscard]] bool TakeLock() const noexcept;
    [[nodiscard]] bool SetOwner(uid_t owner, gid_t group) const noexcept;
    [[nodiscard]] bool SetMode(mode_t mode) const noexcept;
    /// The next byte that is read is the one at `offset`.
    [[nodiscard]] bool Seek(std::uint64_t offset) const noexcept;
    /// False if the file ends before, or can't be read.
    [[nodiscard]] bool Read(std::uint8_t* bytes, std::size_t size) const noexcept;
    [[nodiscard]] bool Write(std::string_view text) const noexcept;
    [[nodiscard]] bool Sync() const noexcept;
    /// Some devices report a failed write only here.
    [[nodiscard]] bool Close() noexcept;

  private:
    int descriptor_;
};
