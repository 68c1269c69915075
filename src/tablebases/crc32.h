#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace VorkaTablebases {

namespace crc32_detail {

constexpr std::array<std::uint32_t, 256> BuildTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t rest = i;
        for (int bit = 0; bit < 8; ++bit) rest = rest >> 1 ^ ((rest & 1) != 0 ? 0xEDB88320 : 0);
        table[i] = rest;
    }
    return table;
}
inline constexpr std::array<std::uint32_t, 256> table = BuildTable();

}  // namespace crc32_detail

/// The checksum of zip and gzip. The sum of a text in parts: each part continues the sum of those before it.
[[nodiscard]] constexpr std::uint32_t Crc32(std::span<const std::uint8_t> bytes, std::uint32_t before = 0) {
    std::uint32_t sum = ~before;
    for (const std::uint8_t byte : bytes) sum = sum >> 8 ^ crc32_detail::table[(sum ^ byte) & 255];
    return ~sum;
}

}  // namespace VorkaTablebases
