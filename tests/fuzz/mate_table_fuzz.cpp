// Any bytes as a table of our own: the file is refused, or every position can be looked up in it, and what is found is
// a score.
//
// The first byte chooses what is done with the rest: the name of a larger table (bit 0), checksums of the blocks that
// fit (bit 1), a checksum of the header that fits (bit 2), no cache (bit 3).

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "support/board_builder.h"
#include "support/temporary_directory.h"
#include "tablebases/crc32.h"
#include "tablebases/opener/open_tables.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

enum Choice : unsigned { larger_table = 1, fitting_blocks = 2, fitting_header = 4, no_cache = 8 };

constexpr std::size_t at_blocks = 104;
constexpr std::size_t at_checksum = 108;
constexpr std::size_t at_places = 112;
constexpr std::size_t place_bytes = 16;

void Require(bool holds) {
    if (!holds) abort();
}

std::uint64_t NumberAt(const Bytes& file, std::size_t at, std::size_t bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < bytes; ++i) number |= std::uint64_t{file[at + i]} << 8 * i;
    return number;
}

void SetNumber(Bytes& file, std::size_t at, std::uint32_t number) {
    for (std::size_t i = 0; i < 4; ++i) file[at + i] = static_cast<std::uint8_t>(number >> 8 * i);
}

/// Blocks whose places are there.
std::size_t BlocksOf(const Bytes& file) {
    if (file.size() < at_places) return 0;
    const std::uint64_t blocks = NumberAt(file, at_blocks, 4);
    return blocks <= (file.size() - at_places) / place_bytes ? static_cast<std::size_t>(blocks) : 0;
}

void RenewBlocks(Bytes& file) {
    for (std::size_t block = 0; block < BlocksOf(file); ++block) {
        const std::size_t place = at_places + block * place_bytes;
        const std::uint64_t offset = NumberAt(file, place, 8);
        const std::uint64_t bytes = NumberAt(file, place + 8, 4);
        if (offset > file.size() || bytes > file.size() - offset) continue;
        const auto packed = std::span(file).subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(bytes));
        SetNumber(file, place + 12, VorkaTablebases::Crc32(packed));
    }
}

void RenewHeader(Bytes& file) {
    if (file.size() < at_places) return;
    const auto places = std::span(file).subspan(at_places, BlocksOf(file) * place_bytes);
    SetNumber(file, at_checksum,
              VorkaTablebases::Crc32(places, VorkaTablebases::Crc32(std::span(file).first(at_checksum))));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static const TemporaryDirectory folder;
    // In the first block and in the last, either side to move, and with colours exchanged.
    static const std::array boards{
        BoardFromFen("8/8/8/8/8/1k6/8/K6B w - - 0 1"),  BoardFromFen("7k/8/8/8/3K4/8/8/6B1 b - - 0 1"),
        BoardFromFen("7K/8/8/8/3k4/8/8/6b1 w - - 0 1"), BoardFromFen("8/8/8/8/8/1k6/8/K6Q w - - 0 1"),
        BoardFromFen("7k/8/8/8/3K4/8/8/6Q1 b - - 0 1"), BoardFromFen("7K/8/8/8/3k4/8/8/6q1 w - - 0 1")};
    const unsigned choice = data[0];
    Bytes file(data + 1, data + size);
    if ((choice & fitting_blocks) != 0) RenewBlocks(file);
    if ((choice & fitting_header) != 0) RenewHeader(file);
    for (const char* const name : {"KBK.vdm", "KQK.vdm"}) std::filesystem::remove(folder.File(name));
    std::ofstream(folder.File((choice & larger_table) != 0 ? "KQK.vdm" : "KBK.vdm"), std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));

    const auto tables = VorkaTablebases::OpenTables(folder.path());
    if (!tables) return 0;
    Require(tables->UseCache((choice & no_cache) != 0 ? 0 : 1 << 22));
    // Twice: from the file and from the cache, or left out.
    for (int round = 0; round < 2; ++round) {
        for (const BOARD& board : boards) {
            int score = 12345;
            const VorkaTablebases::ProbeResult result = tables->Probe(board, score);
            Require(result == VorkaTablebases::ProbeResult::found || result == VorkaTablebases::ProbeResult::not_found);
            if (result == VorkaTablebases::ProbeResult::not_found) continue;
            Require(std::abs(score) <= VorkaTablebases::score_of_mate);
            Require(score == 0 || std::abs(score) >= VorkaTablebases::score_of_mate - 254);
        }
    }
    return 0;
}
