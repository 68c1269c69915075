#include "evaluation/personality.h"

#include <algorithm>
#include <array>

#include "frame/base/os_dependent.h"
#include "frame/base/text_utilities.h"

namespace {

struct NamedPersonality {
    std::string_view name;
    int value;
};

/// Higher values play more recklessly, lower ones more for position and material.
constexpr std::array named_personalities{
    NamedPersonality{"Default", 0},   NamedPersonality{"Vorka", 0},     NamedPersonality{"Ormalt", 2},
    NamedPersonality{"Druvane", 4},   NamedPersonality{"Fenmarl", 6},   NamedPersonality{"Hestrand", 8},
    NamedPersonality{"Norvesk", 11},  NamedPersonality{"Zantoval", 13}, NamedPersonality{"Tolvane", 15},
    NamedPersonality{"Belrix", -2},   NamedPersonality{"Yeldor", -4},   NamedPersonality{"Quimbel", -6},
    NamedPersonality{"Lumbrik", -8},  NamedPersonality{"Pelgrin", -10}, NamedPersonality{"Ikervo", -12},
    NamedPersonality{"Wendral", -15}, NamedPersonality{"Rux", 1000},    NamedPersonality{"Sedrimo", -1000},
};

constexpr std::string_view drawn_by_lot = "Random";
constexpr int widest_draw = 20;  // either way

}  // namespace

bool parse_personality(std::string_view text, int& value) {
    if (text == drawn_by_lot) {
        value = NonDeterministicRand_16bit() % (2 * widest_draw + 1) - widest_draw;
        return true;
    }
    const auto* const named = std::find_if(named_personalities.begin(), named_personalities.end(),
                                           [text](const NamedPersonality& entry) { return entry.name == text; });
    if (named != named_personalities.end()) {
        value = named->value;
        return true;
    }
    try {
        value = VorkaUtils::ToInteger(text);
        return true;
    } catch (const string_conversion_error&) {
        return false;
    }
}

std::vector<std::string_view> personality_names() {
    std::vector<std::string_view> names;
    for (const NamedPersonality& entry : named_personalities) names.push_back(entry.name);
    return names;
}

std::string personality_name(int value) {
    const auto* const named = std::find_if(named_personalities.begin(), named_personalities.end(),
                                           [value](const NamedPersonality& entry) { return entry.value == value; });
    return named != named_personalities.end() ? std::string(named->name) : VorkaUtils::ToString(value);
}
