#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

/// Packing of blocks by the library zstd, where it was installed when the program was built.
namespace VorkaTablebases {

/// Whether this build can pack and unpack.
[[nodiscard]] bool HasPacking() noexcept;

/// Packs blocks, each by itself. One thread at a time uses it.
class Packer {
  public:
    Packer();
    ~Packer();
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    /// Throws std::bad_alloc.
    [[nodiscard]] std::vector<std::uint8_t> Pack(std::span<const std::uint8_t> plain);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Unpacks blocks. One thread at a time uses it.
class Unpacker {
  public:
    Unpacker();
    ~Unpacker();
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;

    /// Fills `plain`, which is as large as the block was. False if `packed` is no packed block of that size.
    [[nodiscard]] bool Unpack(std::span<const std::uint8_t> packed, std::span<std::uint8_t> plain) noexcept;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace VorkaTablebases
