#include "uci/named_settings.h"

#include <algorithm>

#include "frame/base/os_dependent.h"

namespace VorkaUci {

std::string SettingsPath(const std::string& value) {
    const auto* const named = std::find_if(named_settings.begin(), named_settings.end(),
                                           [&](const NamedSettings& row) { return row.name == value; });
    if (named == named_settings.end() || FileExists(value)) return value;
    for (const char* above : {"/", "/../", "/../../"}) {
        const std::string path = ExecutableDirectory() + above + std::string(named->file);
        if (FileExists(path)) return path;
    }
    return value;
}

}  // namespace VorkaUci
