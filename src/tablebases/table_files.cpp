#include "tablebases/table_files.h"

#include <algorithm>
#include <utility>

namespace VorkaTablebases {

namespace {

std::size_t LargestBlock(const std::vector<std::unique_ptr<TableSet>>& sets) {
    std::size_t largest = 0;
    for (const auto& set : sets) largest = std::max(largest, set->largest_block());
    return largest;
}

}  // namespace

CombinedSource::CombinedSource(std::vector<std::unique_ptr<TableSet>> sets)
    : sets_(std::move(sets)), cache_(LargestBlock(sets_)) {}

ProbeResult CombinedSource::Probe(const BOARD& board, int& score) noexcept {
    last_failure_ = SourceFailure::none;
    for (const auto& set : sets_) {
        SourceFailure failure = SourceFailure::none;
        if (set->Probe(board, cache_, score, failure) == ProbeResult::found) return ProbeResult::found;
        if (failure != SourceFailure::none) last_failure_ = failure;
    }
    return ProbeResult::not_found;
}

bool CombinedSource::UseCache(std::int32_t bytes) noexcept {
    return bytes >= 0 && cache_.Resize(static_cast<std::uint64_t>(bytes));
}

}  // namespace VorkaTablebases
