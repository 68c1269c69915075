#pragma once

#include <array>
#include <string>
#include <string_view>

/// Settings files that the option "Settings File" knows by name.
namespace VorkaUci {

struct NamedSettings {
    std::string_view name;
    std::string_view file;  ///< from the folder of the program, or one of the two above it
};

inline constexpr std::array named_settings{NamedSettings{"tuned", "settings/tuned.txt"}};

/// The file that a value of the option means: a file of that path, or else the one of that name. The value itself if it
/// is neither.
[[nodiscard]] std::string SettingsPath(const std::string& value);
/// Where a name is looked for, with commas between the paths; empty if it is none.
[[nodiscard]] std::string PlacesOfNamedSettings(const std::string& value);

}  // namespace VorkaUci
