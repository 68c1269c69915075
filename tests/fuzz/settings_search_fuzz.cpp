// Any settings within their bounds, and a short search with them: it ends, answers one of the two bounds that it was
// asked about (the tournament search: a score), and leaves the board as it was.
//
// The first byte chooses the position; from 128 on it is the tournament search. Each five bytes after it are a change:
// the row of the setting (two bytes; from 32768 on it is one of the tournament search), its element, and the value (two
// bytes), which is spread over the bounds: 0 is the lower one, 65535 the upper one.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>
#include <string_view>

#include "search/settings/search_settings.h"
#include "search/settings/tournament_settings.h"
#include "support/limited_search.h"

namespace {

constexpr std::array positions{
    std::string_view{"rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8"},
    std::string_view{"r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1"},
    std::string_view{"8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1"},
    std::string_view{"8/5k2/8/8/3N4/4B3/3K4/8 w - - 0 1"},
    std::string_view{"8/3k4/3p4/8/3P4/3K4/8/8 b - - 0 1"},
    std::string_view{"6k1/5ppp/8/8/8/8/r4PPP/1R4K1 w - - 0 1"},
};
constexpr std::uint64_t most_nodes = 1000;

unsigned Word(std::span<const std::uint8_t> bytes) { return bytes[0] * 256U + bytes[1]; }

struct Settings {
    SearchSettings search;
    TournamentSettings tournament;
};

std::int32_t Spread(unsigned part, std::int64_t least, std::int64_t most) {
    return static_cast<std::int32_t>(least + (most - least) * part / 65535);
}

void Change(Settings& settings, std::span<const std::uint8_t> change) {
    constexpr unsigned first_of_tournament = 32768;
    const unsigned row_number = Word(change), part = Word(change.subspan(3));
    if (row_number >= first_of_tournament) {
        const auto table = tournament_settings::Table();
        const tournament_settings::Row& row = table[(row_number - first_of_tournament) % table.size()];
        settings.tournament.*row.place = Spread(part, row.least, row.most);
    } else {
        const search_settings::SettingRow& row = search_settings::Table()[row_number % search_settings::Table().size()];
        row.Set(settings.search, change[2] % row.size, Spread(part, row.lower_bound, row.upper_bound));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t bytes_of_change = 5;
    constexpr unsigned first_of_tournament = 128;
    if (size == 0) return 0;
    std::span<const std::uint8_t> rest(data + 1, size - 1);
    Settings settings;
    for (; rest.size() >= bytes_of_change; rest = rest.subspan(bytes_of_change)) Change(settings, rest);

    const std::string_view position = positions[data[0] % first_of_tournament % positions.size()];
    const auto search =
        data[0] >= first_of_tournament
            ? std::make_unique<LimitedSearch>(position, most_nodes, settings.search, settings.tournament)
            : std::make_unique<LimitedSearch>(position, most_nodes, settings.search);
    if (search->Run(3) == 0 || search->faults() != 0) abort();
    return 0;
}
