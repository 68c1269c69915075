#include "tune/parameters.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "frame/base/text_utilities.h"
#include "options/number_option.h"
#include "selfplay/option_texts.h"

namespace {

constexpr double least_span = 0.5;
constexpr double most_rate = 1;

[[noreturn]] void Refuse(const std::string& what) { throw std::runtime_error(what); }

/// Finds the setting by name; an array's with the number of the element in brackets.
void FindSetting(Parameter& parameter) {
    parameter.tournament = tournament_settings::Find(parameter.name);
    if (parameter.tournament != nullptr) return;
    const std::string_view text = parameter.name;
    const std::size_t bracket = std::min(text.find('['), text.size());
    const std::string_view name = text.substr(0, bracket);
    const auto rows = search_settings::Table();
    const auto row = std::ranges::find(rows, name, &search_settings::SettingRow::name);
    if (row == rows.end()) Refuse("no such setting: \"" + std::string(name) + '"');
    if (row->is_boolean()) Refuse(parameter.name + " is true or false, and can't be tuned");
    parameter.row = &*row;
    if (row->size == 1 && bracket == text.size()) return;
    const std::optional<std::size_t> index =
        text.ends_with(']')
            ? NumberIn<std::size_t>(text.substr(bracket + 1, text.size() - bracket - 2), 0, row->size - 1)
            : std::nullopt;
    if (row->size == 1 || !index) {
        Refuse(std::string(name) + (row->size == 1 ? " has no elements"
                                                   : " needs the number of an element in brackets, from 0 to " +
                                                         std::to_string(row->size - 1)));
    }
    parameter.index = *index;
}

Parameter ReadLine(const std::string& line) {
    constexpr std::array columns{"start", "min", "max", "c_end", "r_end"};
    const std::vector<std::string> words = VorkaUtils::tokenize(line);
    if (words.size() != columns.size() + 1) {
        Refuse("not NAME START MIN MAX C_END R_END: " + std::to_string(words.size()) + " words");
    }
    Parameter parameter{.name = words[0]};
    FindSetting(parameter);
    const auto* const tournament = parameter.tournament;
    const double lower = tournament != nullptr ? tournament->least : parameter.row->lower_bound;
    const double upper = tournament != nullptr ? tournament->most : parameter.row->upper_bound;
    parameter.least = ReadReal(columns[1], words[2], lower, upper);
    parameter.most = ReadReal(columns[2], words[3], lower, upper);
    if (parameter.least >= parameter.most) Refuse("min is not below max");
    parameter.start = ReadReal(columns[0], words[1], parameter.least, parameter.most);
    parameter.last_span = ReadReal(columns[3], words[4], least_span, parameter.most - parameter.least);
    parameter.last_rate = ReadReal(columns[4], words[5], 0, most_rate);
    return parameter;
}

}  // namespace

std::vector<Parameter> ReadParameters(std::istream& file) {
    std::vector<Parameter> parameters;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        const std::size_t begin = line.find_first_not_of(VorkaUtils::white_space);
        if (begin == std::string::npos || line[begin] == '#') continue;
        try {
            parameters.push_back(ReadLine(line));
            const auto same = [&](const Parameter& other) { return other.name == parameters.back().name; };
            if (std::count_if(parameters.begin(), parameters.end(), same) > 1) {
                Refuse(parameters.back().name + " is there already");
            }
            if ((parameters.front().tournament == nullptr) != (parameters.back().tournament == nullptr)) {
                Refuse(parameters.back().name + " and " + parameters.front().name + " are of different searches");
            }
        } catch (const std::runtime_error& error) {
            Refuse("line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (parameters.empty()) Refuse("no parameters");
    return parameters;
}

std::int32_t PlayedValue(const Parameter& parameter, double value) {
    const double inside = std::clamp(std::round(value), std::ceil(parameter.least), std::floor(parameter.most));
    return static_cast<std::int32_t>(inside);
}

PlayerSetup PlayerWith(const PlayerSetup& base, const std::vector<Parameter>& parameters,
                       const std::vector<double>& values) {
    PlayerSetup player = base;
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const Parameter& parameter = parameters[i];
        const std::int32_t value = PlayedValue(parameter, values[i]);
        if (parameter.tournament != nullptr) {
            player.tournament.*parameter.tournament->place = value;
        } else {
            parameter.row->Set(player.settings, parameter.index, value);
        }
    }
    return player;
}
