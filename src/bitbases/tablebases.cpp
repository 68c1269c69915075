#include "bitbases/tablebases.h"

#include <limits>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

namespace VorkaTablebases {

ProbeResult Tablebases::Probe(const BOARD& board, int& score) const noexcept {
    if (!source_) return ProbeResult::disabled;
    if (board.frame().castling != 0 || board.frame().en_passant_square != 0) return ProbeResult::not_found;
    return source_->Probe(board, score);
}

SourceFailure Tablebases::LastFailure() const noexcept {
    return source_ ? source_->last_failure() : SourceFailure::none;
}

bool IsLossFarAway(int score) noexcept {
    constexpr int far_away_plies = 30;
    return score < 0 && score_of_mate + score >= far_away_plies;
}

bool Tablebases::IsLossFarAway(const BOARD& board) const noexcept {
    int score = 0;
    return Probe(board, score) == ProbeResult::found && VorkaTablebases::IsLossFarAway(score);
}

}  // namespace VorkaTablebases

namespace NalimovTablebases {

namespace {

/// The tables take their cache size as a signed 32-bit number.
std::int32_t CacheSize(std::uint64_t size) {
    constexpr auto largest = std::numeric_limits<std::int32_t>::max();
    if (size <= static_cast<std::uint64_t>(largest)) return static_cast<std::int32_t>(size);
    vlog << vocabulary::nalimov_size_overflow << '\n';
    return largest;
}

}  // namespace

void Initialize(VorkaTablebases::Tablebases& tablebases, std::uint64_t size, const std::string& path,
                const VorkaTablebases::SourceOpener& open) {
    const std::int32_t cache = CacheSize(size);
    vlog << vocabulary::initializing_nalimov << path << "'\n";
    tablebases.Use(nullptr);
    std::unique_ptr<VorkaTablebases::TableSource> source = open(path);
    if (!source) {
        vlog << vocabulary::could_not_initialize_tablebases << '\n';
        throw NalimovException(std::string(vocabulary::could_not_open_tablebases));
    }
    if (!source->UseCache(cache) && cache != 0) {
        if (source->LacksMemory()) throw NalimovException(std::string(vocabulary::reason_out_of_memory));
        vlog << vocabulary::increase_the_cache_size << '\n';
        throw NalimovException(std::string(vocabulary::cache_size_too_small));
    }
    tablebases.Use(std::move(source));
}

std::unique_ptr<VorkaTablebases::TableSource> OpenNothing(const std::string& /*path*/) { return nullptr; }

}  // namespace NalimovTablebases
