#include "frame/launcher/level.h"

#include <algorithm>

#include "frame/base/vocabulary.h"

namespace {

/// The names up to a level, the lowest first.
std::string NamesUpTo(Level highest) {
    std::string names;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(highest); ++i) {
        if (i > 0) names += ", ";
        names += level_names[i];
    }
    return names;
}

}  // namespace

LevelChoice ChooseLevel(Level best_of_processor, std::string_view wish) {
    if (wish.empty()) return {.level = best_of_processor, .refusal = {}};
    const auto* const found = std::find(level_names.begin(), level_names.end(), wish);
    LevelChoice choice{.level = best_of_processor, .refusal = {}};
    if (found == level_names.end()) {
        choice.refusal.append(vocabulary::no_level_of_this_name).append(wish);
        choice.refusal.append(vocabulary::levels_are).append(NamesUpTo(Level::x86_64_v3));
    } else if (const Level level{static_cast<int>(found - level_names.begin())}; level > best_of_processor) {
        choice.refusal.append(vocabulary::level_above_processor).append(wish);
        choice.refusal.append(vocabulary::levels_it_has).append(NamesUpTo(best_of_processor));
    } else {
        choice.level = level;
    }
    return choice;
}

std::array<std::string, 2> PlacesOfProgram(std::string_view launcher, Level level) {
    const std::string_view folder = launcher.substr(0, launcher.rfind('/'));
    const std::string_view above = folder.substr(0, folder.empty() ? 0 : folder.rfind('/'));
    std::string program(launcher.substr(folder.size()));  // with the slash before it
    program.append("-").append(NameOf(level));
    return {std::string(folder) + program, std::string(above) + "/lib/vorka" + program};
}
