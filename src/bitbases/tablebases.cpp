#include "bitbases/tablebases.h"

#include <cstdlib>
#include <limits>

#include "frame/logfile.h"
#include "frame/vocabulary.h"

namespace VorkaTablebases {

namespace {

std::unique_ptr<TableSource>& Source() {
    static std::unique_ptr<TableSource> source;
    return source;
}

constexpr int mate_value = 32767;

}  // namespace

void UseSource(std::unique_ptr<TableSource> source) noexcept { Source() = std::move(source); }

ProbeResult ProbeTablebases(const BOARD& board, int& score) noexcept {
    if (!Source()) return ProbeResult::disabled;
    if (board.frame().castling != 0 || board.frame().en_passant_square != 0) return ProbeResult::not_found;
    return Source()->Probe(board, score);
}

bool IsTablebaseLossFarAway(const BOARD& board) noexcept {
    int score = 0;
    if (ProbeTablebases(board, score) != ProbeResult::found || score >= 0) return false;
    return mate_value - std::abs(score) >= far_away_plies;
}

}  // namespace VorkaTablebases

namespace NalimovTablebases {

namespace {

void TellLog(std::string_view text) {
    const EchoScope file_only(vlog, Echo::off);
    vlog << text << '\n';
}

/// The tables take their cache size as a signed 32-bit number.
std::int32_t CacheSize(std::uint64_t size) {
    constexpr auto largest = std::numeric_limits<std::int32_t>::max();
    if (size <= static_cast<std::uint64_t>(largest)) return static_cast<std::int32_t>(size);
    LogOnly(vocabulary::nalimov_size_overflow);
    return largest;
}

}  // namespace

void Initialize(std::uint64_t size, const std::string& path, const VorkaTablebases::SourceOpener& open) {
    const std::int32_t cache = CacheSize(size);
    {
        const EchoScope file_only(vlog, Echo::off);
        vlog << vocabulary::initializing_nalimov << path << "'\n";
    }
    VorkaTablebases::UseSource(nullptr);
    std::unique_ptr<VorkaTablebases::TableSource> source = open(path);
    if (!source) {
        TellLog(vocabulary::could_not_initialize_tablebases);
        throw NalimovException(std::string(vocabulary::could_not_open_tablebases));
    }
    if (!source->UseCache(cache) && cache != 0) {
        TellLog(vocabulary::increase_the_cache_size);
        throw NalimovException(std::string(vocabulary::cache_size_too_small));
    }
    VorkaTablebases::UseSource(std::move(source));
}

std::unique_ptr<VorkaTablebases::TableSource> OpenNothing(const std::string& /*path*/) { return nullptr; }

}  // namespace NalimovTablebases
