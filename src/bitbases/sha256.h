#pragma once

#include <cstdint>
#include <span>
#include <string>

/// The checksum SHA-256 (FIPS 180-4) of some bytes: 64 hexadecimal digits in lower case, as sha256sum prints them.
[[nodiscard]] std::string Sha256(std::span<const std::uint8_t> bytes);
