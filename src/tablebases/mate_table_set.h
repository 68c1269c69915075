#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tablebases/mate_table_file.h"
#include "tablebases/mate_table_index.h"
#include "tablebases/table_files.h"

namespace VorkaTablebases {

/// The tables in the program's own format that lie in a folder, each under the name of its material: KBNK.vdm.
class MateTableSet final : public TableSet {
  public:
    explicit MateTableSet(const std::string& folder);

    [[nodiscard]] bool empty() const noexcept override { return tables_.empty(); }
    [[nodiscard]] std::size_t largest_block() const noexcept override;
    [[nodiscard]] ProbeResult Probe(const BOARD& board, BlockCache& cache, int& score,
                                    SourceFailure& failure) noexcept override;

  private:
    struct Table {
        MateTableIndex index;
        std::unique_ptr<MateTableFile> file;
        SourceFailure failure = SourceFailure::none;  ///< why it is left out
    };
    /// Where the positions of some men are to be found.
    struct Entry {
        std::uint32_t key;
        std::uint32_t table;
        bool exchanged;  ///< the table's White is Black
    };

    std::vector<Table> tables_;
    std::vector<Entry> by_key_;  ///< in the order of the keys
    int most_men_ = 0;
};

}  // namespace VorkaTablebases
