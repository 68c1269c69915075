#include "interfaces/commands/commands_settings.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"

namespace VorkaInterfaces {

namespace {

using OptimizeInterface::Settings;

/// The pieces between semicolons, empty ones included.
std::vector<std::string_view> SplitAtSemicolons(std::string_view text) {
    std::vector<std::string_view> pieces;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(';', begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

/// What the search relies on may change in force mode alone, where none runs.
bool isForced(const ConnectedGame& game) { return game.mode() == EngineMode::force; }

ABSTRACT_HASH_TABLE* tableNamed(std::string_view type, HashTables& tables) {
    if (type == vocabulary::hash_word_transposition) return &tables.transposition;
    if (type == vocabulary::hash_word_pawn) return &tables.pawn;
    if (type == vocabulary::hash_word_evaluation) return &tables.evaluation;
    return nullptr;
}

}  // namespace

void Command_DisplaySettingVariables::check(ConnectedGame& game) {
    const Settings settings = Settings::Of(game.engine().settings);
    std::ostringstream text;
    try {
        if (names_.empty() || names_ == vocabulary::all) {
            settings.Write(text);
        } else {
            for (const std::string_view name : SplitAtSemicolons(names_)) {
                text << name << '=' << settings.Find(name).Text() << '\n';
            }
        }
    } catch (const Settings::SettingsException& error) {
        refuse(error.text());
    }
    text_ = text.str();
}

void Command_DisplaySettingVariables::work(ConnectedGame&) {
    vlog << text_;
    vlog.Flush();
}

void Command_ChangeSettings::check(ConnectedGame& game) {
    if (!isForced(game)) refuse(vocabulary::must_be_in_force_mode);
    Settings changed = Settings::Of(game.engine().settings);
    try {
        change(changed);
    } catch (const TextException& error) {
        refuse(error.text());
    }
    settings_.emplace(std::move(changed));
}

void Command_ChangeSettings::work(ConnectedGame& game) { settings_->ApplyTo(game.engine().settings); }

void Command_ModifySettingVariables::change(Settings& settings) const {
    const std::vector<std::string_view> pieces = SplitAtSemicolons(assignments_);
    // The signs are looked for in all pieces before any of them is carried out.
    const auto is_assignment = [](std::string_view piece) {
        const std::size_t sign = piece.find('=');
        return sign != std::string_view::npos && sign > 0 && sign + 1 < piece.size();
    };
    if (!std::all_of(pieces.begin(), pieces.end(), is_assignment)) refuse(vocabulary::separator_missing);
    for (const std::string_view piece : pieces) {
        const std::size_t sign = piece.find('=');
        settings.Set(piece.substr(0, sign), piece.substr(sign + 1));
    }
}

void Command_ReadSearchSettings::change(Settings& settings) const { settings.ReadFile(path_); }

void Command_WriteSearchSettings::work(ConnectedGame& game) {
    try {
        Settings::Of(game.engine().settings).WriteFile(path_);
    } catch (const Settings::SettingsException& error) {
        refuse(error.text());
    }
}

void Command_ResizeHashtable::check(ConnectedGame& game) {
    table_ = tableNamed(type_, game.engine().tables);
    if (table_ == nullptr) refuse(vocabulary::unknown_hashtable_type);
    try {
        bytes_ = VorkaUtils::ParseSize(size_);
    } catch (const string_conversion_error&) {
        refuse(vocabulary::could_not_parse_new_size);
    }
    if (!isForced(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_ResizeHashtable::work(ConnectedGame&) {
    // Without the memory the old table stays.
    if (!table_->resize(bytes_)) refuse(vocabulary::argument_out_of_bounds);
}

void Command_SetPersonality::check(ConnectedGame& game) {
    if (!isForced(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_SetPersonality::work(ConnectedGame& game) {
    constexpr std::int32_t most = 1000;
    const std::int32_t value = std::clamp(value_, -most, most);
    if (value == game.protocol().personality) return;
    game.setPersonality(static_cast<std::int16_t>(value));
}

void Command_Contempt::check(ConnectedGame& game) {
    if (!isForced(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_Contempt::work(ConnectedGame& game) {
    constexpr std::int32_t most = 32767;
    game.setContempt(std::clamp(value_, -most, most));
}

}  // namespace VorkaInterfaces
