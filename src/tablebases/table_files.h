#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "bitbases/tablebases.h"
#include "tablebases/block_cache.h"

namespace VorkaTablebases {

/// All tables of one file format that lie in one folder.
class TableSet {
  public:
    TableSet() = default;
    virtual ~TableSet() = default;
    TableSet(const TableSet&) = delete;
    TableSet& operator=(const TableSet&) = delete;

    [[nodiscard]] virtual bool empty() const noexcept = 0;
    /// Bytes of the largest block of any of the tables, unpacked.
    [[nodiscard]] virtual std::size_t largest_block() const noexcept = 0;
    /// As TableSource::Probe, through a cache; with not_found, `failure` says what went wrong, if something did. A
    /// table with a bad block is left out from then on.
    [[nodiscard]] virtual ProbeResult Probe(const BOARD& board, BlockCache& cache, int& score,
                                            SourceFailure& failure) noexcept = 0;
};

/// Tables of several formats behind one cache. The first set that knows a position answers.
class CombinedSource final : public TableSource {
  public:
    explicit CombinedSource(std::vector<std::unique_ptr<TableSet>> sets);

    [[nodiscard]] ProbeResult Probe(const BOARD& board, int& score) noexcept override;
    [[nodiscard]] SourceFailure last_failure() const noexcept override { return last_failure_; }
    [[nodiscard]] bool UseCache(std::int32_t bytes) noexcept override;
    [[nodiscard]] bool LacksMemory() const noexcept override { return cache_.lacks_memory(); }

    [[nodiscard]] const BlockCache& cache() const noexcept { return cache_; }

  private:
    const std::vector<std::unique_ptr<TableSet>> sets_;
    BlockCache cache_;
    SourceFailure last_failure_ = SourceFailure::none;
};

}  // namespace VorkaTablebases
