#include "tablebases/mate_table_file.h"

#include <algorithm>
#include <cstddef>
#include <new>

#include "frame/base/vocabulary.h"
#include "tablebases/crc32.h"
#include "tablebases/mate_table_index.h"
#include "tablebases/table_messages.h"

namespace VorkaTablebases {

namespace {

constexpr std::string_view magic = "VorkaDTM";
constexpr std::uint32_t version = 1;
constexpr std::size_t name_bytes = 16;
constexpr std::size_t header_bytes = 112;
constexpr std::size_t place_bytes = 16;
constexpr std::uint32_t smallest_block = 256;
constexpr std::uint32_t largest_block = 1 << 20;

/// Appends numbers in little endian.
class ByteWriter {
  public:
    void Number(std::uint64_t number, int bytes) {
        for (int i = 0; i < bytes; ++i) text_ += static_cast<char>(number >> 8 * i & 255);
    }
    void Text(std::string_view text, std::size_t bytes) {
        text_ += text;
        text_.append(bytes - text.size(), '\0');
    }
    void Bytes(std::span<const std::uint8_t> bytes) { text_.append(bytes.begin(), bytes.end()); }
    [[nodiscard]] std::span<const std::uint8_t> bytes() const {
        return {reinterpret_cast<const std::uint8_t*>(text_.data()), text_.size()};
    }
    [[nodiscard]] std::string TakeText() { return std::move(text_); }

  private:
    std::string text_;
};

/// Takes them off; there must be enough.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : rest_(bytes) {}
    std::uint64_t Number(std::size_t bytes) {
        std::uint64_t number = 0;
        for (std::size_t i = 0; i < bytes; ++i) number |= std::uint64_t{rest_[i]} << 8 * i;
        rest_ = rest_.subspan(bytes);
        return number;
    }
    std::uint32_t Word() { return static_cast<std::uint32_t>(Number(4)); }
    std::string Text(std::size_t bytes) {
        const auto text = rest_.first(bytes);
        rest_ = rest_.subspan(bytes);
        return {text.begin(), std::ranges::find(text, 0)};
    }

  private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace

std::string MateTableText(const MateTableHeader& header, const std::vector<std::vector<std::uint8_t>>& packed) {
    ByteWriter writer;
    writer.Text(magic, magic.size());
    writer.Number(version, 4);
    writer.Number(header.block_bytes, 4);
    writer.Text(header.material.name(), name_bytes);
    writer.Number(header.entries, 8);
    for (const TableCounts& counts : header.counts) {
        for (const std::uint64_t count : {counts.wins, counts.draws, counts.losses}) writer.Number(count, 8);
        writer.Number(counts.longest_win, 4);
        writer.Number(counts.longest_loss, 4);
    }
    writer.Number(packed.size(), 4);
    std::uint64_t offset = header_bytes + packed.size() * place_bytes;
    ByteWriter places;
    for (const std::vector<std::uint8_t>& block : packed) {
        places.Number(offset, 8);
        places.Number(block.size(), 4);
        places.Number(Crc32(block), 4);
        offset += block.size();
    }
    writer.Number(Crc32(places.bytes(), Crc32(writer.bytes())), 4);
    writer.Bytes(places.bytes());
    for (const std::vector<std::uint8_t>& block : packed) writer.Bytes(block);
    return writer.TakeText();
}

std::unique_ptr<MateTableFile> MateTableFile::Open(const std::string& path) {
    std::unique_ptr<MateTableFile> table(new MateTableFile(path));
    if (!table->file_.is_regular() || !HasPacking()) {
        TellUnableToRegister(path);
        return nullptr;
    }
    try {
        if (!table->ReadHeader()) return nullptr;
        table->unpacker_.emplace();
    } catch (const std::bad_alloc&) {
        TellUnableToRead(path, vocabulary::reason_out_of_memory);
        return nullptr;
    }
    return table;
}

bool MateTableFile::ReadHeader() {
    const auto refuse = [this](std::string_view reason) {
        TellUnableToRead(file_.path(), reason);
        return false;
    };
    const std::optional<std::uint64_t> size = file_.size();
    if (!size) return false;
    if (*size < header_bytes) return refuse(vocabulary::reason_file_broken);
    std::vector<std::uint8_t> head(header_bytes);
    if (!file_.ReadHead(0, head)) return false;
    ByteReader reader(head);
    if (reader.Text(magic.size()) != magic || reader.Word() != version) return refuse(vocabulary::reason_file_broken);
    header_.block_bytes = reader.Word();
    if (header_.block_bytes < smallest_block || header_.block_bytes > largest_block) {
        TellUnsupportedBlockSize(file_.path(), header_.block_bytes);
        return false;
    }
    const std::optional<Material> material = Material::FromName(reader.Text(name_bytes));
    if (!material || !material->is_normal()) return refuse(vocabulary::reason_file_broken);
    header_.material = *material;
    header_.entries = reader.Number(8);
    for (TableCounts& counts : header_.counts) {
        for (std::uint64_t* count : {&counts.wins, &counts.draws, &counts.losses}) *count = reader.Number(8);
        counts.longest_win = reader.Word();
        counts.longest_loss = reader.Word();
    }
    const std::uint32_t blocks = reader.Word();
    const std::uint32_t checksum = reader.Word();
    if (header_.entries != MateTableIndex(*material).size() || blocks != header_.blocks() ||
        *size < header_bytes + std::uint64_t{blocks} * place_bytes) {
        return refuse(vocabulary::reason_file_broken);
    }
    std::vector<std::uint8_t> places(std::size_t{blocks} * place_bytes);
    if (!file_.ReadHead(header_bytes, places)) return false;
    constexpr std::size_t checksum_bytes = 4;
    if (Crc32(places, Crc32(std::span(head).first(header_bytes - checksum_bytes))) != checksum) {
        return refuse(vocabulary::reason_file_broken);
    }
    ByteReader place_reader(places);
    std::size_t largest = 0;
    places_.resize(blocks);
    for (Place& place : places_) {
        place.offset = place_reader.Number(8);
        place.bytes = place_reader.Word();
        place.checksum = place_reader.Word();
        if (place.offset > *size || place.bytes > *size - place.offset) return refuse(vocabulary::reason_file_broken);
        largest = std::max<std::size_t>(largest, place.bytes);
    }
    packed_.resize(largest);
    return true;
}

SourceFailure MateTableFile::ReadBlock(std::uint32_t block, std::span<std::uint8_t> to) noexcept {
    const Place& place = places_[block];
    const std::span<std::uint8_t> packed(packed_.data(), place.bytes);
    if (!file_.ReadBlock(place.offset, packed)) return SourceFailure::unreadable;
    if (Crc32(packed) != place.checksum || !unpacker_->Unpack(packed, to.first(header_.BytesOf(block)))) {
        TellCorrupted(file_.path(), block, place.offset, place.bytes);
        return SourceFailure::corrupted;
    }
    return SourceFailure::none;
}

}  // namespace VorkaTablebases
