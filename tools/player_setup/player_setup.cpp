#include "player_setup/player_setup.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "evaluation/personality.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vorka_exception.h"
#include "options/number_option.h"
#include "search/settings/settings_file.h"
#include "search/settings/tournament_file.h"

namespace {

constexpr std::int32_t most_contempt = 1000;
constexpr std::int32_t widest_personality = 1000;
constexpr std::int64_t most_nodes = 1'000'000'000'000;
constexpr std::string_view as_it_is = "defaults";

[[noreturn]] void Refuse(const std::string& what) { throw std::runtime_error(what); }

template <class Number>
Number NumberOf(std::string_view key, std::string_view text, Number least, Number most) {
    if (const std::optional<Number> number = NumberIn(text, least, most)) return *number;
    Refuse(std::string(key) + " takes a number from " + std::to_string(least) + " to " + std::to_string(most) +
           ", not \"" + std::string(text) + '"');
}

void ReadSettingsFile(SearchSettings& settings, const std::string& path) {
    try {
        OptimizeInterface::Settings file = OptimizeInterface::Settings::Descriptions();
        file.ReadFile(path);
        file.ApplyTo(settings);
    } catch (const OptimizeInterface::Settings::SettingsException& error) {
        Refuse(path + ": " + std::string(error.text()));
    }
}

void ReadTournamentFile(TournamentSettings& settings, const std::string& path) try {
    settings = tournament_settings::ReadFile(path);
} catch (const TextException& error) {
    Refuse(path + ": " + error.text());
}

/// "Random" is another one each time, and a match must be the same each time.
std::int32_t PersonalityOf(std::string_view text) {
    int value = 0;
    const bool is_random = text == "Random";
    if (is_random || !parse_personality(text, value) || value < -widest_personality || value > widest_personality) {
        Refuse("no personality: \"" + std::string(text) + '"');
    }
    return value;
}

std::vector<std::string> WordsOf(std::string_view text) try {
    constexpr std::string_view quotes = "\"'";
    return VorkaUtils::tokenize(text, VorkaUtils::white_space, quotes, quotes);
} catch (const VorkaUtils::tokenize_exception&) {
    Refuse("a quotation mark without its partner: " + std::string(text));
}

void TakeWord(PlayerSetup& player, std::string_view word) {
    if (word == as_it_is) return;
    const std::size_t sign = word.find('=');
    if (sign == std::string_view::npos) Refuse("not key=value: \"" + std::string(word) + '"');
    const std::string_view key = word.substr(0, sign);
    const std::string_view value = word.substr(sign + 1);
    if (key == "name") {
        if (value.empty()) Refuse("an empty name");
        player.name = value;
    } else if (key == "settings") {
        ReadSettingsFile(player.settings, std::string(value));
    } else if (key == "personality") {
        player.personality = PersonalityOf(value);
    } else if (key == "contempt") {
        player.contempt = NumberOf(key, value, -most_contempt, most_contempt);
    } else if (key == "nodes") {
        player.nodes = static_cast<std::uint64_t>(NumberOf<std::int64_t>(key, value, 1, most_nodes));
    } else if (key == "search") {
        if (value != "classic" && value != "tournament") Refuse("search is classic or tournament");
        player.uses_tournament_search = value == "tournament";
    } else if (key == "tournament") {
        ReadTournamentFile(player.tournament, std::string(value));
    } else if (const tournament_settings::Row* const row = tournament_settings::Find(key)) {
        player.tournament.*row->place = NumberOf(key, value, row->least, row->most);
    } else {
        ChangeSetting(player.settings, key, value);
    }
}

}  // namespace

void ChangeSetting(SearchSettings& settings, std::string_view name, std::string_view value) {
    try {
        auto changed = OptimizeInterface::Settings::Of(settings);
        changed.Set(name, VorkaUtils::ReplaceAll(value, ',', ' '));
        changed.ApplyTo(settings);
    } catch (const OptimizeInterface::Settings::UnknownVariable&) {
        Refuse("no such setting: \"" + std::string(name) + '"');
    } catch (const OptimizeInterface::Settings::InvalidData&) {
        const auto descriptions = OptimizeInterface::Settings::Descriptions();
        Refuse(std::string(name) + " (" + descriptions.Find(name).Description() + ") can't be \"" + std::string(value) +
               '"');
    }
}

PlayerSetup ReadPlayer(std::string_view text) {
    PlayerSetup player;
    for (const std::string& word : WordsOf(text)) TakeWord(player, word);
    if (!player.uses_tournament_search && player.tournament != TournamentSettings()) {
        Refuse("a setting of the tournament search without search=tournament changes nothing");
    }
    if (player.name.empty()) player.name = DescriptionOf(player);
    return player;
}

PlayerSetup ReadSearch(std::string_view text) {
    constexpr std::string_view of_games[] = {"name=", "personality=", "contempt=", "nodes="};
    for (const std::string& word : WordsOf(text)) {
        const bool is_of_games = std::any_of(std::begin(of_games), std::end(of_games),
                                             [&](std::string_view begin) { return word.starts_with(begin); });
        if (is_of_games) Refuse("no such setting: \"" + word + '"');
    }
    return ReadPlayer(text);
}

void Configure(Engine& engine, const PlayerSetup& player) {
    engine.settings = player.settings;
    engine.uses_tournament_search = player.uses_tournament_search;
    engine.tournament = player.tournament;
}

std::string DescriptionOf(const PlayerSetup& player) {
    std::ostringstream text;
    const SearchSettings defaults;
    for (const search_settings::SettingRow& row : search_settings::Table()) {
        bool is_changed = false;
        for (std::size_t i = 0; i < row.size; ++i) is_changed |= row.Get(player.settings, i) != row.Get(defaults, i);
        if (!is_changed) continue;
        text << ' ' << row.name << '=';
        if (row.is_boolean()) {
            text << (row.Get(player.settings, 0) != 0 ? "true" : "false");
            continue;
        }
        for (std::size_t i = 0; i < row.size; ++i) text << (i == 0 ? "" : ",") << row.Get(player.settings, i);
    }
    if (player.uses_tournament_search) text << " search=tournament";
    for (const tournament_settings::Row& row : tournament_settings::Table()) {
        const TournamentSettings as_made;
        if (player.tournament.*row.place != as_made.*row.place)
            text << ' ' << row.name << '=' << player.tournament.*row.place;
    }
    if (player.personality != 0) text << " personality=" << player.personality;
    if (player.contempt != 0) text << " contempt=" << player.contempt;
    if (player.nodes != 0) text << " nodes=" << player.nodes;
    return text.str().empty() ? std::string(as_it_is) : text.str().substr(1);
}
