#pragma once

#include <cstdint>
#include <span>
#include <string>

/// The checksums beside the bitbase files, which are raw bytes and can't hold their own. FILE.sha256 has one line in
/// the form of sha256sum, so that `sha256sum -c` reads it as well:
///
///     d2bec14d422abdbce136a229efafcbca75bb919225798e4d2715e745ec69b8c6  kp_kp.vbb
namespace VorkaBitbases {

enum class Checksum {
    not_tested,  ///< there is no file to be tested
    fits,
    missing,      ///< there is no FILE.sha256 that can be read
    does_not_fit  ///< or it is damaged itself, or of another file
};

/// What stands beside the file at `path`, which holds `bytes`.
[[nodiscard]] Checksum TestChecksum(const std::string& path, std::span<const std::uint8_t> bytes);

/// Takes away the checksum of a file that is about to be written: what a kill leaves then lacks one, and has none of
/// another file.
void RemoveChecksum(const std::string& path);
/// Writes the checksum of the file at `path`, which holds `bytes`. Whether that succeeded.
bool WriteChecksum(const std::string& path, std::span<const std::uint8_t> bytes);

}  // namespace VorkaBitbases
