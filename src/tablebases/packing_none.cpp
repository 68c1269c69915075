#include "tablebases/packing.h"

namespace VorkaTablebases {

bool HasPacking() noexcept { return false; }

struct Packer::State {};
Packer::Packer() = default;
Packer::~Packer() = default;
std::vector<std::uint8_t> Packer::Pack(std::span<const std::uint8_t> plain) { return {plain.begin(), plain.end()}; }

struct Unpacker::State {};
Unpacker::Unpacker() = default;
Unpacker::~Unpacker() = default;
bool Unpacker::Unpack(std::span<const std::uint8_t> /*packed*/, std::span<std::uint8_t> /*plain*/) noexcept {
    return false;
}

}  // namespace VorkaTablebases
