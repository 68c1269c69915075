#include "bitbases/checksum_file.h"

#include <unistd.h>

#include <fstream>

#include "bitbases/sha256.h"
#include "frame/base/vocabulary.h"
#include "frame/base/whole_file.h"

namespace VorkaBitbases {

namespace {

std::string PathOfChecksum(const std::string& path) { return path + std::string(vocabulary::checksum_ending); }

std::string LineFor(const std::string& path, std::span<const std::uint8_t> bytes) {
    return Sha256(bytes) + "  " + path.substr(path.rfind('/') + 1);
}

}  // namespace

Checksum TestChecksum(const std::string& path, std::span<const std::uint8_t> bytes) {
    std::ifstream file;
    if (!OpenForReading(PathOfChecksum(path), file)) return Checksum::missing;
    const std::string wanted = LineFor(path, bytes);
    std::string line(wanted.size(), '\0');
    file.read(line.data(), static_cast<std::streamsize>(line.size()));
    if (file.gcount() != static_cast<std::streamsize>(wanted.size())) return Checksum::does_not_fit;
    // sha256sum --binary marks the name by a star.
    if (const std::size_t star = wanted.find(' ') + 1; line[star] == '*') line[star] = ' ';
    const int next = file.get();
    const bool is_whole = next == '\n' || next == '\r' || !file;
    return line == wanted && is_whole ? Checksum::fits : Checksum::does_not_fit;
}

void RemoveChecksum(const std::string& path) { unlink(PathOfChecksum(path).c_str()); }

bool WriteChecksum(const std::string& path, std::span<const std::uint8_t> bytes) {
    return ReplaceFile(PathOfChecksum(path), LineFor(path, bytes) + '\n') == FileOutcome::written;
}

}  // namespace VorkaBitbases
