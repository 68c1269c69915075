#include "tablebases/nalimov/nalimov_table.h"

#include <algorithm>
#include <array>
#include <new>
#include <vector>

namespace NalimovTablebases {

using VorkaTablebases::SourceFailure;
using VorkaTablebases::TellUnableToRead;

NalimovTable::NalimovTable(const std::string& path, const TableName& name)
    : file_(path), index_(name.material, name.mover) {}

std::unique_ptr<NalimovTable> NalimovTable::Open(const std::string& path, const TableName& name) {
    std::unique_ptr<NalimovTable> table(new NalimovTable(path, name));
    if (!table->ReadHead(name)) return nullptr;
    if (table->HasLengthOf(name.material)) return table;
    VorkaTablebases::TellUnableToRegister(path);
    return nullptr;
}

bool NalimovTable::ReadHead(const TableName& name) {
    if (!file_.is_regular()) {
        TellUnableToRead(file_.path(), vocabulary::reason_read_error);
        return false;
    }
    const std::optional<std::uint64_t> bytes = file_.size();
    if (!bytes) return false;
    file_bytes_ = *bytes;
    std::array<std::uint8_t, fixed_header_bytes> head{};
    const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(head.size(), file_bytes_));
    if (!file_.ReadHead(0, std::span(head).first(there))) return false;
    if (HasPackerBanner(head)) return ReadHeader(head);
    // With the name of a packed file, the banner must be damaged.
    if (!name.is_packed) return true;
    TellUnableToRead(file_.path(), vocabulary::reason_file_broken);
    return false;
}

bool NalimovTable::ReadHeader(std::span<const std::uint8_t> fixed) try {
    const FixedHeader head = FixedHeader::From(fixed);
    if (file_bytes_ >= fixed_header_bytes && head.log2_of_block != log2_of_block) {
        constexpr unsigned most_shown = 30;
        VorkaTablebases::TellUnsupportedBlockSize(file_.path(), 1U << std::min(head.log2_of_block, most_shown));
        return false;
    }
    // No memory is taken for what the file does not hold.
    if (head.IsPossible() && head.header_bytes <= file_bytes_) {
        std::vector<std::uint8_t> header(head.header_bytes);
        if (!file_.ReadHead(0, header)) return false;
        packed_ = PackedLayout::FromHeader(header);
    }
    if (packed_ && packed_->file_bytes() <= file_bytes_) return true;
    TellUnableToRead(file_.path(), vocabulary::reason_file_broken);
    return false;
} catch (const std::bad_alloc&) {
    TellUnableToRead(file_.path(), vocabulary::reason_out_of_memory);
    return false;
}

/// Whether the table can be one of this material. Where the last positions are none, the published tables are shorter
/// than the index, by less than 1 in 500; positions with an en passant capture make them longer.
bool NalimovTable::HasLengthOf(const Material& material) const noexcept {
    const std::uint64_t least = index_.size() - index_.size() / 100;
    const std::uint64_t most = material.both_have_pawns() ? 2 * index_.size() : index_.size();
    return size() >= least && size() <= most;
}

SourceFailure NalimovTable::ReadBlock(std::uint32_t block, std::span<std::uint8_t> to) noexcept {
    if (!packed_) {
        const std::uint64_t offset = std::uint64_t{block} * block_bytes;
        const std::uint64_t bytes = std::min<std::uint64_t>(block_bytes, file_bytes_ - offset);
        const bool is_read = file_.ReadBlock(offset, to.first(static_cast<std::size_t>(bytes)));
        return is_read ? SourceFailure::none : SourceFailure::unreadable;
    }
    std::array<std::uint8_t, block_bytes> buffer;
    const auto packed = std::span(buffer).first(packed_->PackedSizeOf(block));
    if (!file_.ReadBlock(packed_->OffsetOf(block), packed)) return SourceFailure::unreadable;
    if (Unpack(block, packed, to.first(packed_->PlainSizeOf(block)))) return SourceFailure::none;
    VorkaTablebases::TellCorrupted(file_.path(), block, packed_->OffsetOf(block), packed.size());
    return SourceFailure::corrupted;
}

bool NalimovTable::Unpack(std::uint32_t block, std::span<const std::uint8_t> packed,
                          std::span<std::uint8_t> plain) const noexcept {
    const auto [plain_checksum, packed_checksum] = packed_->ChecksumsOf(block);
    return PackerChecksum(packed) == packed_checksum && packed_->Unpack(packed, plain) &&
           PackerChecksum(plain) == plain_checksum;
}

}  // namespace NalimovTablebases
