// Any text as a file of tournament settings: it is refused with a reason, or what it holds is within bounds and reads
// back from what is written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "frame/base/vorka_exception.h"
#include "search/settings/tournament_file.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    TournamentSettings settings;
    try {
        settings = tournament_settings::Read(stream);
    } catch (const TextException& error) {
        Require(error.text().starts_with("line "));
        return 0;
    }
    for (const tournament_settings::Row& row : tournament_settings::Table()) {
        Require(settings.*row.place >= row.least && settings.*row.place <= row.most);
    }
    std::stringstream written;
    tournament_settings::Write(settings, written);
    Require(tournament_settings::Read(written) == settings);
    return 0;
}
