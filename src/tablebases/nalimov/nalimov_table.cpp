#include "tablebases/nalimov/nalimov_table.h"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>
#include <vector>

namespace NalimovTablebases {

using VorkaTablebases::SourceFailure;
using VorkaTablebases::TellUnableToRead;

NalimovTable::NalimovTable(std::string path, const TableName& name, int descriptor)
    : path_(std::move(path)), file_(descriptor), index_(name.material, name.mover) {}

std::unique_ptr<NalimovTable> NalimovTable::Open(const std::string& path, const TableName& name) {
    // Without waiting: a pipe may have this name.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    std::unique_ptr<NalimovTable> table(new NalimovTable(path, name, descriptor));
    if (!table->ReadHead(name)) return nullptr;
    if (table->HasLengthOf(name.material)) return table;
    VorkaTablebases::TellUnableToRegister(path);
    return nullptr;
}

bool NalimovTable::ReadHead(const TableName& name) {
    if (!file_.is_regular()) {
        TellUnableToRead(path_, vocabulary::reason_read_error);
        return false;
    }
    const std::optional<std::uint64_t> bytes = file_.size();
    if (!bytes) {
        VorkaTablebases::TellNoLength(path_);
        return false;
    }
    file_bytes_ = *bytes;
    std::array<std::uint8_t, fixed_header_bytes> head{};
    const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(head.size(), file_bytes_));
    if (!file_.Read(head.data(), there)) {
        TellUnableToRead(path_, vocabulary::reason_read_error);
        return false;
    }
    if (HasPackerBanner(head)) return ReadHeader(head);
    // With the name of a packed file, the banner must be damaged.
    if (!name.is_packed) return true;
    TellUnableToRead(path_, vocabulary::reason_file_broken);
    return false;
}

bool NalimovTable::ReadHeader(std::span<const std::uint8_t> fixed) try {
    const FixedHeader head = FixedHeader::From(fixed);
    if (file_bytes_ >= fixed_header_bytes && head.log2_of_block != log2_of_block) {
        constexpr unsigned most_shown = 30;
        VorkaTablebases::TellUnsupportedBlockSize(path_, 1 << std::min(head.log2_of_block, most_shown));
        return false;
    }
    // No memory is taken for what the file does not hold.
    if (head.IsPossible() && head.header_bytes <= file_bytes_) {
        std::vector<std::uint8_t> header(head.header_bytes);
        if (!file_.Seek(0) || !file_.Read(header.data(), header.size())) {
            TellUnableToRead(path_, vocabulary::reason_read_error);
            return false;
        }
        packed_ = PackedLayout::FromHeader(header);
    }
    if (packed_ && packed_->file_bytes() <= file_bytes_) return true;
    TellUnableToRead(path_, vocabulary::reason_file_broken);
    return false;
} catch (const std::bad_alloc&) {
    TellUnableToRead(path_, vocabulary::reason_out_of_memory);
    return false;
}

/// Whether the table can be one of this material. Where the last positions are none, the published tables are shorter
/// than the index, by less than 1 in 500; positions with an en passant capture make them longer.
bool NalimovTable::HasLengthOf(const Material& material) const noexcept {
    constexpr auto has_pawn = [](const std::string& men) { return men.ends_with('p'); };
    const bool has_en_passant = std::all_of(material.men.begin(), material.men.end(), has_pawn);
    const std::uint64_t least = index_.size() - index_.size() / 100;
    const std::uint64_t most = has_en_passant ? 2 * index_.size() : index_.size();
    return size() >= least && size() <= most;
}

bool NalimovTable::ReadAt(std::uint64_t offset, std::span<std::uint8_t> to) const noexcept {
    if (!file_.Seek(offset)) {
        VorkaTablebases::TellSeekFailed(path_);
        return false;
    }
    if (file_.Read(to.data(), to.size())) return true;
    VorkaTablebases::TellReadFailed(path_);
    return false;
}

SourceFailure NalimovTable::ReadBlock(std::uint32_t block, std::span<std::uint8_t> to) noexcept {
    if (!packed_) {
        const std::uint64_t offset = std::uint64_t{block} * block_bytes;
        const std::uint64_t bytes = std::min<std::uint64_t>(block_bytes, file_bytes_ - offset);
        return ReadAt(offset, to.first(static_cast<std::size_t>(bytes))) ? SourceFailure::none
                                                                         : SourceFailure::unreadable;
    }
    std::array<std::uint8_t, block_bytes> buffer;
    const auto packed = std::span(buffer).first(packed_->PackedSizeOf(block));
    if (!ReadAt(packed_->OffsetOf(block), packed)) return SourceFailure::unreadable;
    if (Unpack(block, packed, to.first(packed_->PlainSizeOf(block)))) return SourceFailure::none;
    VorkaTablebases::TellCorrupted(path_, block, packed_->OffsetOf(block), packed.size());
    return SourceFailure::corrupted;
}

bool NalimovTable::Unpack(std::uint32_t block, std::span<const std::uint8_t> packed,
                          std::span<std::uint8_t> plain) const noexcept {
    const auto [plain_checksum, packed_checksum] = packed_->ChecksumsOf(block);
    return PackerChecksum(packed) == packed_checksum && packed_->Unpack(packed, plain) &&
           PackerChecksum(plain) == plain_checksum;
}

}  // namespace NalimovTablebases
