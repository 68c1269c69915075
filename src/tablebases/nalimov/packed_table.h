#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "tablebases/nalimov/canonical_code.h"

/// The container of packed tables: a header, then blocks that are packed each for itself. All numbers have their
/// highest byte first.
///
///     bytes       content
///     0           the banner of the packer: 60 characters and 4 zero bytes
///     64          4 bytes: size of the header, H
///     70          log2 of the bytes of a plain block: 13
///     71          number of distances: 24
///     72          4 bytes: number of blocks, B
///     76          4 bytes: parameters of the packer, always the same
///     80          B pairs of checksums, 4 bytes each: of the plain block, of the packed one
///     80 + 8 B    fields of 13 bits: B packed sizes (0 stands for a whole block), the plain size of the last block
///                 (likewise), 24 distances; then, from the next whole byte on, the code lengths of 1024 symbols
///     H - 4       checksum of all bytes before
///     H           the blocks
///
/// A block whose packed size is its plain size is not packed. Another is a row of symbols: below 256 a byte; above, a
/// copy of bytes before, with one of the 24 distances and one of 32 classes of lengths.
namespace NalimovTablebases {

inline constexpr unsigned log2_of_block = 13;
inline constexpr std::size_t block_bytes = std::size_t{1} << log2_of_block;
inline constexpr std::size_t banner_bytes = 64;
inline constexpr std::size_t fixed_header_bytes = 80;
inline constexpr std::size_t distance_count = 24;
inline constexpr std::size_t literal_count = 256;
inline constexpr std::size_t lengths_of_copies = 32;  ///< classes
inline constexpr std::size_t symbol_count = literal_count + distance_count * lengths_of_copies;
inline constexpr std::uint32_t packer_parameters = 1024U << 12 | 1U << 8 | 15U << 4 | 5U;

/// The checksum that the packer has: the usual one of 32 bits, but with the polynomial where the bit that leaves is 0.
[[nodiscard]] std::uint32_t PackerChecksum(std::span<const std::uint8_t> bytes) noexcept;

/// Whether these bytes, the first of a file, are those of a packed table.
[[nodiscard]] bool HasPackerBanner(std::span<const std::uint8_t> bytes) noexcept;

/// What the first 80 bytes of a packed table say.
struct FixedHeader {
    std::uint32_t header_bytes;
    unsigned log2_of_block;
    std::size_t distances;
    std::uint32_t blocks;
    std::uint32_t parameters;

    /// `bytes` are 80.
    [[nodiscard]] static FixedHeader From(std::span<const std::uint8_t> bytes) noexcept;
    /// Whether it can be true of a table with blocks of `block_bytes`.
    [[nodiscard]] bool IsPossible() const noexcept;
};

/// The whole header of a packed table.
class PackedLayout {
  public:
    /// `header` holds all bytes of it. Nothing if it is damaged. May throw bad_alloc.
    [[nodiscard]] static std::optional<PackedLayout> FromHeader(std::span<const std::uint8_t> header);

    [[nodiscard]] std::size_t blocks() const noexcept { return blocks_.size(); }
    /// Bytes of the table when unpacked.
    [[nodiscard]] std::uint64_t plain_bytes() const noexcept { return (blocks() - 1) * block_bytes + last_block_; }
    /// Bytes of the file.
    [[nodiscard]] std::uint64_t file_bytes() const noexcept {
        return OffsetOf(blocks() - 1) + PackedSizeOf(blocks() - 1);
    }
    /// Where a block stands in the file.
    [[nodiscard]] std::uint64_t OffsetOf(std::size_t block) const noexcept;
    [[nodiscard]] std::size_t PackedSizeOf(std::size_t block) const noexcept { return blocks_[block].packed_size; }
    [[nodiscard]] std::size_t PlainSizeOf(std::size_t block) const noexcept {
        return block + 1 < blocks() ? block_bytes : last_block_;
    }

    struct Checksums {
        std::uint32_t plain;
        std::uint32_t packed;
    };
    [[nodiscard]] Checksums ChecksumsOf(std::size_t block) const noexcept {
        return {blocks_[block].plain_checksum, blocks_[block].packed_checksum};
    }

    /// Unpacks a block into `plain`, which is as large as it. False if it is damaged, as far as can be told without the
    /// checksums.
    [[nodiscard]] bool Unpack(std::span<const std::uint8_t> packed, std::span<std::uint8_t> plain) const noexcept;

  private:
    struct Block {
        std::uint32_t plain_checksum;
        std::uint32_t packed_checksum;
        std::uint16_t packed_size;
    };
    /// Offsets are kept for every so many blocks.
    static constexpr std::size_t blocks_of_offset = 32;

    explicit PackedLayout(CanonicalCode code) : code_(std::move(code)) {}

    std::vector<Block> blocks_;
    std::vector<std::uint64_t> offsets_;
    std::size_t last_block_ = 0;  ///< plain bytes
    std::array<std::uint16_t, distance_count> distances_{};
    CanonicalCode code_;
};

}  // namespace NalimovTablebases
