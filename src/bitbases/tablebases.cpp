#include "bitbases/tablebases.h"

#include <limits>

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"

namespace VorkaTablebases {

namespace {

std::unique_ptr<TableSource>& Source() {
    static std::unique_ptr<TableSource> source;
    return source;
}

}  // namespace

void UseSource(std::unique_ptr<TableSource> source) noexcept { Source() = std::move(source); }

ProbeResult ProbeTablebases(const BOARD& board, int& score) noexcept {
    if (!Source()) return ProbeResult::disabled;
    if (board.frame().castling != 0 || board.frame().en_passant_square != 0) return ProbeResult::not_found;
    return Source()->Probe(board, score);
}

SourceFailure LastFailure() noexcept { return Source() ? Source()->last_failure() : SourceFailure::none; }

bool IsLossFarAway(int score) noexcept {
    constexpr int mate_value = 32767;
    constexpr int far_away_plies = 30;
    return score < 0 && mate_value + score >= far_away_plies;
}

bool IsTablebaseLossFarAway(const BOARD& board) noexcept {
    int score = 0;
    return ProbeTablebases(board, score) == ProbeResult::found && IsLossFarAway(score);
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

void Initialize(std::uint64_t size, const std::string& path, const VorkaTablebases::SourceOpener& open) {
    const std::int32_t cache = CacheSize(size);
    vlog << vocabulary::initializing_nalimov << path << "'\n";
    VorkaTablebases::UseSource(nullptr);
    std::unique_ptr<VorkaTablebases::TableSource> source = open(path);
    if (!source) {
        vlog << vocabulary::could_not_initialize_tablebases << '\n';
        throw NalimovException(std::string(vocabulary::could_not_open_tablebases));
    }
    if (!source->UseCache(cache) && cache != 0) {
        vlog << vocabulary::increase_the_cache_size << '\n';
        throw NalimovException(std::string(vocabulary::cache_size_too_small));
    }
    VorkaTablebases::UseSource(std::move(source));
}

std::unique_ptr<VorkaTablebases::TableSource> OpenNothing(const std::string& /*path*/) { return nullptr; }

}  // namespace NalimovTablebases
