#include "interfaces/commands_settings.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <vector>

#include "frame/game_control.h"
#include "frame/logfile.h"
#include "frame/vocabulary.h"

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

}  // namespace

void Command_DisplaySettingVariables::check(GameControl&) {
    const Settings settings = Settings::Current();
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

void Command_DisplaySettingVariables::work(GameControl&) {
    vlog << text_;
    vlog.Flush();
}

void Command_ChangeSettings::check(GameControl& game) {
    if (game.engineMode != EngineMode::force) refuse(vocabulary::must_be_in_force_mode);
    Settings changed = Settings::Current();
    try {
        change(changed);
    } catch (const OptimizeInterface::TextException& error) {
        refuse(error.text());
    }
    settings_.emplace(std::move(changed));
}

void Command_ChangeSettings::work(GameControl&) { settings_->Apply(); }

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

void Command_WriteSearchSettings::work(GameControl&) {
    try {
        Settings::Current().WriteFile(path_);
    } catch (const Settings::SettingsException& error) {
        refuse(error.text());
    }
}

}  // namespace VorkaInterfaces
