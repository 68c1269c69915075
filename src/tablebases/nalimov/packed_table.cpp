#include "tablebases/nalimov/packed_table.h"

#include <algorithm>
#include <utility>

#include "frame/base/vocabulary.h"

namespace NalimovTablebases {

namespace {

constexpr std::size_t checksum_bytes = 4;

consteval std::array<std::uint32_t, 256> ChecksumsOfBytes() {
    std::array<std::uint32_t, 256> checksums{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte;
        for (int bit = 0; bit < 8; ++bit) rest = (rest & 1U) != 0 ? rest >> 1 : (rest >> 1) ^ 0xEDB88320;
        checksums[byte] = rest;
    }
    return checksums;
}

constexpr std::array<std::uint32_t, 256> checksums_of_bytes = ChecksumsOfBytes();

std::uint32_t NumberAt(std::span<const std::uint8_t> bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + 4; ++i) number = number << 8 | bytes[i];
    return number;
}

/// Bits of the fields after the checksums, without the code lengths.
std::uint64_t BitsOfFields(std::uint64_t blocks) { return (blocks + 1 + distance_count) * log2_of_block; }

/// The least size of the header for so many blocks.
std::uint64_t LeastHeader(std::uint64_t blocks) {
    return fixed_header_bytes + 2 * checksum_bytes * blocks + (BitsOfFields(blocks) + 7) / 8 + checksum_bytes;
}

/// The code lengths take no more, whatever they are: less than 64 bits for a symbol.
constexpr std::uint64_t most_bytes_of_lengths = 8 * symbol_count;

}  // namespace

std::uint32_t PackerChecksum(std::span<const std::uint8_t> bytes) noexcept {
    std::uint32_t rest = 0;
    for (const std::uint8_t byte : bytes) rest = rest >> 8 ^ checksums_of_bytes[(rest ^ byte) & 255];
    return rest;
}

bool HasPackerBanner(std::span<const std::uint8_t> bytes) noexcept {
    constexpr std::string_view banner = vocabulary::nalimov_packer_banner;
    static_assert(banner.size() == banner_bytes);
    return bytes.size() >= banner_bytes && std::equal(banner.begin(), banner.end(), bytes.begin(),
                                                      [](char a, auto b) { return static_cast<std::uint8_t>(a) == b; });
}

FixedHeader FixedHeader::From(std::span<const std::uint8_t> bytes) noexcept {
    return {.header_bytes = NumberAt(bytes, 64),
            .log2_of_block = bytes[70],
            .distances = bytes[71],
            .blocks = NumberAt(bytes, 72),
            .parameters = NumberAt(bytes, 76)};
}

bool FixedHeader::IsPossible() const noexcept {
    const std::uint64_t least = LeastHeader(blocks);
    return distances == distance_count && parameters == packer_parameters && blocks > 0 && header_bytes >= least &&
           header_bytes <= least + most_bytes_of_lengths;
}

std::optional<PackedLayout> PackedLayout::FromHeader(std::span<const std::uint8_t> header) {
    if (header.size() < fixed_header_bytes || !HasPackerBanner(header)) return std::nullopt;
    const FixedHeader fixed = FixedHeader::From(header);
    if (fixed.log2_of_block != NalimovTablebases::log2_of_block || !fixed.IsPossible() ||
        fixed.header_bytes != header.size()) {
        return std::nullopt;
    }
    const std::size_t end = header.size() - checksum_bytes;
    if (PackerChecksum(header.first(end)) != NumberAt(header, end)) return std::nullopt;

    const std::size_t fields = fixed_header_bytes + 2 * checksum_bytes * fixed.blocks;
    BitReader bits(header.subspan(fields, end - fields));
    const auto take_size = [&] {
        const std::uint32_t size = bits.Take(NalimovTablebases::log2_of_block);
        return static_cast<std::uint16_t>(size == 0 ? block_bytes : size);
    };
    std::vector<Block> blocks(fixed.blocks);
    std::vector<std::uint64_t> offsets;
    std::uint64_t offset = fixed.header_bytes;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const std::size_t at = fixed_header_bytes + 2 * checksum_bytes * i;
        blocks[i] = {NumberAt(header, at), NumberAt(header, at + checksum_bytes), take_size()};
        if (i % blocks_of_offset == 0) offsets.push_back(offset);
        offset += blocks[i].packed_size;
    }
    const std::size_t last_block = take_size();
    std::array<std::uint16_t, distance_count> distances{};
    for (std::uint16_t& distance : distances) {
        distance = static_cast<std::uint16_t>(bits.Take(NalimovTablebases::log2_of_block));
    }
    bits.SkipToByte();
    const auto lengths = ReadCodeLengths(bits, symbol_count);
    if (!lengths || blocks.back().packed_size > last_block) return std::nullopt;
    std::optional<CanonicalCode> code = CanonicalCode::FromLengths(*lengths);
    if (!code) return std::nullopt;

    PackedLayout layout(std::move(*code));
    layout.blocks_ = std::move(blocks);
    layout.offsets_ = std::move(offsets);
    layout.last_block_ = last_block;
    layout.distances_ = distances;
    return layout;
}

std::uint64_t PackedLayout::OffsetOf(std::size_t block) const noexcept {
    const std::size_t known = block / blocks_of_offset;
    std::uint64_t offset = offsets_[known];
    for (std::size_t i = known * blocks_of_offset; i < block; ++i) offset += blocks_[i].packed_size;
    return offset;
}

namespace {

/// Bytes of a copy whose class of lengths is `length_class`.
std::uint64_t BytesOfCopy(BitReader& bits, unsigned length_class) {
    constexpr unsigned single_lengths = 15;
    constexpr unsigned last_width = 17;
    if (length_class < single_lengths) return length_class + 1;
    unsigned width = length_class - single_lengths + 1;
    if (width == last_width) width += bits.Take(5);
    const std::uint64_t more = bits.TakeLong(width);
    return single_lengths - 1 + (std::uint64_t{1} << width) + more;
}

}  // namespace

bool PackedLayout::Unpack(std::span<const std::uint8_t> packed, std::span<std::uint8_t> plain) const noexcept {
    if (packed.size() == plain.size()) {
        std::copy(packed.begin(), packed.end(), plain.begin());
        return true;
    }
    BitReader bits(packed);
    for (std::size_t done = 0; done < plain.size();) {
        const std::optional<unsigned> symbol = code_.Read(bits);
        if (!symbol) return false;
        if (*symbol < literal_count) {
            plain[done++] = static_cast<std::uint8_t>(*symbol);
            continue;
        }
        const auto copy = static_cast<unsigned>(*symbol - literal_count);
        const std::size_t distance = distances_[copy / lengths_of_copies];
        const std::uint64_t length = BytesOfCopy(bits, copy % lengths_of_copies);
        if (distance == 0 || distance > done || length > plain.size() - done) return false;
        // A copy may begin with bytes that it writes itself.
        for (const std::size_t end = done + static_cast<std::size_t>(length); done < end; ++done) {
            plain[done] = plain[done - distance];
        }
    }
    return !bits.is_beyond_end();
}

}  // namespace NalimovTablebases
