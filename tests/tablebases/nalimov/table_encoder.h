#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tablebases/nalimov/nalimov_index.h"
#include "tablebases/nalimov/table_name.h"

/// Writes tables in the published format: for tests of what reads them.
namespace table_encoder {

using Bytes = std::vector<std::uint8_t>;

class BitWriter {
  public:
    void Put(std::uint64_t bits, unsigned count);
    /// Fills the last byte with zeros.
    void Align();
    [[nodiscard]] const Bytes& bytes() const { return bytes_; }
    [[nodiscard]] bool is_aligned() const { return free_ == 0; }

  private:
    Bytes bytes_;
    unsigned free_ = 0;  ///< bits of the last byte
};

/// Lengths of an optimal prefix code; 1 for a symbol that stands alone.
[[nodiscard]] Bytes CodeLengths(const std::vector<std::uint64_t>& counts);
/// Codes by symbol.
[[nodiscard]] std::vector<std::uint32_t> CanonicalCodes(const Bytes& lengths);
/// Writes code lengths as the header has them.
void PutCodeLengths(BitWriter& bits, const Bytes& lengths);

/// The values of a table, all broken but those that `value_of` gives.
using ValueOf = std::function<std::optional<std::int8_t>(const NalimovTablebases::Placement&)>;
[[nodiscard]] Bytes ValuesOf(const NalimovTablebases::Material& material, NalimovTablebases::Side mover,
                             const ValueOf& value_of);

struct Packing {
    bool stores_all = false;          ///< no block is packed
    std::size_t longest_copy = 8192;  ///< bytes
};
/// The packed file. `plain` is not empty.
[[nodiscard]] Bytes Pack(std::span<const std::uint8_t> plain, const Packing& packing = {});

/// Sets 4 bytes, the highest first.
void SetNumber(Bytes& bytes, std::size_t at, std::uint32_t number);
/// Makes the checksum of the header fit what was changed in it.
void RenewHeaderChecksum(Bytes& file);

void WriteFile(const std::string& path, std::span<const std::uint8_t> bytes);

}  // namespace table_encoder
