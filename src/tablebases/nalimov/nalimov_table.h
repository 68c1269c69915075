#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "bitbases/tablebases.h"
#include "frame/base/vocabulary.h"
#include "tablebases/block_cache.h"
#include "tablebases/nalimov/nalimov_index.h"
#include "tablebases/nalimov/packed_table.h"
#include "tablebases/nalimov/table_name.h"
#include "tablebases/table_file.h"
#include "tablebases/table_messages.h"

namespace NalimovTablebases {

/// One file of a table: a value for each position of a material where one side has the move. A packed file has
/// checksums: whatever is damaged in it is found. Of one that is not packed only the length tells anything.
class NalimovTable final : public VorkaTablebases::BlockReader {
  public:
    /// Null, after a message, for a file that can't be read or is no such table. May throw bad_alloc.
    [[nodiscard]] static std::unique_ptr<NalimovTable> Open(const std::string& path, const TableName& name);

    [[nodiscard]] const NalimovIndex& index() const noexcept { return index_; }
    /// How many positions have a value.
    [[nodiscard]] std::uint64_t size() const noexcept { return packed_ ? packed_->plain_bytes() : file_bytes_; }
    [[nodiscard]] bool is_packed() const noexcept { return packed_.has_value(); }
    /// Says that the values contradict each other.
    void TellUnbelievable() const { VorkaTablebases::TellUnableToRead(file_.path(), vocabulary::reason_file_broken); }

    [[nodiscard]] VorkaTablebases::SourceFailure ReadBlock(std::uint32_t block,
                                                           std::span<std::uint8_t> to) noexcept override;

  private:
    NalimovTable(const std::string& path, const TableName& name);

    /// Reads what tells the form of the file. False, after a message, if that can't be right.
    [[nodiscard]] bool ReadHead(const TableName& name);
    [[nodiscard]] bool ReadHeader(std::span<const std::uint8_t> fixed);
    [[nodiscard]] bool HasLengthOf(const Material& material) const noexcept;
    [[nodiscard]] bool Unpack(std::uint32_t block, std::span<const std::uint8_t> packed,
                              std::span<std::uint8_t> plain) const noexcept;

    const VorkaTablebases::TableFile file_;
    const NalimovIndex index_;
    std::uint64_t file_bytes_ = 0;
    std::optional<PackedLayout> packed_;  ///< nothing for a file that is not packed
};

}  // namespace NalimovTablebases
