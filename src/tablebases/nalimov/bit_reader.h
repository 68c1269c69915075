#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace NalimovTablebases {

/// Reads bits from bytes, the highest bit of each byte first. After the last byte there are zeros without an end, and
/// `is_beyond_end` tells that some were taken.
class BitReader {
  public:
    explicit BitReader(std::span<const std::uint8_t> bytes) noexcept : bytes_(bytes) {}

    /// The next `count` bits, 1 to 32, which stay.
    [[nodiscard]] std::uint32_t Peek(unsigned count) noexcept {
        while (in_stock_ < 32) Fill();
        return static_cast<std::uint32_t>(stock_ >> (64 - count));
    }
    /// Takes `count` bits, which were peeked at, away.
    void Skip(unsigned count) noexcept {
        stock_ <<= count;
        in_stock_ -= count;
        taken_ += count;
    }
    /// Takes the next `count` bits, 0 to 32.
    [[nodiscard]] std::uint32_t Take(unsigned count) noexcept {
        if (count == 0) return 0;
        const std::uint32_t bits = Peek(count);
        Skip(count);
        return bits;
    }
    /// Takes the next `count` bits, 0 to 64.
    [[nodiscard]] std::uint64_t TakeLong(unsigned count) noexcept {
        if (count <= 32) return Take(count);
        const std::uint64_t high = Take(count - 32);
        return high << 32 | Take(32);
    }
    /// Goes on with the next whole byte.
    void SkipToByte() noexcept {
        while (taken_ % 8 != 0) (void)Take(1);
    }

    [[nodiscard]] bool is_beyond_end() const noexcept { return taken_ > bytes_.size() * 8; }
    /// Bytes of which something was taken.
    [[nodiscard]] std::size_t bytes_taken() const noexcept { return static_cast<std::size_t>((taken_ + 7) / 8); }

  private:
    void Fill() noexcept {
        const std::uint64_t byte = next_ < bytes_.size() ? bytes_[next_++] : 0;
        stock_ |= byte << (56 - in_stock_);
        in_stock_ += 8;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t next_ = 0;
    std::uint64_t stock_ = 0;  ///< bits to come, from the highest on
    unsigned in_stock_ = 0;
    std::uint64_t taken_ = 0;
};

}  // namespace NalimovTablebases
