#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tablebases/block_cache.h"
#include "tablebases/material.h"
#include "tablebases/packing.h"
#include "tablebases/table_file.h"

/// The file of a table of distances to mate that this program has computed: docs/tables.md draws it.
namespace VorkaTablebases {

inline constexpr std::string_view mate_table_ending = ".vdm";

/// What is known of the legal positions with one side to move. Those that turning or mirroring the board makes the same
/// count once: a position with two numbers too.
struct TableCounts {
    std::uint64_t wins = 0;
    std::uint64_t draws = 0;
    std::uint64_t losses = 0;
    std::uint32_t longest_win = 0;   ///< plies
    std::uint32_t longest_loss = 0;  ///< plies

    bool operator==(const TableCounts&) const = default;
};

/// The head of a file.
struct MateTableHeader {
    Material material;
    std::uint64_t entries = 0;
    std::uint32_t block_bytes = 0;  ///< of a block unpacked; the last one may be shorter
    std::array<TableCounts, 2>
        counts{};  ///< with White and with Black to move; a symmetric material has the first alone

    [[nodiscard]] std::uint32_t blocks() const {
        return static_cast<std::uint32_t>((entries + block_bytes - 1) / block_bytes);
    }
    /// Bytes of one block unpacked.
    [[nodiscard]] std::uint32_t BytesOf(std::uint32_t block) const {
        return block + 1 < blocks() ? block_bytes
                                    : static_cast<std::uint32_t>(entries - std::uint64_t{block} * block_bytes);
    }
};

/// The bytes of a whole file, from its blocks as they were packed.
[[nodiscard]] std::string MateTableText(const MateTableHeader& header,
                                        const std::vector<std::vector<std::uint8_t>>& packed);

/// An open file. What goes wrong with it is told on standard output.
class MateTableFile final : public BlockReader {
  public:
    /// Null if the file is no sound table of this version.
    [[nodiscard]] static std::unique_ptr<MateTableFile> Open(const std::string& path);

    [[nodiscard]] const MateTableHeader& header() const { return header_; }
    [[nodiscard]] SourceFailure ReadBlock(std::uint32_t block, std::span<std::uint8_t> to) noexcept override;

  private:
    explicit MateTableFile(const std::string& path) : file_(path) {}
    /// Whether head and places of the blocks are sound; if not, it has been told.
    [[nodiscard]] bool ReadHeader();

    struct Place {
        std::uint64_t offset;
        std::uint32_t bytes;
        std::uint32_t checksum;
    };

    const TableFile file_;
    MateTableHeader header_;
    std::vector<Place> places_;
    std::vector<std::uint8_t> packed_;  ///< working memory for the largest block
    std::optional<Unpacker> unpacker_;
};

}  // namespace VorkaTablebases
