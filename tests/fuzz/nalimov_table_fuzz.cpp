// Any bytes as a table in the published format: the file is refused, or every position can be looked up in it, and what
// is found is a score.
//
// The first byte chooses what is done with the rest: the name of a plain file (bit 0), a checksum of the header that
// fits (bit 1), blocks that are unpacked whatever their checksums say (bit 2), the content over and over until it has
// the size of a plain table (bit 3).

#include <algorithm>
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
#include "tablebases/nalimov/nalimov_set.h"
#include "tablebases/nalimov/packed_table.h"
#include "tablebases/opener/open_tables.h"

namespace {

using namespace NalimovTablebases;
using VorkaTablebases::ProbeResult;
using Bytes = std::vector<std::uint8_t>;

enum Choice : unsigned { plain_name = 1, fitting_checksum = 2, without_checksums = 4, full_size = 8 };

void Require(bool holds) {
    if (!holds) abort();
}

/// Bytes of the header, if so many are there.
std::size_t HeaderOf(const Bytes& file) {
    if (file.size() < fixed_header_bytes) return 0;
    const std::size_t header = FixedHeader::From(file).header_bytes;
    return header > fixed_header_bytes && header <= file.size() ? header : 0;
}

void RenewChecksum(Bytes& file) {
    const std::size_t header = HeaderOf(file);
    if (header == 0) return;
    const std::uint32_t checksum = PackerChecksum(std::span(file).first(header - 4));
    for (std::size_t i = 0; i < 4; ++i) file[header - 4 + i] = static_cast<std::uint8_t>(checksum >> (24 - 8 * i));
}

void UnpackBlocks(const Bytes& file) {
    const auto layout = PackedLayout::FromHeader(std::span(file).first(HeaderOf(file)));
    if (!layout) return;
    Bytes plain(block_bytes);
    for (std::size_t i = 0; i < std::min<std::size_t>(layout->blocks(), 4); ++i) {
        Require(layout->PlainSizeOf(i) <= block_bytes && layout->PackedSizeOf(i) <= block_bytes);
        if (layout->OffsetOf(i) >= file.size()) return;
        const auto there = std::span(file).subspan(static_cast<std::size_t>(layout->OffsetOf(i)));
        const auto packed = there.first(std::min(there.size(), layout->PackedSizeOf(i)));
        (void)layout->Unpack(packed, std::span(plain).first(layout->PlainSizeOf(i)));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static const TemporaryDirectory folder;
    static const std::array boards{BoardFromFen("8/8/8/8/8/2K5/7Q/k7 w - - 0 1"),
                                   BoardFromFen("7k/8/8/q7/8/8/8/5K2 b - - 0 1"),
                                   BoardFromFen("8/8/3k4/8/8/8/Q7/5K2 w - - 0 1")};
    const unsigned choice = data[0];
    Bytes file(data + 1, data + size);
    if ((choice & fitting_checksum) != 0) RenewChecksum(file);
    if ((choice & without_checksums) != 0) UnpackBlocks(file);
    const Material material = *MaterialNamed("kqk");
    if ((choice & full_size) != 0 && !file.empty()) {
        for (const std::size_t wanted = NalimovIndex(material, first_side).size(); file.size() < wanted;) {
            file.insert(file.end(), file.begin(),
                        file.begin() + static_cast<std::ptrdiff_t>(std::min(file.size(), wanted - file.size())));
        }
    }
    const std::string name = FileNameOf({material, first_side, (choice & plain_name) == 0});
    for (const bool is_packed : {false, true}) {
        std::filesystem::remove(folder.File(FileNameOf({material, first_side, is_packed})));
    }
    std::ofstream(folder.File(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()), static_cast<std::streamsize>(file.size()));

    NalimovSet set(folder.path());
    VorkaTablebases::BlockCache cache(block_bytes);
    for (const BOARD& board : boards) {
        int score = 12345;
        VorkaTablebases::SourceFailure failure = VorkaTablebases::SourceFailure::none;
        // Unproved first, or nothing would be left to look up.
        for (const ProbeResult result :
             {set.LookUp(board, cache, score, failure), set.Probe(board, cache, score, failure)}) {
            Require(result == ProbeResult::found || result == ProbeResult::not_found);
            if (result == ProbeResult::found)
                Require(std::abs(score) <= 32767 && (score == 0 || std::abs(score) > 32500));
        }
    }
    return 0;
}
