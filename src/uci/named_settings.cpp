#include "uci/named_settings.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "frame/base/os_dependent.h"

namespace VorkaUci {

namespace {

/// Where a name is looked for; nothing if it is none.
std::vector<std::string> PlacesOf(const std::string& value) {
    const auto* const named = std::find_if(named_settings.begin(), named_settings.end(),
                                           [&](const NamedSettings& row) { return row.name == value; });
    std::vector<std::string> places;
    if (named == named_settings.end()) return places;
    for (const char* above : {"/", "/../", "/../../"}) {
        const std::filesystem::path path = ExecutableDirectory() + above + std::string(named->file);
        places.push_back(path.lexically_normal().string());
    }
    return places;
}

}  // namespace

std::string SettingsPath(const std::string& value) {
    if (FileExists(value)) return value;
    const std::vector<std::string> places = PlacesOf(value);
    const auto found = std::find_if(places.begin(), places.end(), FileExists);
    return found == places.end() ? value : *found;
}

std::string PlacesOfNamedSettings(const std::string& value) {
    std::string text;
    for (const std::string& place : PlacesOf(value)) text.append(text.empty() ? "" : ", ").append(place);
    return text;
}

}  // namespace VorkaUci
