#include "search/settings/tournament_settings.h"

#include <algorithm>
#include <iterator>

#include "frame/base/text_utilities.h"

namespace tournament_settings {

const Row* Find(std::string_view name) noexcept {
    const auto* const row =
        std::find_if(std::begin(rows), std::end(rows), [name](const Row& candidate) { return candidate.name == name; });
    return row == std::end(rows) ? nullptr : row;
}

bool Take(const Row& row, std::string_view text, TournamentSettings& settings) try {
    const std::int32_t value = VorkaUtils::ToInteger(text);
    if (value < row.least || value > row.most) return false;
    settings.*row.place = value;
    return true;
} catch (const string_conversion_error&) {
    return false;
}

}  // namespace tournament_settings
