// Any bytes in place of a bitbase and of its checksum: the file is refused, and the one before stays in use, or every
// position can be looked up in it.
//
// The first byte chooses the file (bit 0), whether it has the size that it should have (bit 1), and the checksum: none
// (bit 2), one that fits (bit 3), else the first line of what follows. The rest is the content, over and over.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>

#include "bitbases/bitbases.h"
#include "bitbases/checksum_file.h"
#include "frame/base/logfile.h"
#include "support/board_builder.h"
#include "support/temporary_directory.h"

namespace {

using namespace VorkaBitbases;

void Require(bool holds) {
    if (!holds) abort();
}

enum Choice : unsigned { rammed = 1, right_size = 2, no_checksum = 4, fitting_checksum = 8 };

std::string Content(std::string_view pattern, std::size_t size) {
    std::string content;
    content.reserve(size + pattern.size());
    while (!pattern.empty() && content.size() < size) content += pattern;
    content.resize(size);
    return content;
}

void Write(const std::string& path, std::string_view text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    Require(file.good());
}

void LookUp(const Bitbases& bitbases) {
    constexpr std::array fens{"8/8/1k6/8/p6P/8/8/1K6 w - - 0 1", "8/7p/8/8/8/8/P7/k6K b - - 0 1",
                              "8/8/8/3k4/3p4/3P4/P7/3K4 w - - 0 1", "7k/p7/P7/8/8/7p/8/7K b - - 0 1"};
    for (const char* const fen : fens) {
        const std::optional<int> score = bitbases.Probe(BoardFromFen(fen));
        if (score) Require(*score > -40000 && *score < 40000);
    }
    if (!bitbases.TwoPawnsLoaded()) return;
    for (Square king = a1; king <= h8; ++king) {
        const int result = bitbases.ProbeTwoPawnsRaw(white, king, h8, a2, h7);
        Require(result >= stored_draw && result <= stored_win);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    vlog.SetEcho(false);
    static const TemporaryDirectory folder;
    static const std::string path = folder.File("bitbase");
    const unsigned choice = data[0];
    std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string_view line = rest.substr(0, rest.find('\n'));

    const std::uint32_t wanted = (choice & rammed) != 0 ? rammed_pawn_size : two_pawns_size;
    const std::string content = (choice & right_size) != 0 ? Content(rest, wanted) : std::string(rest);
    Write(path, content);
    RemoveChecksum(path);
    const bool has_own_checksum = (choice & (no_checksum | fitting_checksum)) == 0;
    if (has_own_checksum) {
        Write(path + ".sha256", line);
    } else if ((choice & no_checksum) == 0) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(content.data());
        Require(WriteChecksum(path, {bytes, content.size()}));
    }

    Bitbases bitbases;
    bool is_loaded = true;
    try {
        (choice & rammed) != 0 ? bitbases.LoadRammedPawns(path) : bitbases.LoadTwoPawns(path);
    } catch (const CouldNotOpenFileException& error) {
        Require(!std::string(error.text()).empty());
        is_loaded = false;
    }
    Require(is_loaded == ((choice & rammed) != 0 ? bitbases.RammedPawnsLoaded() : bitbases.TwoPawnsLoaded()));
    if (!has_own_checksum) Require(is_loaded == (content.size() == wanted));
    LookUp(bitbases);
    return 0;
}
