#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "tablebases/nalimov/bit_reader.h"

namespace NalimovTablebases {

/// No code is longer, in bits.
inline constexpr unsigned longest_code = 31;

/// A prefix code that is given by the lengths of its codes alone: shorter codes come first, then lower symbols. A
/// symbol of length 0 has no code. A symbol that stands alone takes no bits.
class CanonicalCode {
  public:
    /// Nothing if a length is above `longest_code`, or if there are more codes than their lengths have room for.
    [[nodiscard]] static std::optional<CanonicalCode> FromLengths(std::span<const std::uint8_t> lengths);

    /// The next symbol; nothing for bits that are no code.
    [[nodiscard]] std::optional<unsigned> Read(BitReader& bits) const noexcept;

  private:
    static constexpr unsigned quick_bits = 10;
    struct Quick {
        std::uint16_t symbol = 0;
        std::uint8_t length = 0;  ///< 0: the code is longer than `quick_bits`, or is none
    };

    void FillQuickTable();

    std::vector<std::uint16_t> symbols_;                      ///< in the order of their codes
    std::array<std::uint32_t, longest_code + 2> first_{};     ///< by length: the first code
    std::array<std::uint32_t, longest_code + 2> position_{};  ///< by length: its place in `symbols_`
    std::vector<Quick> quick_;                                ///< by the next bits
};

/// Reads the code lengths of `count` symbols, which are packed themselves. Nothing if they are damaged.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> ReadCodeLengths(BitReader& bits, std::size_t count);

}  // namespace NalimovTablebases
