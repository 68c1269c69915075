#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tablebases/nalimov/nalimov_table.h"
#include "tablebases/nalimov/table_name.h"
#include "tablebases/table_files.h"

namespace NalimovTablebases {

/// The tables of 3 to 5 men that lie in one folder in the published format. This reader was written from descriptions
/// of the format, and has never seen an original file. So a table is put to the proof before its first answer: some of
/// its positions must agree with those that their moves lead to. docs/nalimov.md tells what else protects from wrong
/// answers.
class NalimovSet final : public VorkaTablebases::TableSet {
  public:
    /// Takes what can be used, and tells what can't.
    explicit NalimovSet(const std::string& folder);

    [[nodiscard]] bool empty() const noexcept override { return materials_.empty(); }
    [[nodiscard]] std::size_t largest_block() const noexcept override { return block_bytes; }
    [[nodiscard]] VorkaTablebases::ProbeResult Probe(const BOARD& board, VorkaTablebases::BlockCache& cache, int& score,
                                                     VorkaTablebases::SourceFailure& failure) noexcept override;

    /// The same without a proof: for whoever tests the tables himself.
    [[nodiscard]] VorkaTablebases::ProbeResult LookUp(const BOARD& board, VorkaTablebases::BlockCache& cache,
                                                      int& score, VorkaTablebases::SourceFailure& failure) noexcept;
    /// The score that LookUp finds; nothing where it finds none, for any reason.
    [[nodiscard]] std::optional<int> ScoreOf(const BOARD& board, VorkaTablebases::BlockCache& cache) noexcept;
    /// The names of the tables in use, in order.
    [[nodiscard]] std::vector<TableName> Names() const;

  private:
    enum class Trust {
        untested,
        proved,
        left_out,  ///< something in it is damaged, or it contradicts itself
    };
    struct MaterialTables {
        Material material;
        std::uint32_t key;
        // By the side to move; one may be missing.
        std::array<std::unique_ptr<NalimovTable>, 2> tables{};
        std::array<Trust, 2> trust{};
    };
    /// A position as its table knows it.
    struct Seat {
        MaterialTables* tables = nullptr;  ///< null if there is no table
        Colour first = white;
        Side mover = first_side;
    };

    [[nodiscard]] MaterialTables* TablesOf(std::uint32_t key) noexcept;
    [[nodiscard]] Seat SeatOf(const BOARD& board) noexcept;
    [[nodiscard]] VorkaTablebases::ProbeResult LookUp(const Seat& seat, const BOARD& board,
                                                      VorkaTablebases::BlockCache& cache, int& score,
                                                      VorkaTablebases::SourceFailure& failure) noexcept;
    /// Tests a table that was not yet; false if it is left out.
    [[nodiscard]] bool Prove(const Seat& seat, VorkaTablebases::BlockCache& cache,
                             VorkaTablebases::SourceFailure& failure) noexcept;

    std::vector<MaterialTables> materials_;  ///< in the order of their keys
};

/// Where the men of `board` stand, as seen from the first side, which is `first`.
[[nodiscard]] Placement PlacementOf(const BOARD& board, Colour first, const Material& material) noexcept;

}  // namespace NalimovTablebases
